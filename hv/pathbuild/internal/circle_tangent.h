// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tangent of a circle through three points.

#ifndef HV_PATHBUILD_INTERNAL_CIRCLE_TANGENT_H
#define HV_PATHBUILD_INTERNAL_CIRCLE_TANGENT_H

#include <hv/foundation/HvPoint2.h>

/// Which way a line through three points is walked.
enum class HvWalk {
    ToEnd,     ///< A, B, C: C is the last point
    FromStart  ///< C, B, A: C is the first point
};

/// The tangent at `c` of the circle through three points, along the walk, of length 1. Points in
/// line give the direction of the step between `b` and `c`; so do those whose centre a float cannot
/// hold. Zero for equal points; where only `b` equals `c`, the direction between `a` and `b`.
HvPoint2<float> HvCircle_Tangent(HvPoint2<float> const& a, HvPoint2<float> const& b,
                                 HvPoint2<float> const& c, HvWalk walk);

#endif
