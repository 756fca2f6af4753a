// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/std_curve.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr HvBaseFCurve::KeySide kLeft = HvBaseFCurve::Left;
constexpr HvBaseFCurve::KeySide kRight = HvBaseFCurve::Right;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double Real(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1000001) / 1e6;
}

/// Keys at 0, 3 and 9; the middle one jumps from 10 to 20.
StdCurve Constrained()
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(3, 10, 20, kCubic), KeyAt(9, 0, 0, kCubic)});
    curve.Impl().defaultBezierTangentConstraint = 1;
    return curve;
}

void ExpectNear(Point const& actual, Point const& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-12 * (1 + std::fabs(expected.x)));
    EXPECT_NEAR(actual.y, expected.y, 1e-12 * (1 + std::fabs(expected.y)));
}

int Valid(Point const* P)
{
    return HvStdFCurve_IsCubicSegmentValid(P[0], P[1], P[2], P[3]);
}

int ValidX(double a, double b, double c, double d)
{
    return HvStdFCurve_IsCubicSegmentValid({a, 0}, {b, 9}, {c, -9}, {d, 0});
}

}  // namespace

// Which segments are functions.

TEST(HvStdFCurve_tangents, TellsWhichSegmentsAreFunctions)
{
    EXPECT_EQ(ValidX(0, 1, 2, 3), 1);
    EXPECT_EQ(ValidX(0, 0, 3, 3), 1);
    EXPECT_EQ(ValidX(0, 0, 0, 3), 1);
    EXPECT_EQ(ValidX(0, 3, 3, 3), 1);
    EXPECT_EQ(ValidX(0, 0, 0, 0), 0);
    EXPECT_EQ(ValidX(3, 2, 1, 0), 0);
    EXPECT_EQ(ValidX(0, -1, 2, 3), 0);
    EXPECT_EQ(ValidX(0, 1, 4, 3), 0);
    EXPECT_EQ(ValidX(0, 3, 0, 3), 1);    // (3 - 0)^2 <= 3 * 3: just not turning back
    EXPECT_EQ(ValidX(0, 3.1, 0, 3), 0);  // 3.1^2 > 3.1 * 3
    EXPECT_EQ(ValidX(0, 2.9, 0, 3), 1);
    EXPECT_EQ(ValidX(0, 4, 1, 3), 0);  // 9 > 4 * 2
    EXPECT_EQ(ValidX(kNaN, 1, 2, 3), 0);
    EXPECT_EQ(ValidX(0, kNaN, 2, 3), 0);
    EXPECT_EQ(ValidX(0, 1, kNaN, 3), 0);
    EXPECT_EQ(ValidX(0, 1, 2, kNaN), 0);
}

// The slope limit rule.

TEST(HvStdFCurve_tangents, KeepsTheSlopeAtAThirdOfTheSpan)
{
    StdCurve const curve = Constrained();
    HvStdFCurveImpl const& impl = curve.Impl();
    // Left: from (2, 8) to (3, 10), slope 2, third of 3 is 1. Right: slope -1, third of 6 is 2.
    ExpectNear(impl.SlopeLimitRule(1, kLeft, Point(2.5, 9)), Point(2, 8));
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(8, 15)), Point(5, 18));
    // A handle on the wrong side keeps its slope too.
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(2, 21)), Point(5, 18));
    // A handle on the key is level.
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(3, 20)), Point(5, 20));
}

TEST(HvStdFCurve_tangents, BoundsTheSlope)
{
    StdCurve const curve = Constrained();
    HvStdFCurveImpl const& impl = curve.Impl();
    // Shorter than 0.001 in x, either way, counts as 0.001 long.
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(3.0005, 20.002)), Point(5, 24));
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(2.9995, 20.002)), Point(5, 24));
    ExpectNear(impl.SlopeLimitRule(1, kLeft, Point(3, 9.998)), Point(2, 8));
    // 0.002 in x: slope 3 from 0.006.
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(3.002, 20.006)), Point(5, 26));
    // At most 100000, up and down.
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(3, 1e9)), Point(5, 200020));
    ExpectNear(impl.SlopeLimitRule(1, kRight, Point(3, -1e9)), Point(5, -199980));
    ExpectNear(impl.SlopeLimitRule(1, kLeft, Point(3, -1e9)), Point(2, 10 - 100000));
}

TEST(HvStdFCurve_tangents, LeavesHandlesWithoutNeighbourOrConstraint)
{
    StdCurve curve = Constrained();
    EXPECT_EQ(curve.Impl().SlopeLimitRule(0, kLeft, Point(-7, 7)), Point(-7, 7));
    EXPECT_EQ(curve.Impl().SlopeLimitRule(2, kRight, Point(97, 7)), Point(97, 7));
    curve.Impl().defaultBezierTangentConstraint = 0;
    curve.Impl().WriteLeftHandle(1, Point(2.5, 9));
    curve.Impl().WriteRightHandle(1, Point(7, 9));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(2.5, 9));
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(7, 9));
}

TEST(HvStdFCurve_tangents, RewritesEveryHandleWhenTheConstraintComes)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(3, 10, 20, kCubic), KeyAt(9, 0, 0, kCubic)});
    curve.Impl().keys[0].leftHandle = Point(-5, 1);
    curve.Impl().keys[1].leftHandle = Point(2.5, 9);
    curve.Impl().keys[1].rightHandle = Point(8, 15);
    curve.Impl().readOnly = 1;
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(false), 1);
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(2.5, 9));
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(true), 1);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 1);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(-5, 1));
    ExpectNear(curve.Impl().keys[0].rightHandle, Point(1, 0));
    ExpectNear(curve.Impl().keys[1].leftHandle, Point(2, 8));
    ExpectNear(curve.Impl().keys[1].rightHandle, Point(5, 18));
    ExpectNear(curve.Impl().keys[2].leftHandle, Point(7, 0));
    EXPECT_EQ(curve.Impl().keys[2].rightHandle, Point(9, 0));
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(false), 1);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 0);
    ExpectNear(curve.Impl().keys[1].leftHandle, Point(2, 8));
    EXPECT_EQ(curve.AdjustAdjacentAutomaticKeysTangents(1, 0), 1);
    EXPECT_EQ(curve.Impl().AdjustAdjacentAutomaticKeysTangents(1), 1);
}

// Freezing.

TEST(HvStdFCurve_tangents, FreezesEvaluatedHandles)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(1, 3, 3, kCubic), KeyAt(4, 8, 8, kCubic)});
    CFCStdKey& key = curve.Impl().keys[1];
    key.constraints.word = Word::kAutomaticTangents | Word::kUnlimitedAutoSlope |
                           Word::kFlatAtExtremum | Word::kValueLocked;
    curve.Impl().FreezeKey(1);
    ExpectNear(key.leftHandle, Point(2.0 / 3, 7.0 / 3));
    ExpectNear(key.rightHandle, Point(2, 5));
    EXPECT_EQ(key.constraints.word, Word::kFlatAtExtremum | Word::kValueLocked);
}

// Repair.

TEST(HvStdFCurve_tangents, ShrinksALeftHandleByTenthsUntilTheSegmentIsValid)
{
    // The would-be previous key stands at 0; its handle at 3. The stored handle reaches back to -1,
    // crossing: with length 10 s it is valid once (3 - (9 - 10 s))^2 <= 3 * 10 s, s = 0.9.
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(9, 5, 5, kCubic)});
    curve.Impl().keys[1].leftHandle = Point(-4, 18);
    curve.Impl().RegularizeLeftTgt(1, Point(0, 7));
    Point const handle = curve.Impl().keys[1].leftHandle;
    double const scale = (9 - handle.x) / 13;
    double const steps = std::log(scale) / std::log(0.9);
    EXPECT_NEAR(steps, std::round(steps), 1e-9);
    EXPECT_NEAR((handle.y - 5) / 13, scale, 1e-12);
    EXPECT_EQ(ValidX(0, 3, handle.x, 9), 1);
    EXPECT_EQ(ValidX(0, 3, 9 - 13 * scale / 0.9, 9), 0);
}

TEST(HvStdFCurve_tangents, ShrinksARightHandleTheSameWay)
{
    StdCurve curve({KeyAt(0, 5, 5, kCubic), KeyAt(9, 0, 0, kCubic)});
    curve.Impl().keys[0].rightHandle = Point(13, 18);
    curve.Impl().RegularizeRightTgt(0, Point(9, 7));
    Point const handle = curve.Impl().keys[0].rightHandle;
    EXPECT_NEAR((handle.y - 5) / 13, handle.x / 13, 1e-12);
    EXPECT_EQ(ValidX(0, handle.x, 6, 9), 1);
    EXPECT_EQ(ValidX(0, handle.x / 0.9, 6, 9), 0);
}

TEST(HvStdFCurve_tangents, LeavesValidHandlesWhenRepairing)
{
    StdCurve curve({KeyAt(0, 5, 5, kCubic), KeyAt(9, 5, 5, kCubic)});
    curve.Impl().keys[0].rightHandle = Point(5, 1);
    curve.Impl().keys[1].leftHandle = Point(5, 1);
    curve.Impl().RegularizeRightTgt(0, Point(9, 7));
    curve.Impl().RegularizeLeftTgt(1, Point(0, 7));
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(5, 1));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(5, 1));
}

TEST(HvStdFCurve_tangents, PutsAHandleOnItsKeyWhenNothingElseServes)
{
    double const ends[] = {-1, 0, -kInfinity, kNaN};
    for (double end : ends) {
        StdCurve curve({KeyAt(0, 5, 5, kCubic), KeyAt(9, 5, 5, kCubic)});
        curve.Impl().keys[0].rightHandle = Point(3, 4);
        curve.Impl().RegularizeRightTgt(0, Point(end, 7));
        EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(0, 5));
        curve.Impl().keys[1].leftHandle = Point(kNaN, kInfinity);
        curve.Impl().RegularizeLeftTgt(1, Point(10 - end, 7));
        EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(9, 5));
    }
}

TEST(HvStdFCurve_tangents, RepairsControlPoints)
{
    // Handles behind their keys come up to them.
    Point behind[4] = {{0, 0}, {-1, 2}, {4, 3}, {3, 1}};
    RegularizeBezierCubicPoints(behind);
    EXPECT_EQ(behind[1], Point(0, 2));
    EXPECT_EQ(behind[2], Point(3, 3));

    // Valid points stay.
    Point valid[4] = {{0, 0}, {1, 2}, {2, 3}, {3, 1}};
    RegularizeBezierCubicPoints(valid);
    EXPECT_EQ(valid[1], Point(1, 2));
    EXPECT_EQ(valid[2], Point(2, 3));

    // Crossing handles shrink together: 4 s each is valid once (8 s - 3)^2 <= 16 s^2, s <= 0.75.
    Point crossing[4] = {{0, 0}, {4, 8}, {-1, 5}, {3, 1}};
    RegularizeBezierCubicPoints(crossing);
    double const s = 0.9 * 0.9 * 0.9;
    ExpectNear(crossing[1], Point(4 * s, 8 * s));
    ExpectNear(crossing[2], Point(3 - 4 * s, 1 + 4 * s));
}

TEST(HvStdFCurve_tangents, FallsBackToThirdsOfTheSpan)
{
    // Shrunk by 0.9^20 = 0.12 handles of length 100 still cross.
    Point P[4] = {{0, 0}, {80, 60}, {-97, 1}, {3, 1}};
    RegularizeBezierCubicPoints(P);
    ExpectNear(P[1], Point(0.8, 0.6));
    ExpectNear(P[2], Point(2, 1));
}

RC_GTEST_PROP(HvStdFCurve_tangents, RepairedPointsAreValid, ())
{
    Point P[4];
    for (Point& point : P) {
        point = Point(Real(-50, 50), Real(-50, 50));
    }
    P[3].x = P[0].x + Real(0.01, 20);
    Point const start = P[0];
    Point const end = P[3];
    RegularizeBezierCubicPoints(P);
    RC_ASSERT(Valid(P) == 1);
    RC_ASSERT(P[0] == start);
    RC_ASSERT(P[3] == end);
}

TEST(HvStdFCurve_tangents, RepairsEndForAnyNumbers)
{
    double const numbers[] = {0, -0.0, 5e-324, 1, -1, 1.7e308, -1.7e308, kInfinity, kNaN};
    for (double a : numbers) {
        for (double b : numbers) {
            for (double c : numbers) {
                Point P[4] = {{a, b}, {b, c}, {c, a}, {b, a}};
                RegularizeBezierCubicPoints(P);
                StdCurve curve({KeyAt(a, b, b, kCubic), KeyAt(1, c, c, kCubic)});
                curve.Impl().keys[0].rightHandle = Point(b, c);
                curve.Impl().keys[1].leftHandle = Point(c, b);
                curve.Impl().RegularizeRightTgt(0, Point(c, a));
                curve.Impl().RegularizeLeftTgt(1, Point(b, a));
                curve.SetDefaultBezierTangentConstraint(true);
                curve.Impl().FreezeKey(0);
            }
        }
    }
}
