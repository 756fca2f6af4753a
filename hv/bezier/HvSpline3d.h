// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A smooth piecewise cubic curve of space, fitted to points.

#ifndef HV_BEZIER_HVSPLINE3D_H
#define HV_BEZIER_HVSPLINE3D_H

#include <hv/bezier/HvSpline.h>

/// A piecewise cubic curve of space over the length of the polyline that it was fitted to.
class HV_API HvSpline3d : public HvSpline<HvPoint3<double>> {
public:
    using HvSpline::OpenFit;
    /// Replaces the spline by one that meets every point within a tolerance, with few knots: in
    /// all as HvSpline2d::OpenFit.
    int OpenFit(HvPoint3dArray const& points, double tolerance, int kind,
                HvDoubleArray* parameters = nullptr);
};

#endif
