// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths drawn anew through the samples of paths.

#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/HvPathTags.h>
#include <tests/support/allocation_failure.h>

#include "outline_paths.h"
#include "path_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

HvGC Context(double spacing, double flatness)
{
    HvGC gc;
    gc.sampleSpacing = spacing;
    gc.flatness = flatness;
    return gc;
}

/// A closed circle of four cubics.
HvPath2f Circle(float radius)
{
    float const h = 0.5522847F * radius;
    HvPath2f path(1u);
    path.Moveto({radius, 0});
    path.Curveto({radius, h}, {h, radius}, {0, radius});
    path.Curveto({-h, radius}, {-radius, h}, {-radius, 0});
    path.Curveto({-radius, -h}, {-h, -radius}, {0, -radius});
    path.Curveto({h, -radius}, {radius, -h}, {radius, 0});
    path.Closeto();
    return path;
}

/// The greatest distance of a point of the flattened path from the circle around the origin.
double RadialError(HvPath2f const& path, double radius)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    path.AltFlatten(1e-4, points, tags);
    double worst = 0.0;
    for (PathPoint const& p : points) {
        worst = std::max(worst, std::fabs(std::hypot(double(p.x), double(p.y)) - radius));
    }
    return worst;
}

}  // namespace

TEST(HvPath2f_fit, ClosedSubpathIsClosedAgain)
{
    HvPath2f path(1u);
    unsigned int const added = path.AddFittedSamplesFromPath(Context(1, 0.1), Circle(100));
    EXPECT_EQ(added, path.NumPoints());
    EXPECT_EQ(path.NumSubpaths(), 1u);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_LE(path.NumSegments(), 8u);
    // 0.1 of the fit, 0.03 of the four cubics and 0.1 of their flattening.
    EXPECT_LT(RadialError(path, 100), 0.23);
    EXPECT_EQ(path.GetPoint(0u), PathPoint(100, 0));
}

TEST(HvPath2f_fit, OpenSubpathContinuesFromTheLastPoint)
{
    HvPath2f source(1u);
    source.Moveto({0, 0});
    source.Lineto({40, 0});
    source.Lineto({40, 30});
    HvPath2f path(1u);
    path.Moveto({-5, -5});
    EXPECT_EQ(path.AddFittedSamplesFromPath(Context(2, 0.25), source), 6u);
    EXPECT_EQ(TagsOf(path), (std::vector<unsigned int>{1, 8, 9, 10, 8, 9, 10}));
    EXPECT_EQ(path.GetPoint(0u), PathPoint(-5, -5));
    EXPECT_EQ(path.GetPoint(3u), PathPoint(40, 0));
    EXPECT_EQ(path.GetPoint(6u), PathPoint(40, 30));
}

TEST(HvPath2f_fit, EmptyPathGetsAStart)
{
    HvPath2f path(1u);
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), PolygonPath({{1, 2}, {9, 2}}, false)), 4u);
    EXPECT_EQ(TagsOf(path), (std::vector<unsigned int>{1, 8, 9, 10}));
    EXPECT_EQ(path.GetPoint(0u), PathPoint(1, 2));
    EXPECT_EQ(path.GetPoint(3u), PathPoint(9, 2));
}

TEST(HvPath2f_fit, NothingComesFromNothing)
{
    OpenPath path(Triangle());
    PathImage const image = ImageOf(path);
    HvPath2f source(1u);
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), source), 0u);
    source.Moveto({3, 3});
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), source), 0u);
    EXPECT_EQ(ImageOf(path), image);
}

TEST(HvPath2f_fit, LonePointsTakeNoSamplesOfTheOthers)
{
    HvPath2f source(1u);
    source.Moveto({3, 3});
    source.Moveto({0, 0});
    source.Lineto({8, 0});
    source.Moveto({50, 50});
    source.Moveto({10, 0});
    source.Lineto({10, 9});
    HvPath2f path(1u);
    path.Moveto({0, 0});
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), source), 6u);
    EXPECT_EQ(path.GetPoint(3u), PathPoint(8, 0));
    EXPECT_EQ(path.GetPoint(6u), PathPoint(10, 9));
}

TEST(HvPath2f_fit, PathMayBeItsOwnSource)
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Lineto({8, 0});
    path.Moveto({20, 0});
    path.Lineto({20, 9});
    HvPath2f const copy(path);
    HvPath2f expected(copy);
    unsigned int const added = expected.AddFittedSamplesFromPath(HvGC(), copy);
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), path), added);
    EXPECT_EQ(ImageOf(path), ImageOf(expected));
    EXPECT_EQ(path.NumPoints(), 4u + added);
}

TEST(HvPath2f_fit, FitLiesInDeviceSpaceUpToItsEnd)
{
    HvGC gc = Context(1, 0.1);
    gc.transform.Scale(2, 2, 1);
    HvPath2f path(1u);
    path.AddFittedSamplesFromPath(gc, PolygonPath({{0, 0}, {10, 0}}, false));
    EXPECT_EQ(path.GetCurrentPoint(), PathPoint(20, 0));
}

TEST(HvPath2f_fit, HostileSettingsAddNothingOrEnd)
{
    double const numbers[] = {0.0,
                              -1.0,
                              1e-310,
                              std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    for (double const number : numbers) {
        for (double HvGC::*const field : {&HvGC::flatness, &HvGC::cornerCosSquared}) {
            HvGC gc;
            gc.*field = number;
            HvPath2f path(1u);
            path.Moveto({1, 1});
            unsigned int const added =
                path.AddFittedSamplesFromPath(gc, PolygonPath({{0, 0}, {9, 3}, {4, 8}}, true));
            EXPECT_EQ(path.NumPoints(), 1 + added);
            EXPECT_EQ(added == 0, field == &HvGC::flatness && !(number >= 0.0)) << number;
        }
    }
    float const infinite = std::numeric_limits<float>::infinity();
    HvPath2f path(1u);
    EXPECT_EQ(
        path.AddFittedSamplesFromPath(HvGC(), PolygonPath({{0, 0}, {4, 8}, {infinite, 3}}, false)),
        0u);
}

TEST(HvPath2f_fit, RefusedMemoryLeavesThePathAsItWas)
{
    struct Pair {
        OpenPath path = OpenPath(SmoothRun());
        OpenPath source = OpenPath(SmoothLoop());
    };
    PathImage const before = ImageOf(SmoothRun());
    long const allocations = RefuseEachAllocation(
        [] {
            Pair pair;
            pair.source.Moveto({0, 0});
            pair.source.Lineto({9, 9});
            return pair;
        },
        [](Pair& pair) { pair.path.AddFittedSamplesFromPath(HvGC(), pair.source); },
        [&](Pair& pair, bool completed) {
            EXPECT_EQ(ImageOf(pair.path) == before, !completed);
            HvShapeLock const lock(pair.path);
            EXPECT_EQ(HvShapeLock::Depth(pair.path), 1);
            HvShapeLock const sourceLock(pair.source);
            EXPECT_EQ(HvShapeLock::Depth(pair.source), 1);
        });
    EXPECT_GE(allocations, 5);
}
