// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tight extent of a cubic.

#include <hv/bezier/HvBezierTool_extent.h>

#include "cubic_test_support.h"

#include <gtest/gtest.h>

namespace {

using Extent = HvExtent2<double>;

Point2 const kArch[4] = {{0, 0}, {0, 64}, {64, 64}, {64, 0}};

}  // namespace

TEST(HvBezierTool_extent, IsTheBoxOfTheQuarters)
{
    // By hand: the middle point is (32, 48), the halves' control points reach y = 48, those of the
    // quarters too.
    Extent extent;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(extent, kArch, 0);
    EXPECT_EQ(extent.state, Extent::Ordinary);
    EXPECT_EQ(extent.min, Point2(0, 0));
    EXPECT_EQ(extent.max, Point2(64, 48));
    // Lopsided: y = 0, 0, 64, 0. Halving gives 0 0 16 24 | 24 32 32 0, and halving the right half
    // 24 28 30 27 | 27 24 16 0, so the greatest is 30; the curve's own maximum is 64 * 4 / 9
    // = 28.4.
    Point2 const lopsided[4] = {{0, 0}, {1, 0}, {2, 64}, {3, 0}};
    Extent other;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(other, lopsided, 0);
    EXPECT_EQ(other.max.y, 30.0);
}

TEST(HvBezierTool_extent, LeavesOutTheFirstPointWhenTold)
{
    Extent extent;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(extent, kArch, 1);
    EXPECT_EQ(extent.min, Point2(0, 0));  // P3.y and P01.x: (0, 16) is the first that counts
    Point2 const rising[4] = {{0, 0}, {16, 16}, {32, 32}, {48, 48}};
    Extent line;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(line, rising, 1);
    EXPECT_EQ(line.min, Point2(4, 4));
    EXPECT_EQ(line.max, Point2(48, 48));
}

TEST(HvBezierTool_extent, GrowsByItsState)
{
    Extent grown(-1, 10, 5, 20);
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(grown, kArch, 0);
    EXPECT_EQ(grown.min, Point2(-1, 0));
    EXPECT_EQ(grown.max, Point2(64, 48));
    Extent plane(1, 2, 3, 4);
    plane.state = Extent::WholePlane;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(plane, kArch, 0);
    EXPECT_EQ(plane.state, Extent::WholePlane);
    EXPECT_EQ(plane.min, Point2(1, 2));
    EXPECT_EQ(plane.max, Point2(3, 4));
    // What an empty extent holds means nothing.
    Extent empty(-9, -9, 99, 99);
    empty.state = Extent::Empty;
    HvBezierTool_AugmentExtentWithCubic2dTightExtent(empty, kArch, 0);
    EXPECT_EQ(empty.max, Point2(64, 48));
}

TEST(HvBezierTool_extent, HoldsTheCurveWithinTheBoxOfItsControls)
{
    RandomCurves random(8);
    for (int round = 0; round < 300; ++round) {
        Point2 p[4];
        random.Fill(p, 4, random.Scale(-40, 40));
        Extent extent;
        HvBezierTool_AugmentExtentWithCubic2dTightExtent(extent, p, 0);
        Extent controls;
        for (Point2 const& q : p) {
            controls.Augment(q);
        }
        EXPECT_TRUE(controls.Contains(extent.min) && controls.Contains(extent.max));
        double const rounding = Magnitude(p, 4) * 1e-15;
        Extent const wider(extent.min.x - rounding, extent.min.y - rounding,
                           extent.max.x + rounding, extent.max.y + rounding);
        for (int i = 0; i <= 64; ++i) {
            EXPECT_TRUE(wider.Contains(CubicAt(p, i / 64.0)));
        }
    }
}

TEST(HvBezierTool_extent, AveragesInFloatInTheFloatForm)
{
    // 1 + 2^-23 and 1: their sum 2 + 2^-23 rounds to 2 in float, so that every average is 1.
    float const above = 1.0f + 1.1920929e-7f;
    HvPoint2<float> const p[4] = {{1, 0}, {above, 0}, {above, 0}, {1, 0}};
    HvExtent2<float> extent;
    HvBezierTool_AugmentExtentWithCubic2fTightExtent(extent, p, 0);
    // P12 is above itself, P012 and P123 are averages of 1 and above, rounded to even: 1.
    EXPECT_EQ(extent.min.x, 1.0f);
    EXPECT_EQ(extent.max.x, 1.0f);
    HvExtent2<float> whole;
    HvPoint2<float> const arch[4] = {{0, 0}, {0, 64}, {64, 64}, {64, 0}};
    HvBezierTool_AugmentExtentWithCubic2fTightExtent(whole, arch, 0);
    EXPECT_EQ(whole.max.y, 48.0f);
}
