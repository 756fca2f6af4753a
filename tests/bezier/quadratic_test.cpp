// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Roots of quadratic equations.

#include <hv/bezier/quadratic.h>

#include "cubic_test_support.h"

#include <gtest/gtest.h>

TEST(quadratic, GivesTheRootsInOrder)
{
    struct {
        double a, b, c, first, second;
    } const rows[] = {{1, -3, 2, 1, 2},  {-1, 3, -2, 1, 2},     {1, 3, 2, -2, -1}, {1, -4, 4, 2, 2},
                      {1, 0, -9, -3, 3}, {4, 0, -1, -0.5, 0.5}, {2, -10, 12, 2, 3}};
    for (auto const& row : rows) {
        double first = 0.0;
        double second = 0.0;
        ASSERT_EQ(SolveQuadraticEquation(first, second, row.a, row.b, row.c), 1);
        EXPECT_DOUBLE_EQ(first, row.first);
        EXPECT_DOUBLE_EQ(second, row.second);
    }
}

TEST(quadratic, KeepsTheOutputsWhenThereIsNoRoot)
{
    double first = 7.0;
    double second = 8.0;
    EXPECT_EQ(SolveQuadraticEquation(first, second, 1, 1, 1), 0);
    EXPECT_EQ(first, 7.0);
    EXPECT_EQ(second, 8.0);
}

TEST(quadratic, LosesNoDigitsToCancellation)
{
    // Roots of x^2 - 1e8 x + 1: about 1e8 and 1e-8 (1 + 1e-16); the textbook formula gives 7.45e-9.
    double first = 0.0;
    double second = 0.0;
    ASSERT_EQ(SolveQuadraticEquation(first, second, 1, -1e8, 1), 1);
    EXPECT_DOUBLE_EQ(first, 1e-8);
    EXPECT_DOUBLE_EQ(second, 1e8);
    ASSERT_EQ(SolveQuadraticEquation(first, second, 1, 1e8, 1), 1);
    EXPECT_DOUBLE_EQ(first, -1e8);
    EXPECT_DOUBLE_EQ(second, -1e-8);
}

TEST(quadratic, TakesThePositiveRootForASmallHalfB)
{
    // h = -4e-8 is small: w = -(s + h), though h is negative, cancels: 1e-7 and -4e-8.
    double first = 0.0;
    double second = 0.0;
    double const h = -4e-8;
    double const c = -1e-14;
    ASSERT_EQ(SolveQuadraticEquation(first, second, 1, 2 * h, c), 1);
    double const w = -(std::sqrt(h * h - c) + h);
    EXPECT_EQ(first, w);
    EXPECT_EQ(second, c / w);
    // At the limit the sign counts.
    double const large = -1e-7;
    ASSERT_EQ(SolveQuadraticEquation(first, second, 1, 2 * large, c), 1);
    double const other = -(-std::sqrt(large * large - c) + large);
    EXPECT_EQ(second, other);
    EXPECT_EQ(first, c / other);
}

TEST(quadratic, LetsQuotientsByZeroThrough)
{
    double first = 0.0;
    double second = 0.0;
    // 2 x - 4 = 0: w = -2, first = w / 0, second = c / w.
    ASSERT_EQ(SolveQuadraticEquation(first, second, 0, 2, -4), 1);
    EXPECT_EQ(first, -kInfinity);
    EXPECT_EQ(second, 2.0);
    ASSERT_EQ(SolveQuadraticEquation(first, second, 0, 0, 0), 1);
    EXPECT_TRUE(std::isnan(first) && std::isnan(second));
    EXPECT_EQ(SolveQuadraticEquation(first, second, kNaN, 1, 1), 1);
}

TEST(quadratic, FindsTheRootsOfRandomFactors)
{
    RandomCurves random(9);
    for (int round = 0; round < 1000; ++round) {
        double const r = random.Uniform(-100, 100);
        double const s = random.Uniform(-100, 100);
        double const a = random.Uniform(0.5, 3);
        double first = 0.0;
        double second = 0.0;
        // Rounding of the coefficients can make a double root vanish; these are well apart.
        if (std::fabs(r - s) < 1) {
            continue;
        }
        ASSERT_EQ(SolveQuadraticEquation(first, second, a, -a * (r + s), a * r * s), 1);
        // The relative error of the discriminant grows by (sum / difference)^2 <= 4e4.
        EXPECT_NEAR(first, std::fmin(r, s), 1e-9);
        EXPECT_NEAR(second, std::fmax(r, s), 1e-9);
    }
}
