// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/std_curve.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

double Real(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1000001) / 1e6;
}

/// A curve of all kinds, with jumps, on [0, 10].
StdCurve MixedCurve()
{
    StdCurve curve({});
    double x = 0;
    for (unsigned i = 0; i < 6; ++i) {
        CFCStdKey key = KeyAt(x, Real(-5, 5), Real(-5, 5), HvBaseFCurve::FSKind(PickInRange(1, 4)));
        key.leftHandle = Point(x - Real(0, 1), Real(-5, 5));
        key.rightHandle = Point(x + Real(0, 1), Real(-5, 5));
        curve.Impl().keys.Add(key);
        x += 2;
    }
    return curve;
}

/// Simpson's rule over Eval between neighbouring keys, so that no jump lies inside a piece; the end
/// values are taken a little inside.
double Quadrature(StdCurve const& curve, double from, double to)
{
    double sum = 0;
    double a = from;
    while (a < to) {
        double next = to;
        if (curve.GetNextKeyParameter(a, next, 0) == 0 || next > to) {
            next = to;
        }
        constexpr int kSteps = 400;
        double const h = (next - a) / (2 * kSteps);
        for (int i = 0; i < kSteps; ++i) {
            double const start = i == 0 ? a + 1e-9 * (next - a) : a + 2 * i * h;
            double const end = i == kSteps - 1 ? next - 1e-9 * (next - a) : a + (2 * i + 2) * h;
            sum += h / 3 *
                   (curve.Eval(start, 0) + 4 * curve.Eval(a + (2 * i + 1) * h, 0) +
                    curve.Eval(end, 0));
        }
        a = next;
    }
    return sum;
}

}  // namespace

TEST(HvStdFCurve_integral, IsARectangleWithoutKeys)
{
    HvStdFCurve const curve(3, kCubic);
    EXPECT_EQ(curve.EvalIntegral(1, 5), 12);
    EXPECT_EQ(curve.EvalIntegral(5, 1), -12);
}

TEST(HvStdFCurve_integral, HoldsTheEndValuesBeyondTheKeysWhateverTheExtrapolation)
{
    StdCurve curve({KeyAt(0, 10, 0, kLinear), KeyAt(2, 4, 20, kLinear)});
    for (int method = 1; method <= 4; ++method) {
        curve.SetExtrapolationMethod(HvBaseFCurve::ExtrapolationMethod(method));
        EXPECT_EQ(curve.EvalIntegral(-1, 0), 10);
        EXPECT_EQ(curve.EvalIntegral(-3, -1), 20);
        EXPECT_EQ(curve.EvalIntegral(0, 2), 4);
        EXPECT_EQ(curve.EvalIntegral(0, 1), 1);
        EXPECT_EQ(curve.EvalIntegral(1, 2), 3);
        EXPECT_EQ(curve.EvalIntegral(2, 3), 20);
        EXPECT_EQ(curve.EvalIntegral(4, 6), 40);
        EXPECT_EQ(curve.EvalIntegral(-1, 3), 34);
        EXPECT_EQ(curve.EvalIntegral(3, -1), -34);
        EXPECT_EQ(curve.EvalIntegral(1, 1), 0);
    }
    StdCurve const single({KeyAt(0, 1, 5, kCubic)});
    EXPECT_EQ(single.EvalIntegral(-2, 3), 17);
}

TEST(HvStdFCurve_integral, AddsEachKind)
{
    StdCurve curve({KeyAt(0, 0, 3, kConstant), KeyAt(2, 9, 1, kLinear), KeyAt(4, 2, 0, kCubic),
                    KeyAt(5, 1, 0, kCubic)});
    // Rectangle 6, trapezoid 3, and the cubic with its handles on its keys: symmetric, 1/2.
    EXPECT_DOUBLE_EQ(curve.EvalIntegral(0, 2), 6);
    EXPECT_DOUBLE_EQ(curve.EvalIntegral(2, 4), 3);
    EXPECT_DOUBLE_EQ(curve.EvalIntegral(4, 5), 0.5);
    EXPECT_DOUBLE_EQ(curve.EvalIntegral(0, 5), 9.5);
    // x = y = 3t^2 - 2t^3: the curve is the line from (4, 0) to (5, 1).
    EXPECT_NEAR(curve.EvalIntegral(4, 4.5), 0.125, 1e-8);
    curve.Impl().keys[1].segmentKind = 0;
    EXPECT_DOUBLE_EQ(curve.EvalIntegral(0, 5), 6.5);
}

RC_GTEST_PROP(HvStdFCurve_integral, AgreesWithQuadrature, ())
{
    StdCurve const curve = MixedCurve();
    double const a = Real(-2, 12);
    double const b = Real(-2, 12);
    // The handles' control polygon leaves x at speed 0 at worst at one point; Simpson's rule on 800
    // points is then good to about 1e-4 of the values' range.
    RC_ASSERT(std::fabs(curve.EvalIntegral(std::min(a, b), std::max(a, b)) -
                        Quadrature(curve, std::min(a, b), std::max(a, b))) < 5e-3);
}

RC_GTEST_PROP(HvStdFCurve_integral, IsAdditiveAndChangesSign, ())
{
    StdCurve const curve = MixedCurve();
    double const a = Real(-2, 12);
    double const b = Real(-2, 12);
    double const c = Real(-2, 12);
    // Each end that falls into a cubic segment costs 2e-9 of dF/dt, at most 3 * 2 * 5.
    RC_ASSERT(std::fabs(curve.EvalIntegral(a, b) + curve.EvalIntegral(b, c) -
                        curve.EvalIntegral(a, c)) < 4e-7);
    RC_ASSERT(curve.EvalIntegral(a, b) == -curve.EvalIntegral(b, a));
}

TEST(HvStdFCurve_integral, EndsForAnyInterval)
{
    double const numbers[] = {0,
                              -0.0,
                              5e-324,
                              1,
                              1.7e308,
                              -1.7e308,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    for (double a : numbers) {
        for (double b : numbers) {
            StdCurve const curve({KeyAt(a, b, a, kCubic), KeyAt(b, a, b, kLinear)});
            HvStdFCurve const plain(0, 0, 1, 1, kLinear, kLinear);
            for (double c : numbers) {
                curve.EvalIntegral(a, c);
                curve.EvalIntegral(c, b);
                plain.EvalIntegral(a, c);
            }
        }
    }
}
