// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A smooth piecewise cubic curve of space, fitted to points.

#include <hv/bezier/HvSpline3d.h>

int HvSpline3d::OpenFit(HvPoint3dArray const& points, double tolerance, int kind,
                        HvDoubleArray* parameters)
{
    return FitPolyline(points, tolerance, kind, parameters);
}
