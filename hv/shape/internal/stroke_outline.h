// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of a stroke: joins, caps, and the walk along both sides of a polyline.

#ifndef HV_SHAPE_INTERNAL_STROKE_OUTLINE_H
#define HV_SHAPE_INTERNAL_STROKE_OUTLINE_H

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>

class HvPath2f;
struct HvGC;

/// Appends to `outline` the outlines of strokes along polylines without neighbouring duplicates, in
/// their own coordinates: one ring for an open polyline, two rings of opposite directions for one
/// that ends in the point where it began. Filled by winding they give the stroke. A polyline of two
/// equal points adds a start alone.
///
/// @param gc  gives width, taper, caps, joins, miter limit and the gap up to which no join is made.
void HvStroke_AppendOutlines(HvPoint2dArray const& points, HvPointTagArray const& tags,
                             HvGC const& gc, HvPath2f& outline);

#endif
