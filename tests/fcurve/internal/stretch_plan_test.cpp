// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/internal/stretch_plan.h>

#include "../std_edit.h"

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/foundation/HvDoubleArray.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace {

constexpr HvBaseFCurve::RegionHandle kBottomHandle = HvBaseFCurve::BottomHandle;
constexpr HvBaseFCurve::RegionHandle kLeftHandle = HvBaseFCurve::LeftHandle;
constexpr HvBaseFCurve::RegionHandle kRightHandle = HvBaseFCurve::RightHandle;
constexpr HvBaseFCurve::RegionHandle kTopHandle = HvBaseFCurve::TopHandle;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Keys at 0, 10, ..., 60 with the value of a tenth of their parameter.
StdCurve Tens()
{
    StdCurve curve{KeyWithHandles(0, 0, {-1, 0}, {1, 0})};
    for (int i = 1; i < 7; ++i) {
        curve.Impl().keys.Add(KeyWithHandles(10 * i, i, {-1, 0}, {1, 0}));
    }
    return curve;
}

/// The region from x = 15 to 45 with all values, about its right edge.
HvStretchRequest Middle(HvBaseFCurve::RegionHandle handle = kLeftHandle)
{
    HvStretchRequest request;
    request.region = HvExtent2<double>(15, -100, 45, 100);
    request.pivot = Point(45, 0);
    request.handle = handle;
    request.ripple = false;
    request.minimalScale = 0;
    return request;
}

HvStretchPlan Plan(HvBaseFCurve const& curve, HvStretchRequest const& request,
                   std::initializer_list<double> listed = {})
{
    HvDoubleArray list;
    for (double const x : listed) {
        list.Add(x);
    }
    return HvStretchPlan(curve, request, list);
}

std::vector<double> Parameters(HvStretchPlan const& plan)
{
    std::vector<double> parameters;
    for (HvStretchKey const& key : plan.Keys()) {
        parameters.push_back(key.parameter);
    }
    return parameters;
}

std::vector<double> Weights(HvStretchPlan const& plan)
{
    std::vector<double> weights;
    for (HvStretchKey const& key : plan.Keys()) {
        weights.push_back(key.weight);
    }
    return weights;
}

using Numbers = std::vector<double>;

}  // namespace

// The run.

TEST(stretch_plan, RunHoldsTheKeysOfTheRegionsWidth)
{
    StdCurve const curve = Tens();
    HvStretchPlan const plan = Plan(curve, Middle());
    EXPECT_TRUE(plan.IsUsable());
    EXPECT_EQ(plan.First(), 2u);
    EXPECT_EQ(Parameters(plan), Numbers({20, 30, 40}));

    HvStretchRequest onKeys = Middle();
    onKeys.region = HvExtent2<double>(10, -100, 30, 100);
    onKeys.pivot.x = 30;
    EXPECT_EQ(Parameters(Plan(curve, onKeys)), Numbers({10, 20, 30})) << "edges belong to it";
}

TEST(stretch_plan, RegionWithoutAKeyIsOfNoUse)
{
    StdCurve const curve = Tens();
    for (double const from : {-9.0, 21.0, 61.0}) {
        for (bool const ripple : {false, true}) {
            HvStretchRequest request = Middle();
            request.region = HvExtent2<double>(from, -100, from + 8, 100);
            request.pivot.x = from;
            request.handle = kRightHandle;
            request.ripple = ripple;
            EXPECT_FALSE(Plan(curve, request, {20, 30}).IsUsable()) << from;
        }
    }
    EXPECT_FALSE(Plan(HvStdFCurve(1, kCubic), Middle()).IsUsable());
}

TEST(stretch_plan, ListedKeysBeyondTheRunWidenItByOne)
{
    StdCurve const curve = Tens();
    EXPECT_EQ(Parameters(Plan(curve, Middle(), {0, 30})), Numbers({10, 20, 30, 40}));
    EXPECT_EQ(Parameters(Plan(curve, Middle(), {60, 30})), Numbers({20, 30, 40, 50}));
    EXPECT_EQ(Parameters(Plan(curve, Middle(), {1000, -1000})), Numbers({10, 20, 30, 40, 50}));
    EXPECT_EQ(Parameters(Plan(curve, Middle(), {std::nan(""), 30})), Numbers({20, 30, 40}));
    HvStretchRequest whole = Middle();
    whole.region = HvExtent2<double>(0, -100, 60, 100);
    whole.pivot.x = 60;
    EXPECT_EQ(Plan(curve, whole, {-5, 99}).Keys().Count(), 7u);
}

TEST(stretch_plan, RippleTakesTheKeysBeyondTheSidesThatMove)
{
    StdCurve const curve = Tens();
    HvStretchRequest request = Middle();
    request.ripple = true;
    EXPECT_EQ(Parameters(Plan(curve, request)), Numbers({0, 10, 20, 30, 40}));
    request.pivot.x = 25;
    EXPECT_EQ(Plan(curve, request).Keys().Count(), 7u);
    request = Middle(kRightHandle);
    request.ripple = true;
    request.pivot.x = 15;
    EXPECT_EQ(Parameters(Plan(curve, request)), Numbers({20, 30, 40, 50, 60}));
    request.pivot.x = 20;
    EXPECT_EQ(Plan(curve, request).Keys().Count(), 7u);
    request = Middle(kTopHandle);
    request.ripple = true;
    EXPECT_EQ(Plan(curve, request).Keys().Count(), 7u);
}

// What is of no use.

TEST(stretch_plan, OneHandleAndAnOrdinaryRegionAreNeeded)
{
    StdCurve const curve = Tens();
    for (int const bits : {0, 3, 5, 6, 16, -1}) {
        EXPECT_FALSE(Plan(curve, Middle(static_cast<HvBaseFCurve::RegionHandle>(bits))).IsUsable());
    }
    for (int const bits : {1, 2, 4, 8}) {
        EXPECT_TRUE(Plan(curve, Middle(static_cast<HvBaseFCurve::RegionHandle>(bits))).IsUsable());
    }
    for (int const state : {1, 2, 7}) {
        HvStretchRequest request = Middle();
        request.region.state = state;
        EXPECT_FALSE(Plan(curve, request).IsUsable());
    }
}

TEST(stretch_plan, NumbersMustBeFiniteOnTheAxisOfTheHandle)
{
    StdCurve const curve = Tens();
    for (double const bad : NonFinite()) {
        HvStretchRequest request = Middle();
        request.pivot = Point(bad, 0);
        EXPECT_FALSE(Plan(curve, request).IsUsable());
        request.pivot = Point(45, bad);
        EXPECT_TRUE(Plan(curve, request).IsUsable());
        request = Middle();
        request.region.min.x = bad;
        EXPECT_FALSE(Plan(curve, request).IsUsable());
    }
    HvStretchRequest strip = Middle();
    strip.region = HvExtent2<double>(15, -kInfinity, 45, kInfinity);
    EXPECT_TRUE(Plan(curve, strip).IsUsable()) << "the other axis may be without end";
    strip.handle = kTopHandle;
    EXPECT_FALSE(Plan(curve, strip).IsUsable());
    HvStretchRequest huge = Middle();
    huge.region = HvExtent2<double>(-1.7e308, -100, 45, 100);
    huge.pivot.x = 1.7e308;
    EXPECT_FALSE(Plan(curve, huge).IsUsable()) << "their distance is no number";
}

TEST(stretch_plan, OneKeyThatMayChangeIsEnough)
{
    StdCurve curve = Tens();
    for (unsigned int const i : {2u, 3u, 4u}) {
        Lock(curve, i, Word::kValueLocked | Word::kParameterLocked);
    }
    EXPECT_FALSE(Plan(curve, Middle()).IsUsable());
    HvStretchRequest ripple = Middle();
    ripple.ripple = true;
    EXPECT_TRUE(Plan(curve, ripple).IsUsable());
    curve.Impl().keys[3].constraints.Clear(Word::kValueLocked);
    EXPECT_TRUE(Plan(curve, Middle()).IsUsable());
}

// The state of a key.

TEST(stretch_plan, LocksOfEveryKeyOfTheRunAreHeeded)
{
    StdCurve curve = Tens();
    Lock(curve, 2, Word::kParameterLocked);
    Lock(curve, 3, Word::kValueLocked);
    Lock(curve, 4, Word::kValueLocked | Word::kParameterLocked);
    HvStretchPlan const plan = Plan(curve, Middle(), {0, 30});
    EXPECT_EQ(plan.Keys()[0].lock, HvStretchFree);
    EXPECT_EQ(plan.Keys()[1].lock, HvStretchParameterLocked);
    EXPECT_EQ(plan.Keys()[2].lock, HvStretchValueLocked);
    EXPECT_EQ(plan.Keys()[3].lock, HvStretchBothLocked);
}

TEST(stretch_plan, PartOfAKeyInTheRegionCounts)
{
    StdCurve const curve({KeyAt(1, 0, 0, kCubic), KeyAt(2, 0, 9, kCubic), KeyAt(3, 9, 0, kCubic),
                          KeyAt(4, 9, 9, kCubic), KeyAt(5, 1, -1, kCubic)});
    HvStretchRequest request = Middle();
    request.region = HvExtent2<double>(0, -1, 6, 1);
    HvStretchPlan const plan = Plan(curve, request);
    HvStretchPart const expected[] = {HvStretchInside, HvStretchLeftInside, HvStretchRightInside,
                                      HvStretchOutside, HvStretchInside};
    for (unsigned int i = 0; i < 5; ++i) {
        EXPECT_EQ(plan.Keys()[i].part, expected[i]) << i;
    }
}

TEST(stretch_plan, ListedKeysAreInTheRegionWhereverTheyStand)
{
    StdCurve const curve = Tens();
    HvStretchRequest request = Middle();
    request.region = HvExtent2<double>(15, 50, 45, 100);
    HvStretchPlan const plan = Plan(curve, request, {0, 10 + 0.9e-7, 20 - 1.1e-7, 30});
    EXPECT_EQ(plan.Keys()[0].part, HvStretchInside);
    EXPECT_EQ(plan.Keys()[1].part, HvStretchOutside) << "not near enough";
    EXPECT_EQ(plan.Keys()[2].part, HvStretchInside);
    EXPECT_EQ(plan.Keys()[3].part, HvStretchOutside);
}

TEST(stretch_plan, KeysOfOneValueHaveNoLeftPart)
{
    HvBooleanFCurve curve(0);
    curve.CreateKey(20, 1);
    curve.CreateKey(30, 0);
    HvStretchRequest request = Middle(kTopHandle);
    request.region = HvExtent2<double>(15, 0.5, 45, 2);
    request.pivot = Point(0, 0.5);
    HvStretchPlan const plan = Plan(curve, request);
    ASSERT_EQ(plan.Keys().Count(), 2u);
    EXPECT_EQ(plan.Keys()[0].part, HvStretchInside);
    EXPECT_EQ(plan.Keys()[1].part, HvStretchOutside);
    EXPECT_EQ(plan.Keys()[1].leftValue, 0);
}

// Weights.

TEST(stretch_plan, KeysInTheRegionScaleUnlessTheirParameterIsLocked)
{
    StdCurve curve = Tens();
    Lock(curve, 3, Word::kParameterLocked);
    Lock(curve, 4, Word::kValueLocked);
    EXPECT_EQ(Weights(Plan(curve, Middle())), Numbers({25, 0, 5}));
}

TEST(stretch_plan, RippleFollowsTheNearSideAndTheFarOneWhereItMoves)
{
    StdCurve curve = Tens();
    Lock(curve, 0, Word::kParameterLocked);
    HvStretchRequest request = Middle();
    request.ripple = true;
    EXPECT_EQ(Weights(Plan(curve, request)), Numbers({0, 30, 25, 15, 5}));
    request.pivot.x = 25;
    EXPECT_EQ(Weights(Plan(curve, request)), Numbers({0, 10, 5, -5, -15, -20, -20}));
    request.pivot.x = 45 + 0.5e-7;
    EXPECT_EQ(Plan(curve, request).Keys().Count(), 5u) << "as good as on the far edge";
}

TEST(stretch_plan, KeyInTheWidthButNotInTheHeightNeitherScalesNorFollows)
{
    StdCurve const curve = Tens();
    HvStretchRequest request = Middle();
    request.ripple = true;
    request.region = HvExtent2<double>(15, 2.5, 45, 100);
    EXPECT_EQ(Weights(Plan(curve, request)), Numbers({30, 30, 0, 15, 5}));
}

TEST(stretch_plan, ValuesScaleSideBySide)
{
    StdCurve curve({KeyAt(1, 1, 2, kCubic), KeyAt(2, 2, 9, kCubic), KeyAt(3, -9, 2, kCubic),
                    KeyAt(4, -9, 9, kCubic)});
    HvStretchRequest request = Middle(kTopHandle);
    request.region = HvExtent2<double>(0, 0, 5, 3);
    request.pivot = Point(0, 1);
    for (bool const ripple : {false, true}) {
        request.ripple = ripple;
        HvStretchPlan const plan = Plan(curve, request);
        double const near = ripple ? -2 : 0;
        double const far = ripple ? 1 : 0;
        double const expected[][2] = {{0, -1}, {-1, near}, {far, -1}, {far, near}};
        for (unsigned int i = 0; i < 4; ++i) {
            EXPECT_EQ(plan.Keys()[i].leftWeight, expected[i][0]) << i;
            EXPECT_EQ(plan.Keys()[i].weight, expected[i][1]) << i;
        }
    }
    request.pivot.y = 0;
    EXPECT_EQ(Plan(curve, request).Keys()[3].leftWeight, 0) << "the far edge stays";
    Lock(curve, 0, Word::kParameterLocked);
    Lock(curve, 1, Word::kValueLocked);
    HvStretchPlan const locked = Plan(curve, request);
    EXPECT_EQ(locked.Keys()[0].weight, -2);
    EXPECT_EQ(locked.Keys()[1].weight, 0);
    EXPECT_EQ(locked.Keys()[1].leftWeight, 0);
}

// How far it goes.

TEST(stretch_plan, SideStopsShortOfALockedKeyInTheRegion)
{
    StdCurve curve = Tens();
    Lock(curve, 2, Word::kParameterLocked);
    HvStretchPlan const plan = Plan(curve, Middle());
    HvStretchPlan::Step const step = plan.Limit(20);
    EXPECT_TRUE(step.limited);
    EXPECT_NEAR(15 + step.amount, 20 - 0.001, kRounding);
}

TEST(stretch_plan, FarSideStopsShortOfALockedKeyToo)
{
    StdCurve curve = Tens();
    Lock(curve, 4, Word::kParameterLocked);
    HvStretchRequest request = Middle();
    request.pivot.x = 25;
    HvStretchPlan const plan = Plan(curve, request);
    // From 45 it moves by a share of 20: to 40.001 by 4.999/20. The key at 30, which moves by a
    // share of 5, is no nearer to anything.
    EXPECT_NEAR(plan.Limit(9).share, 4.999 / 20, kRounding);
    EXPECT_NEAR(plan.Stretched(plan.Limit(9).share).max.x, 40.001, kRounding);
}

TEST(stretch_plan, KeysStopShortOfOneThatStays)
{
    StdCurve curve = Tens();
    Lock(curve, 3, Word::kParameterLocked);
    // The key at 20 moves by a share of 25: to 29.999 by 9.999/25; the side, by a share of 30,
    // then is at 27.
    EXPECT_NEAR(Plan(curve, Middle()).Limit(29).share, 9.999 / 25, kRounding);
    // Growing: the side meets the key at 10 first.
    EXPECT_NEAR(Plan(curve, Middle()).Limit(-29).amount, -4.999, kRounding);
}

TEST(stretch_plan, RippleMovesWhatStoodInTheWayButALockedKey)
{
    StdCurve curve = Tens();
    HvStretchRequest request = Middle();
    request.ripple = true;
    EXPECT_FALSE(Plan(curve, request).Limit(-1e6).limited);
    Lock(curve, 0, Word::kParameterLocked);
    // The key at 10 follows the side by the same way.
    EXPECT_NEAR(Plan(curve, request).Limit(-1e6).amount, -9.999, kRounding);
}

TEST(stretch_plan, RippleDoesNotTurnRound)
{
    StdCurve const curve = Tens();
    HvStretchRequest request = Middle();
    EXPECT_NEAR(Plan(curve, request).Limit(35).scale, -5.0 / 30, kRounding);
    request.ripple = true;
    EXPECT_NEAR(Plan(curve, request).Limit(35).scale, 0.001, kRounding);
    request.region.min.x = 0;
    EXPECT_NEAR(Plan(curve, request).Limit(49).scale, -4.0 / 45, kRounding) << "nothing follows";
}

TEST(stretch_plan, KeyOnThePivotStaysAndNothingPassesIt)
{
    StdCurve curve = Tens();
    curve.Impl().keys[3] = KeyAt(39.5, 3, 3, kCubic);
    HvStretchRequest request = Middle();
    request.region.max.x = request.pivot.x = 40;
    HvStretchPlan::Step const step = Plan(curve, request).Limit(100);
    EXPECT_TRUE(step.limited);
    EXPECT_NEAR(step.share, 0.499 / 0.5, kRounding);
}

TEST(stretch_plan, HostsLimitsHoldKeysWithoutAGap)
{
    StdCurve const curve = Tens();
    HvStretchRequest request = Middle();
    request.ripple = true;
    request.limits = HvExtent2<double>(-3, 0, 1000, 0);
    EXPECT_EQ(Plan(curve, request).Limit(-9).amount, -3);
    request.limits.state = HvExtent2<double>::WholePlane;
    EXPECT_EQ(Plan(curve, request).Limit(-9).amount, -9);
    request.limits.state = HvExtent2<double>::Empty;
    EXPECT_EQ(Plan(curve, request).Limit(-9).amount, -9);
    request.limits = HvExtent2<double>(5, 0, 55, 0);
    EXPECT_EQ(Plan(curve, request).Limit(-9).amount, 0) << "the key at 0 goes no further out";
    EXPECT_EQ(Plan(curve, request).Limit(9).amount, 9);
}

TEST(stretch_plan, GapThatIsTooSmallAlreadyIsNoLimitAtTheStart)
{
    StdCurve curve = Tens();
    HvStretchRequest request = Middle();
    request.region.min.x = 10 + 1e-4;
    EXPECT_FALSE(Plan(curve, request).Limit(0).limited);
    EXPECT_EQ(Plan(curve, request).Limit(-1).amount, 0);
    EXPECT_EQ(Plan(curve, request).Limit(1).amount, 1);
}

TEST(stretch_plan, ValuesStopShortOfLockedOnes)
{
    StdCurve curve = Tens();
    HvStretchRequest request = Middle(kBottomHandle);
    request.region = HvExtent2<double>(15, 1.5, 65, 4.5);
    request.pivot = Point(0, 4.5);
    Lock(curve, 2, Word::kValueLocked);  // value 2, in the region
    EXPECT_NEAR(Plan(curve, request).Limit(2).amount, 0.499, kRounding);
    EXPECT_FALSE(Plan(curve, request).Limit(-99).limited);

    request.handle = kTopHandle;
    request.pivot.y = 1.5;
    EXPECT_FALSE(Plan(curve, request).Limit(99).limited) << "values pass values that are free";
    Lock(curve, 5, Word::kValueLocked);  // value 5, beyond the region
    EXPECT_NEAR(Plan(curve, request).Limit(99).amount, 0.499, kRounding);
}

TEST(stretch_plan, RegionFollowsTheStretchSorted)
{
    StdCurve const curve = Tens();
    HvStretchRequest request = Middle();
    HvExtent2<double> const half = Plan(curve, request).Stretched(0.5);
    EXPECT_EQ(half.min, Point(30, -100));
    EXPECT_EQ(half.max, Point(45, 100));
    EXPECT_EQ(half.state, 0);
    HvExtent2<double> const flipped = Plan(curve, request).Stretched(2);
    EXPECT_EQ(flipped.min.x, 45);
    EXPECT_EQ(flipped.max.x, 75);
    request.pivot.x = 25;
    EXPECT_EQ(Plan(curve, request).Stretched(0.5).max.x, 35);
    request = Middle(kTopHandle);
    request.pivot = Point(0, -100);
    EXPECT_EQ(Plan(curve, request).Stretched(0.25).max, Point(45, 50));
}
