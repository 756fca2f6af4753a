// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which locks each operation of a raw curve takes, seen from a second thread.

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/fcurve/raw_test_support.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

using C = HvBaseFCurve;

/// What an operation takes.
enum Rule {
    None,
    Reader,
    Writer
};

class HvRawFCurve_locks : public testing::Test {
protected:
    void ExpectRule(Rule rule, char const* name, std::function<void()> const& call) const
    {
        SCOPED_TRACE(name);
        bool const access = rule == Writer;
        bool const section = rule != None;
        EXPECT_EQ(LockProbe_Waits(curve, ProbedLock::Access, access, call), access) << "access";
        EXPECT_EQ(LockProbe_Waits(curve, ProbedLock::Section, section, call), section) << "section";
        EXPECT_TRUE(LockProbe_AreBothFree(curve));
    }

    HvRawFCurve curve{1, 1, 2, 0};
    HvRawFCurve other{1, 1, 2, 0};
    HvRawFCurve target{0.0};
    HvDoubleArray numbers;
    double d = 0;
    int i = 0;
};

TEST_F(HvRawFCurve_locks, EntersTheSectionToRead)
{
    std::unique_ptr<C> clones[2];  // kept: their deaths take the locks of writers
    int numClones = 0;
    C::FCurveInfo info{};
    C::KeyInfo key{};
    ExpectRule(Reader, "QueryFCurveKind", [&] { curve.QueryFCurveKind(C::Raw); });
    ExpectRule(Reader, "Clone", [&] { clones[numClones++].reset(curve.Clone()); });
    ExpectRule(Reader, "GetKeyValue", [&] { curve.GetKeyValue(1, C::Left, d, 0); });
    ExpectRule(Reader, "GetFCurveInfo", [&] { curve.GetFCurveInfo(&info); });
    ExpectRule(Reader, "GetKeyInfoFromIndex", [&] { curve.GetKeyInfoFromIndex(0, &key); });
    ExpectRule(Reader, "GetKeyInfoFromParameter", [&] { curve.GetKeyInfoFromParameter(1, &key); });
    ExpectRule(Reader, "GetClampingValues", [&] { curve.GetClampingValues(d, d); });
    ExpectRule(Reader, "GetValueUpperBound", [&] { curve.GetValueUpperBound(0); });
    ExpectRule(Reader, "GetValueLowerBound", [&] { curve.GetValueLowerBound(0); });
    ExpectRule(Reader, "Eval", [&] { curve.Eval(1, 0); });
    ExpectRule(Reader, "EvalMany", [&] { curve.EvalMany(&d, 1, &d, 0); });
    ExpectRule(Reader, "EvalSequence",
               [&] { curve.EvalSequence(1, 2, 1, 0, numbers, numbers, 0); });
    ExpectRule(Reader, "Flatten", [&] {
        HvPoint2dArray points;
        HvPointTagArray tags;
        curve.Flatten(HvTransfo4(), 1, points, tags, 0);
    });
    ExpectRule(Reader, "GetKeys", [&] { curve.GetKeys(numbers, numbers, numbers, 0); });
    ExpectRule(Reader, "GetConstraint", [&] { curve.GetConstraint(d, C::ValueLocked, i, 0); });
    ExpectRule(Reader, "GetConstraintByIndex",
               [&] { curve.GetConstraintByIndex(0, C::ValueLocked, i); });
    ExpectRule(Reader, "EvalInverse", [&] { curve.EvalInverse(0, d, 0); });
    ExpectRule(Reader, "IsBijective", [&] { curve.IsBijective(); });
    ExpectRule(Reader, "GetDynamicMemSize", [&] { curve.GetDynamicMemSize(); });
}

TEST_F(HvRawFCurve_locks, TakesTheAccessLockFirstToWrite)
{
    HvPoint2<double> const before(0, 0);
    ExpectRule(Writer, "CreateKey", [&] { curve.CreateKey(1, 1); });
    ExpectRule(Writer, "MergeAndCreateKey", [&] { curve.MergeAndCreateKey(1, 1, 1, 1, 0, 0, 0); });
    ExpectRule(Writer, "CreateNonModifyingKey", [&] { curve.CreateNonModifyingKey(1, 0); });
    ExpectRule(Writer, "MergeAndCreateNonModifyingKey",
               [&] { curve.MergeAndCreateNonModifyingKey(1, 1, 1, 0, 0, 0, 0); });
    ExpectRule(Writer, "RemoveKey", [&] { curve.RemoveKey(77, 0); });
    ExpectRule(Writer, "RemoveKeys", [&] { curve.RemoveKeys(77, 78, 0, 0); });
    ExpectRule(Writer, "SetValueWhenNoKeys", [&] { curve.SetValueWhenNoKeys(0); });
    ExpectRule(Writer, "SetKeyValue", [&] { curve.SetKeyValue(1, C::Right, 1, 0); });
    ExpectRule(Writer, "Cut", [&] { curve.Cut(3, 2, target); });
    ExpectRule(Writer, "RemoveTail", [&] { curve.RemoveTail(2); });
    ExpectRule(Writer, "RemoveHead", [&] { curve.RemoveHead(1); });
    ExpectRule(Writer, "Append", [&] { curve.Append(target); });
    ExpectRule(Writer, "Paste", [&] { curve.Paste(target, 0, 1); });
    ExpectRule(Writer, "ShiftParameters", [&] { curve.ShiftParameters(0); });
    ExpectRule(Writer, "ScaleParameterAxis", [&] { curve.ScaleParameterAxis(1); });
    ExpectRule(Writer, "ShiftValues", [&] { curve.ShiftValues(0); });
    ExpectRule(Writer, "ScaleAndShiftValues", [&] { curve.ScaleAndShiftValues(1, 0); });
    ExpectRule(Writer, "MirrorValues", [&] { curve.MirrorValues(); });
    ExpectRule(Writer, "MirrorParameters", [&] { curve.MirrorParameters(); });
    ExpectRule(Writer, "SetClampingValues", [&] { curve.SetClampingValues(0, 1); });
    ExpectRule(Writer, "SetConstraint", [&] { curve.SetConstraint(d, C::ValueLocked, 0, 0); });
    ExpectRule(Writer, "SetExtrapolationMethod",
               [&] { curve.SetExtrapolationMethod(C::LinearExtrapolation); });
    ExpectRule(Writer, "SetDefaultBezierTangentConstraint",
               [&] { curve.SetDefaultBezierTangentConstraint(false); });
    ExpectRule(Writer, "Set", [&] { curve.Set(other); });
    ExpectRule(Writer, "AppendLinearSegment", [&] { curve.AppendLinearSegment(before); });
    ExpectRule(Writer, "AppendOrExtendLinearSegment",
               [&] { curve.AppendOrExtendLinearSegment(before, 0); });
}

TEST_F(HvRawFCurve_locks, DepartsFromTheRulesWhereTheContractSaysSo)
{
    ExpectRule(Writer, "FoldParameter, a reader", [&] { curve.FoldParameter(25); });
    ExpectRule(None, "EvalNoLock", [&] { curve.EvalNoLock(1, 0); });
    ExpectRule(None, "GetKind", [&] { curve.GetKind(); });
    ExpectRule(None, "IsConstraintSupported", [&] { curve.IsConstraintSupported(C::AllLocked); });
    ExpectRule(None, "AreAnyValuesLockedInInterval",
               [&] { curve.AreAnyValuesLockedInInterval(0, 9, 0, 0); });
    ExpectRule(None, "AreAnyParametersLockedInInterval",
               [&] { curve.AreAnyParametersLockedInInterval(0, 9, 0, 0); });
    ExpectRule(None, "AreAnyKeysLockedInInterval",
               [&] { curve.AreAnyKeysLockedInInterval(0, 9, 0, 0); });
    ExpectRule(None, "GetFCurveInfo of null", [&] { curve.GetFCurveInfo(nullptr); });
    ExpectRule(None, "ScaleAndShiftValues by almost 0",
               [&] { curve.ScaleAndShiftValues(1e-8, 0); });
    ExpectRule(None, "CreateKey of what is no value", [&] { curve.CreateKey(1, kNaN); });
}

TEST_F(HvRawFCurve_locks, EntersTheOtherCurveToo)
{
    auto const waitsForOther = [&](std::function<void()> const& call) {
        return LockProbe_Waits(other, ProbedLock::Section, true, call);
    };
    HvRawFCurve empty{0.0};
    EXPECT_TRUE(waitsForOther([&] { empty.Append(other); }));
    EXPECT_TRUE(waitsForOther([&] { empty.Paste(other, 2, 1); }));
    EXPECT_TRUE(waitsForOther([&] { curve.Set(other); }));
    EXPECT_TRUE(waitsForOther([&] { curve.Cut(3, 4, other); }));
}

}  // namespace
