// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Keys that take the place of the head, the tail or all of a curve, by the unlocked members.

#include "std_edit.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

CFCStdKey const& KeyOf(StdCurve const& curve, unsigned int i)
{
    return curve.Impl().keys[i];
}

/// Three keys; the handles of the middle one are given, the others have none.
StdCurve ThreeKeys(Point left, Point right)
{
    StdCurve curve({KeyAt(0, 7, 7, kLinear), KeyWithHandles(3, 2, left, right, kConstant),
                    KeyAt(6, 8, 8, kCubic)});
    for (CFCStdKey const& key : curve.Impl().keys) {
        curve.SetUserDataSet(SetOf(1, "blob"), key.parameter);
    }
    return curve;
}

}  // namespace

// The head. The third of the span from -3 to 3 is 2.

TEST(HvStdFCurve_insert_replace, KeyInPlaceOfTheHead)
{
    StdCurve curve = ThreeKeys({-2, 2}, {1, 0});
    curve.Impl().RemoveHeadAndCreateKeyBeforeExistingKey(-3, 5, kLinear, kConstant, 1, curve);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    CFCStdKey const& made = KeyOf(curve, 0);
    EXPECT_EQ(made.parameter, -3);
    EXPECT_EQ(made.leftValue, 5);
    EXPECT_EQ(made.segmentKind, kConstant);
    EXPECT_EQ(made.constraints.word, 0x0001);
    ExpectNear(made.rightHandle, -1, 5);
    ExpectNear(made.leftHandle, -5, 5);
    EXPECT_EQ(KeyOf(curve, 1).parameter, 3);
    EXPECT_EQ(KeyOf(curve, 1).leftHandle, Point(1, 4)) << "it fits into the new span";
    EXPECT_EQ(KeyOf(curve, 1).rightHandle, Point(4, 2));
    EXPECT_EQ(KeyOf(curve, 2).parameter, 6);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 5);
    EXPECT_FALSE(curve.HasUserData(0));
    EXPECT_TRUE(curve.HasUserData(3));
    EXPECT_TRUE(curve.HasUserData(6));
}

TEST(HvStdFCurve_insert_replace, HandleTooLongForTheSpanToANewHeadShrinks)
{
    // With a handle at the third, -1, the facing one may stand at -5 and beyond: 20 s is at most 8
    // first for s = 0.9^9.
    StdCurve curve = ThreeKeys({-20, 2}, {1, 0});
    curve.Impl().RemoveHeadAndCreateKeyBeforeExistingKey(-3, 5, kLinear, kConstant, 1, curve);
    double const s = std::pow(0.9, 9);
    ExpectNear(KeyOf(curve, 1).leftHandle, 3 - 20 * s, 2 + 2 * s);
}

TEST(HvStdFCurve_insert_replace, LastKeyBehindANewHeadMirrorsItsLeftHandleWhenItsRightOneIsShort)
{
    StdCurve curve({KeyAt(0, 7, 7, kLinear), KeyWithHandles(3, 2, {-2, 2}, {3.1e-4, 0})});
    curve.Impl().RemoveHeadAndCreateKeyBeforeExistingKey(-3, 5, kLinear, kConstant, 1, curve);
    ExpectNear(KeyOf(curve, 1).rightHandle, 5, 0);

    Point const v = VectorOfSquaredLength(1e-7);
    StdCurve kept({KeyAt(-1, 7, 7, kLinear), KeyWithHandles(0, 0, {-0.5, 0}, v)});
    kept.Impl().RemoveHeadAndCreateKeyBeforeExistingKey(-3, 5, kLinear, kConstant, 1, kept);
    EXPECT_EQ(KeyOf(kept, 1).rightHandle, v) << "1e-7 is not short";
}

TEST(HvStdFCurve_insert_replace, HandlesBesideANewHeadStandAtTheThirdsUnderTheDefaultConstraint)
{
    StdCurve curve = ThreeKeys({-1, 3}, {1, 0});
    curve.Impl().defaultBezierTangentConstraint = 1;
    curve.Impl().RemoveHeadAndCreateKeyBeforeExistingKey(-3, 5, kLinear, kConstant, 1, curve);
    ExpectNear(KeyOf(curve, 0).rightHandle, -1, 5);
    ExpectNear(KeyOf(curve, 1).leftHandle, 1, 8);  // slope -3 over the new span's third
}

// The tail. The third of the span from 3 to 9 is 2.

TEST(HvStdFCurve_insert_replace, KeyInPlaceOfTheTail)
{
    StdCurve curve = ThreeKeys({-1, 0}, {2, 2});
    curve.Impl().valueWhenNoKeys = 7;
    curve.Impl().RemoveTailAndCreateKeyAfterExistingKey(9, 5, kLinear, kConstant, 1, curve);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    CFCStdKey const& made = KeyOf(curve, 2);
    EXPECT_EQ(made.parameter, 9);
    EXPECT_EQ(made.rightValue, 5);
    EXPECT_EQ(made.segmentKind, kConstant);
    EXPECT_EQ(made.constraints.word, 0x0001);
    ExpectNear(made.leftHandle, 7, 5);
    ExpectNear(made.rightHandle, 11, 5);
    EXPECT_EQ(KeyOf(curve, 1).rightHandle, Point(5, 4)) << "it fits into the new span";
    EXPECT_EQ(KeyOf(curve, 1).leftHandle, Point(2, 2));
    EXPECT_EQ(KeyOf(curve, 1).segmentKind, kLinear);
    EXPECT_EQ(KeyOf(curve, 0).segmentKind, kLinear);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 7);
    EXPECT_TRUE(curve.HasUserData(0));
    EXPECT_TRUE(curve.HasUserData(3));
    EXPECT_FALSE(curve.HasUserData(6));
}

TEST(HvStdFCurve_insert_replace, TailOfSeveralKeysGoesAsAWhole)
{
    StdCurve curve = ThreeKeys({-1, 0}, {1, 1});
    curve.Impl().RemoveTailAndCreateKeyAfterExistingKey(9, 5, kLinear, kConstant, 0, curve);
    ASSERT_EQ(curve.GetNumKeys(), 2u);
    EXPECT_EQ(KeyOf(curve, 0).parameter, 0);
    EXPECT_EQ(KeyOf(curve, 1).parameter, 9);
    EXPECT_TRUE(curve.HasUserData(0));
    EXPECT_FALSE(curve.HasUserData(3));
    EXPECT_FALSE(curve.HasUserData(6));
}

TEST(HvStdFCurve_insert_replace, HandleTooLongForTheSpanToANewTailShrinks)
{
    StdCurve curve = ThreeKeys({-1, 0}, {20, 2});
    curve.Impl().RemoveTailAndCreateKeyAfterExistingKey(9, 5, kLinear, kConstant, 1, curve);
    double const s = std::pow(0.9, 9);
    ExpectNear(KeyOf(curve, 1).rightHandle, 3 + 20 * s, 2 + 2 * s);
}

TEST(HvStdFCurve_insert_replace, FirstKeyBeforeANewTailMirrorsItsRightHandleWhenItsLeftOneIsShort)
{
    StdCurve curve({KeyWithHandles(0, 1, {-3.1e-4, 0}, {2, 3}), KeyAt(3, 7, 7, kLinear)});
    curve.Impl().RemoveTailAndCreateKeyAfterExistingKey(6, 5, kLinear, kConstant, 0, curve);
    ExpectNear(KeyOf(curve, 0).leftHandle, -2, -2);

    Point const v = VectorOfSquaredLength(1e-7);
    StdCurve kept({KeyWithHandles(0, 0, Point() - v, {0.5, 0}), KeyAt(1, 7, 7, kLinear)});
    kept.Impl().RemoveTailAndCreateKeyAfterExistingKey(6, 5, kLinear, kConstant, 0, kept);
    EXPECT_EQ(KeyOf(kept, 0).leftHandle, Point() - v) << "1e-7 is not short";
}

TEST(HvStdFCurve_insert_replace, HandlesBesideANewTailStandAtTheThirdsUnderTheDefaultConstraint)
{
    StdCurve curve = ThreeKeys({-1, 0}, {1, 3});
    curve.Impl().defaultBezierTangentConstraint = 1;
    curve.Impl().RemoveTailAndCreateKeyAfterExistingKey(9, 5, kLinear, kConstant, 1, curve);
    ExpectNear(KeyOf(curve, 1).rightHandle, 5, 8);
    ExpectNear(KeyOf(curve, 2).leftHandle, 7, 5);
}

// All keys.

TEST(HvStdFCurve_insert_replace, KeyInPlaceOfAllKeys)
{
    StdCurve curve = ThreeKeys({-1, 0}, {2, 2});
    curve.Impl().RemoveAllKeysAndCreateNewKey(9, 5, kLinear, kConstant, curve);
    ASSERT_EQ(curve.GetNumKeys(), 1u);
    CFCStdKey const& made = KeyOf(curve, 0);
    EXPECT_EQ(made.parameter, 9);
    EXPECT_EQ(made.leftValue, 5);
    EXPECT_EQ(made.leftHandle, Point(9, 5));
    EXPECT_EQ(made.rightHandle, Point(9, 5));
    EXPECT_EQ(made.segmentKind, kConstant);
    EXPECT_EQ(made.constraints.word, 0x0001);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 5);
    EXPECT_FALSE(curve.HasUserData());
}

// The body. Without the keys at 1 and 2 the handles of the others grow by the factor 3 and stand at
// the thirds of the span from 0 to 3, so that x(t) = 3t.

namespace {

StdCurve FourKeys(Point leftOfSecond, Point rightOfThird)
{
    StdCurve curve({KeyWithHandles(0, 0, {-1, 0}, {1.0 / 3, 1}, kConstant),
                    KeyWithHandles(1, 4, leftOfSecond, {0.1, 0}, kLinear),
                    KeyWithHandles(2, 4, {-0.1, 0}, rightOfThird, kLinear),
                    KeyWithHandles(3, 1, {-1.0 / 3, 2}, {1, 0}, kLinear)});
    for (CFCStdKey& key : curve.Impl().keys) {
        curve.SetUserDataSet(SetOf(1, "blob"), key.parameter);
        key.constraints.word = 0;
    }
    return curve;
}

/// Two handle vectors of a segment of width `span`, shortened in turns until it is a function.
void ShortenInTurns(double span, Point& a, Point& b, bool aFirst)
{
    Point const a0 = a;
    Point const b0 = b;
    double s = 1;
    for (bool turn = aFirst; !HvStdFCurve_IsCubicSegmentValid(Point(0, 0), Point(a.x, 0),
                                                              Point(span + b.x, 0), Point(span, 0));
         turn = !turn) {
        s *= 0.99;
        (turn ? a : b) = (turn ? a0 : b0) * s;
    }
}

}  // namespace

TEST(HvStdFCurve_insert_replace, KeyInPlaceOfTheBodyTakesTheOutermostHandlesOfWhatGoes)
{
    StdCurve curve = FourKeys({-0.25, 1}, {0.3, -2});
    int const result = curve.Impl().RemoveBodyAndCreateKeyBetweenExistingKeys(
        1.5, 5, kLinear, kConstant, 0, 3, curve);
    EXPECT_EQ(result, 0);
    ASSERT_EQ(curve.GetNumKeys(), 3u);
    CFCStdKey const& made = KeyOf(curve, 1);
    EXPECT_EQ(made.parameter, 1.5);
    EXPECT_EQ(made.leftValue, 5);
    EXPECT_EQ(made.segmentKind, kConstant);
    EXPECT_EQ(made.constraints.word, 0x0001);
    ExpectNear(made.leftHandle, 1.25, 6);
    ExpectNear(made.rightHandle, 1.8, 3);
    // The outer handles are half of what they had grown to.
    ExpectNear(KeyOf(curve, 0).rightHandle, 0.5, 1.5);
    ExpectNear(KeyOf(curve, 2).leftHandle, 2.5, 4);
    EXPECT_EQ(KeyOf(curve, 0).segmentKind, kLinear);
    EXPECT_TRUE(curve.HasUserData(0));
    EXPECT_FALSE(curve.HasUserData(1));
    EXPECT_FALSE(curve.HasUserData(2));
    EXPECT_TRUE(curve.HasUserData(3));
}

TEST(HvStdFCurve_insert_replace, HandlesOfWhatGoesShrinkInTurnsTheNewKeysOwnFirst)
{
    StdCurve curve = FourKeys({-2.5, 1}, {2.25, -2});
    EXPECT_EQ(curve.Impl().RemoveBodyAndCreateKeyBetweenExistingKeys(1.5, 5, kLinear, kConstant, 0,
                                                                     3, curve),
              0);
    Point a(0.5, 1.5);
    Point b(-2.5, 1);
    ShortenInTurns(1.5, a, b, false);
    ExpectNear(KeyOf(curve, 0).rightHandle, a.x, a.y);
    ExpectNear(KeyOf(curve, 1).leftHandle, 1.5 + b.x, 5 + b.y);

    a = Point(2.25, -2);
    b = Point(-0.5, 3);
    ShortenInTurns(1.5, a, b, true);
    ExpectNear(KeyOf(curve, 1).rightHandle, 1.5 + a.x, 5 + a.y);
    ExpectNear(KeyOf(curve, 2).leftHandle, 3 + b.x, 1 + b.y);
}

TEST(HvStdFCurve_insert_replace, HandlesBehindTheNewKeyShrinkToTheSpanThere)
{
    StdCurve curve = FourKeys({-0.25, 1}, {2.25, -2});
    EXPECT_EQ(curve.Impl().RemoveBodyAndCreateKeyBetweenExistingKeys(2.5, 5, kLinear, kConstant, 0,
                                                                     3, curve),
              0);
    // The last key's handle is a sixth of the (-1, 6) that it had grown to.
    Point a(2.25, -2);
    Point b(-1.0 / 6, 1);
    ShortenInTurns(0.5, a, b, true);
    EXPECT_LT(a.x, 1);
    ExpectNear(KeyOf(curve, 1).rightHandle, 2.5 + a.x, 5 + a.y);
    ExpectNear(KeyOf(curve, 2).leftHandle, 3 + b.x, 1 + b.y);
}

TEST(HvStdFCurve_insert_replace, OneKeyOfTheBodyGoesForAnother)
{
    StdCurve curve = FourKeys({-0.25, 1}, {0.3, -2});
    EXPECT_EQ(curve.Impl().RemoveBodyAndCreateKeyBetweenExistingKeys(1.5, 5, kLinear, kConstant, 0,
                                                                     2, curve),
              0);
    ASSERT_EQ(curve.GetNumKeys(), 4u);
    EXPECT_EQ(KeyOf(curve, 1).parameter, 1.5);
    EXPECT_EQ(KeyOf(curve, 1).constraints.word, 0x0001);
    ExpectNear(KeyOf(curve, 1).leftHandle, 1.25, 6);
    ExpectNear(KeyOf(curve, 1).rightHandle, 1.6, 5);
    EXPECT_EQ(KeyOf(curve, 2).parameter, 2);
    EXPECT_FALSE(curve.HasUserData(1));
    EXPECT_TRUE(curve.HasUserData(2));
}

TEST(HvStdFCurve_insert_replace, NeighbourOnlyBesideTheNewKeyTakesNoHandleOfAnother)
{
    StdCurve curve = FourKeys({-0.25, 1}, {0.3, -2});
    EXPECT_EQ(curve.Impl().RemoveBodyAndCreateKeyBetweenExistingKeys(1.5, 4, kLinear, kConstant, 1,
                                                                     2, curve),
              0);
    ASSERT_EQ(curve.GetNumKeys(), 5u);
    // The segment from (1, 4) to (2, 4) is level, and so are its handles.
    EXPECT_EQ(KeyOf(curve, 2).leftHandle.y, 4);
    EXPECT_EQ(KeyOf(curve, 2).rightHandle.y, 4);
    EXPECT_EQ(KeyOf(curve, 1).leftHandle, Point(0.75, 5));
}

TEST(HvStdFCurve_insert_replace, HandlesWithoutAHeightLieLevelWithTheirKeys)
{
    // The height of the outer handles above their keys is twice the largest double.
    double const high = 1.7e308;
    StdCurve curve({KeyAt(0, 0, -high, kCubic), KeyAt(2, high, 0, kCubic)});
    curve.Impl().keys[0].rightHandle = Point(0.5, high);
    curve.Impl().keys[1].leftHandle = Point(1.5, -high);
    EXPECT_EQ(curve.CreateKey(1, 5), 1);
    EXPECT_EQ(KeyOf(curve, 0).rightHandle, Point(0.25, -high));
    EXPECT_EQ(KeyOf(curve, 2).leftHandle, Point(1.75, high));
}

// What insertions ask.

TEST(HvStdFCurve_insert_replace, OnlyTheLockOfTheKeyThereRefuses)
{
    StdCurve curve({KeyAt(0, 1, 1, kCubic), KeyAt(1, 2, 2, kCubic), KeyAt(2, 3, 3, kCubic)});
    Lock(curve, 1, Word::kValueLocked);
    EXPECT_EQ(curve.CreateKey(0, 9), 1);
    ExpectRefused(curve, [&] { return curve.CreateKey(1, 9); });
    EXPECT_EQ(curve.CreateKey(2, 9), 1);
}

TEST(HvStdFCurve_insert_replace, ParameterWhoseDistanceToAnEndIsNoNumberIsRefused)
{
    StdCurve curve({KeyAt(1.5e308, 1, 1, kLinear), KeyAt(1.6e308, 1, 1, kLinear)});
    EXPECT_TRUE(curve.Impl().CanHoldParameter(1.4e308));
    EXPECT_TRUE(curve.Impl().CanHoldParameter(1.7e308));
    EXPECT_FALSE(curve.Impl().CanHoldParameter(-1e308));
    StdCurve below({KeyAt(-1.6e308, 1, 1, kLinear), KeyAt(-1.5e308, 1, 1, kLinear)});
    EXPECT_TRUE(below.Impl().CanHoldParameter(-1.4e308));
    EXPECT_FALSE(below.Impl().CanHoldParameter(1e308));
    StdCurve empty(0, kLinear);
    EXPECT_TRUE(empty.Impl().CanHoldParameter(-1.7e308));
}

TEST(HvStdFCurve_insert_replace, EndValuesAreHeldOutsideTheKeysWhateverTheExtrapolation)
{
    StdCurve const curve(
        {KeyAt(0, 1, 2, kLinear), KeyAt(1, 3, 4, kLinear), KeyAt(2, 7, 6, kLinear)},
        HvBaseFCurve::LinearExtrapolation);
    double const table[][2] = {{-1, 1}, {0, 2}, {0.5, 2.5}, {1, 4}, {1.5, 5.5}, {2, 6}, {3, 6}};
    for (auto const& row : table) {
        EXPECT_EQ(curve.Impl().EvalInsideKeys(row[0]), row[1]) << row[0];
    }
    EXPECT_EQ(StdCurve(9.0, kLinear).Impl().EvalInsideKeys(5), 9);
}
