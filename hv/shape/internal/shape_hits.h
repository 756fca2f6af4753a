// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tests of which the hit tests of all shapes are made.

#ifndef HV_SHAPE_INTERNAL_SHAPE_HITS_H
#define HV_SHAPE_INTERNAL_SHAPE_HITS_H

#include <hv/bezier/line_clip.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2.h>

#include <cmath>

/// Whether a query meets the extent of a shape, both closed. The whole plane meets all but the
/// empty extent, and an extent with a NaN side meets nothing but the whole plane.
template <class T>
bool HvShapeHit_DoExtentsOverlap(HvExtent2<T> const& query, HvExtent2<T> const& shape)
{
    using Extent = HvExtent2<T>;
    if (query.state == Extent::WholePlane || shape.state == Extent::WholePlane) {
        return query.state != Extent::Empty && shape.state != Extent::Empty;
    }
    return query.state == Extent::Ordinary && shape.state == Extent::Ordinary &&
           query.max.x >= shape.min.x && shape.max.x >= query.min.x && query.max.y >= shape.min.y &&
           shape.max.y >= query.min.y;
}

/// Whether the closed segment a to b meets the extent, which is closed too.
inline bool HvShapeHit_DoesSegmentMeet(HvExtent2<float> const& extent, HvPoint2<float> const& a,
                                       HvPoint2<float> const& b)
{
    if (extent.state != HvExtent2<float>::Ordinary) {
        return extent.state == HvExtent2<float>::WholePlane;
    }
    HvExtent2<double> const clip(extent.min.x, extent.min.y, extent.max.x, extent.max.y);
    return HvLineClip_Meets(HvPoint2<double>(a), HvPoint2<double>(b), clip) != 0;
}

/// Whether `p` lies in the closed square of side `size` centred on `center`.
inline bool HvShapeHit_IsInSquare(HvPoint2<float> const& p, HvPoint2<float> const& center,
                                  double size)
{
    double const half = size / 2.0;
    return half >= std::fabs(double(p.x) - double(center.x)) &&
           half >= std::fabs(double(p.y) - double(center.y));
}

#endif
