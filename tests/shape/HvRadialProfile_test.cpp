// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Coverage over distance, for the radial fills.

#include <hv/shape/internal/HvRadialProfile.h>

#include <hv/fcurve/HvStdFCurve.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

}  // namespace

TEST(HvRadialProfile, FollowsALineExactly)
{
    HvRadialProfile const profile(HvStdFCurve(0, 1, 1, 0, kCubic, kCubic));
    EXPECT_EQ(profile.Length(), 1.0);
    EXPECT_EQ(profile.CoverageAt(0.0), 255);
    EXPECT_EQ(profile.CoverageAt(1.0), 0);
    // 255 (1 - d) + 0.5, cut down; the fractions are exact in binary.
    EXPECT_EQ(profile.CoverageAt(0.5), 128);
    EXPECT_EQ(profile.CoverageAt(0.25), 191);
    EXPECT_EQ(profile.CoverageAt(0.75), 64);
}

TEST(HvRadialProfile, KeepsCoverageBetweenNoneAndFull)
{
    HvRadialProfile const profile(HvStdFCurve(0, 2, 1, -1, kCubic, kCubic));
    EXPECT_EQ(profile.CoverageAt(0.0), 255);
    EXPECT_EQ(profile.CoverageAt(0.25), 255);
    EXPECT_EQ(profile.CoverageAt(0.5), 128);
    EXPECT_EQ(profile.CoverageAt(0.75), 0);
    EXPECT_EQ(profile.CoverageAt(1.0), 0);
    // Beyond the keys the line goes on.
    EXPECT_EQ(profile.CoverageAt(-1.0), 255);
    EXPECT_EQ(profile.CoverageAt(1e300), 0);
    EXPECT_EQ(profile.CoverageAt(std::numeric_limits<double>::quiet_NaN()), 0);
    EXPECT_EQ(profile.CoverageAt(std::numeric_limits<double>::infinity()), 0);
}

TEST(HvRadialProfile, RoundsHalfUp)
{
    // A constant of v: 255 v + 0.5 steps from 0 to 1 at v = 0.5 / 255.
    double const step = 0.5 / 255.0;
    HvRadialProfile const below(HvStdFCurve(step * 0.999, kCubic));
    HvRadialProfile const above(HvStdFCurve(step * 1.001, kCubic));
    EXPECT_EQ(below.CoverageAt(0.3), 0);
    EXPECT_EQ(above.CoverageAt(0.3), 1);
    EXPECT_EQ(HvRadialProfile(HvStdFCurve(1.0, kCubic)).CoverageAt(0.3), 255);
}

TEST(HvRadialProfile, FalloffWithoutKeysIsConstant)
{
    HvRadialProfile const profile(HvStdFCurve(0.4, kCubic));
    EXPECT_EQ(profile.Length(), 1.0);
    for (double const distance : {-1.0, 0.0, 0.5, 7.0}) {
        EXPECT_EQ(profile.CoverageAt(distance), 102) << distance;
    }
}

TEST(HvRadialProfile, FalloffOfOneKeyIsConstantUpToIt)
{
    HvRadialProfile const profile(HvStdFCurve(3.0, 0.4, 0.4, kCubic, kCubic));
    EXPECT_EQ(profile.Length(), 3.0);
    EXPECT_EQ(profile.CoverageAt(0.0), 102);
    EXPECT_EQ(profile.CoverageAt(5.0), 102);
}

TEST(HvRadialProfile, StaysWithinAStepOfACurve)
{
    HvStdFCurve falloff(0, 1, 1, 0, kCubic, kCubic);
    falloff.CreateKey(0.3, 0.9);
    falloff.CreateKey(2.0, 0.1);
    HvRadialProfile const profile(falloff);
    EXPECT_EQ(profile.Length(), 2.0);
    for (int i = 0; i <= 400; ++i) {
        double const x = i / 200.0;
        double const value = std::fmin(1.0, std::fmax(0.0, falloff.Eval(x, 0)));
        // Flattened to 0.001, which is 0.255 of a step; half a step is rounding.
        EXPECT_NEAR(profile.CoverageAt(x), value * 255.0, 0.756) << x;
    }
}

TEST(HvRadialProfile, RefusedAllocationLeavesNothingBehind)
{
    HvStdFCurve const falloff(0, 1, 1, 0, kCubic, kCubic);
    long const made =
        RefuseEachAllocation([&] { EXPECT_EQ(HvRadialProfile(falloff).CoverageAt(0.0), 255); });
    EXPECT_GT(made, 0);
}
