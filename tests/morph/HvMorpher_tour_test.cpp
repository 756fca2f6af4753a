// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of different numbers of subpaths.

#include <hv/morph/HvMorpher.h>

#include "morph_support.h"

#include <gtest/gtest.h>

namespace {

HvPath2fProp1d Morphed(HvPath2fProp1d const& first, HvPath2fProp1d const& second, double t,
                       double spacing)
{
    HvGC const gc = SpacedContext(spacing);
    HvPath2fProp1d out(0);
    EXPECT_EQ(HvMorpher(&first, &second, gc).LinearMorph(t, out), 1);
    return out;
}

/// A curve from the origin with slope 1.
void GiveSlope(HvPath2fProp1d& path, unsigned int index, double start, double length)
{
    HvPoint2dArray points;
    points.Add({0.0, start});
    points.Add({length, start + length});
    path.SetPropCurve(index, points, 1e-9);
}

}  // namespace

TEST(HvMorpher_tour, StretchesWithinASubpathOfEachBecomeSubpaths)
{
    // Ten steps on both: of the second, six and four.
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d second = Polyline({{0, 2}, {6, 2}});
    AddPolyline(second, {{6, 2}, {10, 2}});
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 1.0);
    ASSERT_EQ(out.NumSubpaths(), 2u);
    unsigned int from = 0;
    unsigned int to = 0;
    out.GetSubpathIndices(0, from, to);
    EXPECT_EQ(out.GetPoint(from), HvPoint2<float>(0, 1));
    EXPECT_EQ(out.GetPoint(to), HvPoint2<float>(6, 1));
    EXPECT_EQ(out.GetPoint(to + 1), HvPoint2<float>(6, 1));
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(10, 1));
}

TEST(HvMorpher_tour, PropertiesAreReadOverTheStretches)
{
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    GiveSlope(first, 0, 0, 10);
    HvPath2fProp1d second = Polyline({{0, 2}, {6, 2}});
    AddPolyline(second, {{6, 2}, {10, 2}});
    GiveSlope(second, 0, 100, 6);
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 1.0);
    unsigned int const inSecond = out.NumPoints() - 1;
    // Steps 0 to 6 of both: (s + 100 + s) / 2.
    EXPECT_NEAR(out.EvalPropCurve(0, 0.0), 50.0, 1e-9);
    EXPECT_NEAR(out.EvalPropCurve(0, 6.0), 56.0, 1e-9);
    EXPECT_NEAR(out.GetLargestArcLength(0), 6.0, 1e-12);
    // Steps 6 to 10 of the first alone.
    EXPECT_NEAR(out.EvalPropCurve(inSecond, 0.0), 6.0, 1e-9);
    EXPECT_NEAR(out.EvalPropCurve(inSecond, 4.0), 10.0, 1e-9);
    EXPECT_NEAR(out.GetLargestArcLength(inSecond), 4.0, 1e-12);
}

TEST(HvMorpher_tour, ParametersAdvanceByTheLongerStep)
{
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    GiveSlope(first, 0, 0, 10);
    HvPath2fProp1d second = Polyline({{0, 2}, {6, 2}});
    AddPolyline(second, {{6, 2}, {10, 2}});
    // Over six steps: two each.
    GiveSlope(second, 0, 0, 12);
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 1.0);
    EXPECT_NEAR(out.GetLargestArcLength(0), 12.0, 1e-9);
    EXPECT_NEAR(out.EvalPropCurve(0, 12.0), 9.0, 1e-9);
}

TEST(HvMorpher_tour, ShortSubpathsGetAStepEach)
{
    // Three steps for three subpaths: the first takes all, and the others one each all the same.
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    AddPolyline(first, {{20, 0}, {20.001f, 0}});
    AddPolyline(first, {{30, 0}, {30.001f, 0}});
    HvPath2fProp1d const second = Polyline({{0, 4}, {10, 4}});
    HvPath2fProp1d const out = Morphed(first, second, 0.0, 4.0);
    // The second is used up with the first subpath of the first.
    ASSERT_EQ(out.NumSubpaths(), 1u);
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(10, 0));
}

TEST(HvMorpher_tour, LastSubpathTakesWhatIsLeft)
{
    // Two subpaths of 5 and 5 against one of 10, at spacing 1: five and five steps.
    HvPath2fProp1d first = Polyline({{0, 0}, {5, 0}});
    AddPolyline(first, {{100, 0}, {105, 0}});
    HvPath2fProp1d const second = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const out = Morphed(first, second, 0.0, 1.0);
    ASSERT_EQ(out.NumSubpaths(), 2u);
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(105, 0));
    HvPath2fProp1d const end = Morphed(first, second, 1.0, 1.0);
    EXPECT_EQ(LastPoint(end), HvPoint2<float>(10, 0));
}

TEST(HvMorpher_tour, PiecesThatComeBackAreClosed)
{
    // At t = 1 the first piece is the first subpath of the second, whose ends lie one spacing
    // apart, or a little more.
    HvPath2fProp1d const first = Polyline({{0, 0}, {0, 6}, {6, 6}});
    for (float const gap : {1.0f, 1.001f}) {
        HvPath2fProp1d second = Polyline({{0, 0}, {0, 5}, {gap, 5}, {gap, 0}});
        AddPolyline(second, {{50, 50}, {50.5f, 50}});
        HvPath2fProp1d const out = Morphed(first, second, 1.0, 1.0);
        EXPECT_EQ(out.IsSubpathClosed(0) != 0, gap == 1.0f);
    }
}

TEST(HvMorpher_tour, SubpathsOfOnePointArePartOfTheTour)
{
    HvPath2fProp1d first = Polyline({{0, 0}});
    AddPolyline(first, {{0, 0}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 2}, {10, 2}});
    HvPath2fProp1d const out = Morphed(first, second, 0.0, 1.0);
    // The lone point takes one of ten steps; the line gets the other nine.
    ASSERT_EQ(out.NumSubpaths(), 2u);
    EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(0, 0));
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(10, 0));
}
