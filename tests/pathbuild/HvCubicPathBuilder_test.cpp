// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as cubics through every point.

#include <hv/pathbuild/HvCubicPathBuilder.h>

#include "stroke_test_support.h"
#include <hv/pathbuild/stroke_tangents.h>

namespace {

struct Pen {
    HvGC gc;
    HvPath2f path = HvPath2f(4u);
    OpenCubic builder = OpenCubic(gc, &path);

    void Add(std::vector<StrokePoint> const& points, int force = 0)
    {
        for (StrokePoint const& p : points) {
            builder.AddInputPoint(p, force);
        }
    }
};

constexpr float kShare = 0.4000000059604645f;

}  // namespace

TEST(HvCubicPathBuilder, DropsNearPointsUnlessForcedByOne)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{0.5f, -0.5f}});
    pen.Add({{0.5f, -0.5f}}, 2);
    pen.Add({{0.5f, -0.5f}}, -1);
    EXPECT_EQ(pen.builder.input.Size(), 1u);
    pen.Add({{0.5f, -0.5f}}, 1);
    EXPECT_EQ(pen.builder.input.Size(), 2u);
    pen.Add({{0.5f, -1.01f}});
    EXPECT_EQ(pen.builder.input.Size(), 3u);
}

TEST(HvCubicPathBuilder, LastPointWaitsForTheNext)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}});
    // The polyline is the start alone, which is the first sample.
    ExpectPoints(ToVector(*pen.builder.GetTrailingSamples()), {{0, 0}}, 0.0);
    EXPECT_EQ(pen.path.NumPoints(), 1u);
    EXPECT_EQ(pen.builder.processedIndex, 0u);
    EXPECT_EQ(pen.builder.firstSamples, 0);

    pen.Add({{20, 0}});
    EXPECT_EQ(pen.builder.GetTrailingSamples()->Size(), 10u);
    ExpectPoints(PointsOf(pen.path), {{0, 0}, {4, 0}, {6, 0}, {10, 0}}, 1e-5);
    EXPECT_EQ(pen.builder.processedIndex, 1u);

    EXPECT_EQ(pen.builder.GetTrailingSamples()->Size(), 0u);
    EXPECT_EQ(pen.path.NumPoints(), 4u);

    EXPECT_EQ(pen.builder.EndSubpath({20, 0}, 0)->Size(), 10u);
    ExpectPoints(NodesOf(pen.path), {{0, 0}, {10, 0}, {20, 0}}, 0.0);
    EXPECT_EQ(pen.builder.processedIndex, 2u);
}

TEST(HvCubicPathBuilder, TangentsAndHandles)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{4, 0}, {4, 3}, {8, 3}});
    pen.builder.EndSubpath({8, 3}, 0);
    // Smoothed in a row: (4, 0) to (3, 0.75), then (4, 3) with the original before it to (5, 2.25).
    std::vector<StrokePoint> const nodes = {{0, 0}, {3, 0.75f}, {5, 2.25f}, {8, 3}};
    ExpectPoints(NodesOf(pen.path), nodes, 0.0);
    HvPoint2fArray const points = Points(nodes);
    std::vector<StrokePoint> tangents = {
        EstimateTangentDirection(points, 0, 1, 0, 0), EstimateTangentDirection(points, 1, 0, 0, 0),
        EstimateTangentDirection(points, 2, 0, 0, 0), EstimateTangentDirection(points, 3, 0, 1, 0)};
    std::vector<StrokePoint> const path = PointsOf(pen.path);
    ASSERT_EQ(path.size(), 10u);
    for (unsigned int i = 0; i < 3; ++i) {
        float const h = static_cast<float>(HvPoint2_LengthAB(nodes[i], nodes[i + 1])) * kShare;
        ExpectPoints({path[3 * i + 1], path[3 * i + 2]},
                     {nodes[i] + tangents[i] * h, nodes[i + 1] - tangents[i + 1] * h}, 1e-6);
    }
}

TEST(HvCubicPathBuilder, OldLastPointIsSmoothedOnceItsNeighbourIsKnown)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}, {20, 8}});
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(pen.builder.input[1], StrokePoint(10, 2));
    EXPECT_EQ(pen.builder.input[2], StrokePoint(20, 8));
    pen.Add({{30, 8}});
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(pen.builder.input[1], StrokePoint(10, 2));
    // 8 / 2 + (2 + 8) / 4: the point before counts as it was when this call began.
    EXPECT_EQ(pen.builder.input[2], StrokePoint(20, 6.5f));
    pen.builder.GetTrailingSamples();
    EXPECT_EQ(pen.builder.input[2], StrokePoint(20, 6.5f));
    EXPECT_EQ(pen.builder.processedIndex, 2u);
}

TEST(HvCubicPathBuilder, ClosesWithTheTangentOfTheStart)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{20, 0}, {20, 20}});
    pen.builder.EndSubpath({0, 20}, 1);
    std::vector<StrokePoint> const nodes = NodesOf(pen.path);
    ASSERT_EQ(nodes.size(), 5u);
    EXPECT_EQ(nodes[3], StrokePoint(0, 20));  // the last point stays raw
    EXPECT_EQ(nodes[4], nodes[0]);
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 1);
    EXPECT_EQ(pen.path.IsG1Continuous(0), 1);
    EXPECT_EQ(pen.path.IsG1Continuous(3), 1);
}

TEST(HvCubicPathBuilder, EndOnTheStartIsNotRepeated)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    pen.Add({{10, 0}});
    pen.builder.EndSubpath({0, 0}, 1);
    ExpectPoints(NodesOf(pen.path), {{0, 0}, {5, 0}, {0, 0}}, 0.0);
    EXPECT_EQ(pen.path.IsSubpathClosed(0), 1);
}

TEST(HvCubicPathBuilder, StrokeOfTwoPointsIsOneCubic)
{
    Pen pen;
    pen.builder.StartSubpath({0, 0});
    HvPoint2fArray const* samples = pen.builder.EndSubpath({10, 0}, 0);
    EXPECT_EQ(samples->Size(), 11u);
    ExpectPoints(PointsOf(pen.path), {{0, 0}, {4, 0}, {6, 0}, {10, 0}}, 1e-5);
}

TEST(HvCubicPathBuilder, ClickIsALoneStart)
{
    for (int closed : {0, 1}) {
        Pen pen;
        pen.builder.StartSubpath({3, 4});
        EXPECT_EQ(pen.builder.GetTrailingSamples()->Size(), 0u);
        EXPECT_EQ(pen.builder.EndSubpath({3, 4}, closed)->Size(), 0u);
        EXPECT_EQ(pen.path.NumPoints(), 1u);
        EXPECT_EQ(pen.builder.firstSamples, 1);
    }
}
