// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stretching values: handles, jumps and the kinds of one value.

#include "stretch_scene.h"

#include "../support/curve_image.h"

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/HvRawFCurve.h>

#include <gtest/gtest.h>

#include <string>

// Values.

TEST(HvFCurveStretcher_values, ValuesInTheRegionScaleWithTheirHandles)
{
    StdCurve curve = Tens();
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(15, 1, 45, 5);
    arguments.pivot = Point(0, 1);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(4), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 1, 3, 5, 7, 5, 6}));
    EXPECT_EQ(Parameters(curve), Numbers({0, 10, 20, 30, 40, 50, 60}));
    EXPECT_EQ(drag.translation, Point(0, 4));
    EXPECT_EQ(drag.region.max, Point(45, 9));
    EXPECT_EQ(ListOf(drag.after), Numbers({20, 30, 40}));
    for (unsigned int const i : {2u, 3u, 4u}) {
        ExpectVectors(curve, i, {-3, -2}, {3, 2});
    }
    ExpectVectors(curve, 1, {-3, -1}, {3, 1});
    EXPECT_EQ(drag.To(-8), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 1, 0, -1, -2, 5, 6})) << "turned round about the pivot";
    ExpectVectors(curve, 3, {-3, 1}, {3, -1});
}

TEST(HvFCurveStretcher_values, DragOfValuesBackRestoresEveryBit)
{
    StdCurve curve = MixedCurve();
    curve.Impl().keys[1].leftHandle = Point(1.3, 0.7);
    std::string const image = StdImage(curve);
    StretchArguments arguments = Middle(kBottomHandle);
    arguments.region = HvExtent2<double>(-1, 0.1, 9, 3.3);
    arguments.pivot = Point(0, 2.7);
    arguments.ripple = true;
    StretchDrag drag(curve, arguments);
    for (double const amount : {0.3, -1.7, 0.9, 0.0}) {
        EXPECT_EQ(drag.To(amount), 1);
        EXPECT_TRUE(curve.Impl().IsValid());
    }
    EXPECT_EQ(StdImage(curve), image);
}

TEST(HvFCurveStretcher_values, OneValueOfAJumpScalesAlone)
{
    StdCurve curve({KeyWithHandles(0, 0, {-1, 0}, {1, 0}), KeyAt(2, 1, 7, kCubic),
                    KeyWithHandles(4, 0, {-1, 0}, {1, 0})});
    curve.Impl().keys[1].leftHandle = Point(1, 2);
    curve.Impl().keys[1].rightHandle = Point(3, 9);
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(1, 0, 3, 2);
    arguments.pivot = Point(0, 0);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(2), 1);
    EXPECT_EQ(curve.Impl().keys[1].leftValue, 2);
    EXPECT_EQ(curve.Impl().keys[1].rightValue, 7);
    ExpectVectors(curve, 1, {-1, 2}, {1, 2});

    arguments.ripple = true;
    StdCurve rippling({KeyAt(2, 1, 7, kCubic), KeyAt(3, -3, 1, kCubic)});
    StretchDrag ripple(rippling, arguments);
    EXPECT_EQ(ripple.To(2), 1);
    EXPECT_EQ(rippling.Impl().keys[0].leftValue, 2);
    EXPECT_EQ(rippling.Impl().keys[0].rightValue, 9) << "above the dragged side: by its way";
    EXPECT_EQ(rippling.Impl().keys[1].leftValue, -3) << "below the side that stays";
    EXPECT_EQ(rippling.Impl().keys[1].rightValue, 2);
}

TEST(HvFCurveStretcher_values, LockedValuesAndTheValueWhenNoKeysStay)
{
    StdCurve curve = Tens();
    curve.SetValueWhenNoKeys(77);
    Lock(curve, 0, Word::kValueLocked);
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(-5, 0.5, 100, 8);
    arguments.pivot = Point(0, 0.5);
    arguments.listed = {0, 10};
    arguments.ripple = true;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(7.5), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 1.5, 3.5, 5.5, 7.5, 9.5, 11.5}));
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 77);
}

TEST(HvFCurveStretcher_values, LockedHandlesKeepTheirLengthsInAStretchOfValues)
{
    StdCurve curve = Tens();
    Lock(curve, 2, Word::kTangentLengthLocked);
    Lock(curve, 3, Word::kTangentDirectionLocked);
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(15, 0, 45, 5);
    arguments.pivot = Point(0, 0);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(5), 1);  // (3, 1) becomes (3, 2)
    double const length = std::sqrt(10.0) / std::sqrt(13.0);
    ExpectVectors(curve, 2, {-3 * length, -2 * length}, {3 * length, 2 * length});
    ExpectVectors(curve, 3, {-3 / length, -1 / length}, {3 / length, 1 / length});
}

// The kinds of one value.

TEST(HvFCurveStretcher_values, IntegerValuesAndWaysAreWhole)
{
    HvIntegerFCurve curve(0);
    for (int i = 0; i < 4; ++i) {
        curve.CreateKey(10 * i, i);
    }
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(0, 0, 30, 4);
    arguments.pivot = Point(0, 0);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(2.9), 1);
    EXPECT_EQ(drag.translation, Point(0, 2));
    EXPECT_EQ(Values(curve), Numbers({0, 2, 3, 5})) << "1.5, 3 and 4.5, halves upwards";
    EXPECT_EQ(drag.To(-1.5), 1);
    EXPECT_EQ(drag.translation, Point(0, -2));
    EXPECT_EQ(Values(curve), Numbers({0, 1, 1, 2}));
    EXPECT_EQ(drag.To(0), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 1, 2, 3})) << "nothing is lost by rounding";
    EXPECT_EQ(drag.To(1e300), 1);
    EXPECT_EQ(drag.Used(), 2147483647.0);
    EXPECT_EQ(Values(curve)[2], 1073741826.0) << "2 * (4 + 2147483647) / 4 = 1073741825.5";
    HvPoint2<double> vector(3, 2.9);
    double scale = 0;
    EXPECT_FALSE(drag.stretcher.ComputeScalingFactorAndTranslationVector(vector, scale));
    EXPECT_EQ(vector, Point(0, 2));
    EXPECT_EQ(scale, 1.5);
}

TEST(HvFCurveStretcher_values, IntegerValuesStopAtTheEndsOfTheirRange)
{
    HvIntegerFCurve curve(0);
    curve.CreateKey(0, 1000000000);
    curve.CreateKey(10, -1000000000);
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(0, -2e9, 10, 2e9);
    arguments.pivot = Point(0, 0);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(2147483647), 1);
    EXPECT_EQ(Values(curve), Numbers({2073741824, -2073741823}));
    arguments.region.max.y = 1000000000;
    curve.SetKeyValue(0, kRight, 1000000000, 0);
    StretchDrag further(curve, arguments);
    EXPECT_EQ(further.To(2147483647), 1);
    EXPECT_EQ(Values(curve)[0], 2147483647.0);
}

TEST(HvFCurveStretcher_values, BooleanValuesChangeAtAHalf)
{
    HvBooleanFCurve curve(0);
    curve.CreateKey(0, 0);
    curve.CreateKey(10, 1);
    curve.CreateKey(20, 0);
    StretchArguments arguments = Middle(kTopHandle);
    arguments.region = HvExtent2<double>(0, 0, 30, 1);
    arguments.pivot = Point(0, 0);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(-0.5), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 1, 0}));
    EXPECT_EQ(drag.To(-0.6), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 0, 0}));
    EXPECT_EQ(drag.To(3), 1);
    EXPECT_EQ(Values(curve), Numbers({0, 1, 0}));
}

TEST(HvFCurveStretcher_values, SteppedCurveKeepsItsLeftValue)
{
    HvIntegerFCurve curve(0);
    curve.CreateKey(0, 5);
    curve.CreateKey(10, 6);
    curve.CreateKey(20, 7);
    curve.SetKeyValue(0, kLeft, 3, 0);
    std::string const image = CurveImage(curve);
    StretchArguments arguments = Middle();
    arguments.region = HvExtent2<double>(-5, -100, 25, 100);
    arguments.pivot = Point(25, 0);
    {
        StretchDrag drag(curve, arguments);
        EXPECT_EQ(drag.To(10), 1);
        EXPECT_EQ(curve.GetMinusInfinityVal(), 3);
        EXPECT_EQ(drag.To(0), 1);
    }
    EXPECT_EQ(CurveImage(curve), image);
    arguments.handle = kTopHandle;
    arguments.pivot = Point(0, -100);
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(20), 1);
    EXPECT_EQ(curve.GetMinusInfinityVal(), 3) << "the value before the first key is not the key's";
    EXPECT_EQ(Values(curve), Numbers({16, 17, 18}));
}

TEST(HvFCurveStretcher_values, RawSamplesScaleOnBothAxes)
{
    HvRawFCurve curve(0);
    for (int i = 0; i < 5; ++i) {
        curve.CreateKey(10 * i, i);
    }
    StretchArguments arguments = Middle();
    arguments.ripple = true;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(15), 1);
    EXPECT_EQ(Parameters(curve), Numbers({15, 25, 32.5, 37.5, 42.5}));
    EXPECT_EQ(Values(curve), Numbers({0, 1, 2, 3, 4}));
    arguments.region = HvExtent2<double>(0, 0, 100, 4);
    arguments.handle = kTopHandle;
    arguments.pivot = Point(0, 2);
    StretchDrag values(curve, arguments);
    EXPECT_EQ(values.To(-1), 1);
    EXPECT_EQ(Values(curve), Numbers({1, 1.5, 2, 2.5, 3}));
}
