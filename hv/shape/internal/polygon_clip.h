// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons cut to a rectangle.

#ifndef HV_SHAPE_INTERNAL_POLYGON_CLIP_H
#define HV_SHAPE_INTERNAL_POLYGON_CLIP_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>

/// Cuts `polygon`, a ring whose last point is not a repeat of its first, to `clip`: against its
/// least x, its least y, its greatest x and its greatest y in this order, a point on a side being
/// inside. Points on a side have exactly its coordinate. The state of `clip` is not looked at.
///
/// Afterwards `polygon` holds the result, without points when nothing is left; `spare` is
/// overwritten. Cost: linear. Source: Sutherland, Hodgman, "Reentrant polygon clipping", 1974.
void HvPolygon_Clip(HvPoint2dArray& polygon, HvExtent2<double> const& clip, HvPoint2dArray& spare);

#endif
