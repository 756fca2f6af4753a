// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include "../support/allocation_failure.h"
#include "../support/generators.h"

#include <gtest/gtest.h>

namespace {

StdCurve FiveKeys()
{
    return StdCurve({KeyAt(0, 10, 10, kConstant), KeyAt(1, 11, 11, kLinear),
                     KeyAt(2, 12, 12, kCubic), KeyAt(3, 13, 13, kLinear),
                     KeyAt(4, 14, 14, kConstant)});
}

}  // namespace

TEST(HvStdFCurve_merge, KeyInTheMiddleTakesOverTheOuterHandlesOfTheKeysThatGo)
{
    // The removal leaves (0, 0) (2, 2) (4, 2) (6, 0), which runs evenly in x. At 3, t = 1/2:
    // P01 (1, 1), P23 (5, 1).
    StdCurve curve(
        {KeyWithHandles(0, 0, {}, {0.5, 0.5}), KeyWithHandles(1.5, 8, {-0.25, 0.75}, {0.25, 0}),
         KeyWithHandles(4.5, 8, {-0.25, 0}, {0.25, -0.5}), KeyWithHandles(6, 0, {-0.5, 0.5}, {})});
    EXPECT_EQ(curve.MergeAndCreateKey(1, 5, 3, 5, kLinear, kConstant, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    HvStdFCurveImpl const& impl = curve.Impl();
    EXPECT_EQ(impl.keys[0].rightHandle, Point(1, 1));
    EXPECT_EQ(impl.keys[1].leftHandle, Point(2.75, 5.75));
    EXPECT_EQ(impl.keys[1].leftValue, 5);
    EXPECT_EQ(impl.keys[1].rightHandle, Point(3.25, 4.5));
    EXPECT_EQ(impl.keys[2].leftHandle, Point(5, 1));
    EXPECT_EQ(impl.keys[0].segmentKind, kLinear);
    EXPECT_EQ(impl.keys[1].segmentKind, kConstant);
    EXPECT_EQ(impl.keys[1].constraints.word, 0x0001);
}

TEST(HvStdFCurve_merge, TakenOverHandlesAreShrunkUntilTheyFit)
{
    // Left of the new key at 3 the handle (-5, 5) reaches too far past (0, 0) and its handle (1,
    // 1).
    StdCurve curve({KeyWithHandles(0, 0, {}, {0.5, 0.5}), KeyWithHandles(1.5, 8, {-5, 5}, {}),
                    KeyWithHandles(4.5, 8, {}, {}), KeyWithHandles(6, 0, {-0.5, 0.5}, {})});
    EXPECT_EQ(curve.MergeAndCreateKey(1, 5, 3, 5, 0, 0, 0), 1);
    EXPECT_TRUE(curve.Impl().IsValid());
    Point const left = curve.Impl().LeftVector(1);
    EXPECT_NEAR(left.x, -left.y, kRounding) << "the direction stays";
    EXPECT_LT(-left.x, 5);
}

TEST(HvStdFCurve_merge, WholeCurveBecomesOneKey)
{
    StdCurve curve = FiveKeys();
    EXPECT_EQ(curve.MergeAndCreateKey(-1, 5, 2.5, 7, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 1u);
    EXPECT_EQ(curve.Impl().keys[0].parameter, 2.5);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(2.5, 7));
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 7);
    EXPECT_EQ(curve.Impl().keys[0].segmentKind, kConstant) << "the last key's kind";
    EXPECT_EQ(curve.GetFirstSegmentKind(), kCubic);
}

TEST(HvStdFCurve_merge, HeadBecomesOneKey)
{
    StdCurve curve = FiveKeys();
    curve.SetFirstSegmentKind(kLinear);
    EXPECT_EQ(curve.MergeAndCreateKey(-1, 1, 0.5, 7, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 4u);
    EXPECT_EQ(curve.Impl().keys[0].parameter, 0.5);
    EXPECT_EQ(curve.Impl().keys[1].parameter, 2);
    EXPECT_EQ(curve.Impl().keys[0].segmentKind, kLinear) << "the kind before the first key kept";
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 7);
    ExpectNear(curve.Impl().keys[0].rightHandle, 1, 7);
    ExpectNear(curve.Impl().keys[0].leftHandle, 0, 7);
}

TEST(HvStdFCurve_merge, HeadShortensTheLeftHandleOfTheFirstKeyKept)
{
    // From (1.5, 7) the handle of the new key stands at 2; that of the key at 3 at -1 turns back,
    // and so does every 0.9^k of it until 3 - 4 * 0.9^k is not far below 2.
    StdCurve curve(
        {KeyAt(0, 0, 0, kCubic), KeyAt(1, 0, 0, kCubic), KeyWithHandles(3, 2, {-4, 4}, {})});
    curve.Impl().keys[1].rightHandle = Point(1, 0);
    EXPECT_EQ(curve.MergeAndCreateKey(-1, 1, 1.5, 7, 0, 0, 0), 1);
    EXPECT_TRUE(curve.Impl().IsValid());
    Point const left = curve.Impl().LeftVector(1);
    EXPECT_NEAR(left.x, -left.y, kRounding);
    double const steps = std::log(-left.x / 4) / std::log(0.9);
    EXPECT_NEAR(steps, std::round(steps), 1e-9);
    // The step before would not have been valid.
    EXPECT_FALSE(
        HvStdFCurve_IsCubicSegmentValid({1.5, 7}, {2, 7}, Point(3, 2) + left * (1 / 0.9), {3, 2}));
}

TEST(HvStdFCurve_merge, TailBecomesOneKey)
{
    StdCurve curve = FiveKeys();
    EXPECT_EQ(curve.MergeAndCreateKey(2, 9, 7, 7, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    EXPECT_EQ(curve.Impl().keys[2].parameter, 7);
    EXPECT_EQ(curve.Impl().keys[1].segmentKind, kLinear) << "kind of the last key kept";
    EXPECT_EQ(curve.Impl().keys[2].segmentKind, kConstant) << "kind of the last key that goes";
    ExpectNear(curve.Impl().keys[2].leftHandle, 5, 7);
    ExpectNear(curve.Impl().keys[2].rightHandle, 9, 7);
}

TEST(HvStdFCurve_merge, HandlesStandAtTheThirdsOfTheNewSpansUnderTheDefaultBezierConstraint)
{
    // The span that goes is longer than the new one: a third of the old would turn back.
    StdCurve head({KeyAt(0, 0, 0, kCubic), KeyAt(10, 0, 0, kCubic), KeyAt(20, 0, 0, kCubic)});
    head.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(head.MergeAndCreateKey(-1, 5, 9, 7, 0, 0, 0), 1);
    EXPECT_NEAR(head.Impl().keys[1].leftHandle.x, 10 - 1.0 / 3, kRounding);
    EXPECT_NEAR(head.Impl().keys[0].rightHandle.x, 9 + 1.0 / 3, kRounding);
    EXPECT_TRUE(head.Impl().IsValid());

    StdCurve tail({KeyAt(0, 0, 0, kCubic), KeyAt(10, 0, 0, kCubic), KeyAt(20, 0, 0, kCubic)});
    tail.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(tail.MergeAndCreateKey(15, 25, 11, 7, 0, 0, 0), 1);
    EXPECT_NEAR(tail.Impl().keys[1].rightHandle.x, 10 + 1.0 / 3, kRounding);
    EXPECT_NEAR(tail.Impl().keys[2].leftHandle.x, 11 - 1.0 / 3, kRounding);
    EXPECT_TRUE(tail.Impl().IsValid());
}

TEST(HvStdFCurve_merge, OnlyKeyOfTheIntervalAtItsParameterStaysWithAllItHas)
{
    StdCurve curve = FiveKeys();
    Lock(curve, 2, Word::kFlatTangents | Word::kSelected);
    curve.SetUserDataSet(SetOf(1, "blob"), 2);
    curve.Impl().keys[2].privateByte1 = 9;
    EXPECT_EQ(curve.MergeAndCreateKey(1.5, 2.5, 2, 7, kLinear, kLinear, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 5u);
    CFCStdKey const& key = curve.Impl().keys[2];
    EXPECT_EQ(key.leftValue, 7);
    EXPECT_EQ(key.constraints.word, 0x8021);
    EXPECT_EQ(key.privateByte1, 9);
    EXPECT_EQ(key.segmentKind, kCubic);
    EXPECT_TRUE(curve.HasUserData(2));

    StdCurve one({KeyAt(2, 1, 1, kLinear)});
    Lock(one, 0, Word::kFlatTangents);
    EXPECT_EQ(one.MergeAndCreateKey(0, 4, 2, 7, 0, 0, 0), 1);
    EXPECT_EQ(one.Impl().keys[0].constraints.word, 0x0021);
}

TEST(HvStdFCurve_merge, IntervalWithoutKeysOnlyInserts)
{
    StdCurve curve = FiveKeys();
    EXPECT_EQ(curve.MergeAndCreateKey(1.2, 1.8, 1.5, 7, 0, 0, 1), 1);
    ASSERT_EQ(curve.GetNumKeys(), 6u);
    EXPECT_EQ(curve.Impl().keys[2].parameter, 1.5);
    EXPECT_EQ(curve.Impl().keys[2].constraints.word, 0x0001) << "no key went, none is remembered";

    StdCurve open = FiveKeys();
    EXPECT_EQ(open.MergeAndCreateKey(1, 2, 1.5, 7, 1, 1, 0), 1);
    EXPECT_EQ(open.GetNumKeys(), 6u);
}

TEST(HvStdFCurve_merge, CurveWithoutKeysGetsItsFirst)
{
    StdCurve curve(3, kLinear);
    EXPECT_EQ(curve.MergeAndCreateKey(0, 4, 2, 7, 0, 0, 1), 1);
    EXPECT_EQ(curve.Impl().keys[0].segmentKind, kLinear);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 7);

    StdCurve kinds(3, kLinear);
    EXPECT_EQ(kinds.MergeAndCreateKey(0, 4, 2, 7, kConstant, kCubic, 0, 0, 1), 1);
    EXPECT_EQ(kinds.GetFirstSegmentKind(), kConstant);
    EXPECT_EQ(kinds.Impl().keys[0].segmentKind, kCubic);
}

TEST(HvStdFCurve_merge, KeyDataOfTheNearestKeyGoOnTheNewOneWhenAsked)
{
    for (int const keep : {0, 1}) {
        StdCurve curve = FiveKeys();
        Lock(curve, 1, Word::kFlatTangents | Word::kSelected);
        curve.SetUserDataSet(SetOf(1, "one"), 1);
        curve.SetUserDataSet(SetOf(1, "two"), 2);
        EXPECT_EQ(curve.MergeAndCreateKey(0.5, 2.5, 1.25, 7, 0, 0, keep), 1);
        ASSERT_EQ(curve.GetNumKeys(), 4u);
        EXPECT_EQ(curve.Impl().keys[1].constraints.word, keep ? 0x8021 : 0x0001);
        EXPECT_EQ(TextIn(curve.GetUserDataSet(1.25), 1), keep ? "one" : "none");
        EXPECT_FALSE(curve.HasUserData(1));
        EXPECT_FALSE(curve.HasUserData(2));
    }
}

TEST(HvStdFCurve_merge, KeyDataComeFromAKeyThatStaysWhenItIsTheNearest)
{
    StdCurve curve = FiveKeys();
    Lock(curve, 3, Word::kLinearTangents);
    curve.SetUserDataSet(SetOf(1, "three"), 3);
    EXPECT_EQ(curve.MergeAndCreateKey(0.5, 2.5, 2.75, 7, 0, 0, 1), 1);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0401);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(2.75), 1), "three");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(3), 1), "three");
}

TEST(HvStdFCurve_merge, KeyDataStayAwayWhenAKeptKeyTookTheValue)
{
    StdCurve curve({KeyAt(-1, 0, 0, kCubic), KeyAt(-1e-21, 0, 0, kCubic), KeyAt(0, 1, 1, kCubic)});
    Lock(curve, 1, Word::kFlatTangents);
    curve.SetUserDataSet(SetOf(1, "blob"), -1e-21);
    EXPECT_EQ(curve.MergeAndCreateKey(-0.5, -1e-22, -2e-21, 7, 0, 0, 1), 1);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    EXPECT_EQ(curve.Impl().keys[1].leftValue, 7);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0001);
    EXPECT_FALSE(curve.HasUserData());
}

TEST(HvStdFCurve_merge, KeyAtTheParameterOfOneThatGoesKeepsItsData)
{
    StdCurve curve = FiveKeys();
    curve.SetUserDataSet(SetOf(1, "two"), 2);
    EXPECT_EQ(curve.MergeAndCreateKey(0.5, 3.5, 2, 7, 0, 0, 1), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(2), 1), "two");
}

TEST(HvStdFCurve_merge, ParameterNotBetweenTheKeysThatStayIsRefused)
{
    StdCurve curve = FiveKeys();
    curve.SetUserDataSet(SetOf(1, "two"), 2);
    for (int const keep : {0, 1}) {
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 2, 0, 7, 0, 0, keep); });
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 2, -1, 7, 0, 0, keep); });
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 2, 3, 7, 0, 0, keep); });
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 1, 1, 7, 1, 1, keep); });
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 1, 1, 7, 0, 1, keep); });
    }
}

TEST(HvStdFCurve_merge, LocksInTheIntervalRefuse)
{
    for (unsigned short const lock : {Word::kParameterLocked, Word::kValueLocked}) {
        StdCurve curve = FiveKeys();
        Lock(curve, 2, lock);
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 2, 1.5, 7, 0, 0, 0); });
        ExpectRefused(curve,
                      [&] { return curve.MergeAndCreateNonModifyingKey(1, 2, 1.5, 0, 0, 0, 1); });
        EXPECT_EQ(curve.MergeAndCreateKey(1, 2, 1.5, 7, 0, 1, 0), 1);
    }
}

TEST(HvStdFCurve_merge, ReadOnlyCurvesAndUnstorableArgumentsAreRefused)
{
    StdCurve curve = FiveKeys();
    ExpectRefusedWhenReadOnly(curve,
                              [&] { return curve.MergeAndCreateKey(1, 2, 1.5, 7, 0, 0, 0); });
    ExpectRefusedWhenReadOnly(
        curve, [&] { return curve.MergeAndCreateNonModifyingKey(1, 2, 1.5, 0, 0, 0, 0); });
    for (double const bad : NonFinite()) {
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 2, bad, 7, 0, 0, 0); });
        ExpectRefused(curve, [&] { return curve.MergeAndCreateKey(1, 2, 1.5, bad, 0, 0, 0); });
        ExpectRefused(curve,
                      [&] { return curve.MergeAndCreateNonModifyingKey(1, 2, bad, 0, 0, 0, 0); });
    }
    auto const unknown = static_cast<FSKind>(4);
    ExpectRefused(curve,
                  [&] { return curve.MergeAndCreateKey(1, 2, 1.5, 7, unknown, kLinear, 0, 0, 0); });
    ExpectRefused(curve,
                  [&] { return curve.MergeAndCreateKey(1, 2, 1.5, 7, kLinear, unknown, 0, 0, 0); });
}

TEST(HvStdFCurve_merge, IntervalThatRunsBackwardsHoldsNothing)
{
    StdCurve curve = FiveKeys();
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.MergeAndCreateKey(2, 1, 1.5, 7, 0, 0, 0), 1);
    EXPECT_EQ(curve.MergeAndCreateKey(std::nan(""), 1, 1.5, 7, 0, 0, 0), 1);
    EXPECT_EQ(StdImage(curve), before);
}

// With the curve's own value.

TEST(HvStdFCurve_merge, NonModifyingKeyHasTheValueOfTheCurve)
{
    struct Row {
        double from, to, x, value;
    };
    for (Row const& row : {Row{0.5, 1.5, 1.25, 11.25}, Row{0.5, 1.5, 1, 11}, Row{3.5, 9, 7, 14},
                           Row{-9, 0.5, -7, 10}, Row{-9, 9, 2, 12}}) {
        StdCurve curve = FiveKeys();
        curve.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);
        EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(row.from, row.to, row.x, 0, 0, 0, 0), 1);
        EXPECT_EQ(curve.Eval(row.x, 0), row.value) << row.x;
    }
    StdCurve empty(7, kLinear);
    EXPECT_EQ(empty.MergeAndCreateNonModifyingKey(0, 1, 0.5, 0, 0, 0, 0), 1);
    EXPECT_EQ(empty.Eval(0.5, 0), 7);
}

TEST(HvStdFCurve_merge, NonModifyingKeyMovesItsIntervalIntoTheCycle)
{
    StdCurve curve = FiveKeys();
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    StdCurve unfolded(curve);
    // 5.25 folds to 1.25, [5, 6] to [1, 2]: the keys at 1 and 2 go.
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(5, 6, 5.25, 0, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 4u);
    EXPECT_EQ(curve.Impl().keys[1].parameter, 1.25);
    EXPECT_EQ(curve.Impl().keys[1].leftValue, 11.25);

    EXPECT_EQ(unfolded.MergeAndCreateNonModifyingKey(5, 6, 5.25, 0, 0, 0, 1), 1);
    EXPECT_EQ(unfolded.GetNumKeys(), 6u);
    EXPECT_EQ(unfolded.Impl().keys[5].leftValue, 14) << "no extrapolation is used";
}

TEST(HvStdFCurve_merge, FoldedIntervalIsSortedAndHoldsItsParameter)
{
    StdCurve curve = FiveKeys();
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    // [6, 5] moves to [2, 1] and is turned round; 7 folds to 3 and is held at 2.
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(6, 5, 5.5, 0, 0, 0, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 4u);
    EXPECT_EQ(curve.Impl().keys[1].parameter, 1.5);
    StdCurve held = FiveKeys();
    held.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    EXPECT_EQ(held.MergeAndCreateNonModifyingKey(5, 6, 7, 0, 0, 0, 0), 1);
    EXPECT_EQ(held.Impl().keys[1].parameter, 2);
}

TEST(HvStdFCurve_merge, MergeWithoutMemoryChangesNothing)
{
    auto const prepare = [] {
        StdCurve curve = FiveKeys();
        curve.SetUserDataSet(SetOf(1, "one"), 1);
        curve.SetUserDataSet(SetOf(2, "two"), 2);
        return curve;
    };
    StdCurve const original = prepare();
    std::string const before = StdImage(original);
    auto const check = [&](StdCurve& curve, bool completed) {
        EXPECT_EQ(StdImage(curve) == before, !completed);
    };
    struct Row {
        double from, to, x;
    };
    for (Row const& row : {Row{0.5, 2.5, 1.25}, Row{-1, 1.5, 0.5}, Row{1.5, 9, 7}, Row{-1, 9, 3.3},
                           Row{1.25, 1.75, 1.5}}) {
        EXPECT_GE(RefuseEachAllocation(
                      prepare,
                      [=](StdCurve& curve) {
                          curve.MergeAndCreateKey(row.from, row.to, row.x, 7, 0, 0, 1);
                      },
                      check),
                  0);
    }
}

TEST(HvStdFCurve_merge, LockInTheIntervalAsGivenRefusesBeforeItIsFolded)
{
    // Folded, the interval runs from -0.1 to 0.6 and misses the locked key.
    StdCurve curve({KeyAt(0, 1, 1, kLinear), KeyAt(1, 2, 2, kLinear), KeyAt(2, 3, 3, kLinear)},
                   HvBaseFCurve::CycleExtrapolation);
    Lock(curve, 2, Word::kValueLocked);
    ExpectRefused(curve,
                  [&] { return curve.MergeAndCreateNonModifyingKey(1.9, 2.6, 2.5, 0, 0, 0, 0); });
    EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(2.1, 2.6, 2.5, 0, 0, 0, 0), 1);
}

TEST(HvStdFCurve_merge, EveryRunOfMergesLeavesAValidCurve)
{
    ExpectProperty("merges keep every segment a function and the key where it was asked for", [] {
        StdCurve curve = MixedCurve();
        if (PickInRange(0, 2)) {
            curve.SetDefaultBezierTangentConstraint(true);
        }
        for (int step = 0; step < 20; ++step) {
            double const from = PickInRange(-200, 1200) * 0.01;
            double const x = from + PickInRange(0, 200) * 0.01;
            double const y = PickInRange(-1000, 1000) * 0.01;
            int const done =
                PickInRange(0, 2)
                    ? curve.MergeAndCreateKey(from, from + 2, x, y, 0, 0, 1)
                    : curve.MergeAndCreateNonModifyingKey(from, from + 2, x, 0, 0, 0, 0);
            RC_ASSERT(done == 1);
            RC_ASSERT(curve.IsKeyParameter(x, 0) != 0);
            RC_ASSERT(curve.Impl().IsValid() != 0);
            curve.CreateKey(x - 1, y);
            curve.CreateKey(x + 1, -y);
        }
    });
}
