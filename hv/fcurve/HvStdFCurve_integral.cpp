// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The signed area under the standard curve.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

#include <algorithm>

namespace {

using Point = HvPoint2<double>;

/// The power form of a cubic Bezier coordinate: ((a t + b) t + c) t + d.
struct PowerForm {
    double a, b, c, d;

    PowerForm(double c0, double c1, double c2, double c3)
        : a(3 * c1 + c3 - 3 * c2 - c0), b(3 * (c0 - 2 * c1 + c2)), c(3 * (c1 - c0)), d(c0)
    {
    }
};

/// The integral of y(t) x'(t) from t0 to t1: the area under a cubic Bezier. The product has degree
/// 5 and is integrated term by term.
double AreaUnderCubic(Point const* P, double t0, double t1)
{
    PowerForm const x(P[0].x, P[1].x, P[2].x, P[3].x);
    PowerForm const y(P[0].y, P[1].y, P[2].y, P[3].y);
    double const c6 = 3 * x.a * y.a * 0.16666666666666666;
    double const c5 = (2 * x.b * y.a + 3 * x.a * y.b) * 0.2;
    double const c4 = (x.c * y.a + 2 * x.b * y.b + 3 * x.a * y.c) * 0.25;
    double const c3 = (x.c * y.b + 2 * x.b * y.c + 3 * x.a * y.d) * 0.3333333333333333;
    double const c2 = (x.c * y.c + 2 * x.b * y.d) * 0.5;
    double const c1 = x.c * y.d;
    auto const antiderivative = [&](double t) {
        return (((((c6 * t + c5) * t + c4) * t + c3) * t + c2) * t + c1) * t;
    };
    return antiderivative(t1) - antiderivative(t0);
}

/// The area under a cubic Bezier between the parameters a and b.
double CubicPieceIntegral(double a, double b, Point const* P)
{
    return AreaUnderCubic(P, FindCubicParameter(a, P[0].x, P[1].x, P[2].x, P[3].x),
                          FindCubicParameter(b, P[0].x, P[1].x, P[2].x, P[3].x));
}

/// The integral from `from` to `to`, both in the key range and from < to.
double IntegralOverKeys(HvStdFCurveImpl const& curve, double from, double to)
{
    unsigned int const lastSegment = curve.NumKeys() - 2;
    int exact = 0;
    unsigned int count = curve.LocateParameter(from, exact);
    unsigned int const i = std::min(count == 0 ? 0 : count - 1, lastSegment);
    count = curve.LocateParameter(to, exact);
    unsigned int const j = std::min(count == 0 ? 0 : count - 1, lastSegment);
    if (i >= j) {
        return curve.PartialSegmentIntegral(i, from, to);
    }
    return curve.RightPieceIntegral(i, from) + curve.WholeSegmentsIntegral(i + 1, j) +
           curve.LeftPieceIntegral(j, to);
}

}  // namespace

double HvStdFCurveImpl::PartialSegmentIntegral(unsigned int i, double a, double b) const
{
    CFCStdKey const& key = keys[i];
    CFCStdKey const& next = keys[i + 1];
    switch (key.segmentKind) {
    case HvBaseFCurve::ConstantSegment:
        return (b - a) * key.rightValue;
    case HvBaseFCurve::LinearSegment: {
        double const slope = (next.leftValue - key.rightValue) / (next.parameter - key.parameter);
        double const atA = key.rightValue + (a - key.parameter) * slope;
        double const atB = key.rightValue + (b - key.parameter) * slope;
        return (b - a) * (atA + atB) * 0.5;
    }
    case HvBaseFCurve::CubicSegment: {
        Point P[4];
        BezierCubicSetupUsingEvaluatedTangents(i, i + 1, P);
        return CubicPieceIntegral(a, b, P);
    }
    default:
        return 0;
    }
}

double HvStdFCurveImpl::LeftPieceIntegral(unsigned int i, double x) const
{
    return PartialSegmentIntegral(i, Parameter(i), x);
}

double HvStdFCurveImpl::RightPieceIntegral(unsigned int i, double x) const
{
    return PartialSegmentIntegral(i, x, Parameter(i + 1));
}

double HvStdFCurveImpl::WholeSegmentsIntegral(unsigned int i, unsigned int j) const
{
    double sum = 0;
    for (unsigned int k = i; k < j; ++k) {
        sum += PartialSegmentIntegral(k, Parameter(k), Parameter(k + 1));
    }
    return sum;
}

double HvStdFCurveImpl::EvalIntegral(double from, double to) const
{
    if (NumKeys() == 0) {
        return (to - from) * valueWhenNoKeys;
    }
    if (from > to) {
        return -EvalIntegral(to, from);
    }
    double const first = FirstParameter();
    double const last = LastParameter();
    double sum = 0;
    if (from < first) {
        sum += (std::min(to, first) - from) * keys[0].leftValue;
    }
    if (to > last) {
        sum += (to - std::max(from, last)) * keys[NumKeys() - 1].rightValue;
    }
    double const a = std::max(from, first);
    double const b = std::min(to, last);
    if (NumKeys() > 1 && a < b) {
        sum += IntegralOverKeys(*this, a, b);
    }
    return sum;
}

double HvStdFCurve::EvalIntegral(double from, double to) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalIntegral(from, to);
}
