// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Splines of space against those of the plane, and a helix.

#include <hv/bezier/HvSpline2d.h>
#include <hv/bezier/HvSpline3d.h>

#include "cubic_test_support.h"

#include <gtest/gtest.h>

TEST(HvSpline3d, IsTheSplineOfThePlaneForPointsOfThePlane)
{
    HvPoint2dArray plane;
    HvPoint3dArray space;
    for (int i = 0; i < 150; ++i) {
        double const t = 0.04 * i;
        plane.Add(10 * std::cos(t), 7 * std::sin(2 * t));
        space.Add(Point3(10 * std::cos(t), 7 * std::sin(2 * t), 0));
    }
    HvSpline2d flat;
    HvSpline3d spline;
    ASSERT_EQ(flat.OpenFit(plane, 0.02, HvSpline2d::ContinuousDerivative), 1);
    ASSERT_EQ(spline.OpenFit(space, 0.02, HvSpline3d::ContinuousDerivative), 1);
    ASSERT_EQ(spline.NumKnots(), flat.NumKnots());
    for (unsigned int i = 0; i < flat.NumKnots(); ++i) {
        EXPECT_EQ(spline.Knot(i), flat.Knot(i));
        EXPECT_EQ(spline.Value(i), Point3(flat.Value(i).x, flat.Value(i).y, 0));
        EXPECT_EQ(spline.RightDerivative(i),
                  Point3(flat.RightDerivative(i).x, flat.RightDerivative(i).y, 0));
    }
}

TEST(HvSpline3d, FollowsAHelixWithFewKnots)
{
    // Two turns of radius 50 that climb 20 each; the unit tangent is known everywhere.
    double const turns = 4 * std::acos(-1.0) / 1000;
    double const climb = 20 / (2 * std::acos(-1.0));
    HvPoint3dArray points;
    for (int i = 0; i <= 1000; ++i) {
        double const t = turns * i;
        points.Add(Point3(50 * std::cos(t), 50 * std::sin(t), climb * t));
    }
    HvSpline3d spline;
    ASSERT_EQ(spline.OpenFit(points, 0.01, HvSpline3d::ContinuousDerivative), 1);
    // A cubic over an angle h with right ends and derivatives misses the circle by 50 h^4 / 384 at
    // most: for 0.01 h is 0.53, which makes 24 pieces of 4 pi. Halving an even curve makes 32.
    EXPECT_LE(spline.NumKnots(), 36u);
    double const speed = std::hypot(50.0, climb);
    double const length = spline.Knot(spline.NumKnots() - 1);
    // Chords of an angle a fall short of their arcs by a^2 / 24.
    EXPECT_NEAR(length, 1000 * turns * speed, 1e-5 * length);
    for (double x = 0; x <= length; x += 1) {
        double const t = 1000 * turns * x / length;
        Point3 const on(50 * std::cos(t), 50 * std::sin(t), climb * t);
        EXPECT_NEAR(Length(spline.Eval(x) - on), 0.0, 0.02);
    }
}
