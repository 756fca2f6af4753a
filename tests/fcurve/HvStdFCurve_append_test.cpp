// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include "../support/allocation_failure.h"

#include <gtest/gtest.h>

namespace {

StdCurve Line()
{
    return StdCurve({KeyAt(0, 0, 1, kLinear), KeyAt(2, 3, 5, kConstant)});
}

}  // namespace

TEST(HvStdFCurve_append, CubicSegmentTakesOverTheLastKeysKindAndLeavesACubicOne)
{
    StdCurve curve = Line();
    EXPECT_EQ(curve.AppendBezierCubicSegment({3, 6}, {4, 7}, {5, 8}), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    auto const& keys = curve.Impl().keys;
    EXPECT_EQ(keys[1].rightHandle, Point(3, 6));
    EXPECT_EQ(keys[1].segmentKind, kCubic);
    EXPECT_EQ(keys[2].leftHandle, Point(4, 7));
    EXPECT_EQ(keys[2].leftValue, 8);
    EXPECT_EQ(keys[2].rightValue, 8);
    EXPECT_EQ(keys[2].rightHandle, Point(5, 8));
    EXPECT_EQ(keys[2].segmentKind, kConstant);
    EXPECT_EQ(keys[2].constraints.word, 0x0001);
}

TEST(HvStdFCurve_append, CubicSegmentStandsAtTheThirdsUnderTheDefaultBezierConstraint)
{
    StdCurve curve = Line();
    curve.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(curve.AppendBezierCubicSegment({2.5, 6}, {4, 7}, {5, 8}), 1);
    ExpectNear(curve.Impl().keys[1].rightHandle, 3, 7);  // slope 2
    ExpectNear(curve.Impl().keys[2].leftHandle, 4, 7);   // slope 1
}

TEST(HvStdFCurve_append, CubicSegmentThatTurnsBackIsRefused)
{
    StdCurve curve = Line();
    ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({1.9, 0}, {4, 0}, {5, 0}); });
    ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({3, 0}, {5.1, 0}, {5, 0}); });
    ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({9, 0}, {3, 0}, {5, 0}); });
    ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({2, 0}, {2, 0}, {2, 0}); });
    ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({1, 0}, {1, 0}, {1, 0}); });
    StdCurve empty(0, kCubic);
    ExpectRefused(empty, [&] { return empty.AppendBezierCubicSegment({3, 6}, {4, 7}, {5, 8}); });
}

TEST(HvStdFCurve_append, LinearSegmentMakesTheLastSpanALine)
{
    StdCurve curve = Line();
    EXPECT_EQ(curve.AppendLinearSegment({4, 9}), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    EXPECT_EQ(curve.Impl().keys[1].segmentKind, kLinear);
    EXPECT_EQ(curve.Impl().keys[2].segmentKind, kConstant);
    EXPECT_EQ(curve.Eval(3, 0), 7);

    StdCurve empty(0, kConstant);
    EXPECT_EQ(empty.AppendLinearSegment({4, 9}), 1);
    ASSERT_EQ(empty.GetNumKeys(), 1u);
    EXPECT_EQ(empty.Impl().keys[0].segmentKind, kConstant);
}

TEST(HvStdFCurve_append, ConstantSegmentHoldsAndJumps)
{
    StdCurve curve({KeyAt(0, 0, 1, kLinear), KeyAt(2, 3, 5, kCubic)});
    EXPECT_EQ(curve.AppendConstantSegment({4, 9}), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    CFCStdKey const& key = curve.Impl().keys[2];
    EXPECT_EQ(key.leftValue, 5);
    EXPECT_EQ(key.rightValue, 9);
    EXPECT_EQ(key.leftHandle, Point(4, 5));
    EXPECT_EQ(key.rightHandle, Point(4, 9));
    EXPECT_EQ(key.segmentKind, kCubic);
    EXPECT_EQ(curve.Impl().keys[1].segmentKind, kConstant);
    EXPECT_EQ(curve.Eval(3.9, 0), 5);
    EXPECT_EQ(curve.Eval(4, 0), 9);

    StdCurve empty(0, kLinear);
    EXPECT_EQ(empty.AppendConstantSegment({4, 9}), 1);
    EXPECT_EQ(empty.Impl().keys[0].leftValue, 9);
    EXPECT_EQ(empty.Impl().keys[0].rightValue, 9);
    EXPECT_EQ(empty.Impl().keys[0].segmentKind, kLinear);
}

TEST(HvStdFCurve_append, OuterHandleThatReachesPastTheNewKeyIsLaidOnItsOwn)
{
    for (int const form : {0, 1, 2}) {
        StdCurve curve = Line();
        curve.Impl().keys[1].rightHandle = Point(9, 9);
        Point const P(4, 9);
        EXPECT_EQ(form == 0   ? curve.AppendLinearSegment(P)
                  : form == 1 ? curve.AppendConstantSegment(P)
                              : curve.AppendOrExtendLinearSegment(P, 0),
                  1);
        EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(2, 5));
        EXPECT_TRUE(curve.Impl().IsValid());
    }
}

// 2026-11-20: with an infinite tolerance a segment was extended to where its line is infinite.
TEST(HvStdFCurve_append, SegmentWhoseLineLeavesTheNumbersIsNotExtended)
{
    double const tiny = std::numeric_limits<double>::denorm_min();
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(tiny, tiny, tiny, kCubic)});
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(curve.AppendOrExtendLinearSegment({0.01, 2}, infinity), 1);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    EXPECT_EQ(curve.Impl().keys[2].leftValue, 2);
}

TEST(HvStdFCurve_append, PointOnTheLineOfTheLastSegmentMovesItsKey)
{
    // The line runs from (0, 1) to (2, 3): slope 1.
    StdCurve curve = Line();
    curve.Impl().keys[1].leftHandle = Point(1.5, 4);
    curve.Impl().keys[1].rightHandle = Point(2.5, 6);
    curve.SetUserDataSet(SetOf(1, "blob"), 2);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment({4, 5.25}, 0.25), 1);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    CFCStdKey const& key = curve.Impl().keys[1];
    EXPECT_EQ(key.parameter, 4);
    EXPECT_EQ(key.leftValue, 5);
    EXPECT_EQ(key.rightValue, 5);
    EXPECT_EQ(key.leftHandle, Point(3.5, 6));
    EXPECT_EQ(key.rightHandle, Point(4.5, 6));
    EXPECT_EQ(TextIn(curve.GetUserDataSet(4), 1), "blob");
    EXPECT_FALSE(curve.HasUserData(2));
}

TEST(HvStdFCurve_append, MovedKeyKeepsItsThirdUnderTheDefaultBezierConstraint)
{
    StdCurve curve({KeyAt(0, 1, 1, kLinear), KeyWithHandles(3, 4, {-1, -1}, {1, 1}, kLinear)});
    curve.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment({6, 7}, 0), 1);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    ExpectNear(curve.Impl().keys[1].leftHandle, 4, 5);
}

TEST(HvStdFCurve_append, PointOffTheLineIsAppended)
{
    struct Row {
        double y, tolerance;
        FSKind kind;
    };
    for (Row const& row :
         {Row{5.25, 0.2, kLinear}, Row{5, 1, kCubic}, Row{5, std::nan(""), kLinear}}) {
        StdCurve curve = Line();
        curve.Impl().SetKind(0, row.kind);
        EXPECT_EQ(curve.AppendOrExtendLinearSegment({4, row.y}, row.tolerance), 1);
        EXPECT_EQ(curve.GetNumKeys(), 3u);
        EXPECT_EQ(curve.Impl().keys[1].parameter, 2);
        EXPECT_EQ(curve.Impl().keys[1].segmentKind, kLinear);
    }
    StdCurve one({KeyAt(0, 1, 1, kLinear)});
    EXPECT_EQ(one.AppendOrExtendLinearSegment({4, 1}, 9), 1);
    EXPECT_EQ(one.GetNumKeys(), 2u);
    StdCurve empty(0, kLinear);
    EXPECT_EQ(empty.AppendOrExtendLinearSegment({4, 1}, 9), 1);
    EXPECT_EQ(empty.GetNumKeys(), 1u);
}

TEST(HvStdFCurve_append, KeyThatExtendsItsLineMovesAsFarAsItsLocksAllow)
{
    // The line runs from (0, 1) to (2, 3), where the curve jumps to 5, and stands at 5 above 4.
    struct Row {
        unsigned short lock;
        double parameter, leftValue;
    };
    for (Row const& row : {Row{Word::kParameterLocked, 2, 5}, Row{Word::kValueLocked, 4, 3},
                           Row{Word::kParameterLocked | Word::kValueLocked, 2, 3}}) {
        StdCurve curve = Line();
        curve.Impl().keys[1].leftHandle = Point(1.5, 4);
        curve.Impl().keys[1].rightHandle = Point(2.5, 6);
        curve.SetUserDataSet(SetOf(1, "blob"), 2);
        Lock(curve, 1, row.lock);
        EXPECT_EQ(curve.AppendOrExtendLinearSegment({4, 5}, 0), 1);
        ASSERT_EQ(curve.GetNumKeys(), 2u);
        CFCStdKey const& key = curve.Impl().keys[1];
        EXPECT_EQ(key.parameter, row.parameter);
        EXPECT_EQ(key.leftValue, row.leftValue);
        EXPECT_EQ(key.rightValue, 5);
        EXPECT_EQ(key.leftHandle, Point(row.parameter - 0.5, row.leftValue + 1));
        EXPECT_EQ(key.rightHandle, Point(row.parameter + 0.5, 6));
        EXPECT_EQ(TextIn(curve.GetUserDataSet(row.parameter), 1), "blob");
    }
}

TEST(HvStdFCurve_append, PointNotPastTheLastKeyIsRefused)
{
    StdCurve curve = Line();
    for (double const x : {2.0, 1.0, -1.0}) {
        ExpectRefused(curve, [&] { return curve.AppendLinearSegment({x, 1}); });
        ExpectRefused(curve, [&] { return curve.AppendConstantSegment({x, 1}); });
        ExpectRefused(curve, [&] { return curve.AppendOrExtendLinearSegment({x, 1}, 9); });
    }
}

TEST(HvStdFCurve_append, ReadOnlyCurvesAndUnstorableNumbersAreRefused)
{
    StdCurve curve = Line();
    StdCurve empty(0, kCubic);
    ExpectRefusedWhenReadOnly(curve, [&] {
        return curve.AppendBezierCubicSegment({3, 6}, {4, 7}, {5, 8});
    });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.AppendLinearSegment({4, 1}); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.AppendConstantSegment({4, 1}); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.AppendOrExtendLinearSegment({4, 1}, 1); });
    for (double const bad : NonFinite()) {
        for (Point const& P : {Point(bad, 1), Point(4, bad)}) {
            for (StdCurve* target : {&curve, &empty}) {
                ExpectRefused(*target, [&] { return target->AppendLinearSegment(P); });
                ExpectRefused(*target, [&] { return target->AppendConstantSegment(P); });
                ExpectRefused(*target, [&] { return target->AppendOrExtendLinearSegment(P, 1); });
            }
            ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment(P, {4, 7}, {5, 8}); });
            ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({3, 6}, P, {5, 8}); });
            ExpectRefused(curve, [&] { return curve.AppendBezierCubicSegment({3, 6}, {3, 7}, P); });
        }
    }
}

TEST(HvStdFCurve_append, AppendingWithoutMemoryChangesNothing)
{
    auto const prepare = [] {
        StdCurve curve = Line();
        curve.SetUserDataSet(SetOf(1, "blob"), 2);
        return curve;
    };
    StdCurve const original = prepare();
    std::string const before = StdImage(original);
    auto const check = [&](StdCurve& curve, bool completed) {
        EXPECT_EQ(StdImage(curve) == before, !completed);
    };
    auto const walk = [&](auto operate) {
        EXPECT_GE(RefuseEachAllocation(prepare, operate, check), 1);
    };
    walk([](StdCurve& curve) { curve.AppendBezierCubicSegment({3, 6}, {4, 7}, {5, 8}); });
    walk([](StdCurve& curve) { curve.AppendLinearSegment({4, 1}); });
    walk([](StdCurve& curve) { curve.AppendConstantSegment({4, 1}); });
    walk([](StdCurve& curve) { curve.AppendOrExtendLinearSegment({4, 1}, 0.5); });
    walk([](StdCurve& curve) { curve.AppendOrExtendLinearSegment({4, 5}, 0.5); });
}
