// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths drawn anew through the samples of a path, with their property.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <cmath>
#include <limits>

namespace {

// An arc of lines, a closed ring and a lone point between, a second arc; curves on all but the
// ring.
OpenProp Arcs()
{
    OpenProp path;
    auto const add = [&](float x, float from, float to, int n) {
        for (int k = 0; k <= n; ++k) {
            float const angle = from + (to - from) * static_cast<float>(k) / static_cast<float>(n);
            PropPoint const p(x + 20 * std::cos(angle), 20 * std::sin(angle));
            if (k == 0) {
                path.Moveto(p);
            } else {
                path.Lineto(p);
            }
        }
    };
    add(0, 0, 2, 40);
    path.Moveto({5, 5});
    add(100, 0, 6.2F, 60);
    path.CloseSubpath(path.NumPoints() - 1);
    add(200, 0, 2, 40);
    path.SetPropCurve(0, Constant(1));
    path.SetPropCurve(41, Constant(2));
    path.SetPropCurve(path.NumPoints() - 1, Through({{0, 4}, {40, 8}}));
    return path;
}

unsigned int LastStart(HvPath2f const& path)
{
    unsigned int start = 0;
    unsigned int end = 0;
    path.GetSubpathIndices(path.NumPoints() - 1, start, end);
    return start;
}

}  // namespace

TEST(HvPath2fProp1d_fit, EverySubpathBeginsAnewWithItsCurve)
{
    OpenProp const source = Arcs();
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}});
    path.SetPropCurve(0, Constant(9));
    unsigned int const added = path.AddFittedSamplesFromPath(HvGC(), source);
    EXPECT_EQ(path.NumPoints(), 2 + added);
    EXPECT_EQ(path.NumSubpaths(), 4u);  // a lone point has no samples
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 9}, {2, 1}, {LastStart(path), 4}}));
    EXPECT_EQ(path.GetPoint(2), source.GetPoint(0));
    EXPECT_EQ(path.GetPoint(path.NumPoints() - 1), source.GetPoint(source.NumPoints() - 1));
    unsigned int start = 0;
    unsigned int end = 0;
    path.GetSubpathIndices(2, start, end);
    EXPECT_EQ(path.IsSubpathClosed(2), 0);
    EXPECT_EQ(path.IsSubpathClosed(end + 1), 1);
    EXPECT_EQ(path.GetPropCurve(LastStart(path))->Eval(20, 0), 6.0);
    EXPECT_NE(path.GetPropCurve(2), source.GetPropCurve(0));
}

TEST(HvPath2fProp1d_fit, StaysWithinTheFlatness)
{
    OpenProp const source = Arcs();
    OpenProp path;
    HvGC gc;
    gc.flatness = 0.25;
    path.AddFittedSamplesFromPath(gc, source);
    HvPoint2fArray points;
    path.FlattenSubpath(0, 0.01, points);
    ASSERT_GT(points.Size(), 3u);
    for (PropPoint const& p : points) {
        EXPECT_NEAR(std::hypot(p.x, p.y), 20.0F, 0.3F);
    }
}

TEST(HvPath2fProp1d_fit, PathMayBeItsOwnSource)
{
    OpenProp path = Arcs();
    OpenProp expected = Arcs();
    OpenProp const source = Arcs();
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), path),
              expected.AddFittedSamplesFromPath(HvGC(), source));
    EXPECT_EQ(path.Keys(), expected.Keys());
    EXPECT_EQ(path.IsSiblingOf(expected), 1);
    EXPECT_EQ(path.GetPoint(path.NumPoints() - 1), expected.GetPoint(path.NumPoints() - 1));
}

TEST(HvPath2fProp1d_fit, FitThatAddsNothingHandsOnNoCurve)
{
    OpenProp source;
    source.AddLines({{0, 0}, {3, 0}, {std::numeric_limits<float>::quiet_NaN(), 0}});
    source.SetPropCurve(0, Constant(5));
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}});
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), source), 0u);
    EXPECT_EQ(path.NumPoints(), 2u);
    EXPECT_EQ(path.Keys(), PropKeys());
    HvGC gc;
    gc.flatness = -1;
    EXPECT_EQ(path.AddFittedSamplesFromPath(gc, Arcs()), 0u);
    EXPECT_EQ(path.AddFittedSamplesFromPath(gc, OpenProp()), 0u);
    EXPECT_EQ(path.Keys(), PropKeys());
    source.AddLines({{0, 0}, {9, 0}});  // the next subpath has none, and gets none
    EXPECT_NE(path.AddFittedSamplesFromPath(HvGC(), source), 0u);
    EXPECT_EQ(path.Keys(), PropKeys());
}

TEST(HvPath2fProp1d_fit, SamplesAreThoseOfTheDevice)
{
    OpenProp source;
    source.AddLines({{0, 0}, {10, 0}});
    HvGC gc;
    gc.transform.Translate(5, 7, 0);
    OpenProp path;
    path.AddFittedSamplesFromPath(gc, source);
    EXPECT_EQ(path.GetPoint(0), PropPoint(5, 7));
    EXPECT_EQ(path.GetPoint(path.NumPoints() - 1), PropPoint(15, 7));
}

TEST(HvPath2fProp1d_fit, OpenMarkIsThatOfTheLastSubpath)
{
    // A Closeto on a path whose last subpath is open refuses, on one that closes it does not.
    OpenProp ring;
    ring.AddLines({{0, 0}, {10, 0}, {10, 10}, {0, 0}});
    ring.Closeto();
    OpenProp path;
    path.AddFittedSamplesFromPath(HvGC(), ring);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    path.AddFittedSamplesFromPath(HvGC(), Arcs());
    EXPECT_EQ(path.Closeto(), 0);
}

TEST(HvPath2fProp1d_fit, OfAPlainPathItIsThatOfThePath)
{
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}});
    HvPath2f source(0u);
    source.Moveto({5, 5});
    source.Lineto({50, 5});
    EXPECT_EQ(path.AddFittedSamplesFromPath(HvGC(), source) % 3, 0u);  // continues, no Moveto
    EXPECT_EQ(path.NumSubpaths(), 1u);
}
