// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves through and near a run of points, appended to a path.
//
// A run is points[first] to points[last], and its curves start at the end of the path. A run of no
// step, and indices outside the arrays, append nothing. With `firstIsCorner` or at index 0 the
// first curve leaves in the direction of the points, otherwise in that of the path's end. With
// `close` the last curve also closes the subpath, whose start must be points[last]; unless
// `lastIsCorner`, it arrives in the direction in which the subpath started. When std::bad_alloc
// comes out, the path may hold some of the curves.

#ifndef HV_PATHBUILD_STROKE_FITTING_H
#define HV_PATHBUILD_STROKE_FITTING_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>

class HvBezierTool;
class HvPath2f;

/// Appends a cubic for each step. Its handles are a third of the step, shorter where the tangents
/// turn away from the step by more than 8 tolerances: the product of handle and sine is then 8/3 of
/// the tolerance, so that no handle leads farther astray.
///
/// @param chord  cumulative lengths, one for each of `points`.
HV_API void CubicInterpolation(HvPoint2fArray const& points, HvDoubleArray const& chord,
                               double tolerance, unsigned int first, int firstIsCorner,
                               unsigned int last, int lastIsCorner, int close, HvPath2f* path);

/// Appends one segment for the whole run, the points between as its inner controls.
///
/// The degree is one more than the steps, and one more still to close, when `maxDegree` admits
/// that; otherwise the last control, which gives the closing direction, takes the place of the last
/// point between. A run of 8 steps or more is halved, since no segment is above degree 8.
HV_API void FindBezierCurve(HvPoint2fArray const& points, unsigned int maxDegree,
                            unsigned int first, int firstIsCorner, unsigned int last,
                            int lastIsCorner, int close, HvPath2f* path);

/// Fits the run by a cubic within `tolerance`; where none is found, halves it.
///
/// @param chord      cumulative lengths, one for each of `points`.
/// @param maxDegree  rounds of the fit, see HvBezierTool::SingleCurveFitG1G1, and the fewest steps
///                   of a half that is fitted. A half of fewer steps goes to FindBezierCurve, one
///                   of a single step to CubicInterpolation.
///
/// A run that ends in two steps below the tolerance, on both axes, ends in a free direction.
/// Cost: O(n log n) for n points.
HV_API void FitBezierCurve(HvPoint2fArray const& points, HvDoubleArray const& chord,
                           double tolerance, unsigned int maxDegree, unsigned int first,
                           int firstIsCorner, unsigned int last, int lastIsCorner, int close,
                           HvBezierTool& tool, HvPath2f* path);

#endif
