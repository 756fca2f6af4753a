// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polylines fitted by chains of cubics: tolerance, corners, smooth joints, number of cubics.

#include <hv/bezier/HvBezierTool.h>

#include "../support/allocation_failure.h"
#include "fit_test_support.h"

#include <gtest/gtest.h>

namespace {

FittedChain OpenFitOf(HvPoint2fArray const& points, double tolerance, double corner = kCorner)
{
    HvBezierTool tool;
    FittedChain chain;
    unsigned int const added = tool.OpenFit(points, corner, 3, tolerance, 0, chain, 0);
    EXPECT_EQ(added, chain.points.size());
    return chain;
}

FittedChain ClosedFitOf(HvPoint2fArray const& points, double tolerance, double corner = kCorner)
{
    HvBezierTool tool;
    FittedChain chain;
    unsigned int const added = tool.ClosedFit(points, corner, 3, tolerance, 0, chain);
    EXPECT_EQ(added, chain.points.size());
    return chain;
}

/// Cubics between a Moveto to the first point and the last point; a Closeto where closed.
void CheckShape(FittedChain const& chain, FitPoint const& first, FitPoint const& last,
                bool isClosed)
{
    ASSERT_FALSE(chain.points.empty());
    EXPECT_EQ(chain.calls, "M" + std::string(chain.Segments(), 'C') + (isClosed ? "Z" : ""));
    EXPECT_EQ(chain.points.front(), first);
    EXPECT_EQ(chain.points.back(), last);
}

bool IsTurn(Point2 const& a, Point2 const& b)
{
    double const dot = Dot(a, b);
    return dot < 0.0 || dot * dot < kCorner * Dot(a, a) * Dot(b, b);
}

/// Whether the handles at a joint are in line and lead on, as far as float can say.
bool IsSmooth(FitPoint const& in, FitPoint const& joint, FitPoint const& out)
{
    Point2 const a = Point2(joint) - Point2(in);
    Point2 const b = Point2(out) - Point2(joint);
    double const ulps = 4e-7 * std::max({std::fabs(double(joint.x)), std::fabs(double(joint.y)),
                                         Length(a), Length(b)});
    double const shorter = std::min(Length(a), Length(b));
    if (shorter <= ulps) {
        return true;
    }
    return Dot(a, b) > 0.0 && std::fabs(HvPoint2_AdetB(a, b)) <= ulps * (Length(a) + Length(b));
}

/// Every joint is a point of the polyline, and smooth unless the polyline turns there.
void CheckJoints(FittedChain const& chain, HvPoint2fArray const& points, bool isClosed)
{
    unsigned int at = 0;
    for (std::size_t i = 3; i + 3 < chain.points.size(); i += 3) {
        while (at < points.Size() && points[at] != chain.points[i]) {
            ++at;
        }
        ASSERT_LT(at, points.Size());
        unsigned int before = at;
        unsigned int after = at;
        while (before > 0 && points[before] == points[at]) {
            --before;
        }
        while (after + 1 < points.Size() && points[after] == points[at]) {
            ++after;
        }
        Point2 const p(points[at]);
        if (!IsTurn(p - Point2(points[before]), Point2(points[after]) - p)) {
            EXPECT_TRUE(IsSmooth(chain.points[i - 1], chain.points[i], chain.points[i + 1]))
                << "joint " << i / 3 << " at point " << at;
        }
    }
    if (isClosed && points.Size() > 3) {
        Point2 const p(points[0]);
        if (!IsTurn(p - Point2(points[points.Size() - 2]), Point2(points[1]) - p)) {
            std::size_t const last = chain.points.size() - 1;
            EXPECT_TRUE(IsSmooth(chain.points[last - 1], chain.points[0], chain.points[1]));
        }
    }
}

void CheckFit(FittedChain const& chain, HvPoint2fArray const& points, double tolerance,
              bool isClosed)
{
    CheckShape(chain, points[0], isClosed ? points[0] : points[points.Size() - 1], isClosed);
    EXPECT_LE(ErrorOf(chain, points), tolerance + Slack(points));
    CheckJoints(chain, points, isClosed);
}

void CheckBothFits(HvPoint2fArray points, double tolerance)
{
    CheckFit(OpenFitOf(points, tolerance), points, tolerance, false);
    points.Add(points[0]);
    CheckFit(ClosedFitOf(points, tolerance), points, tolerance, true);
}

/// Points of a smooth closed curve around the origin.
HvPoint2fArray Ring(int count, double radius, RandomCurves& random)
{
    double const a = random.Uniform(0, 0.25);
    double const b = random.Uniform(0, 0.15);
    double const turn = random.Uniform(0, kTwoPi);
    HvPoint2fArray points;
    for (int i = 0; i < count; ++i) {
        double const angle = kTwoPi * i / count;
        double const r =
            radius * (1 + a * std::cos(2 * angle + turn) + b * std::sin(3 * angle - turn));
        points.Add(ToFloat({r * std::cos(angle), r * std::sin(angle)}));
    }
    return points;
}

HvPoint2fArray Circle(int count, double radius)
{
    HvPoint2fArray points;
    for (int i = 0; i <= count; ++i) {
        double const angle = kTwoPi * (i % count) / count;
        points.Add(ToFloat({radius * std::cos(angle), radius * std::sin(angle)}));
    }
    return points;
}

/// Points along the sides of a polygon, corners included, `steps` to each side.
HvPoint2fArray Sides(std::vector<Point2> const& corners, int steps)
{
    HvPoint2fArray points;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        for (int k = 0; k < steps; ++k) {
            points.Add(ToFloat(corners[i] + (corners[i + 1] - corners[i]) * (double(k) / steps)));
        }
    }
    points.Add(ToFloat(corners.back()));
    return points;
}

bool HasJoint(FittedChain const& chain, FitPoint const& p)
{
    for (std::size_t i = 0; i < chain.points.size(); i += 3) {
        if (chain.points[i] == p) {
            return true;
        }
    }
    return false;
}

double LengthOf(FittedChain const& chain)
{
    double length = 0.0;
    for (std::size_t i = 0; i < chain.Segments(); ++i) {
        Point2 before(chain.points[3 * i]);
        for (int k = 1; k <= 64; ++k) {
            Point2 const p = CubicAt(chain.Cubic(i).data(), k / 64.0);
            length += Length(p - before);
            before = p;
        }
    }
    return length;
}

}  // namespace

TEST(HvBezierTool_fit_outline, CircleTakesFewCubicsAndStaysRound)
{
    for (int const count : {40, 71, 360, 5000}) {
        FittedChain const chain = ClosedFitOf(Circle(count, 100), 0.1);
        EXPECT_LE(chain.Segments(), 8u);
        double worst = 0.0;
        for (std::size_t i = 0; i < chain.Segments(); ++i) {
            for (int k = 0; k <= 200; ++k) {
                double const r = Length(CubicAt(chain.Cubic(i).data(), k / 200.0));
                worst = std::max(worst, std::fabs(r - 100));
            }
        }
        EXPECT_LT(worst, 0.1) << count;
        CheckFit(chain, Circle(count, 100), 0.1, true);
    }
}

TEST(HvBezierTool_fit_outline, SampledCubicComesBackAsOne)
{
    RandomCurves random(5);
    std::vector<std::vector<Point2>> const cubics = {{{0, 0}, {120, -40}, {-30, 100}, {100, 80}},
                                                     {{0, 0}, {0, 60}, {60, 100}, {100, 100}},
                                                     {{-5, 3}, {30, 80}, {70, -80}, {110, 10}},
                                                     {{0, 0}, {100, 0}, {100, 100}, {0, 100}}};
    for (auto const& cubic : cubics) {
        for (int const count : {50, 100, 700}) {
            HvPoint2fArray points;
            for (int i = 0; i <= count; ++i) {
                points.Add(ToFloat(CubicAt(cubic.data(), double(i) / count)));
            }
            FittedChain const chain = OpenFitOf(points, 0.1);
            EXPECT_EQ(chain.Segments(), 1u);
            CheckFit(chain, points, 0.1, false);
        }
    }
}

TEST(HvBezierTool_fit_outline, PolygonKeepsItsCorners)
{
    std::vector<Point2> const corners = {{0, 0}, {100, 0}, {130, 80}, {20, 60}, {0, 0}};
    for (int const steps : {1, 3, 40, 100}) {
        HvPoint2fArray const points = Sides(corners, steps);
        for (FittedChain const& chain : {OpenFitOf(points, 1.0), ClosedFitOf(points, 1.0)}) {
            EXPECT_EQ(chain.Segments(), 4u) << steps;
            for (Point2 const& corner : corners) {
                EXPECT_TRUE(HasJoint(chain, ToFloat(corner))) << steps;
            }
            EXPECT_LE(ErrorOf(chain, points), 1e-4);
        }
    }
}

TEST(HvBezierTool_fit_outline, NoisyPolygonsGetOneCubicForEachSide)
{
    // Spikes, right angles and blunt corners, with noise of a fifth of the tolerance on points that
    // are half a tolerance apart: single steps point anywhere.
    std::vector<std::vector<Point2>> const polygons = {
        {{0, 0}, {100, 0}, {130, 80}, {20, 60}, {0, 0}},
        {{0, 30}, {120, 0}, {30, 60}, {110, 70}, {0, 30}},
        {{0, 0}, {60, 10}, {70, -20}, {120, 0}, {100, 50}, {60, 40}, {50, 70}, {10, 60}, {0, 0}}};
    RandomCurves random(24);
    std::size_t sides = 0;
    std::size_t cubics = 0;
    for (int round = 0; round < 15; ++round) {
        std::vector<Point2> const& corners = polygons[static_cast<std::size_t>(round) % 3];
        HvPoint2fArray points;
        for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
            Point2 const side = corners[i + 1] - corners[i];
            int const steps = static_cast<int>(2 * Length(side));
            for (int k = 0; k < steps; ++k) {
                // The sum of three even ones is near to a normal one of a standard deviation of
                // 0.2.
                auto const noise = [&] {
                    return 0.2 *
                           (random.Uniform(-1, 1) + random.Uniform(-1, 1) + random.Uniform(-1, 1));
                };
                double const dx = noise();
                points.Add(ToFloat(corners[i] + side * (double(k) / steps) + Point2(dx, noise())));
            }
        }
        points.Add(points[0]);
        FittedChain const chain = ClosedFitOf(points, 1.0);
        CheckFit(chain, points, 1.0, true);
        sides += corners.size() - 1;
        cubics += chain.Segments();
        for (Point2 const& corner : corners) {
            double least = kInfinity;
            for (std::size_t i = 0; i < chain.points.size(); i += 3) {
                least = std::min(least, Length(Point2(chain.points[i]) - corner));
            }
            EXPECT_LE(least, 2.0);
        }
    }
    EXPECT_LE(cubics, sides + sides / 10);
}

TEST(HvBezierTool_fit_outline, NoisyStrokesHaveNoCornersAtTheirEnds)
{
    // Beside an end there are few points to tell a direction from.
    RandomCurves random(25);
    std::size_t cubics = 0;
    for (int round = 0; round < 30; ++round) {
        HvPoint2fArray points;
        for (int i = 0; i <= 200; ++i) {
            double const dx = random.Uniform(-0.4, 0.4);
            points.Add(ToFloat({0.3 * i + dx, 0.002 * i * i + random.Uniform(-0.4, 0.4)}));
        }
        FittedChain const chain = OpenFitOf(points, 1.0);
        CheckFit(chain, points, 1.0, false);
        cubics += chain.Segments();
    }
    EXPECT_LE(cubics, 31u);
}

TEST(HvBezierTool_fit_outline, NearCornersOfANotchAreBothKept)
{
    // Three tolerances between the corners, and steps much shorter than that.
    std::vector<Point2> const corners = {{0, 0}, {50, 0}, {50, 3}, {53, 3}, {53, 0}, {100, 0}};
    HvPoint2fArray points;
    for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
        Point2 const side = corners[i + 1] - corners[i];
        int const steps = static_cast<int>(4 * Length(side));
        for (int k = 0; k < steps; ++k) {
            points.Add(ToFloat(corners[i] + side * (double(k) / steps)));
        }
    }
    points.Add(ToFloat(corners.back()));
    FittedChain const chain = OpenFitOf(points, 1.0);
    CheckFit(chain, points, 1.0, false);
    for (Point2 const& corner : corners) {
        EXPECT_TRUE(HasJoint(chain, ToFloat(corner))) << corner.x << " " << corner.y;
    }
    EXPECT_EQ(chain.Segments(), 5u);
}

TEST(HvBezierTool_fit_outline, CornersAreKeptWhereverTheyStandAmongClosePoints)
{
    // Steps of an eighth of the reach of directions: several points are looked at together.
    for (double const degrees : {30.0, -80.0, 150.0}) {
        double const angle = degrees * kTwoPi / 360;
        Point2 const out(std::cos(angle), std::sin(angle));
        for (int before = 40; before < 48; ++before) {
            HvPoint2fArray points;
            for (int i = 0; i <= 100; ++i) {
                double const way = 0.5 * (i - before);
                points.Add(ToFloat(way < 0 ? Point2(way, 0) : out * way));
            }
            FittedChain const chain = OpenFitOf(points, 1.0);
            CheckFit(chain, points, 1.0, false);
            EXPECT_EQ(chain.Segments(), 2u) << degrees << " " << before;
            EXPECT_TRUE(HasJoint(chain, {0, 0})) << degrees << " " << before;
        }
    }
}

TEST(HvBezierTool_fit_outline, ThresholdDividesTurnsIntoCornersAndBends)
{
    // A turn by 24 degrees is a bend, one by 26 is a corner, and so is one by more than 90.
    for (double const degrees : {24.0, 26.0, 89.0, 91.0, 155.0, 179.0}) {
        double const angle = degrees * kTwoPi / 360;
        Point2 const end = Point2(100, 0) + Point2(std::cos(angle), std::sin(angle)) * 100.0;
        HvPoint2fArray const points = Sides({{0, 0}, {100, 0}, end}, 20);
        FittedChain const chain = OpenFitOf(points, 0.2);
        CheckFit(chain, points, 0.2, false);
        EXPECT_EQ(chain.Segments() == 2 && HasJoint(chain, {100, 0}), degrees > 25) << degrees;
    }
}

TEST(HvBezierTool_fit_outline, SeamIsSmoothUnlessItIsACorner)
{
    // A drop: smooth but at (100, 0). It starts at the tip, then in the middle of its bow.
    HvPoint2fArray drop;
    for (int i = 0; i < 100; ++i) {
        Point2 const cubic[4] = {{100, 0}, {-20, 120}, {-20, -120}, {100, 0}};
        drop.Add(ToFloat(CubicAt(cubic, i / 100.0)));
    }
    HvPoint2fArray turned;
    for (unsigned int i = 0; i < 100; ++i) {
        turned.Add(drop[(i + 37) % 100]);
    }
    drop.Add(drop[0]);
    turned.Add(turned[0]);
    FittedChain const tip = ClosedFitOf(drop, 0.1);
    EXPECT_LE(tip.Segments(), 3u);
    FittedChain const bow = ClosedFitOf(turned, 0.1);
    CheckFit(bow, turned, 0.1, true);
    EXPECT_TRUE(HasJoint(bow, {100, 0}));
    EXPECT_LE(bow.Segments(), 4u);
}

TEST(HvBezierTool_fit_outline, SmoothRingsAreFollowedWithFewCubics)
{
    RandomCurves random(21);
    for (int round = 0; round < 12; ++round) {
        HvPoint2fArray points = Ring(150, 100, random);
        points.Add(points[0]);
        FittedChain const chain = ClosedFitOf(points, 0.5);
        CheckFit(chain, points, 0.5, true);
        EXPECT_LE(chain.Segments(), 12u);
        // No loop and no overshoot: the chain is about as long as the polyline.
        EXPECT_NEAR(LengthOf(chain), LengthsOf(points)[150], 0.01 * LengthsOf(points)[150]);
    }
}

TEST(HvBezierTool_fit_outline, NoisyRingsKeepTheToleranceAndFewCubics)
{
    RandomCurves random(22);
    for (int round = 0; round < 8; ++round) {
        HvPoint2fArray points = Ring(400, 100, random);
        for (FitPoint& p : points) {
            p = p + FitPoint(static_cast<float>(random.Uniform(-0.5, 0.5)),
                             static_cast<float>(random.Uniform(-0.5, 0.5)));
        }
        FittedChain const chain = OpenFitOf(points, 1.0);
        CheckFit(chain, points, 1.0, false);
        EXPECT_LE(chain.Segments(), 20u);
    }
}

TEST(HvBezierTool_fit_outline, WildPointsKeepTheTolerance)
{
    RandomCurves random(23);
    for (int round = 0; round < 40; ++round) {
        HvPoint2fArray points;
        Point2 at(0, 0);
        double heading = 0.0;
        int const count = 2 + round * 2;
        double const bend = random.Uniform(0.0, 1.5);
        double const scale = random.Scale(-3, 6);
        for (int i = 0; i < count; ++i) {
            points.Add(ToFloat(at));
            heading += random.Uniform(-bend, bend);
            at = at + Point2(std::cos(heading), std::sin(heading)) * (scale * random.Uniform(0, 2));
        }
        for (double const share : {0.05, 0.5, 4.0}) {
            CheckBothFits(points, share * scale);
            // A loop between two points would be longer than the way from one to the other.
            double const length = LengthsOf(points)[points.Size() - 1];
            EXPECT_LE(LengthOf(OpenFitOf(points, share * scale)), 1.3 * length);
        }
    }
}

TEST(HvBezierTool_fit_outline, SelfCrossingsKeepTheTolerance)
{
    HvPoint2fArray eight;
    for (int i = 0; i < 120; ++i) {
        double const t = kTwoPi * i / 120;
        eight.Add(ToFloat({100 * std::sin(t), 60 * std::sin(2 * t)}));
    }
    CheckBothFits(eight, 0.3);
}

// Four corners of a square spread as far along the one axis as along the other: the side that they
// are has no main axis, and leads to its last point.
TEST(HvBezierTool_fit_outline, SidesThatRunRoundASquareKeepTheTolerance)
{
    HvPoint2fArray const points = ArrayOf({{1, 0}, {0, 0}, {1, 0}, {1, 1}, {0, 1}});
    // The reach is four tolerances, in which the whole square lies.
    CheckFit(OpenFitOf(points, 0.4), points, 0.4, false);
    CheckFit(OpenFitOf(points, 0.01), points, 0.01, false);
}

TEST(HvBezierTool_fit_outline, SpikesKeepTheirTip)
{
    HvPoint2fArray const points = Sides({{0, 0}, {50, 0}, {50, 40}, {50, 0}, {100, 0}}, 25);
    FittedChain const chain = OpenFitOf(points, 0.5);
    CheckFit(chain, points, 0.5, false);
    EXPECT_TRUE(HasJoint(chain, {50, 40}));
    EXPECT_EQ(chain.Segments(), 4u);
}

TEST(HvBezierTool_fit_outline, StraightPointsGiveOneStraightCubic)
{
    HvPoint2fArray points;
    for (int i = 0; i <= 50; ++i) {
        points.Add(FitPoint(static_cast<float>(i * i), static_cast<float>(2 * i * i)));
    }
    FittedChain const chain = OpenFitOf(points, 0.01);
    CheckFit(chain, points, 0.01, false);
    EXPECT_EQ(chain.Segments(), 1u);
    EXPECT_NEAR(LengthOf(chain), 2500 * std::sqrt(5.0), 0.01);
}

TEST(HvBezierTool_fit_outline, RepeatedPointsCountOnce)
{
    HvPoint2fArray const once = Sides({{0, 0}, {30, 10}, {60, -40}}, 9);
    HvPoint2fArray often;
    for (FitPoint const& p : once) {
        for (int k = 0; k < 3; ++k) {
            often.Add(p);
        }
    }
    EXPECT_EQ(OpenFitOf(often, 0.4).points, OpenFitOf(once, 0.4).points);
    EXPECT_EQ(ClosedFitOf(often, 0.4).points, ClosedFitOf(once, 0.4).points);
}

TEST(HvBezierTool_fit_outline, EqualPointsGiveOneCollapsedCubic)
{
    HvPoint2fArray const points(FitPoint(3, 4), 7u);
    EXPECT_EQ(OpenFitOf(points, 0.1).points, std::vector<FitPoint>(4, FitPoint(3, 4)));
    EXPECT_EQ(ClosedFitOf(points, 0.1).calls, "MCZ");
}

TEST(HvBezierTool_fit_outline, TwoPointsGiveALineAndClosedTheWayBackToo)
{
    HvPoint2fArray const points = ArrayOf({{0, 0}, {9, 3}});
    std::vector<FitPoint> const line = {{0, 0}, {3, 1}, {6, 2}, {9, 3}};
    EXPECT_EQ(OpenFitOf(points, 0.1).points, line);
    FittedChain const back = ClosedFitOf(points, 0.1);
    EXPECT_EQ(back.calls, "MCCZ");
    CheckFit(back, ArrayOf({{0, 0}, {9, 3}, {0, 0}}), 0.1, true);
}

TEST(HvBezierTool_fit_outline, NoToleranceGoesThroughEveryPoint)
{
    RandomCurves random(31);
    HvPoint2fArray points;
    for (int i = 0; i < 30; ++i) {
        points.Add(ToFloat({10.0 * i, random.Uniform(-20, 20)}));
    }
    FittedChain const chain = OpenFitOf(points, 0.0);
    EXPECT_LE(ErrorOf(chain, points), 1e-10);
}

TEST(HvBezierTool_fit_outline, ContinuedPathGetsNoMoveto)
{
    HvPoint2fArray const points = Sides({{0, 0}, {30, 10}, {60, -40}}, 9);
    FittedChain const whole = OpenFitOf(points, 0.4);
    FittedChain chain;
    HvBezierTool tool;
    EXPECT_EQ(tool.OpenFit(points, kCorner, 3, 0.4, 0, chain, 1), whole.points.size() - 1);
    EXPECT_EQ(chain.calls, "CC");
    EXPECT_EQ(chain.points, std::vector<FitPoint>(whole.points.begin() + 1, whole.points.end()));
}

TEST(HvBezierTool_fit_outline, RefusalsDrawNothing)
{
    HvPoint2fArray const good = ArrayOf({{0, 0}, {1, 2}, {3, 1}});
    auto const nan = static_cast<float>(kNaN);
    auto const infinite = static_cast<float>(kInfinity);
    struct {
        HvPoint2fArray points;
        unsigned int degree;
        double tolerance;
    } const rows[] = {{HvPoint2fArray(), 3, 1},
                      {ArrayOf({{1, 1}}), 3, 1},
                      {ArrayOf({{0, 0}, {nan, 1}, {2, 2}}), 3, 1},
                      {ArrayOf({{0, 0}, {1, -infinite}}), 3, 1},
                      {good, 3, -1},
                      {good, 3, kNaN},
                      {good, 3, -kInfinity},
                      {good, 0, 1},
                      {good, 2, 1},
                      {good, 4, 1},
                      {good, 4294967295u, 1}};
    HvBezierTool tool;
    for (auto const& row : rows) {
        FittedChain chain;
        EXPECT_EQ(tool.OpenFit(row.points, kCorner, row.degree, row.tolerance, 0, chain, 0), 0u);
        EXPECT_EQ(tool.OpenFit(row.points, kCorner, row.degree, row.tolerance, 0, chain, 1), 0u);
        EXPECT_EQ(tool.ClosedFit(row.points, kCorner, row.degree, row.tolerance, 0, chain), 0u);
        EXPECT_EQ(chain.calls, "");
    }
}

TEST(HvBezierTool_fit_outline, HostileNumbersKeepTheEnds)
{
    double const tolerances[] = {0.0, 1e-310, 1e-30, 1.0, 3e38, kGreatest, kInfinity};
    double const corners[] = {kNaN, kInfinity, -kInfinity, 0.0, -1.0, 1.0, 2.0, kGreatest, 1e-310};
    float const coordinates[] = {0.0F, 1e-45F, -3.4e38F, 3.4e38F, 1e30F, 1e-30F};
    HvPoint2fArray good;
    RandomCurves random(41);
    for (int i = 0; i < 40; ++i) {
        good.Add(ToFloat({random.Uniform(-9, 9), random.Uniform(-9, 9)}));
    }
    for (double const tolerance : tolerances) {
        for (double const corner : corners) {
            FittedChain const chain = OpenFitOf(good, tolerance, corner);
            EXPECT_EQ(chain.points.back(), good[39]);
            for (FitPoint const& p : chain.points) {
                EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
            }
        }
        for (float const coordinate : coordinates) {
            HvPoint2fArray points = good;
            points[7].x = coordinate;
            points[20].y = -coordinate;
            points[21].y = coordinate;
            for (FittedChain const& chain :
                 {OpenFitOf(points, tolerance), ClosedFitOf(points, tolerance)}) {
                for (FitPoint const& p : chain.points) {
                    EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
                }
            }
        }
    }
}

TEST(HvBezierTool_fit_outline, ScaleTurnAndShiftLeaveTheNumberOfCubics)
{
    RandomCurves random(51);
    HvPoint2fArray const points = Ring(200, 100, random);
    std::size_t const segments = OpenFitOf(points, 0.5).Segments();
    for (float const scale : {0.125F, 1024.0F}) {
        HvPoint2fArray scaled = points;
        for (FitPoint& p : scaled) {
            p = FitPoint(-p.y * scale, p.x * scale);
        }
        EXPECT_EQ(OpenFitOf(scaled, 0.5 * scale).Segments(), segments);
        CheckFit(OpenFitOf(scaled, 0.5 * scale), scaled, 0.5 * scale, false);
    }
}

TEST(HvBezierTool_fit_outline, RefusedMemoryDrawsNothing)
{
    RandomCurves random(61);
    HvPoint2fArray const points = Ring(60, 100, random);
    long const allocations = RefuseEachAllocation(
        [] { return FittedChain(); },
        [&](FittedChain& chain) { HvBezierTool().ClosedFit(points, kCorner, 3, 0.5, 0, chain); },
        [](FittedChain& chain, bool completed) { EXPECT_EQ(chain.calls.empty(), !completed); });
    EXPECT_GE(allocations, 5);
}
