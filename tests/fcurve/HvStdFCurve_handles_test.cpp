// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include "../support/generators.h"

#include <gtest/gtest.h>

namespace {

constexpr auto kNoSide = static_cast<HvBaseFCurve::KeySide>(3);

/// Keys at 0, 3, 6 of values 0; all handles on their keys.
StdCurve ThreeKeys()
{
    return StdCurve({KeyAt(0, 0, 0, kCubic), KeyAt(3, 1, 2, kCubic), KeyAt(6, 0, 0, kCubic)});
}

/// Three keys, of which the middle one has these stored handles.
StdCurve WithHandles(Point const& left, Point const& right, unsigned short word = 0x0001)
{
    CFCStdKey key = KeyWithHandles(3, 1, left, right);
    key.constraints.word = word;
    return StdCurve({KeyAt(0, 0, 0, kCubic), key, KeyAt(6, 0, 0, kCubic)});
}

bool Unified(Point const& left, Point const& right, unsigned short word = 0x0001)
{
    return WithHandles(left, right, word).Impl().ActualTangentsAreUnified(1);
}

}  // namespace

// Setting.

TEST(HvStdFCurve_handles, HandlesAreVectorsFromTheSidesOfTheKey)
{
    StdCurve curve = ThreeKeys();
    EXPECT_EQ(curve.SetKeyTgtHandles(3.1, {-1, 1}, {2, -1}, 0.2), 1);
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(2, 2));
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(5, 1));
    EXPECT_EQ(curve.SetKeyTgtHandle(3, kLeft, {-2, 0}, 0), 1);
    EXPECT_EQ(curve.Impl().keys[1].leftHandle, Point(1, 1));
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(5, 1)) << "the other handle stays";
    EXPECT_EQ(curve.SetKeyTgtHandle(3, kRight, {1, 1}, 0), 1);
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(4, 3));
    EXPECT_EQ(curve.Impl().keys[1].constraints.word, 0x0001);
}

TEST(HvStdFCurve_handles, HandleThatTurnsItsSegmentBackIsShortenedInStepsOfAHundredth)
{
    // Beside a left handle on the next key, 3 long is the limit: 4 * 0.99^29 is below it, 0.99^28
    // not.
    StdCurve curve = ThreeKeys();
    EXPECT_EQ(curve.SetKeyTgtHandle(3, kRight, {4, 8}, 0), 1);
    double const scale = std::pow(0.99, 29);
    ASSERT_LT(4 * scale, 3);
    ASSERT_GT(4 * scale / 0.99, 3);
    ExpectNear(curve.Impl().keys[1].rightHandle, 3 + 4 * scale, 2 + 8 * scale);
    EXPECT_EQ(curve.SetKeyTgtHandle(3, kLeft, {-4, 8}, 0), 1);
    ExpectNear(curve.Impl().keys[1].leftHandle, 3 - 4 * scale, 1 + 8 * scale);
    EXPECT_TRUE(curve.Impl().IsValid());
}

TEST(HvStdFCurve_handles, HandleThatNoShorteningFitsIsRefused)
{
    StdCurve curve = ThreeKeys();
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(3, kRight, {-1, 0}, 0); });
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(3, kLeft, {1, 0}, 0); });
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandles(3, {-1, 0}, {-1, 0}, 0); });
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandles(3, {1, 0}, {1, 0}, 0); });
    // 0.99^1023 of 87000 is 2.98, of 88000 is 3.01: one step too many.
    EXPECT_EQ(curve.SetKeyTgtHandle(3, kRight, {87000, 0}, 0), 1);
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(3, kRight, {88000, 0}, 0); });
}

TEST(HvStdFCurve_handles, OuterHandlesOfTheEndKeysAreNotTested)
{
    StdCurve curve = ThreeKeys();
    EXPECT_EQ(curve.SetKeyTgtHandle(0, kLeft, {100, 1}, 0), 1);
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(100, 1));
    EXPECT_EQ(curve.SetKeyTgtHandle(6, kRight, {-100, 1}, 0), 1);
    EXPECT_EQ(curve.Impl().keys[2].rightHandle, Point(-94, 1));
}

TEST(HvStdFCurve_handles, DefaultBezierConstraintReplacesTheTestByTheThird)
{
    StdCurve curve = ThreeKeys();
    curve.SetDefaultBezierTangentConstraint(true);
    EXPECT_EQ(curve.SetKeyTgtHandle(3, kRight, {400, 800}, 0), 1);
    ExpectNear(curve.Impl().keys[1].rightHandle, 4, 4);  // slope 2
    EXPECT_EQ(curve.SetKeyTgtHandles(3, {-2, 2}, {1, 3}, 0), 1);
    ExpectNear(curve.Impl().keys[1].leftHandle, 2, 2);  // slope -1
    ExpectNear(curve.Impl().keys[1].rightHandle, 4, 5);
}

TEST(HvStdFCurve_handles, LockedTangentsAtTheParameterRefuse)
{
    for (unsigned short const lock : {Word::kTangentDirectionLocked, Word::kTangentLengthLocked}) {
        StdCurve curve = ThreeKeys();
        Lock(curve, 1, lock);
        ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(3, kLeft, {-1, 0}, 0); });
        ExpectRefused(curve, [&] { return curve.SetKeyTgtHandles(3, {-1, 0}, {1, 0}, 0); });
        EXPECT_EQ(curve.SetKeyTgtHandle(3.1, kLeft, {-1, 0}, 0.2), 1)
            << "the locks are those at exactly the parameter";
    }
}

TEST(HvStdFCurve_handles, MissingKeysUnknownSidesReadOnlyCurvesAndUnstorableNumbersAreRefused)
{
    StdCurve curve = ThreeKeys();
    StdCurve empty(0, kCubic);
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(4, kLeft, {-1, 0}, 0.5); });
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandles(4, {-1, 0}, {1, 0}, 0.5); });
    ExpectRefused(empty, [&] { return empty.SetKeyTgtHandle(4, kLeft, {-1, 0}, 9); });
    ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(3, kNoSide, {-1, 0}, 0); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetKeyTgtHandle(3, kLeft, {-1, 0}, 0); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetKeyTgtHandles(3, {-1, 0}, {1, 0}, 0); });
    for (double const bad : NonFinite()) {
        for (Point const& vector : {Point(bad, 0), Point(0, bad)}) {
            ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(3, kLeft, vector, 0); });
            ExpectRefused(curve, [&] { return curve.SetKeyTgtHandle(6, kRight, vector, 0); });
            ExpectRefused(curve, [&] { return curve.SetKeyTgtHandles(3, vector, {1, 0}, 0); });
            ExpectRefused(curve, [&] { return curve.SetKeyTgtHandles(3, {-1, 0}, vector, 0); });
        }
    }
    StdCurve high({KeyAt(0, 1.7e308, 1.7e308, kCubic)});
    ExpectRefused(high, [&] { return high.SetKeyTgtHandle(0, kRight, {1, 1.7e308}, 0); });
}

// The unlocked forms.

TEST(HvStdFCurve_handles, UntouchedHandleOrRefusalWithoutShortening)
{
    StdCurve curve = ThreeKeys();
    HvStdFCurveImpl& impl = curve.Impl();
    EXPECT_EQ(impl.SetActualKeyTgtHandle(1, kRight, {3, 1}), 1);
    EXPECT_EQ(impl.keys[1].rightHandle, Point(6, 3));
    ExpectRefused(curve, [&] { return impl.SetActualKeyTgtHandle(1, kRight, {3.01, 1}); });
    ExpectRefused(curve, [&] { return impl.SetActualKeyTgtHandle(1, kLeft, {-3.01, 1}); });
    ExpectRefused(curve, [&] { return impl.SetActualKeyTgtHandle(1, kNoSide, {1, 1}); });
    EXPECT_EQ(impl.SetActualKeyTgtHandle(0, kLeft, {99, 1}), 1);
    EXPECT_EQ(impl.SetActualKeyTgtHandle(2, kRight, {-99, 1}), 1);
    EXPECT_EQ(impl.SetActualKeyTgtHandle(1, kLeft, {-3, 1}), 1);
}

TEST(HvStdFCurve_handles, DirectionTimesLength)
{
    StdCurve curve = ThreeKeys();
    HvStdFCurveImpl& impl = curve.Impl();
    EXPECT_EQ(impl.SetActualKeyTgtHandleDirectionAndLength(3, kRight, {0.5, 1}, 2), 1);
    EXPECT_EQ(impl.keys[1].rightHandle, Point(4, 4));
    EXPECT_EQ(impl.SetActualKeyTgtHandleDirectionAndLength(3, kRight, {0.5, 1}, 0), 1);
    EXPECT_EQ(impl.keys[1].rightHandle, Point(3, 2));
    EXPECT_EQ(impl.SetActualKeyTgtHandleDirectionAndLength(3, kLeft, {-0.5, 1}, -2), 1);
    EXPECT_EQ(impl.keys[1].leftHandle, Point(3, 1));
    EXPECT_EQ(impl.SetActualKeyTgtHandleDirectionAndLength(3, kLeft, {0, 0}, 2), 1);
    EXPECT_EQ(impl.keys[1].leftHandle, Point(3, 1));
    EXPECT_EQ(impl.SetActualKeyTgtHandleDirectionAndLength(0, kLeft, {5, 1}, 2), 1);
    EXPECT_EQ(impl.keys[0].leftHandle, Point(10, 2)) << "the outer handle is not tested";
    EXPECT_EQ(impl.SetActualKeyTgtHandleDirectionAndLength(3, kRight, {1, 2}, 4), 1);
    double const scale = std::pow(0.99, 29);
    ExpectNear(impl.keys[1].rightHandle, 3 + 4 * scale, 2 + 8 * scale);
    auto const set = [&](double x, HvBaseFCurve::KeySide side, Point direction, double length) {
        return impl.SetActualKeyTgtHandleDirectionAndLength(x, side, direction, length);
    };
    ExpectRefused(curve, [&] { return set(3, kRight, {-1, 0}, 1); });
    ExpectRefused(curve, [&] { return set(3.5, kRight, {1, 0}, 1); });
    ExpectRefused(curve, [&] { return set(3, kNoSide, {1, 0}, 1); });
    ExpectRefused(curve, [&] { return set(3, kRight, {1, 0}, NonFinite()[1]); });
}

TEST(HvStdFCurve_handles, OneHandleTurnsOntoTheLineOfTheOther)
{
    // |(0.6, -0.8)| is 1, |(1.5, 2)| is 2.5.
    StdCurve left = WithHandles({-0.6, -0.8}, {-1, 9});
    left.Impl().keys[1].rightHandle = Point(4.5, 3);
    EXPECT_EQ(left.Impl().UnifyActualLeftTangentWithActualRightTangent(1), 1);
    ExpectNear(left.Impl().LeftVector(1), -0.6, -0.8);

    StdCurve turned = WithHandles({-0.6, 0.8}, {1.5, 2});
    EXPECT_EQ(turned.Impl().UnifyActualLeftTangentWithActualRightTangent(1), 1);
    ExpectNear(turned.Impl().LeftVector(1), -0.6, -0.8);
    StdCurve mirror = WithHandles({-1.5, 2}, {0.6, 0.8});
    EXPECT_EQ(mirror.Impl().UnifyActualRightTangentWithActualLeftTangent(1), 1);
    ExpectNear(mirror.Impl().RightVector(1), 0.6, -0.8);

    StdCurve shorter = WithHandles({-0.6, 0.8}, {0.9e-7, 0});
    EXPECT_EQ(shorter.Impl().UnifyActualLeftTangentWithActualRightTangent(1), 1);
    ExpectNear(shorter.Impl().LeftVector(1), -0.6, 0.8);
    StdCurve shortLeft = WithHandles({0, -0.9e-7}, {0.6, 0.8});
    EXPECT_EQ(shortLeft.Impl().UnifyActualRightTangentWithActualLeftTangent(1), 1);
    ExpectNear(shortLeft.Impl().RightVector(1), 0.6, 0.8);

    StdCurve tooLong = WithHandles({-0.6, 9}, {1.5, 0});
    ExpectRefused(tooLong,
                  [&] { return tooLong.Impl().UnifyActualLeftTangentWithActualRightTangent(1); });
}

// Comparing.

TEST(HvStdFCurve_handles, HandlesOnOneLineAreUnified)
{
    EXPECT_TRUE(Unified({-1, -2}, {0.5, 1}));
    EXPECT_FALSE(Unified({-1, -2}, {0.5, 1.1}));
    // The determinant is compared as it is: 1e-7 is too much, below it is not.
    EXPECT_TRUE(Unified({-1, 0}, {1, 0.9e-7}));
    EXPECT_FALSE(Unified({-1, 0}, {1, 1.1e-7}));
    // A zero handle lies on every line.
    EXPECT_TRUE(Unified({0, 0}, {1, 1}));
    EXPECT_TRUE(Unified({-1, 1}, {0.9e-7, -0.9e-7}));
    EXPECT_FALSE(Unified({-1, 1}, {0, 1.1e-7}));
    // Vertical ones point to opposite sides.
    EXPECT_TRUE(Unified({0, 1}, {0, -2}));
    EXPECT_TRUE(Unified({0, -1}, {0, 2}));
    EXPECT_FALSE(Unified({0, 1}, {0, 2}));
    EXPECT_FALSE(Unified({-0.9e-7, -1}, {0.9e-7, -2}));
    // One vertical alone: the determinant decides.
    EXPECT_FALSE(Unified({0, 1}, {1, 0}));
}

TEST(HvStdFCurve_handles, WhatIsJustAsLargeAsTheThresholdIsNotBelowIt)
{
    // Around a key at (0, 0) vectors are exact.
    auto const around = [](Point left, Point right) {
        return StdCurve(
            {KeyAt(-3, 0, 0, kCubic), KeyWithHandles(0, 0, left, right), KeyAt(3, 0, 0, kCubic)});
    };
    auto const unified = [&](Point left, Point right) {
        return around(left, right).Impl().ActualTangentsAreUnified(1);
    };
    // A vector that is not zero, and a determinant of 1e-7.
    EXPECT_FALSE(unified({-1, 1}, {0, 1e-7}));
    EXPECT_FALSE(unified({-1, 1}, {1e-7, 0}));
    EXPECT_FALSE(unified({0, 1e-7}, {1, 1}));
    // Not both vertical, so that the determinant of 0.5e-7 decides.
    EXPECT_TRUE(unified({0, 0.5}, {1e-7, 1}));
    EXPECT_TRUE(unified({-1e-7, 1}, {0, 0.5}));
    EXPECT_FALSE(around({0, 0}, {1e-7, 0}).Impl().ActualTangentsHaveSameVisualLength(1, 1));
}

TEST(HvStdFCurve_handles, MirroredTangentsAreUnifiedWhenTheyMirrorEachOther)
{
    unsigned short const mirrored = Word::kMirroredTangents | 1;
    EXPECT_TRUE(Unified({-1, 2}, {0.5, 1}, mirrored));
    EXPECT_FALSE(Unified({-1, -2}, {0.5, 1}, mirrored));
    EXPECT_TRUE(Unified({-1, 0}, {2, 0}, mirrored));
    EXPECT_TRUE(Unified({0, 1}, {0, 2}, mirrored));
    EXPECT_TRUE(Unified({0, -1}, {0, -2}, mirrored));
    EXPECT_FALSE(Unified({0, 1}, {0, -2}, mirrored));
    EXPECT_TRUE(Unified({0, 0}, {0.5, 1}, mirrored));
    StdCurve curve = WithHandles({-1, -2}, {0.5, 1}, mirrored);
    EXPECT_FALSE(curve.Impl().ActualTangentsAreUnified(1));
    EXPECT_TRUE(curve.Impl().ActualTangentsAreParallel(1)) << "whatever the constraint says";
    EXPECT_FALSE(WithHandles({-1, 2}, {0.5, 1}, mirrored).Impl().ActualTangentsAreParallel(1));
}

TEST(HvStdFCurve_handles, UnifiedLooksAtTheHandlesInUse)
{
    EXPECT_TRUE(Unified({-1, 5}, {1, 7}, Word::kFlatTangents));
    EXPECT_TRUE(Unified({-1, 5}, {1, 7}, Word::kZeroLengthTangents));
}

TEST(HvStdFCurve_handles, VisualLengthScalesTheValues)
{
    StdCurve curve = WithHandles({-3, 2}, {0, 2.5});
    EXPECT_TRUE(curve.Impl().ActualTangentsHaveSameVisualLength(1, 2));  // 5 and 5
    EXPECT_FALSE(curve.Impl().ActualTangentsHaveSameVisualLength(1, 1));
    StdCurve near = WithHandles({-1, 0}, {1 + 0.9e-7, 0});
    EXPECT_TRUE(near.Impl().ActualTangentsHaveSameVisualLength(1, 1));
    StdCurve beyond = WithHandles({-1, 0}, {1 + 1.1e-7, 0});
    EXPECT_FALSE(beyond.Impl().ActualTangentsHaveSameVisualLength(1, 1));
}

// Best match. The segment of two keys runs from 0 to 3.

TEST(HvStdFCurve_handles, ValidPairOfHandlesIsTheBestMatch)
{
    StdCurve const curve = ThreeKeys();
    Point a(3, 7);
    Point b(-3, 5);
    curve.Impl().ComputeBestMatchTangents(0, a, b, 0);
    EXPECT_EQ(a, Point(3, 7));
    EXPECT_EQ(b, Point(-3, 5));
}

TEST(HvStdFCurve_handles, PairOfHandlesShrinksInTurns)
{
    // With a = 3.1 and b = -3 the first shrink of a gives 3.069, the one of b 2.9403 (0.99^2), the
    // next of a 3.1 * 0.99^3 and so on; with turn 1 b is the first.
    auto const expected = [](double a0, double b0, bool first) {
        double a = a0;
        double b = b0;
        double scale = 1;
        auto const valid = [&] {
            return HvStdFCurve_IsCubicSegmentValid({0, 0}, {a, 0}, {3 + b, 0}, {3, 0}) != 0;
        };
        while (!valid()) {
            scale *= 0.99;
            (first ? a : b) = (first ? a0 : b0) * scale;
            first = !first;
        }
        return Point(a, b);
    };
    StdCurve const curve = ThreeKeys();
    for (int const turn : {0, 1, 3}) {
        for (Point const& start : {Point(3.1, -3), Point(4, -2), Point(9, -9), Point(30, -0.5)}) {
            Point a(start.x, 10);
            Point b(start.y, 10);
            curve.Impl().ComputeBestMatchTangents(0, a, b, turn);
            Point const lengths = expected(start.x, start.y, turn == 0);
            EXPECT_DOUBLE_EQ(a.x, lengths.x);
            EXPECT_DOUBLE_EQ(b.x, lengths.y);
            EXPECT_DOUBLE_EQ(a.y * start.x, 10 * a.x) << "the direction stays";
        }
    }
}

TEST(HvStdFCurve_handles, VerticalHandleLeavesTheShrinkingToTheOther)
{
    StdCurve const curve = ThreeKeys();
    for (int const turn : {0, 3}) {
        Point a(4, 8);
        Point b(0, 5);
        curve.Impl().ComputeBestMatchTangents(0, a, b, turn);
        ExpectNear(a, 4 * std::pow(0.99, 29), 8 * std::pow(0.99, 29));
        EXPECT_EQ(b, Point(0, 5));
        a = Point(0, 5);
        b = Point(-4, 8);
        curve.Impl().ComputeBestMatchTangents(0, a, b, turn);
        EXPECT_EQ(a, Point(0, 5));
        ExpectNear(b, -4 * std::pow(0.99, 29), 8 * std::pow(0.99, 29));
    }
}

TEST(HvStdFCurve_handles, HandlesThatNeverFitBecomeAThirdOfTheSpan)
{
    // A handle on the wrong side stays wrong at every length.
    StdCurve const curve = ThreeKeys();
    Point a(-3, 4);
    Point b(-3, 4);
    curve.Impl().ComputeBestMatchTangents(0, a, b, 0);
    ExpectNear(a, 0, 0.8);
    ExpectNear(b, -0.6, 0.8);
    a = Point(3, 4);
    b = Point(3, 4);
    curve.Impl().ComputeBestMatchTangents(0, a, b, 0);
    ExpectNear(a, 0.6, 0.8);
    ExpectNear(b, 0, 0.8);
    a = Point();
    b = Point(3, 4);
    curve.Impl().ComputeBestMatchTangents(0, a, b, 0);
    EXPECT_EQ(a, Point()) << "a handle without a direction stays";
}

TEST(HvStdFCurve_handles, EveryHandleSetLeavesAValidCurve)
{
    ExpectProperty("a handle is stored in a valid segment or refused", [] {
        StdCurve curve = MixedCurve();
        auto const number = [] { return PickInRange(-1000, 1001) * 0.01; };
        for (int step = 0; step < 20; ++step) {
            double const x = curve.Impl().Parameter(PickInRange(0u, curve.GetNumKeys()));
            std::string const before = StdImage(curve);
            int const done =
                PickInRange(0, 2)
                    ? curve.SetKeyTgtHandle(x, PickInRange(0, 2) ? kLeft : kRight,
                                            {number(), number()}, 0)
                    : curve.SetKeyTgtHandles(x, {number(), number()}, {number(), number()}, 0);
            RC_ASSERT(done == 1 || StdImage(curve) == before);
            RC_ASSERT(curve.Impl().IsValid() != 0);
        }
    });
}
