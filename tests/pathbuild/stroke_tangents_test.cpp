// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The direction of a stroke at a point.

#include <hv/pathbuild/stroke_tangents.h>

#include "stroke_test_support.h"
#include <tests/support/generators.h>

#include <rapidcheck.h>

namespace {

// Points of a circle around (30, -20), at the angles in degrees.
std::vector<StrokePoint> OnCircle(double radius, std::vector<double> const& degrees)
{
    std::vector<StrokePoint> points;
    for (double d : degrees) {
        double const a = d * std::acos(-1.0) / 180.0;
        points.emplace_back(static_cast<float>(30.0 + radius * std::cos(a)),
                            static_cast<float>(-20.0 + radius * std::sin(a)));
    }
    return points;
}

StrokePoint Estimate(std::vector<StrokePoint> const& points, unsigned int i, int forward,
                     int backward, int crude = 0)
{
    return EstimateTangentDirection(Points(points), i, forward, backward, crude);
}

std::vector<StrokePoint> const kStairs = {{0, 0}, {4, 0}, {4, 3}, {8, 3}};

}  // namespace

// One point of a stroke.

TEST(EstimateTangentDirection, GoesAcrossAnInnerPoint)
{
    ExpectDirection(Estimate(kStairs, 1, 0, 0), 0.8, 0.6);
    ExpectDirection(Estimate(kStairs, 2, 0, 0), 0.8, 0.6);
}

TEST(EstimateTangentDirection, TakesTheOneStepAtTheEnds)
{
    ExpectDirection(Estimate(kStairs, 0, 0, 0), 1, 0);
    ExpectDirection(Estimate(kStairs, 3, 0, 0), 1, 0);
    ExpectDirection(Estimate(kStairs, 0, 0, 1), 1, 0);
    ExpectDirection(Estimate(kStairs, 3, 1, 0), 1, 0);
    ExpectDirection(Estimate(kStairs, 1, 0, 1), 1, 0);
    ExpectDirection(Estimate(kStairs, 2, 1, 0), 1, 0);
}

TEST(EstimateTangentDirection, CrudeTakesTheNearStep)
{
    ExpectDirection(Estimate(kStairs, 0, 1, 0, 1), 1, 0);
    ExpectDirection(Estimate(kStairs, 1, 1, 0, 1), 0, 1);
    ExpectDirection(Estimate(kStairs, 2, 0, 1, 1), 0, 1);
    ExpectDirection(Estimate(kStairs, 3, 0, 1, 1), 1, 0);
}

TEST(EstimateTangentDirection, TakesTheCircleThroughThreePoints)
{
    // A right angle of legs 4 and 3: the circle is around the middle of the long side, (2, 1.5).
    // The tangent at (0, 0) is square to (2, 1.5), along the walk; at (4, 3) likewise.
    ExpectDirection(Estimate(kStairs, 0, 1, 0), 0.6, -0.8);
    ExpectDirection(Estimate(kStairs, 2, 0, 1), -0.6, 0.8);
}

TEST(EstimateTangentDirection, IsExactOnCirclesWalkedEitherWay)
{
    for (double turn : {1.0, -1.0}) {
        for (double start : {0.0, 77.0, 190.0, 301.0}) {
            std::vector<StrokePoint> const arc =
                OnCircle(10.0, {start, start + turn * 25.0, start + turn * 60.0});
            double const first = (start + turn * 90.0) * std::acos(-1.0) / 180.0;
            double const last = first + turn * 60.0 * std::acos(-1.0) / 180.0;
            // Coordinates are good to 1e-6 of 40, seen from a radius of 10.
            ExpectDirection(Estimate(arc, 0, 1, 0), std::cos(first), std::sin(first), 2e-5);
            ExpectDirection(Estimate(arc, 2, 0, 1), std::cos(last), std::sin(last), 2e-5);
        }
    }
}

TEST(EstimateTangentDirection, ForwardComesBeforeBackward)
{
    ExpectDirection(Estimate(kStairs, 1, 1, 1, 1), 0, 1);
}

TEST(EstimateTangentDirection, SmallBendCountsAsStraight)
{
    // Squared sines of the bend of 0.0299 and 0.0301.
    for (double squared : {0.0299, 0.0301}) {
        double const bend = std::asin(std::sqrt(squared));
        float const x = static_cast<float>(100.0 + 100.0 * std::cos(bend));
        float const y = static_cast<float>(100.0 * std::sin(bend));
        std::vector<StrokePoint> const points = {{0, 0}, {100, 0}, {x, y}};
        bool const isCircle = squared > 0.03;
        // The chords of equal length lie half a bend off the tangents of the circle.
        double const at = isCircle ? -bend / 2.0 : 0.0;
        ExpectDirection(Estimate(points, 0, 1, 0), std::cos(at), std::sin(at), 1e-4);
        double const to = isCircle ? 1.5 * bend : bend;
        ExpectDirection(Estimate(points, 2, 0, 1), std::cos(to), std::sin(to), 1e-4);
    }
}

TEST(EstimateTangentDirection, RepeatedPointsFallBackToTheStep)
{
    ExpectDirection(Estimate({{0, 0}, {0, 0}, {3, 4}}, 2, 0, 1), 0.6, 0.8);
    ExpectDirection(Estimate({{3, 4}, {0, 0}, {0, 0}}, 0, 1, 0), -0.6, -0.8);
    EXPECT_EQ(Estimate({{3, 4}, {0, 0}, {0, 0}}, 2, 0, 1), StrokePoint());
    EXPECT_EQ(Estimate({{0, 0}, {0, 0}, {3, 4}}, 0, 1, 0), StrokePoint());
    EXPECT_EQ(Estimate({{1, 1}, {3, 4}, {1, 1}}, 1, 0, 0), StrokePoint());
}

TEST(EstimateTangentDirection, IsZeroWithoutAStep)
{
    for (int forward : {0, 1}) {
        for (int backward : {0, 1}) {
            EXPECT_EQ(Estimate({{1, 2}}, 0, forward, backward), StrokePoint());
            EXPECT_EQ(Estimate({}, 0, forward, backward), StrokePoint());
            EXPECT_EQ(Estimate(kStairs, 4, forward, backward), StrokePoint());
            EXPECT_EQ(Estimate(kStairs, ~0u, forward, backward), StrokePoint());
        }
    }
}

TEST(EstimateTangentDirection, HugeTriangleIsNoNaN)
{
    std::vector<StrokePoint> const huge = {{0, 0}, {1e38f, 0}, {1e38f, 1e38f}};
    ExpectDirection(Estimate(huge, 2, 0, 1), 0, 1);
    ExpectDirection(Estimate(huge, 0, 1, 0), 1, 0);
    for (float bad : {kNoNumber, kInfinite}) {
        std::vector<StrokePoint> const points = {{0, 0}, {bad, 0}, {1, 1}};
        EXPECT_EQ(Estimate(points, 2, 0, 1), StrokePoint());
    }
}

TEST(EstimateTangentDirection, TinyTriangleCountsAsStraight)
{
    // Legs of 0.03: products of squared lengths below the rounding of the centre.
    ExpectDirection(Estimate({{0, 0}, {0.03f, 0}, {0.03f, 0.03f}}, 2, 0, 1), 0, 1);
    ExpectDirection(Estimate({{0, 0}, {0.03f, 0}, {0.03f, 0.03f}}, 0, 1, 0), 1, 0);
}

TEST(EstimateTangentDirection, BackwardIsForwardOnTheReversedStroke)
{
    rc::check([] {
        std::vector<StrokePoint> points;
        for (int i = 0; i < 3; ++i) {
            points.emplace_back(static_cast<float>(PickInRange(-50, 50)),
                                static_cast<float>(PickInRange(-50, 50)));
        }
        StrokePoint const backward = Estimate(points, 2, 0, 1);
        std::reverse(points.begin(), points.end());
        StrokePoint const forward = Estimate(points, 0, 1, 0);
        RC_ASSERT(std::fabs(backward.x + forward.x) < 1e-6f);
        RC_ASSERT(std::fabs(backward.y + forward.y) < 1e-6f);
    });
}

// The path that is there already.

TEST(GetTangentDirectionOnPath, ReadsTheHandlesAtBothEnds)
{
    HvPath2f path(4u);
    path.Moveto({0, 0});
    path.Curveto({0, 2}, {5, 1}, {8, 5});
    HvPoint2fArray const stroke = Points(kStairs);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0.6, 0.8, 1e-12);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 0), 0, 1, 1e-12);
    path.Lineto({8, 7});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0, 1, 1e-12);
}

TEST(GetTangentDirectionOnPath, AsksTheStrokeWhereThePathHasNoSegment)
{
    HvPath2f path(4u);
    HvPoint2fArray const stroke = Points({{0, 0}, {3, 4}, {3, 9}});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0.6, 0.8, 1e-12);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 0), 0, 1, 1e-12);
    path.Moveto({0, 0});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0.6, 0.8, 1e-12);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 0), 0, 1, 1e-12);
    EXPECT_EQ(GetTangentDirectionOnPath(Points({{1, 1}}), &path, 1), HvPoint2<double>());
    EXPECT_EQ(GetTangentDirectionOnPath(Points({}), &path, 0), HvPoint2<double>());
}

TEST(GetTangentDirectionOnPath, IsZeroForASingleLine)
{
    HvPath2f path(4u);
    path.Moveto({0, 0});
    path.Lineto({3, 4});
    EXPECT_EQ(GetTangentDirectionOnPath(Points(kStairs), &path, 1), HvPoint2<double>());
    EXPECT_EQ(GetTangentDirectionOnPath(Points(kStairs), &path, 0), HvPoint2<double>());
}

TEST(GetTangentDirectionOnPath, CountsAndReadsTheLastSubpathOnly)
{
    HvPath2f path(4u);
    path.Moveto({50, 50});
    path.Curveto({50, 60}, {70, 60}, {70, 50});
    path.Moveto({0, 0});
    HvPoint2fArray const stroke = Points({{0, 0}, {3, 4}, {3, 9}});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0.6, 0.8, 1e-12);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 0), 0, 1, 1e-12);
    path.Lineto({1, 0});
    EXPECT_EQ(GetTangentDirectionOnPath(stroke, &path, 1), HvPoint2<double>());
    EXPECT_EQ(GetTangentDirectionOnPath(stroke, &path, 0), HvPoint2<double>());
    path.Lineto({1, -1});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0, -1, 1e-12);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 0), 1, 0, 1e-12);
}

TEST(GetTangentDirectionOnPath, PathWithoutAStartIsReadSafely)
{
    HvPath2f path(4u);
    HvPoint2fArray const stroke = Points({{0, 0}, {3, 4}});
    path.Lineto({1, 1});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0.6, 0.8, 1e-12);
    path.Lineto({2, 1});
    EXPECT_EQ(GetTangentDirectionOnPath(stroke, &path, 1), HvPoint2<double>());
    path.Lineto({2, 2});
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 1), 0, 1, 1e-12);
    ExpectDirection(GetTangentDirectionOnPath(stroke, &path, 0), 1, 0, 1e-12);
}

TEST(GetTangentDirectionOnPath, CollapsedHandleGivesZero)
{
    HvPath2f path(4u);
    path.Moveto({0, 0});
    path.Curveto({0, 0}, {5, 5}, {5, 5});
    EXPECT_EQ(GetTangentDirectionOnPath(Points(kStairs), &path, 1), HvPoint2<double>());
    EXPECT_EQ(GetTangentDirectionOnPath(Points(kStairs), &path, 0), HvPoint2<double>());
}
