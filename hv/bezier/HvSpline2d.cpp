// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A smooth piecewise cubic curve of the plane, fitted to points.

#include <hv/bezier/HvSpline2d.h>

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/internal/float_point.h>

int HvSpline2d::OpenFit(HvPoint2dArray const& points, double tolerance, int kind,
                        HvDoubleArray* parameters)
{
    return FitPolyline(points, tolerance, kind, parameters);
}

unsigned int HvSpline2d::Draw(HvBezierSink& sink, int continuePath) const
{
    unsigned int const count = NumKnots();
    if (count == 0) {
        return 0;
    }
    unsigned int added = 0;
    HvPoint2<float> const start = HvFloatPoint_Nearest(Value(0));
    if (continuePath == 0) {
        sink.Moveto(start);
        added = 1;
    }
    if (count == 1) {
        sink.Curveto(start, start, start);
        return added + 3;
    }
    for (unsigned int i = 0; i + 1 < count; ++i) {
        double const third = (Knot(i + 1) - Knot(i)) / 3.0;
        sink.Curveto(HvFloatPoint_Nearest(Value(i) + RightDerivative(i) * third),
                     HvFloatPoint_Nearest(Value(i + 1) - LeftDerivative(i + 1) * third),
                     HvFloatPoint_Nearest(Value(i + 1)));
        added += 3;
    }
    return added;
}
