// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which locks each operation takes, seen from a second thread: a reader enters the curve's section,
// a writer takes the access lock first, and the departures depart.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/fcurve/stepped_test_support.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

/// What an operation takes.
enum Rule {
    None,
    Reader,
    Writer
};

struct Operation {
    char const* name;
    Rule rule;
    std::function<void(HvBaseFCurve&)> call;
};

void ExpectRule(HvBaseFCurve& curve, Operation const& operation)
{
    SCOPED_TRACE(operation.name);
    auto const call = [&] { operation.call(curve); };
    bool const access = operation.rule == Writer;
    bool const section = operation.rule != None;
    EXPECT_EQ(LockProbe_Waits(curve, ProbedLock::Access, access, call), access) << "access lock";
    EXPECT_EQ(LockProbe_Waits(curve, ProbedLock::Section, section, call), section) << "section";
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

using C = HvBaseFCurve;

std::vector<Operation> Readers()
{
    static HvDoubleArray numbers;
    static double d;
    static unsigned int u;
    static int i;
    static std::vector<std::unique_ptr<C>> clones;  // their deaths take the locks of writers
    return {
        {"Clone", Reader, [](C& c) { clones.emplace_back(c.Clone()); }},
        {"GetKeyValue", Reader, [](C& c) { c.GetKeyValue(1, C::Left, d, 0); }},
        {"GetKeyValues", Reader, [](C& c) { c.GetKeyValues(1, d, d, 0); }},
        {"GetFCurveInfo", Reader,
         [](C& c) {
             C::FCurveInfo info{};
             c.GetFCurveInfo(&info);
         }},
        {"GetKeyInfoFromIndex", Reader,
         [](C& c) {
             C::KeyInfo info{};
             c.GetKeyInfoFromIndex(0, &info);
         }},
        {"GetKeyInfoFromParameter", Reader,
         [](C& c) {
             C::KeyInfo info{};
             c.GetKeyInfoFromParameter(1, &info);
         }},
        {"GetKeyParameter", Reader, [](C& c) { c.GetKeyParameter(0, d); }},
        {"GetKeyIndex", Reader, [](C& c) { c.GetKeyIndex(1, u); }},
        {"GetNumKeys", Reader, [](C& c) { c.GetNumKeys(); }},
        {"IsKeySelected by index", Reader, [](C& c) { c.IsKeySelected(0u); }},
        {"IsKeySelected", Reader, [](C& c) { c.IsKeySelected(1.0); }},
        {"GetKeyParameters", Reader, [](C& c) { c.GetKeyParameters(0, 9, numbers, 0, 0, 0); }},
        {"IsKeyParameter", Reader, [](C& c) { c.IsKeyParameter(1, 0); }},
        {"GetAllKeyParameters", Reader, [](C& c) { c.GetAllKeyParameters(numbers); }},
        {"GetNextKeyParameter", Reader, [](C& c) { c.GetNextKeyParameter(0, d, 0); }},
        {"GetPrevKeyParameter", Reader, [](C& c) { c.GetPrevKeyParameter(9, d, 0); }},
        {"GetNearestKeyParameter", Reader, [](C& c) { c.GetNearestKeyParameter(9, d); }},
        {"GetNearestKeyParameterInCenteredInterval", Reader,
         [](C& c) { c.GetNearestKeyParameterInCenteredInterval(d, 9); }},
        {"GetSmallestKeyParameter", Reader, [](C& c) { c.GetSmallestKeyParameter(d); }},
        {"IsSmallestKeyParameter", Reader, [](C& c) { c.IsSmallestKeyParameter(1); }},
        {"GetMinusInfinityVal", Reader, [](C& c) { c.GetMinusInfinityVal(); }},
        {"GetLargestKeyParameter", Reader, [](C& c) { c.GetLargestKeyParameter(d); }},
        {"IsLargestKeyParameter", Reader, [](C& c) { c.IsLargestKeyParameter(1); }},
        {"GetPlusInfinityVal", Reader, [](C& c) { c.GetPlusInfinityVal(); }},
        {"GetValueUpperBound", Reader, [](C& c) { c.GetValueUpperBound(0); }},
        {"GetValueLowerBound", Reader, [](C& c) { c.GetValueLowerBound(0); }},
        {"Eval", Reader, [](C& c) { c.Eval(1, 0); }},
        {"EvalSequence", Reader, [](C& c) { c.EvalSequence(0, 1, 1, 0, numbers, numbers, 0); }},
        {"Flatten", Reader,
         [](C& c) {
             HvPoint2dArray points;
             HvPointTagArray tags;
             c.Flatten(HvTransfo4(), 1, points, tags, 0);
         }},
        {"FlattenFromTo", Reader,
         [](C& c) {
             HvPoint2dArray points;
             HvPointTagArray tags;
             HvBoolArray flags;
             c.FlattenFromTo(HvExtent2<double>(0, 0, 1, 1), HvTransfo4(), 1, points, tags, flags,
                             0);
         }},
        {"GetKeys", Reader, [](C& c) { c.GetKeys(numbers, numbers, numbers, 0); }},
        {"IsReadOnly", Reader, [](C& c) { c.IsReadOnly(); }},
        {"GetConstraint", Reader, [](C& c) { c.GetConstraint(d, C::ValueLocked, i, 0); }},
        {"GetExtrapolationMethod", Reader, [](C& c) { c.GetExtrapolationMethod(); }},
        {"EvalInverse", Reader, [](C& c) { c.EvalInverse(0, d, 0); }},
        {"IsBijective", Reader, [](C& c) { c.IsBijective(); }},
        {"IsDefautlBezierTangentConstraintOn", Reader,
         [](C& c) { c.IsDefautlBezierTangentConstraintOn(); }},
        {"IsTimeFCurve", Reader, [](C& c) { c.IsTimeFCurve(); }},
        {"IsSelected", Reader, [](C& c) { c.IsSelected(); }},
        {"HasSelectedKeys", Reader, [](C& c) { c.HasSelectedKeys(); }},
        {"AcquireLocks", Reader,
         [](C& c) {
             c.AcquireLocks();
             c.ReleaseLocks();
         }},
        {"GetConstraintByIndex", Reader,
         [](C& c) { c.GetConstraintByIndex(0, C::ValueLocked, i); }},
        {"GetKeyValuesByIndex", Reader, [](C& c) { c.GetKeyValuesByIndex(0, d, d); }},
        {"GetDynamicMemSize", Reader, [](C& c) { c.GetDynamicMemSize(); }},
    };
}

std::vector<Operation> Writers()
{
    static double d;
    return {
        {"CreateKey", Writer, [](C& c) { c.CreateKey(1, 1); }},
        {"MergeAndCreateKey", Writer, [](C& c) { c.MergeAndCreateKey(1, 1, 1, 1, 0, 0, 0); }},
        {"CreateNonModifyingKey", Writer, [](C& c) { c.CreateNonModifyingKey(1, 0); }},
        {"MergeAndCreateNonModifyingKey", Writer,
         [](C& c) { c.MergeAndCreateNonModifyingKey(1, 1, 1, 0, 0, 0, 0); }},
        {"RemoveKey", Writer, [](C& c) { c.RemoveKey(77, 0); }},
        {"RemoveKeys", Writer, [](C& c) { c.RemoveKeys(77, 78, 0, 0); }},
        {"SetValueWhenNoKeys", Writer, [](C& c) { c.SetValueWhenNoKeys(0); }},
        {"SetKeyValue", Writer, [](C& c) { c.SetKeyValue(1, C::Right, 1, 0); }},
        {"Cut", Writer,
         [](C& c) {
             HvIntegerFCurve removed(0);
             c.Cut(1, 2, removed);
         }},
        {"RemoveTail", Writer, [](C& c) { c.RemoveTail(9); }},
        {"RemoveHead", Writer, [](C& c) { c.RemoveHead(0); }},
        {"Append", Writer, [](C& c) { c.Append(HvIntegerFCurve(0)); }},
        {"Paste", Writer, [](C& c) { c.Paste(HvIntegerFCurve(0), 0, 1); }},
        {"ShiftParameters", Writer, [](C& c) { c.ShiftParameters(0); }},
        {"ScaleParameterAxis", Writer, [](C& c) { c.ScaleParameterAxis(1); }},
        {"SetKeySelected by index", Writer, [](C& c) { c.SetKeySelected(0u, 0); }},
        {"SetKeySelected", Writer, [](C& c) { c.SetKeySelected(1.0, 0); }},
        {"MirrorValues", Writer, [](C& c) { c.MirrorValues(); }},
        {"MirrorParameters", Writer, [](C& c) { c.MirrorParameters(); }},
        {"SetReadOnlyConstraint", Writer, [](C& c) { c.SetReadOnlyConstraint(0); }},
        {"SetConstraint", Writer, [](C& c) { c.SetConstraint(d, C::ValueLocked, 0, 0); }},
        {"SetDefaultBezierTangentConstraint", Writer,
         [](C& c) { c.SetDefaultBezierTangentConstraint(false); }},
        {"SetAsTimeFCurve", Writer, [](C& c) { c.SetAsTimeFCurve(true); }},
        {"Set", Writer,
         [](C& c) {
             static HvBooleanFCurve const on(0);
             static HvIntegerFCurve const number(0);
             static HvStdFCurve const standard(0, C::CubicSegment);
             HvBaseFCurve const* const same[] = {&on, &number, &standard};
             c.Set(*same[c.GetKind() == C::Boolean ? 0 : c.GetKind() == C::Integer ? 1 : 2]);
         }},
        {"SetSelected", Writer, [](C& c) { c.SetSelected(0); }},
    };
}

std::vector<Operation> DeparturesOfAllKinds()
{
    return {
        {"FoldParameter, a reader", Writer, [](C& c) { c.FoldParameter(25); }},
        {"GetKind", None, [](C& c) { c.GetKind(); }},
        {"IsConstraintSupported", None, [](C& c) { c.IsConstraintSupported(C::AllLocked); }},
        {"AreAnyValuesLockedInInterval", None,
         [](C& c) { c.AreAnyValuesLockedInInterval(0, 9, 0, 0); }},
        {"AreAnyParametersLockedInInterval", None,
         [](C& c) { c.AreAnyParametersLockedInInterval(0, 9, 0, 0); }},
        {"AreAnyKeysLockedInInterval", None,
         [](C& c) { c.AreAnyKeysLockedInInterval(0, 9, 0, 0); }},
        {"GetFCurveInfo of null", None, [](C& c) { c.GetFCurveInfo(nullptr); }},
    };
}

std::vector<Operation> DeparturesOfSteppedKinds()
{
    static double d;
    static int i;
    return {
        {"GetClampingValues", None, [](C& c) { c.GetClampingValues(d, d); }},
        {"SetConstraint of what the kind does not know", None,
         [](C& c) { c.SetConstraint(d, C::FlatTangents, 1, 0); }},
        {"GetConstraint of what the kind does not know", None,
         [](C& c) { c.GetConstraint(d, C::FlatTangents, i, 0); }},
        {"CreateKey of what is no value", None, [](C& c) { c.CreateKey(1, 0.5); }},
    };
}

class HvFCurveShell_locks : public testing::Test {
protected:
    HvFCurveShell_locks()
    {
        for (HvBaseFCurve* const curve :
             {static_cast<HvBaseFCurve*>(&on_), static_cast<HvBaseFCurve*>(&number_),
              static_cast<HvBaseFCurve*>(&standard_)}) {
            curve->CreateKey(1, 1);
            curve->CreateKey(2, 0);
        }
    }
    void ExpectRules(std::vector<Operation> const& operations)
    {
        for (Operation const& operation : operations) {
            ExpectRule(on_, operation);
            ExpectRule(number_, operation);
            ExpectRule(standard_, operation);
        }
    }

    HvBooleanFCurve on_{0};
    HvIntegerFCurve number_{0};
    HvStdFCurve standard_{0, C::CubicSegment};
};

TEST_F(HvFCurveShell_locks, EntersTheSectionToRead)
{
    ExpectRules(Readers());
}

TEST_F(HvFCurveShell_locks, TakesTheAccessLockFirstToWrite)
{
    ExpectRules(Writers());
}

TEST_F(HvFCurveShell_locks, DepartsFromTheRulesWhereTheContractSaysSo)
{
    ExpectRules(DeparturesOfAllKinds());
}

TEST_F(HvFCurveShell_locks, DepartsOnTheSteppedKinds)
{
    for (Operation const& operation : DeparturesOfSteppedKinds()) {
        ExpectRule(on_, operation);
        ExpectRule(number_, operation);
    }
}

TEST_F(HvFCurveShell_locks, DiffersBetweenTheSteppedKindsAndTheStandardOne)
{
    Operation const method{"SetExtrapolationMethod", Writer,
                           [](C& c) { c.SetExtrapolationMethod(C::CycleExtrapolation); }};
    ExpectRule(on_, method);
    ExpectRule(number_, method);
    ExpectRule(standard_, {method.name, Reader, method.call});
    Operation const eval{"EvalNoLock, for its search of a key", Reader,
                         [](C& c) { c.EvalNoLock(1, 0); }};
    ExpectRule(on_, eval);
    ExpectRule(number_, eval);
    ExpectRule(standard_, {"EvalNoLock", None, eval.call});
    Operation const clamp{"SetClampingValues", None, [](C& c) { c.SetClampingValues(0, 1); }};
    ExpectRule(on_, clamp);
    ExpectRule(number_, clamp);
    ExpectRule(standard_, {clamp.name, Writer, clamp.call});
}

TEST_F(HvFCurveShell_locks, TakesTheLocksOfItsKind)
{
    static int i;
    auto const shift = [](C& c) { c.ShiftValues(0); };
    auto const scale = [](C& c) { c.ScaleAndShiftValues(1, 0); };
    auto const unknown = [](C& c) { c.GetConstraintByIndex(0, C::FlatTangents, i); };
    Operation const query{"QueryFCurveKind", Reader, [](C& c) { c.QueryFCurveKind(C::Boolean); }};
    ExpectRule(on_, query);
    ExpectRule(number_, query);
    ExpectRule(on_, {"ShiftValues", None, shift});
    ExpectRule(number_, {"ShiftValues", Writer, shift});
    ExpectRule(on_, {"ScaleAndShiftValues", None, scale});
    ExpectRule(number_, {"ScaleAndShiftValues", Writer, scale});
    ExpectRule(on_, {"SmoothSequence, which does nothing", Writer,
                     [](C& c) { c.SmoothSequence(0, 1, nullptr, 0); }});
    ExpectRule(on_, {"GetConstraintByIndex of an unknown constraint", None, unknown});
    ExpectRule(number_, {"GetConstraintByIndex of an unknown constraint", Reader, unknown});
}

TEST_F(HvFCurveShell_locks, EntersTheSectionOfTheSecondCurve)
{
    HvIntegerFCurve other(0);
    other.CreateKey(1, 1);
    other.CreateKey(2, 2);
    HvIntegerFCurve empty(0);
    struct Call {
        char const* name;
        HvBaseFCurve& second;
        std::function<void()> call;
    };
    for (Call const& call :
         {Call{"Append", other, [&] { number_.Append(other); }},
          Call{"Paste", other, [&] { number_.Paste(other, 5, 6); }},
          Call{"Cut", empty, [&] { HvIntegerFCurve(number_).Cut(1, 2, empty); }},
          Call{"Set", other, [&] { number_.Set(other); }},
          Call{"copy", other, [&] { HvIntegerFCurve const copy(other); }},
          Call{"section", other, [&] { HvIntegerFCurve const section(other, 1, 2); }}}) {
        EXPECT_TRUE(LockProbe_Waits(call.second, ProbedLock::Section, true, call.call))
            << call.name;
        EXPECT_TRUE(LockProbe_AreBothFree(call.second));
        EXPECT_TRUE(LockProbe_AreBothFree(number_));
    }
}

TEST_F(HvFCurveShell_locks, TakesBothLocksToDie)
{
    auto dying = std::make_unique<HvIntegerFCurve>(0);
    HvIntegerFCurve* const raw = dying.release();
    // The section dies with the curve, so only the access lock can be held over it.
    HvIntegerFCurve const bystander(0);
    EXPECT_TRUE(LockProbe_Waits(bystander, ProbedLock::Access, true, [=] { delete raw; }));
}

}  // namespace
