// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The direction of a stroke at a point.

#ifndef HV_PATHBUILD_STROKE_TANGENTS_H
#define HV_PATHBUILD_STROKE_TANGENTS_H

#include <hv/foundation/HvPoint2fArray.h>

class HvPath2f;

/// Estimates the direction along the walk at points[i], of length 1.
///
/// @param forward,backward  which neighbours tell. `forward` not 0: the two points after it.
///                          Otherwise `backward` not 0: the two before it. Both 0: the points
///                          before and after it.
/// @param crude             not 0: of the two points only the nearer one.
/// @return                  with two neighbours on one side the tangent of the circle through the
///                          three points, unless they bend by less than about 10 degrees; otherwise
///                          the direction of the step. At an end of the points the step that there
///                          is. Zero where the step has no length, for a single point, and for an
///                          `i` beyond the last.
HV_API HvPoint2<float> EstimateTangentDirection(HvPoint2fArray const& points, unsigned int i,
                                                int forward, int backward, int crude);

/// Reads the direction of the last subpath of `path`, of length 1, so that a curve can join it.
///
/// @param points  the stroke, of two points or more: tells where the subpath has no segment yet.
/// @param atEnd   not 0: the direction in which the subpath arrives at its last point, or
///                points[0] to points[1]. 0: that in which it leaves its start, or that of the last
///                step of `points`.
/// @return        zero when the subpath is a single line, and where a handle is collapsed.
///
/// Cost: constant with `atEnd`, otherwise a walk over the subpath.
HV_API HvPoint2<double> GetTangentDirectionOnPath(HvPoint2fArray const& points,
                                                  HvPath2f const* path, int atEnd);

#endif
