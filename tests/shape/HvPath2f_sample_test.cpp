// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/shape/HvGC.h>
#include <tests/support/allocation_failure.h>

#include "outline_paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <sstream>

namespace {

struct Samples {
    HvPoint2fArray points;
    HvPointTagArray tags;

    /// "x,y:tag" for each.
    std::string Text() const
    {
        std::ostringstream text;
        for (unsigned int i = 0; i < points.Size(); ++i) {
            text << (i == 0 ? "" : " ") << points[i].x << "," << points[i].y << ":" << tags[i];
        }
        return text.str();
    }
};

Samples SamplesOf(HvPath2f const& path, double spacing)
{
    HvGC gc;
    gc.sampleSpacing = spacing;
    Samples samples;
    unsigned int const added = path.Sample(gc, samples.points, samples.tags);
    EXPECT_EQ(added, samples.points.Size());
    return samples;
}

Samples SamplesAt(HvPath2f const& path, std::vector<float> const& parameters)
{
    HvFloatArray fractions;
    for (float const parameter : parameters) {
        fractions.Add(parameter);
    }
    Samples samples;
    unsigned int const added = path.Sample(HvGC(), fractions, samples.points, samples.tags);
    EXPECT_EQ(added, samples.points.Size());
    return samples;
}

HvPath2f Line(float length)
{
    return PolygonPath({{0, 0}, {length, 0}}, false);
}

}  // namespace

TEST(HvPath2f_sample, EmptyPathAndLonePointsGiveNothing)
{
    HvPath2f path(1u);
    EXPECT_EQ(SamplesOf(path, 1).Text(), "");
    EXPECT_EQ(SamplesAt(path, {0, 1}).Text(), "");
    path.Moveto({1, 1});
    EXPECT_EQ(SamplesOf(path, 1).Text(), "");
    EXPECT_EQ(SamplesAt(path, {0, 1}).Text(), "");
}

TEST(HvPath2f_sample, LengthOfOneSpacingGivesTheEnds)
{
    EXPECT_EQ(SamplesOf(Line(1), 1).Text(), "0,0:0 1,0:2");
    EXPECT_EQ(SamplesOf(Line(0.5F), 1).Text(), "0,0:0 0.5,0:2");
    EXPECT_EQ(SamplesOf(Line(0), 1).Text(), "0,0:0 0,0:2");
}

TEST(HvPath2f_sample, EndIsNoSample)
{
    EXPECT_EQ(SamplesOf(Line(2.4F), 1).Text(), "0,0:0 1.2,0:2");
    EXPECT_EQ(SamplesOf(Line(4), 1).Text(), "0,0:0 1,0:1 2,0:1 3,0:2");
}

TEST(HvPath2f_sample, StepsAreRoundedHalfDown)
{
    // 1.5 spacings: one step, so the end itself; a little more: two steps.
    EXPECT_EQ(SamplesOf(Line(1.5F), 1).Text(), "0,0:0 1.5,0:2");
    EXPECT_EQ(SamplesOf(Line(1.625F), 1).Text(), "0,0:0 0.8125,0:2");
    EXPECT_EQ(SamplesOf(Line(2.5F), 1).Text(), "0,0:0 1.25,0:2");
    EXPECT_EQ(SamplesOf(Line(2.625F), 1).Text(), "0,0:0 0.875,0:1 1.75,0:2");
}

TEST(HvPath2f_sample, ClosedSubpathEndsOneStepShortToo)
{
    HvPath2f const square = PolygonPath({{0, 0}, {2, 0}, {2, 2}, {0, 2}}, true);
    EXPECT_EQ(SamplesOf(square, 2).Text(), "0,0:0 2,0:1 2,2:1 0,2:2");
}

TEST(HvPath2f_sample, LastSampleOnTheEndOfAClosedSubpathGoes)
{
    // The walk goes out and back, so a sample can lie on the closing point before the end: lengths
    // 4 and 4 and 4 over the same point, in three steps of 4 the second lies on it.
    HvPath2f closed = PolygonPath({{0, 0}, {2, 0}, {0, 0}, {-2, 0}, {0, 0}, {0, 2}}, true);
    EXPECT_EQ(SamplesOf(closed, 4).Text(), "0,0:0 0,0:2");
    HvPath2f const open =
        PolygonPath({{0, 0}, {2, 0}, {0, 0}, {-2, 0}, {0, 0}, {0, 2}, {0, 0}}, false);
    EXPECT_EQ(SamplesOf(open, 4).Text(), "0,0:0 0,0:1 0,0:2");
}

TEST(HvPath2f_sample, SubpathsAreSampledOneByOne)
{
    HvPath2f path = Line(2);
    path.Moveto({10, 10});
    path.Lineto({10, 13});
    EXPECT_EQ(SamplesOf(path, 1).Text(), "0,0:0 1,0:2 10,10:0 10,11:1 10,12:2");
}

RC_GTEST_PROP(HvPath2f_sample, SamplesLieEvenlyAlongTheOutline, ())
{
    HvPath2f const path = RandomOutline();
    HvGC gc;
    gc.flatness = 0.25;
    gc.sampleSpacing = PickInRange(1, 40) / 8.0;
    Samples samples;
    path.Sample(gc, samples.points, samples.tags);
    HvPoint2fArray line;
    HvPointTagArray lineTags;
    path.Flatten(gc, line, lineTags);

    unsigned int at = 0;
    for (unsigned int first = 0; first < line.Size();) {
        unsigned int last = first;
        double length = 0;
        for (; lineTags[last] != HvPointTagEnd; ++last) {
            length += std::hypot(double(line[last + 1].x) - line[last].x,
                                 double(line[last + 1].y) - line[last].y);
        }
        double const ratio = length / gc.sampleSpacing;
        // Half a spacing over is rounded down; what is too near to it to tell is not asked.
        RC_PRE(std::fabs(ratio - std::floor(ratio) - 0.5) > 1e-6);
        auto const steps = static_cast<unsigned int>(std::floor(ratio + 0.5));
        RC_ASSERT(samples.tags[at] == HvPointTagStart);
        RC_ASSERT(samples.points[at] == line[first]);
        unsigned int end = at;
        while (samples.tags[end] != HvPointTagEnd) {
            ++end;
        }
        if (ratio > 1 && steps > 1) {
            // Each sample is where a walk of its length ends.
            double walked = 0;
            unsigned int i = first;
            unsigned int k = 1;
            for (; k < steps && i < last;) {
                double const edge = std::hypot(double(line[i + 1].x) - line[i].x,
                                               double(line[i + 1].y) - line[i].y);
                double const target = length * k / steps;
                if (walked + edge < target - 1e-9) {
                    walked += edge;
                    ++i;
                    continue;
                }
                double const share = edge == 0 ? 0 : (target - walked) / edge;
                if (at + k <= end) {
                    RC_ASSERT(std::fabs(samples.points[at + k].x -
                                        (line[i].x + (double(line[i + 1].x) - line[i].x) * share)) <
                              1e-4);
                    RC_ASSERT(std::fabs(samples.points[at + k].y -
                                        (line[i].y + (double(line[i + 1].y) - line[i].y) * share)) <
                              1e-4);
                }
                ++k;
            }
            RC_ASSERT(end - at + 1 == steps || end - at + 2 == steps);
        } else {
            RC_ASSERT(end == at + 1);
            RC_ASSERT(samples.points[end] == line[last]);
        }
        at = end + 1;
        first = last + 1;
    }
    RC_ASSERT(at == samples.points.Size());
}

TEST(HvPath2f_sample, FractionsOfOneSubpath)
{
    HvPath2f const path = PolygonPath({{0, 0}, {4, 0}, {4, 4}}, false);
    EXPECT_EQ(SamplesAt(path, {0, 0.25F, 0.5F, 0.75F, 1}).Text(), "0,0:0 2,0:1 4,0:1 4,2:1 4,4:2");
    EXPECT_EQ(SamplesAt(path, {0.25F}).Text(), "2,0:2") << "one sample is an end";
    EXPECT_EQ(SamplesAt(path, {}).Text(), "");
    EXPECT_EQ(SamplesAt(path, {0.5F, 2.0F, 0.25F}).Text(), "4,0:2") << "beyond the end";
}

TEST(HvPath2f_sample, FractionsRunOnOverAllSubpaths)
{
    HvPath2f path = Line(4);
    path.Moveto({10, 0});
    path.Lineto({10, 4});
    path.Lineto({14, 4});
    // The whole length is 12; the gap has none.
    EXPECT_EQ(SamplesAt(path, {0, 0.25F, 0.5F, 0.75F, 1}).Text(),
              "0,0:0 3,0:2 10,2:0 11,4:1 14,4:2");
    EXPECT_EQ(SamplesAt(path, {0.5F}).Text(), "10,2:2") << "no sample falls on the first";
}

TEST(HvPath2f_sample, VerticesWithoutDistanceTakeTheOneBefore)
{
    HvPath2f const path = PolygonPath({{0, 0}, {0, 0}, {4, 0}, {4, 0}}, false);
    EXPECT_EQ(SamplesAt(path, {0, 1}).Text(), "0,0:0 4,0:2");
}

TEST(HvPath2f_sample, ArcLengthOfNodes)
{
    HvPath2f path = PolygonPath({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(0, 1), 0.0);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(1, 1), 0.25);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(3, 1), 0.75);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(4, 1), 1.0);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(5, 1), 0.0) << "no such point";
    // Of a second subpath, counted from its own start; a handle counts as the end of its segment.
    path.Moveto({0, 0});
    path.Curveto({1, 0}, {2, 0}, {3, 0});
    path.Lineto({3, 9});
    EXPECT_EQ(path.GetNodeNormalizedArcLength(5, 1), 0.0);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(6, 1), 0.25);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(8, 1), 0.25);
    EXPECT_EQ(path.GetNodeNormalizedArcLength(9, 1), 1.0);
    HvPath2f const dot = PolygonPath({{1, 1}, {1, 1}, {1, 1}}, false);
    EXPECT_EQ(dot.GetNodeNormalizedArcLength(1, 1), 1.0) << "no length to share";
}

TEST(HvPath2f_sample, HostileNumbersEnd)
{
    double const infinity = std::numeric_limits<double>::infinity();
    for (double const spacing : {0.0, -1.0, infinity, std::nan(""), 1e300}) {
        HvGC gc;
        gc.sampleSpacing = spacing;
        Samples samples;
        try {
            Line(9).Sample(gc, samples.points, samples.tags);
            EXPECT_EQ(samples.Text(), "0,0:0 9,0:2") << spacing;
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(spacing, 0.0) << "more samples than an array holds";
            EXPECT_EQ(samples.points.Size() + samples.tags.Size(), 0u);
        }
    }
    HvGC gc;
    gc.sampleSpacing = 1e-300;
    Samples samples;
    EXPECT_THROW(Line(9).Sample(gc, samples.points, samples.tags), std::bad_alloc);
    float const limit = std::numeric_limits<float>::infinity();
    EXPECT_EQ(SamplesOf(PolygonPath({{0, 0}, {limit, 0}}, false), 1).tags.Size(), 2u);
    EXPECT_EQ(SamplesAt(Line(1), {std::nanf(""), limit, -limit}).tags.Size(), 1u);
    HvPath2f const wild = PolygonPath({{0, 0}, {limit, 0}, {std::nanf(""), 3}, {1, 1}}, true);
    for (unsigned int i = 0; i < wild.NumPoints(); ++i) {
        double const length = wild.GetNodeNormalizedArcLength(i, 0.1);
        EXPECT_TRUE(length >= 0 && length <= 1);
    }
}

TEST(HvPath2f_sample, WithoutMemoryBothArraysAreAsTheyWere)
{
    struct Work {
        HvPath2f path = PolygonPath({{0, 0}, {9, 0}, {9, 9}}, true);
        HvFloatArray parameters;
        Samples samples;
    };
    auto const prepare = [] {
        Work work;
        for (int i = 0; i <= 40; ++i) {
            work.parameters.Add(static_cast<float>(i) / 40);
        }
        work.samples.points.Add(HvPoint2<float>(7, 7));
        work.samples.tags.Add(HvPointTagEnd);
        return work;
    };
    auto const check = [](Work& work, bool completed) {
        EXPECT_EQ(work.samples.points.Size(), work.samples.tags.Size());
        EXPECT_EQ(work.samples.points.Size() > 1, completed);
    };
    HvGC gc;
    gc.sampleSpacing = 0.1;
    EXPECT_GT(RefuseEachAllocation(
                  prepare,
                  [&](Work& work) { work.path.Sample(gc, work.samples.points, work.samples.tags); },
                  check),
              5);
    EXPECT_GT(RefuseEachAllocation(
                  prepare,
                  [&](Work& work) {
                      work.path.Sample(gc, work.parameters, work.samples.points, work.samples.tags);
                  },
                  check),
              5);
}
