// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Standard curves fitted to data points by a smoothing spline.

#include <hv/bezier/HvSpline1d.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>

namespace {

using Point = HvPoint2<double>;

/// The handle x of a fitted or straight cubic from its other key.
constexpr double kTwoThirdsOfSpan = 0.6666666666666666;

}  // namespace

void HvStdFCurveImpl::SetToApproxCubicFitG1(HvPoint2dArray const& points, double tolerance)
{
    unsigned int const n = points.Size();
    if (n == 1) {
        keys.Add(CFCStdKey(points[0].x, points[0].y, HvBaseFCurve::CubicSegment));
        return;
    }
    HvSpline1d spline;
    if (n > 2) {
        HvDoubleArray xs(n);
        HvDoubleArray ys(n);
        for (Point const& point : points) {
            xs.Add(point.x);
            ys.Add(point.y);
        }
        spline.OpenFit(xs, ys, tolerance, HvSpline1d::ContinuousDerivative);
    }
    // Keys are born with their tangent continuity locked, which is what makes the result G1.
    if (spline.NumKnots() == 0) {  // two points, or samples that no spline meets
        Point const& a = points[0];
        Point const& b = points[n - 1];
        AppendCubicSegment(a, a + (b - a) * kThirdOfSpan, a + (b - a) * kTwoThirdsOfSpan, b);
        return;
    }
    for (unsigned int i = 0; i + 1 < spline.NumKnots(); ++i) {
        Point const a(spline.Knot(i), spline.Value(i));
        Point const b(spline.Knot(i + 1), spline.Value(i + 1));
        double const h = b.x - a.x;
        double const x1 = a.x + h * kThirdOfSpan;
        double const x2 = a.x + h * kTwoThirdsOfSpan;
        AppendCubicSegment(a, {x1, a.y + h * kThirdOfSpan * spline.RightDerivative(i)},
                           {x2, b.y + (x2 - b.x) * spline.LeftDerivative(i + 1)}, b);
    }
}
