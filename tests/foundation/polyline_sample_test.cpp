// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points at chosen lengths along a polyline.

#include <hv/foundation/polyline_sample.h>

#include <hv/foundation/polyline_length.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <vector>

namespace {

using Point = HvPoint2<float>;
using Points = std::vector<Point>;
using Tags = std::vector<int>;

/// A polyline with its lengths, and what is sampled from it.
struct Scene {
    HvPoint2fArray line;
    HvDoubleArray lengths;
    HvPoint2fArray pts;
    HvPointTagArray tags;

    explicit Scene(Points const& points)
    {
        line.Add(points.data(), static_cast<unsigned int>(points.size()));
        HvPoint2fArraySingleComponent_ComputeChordLength(line, lengths);
    }
    unsigned int Sample(double spacing, bool isClosed)
    {
        return HvPoint2fArray_AppendEvenSamples(line, lengths, 0, line.Size() - 1, spacing,
                                                isClosed, pts, tags);
    }
    Points Sampled() const { return Points(pts.begin(), pts.end()); }
    Tags SampledTags() const { return Tags(tags.begin(), tags.end()); }
};

}  // namespace

TEST(polyline_sample, CursorFindsTheEdgeOfALength)
{
    Scene const scene({{0, 0}, {4, 0}, {4, 0}, {4, 2}});
    HvPolylineCursor cursor(scene.line, scene.lengths, 0, 3);
    EXPECT_TRUE(cursor.MoveTo(1));
    EXPECT_EQ(cursor.PointAt(1), Point(1, 0));
    EXPECT_TRUE(cursor.MoveTo(4));
    EXPECT_EQ(cursor.PointAt(4), Point(4, 0));
    EXPECT_TRUE(cursor.MoveTo(4.5));
    EXPECT_EQ(cursor.PointAt(4.5), Point(4, 0.5F));
    EXPECT_TRUE(cursor.MoveTo(6));
    EXPECT_EQ(cursor.PointAt(6), Point(4, 2));
    EXPECT_FALSE(cursor.MoveTo(6.1));
}

TEST(polyline_sample, CursorOnAnEdgeWithoutLengthIsAtItsFirstPoint)
{
    Scene const scene({{1, 2}, {1, 2}});
    HvPolylineCursor cursor(scene.line, scene.lengths, 0, 1);
    EXPECT_TRUE(cursor.MoveTo(0));
    EXPECT_EQ(cursor.PointAt(0), Point(1, 2));
}

TEST(polyline_sample, StepsAreRoundedToTheSpacing)
{
    struct Case {
        float length;
        unsigned int count;
        float last;
    };
    // Half a step more is rounded down; a length of one step is not divided.
    for (Case const& c : {Case{1, 2, 1}, Case{1.5F, 2, 1.5F}, Case{1.75F, 2, 0.875F},
                          Case{2.5F, 2, 1.25F}, Case{2.75F, 3, 2.75F * 2 / 3}, Case{4, 4, 3}}) {
        Scene scene({{0, 0}, {c.length, 0}});
        EXPECT_EQ(scene.Sample(1.0, false), c.count) << c.length;
        EXPECT_EQ(scene.pts.Size(), c.count);
        EXPECT_FLOAT_EQ(scene.pts[c.count - 1].x, c.last);
        EXPECT_EQ(scene.tags[c.count - 1], HvPointTagEnd);
    }
}

TEST(polyline_sample, RangeOfALineIsSampledAlone)
{
    Scene scene({{9, 9}, {0, 0}, {2, 0}, {2, 2}, {9, 9}});
    HvDoubleArray lengths;
    lengths.Add(77.0);
    HvPoint2fArray_ComputeChordLength(scene.line, 1, 3, lengths);
    EXPECT_EQ(HvPoint2fArray_AppendEvenSamples(scene.line, lengths, 1, 3, 1.0, false, scene.pts,
                                               scene.tags),
              4u);
    EXPECT_EQ(scene.Sampled(), (Points{{0, 0}, {1, 0}, {2, 0}, {2, 1}}));
    EXPECT_EQ(scene.SampledTags(), (Tags{0, 1, 1, 2}));
}

// Far from the origin float does not tell the last sample from the end.
TEST(polyline_sample, RepeatOfTheStartIsLeftOut)
{
    Points const ring{{1e6F, 1e6F}, {1e6F + 1, 1e6F}, {1e6F, 1e6F}};
    Scene open(ring);
    EXPECT_EQ(open.Sample(1.0 / 128, false), 256u);
    EXPECT_EQ(open.pts.Size(), 256u);
    Scene closed(ring);
    EXPECT_EQ(closed.Sample(1.0 / 128, true), 256u);
    EXPECT_EQ(closed.pts.Size(), 255u);
    EXPECT_EQ(closed.tags.Size(), 255u);
    EXPECT_EQ(closed.tags[254], HvPointTagEnd);
}

TEST(polyline_sample, FewSamplesAreNoRepeat)
{
    // With one sample beside the start there is nothing between: it stays.
    Scene scene({{1e6F, 0}, {1e6F + 0.0625F, 0}, {1e6F, 0}});
    scene.pts.Add(scene.line[0]);
    scene.pts.Add(scene.line[2]);
    scene.tags.Add(HvPointTagStart);
    scene.tags.Add(HvPointTagInner);
    EXPECT_FALSE(HvPoint2fArray_FinishSamples(scene.line, 2, 1, true, scene.pts, scene.tags));
    EXPECT_EQ(scene.SampledTags(), (Tags{0, 2}));
}

TEST(polyline_sample, WithoutASampleBehindTheStartTheLastPointIsOne)
{
    Scene scene({{0, 0}, {1, 0}});
    scene.pts.Add(scene.line[0]);
    scene.tags.Add(HvPointTagStart);
    EXPECT_FALSE(HvPoint2fArray_FinishSamples(scene.line, 1, 0, true, scene.pts, scene.tags));
    EXPECT_EQ(scene.Sampled(), (Points{{0, 0}, {1, 0}}));
    EXPECT_EQ(scene.SampledTags(), (Tags{0, 2}));
}

TEST(polyline_sample, MoreStepsThanAnArrayHoldsAreRefused)
{
    Scene scene({{0, 0}, {1e30F, 0}});
    EXPECT_THROW(scene.Sample(1.0, false), std::bad_alloc);
    EXPECT_EQ(scene.pts.Size(), 0u);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const spacing : {nan, 1e300, std::numeric_limits<double>::infinity()}) {
        Scene other({{0, 0}, {1e30F, 0}});
        EXPECT_EQ(other.Sample(spacing, false), 2u);
    }
}
