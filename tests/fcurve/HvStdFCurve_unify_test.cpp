// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include "../support/allocation_failure.h"

#include <gtest/gtest.h>

namespace {

StdCurve Around(Point const& left, Point const& right, unsigned short word = 0)
{
    CFCStdKey key = KeyWithHandles(3, 1, left, right);
    key.constraints.word = word;
    return StdCurve({KeyAt(0, 0, 0, kCubic), key, KeyAt(6, 0, 0, kCubic)});
}

}  // namespace

TEST(HvStdFCurve_unify, HandleOfTheOtherSideTurnsOntoTheLine)
{
    StdCurve left = Around({-0.6, 0.8}, {1.5, 2});
    double x = 3.1;
    EXPECT_EQ(left.UnifyAndLockTangentContinuity(x, kLeft, 0.2), 1);
    EXPECT_EQ(x, 3);
    ExpectNear(left.Impl().LeftVector(1), -0.6, 0.8);
    ExpectNear(left.Impl().RightVector(1), 1.5, -2);
    EXPECT_EQ(left.Impl().keys[1].constraints.word, 0x0001);

    StdCurve right = Around({-0.6, 0.8}, {1.5, 2});
    EXPECT_EQ(right.UnifyAndLockTangentContinuity(x, kRight, 0), 1);
    ExpectNear(right.Impl().LeftVector(1), -0.6, -0.8);
    ExpectNear(right.Impl().RightVector(1), 1.5, 2);
}

TEST(HvStdFCurve_unify, HandlesOnOneLineAreJustLocked)
{
    StdCurve curve = Around({-1, -1}, {0.5, 0.5});
    double x = 3;
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.UnifyAndLockTangentContinuity(x, kLeft, 0), 1);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0001);
    ExpectRefused(curve, [&] { return curve.UnifyAndLockTangentContinuity(x, kLeft, 0); });
    curve.UnlockTangentContinuity(x, 0);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvStdFCurve_unify, BesideSegmentsThatAreNotCubicNoHandleMoves)
{
    for (unsigned int const i : {0u, 1u}) {
        StdCurve curve = Around({-0.6, 0.8}, {1.5, 2});
        curve.Impl().SetKind(i, kLinear);
        double x = 3;
        EXPECT_EQ(curve.UnifyAndLockTangentContinuity(x, kLeft, 0), 1);
        EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(4.5, 3));
        EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0001);
        EXPECT_EQ(curve.UnifyAndLockTangentLengthContinuity(x, kLeft, 1, 0), 1);
        EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(4.5, 3));
        EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0201);
    }
}

TEST(HvStdFCurve_unify, SegmentThatDoesNotExistIsNoHindrance)
{
    StdCurve curve = Around({-1, 1}, {1, 1});
    curve.Impl().keys[0].leftHandle = Point(-1, 1);
    curve.Impl().keys[0].rightHandle = Point(1, 1);
    double x = 0;
    EXPECT_EQ(curve.UnifyAndLockTangentContinuity(x, kRight, 0), 1);
    ExpectNear(curve.Impl().LeftVector(0), -1, -1);
}

TEST(HvStdFCurve_unify, SpanBehindTheLastKeyIsNoHindranceWhateverItsKind)
{
    StdCurve curve = Around({-1, 1}, {1, 1});
    curve.Impl().SetKind(2, kLinear);
    curve.Impl().keys[2].leftHandle = Point(5, 1);
    curve.Impl().keys[2].rightHandle = Point(7, 1);
    double x = 6;
    EXPECT_EQ(curve.UnifyAndLockTangentContinuity(x, kLeft, 0), 1);
    ExpectNear(curve.Impl().RightVector(2), 1, -1);
}

TEST(HvStdFCurve_unify, LengthLockedTogetherIsKeptTogether)
{
    StdCurve curve = Around({-0.6, 0.8}, {1.5, 2}, Word::kTangentLengthContinuityLocked);
    double x = 3;
    EXPECT_EQ(curve.UnifyAndLockTangentContinuity(x, kLeft, 0), 1);
    ExpectNear(curve.Impl().LeftVector(1), -0.6, 0.8);
    ExpectNear(curve.Impl().RightVector(1), 0.6, -0.8);
}

TEST(HvStdFCurve_unify, HandleOfTheOtherSideTakesTheLength)
{
    StdCurve curve = Around({-0.6, 0.8}, {1.5, 2});
    double x = 2.9;
    EXPECT_EQ(curve.UnifyAndLockTangentLengthContinuity(x, kLeft, 1, 0.2), 1);
    EXPECT_EQ(x, 3);
    ExpectNear(curve.Impl().LeftVector(1), -0.6, 0.8);
    ExpectNear(curve.Impl().RightVector(1), 0.6, 0.8);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0200);
    ExpectRefused(curve, [&] { return curve.UnifyAndLockTangentLengthContinuity(x, kLeft, 1, 0); });

    // In a view that doubles y: (1.5, 1) is 2.5 long, (-0.3, 0.2) half.
    StdCurve seen = Around({-0.3, 0.2}, {1.5, 1});
    EXPECT_EQ(seen.UnifyAndLockTangentLengthContinuity(x, kRight, 2, 0), 1);
    ExpectNear(seen.Impl().LeftVector(1), -1.5, 1);
}

TEST(HvStdFCurve_unify, DerivedTangentsBecomeManualWhenHandlesMove)
{
    StdCurve curve = Around({-1, 1}, {1, 1}, Word::kLinearTangents);
    curve.Impl().keys[2].leftValue = 5;
    curve.Impl().keys[2].leftHandle.y = 5;
    double x = 3;
    EXPECT_EQ(curve.UnifyAndLockTangentContinuity(x, kLeft, 0), 1);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0001);
    EXPECT_TRUE(curve.Impl().ActualTangentsAreUnified(1));
}

TEST(HvStdFCurve_unify, HandleThatCannotFollowRefusesAndChangesNothing)
{
    // A handle of no length has no direction to be lengthened in. The bit that the attempt cleared
    // comes back.
    StdCurve curve = Around({-2.5, 0}, {0, 0}, Word::kFlatTangents);
    curve.SetUserDataSet(SetOf(1, "blob"), 3);
    double x = 3.1;
    ExpectRefused(curve,
                  [&] { return curve.UnifyAndLockTangentLengthContinuity(x, kLeft, 1, 0.2); });
    EXPECT_EQ(x, 3.1);
}

TEST(HvStdFCurve_unify, HandleThatCannotBeDraggedRefusesAndChangesNothing)
{
    // The locks at x itself refuse before anything is tried; a key beside x may still be held.
    StdCurve held = Around({-0.6, 0.8}, {1.5, 2},
                           Word::kTangentDirectionLocked | Word::kTangentLengthLocked |
                               Word::kTangentLengthContinuityLocked);
    held.SetUserDataSet(SetOf(1, "blob"), 3);
    double x = 3.1;
    for (HvBaseFCurve::KeySide const side : {kLeft, kRight}) {
        ExpectRefused(held, [&] { return held.UnifyAndLockTangentContinuity(x, side, 0.2); });
        EXPECT_EQ(x, 3.1);
    }

    // A key alone has no segment whose shape a handle could change.
    StdCurve alone({KeyWithHandles(3, 1, {-0.6, 0.8}, {1.5, 2})});
    for (HvBaseFCurve::KeySide const side : {kLeft, kRight}) {
        ExpectRefused(alone, [&] { return alone.UnifyAndLockTangentContinuity(x, side, 0.2); });
        ExpectRefused(alone,
                      [&] { return alone.UnifyAndLockTangentLengthContinuity(x, side, 1, 0.2); });
        EXPECT_EQ(x, 3.1);
    }
}

TEST(HvStdFCurve_unify, Refusals)
{
    StdCurve curve = Around({-0.6, 0.8}, {1.5, 2});
    double x = 3;
    auto const unify = [&](HvBaseFCurve::KeySide side) {
        return curve.UnifyAndLockTangentContinuity(x, side, 0.2);
    };
    auto const unifyLength = [&](HvBaseFCurve::KeySide side, double scale) {
        return curve.UnifyAndLockTangentLengthContinuity(x, side, scale, 0.2);
    };
    ExpectRefusedWhenReadOnly(curve, [&] { return unify(kLeft); });
    ExpectRefusedWhenReadOnly(curve, [&] { return unifyLength(kLeft, 1); });
    auto const noSide = static_cast<HvBaseFCurve::KeySide>(3);
    ExpectRefused(curve, [&] { return unify(noSide); });
    ExpectRefused(curve, [&] { return unifyLength(noSide, 1); });
    for (double const scale : {0.0, -1.0, std::nan(""), NonFinite()[1]}) {
        ExpectRefused(curve, [&] { return unifyLength(kLeft, scale); });
    }
    x = 4;
    ExpectRefused(curve, [&] { return unify(kLeft); });
    ExpectRefused(curve, [&] { return unifyLength(kLeft, 1); });
    EXPECT_EQ(x, 4);
    x = 3;
    for (unsigned short const lock : {Word::kTangentDirectionLocked, Word::kTangentLengthLocked}) {
        curve.Impl().keys[1].constraints.word = lock;
        ExpectRefused(curve, [&] { return unify(kLeft); });
        ExpectRefused(curve, [&] { return unifyLength(kLeft, 1); });
    }
}

TEST(HvStdFCurve_unify, UnifyingWithoutMemoryChangesNothing)
{
    auto const prepare = [] { return Around({-0.6, 0.8}, {1.5, 2}); };
    StdCurve const original = prepare();
    std::string const before = StdImage(original);
    auto const check = [&](StdCurve& curve, bool completed) {
        EXPECT_EQ(StdImage(curve) == before, !completed);
    };
    EXPECT_GE(RefuseEachAllocation(
                  prepare,
                  [](StdCurve& curve) {
                      double x = 3;
                      curve.UnifyAndLockTangentContinuity(x, kLeft, 0);
                  },
                  check),
              1);
    EXPECT_GE(RefuseEachAllocation(
                  prepare,
                  [](StdCurve& curve) {
                      double x = 3;
                      curve.UnifyAndLockTangentLengthContinuity(x, kLeft, 1, 0);
                  },
                  check),
              1);
}
