// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The picture of a motion path: what is in it.

#include <tools/ToolError.h>
#include <tools/plot/path_plot.h>

#include <gtest/gtest.h>

#include <string>

namespace {

int Count(std::string const& text, std::string const& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

std::string Draw(HvMotionPath3d const& path, double step,
                 HvMotionPath3d::Projection plane = HvMotionPath3d::ProjectionXY)
{
    return PathPlot_Draw(path, plane, step, {"title", "subtitle", "frame"});
}

HvMotionPath3d Arc()
{
    return HvMotionPath3d({0, 0, 0}, {10, 0, 5}, 0, 10, {3, 6, 1}, {7, 6, 2});
}

}  // namespace

TEST(path_plot, HasATickForEachStepAndASampleInTheLegend)
{
    EXPECT_EQ(Count(Draw(Arc(), 1), "class=\"tick\""), 11 + 1);
    EXPECT_EQ(Count(Draw(Arc(), 3), "class=\"tick\""), 4 + 1);
    EXPECT_EQ(Count(Draw(Arc(), 100), "class=\"tick\""), 1 + 1) << "at frame 0";
    EXPECT_NE(Draw(Arc(), 1).find("every frame"), std::string::npos);
    EXPECT_NE(Draw(Arc(), 2.5).find("every 2.5 frames"), std::string::npos);
}

TEST(path_plot, StandstillIsADot)
{
    HvMotionPath3d path = Arc();
    path.SetRightTangentInfo(0, HvMotionPath3d::TangentStep);
    std::string const svg = Draw(path, 1);
    EXPECT_EQ(Count(svg, "class=\"dot\""), 10) << "all but the jump";
    EXPECT_EQ(Count(svg, "<polyline class=\"jump\""), 1);
    EXPECT_EQ(Count(svg, "<polyline class=\"curve\""), 0);
    EXPECT_EQ(Count(svg, "class=\"handle\""), 0) << "it does not travel along them";
}

TEST(path_plot, HasNodesAndHandles)
{
    HvMotionPath3d path = Arc();
    path.Lineto({20, 0, 0}, 12);
    std::string const svg = Draw(path, 1);
    EXPECT_EQ(Count(svg, "class=\"key\""), 3 + 1);
    EXPECT_EQ(Count(svg, "<polyline class=\"curve\""), 2);
    EXPECT_EQ(Count(svg, "class=\"handle\""), 3 + 1) << "a line has its two at its end";
}

TEST(path_plot, PlanesKeepTheirTwoAxes)
{
    std::string const xy = Draw(Arc(), 1);
    std::string const xz = Draw(Arc(), 1, HvMotionPath3d::ProjectionXZ);
    std::string const yz = Draw(Arc(), 1, HvMotionPath3d::ProjectionYZ);
    EXPECT_NE(xy, xz);
    EXPECT_NE(xz, yz);
    EXPECT_NE(yz.find(">y</text>"), std::string::npos);
    EXPECT_NE(yz.find(">z</text>"), std::string::npos);
    EXPECT_EQ(yz.find(">x</text>"), std::string::npos);
}

TEST(path_plot, PathsWithoutExtentAreDrawn)
{
    HvMotionPath3d single;
    single.Moveto({1, 2, 3}, 4);
    EXPECT_NE(Draw(single, 1).find("</svg>"), std::string::npos);
    HvMotionPath3d const still({1, 2, 3}, {1, 2, 3}, 0, 1);
    EXPECT_NE(Draw(still, 0.25).find("</svg>"), std::string::npos);
    HvMotionPath3d const far({1e100, -1e100, 0}, {-1e100, 1e100, 0}, 0, 1);
    EXPECT_EQ(Draw(far, 0.25).find("nan"), std::string::npos);
}

TEST(path_plot, RoundStepGivesAboutAHundredTicks)
{
    EXPECT_EQ(PathPlot_TickStep(HvMotionPath3d({}, {1, 0, 0}, 0, 100)), 1);
    EXPECT_EQ(PathPlot_TickStep(HvMotionPath3d({}, {1, 0, 0}, 0, 1)), 0.01);
    EXPECT_EQ(PathPlot_TickStep(HvMotionPath3d({}, {1, 0, 0}, 0, 1000)), 10);
    HvMotionPath3d single;
    single.Moveto({}, 5);
    EXPECT_GT(PathPlot_TickStep(single), 0);
}

TEST(path_plot, TooManyTicksAreRefused)
{
    EXPECT_THROW(Draw(Arc(), 1e-9), ToolError);
    EXPECT_THROW(Draw(Arc(), 1e-320), ToolError);
}
