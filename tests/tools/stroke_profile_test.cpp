// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How wide a stroke is along its path.

#include <tools/ToolError.h>
#include <tools/stroke/stroke_profile.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

// Points ten units apart on a line, a millisecond apart, but four behind its first quarter.
StrokeDocument Line(std::size_t count)
{
    StrokeDocument stroke;
    stroke.hasPressure = true;
    stroke.hasTime = true;
    double time = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        StrokePoint point;
        point.place = HvPoint2<float>(static_cast<float>(10 * i), 0);
        point.pressure = static_cast<double>(i) / static_cast<double>(count - 1);
        point.time = time;
        time += i < count / 4 ? 1.0 : 4.0;
        stroke.points.push_back(point);
    }
    return stroke;
}

StrokeFit Fit(StrokeDocument const& stroke)
{
    return StrokeFit_Make(stroke, {}, [](std::size_t) {});
}

}  // namespace

TEST(stroke_profile, PressureIsTakenAsItIs)
{
    std::vector<double> const widths = StrokeProfile_Widths(Line(11), StrokeWidth::Pressure);
    ASSERT_EQ(widths.size(), 11u);
    EXPECT_EQ(widths[0], 0.0);
    EXPECT_EQ(widths[5], 0.5);
    EXPECT_EQ(widths[10], 1.0);
}

TEST(stroke_profile, SpeedNarrowsTheLine)
{
    // Speeds of 10 and 2.5; most points are slow, so the median is 2.5.
    std::vector<double> const widths = StrokeProfile_Widths(Line(41), StrokeWidth::Speed);
    EXPECT_NEAR(widths[40], 0.5, 1e-12);
    EXPECT_NEAR(widths[0], 2.5 / 12.5, 1e-12);
    for (std::size_t i = 1; i < widths.size(); ++i) {
        EXPECT_GE(widths[i], widths[i - 1] - 1e-12);
    }
}

TEST(stroke_profile, PointsOfOneTimeKeepTheSpeedBefore)
{
    StrokeDocument stroke = Line(20);
    for (StrokePoint& point : stroke.points) {
        point.time = 7.0;
    }
    for (double const width : StrokeProfile_Widths(stroke, StrokeWidth::Speed)) {
        EXPECT_EQ(width, 1.0);
    }
}

TEST(stroke_profile, MissingColumnsAreRefused)
{
    StrokeDocument stroke = Line(3);
    stroke.hasPressure = false;
    stroke.hasTime = false;
    EXPECT_THROW(StrokeProfile_Widths(stroke, StrokeWidth::Pressure), ToolError);
    EXPECT_THROW(StrokeProfile_Widths(stroke, StrokeWidth::Speed), ToolError);
}

TEST(stroke_profile, FollowsTheWidthsOverTheLengthOfThePath)
{
    StrokeDocument const stroke = Line(41);
    StrokeFit const fit = Fit(stroke);
    std::vector<double> widths;
    for (std::size_t i = 0; i < stroke.points.size(); ++i) {
        widths.push_back(1.0 + std::sin(static_cast<double>(i) * 0.3));
    }
    HvRawFCurve const profile = StrokeProfile_Make(fit, widths);
    EXPECT_EQ(profile.Eval(0.0, 0), widths.front());
    EXPECT_NEAR(profile.Eval(fit.length, 0), widths.back(), 0.05);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        // 2 % of at most 2.
        EXPECT_NEAR(profile.Eval(fit.feet[i], 0), widths[i], 0.04 + 1e-9) << i;
    }
}

TEST(stroke_profile, FeetRiseToTheEndOfThePath)
{
    StrokeFit const fit = Fit(Line(41));
    EXPECT_EQ(fit.feet.front(), 0.0);
    EXPECT_NEAR(fit.feet.back(), fit.length, 1e-3);
    for (std::size_t i = 1; i < fit.feet.size(); ++i) {
        EXPECT_GE(fit.feet[i], fit.feet[i - 1]);
        EXPECT_NEAR(fit.feet[i], 10.0 * static_cast<double>(i), 1e-2);
    }
}
