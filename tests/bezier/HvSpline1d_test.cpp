// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The fitted spline: refusals, exact cases, tolerance, number of knots, smoothness.

#include <hv/bezier/HvSpline1d.h>

#include "../support/allocation_failure.h"
#include "cubic_test_support.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int kKind = HvSpline1d::ContinuousDerivative;

struct Samples {
    HvDoubleArray x;
    HvDoubleArray y;

    Samples() = default;
    /// `count` equal steps of f from `from` to `to`.
    template <class F>
    Samples(unsigned int count, double from, double to, F const& f)
    {
        for (unsigned int i = 0; i < count; ++i) {
            x.Add(from + (to - from) * i / (count - 1));
            y.Add(f(x[i]));
        }
    }
    int Fit(HvSpline1d& spline, double tolerance) const
    {
        return spline.OpenFit(x, y, tolerance, kKind);
    }
    /// The greatest error at the samples.
    double Error(HvSpline1d const& spline) const
    {
        double worst = 0.0;
        for (unsigned int i = 0; i < x.Size(); ++i) {
            double const error = std::fabs(spline.Eval(x[i]) - y[i]);
            worst = error <= worst ? worst : error;
        }
        return worst;
    }
};

HvDoubleArray Numbers(std::initializer_list<double> numbers)
{
    return HvDoubleArray(numbers.begin(), static_cast<unsigned int>(numbers.size()));
}

/// Knots are rising samples with their values, ends included; derivatives agree.
void CheckKnots(HvSpline1d const& spline, Samples const& samples)
{
    unsigned int sample = 0;
    for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
        while (sample < samples.x.Size() && samples.x[sample] != spline.Knot(i)) {
            ++sample;
        }
        ASSERT_LT(sample, samples.x.Size());
        EXPECT_EQ(spline.Value(i), samples.y[sample]);
        EXPECT_EQ(spline.Eval(spline.Knot(i)), spline.Value(i));
        EXPECT_EQ(spline.LeftDerivative(i), spline.RightDerivative(i));
        EXPECT_TRUE(std::isfinite(spline.LeftDerivative(i)));
    }
    EXPECT_EQ(spline.Knot(0), samples.x[0]);
    EXPECT_EQ(spline.Knot(spline.NumKnots() - 1), samples.x[samples.x.Size() - 1]);
}

}  // namespace

TEST(HvSpline1d, StartsWithoutKnots)
{
    HvSpline1d const spline;
    EXPECT_EQ(spline.NumKnots(), 0u);
    EXPECT_EQ(spline.Eval(3.0), 0.0);
}

TEST(HvSpline1d, RefusesWhatIsNoFunctionAndStaysAsItWas)
{
    HvSpline1d spline;
    ASSERT_EQ(spline.OpenFit(Numbers({0, 2}), Numbers({1, 5}), 0.1, kKind), 1);
    HvDoubleArray const x = Numbers({0, 1, 2});
    HvDoubleArray const y = Numbers({0, 5, 1});
    struct {
        HvDoubleArray x, y;
        double tolerance;
        int kind;
    } const rows[] = {{Numbers({}), Numbers({}), 0.1, kKind},
                      {Numbers({1}), Numbers({1}), 0.1, kKind},
                      {x, Numbers({1, 2}), 0.1, kKind},
                      {Numbers({0, 1, 1}), y, 0.1, kKind},
                      {Numbers({0, 2, 1}), y, 0.1, kKind},
                      {Numbers({0, kNaN, 2}), y, 0.1, kKind},
                      {Numbers({kNaN, 1, 2}), y, 0.1, kKind},
                      {Numbers({0, 1, kNaN}), y, 0.1, kKind},
                      {Numbers({0, 1, kInfinity}), y, 0.1, kKind},
                      {Numbers({-kInfinity, 1, 2}), y, 0.1, kKind},
                      {Numbers({-kGreatest, 1, kGreatest}), y, 0.1, kKind},
                      {x, Numbers({0, kNaN, 1}), 0.1, kKind},
                      {x, Numbers({0, 1, kInfinity}), 0.1, kKind},
                      {x, y, -0.1, kKind},
                      {x, y, kNaN, kKind},
                      {x, y, -kInfinity, kKind},
                      {x, y, 0.1, 0},
                      {x, y, 0.1, 21}};
    for (auto const& row : rows) {
        EXPECT_EQ(spline.OpenFit(row.x, row.y, row.tolerance, row.kind), 0);
        EXPECT_EQ(spline.NumKnots(), 2u);
        EXPECT_EQ(spline.Value(1), 5.0);
        EXPECT_EQ(spline.Eval(1.0), 3.0);
    }
}

TEST(HvSpline1d, IsALineThroughTwoSamples)
{
    HvSpline1d spline;
    ASSERT_EQ(spline.OpenFit(Numbers({1, 5}), Numbers({3, -5}), 0.0, kKind), 1);
    EXPECT_EQ(spline.NumKnots(), 2u);
    EXPECT_DOUBLE_EQ(spline.LeftDerivative(0), -2.0);
    EXPECT_DOUBLE_EQ(spline.RightDerivative(1), -2.0);
    EXPECT_DOUBLE_EQ(spline.Eval(2.0), 1.0);
    // Beyond the ends the line goes on.
    EXPECT_DOUBLE_EQ(spline.Eval(-1.0), 7.0);
    EXPECT_DOUBLE_EQ(spline.Eval(7.0), -9.0);
    EXPECT_TRUE(std::isnan(spline.Eval(kNaN)));
    EXPECT_EQ(spline.Eval(kInfinity), -kInfinity);
}

TEST(HvSpline1d, NeedsTwoKnotsForOneCubic)
{
    auto const cubic = [](double x) { return ((x - 3) * x + 0.5) * x - 2; };
    Samples const samples(200, -2, 4, cubic);
    HvSpline1d spline;
    // The slopes of the samples at the ends, off by 0.1, count 1e-13 of one sample.
    ASSERT_EQ(samples.Fit(spline, 1e-10), 1);
    EXPECT_EQ(spline.NumKnots(), 2u);
    EXPECT_NEAR(spline.LeftDerivative(0), 12 + 12 + 0.5, 1e-9);
    EXPECT_NEAR(spline.RightDerivative(1), 48 - 24 + 0.5, 1e-9);
    for (int i = 0; i <= 60; ++i) {
        double const x = -2 + 0.1 * i;
        EXPECT_NEAR(spline.Eval(x), cubic(x), 1e-10);
    }
}

TEST(HvSpline1d, GoesThroughAllSamplesWithoutTolerance)
{
    // A parabola is one piece: y = 2 x - x^2.
    HvSpline1d hat;
    ASSERT_EQ(hat.OpenFit(Numbers({0, 1, 2}), Numbers({0, 1, 0}), 0.0, kKind), 1);
    EXPECT_EQ(hat.NumKnots(), 2u);
    EXPECT_NEAR(hat.LeftDerivative(0), 2.0, 1e-12);
    EXPECT_NEAR(hat.LeftDerivative(1), -2.0, 1e-12);
    RandomCurves random(17);
    Samples samples;
    for (int i = 0; i < 100; ++i) {
        samples.x.Add(i + random.Uniform(-0.4, 0.4));
        samples.y.Add(random.Uniform(-1, 1));
    }
    HvSpline1d spline;
    ASSERT_EQ(samples.Fit(spline, 0.0), 1);
    EXPECT_EQ(samples.Error(spline), 0.0);
    CheckKnots(spline, samples);
}

TEST(HvSpline1d, TakesTheSlopeOfTheSamplesWhereNoneLiesBetweenKnots)
{
    // y = 0 up to 10, then a line of slope 2, at a tolerance just above rounding: the corner takes
    // a piece between neighbours, whose ends go with the straight sides and do not swing into them.
    Samples samples(21, 0, 20, [](double x) { return x < 10.5 ? 0.0 : 2 * (x - 10); });
    HvSpline1d spline;
    ASSERT_EQ(samples.Fit(spline, 1e-11), 1);
    EXPECT_LE(spline.NumKnots(), 5u);
    EXPECT_NEAR(spline.Eval(4.5), 0.0, 1e-9);
    EXPECT_NEAR(spline.Eval(15.5), 11.0, 1e-9);
}

TEST(HvSpline1d, MeetsEverySampleWithinTheTolerance)
{
    RandomCurves random(14);
    for (int round = 0; round < 60; ++round) {
        double const scale = random.Scale(-30, 30);
        double const wave = random.Uniform(1, 40);
        double const noise = round % 3 == 0 ? 0.0 : random.Uniform(0, 0.1);
        Samples samples;
        double x = random.Uniform(-100, 100);
        unsigned int const count = 2 + static_cast<unsigned int>(random.Uniform(0, 400));
        for (unsigned int i = 0; i < count; ++i) {
            x += random.Scale(-8, 3);
            samples.x.Add(x);
            samples.y.Add(scale * (std::sin(x / wave) + random.Uniform(-noise, noise)));
        }
        double const tolerance = scale * random.Scale(-24, 0);
        HvSpline1d spline;
        ASSERT_EQ(samples.Fit(spline, tolerance), 1);
        EXPECT_LE(samples.Error(spline), tolerance);
        CheckKnots(spline, samples);
    }
}

TEST(HvSpline1d, NeedsFewKnotsForASmoothCurve)
{
    // A cubic over h with right ends and derivatives misses sin by h^4 / 384 at most: for 1e-4 h is
    // 0.44, which makes 29 pieces of 4 pi.
    Samples const samples(2000, 0, 12.566370614359172, [](double x) { return std::sin(x); });
    HvSpline1d spline;
    ASSERT_EQ(samples.Fit(spline, 1e-4), 1);
    EXPECT_LE(spline.NumKnots(), 36u);
    for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
        // Third order: h^3 / 100 and less.
        EXPECT_NEAR(spline.LeftDerivative(i), std::cos(spline.Knot(i)), 3e-3);
    }
}

TEST(HvSpline1d, NeedsFewKnotsForNoise)
{
    RandomCurves random(15);
    Samples samples(1000, 0, 6.283185307179586, [](double x) { return std::sin(x); });
    for (double& y : samples.y) {
        y += random.Uniform(-0.01, 0.01);
    }
    HvSpline1d spline;
    // Knots stand on samples, so their noise adds to that of the samples between.
    ASSERT_EQ(samples.Fit(spline, 0.03), 1);
    EXPECT_LE(spline.NumKnots(), 10u);
}

TEST(HvSpline1d, KeepsKnotsTogetherAtCornersAndJumps)
{
    Samples const corner(1001, -1, 1, [](double x) { return std::fabs(x); });
    HvSpline1d spline;
    ASSERT_EQ(corner.Fit(spline, 1e-6), 1);
    EXPECT_LE(spline.NumKnots(), 5u);
    EXPECT_NEAR(spline.Eval(-0.5), 0.5, 1e-6);
    Samples const jump(1000, -1, 1, [](double x) { return x < 0 ? -1.0 : 2.0; });
    ASSERT_EQ(jump.Fit(spline, 1e-6), 1);
    EXPECT_LE(spline.NumKnots(), 5u);
    for (double x = -1; x <= 1; x += 0x1p-9) {
        EXPECT_GE(spline.Eval(x), -1 - 1e-6);
        EXPECT_LE(spline.Eval(x), 2 + 1e-6);
    }
}

TEST(HvSpline1d, ScalesWithItsSamples)
{
    Samples const plain(100, 0, 10, [](double x) { return std::sin(x) + 0.1 * x; });
    HvSpline1d expected;
    ASSERT_EQ(plain.Fit(expected, 0x1p-8), 1);
    for (int const e : {-300, -20, 20, 300}) {
        Samples scaled = plain;
        for (unsigned int i = 0; i < plain.x.Size(); ++i) {
            scaled.x[i] = std::ldexp(plain.x[i], e);
            scaled.y[i] = std::ldexp(plain.y[i], 2 * e);
        }
        HvSpline1d spline;
        ASSERT_EQ(scaled.Fit(spline, std::ldexp(0x1p-8, 2 * e)), 1);
        ASSERT_EQ(spline.NumKnots(), expected.NumKnots()) << e;
        for (unsigned int i = 0; i < spline.NumKnots(); ++i) {
            EXPECT_EQ(spline.Knot(i), std::ldexp(expected.Knot(i), e));
            EXPECT_EQ(spline.LeftDerivative(i), std::ldexp(expected.LeftDerivative(i), e));
        }
    }
}

TEST(HvSpline1d, MeetsSamplesAtTheEndsOfTheNumberRange)
{
    Samples hostile[3];
    hostile[0].x = Numbers({-8e307, -1, -1e-300, 0, 5e-324, 1e-300, 1, 8e307});
    hostile[0].y = Numbers({0, 1, kGreatest, -kGreatest, 5e-324, 1, -1, 0});
    hostile[1].x = Numbers({0, 5e-324, 1e-323, 1.5e-323, 2e-323});
    hostile[1].y = Numbers({0, 1, -1, 1e300, 0});
    hostile[2].x = Numbers({0, 1, 2, 3, 4, 5});
    hostile[2].y = Numbers({kGreatest, -kGreatest, kGreatest, 0, -kGreatest, kGreatest});
    for (Samples const& samples : hostile) {
        for (double const tolerance : {0.0, 1e-3, kGreatest, kInfinity}) {
            HvSpline1d spline;
            ASSERT_EQ(samples.Fit(spline, tolerance), 1);
            EXPECT_LE(samples.Error(spline), tolerance);
            CheckKnots(spline, samples);
        }
    }
}

TEST(HvSpline1d, TakesTwoKnotsForAnUnlimitedTolerance)
{
    Samples const samples(100, 0, 10, [](double x) { return std::sin(7 * x); });
    HvSpline1d spline;
    ASSERT_EQ(samples.Fit(spline, kInfinity), 1);
    EXPECT_EQ(spline.NumKnots(), 2u);
}

TEST(HvSpline1d, FitsManySamplesInLittleTime)
{
    // Noise of the size of the tolerance is the dear case: halving goes far down.
    RandomCurves random(16);
    Samples samples(100000, 0, 1000, [](double x) { return std::sin(x); });
    for (double& y : samples.y) {
        y += random.Uniform(-0.01, 0.01);
    }
    HvSpline1d spline;
    ASSERT_EQ(samples.Fit(spline, 0.008), 1);
    EXPECT_LE(samples.Error(spline), 0.008);
    EXPECT_LT(spline.NumKnots(), 100000u);
}

TEST(HvSpline1d, StaysAsItWasWhenMemoryFails)
{
    Samples const samples(50, 0, 10, [](double x) { return std::sin(x); });
    long const allocations = RefuseEachAllocation(
        [] {
            auto spline = std::make_unique<HvSpline1d>();
            spline->OpenFit(Numbers({0, 2}), Numbers({1, 5}), 0.1, kKind);
            return spline;
        },
        [&samples](std::unique_ptr<HvSpline1d>& spline) { samples.Fit(*spline, 1e-3); },
        [](std::unique_ptr<HvSpline1d>& spline, bool completed) {
            EXPECT_EQ(spline->NumKnots() == 2, !completed);
        });
    EXPECT_GT(allocations, 5);
}
