// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Every refusal leaves a raw curve as it was, and hostile numbers harm none.

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/fcurve/raw_test_support.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace {

using C = HvBaseFCurve;

OpenRaw Three()
{
    OpenRaw curve(0, {{1, 1}, {2, 1}, {3, 0}});
    Tag(curve, 1, 11);
    Tag(curve, 2, 22);
    return curve;
}

/// A writer with arguments that a writable curve accepts.
struct Edit {
    char const* name;
    std::function<int(OpenRaw&)> call;
};

std::vector<Edit> Edits()
{
    return {
        {"CreateKey", [](OpenRaw& c) { return c.CreateKey(2, 0); }},
        {"MergeAndCreateKey",
         [](OpenRaw& c) { return c.MergeAndCreateKey(1, 3, 2.5, 1, 0, 0, 1); }},
        {"CreateNonModifyingKey", [](OpenRaw& c) { return c.CreateNonModifyingKey(2.5, 0); }},
        {"MergeAndCreateNonModifyingKey",
         [](OpenRaw& c) { return c.MergeAndCreateNonModifyingKey(1, 3, 2.5, 0, 0, 1, 0); }},
        {"RemoveKey", [](OpenRaw& c) { return c.RemoveKey(2, 0); }},
        {"RemoveKeys", [](OpenRaw& c) { return c.RemoveKeys(1, 3, 0, 0); }},
        {"SetValueWhenNoKeys", [](OpenRaw& c) { return c.SetValueWhenNoKeys(1); }},
        {"SetKeyValue", [](OpenRaw& c) { return c.SetKeyValue(2, C::Right, 0, 0); }},
        {"Cut",
         [](OpenRaw& c) {
             HvRawFCurve removed(0.0);
             return c.Cut(1.5, 2.5, removed);
         }},
        {"RemoveTail", [](OpenRaw& c) { return c.RemoveTail(1.5); }},
        {"RemoveHead", [](OpenRaw& c) { return c.RemoveHead(2.5); }},
        {"Append", [](OpenRaw& c) { return c.Append(HvRawFCurve(0, 1, 1, 0)); }},
        {"Paste", [](OpenRaw& c) { return c.Paste(HvRawFCurve(0, 1, 1, 0), 1.5, 2.5); }},
        {"ShiftParameters", [](OpenRaw& c) { return c.ShiftParameters(1); }},
        {"ScaleParameterAxis", [](OpenRaw& c) { return c.ScaleParameterAxis(2); }},
        {"ShiftValues", [](OpenRaw& c) { return c.ShiftValues(1); }},
        {"ScaleAndShiftValues", [](OpenRaw& c) { return c.ScaleAndShiftValues(2, 1); }},
        {"MirrorValues", [](OpenRaw& c) { return c.MirrorValues(); }},
        {"MirrorParameters", [](OpenRaw& c) { return c.MirrorParameters(); }},
        {"SetClampingValues", [](OpenRaw& c) { return c.SetClampingValues(0, 1); }},
        {"SetExtrapolationMethod",
         [](OpenRaw& c) { return c.SetExtrapolationMethod(C::CycleExtrapolation); }},
        {"SetAsTimeFCurve", [](OpenRaw& c) { return c.SetAsTimeFCurve(false); }},
        {"AppendLinearSegment",
         [](OpenRaw& c) { return c.AppendLinearSegment(HvPoint2<double>(5, 1)); }},
        {"AppendOrExtendLinearSegment",
         [](OpenRaw& c) { return c.AppendOrExtendLinearSegment(HvPoint2<double>(5, 1), 9); }},
    };
}

TEST(HvRawFCurve_refusals, ReadOnlyCurveStaysAsItWas)
{
    for (Edit const& edit : Edits()) {
        SCOPED_TRACE(edit.name);
        OpenRaw curve = Three();
        curve.SetReadOnlyConstraint(1);
        std::string const image = CurveImage(curve);
        EXPECT_EQ(edit.call(curve), 0);
        EXPECT_EQ(CurveImage(curve), image);
        curve.SetReadOnlyConstraint(0);
        std::string const writable = CurveImage(curve);
        EXPECT_EQ(edit.call(curve), 1);
        EXPECT_NE(CurveImage(curve), writable);
        EXPECT_EQ(curve.Impl().IsValid(), 1);
    }
}

TEST(HvRawFCurve_refusals, ReadOnlyCurveRefusesAConstraintToo)
{
    OpenRaw curve = Three();
    curve.SetReadOnlyConstraint(1);
    double parameter = 2.1;
    EXPECT_EQ(curve.SetConstraint(parameter, C::ValueLocked, 1, 0.2), 0);
    EXPECT_EQ(parameter, 2.1);
}

std::vector<double> HostileNumbers()
{
    constexpr double kMax = std::numeric_limits<double>::max();
    return {0.0,
            -0.0,
            5e-324,
            -5e-324,
            2.5,
            kMax,
            -kMax,
            kInfinity,
            -kInfinity,
            kNaN,
            2147483648.0,
            9007199254740992.0,
            1e-7,
            std::nextafter(1e-7, 0.0),
            std::nextafter(2.0, 3.0),
            1e-12,
            1e300,
            -1e300};
}

/// Whether everything that the curve holds is finite and in order.
void ExpectSound(OpenRaw& curve)
{
    EXPECT_EQ(curve.Impl().IsValid(), 1);
    EXPECT_TRUE(std::isfinite(curve.WhenNoKeys()));
    for (auto const& key : KeysOf(curve)) {
        EXPECT_TRUE(std::isfinite(key.first));
        EXPECT_TRUE(std::isfinite(key.second));
    }
}

TEST(HvRawFCurve_refusals, NoNumberBreaksACurve)
{
    using Call = std::function<int(OpenRaw&, double)>;
    struct {
        char const* name;
        Call call;
    } const calls[] = {
        {"CreateKey at", [](OpenRaw& c, double x) { return c.CreateKey(x, 1); }},
        {"CreateKey of", [](OpenRaw& c, double x) { return c.CreateKey(1.5, x); }},
        {"CreateNonModifyingKey",
         [](OpenRaw& c, double x) { return c.CreateNonModifyingKey(x, 0); }},
        {"CreateNonModifyingKey unfolded",
         [](OpenRaw& c, double x) { return c.CreateNonModifyingKey(x, 1); }},
        {"MergeAndCreateKey from",
         [](OpenRaw& c, double x) { return c.MergeAndCreateKey(x, 3, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateKey to",
         [](OpenRaw& c, double x) { return c.MergeAndCreateKey(1, x, 2.5, 1, 0, 0, 1); }},
        {"MergeAndCreateKey at",
         [](OpenRaw& c, double x) { return c.MergeAndCreateKey(1, 3, x, 1, 0, 0, 1); }},
        {"MergeAndCreateKey of",
         [](OpenRaw& c, double x) { return c.MergeAndCreateKey(1, 3, 2.5, x, 0, 0, 1); }},
        {"MergeAndCreateNonModifyingKey from",
         [](OpenRaw& c, double x) {
             return c.MergeAndCreateNonModifyingKey(x, 3, 2.5, 0, 0, 1, 0);
         }},
        {"MergeAndCreateNonModifyingKey to",
         [](OpenRaw& c, double x) {
             return c.MergeAndCreateNonModifyingKey(1, x, 2.5, 0, 0, 1, 0);
         }},
        {"MergeAndCreateNonModifyingKey at",
         [](OpenRaw& c, double x) { return c.MergeAndCreateNonModifyingKey(1, 3, x, 0, 0, 1, 0); }},
        {"RemoveKey", [](OpenRaw& c, double x) { return c.RemoveKey(x, x); }},
        {"RemoveKeys from", [](OpenRaw& c, double x) { return c.RemoveKeys(x, 3, 0, 0); }},
        {"RemoveKeys to", [](OpenRaw& c, double x) { return c.RemoveKeys(1, x, 0, 0); }},
        {"SetKeyValue", [](OpenRaw& c, double x) { return c.SetKeyValue(2, C::Left, x, 0); }},
        {"SetKeyValue at", [](OpenRaw& c, double x) { return c.SetKeyValue(x, C::Left, 1, x); }},
        {"SetValueWhenNoKeys", [](OpenRaw& c, double x) { return c.SetValueWhenNoKeys(x); }},
        {"SetClampingValues", [](OpenRaw& c, double x) { return c.SetClampingValues(x, x); }},
        {"RemoveTail", [](OpenRaw& c, double x) { return c.RemoveTail(x); }},
        {"RemoveHead", [](OpenRaw& c, double x) { return c.RemoveHead(x); }},
        {"Cut from",
         [](OpenRaw& c, double x) {
             OpenRaw removed(0.0);
             int const result = c.Cut(x, 2.5, removed);
             ExpectSound(removed);
             return result;
         }},
        {"Cut to",
         [](OpenRaw& c, double x) {
             OpenRaw removed(0.0);
             int const result = c.Cut(1.5, x, removed);
             ExpectSound(removed);
             return result;
         }},
        {"Paste from",
         [](OpenRaw& c, double x) { return c.Paste(HvRawFCurve(0, 1, 1, 0), x, 2.5); }},
        {"Paste to", [](OpenRaw& c, double x) { return c.Paste(HvRawFCurve(0, 1, 1, 0), 1.5, x); }},
        {"Append from", [](OpenRaw& c, double x) { return c.Append(HvRawFCurve(x, 1, 1e307, 0)); }},
        {"Append to", [](OpenRaw& c, double x) { return c.Append(HvRawFCurve(0, 1, x, 0)); }},
        {"ShiftParameters", [](OpenRaw& c, double x) { return c.ShiftParameters(x); }},
        {"ScaleParameterAxis", [](OpenRaw& c, double x) { return c.ScaleParameterAxis(x); }},
        {"ShiftValues", [](OpenRaw& c, double x) { return c.ShiftValues(x); }},
        {"ScaleAndShiftValues by",
         [](OpenRaw& c, double x) { return c.ScaleAndShiftValues(x, 1); }},
        {"ScaleAndShiftValues to",
         [](OpenRaw& c, double x) { return c.ScaleAndShiftValues(2, x); }},
        {"AppendLinearSegment at",
         [](OpenRaw& c, double x) { return c.AppendLinearSegment(HvPoint2<double>(x, 1)); }},
        {"AppendLinearSegment of",
         [](OpenRaw& c, double x) { return c.AppendLinearSegment(HvPoint2<double>(9, x)); }},
        {"AppendOrExtendLinearSegment",
         [](OpenRaw& c, double x) {
             return c.AppendOrExtendLinearSegment(HvPoint2<double>(x, 1), kInfinity);
         }},
        {"AppendOrExtendLinearSegment within",
         [](OpenRaw& c, double x) {
             return c.AppendOrExtendLinearSegment(HvPoint2<double>(9, 1), x);
         }},
        {"section",
         [](OpenRaw& c, double x) {
             OpenRaw from(c, x, 2.5);
             ExpectSound(from);
             OpenRaw to(c, 1.5, x);
             ExpectSound(to);
             return 0;
         }},
        {"construction",
         [](OpenRaw&, double x) {
             OpenRaw one(x, 1);
             ExpectSound(one);
             OpenRaw two(0, 1, x, 2);
             ExpectSound(two);
             HvPoint2dArray points;
             points.Add(HvPoint2<double>(0, 0));
             points.Add(HvPoint2<double>(1, x));
             points.Add(HvPoint2<double>(x, 1));
             OpenRaw fit(points, x);
             ExpectSound(fit);
             return 0;
         }},
    };
    for (auto const& c : calls) {
        SCOPED_TRACE(c.name);
        for (int method = 1; method <= 4; ++method) {
            for (double const x : HostileNumbers()) {
                SCOPED_TRACE(x);
                OpenRaw curve = Three();
                curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method));
                std::string const image = CurveImage(curve);
                if (c.call(curve, x) == 0) {
                    EXPECT_EQ(CurveImage(curve), image);
                }
                ExpectSound(curve);
            }
        }
    }
}

TEST(HvRawFCurve_refusals, NoNumberStopsAReader)
{
    OpenRaw const curves[] = {OpenRaw(7), OpenRaw(1, 2), Three(),
                              OpenRaw(0, {{-1.7e308, 1.7e308}, {0, -1.7e308}, {1.7e308, 5}}),
                              OpenRaw(0, {{0, 0}, {5e-324, 1}})};
    for (OpenRaw const& source : curves) {
        for (int method = 1; method <= 4; ++method) {
            OpenRaw curve(source);
            curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method));
            std::string const image = CurveImage(curve);
            for (double const x : HostileNumbers()) {
                double out = 0;
                curve.Eval(x, 1);
                curve.EvalNoLock(x, 0);
                curve.EvalLeft(x);
                curve.FoldParameter(x);
                curve.EvalInverse(x, out, 0);
                curve.GetKeyValue(x, C::Left, out, x);
                curve.GetNextKeyParameter(x, out, 1);
                curve.GetPrevKeyParameter(x, out, 1);
                curve.GetNearestKeyParameter(x, out);
                curve.IsKeyParameter(x, x);
                curve.IsKeyParameter(2, x);
                HvDoubleArray parameters;
                HvDoubleArray values;
                curve.GetKeyParameters(x, 2, parameters, 0, 0, 0);
                curve.GetKeyParameters(1, x, parameters, 0, 1, 0);
                HvPoint2dArray points;
                HvPointTagArray tags;
                curve.Flatten(HvTransfo4(), x, points, tags, 1);
            }
            EXPECT_EQ(CurveImage(curve), image);
        }
    }
}

}  // namespace
