// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: its outline and hits, and the members that it shares with the oval.

#include <hv/shape/HvRect2f.h>

#include <hv/shape/HvGC.h>
#include <hv/shape/internal/HvParallelogramShape2f.inl>
#include <hv/shape/internal/rect_hits.h>
#include <hv/shape/internal/shape_hits.h>

template class HvParallelogramShape2f<HvRect2f>;

void HvRect2f::SetupPathRep(HvPath2f& path) const
{
    HvShapeLock const lock(*this);
    HvPoint2<float> const corners[] = {frame_.p0, frame_.p1, frame_.FourthCorner(), frame_.p2,
                                       frame_.p0};
    unsigned int const size = 5;
    path.AppendPolylines(corners, &size, 1);
}

int HvRect2f::IsIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                   int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 &&
        !HvShapeHit_DoExtentsOverlap(extent, gc.transform.Map(frame_.Extent()))) {
        return 0;
    }
    return HvRectHits(frame_, gc.transform).DoesOutlineMeet(extent) ? 1 : 0;
}

bool HvRect2f::IsInteriorIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                            int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 &&
        !HvShapeHit_DoExtentsOverlap(extent, gc.transform.Map(frame_.Extent()))) {
        return false;
    }
    // An extent that the outline does not meet lies inside or outside as a whole, and so does its
    // corner; one that is not ordinary has none.
    return IsIntersectingExtent(gc, extent, 1) != 0 ||
           (extent.state == HvExtent2<float>::Ordinary &&
            HvRectHits(frame_, gc.transform).Holds(extent.min));
}
