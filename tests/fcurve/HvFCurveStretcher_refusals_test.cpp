// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the curve stretcher refuses.

#include "stretch_scene.h"

#include <gtest/gtest.h>

#include <string>

TEST(HvFCurveStretcher_refusals, RegionWithoutKeysRefusesEverything)
{
    StdCurve curve = Tens();
    std::string const image = StdImage(curve);
    StretchArguments arguments = Middle();
    arguments.region = HvExtent2<double>(21, -100, 29, 100);
    arguments.pivot.x = 29;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(3), 0);
    EXPECT_EQ(drag.limited, 0);
    EXPECT_EQ(drag.translation, Point(3, 77)) << "left alone";
    EXPECT_EQ(drag.after.Size(), 0u);
    EXPECT_EQ(drag.invalid.state, 1);
    EXPECT_EQ(drag.stretcher.Finalize(), 0);
    HvPoint2<double> vector(3, 4);
    double scale = 5;
    EXPECT_FALSE(drag.stretcher.ComputeScalingFactorAndTranslationVector(vector, scale));
    EXPECT_EQ(vector, Point(0, 0));
    EXPECT_EQ(scale, 1);
    EXPECT_EQ(StdImage(curve), image);
}

TEST(HvFCurveStretcher_refusals, PivotOnTheDraggedSideMovesNothing)
{
    StdCurve curve = Tens();
    std::string const image = StdImage(curve);
    StretchArguments arguments = Middle();
    arguments.pivot.x = 15;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(3), 1);
    EXPECT_EQ(drag.limited, 1);
    EXPECT_EQ(drag.translation, Point(0, 0));
    EXPECT_EQ(StdImage(curve), image);
}

TEST(HvFCurveStretcher_refusals, ReadOnlyCurveStays)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(3), 1);
    curve.SetReadOnlyConstraint(1);
    std::string const image = StdImage(curve);
    EXPECT_EQ(drag.To(4), 0);
    EXPECT_EQ(drag.translation, Point(4, 77));
    EXPECT_EQ(StdImage(curve), image);
    curve.SetReadOnlyConstraint(0);
    EXPECT_EQ(drag.To(4), 1);
}

TEST(HvFCurveStretcher_refusals, WayThatIsNoNumberIsRefused)
{
    StdCurve curve = Tens();
    StretchDrag drag(curve, Middle());
    EXPECT_EQ(drag.To(3), 1);
    std::string const image = StdImage(curve);
    EXPECT_EQ(drag.To(std::nan("")), 0);
    EXPECT_EQ(drag.limited, 0);
    HvPoint2<double> vector(std::nan(""), 4);
    double scale = 5;
    EXPECT_FALSE(drag.stretcher.ComputeScalingFactorAndTranslationVector(vector, scale));
    EXPECT_EQ(vector, Point(0, 0));
    EXPECT_EQ(scale, 1);
    EXPECT_EQ(StdImage(curve), image);
    HvPoint2<double> other(3, std::nan(""));
    EXPECT_FALSE(drag.stretcher.ComputeScalingFactorAndTranslationVector(other, scale));
    EXPECT_EQ(other, Point(3, 0)) << "the other component does not count";
}

TEST(HvFCurveStretcher_refusals, WayWithoutEndStopsAtALimitOrIsRefused)
{
    for (double const amount : {-kInfinity, -1e308, -1.7976931348623157e308}) {
        StdCurve curve = Tens();
        std::string const image = StdImage(curve);
        StretchArguments arguments = Middle();
        arguments.ripple = true;
        arguments.pivot.x = 15 + 1e-6;
        StretchDrag drag(curve, arguments);
        EXPECT_EQ(drag.To(amount), 0) << "keys would be beyond all numbers";
        EXPECT_EQ(StdImage(curve), image);
        arguments.limits = HvExtent2<double>(-50, 0, 1e6, 0);
        StretchDrag limited(curve, arguments);
        EXPECT_EQ(limited.To(amount), 1);
        EXPECT_EQ(limited.limited, 1);
        EXPECT_TRUE(curve.Impl().IsValid());
        EXPECT_EQ(limited.To(0), 1);
        EXPECT_EQ(Parameters(curve), Numbers({0, 10, 20, 30, 40, 50, 60}));
    }
}

TEST(HvFCurveStretcher_refusals, KeysThatWouldFallOnOneAnotherAreRefused)
{
    // The listed key at 5 scales about 20, the one at 7 follows the side: they meet at a share of
    // 0.4, which is a way of 4.
    StdCurve curve({KeyAt(5, 0, 0, kCubic), KeyAt(7, 0, 0, kCubic), KeyAt(12, 0, 0, kCubic)});
    StretchArguments arguments = Middle();
    arguments.region = HvExtent2<double>(10, -1, 20, 1);
    arguments.pivot = Point(20, 0);
    arguments.listed = {5};
    arguments.ripple = true;
    StretchDrag drag(curve, arguments);
    EXPECT_EQ(drag.To(2), 1);
    EXPECT_EQ(Parameters(curve), Numbers({8, 9, 13.6}));
    std::string const image = StdImage(curve);
    EXPECT_EQ(drag.To(4), 0);
    EXPECT_EQ(drag.translation, Point(4, 77));
    EXPECT_EQ(StdImage(curve), image);
    EXPECT_EQ(drag.To(5), 1) << "one may pass the other";
    EXPECT_EQ(ListOf(drag.after), Numbers({12.5, 12, 16}));
    EXPECT_EQ(Parameters(curve), Numbers({12, 12.5, 16}));
    EXPECT_EQ(drag.To(0), 1);
    EXPECT_EQ(Parameters(curve), Numbers({5, 7, 12}));
}
