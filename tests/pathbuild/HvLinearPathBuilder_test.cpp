// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as polylines.

#include <hv/pathbuild/HvLinearPathBuilder.h>

#include "stroke_test_support.h"
#include <hv/pathbuild/stroke_sampling.h>

namespace {

// A linear builder on a path of its own; gap 0.5, flatness 1, spacing 1.
struct Pen {
    HvGC gc;
    HvPath2f path = HvPath2f(4u);
    OpenLinear builder = OpenLinear(gc, &path);

    void Add(std::vector<StrokePoint> const& points, int force = 0)
    {
        for (StrokePoint const& p : points) {
            builder.AddInputPoint(p, force);
        }
    }
};

}  // namespace

// Input.

TEST(HvLinearPathBuilder, ZigzagIsCutWhereThePenTurns)
{
    Pen pen;
    OpenLinear& b = pen.builder;
    b.StartSubpath({0, 0});
    pen.Add({{4, 0}});
    EXPECT_EQ(b.pending, StrokePoint(4, 0));
    EXPECT_EQ(b.direction, StrokePoint(1, 0));
    EXPECT_EQ(b.input.Size(), 1u);

    pen.Add({{4, 3}});  // off the line by 3
    ExpectPoints(ToVector(b.input), {{0, 0}, {4, 0}}, 0.0);
    EXPECT_EQ(b.pending, StrokePoint(4, 3));
    EXPECT_EQ(b.direction, StrokePoint(0, 1));

    pen.Add({{8, 3}});
    EXPECT_EQ(b.input[2], StrokePoint(4, 3));
    EXPECT_EQ(b.direction, StrokePoint(1, 0));

    pen.Add({{8.4f, 3.4f}});  // near the one held back: takes its place
    EXPECT_EQ(b.input.Size(), 3u);
    EXPECT_EQ(b.pending, StrokePoint(8.4f, 3.4f));
    ExpectDirection(b.direction, 4.4 / std::hypot(4.4, 0.4), 0.4 / std::hypot(4.4, 0.4));

    pen.Add({{12, 3}});  // off by 0.72
    EXPECT_EQ(b.input[3], StrokePoint(8.4f, 3.4f));
    EXPECT_EQ(b.pending, StrokePoint(12, 3));

    b.GetTrailingSamples();
    ExpectPoints(ToVector(b.input), {{0, 0}, {3, 0.75f}, {5.1f, 2.35f}, {8.2f, 3.2f}, {12, 3}},
                 1e-6);
    EXPECT_EQ(PointsOf(pen.path), ToVector(b.input));
    EXPECT_EQ(b.hasPending, 0);
    EXPECT_EQ(b.processedIndex, 4u);
}

TEST(HvLinearPathBuilder, StraightRunIsOneLine)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}, {20, 0.4f}, {30, -0.4f}, {31, 0.49f}});
    EXPECT_EQ(pen.builder.input.Size(), 1u);
    EXPECT_EQ(pen.builder.pending, StrokePoint(31, 0.49f));
    EXPECT_EQ(pen.builder.direction, StrokePoint(1, 0));  // that of the first step
    pen.Add({{40, 0.5f}});                                // half of the flatness is off the line
    EXPECT_EQ(pen.builder.input.Size(), 2u);
}

TEST(HvLinearPathBuilder, ReversalOnTheLineIsAVertex)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}, {5, 0}});
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {10, 0}}, 0.0);
    EXPECT_EQ(pen.builder.direction, StrokePoint(-1, 0));
}

TEST(HvLinearPathBuilder, GapIsExceededStrictlyOnEitherAxis)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{0.5f, 0.5f}, {-0.5f, -0.5f}, {0, 0}});
    EXPECT_EQ(pen.builder.hasPending, 0);
    pen.Add({{0, std::nextafter(0.5f, 1.0f)}});
    EXPECT_EQ(pen.builder.hasPending, 1);
}

TEST(HvLinearPathBuilder, PointNearBothEndsOfTheLineChangesNothing)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{0.75f, 0}});
    pen.Add({{0.25f, 0.5f}});
    EXPECT_EQ(pen.builder.pending, StrokePoint(0.75f, 0));
    EXPECT_EQ(pen.builder.direction, StrokePoint(1, 0));
}

TEST(HvLinearPathBuilder, CreepingPenDrawsOneLine)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{1, 0}});
    for (int i = 1; i <= 100; ++i) {  // a quarter circle of radius 10, in steps below the gap
        double const a = i * std::acos(-1.0) / 200.0;
        pen.Add({{static_cast<float>(1 + 10 * std::sin(a)),
                  static_cast<float>(10 - 10 * std::cos(a))}});
    }
    EXPECT_EQ(pen.builder.input.Size(), 1u);
}

TEST(HvLinearPathBuilder, ForcedPointOvertakesTheOneHeldBack)
{
    for (int force : {1, 2, -1}) {
        Pen pen;
        pen.builder.StartSubpath({0, 0});
        pen.Add({{4, 0}});
        pen.Add({{4, 0.1f}}, force);
        pen.builder.GetTrailingSamples();
        EXPECT_EQ(pen.builder.input.Size(), 3u);
        EXPECT_EQ(pen.builder.input[2], StrokePoint(4, 0));
    }
}

TEST(HvLinearPathBuilder, FirstPointWithoutAStartIsTaken)
{
    Pen pen;
    pen.Add({{3, 3}});
    EXPECT_EQ(pen.builder.input.Size(), 1u);
    EXPECT_EQ(pen.builder.hasPending, 0);
}

TEST(HvLinearPathBuilder, ResetForgetsThePointHeldBack)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{4, 0}});
    pen.builder.Reset();
    EXPECT_EQ(pen.builder.hasPending, 0);
    EXPECT_EQ(pen.builder.input.Size(), 0u);
}

// Path and samples.

TEST(HvLinearPathBuilder, SamplesGoOnFromCallToCall)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{2.5f, 0}});
    ExpectPoints(ToVector(*pen.builder.GetTrailingSamples()), {{0, 0}, {1, 0}, {2, 0}}, 1e-6);
    pen.Add({{4.25f, 0}});
    ExpectPoints(ToVector(*pen.builder.GetTrailingSamples()), {{3, 0}, {4, 0}}, 1e-6);
    EXPECT_EQ(pen.builder.GetTrailingSamples()->Size(), 0u);
    ExpectPoints(ToVector(*pen.builder.EndSubpath({5.5f, 0}, 0)), {{5, 0}, {5.5f, 0}}, 1e-6);
    ExpectPoints(PointsOf(pen.path), {{0, 0}, {2.5f, 0}, {4.25f, 0}, {5.5f, 0}}, 0.0);
    EXPECT_EQ(pen.path.IsPolyline(), 1);
}

TEST(HvLinearPathBuilder, ClosedStrokeLeadsBackWithoutSamples)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}, {10, 10}});
    HvPoint2fArray const samples = *pen.builder.EndSubpath({0, 10}, 1);
    std::vector<StrokePoint> const points = PointsOf(pen.path);
    ASSERT_EQ(points.size(), 5u);
    EXPECT_EQ(points[4], StrokePoint(0, 0));
    EXPECT_EQ(pen.path.IsSubpathClosed(4), 1);
    for (StrokePoint const& p : samples) {
        EXPECT_LE(DistanceFrom({points.begin(), points.end() - 1}, p), 1e-5);
    }
}

TEST(HvLinearPathBuilder, EndOnTheStartIsNotRepeated)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}});
    pen.builder.EndSubpath({0, 0}, 1);
    // The point between is smoothed halfway.
    ExpectPoints(PointsOf(pen.path), {{0, 0}, {5, 0}, {0, 0}}, 0.0);
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 1);
}

TEST(HvLinearPathBuilder, ClickIsALoneStart)
{
    for (int closed : {0, 1}) {
        Pen pen;
        pen.builder.StartSubpath({3, 4});
        EXPECT_EQ(pen.builder.EndSubpath({3, 4}, closed)->Size(), 0u);
        EXPECT_EQ(PointsOf(pen.path), std::vector<StrokePoint>{StrokePoint(3, 4)});
        EXPECT_EQ(pen.builder.firstSamples, 1);
        EXPECT_EQ(pen.builder.needMoveto, 0);
        EXPECT_EQ(pen.builder.processedIndex, 0u);
    }
}
