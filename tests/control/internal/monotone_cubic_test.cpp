// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Inverting cubics, against a bisection in long double.

#include <hv/control/internal/monotone_cubic.h>

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <random>

namespace {

double BisectedRoot(HvCubicTerms const& terms, double value, double low, double high)
{
    long double a = low;
    long double b = high;
    bool const falls = terms.At(high) < terms.At(low);
    for (int k = 0; k < 100; ++k) {
        long double const s = (a + b) / 2;
        long double const y =
            ((static_cast<long double>(terms.a3) * s + terms.a2) * s + terms.a1) * s;
        ((y < value) != falls ? a : b) = s;
    }
    return static_cast<double>(a);
}

}  // namespace

TEST(monotone_cubic, TermsAreThoseOfTheBezier)
{
    HvCubicTerms const terms = HvCubicTerms::Of(1, 2, 4, 9);
    EXPECT_EQ(terms.At(0), 0);
    EXPECT_EQ(terms.At(1), 8);
    // (1 + 3 * 2 + 3 * 4 + 9) / 8 = 3.5 at one half; the slope there is 3 (9 + 4 - 2 - 1) / 4.
    EXPECT_EQ(terms.At(0.5), 2.5);
    EXPECT_EQ(terms.SlopeAt(0.5), 7.5);
    EXPECT_EQ(terms.SlopeAt(0), 3);
    EXPECT_EQ(terms.SlopeAt(1), 15);
}

TEST(monotone_cubic, EndsAreTakenBeyondThem)
{
    HvCubicTerms const rising = HvCubicTerms::Of(0, 1, 2, 3);
    EXPECT_EQ(HvMonotoneCubic_Solve(rising, -1, 0, 1, 0.5), 0);
    EXPECT_EQ(HvMonotoneCubic_Solve(rising, 0, 0, 1, 0.5), 0);
    EXPECT_EQ(HvMonotoneCubic_Solve(rising, 4, 0, 1, 0.5), 1);
    EXPECT_EQ(HvMonotoneCubic_Solve(rising, 0.3, 0.25, 0.5, 0.3), 0.25);
    HvCubicTerms const falling = HvCubicTerms::Of(0, -1, -2, -3);
    EXPECT_EQ(HvMonotoneCubic_Solve(falling, 1, 0, 1, 0.5), 0);
    EXPECT_EQ(HvMonotoneCubic_Solve(falling, -4, 0, 1, 0.5), 1);
    EXPECT_DOUBLE_EQ(HvMonotoneCubic_Solve(falling, -1.5, 0, 1, 0.1), 0.5);
}

TEST(monotone_cubic, FindsWhatBisectionFinds)
{
    std::mt19937 engine(11);
    std::uniform_real_distribution<double> uniform(0, 1);
    for (int k = 0; k < 20000; ++k) {
        // Handles inside the span make the coordinate rise.
        double const scale = k % 2 == 0 ? 1 : -1;
        HvCubicTerms const terms =
            HvCubicTerms::Of(0, scale * uniform(engine), scale * uniform(engine), scale);
        double const value = scale * uniform(engine);
        double const s = HvMonotoneCubic_Solve(terms, value, 0, 1, uniform(engine));
        // Where the slope is small, s is as uncertain as rounding of the value makes it.
        double const expected = BisectedRoot(terms, value, 0, 1);
        double const slope = std::fabs(terms.SlopeAt(expected));
        EXPECT_LE(std::fabs(s - expected), 1e-15 + std::min(2e-15 / slope, 1e-5)) << k;
        EXPECT_LE(std::fabs(terms.At(s) - value), 1e-15) << k;
    }
}

TEST(monotone_cubic, LevelPointsAndUprightStartsAreFound)
{
    // s^3 and 3 s^2 - 2 s^3, whose slope is 0 at one or both ends.
    for (double const value : {1e-30, 1e-9, 0.125, 0.999999, 1 - 1e-15}) {
        double const cube = HvMonotoneCubic_Solve({0, 0, 1}, value, 0, 1, 0.5);
        EXPECT_NEAR(cube / std::cbrt(value), 1, 1e-14) << value;
        HvCubicTerms const smooth{0, 3, -2};
        double const s = HvMonotoneCubic_Solve(smooth, value, 0, 1, value);
        EXPECT_NEAR(smooth.At(s), value, 1e-15) << value;
    }
}

TEST(monotone_cubic, AnyNumbersEnd)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const values[] = {0, -1, 1e308, inf, -inf, std::nan(""), 5e-324};
    for (double const a : values) {
        for (double const b : values) {
            for (double const value : values) {
                HvMonotoneCubic_Solve({a, b, 1}, value, 0, 1, value);
            }
        }
    }
}
