// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include "../support/allocation_failure.h"
#include "../support/generators.h"

#include <gtest/gtest.h>

namespace {

/// Keys at 0, 1, 2, 3, 4 of the values 10 to 14, all linear.
StdCurve FiveKeys()
{
    return StdCurve({KeyAt(0, 10, 10, kLinear), KeyAt(1, 11, 11, kLinear),
                     KeyAt(2, 12, 12, kLinear), KeyAt(3, 13, 13, kLinear),
                     KeyAt(4, 14, 14, kLinear)});
}

std::string Parameters(StdCurve const& curve)
{
    std::string text;
    for (CFCStdKey const& key : curve.Impl().keys) {
        text += std::to_string(static_cast<int>(key.parameter));
    }
    return text;
}

/// A at 0, B at 2, C at 4; the handles of A and C that face each other as given.
StdCurve ThreeKeys(Point const& right, Point const& left)
{
    return StdCurve(
        {KeyWithHandles(0, 0, {}, right), KeyAt(2, 5, 5, kCubic), KeyWithHandles(4, 0, left, {})});
}

}  // namespace

// What happens to the handles.

TEST(HvStdFCurve_remove, HandlesBesideAKeyThatGoesGrowWithTheSpan)
{
    StdCurve curve = ThreeKeys({1, 1}, {-0.5, 0.25});
    EXPECT_EQ(curve.RemoveKey(2, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(2, 2));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(3, 0.5));
}

TEST(HvStdFCurve_remove, HandleWithoutLengthStaysOnItsKey)
{
    StdCurve shorter = ThreeKeys({0.9e-7, 0}, {-0.9e-7, 0});
    EXPECT_EQ(shorter.RemoveKey(2, 0), 1);
    EXPECT_EQ(shorter.Impl().keys[0].rightHandle, Point(0, 0));
    EXPECT_EQ(shorter.Impl().keys[1].leftHandle, Point(4, 0));

    StdCurve longer = ThreeKeys({1e-7, 0}, {0, 1e-7});
    EXPECT_EQ(longer.RemoveKey(2, 0), 1);
    EXPECT_EQ(longer.Impl().keys[0].rightHandle, Point(2e-7, 0));
    EXPECT_EQ(longer.Impl().keys[1].leftHandle, Point(4, 2e-7));
}

TEST(HvStdFCurve_remove, GrownHandlesThatTurnBackAreShrunk)
{
    // 2.6 of a span of 2 is valid beside the left handle of B at 1.5; 5.2 of a span of 4 beside a
    // left handle on C is not, nor are 0.9 and 0.81 of it; 0.729 of it is 3.7908.
    StdCurve curve = ThreeKeys({2.6, 2}, {});
    curve.Impl().keys[1].leftHandle = Point(1.5, 5);
    ASSERT_TRUE(curve.Impl().IsValid());
    EXPECT_EQ(curve.RemoveKey(2, 0), 1);
    ExpectNear(curve.Impl().keys[0].rightHandle, 3.7908, 2.916);
    EXPECT_TRUE(curve.Impl().IsValid());
}

TEST(HvStdFCurve_remove, UnderTheDefaultBezierConstraintTheLeftHandleKeepsTheThirdOfItsOldSpan)
{
    StdCurve curve = ThreeKeys({1, 3}, {-1, 3});
    curve.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(curve.RemoveKey(2, 0), 1);
    ExpectNear(curve.Impl().keys[0].rightHandle, 4.0 / 3, 4);
    ExpectNear(curve.Impl().keys[1].leftHandle, 4 - 2.0 / 3, 2);
    EXPECT_TRUE(curve.Impl().defaultBezierTangentConstraint);
}

TEST(HvStdFCurve_remove, VariantForACubicLastSegmentContinuesTheLeftHandleOverAThird)
{
    StdCurve curve({KeyAt(-2, 0, 0, kLinear), KeyWithHandles(0, 0, {-3, -4}, {9, 9}),
                    KeyAt(2, 5, 5, kCubic), KeyWithHandles(6, 1, {-1, 1}, {})});
    curve.Impl().SetupBezierCubicWhenRemovingWithCubicLastSegment(1, 3);
    ExpectNear(curve.Impl().keys[1].rightHandle, 1.2, 1.6);
    ExpectNear(curve.Impl().keys[3].leftHandle, 4.5, 2.5);

    StdCurve first({KeyWithHandles(0, 7, {-3, -4}, {9, 9}), KeyAt(2, 5, 5, kCubic),
                    KeyWithHandles(6, 1, {-1, 1}, {})});
    first.Impl().SetupBezierCubicWhenRemovingWithCubicLastSegment(0, 2);
    ExpectNear(first.Impl().keys[0].rightHandle, 2, 7);

    StdCurve degenerate({KeyAt(-2, 0, 0, kLinear), KeyWithHandles(0, 7, {-0.9e-7, 0}, {9, 9}),
                         KeyAt(2, 5, 5, kCubic), KeyWithHandles(6, 1, {-1, 1}, {})});
    degenerate.Impl().SetupBezierCubicWhenRemovingWithCubicLastSegment(1, 3);
    ExpectNear(degenerate.Impl().keys[1].rightHandle, 2, 7);
}

TEST(HvStdFCurve_remove, VariantForACubicFirstSegmentContinuesTheRightHandleOverAThird)
{
    StdCurve curve({KeyWithHandles(0, 1, {}, {1, 1}), KeyAt(4, 5, 5, kCubic),
                    KeyWithHandles(6, 0, {-9, 9}, {3, 4}), KeyAt(8, 0, 0, kCubic)});
    curve.Impl().SetupBezierCubicWhenRemovingWithCubicFirstSegment(0, 2);
    ExpectNear(curve.Impl().keys[0].rightHandle, 1.5, 2.5);
    ExpectNear(curve.Impl().keys[2].leftHandle, 4.8, -1.6);

    StdCurve last({KeyWithHandles(0, 1, {}, {1, 1}), KeyAt(4, 5, 5, kCubic),
                   KeyWithHandles(6, 7, {-9, 9}, {3, 4})});
    last.Impl().SetupBezierCubicWhenRemovingWithCubicFirstSegment(0, 2);
    ExpectNear(last.Impl().keys[2].leftHandle, 4, 7);
}

TEST(HvStdFCurve_remove, StandardCubicIsFlatWithHandlesAtTheThirds)
{
    StdCurve curve({KeyAt(0, 1, 2, kConstant), KeyAt(3, 4, 5, kLinear), KeyAt(9, 6, 6, kLinear)});
    curve.Impl().SetStandardCubic(0, 2);
    ExpectNear(curve.Impl().keys[0].rightHandle, 3, 2);
    ExpectNear(curve.Impl().keys[2].leftHandle, 6, 6);
    EXPECT_EQ(curve.Impl().keys[0].segmentKind, kCubic);

    curve.Impl().defaultBezierTangentConstraint = 1;
    curve.Impl().SetStandardCubic(0, 2);
    ExpectNear(curve.Impl().keys[0].rightHandle, 1, 2);
    ExpectNear(curve.Impl().keys[2].leftHandle, 7, 6);
}

// One key.

TEST(HvStdFCurve_remove, KeyOfACurveWithOneLeavesItsValueWhenNoKeys)
{
    StdCurve curve(7, kCubic);
    curve.CreateKey(2, 5, kLinear, kConstant);
    EXPECT_EQ(curve.RemoveKey(2.1, 0.2), 1);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.Eval(2, 0), 5);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
}

TEST(HvStdFCurve_remove, KindOfTheSpanThatTakesTheKeysPlace)
{
    StdCurve kept({KeyAt(0, 0, 0, kConstant), KeyAt(1, 0, 0, kLinear), KeyAt(2, 0, 0, kCubic)});
    kept.RemoveKey(1, 0);
    EXPECT_EQ(kept.Impl().keys[0].segmentKind, kConstant);

    StdCurve given({KeyAt(0, 0, 0, kConstant), KeyAt(1, 0, 0, kLinear), KeyAt(2, 0, 0, kCubic)});
    given.RemoveKey(1, kCubic, 0);
    EXPECT_EQ(given.Impl().keys[0].segmentKind, kCubic);
    given.RemoveKey(2, kLinear, 0);
    EXPECT_EQ(given.Impl().keys[0].segmentKind, kLinear);

    StdCurve first({KeyAt(0, 0, 0, kConstant), KeyAt(1, 0, 0, kLinear)});
    first.SetFirstSegmentKind(kLinear);
    first.RemoveKey(0, 0);
    EXPECT_EQ(first.GetFirstSegmentKind(), kLinear);
    first.RemoveKey(1, kConstant, 0);
    EXPECT_EQ(first.GetFirstSegmentKind(), kConstant);

    StdCurve last({KeyAt(0, 0, 0, kConstant), KeyAt(1, 0, 0, kLinear)});
    last.RemoveKey(1, 0);
    EXPECT_EQ(last.Impl().keys[0].segmentKind, kConstant);
}

TEST(HvStdFCurve_remove, NewFirstKeyLosesItsJumpToTheRightValue)
{
    CFCStdKey jump = KeyAt(2, 3, 5, kLinear);
    jump.leftHandle = Point(1.5, 4);
    StdCurve curve({KeyAt(0, 0, 0, kLinear), jump});
    EXPECT_EQ(curve.RemoveKey(0, 0), 1);
    EXPECT_EQ(curve.Impl().keys[0].leftValue, 5);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(1.5, 6));
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 5);
}

TEST(HvStdFCurve_remove, NewFirstKeyOfLockedValueKeepsItsJump)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(2, 3, 5, kLinear)});
    Lock(curve, 1, Word::kValueLocked);
    EXPECT_EQ(curve.RemoveKey(0, 0), 1);
    EXPECT_EQ(curve.Impl().keys[0].leftValue, 3);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(2, 3));
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 3);
}

TEST(HvStdFCurve_remove, NearestKeyWithinTheToleranceGoes)
{
    StdCurve curve = FiveKeys();
    EXPECT_EQ(curve.RemoveKey(1.5, 0.5), 1);
    EXPECT_EQ(Parameters(curve), "0234") << "the earliest on a tie";
    ExpectRefused(curve, [&] { return curve.RemoveKey(1.5, 0.25); });
}

TEST(HvStdFCurve_remove, LocksCountAtExactlyTheParameterOnly)
{
    for (unsigned short const lock : {Word::kParameterLocked, Word::kValueLocked}) {
        StdCurve curve = FiveKeys();
        Lock(curve, 2, lock);
        ExpectRefused(curve, [&] { return curve.RemoveKey(2, 0); });
        EXPECT_EQ(curve.RemoveKey(2.25, 0.5), 1) << "a locked key beside the parameter goes";
        EXPECT_EQ(Parameters(curve), "0134");
    }
}

// Intervals.

TEST(HvStdFCurve_remove, OpenAndClosedEndsOfAnInterval)
{
    struct Row {
        double from, to;
        int openAtFrom, openAtTo;
        char const* left;
    };
    Row const rows[] = {
        {1, 3, 0, 0, "04"},    {1, 3, 1, 0, "014"},     {1, 3, 0, 1, "034"},
        {1, 3, 1, 1, "0134"},  {0.5, 2.5, 1, 1, "034"}, {1, 1, 0, 0, "0234"},
        {1, 1, 1, 0, "0234"},  {1, 1, 0, 7, "0234"},    {1, 1, 1, 1, "01234"},
        {-1, 1, 0, 0, "234"},  {0, 1, 1, 0, "0234"},    {3, 9, 0, 0, "012"},
        {3, 9, 1, 0, "0123"},  {-9, 9, 0, 0, ""},       {1.2, 1.8, 0, 0, "01234"},
        {3, 1, 0, 0, "01234"}, {-9, -8, 0, 0, "01234"}, {8, 9, 0, 0, "01234"},
        {0, 4, 0, 0, ""},      {0, 4, 1, 1, "04"},
    };
    for (Row const& row : rows) {
        StdCurve curve = FiveKeys();
        EXPECT_EQ(curve.RemoveKeys(row.from, row.to, row.openAtFrom, row.openAtTo), 1);
        EXPECT_EQ(Parameters(curve), row.left)
            << row.from << " " << row.to << " " << row.openAtFrom << row.openAtTo;
    }
}

TEST(HvStdFCurve_remove, KindOfTheSpanThatTakesAnIntervalsPlace)
{
    StdCurve body = FiveKeys();
    body.RemoveKeys(1, 2, kConstant, 0, 0);
    EXPECT_EQ(body.Impl().keys[0].segmentKind, kConstant);

    StdCurve head = FiveKeys();
    head.RemoveKeys(-1, 2, kConstant, 0, 0);
    EXPECT_EQ(head.GetFirstSegmentKind(), kConstant);
    EXPECT_EQ(head.Impl().keys[0].segmentKind, kLinear);

    StdCurve tail = FiveKeys();
    tail.RemoveKeys(2, 9, kConstant, 0, 0);
    EXPECT_EQ(tail.Impl().keys[1].segmentKind, kConstant);

    StdCurve all = FiveKeys();
    all.RemoveKeys(0, 4, kConstant, 0, 0);
    EXPECT_EQ(all.GetFirstSegmentKind(), kConstant);
    EXPECT_EQ(all.GetNumKeys(), 0u);

    StdCurve behind = FiveKeys();
    behind.RemoveKeys(8, 9, kConstant, 0, 0);
    EXPECT_EQ(behind.Impl().keys[4].segmentKind, kConstant) << "the span behind the last key";

    StdCurve none = FiveKeys();
    std::string const before = StdImage(none);
    none.RemoveKeys(1.2, 1.8, kConstant, 0, 0);
    EXPECT_EQ(StdImage(none), before) << "without a key between not even the kind changes";
}

TEST(HvStdFCurve_remove, LocksInTheIntervalRefuse)
{
    for (unsigned short const lock : {Word::kParameterLocked, Word::kValueLocked}) {
        StdCurve curve = FiveKeys();
        Lock(curve, 2, lock);
        ExpectRefused(curve, [&] { return curve.RemoveKeys(1, 2, 0, 0); });
        ExpectRefused(curve, [&] { return curve.RemoveKeys(2, 2, 1, 0); });
        EXPECT_EQ(curve.RemoveKeys(1, 2, 0, 1), 1);
        EXPECT_EQ(Parameters(curve), "0234");
        EXPECT_EQ(curve.RemoveKeys(2, 2, 1, 1), 1) << "an interval without keys";
        EXPECT_EQ(Parameters(curve), "0234");
    }
}

TEST(HvStdFCurve_remove, CurveWithoutKeysHasNothingToRemove)
{
    StdCurve curve(7, kCubic);
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.RemoveKey(1, 0), 1);
    EXPECT_EQ(curve.RemoveKeys(0, 1, 0, 0), 1);
    EXPECT_EQ(curve.RemoveKeys(0, 1, kLinear, 0, 0), 1);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvStdFCurve_remove, NothingIsRemovedFromAReadOnlyCurveOrWithAnUnknownKind)
{
    StdCurve curve = FiveKeys();
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.RemoveKey(1, 0); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.RemoveKeys(1, 2, 0, 0); });
    StdCurve empty(7, kCubic);
    ExpectRefusedWhenReadOnly(empty, [&] { return empty.RemoveKey(1, 0); });
    auto const unknown = static_cast<FSKind>(4);
    ExpectRefused(curve, [&] { return curve.RemoveKey(1, unknown, 0); });
    ExpectRefused(curve, [&] { return curve.RemoveKeys(1, 2, unknown, 0, 0); });
}

TEST(HvStdFCurve_remove, NonFiniteEndsRemoveWhatLiesBetween)
{
    double const infinity = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    StdCurve curve = FiveKeys();
    EXPECT_EQ(curve.RemoveKeys(nan, 2, 0, 0), 1);
    EXPECT_EQ(curve.RemoveKeys(2, nan, 0, 0), 1);
    EXPECT_EQ(Parameters(curve), "01234");
    EXPECT_EQ(curve.RemoveKeys(-infinity, 1, 0, 0), 1);
    EXPECT_EQ(Parameters(curve), "234");
    EXPECT_EQ(curve.RemoveKeys(3, infinity, 0, 0), 1);
    EXPECT_EQ(Parameters(curve), "2");
    EXPECT_EQ(curve.RemoveKey(nan, 1), 0);
}

// User data, storage.

TEST(HvStdFCurve_remove, UserDataGoWithTheirKeys)
{
    StdCurve curve = FiveKeys();
    for (int i = 0; i < 5; ++i) {
        curve.SetUserDataSet(SetOf(1, "blob"), i);
    }
    curve.RemoveKeys(1, 2, 0, 0);
    EXPECT_FALSE(curve.HasUserData(1));
    EXPECT_FALSE(curve.HasUserData(2));
    EXPECT_TRUE(curve.HasUserData(3));
    curve.RemoveKey(0, 0);
    EXPECT_FALSE(curve.HasUserData(0));
    curve.RemoveKey(4, 0);
    EXPECT_FALSE(curve.HasUserData(4));
    EXPECT_TRUE(curve.HasUserData(3));
    curve.RemoveKey(3, 0);
    EXPECT_FALSE(curve.HasUserData());
}

TEST(HvStdFCurve_remove, RemovalGivesStorageBackAndNeedsNone)
{
    StdCurve curve(0, kLinear);
    for (int i = 0; i < 100; ++i) {
        curve.CreateKey(i, 0);
    }
    unsigned long const before = curve.GetDynamicMemSize();
    curve.RemoveKeys(10, 98, 0, 0);
    EXPECT_LT(curve.GetDynamicMemSize(), before / 2);

    auto const prepare = [] {
        StdCurve full(0, kLinear);
        for (int i = 0; i < 16; ++i) {
            full.CreateKey(i, 0);
        }
        return full;
    };
    RefuseEachAllocation(
        prepare,
        [](StdCurve& full) {
            full.RemoveKeys(1, 4, 0, 0);
            full.RemoveKeys(-1, 6, 0, 0);
            full.RemoveKeys(12, 99, 0, 0);
            full.RemoveKey(8, 0);
        },
        [](StdCurve& full, bool completed) {
            EXPECT_TRUE(completed);
            EXPECT_EQ(full.GetNumKeys(), 4u);
        });
}

TEST(HvStdFCurve_remove, EveryRunOfEditsLeavesAValidCurve)
{
    ExpectProperty("insertions and removals keep every segment a function", [] {
        StdCurve curve = MixedCurve();
        if (PickInRange(0, 2)) {
            curve.SetDefaultBezierTangentConstraint(true);
        }
        for (int step = 0; step < 30; ++step) {
            double const x = PickInRange(-200, 1200) * 0.01;
            double const y = PickInRange(-1000, 1000) * 0.01;
            switch (PickInRange(0, 4)) {
            case 0:
                curve.RemoveKey(x, 1);
                break;
            case 1:
                curve.RemoveKeys(x, x + 2, PickInRange(0, 2), PickInRange(0, 2));
                break;
            default:
                curve.CreateKey(x, y, static_cast<FSKind>(PickInRange(0, 4)),
                                static_cast<FSKind>(PickInRange(0, 4)));
            }
            RC_ASSERT(curve.Impl().IsValid() != 0);
            RC_ASSERT(EverySegmentRunsForward(curve));
        }
    });
}
