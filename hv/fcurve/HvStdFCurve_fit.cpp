// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Standard curves through or near data points, and the appending of segments they are built with.
//
// Sources: Catmull and Rom, A class of local interpolating splines, 1974 (over a non-uniform
// parameter); the C2 spline as in Press et al., Numerical Recipes, 2007, 3.3, with given end
// slopes.

#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/data_points.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/polyline_eval.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;

unsigned char KindByte(HvBaseFCurve::FSKind kind)
{
    return static_cast<unsigned char>(kind);
}

/// The handle at a third of the chord from P to Q, P at one end of the polyline with the unit
/// tangent `t`. A tangent so steep that its x vanishes has no such handle; it stays on the key.
Point EndHandle(Point const& P, double span, Point const& t)
{
    return t.x > 0 ? P + t * (span / (3 * t.x)) : P;
}

/// Slope of a unit tangent; 0 when its x vanishes.
double SlopeOf(Point const& t)
{
    return t.x > 0 ? t.y / t.x : 0;
}

/// The second derivatives, at the points, of the C2 spline through them with the slopes of the
/// polyline at both ends: a forward sweep of the tridiagonal system, then back substitution. At
/// least two points.
HvDoubleArray SecondDerivatives(HvPoint2dArray const& points)
{
    unsigned int const n = points.Size();
    auto const slope = [&points](unsigned int i) {
        return (points[i + 1].y - points[i].y) / (points[i + 1].x - points[i].x);
    };
    auto const span = [&points](unsigned int i) { return points[i + 1].x - points[i].x; };

    HvDoubleArray m(0.0, n);
    HvDoubleArray u(0.0, n);
    m[0] = -0.5;
    u[0] = 3 / span(0) * (slope(0) - SlopeOf(HvPoint2dArray_FirstTangent(points)));
    for (unsigned int i = 1; i + 1 < n; ++i) {
        double const reach = points[i + 1].x - points[i - 1].x;
        double const sig = span(i - 1) / reach;
        double const p = sig * m[i - 1] + 2;
        m[i] = (sig - 1) / p;
        u[i] = (6 * (slope(i) - slope(i - 1)) / reach - sig * u[i - 1]) / p;
    }
    double const q = 0.5;
    double const end =
        3 / span(n - 2) * (SlopeOf(HvPoint2dArray_LastTangent(points)) - slope(n - 2));
    m[n - 1] = (end - q * u[n - 2]) / (q * m[n - 2] + 1);
    for (unsigned int i = n - 1; i-- > 0;) {
        m[i] = m[i] * m[i + 1] + u[i];
    }
    return m;
}

}  // namespace

void HvStdFCurveImpl::AppendKey(CFCStdKey const& key)
{
    unsigned int const n = NumKeys();
    if (std::isfinite(key.parameter) && (n == 0 || key.parameter > LastParameter())) {
        InsertKey(n, key, key.constraints.word);
    }
}

void HvStdFCurveImpl::AppendCubicSegment(Point const& P0, Point const& P1, Point const& P2,
                                         Point const& P3)
{
    if (NumKeys() == 0) {
        keys.Add(CFCStdKey(P0.x, P0.y, HvBaseFCurve::CubicSegment));
    }
    unsigned int const last = NumKeys() - 1;
    CFCStdKey key(P3.x, P3.y, static_cast<FSKind>(keys[last].segmentKind));
    key.leftHandle = P2;
    keys.Add(key);
    keys[last].segmentKind = KindByte(HvBaseFCurve::CubicSegment);
    WriteRightHandle(last, P1);
    WriteLeftHandle(last + 1, P2);
}

void HvStdFCurveImpl::AppendLinearSegment(Point const& P)
{
    unsigned int const n = NumKeys();
    FSKind const kind = static_cast<FSKind>(n == 0 ? defaultSegmentKind : keys[n - 1].segmentKind);
    keys.Add(CFCStdKey(P.x, P.y, kind));
    if (n != 0) {
        keys[n - 1].segmentKind = KindByte(HvBaseFCurve::LinearSegment);
    }
}

void HvStdFCurveImpl::SetToInterpCatmullRom(HvPoint2dArray const& points)
{
    unsigned int const n = points.Size();
    keys.Reserve(n);
    if (n == 1) {
        keys.Add(CFCStdKey(points[0].x, points[0].y, HvBaseFCurve::CubicSegment));
        return;
    }
    Point right =
        EndHandle(points[0], points[1].x - points[0].x, HvPoint2dArray_FirstTangent(points));
    for (unsigned int i = 1; i + 1 < n; ++i) {
        Point const& here = points[i];
        double const a = here.x - points[i - 1].x;
        double const b = points[i + 1].x - here.x;
        double const w = points[i + 1].x - points[i - 1].x;
        double const h = points[i + 1].y - points[i - 1].y;
        double const c = 1 / (3 * w);
        AppendCubicSegment(points[i - 1], right, {here.x - w * a * c, here.y - h * a * c}, here);
        right = {here.x + b * w * c, here.y + h * b * c};
    }
    Point const& end = points[n - 1];
    AppendCubicSegment(points[n - 2], right,
                       EndHandle(end, points[n - 2].x - end.x, HvPoint2dArray_LastTangent(points)),
                       end);
}

void HvStdFCurveImpl::SetToInterpCubicC2(HvPoint2dArray const& points)
{
    unsigned int const n = points.Size();
    keys.Reserve(n);
    if (n == 1) {
        keys.Add(CFCStdKey(points[0].x, points[0].y, HvBaseFCurve::CubicSegment));
        return;
    }
    HvDoubleArray const m = SecondDerivatives(points);
    for (unsigned int i = 0; i + 1 < n; ++i) {
        Point const& a = points[i];
        Point const& b = points[i + 1];
        double const h = b.x - a.x;
        double const rise = b.y - a.y;
        AppendCubicSegment(a, {a.x + h / 3, a.y + (rise - h * h * (2 * m[i] + m[i + 1]) / 6) / 3},
                           {b.x - h / 3, b.y - (rise + h * h * (m[i] + 2 * m[i + 1]) / 6) / 3}, b);
    }
}

void HvStdFCurveImpl::SetToApproxLinearFitC0(HvPoint2dArray const& points, double tolerance)
{
    HvPoint2dArray const kept = CFCDataPoints_LinearFit(points, tolerance);
    keys.Add(CFCStdKey(kept[0].x, kept[0].y, HvBaseFCurve::LinearSegment));
    for (unsigned int i = 1; i < kept.Size(); ++i) {
        AppendLinearSegment(kept[i]);
    }
}
