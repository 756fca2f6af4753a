// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Even samples of a line that comes in pieces.

#include <hv/pathbuild/stroke_sampling.h>

#include "stroke_test_support.h"
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <rapidcheck.h>

#include <new>

namespace {

// What a call gave.
struct Sampled {
    std::vector<StrokePoint> points;
    double count;
    double length;
    double remainder;
};

Sampled Sample(std::vector<StrokePoint> const& points, unsigned int first, unsigned int last,
               double spacing, double remainder, int addEnd)
{
    HvPoint2fArray out(1);
    double length = -1.0;
    double const count =
        SampleSubpath(Points(points), first, last, spacing, length, remainder, out, addEnd);
    return {ToVector(out), count, length, remainder};
}

std::vector<StrokePoint> const kLine = {{0, 0}, {2.5f, 0}, {5, 0}};

}  // namespace

// Values worked by hand.

TEST(stroke_sampling, PhaseGoesOnFromPieceToPiece)
{
    // 0 to 2.4, then 2.4 to 5, a sample at each whole number.
    std::vector<StrokePoint> const cut = {{0, 0}, {2.4f, 0}, {5, 0}};
    Sampled const head = Sample(cut, 0, 1, 1.0, 0.0, 0);
    ExpectPoints(head.points, {{1, 0}, {2, 0}}, 1e-6);
    EXPECT_EQ(head.count, 2.0);
    EXPECT_NEAR(head.length, 2.4, 1e-6);
    EXPECT_NEAR(head.remainder, 0.4, 1e-6);

    Sampled const tail = Sample(cut, 1, 2, 1.0, head.remainder, 1);
    ExpectPoints(tail.points, {{3, 0}, {4, 0}, {5, 0}}, 1e-6);
    EXPECT_EQ(tail.count, 3.0);
    EXPECT_NEAR(tail.remainder, 0.0, 1e-6);
}

TEST(stroke_sampling, ShortPieceGivesNothingAndAddsItsLength)
{
    Sampled const sampled = Sample({{0, 0}, {3, 4}}, 0, 1, 20.0, 7.0, 0);
    EXPECT_TRUE(sampled.points.empty());
    EXPECT_EQ(sampled.count, 0.0);
    EXPECT_EQ(sampled.length, 5.0);
    EXPECT_EQ(sampled.remainder, 12.0);
}

TEST(stroke_sampling, WholeSpacingIsASample)
{
    Sampled const sampled = Sample({{0, 0}, {3, 4}}, 0, 1, 5.0, 0.0, 0);
    ExpectPoints(sampled.points, {{3, 4}}, 0.0);
    EXPECT_EQ(sampled.remainder, 0.0);
}

TEST(stroke_sampling, RepeatedPointsAreStepsOfNoLength)
{
    Sampled const sampled =
        Sample({{0, 0}, {0, 0}, {1, 0}, {1, 0}, {1, 0}, {2, 0}, {2, 0}}, 0, 6, 0.5, 0.0, 0);
    ExpectPoints(sampled.points, {{0.5f, 0}, {1, 0}, {1.5f, 0}, {2, 0}}, 0.0);
}

TEST(stroke_sampling, PieceStartsAtItsFirstPoint)
{
    Sampled const sampled = Sample({{9, 9}, {0, 0}, {2, 0}, {7, 7}}, 1, 2, 1.0, 0.0, 0);
    ExpectPoints(sampled.points, {{1, 0}, {2, 0}}, 0.0);
    EXPECT_EQ(sampled.length, 2.0);
}

TEST(stroke_sampling, SumsOfSpacingsThatPassTheEndGiveTheEnd)
{
    // Nth parts of 1 add up to a little more than 1 for some of these, and to less for others:
    // whatever the rounding, the count that is returned is there, and nothing lies behind the end.
    int numBeyond = 0;
    for (int n = 1; n <= 1000; ++n) {
        double const spacing = 1.0 / n;
        Sampled const sampled = Sample({{0, 0}, {1, 0}, {kNoNumber, 0}}, 0, 1, spacing, 0.0, 0);
        ASSERT_EQ(sampled.points.size(), static_cast<std::size_t>(sampled.count)) << n;
        ASSERT_LE(sampled.points.back().x, 1.0f);
        ASSERT_GE(sampled.remainder, 0.0);
        double sum = 0.0;
        for (std::size_t k = 0; k < sampled.points.size(); ++k) {
            sum += spacing;
        }
        numBeyond += sum > 1.0 ? 1 : 0;
    }
    EXPECT_GT(numBeyond, 100);
}

// The end.

TEST(stroke_sampling, EndIsASampleOnlyBeyondATenthOfTheSpacing)
{
    struct {
        float end;
        bool isAdded;
    } const cases[] = {{4.5f, true}, {4.625f, true}, {4.25f, true}, {4.0f, false}, {4.375f, true}};
    for (auto const& c : cases) {
        Sampled const sampled = Sample({{0, 0}, {c.end, 0}}, 0, 1, 1.0, 0.0, 1);
        EXPECT_EQ(sampled.points.size(), c.isAdded ? 5u : 4u) << c.end;
        EXPECT_EQ(sampled.count, c.isAdded ? 5.0 : 4.0);
        EXPECT_EQ(sampled.remainder, 0.0);
    }
    // Spacing 10: a tenth is 1, exactly and one step of a float above.
    EXPECT_TRUE(Sample({{0, 0}, {1, 0}}, 0, 1, 10.0, 0.0, 1).points.empty());
    EXPECT_EQ(Sample({{0, 0}, {1, 0}}, 0, 1, 10.0, 0.0, 1).remainder, 1.0);
    EXPECT_EQ(Sample({{0, 0}, {std::nextafter(1.0f, 2.0f), 0}}, 0, 1, 10.0, 0.0, 1).count, 1.0);
}

TEST(stroke_sampling, EndIsTheLastOfAllPoints)
{
    Sampled const sampled = Sample({{0, 0}, {1.5f, 0}, {8, 8}}, 0, 1, 1.0, 0.0, 1);
    ExpectPoints(sampled.points, {{1, 0}, {8, 8}}, 0.0);
}

TEST(stroke_sampling, PieceWithoutStepsHasNoLengthButAnEnd)
{
    for (unsigned int last : {0u, 1u}) {
        Sampled const none = Sample(kLine, 1, last, 1.0, 0.5, 0);
        EXPECT_EQ(none.count, 0.0);
        EXPECT_EQ(none.length, 0.0);
        EXPECT_EQ(none.remainder, 0.5);
        Sampled const end = Sample(kLine, 1, last, 1.0, 0.5, 1);
        ExpectPoints(end.points, {{5, 0}}, 0.0);
        EXPECT_EQ(end.remainder, 0.0);
    }
    EXPECT_EQ(Sample({}, 0, 0, 1.0, 0.5, 1).count, 0.0);
}

TEST(stroke_sampling, ShrunkSpacingCountsTheRemainderModuloItself)
{
    // 2.5 walked when the spacing falls to 1: half a spacing is left, so the first sample is at
    // 0.5.
    Sampled const sampled = Sample({{0, 0}, {2, 0}}, 0, 1, 1.0, 2.5, 0);
    ExpectPoints(sampled.points, {{0.5f, 0}, {1.5f, 0}}, 0.0);
    EXPECT_EQ(sampled.remainder, 0.5);
}

// Hostile numbers.

TEST(stroke_sampling, SpacingThatIsNoneGivesOnlyTheEnd)
{
    for (double spacing : {0.0, -0.0, -1.0, -std::numeric_limits<double>::infinity(),
                           std::numeric_limits<double>::quiet_NaN()}) {
        Sampled const none = Sample(kLine, 0, 2, spacing, 0.0, 0);
        EXPECT_TRUE(none.points.empty()) << spacing;
        EXPECT_EQ(none.remainder, 5.0);
        ExpectPoints(Sample(kLine, 0, 2, spacing, 0.0, 1).points, {{5, 0}}, 0.0);
    }
    EXPECT_TRUE(
        Sample(kLine, 0, 2, std::numeric_limits<double>::infinity(), 0.0, 1).points.empty());
}

TEST(stroke_sampling, LengthThatIsNoneLeavesTheRemainder)
{
    for (float x : {kNoNumber, kInfinite, -kInfinite}) {
        Sampled const sampled = Sample({{0, 0}, {x, 0}, {5, 0}}, 0, 2, 1.0, 0.25, 0);
        EXPECT_TRUE(sampled.points.empty());
        EXPECT_EQ(sampled.remainder, 0.25);
        EXPECT_EQ(Sample({{0, 0}, {x, 0}, {5, 0}}, 0, 2, 1.0, 7.25, 0).remainder, 7.25);
    }
}

TEST(stroke_sampling, HostileRemainderEnds)
{
    for (double remainder :
         {-1.0, -1e300, 1e300, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min()}) {
        Sampled const sampled = Sample(kLine, 0, 2, 1.0, remainder, 1);
        EXPECT_LE(sampled.points.size(), 6u) << remainder;
    }
}

TEST(stroke_sampling, MoreSamplesThanAnArrayHoldsAreRefused)
{
    HvPoint2fArray const line = Points(kLine);
    for (double spacing : {1e-9, 1e-300, std::numeric_limits<double>::denorm_min()}) {
        HvPoint2fArray out(1);
        double length = 7.0;
        double remainder = 0.0;
        EXPECT_THROW(SampleSubpath(line, 0, 2, spacing, length, remainder, out, 1), std::bad_alloc);
        EXPECT_EQ(out.Size(), 0u);
        EXPECT_EQ(length, 7.0);
        EXPECT_EQ(remainder, 0.0);
    }
}

TEST(stroke_sampling, FailedAllocationChangesNothing)
{
    struct State {
        HvPoint2fArray line = Points({{0, 0}, {2.5f, 0}, {5.25f, 0}});
        HvPoint2fArray out = HvPoint2fArray(1);
        double length = 7.0;
        double remainder = 0.125;
    };
    RefuseEachAllocation(
        [] { return State(); },
        [](State& s) { SampleSubpath(s.line, 0, 2, 1.0, s.length, s.remainder, s.out, 1); },
        [](State& s, bool completed) {
            EXPECT_EQ(s.out.Size(), completed ? 6u : 0u);
            EXPECT_EQ(s.length, completed ? 5.25 : 7.0);
            EXPECT_EQ(s.remainder, completed ? 0.0 : 0.125);
        });
}

// Properties.

TEST(stroke_sampling, PiecesGiveTheSamplesOfTheWhole)
{
    rc::check([] {
        unsigned int const count = PickInRange(2u, 40u);
        std::vector<StrokePoint> points;
        for (unsigned int i = 0; i < count; ++i) {
            points.emplace_back(static_cast<float>(PickInRange(0, 1000)) * 0.17f,
                                static_cast<float>(PickInRange(0, 1000)) * 0.13f);
        }
        double const spacing = 0.05 * PickInRange(1, 400);
        HvPoint2fArray const line = Points(points);
        Sampled const whole = Sample(points, 0, count - 1, spacing, 0.0, 0);

        HvPoint2fArray out(1);
        double total = 0.0;
        double remainder = 0.0;
        double sum = 0.0;
        for (unsigned int first = 0; first + 1 < count;) {
            unsigned int const last = std::min(first + PickInRange(1u, 6u), count - 1);
            double length = 0.0;
            sum += SampleSubpath(line, first, last, spacing, length, remainder, out, 0);
            total += length;
            first = last;
        }
        // The last sample may fall on either side of the end by rounding, a few ulps of the length.
        double const slack = 1e-9;
        double const whole2 = whole.count * spacing + whole.remainder;
        RC_ASSERT(std::fabs(sum * spacing + remainder - whole2) < slack);
        RC_ASSERT(std::fabs(total - whole.length) < slack);
        RC_ASSERT(sum == double(out.Size()));
        std::size_t const common = std::min<std::size_t>(out.Size(), whole.points.size());
        RC_ASSERT(common + 1 >= whole.points.size());
        for (unsigned int i = 0; i < common; ++i) {
            // A float of up to 200 holds about 1e-5.
            RC_ASSERT(std::fabs(out[i].x - whole.points[i].x) < 1e-4f);
            RC_ASSERT(std::fabs(out[i].y - whole.points[i].y) < 1e-4f);
        }
    });
}
