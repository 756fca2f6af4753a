// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/morph/HvMorpher.h>

#include "morph_support.h"

#include <gtest/gtest.h>

namespace {

HvPath2fProp1d Morphed(HvPath2fProp1d const& first, HvPath2fProp1d const& second, double t,
                       double spacing)
{
    HvGC const gc = SpacedContext(spacing);
    HvPath2fProp1d out(0);
    EXPECT_EQ(HvMorpher(&first, &second, gc).TurtleMorph(t, out), 1);
    return out;
}

}  // namespace

TEST(HvMorpher_turtle, LinesTurn)
{
    HvPath2fProp1d const first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 0}, {0, 10}});
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 1.0);
    // Halfway between the two directions, and as long as both.
    EXPECT_NEAR(LastPoint(out).x, 10 * std::sqrt(0.5), 1e-4);
    EXPECT_NEAR(LastPoint(out).y, 10 * std::sqrt(0.5), 1e-4);
}

TEST(HvMorpher_turtle, OutlinesShorterThanTheSpacingAreOneStep)
{
    HvPath2fProp1d const first = Polyline({{0, 0}, {1, 0}});
    HvPath2fProp1d const second = Polyline({{0, 0}, {0, 3}});
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 10.0);
    ASSERT_EQ(out.NumSubpaths(), 1u);
    // Halfway between the two directions and between the two lengths.
    EXPECT_NEAR(LastPoint(out).x, 2 * std::sqrt(0.5), 1e-6);
    EXPECT_NEAR(LastPoint(out).y, 2 * std::sqrt(0.5), 1e-6);
}

TEST(HvMorpher_turtle, ClosedOutlinesGiveOneOpenSubpath)
{
    HvPath2fProp1d const circle = Circle(0, 0, 20);
    HvPath2fProp1d const square = ClosedPolyline({{100, 0}, {140, 0}, {140, 40}, {100, 40}});
    HvPath2fProp1d const out = Morphed(circle, square, 0.0, 1.0);
    ASSERT_EQ(out.NumSubpaths(), 1u);
    EXPECT_EQ(out.IsSubpathClosed(0), 0);
    EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(20, 0));
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(20, 0));
}

TEST(HvMorpher_turtle, GapsBetweenSubpathsAreSteps)
{
    HvPath2fProp1d first = Polyline({{0, 0}, {4, 0}});
    AddPolyline(first, {{4, 6}, {8, 6}});
    HvPath2fProp1d const out = Morphed(first, first, 0.0, 1.0);
    ASSERT_EQ(out.NumSubpaths(), 1u);
    EXPECT_LE(GreatestDistance(Polyline({{4, 1}, {4, 5}}), out), 2.5);
}

TEST(HvMorpher_turtle, PropertyOfTheFirstSubpathsGoesToTheNewOne)
{
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 0}, {0, 10}});
    HvPoint2dArray points;
    points.Add({0.0, 7.0});
    first.SetPropCurve(0, points, 1e-9);
    HvGC const gc = SpacedContext(1.0);
    HvPath2fProp1d out = Polyline({{1, 1}, {2, 2}});
    HvMorpher(&first, &second, gc).TurtleMorph(0.5, out);
    EXPECT_EQ(out.HasPropCurve(0), 0);
    EXPECT_EQ(out.EvalPropCurve(2, 3.0), 7.0);
}

TEST(HvMorpher_turtle, PropertyIsThatOfTheFirstSubpathsThoughTheyHaveOnePoint)
{
    HvPath2fProp1d dotted = Polyline({{0, 0}});
    AddPolyline(dotted, {{0, 0}, {10, 0}});
    HvPoint2dArray points;
    points.Add({0.0, 7.0});
    dotted.SetPropCurve(0, points, 1e-9);
    HvPath2fProp1d const plain = Polyline({{0, 0}, {0, 10}});
    EXPECT_EQ(Morphed(dotted, plain, 0.5, 1.0).EvalPropCurve(0, 3.0), 7.0);
    EXPECT_EQ(Morphed(plain, dotted, 0.5, 1.0).EvalPropCurve(0, 3.0), 7.0);
}

TEST(HvMorpher_turtle, AnOutlineWithoutAPointGivesNothing)
{
    HvPath2fProp1d const empty(0);
    HvPath2fProp1d const line = Polyline({{0, 0}, {10, 0}});
    EXPECT_EQ(Morphed(empty, line, 0.5, 1.0).NumPoints(), 0u);
    EXPECT_EQ(Morphed(empty, empty, 0.5, 1.0).NumPoints(), 0u);
    HvGC const gc = SpacedContext(1.0);
    HvPath2fProp1d out(0);
    EXPECT_EQ(HvMorpher(nullptr, &line, gc).TurtleMorph(0.5, out), 1);
    EXPECT_EQ(out.NumPoints(), 0u);
}
