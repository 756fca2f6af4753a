// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of a path as polylines.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvAppended.h>
#include <hv/shape/internal/HvPathFlattener.h>
#include <hv/shape/internal/polygon_clip.h>

#include <algorithm>
#include <cmath>

namespace {

/// Appends the polylines, with their tags, of the subpaths for which `wanted(structure, last)`
/// holds, and returns how many there are.
template <class T, class Points, class Wanted>
unsigned int AppendSubpaths(HvPathFlattener<T>& flattener, Wanted wanted, Points& pts,
                            HvPointTagArray& ptTags)
{
    unsigned int count = 0;
    flattener.VisitSubpaths([&](unsigned int first, unsigned int last) {
        if (!wanted(flattener.Structure(), last)) {
            return;
        }
        unsigned int const added = flattener.AppendSubpath(first, last, pts);
        HvPathRun_AppendTags(added, ptTags);
        count += added != 0 ? 1 : 0;
    });
    return count;
}

bool IsAny(HvPathTags const&, unsigned int)
{
    return true;
}

bool IsClosed(HvPathTags const& structure, unsigned int last)
{
    return structure.IsClosingEnd(last);
}

/// All subpaths in float; returns the points added, or takes them back without memory.
unsigned int AppendAll(HvPathFlattener<float> flattener, HvPoint2fArray& pts,
                       HvPointTagArray& ptTags)
{
    HvAppendedTagged appended(pts, ptTags);
    AppendSubpaths(flattener, &IsAny, pts, ptTags);
    return appended.Keep();
}

/// The sides of a rectangle, and none of them.
enum class Side {
    Left,
    Low,
    Right,
    High,
    None
};

using Segment = HvPathFlattener<double>::Segment;

/// How far beyond a side of a rectangle, in units of its greatest coordinate, a segment's control
/// points have to lie so that, whatever is rounded, its polyline does too: some million times what
/// double rounds.
constexpr double kBeyondMargin = 0x1p-32;

/// Greatest coordinate of a segment that is told to lie beyond a side: differences of such, and
/// their products, are finite.
constexpr double kBeyondReach = 1e100;

/// The side of a rectangle beyond which a segment lies wholly, when it does not cross one of the
/// sides that are cut before that one, prolonged: clipping goes through the sides in the order of
/// the enumeration, and drops all of the segment at that side.
Side SideBeyond(Segment const& segment, HvExtent2<double> const& box)
{
    HvPoint2<double> low = segment.points[0];
    HvPoint2<double> high = low;
    double zero = 0.0;  // unless a coordinate is not finite
    for (unsigned int k = 0; k <= segment.degree; ++k) {
        HvPoint2<double> const& p = segment.points[k];
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        zero += 0.0 * p.x + 0.0 * p.y;
    }
    double const reach = std::max({-low.x, -low.y, high.x, high.y});
    if (!(zero == 0.0 && reach <= kBeyondReach)) {
        return Side::None;
    }
    double const margin = reach * kBeyondMargin;
    if (high.x + margin < box.min.x) {
        return Side::Left;
    }
    if (low.x - margin < box.min.x) {
        return Side::None;
    }
    if (high.y + margin < box.min.y) {
        return Side::Low;
    }
    if (low.y - margin < box.min.y) {
        return Side::None;
    }
    if (low.x - margin > box.max.x) {
        return Side::Right;
    }
    return high.x + margin <= box.max.x && low.y - margin > box.max.y ? Side::High : Side::None;
}

/// Makes `polygon` the polyline of a closed subpath, without its last point, which repeats the
/// first. Of segments that lie beyond one side of the rectangle only the end of their chain is
/// kept: clipping gives the same to the bit, and what a zoom leaves outside is not flattened.
void FlattenForClip(HvPathFlattener<double>& flattener, unsigned int first, unsigned int last,
                    HvExtent2<double> const& clip, HvPoint2dArray& polygon)
{
    polygon.Chop(0);
    polygon.Add(flattener.Mapped(first));
    Side before = Side::None;
    flattener.VisitSegments(first, last, [&](unsigned int start, unsigned int end) {
        Segment const segment = flattener.MappedSegment(start, end);
        Side const side = SideBeyond(segment, clip);
        if (side == Side::None) {
            flattener.AppendSegment(segment, polygon);
        } else if (side == before) {
            polygon[polygon.Size() - 1] = segment.points[segment.degree];
        } else {
            polygon.Add(segment.points[segment.degree]);
        }
        before = side;
        return true;
    });
    polygon.Chop(polygon.Size() - 1);
}

}  // namespace

unsigned int HvPath2f::Flatten(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    return AppendAll(HvPathFlattener<float>(points, tags, &gc.transform, gc.flatness), pts, ptTags);
}

unsigned int HvPath2f::AltFlatten(double tolerance, HvPoint2fArray& pts,
                                  HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    return AppendAll(HvPathFlattener<float>(points, tags, nullptr, tolerance), pts, ptTags);
}

unsigned int HvPath2f::FlattenSubpath(unsigned int i, double tolerance, HvPoint2fArray& pts) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<float> flattener(points, tags, nullptr, tolerance);
    HvPathTags const& structure = flattener.Structure();
    if (!structure.Has(i)) {
        return 0;
    }
    HvAppended appended(pts);
    flattener.AppendSubpath(structure.FirstOfSubpath(i), structure.LastOfSubpath(i), pts);
    return appended.Keep();
}

unsigned int HvPath2f::TransformAndFlattenPath(HvTransfo4 const& transform, double tolerance,
                                               HvPoint2dArray& pts, HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<double> flattener(points, tags, &transform, tolerance);
    HvAppendedTagged appended(pts, ptTags);
    unsigned int const count = AppendSubpaths(flattener, &IsAny, pts, ptTags);
    appended.Keep();
    return count;
}

unsigned int HvPath2f::TransformAndFlattenClosedSubPaths(HvTransfo4 const& transform,
                                                         double tolerance, HvPoint2dArray& pts,
                                                         HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<double> flattener(points, tags, &transform, tolerance);
    HvAppendedTagged appended(pts, ptTags);
    unsigned int const count = AppendSubpaths(flattener, &IsClosed, pts, ptTags);
    appended.Keep();
    return count;
}

unsigned int HvPath2f::TransformFlattenAndClipClosedSubPaths(HvTransfo4 const& transform,
                                                             double tolerance,
                                                             HvExtent2<double> const& clip,
                                                             HvPoint2dArray& pts,
                                                             HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<double> flattener(points, tags, &transform, tolerance);
    HvAppendedTagged appended(pts, ptTags);
    HvPoint2dArray polygon;
    HvPoint2dArray spare;
    unsigned int count = 0;
    flattener.VisitSubpaths([&](unsigned int first, unsigned int last) {
        if (first + 1 >= last || !IsClosed(flattener.Structure(), last)) {
            return;
        }
        FlattenForClip(flattener, first, last, clip, polygon);
        HvPolygon_Clip(polygon, clip, spare);
        if (polygon.Size() != 0) {
            pts.Add(polygon);
            pts.Add(polygon[0]);
            HvPathRun_AppendTags(polygon.Size() + 1, ptTags);
            ++count;
        }
    });
    appended.Keep();
    return count;
}
