// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How wide a stroke is at its points.

#include <tools/ToolError.h>
#include <tools/stroke/stroke_profile.h>

#include <gtest/gtest.h>

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
