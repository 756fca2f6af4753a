// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A line of changing width, as polygons.

#include <tools/plot/stroke_ribbon.h>

#include <gtest/gtest.h>

using Point = HvPoint2<double>;

TEST(stroke_ribbon, WedgeHasItsWidthsAtBothEnds)
{
    Ribbon const ribbon = Ribbon_Make({{{0, 0}, 2}, {{10, 0}, 4}});
    std::vector<Point> const expected = {{0, 1}, {10, 2}, {10, -2}, {0, -1}};
    EXPECT_EQ(ribbon.outline, expected);
    ASSERT_EQ(ribbon.discs.size(), 2u);
    EXPECT_EQ(ribbon.discs[0].radius, 1.0);
    EXPECT_EQ(ribbon.discs[1].centre, Point(10, 0));
    EXPECT_EQ(ribbon.discs[1].radius, 2.0);
}

TEST(stroke_ribbon, CornersAreRoundedAndBendsAreNot)
{
    Ribbon const corner = Ribbon_Make({{{0, 0}, 2}, {{10, 0}, 2}, {{10, 10}, 2}});
    ASSERT_EQ(corner.discs.size(), 3u);
    EXPECT_EQ(corner.discs[1].centre, Point(10, 0));
    Ribbon const bend = Ribbon_Make({{{0, 0}, 2}, {{10, 0}, 2}, {{20, 1}, 2}});
    EXPECT_EQ(bend.discs.size(), 2u);
}

TEST(stroke_ribbon, PointsThatGoNowhereCountOnce)
{
    Ribbon const still = Ribbon_Make({{{3, 4}, 2}, {{3, 4}, 6}});
    EXPECT_TRUE(still.outline.empty());
    ASSERT_EQ(still.discs.size(), 1u);
    EXPECT_EQ(still.discs[0].radius, 1.0);
    EXPECT_EQ(Ribbon_Make({{{0, 0}, 2}, {{0, 0}, 2}, {{10, 0}, 2}}).outline.size(), 4u);
}
