// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/morph/HvMorpher.h>

#include "morph_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "../support/generators.h"

#include <thread>

namespace {

HvPath2fProp1d Morphed(HvPath2fProp1d const& first, HvPath2fProp1d const& second, double t,
                       double spacing)
{
    HvGC const gc = SpacedContext(spacing);
    HvPath2fProp1d out(0);
    EXPECT_EQ(HvMorpher(&first, &second, gc).LinearMorph(t, out), 1);
    return out;
}

/// Flattening, chords between samples that are at most a spacing apart, and the fit each move an
/// outline by a spacing, half a spacing and a spacing at most.
double MostMoved(double spacing)
{
    return 2.5 * spacing;
}

}  // namespace

TEST(HvMorpher_linear, SiblingsAreBlendedPointByPointInPlaceOfTheOutput)
{
    HvPath2fProp1d const first = Circle(0, 0, 10);
    HvPath2fProp1d const second = Circle(100, 40, 30);
    HvGC const gc = SpacedContext(0.5);
    HvPath2fProp1d out = Polyline({{1, 1}, {2, 2}});
    EXPECT_EQ(HvMorpher(&first, &second, gc).LinearMorph(0.25, out), 1);
    ASSERT_EQ(out.NumPoints(), first.NumPoints());
    EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(10 * 0.75f + 130 * 0.25f, 10));
    HvPath2fProp1d expected(0);
    expected.SetToLerpAB(first, second, 0.25, gc.minPointGap, gc.propFlatness);
    EXPECT_TRUE(AreSame(out, expected));
}

TEST(HvMorpher_linear, LinesOfDifferentNodesAreBlendedSampleBySample)
{
    HvPath2fProp1d const first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 4}, {5, 4}, {10, 4}});
    for (double const t : {-1.0, 0.0, 0.5, 1.0, 2.0}) {
        HvPath2fProp1d const out = Morphed(first, second, t, 1.0);
        ASSERT_EQ(out.NumSubpaths(), 1u);
        EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(0, static_cast<float>(4 * t)));
        EXPECT_EQ(LastPoint(out), HvPoint2<float>(10, static_cast<float>(4 * t)));
        EXPECT_LE(GreatestDistance(out, Polyline({{0, static_cast<float>(4 * t)},
                                                  {10, static_cast<float>(4 * t)}})),
                  1e-5);
    }
}

TEST(HvMorpher_linear, EndsGiveTheOutlinesBack)
{
    HvPath2fProp1d const circle = Circle(0, 0, 20);
    HvPath2fProp1d const square = ClosedPolyline({{100, 0}, {140, 0}, {140, 40}, {100, 40}});
    for (double const spacing : {0.25, 1.0, 2.0}) {
        HvPath2fProp1d const start = Morphed(circle, square, 0, spacing);
        EXPECT_LE(GreatestDistance(start, circle), MostMoved(spacing));
        EXPECT_LE(GreatestDistance(circle, start), MostMoved(spacing));
        HvPath2fProp1d const end = Morphed(circle, square, 1, spacing);
        EXPECT_LE(GreatestDistance(end, square), MostMoved(spacing));
        EXPECT_LE(GreatestDistance(square, end), MostMoved(spacing));
    }
}

TEST(HvMorpher_linear, TwoOutlinesOfOneShapeGiveItBackHalfway)
{
    HvPath2fProp1d const square = ClosedPolyline({{0, 0}, {40, 0}, {40, 40}, {0, 40}});
    HvPath2fProp1d const cutSquare = ClosedPolyline({{0, 0}, {20, 0}, {40, 0}, {40, 40}, {0, 40}});
    HvPath2fProp1d const out = Morphed(square, cutSquare, 0.5, 0.5);
    EXPECT_LE(GreatestDistance(out, square), MostMoved(0.5));
    EXPECT_LE(GreatestDistance(square, out), MostMoved(0.5));
}

TEST(HvMorpher_linear, OnlyTwoClosedSubpathsGiveAClosedOne)
{
    HvPath2fProp1d const closed = ClosedPolyline({{0, 0}, {9, 0}, {9, 9}});
    HvPath2fProp1d const otherClosed = ClosedPolyline({{0, 0}, {9, 0}, {9, 9}, {0, 9}});
    HvPath2fProp1d const open = Polyline({{0, 0}, {9, 0}, {9, 9}});
    EXPECT_NE(Morphed(closed, otherClosed, 0.5, 1.0).IsSubpathClosed(0), 0);
    EXPECT_EQ(Morphed(closed, open, 0.5, 1.0).IsSubpathClosed(0), 0);
    EXPECT_EQ(Morphed(open, otherClosed, 0.5, 1.0).IsSubpathClosed(0), 0);
}

TEST(HvMorpher_linear, SubpathsArePairedInTheirOrder)
{
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    AddPolyline(first, {{0, 50}, {10, 50}});
    HvPath2fProp1d second = Polyline({{0, 2}, {5, 2}, {10, 2}});
    AddPolyline(second, {{0, 60}, {5, 60}, {10, 60}});
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 1.0);
    ASSERT_EQ(out.NumSubpaths(), 2u);
    EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(0, 1));
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(10, 55));
}

TEST(HvMorpher_linear, OutlinesWithoutALengthGiveTwoSamples)
{
    HvPath2fProp1d const point = Polyline({{2, 4}});
    HvPath2fProp1d const line = Polyline({{6, 8}, {6, 8}});
    HvPath2fProp1d const out = Morphed(point, line, 0.5, 1.0);
    // One cubic, collapsed.
    ASSERT_EQ(out.NumPoints(), 4u);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(out.GetPoint(i), HvPoint2<float>(4, 6));
    }
}

TEST(HvMorpher_linear, APointMayGrowToALine)
{
    HvPath2fProp1d const point = Polyline({{0, 0}});
    HvPath2fProp1d const line = Polyline({{-10, 0}, {10, 0}});
    HvPath2fProp1d const out = Morphed(point, line, 0.5, 1.0);
    EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(-5, 0));
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(5, 0));
}

TEST(HvMorpher_linear, AppendsToWhatIsThere)
{
    HvPath2fProp1d const first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 4}, {5, 4}, {10, 4}});
    HvGC const gc = SpacedContext(1.0);
    HvPath2fProp1d out = Polyline({{1, 1}, {2, 2}});
    HvMorpher(&first, &second, gc).LinearMorph(0.5, out);
    ASSERT_EQ(out.NumSubpaths(), 2u);
    EXPECT_EQ(out.GetPoint(1), HvPoint2<float>(2, 2));
    EXPECT_EQ(out.GetPoint(2), HvPoint2<float>(0, 2));
}

TEST(HvMorpher_linear, AnOutlineWithoutAPointGivesNothing)
{
    HvPath2fProp1d const empty(0);
    HvPath2fProp1d const line = Polyline({{0, 0}, {10, 0}});
    EXPECT_EQ(Morphed(empty, line, 0.5, 1.0).NumPoints(), 0u);
    EXPECT_EQ(Morphed(line, empty, 0.5, 1.0).NumPoints(), 0u);
    HvGC const gc = SpacedContext(1.0);
    HvPath2fProp1d out = Polyline({{1, 1}, {2, 2}});
    EXPECT_EQ(HvMorpher(&empty, &line, gc).LinearMorph(0.5, out), 1);
    EXPECT_EQ(out.NumPoints(), 2u);
    EXPECT_EQ(HvMorpher(nullptr, &line, gc).LinearMorph(0.5, out), 1);
    EXPECT_EQ(HvMorpher(&line, nullptr, gc).LinearMorph(0.5, out), 1);
    EXPECT_EQ(out.NumPoints(), 2u);
    // Two empty ones are siblings, whose blend is empty.
    EXPECT_EQ(HvMorpher(&empty, &empty, gc).LinearMorph(0.5, out), 1);
    EXPECT_EQ(out.NumPoints(), 0u);
}

TEST(HvMorpher_linear, TheOutputMayBeAnOutline)
{
    HvPath2fProp1d const first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 4}, {5, 4}, {10, 4}});
    HvGC const gc = SpacedContext(1.0);
    HvPath2fProp1d expected = first;
    HvMorpher(&first, &second, gc).LinearMorph(0.5, expected);
    HvPath2fProp1d both = first;
    HvMorpher(&both, &second, gc).LinearMorph(0.5, both);
    EXPECT_TRUE(AreSame(both, expected));
}

TEST(HvMorpher_linear, OutlinesWithoutNumbersHarmNothing)
{
    float const nan = std::nanf("");
    float const huge = 3e38f;
    for (HvPath2fProp1d const& odd :
         {Polyline({{nan, 0}, {1, 2}, {3, 4}}), Polyline({{0, 0}, {INFINITY, 0}, {1, 1}})}) {
        HvPath2fProp1d const line = Polyline({{0, 0}, {10, 0}});
        HvGC const gc = SpacedContext(1.0);
        HvPath2fProp1d out(0);
        try {
            EXPECT_EQ(HvMorpher(&odd, &line, gc).LinearMorph(0.5, out), 1);
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(out.NumPoints(), 0u);
        }
    }
    HvPath2fProp1d const far = Polyline({{-huge, 0}, {0, huge}, {huge, 0}});
    HvPath2fProp1d const line = Polyline({{0, 0}, {10, 0}});
    HvGC const gc = SpacedContext(1.0);
    HvPath2fProp1d out(0);
    EXPECT_THROW(HvMorpher(&far, &line, gc).LinearMorph(0.5, out), std::bad_alloc);
    EXPECT_EQ(out.NumPoints(), 0u);
}

RC_GTEST_PROP(HvMorpher_linear, BackwardsIsTheSameAsForwards, ())
{
    auto const outline = [](unsigned int nodes) {
        HvPath2fProp1d path(0);
        path.Moveto({0, 0});
        for (unsigned int i = 1; i < nodes; ++i) {
            path.Lineto({static_cast<float>(PickInRange(-50, 50)),
                         static_cast<float>(PickInRange(-50, 50))});
        }
        return path;
    };
    HvPath2fProp1d const first = outline(PickInRange(2u, 6u));
    HvPath2fProp1d const second = outline(PickInRange(6u, 9u));
    // 1 - t is exact, so that both ways blend the same products.
    double const t = PickInRange(0, 5) * 0.25;
    RC_ASSERT(AreSame(Morphed(first, second, t, 2.0), Morphed(second, first, 1 - t, 2.0)));
}

TEST(HvMorpher_threads, ServesManyThreadsAtOnce)
{
    HvPath2fProp1d const circle = Circle(0, 0, 20);
    HvPath2fProp1d const square = ClosedPolyline({{100, 0}, {140, 0}, {140, 40}, {100, 40}});
    HvGC const gc = SpacedContext(1.0);
    HvMorpher const morpher(&circle, &square, gc);
    HvPath2fProp1d expected(0);
    morpher.LinearMorph(0.3, expected);
    std::vector<std::thread> threads;
    std::vector<int> same(4, 0);
    for (int& isSame : same) {
        threads.emplace_back([&] {
            HvPath2fProp1d out(0);
            morpher.LinearMorph(0.3, out);
            isSame = AreSame(out, expected) ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(same, std::vector<int>(4, 1));
}
