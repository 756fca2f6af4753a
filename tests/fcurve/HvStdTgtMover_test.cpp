// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/HvStdTgtMover.h>
#include <hv/fcurve/internal/HvStdTgtMoverImpl.h>

#include "tgt_drag.h"

#include "../support/allocation_failure.h"
#include "../support/generators.h"

#include <gtest/gtest.h>

// The dragged handle.

TEST(HvStdTgtMover, HandleFollowsTheDragOnEitherSide)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    EXPECT_EQ(DragTo(curve, kLeft, {1.5, 2}), 1);
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(1.5, 2));
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(4, 1))
        << "without continuity the other stays";
    EXPECT_EQ(DragTo(curve, kRight, {4.5, 2}), 1);
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(4.5, 2));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(1.5, 2));
}

TEST(HvStdTgtMover, HandleStopsAtTheParameterOfItsKey)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    EXPECT_EQ(DragTo(curve, kLeft, {5, 2}), 1);
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(3, 2));
    EXPECT_EQ(DragTo(curve, kRight, {1, 2}), 1);
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(3, 2));
}

TEST(HvStdTgtMover, OuterHandlesOfTheEndKeysAreBoundByNothingElse)
{
    StdCurve curve({KeyAt(3, 0, 0, kCubic), KeyAt(6, 0, 0, kCubic)});
    EXPECT_EQ(DragTo(curve, kLeft, {-99, 2}), 1);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(-99, 2));
    StdCurve last({KeyAt(0, 0, 0, kCubic), KeyAt(3, 0, 0, kCubic)});
    EXPECT_EQ(DragTo(last, kRight, {99, 2}), 1);
    EXPECT_EQ(last.Impl().keys[1].rightHandle, Point(99, 2));
}

// Locks.

TEST(HvStdTgtMover, LengthLockKeepsTheLengthAndFollowsTheDirection)
{
    StdCurve curve = Around({-3, 4}, {1, 0}, Word::kTangentLengthLocked);
    curve.Impl().keys[0].rightHandle = Point(0, 0);
    EXPECT_EQ(DragTo(curve, kLeft, {1.5, -1}), 1);  // towards (-1.5, -2): a length of 2.5
    ExpectNear(LeftOf(curve), -3, -4);
    EXPECT_EQ(DragTo(curve, kLeft, {3, 1}), 1) << "a point on the key gives no direction";
    ExpectNear(LeftOf(curve), -3, -4);
}

TEST(HvStdTgtMover, LengthLockKeepsTheLengthSeenInTheView)
{
    // (-1.5, 1) is 2.5 long with y doubled, (-1, 0.5) sqrt(2).
    StdCurve curve = Around({-1.5, 1}, {1, 0}, Word::kTangentLengthLocked);
    EXPECT_EQ(DragTo(curve, kLeft, {2, 1.5}, 0, 0, 2), 1);
    ExpectNear(LeftOf(curve), -2.5 / std::sqrt(2.0), 1.25 / std::sqrt(2.0));
}

TEST(HvStdTgtMover, LengthLockTakesAScaleOfAlmostOneAsOne)
{
    double const scale = 1 + 0.9e-7;
    StdCurve curve = Around({-1, 1}, {1, 0}, Word::kTangentLengthLocked);
    EXPECT_EQ(DragTo(curve, kLeft, {2, 1}, 0, 0, scale), 1);
    EXPECT_NEAR(LeftOf(curve).x, -std::sqrt(2.0), kRounding);
}

TEST(HvStdTgtMover, LengthLockIsCutWhereTheDragPassesTheKey)
{
    // Towards (3, 4) the handle of 5 would end 3 to the right of its key.
    StdCurve curve = Around({-3, 4}, {1, 0}, Word::kTangentLengthLocked);
    curve.Impl().keys[0].rightHandle = Point(0, 0);
    EXPECT_EQ(DragTo(curve, kLeft, {6, 5}), 1);
    ExpectNear(LeftOf(curve), 0, 4);
}

TEST(HvStdTgtMover, DirectionLockProjectsOnTheLineOfTheHandle)
{
    // (-1, 3) on the line of (-1, 1): t = 4/2.
    StdCurve curve = Around({-1, 1}, {1, 0}, Word::kTangentDirectionLocked);
    EXPECT_EQ(DragTo(curve, kLeft, {2, 4}), 1);
    ExpectNear(LeftOf(curve), -2, 2);
    EXPECT_EQ(DragTo(curve, kLeft, {9, -9}), 1) << "behind the key it ends on the key";
    ExpectNear(LeftOf(curve), 0, 0);
}

TEST(HvStdTgtMover, DirectionLockTakesAHandleTooShortForADirectionAsVertical)
{
    for (double const dy : {2e-4, -2e-4}) {
        StdCurve curve = Around({-1e-4, dy}, {1, 0}, Word::kTangentDirectionLocked);
        EXPECT_EQ(DragTo(curve, kLeft, {2, 4}), 1);
        ExpectNear(LeftOf(curve), 0, std::copysign(std::hypot(1e-4, 2e-4), dy));
    }
    StdCurve zero = Around({0, 0}, {1, 0}, Word::kTangentDirectionLocked);
    EXPECT_EQ(DragTo(zero, kLeft, {2, 4}), 1);
    EXPECT_EQ(LeftOf(zero), Point(0, 0));
}

TEST(HvStdTgtMover, BothLocksRefuse)
{
    StdCurve curve =
        Around({-1, 1}, {1, 0}, Word::kTangentDirectionLocked | Word::kTangentLengthLocked);
    ExpectRefused(curve, [&] { return DragTo(curve, kLeft, {2, 4}); });
}

// The neighbour's handle. Segment from 0 to 3.

TEST(HvStdTgtMover, NeighboursHandleGivesWayAlongItsLineAndGrowsBack)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.Impl().keys[0].rightHandle = Point(2.9, 5.8);
    HvStdTgtMover mover(curve, 3, kLeft, 0);
    HvExtent2<double> invalid;
    EXPECT_EQ(mover.Update({-0.5, 1}, 0, 0, 1, invalid), 1);
    // b*b - 2.5*b + 0.25 = 0: (2.5 + sqrt(5.25)) / 2 is the root nearer to 2.9, drawn inwards by a
    // millionth of the distance sqrt(5.25) of the two.
    double const expected = (2.5 + std::sqrt(5.25)) / 2 - 1e-6 * std::sqrt(5.25);
    ExpectNear(curve.Impl().keys[0].rightHandle, expected, 2 * expected);
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(-0.5, 1));
    EXPECT_TRUE(curve.Impl().IsValid());

    EXPECT_EQ(mover.Update({2, 1}, 0, 0, 1, invalid), 1);
    EXPECT_EQ(curve.Impl().keys[0].rightHandle, Point(2.9, 5.8));
}

TEST(HvStdTgtMover, HandleStopsWhereTheNeighboursHasNoLine)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.Impl().keys[0].rightHandle = Point(0, 0);
    EXPECT_EQ(DragTo(curve, kLeft, {-1, 3}), 1);
    // From (3, 1) towards (-1, 3), ended at 0.
    ExpectNear(curve.Impl().keys[1].leftHandle, 0, 2.5, 1e-5);
    EXPECT_TRUE(curve.Impl().IsValid());
}

TEST(HvStdTgtMover, HandleThatNothingFitsIsRefusedAndLeavesBothSides)
{
    // With the handle at -1.1, left of -(3 - 0)/3, no place of the neighbour's serves; and the
    // dragged one cannot be ended either where the neighbour's reaches beyond every bound.
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.Impl().keys[0].rightHandle = Point(9, 0);
    curve.Impl().keys[1].leftHandle = Point(2, 1);
    ExpectRefused(curve, [&] { return DragTo(curve, kLeft, {-2, 3}, 1); });
}

TEST(HvStdTgtMover, RefusalOnTheFarSideLeavesTheNearNeighbourToo)
{
    // The left neighbour could give way; but the right handle, 5 long in a span of 3, meets
    // one that reaches back by 9.
    StdCurve curve = Around({-1, 0}, {5, 0});
    curve.Impl().keys[0].rightHandle = Point(2.9, 0);
    curve.Impl().keys[2].leftHandle = Point(-3, 1);
    ExpectRefused(curve, [&] { return DragTo(curve, kLeft, {-0.5, 1}, 1); });
    EXPECT_EQ(DragTo(curve, kLeft, {-0.5, 1}), 1) << "alone it may go there";
    EXPECT_LT(curve.Impl().keys[0].rightHandle.x, 2.9);
}

TEST(HvStdTgtMover, LocksOfTheNeighboursAreNotAsked)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.Impl().keys[0].rightHandle = Point(2.9, 5.8);
    Lock(curve, 0, Word::kAllLocked);
    EXPECT_EQ(DragTo(curve, kLeft, {-0.5, 1}), 1);
    EXPECT_LT(curve.Impl().keys[0].rightHandle.x, 2.9);
}

TEST(HvStdTgtMover, SolversGiveTheBoundaryOfWhatIsValid)
{
    ExpectProperty("both squeezed roots are valid, and what lies outside them is not", [] {
        double const origin = PickInRange(-1000000, 1000001);
        auto const inSpan = [](int low, int high) { return PickInRange(low, high) * 0.001; };
        double const a = origin;
        double const d = origin + 3;
        double r0 = 0;
        double r1 = 0;
        double const c = origin + inSpan(-900, 3000);
        if (ValidHandleAbscissaFromRight(a, c, d, r0, r1)) {
            double const slack = 0.03 * (r1 - r0) + 1e-6;
            RC_ASSERT(HvStdFCurve_IsCubicSegmentValid({a, 0}, {r0, 0}, {c, 0}, {d, 0}) == 1);
            RC_ASSERT(HvStdFCurve_IsCubicSegmentValid({a, 0}, {r1, 0}, {c, 0}, {d, 0}) == 1);
            if (c < r1) {
                RC_ASSERT(
                    HvStdFCurve_IsCubicSegmentValid({a, 0}, {r1 + slack, 0}, {c, 0}, {d, 0}) == 0);
            }
        }
        double const b = origin + inSpan(0, 3900);
        if (ValidHandleAbscissaFromLeft(a, b, d, r0, r1)) {
            double const slack = 0.03 * (r1 - r0) + 1e-6;
            RC_ASSERT(HvStdFCurve_IsCubicSegmentValid({a, 0}, {b, 0}, {r0, 0}, {d, 0}) == 1);
            RC_ASSERT(HvStdFCurve_IsCubicSegmentValid({a, 0}, {b, 0}, {r1, 0}, {d, 0}) == 1);
            if (r0 < b) {
                RC_ASSERT(
                    HvStdFCurve_IsCubicSegmentValid({a, 0}, {b, 0}, {r0 - slack, 0}, {d, 0}) == 0);
            }
        }
    });
    double r0 = 0;
    double r1 = 0;
    // (b + 0)*1 + 3*b = 1 + b*b, (4 -+ sqrt(12)) / 2.
    EXPECT_EQ(ValidHandleAbscissaFromRight(0, 1, 3, r0, r1), 1);
    double const squeeze = 1e-6 * std::sqrt(12.0);
    EXPECT_NEAR(r0, 2 - std::sqrt(3.0) + squeeze, kRounding);
    EXPECT_NEAR(r1, 2 + std::sqrt(3.0) - squeeze, kRounding);
    // c*c - 2*c + 4 - 3*2 = 0, 1 -+ sqrt(3).
    EXPECT_EQ(ValidHandleAbscissaFromLeft(0, 2, 3, r0, r1), 1);
    EXPECT_NEAR(r0, 1 - std::sqrt(3.0) + squeeze, kRounding);
    EXPECT_NEAR(r1, 1 + std::sqrt(3.0) - squeeze, kRounding);
    // A sum of the roots below 1e-7 counts as none, -+sqrt(b*(3 - b)): these lie too far to the
    // left by half of it, which only the third squeeze makes up for.
    EXPECT_EQ(ValidHandleAbscissaFromLeft(0, 5e-8, 3, r0, r1), 1);
    EXPECT_NEAR(r1, std::sqrt(5e-8 * (3 - 5e-8)) * (1 - 2e-4), kRounding);
    EXPECT_NEAR(r0, -r1, kRounding);
    // Both at once, when the handle on the other side stands at its key.
    EXPECT_EQ(ValidHandleAbscissaFromLeft(0, 0, 3, r0, r1), 1);
    EXPECT_EQ(r0, 0);
    EXPECT_EQ(r1, 0);
    r0 = 7;
    r1 = 8;
    EXPECT_EQ(ValidHandleAbscissaFromRight(0, -1.1, 3, r0, r1), 0);
    EXPECT_EQ(ValidHandleAbscissaFromLeft(0, 4.1, 3, r0, r1), 0);
    EXPECT_EQ(ValidHandleAbscissaFromRight(0, std::nan(""), 3, r0, r1), 0);
    EXPECT_EQ(ValidHandleAbscissaFromRight(0, -3, 3, r0, r1), 0) << "s = 0, no root";
    EXPECT_EQ(r0, 7);
    EXPECT_EQ(r1, 8);
}

// Life.

TEST(HvStdTgtMover, TakingHoldFreezesTheKeyAndClearsItsDerivingConstraints)
{
    StdCurve curve = Around({-1, 1}, {1, 1});
    Lock(curve, 1,
         Word::kAutomaticTangents | Word::kUnlimitedAutoSlope | Word::kFlatTangents |
             Word::kFlatAtExtremum | Word::kLinearTangents | Word::kZeroLengthTangents);
    Lock(curve, 0, Word::kAutomaticTangents);
    curve.Impl().keys[1].constraints.Clear(Word::kZeroLengthTangents);
    StdCurve const before(curve);
    HvStdTgtMover const mover(curve, 3.1, kLeft, 0.2);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0001);
    EXPECT_TRUE(curve.Impl().keys[0].constraints.HasAny(Word::kAutomaticTangents));
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, before.Impl().GetEvaluatedLeftTgt(1));
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, before.Impl().GetEvaluatedRightTgt(1));
}

TEST(HvStdTgtMover, FirstUpdateClearsWhatWasSetSince)
{
    StdCurve curve = Around({-1, -1}, {1, 1});
    HvStdTgtMover mover(curve, 3, kLeft, 0);
    Lock(curve, 1,
         Word::kAutomaticTangents | Word::kFlatTangents | Word::kFlatAtExtremum |
             Word::kLinearTangents);
    HvExtent2<double> invalid;
    EXPECT_EQ(mover.Update({2, 2}, 0, 0, 1, invalid), 1);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0401);
    Lock(curve, 1, Word::kFlatTangents);
    EXPECT_EQ(mover.Update({2, 2}, 0, 0, 1, invalid), 1);
    EXPECT_TRUE(curve.Impl().keys[1].constraints.HasAny(Word::kFlatTangents));
}

TEST(HvStdTgtMover, FirstUpdateClearsAndRedrawsAlsoWhereItRefuses)
{
    unsigned short const locks = Word::kTangentDirectionLocked | Word::kTangentLengthLocked;
    StdCurve curve = Around({-1, -1}, {1, 1}, locks);
    HvStdTgtMover mover(curve, 3, kLeft, 0);
    Lock(curve, 1, Word::kAutomaticTangents);
    Point const automatic = curve.Impl().GetEvaluatedLeftTgt(1);
    HvExtent2<double> invalid;
    EXPECT_EQ(mover.Update({2, 2}, 0, 0, 1, invalid), 0);
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, locks);
    EXPECT_TRUE(invalid.Contains(automatic));
    EXPECT_TRUE(invalid.Contains(curve.Impl().keys[1].leftHandle));
}

TEST(HvStdTgtMover, ReadOnlyCurveAnswersOneAndChangesNothing)
{
    StdCurve curve = Around({-1, -1}, {1, 1});
    Lock(curve, 1, Word::kAutomaticTangents);
    curve.SetReadOnlyConstraint(1);
    std::string const before = StdImage(curve);
    EXPECT_EQ(DragTo(curve, kLeft, {2, 2}), 1);
    EXPECT_EQ(DragTo(curve, static_cast<HvBaseFCurve::KeySide>(3), {2, 2}), 1);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvStdTgtMover, MoverWithoutAKeyRefuses)
{
    HvExtent2<double> invalid;
    StdCurve one({KeyAt(3, 0, 0, kCubic)});
    ExpectRefused(one, [&] { return DragTo(one, kLeft, {2, 2}); });
    StdCurve empty(0, kCubic);
    ExpectRefused(empty, [&] { return DragTo(empty, kLeft, {2, 2}); });
    StdCurve curve = Around({-1, -1}, {1, 1});
    ExpectRefused(curve, [&] {
        HvStdTgtMover mover(curve, 4, kLeft, 0.5);
        return mover.Update({2, 2}, 0, 0, 1, invalid);
    });
    EXPECT_EQ(DragTo(curve, static_cast<HvBaseFCurve::KeySide>(3), {2, 2}), 0);
    EXPECT_EQ(invalid.state, HvExtent2<double>::Empty);
}

TEST(HvStdTgtMover, KeyThatIsNoLongerThereRefuses)
{
    HvExtent2<double> invalid;
    StdCurve curve = Around({-1, -1}, {1, 1});
    HvStdTgtMover mover(curve, 6, kLeft, 0);
    curve.RemoveKey(6, 0);
    ExpectRefused(curve, [&] { return mover.Update({5, 2}, 0, 0, 1, invalid); });
    curve.CreateKey(7, 0);
    ExpectRefused(curve, [&] { return mover.Update({5, 2}, 0, 0, 1, invalid); });
}

TEST(HvStdTgtMover, HostileNumbersAreRefusedOrLeaveAValidCurve)
{
    double const limit = std::numeric_limits<double>::max();
    StdCurve curve = Around({-1, -1}, {1, 1});
    for (double const bad : NonFinite()) {
        ExpectRefused(curve, [&] { return DragTo(curve, kLeft, {bad, 2}, 1, 1); });
        ExpectRefused(curve, [&] { return DragTo(curve, kLeft, {2, bad}, 1, 1); });
    }
    for (double const scale : {0.0, -1.0, std::nan(""), NonFinite()[1], limit, 5e-324}) {
        for (Point const& handle : {Point(2, 3), Point(-limit, limit), Point(limit, -limit),
                                    Point(3 - 1e-300, 1), Point(2, 1e300)}) {
            for (unsigned short const lock :
                 {static_cast<unsigned short>(0), Word::kTangentDirectionLocked,
                  Word::kTangentLengthLocked}) {
                StdCurve dragged = Around({-1, 1}, {1, 0.5});
                Lock(dragged, 1, lock);
                DragTo(dragged, kLeft, handle, 1, 1, scale);
                DragTo(dragged, kRight, handle, 1, 0, scale);
                EXPECT_TRUE(dragged.Impl().IsValid());
                for (CFCStdKey const& key : dragged.Impl().keys) {
                    EXPECT_TRUE(std::isfinite(key.leftHandle.y) &&
                                std::isfinite(key.rightHandle.y));
                }
            }
        }
    }
    StdCurve same = Around({-1, 1}, {1, 0.5});
    StdCurve unscaled = Around({-1, 1}, {1, 0.5});
    DragTo(same, kLeft, {2, 3}, 1, 1, -3);
    DragTo(unscaled, kLeft, {2, 3}, 1, 1, 1);
    EXPECT_EQ(StdImage(same), StdImage(unscaled)) << "a scale that is none counts as 1";
}

TEST(HvStdTgtMover, HandlesStandAtTheThirdsUnderTheDefaultBezierConstraint)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(DragTo(curve, kLeft, {2.5, 2}, 1), 1);
    ExpectNear(LeftOf(curve), -1, 2);
    EXPECT_NEAR(RightOf(curve).x, 1, kRounding);
    EXPECT_NEAR(RightOf(curve).y, -2, kRounding);
}

TEST(HvStdTgtMover, InvalidExtentHoldsTheOldAndTheNewShape)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    StdCurve const before(curve);
    HvStdTgtMover mover(curve, 3, kLeft, 0);
    HvExtent2<double> invalid;
    EXPECT_EQ(mover.Update({1.5, 9}, 1, 1, 1, invalid), 1);
    for (int k = 0; k <= 60; ++k) {
        double const x = 0.1 * k;
        EXPECT_TRUE(invalid.Contains({x, before.Eval(x, 0)}));
        EXPECT_TRUE(invalid.Contains({x, curve.Eval(x, 0)}));
    }
    EXPECT_TRUE(invalid.Contains({1.5, 9}));
    EXPECT_TRUE(invalid.Contains({2, 1})) << "the old handle";
}

TEST(HvStdTgtMover, RightSideIsTheMirrorOfTheLeft)
{
    ExpectProperty("a drag of the mirrored curve gives the mirrored result", [] {
        auto const number = [] { return PickInRange(-1024, 1025) / 256.0; };
        auto const length = [] { return PickInRange(0, 513) / 256.0; };
        unsigned short const word =
            static_cast<unsigned short>(PickInRange(0, 2) * Word::kMirroredTangents |
                                        PickInRange(0, 3) * Word::kTangentDirectionLocked);
        StdCurve curve = Around({-length(), number()}, {length(), number()}, word);
        StdCurve mirrored(curve);
        RC_ASSERT(mirrored.MirrorParameters() == 1);  // about 3, exact on this grid
        Point const handle(number(), number());
        Point const image(6 - handle.x, handle.y);
        int const continuity = PickInRange(0, 2);
        int const lengthContinuity = PickInRange(0, 2);
        double const scale = PickInRange(1, 9) * 0.5;
        RC_ASSERT(DragTo(curve, kLeft, handle, continuity, lengthContinuity, scale) ==
                  DragTo(mirrored, kRight, image, continuity, lengthContinuity, scale));
        RC_ASSERT(mirrored.MirrorParameters() == 1);
        for (unsigned int i = 0; i < 3; ++i) {
            for (HvBaseFCurve::KeySide const side : {kLeft, kRight}) {
                Point const difference =
                    mirrored.Impl().StoredHandle(i, side) - curve.Impl().StoredHandle(i, side);
                // A handle that gives way is drawn inwards by a millionth, or, where rounding asks
                // for it, by a hundred-thousandth of at most 10; rounding differs between images.
                RC_ASSERT(std::fabs(difference.x) < 1e-4);
                RC_ASSERT(std::fabs(difference.x) > 1e-12 || std::fabs(difference.y) < 1e-9);
            }
        }
    });
}

TEST(HvStdTgtMover, EveryDragKeepsTheCurveValidAndItsReturnRestoresIt)
{
    ExpectProperty("segments stay functions, and a drag back to its start gives the start", [] {
        StdCurve curve = MixedCurve();
        double const origin = PickInRange(-1, 2) * 1e6;
        curve.ShiftParameters(origin);
        for (CFCStdKey& key : curve.Impl().keys) {
            key.constraints.word = 0;
        }
        RC_PRE(curve.Impl().IsValid() != 0);
        std::string const before = StdImage(curve);
        unsigned int const i = PickInRange(0u, curve.GetNumKeys());
        HvBaseFCurve::KeySide const side = PickInRange(0, 2) ? kLeft : kRight;
        Point const start = curve.Impl().StoredHandle(i, side);
        HvStdTgtMover mover(curve, curve.Impl().Parameter(i), side, 0);
        HvExtent2<double> invalid;
        for (int step = 0; step < 10; ++step) {
            Point const handle(origin + PickInRange(-500, 1500) * 0.01,
                               PickInRange(-1000, 1001) * 0.01);
            mover.Update(handle, 0, 0, 1, invalid);
            RC_ASSERT(curve.Impl().IsValid() != 0);
        }
        RC_ASSERT(mover.Update(start, 0, 0, 1, invalid) == 1);
        RC_ASSERT(StdImage(curve) == before);
    });
}

TEST(HvStdTgtMover, UpdateTakesNoMemory)
{
    StdCurve curve = Around({-1, -1}, {1, 1});
    HvStdTgtMover mover(curve, 3, kLeft, 0);
    HvExtent2<double> invalid;
    AllocationCounter const counter;
    mover.Update({2, 2}, 1, 1, 2, invalid);
    EXPECT_EQ(counter.Allocations(), 0);
}
