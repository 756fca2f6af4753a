// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Locating of a point on a cubic: reach, ties, the true nearest point.

#include <hv/bezier/HvBezierTool_locate.h>

#include "../support/allocation_failure.h"
#include "cubic_test_support.h"

#include <gtest/gtest.h>

namespace {

constexpr double kUntouched = -77.0;

struct Located {
    double squaredDistance = kUntouched;
    double parameter = kUntouched;
    int found;

    Located(Point2 const* cubic, double tolerance, Point2 point, double maxSquared)
        : found(HvBezierTool_LocatePoint2d(cubic, tolerance, point, maxSquared, squaredDistance,
                                           parameter))
    {
        EXPECT_TRUE(found != 0 || IsUntouched());
    }
    Located(Point3 const* cubic, double tolerance, Point3 point, double maxSquared)
        : found(HvBezierTool_LocatePoint3d(cubic, tolerance, point, maxSquared, squaredDistance,
                                           parameter))
    {
        EXPECT_TRUE(found != 0 || IsUntouched());
    }

    bool IsUntouched() const { return squaredDistance == kUntouched && parameter == kUntouched; }
};

Point2 const kLine[4] = {{0, 0}, {1, 0}, {2, 0}, {3, 0}};
Point3 const kLineInSpace[4] = {{0, 0, 0}, {0, 0, 1}, {0, 0, 2}, {0, 0, 3}};
// y = 12 t (1 - t), x = 3 t; at tolerance 0.25 four steps.
Point2 const kArch[4] = {{0, 0}, {1, 4}, {2, 4}, {3, 0}};

}  // namespace

TEST(HvBezierTool_locate, FindsTheFootOnALine)
{
    Located const plane(kLine, 0.01, {1.5, 0.5}, 1.0);
    EXPECT_EQ(plane.found, 1);
    EXPECT_EQ(plane.squaredDistance, 0.25);
    EXPECT_EQ(plane.parameter, 0.5);
    Located const space(kLineInSpace, 0.01, {0.3, 0.4, 0.75}, 1.0);
    EXPECT_EQ(space.found, 1);
    EXPECT_DOUBLE_EQ(space.squaredDistance, 0.25);
    EXPECT_EQ(space.parameter, 0.25);
}

TEST(HvBezierTool_locate, ClampsToTheEnds)
{
    Located const before(kLine, 0.01, {-0.5, 0}, 1.0);
    EXPECT_EQ(before.found, 1);
    EXPECT_EQ(before.squaredDistance, 0.25);
    EXPECT_EQ(before.parameter, 0.0);
    Located const behind(kLine, 0.01, {3.5, 0}, 1.0);
    EXPECT_EQ(behind.found, 1);
    EXPECT_EQ(behind.parameter, 1.0);
    EXPECT_EQ(Located(kLineInSpace, 0.01, {0, 0, -0.5}, 1.0).parameter, 0.0);
    EXPECT_EQ(Located(kLineInSpace, 0.01, {0, 0, 3.5}, 1.0).parameter, 1.0);
}

TEST(HvBezierTool_locate, CountsStepsAndHalves)
{
    // On the arch's second chord, (0.75, 2.25) to (1.5, 3), three quarters along: 1.75 / 4.
    Located const arch(kArch, 0.25, {0.75 + 0.5625, 2.25 + 0.5625}, 0.01);
    EXPECT_EQ(arch.found, 1);
    EXPECT_EQ(arch.squaredDistance, 0.0);
    EXPECT_EQ(arch.parameter, 1.75 / 4);
    // x = 64 t^3 with third difference 64: three digits, four pieces of one chord each. The third
    // runs from 8 to 27.
    Point2 const cubed[4] = {{0, 0}, {0, 0}, {0, 0}, {64, 0}};
    Located const third(cubed, 1.0, {8 + 19 * 0.25, 0.125}, 0.5);
    EXPECT_EQ(third.found, 1);
    EXPECT_EQ(third.squaredDistance, 0.015625);
    EXPECT_EQ(third.parameter, 0.5 + 0.25 * 0.25);
    // The joint of two pieces belongs to the first.
    EXPECT_EQ(Located(cubed, 1.0, {8, 0}, 0.5).parameter, 0.5);
}

TEST(HvBezierTool_locate, KeepsTheFirstOfTwoNearestPlaces)
{
    // Both ends of the arch are sqrt(3.25) away.
    Located const ends(kArch, 0.25, {1.5, -1}, 3.25);
    EXPECT_EQ(ends.found, 1);
    EXPECT_EQ(ends.squaredDistance, 3.25);
    EXPECT_EQ(ends.parameter, 0.0);
    // Two legs of the arch.
    Located const legs(kArch, 0.25, {1.5, 1.125}, 9.0);
    EXPECT_EQ(legs.found, 1);
    EXPECT_LT(legs.parameter, 0.5);
}

TEST(HvBezierTool_locate, RefusesWhatIsFartherThanTheLimitAndRestores)
{
    EXPECT_EQ(Located(kLine, 0.01, {1.5, 3}, 4.0).found, 0);
    // Between the limit and the reach: the walk sees it, the limit does not.
    EXPECT_EQ(Located(kLine, 1.0, {1.5, 1.0}, 0.5).found, 0);
    EXPECT_EQ(Located(kLine, 1.0, {1.5, 1.0}, 1.0).found, 1);
    EXPECT_EQ(Located(kLineInSpace, 1.0, {0, 1, 1.5}, 0.5).found, 0);
    EXPECT_EQ(Located(kLineInSpace, 1.0, {0, 1, 1.5}, 1.0).found, 1);
}

TEST(HvBezierTool_locate, UsesTheSquaredReachAsAPlainMarginOfTheBox)
{
    // 0.85 squared is within 0.81, but 0.85 is beyond the box grown by 0.8101.
    EXPECT_EQ(Located(kLine, 0.01, {1.5, 0.85}, 0.81).found, 0);
    EXPECT_EQ(Located(kLine, 0.01, {1.5, 0.81}, 0.81).found, 1);
    EXPECT_EQ(Located(kLine, 0.01, {-0.85, 0}, 0.81).found, 0);
    EXPECT_EQ(Located(kLine, 0.01, {3.85, 0}, 0.81).found, 0);
    EXPECT_EQ(Located(kLine, 0.01, {1.5, -0.85}, 0.81).found, 0);
    EXPECT_EQ(Located(kLineInSpace, 0.01, {0.85, 0, 1}, 0.81).found, 0);
    EXPECT_EQ(Located(kLineInSpace, 0.01, {0.81, 0, 1}, 0.81).found, 1);
    EXPECT_EQ(Located(kLineInSpace, 0.01, {0, 0, 3.85}, 0.81).found, 0);
    // The tolerance comes in squared: the margin is 0.01 + 0.04.
    EXPECT_EQ(Located(kLine, 0.1, {1.5, 0.12}, 0.04).found, 0);
    EXPECT_EQ(Located(kLine, 0.1, {1.5, 0.0499}, 0.04).found, 1);
}

TEST(HvBezierTool_locate, HasNoLimitOfStepsInAPiece)
{
    // v = 2^20 gives 2048 steps; in the plane's flattening it would be 1024. Near the top a chord
    // of 1 / 2048 deviates from the parabola by 3 bend / 2048^2 / 4 = 0.19, one of 1 / 1024 by
    // 0.75.
    double const bend = 1048576.0;
    Point2 const tall[4] = {{0, 0}, {1, bend}, {2, bend}, {3, 0}};
    double const t = 0.5 + 0.5 / 2048;
    Point2 const on(3 * t, 3 * bend * t * (1 - t));
    Located const found(tall, 0.75, on, 100.0);
    ASSERT_EQ(found.found, 1);
    EXPECT_GT(found.squaredDistance, 0.0);
    EXPECT_LT(found.squaredDistance, 0.2 * 0.2);
}

TEST(HvBezierTool_locate, AgreesWithDenseSamplingOfTheTrueCurve)
{
    RandomCurves random(10);
    for (int round = 0; round < 120; ++round) {
        double const scale = random.Scale(-3, 20);
        double const tolerance = scale / 512;
        Point2 p[4];
        random.Fill(p, 4, scale);
        Point2 const point(random.Uniform(-scale, scale), random.Uniform(-scale, scale));
        double nearest = kInfinity;
        for (int i = 0; i <= 4096; ++i) {
            nearest = std::fmin(nearest, Length(CubicAt(p, i / 4096.0) - point));
        }
        Located const found(p, tolerance, point, 16 * scale * scale);
        ASSERT_EQ(found.found, 1);
        // The polyline lies within the tolerance across each piece's chord, and the chords'
        // parameters are those of the curve to a part of a step along it.
        EXPECT_NEAR(std::sqrt(found.squaredDistance), nearest, 2 * tolerance);
        EXPECT_LE(Length(CubicAt(p, found.parameter) - point), nearest + 8 * tolerance);

        HvPoint2<float> f[4];
        Point2 widened[4];
        Point3 space[4];
        for (int i = 0; i < 4; ++i) {
            f[i] = HvPoint2<float>(p[i]);
            widened[i] = Point2(f[i]);
            space[i] = Point3(p[i].x, p[i].y, 0);
        }
        HvPoint2<float> const point2f(point);
        Located const wide(widened, tolerance, Point2(point2f), 16 * scale * scale);
        double d = 0.0;
        double u = 0.0;
        EXPECT_EQ(HvBezierTool_LocatePoint2f(f, tolerance, point2f, 16 * scale * scale, d, u), 1);
        EXPECT_EQ(d, wide.squaredDistance);
        EXPECT_EQ(u, wide.parameter);
        Located const inSpace(space, tolerance, Point3(point.x, point.y, 0), 16 * scale * scale);
        EXPECT_EQ(inSpace.parameter, found.parameter);
        EXPECT_EQ(inSpace.squaredDistance, found.squaredDistance);
    }
}

TEST(HvBezierTool_locate, FindsPointsOfASpaceCurve)
{
    RandomCurves random(11);
    for (int round = 0; round < 100; ++round) {
        Point3 p[4];
        random.Fill(p, 4, 100.0);
        double const t = random.Uniform(0, 1);
        Located const found(p, 0.05, CubicAt(p, t), 1.0);
        ASSERT_EQ(found.found, 1);
        EXPECT_LT(found.squaredDistance, 0.1 * 0.1);
        EXPECT_LT(Length(CubicAt(p, found.parameter) - CubicAt(p, t)), 0.5);
    }
}

TEST(HvBezierTool_locate, FindsNothingForWhatIsNotFinite)
{
    for (double const value : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(Located(kArch, 0.25, {value, 0}, 1.0).found, 0);
        EXPECT_EQ(Located(kArch, 0.25, {0, value}, 1.0).found, 0);
        EXPECT_EQ(Located(kLineInSpace, 0.25, {0, 0, value}, 1.0).found, 0);
        for (int i = 1; i < 3; ++i) {
            Point2 p[4] = {kArch[0], kArch[1], kArch[2], kArch[3]};
            p[i].y = value;
            EXPECT_EQ(Located(p, 0.25, {1.5, 3}, 1.0).found, 0);
        }
    }
    EXPECT_EQ(Located(kArch, 0.25, {1.5, 3}, kNaN).found, 0);
    EXPECT_EQ(Located(kArch, 0.25, {1.5, 3}, -1.0).found, 0);
    EXPECT_EQ(Located(kArch, 0.25, {1.5, 3}, -kInfinity).found, 0);
    EXPECT_EQ(Located(kArch, kNaN, {1.5, 3}, 1.0).found, 0);
    EXPECT_EQ(Located(kArch, 0.25, {1.5, 3}, kInfinity).found, 1);
    EXPECT_EQ(Located(kArch, 0.25, {1e200, 3}, kInfinity).found, 0) << "a distance that overflows";
}

TEST(HvBezierTool_locate, FindsNothingWithMoreStepsThanAreWalked)
{
    for (double const tolerance : {0.0, 5e-324, 1e-300, 1e-30}) {
        EXPECT_EQ(Located(kArch, tolerance, {1.5, 3}, 1.0).found, 0) << tolerance;
    }
    // A piece with too many steps spoils the whole, also after others were walked: the left half of
    // x = t^3 on a line is straight, an infinite number of steps is never asked for there.
    EXPECT_EQ(Located(kLine, 1e-30, {1.5, 0}, 1.0).found, 1);
    EXPECT_EQ(Located(kArch, -0.25, {1.5, 0.5}, 1.0).found, 1) << "one chord";
}

TEST(HvBezierTool_locate, AllocatesNothing)
{
    AllocationCounter const counter;
    Located const found(kArch, 0.001, {1, 1}, 4.0);
    EXPECT_EQ(found.found, 1);
    EXPECT_EQ(counter.Allocations(), 0);
}
