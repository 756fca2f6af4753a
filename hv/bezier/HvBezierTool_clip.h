// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cubic Bezier curves of the plane to polylines, clipped to a rectangle.

#ifndef HV_BEZIER_HVBEZIERTOOL_CLIP_H
#define HV_BEZIER_HVBEZIERTOOL_CLIP_H

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>

/// Flattens a cubic as HvBezierTool_FlattenCubic2d does and appends what of it lies in a rectangle.
///
/// A curve that leaves the rectangle and returns gives several runs; tags and flags are those of
/// HvFlattenedRuns, and the first edge goes on from the last vertex in `points` when it starts
/// there. A run that was open in the arrays and does not go on gets the tag HvPointTagEnd, and as
/// the flag of its last vertex 0 when the control points all lie in the rectangle, 1 when they do
/// not. When nothing is visible, nothing changes.
///
/// @param cubic      four points, P0 to P3; they may lie in the storage of `points`.
/// @param tolerance  above 0, in the unit of the points.
/// @param clip       closed; empty gives nothing, the whole plane everything. Where it cuts, edges
///                   with ends that are not finite are left out.
/// @param points, tags, flags  parallel arrays; after a std::bad_alloc they hold what they held.
///
/// Cost: a part of the curve whose control points lie beyond one side is not walked.
HV_API void HvBezierTool_ClipAndFlattenCubic2d(HvPoint2<double> const* cubic, double tolerance,
                                               HvExtent2<double> const& clip,
                                               HvPoint2dArray* points, HvPointTagArray* tags,
                                               HvBoolArray* flags);

#endif
