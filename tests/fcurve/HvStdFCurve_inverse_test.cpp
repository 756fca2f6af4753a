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
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double Real(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1000001) / 1e6;
}

double InverseOf(HvStdFCurve const& curve, double value)
{
    double parameter = kNaN;
    EXPECT_EQ(curve.EvalInverse(value, parameter, 0), 1) << value;
    return parameter;
}

void ExpectNoInverse(HvStdFCurve const& curve)
{
    double parameter = 77;
    EXPECT_FALSE(curve.IsBijective());
    EXPECT_EQ(curve.EvalInverse(0.5, parameter, 1), 0);
    EXPECT_EQ(parameter, 77);
}

}  // namespace

TEST(HvStdFCurve_inverse, InvertsARisingPolyline)
{
    StdCurve const curve(
        {KeyAt(0, 1, 1, kLinear), KeyAt(2, 3, 3, kLinear), KeyAt(3, 7, 7, kCubic)});
    EXPECT_TRUE(curve.IsBijective());
    EXPECT_EQ(InverseOf(curve, 1), 0);
    EXPECT_EQ(InverseOf(curve, 2), 1);
    EXPECT_EQ(InverseOf(curve, 3), 2);
    EXPECT_EQ(InverseOf(curve, 5), 2.5);
    EXPECT_EQ(InverseOf(curve, 7), 3);
    EXPECT_EQ(InverseOf(curve, 0), 0);
    EXPECT_EQ(InverseOf(curve, 99), 3);
}

TEST(HvStdFCurve_inverse, InvertsAFallingPolyline)
{
    StdCurve const curve(
        {KeyAt(0, 7, 7, kLinear), KeyAt(1, 3, 3, kLinear), KeyAt(3, 1, 1, kLinear)});
    EXPECT_TRUE(curve.IsBijective());
    EXPECT_EQ(InverseOf(curve, 5), 0.5);
    EXPECT_EQ(InverseOf(curve, 2), 2);
    EXPECT_EQ(InverseOf(curve, 99), 0);
    EXPECT_EQ(InverseOf(curve, 0), 3);
}

TEST(HvStdFCurve_inverse, InvertsCubicsWorkedByHand)
{
    // Handles on the keys in y, at thirds in x: x = t, y = 3t^2 - 2t^3.
    HvStdFCurve const rising({0, 0}, {1.0 / 3, 0}, {2.0 / 3, 1}, {1, 1}, kLinear, kLinear);
    EXPECT_NEAR(InverseOf(rising, 10.0 / 64), 0.25, 1e-8);
    EXPECT_NEAR(InverseOf(rising, 0.5), 0.5, 1e-8);
    HvStdFCurve const falling({0, 1}, {1.0 / 3, 1}, {2.0 / 3, 0}, {1, 0}, kLinear, kLinear);
    EXPECT_NEAR(InverseOf(falling, 54.0 / 64), 0.25, 1e-8);
    EXPECT_NEAR(InverseOf(falling, 10.0 / 64), 0.75, 1e-8);
}

TEST(HvStdFCurve_inverse, AnswersTheFirstKeyThatIsCloseInValue)
{
    // All values lie within 1e-7: the walk stops at the first key unless the first segment holds
    // the value.
    StdCurve const curve(
        {KeyAt(0, 0, 0, kLinear), KeyAt(1, 1e-8, 1e-8, kLinear), KeyAt(2, 2e-8, 2e-8, kLinear)});
    EXPECT_DOUBLE_EQ(InverseOf(curve, 0.5e-8), 0.5);
    EXPECT_EQ(InverseOf(curve, 1.5e-8), 0);
}

TEST(HvStdFCurve_inverse, RefusesWhatIsNotOneToOne)
{
    ExpectNoInverse(HvStdFCurve(1, kLinear));
    ExpectNoInverse(HvStdFCurve(0, 1, 1, kLinear, kLinear));
    // Level, constant, jumping, turning back, and of no kind.
    ExpectNoInverse(StdCurve({KeyAt(0, 1, 1, kLinear), KeyAt(1, 1, 1, kLinear)}));
    ExpectNoInverse(StdCurve({KeyAt(0, 0, 0, kConstant), KeyAt(1, 1, 1, kLinear)}));
    ExpectNoInverse(StdCurve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1, 2, kLinear)}));
    ExpectNoInverse(StdCurve({KeyAt(0, -1, 0, kLinear), KeyAt(1, 1, 1, kLinear)}));
    ExpectNoInverse(
        StdCurve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1, 1, kLinear), KeyAt(2, 0.5, 0.5, kLinear)}));
    ExpectNoInverse(StdCurve(
        {KeyAt(0, 0, 0, kLinear), KeyAt(1, -1, -1, kLinear), KeyAt(2, 0.5, 0.5, kLinear)}));
    StdCurve odd({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1, 1, kLinear)});
    odd.Impl().keys[0].segmentKind = 0;
    ExpectNoInverse(odd);
}

TEST(HvStdFCurve_inverse, RefusesCubicsWhoseHandlesLeaveTheRange)
{
    auto const withHandles = [](double y1, double y2) {
        return HvStdFCurve({0, 0}, {0.3, y1}, {0.6, y2}, {1, 1}, kLinear, kLinear).IsBijective();
    };
    EXPECT_TRUE(withHandles(0, 1));
    EXPECT_TRUE(withHandles(0.5, 0.5));
    EXPECT_FALSE(withHandles(-0.1, 0.5));
    EXPECT_FALSE(withHandles(0.5, 1.1));
    // Crossing handles, y1 > y2: one to one while (y1 - y2)^2 <= (y1 - 0) (1 - y2).
    EXPECT_TRUE(withHandles(1, 0));
    EXPECT_TRUE(withHandles(1.2, 0.9));
    EXPECT_TRUE(withHandles(0.1, -0.2));
    EXPECT_FALSE(withHandles(1.1, 0));
    EXPECT_FALSE(withHandles(1.3, 0.9));
}

RC_GTEST_PROP(HvStdFCurve_inverse, CubicRisesExactlyWhereItsDerivativeKeepsItsSign, ())
{
    double const a = Real(-5, 5);
    double const d = Real(-5, 5);
    double const b = Real(-5, 5);
    double const c = Real(-5, 5);
    double lowest = std::numeric_limits<double>::infinity();
    for (int i = 0; i <= 2000; ++i) {
        double const t = i / 2000.0;
        double const s = 1 - t;
        lowest = std::min(lowest, s * s * (b - a) + 2 * s * t * (c - b) + t * t * (d - c));
    }
    if (lowest > 1e-4) {
        RC_ASSERT(CubicRises(a, b, c, d));
    }
    if (lowest < -1e-4) {
        RC_ASSERT(!CubicRises(a, b, c, d));
    }
}

RC_GTEST_PROP(HvStdFCurve_inverse, GoesBackAndForth, (bool falls))
{
    StdCurve curve({});
    double x = Real(-10, 10);
    double y = Real(-100, 100);
    double const sign = falls ? -1 : 1;
    for (int i = 0; i < 5; ++i) {
        CFCStdKey key(x, y, PickInRange(0, 2) ? kLinear : kCubic);
        curve.Impl().keys.Add(key);
        x += Real(0.5, 3);
        y += sign * Real(0.5, 3);
    }
    for (unsigned i = 0; i + 1 < 5; ++i) {
        CFCStdKey& a = curve.Impl().keys[i];
        CFCStdKey& b = curve.Impl().keys[i + 1];
        double const w = b.parameter - a.parameter;
        double const h = b.leftValue - a.rightValue;
        a.rightHandle = Point(a.parameter + w * Real(0.2, 0.4), a.rightValue + h * Real(0.2, 0.5));
        b.leftHandle = Point(b.parameter - w * Real(0.2, 0.4), b.leftValue - h * Real(0.2, 0.5));
    }
    RC_ASSERT(curve.IsBijective());
    double const first = curve.Impl().FirstParameter();
    double const last = curve.Impl().LastParameter();
    double previous = curve.Eval(first, 0);
    for (int i = 1; i <= 50; ++i) {
        double const at = first + (last - first) * i / 50;
        double const value = curve.Eval(at, 0);
        RC_ASSERT((falls ? value < previous : value > previous));
        previous = value;
        double parameter = 0;
        RC_ASSERT(curve.EvalInverse(value, parameter, 0) == 1);
        // Two solutions within 2e-9 of a segment each, at slopes between 1/20 and 20, or the key
        // that is within 1e-7 in value.
        RC_ASSERT(std::fabs(parameter - at) < 3e-6);
    }
}

TEST(HvStdFCurve_inverse, EndsForAnyValue)
{
    HvStdFCurve const curve({0, 0}, {0.3, 0.3}, {0.6, 0.7}, {1, 1}, kLinear, kLinear);
    double parameter = 77;
    EXPECT_EQ(curve.EvalInverse(kNaN, parameter, 0), 0);
    EXPECT_EQ(parameter, 77);
    EXPECT_EQ(InverseOf(curve, std::numeric_limits<double>::infinity()), 1);
    EXPECT_EQ(InverseOf(curve, -std::numeric_limits<double>::infinity()), 0);
    double const numbers[] = {0, 5e-324, 1, 1.7e308, -1.7e308, kNaN};
    for (double a : numbers) {
        for (double b : numbers) {
            for (double c : numbers) {
                StdCurve const odd({KeyAt(a, b, b, kCubic), KeyAt(c, a, a, kLinear)});
                for (double value : numbers) {
                    odd.EvalInverse(value, parameter, 0);
                }
            }
        }
    }
}
