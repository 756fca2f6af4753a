// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The values, clamps and constraints of raw curves.

#include <tests/fcurve/raw_test_support.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using C = HvBaseFCurve;

TEST(HvRawFCurve_values, KeyHasOneValueOnBothSides)
{
    OpenRaw curve = Zigzag();
    double value = -1;
    EXPECT_EQ(curve.GetKeyValue(2.1, C::Left, value, 0.2), 1);
    EXPECT_EQ(value, 30);
    EXPECT_EQ(curve.SetKeyValue(2, C::Left, 5, 0), 1);
    EXPECT_EQ(curve.GetKeyValue(2, C::Right, value, 0), 1);
    EXPECT_EQ(value, 5);
    EXPECT_EQ(curve.SetKeyValue(2.1, C::Right, 6, 0.2), 1);
    double left = 0;
    double right = 0;
    EXPECT_EQ(curve.GetKeyValues(2, left, right, 0), 1);
    EXPECT_EQ(left, 6);
    EXPECT_EQ(right, 6);
    EXPECT_EQ(curve.GetKeyValuesByIndex(1, left, right), 1);
    EXPECT_EQ(left, 6);
    EXPECT_EQ(right, 6);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {2, 6}, {3, 0}, {4, 40}}));
}

TEST(HvRawFCurve_values, RefusesASideThatIsNone)
{
    OpenRaw curve = Zigzag();
    std::string const image = CurveImage(curve);
    double value = -1;
    for (int const side : {0, 3, -1}) {
        EXPECT_EQ(curve.GetKeyValue(2, static_cast<C::KeySide>(side), value, 0), 0);
        EXPECT_EQ(curve.SetKeyValue(2, static_cast<C::KeySide>(side), 5, 0), 0);
    }
    EXPECT_EQ(curve.GetKeyValue(2.1, C::Left, value, 0.05), 0);
    EXPECT_EQ(curve.SetKeyValue(2.1, C::Left, 5, 0.05), 0);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(CurveImage(curve), image);
}

TEST(HvRawFCurve_values, ShiftsEveryValue)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.ShiftValues(-10), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 0}, {2, 20}, {3, -10}, {4, 30}}));
    EXPECT_EQ(curve.WhenNoKeys(), -3);
    OpenRaw empty(7, {});
    EXPECT_EQ(empty.ShiftValues(2), 1);
    EXPECT_EQ(empty.WhenNoKeys(), 9);
}

TEST(HvRawFCurve_values, ScalesEveryValue)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.ScaleAndShiftValues(-2, 1), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, -19}, {2, -59}, {3, 1}, {4, -79}}));
    EXPECT_EQ(curve.WhenNoKeys(), -13);
    EXPECT_EQ(curve.LowerClamp(), -1.7976931348623157e308);
    EXPECT_EQ(curve.UpperClamp(), 1.7976931348623157e308);
}

TEST(HvRawFCurve_values, RefusesAScaleThatIsAlmostZero)
{
    OpenRaw curve = Zigzag();
    std::string const image = CurveImage(curve);
    for (double const scale : {0.0, 1e-8, -1e-8, std::nextafter(1e-7, 0.0), kNaN}) {
        EXPECT_EQ(curve.ScaleAndShiftValues(scale, 0), 0) << scale;
    }
    EXPECT_EQ(CurveImage(curve), image);
    EXPECT_EQ(curve.ScaleAndShiftValues(1e-7, 0), 1);
    EXPECT_EQ(curve.ScaleAndShiftValues(-1e-7, 0), 1);
}

struct ClampCase {
    double lower, upper;
    double scale, offset;
    double newLower, newUpper;
};

TEST(HvRawFCurve_values, RescalesALowerClampOnlyAboveTheSmallestNormalDouble)
{
    constexpr double kSmallest = std::numeric_limits<double>::min();
    double const above = std::nextafter(kSmallest, 1.0);
    ClampCase const cases[] = {
        {-1, 4, 2, 0, -1, 8},                // negative: stays
        {0, 4, 2, 5, 0, 13},                 // zero: stays
        {1, 4, 2, 5, 7, 13},                 // positive: goes along
        {1, 4, -1, 0, -4, -1},               // crossing clamps are swapped
        {0, 4, -1, 0, -4, 0},                // also with one that stayed
        {kSmallest, 4, 2, 0, kSmallest, 8},  // at the threshold
        {above, 4, 2, 0, above * 2, 8},      // above it
        {5e-324, 4, 2, 0, 5e-324, 8},        // denormal
        {1, 1.7976931348623157e308, 2, 0, 2, 1.7976931348623157e308},
        {-1.7976931348623157e308, -3, 2, 0, -1.7976931348623157e308, -6},
    };
    for (ClampCase const& c : cases) {
        OpenRaw curve = Zigzag();
        ASSERT_EQ(curve.SetClampingValues(c.lower, c.upper), 1);
        EXPECT_EQ(curve.ScaleAndShiftValues(c.scale, c.offset), 1);
        EXPECT_EQ(curve.LowerClamp(), c.newLower) << c.lower << " " << c.scale;
        EXPECT_EQ(curve.UpperClamp(), c.newUpper) << c.upper << " " << c.scale;
    }
}

TEST(HvRawFCurve_values, RefusesValuesThatWouldOverflow)
{
    OpenRaw curve(1, {{0, 1e308}, {1, -1e308}});
    Tag(curve, 0, 1);
    curve.SetClampingValues(1, 2);
    std::string const image = CurveImage(curve);
    EXPECT_EQ(curve.ShiftValues(1e308), 0);
    EXPECT_EQ(curve.ShiftValues(kNaN), 0);
    EXPECT_EQ(curve.ShiftValues(kInfinity), 0);
    EXPECT_EQ(curve.ScaleAndShiftValues(2, 0), 0);
    EXPECT_EQ(curve.ScaleAndShiftValues(kInfinity, 0), 0);
    EXPECT_EQ(curve.ScaleAndShiftValues(1, kNaN), 0);
    EXPECT_EQ(curve.SetKeyValue(0, C::Left, kNaN, 0), 0);
    EXPECT_EQ(curve.SetKeyValue(0, C::Left, kInfinity, 0), 0);
    EXPECT_EQ(curve.SetValueWhenNoKeys(kNaN), 0);
    EXPECT_EQ(CurveImage(curve), image);

    OpenRaw high(1, {{0, 1.5e308}, {1, 1e308}});
    std::string const highImage = CurveImage(high);
    EXPECT_EQ(high.MirrorValues(), 0);  // the sum of the bounds is infinite
    EXPECT_EQ(CurveImage(high), highImage);
}

TEST(HvRawFCurve_values, MirrorsAboutTheMiddleOfTheRange)
{
    OpenRaw curve = Zigzag();
    Tag(curve, 2, 22);
    curve.SetClampingValues(-1, 5);
    curve.SetSelected(1);
    curve.SetKeySelected(1u, 1);
    EXPECT_EQ(curve.MirrorValues(), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 30}, {2, 10}, {3, 40}, {4, 0}}));
    EXPECT_EQ(curve.WhenNoKeys(), 33);
    EXPECT_EQ(TagAt(curve, 2), 22);
    EXPECT_EQ(curve.IsKeySelected(1u), 1);
    EXPECT_EQ(curve.LowerClamp(), -1);
    EXPECT_EQ(curve.UpperClamp(), 5);
    OpenRaw empty(7, {});
    EXPECT_EQ(empty.MirrorValues(), 1);
    EXPECT_EQ(empty.WhenNoKeys(), 7);
}

TEST(HvRawFCurve_values, StoresTheValueWhenNoKeys)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.SetValueWhenNoKeys(-2.5), 1);
    EXPECT_EQ(curve.WhenNoKeys(), -2.5);
    EXPECT_EQ(KeysOf(curve), KeysOf(Zigzag()));
}

// Constraints.

TEST(HvRawFCurve_values, KeepsNoConstraint)
{
    OpenRaw curve = Zigzag();
    std::string const image = CurveImage(curve);
    for (C::KeyConstraint const constraint :
         {C::ParameterLocked, C::ValueLocked, C::AllLocked, C::FlatTangents}) {
        double parameter = 2.1;
        EXPECT_EQ(curve.SetConstraint(parameter, constraint, 1, 0.2), 1);
        EXPECT_EQ(parameter, 2) << "the key's parameter comes back";
        int on = 7;
        parameter = 1.9;
        EXPECT_EQ(curve.GetConstraint(parameter, constraint, on, 0.2), 1);
        EXPECT_EQ(on, 0);
        EXPECT_EQ(parameter, 2);
        on = 7;
        EXPECT_EQ(curve.GetConstraintByIndex(1, constraint, on), 1);
        EXPECT_EQ(on, 0);
    }
    EXPECT_EQ(CurveImage(curve), image);
    EXPECT_EQ(curve.AreAnyValuesLockedInInterval(0, 9, 0, 0), 0);
    EXPECT_EQ(curve.AreAnyParametersLockedInInterval(0, 9, 0, 0), 0);
    EXPECT_EQ(curve.AreAnyKeysLockedInInterval(0, 9, 0, 0), 0);
}

TEST(HvRawFCurve_values, FindsNoKeyToConstrain)
{
    OpenRaw curve = Zigzag();
    double parameter = 2.1;
    int on = 7;
    EXPECT_EQ(curve.SetConstraint(parameter, C::ValueLocked, 1, 0.05), 0);
    EXPECT_EQ(curve.GetConstraint(parameter, C::ValueLocked, on, 0.05), 0);
    EXPECT_EQ(curve.GetConstraintByIndex(4, C::ValueLocked, on), 0);
    EXPECT_EQ(parameter, 2.1);
    EXPECT_EQ(on, 7);
}

TEST(HvRawFCurve_values, SupportsTheLocksOfEveryKind)
{
    OpenRaw const curve(0, {});
    for (int bit = 0; bit < 16; ++bit) {
        int const constraint = 1 << bit;
        bool const known = constraint == 1 || constraint == 2 || constraint == 32;
        EXPECT_EQ(curve.IsConstraintSupported(static_cast<C::KeyConstraint>(constraint)),
                  known ? 1 : 0)
            << constraint;
    }
    EXPECT_EQ(curve.IsConstraintSupported(static_cast<C::KeyConstraint>(3)), 0);
}

TEST(HvRawFCurve_values, SelectionIsNoConstraint)
{
    OpenRaw curve = Zigzag();
    curve.SetSelected(1);
    curve.SetKeySelected(2.0, 1);
    int on = 7;
    EXPECT_EQ(curve.GetConstraintByIndex(1, C::AllLocked, on), 1);
    EXPECT_EQ(on, 0);
    EXPECT_EQ(curve.AreAnyKeysLockedInInterval(0, 9, 0, 0), 0);
}

}  // namespace
