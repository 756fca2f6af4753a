// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/morph/HvMorpher.h>

#include "morph_support.h"

#include <gtest/gtest.h>

namespace {

HvPath2fProp1d const& Line()
{
    static HvPath2fProp1d const line = Polyline({{0, 0}, {10, 0}});
    return line;
}
HvPath2fProp1d const& OtherLine()
{
    static HvPath2fProp1d const line = Polyline({{40, 0}, {45, 0}, {50, 0}});
    return line;
}

/// From the ends of the one line to those of the other, the first of them over a road.
HvPath2fProp1d Travelled(HvPath2f const* road, double t)
{
    HvGC const gc = SpacedContext(1.0);
    HvMorpher morpher(&Line(), &OtherLine(), gc);
    EXPECT_EQ(morpher.SetMotionPath(0, 0, road), 1);
    EXPECT_EQ(morpher.SetMotionPath(1, 2, nullptr), 1);
    HvPath2fProp1d out(0);
    EXPECT_EQ(morpher.LinearMotionPathMorph(t, out), 1);
    return out;
}

}  // namespace

TEST(HvMorpher_motion, AnchorsTravelOnStraightLines)
{
    for (double const t : {0.0, 0.25, 1.0, 1.5}) {
        HvPath2fProp1d const out = Travelled(nullptr, t);
        EXPECT_NEAR(out.GetPoint(0).x, 40 * t, 1e-4);
        EXPECT_NEAR(LastPoint(out).x, 10 + 40 * t, 1e-4);
        EXPECT_NEAR(LastPoint(out).y, 0, 1e-4);
    }
}

TEST(HvMorpher_motion, AnchorsTravelOnRoadsButAtTheirEnds)
{
    HvPath2f const road = Polyline({{0, 20}, {0, 24}, {4, 24}});
    // A quarter and three quarters of the length of eight.
    EXPECT_NEAR(Travelled(&road, 0.25).GetPoint(0).x, 0, 1e-4);
    EXPECT_NEAR(Travelled(&road, 0.25).GetPoint(0).y, 22, 1e-4);
    EXPECT_NEAR(Travelled(&road, 0.75).GetPoint(0).x, 2, 1e-4);
    EXPECT_NEAR(Travelled(&road, 0.75).GetPoint(0).y, 24, 1e-4);
    // The outlines' own points stand at and beyond the ends.
    EXPECT_EQ(Travelled(&road, 0.0).GetPoint(0), HvPoint2<float>(0, 0));
    EXPECT_NEAR(Travelled(&road, 1.0).GetPoint(0).x, 40, 1e-4);
    EXPECT_NEAR(Travelled(&road, 1.0).GetPoint(0).y, 0, 1e-4);
    EXPECT_NEAR(Travelled(&road, -1.0).GetPoint(0).x, 0, 1e-4);
    EXPECT_NEAR(Travelled(&road, 2.0).GetPoint(0).x, 40, 1e-4);
}

TEST(HvMorpher_motion, ARoadWithoutALengthLeavesTheAnchor)
{
    HvPath2f const road = Polyline({{7, 7}, {7, 7}});
    EXPECT_EQ(Travelled(&road, 1.0).GetPoint(0), HvPoint2<float>(0, 0));
    HvPath2f const noRoad(0u);
    EXPECT_EQ(Travelled(&noRoad, 1.0).GetPoint(0), HvPoint2<float>(0, 0));
}

TEST(HvMorpher_motion, AnchorsLeaveTheStartOfARoadAtOnce)
{
    HvPath2f const road = Polyline({{0, 20}, {0, 24}, {4, 24}});
    HvPath2fProp1d const out = Travelled(&road, 0.0625);
    EXPECT_NEAR(out.GetPoint(0).x, 0, 1e-4);
    EXPECT_NEAR(out.GetPoint(0).y, 20.5, 1e-4);
}

TEST(HvMorpher_motion, SectionsShorterThanTheSpacingAreOneStep)
{
    HvGC const gc = SpacedContext(1000.0);
    HvMorpher morpher(&Line(), &OtherLine(), gc);
    morpher.SetMotionPath(0, 0, nullptr);
    morpher.SetMotionPath(1, 2, nullptr);
    HvPath2fProp1d out(0);
    EXPECT_EQ(morpher.LinearMotionPathMorph(0.5, out), 1);
    ASSERT_NE(out.NumPoints(), 0u);
    EXPECT_NEAR(out.GetPoint(0).x, 20, 1e-4);
    EXPECT_NEAR(LastPoint(out).x, 30, 1e-4);
}

TEST(HvMorpher_motion, AnchorsNearerThanATenMillionthLeaveTheSection)
{
    // How high the tip is, halfway, of two sections of height 8 whose ends are so far apart; the
    // travelling anchors are as far apart as the mean of both.
    auto const tipOf = [](float start, float partner) {
        HvPath2fProp1d const first = Polyline({{0, 0}, {0, 8}, {start, 0}});
        HvPath2fProp1d const second = Polyline({{0, 0}, {0, 8}, {0, 8}, {partner, 0}});
        HvGC const gc = SpacedContext(0.25);
        HvMorpher morpher(&first, &second, gc);
        morpher.SetMotionPath(0, 0, nullptr);
        morpher.SetMotionPath(2, 3, nullptr);
        HvPath2fProp1d out(0);
        EXPECT_EQ(morpher.LinearMotionPathMorph(0.5, out), 1);
        HvExtent2<float> extent;
        return out.GetExtent(extent).max.y;
    };
    // Only the first section shrinks; both change; the anchors are too near.
    EXPECT_NEAR(tipOf(1.5e-7f, 0.9e-7f), 4 + 8 * 0.5 * 1.2 / 1.5, 0.5);
    EXPECT_NEAR(tipOf(1.5e-7f, 1.1e-7f), 8 * 0.5 * (1.3 / 1.5 + 1.3 / 1.1), 0.5);
    EXPECT_NEAR(tipOf(1.5e-7f, -1.1e-7f), 8, 0.5);
}

TEST(HvMorpher_motion, SectionsTurnAndGrow)
{
    // From a line along x to one twice as long along y, around a common start.
    HvPath2fProp1d const first = Polyline({{0, 0}, {5, 5}, {10, 0}});
    HvPath2fProp1d const second = Polyline({{0, 0}, {-10, 10}, {0, 20}});
    HvGC const gc = SpacedContext(0.5);
    HvMorpher morpher(&first, &second, gc);
    morpher.SetMotionPath(0, 0, nullptr);
    morpher.SetMotionPath(2, 2, nullptr);
    HvPath2fProp1d out(0);
    ASSERT_EQ(morpher.LinearMotionPathMorph(0.5, out), 1);
    // Both sections are the same shape, so the result is it too, from (0, 0) to (5, 10): its peak
    // stands half as far above the middle as that is from the ends.
    EXPECT_NEAR(LastPoint(out).x, 5, 1e-4);
    EXPECT_NEAR(LastPoint(out).y, 10, 1e-4);
    HvPath2fProp1d const shape = Polyline({{0, 0}, {2.5f - 5, 5 + 2.5f}, {5, 10}});
    EXPECT_LE(GreatestDistance(out, shape), 1.25);
    EXPECT_LE(GreatestDistance(shape, out), 1.25);
}

TEST(HvMorpher_motion, OnlyTheFirstTwoAnchorsCount)
{
    HvGC const gc = SpacedContext(1.0);
    HvMorpher morpher(&Line(), &OtherLine(), gc);
    morpher.SetMotionPath(0, 0, nullptr);
    morpher.SetMotionPath(1, 2, nullptr);
    HvPath2fProp1d expected(0);
    morpher.LinearMotionPathMorph(0.5, expected);
    morpher.SetMotionPath(77, 99, nullptr);
    HvPath2fProp1d out(0);
    EXPECT_EQ(morpher.LinearMotionPathMorph(0.5, out), 1);
    EXPECT_TRUE(AreSame(out, expected));
}

TEST(HvMorpher_motion, RefusesWhatIsNoSection)
{
    struct {
        unsigned int first[2];
        unsigned int second[2];
    } const rows[] = {{{1, 0}, {0, 2}}, {{0, 0}, {0, 2}}, {{0, 1}, {2, 0}},
                      {{0, 1}, {1, 1}}, {{0, 2}, {0, 2}}, {{0, 1}, {0, 3}}};
    for (auto const& row : rows) {
        HvGC const gc = SpacedContext(1.0);
        HvMorpher morpher(&Line(), &OtherLine(), gc);
        morpher.SetMotionPath(row.first[0], row.second[0], nullptr);
        HvPath2fProp1d out = Polyline({{1, 1}, {2, 2}});
        HvPath2fProp1d const before = out;
        EXPECT_EQ(morpher.LinearMotionPathMorph(0.5, out), 0) << "one anchor";
        morpher.SetMotionPath(row.first[1], row.second[1], nullptr);
        EXPECT_EQ(morpher.LinearMotionPathMorph(0.5, out), 0);
        EXPECT_TRUE(AreSame(out, before));
    }
    HvGC const gc = SpacedContext(1.0);
    HvMorpher orphan(nullptr, &OtherLine(), gc);
    orphan.SetMotionPath(0, 0, nullptr);
    orphan.SetMotionPath(1, 1, nullptr);
    HvPath2fProp1d out(0);
    EXPECT_EQ(orphan.LinearMotionPathMorph(0.5, out), 0);
}

TEST(HvMorpher_motion, AnchorsInOnePlaceLeaveTheSection)
{
    HvPath2fProp1d const loop = ClosedPolyline({{0, 0}, {9, 0}, {9, 9}});
    HvGC const gc = SpacedContext(1.0);
    HvMorpher morpher(&loop, &loop, gc);
    morpher.SetMotionPath(0, 0, nullptr);
    morpher.SetMotionPath(3, 3, nullptr);
    HvPath2fProp1d out(0);
    EXPECT_EQ(morpher.LinearMotionPathMorph(0.5, out), 1);
    EXPECT_EQ(out.GetPoint(0), HvPoint2<float>(0, 0));
    EXPECT_EQ(out.IsSubpathClosed(0), 0);
}

TEST(HvMorpher_motion, ATimeThatIsNoNumberHarmsNothing)
{
    HvPath2f const road = Polyline({{0, 20}, {0, 24}, {4, 24}});
    HvGC const gc = SpacedContext(1.0);
    HvMorpher morpher(&Line(), &OtherLine(), gc);
    morpher.SetMotionPath(0, 0, &road);
    morpher.SetMotionPath(1, 2, &road);
    HvPath2fProp1d out(0);
    // Both anchors are at (0, 0), so the sections stay, and their blend has no numbers to fit.
    EXPECT_EQ(morpher.LinearMotionPathMorph(std::nan(""), out), 1);
    EXPECT_EQ(out.NumPoints(), 0u);
}
