// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The point of a cubic nearest to a given point.

#ifndef HV_BEZIER_HVBEZIERTOOL_LOCATE_H
#define HV_BEZIER_HVBEZIERTOOL_LOCATE_H

#include <hv/foundation/HvPoint2.h>
#include <hv/foundation/HvPoint3.h>

/// Finds the parameter of a cubic nearest to `point`, on a polyline as fine as flattening gives,
/// without the limit of 1024 steps in a piece.
///
/// @param cubic               four points, P0 to P3.
/// @param tolerance           above 0, in the unit of the points. So small a tolerance that a piece
///                            would take more than 2^31 steps finds nothing.
/// @param point               where to look.
/// @param maxSquaredDistance  how far, squared, the point may lie from the polyline.
/// @param squaredDistance     squared distance of `point` from the polyline.
/// @param parameter           0 at P0 to 1 at P3; the last point may give a rounding less than 1.
///                            Of several nearest places the first one counts.
/// @return  1 when a place within reach was found; otherwise 0, with both outputs as they were,
///          also when a coordinate is NaN.
///
/// Accuracy: the parameter is that of the nearest point of a chord, whose ends lie on the curve.
/// Places within 3.16e-4 of each other count as one; see HvPoint2_AIsNearB. Cost: the halves of the
/// curve whose control points are out of reach are not walked; the rest costs one segment test for
/// each step of the polyline.
HV_API int HvBezierTool_LocatePoint2d(HvPoint2<double> const* cubic, double tolerance,
                                      HvPoint2<double> const& point, double maxSquaredDistance,
                                      double& squaredDistance, double& parameter);

/// The form for points in float; all arithmetic is in double.
HV_API int HvBezierTool_LocatePoint2f(HvPoint2<float> const* cubic, double tolerance,
                                      HvPoint2<float> const& point, double maxSquaredDistance,
                                      double& squaredDistance, double& parameter);

/// The form for points of space.
HV_API int HvBezierTool_LocatePoint3d(HvPoint3<double> const* cubic, double tolerance,
                                      HvPoint3<double> const& point, double maxSquaredDistance,
                                      double& squaredDistance, double& parameter);

#endif
