// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Every refusal leaves a stepped curve as it was, and hostile numbers harm none.

#include <tests/fcurve/stepped_test_support.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using C = HvBaseFCurve;

/// A writer with arguments that a writable and unlocked curve accepts.
struct Edit {
    char const* name;
    bool isHinderedByValueLocks;
    bool isHinderedByParameterLocks;
    std::function<int(C&)> call;
};

template <class Curve>
std::vector<Edit> Edits()
{
    return {
        {"CreateKey", true, false, [](C& c) { return c.CreateKey(2, 0); }},
        {"MergeAndCreateKey", true, true,
         [](C& c) { return c.MergeAndCreateKey(1, 3, 2.5, 1, 0, 0, 1); }},
        {"CreateNonModifyingKey", true, false, [](C& c) { return c.CreateNonModifyingKey(2, 0); }},
        {"MergeAndCreateNonModifyingKey", true, true,
         [](C& c) { return c.MergeAndCreateNonModifyingKey(1, 3, 2.5, 0, 0, 1, 0); }},
        {"RemoveKey", true, true, [](C& c) { return c.RemoveKey(2, 0); }},
        {"RemoveKeys", true, true, [](C& c) { return c.RemoveKeys(1, 3, 0, 0); }},
        {"SetValueWhenNoKeys", false, false, [](C& c) { return c.SetValueWhenNoKeys(1); }},
        {"SetKeyValue", true, false, [](C& c) { return c.SetKeyValue(2, C::Right, 0, 0); }},
        {"Cut", true, true,
         [](C& c) {
             Curve removed(0);
             return c.Cut(1.5, 2.5, removed);
         }},
        {"RemoveTail", true, true, [](C& c) { return c.RemoveTail(1.5); }},
        {"RemoveHead", true, true, [](C& c) { return c.RemoveHead(2.5); }},
        {"Append", false, false,
         [](C& c) {
             return c.Append(Open<Curve>(0, {{0, 1}, {1, 0}}));
         }},
        {"Paste", true, true,
         [](C& c) {
             return c.Paste(Open<Curve>(0, {{0, 1}, {1, 0}}), 1.5, 2.5);
         }},
        {"ShiftParameters", false, true, [](C& c) { return c.ShiftParameters(1); }},
        {"ScaleParameterAxis", false, true, [](C& c) { return c.ScaleParameterAxis(2); }},
        {"MirrorValues", true, false, [](C& c) { return c.MirrorValues(); }},
        {"MirrorParameters", false, true, [](C& c) { return c.MirrorParameters(); }},
        {"SetConstraint", false, false,
         [](C& c) {
             double p = 1;
             return c.SetConstraint(p, C::AllLocked, 1, 0);
         }},
        {"SetExtrapolationMethod", false, false,
         [](C& c) { return c.SetExtrapolationMethod(C::CycleExtrapolation); }},
        {"SetDefaultBezierTangentConstraint", false, false,
         [](C& c) { return c.SetDefaultBezierTangentConstraint(true); }},
        {"SetAsTimeFCurve", false, false, [](C& c) { return c.SetAsTimeFCurve(false); }},
    };
}

template <class Curve>
Open<Curve> Three()
{
    Open<Curve> curve(0, {{1, 1}, {2, 1}, {3, 0}});
    Tag(curve, 1, 11);
    Tag(curve, 2, 22);
    return curve;
}

template <class Curve>
class HvSteppedFCurve_refusals : public testing::Test {
};
using Kinds = testing::Types<HvBooleanFCurve, HvIntegerFCurve>;
TYPED_TEST_SUITE(HvSteppedFCurve_refusals, Kinds, );

TYPED_TEST(HvSteppedFCurve_refusals, AcceptsEachEditOnAWritableCurve)
{
    for (Edit const& edit : Edits<TypeParam>()) {
        Open<TypeParam> curve = Three<TypeParam>();
        EXPECT_EQ(edit.call(curve), 1) << edit.name;
        EXPECT_EQ(curve.Impl().IsValid(), 1) << edit.name;
    }
}

TYPED_TEST(HvSteppedFCurve_refusals, RefusesEachEditOfAReadOnlyCurve)
{
    Open<TypeParam> curve = Three<TypeParam>();
    curve.SetReadOnlyConstraint(1);
    std::string const image = curve.Image();
    for (Edit const& edit : Edits<TypeParam>()) {
        EXPECT_EQ(edit.call(curve), 0) << edit.name;
        EXPECT_EQ(curve.Image(), image) << edit.name;
    }
}

TYPED_TEST(HvSteppedFCurve_refusals, RefusesWhereALockStandsInTheWayAndOnlyThere)
{
    for (auto const constraint : {C::ValueLocked, C::ParameterLocked, C::AllLocked}) {
        for (Edit const& edit : Edits<TypeParam>()) {
            Open<TypeParam> curve = Three<TypeParam>();
            Lock(curve, 2, constraint);
            std::string const image = curve.Image();
            bool const hindered =
                (constraint != C::ParameterLocked && edit.isHinderedByValueLocks) ||
                (constraint != C::ValueLocked && edit.isHinderedByParameterLocks);
            EXPECT_EQ(edit.call(curve), hindered ? 0 : 1) << edit.name << " " << constraint;
            if (hindered) {
                EXPECT_EQ(curve.Image(), image) << edit.name << " " << constraint;
            }
        }
    }
}

TYPED_TEST(HvSteppedFCurve_refusals, LeavesBothCurvesAloneWhenACutIsRefused)
{
    Open<TypeParam> curve = Three<TypeParam>();
    Open<TypeParam> full(0, {{7, 1}});
    Open<TypeParam> empty(0);
    std::string const image = curve.Image();
    std::string const fullImage = full.Image();
    std::string const emptyImage = empty.Image();
    EXPECT_EQ(curve.Cut(1, 2, full), 0);
    EXPECT_EQ(curve.Cut(1, 2, curve), 0);
    EXPECT_EQ(empty.Cut(1, 2, empty), 0);
    EXPECT_EQ(curve.Cut(2, 1, empty), 0);
    EXPECT_EQ(curve.Cut(kNaN, 1, empty), 0);
    EXPECT_EQ(curve.Cut(1, kInfinity, empty), 0);
    HvBooleanFCurve on(0);
    HvIntegerFCurve number(0);
    EXPECT_EQ(curve.GetKind() == C::Boolean ? curve.Cut(1, 2, number) : curve.Cut(1, 2, on), 0);
    EXPECT_EQ(curve.Image(), image);
    EXPECT_EQ(full.Image(), fullImage);
    EXPECT_EQ(empty.Image(), emptyImage);
}

/// An operation of one hostile number.
struct HostileCall {
    char const* name;
    std::function<void(C&, double)> call;
};

template <class Curve>
std::vector<HostileCall> HostileCalls()
{
    return {
        {"CreateKey parameter", [](C& c, double x) { c.CreateKey(x, 1); }},
        {"CreateKey value", [](C& c, double x) { c.CreateKey(1.5, x); }},
        {"Merge from", [](C& c, double x) { c.MergeAndCreateKey(x, 2, 1.5, 1, 0, 1, 1); }},
        {"Merge to", [](C& c, double x) { c.MergeAndCreateKey(1, x, 1.5, 1, 1, 0, 1); }},
        {"Merge parameter", [](C& c, double x) { c.MergeAndCreateKey(1, 2, x, 1, 0, 0, 1); }},
        {"Merge value", [](C& c, double x) { c.MergeAndCreateKey(1, 2, 1.5, x, 0, 0, 1); }},
        {"NonModifying", [](C& c, double x) { c.CreateNonModifyingKey(x, 0); }},
        {"NonModifying unfolded", [](C& c, double x) { c.CreateNonModifyingKey(x, 1); }},
        {"MergeNonModifying from",
         [](C& c, double x) { c.MergeAndCreateNonModifyingKey(x, 2, 1.5, 0, 1, 1, 0); }},
        {"MergeNonModifying to",
         [](C& c, double x) { c.MergeAndCreateNonModifyingKey(1, x, 1.5, 1, 0, 1, 0); }},
        {"MergeNonModifying parameter",
         [](C& c, double x) { c.MergeAndCreateNonModifyingKey(1, 2, x, 0, 0, 1, 0); }},
        {"RemoveKey", [](C& c, double x) { c.RemoveKey(x, 0); }},
        {"RemoveKey tolerance", [](C& c, double x) { c.RemoveKey(2, x); }},
        {"RemoveKeys from", [](C& c, double x) { c.RemoveKeys(x, 2, 1, 0); }},
        {"RemoveKeys to", [](C& c, double x) { c.RemoveKeys(1, x, 0, 1); }},
        {"SetValueWhenNoKeys", [](C& c, double x) { c.SetValueWhenNoKeys(x); }},
        {"SetKeyValue", [](C& c, double x) { c.SetKeyValue(x, C::Left, 0, 1); }},
        {"SetKeyValue value", [](C& c, double x) { c.SetKeyValue(2, C::Left, x, 1); }},
        {"SetKeyValue tolerance", [](C& c, double x) { c.SetKeyValue(2, C::Left, 0, x); }},
        {"Cut from",
         [](C& c, double x) {
             Curve removed(0);
             c.Cut(x, 2, removed);
         }},
        {"Cut to",
         [](C& c, double x) {
             Curve removed(0);
             c.Cut(1, x, removed);
         }},
        {"RemoveTail", [](C& c, double x) { c.RemoveTail(x); }},
        {"RemoveHead", [](C& c, double x) { c.RemoveHead(x); }},
        {"Paste from",
         [](C& c, double x) {
             c.Paste(Open<Curve>(0, {{0, 1}, {1, 0}}), x, 2);
         }},
        {"Paste to",
         [](C& c, double x) {
             c.Paste(Open<Curve>(0, {{0, 1}, {1, 0}}), 1, x);
         }},
        {"ShiftParameters", [](C& c, double x) { c.ShiftParameters(x); }},
        {"ScaleParameterAxis", [](C& c, double x) { c.ScaleParameterAxis(x); }},
        {"ShiftValues", [](C& c, double x) { c.ShiftValues(x); }},
        {"ScaleAndShiftValues scale", [](C& c, double x) { c.ScaleAndShiftValues(x, 1); }},
        {"ScaleAndShiftValues offset", [](C& c, double x) { c.ScaleAndShiftValues(1, x); }},
        {"section from", [](C& c, double x) { Curve const s(static_cast<Curve&>(c), x, 2); }},
        {"section to", [](C& c, double x) { Curve const s(static_cast<Curve&>(c), 1, x); }},
        {"readers",
         [](C& c, double x) {
             double out = 0;
             double out2 = 0;
             unsigned int i = 0;
             int on = 0;
             HvDoubleArray list;
             c.GetKeyValue(x, C::Left, out, x);
             c.GetKeyValues(1, out, out2, x);
             c.GetKeyIndex(x, i);
             c.IsKeySelected(x);
             c.SetKeySelected(x, 1);
             c.GetKeyParameters(x, 2, list, 1, 1, 0);
             c.GetKeyParameters(1, x, list, 1, 1, 0);
             c.GetKeyParameters(x, x, list, 1, 0, 0);
             c.IsKeyParameter(x, x);
             c.GetNextKeyParameter(x, out, 1);
             c.GetPrevKeyParameter(x, out, 0);
             c.GetNearestKeyParameter(x, out);
             out = x;
             c.GetNearestKeyParameterInCenteredInterval(out, x);
             c.IsSmallestKeyParameter(x);
             c.IsLargestKeyParameter(x);
             c.Eval(x, 1);
             c.FoldParameter(x);
             out = x;
             c.SetConstraint(out, C::ValueLocked, 0, x);
             c.GetConstraint(out, C::ValueLocked, on, x);
             c.AreAnyValuesLockedInInterval(x, 2, 1, 1);
             c.AreAnyKeysLockedInInterval(1, x, 0, 0);
             c.EvalInverse(x, out, 0);
             c.SetClampingValues(x, x);
         }},
    };
}

TYPED_TEST(HvSteppedFCurve_refusals, StaysInOrderUnderHostileNumbers)
{
    std::vector<double> hostile = {
        0.0,   -0.0,     4.9e-324,      -4.9e-324,
        1e308, -1e308,   kInfinity,     -kInfinity,
        kNaN,  0x1.0p31, 0x1.0p53,      -0x1.0p31,
        1e-7,  1e-12,    0x1.fffffep30, std::numeric_limits<double>::max()};
    for (double const limit : {0.0, 1.0, 2.0, 3.0, 1e-7, 0x1.0p31}) {
        hostile.push_back(std::nextafter(limit, kInfinity));
        hostile.push_back(std::nextafter(limit, -kInfinity));
    }
    for (HostileCall const& call : HostileCalls<TypeParam>()) {
        for (auto const method :
             {C::ConstantExtrapolation, C::CycleExtrapolation, C::RelativeCycleExtrapolation}) {
            for (double const x : hostile) {
                Open<TypeParam> curve = Three<TypeParam>();
                curve.SetExtrapolationMethod(method);
                call.call(curve, x);
                EXPECT_EQ(curve.Impl().IsValid(), 1) << call.name << " " << x;
                EXPECT_EQ(curve.Impl().keys.Count(), curve.Impl().constraints.Count());
                double p = 0;
                EXPECT_TRUE(!curve.GetSmallestKeyParameter(p) || std::isfinite(p));
                EXPECT_TRUE(!curve.GetLargestKeyParameter(p) || std::isfinite(p));
            }
        }
    }
}

TYPED_TEST(HvSteppedFCurve_refusals, MakesNoKeyAtAParameterThatIsNotFinite)
{
    for (double const p : {kNaN, kInfinity, -kInfinity}) {
        Open<TypeParam> curve = Three<TypeParam>();
        std::string const image = curve.Image();
        EXPECT_EQ(curve.CreateKey(p, 1), 0);
        EXPECT_EQ(curve.CreateNonModifyingKey(p, 0), 0);
        EXPECT_EQ(curve.CreateNonModifyingKey(p, 1), 0);
        EXPECT_EQ(curve.MergeAndCreateKey(1, 9, p, 1, 0, 0, 0), 0);
        EXPECT_EQ(curve.MergeAndCreateNonModifyingKey(1, 9, p, 0, 0, 0, 1), 0);
        EXPECT_EQ(curve.RemoveHead(p), 0);
        EXPECT_EQ(curve.RemoveTail(p), 0);
        EXPECT_EQ(curve.ShiftParameters(p), 0);
        EXPECT_EQ(curve.ScaleParameterAxis(p), 0);
        EXPECT_EQ(curve.Image(), image);
    }
}

}  // namespace
