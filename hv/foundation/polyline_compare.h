// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Comparisons of points along a polyline and between two polylines.

#ifndef HV_FOUNDATION_POLYLINE_COMPARE_H
#define HV_FOUNDATION_POLYLINE_COMPARE_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/platform/HvExport.h>

/// 0 when two neighbours are equal exactly, otherwise 1; 1 for fewer than two points.
HV_API int HvPoint2fArray_ConsecutivePointsDiffer(HvPoint2fArray const& a);
/// The form for points in double.
HV_API int HvPoint2dArray_ConsecutivePointsDiffer(HvPoint2dArray const& a);

/// 1 when each point lies beyond the one before: at a greater x, or at the same x with a greater y.
/// 1 for fewer than two points; 0 with a NaN coordinate that decides.
HV_API int HvPoint2dArray_IsStrictlyIncreasingX(HvPoint2dArray const& a);

/// Appends the points of flattened runs without neighbouring duplicates.
///
/// A duplicate of the point before is left out. One that ends its run makes the point before the
/// end; but where that is the start of the run, it stays, so that a run never collapses to a single
/// point. `out` and `outTags` may be `a` and `tags`. When std::bad_alloc comes out, they are as
/// they were.
///
/// @param tags     a tag for each point of `a`.
/// @param out      the last point already there counts as the point before the first.
/// @param outTags  as long as `out`.
HV_API void HvPoint2dArray_Filter(HvPoint2dArray const& a, HvPointTagArray const& tags,
                                  HvPoint2dArray& out, HvPointTagArray& outTags);

/// Compares two stretches of polylines at equal lengths from their starts.
///
/// Each inner point of b[b0] to b[b1] is held against the point of a[a0] to a[a1] at the same
/// length; beyond the end of that stretch, against a[a1]. The ends of the stretch of b are not
/// compared.
///
/// @param chordA, chordB  cumulative chord lengths of `a` and `b`, see polyline_length.h.
/// @param tolerance       greatest distance allowed.
/// @param failedAt        index in `b` of the first point that is too far; written only then.
/// @return                1 when all are close, otherwise 0. A NaN distance counts as close.
///
/// Cost: linear, one walk along both.
HV_API int HvPoint2fArray_PolylinesAreClose(HvPoint2fArray const& a, HvDoubleArray const& chordA,
                                            unsigned int a0, unsigned int a1,
                                            HvPoint2fArray const& b, HvDoubleArray const& chordB,
                                            unsigned int b0, unsigned int b1, double tolerance,
                                            unsigned int& failedAt);
/// The form for points in double.
HV_API int HvPoint2dArray_PolylinesAreClose(HvPoint2dArray const& a, HvDoubleArray const& chordA,
                                            unsigned int a0, unsigned int a1,
                                            HvPoint2dArray const& b, HvDoubleArray const& chordB,
                                            unsigned int b0, unsigned int b1, double tolerance,
                                            unsigned int& failedAt);

#endif
