// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The graphics context: its initial values and its copies.

#include <hv/shape/HvGC.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/curve_image.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>

TEST(HvGC, StartsWithItsStatedValues)
{
    HvGC const gc;
    EXPECT_EQ(gc.flatness, 1.0);
    EXPECT_EQ(gc.sampleSpacing, 1.0);
    EXPECT_EQ(gc.propFlatness, 0.1);
    EXPECT_EQ(gc.defaultProperty, 1.0);
    EXPECT_EQ(gc.minPointGap, 0.5);
    EXPECT_EQ(gc.miterLimit, 1.0);
    EXPECT_EQ(gc.strokeWidth, 1.0);
    EXPECT_EQ(gc.softRadiusA, 0.0);
    EXPECT_EQ(gc.softRadiusB, 0.0);
    EXPECT_EQ(gc.maxCoverage, 1.0);
    EXPECT_EQ(gc.fillRule, 1);
    EXPECT_EQ(gc.capStyle, 2);
    EXPECT_EQ(gc.joinStyle, 1);
    EXPECT_EQ(gc.taperStroke, 0);
    EXPECT_EQ(gc.softClipToShape, 1);
    EXPECT_EQ(gc.transform.IsIdentity(), 1);
}

TEST(HvGC, TurnsCornersAtTwentyFiveDegrees)
{
    HvGC const gc;
    std::uint64_t bits = 0;
    std::memcpy(&bits, &gc.cornerCosSquared, sizeof bits);
    EXPECT_EQ(bits, 0x3fea48dba91d9804U);
    // Stated with 11 digits, which leaves half a unit of the last.
    double const cosine = std::cos(25.0 * 3.14159265358979323846 / 180.0);
    EXPECT_NEAR(gc.cornerCosSquared, cosine * cosine, 1e-11);
}

TEST(HvGC, FalloffStartsAsALineFromOneToZero)
{
    HvGC const gc;
    EXPECT_EQ(gc.falloff.GetNumKeys(), 2U);
    for (int i = 0; i <= 16; ++i) {
        double const x = i / 16.0;
        EXPECT_NEAR(gc.falloff.Eval(x, 0), 1.0 - x, 1e-12) << x;
    }
    EXPECT_EQ(gc.falloff.Eval(0.0, 0), 1.0);
    EXPECT_EQ(gc.falloff.Eval(1.0, 0), 0.0);
}

TEST(HvGC, CopiesAreIndependent)
{
    HvGC gc;
    gc.flatness = 0.125;
    gc.softClipToShape = 7;
    gc.transform.Translate(3.0, 4.0, 0.0);
    gc.falloff.CreateKey(0.5, 0.25);

    HvGC const copy(gc);
    HvGC assigned;
    assigned = gc;
    std::string const image = CurveImage(gc.falloff);
    gc.flatness = 2.0;
    gc.transform.SetToIdentity();
    gc.falloff.CreateKey(0.75, 1.0);
    for (HvGC const* const one : {&copy, static_cast<HvGC const*>(&assigned)}) {
        EXPECT_EQ(one->flatness, 0.125);
        EXPECT_EQ(one->softClipToShape, 7);
        EXPECT_EQ(one->transform.GetMatrixElement(0, 3), 3.0);
        EXPECT_EQ(one->transform.GetMatrixElement(1, 3), 4.0);
        EXPECT_EQ(CurveImage(one->falloff), image);
    }
}

TEST(HvGC, RefusedAllocationLeavesNothingBehind)
{
    long const made = RefuseEachAllocation([] {
        HvGC const gc;
        HvGC const copy(gc);
        HvGC assigned;
        assigned = copy;
    });
    EXPECT_GT(made, 0);
}
