// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of a path as polylines.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvAppended.h>
#include <hv/shape/internal/HvPathFlattener.h>
#include <hv/shape/internal/polygon_clip.h>

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
    HvAppended appended(pts, ptTags);
    AppendSubpaths(flattener, &IsAny, pts, ptTags);
    return appended.Keep();
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
    HvPointTagArray none;
    HvAppended appended(pts, none);
    flattener.AppendSubpath(structure.FirstOfSubpath(i), structure.LastOfSubpath(i), pts);
    return appended.Keep();
}

unsigned int HvPath2f::TransformAndFlattenPath(HvTransfo4 const& transform, double tolerance,
                                               HvPoint2dArray& pts, HvPointTagArray& ptTags) const
{
    HvShapeLock const lock(*this);
    HvPathFlattener<double> flattener(points, tags, &transform, tolerance);
    HvAppended appended(pts, ptTags);
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
    HvAppended appended(pts, ptTags);
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
    HvAppended appended(pts, ptTags);
    HvPoint2dArray polygon;
    HvPoint2dArray spare;
    unsigned int count = 0;
    flattener.VisitSubpaths([&](unsigned int first, unsigned int last) {
        if (first + 1 >= last || !IsClosed(flattener.Structure(), last)) {
            return;
        }
        polygon.Chop(0);
        polygon.Chop(flattener.AppendSubpath(first, last, polygon) - 1);
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
