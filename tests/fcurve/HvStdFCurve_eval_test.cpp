// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/std_curve.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr HvBaseFCurve::ExtrapolationMethod kHold = HvBaseFCurve::ConstantExtrapolation;
constexpr HvBaseFCurve::ExtrapolationMethod kLine = HvBaseFCurve::LinearExtrapolation;
constexpr HvBaseFCurve::ExtrapolationMethod kCycle = HvBaseFCurve::CycleExtrapolation;
constexpr HvBaseFCurve::ExtrapolationMethod kRelative = HvBaseFCurve::RelativeCycleExtrapolation;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

long double BezierAt(long double t, double c0, double c1, double c2, double c3)
{
    long double const s = 1 - t;
    return s * s * s * c0 + 3 * s * s * t * c1 + 3 * s * t * t * c2 + t * t * t * c3;
}

/// The t of a rising cubic, by bisection to 1e-14.
long double BisectedParameter(double x, double x0, double x1, double x2, double x3)
{
    long double low = 0;
    long double high = 1;
    while (high - low > 1e-14L) {
        long double const middle = (low + high) / 2;
        (BezierAt(middle, x0, x1, x2, x3) < x ? low : high) = middle;
    }
    return (low + high) / 2;
}

double Real(double low, double high)
{
    return low + (high - low) * PickInRange(0, 1000001) / 1e6;
}

/// One row of a table: the right and the left value at x.
struct Sample {
    double x;
    double right;
    double left;
};

void ExpectTable(HvStdFCurve const& curve, std::vector<Sample> const& table)
{
    for (Sample const& row : table) {
        EXPECT_DOUBLE_EQ(curve.Eval(row.x, 0), row.right) << "right of " << row.x;
        EXPECT_DOUBLE_EQ(curve.EvalLeft(row.x, 0), row.left) << "left of " << row.x;
    }
}

/// Keys at 0, 1 and 2 that jump everywhere: 10|20 constant 30|40 linear 50|60.
StdCurve Jumping(HvBaseFCurve::ExtrapolationMethod method)
{
    return StdCurve(
        {KeyAt(0, 10, 20, kConstant), KeyAt(1, 30, 40, kLinear), KeyAt(2, 50, 60, kConstant)},
        method);
}

}  // namespace

// The inversion of a segment.

TEST(HvStdFCurve_eval, SolvesSegmentsWorkedByHand)
{
    EXPECT_EQ(FindCubicParameter(0.5, 0, 1.0 / 3, 2.0 / 3, 1), 0.5);
    EXPECT_NEAR(FindCubicParameter(0.25, 0, 1.0 / 3, 2.0 / 3, 1), 0.25, 1e-9);
    // x = 3t^2 - 2t^3 at t = 1/4 is 10/64, at t = 3/4 is 54/64.
    EXPECT_NEAR(FindCubicParameter(10.0 / 64, 0, 0, 1, 1), 0.25, 1e-9);
    EXPECT_NEAR(FindCubicParameter(54.0 / 64, 0, 0, 1, 1), 0.75, 1e-9);
    // x = t^3: a triple root at the start.
    EXPECT_NEAR(FindCubicParameter(0.001, 0, 0, 0, 1), 0.1, 2e-9);
}

TEST(HvStdFCurve_eval, SolverTakesTheEndsOfASegment)
{
    EXPECT_EQ(FindCubicParameter(2, 2, 3, 4, 5), 0);
    EXPECT_EQ(FindCubicParameter(1, 2, 3, 4, 5), 0);
    EXPECT_EQ(FindCubicParameter(5, 2, 3, 4, 5), 1);
    EXPECT_EQ(FindCubicParameter(6, 2, 3, 4, 5), 1);
    EXPECT_EQ(FindCubicParameter(0.9e-20, 0, 1.0 / 3, 2.0 / 3, 1), 0);
    EXPECT_GT(FindCubicParameter(1e-8, 0, 1.0 / 3, 2.0 / 3, 1), 0);
}

RC_GTEST_PROP(HvStdFCurve_eval, SolverAgreesWithBisection, ())
{
    double const x0 = Real(-100, 100);
    double const span = Real(0.001, 1000);
    double const x1 = x0 + span * Real(0, 1);
    double const x2 = x0 + span * Real(0, 1);
    double const x3 = x0 + span;
    double const x = x0 + span * Real(0, 1);
    RC_PRE(CubicRises(x0, x1, x2, x3));
    double const t = FindCubicParameter(x, x0, x1, x2, x3);
    // The step that ends the solver is below 1e-9, so t is within 2e-9 of the root even where the
    // cubic is a triple root; dx/dt is at most 3 spans, and x itself carries a few ulps.
    double const tolerance = 6e-9 * span + 1e-14 * (std::fabs(x0) + span);
    RC_ASSERT(std::fabs(static_cast<double>(BezierAt(t, x0, x1, x2, x3)) - x) <= tolerance);
    long double const expected = BisectedParameter(x, x0, x1, x2, x3);
    long double const slope =
        (BezierAt(expected + 1e-6L, x0, x1, x2, x3) - BezierAt(expected - 1e-6L, x0, x1, x2, x3)) /
        2e-6L;
    if (slope > 0.1L * span) {
        RC_ASSERT(std::fabs(static_cast<double>(expected) - t) <= 4e-9);
    }
}

TEST(HvStdFCurve_eval, SolverEndsForAnyNumbers)
{
    double const numbers[] = {0,    -0.0,    5e-324,   1e-300,    1,          -1,  2147483648.0,
                              1e16, 1.7e308, -1.7e308, kInfinity, -kInfinity, kNaN};
    for (double x : numbers) {
        for (double x0 : numbers) {
            for (double x1 : numbers) {
                for (double x3 : numbers) {
                    double const t = FindCubicParameter(x, x0, x1, x1, x3);
                    ASSERT_TRUE(t >= 0 && t <= 1) << x << ' ' << x0 << ' ' << x1 << ' ' << x3;
                }
            }
        }
    }
}

RC_GTEST_PROP(HvStdFCurve_eval, CubicAgreesWithBisection, ())
{
    Point const P0(Real(-10, 10), Real(-100, 100));
    double const span = Real(0.01, 50);
    Point const P1(P0.x + span * Real(0, 1), Real(-100, 100));
    Point const P2(P0.x + span * Real(0, 1), Real(-100, 100));
    Point const P3(P0.x + span, Real(-100, 100));
    RC_PRE(CubicRises(P0.x, P1.x, P2.x, P3.x));
    HvStdFCurve const curve(P0, P1, P2, P3, kCubic, kCubic);
    double const x = P0.x + span * Real(0.0001, 0.9999);
    long double const t = BisectedParameter(x, P0.x, P1.x, P2.x, P3.x);
    long double const slope = (BezierAt(t + 1e-6L, P0.x, P1.x, P2.x, P3.x) -
                               BezierAt(t - 1e-6L, P0.x, P1.x, P2.x, P3.x)) /
                              2e-6L;
    RC_PRE(slope > 0.05L * span);
    // |dy/dt| is at most 3 times the largest step between control values, 200.
    RC_ASSERT(std::fabs(curve.Eval(x, 0) -
                        static_cast<double>(BezierAt(t, P0.y, P1.y, P2.y, P3.y))) <= 600 * 4e-9);
}

// Without keys, and with one.

TEST(HvStdFCurve_eval, HoldsTheValueWhenThereAreNoKeys)
{
    HvStdFCurve curve(7, kCubic);
    for (int method = 1; method <= 4; ++method) {
        ASSERT_EQ(curve.SetExtrapolationMethod(HvBaseFCurve::ExtrapolationMethod(method)), 1);
        ExpectTable(curve, {{-5, 7, 7}, {0, 7, 7}, {1e300, 7, 7}});
    }
    ASSERT_EQ(curve.SetClampingValues(-1, 2), 1);
    EXPECT_EQ(curve.Eval(0, 1), 2);
    EXPECT_EQ(curve.EvalLeft(0, 1), 2);
    EXPECT_EQ(curve.Eval(0, 0), 7);
}

TEST(HvStdFCurve_eval, HoldsBothValuesOfASingleKey)
{
    for (int method = 1; method <= 4; ++method) {
        SCOPED_TRACE(method);
        StdCurve const curve({KeyAt(5, 1, 2, kCubic)}, HvBaseFCurve::ExtrapolationMethod(method));
        ExpectTable(curve, {{-100, 1, 1}, {4, 1, 1}, {5, 2, 1}, {6, 2, 2}, {1e9, 2, 2}});
    }
}

// Snap.

TEST(HvStdFCurve_eval, SnapsToAKeyWithinTheTolerance)
{
    StdCurve const curve(
        {KeyAt(-1, 0, 0, kLinear), KeyAt(0, 3, 7, kLinear), KeyAt(1, 5, 5, kLinear)});
    // The interval around x is closed: at exactly 1e-12 the key is inside.
    EXPECT_EQ(curve.Eval(-1e-12, 0), 7);
    EXPECT_EQ(curve.EvalLeft(1e-12, 0), 3);
    EXPECT_EQ(curve.Eval(-5e-13, 0), 7);
    EXPECT_LT(curve.Eval(std::nextafter(-1e-12, -1), 0), 3);
    EXPECT_LT(curve.EvalLeft(std::nextafter(1e-12, 1), 0), 7);
    EXPECT_GT(curve.EvalLeft(std::nextafter(1e-12, 1), 0), 6.9);
}

TEST(HvStdFCurve_eval, SnapsToTheEarlierOfTwoKeysAtTheSameDistance)
{
    StdCurve const curve({KeyAt(-5e-13, 1, 2, kLinear), KeyAt(5e-13, 3, 4, kLinear)});
    EXPECT_EQ(curve.Eval(0, 0), 2);
    EXPECT_EQ(curve.Eval(1e-16, 0), 4);
    double snapped = 0;
    EXPECT_EQ(curve.GetNearestKeyParameterInCenteredIntervalNoLock(snapped, 1e-12), 1);
    EXPECT_EQ(snapped, -5e-13);
    EXPECT_EQ(curve.GetNearestKeyParameterInCenteredIntervalNoLock(snapped = 1, 1e-12), 0);
    EXPECT_EQ(snapped, 1);
}

// Constant extrapolation.

TEST(HvStdFCurve_eval, HoldsTheEndValues)
{
    ExpectTable(Jumping(kHold), {{-1, 10, 10},
                                 {0, 20, 10},
                                 {0.5, 20, 20},
                                 {1, 40, 30},
                                 {1.5, 45, 45},
                                 {2, 60, 50},
                                 {3, 60, 60}});
}

TEST(HvStdFCurve_eval, HoldsTheEndValuesUnderAnUnknownMethod)
{
    StdCurve curve = Jumping(kHold);
    for (int method : {0, 5, 255}) {
        curve.Impl().extrapolation = static_cast<unsigned char>(method);
        ExpectTable(curve, {{-1, 10, 10}, {2, 60, 50}, {3, 60, 60}});
    }
}

// Linear extrapolation.

TEST(HvStdFCurve_eval, ContinuesLinearEndSegments)
{
    // First segment from (0, 20) to (1, 30), last one from (1, 40) to (2, 50): the line behind
    // starts at the left value of the last key, not at the right one.
    StdCurve curve = Jumping(kLine);
    curve.Impl().keys[0].segmentKind = kLinear;
    ExpectTable(curve, {{-1, 10, 10},
                        {-2, 0, 0},
                        {0, 20, 10},
                        {0.5, 25, 25},
                        {2, 60, 50},
                        {3, 60, 60},
                        {5, 80, 80}});
}

TEST(HvStdFCurve_eval, HoldsConstantEndSegmentsUnderLinearExtrapolation)
{
    StdCurve curve = Jumping(kLine);
    curve.Impl().keys[1].segmentKind = kConstant;
    ExpectTable(curve, {{-3, 10, 10}, {5, 60, 60}});
}

TEST(HvStdFCurve_eval, GivesZeroBeyondSegmentsOfNoKind)
{
    StdCurve curve = Jumping(kLine);
    curve.Impl().keys[0].segmentKind = 0;
    curve.Impl().keys[1].segmentKind = 9;
    ExpectTable(curve, {{-3, 0, 0}, {0.5, 0, 0}, {1.5, 0, 0}, {5, 0, 0}});
}

TEST(HvStdFCurve_eval, LeavesACubicLastKeyAlongItsHandles)
{
    StdCurve curve({KeyAt(0, 1, 1, kCubic), KeyAt(2, 5, 9, kCubic)}, kLine);
    CFCStdKey& last = curve.Impl().keys[1];
    // Without handles: the chord of the segment, from (0, 1) to (2, 5).
    EXPECT_DOUBLE_EQ(curve.Eval(3, 0), 7);
    // The left handle leads: its line through (2, 5), slope 3.
    last.leftHandle = Point(1, 2);
    EXPECT_DOUBLE_EQ(curve.Eval(4, 0), 11);
    EXPECT_DOUBLE_EQ(curve.EvalLeft(4, 0), 11);
    // The right handle goes before; slope (8 - 5)/(3 - 2) from the left value at (2, 5).
    last.rightHandle = Point(3, 8);
    EXPECT_DOUBLE_EQ(curve.Eval(4, 0), 11);
    last.rightHandle = Point(3, 11);
    EXPECT_DOUBLE_EQ(curve.Eval(4, 0), 17);
    // A vertical right handle is widened by 1e-7.
    last.rightHandle = Point(2, 6);
    EXPECT_NEAR(curve.Eval(2.001, 0), 0.001 / 1e-7 + 5, 1e-3);
    // A vertical left handle is widened by the same.
    last.rightHandle = Point(2, 9);
    last.leftHandle = Point(2, 4);
    EXPECT_NEAR(curve.Eval(2.001, 0), (0.001 + 1e-7) / 1e-7 + 4, 1e-3);
    for (unsigned short flat : {Word::kFlatTangents, Word::kFlatAtExtremum}) {
        last.constraints.word = flat;
        EXPECT_EQ(curve.Eval(4, 0), 9);
        EXPECT_EQ(curve.EvalLeft(4, 0), 9);
    }
    // The stored handles lead, also where a constraint derives others.
    last.rightHandle = Point(3, 11);
    last.constraints.word = Word::kZeroLengthTangents;
    EXPECT_DOUBLE_EQ(curve.Eval(4, 0), 17);
}

TEST(HvStdFCurve_eval, ComparesTheSquareOfAHandleWithItsThreshold)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(2, 2, 2, kCubic)}, kLine);
    CFCStdKey& last = curve.Impl().keys[1];
    last.rightHandle = Point(2 + 3.2e-4, 2);  // squared 1.02e-7: leads, and is level
    EXPECT_DOUBLE_EQ(curve.Eval(4, 0), 2);
    last.rightHandle = Point(2 + 3.1e-4, 2);  // squared 0.96e-7: the chord leads
    EXPECT_DOUBLE_EQ(curve.Eval(4, 0), 4);
    CFCStdKey& first = curve.Impl().keys[0];
    first.leftHandle = Point(-3.2e-4, 0);
    EXPECT_DOUBLE_EQ(curve.Eval(-2, 0), 0);
    first.leftHandle = Point(-3.1e-4, 0);
    EXPECT_DOUBLE_EQ(curve.Eval(-2, 0), -2);
}

TEST(HvStdFCurve_eval, ComesToACubicFirstKeyAlongItsHandles)
{
    StdCurve curve({KeyAt(0, 1, 4, kCubic), KeyAt(2, 8, 8, kCubic)}, kLine);
    CFCStdKey& first = curve.Impl().keys[0];
    // Without handles: the chord from (0, 4) to (2, 8).
    EXPECT_DOUBLE_EQ(curve.Eval(-1, 0), 2);
    // The right handle leads: from (0, 4), slope 3.
    first.rightHandle = Point(1, 7);
    EXPECT_DOUBLE_EQ(curve.Eval(-2, 0), -2);
    EXPECT_DOUBLE_EQ(curve.EvalLeft(-2, 0), -2);
    // The left handle goes before: from (-1, 0) to the right value at (0, 4), slope 4.
    first.leftHandle = Point(-1, 0);
    EXPECT_DOUBLE_EQ(curve.Eval(-2, 0), -4);
    // Vertical handles are widened by 1e-7.
    first.leftHandle = Point(0, 3);
    EXPECT_NEAR(curve.Eval(-0.001, 0), (-0.001 + 1e-7) * (4 - 3) / 1e-7 + 3, 1e-3);
    first.leftHandle = Point(0, 1);
    first.rightHandle = Point(0, 5);
    EXPECT_NEAR(curve.Eval(-0.001, 0), -0.001 / 1e-7 + 4, 1e-3);
    for (unsigned short flat : {Word::kFlatTangents, Word::kFlatAtExtremum}) {
        first.constraints.word = flat;
        EXPECT_EQ(curve.Eval(-2, 0), 1);
    }
}

TEST(HvStdFCurve_eval, HandleOfExactlyTheThresholdLeads)
{
    Point const v = VectorOfSquaredLength(1e-7);
    ASSERT_EQ(v.x * v.x + v.y * v.y, 1e-7);

    StdCurve curve({KeyAt(-1, 1, 1, kCubic), KeyAt(0, 0, 0, kCubic)}, kLine);
    CFCStdKey& last = curve.Impl().keys[1];
    last.rightHandle = v;
    EXPECT_DOUBLE_EQ(curve.Eval(1, 0), v.y / v.x);
    last.rightHandle = Point(0, 0);
    last.leftHandle = Point(-v.x, v.y);
    EXPECT_DOUBLE_EQ(curve.Eval(1, 0), -v.y / v.x);

    StdCurve rising({KeyAt(0, 0, 0, kCubic), KeyAt(1, 1, 1, kCubic)}, kLine);
    CFCStdKey& first = rising.Impl().keys[0];
    first.rightHandle = v;
    EXPECT_DOUBLE_EQ(rising.Eval(-1, 0), -v.y / v.x);
    first.leftHandle = Point(-v.x, v.y);
    EXPECT_DOUBLE_EQ(rising.Eval(-1, 0), v.y / v.x);
}

TEST(HvStdFCurve_eval, HandleAsLongAsItsWideningIsNotWidened)
{
    StdCurve curve({KeyAt(-1, 1, 1, kCubic), KeyAt(0, 0, 0, kCubic)}, kLine);
    curve.Impl().keys[1].rightHandle = Point(1e-7, 1);
    EXPECT_DOUBLE_EQ(curve.Eval(1, 0), 1e7);
}

TEST(HvStdFCurve_eval, ComesToACubicFirstKeyAwayFromZero)
{
    StdCurve curve({KeyAt(2, 1, 1, kCubic), KeyAt(4, 5, 5, kCubic)}, kLine);
    CFCStdKey& first = curve.Impl().keys[0];
    EXPECT_DOUBLE_EQ(curve.Eval(1, 0), -1);
    first.leftHandle = Point(2 - 3.1e-4, 1);  // too short to lead, and level
    first.rightHandle = Point(2 + 3.1e-4, 1);
    EXPECT_DOUBLE_EQ(curve.Eval(1, 0), -1);
    first.rightHandle = Point(3, 4);
    EXPECT_DOUBLE_EQ(curve.Eval(1, 0), -2);
    first.rightHandle = Point(2, 3);
    EXPECT_NEAR(curve.Eval(1.999, 0), 1 - 2 * 0.001 / 1e-7, 1e-3);
}

TEST(HvStdFCurve_eval, KindOfTheFirstSegmentDecidesHowTheCurveComes)
{
    StdCurve const curve(
        {KeyAt(0, 1, 1, kLinear), KeyAt(1, 3, 3, kConstant), KeyAt(2, 9, 9, kCubic)}, kLine);
    EXPECT_DOUBLE_EQ(curve.Eval(-1, 0), -1);
    EXPECT_EQ(curve.Eval(3, 0), 9) << "and that of the last one how it goes";
}

// Cycles.

TEST(HvStdFCurve_eval, RepeatsTheKeyRange)
{
    // Right of a border the first right value, left of it the last left value.
    ExpectTable(Jumping(kCycle), {{-2, 20, 50},
                                  {-1.5, 20, 20},
                                  {-1, 40, 30},
                                  {-0.5, 45, 45},
                                  {0, 20, 50},
                                  {0.5, 20, 20},
                                  {1, 40, 30},
                                  {2, 20, 50},
                                  {3, 40, 30},
                                  {3.5, 45, 45},
                                  {4, 20, 50},
                                  {401, 40, 30}});
}

TEST(HvStdFCurve_eval, SnapsOnceMoreAfterTheFold)
{
    // 1000 periods away from a key by less than 1e-12 after the fold.
    StdCurve const curve(
        {KeyAt(0, 0, 0, kConstant), KeyAt(0.25, 1, 2, kConstant), KeyAt(1, 3, 3, kConstant)},
        kCycle);
    EXPECT_EQ(curve.Eval(1000.25 - 2e-13, 0), 2);
    EXPECT_EQ(curve.EvalLeft(1000.25 + 2e-13, 0), 1);
    EXPECT_EQ(curve.Eval(-3.75 - 5e-13, 0), 2);
}

TEST(HvStdFCurve_eval, AddsAnOffsetToEachCycle)
{
    // Right twin: offset 60 - 20 = 40. A border belongs to the cycle before it: at 2 the last key's
    // rule gives 40 + 20 + 0 * 40. Left twin: offset 60 - 10 = 50; at 0 it gives -50 + 60 + 0.
    ExpectTable(Jumping(kRelative), {{0, 20, 10},
                                     {0.5, 20, 20},
                                     {1, 40, 30},
                                     {1.5, 45, 45},
                                     {2, 60, 60},
                                     {2.5, 60, 70},
                                     {3, 80, 80},
                                     {3.5, 85, 95},
                                     {4, 100, 110},
                                     {-0.5, 5, -5},
                                     {-1, 0, -20},
                                     {-2, -20, -40},
                                     {-3, -40, -70}});
}

TEST(HvStdFCurve_eval, ContinuesRelativeCyclesAcrossBorders)
{
    StdCurve const curve(
        {KeyAt(0, 0, 0, kLinear), KeyAt(1, 3, 3, kLinear), KeyAt(4, 4, 4, kLinear)}, kRelative);
    for (int cycle = -5; cycle <= 5; ++cycle) {
        EXPECT_NEAR(curve.Eval(cycle * 4 + 0.5, 0), cycle * 4 + 1.5, 1e-12);
        EXPECT_NEAR(curve.EvalLeft(cycle * 4 + 2.5, 0), cycle * 4 + 3.5, 1e-12);
        EXPECT_NEAR(curve.Eval(cycle * 4, 0), cycle * 4, 1e-12);
        EXPECT_NEAR(curve.EvalLeft(cycle * 4, 0), cycle * 4, 1e-12);
    }
}

TEST(HvStdFCurve_eval, FoldsOnlyCyclesOfTwoKeys)
{
    StdCurve curve = Jumping(kCycle);
    EXPECT_DOUBLE_EQ(curve.FoldParameter(5.5), 1.5);
    EXPECT_DOUBLE_EQ(curve.FoldParameter(-0.5), 1.5);
    EXPECT_EQ(curve.FoldParameter(1 + 1e-13), 1);
    curve.SetExtrapolationMethod(kRelative);
    EXPECT_DOUBLE_EQ(curve.FoldParameter(5.5), 1.5);
    curve.SetExtrapolationMethod(kHold);
    EXPECT_EQ(curve.FoldParameter(5.5), 5.5);
    StdCurve const single({KeyAt(0, 1, 1, kLinear)}, kCycle);
    EXPECT_EQ(single.FoldParameter(5.5), 5.5);
}

// Clamp, batches, storage, hostile numbers.

TEST(HvStdFCurve_eval, ClampsOnlyWhenAsked)
{
    StdCurve curve = Jumping(kHold);
    ASSERT_EQ(curve.SetClampingValues(25, 45), 1);
    EXPECT_EQ(curve.Eval(0.5, 1), 25);
    EXPECT_EQ(curve.Eval(2, 7), 45);
    EXPECT_EQ(curve.EvalLeft(2, 1), 45);
    EXPECT_EQ(curve.Eval(1, 1), 40);
    EXPECT_EQ(curve.Eval(0.5, 0), 20);
}

RC_GTEST_PROP(HvStdFCurve_eval, ManyEqualSinglesBitForBit, ())
{
    StdCurve curve = Jumping(HvBaseFCurve::ExtrapolationMethod(PickInRange(1, 5)));
    curve.Impl().keys[0].segmentKind = kCubic;
    std::vector<double> parameters;
    for (int i = 0; i < 50; ++i) {
        parameters.push_back(Real(-10, 10));
    }
    std::vector<double> values(parameters);
    curve.EvalMany(values.data(), 50, values.data(), 0);
    for (unsigned i = 0; i < 50; ++i) {
        RC_ASSERT(values[i] == curve.Eval(parameters[i], 0));
    }
}

RC_GTEST_PROP(HvStdFCurve_eval, EvaluatesAtTheKeyThatALookupFinds, ())
{
    // Keys around zero, closer to each other than the snap reaches.
    StdCurve curve({});
    double x = -Real(0, 3) * 1e-12;
    unsigned const n = PickInRange(1u, 30u);
    for (unsigned i = 0; i < n; ++i) {
        curve.Impl().keys.Add(KeyAt(x, i, i + 0.5, kConstant));
        x = std::nextafter(x + Real(0, 1) * Real(0, 1) * 1e-12, 1);
    }
    double const asked = Real(-4, 4) * 1e-12;
    unsigned index = 0;
    if (curve.Impl().FindKey(asked, 1e-12, index) != 0) {
        RC_ASSERT(curve.Eval(asked, 0) == index + 0.5);
        RC_ASSERT(curve.EvalLeft(asked, 0) == index);
    }
}

TEST(HvStdFCurve_eval, AllocatesNothing)
{
    StdCurve const curve = Jumping(kRelative);
    HvStdFCurve const line(0, 0, 1, 1, kLinear, kLinear);
    curve.Eval(0.5, 0);  // the thread's search hint may take its storage here
    line.Eval(0.5, 0);
    double parameter = 0;
    AllocationCounter const counter;
    for (int i = -100; i < 100; ++i) {
        curve.Eval(i * 0.1, 1);
        curve.EvalLeft(i * 0.1, 1);
        line.EvalInverse(i * 0.01, parameter, 0);
        line.IsBijective();
        line.EvalIntegral(-1, i * 0.1);
        curve.GetValueLowerBound(0);
    }
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvStdFCurve_eval, EndsForAnyParameterAndKeys)
{
    double const numbers[] = {0,
                              -0.0,
                              5e-324,
                              -1e-300,
                              1e-12,
                              1,
                              2147483648.0,
                              9007199254740992.0,
                              1.7976931348623157e308,
                              -1.7976931348623157e308,
                              kInfinity,
                              -kInfinity,
                              kNaN};
    for (int method = 1; method <= 4; ++method) {
        for (HvBaseFCurve::FSKind kind : {kConstant, kLinear, kCubic}) {
            for (double a : numbers) {
                for (double b : numbers) {
                    // What an archive may hold: parameters out of order, or no numbers at all.
                    StdCurve curve({KeyAt(a, b, a, kind), KeyAt(b, a, 1, kind)},
                                   HvBaseFCurve::ExtrapolationMethod(method));
                    for (double x : numbers) {
                        curve.Eval(x, 1);
                        curve.EvalLeft(x, 0);
                        curve.FoldParameter(x);
                    }
                }
            }
        }
    }
}
