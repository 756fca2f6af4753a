// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Smoothing of the standard curve.

#include "std_edit.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

namespace {

constexpr double kEverywhere = 1e300;

StdCurve Steps(std::initializer_list<double> values)
{
    StdCurve curve(7.0, kLinear);
    double x = 0;
    for (double const value : values) {
        curve.Impl().keys.Add(KeyWithHandles(x, value, {-0.25, 0.5}, {0.25, 1}, kLinear));
        x += 1;
    }
    return curve;
}

std::vector<double> RightValues(StdCurve const& curve)
{
    std::vector<double> values;
    for (CFCStdKey const& key : curve.Impl().keys) {
        values.push_back(key.rightValue);
    }
    return values;
}

using Values = std::vector<double>;

}  // namespace

TEST(HvStdFCurve_smooth, SumsTheNeighboursWithTheirTaps)
{
    double const kernel[] = {0.25, 0.5, 0.25};
    StdCurve curve = Steps({0, 4, 8, 0});
    EXPECT_EQ(curve.SmoothSequence(0, 3, kernel, 3), 1);
    // The ends have two taps, 0.5 and 0.25, divided by 0.75.
    EXPECT_EQ(RightValues(curve), (Values{(0 * 0.5 + 4 * 0.25) / 0.75, 4, 5, (8 * 0.25) / 0.75}));
}

TEST(HvStdFCurve_smooth, LaterTapsFallOnLaterKeys)
{
    double const kernel[] = {0, 0, 1};
    StdCurve curve = Steps({1, 2, 3, 4});
    EXPECT_EQ(curve.SmoothSequence(0, 3, kernel, 3), 1);
    // The last key has no tap with a weight: it stays.
    EXPECT_EQ(RightValues(curve), (Values{2, 3, 4, 4}));
}

TEST(HvStdFCurve_smooth, MiddleOfAnEvenKernelIsTheLeftOne)
{
    double const kernel[] = {1, 0};
    StdCurve curve = Steps({1, 2, 3});
    EXPECT_EQ(curve.SmoothSequence(0, 2, kernel, 2), 1);
    EXPECT_EQ(RightValues(curve), (Values{1, 2, 3}));
    double const shifted[] = {0, 1};
    EXPECT_EQ(curve.SmoothSequence(0, 2, shifted, 2), 1);
    EXPECT_EQ(RightValues(curve), (Values{2, 3, 3}));
}

TEST(HvStdFCurve_smooth, ReadsAndWritesTheIntervalOnly)
{
    double const kernel[] = {1, 1, 1};
    StdCurve curve = Steps({100, 3, 6, 9, 100});
    EXPECT_EQ(curve.SmoothSequence(1, 3, kernel, 3), 1);
    EXPECT_EQ(RightValues(curve), (Values{100, 4.5, 18, 7.5, 100}));
}

TEST(HvStdFCurve_smooth, MovesEachSideWithItsHandle)
{
    double const kernel[] = {0.25, 0.5, 0.25};
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 2, 6, kLinear), KeyAt(2, 4, 0, kLinear)});
    curve.Impl().keys[1].leftHandle = Point(0.5, 3);
    curve.Impl().keys[1].rightHandle = Point(1.5, 9);
    EXPECT_EQ(curve.SmoothSequence(0, 2, kernel, 3), 1);
    CFCStdKey const& key = curve.Impl().keys[1];
    EXPECT_EQ(key.leftValue, 2);
    EXPECT_EQ(key.rightValue, 3);
    ExpectNear(key.leftHandle, 0.5, 3);
    ExpectNear(key.rightHandle, 1.5, 6);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 0);
}

TEST(HvStdFCurve_smooth, OneTapOfWeightOneChangesNothing)
{
    double const kernel[] = {1};
    StdCurve curve = MixedCurve();
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.SmoothSequence(-kEverywhere, kEverywhere, kernel, 1), 1);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvStdFCurve_smooth, ConstantStaysConstantUnderAnyKernelOfSumOne)
{
    ExpectProperty("a constant stays constant", [] {
        std::vector<double> kernel(static_cast<std::size_t>(PickInRange(1, 9)));
        double sum = 0;
        for (double& tap : kernel) {
            tap = PickInRange(1, 20);
            sum += tap;
        }
        for (double& tap : kernel) {
            tap /= sum;
        }
        StdCurve curve(0.0, kLinear);
        for (int i = 0; i < PickInRange(1, 12); ++i) {
            curve.CreateKey(i, 5.5);
        }
        RC_ASSERT(curve.SmoothSequence(-kEverywhere, kEverywhere, kernel.data(),
                                       static_cast<unsigned int>(kernel.size())) == 1);
        // Twenty roundings of numbers below 6.
        for (CFCStdKey const& key : curve.Impl().keys) {
            RC_ASSERT(std::fabs(key.leftValue - 5.5) < 1e-13);
            RC_ASSERT(std::fabs(key.rightValue - 5.5) < 1e-13);
        }
    });
}

TEST(HvStdFCurve_smooth, ConstantStaysConstantAtTheEndsUnderAnyWeights)
{
    double const kernel[] = {3, 5, 7, 11, 13};
    StdCurve curve = Steps({5, 5});
    EXPECT_EQ(curve.SmoothSequence(0, 1, kernel, 5), 1);
    EXPECT_EQ(RightValues(curve), (Values{5, 5}));
}

TEST(HvStdFCurve_smooth, WithoutAKernelOrKeysChangesNothing)
{
    double const kernel[] = {0.5, 0.5};
    StdCurve curve = MixedCurve();
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.SmoothSequence(0, 9, nullptr, 3), 1);
    EXPECT_EQ(curve.SmoothSequence(0, 9, kernel, 0), 1);
    EXPECT_EQ(curve.SmoothSequence(3.5, 4.5, kernel, 2), 1);
    EXPECT_EQ(curve.SmoothSequence(9, 0, kernel, 2), 1);
    for (double const x : NonFinite()) {
        EXPECT_EQ(curve.SmoothSequence(x, x, kernel, 2), 1);
    }
    EXPECT_EQ(StdImage(curve), before);
    StdCurve empty(1.0, kLinear);
    EXPECT_EQ(empty.SmoothSequence(0, 9, kernel, 2), 1);
}

TEST(HvStdFCurve_smooth, WeightsThatAreNoNumbersChangeNothing)
{
    for (double const weight : NonFinite()) {
        double const kernel[] = {weight, weight};
        StdCurve curve = MixedCurve();
        std::string const before = StdImage(curve);
        EXPECT_EQ(curve.SmoothSequence(0, 9, kernel, 2), 1);
        EXPECT_EQ(StdImage(curve), before);
    }
    double const huge[] = {1.7e308, 1.7e308};
    StdCurve curve = Steps({1e10, 1e10, 1e10});
    EXPECT_EQ(curve.SmoothSequence(0, 9, huge, 2), 1);
    EXPECT_EQ(RightValues(curve), (Values{1e10, 1e10, 1e10}));
}

TEST(HvStdFCurve_smooth, RefusesLockedValuesInTheInterval)
{
    double const kernel[] = {0.5, 0.5};
    StdCurve curve = Steps({1, 2, 3, 4});
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SmoothSequence(0, 3, kernel, 2); });
    Lock(curve, 2, Word::kValueLocked);
    ExpectRefused(curve, [&] { return curve.SmoothSequence(0, 2, kernel, 2); });
    EXPECT_EQ(curve.SmoothSequence(0, 1.5, kernel, 2), 1);
}

TEST(HvStdFCurve_smooth, FailedAllocationLeavesTheCurveAsItWas)
{
    double const kernel[] = {0.25, 0.5, 0.25};
    std::string const before = StdImage(MixedCurve());
    long const count =
        RefuseEachAllocation([] { return MixedCurve(); },
                             [&](StdCurve& curve) { curve.SmoothSequence(0, 9, kernel, 3); },
                             [&](StdCurve& curve, bool completed) {
                                 EXPECT_EQ(StdImage(curve) == before, !completed);
                                 EXPECT_TRUE(LockProbe_AreBothFree(curve));
                             });
    EXPECT_GT(count, 0);
}
