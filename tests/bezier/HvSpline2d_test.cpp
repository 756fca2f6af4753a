// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Splines of the plane drawn as cubics.

#include <hv/bezier/HvSpline2d.h>

#include "fit_test_support.h"

#include <gtest/gtest.h>

namespace {

HvSpline2d WaveSpline()
{
    HvPoint2dArray points;
    for (int i = 0; i < 200; ++i) {
        points.Add(2.0 * i, 40 * std::sin(0.05 * i));
    }
    HvSpline2d spline;
    EXPECT_EQ(spline.OpenFit(points, 0.05, HvSpline2d::ContinuousDerivative), 1);
    return spline;
}

}  // namespace

TEST(HvSpline2d_draw, CubicsRunAsTheSplineDoes)
{
    HvSpline2d const spline = WaveSpline();
    FittedChain chain;
    EXPECT_EQ(spline.Draw(chain, 0), 3 * (spline.NumKnots() - 1) + 1);
    EXPECT_EQ(chain.calls, "M" + std::string(spline.NumKnots() - 1, 'C'));
    for (unsigned int i = 0; i + 1 < spline.NumKnots(); ++i) {
        double const from = spline.Knot(i);
        double const span = spline.Knot(i + 1) - from;
        for (int k = 0; k <= 16; ++k) {
            Point2 const drawn = CubicAt(chain.Cubic(i).data(), k / 16.0);
            // Controls below 512 are rounded to float by 1.6e-5 in each coordinate.
            EXPECT_NEAR(Length(drawn - spline.Eval(from + span * k / 16.0)), 0.0, 3e-5);
        }
    }
}

TEST(HvSpline2d_draw, ContinuedPathGetsNoMoveto)
{
    HvSpline2d const spline = WaveSpline();
    FittedChain whole;
    spline.Draw(whole, 0);
    FittedChain chain;
    EXPECT_EQ(spline.Draw(chain, 1), whole.points.size() - 1);
    EXPECT_EQ(chain.points, std::vector<FitPoint>(whole.points.begin() + 1, whole.points.end()));
}

TEST(HvSpline2d_draw, NothingComesOfASplineWithoutKnots)
{
    FittedChain chain;
    EXPECT_EQ(HvSpline2d().Draw(chain, 0), 0u);
    EXPECT_EQ(chain.calls, "");
}

TEST(HvSpline2d_draw, OneKnotGivesOneCollapsedCubic)
{
    HvSpline2d spline;
    ASSERT_EQ(spline.OpenFit(HvPoint2dArray(Point2(2, 3), 4u), 0, 20), 1);
    FittedChain chain;
    EXPECT_EQ(spline.Draw(chain, 0), 4u);
    EXPECT_EQ(chain.points, std::vector<FitPoint>(4, FitPoint(2, 3)));
}

TEST(HvSpline2d_draw, WhatIsBeyondFloatIsDrawnAtItsEnd)
{
    HvPoint2dArray points;
    points.Add(0, 0);
    points.Add(1e300, -1e300);
    HvSpline2d spline;
    ASSERT_EQ(spline.OpenFit(points, 0, 20), 1);
    FittedChain chain;
    spline.Draw(chain, 0);
    float const greatest = std::numeric_limits<float>::max();
    EXPECT_EQ(chain.points[3], FitPoint(greatest, -greatest));
}
