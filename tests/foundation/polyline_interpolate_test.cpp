// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polylines between polylines, and even subdivision.

#include <hv/foundation/polyline_interpolate.h>

#include <hv/foundation/angle.h>
#include <hv/foundation/polyline_length.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Point = HvPoint2<float>;
using Points = std::vector<Point>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

HvPoint2fArray MakeArray(Points const& points)
{
    return HvPoint2fArray(points.data(), unsigned(points.size()));
}

Points Contents(HvPoint2fArray const& a)
{
    return Points(a.begin(), a.end());
}

Points Lerp(Points const& a, Points const& b, double t)
{
    HvPoint2fArray out = MakeArray({{9, 9}});
    HvPoint2fArraySingleComponent_Lerp(MakeArray(a), MakeArray(b), t, out);
    return Contents(out);
}

Points Turtle(Points const& a, Points const& b, double t)
{
    HvPoint2fArray out = MakeArray(a);
    HvPoint2fArraySingleComponent_TurtleInterp(MakeArray(a), MakeArray(b), t, out);
    return Contents(out);
}

Points Subdivide(Points const& points, unsigned int n)
{
    HvPoint2fArray const a = MakeArray(points);
    HvDoubleArray chord;
    HvPoint2fArraySingleComponent_ComputeChordLength(a, chord);
    HvPoint2fArray out;
    HvPoint2fArraySingleComponent_EvenSubdivide(a, chord, n, out);
    return Contents(out);
}

Points RandomPoints(unsigned int count)
{
    Points points;
    for (unsigned int i = 0; i < count; ++i) {
        points.push_back(Point(float(PickInRange(-999, 999)), float(PickInRange(-999, 999))));
    }
    return points;
}

}  // namespace

TEST(Polyline_Lerp, CopiesAnEndExactly)
{
    Points const a{{1, 2}, {3, 4}}, b{{5, 6}, {7, 8}, {9, 10}};
    EXPECT_EQ(Lerp(a, b, 0.0), a);
    EXPECT_EQ(Lerp(a, b, -0.0), a);
    EXPECT_EQ(Lerp(a, b, 1.0), b);
}

TEST(Polyline_Lerp, InterpolatesAndExtends)
{
    Points const a{{0, 8}, {4, 4}}, b{{8, 0}, {4, 8}};
    EXPECT_EQ(Lerp(a, b, 0.25), (Points{{2, 6}, {4, 5}}));
    EXPECT_EQ(Lerp(a, b, 2.0), (Points{{16, -8}, {4, 12}}));
    EXPECT_EQ(Lerp(a, b, -1.0), (Points{{-8, 16}, {4, 0}}));
    EXPECT_EQ(Lerp({}, {}, 0.5), Points{});
}

TEST(Polyline_Lerp, RoundsEachProductToFloat)
{
    // 12582910.5 rounds to 12582910, and so does its sum with 0.5; the exact sum is 12582911.
    EXPECT_EQ(Lerp({{2.0f, 0}}, {{16777214.0f, 0}}, 0.75)[0].x, 12582910.0f);
}

TEST(Polyline_Lerp, WritesOverItsInputs)
{
    Points const a{{0, 8}, {4, 4}}, b{{8, 0}, {4, 8}};
    HvPoint2fArray overA = MakeArray(a);
    HvPoint2fArraySingleComponent_Lerp(overA, MakeArray(b), 0.25, overA);
    EXPECT_EQ(Contents(overA), (Points{{2, 6}, {4, 5}}));
    HvPoint2fArray overB = MakeArray(b);
    HvPoint2fArraySingleComponent_Lerp(MakeArray(a), overB, 0.25, overB);
    EXPECT_EQ(Contents(overB), (Points{{2, 6}, {4, 5}}));
}

TEST(Polyline_Lerp, AppendsRanges)
{
    HvPoint2fArray const a = MakeArray({{0, 0}, {0, 8}, {4, 4}, {1, 1}});
    HvPoint2fArray const b = MakeArray({{8, 0}, {4, 8}});
    HvPoint2fArray out = MakeArray({{9, 9}});
    HvPoint2fArraySingleComponent_Lerp(a, 1, 2, b, 0, 1, 0.25, out);
    EXPECT_EQ(Contents(out), (Points{{9, 9}, {2, 6}, {4, 5}}));
    HvPoint2fArraySingleComponent_Lerp(a, 2, 3, b, 0, 1, 0.0, out);
    HvPoint2fArraySingleComponent_Lerp(a, 2, 3, b, 1, 1, 1.0, out);
    EXPECT_EQ(Contents(out), (Points{{9, 9}, {2, 6}, {4, 5}, {4, 4}, {1, 1}, {4, 8}}));
}

TEST(Polyline_Lerp, StopsAtTheShorterRange)
{
    HvPoint2fArray const a = MakeArray({{0, 8}, {4, 4}, {7, 7}});
    HvPoint2fArray const b = MakeArray({{8, 0}});
    HvPoint2fArray out;
    HvPoint2fArraySingleComponent_Lerp(a, 0, 2, b, 0, 0, 0.5, out);
    EXPECT_EQ(Contents(out), (Points{{4, 4}}));
    HvPoint2fArray const none;
    HvPoint2fArraySingleComponent_Lerp(none, 0, none.Size() - 1, b, 0, 0, 0.0, out);
    HvPoint2fArraySingleComponent_Lerp(none, 0, none.Size() - 1, b, 0, 0, 0.5, out);
    EXPECT_EQ(out.Size(), 1u);
}

TEST(Polyline_Lerp, AppendsRangesOfTheOutputItself)
{
    HvPoint2fArray a = MakeArray({{0, 8}, {4, 4}});
    HvPoint2fArraySingleComponent_Lerp(a, 0, 1, a, 0, 1, 0.5, a);
    EXPECT_EQ(Contents(a), (Points{{0, 8}, {4, 4}, {0, 8}, {4, 4}}));
    HvPoint2fArraySingleComponent_Lerp(a, 0, 3, a, 0, 3, 1.0, a);
    EXPECT_EQ(a.Size(), 8u);
    EXPECT_EQ(a[7], Point(4, 4));
}

TEST(Polyline_EvenSubdivide, DividesByLength)
{
    EXPECT_EQ(Subdivide({{0, 0}, {8, 0}}, 4), (Points{{0, 0}, {2, 0}, {4, 0}, {6, 0}, {8, 0}}));
    EXPECT_EQ(Subdivide({{0, 0}, {3, 0}, {3, 5}}, 4),
              (Points{{0, 0}, {2, 0}, {3, 1}, {3, 3}, {3, 5}}));
    // A vertex met exactly, and one repeated.
    EXPECT_EQ(Subdivide({{0, 0}, {4, 0}, {4, 0}, {4, 4}}, 2), (Points{{0, 0}, {4, 0}, {4, 4}}));
}

TEST(Polyline_EvenSubdivide, GivesTheEndsOnly)
{
    Points const line{{0, 0}, {8, 0}};
    EXPECT_EQ(Subdivide(line, 0), line);
    EXPECT_EQ(Subdivide(line, 1), line);
    EXPECT_EQ(Subdivide({}, 3), Points{});
    EXPECT_EQ(Subdivide({{5, 5}}, 3), (Points{{5, 5}, {5, 5}}));
    EXPECT_EQ(Subdivide({{5, 5}, {5, 5}, {5, 5}}, 0), (Points{{5, 5}, {5, 5}}));
    EXPECT_EQ(Subdivide({{5, 5}, {5, 5}, {5, 5}}, 7), (Points{{5, 5}, {5, 5}}));
}

TEST(Polyline_EvenSubdivide, EndsOnLengthsThatAreNotFinite)
{
    HvPoint2fArray const a = MakeArray({{0, 0}, {8, 0}});
    for (double const total : {kNaN, kInfinity, -kInfinity, -1.0}) {
        HvDoubleArray chord(0.0, 1u);
        chord.Add(total);
        HvPoint2fArray out;
        HvPoint2fArraySingleComponent_EvenSubdivide(a, chord, 3, out);
        EXPECT_GE(out.Size(), 2u);
        EXPECT_LE(out.Size(), 4u);
        EXPECT_EQ(out[0], a[0]);
        EXPECT_EQ(out[out.Size() - 1], a[1]);
    }
}

TEST(Polyline_EvenSubdivide, RefusesMorePointsThanAnArrayHolds)
{
    HvPoint2fArray const a = MakeArray({{0, 0}, {8, 0}});
    HvDoubleArray chord(0.0, 1u);
    chord.Add(8.0);
    HvPoint2fArray out = MakeArray({{1, 1}});
    EXPECT_THROW(HvPoint2fArraySingleComponent_EvenSubdivide(
                     a, chord, std::numeric_limits<unsigned int>::max(), out),
                 std::bad_alloc);
    EXPECT_EQ(Contents(out), (Points{{1, 1}}));
}

TEST(Polyline_EvenSubdivide, AppendsToItsOwnInput)
{
    HvPoint2fArray a = MakeArray({{0, 0}, {8, 0}});
    HvDoubleArray chord(0.0, 1u);
    chord.Add(8.0);
    HvPoint2fArraySingleComponent_EvenSubdivide(a, chord, 2, a);
    EXPECT_EQ(Contents(a), (Points{{0, 0}, {8, 0}, {0, 0}, {4, 0}, {8, 0}}));
}

TEST(Polyline_EvenSubdivide, SpacesPointsEvenly)
{
    EXPECT_TRUE(rc::check([] {
        Points const points = RandomPoints(PickInRange(2u, 30u));
        unsigned int const n = PickInRange(2u, 200u);
        HvPoint2fArray const a = MakeArray(points);
        HvDoubleArray chord;
        double const total = HvPoint2fArraySingleComponent_ComputeChordLength(a, chord);
        RC_PRE(total > 0.0);
        Points const result = Subdivide(points, n);
        RC_ASSERT(result.size() == n + 1);
        RC_ASSERT(result.front() == points.front() && result.back() == points.back());
        unsigned int segment = 1;
        for (unsigned int k = 1; k < n; ++k) {
            long double const target = (long double)(total)*k / n;
            while (segment + 1 < a.Size() && chord[segment] < target) {
                ++segment;
            }
            long double const f =
                (target - chord[segment - 1]) / (chord[segment] - chord[segment - 1]);
            // Lengths up to 90000 summed 200 times round by about 1e-9, coordinates below 1000 in
            // float by 3e-5; beside a sharp vertex an error of length counts twice.
            RC_ASSERT(fabsl(a[segment - 1].x + (a[segment].x - a[segment - 1].x) * f -
                            result[k].x) < 1e-4L);
            RC_ASSERT(fabsl(a[segment - 1].y + (a[segment].y - a[segment - 1].y) * f -
                            result[k].y) < 1e-4L);
        }
    }));
}

TEST(Polyline_TurtleInterp, CopiesAnEndExactly)
{
    Points const a{{1, 2}, {3, 4}, {9, 1}}, b{{5, 6}, {7, 8}, {0, 0}};
    EXPECT_EQ(Turtle(a, b, 0.0), a);
    EXPECT_EQ(Turtle(a, b, 1.0), b);
}

TEST(Polyline_TurtleInterp, TurnsAndScalesTheSteps)
{
    // Steps of 2 along the first axis and steps of 6 along the second, half way: steps of 4 along
    // the diagonal, from the middle of the first points.
    Points const result = Turtle({{0, 0}, {2, 0}, {4, 0}}, {{2, 0}, {2, 6}, {2, 12}}, 0.5);
    ASSERT_EQ(result.size(), 3u);
    EXPECT_EQ(result[0], Point(1, 0));
    float const s = 2.828427125f;  // 4 / sqrt 2
    EXPECT_NEAR(result[1].x, 1 + s, 1e-6);
    EXPECT_NEAR(result[1].y, s, 1e-6);
    EXPECT_NEAR(result[2].x, 1 + 2 * s, 1e-6);
    EXPECT_NEAR(result[2].y, 2 * s, 1e-6);
}

TEST(Polyline_TurtleInterp, KeepsTheLengthOfTheFirstSteps)
{
    // The second steps are longer, but all steps have the length of the first two: 1 and 3 make 2.
    Points const result = Turtle({{0, 0}, {1, 0}, {9, 0}}, {{0, 0}, {3, 0}, {40, 0}}, 0.5);
    EXPECT_EQ(result, (Points{{0, 0}, {2, 0}, {4, 0}}));
}

TEST(Polyline_TurtleInterp, TurnsTheLongWayAcrossTheFirstAxis)
{
    // 45 and 315 degrees, half way: 180 degrees, not 0.
    Points const result = Turtle({{0, 0}, {1, 1}}, {{0, 0}, {1, -1}}, 0.5);
    EXPECT_NEAR(result[1].x, -std::sqrt(2.0), 1e-6);
    EXPECT_NEAR(result[1].y, 0.0, 1e-6);
}

TEST(Polyline_TurtleInterp, KnowsSinglePointsAndNone)
{
    EXPECT_EQ(Turtle({{0, 8}}, {{8, 0}}, 0.25), (Points{{2, 6}}));
    EXPECT_EQ(Turtle({}, {}, 0.25), Points{});
}

TEST(Polyline_TurtleInterp, WalksAlongTheFirstAxisWithoutAStep)
{
    // Repeated points have no direction, which counts as the angle 0.
    EXPECT_EQ(Turtle({{0, 0}, {2, 0}, {2, 0}}, {{0, 0}, {2, 0}, {2, 0}}, 0.5),
              (Points{{0, 0}, {2, 0}, {4, 0}}));
}

TEST(Polyline_TurtleInterp, WritesOverItsInputs)
{
    Points const a{{0, 0}, {2, 0}, {3, 5}}, b{{2, 0}, {2, 6}, {0, 12}};
    Points const expected = Turtle(a, b, 0.3);
    HvPoint2fArray overA = MakeArray(a);
    HvPoint2fArraySingleComponent_TurtleInterp(overA, MakeArray(b), 0.3, overA);
    EXPECT_EQ(Contents(overA), expected);
    HvPoint2fArray overB = MakeArray(b);
    HvPoint2fArraySingleComponent_TurtleInterp(MakeArray(a), overB, 0.3, overB);
    EXPECT_EQ(Contents(overB), expected);
}

TEST(Polyline_TurtleInterp, SizesItsOutput)
{
    HvPoint2fArray out;
    Points const a{{0, 0}, {2, 0}, {4, 0}};
    HvPoint2fArraySingleComponent_TurtleInterp(MakeArray(a), MakeArray(a), 0.5, out);
    EXPECT_EQ(Contents(out), a);
}

TEST(Polyline_TurtleInterp, KeepsAnEquilateralWalk)
{
    EXPECT_TRUE(rc::check([] {
        // Two copies of one walk of equal steps: the result is that walk, up to rounding.
        Points walk{{0, 0}};
        int const steps = PickInRange(1, 40);
        Point const directions[] = {{5, 0}, {3, 4}, {-3, 4}, {0, -5}, {-4, -3}};
        for (int i = 0; i < steps; ++i) {
            walk.push_back(walk.back() + directions[PickInRange(0, 5)]);
        }
        double const t = PickInRange(1, 1000) / 1000.0;
        Points const result = Turtle(walk, walk, t);
        RC_ASSERT(result.size() == walk.size());
        for (std::size_t i = 0; i < walk.size(); ++i) {
            // Each of at most 40 steps rounds coordinates below 256 to float: 40 * 1.6e-5.
            RC_ASSERT(HvPoint2_LengthAB(result[i], walk[i]) < 1e-3);
        }
    }));
}

TEST(Polyline_Interpolation, IsDefinedForAnyNumber)
{
    Points const a{{0, 0}, {2, 0}, {3, 5}}, b{{2, 0}, {2, 6}, {0, 12}};
    for (double const t : {kNaN, kInfinity, -kInfinity, 5e-324, -0.0, 1e10}) {
        EXPECT_EQ(Lerp(a, b, t).size(), 3u);
        EXPECT_EQ(Turtle(a, b, t).size(), 3u);
    }
    float const inf = std::numeric_limits<float>::infinity();
    float const big = std::numeric_limits<float>::max();
    Points const wild{{inf, -inf}, {big, -big}, {float(kNaN), 0}};
    EXPECT_EQ(Turtle(wild, a, 0.5).size(), 3u);
    EXPECT_EQ(Subdivide(wild, 5).back().y, 0.0f);
}

TEST(Polyline_Interpolation, LeavesTheOutputAsItWasWhenAnAllocationFails)
{
    auto const prepare = [] { return MakeArray({{7, 7}}); };
    auto const unchanged = [](HvPoint2fArray& out, bool completed) {
        if (!completed) {
            EXPECT_EQ(Contents(out), (Points{{7, 7}}));
        }
    };
    Points const a{{0, 0}, {2, 0}, {3, 5}};
    auto const line = MakeArray(a);
    HvDoubleArray chord;
    HvPoint2fArraySingleComponent_ComputeChordLength(line, chord);
    using Array = HvPoint2fArray;
    EXPECT_EQ(RefuseEachAllocation(
                  prepare,
                  [&](Array& out) { HvPoint2fArraySingleComponent_Lerp(line, line, 0.5, out); },
                  unchanged),
              1);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare,
                  [&](Array& out) {
                      HvPoint2fArraySingleComponent_Lerp(line, 0, 2, line, 0, 2, 0.5, out);
                  },
                  unchanged),
              1);
    EXPECT_EQ(
        RefuseEachAllocation(
            prepare,
            [&](Array& out) { HvPoint2fArraySingleComponent_EvenSubdivide(line, chord, 100, out); },
            unchanged),
        1);
    EXPECT_EQ(
        RefuseEachAllocation(
            prepare,
            [&](Array& out) { HvPoint2fArraySingleComponent_TurtleInterp(line, line, 0.5, out); },
            unchanged),
        1);
}
