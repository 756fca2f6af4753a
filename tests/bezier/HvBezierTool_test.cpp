// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Flattening of curves of any degree: tables, steps, the true curve.

#include <hv/bezier/HvBezierTool.h>

#include <hv/bezier/internal/degree_tables.h>

#include "../support/allocation_failure.h"
#include "cubic_test_support.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

namespace {

Point2 CurveAt(std::vector<Point2> const& controls, double t)
{
    std::vector<long double> x;
    std::vector<long double> y;
    for (Point2 const& p : controls) {
        x.push_back(p.x);
        y.push_back(p.y);
    }
    return {double(BezierAt(x, t)), double(BezierAt(y, t))};
}

/// The same curve with one more control point.
std::vector<Point2> Elevated(std::vector<Point2> const& p)
{
    double const n = double(p.size());
    std::vector<Point2> out{p.front()};
    for (std::size_t i = 1; i < p.size(); ++i) {
        double const w = double(i) / n;
        out.push_back(p[i - 1] * w + p[i] * (1 - w));
    }
    out.push_back(p.back());
    return out;
}

unsigned int Flatten(std::vector<Point2> const& p, double tolerance, HvPoint2dArray& out)
{
    HvBezierTool tool;
    return tool.Flatten(p.data(), 0, static_cast<unsigned int>(p.size()) - 1, tolerance, &out, 0);
}

/// S(k, r) by the sum over inclusion and exclusion, times r!.
long Surjections(int k, int r)
{
    long sum = 0;
    long binomial = 1;
    for (int i = 0; i <= r; ++i) {
        long power = 1;
        for (int j = 0; j < k; ++j) {
            power *= r - i;
        }
        sum += (i % 2 == 0 ? 1 : -1) * binomial * power;
        binomial = binomial * (r - i) / (i + 1);
    }
    return sum;
}

}  // namespace

TEST(HvBezierTool, StartsWithZeros)
{
    HvBezierTool const tool;
    EXPECT_EQ(tool.MaxDegreeForThisImplementation(), 8u);
    for (Point2 const& p : tool.differenceTable) {
        EXPECT_EQ(p, Point2(0, 0));
    }
    for (Point2 const& p : tool.forwardDifferences) {
        EXPECT_EQ(p, Point2(0, 0));
    }
}

TEST(HvBezierTool, HasTheCoefficientsOfForwardDifferences)
{
    for (int n = 0; n <= 8; ++n) {
        long binomial = 1;
        EXPECT_EQ(DegreePairs[std::size_t(n)], unsigned(n * (n - 1) / 2));
        for (int k = 0; k <= 8; ++k) {
            for (int r = 0; r <= 8; ++r) {
                long const expected = k <= n && r <= k ? binomial * Surjections(k, r) : 0;
                EXPECT_EQ(
                    ForwardDifferenceCoefficient[std::size_t(n)][std::size_t(k)][std::size_t(r)],
                    expected)
                    << n << ' ' << k << ' ' << r;
            }
            binomial = binomial * (n - k) / (k + 1);
        }
    }
    EXPECT_EQ(ForwardDifferenceCoefficient[3][1][1], 3);
    EXPECT_EQ(ForwardDifferenceCoefficient[3][2][2], 6);
    EXPECT_EQ(ForwardDifferenceCoefficient[3][3][2], 6);
}

TEST(HvBezierTool, GivesTheEndsOfDegreesBelowTwo)
{
    Point2 const p[3] = {{9, 9}, {1, 2}, {3, 4}};
    HvBezierTool tool;
    tool.degree = 77;
    HvPoint2dArray out;
    EXPECT_EQ(tool.Flatten(p, 1, 1, 0.1, &out, 0), 2u);
    EXPECT_EQ(tool.Flatten(p, 1, 1, 0.1, &out, 1), 1u);
    EXPECT_EQ(tool.Flatten(p, 1, 0, 0.1, &out, 0), 2u);
    EXPECT_EQ(tool.Flatten(p, 1, 0, 0.1, &out, 1), 1u);
    Point2 const expected[6] = {p[1], p[2], p[2], p[1], p[1], p[1]};
    ASSERT_EQ(out.Size(), 6u);
    for (unsigned int i = 0; i < 6; ++i) {
        EXPECT_EQ(out[i], expected[i]) << i;
    }
    EXPECT_EQ(tool.degree, 77u) << "no state is touched";
}

TEST(HvBezierTool, AppendsNothingAboveDegreeEight)
{
    Point2 const p[10] = {};
    HvPoint2<float> const f[10] = {};
    HvBezierTool tool;
    HvPoint2dArray out;
    EXPECT_EQ(tool.Flatten(p, 0, 9, 0.1, &out, 0), 0u);
    EXPECT_EQ(tool.Flatten(p, 0, 4294967295u, 0.1, &out, 0), 0u);
    EXPECT_EQ(out.Size(), 0u);
    EXPECT_EQ(tool.FlatPolylineSizeUpperBound(f, 0, 9, 0.1), 0u);
    tool.degree = 9;
    tool.ContextInitOne(p);
    tool.ContextInitTwo();
    tool.OFDInnerLoop();
    tool.PMSOFD(p, 3);
    EXPECT_EQ(tool.DepthPMSOFD(), 0u);
}

TEST(HvBezierTool, FillsTheDifferenceTableRowAfterRow)
{
    Point2 const p[4] = {{0, 0}, {1, 4}, {2, 4}, {3, 0}};
    HvBezierTool tool;
    tool.degree = 3;
    tool.tolerance = 0.25;
    tool.ContextInitOne(p);
    Point2 const rows[10] = {{0, 0}, {1, 4},  {2, 4},  {3, 0},  {1, 4},
                             {1, 0}, {1, -4}, {0, -4}, {0, -4}, {0, 0}};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(tool.differenceTable[i], rows[i]) << i;
    }
    // v = 3 * 4 * 0.25 / 0.25 = 12: two base-4 digits.
    EXPECT_EQ(tool.depth, 2u);
    EXPECT_EQ(tool.pointCount, 5u);
}

TEST(HvBezierTool, ChoosesTheDepthByDegreeAndDeviation)
{
    // Degree 2, one second difference (0, -2 h) across a level chord: v = 1 * 2 h * 0.25 /
    // tolerance.
    HvBezierTool tool;
    tool.degree = 2;
    tool.tolerance = 1.0;
    struct {
        double v;
        unsigned int depth;
    } const rows[] = {{0.25, 0},           {0.5, 1},           {3.25, 1}, {3.5, 2},
                      {15.5, 3},           {1073741824.0, 16},  // 2^30, sixteen digits
                      {4294967296.0, 16},                       // 2^32, quartered
                      {17179869184.0, 17},                      // 2^34
                      {0x1p+1000, 500},    {kInfinity, 512}};
    for (auto const& row : rows) {
        Point2 const p[3] = {{0, 0}, {1, row.v * 2}, {2, 0}};
        tool.ContextInitOne(p);
        EXPECT_EQ(tool.depth, row.depth) << row.v;
        EXPECT_EQ(tool.pointCount, row.depth < 32 ? (1u << row.depth) + 1 : 4294967295u);
    }
    // Ends that meet: the distance of the inner points from the start; 6 pairs, 2 away, v = 3.
    Point2 const closed[5] = {{1, 1}, {1, 2}, {3, 1}, {1, 1}, {1, 1}};
    tool.degree = 4;
    tool.ContextInitOne(closed);
    EXPECT_EQ(tool.depth, 1u);
    Point2 const notANumber[5] = {{1, 1}, {1, kNaN}, {3, kNaN}, {1, kNaN}, {7, 1}};
    tool.ContextInitOne(notANumber);
    EXPECT_EQ(tool.depth, 0u);
    tool.degree = 1;
    tool.ContextInitOne(closed);
    EXPECT_EQ(tool.depth, 0u);
    EXPECT_EQ(tool.pointCount, 2u);
}

TEST(HvBezierTool, FormsExactForwardDifferencesInDyadicCases)
{
    // Differences of f(i h) taken by hand: r-th difference at 0 of the sampled polynomial.
    for (unsigned int n = 2; n <= 8; ++n) {
        Point2 p[9];
        for (unsigned int i = 0; i <= n; ++i) {
            p[i] = Point2(double((i * 37 + 11) % 64), double((i * i * 13 + 5) % 64));
        }
        HvBezierTool tool;
        tool.degree = n;
        tool.tolerance = 1.0;
        tool.ContextInitOne(p);
        tool.depth = 2;
        for (Point2& f : tool.forwardDifferences) {
            f = Point2(5, 5);
        }
        tool.ContextInitTwo();
        EXPECT_EQ(tool.forwardDifferences[n], Point2(0, 0));
        std::vector<Point2> samples;
        for (unsigned int i = 0; i <= n; ++i) {
            samples.push_back(CurveAt({p, p + n + 1}, i / 4.0));
        }
        for (unsigned int r = 1; r <= n; ++r) {
            for (unsigned int i = 0; i + r <= n; ++i) {
                samples[i] = samples[i + 1] - samples[i];
            }
            // Integers times 4^-8 and their sums fit 53 bits, so they are exact; the samples beyond
            // t = 1 are exact in long double.
            EXPECT_EQ(tool.forwardDifferences[r - 1], samples[0]) << n << ' ' << r;
        }
    }
}

TEST(HvBezierTool, WalksOneRunByForwardDifferences)
{
    Point2 const p[4] = {{0, 0}, {1, 4}, {2, 4}, {3, 0}};
    HvPoint2dArray out;
    HvBezierTool tool;
    tool.degree = 3;
    tool.tolerance = 0.25;
    tool.doubleOutput = &out;
    tool.outputIsDouble = 1;
    tool.ContextInitOne(p);
    tool.ContextInitTwo();
    tool.OFDInnerLoop();
    ASSERT_EQ(out.Size(), 3u);
    EXPECT_EQ(tool.outputCount, 3u);
    EXPECT_EQ(out[0], Point2(0.75, 2.25));
    EXPECT_EQ(out[1], Point2(1.5, 3));
    EXPECT_EQ(out[2], Point2(2.25, 2.25));
}

TEST(HvBezierTool, HalvesByTheThirdDifference)
{
    // Third difference d along a line; tolerance 1; the points are the midpoints and the ends.
    struct {
        double thirdDifference;
        unsigned int depth;
    } const rows[] = {{0.25, 0},         {7, 0},   {7.5, 1}, {63.5, 2}, {4294967295.0, 10},
                      {4294967304.0, 1}, {1e19, 0}};
    for (auto const& row : rows) {
        Point2 const p[4] = {{0, 0}, {0, 0}, {0, 0}, {row.thirdDifference, 0}};
        HvBezierTool tool;
        tool.degree = 3;
        tool.tolerance = 1.0;
        tool.ContextInitOne(p);
        EXPECT_EQ(tool.DepthPMSOFD(), row.depth) << row.thirdDifference;
        HvPoint2dArray out;
        EXPECT_EQ(tool.Flatten(p, 0, 3, 1.0, &out, 0), (1u << row.depth) + 1);
    }
    // Degree 5 with several third differences: the longest counts. Rows: 0 0 0 0 0 20, so that the
    // third differences are 0, 0, 20: q = 20, two digits.
    Point2 const quintic[6] = {{0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 20}};
    HvBezierTool tool;
    tool.degree = 5;
    tool.tolerance = 1.0;
    tool.ContextInitOne(quintic);
    EXPECT_EQ(tool.DepthPMSOFD(), 1u);
    tool.degree = 2;
    EXPECT_EQ(tool.DepthPMSOFD(), 0u);
}

TEST(HvBezierTool, SplitsInOrderOfTheParameter)
{
    // x = 64 t^3 at tolerance 1: midpoints at quarters, 1, 8, 27.
    Point2 const p[4] = {{0, 0}, {0, 0}, {0, 0}, {64, 0}};
    HvPoint2dArray out;
    HvBezierTool tool;
    ASSERT_EQ(tool.Flatten(p, 0, 3, 1.0, &out, 0), 5u);
    double const x[5] = {0, 1, 8, 27, 64};
    for (unsigned int i = 0; i < 5; ++i) {
        EXPECT_EQ(out[i], Point2(x[i], 0));
    }
}

TEST(HvBezierTool, RefusesToHalveBeyondWhatAnArrayHolds)
{
    Point2 const p[4] = {};
    HvPoint2dArray out;
    HvBezierTool tool;
    tool.degree = 3;
    tool.doubleOutput = &out;
    tool.outputIsDouble = 1;
    EXPECT_THROW(tool.PMSOFD(p, 32), std::bad_alloc);
    EXPECT_THROW(tool.PMSOFD(p, 4294967295u), std::bad_alloc);
    // A parabola that takes 2^40 steps.
    Point2 const tall[3] = {{0, 0}, {1, 0x1p+81}, {2, 0}};
    out.Add(Point2(7, 7));
    EXPECT_THROW(tool.Flatten(tall, 0, 2, 1.0, &out, 0), std::bad_alloc);
    ASSERT_EQ(out.Size(), 1u);
    EXPECT_EQ(out[0], Point2(7, 7));
}

TEST(HvBezierTool, PlacesTheNumberOfPointsOfTheCubicForm)
{
    RandomCurves random(12);
    for (int round = 0; round < 100; ++round) {
        double const scale = random.Scale(-20, 20);
        double const tolerance = scale * random.Scale(-10, 0);
        std::vector<Point2> p(4);
        random.Fill(p.data(), 4, scale);
        HvPoint2dArray general;
        HvPoint2dArray cubic;
        unsigned int const count = Flatten(p, tolerance, general);
        // The two divide by the tolerance in another order, which a digit's border could show; not
        // in this set.
        ASSERT_EQ(HvBezierTool_FlattenCubic2d(p.data(), tolerance, &cubic, 0), count);
        for (unsigned int i = 0; i < count; ++i) {
            // Forward differences of up to 64 steps.
            EXPECT_LT(Length(general[i] - cubic[i]), scale * 1e-13);
        }
    }
    // No limit of 1024 steps here.
    HvPoint2dArray tall;
    EXPECT_EQ(Flatten({{0, 0}, {1, 1048576.0}, {2, 1048576.0}, {3, 0}}, 0.75, tall), 2049u);
}

TEST(HvBezierTool, StaysWithinTheToleranceAtEveryDegree)
{
    // Graphs y(x) with x = 300 t: polyline and curve are compared at the same x. The tolerance
    // holds across the chord of a piece, and no chord is steeper than the control polygon, 1:
    // measured along y it may be sqrt(2) times as much.
    constexpr double kTolerance = 0.01;
    RandomCurves random(13);
    for (int round = 0; round < 40; ++round) {
        std::vector<Point2> p;
        for (int i = 0; i < 4; ++i) {
            p.emplace_back(100.0 * i, random.Uniform(-50, 50));
        }
        std::vector<Point2> const cubic = p;
        for (unsigned int n = 3; n <= 8; ++n, p = Elevated(p)) {
            HvPoint2dArray out;
            unsigned int const count = Flatten(p, kTolerance, out);
            ASSERT_EQ(count, out.Size());
            EXPECT_EQ(out[0], p.front());
            EXPECT_EQ(out[count - 1], p.back());
            for (unsigned int i = 0; i + 1 < count; ++i) {
                ASSERT_LT(out[i].x, out[i + 1].x);
                EXPECT_NEAR(out[i].y, CubicAt(cubic.data(), out[i].x / 300.0).y, 1e-11);
                for (int k = 1; k < 8; ++k) {
                    Point2 const on = out[i] + (out[i + 1] - out[i]) * (k / 8.0);
                    EXPECT_NEAR(on.y, CubicAt(cubic.data(), on.x / 300.0).y,
                                std::sqrt(2.0) * kTolerance);
                }
            }
        }
    }
}

TEST(HvBezierTool, FlattensAQuadraticExactlyInDyadicCases)
{
    // y = 2 * 8 t (1 - t): v = 16 * 0.25 / 0.25 = 16, k = 16: three digits, eight steps.
    HvPoint2dArray out;
    ASSERT_EQ(Flatten({{0, 0}, {1, 8}, {2, 0}}, 0.25, out), 9u);
    for (unsigned int i = 0; i <= 8; ++i) {
        double const t = i / 8.0;
        EXPECT_EQ(out[i], Point2(2 * t, 16 * t * (1 - t)));
    }
}

TEST(HvBezierTool, WidensAndNarrowsInTheFloatForms)
{
    HvPoint2<float> const f[6] = {{9, 9}, {0.1f, 0.2f}, {1, 30}, {2, -30}, {3, 7}, {4.4f, 0.3f}};
    Point2 wide[6];
    HvPoint2fArray array;
    for (int i = 0; i < 6; ++i) {
        wide[i] = Point2(f[i]);
        array.Add(f[i]);
    }
    HvBezierTool tool;
    HvPoint2dArray inDouble;
    HvPoint2fArray inFloat;
    unsigned int const count = tool.Flatten(wide, 1, 4, 0.05, &inDouble, 1);
    EXPECT_EQ(tool.outputIsDouble, 1);
    EXPECT_EQ(tool.outputCount, count);
    ASSERT_EQ(tool.Flatten(f, 1, 4, 0.05, &inFloat, 1), count);
    EXPECT_EQ(tool.outputIsDouble, 0);
    // The array as its own output.
    ASSERT_EQ(tool.Flatten(array, 1, 4, 0.05, &array, 1), count);
    ASSERT_EQ(array.Size(), 6 + count);
    for (unsigned int i = 0; i < count; ++i) {
        EXPECT_EQ(inFloat[i], HvPoint2<float>(inDouble[i]));
        EXPECT_EQ(array[6 + i], inFloat[i]);
    }
    EXPECT_EQ(tool.FlatPolylineSizeUpperBound(f, 1, 1, 0.05), 2u);
    EXPECT_EQ(tool.FlatPolylineSizeUpperBound(f, 1, 0, 0.05), 1u);
    // (0, 0) (1, 8) (2, 0) at 0.25: eight steps, as above.
    HvPoint2<float> const quadratic[3] = {{0, 0}, {1, 8}, {2, 0}};
    EXPECT_EQ(tool.FlatPolylineSizeUpperBound(quadratic, 0, 2, 0.25), 9u);
}

TEST(HvBezierTool, LeavesTheOutputAloneWhenMemoryFails)
{
    Point2 const p[5] = {{0, 0}, {10, 300}, {20, -300}, {30, 70}, {44, 3}};
    long const allocations =
        RefuseEachAllocation([] { return std::make_unique<HvPoint2dArray>(3u); },
                             [&p](std::unique_ptr<HvPoint2dArray>& out) {
                                 out->Add(Point2(7, 7));
                                 HvBezierTool().Flatten(p, 0, 4, 0.01, out.get(), 0);
                             },
                             [](std::unique_ptr<HvPoint2dArray>& out, bool completed) {
                                 ASSERT_GE(out->Size(), 1u);
                                 EXPECT_EQ((*out)[0], Point2(7, 7));
                                 EXPECT_EQ(out->Size() == 1, !completed);
                             });
    EXPECT_GT(allocations, 3);
}

TEST(HvBezierTool, EndsForEveryNumber)
{
    for (double const value : {kNaN, kInfinity, -kInfinity, kGreatest, -kGreatest, 5e-324, 0.0}) {
        for (unsigned int i = 0; i <= 8; ++i) {
            std::vector<Point2> p(9);
            p[i].x = value;
            HvPoint2dArray out;
            try {
                unsigned int const count = Flatten(p, 1.0, out);
                EXPECT_EQ(count, out.Size());
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(out.Size(), 0u);
            }
        }
        HvPoint2dArray out;
        try {
            Flatten({{0, 0}, {1, 5}, {2, -3}, {3, 1}}, value, out);
            EXPECT_GE(out.Size(), 2u);
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(out.Size(), 0u);
        }
    }
}
