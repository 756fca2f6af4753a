// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of different numbers of subpaths.

#include <hv/morph/HvMorpher.h>

#include "morph_support.h"

#include <hv/bezier/HvBezierTool.h>
#include <hv/morph/internal/even_samples.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvPath2fSink.h>

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

/// The steps that the subpaths of a tour get, lines of the given lengths far apart, when its
/// partner is one line as long as all of them at a spacing of 1.
std::vector<int> SharesOf(std::vector<float> const& lengths)
{
    HvPath2fProp1d tour(0);
    float total = 0;
    for (float const length : lengths) {
        AddPolyline(tour, {{1000 + 2 * total, 0}, {1000 + 2 * total + length, 0}});
        total += length;
    }
    HvPath2fProp1d const line = Polyline({{0, 0}, {total, 0}});
    // All of the tour is seen at the start, but for a single step, which is closed and vanishes.
    HvExtent2<float> extent;
    EXPECT_NEAR(Morphed(tour, line, 0.0, 1.0).GetExtent(extent).max.x, LastPoint(tour).x,
                lengths.back() > 1 ? 0.0 : 1.0);
    // How far its partner has come is seen at the end, where subpaths begin.
    HvPath2fProp1d const end = Morphed(tour, line, 1.0, 1.0);
    std::vector<int> shares;
    HvPath2fIter subpaths(end);
    unsigned int first = 0;
    unsigned int last = 0;
    int begin = 0;
    subpaths.GetNextSubPathIndices(first, last);
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        shares.push_back(static_cast<int>(std::lround(end.GetPoint(first).x)) - begin);
        begin += shares.back();
    }
    shares.push_back(static_cast<int>(std::lround(total)) - begin);
    return shares;
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
    // Over six steps: two each, against one, and the other way around.
    GiveSlope(second, 0, 0, 12);
    HvPath2fProp1d const outlines[] = {Morphed(first, second, 0.5, 1.0),
                                       Morphed(second, first, 0.5, 1.0)};
    for (HvPath2fProp1d const& out : outlines) {
        EXPECT_NEAR(out.GetLargestArcLength(0), 12.0, 1e-9);
        EXPECT_NEAR(out.EvalPropCurve(0, 12.0), 9.0, 1e-9);
    }
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

TEST(HvMorpher_tour, SubpathsGetStepsInProportionToTheirLengths)
{
    EXPECT_EQ(SharesOf({2, 8}), (std::vector<int>{2, 8}));
    EXPECT_EQ(SharesOf({9, 1}), (std::vector<int>{9, 1}));
    EXPECT_EQ(SharesOf({2, 3, 5}), (std::vector<int>{2, 3, 5}));
    EXPECT_EQ(SharesOf({7, 3, 1, 9}), (std::vector<int>{7, 3, 1, 9}));
    // Rounded to the nearest, halves up, of what is left.
    EXPECT_EQ(SharesOf({2.375f, 7.625f}), (std::vector<int>{2, 8}));
    EXPECT_EQ(SharesOf({2.5f, 7.5f}), (std::vector<int>{3, 7}));
    EXPECT_EQ(SharesOf({2.625f, 7.375f}), (std::vector<int>{3, 7}));
    EXPECT_EQ(SharesOf({2.5f, 2.5f, 5}), (std::vector<int>{3, 2, 5}));
    // At least one.
    EXPECT_EQ(SharesOf({0.25f, 9.75f}), (std::vector<int>{1, 9}));
}

TEST(HvMorpher_tour, StretchesEndWithTheSubpathOfEither)
{
    // Steps of 4 and 8 against 8, 2 and 2.
    HvPath2fProp1d first = Polyline({{0, 0}, {4, 0}});
    AddPolyline(first, {{100, 0}, {108, 0}});
    HvPath2fProp1d second = Polyline({{0, 50}, {8, 50}});
    AddPolyline(second, {{100, 50}, {102, 50}});
    AddPolyline(second, {{200, 50}, {202, 50}});
    HvPath2fProp1d const out = Morphed(first, second, 0.0, 1.0);
    std::vector<float> starts;
    HvPath2fIter subpaths(out);
    unsigned int from = 0;
    unsigned int to = 0;
    while (subpaths.GetNextSubPathIndices(from, to) != 0) {
        starts.push_back(out.GetPoint(from).x);
    }
    EXPECT_EQ(starts, (std::vector<float>{0, 100, 104, 106}));
    EXPECT_EQ(LastPoint(out), HvPoint2<float>(108, 0));
}

TEST(HvMorpher_tour, TheLastSubpathMayGetASingleStep)
{
    HvPath2fProp1d first = Polyline({{0, 0}, {9, 0}});
    AddPolyline(first, {{100, 0}, {101, 0}});
    GiveSlope(first, 2, 0, 1);
    HvPath2fProp1d const second = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d const out = Morphed(first, second, 0.5, 1.0);
    ASSERT_EQ(out.NumSubpaths(), 2u);
    EXPECT_EQ(out.GetLargestArcLength(out.NumPoints() - 1), 1.0);
}

TEST(HvMorpher_tour, PointsGetAStepEachAndTheLastTheRest)
{
    // Two points against three, three steps: one and two, one each.
    HvPath2fProp1d first = Polyline({{0, 0}});
    AddPolyline(first, {{100, 0}});
    HvPath2fProp1d second = Polyline({{0, 50}});
    AddPolyline(second, {{100, 50}});
    AddPolyline(second, {{200, 50}});
    EXPECT_EQ(Morphed(first, second, 0.5, 1.0).NumSubpaths(), 3u);
    EXPECT_EQ(Morphed(second, first, 0.5, 1.0).NumSubpaths(), 3u);
}

TEST(HvMorpher_tour, ClosedPiecesAreFittedAsLoops)
{
    // At t = 1 the first piece is the first subpath of the second, whose ends lie apart, or not.
    HvPath2fProp1d const first = Polyline({{0, 0}, {0, 6}, {6, 6}});
    for (float const gap : {0.75f, 0.0f}) {
        HvPath2fProp1d second = Polyline({{0, 0}, {0, 5}, {gap, 5}, {gap, 0}});
        AddPolyline(second, {{50, 50}, {50, 50}});
        HvPath2fProp1d const out = Morphed(first, second, 1.0, 1.0);
        HvMorphLine const line = HvMorphLine_OfSubpath(second, 0, 1.0);
        HvPoint2fArray samples = HvMorph_EvenSamples(line, 12);
        if (gap != 0.0f) {
            samples.Add(samples[0]);
        }
        HvPath2f expected(0u);
        HvPath2fSink sink(expected);
        HvBezierTool().ClosedFit(samples, SpacedContext(1.0).cornerCosSquared, 3, 1.0, 0, sink);
        ASSERT_EQ(out.NumSubpaths(), 1u);
        EXPECT_TRUE(AreSame(HvPath2f(out), expected)) << gap;
    }
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
