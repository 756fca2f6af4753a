// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What only the integer curve does.

#include <tests/fcurve/stepped_test_support.h>

#include <gtest/gtest.h>

namespace {

constexpr double kLowest = -2147483648.0;
constexpr double kHighest = 2147483647.0;

TEST(HvIntegerFCurve, StartsWithTheDefaultsOfItsKind)
{
    OpenInteger curve(-3);
    EXPECT_EQ(curve.WhenNoKeys(), -3);
    EXPECT_EQ(curve.LeftValue(), 0);
    EXPECT_EQ(curve.Impl().lowerClamp, kLowest);
    EXPECT_EQ(curve.Impl().upperClamp, kHighest);
    EXPECT_EQ(curve.GetExtrapolationMethod(), HvBaseFCurve::ConstantExtrapolation);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
}

TEST(HvIntegerFCurve, CutsNumbersTowardZeroWhereNoneIsRefused)
{
    struct Row {
        double number;
        double value;
    };
    for (Row const& row :
         {Row{2.9, 2}, Row{-2.9, -2}, Row{kNaN, 0}, Row{kInfinity, kHighest},
          Row{-kInfinity, kLowest}, Row{1e300, kHighest}, Row{2147483648.0, kHighest},
          Row{-2147483649.0, kLowest}, Row{4.9e-324, 0}}) {
        EXPECT_EQ(OpenInteger(row.number).WhenNoKeys(), row.value);
        OpenInteger curve(0, {{1, 1}});
        EXPECT_EQ(curve.SetValueWhenNoKeys(row.number), 1);
        EXPECT_EQ(curve.WhenNoKeys(), row.value);
        EXPECT_EQ(curve.SetKeyValue(1, HvBaseFCurve::Right, row.number, 0), 1);
        EXPECT_EQ(curve.Eval(1, 0), row.value);
        OpenInteger merged(0, {{1, 1}});
        EXPECT_EQ(merged.MergeAndCreateKey(0, 2, 1.5, row.number, 0, 0, 0), 1);
        EXPECT_EQ(merged.Eval(2, 0), row.value);
    }
}

TEST(HvIntegerFCurve, RefusesKeysOfOtherValues)
{
    OpenInteger curve(0);
    std::string const image = curve.Image();
    for (double const value :
         {2.5, kHighest + 1, kLowest - 1, 1e300, 4.9e-324, kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(curve.CreateKey(3, value), 0) << value;
    }
    EXPECT_EQ(curve.Image(), image);
    EXPECT_EQ(curve.CreateKey(3, kHighest), 1);
    EXPECT_EQ(curve.CreateKey(4, kLowest), 1);
    EXPECT_EQ(curve.Eval(3, 0), kHighest);
    EXPECT_EQ(curve.Eval(4, 0), kLowest);
}

TEST(HvIntegerFCurve, ShiftsAllValuesButTheLeftOne)
{
    OpenInteger curve(5, {{1, 10}, {2, -3}});
    curve.SetLeftValue(8);
    EXPECT_EQ(curve.ShiftValues(2.5), 1);  // halves round up
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 13}, {2, 0}}));
    EXPECT_EQ(curve.WhenNoKeys(), 8);
    EXPECT_EQ(curve.LeftValue(), 8);
    EXPECT_EQ(curve.ShiftValues(-0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 13}, {2, 0}}));
    EXPECT_EQ(curve.ShiftValues(-1.6), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 11}, {2, -2}}));
    EXPECT_EQ(curve.ShiftValues(kNaN), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 11}, {2, -2}}));
    EXPECT_EQ(curve.ShiftValues(kInfinity), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, kHighest}, {2, kHighest - 2}}));
    EXPECT_EQ(curve.ShiftValues(-1e300), 1);
    EXPECT_EQ(curve.ShiftValues(-1e300), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, kLowest}, {2, kLowest}}));
}

TEST(HvIntegerFCurve, ScalesEachKeyFromTheNewValueOfTheKeyBefore)
{
    OpenInteger curve(5, {{1, 10}, {2, 20}, {3, 30}});
    curve.SetLeftValue(1);
    EXPECT_EQ(curve.ScaleAndShiftValues(2, 3), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 5}, {2, 13}, {3, 29}}));
    EXPECT_EQ(curve.WhenNoKeys(), 13);
    EXPECT_EQ(curve.LeftValue(), 1);
    EXPECT_EQ(curve.Impl().lowerClamp, kLowest);
    EXPECT_EQ(curve.Impl().upperClamp, kHighest);
}

TEST(HvIntegerFCurve, RoundsScaleAndOffsetAndSwapsTheClamps)
{
    OpenInteger curve(5, {{1, 10}});
    curve.Impl().lowerClamp = -10;
    curve.Impl().upperClamp = 20;
    curve.SetLeftValue(1);
    EXPECT_EQ(curve.ScaleAndShiftValues(-1.4, 2.5), 1);  // -1 and 3
    EXPECT_EQ(curve.Impl().lowerClamp, -17);
    EXPECT_EQ(curve.Impl().upperClamp, 13);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 2}}));
    EXPECT_EQ(curve.WhenNoKeys(), -2);
    EXPECT_EQ(curve.ScaleAndShiftValues(0.3, 7), 1);  // a scale that rounds to 0 is none to refuse
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 7}}));
    EXPECT_EQ(curve.ScaleAndShiftValues(kInfinity, kInfinity), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, kHighest}}));
    EXPECT_EQ(curve.ScaleAndShiftValues(-kInfinity, kNaN), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, kLowest}}));
}

TEST(HvIntegerFCurve, RefusesToScaleToNothing)
{
    OpenInteger curve(5, {{1, 10}});
    std::string const image = curve.Image();
    for (double const scale : {0.0, -0.0, 0.99e-7, -0.99e-7, 4.9e-324, kNaN}) {
        EXPECT_EQ(curve.ScaleAndShiftValues(scale, 1), 0) << scale;
    }
    EXPECT_EQ(curve.Image(), image);
    EXPECT_EQ(curve.ScaleAndShiftValues(1e-7, 1), 1);
}

TEST(HvIntegerFCurve, RefusesToChangeLockedValues)
{
    OpenInteger curve(5, {{1, 10}, {2, 20}});
    Lock(curve, 2, HvBaseFCurve::ValueLocked);
    std::string const image = curve.Image();
    EXPECT_EQ(curve.ShiftValues(1), 0);
    EXPECT_EQ(curve.ScaleAndShiftValues(1, 0), 0);
    EXPECT_EQ(curve.MirrorValues(), 0);
    EXPECT_EQ(curve.Image(), image);
}

}  // namespace
