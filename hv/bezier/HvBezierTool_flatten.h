// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cubic Bezier curves to polylines.

#ifndef HV_BEZIER_HVBEZIERTOOL_FLATTEN_H
#define HV_BEZIER_HVBEZIERTOOL_FLATTEN_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPoint3.h>
#include <hv/foundation/HvPoint3dArray.h>

// For the three operations:
//
// Appends a polyline whose distance from the curve, measured across the chord of each piece, is
// within a tolerance. The curve is halved until its third difference is about the tolerance; each
// piece is then walked in equal steps of its parameter by forward differences. The first and the
// last point are the given P0 and P3 themselves.
//
// `cubic`      four points, P0 to P3; they may lie in the storage of `out`.
// `tolerance`  above 0, in the unit of the points. For 0, a negative number or NaN the number of
//              points means nothing, though the operation still ends.
// `out`        the points are appended to it.
// `skipFirst`  not 0: P0 is not appended, so that joined curves do not repeat the joint.
//
// They return the number of points appended: at least 1. A curve that only runs to and fro on its
// chord is flattened to its ends. Points that are not finite give no subdivision. More points than
// an array holds are refused by std::bad_alloc; `out` then holds what it held before.
//
// Cost: additions only for each point. Source: the distance of a chord is bounded by the second
// derivative, Filip, Magedson, Markot, "Surface algorithms using bounds on derivatives", 1986;
// forward differences: Foley, van Dam et al., Computer Graphics, 1990, 11.2.

/// The form for points in float; all arithmetic is in double and each point is rounded at its
/// appending.
HV_API unsigned int HvBezierTool_FlattenCubic2f(HvPoint2<float> const* cubic, double tolerance,
                                                HvPoint2fArray* out, int skipFirst);

/// The form for points in double; a piece has at most 1024 steps, which the other forms do not
/// limit.
HV_API unsigned int HvBezierTool_FlattenCubic2d(HvPoint2<double> const* cubic, double tolerance,
                                                HvPoint2dArray* out, int skipFirst);

/// The form for points of space.
HV_API unsigned int HvBezierTool_FlattenCubic3d(HvPoint3<double> const* cubic, double tolerance,
                                                HvPoint3dArray* out, int skipFirst);

#endif
