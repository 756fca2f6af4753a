// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where outlines begin, which way they run, and what they enclose.

#include "play_documents.h"

#include <tools/play/evaluation/drawing.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using Point = HvPoint2<float>;

HvPath2f OutlineOf(std::string const& shape)
{
    Scene const scene = PlayScene(PlayDocument(PlayLayer(shape)));
    return Drawing_Of(std::get<SceneGroup>(scene.compositions[0].layers[0].content), 0)
        .outlines.front()
        .path;
}

/// Twice the area by the nodes; positive where the outline runs clockwise as seen on a screen.
double TwiceAreaOf(HvPath2f const& path)
{
    double area = 0.0;
    for (unsigned int i = 0; i + 1 < path.NumPoints();) {
        unsigned int const end = path.EndOfSegment(i + 1);
        area += HvPoint2_AdetB(path.GetPoint(i), path.GetPoint(end));
        i = end;
    }
    return area;
}

std::string Shape(std::string const& type, std::string const& more)
{
    return R"({"ty":")" + type + R"(","p":{"k":[10,20]},)" + more + "}";
}

}  // namespace

TEST(ShapeOutline, RectanglesRunClockwiseFromTheEndOfTheUpperSide)
{
    HvPath2f const path = OutlineOf(Shape("rc", R"("s":{"k":[8,4]})"));
    EXPECT_EQ(path.NumNodes(), 5u);
    EXPECT_EQ(path.GetPoint(0), Point(14, 18));
    EXPECT_EQ(path.GetPoint(1), Point(14, 22));
    EXPECT_DOUBLE_EQ(TwiceAreaOf(path), 64.0);
    EXPECT_NE(path.IsSubpathClosed(0), 0);
}

TEST(ShapeOutline, ReversedOutlinesBeginAtTheSamePoint)
{
    for (char const* shape : {R"("s":{"k":[8,4]})", R"("s":{"k":[8,4]},"r":{"k":1})"}) {
        HvPath2f const path = OutlineOf(Shape("rc", shape));
        HvPath2f const reversed = OutlineOf(Shape("rc", std::string(shape) + R"(,"d":3)"));
        EXPECT_EQ(reversed.GetPoint(0), path.GetPoint(0));
        EXPECT_DOUBLE_EQ(TwiceAreaOf(reversed), -TwiceAreaOf(path));
        EXPECT_NE(reversed.IsSubpathClosed(0), 0);
        EXPECT_EQ(reversed.NumPoints(), path.NumPoints());
    }
}

TEST(ShapeOutline, RoundCornersAreNoLargerThanHalfTheSide)
{
    HvPath2f const path = OutlineOf(Shape("rc", R"("s":{"k":[8,4]},"r":{"k":100})"));
    EXPECT_EQ(path.GetPoint(0), Point(14, 20)) << "the upper corner ends where the lower begins";
    HvExtent2<float> extent;
    path.GetTightExtent(extent);
    EXPECT_EQ(extent.min, Point(6, 18));
    EXPECT_EQ(extent.max, Point(14, 22));
}

TEST(ShapeOutline, EllipsesRunClockwiseFromTheTop)
{
    HvPath2f const path = OutlineOf(Shape("el", R"("s":{"k":[8,4]})"));
    EXPECT_EQ(path.NumSegments(), 4u);
    EXPECT_EQ(path.GetPoint(0), Point(10, 18));
    EXPECT_EQ(path.GetPoint(3), Point(14, 20));
    EXPECT_GT(TwiceAreaOf(path), 0.0);
}

TEST(ShapeOutline, StarsHaveOuterAndInnerPointsInTurn)
{
    HvPath2f const path =
        OutlineOf(Shape("sr", R"("pt":{"k":5},"or":{"k":8},"ir":{"k":3},"r":{"k":0})"));
    ASSERT_EQ(path.NumSegments(), 10u);
    EXPECT_NEAR(path.GetPoint(0).y, 12.0F, 1e-5F);
    for (unsigned int i = 0; i <= 10; ++i) {
        Point const p = path.GetPoint(3 * i);
        EXPECT_NEAR(std::hypot(p.x - 10, p.y - 20), i % 2 == 0 ? 8.0 : 3.0, 1e-5);
    }
    EXPECT_GT(path.GetPoint(6).x, 10.0F) << "clockwise";
}

TEST(ShapeOutline, APolygonOfFullRoundnessIsNearlyACircle)
{
    // Handles of a quarter of the circle's length over the points; of a circle they would be
    // 4/3 tan(pi / 2n), for 12 points 0.1755 against 0.1309 of the radius.
    HvPath2f const path =
        OutlineOf(Shape("sr", R"("sy":2,"pt":{"k":12},"or":{"k":8},"os":{"k":100},"r":{"k":0})"));
    ASSERT_EQ(path.NumSegments(), 12u);
    EXPECT_NEAR(HvPoint2_LengthAB(path.GetPoint(0), path.GetPoint(1)), 8.0 * std::acos(-1.0) / 24,
                1e-5);
}

TEST(ShapeOutline, StarsOfTooFewOrTooManyPoints)
{
    for (char const* count : {"-5", "0", "1", "0.9"}) {
        EXPECT_EQ(OutlineOf(Shape("sr", std::string(R"("or":{"k":8},"ir":{"k":3},"pt":{"k":)") +
                                            count + "}"))
                      .NumSegments(),
                  0u)
            << count;
    }
    EXPECT_EQ(OutlineOf(Shape("sr", R"("sy":2,"or":{"k":8},"pt":{"k":1e99})")).NumSegments(),
              1000u);
}
