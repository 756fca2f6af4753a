// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How far the outline of a path reaches.

#include <hv/shape/HvPath2f.h>

#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathFlattener.h>

namespace {

void AugmentWithCubic(HvExtent2<float>& extent, HvPoint2<float> const* cubic)
{
    HvBezierTool_AugmentExtentWithCubic2fTightExtent(extent, cubic, 1);
}

void AugmentWithCubic(HvExtent2<double>& extent, HvPoint2<double> const* cubic)
{
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(extent, cubic, 1);
}

template <class T>
void AugmentWithSegment(HvExtent2<T>& extent, HvPoint2fArray const& points, unsigned int start,
                        unsigned int end)
{
    if (end - start != 3) {
        for (unsigned int k = start + 1; k <= end; ++k) {
            extent.Augment(HvPoint2<T>(points[k]));
        }
        return;
    }
    HvPoint2<T> cubic[4];
    for (unsigned int k = 0; k < 4; ++k) {
        cubic[k] = HvPoint2<T>(points[start + k]);
    }
    bool const addsNothing = extent.Contains(cubic[1]) != 0 && extent.Contains(cubic[2]) != 0 &&
                             extent.Contains(cubic[3]) != 0;
    if (!addsNothing) {
        AugmentWithCubic(extent, cubic);
    }
}

template <class T>
HvExtent2<T>& TightExtentOf(HvPoint2fArray const& points, HvUByteArray const& tags,
                            HvExtent2<T>& extent)
{
    extent = HvExtent2<T>();
    HvPathFlattener<T> const outline(points, tags, nullptr, 0.0);
    outline.VisitSubpaths([&](unsigned int first, unsigned int last) {
        extent.Augment(HvPoint2<T>(points[first]));
        outline.VisitSegments(first, last, [&](unsigned int start, unsigned int end) {
            AugmentWithSegment(extent, points, start, end);
            return true;
        });
    });
    return extent;
}

}  // namespace

HvExtent2<float>& HvPath2f::GetTightExtent(HvExtent2<float>& extent) const
{
    HvShapeLock const lock(*this);
    return TightExtentOf(points, tags, extent);
}

HvExtent2<double>& HvPath2f::GetTightExtent(HvExtent2<double>& extent) const
{
    HvShapeLock const lock(*this);
    return TightExtentOf(points, tags, extent);
}

HvExtent2<float>& HvPath2f::GetSegmentExtent(unsigned int i, HvExtent2<float>& extent) const
{
    HvShapeLock const lock(*this);
    extent = HvExtent2<float>();
    HvPathTags const structure(tags);
    if (structure.Has(i)) {
        unsigned int const end = structure.EndOfSegment(i);
        for (unsigned int k = structure.StartOfSegment(i); k <= end; ++k) {
            extent.Augment(points[k]);
        }
    }
    return extent;
}
