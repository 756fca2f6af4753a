// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/HvFCurveStretcher.h>

#include "stretch_scene.h"

#include <gtest/gtest.h>

#include <string>

// Parameters.

TEST(HvFCurveStretcher, KeysInTheRegionScaleAboutThePivot)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(15), 1);
    EXPECT_EQ(Parameters(curve), Numbers({0, 10, 32.5, 37.5, 42.5, 50, 60}));
    EXPECT_EQ(Values(curve), Numbers({0, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(drag.translation, Point(15, 0)) << "what counts of the translation";
    EXPECT_EQ(drag.limited, 0);
    EXPECT_EQ(drag.region.min, Point(30, -100));
    EXPECT_EQ(drag.region.max, Point(45, 100));
    EXPECT_EQ(ListOf(drag.before), Numbers({20, 30, 40}));
    EXPECT_EQ(ListOf(drag.after), Numbers({32.5, 37.5, 42.5}));

    EXPECT_EQ(drag.To(-3), 1) << "the whole way, not that since the last step";
    EXPECT_EQ(Parameters(curve), Numbers({0, 10, 17.5, 28.5, 39.5, 50, 60}));
    EXPECT_EQ(ListOf(drag.before), Numbers({32.5, 37.5, 42.5}));
}

TEST(HvFCurveStretcher, RightSideMirrorsTheLeftOne)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle(kRightHandle));
    EXPECT_EQ(drag.To(-15), 1);
    EXPECT_EQ(Parameters(curve), Numbers({0, 10, 17.5, 22.5, 27.5, 50, 60}));
    EXPECT_EQ(drag.region.max.x, 30);
}

TEST(HvFCurveStretcher, ShapeOfTheRegionScalesAlong)
{
    for (double const pivot : {60.0, 0.0, 30.0, -20.0}) {
        StdCurve const start = Tens();
        StdCurve curve = Tens();
        StretchArguments arguments = Middle();
        arguments.region = HvExtent2<double>(0, -100, 60, 100);
        arguments.handle = pivot < 30 ? kRightHandle : kLeftHandle;
        arguments.pivot.x = pivot;
        StretchDrag drag(curve, arguments);
        double const side = pivot < 30 ? 60 : 0;
        for (double const scale : {0.25, 2.0}) {
            EXPECT_EQ(drag.To((scale - 1) * (side - pivot)), 1);
            EXPECT_EQ(drag.limited, 0);
            for (double x = 0; x <= 60; x += 0.5) {
                EXPECT_NEAR(curve.Eval(pivot + (x - pivot) * scale, 0), start.Eval(x, 0), kSolver)
                    << "pivot " << pivot << ", scale " << scale << ", at " << x;
            }
        }
    }
}

TEST(HvFCurveStretcher, HandlesScaleInXWithTheParameters)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(15), 1);
    for (unsigned int const i : {2u, 3u, 4u}) {
        ExpectVectors(curve, i, {-1.5, -1}, {1.5, 1});
    }
    // A key that stays keeps its direction; its handle grows with the segment, 10 to 22.5 long.
    ExpectVectors(curve, 1, {-3, -1}, {6.75, 2.25});
    ExpectVectors(curve, 5, {-2.25, -0.75}, {3, 1});
    ExpectVectors(curve, 0, {-3, -1}, {3, 1});
    EXPECT_EQ(drag.To(0), 1);
    for (unsigned int i = 0; i < 7; ++i) {
        ExpectVectors(curve, i, {-3, -1}, {3, 1});
    }
}

TEST(HvFCurveStretcher, KeysBeyondTheDraggedSideFollowWithRipple)
{
    StdCurve curve = Tens();
    StretchArguments arguments = Middle();
    arguments.ripple = true;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(-15), 1);
    EXPECT_EQ(Parameters(curve), Numbers({-15, -5, 7.5, 22.5, 37.5, 50, 60}));
    ExpectVectors(curve, 0, {-3, -1}, {3, 1});
    ExpectVectors(curve, 1, {-3, -1}, {3, 1});
    ExpectVectors(curve, 2, {-4.5, -1}, {4.5, 1});
    EXPECT_EQ(ListOf(drag.before), Numbers({0, 10, 20, 30, 40}));
}

TEST(HvFCurveStretcher, KeysOnBothSidesFollowAboutAPivotWithin)
{
    StdCurve curve = Tens();
    StretchArguments arguments = Middle();
    arguments.ripple = true;
    arguments.pivot.x = 35;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(-10), 1);  // a scale of 1.5: the right side moves by 5
    EXPECT_EQ(Parameters(curve), Numbers({-10, 0, 12.5, 27.5, 42.5, 55, 65}));
    EXPECT_EQ(drag.region.min.x, 5);
    EXPECT_EQ(drag.region.max.x, 50);
}

TEST(HvFCurveStretcher, LockedKeyInTheRegionStopsTheSideShortOfIt)
{
    StdCurve curve = Tens();
    Lock(curve, 2, Word::kParameterLocked);
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(20), 1);
    EXPECT_EQ(drag.limited, 1);
    EXPECT_NEAR(drag.region.min.x, 20 - 0.001, kRounding);
    EXPECT_NEAR(drag.Used(), 4.999, kRounding);
    EXPECT_EQ(curve.Impl().Parameter(2), 20);
    EXPECT_GT(curve.Impl().Parameter(3), 30);
}

TEST(HvFCurveStretcher, ScaleStopsAtTheLeastOne)
{
    StdCurve curve = Tens();
    StretchArguments arguments = Middle();
    arguments.minimalScale = 0.25;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(29), 1);
    EXPECT_EQ(drag.limited, 0);
    EXPECT_EQ(drag.Used(), 22.5);
    EXPECT_EQ(Parameters(curve), Numbers({0, 10, 38.75, 41.25, 43.75, 50, 60}));
}

TEST(HvFCurveStretcher, FlippedKeysChangeTheirSides)
{
    CFCStdKey first = KeyWithHandles(20, 1, {-1, 0.5}, {1.5, 1}, kConstant);
    first.rightValue = 2;
    first.rightHandle.y = 3;
    CFCStdKey second = KeyWithHandles(24, 3, {-1.25, -1}, {0.5, 2}, kCubic);
    second.rightValue = 4;
    second.rightHandle.y = 6;
    second.constraints.word = Word::kMirroredTangents;
    StdCurve curve({KeyAt(0, 0, 0, kLinear), first, second, KeyAt(60, 9, 9, kCubic)});
    std::string const image = StdImage(curve);
    StretchArguments arguments = Middle();
    arguments.region = HvExtent2<double>(18, -100, 29, 100);
    arguments.pivot.x = 30;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(24), 1);
    EXPECT_EQ(drag.limited, 0);
    EXPECT_EQ(Parameters(curve), Numbers({0, 36, 40, 60}));
    HvStdFCurveImpl const& impl = curve.Impl();
    EXPECT_EQ(impl.keys[1].leftValue, 4);
    EXPECT_EQ(impl.keys[1].rightValue, 3);
    EXPECT_EQ(impl.keys[2].leftValue, 2);
    EXPECT_EQ(impl.keys[2].rightValue, 1);
    ExpectVectors(curve, 1, {-0.5, 2}, {1.25, -1});
    ExpectVectors(curve, 2, {-1.5, 1}, {1, 0.5});
    EXPECT_EQ(impl.SegmentKind(0), kLinear);
    EXPECT_EQ(impl.SegmentKind(1), kConstant) << "each key keeps what was on its left";
    EXPECT_EQ(impl.SegmentKind(2), kLinear);
    EXPECT_EQ(impl.keys[1].constraints.word, Word::kMirroredTangents);
    EXPECT_EQ(ListOf(drag.before), Numbers({20, 24}));
    EXPECT_EQ(ListOf(drag.after), Numbers({40, 36})) << "in the order of the start";
    EXPECT_EQ(drag.region.min.x, 31);
    EXPECT_EQ(drag.region.max.x, 42);
    EXPECT_TRUE(impl.IsValid());

    EXPECT_EQ(drag.To(2), 1);
    EXPECT_NEAR(impl.Parameter(1), 30 - 10 * 10 / 12.0, kRounding);
    EXPECT_EQ(impl.SegmentKind(1), kConstant);
    EXPECT_EQ(impl.SegmentKind(2), kCubic);
    EXPECT_EQ(drag.To(0), 1);
    EXPECT_EQ(Parameters(curve), Numbers({0, 20, 24, 60}));
    ExpectVectors(curve, 1, {-1, 0.5}, {1.5, 1});
    ExpectVectors(curve, 2, {-1.25, -1}, {0.5, 2});
}

TEST(HvFCurveStretcher, KindsOfAllSegmentsStay)
{
    StdCurve curve = Tens();
    for (unsigned int i = 0; i < 7; ++i) {
        curve.Impl().SetKind(i, static_cast<FSKind>(i % 3 + 1));
    }
    curve.Impl().defaultSegmentKind = kLinear;
    StretchArguments arguments = Middle();
    arguments.ripple = true;
    arguments.pivot.x = 30;
    StretchDrag drag(curve, arguments);
    for (double const amount : {-9.0, 9.0, 2.0, 0.0}) {
        EXPECT_EQ(drag.To(amount), 1);
        for (unsigned int i = 0; i < 7; ++i) {
            EXPECT_EQ(curve.Impl().SegmentKind(i), static_cast<FSKind>(i % 3 + 1));
        }
        EXPECT_EQ(curve.Impl().FirstSegmentKind(), kLinear);
    }
}

TEST(HvFCurveStretcher, KeysKeepTheirWordsAndSelection)
{
    StdCurve curve = Tens();
    curve.SetSelected(1);
    curve.SetKeySelected(3u, 1);
    Lock(curve, 3, Word::kTangentLengthContinuityLocked | Word::kValueLocked);
    curve.Impl().keys[2].constraints.word = Word::kAutomaticTangents;
    curve.Impl().keys[3].privateByte1 = 7;
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(6), 1);
    EXPECT_EQ(curve.Impl().keys[2].constraints.word, Word::kAutomaticTangents);
    EXPECT_EQ(curve.Impl().keys[3].constraints.word, Word::kTangentContinuityLocked |
                                                         Word::kTangentLengthContinuityLocked |
                                                         Word::kValueLocked | Word::kSelected);
    EXPECT_EQ(curve.Impl().keys[3].privateByte1, 7);
    EXPECT_EQ(curve.Impl().keys[4].constraints.word, Word::kTangentContinuityLocked);
}

TEST(HvFCurveStretcher, LockedHandlesKeepWhatIsLocked)
{
    StdCurve curve = Tens();
    Lock(curve, 2, Word::kTangentLengthLocked);
    Lock(curve, 3, Word::kTangentDirectionLocked);
    Lock(curve, 4, Word::kTangentLengthContinuityLocked | Word::kTangentDirectionLocked);
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(10), 1);  // a scale of 2/3: (3, 1) becomes (2, 1)
    double const length = std::sqrt(10.0) / std::sqrt(5.0);
    ExpectVectors(curve, 2, {-2 * length, -length}, {2 * length, length});
    ExpectVectors(curve, 3, {-3 / length, -1 / length}, {3 / length, 1 / length});
    ExpectVectors(curve, 4, {-3, -1}, {3, 1});
}

TEST(HvFCurveStretcher, SegmentsStayValidWithTheDefaultConstraint)
{
    StdCurve curve = Tens();
    curve.SetDefaultBezierTangentConstraint(true);
    StretchArguments arguments = Middle();
    arguments.ripple = true;
    StretchDrag drag(curve, arguments);
    for (double const amount : {-20.0, 29.0, 5.0}) {
        EXPECT_EQ(drag.To(amount), 1);
        EXPECT_TRUE(EverySegmentRunsForward(curve));
        for (unsigned int i = 0; i < 6; ++i) {
            double const third = (curve.Impl().Parameter(i + 1) - curve.Impl().Parameter(i)) / 3;
            EXPECT_NEAR(curve.Impl().RightVector(i).x, third, kRounding);
            EXPECT_NEAR(curve.Impl().LeftVector(i + 1).x, -third, kRounding);
        }
    }
}

// Steps and what they tell.

TEST(HvFCurveStretcher, LimiterTellsWhatUpdateDoes)
{
    StdCurve curve = Tens();
    Lock(curve, 2, Word::kParameterLocked);
    StretchDrag drag(curve, Middle());
    for (double const amount : {-20.0, -1.0, 0.0, 3.0, 5.0, 29.99, 100.0}) {
        HvPoint2<double> vector(amount, 9);
        double scale = 0;
        std::string const image = StdImage(curve);
        bool const limited = drag.stretcher.ComputeScalingFactorAndTranslationVector(vector, scale);
        EXPECT_EQ(StdImage(curve), image);
        EXPECT_EQ(drag.To(amount), 1);
        EXPECT_EQ(drag.translation, vector);
        EXPECT_EQ(drag.limited != 0, limited);
        EXPECT_NEAR(curve.Impl().Parameter(4), 45 - 5 * scale, kRounding);
    }
}

TEST(HvFCurveStretcher, RepeatedStepChangesNothingAndTellsTheSame)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(7), 1);
    std::string const image = StdImage(curve);
    Numbers const after = ListOf(drag.after);
    EXPECT_EQ(drag.To(7), 1);
    EXPECT_EQ(StdImage(curve), image);
    EXPECT_EQ(ListOf(drag.before), after);
    EXPECT_EQ(ListOf(drag.after), after);
    EXPECT_EQ(drag.invalid.state, 0);
    EXPECT_EQ(drag.invalid.Contains(Point(after[1], 3)), 1);
}

TEST(HvFCurveStretcher, AnswersAreAppended)
{
    StdCurve curve = Tens();
    HvExtent2<double> region = Middle().region;
    HvFCurveStretcher stretcher(curve, region, HvDoubleArray(), HvExtent2<double>(), Point(45, 0),
                                kLeftHandle, 0, 0);
    HvDoubleArray before(-1.0, 1);
    HvDoubleArray after(-2.0, 1);
    HvExtent2<double> invalid(-500, -500, -500, -500);
    HvPoint2<double> translation(15, 0);
    int limited = 7;
    EXPECT_EQ(stretcher.Update(translation, std::nan(""), std::nan(""), before, after, invalid,
                               region, limited),
              1);
    EXPECT_EQ(ListOf(before), Numbers({-1, 20, 30, 40}));
    EXPECT_EQ(ListOf(after), Numbers({-2, 32.5, 37.5, 42.5}));
    EXPECT_EQ(invalid.min, Point(-500, -500));
    EXPECT_EQ(limited, 0);
}

TEST(HvFCurveStretcher, OutlineReachesTheViewWhereTheEndsOfTheCurveMove)
{
    StdCurve curve = Tens(13);
    StretchArguments arguments = Middle();
    arguments.region = HvExtent2<double>(55, -100, 65, 100);
    arguments.pivot.x = 65;
    StretchDrag inner(curve, arguments);
    EXPECT_EQ(inner.To(2), 1);
    EXPECT_GE(inner.invalid.min.x, 27) << "keys as far as tangents reach, with their handles";
    EXPECT_LE(inner.invalid.max.x, 93);
    EXPECT_EQ(inner.To(0), 1);

    arguments.region.min.x = -5;
    StretchDrag outer(curve, arguments);
    EXPECT_EQ(outer.To(-2), 1);
    EXPECT_EQ(outer.invalid.min.x, -1000);
    EXPECT_LE(outer.invalid.max.x, 93);
    outer.viewLeft = std::nan("");
    EXPECT_EQ(outer.To(-3), 1);
    EXPECT_GT(outer.invalid.min.x, -20);
    EXPECT_EQ(outer.To(0), 1);

    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    EXPECT_EQ(inner.To(2), 1);
    EXPECT_EQ(inner.invalid.min.x, -1000) << "what moves within is seen in every cycle";
    EXPECT_EQ(inner.invalid.max.x, 1000);
    EXPECT_EQ(inner.To(0), 1);

    curve.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);
    arguments.region = HvExtent2<double>(-5, -100, 1000, 100);
    arguments.handle = kTopHandle;
    arguments.pivot = Point(0, -100);
    StretchDrag values(curve, arguments);
    EXPECT_EQ(values.To(100), 1);
    EXPECT_EQ(values.invalid.min.x, -1000);
    EXPECT_EQ(values.invalid.max.x, 1000);
    // The lines at both ends, of a slope of 1/3 at first and of 1/2 then.
    EXPECT_NEAR(values.invalid.min.y, 50 - 1000 / 2.0, kSolver);
    EXPECT_NEAR(values.invalid.max.y, 68 + 880 / 2.0, kSolver);
}

TEST(HvFCurveStretcher, KeysThatAreGoneTakeNoPart)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(15), 1);
    curve.RemoveKey(37.5, 0);
    EXPECT_EQ(drag.To(-3), 1);
    EXPECT_EQ(Parameters(curve), Numbers({0, 10, 17.5, 39.5, 50, 60}));
    EXPECT_EQ(drag.after.Size(), 3u);
    curve.RemoveKeys(-100, 100, 0, 0);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(drag.To(5), 1);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(drag.stretcher.Finalize(), 1);
    EXPECT_EQ(curve.HasUserData(), 0);

    StdCurve values = Tens();
    StretchArguments arguments = Middle(kTopHandle);
    arguments.pivot = Point(0, -100);
    StretchDrag vertical(values, arguments);
    values.RemoveKey(30, 0);
    EXPECT_EQ(vertical.To(200), 1);
    EXPECT_EQ(Values(values), Numbers({0, 1, 104, 108, 5, 6}));
    values.RemoveKeys(-100, 100, 0, 0);
    EXPECT_EQ(vertical.To(100), 1);
}

// User data and the end of the drag.

TEST(HvFCurveStretcher, UserDataComeBackAtTheEnd)
{
    StdCurve curve = Tens();
    curve.SetUserDataSet(SetOf(1, "twenty"), 20);
    curve.SetUserDataSet(SetOf(1, "fifty"), 50);
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(15), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(32.5), 1), "none");
    EXPECT_EQ(drag.To(3), 1);
    EXPECT_EQ(drag.stretcher.Finalize(), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(22.5), 1), "twenty");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(50), 1), "fifty");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(20), 1), "none");
    curve.RemoveAllKeyUserData();
    EXPECT_EQ(drag.stretcher.Finalize(), 1) << "once is all";
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvFCurveStretcher, UserDataStayWithValues)
{
    StdCurve curve = Tens();
    curve.SetUserDataSet(SetOf(1, "twenty"), 20);
    StretchArguments arguments = Middle(kTopHandle);
    arguments.pivot = Point(0, -100);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(15), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(20), 1), "twenty");
}

TEST(HvFCurveStretcher, KeyThatIsGoneGetsNoUserData)
{
    StdCurve curve = Tens();
    curve.SetUserDataSet(SetOf(1, "twenty"), 20);
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(15), 1);
    curve.RemoveKey(32.5, 0);
    EXPECT_EQ(drag.stretcher.Finalize(), 1);
    EXPECT_EQ(curve.HasUserData(), 0);
}
