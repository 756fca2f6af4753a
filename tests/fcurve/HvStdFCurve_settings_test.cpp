// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/fcurve/std_curve.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

void ExpectClamps(HvStdFCurve const& curve, double lower, double upper)
{
    double low = 0;
    double high = 0;
    EXPECT_EQ(curve.GetClampingValues(low, high), 1);
    EXPECT_EQ(low, lower);
    EXPECT_EQ(high, upper);
}

}  // namespace

TEST(HvStdFCurve_settings, FillsTheInfoThatIsAskedFor)
{
    HvStdFCurve curve(0, 4, 1, 1, kLinear, kCubic);
    curve.SetClampingValues(-1, 1);
    curve.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);
    HvBaseFCurve::FCurveInfo info{0xFF, {}, 0, 0, {}, 0, 0, {}};
    EXPECT_EQ(curve.GetFCurveInfo(&info), 1);
    EXPECT_EQ(info.mask, 0xFFu);
    EXPECT_EQ(info.kind, 20);
    EXPECT_EQ(info.numKeys, 2u);
    EXPECT_EQ(info.valueWhenNoKeys, 4);
    EXPECT_EQ(info.defaultSegmentKind, kLinear);
    EXPECT_EQ(info.lowerClamp, -1);
    EXPECT_EQ(info.upperClamp, 1);
    EXPECT_EQ(info.extrapolation, 2);

    HvBaseFCurve::FCurveInfo const untouched{
        0, HvBaseFCurve::Raw, 7, 7, kCubic, 7, 7, HvBaseFCurve::CycleExtrapolation};
    for (unsigned bit = 0; bit < 7; ++bit) {
        info = untouched;
        info.mask = 1u << bit;
        EXPECT_EQ(curve.GetFCurveInfo(&info), 1);
        EXPECT_EQ(info.kind != untouched.kind, bit == 0);
        EXPECT_EQ(info.numKeys != untouched.numKeys, bit == 1);
        EXPECT_EQ(info.valueWhenNoKeys != untouched.valueWhenNoKeys, bit == 2);
        EXPECT_EQ(info.defaultSegmentKind != untouched.defaultSegmentKind, bit == 3);
        EXPECT_EQ(info.lowerClamp != untouched.lowerClamp, bit == 4);
        EXPECT_EQ(info.upperClamp != untouched.upperClamp, bit == 5);
        EXPECT_EQ(info.extrapolation != untouched.extrapolation, bit == 6);
    }
    EXPECT_EQ(curve.GetFCurveInfo(nullptr), 0);
}

TEST(HvStdFCurve_settings, RefusesClampsThatDoNotHold)
{
    HvStdFCurve curve(0, kCubic);
    EXPECT_EQ(curve.SetClampingValues(-3, 4), 1);
    EXPECT_EQ(curve.SetClampingValues(2, 1), 0);
    EXPECT_EQ(curve.SetClampingValues(kNaN, 1), 0);
    EXPECT_EQ(curve.SetClampingValues(1, kNaN), 0);
    ExpectClamps(curve, -3, 4);
    EXPECT_EQ(curve.SetClampingValues(2, 2), 1);
    ExpectClamps(curve, 2, 2);
    EXPECT_EQ(curve.SetClampingValues(-kInfinity, kInfinity), 1);
    ExpectClamps(curve, -kInfinity, kInfinity);
}

TEST(HvStdFCurve_settings, KnowsFourExtrapolationMethods)
{
    HvStdFCurve curve(0, kCubic);
    for (int method : {0, 5, -1, 257}) {
        EXPECT_EQ(curve.SetExtrapolationMethod(HvBaseFCurve::ExtrapolationMethod(method)), 0);
        EXPECT_EQ(curve.GetExtrapolationMethod(), 1);
    }
    for (int method = 4; method >= 1; --method) {
        EXPECT_EQ(curve.SetExtrapolationMethod(HvBaseFCurve::ExtrapolationMethod(method)), 1);
        EXPECT_EQ(curve.GetExtrapolationMethod(), method);
    }
}

TEST(HvStdFCurve_settings, SetsValueAndKindOfACurveWithoutKeys)
{
    HvStdFCurve curve(0, kCubic);
    EXPECT_EQ(curve.SetValueWhenNoKeys(5), 1);
    EXPECT_EQ(curve.Eval(1, 0), 5);
    EXPECT_EQ(curve.SetValueWhenNoKeys(kNaN), 0);
    EXPECT_EQ(curve.Eval(1, 0), 5);
    EXPECT_EQ(curve.SetFirstSegmentKind(kLinear), 1);
    for (int kind : {0, 4, -1}) {
        EXPECT_EQ(curve.SetFirstSegmentKind(HvBaseFCurve::FSKind(kind)), 0);
    }
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
}

TEST(HvStdFCurve_settings, RefusesChangesWhileReadOnly)
{
    HvStdFCurve curve(0, 1, 1, 2, kLinear, kLinear);
    curve.SetClampingValues(-3, 4);
    ASSERT_EQ(curve.SetReadOnlyConstraint(1), 1);
    EXPECT_EQ(curve.SetClampingValues(0, 1), 0);
    EXPECT_EQ(curve.SetValueWhenNoKeys(9), 0);
    EXPECT_EQ(curve.SetFirstSegmentKind(kCubic), 0);
    EXPECT_EQ(curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation), 0);
    EXPECT_EQ(curve.SetAsTimeFCurve(false), 0);
    ExpectClamps(curve, -3, 4);
    EXPECT_EQ(curve.GetFirstSegmentKind(), kLinear);
    EXPECT_EQ(curve.GetExtrapolationMethod(), 1);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
    // Selection, the rule of handles and the flag itself are no edits.
    EXPECT_EQ(curve.SetSelected(1), 1);
    EXPECT_EQ(curve.SetKeySelected(0u, 1), 1);
    EXPECT_EQ(curve.IsKeySelected(0u), 1);
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(true), 1);
    EXPECT_EQ(curve.SetReadOnlyConstraint(0), 1);
    EXPECT_EQ(curve.SetAsTimeFCurve(false), 1);
    EXPECT_EQ(curve.SetAsTimeFCurve(false), 0);
}
