// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Values of stepped curves: inside, on and outside the keys, under every extrapolation method.

#include <tests/fcurve/stepped_test_support.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <cstring>

namespace {

/// A parameter and the values just at it and just before it.
struct Row {
    double p;
    double right;
    double left;
};

template <class Curve>
void ExpectRows(Curve& curve, std::initializer_list<Row> rows)
{
    for (Row const& row : rows) {
        EXPECT_EQ(curve.Eval(row.p, 0), row.right) << "at " << row.p;
        EXPECT_EQ(curve.EvalNoLock(row.p, 1), row.right) << "at " << row.p;
        EXPECT_EQ(curve.Impl().EvalLeftUsingExtrapolationMethod(row.p), row.left)
            << "before " << row.p;
    }
}

TEST(HvSteppedFCurve_eval, GivesTheValueWhenNoKeysUnderEveryMethod)
{
    OpenBoolean on(1);
    OpenInteger seven(7);
    for (unsigned char method = 0; method < 6; ++method) {
        on.Impl().extrapolation = method;
        seven.Impl().extrapolation = method;
        for (double const p : {0.0, -3.0, kNaN, kInfinity}) {
            EXPECT_EQ(on.Eval(p, 0), 1);
            EXPECT_EQ(seven.Eval(p, 0), 7);
            EXPECT_EQ(seven.Impl().EvalLeftUsingExtrapolationMethod(p), 7);
        }
    }
}

TEST(HvSteppedFCurve_eval, HoldsTheValueOfTheLeftKey)
{
    OpenBoolean curve(0, {{2, 1}, {5, 0}});
    ExpectRows(curve, {{1, 0, 0}, {2, 1, 0}, {4.999, 1, 1}, {5, 0, 1}, {6, 0, 0}});
}

TEST(HvSteppedFCurve_eval, HoldsTheEndsUnderConstantExtrapolationAndUnknownMethods)
{
    OpenInteger curve(9, {{0, 4}, {10, -2}});
    curve.SetLeftValue(3);
    for (int const method : {1, 0, 5, 255}) {
        curve.Impl().extrapolation = static_cast<unsigned char>(method);
        ExpectRows(curve, {{-100, 3, 3}, {0, 4, 3}, {5, 4, 4}, {10, -2, 4}, {100, -2, -2}});
    }
}

TEST(HvSteppedFCurve_eval, GivesZeroOutsideTheKeysUnderLinearExtrapolation)
{
    OpenInteger curve(9, {{0, 4}, {10, -2}});
    curve.SetLeftValue(3);
    curve.Impl().extrapolation = HvBaseFCurve::LinearExtrapolation;
    ExpectRows(curve, {{-1, 0, 0}, {0, 4, 3}, {5, 4, 4}, {10, -2, 4}, {11, 0, 0}});

    OpenBoolean on(1, {{0, 1}});
    on.SetLeftValue(1);
    on.Impl().extrapolation = HvBaseFCurve::LinearExtrapolation;
    ExpectRows(on, {{-1, 0, 0}, {0, 1, 1}, {1, 0, 0}});
}

TEST(HvSteppedFCurve_eval, StartsAnewWhereACycleEnds)
{
    OpenBoolean curve(0, {{0, 1}, {10, 0}});
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    // The left twin shows the value just before the end of a cycle at its start, too.
    ExpectRows(curve, {{0, 1, 1}, {10, 1, 1}, {25, 1, 1}, {-5, 1, 1}, {20, 1, 1}});

    OpenInteger three(0, {{0, 4}, {3, 5}, {10, 6}});
    three.SetLeftValue(8);
    three.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    ExpectRows(three, {{-10, 4, 5},
                       {-7, 5, 4},
                       {-1, 5, 5},
                       {0, 4, 5},
                       {1, 4, 4},
                       {3, 5, 4},
                       {9, 5, 5},
                       {10, 4, 5},
                       {12, 4, 4},
                       {13, 5, 4},
                       {20, 4, 5}});
}

TEST(HvSteppedFCurve_eval, HoldsItsEndsWithOneKeyUnderTheCyclingMethods)
{
    OpenInteger curve(0, {{5, 4}});
    curve.SetLeftValue(8);
    for (auto const method :
         {HvBaseFCurve::CycleExtrapolation, HvBaseFCurve::RelativeCycleExtrapolation}) {
        curve.SetExtrapolationMethod(method);
        ExpectRows(curve, {{4, 8, 8}, {5, 4, 8}, {6, 4, 4}});
    }
}

TEST(HvSteppedFCurve_eval, RaisesEachRelativeCycleByTheDifferenceOfItsEnds)
{
    OpenInteger curve(0, {{0, 1}, {4, 7}, {10, 3}});
    curve.SetLeftValue(1);
    curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    // Offset 2. Where cycles meet, the first value of the next one, and before it the last of this.
    ExpectRows(curve, {{-10, -1, -1},
                       {-6, 5, -1},
                       {-1, 5, 5},
                       {0, 1, 1},
                       {3, 1, 1},
                       {4, 7, 1},
                       {10, 3, 3},
                       {13.5, 3, 3},
                       {14.5, 9, 9},
                       {20, 5, 5},
                       {30, 7, 7}});
}

TEST(HvSteppedFCurve_eval, FollowsTheWorkedRelativeCycle)
{
    OpenInteger curve(0, {{0, 1}, {10, 3}});
    curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    EXPECT_EQ(curve.Eval(15, 0), 3);
    EXPECT_EQ(curve.Eval(20, 0), 5);
}

TEST(HvSteppedFCurve_eval, AddsOneToABooleanForEachRelativeCycleWhenTheEndsDiffer)
{
    OpenBoolean differ(0, {{0, 1}, {10, 0}});
    differ.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    EXPECT_EQ(differ.Eval(5, 0), 1);
    EXPECT_EQ(differ.Eval(15, 0), 1);   // 1 + 1
    EXPECT_EQ(differ.Eval(-5, 0), 0);   // 1 - 1
    EXPECT_EQ(differ.Eval(-15, 0), 1);  // 1 - 2
    EXPECT_EQ(differ.Eval(10, 0), 1);   // first + offset
    OpenBoolean same(0, {{0, 0}, {4, 1}, {10, 0}});
    same.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    EXPECT_EQ(same.Eval(-15, 0), 1);
    EXPECT_EQ(same.Eval(12, 0), 0);
    EXPECT_EQ(same.Eval(15, 0), 1);
}

TEST(HvSteppedFCurve_eval, EvaluatesAsTheKeyWithinTheSnap)
{
    OpenInteger curve(0, {{1, 4}, {2, 5}});
    EXPECT_EQ(curve.Eval(2 - 1e-13, 0), 5);
    EXPECT_EQ(curve.Eval(1 - 1e-13, 0), 4);
    EXPECT_EQ(curve.Eval(2 - 1e-11, 0), 4);
}

TEST(HvSteppedFCurve_eval, SaturatesItsCycles)
{
    OpenInteger curve(0, {{0, -2147483647}, {1, 2147483647}});
    curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    EXPECT_EQ(curve.Eval(5.5, 0), 2147483647);
    EXPECT_EQ(curve.Eval(-5.5, 0), -2147483648.0);
    EXPECT_EQ(curve.Eval(1e300, 0), 2147483647);
    EXPECT_EQ(curve.Eval(-1e300, 0), -2147483648.0);
    OpenInteger fallen(0, {{0, 2147483647}, {1, -2147483647 - 1}});
    fallen.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    EXPECT_EQ(fallen.Eval(1e300, 0), -2147483648.0);
    EXPECT_EQ(fallen.Eval(-1e300, 0), 2147483647);
    EXPECT_EQ(fallen.Impl().EvalLeftUsingExtrapolationMethod(-1e300), 2147483647);
}

TEST(HvSteppedFCurve_eval, TakesHostileParametersUnderEveryMethod)
{
    double const hostile[] = {0.0,   -0.0,       4.9e-324, -4.9e-324, 1e308, -1e308,
                              1e-17, 2147483648, 9.1e15,   kInfinity, kNaN,  -kInfinity};
    for (auto const& keys :
         {std::initializer_list<std::pair<double, double>>{{0, 1}, {10, 0}, {12, 1}},
          {{-1e308, 1}, {1e308, 0}},
          {{0, 1}, {4.9e-324, 0}}}) {
        OpenBoolean on(0, keys);
        OpenInteger number(0, keys);
        for (unsigned char method = 0; method < 6; ++method) {
            on.Impl().extrapolation = method;
            number.Impl().extrapolation = method;
            for (double const p : hostile) {
                double const value = on.Eval(p, 0);
                EXPECT_TRUE(value == 0 || value == 1);
                EXPECT_TRUE(std::isfinite(number.Eval(p, 0)));
                EXPECT_TRUE(std::isfinite(number.Impl().EvalLeftUsingExtrapolationMethod(p)));
                on.FoldParameter(p);
            }
        }
    }
}

TEST(HvSteppedFCurve_eval, RepeatsItselfWithThePeriodOfItsKeyRange)
{
    EXPECT_TRUE(rc::check([] {
        OpenInteger curve(0);
        int p = PickInRange(-20, 20);
        unsigned int const n = PickInRange(2u, 10u);
        for (unsigned int i = 0; i < n; ++i) {
            curve.CreateKey(p, PickInRange(-9, 10));
            p += PickInRange(1, 6);
        }
        double a = 0;
        double b = 0;
        curve.GetSmallestKeyParameter(a);
        curve.GetLargestKeyParameter(b);
        double const rise = curve.Eval(b, 0) - curve.Eval(a, 0);
        // Quarters of whole numbers below 2^10 are exact; thirds of cycles are not used.
        double const inside = a + 0.25 * PickInRange(1, static_cast<int>(4 * (b - a)));
        double const x = inside == b ? a : inside;
        int const cycle = PickInRange(-3, 4);
        curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
        double const value = curve.Eval(x, 0);
        RC_ASSERT(curve.Eval(x + cycle * (b - a), 0) == value);
        RC_ASSERT(curve.FoldParameter(x + cycle * (b - a)) == x);
        curve.SetExtrapolationMethod(HvBaseFCurve::ConstantExtrapolation);
        RC_ASSERT(curve.Eval(x, 0) == value);
        // The relative method divides by the span, so x is found again only about the same: between
        // keys that is the same value.
        if (!curve.IsKeyParameter(x, 0.01)) {
            curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
            RC_ASSERT(curve.Eval(x + cycle * (b - a), 0) == value + cycle * rise);
        }
    }));
}

TEST(HvSteppedFCurve_eval, GivesTheSameValuesInOneCallForMany)
{
    OpenInteger curve(0, {{0, 1}, {4, 7}, {10, 3}});
    curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    double parameters[100];
    double values[100];
    for (int i = 0; i < 100; ++i) {
        parameters[i] = -20 + 0.5 * i;
    }
    curve.EvalMany(parameters, 100, values, 0);
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(values[i], curve.Eval(parameters[i], 0));
    }
    curve.EvalMany(parameters, 100, parameters, 0);
    EXPECT_EQ(std::memcmp(parameters, values, sizeof values), 0);
    curve.EvalMany(nullptr, 0, nullptr, 0);
}

TEST(HvSteppedFCurve_eval, AllocatesNothing)
{
    OpenInteger curve(0, {{0, 1}, {4, 7}, {10, 3}});
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    curve.Eval(5, 0);
    double parameters[] = {1, 5, -3};
    double values[3];
    AllocationCounter const counter;
    for (double p = -30; p < 30; p += 0.25) {
        curve.Eval(p, 0);
    }
    curve.EvalMany(parameters, 3, values, 0);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvSteppedFCurve_eval, IsBoundedByAllThatItCanTake)
{
    OpenBoolean curve(0, {{1, 1}, {2, 1}});
    EXPECT_EQ(curve.GetValueUpperBound(0), 1);
    EXPECT_EQ(curve.GetValueLowerBound(0), 0);
    curve.SetLeftValue(1);
    EXPECT_EQ(curve.GetValueLowerBound(0), 1);
    OpenBoolean const off(0);
    EXPECT_EQ(off.GetValueUpperBound(0), 0);
    OpenBoolean const on(1);
    EXPECT_EQ(on.GetValueLowerBound(0), 1);

    OpenInteger number(50, {{1, -4}, {2, 6}});
    EXPECT_EQ(number.GetValueUpperBound(0), 6);
    EXPECT_EQ(number.GetValueLowerBound(0), -4);
    number.SetLeftValue(9);
    EXPECT_EQ(number.GetValueUpperBound(0), 9);
    OpenInteger const fifty(50);
    EXPECT_EQ(fifty.GetValueUpperBound(0), 50);
    EXPECT_EQ(fifty.GetValueLowerBound(0), 50);
}

TEST(HvSteppedFCurve_eval, HasNoInverseAndNoClamps)
{
    OpenInteger curve(0, {{1, 1}, {2, 2}});
    double p = 42;
    EXPECT_EQ(curve.EvalInverse(1, p, 0), 0);
    EXPECT_EQ(p, 42);
    EXPECT_FALSE(curve.IsBijective());
    EXPECT_EQ(curve.SetClampingValues(0, 1), 0);
    double lower = 0;
    double upper = 0;
    EXPECT_EQ(curve.GetClampingValues(lower, upper), 1);
    EXPECT_EQ(lower, -std::numeric_limits<double>::max());
    EXPECT_EQ(upper, std::numeric_limits<double>::max());
}

}  // namespace
