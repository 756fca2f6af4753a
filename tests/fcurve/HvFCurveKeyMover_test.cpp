// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a drag does to keys, tangents, user data and each kind of curve.

#include "key_drag.h"

// What moves.

TEST(HvFCurveKeyMover, KeyFollowsTheTranslationSinceTheStart)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(0.5, 3), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 4.5, 6, 8}));
    EXPECT_EQ(curve.Eval(4.5, 0), 5);
    EXPECT_EQ(drag.To(-0.5, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 3.5, 6, 8}));
    EXPECT_EQ(curve.Eval(3.5, 0), 3);
    EXPECT_EQ(drag.parameters, (Parameters{3.5}));
}

TEST(HvFCurveKeyMover, NoTranslationLeavesTheCurveAsItWasAndTellsTheExtents)
{
    StdCurve curve = MixedCurve();
    std::string const before = StdImage(curve);
    Drag drag(curve, {2, 5}, Extent(), Extent(2, 1, 5, 4));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(StdImage(curve), before);
    EXPECT_EQ(drag.parameters, (Parameters{2, 5}));
    EXPECT_EQ(drag.invalid.state, Extent::Ordinary);
    EXPECT_TRUE(drag.invalid.Contains({2, 1}) && drag.invalid.Contains({2, 3}));
    EXPECT_TRUE(drag.invalid.Contains({5, 4}));
    EXPECT_EQ(drag.moved.min, Point(2, 1));
    EXPECT_EQ(drag.moved.max, Point(5, 4));
}

TEST(HvFCurveKeyMover, ParametersComeBackInTheOrderGiven)
{
    StdCurve curve = Steps();
    Drag drag(curve, {6, 2, 4});
    EXPECT_EQ(drag.To(0.25, 0), 1);
    EXPECT_EQ(drag.parameters, (Parameters{6.25, 2.25, 4.25}));
}

TEST(HvFCurveKeyMover, ParametersAreAppended)
{
    StdCurve curve = Steps();
    HvFCurveKeyMover mover(curve, Drag::Array({4}), Extent(), Extent());
    HvDoubleArray parameters = Drag::Array({77});
    Point translation(1, 0);
    Extent invalid;
    Extent moved;
    EXPECT_EQ(mover.Update(translation, parameters, invalid, moved, -1, 9), 1);
    ASSERT_EQ(parameters.Size(), 2u);
    EXPECT_EQ(parameters[1], 5);
    EXPECT_EQ(moved.state, Extent::Empty) << "none was given";
}

TEST(HvFCurveKeyMover, KeyPassesOverAKeyThatStays)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(3, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 6, 7, 8}));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 4, 6, 8}));
    for (unsigned int i = 0; i < 5; ++i) {
        ExpectNear(curve.Impl().LeftVector(i), -0.5, -0.25);
        ExpectNear(curve.Impl().RightVector(i), 0.5, 0.25);
    }
}

TEST(HvFCurveKeyMover, KeyThatWouldLandOnAStrangerStopsInParameterAndItsValueGoesOn)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 1), 1);
    EXPECT_EQ(drag.To(2 - 0.9e-6, 7), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 5, 6, 8})) << "where the last step left it";
    EXPECT_EQ(curve.Eval(5, 0), 9);
    EXPECT_EQ(drag.To(2 - 1.1e-6, 7), 1);
    EXPECT_EQ(drag.parameters, (Parameters{4 + (2 - 1.1e-6)}));
}

TEST(HvFCurveKeyMover, KeysBehindABlockedOneAreBlockedToo)
{
    StdCurve curve = Steps();
    Drag drag(curve, {2, 4});
    // 4 would land on 6; 2 would find 4 free.
    EXPECT_EQ(drag.To(2, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 4, 6, 8}));
    EXPECT_EQ(curve.Eval(2, 0), 2);
    EXPECT_EQ(curve.Eval(4, 0), 3);
    // To the left 2 is asked first, and lands on 0.
    EXPECT_EQ(drag.To(-2, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 4, 6, 8}));
}

TEST(HvFCurveKeyMover, NeighboursOfTheSetMakeRoomForEachOther)
{
    StdCurve curve = Steps();
    Drag right(curve, {6, 8});
    EXPECT_EQ(right.To(2, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 4, 8, 10}));
    Drag left(curve, {0, 2, 4});
    EXPECT_EQ(left.To(-2, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{-2, 0, 2, 8, 10}));
}

TEST(HvFCurveKeyMover, LocksRestrictWhatMoves)
{
    StdCurve curve = Steps();
    Lock(curve, 1, Word::kParameterLocked);
    Lock(curve, 2, Word::kValueLocked);
    Lock(curve, 3, Word::kParameterLocked | Word::kValueLocked);
    Drag drag(curve, {2, 4, 6});
    EXPECT_EQ(drag.To(0.5, 10), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 4.5, 6, 8}));
    EXPECT_EQ(curve.Eval(2, 0), 11);
    EXPECT_EQ(curve.Eval(4.5, 0), 2);
    EXPECT_EQ(curve.Eval(6, 0), 3);
    EXPECT_EQ(drag.parameters, (Parameters{2, 4.5, 6}));
}

TEST(HvFCurveKeyMover, KeysOfWhichNoParameterIsFreeMoveInValue)
{
    StdCurve curve = Steps();
    Lock(curve, 1, Word::kParameterLocked);
    Drag drag(curve, {2});
    EXPECT_EQ(drag.To(0.5, 10), 1);
    EXPECT_EQ(drag.parameters, (Parameters{2}));
    EXPECT_EQ(curve.Eval(2, 0), 11);
}

TEST(HvFCurveKeyMover, JumpGoesAlong)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(2, 1, 3, kLinear), KeyAt(4, 0, 0, kCubic)});
    Lock(curve, 1, Word::kTangentContinuityLocked);
    Drag drag(curve, {2});
    EXPECT_EQ(drag.To(1, 2), 1);
    double left = 0;
    double right = 0;
    EXPECT_EQ(curve.GetKeyValues(3, left, right, 0), 1);
    EXPECT_EQ(left, 3);
    EXPECT_EQ(right, 5);
}

TEST(HvFCurveKeyMover, JumpOfAValueLockedKeyStays)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(2, 1, 3, kLinear), KeyAt(4, 0, 0, kCubic)});
    Lock(curve, 1, Word::kValueLocked);
    Drag drag(curve, {2});
    EXPECT_EQ(drag.To(1, 2), 1);
    double left = 0;
    double right = 0;
    EXPECT_EQ(curve.GetKeyValues(3, left, right, 0), 1);
    EXPECT_EQ(left, 1);
    EXPECT_EQ(right, 3);
}

TEST(HvFCurveKeyMover, SegmentThatAKeyDividedHasItsKindBack)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(2, 1, 1, kCubic), KeyAt(4, 0, 0, kConstant),
                    KeyAt(6, 1, 1, kLinear)});
    Drag drag(curve, {2});
    EXPECT_EQ(drag.To(3, 0), 1);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(1), kLinear) << "the segment that closed";
    EXPECT_EQ(curve.GetSegmentKindAtParameter(4.5), kConstant);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(5.5), kCubic) << "the key keeps its own";
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(1), kLinear);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(3), kCubic);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(5), kConstant);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(7), kLinear);
}

// Tangents.

TEST(HvFCurveKeyMover, TangentsGrowWithTheSpansBesideTheKey)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 0), 1);  // spans of 2 become 3 and 1
    ExpectNear(curve.Impl().LeftVector(2), -0.75, -0.375);
    ExpectNear(curve.Impl().RightVector(2), 0.25, 0.125);
    // The facing handles of the neighbours grow and shrink along.
    ExpectNear(curve.Impl().RightVector(1), 0.75, 0.375);
    ExpectNear(curve.Impl().LeftVector(3), -0.25, -0.125);
}

TEST(HvFCurveKeyMover, LockedLengthsStay)
{
    for (unsigned short const lock :
         {Word::kTangentLengthLocked, Word::kTangentLengthContinuityLocked}) {
        StdCurve curve = Steps();
        Lock(curve, 2, lock);
        Drag drag(curve, {4});
        EXPECT_EQ(drag.To(1, 0), 1);
        ExpectNear(curve.Impl().LeftVector(2), -0.5, -0.25);
        ExpectNear(curve.Impl().RightVector(2), 0.5, 0.25);
        EXPECT_EQ(curve.Impl().ConstraintWord(2), Word::kTangentContinuityLocked | lock);
    }
}

TEST(HvFCurveKeyMover, HandleShrinksWhereItsSegmentAsksForIt)
{
    StdCurve curve = Steps();
    Lock(curve, 2, Word::kTangentLengthLocked);
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1.75, 0), 1);  // a quarter of a unit is left for half a unit
    EXPECT_TRUE(EverySegmentRunsForward(curve));
    EXPECT_LT(curve.Impl().RightVector(2).x, 0.5);
    EXPECT_EQ(drag.To(0, 0), 1);
    ExpectNear(curve.Impl().RightVector(2), 0.5, 0.25);
}

TEST(HvFCurveKeyMover, FirstKeyContinuesItsTangentOutwardsWhenItHasNone)
{
    StdCurve curve({KeyWithHandles(0, 0, {0, 0}, {0.5, 0.25}), KeyAt(2, 0, 0, kCubic)});
    Drag drag(curve, {0});
    EXPECT_EQ(drag.To(0, 1), 1);
    ExpectNear(curve.Impl().LeftVector(0), -0.5, -0.25);
}

TEST(HvFCurveKeyMover, KeyBehindAnEndKeyKeepsItsJumpAndOuterHandle)
{
    CFCStdKey second = KeyAt(2, 5, 1, kCubic);
    second.leftHandle = {1.5, 4};
    second.rightHandle = {2.5, 1};
    CFCStdKey before = KeyWithHandles(4, 2, {-0.5, 0}, {0.75, -3});
    StdCurve curve({KeyWithHandles(0, 0, {-1, 1}, {0.5, 0.5}), second, before,
                    KeyWithHandles(6, 0, {-0.5, 0}, {1, 2})});
    Drag drag(curve, {0, 6});
    for (double const x : {0.5, 0.25, -1.0}) {
        EXPECT_EQ(drag.To(x, 1), 1);
        EXPECT_EQ(curve.Impl().keys[1].leftValue, 5);
        ExpectNear(curve.Impl().LeftVector(1), -0.5, -1);
        ExpectNear(curve.Impl().RightVector(2), 0.75, -3);
    }
}

TEST(HvFCurveKeyMover, EndsThatKeysHavePassedAreAsTheyWereOnceTheyAreTheEndsAgain)
{
    CFCStdKey first = KeyAt(2, 5, 1, kCubic);
    first.leftHandle = {1.5, 4};
    CFCStdKey last = KeyWithHandles(6, 2, {-0.5, 0}, {0.75, -3});
    StdCurve curve({first, KeyWithHandles(4, 0, {-0.25, 0}, {0.25, 0}), last});
    Drag drag(curve, {4});
    for (double const x : {-3.0, 0.5, 3.0, -3.5, 0.0}) {
        EXPECT_EQ(drag.To(x, 1), 1);
        EXPECT_EQ(curve.Impl().keys[x < -2 ? 1 : 0].leftValue, 5);
    }
    EXPECT_EQ(curve.Impl().keys[0].leftHandle, Point(1.5, 4));
    EXPECT_EQ(curve.Impl().keys[2].rightHandle, Point(6.75, -1));
}

TEST(HvFCurveKeyMover, PrivateBytesGoAlong)
{
    StdCurve curve = Steps();
    curve.Impl().keys[2].privateByte1 = 7;
    curve.Impl().keys[2].privateByte2 = 9;
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 0), 1);
    EXPECT_EQ(curve.Impl().keys[2].privateByte1, 7);
    EXPECT_EQ(curve.Impl().keys[2].privateByte2, 9);
}

// Limits.

// 2 lies a few units in front of a key whose segment is 1e17 long: as a part of it that is 1, where
// an insertion would set the value of the key.
TEST(HvFCurveKeyMover, KeyIsPutInWhereItsPlaceIsThatOfAnother)
{
    double const third = 1e17 / 3;
    StdCurve curve({KeyWithHandles(-1e17, 0, {-1, 0}, {third, 0}),
                    KeyWithHandles(1, 5, {-third, 0}, {0.5, 0}),
                    KeyWithHandles(3, 9, {-0.5, 0}, {1, 0})});
    std::string const before = StdImage(curve);
    Drag drag(curve, {1});
    EXPECT_EQ(drag.To(1, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{-1e17, 2, 3}));
    EXPECT_EQ(curve.Eval(2, 0), 5);
    EXPECT_EQ(curve.Eval(3, 0), 9);
    EXPECT_TRUE(EverySegmentRunsForward(curve));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvFCurveKeyMover, LimitsBindTheOutermostKeys)
{
    StdCurve curve = Steps();
    Drag drag(curve, {2, 4}, Extent(1, 0, 5.5, 3));
    EXPECT_EQ(drag.To(10, 10), 1);
    EXPECT_EQ(drag.translation, Point(1.5, 1));  // 4 at 5.5, 2 at 3
    EXPECT_EQ(drag.parameters, (Parameters{3.5, 5.5}));
    EXPECT_EQ(drag.To(-10, -10), 1);
    EXPECT_EQ(drag.translation, Point(-1, -1));
    EXPECT_EQ(drag.parameters, (Parameters{1, 3}));
}

TEST(HvFCurveKeyMover, LeftValuesAreHeldAgainstWhatWasWanted)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(2, 3, 1, kLinear), KeyAt(4, 0, 0, kCubic)});
    Drag drag(curve, {2}, Extent(-10, -10, 10, 4));
    EXPECT_EQ(drag.To(0, 5), 1);
    EXPECT_EQ(drag.translation, Point(0, 1));  // 3 + 5 is above 4
    EXPECT_EQ(drag.To(0, 0.5), 1);
    EXPECT_EQ(drag.translation, Point(0, 0.5));
}

TEST(HvFCurveKeyMover, KeysOutsideTheLimitsAreDrawnIn)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4}, Extent(5, -10, 20, 10));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(drag.translation, Point(1, 0));
    EXPECT_EQ(drag.parameters, (Parameters{5}));
}

TEST(HvFCurveKeyMover, LimitsThatCrossLetTheLowerOneWin)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4}, Extent(5, 10, 3, -10));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(drag.translation, Point(1, 8));
}

TEST(HvFCurveKeyMover, AnEndlessWayEndsAtTheLimit)
{
    StdCurve curve = Steps();
    Drag drag(curve, {4}, Extent(-10, -10, 5, 10));
    EXPECT_EQ(drag.To(NonFinite()[1], NonFinite()[2]), 1);
    EXPECT_EQ(drag.translation, Point(1, -12));
}

TEST(HvFCurveKeyMover, InfiniteLimitsBindNothing)
{
    double const infinity = NonFinite()[1];
    StdCurve curve = Steps();
    Drag drag(curve, {4}, Extent(-infinity, -infinity, infinity, infinity));
    EXPECT_EQ(drag.To(1, 100), 1);
    EXPECT_EQ(drag.translation, Point(1, 100));
}

TEST(HvFCurveKeyMover, MovedExtentHoldsTheKeysThatStayedBehind)
{
    StdCurve curve = Steps();
    Lock(curve, 2, Word::kParameterLocked);
    Drag drag(curve, {2, 4}, Extent(), Extent(2, 1, 4, 2));
    EXPECT_EQ(drag.To(-1, 5), 1);
    EXPECT_EQ(drag.moved.min, Point(1, 6));
    EXPECT_EQ(drag.moved.max, Point(4, 7));
    EXPECT_EQ(drag.moved.state, Extent::Ordinary);
}

// The whole curve.

TEST(HvFCurveKeyMover, WholeCurveIsShifted)
{
    StdCurve curve = MixedCurve();
    curve.SetUserDataSet(SetOf(1, "three"), 3);
    Drag drag(curve, {0, 2, 3, 5, 8}, Extent(), Extent(0, 0, 8, 4));
    EXPECT_EQ(drag.To(1, 2), 1);
    EXPECT_EQ(drag.To(3, -1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{3, 5, 6, 8, 11}));
    EXPECT_EQ(drag.parameters, (Parameters{3, 5, 6, 8, 11}));
    EXPECT_EQ(curve.Impl().keys[1].leftValue, 0);
    EXPECT_EQ(curve.Impl().keys[3].leftHandle, Point(7.5, 3.25));
    EXPECT_EQ(drag.moved.min, Point(3, -1));
    EXPECT_EQ(drag.moved.max, Point(11, 3));
    EXPECT_TRUE(drag.invalid.Contains({-100, 0}) && drag.invalid.Contains({100, 0}));
    EXPECT_EQ(TextIn(curve.GetUserDataSet(6), 1), "three");
    EXPECT_EQ(drag.mover.Finalize(), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(6), 1), "three");
}

TEST(HvFCurveKeyMover, WholeCurveThatCannotBeShiftedStaysWhereItIs)
{
    OpenRaw curve(0, {{1, 1}, {2, 2}});
    Drag drag(curve, {1, 2});
    EXPECT_EQ(drag.To(1, 1), 1);
    EXPECT_EQ(drag.To(1e300, 1), 0);  // both would come to one parameter
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 2}, {3, 3}}));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 1}, {2, 2}}));
}

TEST(HvFCurveKeyMover, WholeCurveWithALockedKeyKeepsItsUserData)
{
    StdCurve curve = Steps();
    Lock(curve, 0, Word::kParameterLocked);
    curve.SetUserDataSet(SetOf(1, "four"), 4);
    Drag drag(curve, {0, 2, 4, 6, 8});
    EXPECT_EQ(drag.To(1, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 3, 5, 7, 9}));
    EXPECT_EQ(drag.mover.Finalize(), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(5), 1), "four");
}

// Other kinds.

TEST(HvFCurveKeyMover, BooleansTurnAtAHalf)
{
    OpenBoolean curve(0, {{1, 0}, {2, 1}, {3, 0}});
    Drag drag(curve, {1, 2});
    EXPECT_EQ(drag.To(0.5, 0.4), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1.5, 0}, {2.5, 1}, {3, 0}}));
    EXPECT_EQ(drag.To(0.5, 0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1.5, 1}, {2.5, 1}, {3, 0}}));
    EXPECT_EQ(drag.To(0, -0.6), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 0}, {2, 0}, {3, 0}}));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 0}, {2, 1}, {3, 0}}));
}

TEST(HvFCurveKeyMover, WholeBooleanCurveMovesKeyByKey)
{
    OpenBoolean curve(0, {{1, 0}, {2, 1}});
    Drag drag(curve, {1, 2});
    EXPECT_EQ(drag.To(5, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{6, 0}, {7, 1}}));
}

TEST(HvFCurveKeyMover, IntegersMoveByWholeNumbersAndStayInTheirRange)
{
    OpenInteger curve(0, {{1, 10}, {2, 2147483600}, {3, 0}});
    Drag drag(curve, {1, 2});
    EXPECT_EQ(drag.To(0, 2.75), 1);
    EXPECT_EQ(drag.translation, Point(0, 2));
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 12}, {2, 2147483602}, {3, 0}}));
    EXPECT_EQ(drag.To(0, -0.25), 1);
    EXPECT_EQ(drag.translation, Point(0, -1));
    EXPECT_EQ(drag.To(0, 100), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 110}, {2, 2147483647}, {3, 0}}));
    EXPECT_EQ(drag.To(0, 1e30), 1);
    EXPECT_EQ(drag.translation, Point(0, 2147483647));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 2147483600}, {3, 0}}));
}

TEST(HvFCurveKeyMover, WholeIntegerCurveKeepsItsShapeAtTheEndOfTheRange)
{
    OpenInteger curve(0, {{1, 10}, {2, 2147483600}});
    Drag drag(curve, {1, 2});
    EXPECT_EQ(drag.To(0, 100), 1);
    EXPECT_EQ(drag.translation, Point(0, 47));
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 57}, {2, 2147483647}}));
    EXPECT_EQ(drag.To(0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 2147483600}}));
}

TEST(HvFCurveKeyMover, LeftValueOfASteppedCurveGoesWithItsFirstKey)
{
    OpenInteger curve(0, {{1, 10}, {2, 20}, {3, 30}});
    curve.SetLeftValue(5);
    Drag first(curve, {1});
    EXPECT_EQ(first.To(0.5, 2), 1);
    EXPECT_EQ(curve.LeftValue(), 7);
    EXPECT_EQ(first.To(5, 2), 1);  // another key is the first
    EXPECT_EQ(first.To(0, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 5);
    Drag second(curve, {2});
    EXPECT_EQ(second.To(-1.5, 0), 1);
    EXPECT_EQ(second.To(0.5, 0), 1);
    EXPECT_EQ(curve.LeftValue(), 5);
}

TEST(HvFCurveKeyMover, RawKeysMoveAndKeepTheirSelection)
{
    OpenRaw curve = Zigzag();
    curve.SetSelected(1);
    curve.SetKeySelected(2.0, 1);
    Drag drag(curve, {2});
    EXPECT_EQ(drag.To(1.5, 5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {3, 0}, {3.5, 35}, {4, 40}}));
    EXPECT_EQ(curve.IsKeySelected(3.5), 1);
    EXPECT_EQ(curve.IsKeySelected(3.0), 0);
}

TEST(HvFCurveKeyMover, SelectionIsRememberedOnASelectedCurve)
{
    StdCurve curve = Steps();
    curve.SetSelected(1);
    curve.SetKeySelected(2u, 1);
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 0), 1);
    EXPECT_EQ(curve.IsKeySelected(5.0), 1);
    EXPECT_EQ(curve.Impl().ConstraintWord(2), Word::kTangentContinuityLocked | Word::kSelected);
}

// User data.

TEST(HvFCurveKeyMover, UserDataComeBackAtTheEnd)
{
    StdCurve curve = Steps();
    curve.SetUserDataSet(SetOf(1, "four"), 4);
    curve.SetUserDataSet(SetOf(1, "six"), 6);
    curve.SetFCurveUserData(Guid(2), BytesOf("curve"), 5);
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 1), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(4), 1), "none");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(6), 1), "six");
    EXPECT_EQ(drag.To(3, 1), 1);
    EXPECT_EQ(drag.mover.Finalize(), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(7), 1), "four");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(6), 1), "six");
    curve.RemoveKeyUserData(7);
    EXPECT_EQ(drag.mover.Finalize(), 1) << "does nothing any more";
    EXPECT_EQ(TextIn(curve.GetUserDataSet(7), 1), "none");
}

TEST(HvFCurveKeyMover, KeyThatIsGoneGetsNoUserData)
{
    StdCurve curve = Steps();
    curve.SetUserDataSet(SetOf(1, "four"), 4);
    Drag drag(curve, {4});
    EXPECT_EQ(drag.To(1, 1), 1);
    curve.RemoveKey(5, 0);
    EXPECT_EQ(drag.To(0.5, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 6, 8}));
    EXPECT_EQ(drag.parameters, (Parameters{5}));
    EXPECT_EQ(drag.mover.Finalize(), 1);
    EXPECT_EQ(curve.HasUserData(5), 0);
}
