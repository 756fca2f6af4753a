// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Positions and directions on polylines.

#ifndef HV_FOUNDATION_POLYLINE_EVAL_H
#define HV_FOUNDATION_POLYLINE_EVAL_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/platform/HvExport.h>

/// Finds the point at length `s` along a polyline.
///
/// @param chord  the cumulative chord lengths of `a`, see polyline_length.h.
/// @param out    the first point for 0, the last from the whole length on; below 0 the first
///               segment is extended. An empty polyline leaves it as it was, NaN gives NaN.
///
/// Cost: logarithmic.
HV_API void HvPoint3dArraySingleComponent_ComputePosition(HvPoint3dArray const& a,
                                                          HvDoubleArray const& chord, double s,
                                                          HvPoint3<double>& out);

/// Unit vector from the first point to the second; zero when they are equal or there are fewer than
/// two points.
HV_API HvPoint2<double> HvPoint2dArray_FirstTangent(HvPoint2dArray const& a);

/// Unit vector from the last point but one to the last; zero as in HvPoint2dArray_FirstTangent.
HV_API HvPoint2<double> HvPoint2dArray_LastTangent(HvPoint2dArray const& a);

/// Reads a table of values: y at the abscissa `x`, linear between points sorted by x.
///
/// An x beyond the ends extends the first or last segment. Of points with equal x the one that the
/// bisection meets tells. A single point gives its y for any x, an empty array 0, and NaN gives
/// NaN between several points. Cost: logarithmic.
HV_API double HvPoint2dArray_EvalYInSortedArray(HvPoint2dArray const& a, double x);

#endif
