// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Splitting a cubic of space.

#ifndef HV_BEZIER_HVBEZIERTOOL_SPLIT_H
#define HV_BEZIER_HVBEZIERTOOL_SPLIT_H

#include <hv/foundation/HvPoint3.h>

/// Splits a cubic at `t`; HvCubic_SplitInner is the same for points of any kind.
///
/// @param cubic  P0 to P3.
/// @param out    receives five points: the two inner control points of the left part, the point on
///               the curve, the two inner control points of the right part. P0 and P3 are not
///               repeated. It may overlap `cubic`.
/// @param t      0 to 1; a number outside extrapolates.
HV_API void HvBezierTool_SplitCubic3d(HvPoint3<double> const* cubic, HvPoint3<double>* out,
                                      double t);

#endif
