// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Picking the points of a path, and what its outline meets. The tests go from cheap to dear:
// extents, nodes, then the outline, segment by segment until one meets.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvULongArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvAppended.h>
#include <hv/shape/internal/HvPathFlattener.h>
#include <hv/shape/internal/shape_hits.h>

#include <cmath>
#include <limits>

namespace {

using Extent = HvExtent2<float>;

/// How much of its greatest coordinate the box of a segment's control points is widened by, so that
/// rounding in flattening stays inside: some hundred times what float rounds.
constexpr float kBoxMargin = 0x1p-16F;

/// Whether the box of the mapped control points `start` to `end` lies beside an ordinary query, so
/// that their segment cannot meet it.
bool IsSegmentBeside(HvPathFlattener<float> const& outline, unsigned int start, unsigned int end,
                     Extent const& query)
{
    Extent box;
    float reach = 0.0F;
    for (unsigned int k = start; k <= end; ++k) {
        HvPoint2<float> const p = outline.Mapped(k);
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            return false;
        }
        box.Augment(p);
        reach = std::max({reach, std::fabs(p.x), std::fabs(p.y)});
    }
    float const margin = reach * kBoxMargin;
    return box.max.x < query.min.x - margin || box.min.x > query.max.x + margin ||
           box.max.y < query.min.y - margin || box.min.y > query.max.y + margin;
}

/// Whether the flattened outline meets an ordinary query.
bool DoesOutlineMeet(HvPathFlattener<float>& outline, Extent const& query)
{
    bool meets = false;
    HvPoint2fArray pts(64);
    outline.VisitSubpaths([&](unsigned int first, unsigned int last) {
        meets =
            meets || !outline.VisitSegments(first, last, [&](unsigned int start, unsigned int end) {
                if (IsSegmentBeside(outline, start, end, query)) {
                    return true;
                }
                pts.Chop(0);
                pts.Add(outline.Mapped(start));
                outline.AppendSegment(start, end, pts);
                for (unsigned int k = 1; k < pts.Size(); ++k) {
                    if (HvShapeHit_DoesSegmentMeet(query, pts[k - 1], pts[k])) {
                        return false;
                    }
                }
                return true;
            });
    });
    return meets;
}

}  // namespace

bool HvPath2f::DoesOverlap(HvGC const& gc, Extent const& extent) const
{
    Extent own;
    GetExtent(own);
    return HvShapeHit_DoExtentsOverlap(extent, gc.transform.Map(own));
}

int HvPath2f::GetClosePointIndex(HvPoint2<float> const& p, double size, unsigned int* index) const
{
    HvShapeLock const lock(*this);
    for (unsigned int i = 0; i < points.Size(); ++i) {
        if (HvShapeHit_IsInSquare(points[i], p, size)) {
            *index = i;
            return 1;
        }
    }
    return 0;
}

int HvPath2f::GetClosePointIndex(HvPoint2<float> const& p, unsigned int* index) const
{
    HvShapeLock const lock(*this);
    double best = std::numeric_limits<float>::max();
    *index = 0;
    for (unsigned int i = 0; i < points.Size(); ++i) {
        double const distance = HvPoint2_CheapLengthAB(points[i], p);
        if (distance < best) {
            best = distance;
            *index = i;
        }
    }
    return points.Size() != 0 ? 1 : 0;
}

unsigned int HvPath2f::GetPointsInExtentIndices(Extent const& extent, HvULongArray* indices) const
{
    HvShapeLock const lock(*this);
    unsigned int const before = indices->Size();
    for (unsigned int i = 0; i < points.Size(); ++i) {
        if (extent.Contains(points[i]) != 0) {
            indices->Add(i);
        }
    }
    return indices->Size() - before;
}

int HvPath2f::IsIntersectingExtent(HvGC const& gc, Extent const& extent, int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 && !DoesOverlap(gc, extent)) {
        return 0;
    }
    HvPathFlattener<float> outline(points, tags, &gc.transform, gc.flatness);
    HvPathTags const& structure = outline.Structure();
    for (unsigned int i = 0; i < structure.Count(); ++i) {
        if (structure.Role(i).isNode && extent.Contains(outline.Mapped(i)) != 0) {
            return 1;
        }
    }
    return extent.state == Extent::Ordinary && DoesOutlineMeet(outline, extent) ? 1 : 0;
}

bool HvPath2f::IsInteriorIntersectingExtent(HvGC const& gc, Extent const& extent,
                                            int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 && !DoesOverlap(gc, extent)) {
        return false;
    }
    if (IsIntersectingExtent(gc, extent, 1) != 0) {
        return true;
    }
    if (extent.state != Extent::Ordinary) {
        return false;
    }
    // The extent lies wholly inside or wholly outside, so the pixel at its corner tells.
    HvUByteRaster pixel(1, 1, 0);
    HvTransfo4 toCorner;
    toCorner.Translate(-double(extent.min.x), -double(extent.min.y), 0.0);
    HvGC cornerGc(gc);
    cornerGc.transform.PreMultiply(toCorner);
    Fill(cornerGc, pixel, nullptr);
    return pixel.data[0] == 255;
}

int HvPath2f::IntersectSamplePointsExtent(HvGC const& gc, Extent const& extent, HvPoint2fArray& pts,
                                          HvPointTagArray& ptTags, int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 && !DoesOverlap(gc, extent)) {
        return 0;
    }
    HvPoint2fArray samples(64);
    HvPointTagArray sampleTags(64);
    Sample(gc, samples, sampleTags);
    HvAppended appended(pts, ptTags);
    for (unsigned int i = 0; i < samples.Size(); ++i) {
        if (extent.Contains(samples[i]) != 0) {
            pts.Add(samples[i]);
            ptTags.Add(sampleTags[i]);
        }
    }
    return static_cast<int>(appended.Keep());
}
