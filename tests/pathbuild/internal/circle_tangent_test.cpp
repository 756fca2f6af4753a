// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tangent of a circle through three points.

#include <hv/pathbuild/internal/circle_tangent.h>

#include "../stroke_test_support.h"

TEST(circle_tangent, TurnsWithTheWalk)
{
    // A quarter of the unit circle, walked both ways; C is the last or the first point.
    StrokePoint const east(1, 0);
    StrokePoint const north(0, 1);
    float const h = std::sqrt(0.5f);
    StrokePoint const between(h, h);
    ExpectDirection(HvCircle_Tangent(east, between, north, HvWalk::ToEnd), -1, 0);
    ExpectDirection(HvCircle_Tangent(north, between, east, HvWalk::ToEnd), 0, -1);
    ExpectDirection(HvCircle_Tangent(north, between, east, HvWalk::FromStart), 0, 1);
    ExpectDirection(HvCircle_Tangent(east, between, north, HvWalk::FromStart), 1, 0);
}

TEST(circle_tangent, PointsInLineGiveTheStep)
{
    ExpectDirection(HvCircle_Tangent({0, 0}, {3, 4}, {6, 8}, HvWalk::ToEnd), 0.6, 0.8);
    ExpectDirection(HvCircle_Tangent({0, 0}, {3, 4}, {6, 8}, HvWalk::FromStart), -0.6, -0.8);
}

TEST(circle_tangent, RepeatedPointsGiveTheStepThatIsLeft)
{
    EXPECT_EQ(HvCircle_Tangent({1, 2}, {1, 2}, {6, 8}, HvWalk::ToEnd), StrokePoint());
    EXPECT_EQ(HvCircle_Tangent({1, 2}, {1, 2}, {1, 2}, HvWalk::ToEnd), StrokePoint());
    ExpectDirection(HvCircle_Tangent({0, 0}, {3, 4}, {3, 4}, HvWalk::ToEnd), -0.6, -0.8);
}

TEST(circle_tangent, WalkBackToTheFirstPointGivesTheStep)
{
    ExpectDirection(HvCircle_Tangent({0, 0}, {10, 0}, {0, 0}, HvWalk::ToEnd), -1, 0);
}
