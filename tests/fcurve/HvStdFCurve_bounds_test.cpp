// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/std_curve.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double Real(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1000001) / 1e6;
}

void ExpectBounds(HvStdFCurve const& curve, double lower, double upper)
{
    EXPECT_DOUBLE_EQ(curve.GetValueLowerBound(0), lower);
    EXPECT_DOUBLE_EQ(curve.GetValueUpperBound(0), upper);
}

}  // namespace

TEST(HvStdFCurve_bounds, BoundsEachKindByItsOwnValues)
{
    ExpectBounds(HvStdFCurve(3, kCubic), 3, 3);
    ExpectBounds(StdCurve({KeyAt(0, 5, -2, kCubic)}), -2, 5);
    ExpectBounds(StdCurve({KeyAt(0, 0, 1, kLinear), KeyAt(1, 9, 2, kLinear)}), 0, 9);
    // The left value behind a constant segment is no value of the segment.
    ExpectBounds(StdCurve({KeyAt(0, 0, 1, kConstant), KeyAt(1, 9, 2, kLinear)}), 0, 2);
    ExpectBounds(HvStdFCurve({0, 0}, {1, 5}, {2, -3}, {3, 1}, kLinear, kLinear), -3, 5);
    StdCurve odd({KeyAt(0, 0, 0, kLinear), KeyAt(1, 9, 2, kLinear)});
    odd.Impl().keys[0].segmentKind = 0;
    ExpectBounds(odd, 0, 2);
}

TEST(HvStdFCurve_bounds, LooksOnlyAtTheHandlesOfAnInnerAutomaticKey)
{
    // Rising through (1, 3) with slope 2; handles at (2/3, 7/3) and (2, 5). Key 1's segment brings
    // one handle to each bound and leaves its own and the next key's values to their neighbours.
    StdCurve curve({KeyAt(0, 6, 0, kConstant), KeyAt(1, 3, 3, kCubic), KeyAt(4, 8, 4, kCubic)});
    curve.Impl().keys[1].constraints.Set(Word::kAutomaticTangents);
    ExpectBounds(curve, 0, 6);
    curve.Impl().keys[0].leftValue = 4;
    curve.Impl().keys[2].rightValue = 4.5;
    ExpectBounds(curve, 0, 5);
    // Falling: the lower bound comes from the right handle, the upper from the left one.
    StdCurve falling({KeyAt(0, 5, 8, kConstant), KeyAt(1, 5, 5, kCubic), KeyAt(4, 0, 5, kCubic)});
    falling.Impl().keys[1].constraints.Set(Word::kAutomaticTangents);
    ExpectBounds(falling, 3, 8);
    // The first key is bounded by all four values, automatic or not.
    StdCurve first({KeyAt(0, 1, 1, kCubic), KeyAt(3, 4, 2, kLinear)});
    first.Impl().keys[0].constraints.Set(Word::kAutomaticTangents);
    first.Impl().keys[1].leftHandle = Point(2, 7);
    ExpectBounds(first, 1, 7);
}

TEST(HvStdFCurve_bounds, ClampsBoundsWhenAsked)
{
    HvStdFCurve curve(0, -5, 1, 5, kLinear, kLinear);
    ASSERT_EQ(curve.SetClampingValues(-1, 2), 1);
    EXPECT_EQ(curve.GetValueLowerBound(1), -1);
    EXPECT_EQ(curve.GetValueUpperBound(1), 2);
    HvStdFCurve empty(9, kLinear);
    ASSERT_EQ(empty.SetClampingValues(-1, 2), 1);
    EXPECT_EQ(empty.GetValueLowerBound(1), 2);
    EXPECT_EQ(empty.GetValueLowerBound(0), 9);
}

RC_GTEST_PROP(HvStdFCurve_bounds, ContainEveryValueOfAnUnconstrainedCurve, ())
{
    StdCurve curve({});
    double x = 0;
    for (unsigned i = 0; i < 5; ++i) {
        CFCStdKey key = KeyAt(x, Real(-5, 5), Real(-5, 5), HvBaseFCurve::FSKind(PickInRange(1, 4)));
        key.leftHandle = Point(x - Real(0, 1), Real(-9, 9));
        key.rightHandle = Point(x + Real(0, 1), Real(-9, 9));
        curve.Impl().keys.Add(key);
        x += 2;
    }
    double const lower = curve.GetValueLowerBound(0);
    double const upper = curve.GetValueUpperBound(0);
    for (int i = -10; i <= 110; ++i) {
        double const value = curve.Eval(i * 0.08, 0);
        RC_ASSERT(value >= lower - 1e-12 && value <= upper + 1e-12);
    }
    for (unsigned k = 0; k < 5; ++k) {
        double low = 0;
        double high = 0;
        RC_ASSERT(curve.GetValueRange(2.0 * k, HvBaseFCurve::Right, low, high, 0, 0) == 1);
        for (int i = 1; i < 20; ++i) {
            double const value = curve.Eval(2.0 * k + i * 0.1, 0);
            RC_ASSERT(value >= low - 1e-12 && value <= high + 1e-12);
        }
    }
}

TEST(HvStdFCurve_bounds, TellsTheRangeOfTheSegmentOnOneSideOfAKey)
{
    StdCurve curve({KeyAt(0, 10, 20, kConstant), KeyAt(1, 30, 40, kLinear),
                    KeyAt(2, 35, 60, kCubic), KeyAt(3, 70, 80, kCubic)});
    curve.Impl().keys[2].rightHandle = Point(2.3, 5);
    curve.Impl().keys[3].leftHandle = Point(2.6, 90);
    auto const expectRange = [&](double x, HvBaseFCurve::KeySide side, double low, double high) {
        double lower = -1;
        double upper = -1;
        EXPECT_EQ(curve.GetValueRange(x, side, lower, upper, 0.1, 0), 1);
        EXPECT_EQ(lower, low) << x;
        EXPECT_EQ(upper, high) << x;
    };
    expectRange(0, HvBaseFCurve::Left, 10, 10);
    expectRange(0.1, HvBaseFCurve::Right, 20, 20);
    expectRange(1, HvBaseFCurve::Left, 20, 20);
    expectRange(1, HvBaseFCurve::Right, 35, 40);
    expectRange(2, HvBaseFCurve::Left, 35, 40);
    expectRange(2, HvBaseFCurve::Right, 5, 90);
    expectRange(3, HvBaseFCurve::Left, 5, 90);
    expectRange(3, HvBaseFCurve::Right, 80, 80);

    double lower = -1;
    double upper = -1;
    EXPECT_EQ(curve.GetValueRange(0.5, HvBaseFCurve::Left, lower, upper, 0.1, 0), 0);
    EXPECT_EQ(curve.GetValueRange(1, HvBaseFCurve::KeySide(3), lower, upper, 0.1, 0), 0);
    EXPECT_EQ(HvStdFCurve(1, kCubic).GetValueRange(1, HvBaseFCurve::Left, lower, upper, 9, 0), 0);
    EXPECT_EQ(lower, -1);
    ASSERT_EQ(curve.SetClampingValues(10, 38), 1);
    EXPECT_EQ(curve.GetValueRange(1, HvBaseFCurve::Right, lower, upper, 0, 1), 1);
    EXPECT_EQ(lower, 35);
    EXPECT_EQ(upper, 38);
    curve.Impl().keys[1].segmentKind = 0;
    EXPECT_EQ(curve.GetValueRange(1, HvBaseFCurve::Right, lower, upper, 0, 0), 1);
    EXPECT_EQ(lower, 0);
    EXPECT_EQ(upper, 0);
}

TEST(HvStdFCurve_bounds, IsConstantWhenAllThatCountsIsEqual)
{
    EXPECT_EQ(HvStdFCurve(3, kCubic).HasConstantValue(), 1);
    StdCurve curve({KeyAt(0, 2, 2, kCubic), KeyAt(1, 2, 2, kLinear), KeyAt(2, 2, 2, kCubic)});
    EXPECT_EQ(curve.HasConstantValue(), 1);
    // Handles of linear segments and outside the keys do not count.
    curve.Impl().keys[0].leftHandle.y = 5;
    curve.Impl().keys[1].rightHandle.y = 5;
    curve.Impl().keys[2].rightHandle.y = 5;
    EXPECT_EQ(curve.HasConstantValue(), 1);
    curve.Impl().keys[1].leftHandle.y = 5;
    EXPECT_EQ(curve.HasConstantValue(), 0);
    // The handle that the segment uses counts, not the stored one.
    curve.Impl().keys[1].constraints.Set(Word::kFlatTangents);
    EXPECT_EQ(curve.HasConstantValue(), 1);
    curve.Impl().keys[2].rightValue = 3;
    EXPECT_EQ(curve.HasConstantValue(), 0);
}

TEST(HvStdFCurve_bounds, TellsAValidCurve)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(3, 0, 0, kLinear)});
    HvStdFCurveImpl& impl = curve.Impl();
    EXPECT_EQ(impl.IsValid(), 1);

    auto const breaksWith = [&impl](auto change) {
        HvStdFCurveImpl copy(impl);
        change(copy);
        return copy.IsValid() == 0;
    };
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.defaultSegmentKind = 0; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.valueWhenNoKeys = kNaN; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.lowerClamp = kNaN; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.upperClamp = kNaN; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.lowerClamp = 1, c.upperClamp = 0; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.keys[0].segmentKind = 0; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.keys[1].segmentKind = 0; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.keys[1].parameter = 0; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.keys[0].parameter = kNaN; }));
    // Handles count whatever the kind.
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.keys[0].rightHandle.x = -1; }));
    EXPECT_TRUE(breaksWith([](HvStdFCurveImpl& c) { c.keys[1].leftHandle.x = 4; }));
    // The outer handles and values do not.
    EXPECT_FALSE(breaksWith([](HvStdFCurveImpl& c) { c.keys[0].leftHandle.x = 9; }));
    EXPECT_FALSE(breaksWith([](HvStdFCurveImpl& c) { c.keys[1].rightHandle.x = -9; }));
    EXPECT_FALSE(breaksWith([](HvStdFCurveImpl& c) { c.lowerClamp = c.upperClamp = 0; }));
}
