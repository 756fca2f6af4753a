// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Edges of a flattened curve: clipping, runs, flags.

#include "flattened.h"

#include <hv/fcurve/flatten_edges.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using Point = HvPoint2<double>;
using Points = std::vector<Point>;

HvExtent2<double> const kUnit(0, 0, 1, 1);

void AddLine(FlattenArrays& out, Point a, Point b, HvExtent2<double> const& clip = kUnit)
{
    ClipAndAddLineSegment(a, b, clip, out.points, out.tags, out.flags);
}

void AddJump(FlattenArrays& out, Point a, Point b, HvExtent2<double> const& clip = kUnit)
{
    ClipAndAddDiscontinuity(a, b, clip, out.points, out.tags, out.flags);
}

}  // namespace

TEST(flatten_edges, ChangesTheEndsToTheClippedOnes)
{
    FlattenArrays out;
    Point a(-1, 0.5);
    Point b(3, 0.5);
    ClipAndAddLineSegment(a, b, kUnit, out.points, out.tags, out.flags);
    EXPECT_EQ(a, Point(0, 0.5));
    EXPECT_EQ(b, Point(1, 0.5));
    EXPECT_EQ(out.Get().points, (Points{{0, 0.5}, {1, 0.5}}));
}

TEST(flatten_edges, LeaveEverythingOnAMiss)
{
    FlattenArrays out;
    AddLine(out, {0, 0}, {1, 1});
    Point a(2, 0);
    Point b(3, 1);
    ClipAndAddLineSegment(a, b, kUnit, out.points, out.tags, out.flags);
    ClipAndAddDiscontinuity(a, b, kUnit, out.points, out.tags, out.flags);
    EXPECT_EQ(a, Point(2, 0));
    EXPECT_EQ(b, Point(3, 1));
    EXPECT_EQ(out.Get().tags, std::vector<int>({0, 1}));
}

TEST(flatten_edges, GoOnFromTheLastPointByExactComparison)
{
    FlattenArrays out;
    AddLine(out, {0, 0}, {0.5, 0.5});
    AddLine(out, {0.5, 0.5}, {1, 1});
    AddLine(out, {1, 0.5}, {1, 0});
    EXPECT_EQ(out.Get().points, (Points{{0, 0}, {0.5, 0.5}, {1, 1}, {1, 0.5}, {1, 0}}));
    EXPECT_EQ(out.Get().tags, std::vector<int>({0, 1, 2, 0, 1}));
    EXPECT_EQ(out.Get().flags, std::vector<int>({1, 1, 1, 1, 1}));
}

TEST(flatten_edges, FlagWhereAJumpStarts)
{
    FlattenArrays first;
    AddJump(first, {0, 0}, {0, 1});
    EXPECT_EQ(first.Get().tags, std::vector<int>({0, 1}));
    EXPECT_EQ(first.Get().flags, std::vector<int>({0, 1}));

    FlattenArrays connected;
    AddLine(connected, {0, 0}, {0.5, 0});
    AddJump(connected, {0.5, 0}, {0.5, 1});
    EXPECT_EQ(connected.Get().tags, std::vector<int>({0, 1, 1}));
    EXPECT_EQ(connected.Get().flags, std::vector<int>({1, 0, 1}));

    FlattenArrays apart;
    AddLine(apart, {0, 0}, {0.5, 0});
    AddJump(apart, {0.5, 0.5}, {0.5, 1});
    EXPECT_EQ(apart.Get().tags, std::vector<int>({0, 2, 0, 1}));
    EXPECT_EQ(apart.Get().flags, std::vector<int>({1, 0, 0, 1}));
}

TEST(flatten_edges, DropEndsThatAreNotFinite)
{
    FlattenArrays out;
    double const inf = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    HvExtent2<double> plane;
    plane.state = HvExtent2<double>::WholePlane;
    for (double bad : {inf, -inf, nan}) {
        AddLine(out, {bad, 0}, {1, 1});
        AddLine(out, {0, 0}, {1, bad}, plane);
        AddJump(out, {0, bad}, {1, 1}, plane);
    }
    EXPECT_EQ(out.points.Size(), 0u);
}

TEST(flatten_edges, TakeEndsThatLieInTheArrayItself)
{
    FlattenArrays out;
    AddLine(out, {0, 0}, {1, 1});
    while (out.points.Size() != out.points.Capacity()) {
        AddLine(out, {0, 0}, {1, 1});
    }
    ClipAndAddLineSegment(out.points[0], out.points[1], kUnit, out.points, out.tags, out.flags);
    EXPECT_EQ(out.points[out.points.Size() - 1], Point(1, 1));
    EXPECT_EQ(out.points[out.points.Size() - 2], Point(0, 0));
}
