// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A smooth piecewise cubic curve of the plane, fitted to points.

#ifndef HV_BEZIER_HVSPLINE2D_H
#define HV_BEZIER_HVSPLINE2D_H

#include <hv/bezier/HvSpline.h>

class HvBezierSink;

/// A piecewise cubic curve of the plane over the length of the polyline that it was fitted to.
class HV_API HvSpline2d : public HvSpline<HvPoint2<double>> {
public:
    using HvSpline::OpenFit;
    /// Replaces the spline by one that meets every point within a tolerance, with few knots.
    ///
    /// The parameter is the length of the polyline up to a point, so the spline runs at a speed of
    /// about 1; points that repeat their predecessor count once. The knots stand at points and the
    /// spline goes through those; first and last point are knots. Where the polyline has a corner,
    /// knots at neighbouring points stand for it.
    ///
    /// @param points      in their order along the curve; the curve may cross itself.
    /// @param tolerance   greatest distance of a point from the spline at the parameter of the
    ///                    point, in the unit of the points; 0 or above. A tolerance within the
    ///                    noise of the points keeps many of them as knots.
    /// @param kind        a Kind.
    /// @param parameters  unless null, replaced by the parameters of the points, where the spline
    ///                    meets them: from 0 on, and rising wherever the point changes.
    /// @return            1; 0, with the spline as it was, for fewer than two points, a coordinate
    ///                    or a length that is not finite, a tolerance that is negative or NaN, or
    ///                    an unknown kind.
    ///
    /// Points that are all equal make one knot. A point that is so near its predecessor that the
    /// length would not grow counts as the least step away. Cost and source: as the general form,
    /// which takes points with parameters of their own, such as times.
    int OpenFit(HvPoint2dArray const& points, double tolerance, int kind,
                HvDoubleArray* parameters = nullptr);

    /// Draws the curve, a cubic for each two neighbouring knots. What is not in the range of float
    /// is drawn at its end.
    ///
    /// @param continuePath  0: a Moveto to the first knot comes first. Otherwise none does.
    /// @return              points added: 3 for each cubic and 1 for a Moveto. A single knot gives
    ///                      one collapsed cubic; a spline without knots draws nothing.
    unsigned int Draw(HvBezierSink& sink, int continuePath) const;
};

#endif
