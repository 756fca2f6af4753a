// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves through all points: against the recursive form of the spline, joints, no loops, repeated
// points, refusals.

#include <hv/bezier/HvBezierTool.h>

#include "../support/allocation_failure.h"
#include "../support/generators.h"
#include "fit_test_support.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

FittedChain OpenOf(HvPoint2fArray const& points)
{
    HvBezierTool tool;
    FittedChain chain;
    unsigned int const added = tool.OpenCatmullRomFit(points, chain, 0);
    EXPECT_EQ(added, chain.points.size());
    return chain;
}

FittedChain ClosedOf(HvPoint2fArray const& points)
{
    HvBezierTool tool;
    FittedChain chain;
    unsigned int const added = tool.ClosedCatmullRomFit(points, chain);
    EXPECT_EQ(added, chain.points.size());
    return chain;
}

/// Points of whole numbers up to 2^range, so that neither float nor the sums of it round.
HvPoint2fArray RandomPoints(unsigned int count, int range, RandomCurves& random)
{
    HvPoint2fArray points;
    double const reach = std::ldexp(1.0, range);
    for (unsigned int i = 0; i < count; ++i) {
        points.Add(ToFloat({std::floor(random.Uniform(-reach, reach)),
                            std::floor(random.Uniform(-reach, reach))}));
    }
    return points;
}

HvPoint2fArray Circle(int count, double radius)
{
    HvPoint2fArray points;
    for (int i = 0; i < count; ++i) {
        double const angle = kTwoPi * i / count;
        points.Add(ToFloat({radius * std::cos(angle), radius * std::sin(angle)}));
    }
    return points;
}

/// The point at u of the segment from p[1] to p[2], by Barry's and Goldman's recursion over the
/// centripetal knots.
Point2 Recursive(Point2 const* p, double u)
{
    double knots[4] = {0, 0, 0, 0};
    for (int i = 1; i < 4; ++i) {
        knots[i] = knots[i - 1] + std::sqrt(Length(p[i] - p[i - 1]));
    }
    double const t = knots[1] + (knots[2] - knots[1]) * u;
    auto const between = [&](Point2 const& a, Point2 const& b, int i, int k) {
        double const share = (t - knots[i]) / (knots[k] - knots[i]);
        return a * (1 - share) + b * share;
    };
    Point2 const a1 = between(p[0], p[1], 0, 1);
    Point2 const a2 = between(p[1], p[2], 1, 2);
    Point2 const a3 = between(p[2], p[3], 2, 3);
    return between(between(a1, a2, 0, 2), between(a2, a3, 1, 3), 1, 2);
}

/// Whether a cubic meets itself, or has a cusp, at inner parameters.
///
/// With c1 t + c2 t^2 + c3 t^3 for the curve less its start, equal points at t1 and t2 mean
/// c1 + c2 s + c3 q = 0 for s = t1 + t2 and q = t1^2 + t1 t2 + t2^2: two equations for s and q.
bool MeetsItself(std::vector<Point2> const& c)
{
    Point2 const c1 = (c[1] - c[0]) * 3.0;
    Point2 const c2 = (c[2] - c[1] * 2.0 + c[0]) * 3.0;
    Point2 const c3 = c[3] - c[2] * 3.0 + c[1] * 3.0 - c[0];
    double const det = HvPoint2_AdetB(c2, c3);
    double const size = Length(c1) + Length(c2) + Length(c3);
    if (std::fabs(det) <= 1e-9 * size * size) {
        return false;  // a parabola or a line up to rounding
    }
    double const s = -HvPoint2_AdetB(c1, c3) / det;
    double const q = -HvPoint2_AdetB(c2, c1) / det;
    double const discriminant = s * s - 4 * (s * s - q);
    if (discriminant < 0) {
        return false;
    }
    double const low = 0.5 * (s - std::sqrt(discriminant));
    double const high = 0.5 * (s + std::sqrt(discriminant));
    return low > 1e-5 && high < 1 - 1e-5;
}

Point2 UnitOf(Point2 const& v)
{
    return v * (1.0 / Length(v));
}

/// The cubics go from point to point; where the handles are long enough for float to tell, they lie
/// on the bisector of the turn on both sides.
void CheckJoints(FittedChain const& chain, HvPoint2fArray const& points, bool isClosed)
{
    auto const count = points.Size();
    ASSERT_EQ(chain.Segments(), isClosed ? count : count - 1);
    for (unsigned int i = 0; i < count; ++i) {
        EXPECT_EQ(chain.points[3 * std::size_t{i}], points[i]);
        bool const isEnd = !isClosed && (i == 0 || i + 1 == count);
        if (isEnd) {
            continue;
        }
        Point2 const p(points[i]);
        Point2 const in = p - Point2(points[(i + count - 1) % count]);
        Point2 const out = Point2(points[(i + 1) % count]) - p;
        Point2 const bisector = UnitOf(in) + UnitOf(out);
        std::size_t const last = chain.points.size() - 1;
        Point2 const handles[2] = {p - Point2(chain.points[i == 0 ? last - 1 : 3 * i - 1]),
                                   Point2(chain.points[3 * std::size_t{i} + 1]) - p};
        for (Point2 const& handle : handles) {
            double const rounding = 1e-7 * (Length(p) + Length(handle));
            EXPECT_NEAR(HvPoint2_AdetB(handle, bisector), 0.0, rounding * Length(bisector));
            EXPECT_GE(Dot(handle, bisector), -rounding * Length(bisector));
        }
    }
}

}  // namespace

TEST(HvBezierTool_catmull_rom, IsTheRecursiveSplineOverCentripetalKnots)
{
    RandomCurves random(101);
    for (int round = 0; round < 50; ++round) {
        HvPoint2fArray const points = RandomPoints(12, 10, random);
        FittedChain const open = OpenOf(points);
        FittedChain const closed = ClosedOf(points);
        for (unsigned int i = 0; i < 12; ++i) {
            Point2 p[4];
            for (unsigned int k = 0; k < 4; ++k) {
                p[k] = Point2(points[(i + k) % 12]);
            }
            for (double u = 0; u <= 1; u += 0.125) {
                Point2 const expected = Recursive(p, u);
                // Handles of some thousands are rounded to float by 2^-13.
                Point2 const cubic = CubicAt(closed.Cubic((i + 1) % 12).data(), u);
                EXPECT_NEAR(Length(cubic - expected), 0.0, 3e-4);
                if (i < 9) {
                    EXPECT_NEAR(Length(CubicAt(open.Cubic(i + 1).data(), u) - expected), 0.0, 3e-4);
                }
            }
        }
    }
}

TEST(HvBezierTool_catmull_rom, HandlesByHand)
{
    // Steps of 4, 1 and 4 with right angles: knot distances 2, 1 and 2. At (4, 0) the sum of the
    // directions is (1, 1), and a third of the derivative 2 * 1 / 3 / 3 of it.
    HvPoint2fArray const points = ArrayOf({{0, 0}, {4, 0}, {4, 1}, {8, 1}});
    FittedChain const chain = OpenOf(points);
    auto const f = [](double value) { return static_cast<float>(value); };
    EXPECT_FLOAT_EQ(chain.points[2].x, f(4 - 4.0 / 9));
    EXPECT_FLOAT_EQ(chain.points[2].y, f(-4.0 / 9));
    EXPECT_FLOAT_EQ(chain.points[4].x, f(4 + 2.0 / 9));
    EXPECT_FLOAT_EQ(chain.points[4].y, f(2.0 / 9));
    // The step before the start mirrors that after (4, 0): direction (0, -1), knot distance 1.
    EXPECT_FLOAT_EQ(chain.points[1].x, f(4.0 / 9));
    EXPECT_FLOAT_EQ(chain.points[1].y, f(-4.0 / 9));
}

TEST(HvBezierTool_catmull_rom, CubicsJoinAlongTheBisectors)
{
    RandomCurves random(102);
    for (int round = 0; round < 100; ++round) {
        HvPoint2fArray const points = RandomPoints(20, 2 + round % 15, random);
        HvPoint2fArray distinct;
        for (FitPoint const& p : points) {
            if (distinct.Size() == 0 || p != distinct[distinct.Size() - 1]) {
                distinct.Add(p);
            }
        }
        if (distinct[distinct.Size() - 1] == distinct[0]) {
            distinct.Add(FitPoint(1000, 1000));
        }
        CheckJoints(OpenOf(distinct), distinct, false);
        CheckJoints(ClosedOf(distinct), distinct, true);
    }
}

RC_GTEST_PROP(HvBezierTool_catmull_rom_property, NoCubicMeetsItselfOrHasACusp, ())
{
    RandomCurves random(PickInRange<unsigned int>(0, 1000000));
    HvPoint2fArray points;
    Point2 at;
    double heading = 0;
    for (int i = 0; i < 40; ++i) {
        points.Add(ToFloat(at));
        // All turns, nearly straight back too, and steps of very different lengths.
        heading += random.Uniform(-3.14, 3.14);
        at = at + Point2(std::cos(heading), std::sin(heading)) * random.Scale(-4, 4);
    }
    for (FittedChain const& chain : {OpenOf(points), ClosedOf(points)}) {
        for (std::size_t i = 0; i < chain.Segments(); ++i) {
            RC_ASSERT(!MeetsItself(chain.Cubic(i)));
        }
    }
}

TEST(HvBezierTool_catmull_rom, CirclePointsGiveACircleUpToTheEnds)
{
    HvPoint2fArray const points = Circle(24, 100);
    FittedChain const closed = ClosedOf(points);
    FittedChain const open = OpenOf(points);
    EXPECT_EQ(closed.calls, "M" + std::string(24, 'C') + "Z");
    for (std::size_t i = 0; i < 24; ++i) {
        for (int k = 0; k <= 32; ++k) {
            // The handle is a third of the chord times the cosine of half the turn; that falls
            // short of the arc's by a twelfth of its angle squared, which is 0.26, and the middle
            // with it.
            EXPECT_NEAR(Length(CubicAt(closed.Cubic(i).data(), k / 32.0)), 100, 0.02);
        }
    }
    // The ends go on as if points came before and after.
    for (std::size_t k = 0; k < open.points.size(); ++k) {
        EXPECT_NEAR(open.points[k].x, closed.points[k].x, 3e-5);
        EXPECT_NEAR(open.points[k].y, closed.points[k].y, 3e-5);
    }
}

TEST(HvBezierTool_catmull_rom, StraightPointsGiveStraightCubicsThatDoNotTurnBack)
{
    HvPoint2fArray const points = ArrayOf({{0, 0}, {100, 0}, {101, 0}, {230, 0}, {230.5F, 0}});
    FittedChain const chain = OpenOf(points);
    for (std::size_t i = 0; i < chain.Segments(); ++i) {
        double before = chain.Cubic(i)[0].x;
        for (int k = 1; k <= 64; ++k) {
            Point2 const p = CubicAt(chain.Cubic(i).data(), k / 64.0);
            EXPECT_EQ(p.y, 0.0);
            EXPECT_GT(p.x, before);
            before = p.x;
        }
    }
}

TEST(HvBezierTool_catmull_rom, TurningStraightBackCollapsesTheHandles)
{
    FittedChain const chain = OpenOf(ArrayOf({{0, 0}, {50, 0}, {0, 0}, {0, 30}}));
    EXPECT_EQ(chain.points[2], FitPoint(50, 0));
    EXPECT_EQ(chain.points[4], FitPoint(50, 0));
}

TEST(HvBezierTool_catmull_rom, RepeatedPointsCountOnce)
{
    RandomCurves random(103);
    HvPoint2fArray const once = RandomPoints(15, 8, random);
    HvPoint2fArray often;
    for (unsigned int i = 0; i < 15; ++i) {
        for (unsigned int k = 0; k <= i % 3; ++k) {
            often.Add(once[i]);
        }
    }
    EXPECT_EQ(OpenOf(often).points, OpenOf(once).points);
    EXPECT_EQ(ClosedOf(often).points, ClosedOf(once).points);
    often.Add(once[0]);
    EXPECT_EQ(ClosedOf(often).points, ClosedOf(once).points);
}

TEST(HvBezierTool_catmull_rom, FewPoints)
{
    EXPECT_EQ(OpenOf(HvPoint2fArray(FitPoint(3, 4), 5u)).points,
              std::vector<FitPoint>(4, FitPoint(3, 4)));
    EXPECT_EQ(ClosedOf(HvPoint2fArray(FitPoint(3, 4), 5u)).calls, "MCZ");
    HvPoint2fArray const two = ArrayOf({{0, 0}, {9, 3}});
    EXPECT_EQ(OpenOf(two).points, (std::vector<FitPoint>{{0, 0}, {3, 1}, {6, 2}, {9, 3}}));
    EXPECT_EQ(ClosedOf(two).points,
              (std::vector<FitPoint>{{0, 0}, {0, 0}, {9, 3}, {9, 3}, {9, 3}, {0, 0}, {0, 0}}));
}

TEST(HvBezierTool_catmull_rom, ContinuedPathGetsNoMoveto)
{
    HvPoint2fArray const points = ArrayOf({{0, 0}, {30, 10}, {60, -40}});
    FittedChain const whole = OpenOf(points);
    FittedChain chain;
    HvBezierTool tool;
    EXPECT_EQ(tool.OpenCatmullRomFit(points, chain, 1), 6u);
    EXPECT_EQ(chain.calls, "CC");
    EXPECT_EQ(chain.points, std::vector<FitPoint>(whole.points.begin() + 1, whole.points.end()));
}

TEST(HvBezierTool_catmull_rom, RefusalsDrawNothing)
{
    auto const nan = static_cast<float>(kNaN);
    auto const infinite = static_cast<float>(kInfinity);
    HvBezierTool tool;
    for (HvPoint2fArray const& points :
         {HvPoint2fArray(), ArrayOf({{1, 1}}), ArrayOf({{0, 0}, {nan, 1}, {2, 2}}),
          ArrayOf({{0, 0}, {1, -infinite}})}) {
        FittedChain chain;
        EXPECT_EQ(tool.OpenCatmullRomFit(points, chain, 0), 0u);
        EXPECT_EQ(tool.OpenCatmullRomFit(points, chain, 1), 0u);
        EXPECT_EQ(tool.ClosedCatmullRomFit(points, chain), 0u);
        EXPECT_EQ(chain.calls, "");
    }
}

TEST(HvBezierTool_catmull_rom, CoordinatesAtTheEndsOfFloatGiveFiniteCubics)
{
    float const greatest = std::numeric_limits<float>::max();
    HvPoint2fArray const points = ArrayOf({{-greatest, 0},
                                           {greatest, 1e-45F},
                                           {greatest, -greatest},
                                           {1e-45F, 0},
                                           {0, 0},
                                           {0, 1e-45F},
                                           {-greatest, greatest},
                                           {greatest, greatest}});
    for (FittedChain const& chain : {OpenOf(points), ClosedOf(points)}) {
        for (FitPoint const& p : chain.points) {
            EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
        }
    }
}

TEST(HvBezierTool_catmull_rom, RefusedMemoryDrawsNothing)
{
    RandomCurves random(104);
    HvPoint2fArray const points = RandomPoints(30, 8, random);
    long const allocations = RefuseEachAllocation(
        [] { return FittedChain(); },
        [&](FittedChain& chain) { HvBezierTool().ClosedCatmullRomFit(points, chain); },
        [](FittedChain& chain, bool completed) { EXPECT_EQ(chain.calls.empty(), !completed); });
    EXPECT_GE(allocations, 1);
}
