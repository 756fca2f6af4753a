// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/morph/internal/even_samples.h>

#include "../morph_support.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

HvMorphLine LineOf(Points points)
{
    return HvMorphLine_OfPath(Polyline(points), 1.0);
}

void ExpectPoints(HvPoint2fArray const& found, std::vector<HvPoint2<float>> const& expected)
{
    EXPECT_EQ(std::vector<HvPoint2<float>>(found.begin(), found.end()), expected);
}

}  // namespace

TEST(even_samples, TakesALonePointTwice)
{
    HvMorphLine const line = LineOf({{2, 4}});
    ExpectPoints(line.points, {{2, 4}, {2, 4}});
    EXPECT_EQ(line.chord.Size(), 2u);
    EXPECT_EQ(line.length, 0.0);
    HvPath2fProp1d path = Polyline({{9, 9}, {8, 8}});
    AddPolyline(path, {{3, 5}});
    ExpectPoints(HvMorphLine_OfSubpath(path, 2, 1.0).points, {{3, 5}, {3, 5}});
}

TEST(even_samples, MeasuresGapsBetweenSubpathsOfAWholePath)
{
    HvPath2fProp1d path = Polyline({{0, 0}, {4, 0}});
    AddPolyline(path, {{4, 3}, {9, 3}});
    EXPECT_EQ(HvMorphLine_OfPath(path, 1.0).length, 12.0);
    EXPECT_EQ(HvMorphLine_OfSubpath(path, 2, 1.0).length, 5.0);
}

TEST(even_samples, IsEmptyForAPathWithoutAPoint)
{
    HvMorphLine const line = HvMorphLine_OfPath(HvPath2f(0u), 1.0);
    EXPECT_EQ(line.points.Size(), 0u);
    EXPECT_EQ(HvMorph_EvenSamples(line, 3).Size(), 0u);
}

TEST(even_samples, DividesALengthIntoStepsRoundedUp)
{
    EXPECT_EQ(HvMorph_StepsFor(10.0, 2.5), 4u);
    EXPECT_EQ(HvMorph_StepsFor(10.25, 2.5), 5u);
    EXPECT_EQ(HvMorph_StepsFor(0.0, 2.5), 0u);
    EXPECT_EQ(HvMorph_StepsFor(10.0, -1.0), 0u);
    EXPECT_EQ(HvMorph_StepsFor(0.0, 0.0), 0u);
    EXPECT_EQ(HvMorph_StepsFor(kNaN, 1.0), 0u);
    EXPECT_EQ(HvMorph_StepsFor(2147483647.0, 1.0), 2147483647u);
    EXPECT_THROW(HvMorph_StepsFor(2147483648.0, 1.0), std::bad_alloc);
    EXPECT_THROW(HvMorph_StepsFor(1.0, 0.0), std::bad_alloc);
}

TEST(even_samples, GivesOneSampleMoreThanSteps)
{
    HvPoint2fArray const samples = HvMorph_EvenSamples(LineOf({{0, 0}, {4, 0}, {4, 4}}), 4);
    ExpectPoints(samples, {{0, 0}, {2, 0}, {4, 0}, {4, 2}, {4, 4}});
    EXPECT_EQ(samples.Capacity(), 5u);
}

TEST(even_samples, RepeatsTheLastPointWhereThereIsNoLengthToDivide)
{
    ExpectPoints(HvMorph_EvenSamples(LineOf({{2, 3}, {2, 3}}), 3),
                 {{2, 3}, {2, 3}, {2, 3}, {2, 3}});
    HvMorphLine strange = LineOf({{0, 0}, {1, 2}});
    strange.chord[1] = kNaN;
    ExpectPoints(HvMorph_EvenSamples(strange, 3), {{0, 0}, {1, 2}, {1, 2}, {1, 2}});
}

TEST(even_samples, GivesBothLinesAsManyStepsAsTheLongerOneHas)
{
    HvMorphLine const shorter = LineOf({{0, 0}, {1, 0}});
    HvMorphLine const longer = LineOf({{0, 0}, {0, 3}});
    for (double const spacing : {0.5, 1.0, 2.0, 100.0}) {
        auto const steps = static_cast<unsigned int>(std::ceil(3 / spacing));
        for (bool const isSwapped : {false, true}) {
            HvMorphSamples const samples = HvMorphSamples_Of(isSwapped ? longer : shorter,
                                                             isSwapped ? shorter : longer, spacing);
            EXPECT_EQ(samples.steps, steps);
            EXPECT_EQ(samples.first.Size(), steps + 1);
            EXPECT_EQ(samples.second.Size(), steps + 1);
        }
    }
    HvMorphLine const point = LineOf({{2, 4}});
    EXPECT_EQ(HvMorphSamples_Of(point, point, 1.0).steps, 1u);
}

TEST(even_samples, GivesNothingWhenOneLineIsEmpty)
{
    HvMorphLine const line = LineOf({{0, 0}, {4, 0}});
    HvMorphLine const empty;
    for (HvMorphSamples const& samples :
         {HvMorphSamples_Of(line, empty, 1.0), HvMorphSamples_Of(empty, line, 1.0),
          HvMorphSamples_Of(empty, empty, 1.0)}) {
        EXPECT_EQ(samples.steps, 0u);
        EXPECT_EQ(samples.first.Size(), 0u);
        EXPECT_EQ(samples.second.Size(), 0u);
    }
}
