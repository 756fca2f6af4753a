// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polylines between two polylines, and even spacing along one.
//
// "Single component": the whole array is one run. When std::bad_alloc comes out, `out` is as it
// was.

#ifndef HV_FOUNDATION_POLYLINE_INTERPOLATE_H
#define HV_FOUNDATION_POLYLINE_INTERPOLATE_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/platform/HvExport.h>

/// Interpolates two polylines point by point: b * t + a * (1 - t), each product rounded to float.
///
/// @param b    at least as many points as `a`.
/// @param t    0 gives a copy of `a`, 1 a copy of `b`; not clamped.
/// @param out  becomes the result, as many points as `a`; may be `a` or `b`.
HV_API void HvPoint2fArraySingleComponent_Lerp(HvPoint2fArray const& a, HvPoint2fArray const& b,
                                               double t, HvPoint2fArray& out);

/// The same with a[a0] to a[a1] and b[b0] to b[b1], inclusive, appended to `out`. Of ranges of
/// different lengths the shorter counts, but for t 0 and 1, which copy one whole range.
HV_API void HvPoint2fArraySingleComponent_Lerp(HvPoint2fArray const& a, unsigned int a0,
                                               unsigned int a1, HvPoint2fArray const& b,
                                               unsigned int b0, unsigned int b1, double t,
                                               HvPoint2fArray& out);

/// Appends the points that divide a polyline into `n` stretches of equal length: n + 1 points from
/// its first to its last. With `n` 0 or 1, or without a length, the first and the last only; an
/// empty polyline appends nothing.
///
/// @param chord  the cumulative chord lengths of `a`, see polyline_length.h.
///
/// Cost: linear, one walk along the polyline.
HV_API void HvPoint2fArraySingleComponent_EvenSubdivide(HvPoint2fArray const& a,
                                                        HvDoubleArray const& chord, unsigned int n,
                                                        HvPoint2fArray& out);

/// Interpolates two polylines as a turtle walks: the first points and then the directions of the
/// steps are interpolated, all steps have the interpolated length of the two first steps.
///
/// Directions are interpolated as angles from 0 to 2 pi and not unwrapped: two directions on both
/// sides of the first axis turn through the opposite one.
///
/// @param b    at least as many points as `a`.
/// @param t    0 gives a copy of `a`, 1 a copy of `b`; not clamped.
/// @param out  becomes the result, as many points as `a`; may be `a` or `b`.
HV_API void HvPoint2fArraySingleComponent_TurtleInterp(HvPoint2fArray const& a,
                                                       HvPoint2fArray const& b, double t,
                                                       HvPoint2fArray& out);

#endif
