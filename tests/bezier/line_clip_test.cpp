// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Clipping of a line segment to a rectangle.

#include <hv/bezier/line_clip.h>

#include "cubic_test_support.h"

#include <gtest/gtest.h>

namespace {

using Extent = HvExtent2<double>;

struct Clipped {
    int visible;
    Point2 a;
    Point2 b;

    Clipped(Point2 from, Point2 to, Extent const& clip) : visible(0), a(from), b(to)
    {
        visible = HvLineClip_Clip(a, b, clip);
        EXPECT_EQ(HvLineClip_Meets(from, to, clip), visible);
    }
};

Extent const kSquare(0, 0, 10, 10);

}  // namespace

TEST(line_clip, KeepsASegmentInside)
{
    Clipped const c({0, 0}, {10, 7}, kSquare);
    EXPECT_EQ(c.visible, 1);
    EXPECT_EQ(c.a, Point2(0, 0));
    EXPECT_EQ(c.b, Point2(10, 7));
}

TEST(line_clip, CutsAtEachSide)
{
    struct {
        Point2 from, to, a, b;
    } const rows[] = {{{-10, 4}, {5, 4}, {0, 4}, {5, 4}},    {{5, 4}, {20, 4}, {5, 4}, {10, 4}},
                      {{4, -10}, {4, 5}, {4, 0}, {4, 5}},    {{4, 5}, {4, 20}, {4, 5}, {4, 10}},
                      {{-5, 3}, {15, 7}, {0, 4}, {10, 6}},   {{15, 7}, {-5, 3}, {10, 6}, {0, 4}},
                      {{3, -5}, {7, 15}, {4, 0}, {6, 10}},   {{7, 15}, {3, -5}, {6, 10}, {4, 0}},
                      {{-2, 4}, {4, -2}, {0, 2}, {2, 0}},    {{4, -2}, {-2, 4}, {2, 0}, {0, 2}},
                      {{-4, -4}, {12, 12}, {0, 0}, {10, 10}}};
    for (auto const& row : rows) {
        Clipped const c(row.from, row.to, kSquare);
        EXPECT_EQ(c.visible, 1);
        EXPECT_EQ(c.a, row.a) << row.from.x << ' ' << row.from.y;
        EXPECT_EQ(c.b, row.b) << row.from.x << ' ' << row.from.y;
    }
}

TEST(line_clip, LeavesTheEndsOfAMissAlone)
{
    struct {
        Point2 from, to;
    } const rows[] = {{{-5, 2}, {-1, 9}},  {{11, 2}, {12, 9}}, {{2, -5}, {9, -1}},
                      {{2, 11}, {9, 12}},  {{-5, 4}, {4, 16}}, {{-3, -3}, {-3, -3}},
                      {{-1, -4}, {-1, 4}}, {{6, -5}, {16, 5}}};
    for (auto const& row : rows) {
        Clipped const c(row.from, row.to, kSquare);
        EXPECT_EQ(c.visible, 0);
        EXPECT_EQ(c.a, row.from);
        EXPECT_EQ(c.b, row.to);
    }
}

TEST(line_clip, KeepsATouchAsTwoEqualEnds)
{
    // An end on the border with the rest outside, a corner passed by, a corner met end on.
    struct {
        Point2 from, to, at;
    } const rows[] = {{{-4, 5}, {0, 5}, {0, 5}},
                      {{10, 5}, {14, 5}, {10, 5}},
                      {{-4, 4}, {4, -4}, {0, 0}},
                      {{6, 14}, {14, 6}, {10, 10}},
                      {{-4, -4}, {0, 0}, {0, 0}}};
    for (auto const& row : rows) {
        Clipped const c(row.from, row.to, kSquare);
        EXPECT_EQ(c.visible, 1);
        EXPECT_EQ(c.a, row.at);
        EXPECT_EQ(c.b, row.at);
    }
}

TEST(line_clip, KeepsThePointInside)
{
    Clipped const inside({3, 4}, {3, 4}, kSquare);
    EXPECT_EQ(inside.visible, 1);
    EXPECT_EQ(inside.a, Point2(3, 4));
}

TEST(line_clip, CopiesTheCoordinateOfTheSideExactly)
{
    RandomCurves random(5);
    Extent const clip(0.1, -0.7, 0.9, 0.3);
    for (int round = 0; round < 2000; ++round) {
        Point2 p[2];
        random.Fill(p, 2, 2.0);
        Clipped const c(p[0], p[1], clip);
        if (c.visible == 0) {
            continue;
        }
        for (Point2 const& q : {c.a, c.b}) {
            bool const own = q == p[0] || q == p[1];
            EXPECT_TRUE(own || q.x == 0.1 || q.x == 0.9 || q.y == -0.7 || q.y == 0.3);
        }
    }
}

TEST(line_clip, TakesTheFirstSideAtACorner)
{
    // Minimum x and minimum y are both met at 1/49, which times 49 is not 1: the side that counts
    // has its coordinate exactly, the other one is interpolated.
    double const below = (1.0 / 49.0) * 49.0;
    ASSERT_LT(below, 1.0);
    Clipped const entering({-1, 0}, {48, 49}, Extent(0, 1, 99, 99));
    ASSERT_EQ(entering.visible, 1);
    EXPECT_EQ(entering.a, Point2(0, below));
    // Maximum x before maximum y where the segment leaves.
    Clipped const leaving({0, 0}, {49, 49}, Extent(-9, -9, 1, 1));
    ASSERT_EQ(leaving.visible, 1);
    EXPECT_EQ(leaving.b, Point2(1, below));
}

TEST(line_clip, FollowsTheStateOfTheClip)
{
    Extent empty = kSquare;
    empty.state = Extent::Empty;
    Extent plane = kSquare;
    plane.state = Extent::WholePlane;
    EXPECT_EQ(Clipped({1, 1}, {2, 2}, empty).visible, 0);
    Clipped const c({-100, 1}, {200, 2}, plane);
    EXPECT_EQ(c.visible, 1);
    EXPECT_EQ(c.a, Point2(-100, 1));
    EXPECT_EQ(c.b, Point2(200, 2));
}

TEST(line_clip, DropsWhatIsNotFinite)
{
    Extent plane;
    plane.state = Extent::WholePlane;
    for (double const value : {kNaN, kInfinity, -kInfinity}) {
        for (Extent const& clip :
             {kSquare, plane, Extent(-kInfinity, -kInfinity, kInfinity, kInfinity)}) {
            EXPECT_EQ(Clipped({value, 1}, {2, 2}, clip).visible, 0);
            EXPECT_EQ(Clipped({1, value}, {2, 2}, clip).visible, 0);
            EXPECT_EQ(Clipped({1, 1}, {value, 2}, clip).visible, 0);
            EXPECT_EQ(Clipped({1, 1}, {2, value}, clip).visible, 0);
        }
    }
}

TEST(line_clip, FindsNothingInAClipWithoutOrder)
{
    EXPECT_EQ(Clipped({-5, -5}, {15, 15}, Extent(10, 0, 0, 10)).visible, 0);
    EXPECT_EQ(Clipped({-5, -5}, {15, 15}, Extent(0, 10, 10, 0)).visible, 0);
    EXPECT_EQ(Clipped({5, 5}, {6, 6}, Extent(10, 10, 0, 0)).visible, 0);
    for (int side = 0; side < 4; ++side) {
        double s[4] = {0, 0, 10, 10};
        s[side] = kNaN;
        EXPECT_EQ(Clipped({-5, -5}, {15, 15}, Extent(s[0], s[1], s[2], s[3])).visible, 0);
        EXPECT_EQ(Clipped({5, 5}, {6, 6}, Extent(s[0], s[1], s[2], s[3])).visible, 0);
    }
}

TEST(line_clip, NeverCutsAtAnUnlimitedSide)
{
    for (double const far : {kInfinity, kGreatest}) {
        Extent const strip(2, -far, 4, far);
        Clipped const c({0, -kGreatest}, {8, kGreatest}, strip);
        EXPECT_EQ(c.visible, 1);
        EXPECT_EQ(c.a.x, 2.0);
        EXPECT_EQ(c.b.x, 4.0);
        // A quarter and a half of the way from -max to max.
        EXPECT_DOUBLE_EQ(c.a.y, -kGreatest / 2);
        EXPECT_NEAR(c.b.y / kGreatest, 0.0, 1e-15);
    }
    Clipped const beyond({0, 0}, {1, 1}, Extent(kInfinity, 0, kInfinity, 1));
    EXPECT_EQ(beyond.visible, 0);
}

TEST(line_clip, GivesTheSamePieceAtEveryScale)
{
    // Powers of two scale exactly, also where the products of coordinates leave the exponent range.
    Point2 const from(-3, 1);
    Point2 const to(9, 13);
    Clipped const plain(from, to, Extent(-1, -5, 7, 9));
    ASSERT_EQ(plain.visible, 1);
    for (int e = -1000; e <= 1000; e += 100) {
        double const s = std::ldexp(1.0, e);
        Clipped const c(from * s, to * s, Extent(-s, -5 * s, 7 * s, 9 * s));
        ASSERT_EQ(c.visible, 1) << e;
        EXPECT_EQ(c.a, plain.a * s) << e;
        EXPECT_EQ(c.b, plain.b * s) << e;
        Clipped const miss(Point2(-3, 7) * s, Point2(1, 13) * s, Extent(-s, -5 * s, 7 * s, 9 * s));
        EXPECT_EQ(miss.visible, 0) << e;
        // One axis alone.
        Clipped const wide({-3 * s, 1}, {9 * s, 13}, Extent(-s, -5, 7 * s, 9));
        ASSERT_EQ(wide.visible, 1) << e;
        EXPECT_EQ(wide.a, Point2(plain.a.x * s, plain.a.y)) << e;
        EXPECT_EQ(wide.b, Point2(plain.b.x * s, plain.b.y)) << e;
    }
}

TEST(line_clip, AgreesWithClippingHalfPlaneByHalfPlane)
{
    RandomCurves random(6);
    Extent const clip(-1, -2, 3, 1);
    for (int round = 0; round < 5000; ++round) {
        Point2 p[2];
        random.Fill(p, 2, 5.0);
        long double enter = 0;
        long double leave = 1;
        long double const from[4] = {p[0].x, -p[0].x, p[0].y, -p[0].y};
        long double const to[4] = {p[1].x, -p[1].x, p[1].y, -p[1].y};
        long double const limit[4] = {-1, -3, -2, -1};
        for (int side = 0; side < 4; ++side) {
            long double const t = (limit[side] - from[side]) / (to[side] - from[side]);
            if (to[side] > from[side]) {
                enter = std::fmax(enter, t);
            } else {
                leave = std::fmin(leave, t);
            }
        }
        Clipped const c(p[0], p[1], clip);
        ASSERT_EQ(c.visible, enter <= leave ? 1 : 0);
        if (c.visible != 0) {
            Point2 const d = p[1] - p[0];
            // Coordinates up to 5, a few roundings.
            EXPECT_LT(Length(c.a - (p[0] + d * double(enter))), 1e-14);
            EXPECT_LT(Length(c.b - (p[0] + d * double(leave))), 1e-14);
        }
    }
}
