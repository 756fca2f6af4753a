// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Angles of directions: values by hand, ranges, agreement with a long double reference.

#include <hv/foundation/angle.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr long double kPi = 3.14159265358979323846264338327950288L;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// The full circle with fifteen digits of pi is 6.5e-15 short, the arc cosine and sine of rounded
// arguments are wrong by at most about 1e-15.
constexpr double kRadianTolerance = 1e-14;
constexpr double kDegreeTolerance = kRadianTolerance * 60;

long double ReferenceRadian(double x, double y)
{
    long double const a = atan2l(y, x);
    return a < 0 ? a + 2 * kPi : a;
}

double CircularDifference(double a, long double b, long double circle)
{
    long double const d = fabsl(a - b);
    return double(d > circle / 2 ? circle - d : d);
}

}  // namespace

TEST(AngleWithFirstAxis, KnowsTheAxes)
{
    EXPECT_EQ(AngleWithFirstAxisDegree(1, 0), 0.0);
    EXPECT_NEAR(AngleWithFirstAxisDegree(0, 1), 90.0, kDegreeTolerance);
    EXPECT_EQ(AngleWithFirstAxisDegree(-1, 0), 180.0);
    EXPECT_NEAR(AngleWithFirstAxisDegree(0, -1), 270.0, kDegreeTolerance);
    EXPECT_EQ(AngleWithFirstAxisRadian(5, 0), 0.0);
    EXPECT_EQ(AngleWithFirstAxisRadian(-5, 0), 3.14159265358979);
}

TEST(AngleWithFirstAxis, CountsTheFullCircleWithFifteenDigits)
{
    // Below the axis the angle is the stated full circle less the arc cosine: 6.28318530717958 -
    // 1.5707963267948966, both numbers as doubles.
    EXPECT_EQ(AngleWithFirstAxisRadian(0, -1), 6.28318530717958 - std::acos(0.0));
    EXPECT_EQ(AngleWithFirstAxisDegree(0, -1), 269.9999999999999);
    EXPECT_EQ(AngleWithFirstAxisDegree(0, 1), 90.00000000000009);
}

TEST(AngleWithFirstAxis, KnowsTheDiagonals)
{
    EXPECT_NEAR(AngleWithFirstAxisDegree(2, 2), 45.0, kDegreeTolerance);
    EXPECT_NEAR(AngleWithFirstAxisDegree(-2, 2), 135.0, kDegreeTolerance);
    EXPECT_NEAR(AngleWithFirstAxisDegree(-2, -2), 225.0, kDegreeTolerance);
    EXPECT_NEAR(AngleWithFirstAxisDegree(2, -2), 315.0, kDegreeTolerance);
}

TEST(AngleWithFirstAxis, TurnsTheFullCircleIntoZero)
{
    EXPECT_EQ(AngleWithFirstAxisRadian(1, -1e-17), 0.0);
    EXPECT_EQ(AngleWithFirstAxisDegree(1, -1e-17), 0.0);
    EXPECT_EQ(AngleWithFirstAxisRadian(1, -0.0), 0.0);
}

TEST(AngleWithFirstAxis, IsZeroWithoutADirection)
{
    double const undirected[][2] = {{0, 0},         {kNaN, 1},      {1, kNaN},
                                    {kInfinity, 1}, {0, kInfinity}, {-kInfinity, kInfinity},
                                    {1e200, 1e200}, {0, -1e-200},   {-5e-324, 5e-324}};
    for (auto const& v : undirected) {
        EXPECT_EQ(AngleWithFirstAxisRadian(v[0], v[1]), 0.0) << v[0] << ", " << v[1];
        EXPECT_EQ(AngleWithFirstAxisDegree(v[0], v[1]), 0.0) << v[0] << ", " << v[1];
    }
}

TEST(AngleWithFirstAxis, AgreesWithTheArcTangent)
{
    EXPECT_TRUE(rc::check([] {
        double const length = std::ldexp(1.0, PickInRange(-400, 400));
        double const turn = PickInRange(0, 1 << 20) * 6e-6;
        double const x = length * std::cos(turn);
        double const y = length * std::sin(turn);
        double const radian = AngleWithFirstAxisRadian(x, y);
        double const degree = AngleWithFirstAxisDegree(x, y);
        RC_ASSERT(radian >= 0.0 && radian < 6.28318530717958);
        RC_ASSERT(degree >= 0.0 && degree < 360.0);
        long double const expected = ReferenceRadian(x, y);
        RC_ASSERT(CircularDifference(radian, expected, 2 * kPi) <= kRadianTolerance);
        RC_ASSERT(CircularDifference(degree, expected * 180 / kPi, 360) <= kDegreeTolerance);
    }));
}
