// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What only the boolean curve does.

#include <tests/fcurve/stepped_test_support.h>

#include <gtest/gtest.h>

namespace {

TEST(HvBooleanFCurve, StartsWithTheDefaultsOfItsKind)
{
    OpenBoolean curve(1);
    EXPECT_EQ(curve.WhenNoKeys(), 1);
    EXPECT_EQ(curve.LeftValue(), 0);
    EXPECT_EQ(curve.Impl().lowerClamp, false);
    EXPECT_EQ(curve.Impl().upperClamp, true);
    EXPECT_EQ(curve.GetExtrapolationMethod(), HvBaseFCurve::ConstantExtrapolation);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.IsSelected(), 0);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
}

TEST(HvBooleanFCurve, IsTrueExactlyForOneWhereNoNumberIsRefused)
{
    for (double const value : {0.0, -0.0, 0.5, 0.9999999999999999, 2.0, -1.0, kNaN, kInfinity}) {
        EXPECT_EQ(OpenBoolean(value).WhenNoKeys(), 0) << value;
        OpenBoolean curve(1, {{1, 1}});
        EXPECT_EQ(curve.SetValueWhenNoKeys(value), 1);
        EXPECT_EQ(curve.WhenNoKeys(), 0);
        EXPECT_EQ(curve.SetKeyValue(1, HvBaseFCurve::Right, value, 0), 1);
        EXPECT_EQ(curve.Eval(1, 0), 0);
        OpenBoolean merged(1, {{1, 1}});
        EXPECT_EQ(merged.MergeAndCreateKey(0, 2, 1.5, value, 0, 0, 0), 1);
        EXPECT_EQ(merged.Eval(2, 0), 0);
    }
    EXPECT_EQ(OpenBoolean(1).WhenNoKeys(), 1);
}

TEST(HvBooleanFCurve, RefusesKeysOfOtherValues)
{
    OpenBoolean curve(0);
    std::string const image = curve.Image();
    for (double const value : {0.5, 2.0, -1.0, 1 + 2.3e-16, 4.9e-324, kNaN, kInfinity}) {
        EXPECT_EQ(curve.CreateKey(3, value), 0) << value;
    }
    EXPECT_EQ(curve.Image(), image);
    EXPECT_EQ(curve.CreateKey(3, -0.0), 1);
    EXPECT_EQ(curve.CreateKey(4, 1), 1);
}

TEST(HvBooleanFCurve, DoesNothingOnTheValueAxis)
{
    OpenBoolean curve(0, {{1, 1}, {2, 0}});
    std::string const image = curve.Image();
    double const kernel[] = {1, 1, 1};
    EXPECT_EQ(curve.ShiftValues(1), 0);
    EXPECT_EQ(curve.ScaleAndShiftValues(-1, 1), 0);
    EXPECT_EQ(curve.SmoothSequence(0, 3, kernel, 3), 0);
    EXPECT_EQ(curve.Image(), image);
}

}  // namespace
