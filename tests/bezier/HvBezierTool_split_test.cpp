// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Splitting of cubics.

#include <hv/bezier/HvBezierTool_split.h>
#include <hv/bezier/cubic_split.h>

#include "cubic_test_support.h"

#include <gtest/gtest.h>

TEST(HvBezierTool_split, GivesTheFiveInnerPointsAtOneHalf)
{
    // By hand: P01 = (0, 4, 1), P12 = (4, 8, 2), P23 = (8, 4, 3), P012 = (2, 6, 1.5), P123 = (6,
    // 6, 2.5).
    Point3 const p[4] = {{0, 0, 0}, {0, 8, 2}, {8, 8, 2}, {8, 0, 4}};
    Point3 out[5];
    HvBezierTool_SplitCubic3d(p, out, 0.5);
    EXPECT_EQ(out[0], Point3(0, 4, 1));
    EXPECT_EQ(out[1], Point3(2, 6, 1.5));
    EXPECT_EQ(out[2], Point3(4, 6, 2));
    EXPECT_EQ(out[3], Point3(6, 6, 2.5));
    EXPECT_EQ(out[4], Point3(8, 4, 3));
}

TEST(HvBezierTool_split, InterpolatesFromTheFirstPointOn)
{
    // (b - a) * t + a, not a * (1 - t) + b * t: with a = 1 and b = 1e-30 the difference is -1
    // exactly, so that t = 1 gives 0.
    Point3 const p[4] = {{1, 0, 0}, {1e-30, 0, 0}, {1e-30, 0, 0}, {1e-30, 0, 0}};
    Point3 out[5];
    HvBezierTool_SplitCubic3d(p, out, 1.0);
    EXPECT_EQ(out[0].x, 0.0);
    EXPECT_EQ(out[4].x, 1e-30);
    HvBezierTool_SplitCubic3d(p, out, 0.0);
    EXPECT_EQ(out[0].x, 1.0);
    EXPECT_EQ(out[2].x, 1.0);
}

TEST(HvBezierTool_split, WritesOverItsOwnCubic)
{
    Point3 const p[4] = {{0, 1, 2}, {3, 5, 7}, {11, 13, 17}, {19, 23, 29}};
    Point3 expected[5];
    HvBezierTool_SplitCubic3d(p, expected, 0.3);
    Point3 block[6] = {p[0], p[1], p[2], p[3]};
    HvBezierTool_SplitCubic3d(block, block, 0.3);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(block[i], expected[i]);
    }
    Point3 shifted[6] = {p[0], p[1], p[2], p[3]};
    HvBezierTool_SplitCubic3d(shifted, shifted + 1, 0.3);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(shifted[i + 1], expected[i]);
    }
}

TEST(HvBezierTool_split, GivesTwoCubicsThatTraceTheWhole)
{
    RandomCurves random(4);
    for (int round = 0; round < 200; ++round) {
        Point2 p[4];
        random.Fill(p, 4, 10.0);
        double const t = random.Uniform(0.0, 1.0);
        Point2 left[4];
        Point2 right[4];
        HvCubic_Split(p, t, left, right);
        EXPECT_EQ(left[0], p[0]);
        EXPECT_EQ(right[3], p[3]);
        EXPECT_EQ(left[3], right[0]);
        for (int k = 0; k <= 4; ++k) {
            double const u = k / 4.0;
            // A few roundings of numbers up to 10.
            EXPECT_LT(Length(CubicAt(left, u) - CubicAt(p, t * u)), 1e-13);
            EXPECT_LT(Length(CubicAt(right, u) - CubicAt(p, t + (1 - t) * u)), 1e-13);
        }
    }
}

TEST(HvBezierTool_split, HalvesByAverages)
{
    HvPoint2<float> const p[4] = {{0, 0}, {0, 8}, {8, 8}, {8, 0}};
    HvPoint2<float> halves[7];
    HvCubic_Halve(p, halves);
    HvPoint2<float> const expected[7] = {{0, 0}, {0, 4}, {2, 6}, {4, 6}, {6, 6}, {8, 4}, {8, 0}};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(halves[i], expected[i]);
    }
    // The average of a number with itself is the number, also where an interpolation would round.
    Point2 const still[4] = {{0.1, 1e300}, {0.1, 1e300}, {0.1, 1e300}, {0.1, 1e300}};
    Point2 both[7];
    HvCubic_Halve(still, both);
    for (Point2 const& q : both) {
        EXPECT_EQ(q, still[0]);
    }
}
