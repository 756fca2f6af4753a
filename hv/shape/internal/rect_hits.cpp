// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Hits of a rectangle, whose outline is known without flattening.

#include <hv/shape/internal/rect_hits.h>

#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvParallelogram2f.h>
#include <hv/shape/internal/shape_hits.h>

HvRectHits::HvRectHits(HvParallelogram2f const& rect, HvTransfo4 const& transform)
    : corners_{transform.Map(rect.p0), transform.Map(rect.p1), transform.Map(rect.FourthCorner()),
               transform.Map(rect.p2)}
{
}

bool HvRectHits::DoesOutlineMeet(HvExtent2<float> const& extent) const
{
    for (HvPoint2<float> const& corner : corners_) {
        if (extent.Contains(corner) != 0) {
            return true;
        }
    }
    for (int i = 0; i < 4; ++i) {
        if (HvShapeHit_DoesSegmentMeet(extent, corners_[i], corners_[(i + 1) % 4])) {
            return true;
        }
    }
    return false;
}

bool HvRectHits::Holds(HvPoint2<float> const& p) const
{
    return HvPoint2_IsInTriangle(p, corners_[0], corners_[1], corners_[2]) != 0 ||
           HvPoint2_IsInTriangle(p, corners_[0], corners_[2], corners_[3]) != 0;
}
