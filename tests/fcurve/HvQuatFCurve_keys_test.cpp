// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: making, merging and removing keys, and their values.

#include "quat_fcurve_support.h"

#include <cmath>
#include <functional>
#include <limits>

namespace {

using C = HvBaseFCurve;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(HvQuatFCurve_keys, SetTheValueWhenNoKeysByTheFirst)
{
    HvQuatFCurve curve(1u);
    curve.GetQuatCurve()->SetValueWhenNoKeys(0, 50);
    EXPECT_EQ(curve.CreateKey(3, 25), 1);
    HvQuatCurve const& quat = *curve.GetQuatCurve();
    EXPECT_NEAR(quat.GetKeyValue(0, 0), 50, kRoundTrip) << "the others as they were";
    EXPECT_NEAR(quat.GetKeyValue(0, 1), 25, kRoundTrip);
    EXPECT_NEAR(quat.GetValueWhenNoKeys(1), 25, kRoundTrip);
    EXPECT_EQ(curve.CreateKey(4, 70), 1);
    EXPECT_NEAR(quat.GetValueWhenNoKeys(1), 25, kRoundTrip);
}

TEST(HvQuatFCurve_keys, HoldWhatTheOtherComponentsHadThere)
{
    Trio const trio = MakeTrio();
    double const y = trio.y->Eval(3, 0);
    double const z = trio.z->Eval(3, 0);
    EXPECT_EQ(trio.x->CreateKey(3, 11), 1);
    ExpectNear(ValuesOf(*trio.x), {10, 40, 11, -30, 20});
    EXPECT_NEAR(ValuesOf(*trio.y)[2], y, kRoundTrip);
    EXPECT_NEAR(ValuesOf(*trio.z)[2], z, kRoundTrip);
    EXPECT_NEAR(trio.x->Eval(3, 0), 11, 1e-9);
    EXPECT_EQ(trio.x->CreateKey(3, 12), 1);
    EXPECT_EQ(trio.x->GetNumKeys(), 5u);
    EXPECT_NEAR(ValuesOf(*trio.y)[2], y, kRoundTrip) << "an existing key keeps them";
}

TEST(HvQuatFCurve_keys, KeepTheRotationWhenTheyAreNotToModify)
{
    Trio const trio = MakeTrio();
    double const before[] = {trio.x->Eval(3, 0), trio.y->Eval(3, 0), trio.z->Eval(3, 0)};
    EXPECT_EQ(trio.y->CreateNonModifyingKey(3, 0), 1);
    EXPECT_NEAR(ValuesOf(*trio.x)[2], before[0], kRoundTrip);
    EXPECT_NEAR(ValuesOf(*trio.y)[2], before[1], kRoundTrip);
    EXPECT_NEAR(ValuesOf(*trio.z)[2], before[2], kRoundTrip);
    EXPECT_EQ(trio.y->CreateNonModifyingKey(3, 0), 1);
    EXPECT_EQ(trio.y->GetNumKeys(), 5u);
    EXPECT_EQ(trio.y->CreateNonModifyingKey(kNaN, 0), 0);
}

TEST(HvQuatFCurve_keys, FoldIntoACycle)
{
    Trio const trio = MakeTrio();
    trio.x->SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(trio.x->FoldParameter(7), 3);
    EXPECT_EQ(trio.x->CreateNonModifyingKey(7, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2, 3, 4, 5}));
    EXPECT_EQ(trio.x->CreateNonModifyingKey(9, 1), 1);
    EXPECT_EQ(TimesOf(*trio.x).back(), 9);
    EXPECT_EQ(trio.x->CreateNonModifyingKey(0, 1), 1);
    EXPECT_EQ(ValuesOf(*trio.x).front(), ValuesOf(*MakeTrio().x).front()) << "held, not cycled";
    EXPECT_EQ(ValuesOf(*trio.x).back(), ValuesOf(*MakeTrio().x).back());
    EXPECT_EQ(trio.x->FoldParameter(11 + 1e-13), 2) << "onto a key";
    HvQuatFCurve single(0u);
    single.CreateKey(1, 7);
    single.SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(single.FoldParameter(7), 7);
}

TEST(HvQuatFCurve_keys, MergeIntoOne)
{
    Trio const trio = MakeTrio();
    double const z = trio.z->Eval(3, 0);
    EXPECT_EQ(trio.y->MergeAndCreateKey(1.5, 4, 3, 77, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 3, 5}));
    EXPECT_NEAR(ValuesOf(*trio.y)[1], 77, kRoundTrip);
    EXPECT_NEAR(ValuesOf(*trio.z)[1], z, kRoundTrip);
    EXPECT_EQ(trio.y->HasUserData(4.0), 0);
    EXPECT_EQ(trio.y->HasUserData(1.0), 1);
    // An open end spares its key.
    EXPECT_EQ(trio.y->MergeAndCreateKey(1, 5, 4, 8, 1, 1, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 4, 5}));
}

TEST(HvQuatFCurve_keys, MergeWhereOneStands)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->MergeAndCreateKey(2, 2, 2, 7, 0, 0, 0), 1) << "an interval of one parameter";
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 4, 5}));
    EXPECT_NEAR(ValuesOf(*trio.y)[1], 7, kRoundTrip);
    EXPECT_EQ(trio.y->MergeAndCreateKey(2, 4.5, 2, 8, 0, 0, 0), 1) << "into the first of them";
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 5}));
    EXPECT_NEAR(ValuesOf(*trio.y)[1], 8, kRoundTrip);
}

TEST(HvQuatFCurve_keys, MergeInTheCycleWhereTheIntervalFolds)
{
    Trio const trio = MakeTrio();
    trio.x->SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(trio.y->MergeAndCreateNonModifyingKey(5.5, 6.5, 6, 0, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 4, 5})) << "the one from 1.5 to 2.5";
    EXPECT_EQ(trio.y->MergeAndCreateNonModifyingKey(5.5, 8.5, 7, 0, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 3, 5}));
    // An interval that is turned round is its end.
    EXPECT_EQ(trio.y->MergeAndCreateNonModifyingKey(8, 6, 7, 0, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 3, 5}));
    // The key is drawn into the interval.
    EXPECT_EQ(trio.y->MergeAndCreateNonModifyingKey(7.5, 7.75, 8.25, 0, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 3, 3.75, 5}));
}

TEST(HvQuatFCurve_keys, KeepDataWhenAsked)
{
    Trio const trio = MakeTrio();
    HvQuatKey key = trio.curve->GetKey(2);
    key.tension = 0.5f;
    key.spins = 1;
    trio.curve->SetKey(2u, key);
    EXPECT_EQ(trio.y->MergeAndCreateKey(1.5, 4.5, 3.5, 77, 0, 0, 1), 1);
    HvQuatKey const merged = trio.curve->GetKey(1);
    EXPECT_EQ(merged.time, 3.5);
    EXPECT_EQ(merged.tension, 0.5f);
    EXPECT_EQ(merged.spins, 1);
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(3.5), 1), "four");
    EXPECT_NEAR(ValuesOf(*trio.y)[1], 77, kRoundTrip);
}

TEST(HvQuatFCurve_keys, KeepTheDataOfTheLeftOneOfTwoAsNear)
{
    Trio const trio = MakeTrio();
    HvQuatKey key = trio.curve->GetKey(1);
    key.bias = 0.5f;
    trio.curve->SetKey(1u, key);
    EXPECT_EQ(trio.y->MergeAndCreateKey(1.5, 4.5, 3, 77, 0, 0, 1), 1);
    EXPECT_EQ(trio.curve->GetKey(1).bias, 0.5f);
}

TEST(HvQuatFCurve_keys, TakeOverTheLockOfANearestKeyThatStays)
{
    Trio const trio = MakeTrio();
    trio.curve->SetValueLock(1, 1);
    EXPECT_EQ(trio.y->MergeAndCreateKey(3.9, 4.1, 2.5, 77, 0, 0, 1), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 2.5, 5}));
    EXPECT_NEAR(ValuesOf(*trio.y)[2], 77, kRoundTrip);
    EXPECT_EQ(trio.curve->GetConstraintData(2), 2);
}

TEST(HvQuatFCurve_keys, MergeAtARotation)
{
    Trio const trio = MakeTrio();
    double const x = trio.x->Eval(3, 0);
    EXPECT_EQ(trio.y->MergeAndCreateNonModifyingKey(2, 4, 3, 0, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 3, 5}));
    EXPECT_NEAR(ValuesOf(*trio.x)[1], x, kRoundTrip);
    EXPECT_EQ(trio.y->MergeAndCreateNonModifyingKey(2.5, 3.5, 3, 0, 0, 0, 0), 1)
        << "the one key there stays";
    EXPECT_NEAR(ValuesOf(*trio.x)[1], x, kRoundTrip);
}

TEST(HvQuatFCurve_keys, MergeAllIntoOne)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->MergeAndCreateKey(-9, 9, 3, 7, 0, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{3}));
    EXPECT_NEAR(trio.curve->GetValueWhenNoKeys(0), 7, kRoundTrip);
    HvQuatFCurve empty(0u);
    EXPECT_EQ(empty.MergeAndCreateKey(0, 1, 0.5, 7, 0, 0, 1), 1);
    EXPECT_NEAR(empty.Eval(0, 0), 7, kRoundTrip);
}

TEST(HvQuatFCurve_keys, GoAlone)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->RemoveKey(3.5, 0.4), 0);
    EXPECT_EQ(trio.y->RemoveKey(3.5, 0.5), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 5}));
    EXPECT_EQ(trio.y->HasUserData(4.0), 0);
    EXPECT_EQ(HvQuatFCurve(0u).RemoveKey(1, 1), 1) << "nothing to remove";
}

TEST(HvQuatFCurve_keys, GoTogether)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->RemoveKeys(1, 4, 1, 1), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 4, 5}));
    EXPECT_EQ(trio.y->RemoveKeys(4, 4, 1, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 5}));
    EXPECT_EQ(trio.y->RemoveKeys(4, 3, 0, 0), 1);
    EXPECT_EQ(trio.y->RemoveKeys(-9, 9, 0, 0), 1);
    EXPECT_EQ(trio.y->GetNumKeys(), 0u);
    EXPECT_EQ(trio.y->HasUserData(), 0);
}

TEST(HvQuatFCurve_keys, HaveOneValueOnBothSides)
{
    Trio const trio = MakeTrio();
    double value = 0;
    EXPECT_EQ(trio.x->GetKeyValue(2.1, C::Left, value, 0.2), 1);
    EXPECT_NEAR(value, 40, kRoundTrip);
    EXPECT_EQ(trio.x->SetKeyValue(2.1, C::Left, 41, 0.2), 1);
    EXPECT_EQ(trio.x->GetKeyValue(2, C::Right, value, 0), 1);
    EXPECT_NEAR(value, 41, kRoundTrip);
    EXPECT_EQ(trio.x->GetKeyValue(2, static_cast<C::KeySide>(3), value, 0), 0);
    EXPECT_EQ(trio.x->SetKeyValue(2, static_cast<C::KeySide>(3), 1, 0), 0);
    EXPECT_EQ(trio.x->GetKeyValue(3, C::Right, value, 0.5), 0);
    double left = 0;
    EXPECT_EQ(trio.x->GetKeyValues(2, left, value, 0), 1);
    EXPECT_EQ(left, value);
}

TEST(HvQuatFCurve_keys, ShiftScaleAndMirrorTheirValues)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->ShiftValues(100), 1);
    ExpectNear(ValuesOf(*trio.x), {110, 140, 70, 120});
    EXPECT_NEAR(trio.curve->GetValueWhenNoKeys(0), 100, kRoundTrip);
    EXPECT_EQ(trio.x->ScaleAndShiftValues(2, -100), 1);
    ExpectNear(ValuesOf(*trio.x), {120, 180, 40, 140});
    EXPECT_EQ(trio.x->MirrorValues(), 1);
    ExpectNear(ValuesOf(*trio.x), {100, 40, 180, 80});
    EXPECT_EQ(trio.x->ScaleAndShiftValues(9e-8, 0), 0);
    EXPECT_EQ(trio.x->ScaleAndShiftValues(kNaN, 0), 0);
    ExpectNear(ValuesOf(*trio.y), {-20, 15, 35, 5});
    EXPECT_EQ(HvQuatFCurve(0u).MirrorValues(), 1);
}

TEST(HvQuatFCurve_keys, AreSmoothedByAKernel)
{
    Trio const trio = MakeTrio();
    double const one[] = {1};
    EXPECT_EQ(trio.x->SmoothSequence(1, 5, one, 1), 1);
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 20});
    double const third[] = {1.0 / 3, 1.0 / 3, 1.0 / 3};
    EXPECT_EQ(trio.x->SmoothSequence(1, 5, third, 3), 1);
    ExpectNear(ValuesOf(*trio.x), {25, 20.0 / 3, 10, -5});
    ExpectNear(ValuesOf(*trio.y), {-20, 15, 35, 5});
    EXPECT_EQ(trio.x->SmoothSequence(1, 5, nullptr, 0), 1);
    trio.curve->SetValueLock(1, 1);
    EXPECT_EQ(trio.x->SmoothSequence(1, 5, third, 3), 0);
    EXPECT_EQ(trio.x->SmoothSequence(4, 5, third, 3), 1);
}

TEST(HvQuatFCurve_keys, AreSmoothedWithoutTouchingWhatStays)
{
    Trio const trio = MakeTrio();
    trio.curve->SetKeyValue(1, HvPoint3<double>(0.1, 0.1, 0.1));
    ASSERT_NE(trio.curve->GetKeyValue(1, 0) * kDegree, 0.1) << "which degrees do not give back";
    std::string const image = QuatImage(*trio.x);
    double const one[] = {1};
    double const beyond[] = {1e308, 1e308, 1e308};
    EXPECT_EQ(trio.x->SmoothSequence(1, 5, one, 1), 1);
    EXPECT_EQ(trio.x->SmoothSequence(1, 5, beyond, 3), 1) << "values would not be finite";
    EXPECT_EQ(QuatImage(*trio.x), image);
}

/// Every edit that can refuse; each is done on a writable curve.
struct Edit {
    char const* name;
    std::function<int(HvQuatFCurve&)> call;
};

std::vector<Edit> Edits()
{
    using Q = HvQuatFCurve;
    return {
        {"CreateKey", [](Q& c) { return c.CreateKey(2, 5); }},
        {"MergeAndCreateKey", [](Q& c) { return c.MergeAndCreateKey(1, 3, 2, 5, 0, 0, 1); }},
        {"MergeAndCreateNonModifyingKey",
         [](Q& c) { return c.MergeAndCreateNonModifyingKey(1, 3, 2, 0, 0, 1, 0); }},
        {"RemoveKey", [](Q& c) { return c.RemoveKey(2, 0); }},
        {"RemoveKeys", [](Q& c) { return c.RemoveKeys(1, 3, 0, 0); }},
        {"SetKeyValue", [](Q& c) { return c.SetKeyValue(2, C::Left, 5, 0); }},
        {"ShiftValues", [](Q& c) { return c.ShiftValues(5); }},
        {"ScaleAndShiftValues", [](Q& c) { return c.ScaleAndShiftValues(2, 5); }},
        {"MirrorValues", [](Q& c) { return c.MirrorValues(); }},
        {"RemoveTail", [](Q& c) { return c.RemoveTail(1.5); }},
        {"RemoveHead", [](Q& c) { return c.RemoveHead(3); }},
        {"Cut",
         [](Q& c) {
             Q removed(0u);
             return c.Cut(1.5, 3, removed);
         }},
        {"Paste", [](Q& c) { return c.Paste(Q(c), 1.5, 3); }},
        {"ShiftParameters", [](Q& c) { return c.ShiftParameters(1); }},
        {"ScaleParameterAxis", [](Q& c) { return c.ScaleParameterAxis(2); }},
        {"MirrorParameters", [](Q& c) { return c.MirrorParameters(); }},
        {"ScaleAndOffsetParameters",
         [](Q& c) { return c.ScaleAndOffsetParameters(0, 9, 0, 2, 1, 0, 0, C::LeftHandle, 0); }},
        // These refuse a read-only curve alone.
        {"CreateNonModifyingKey", [](Q& c) { return c.CreateNonModifyingKey(3, 0); }},
        {"SetValueWhenNoKeys", [](Q& c) { return c.SetValueWhenNoKeys(5); }},
        {"Append", [](Q& c) { return c.Append(Q(c)); }},
        {"ResampleSequence", [](Q& c) { return c.ResampleSequence(1, 5, 1, 0, 0); }},
        {"SmoothSequence", [](Q& c) { return c.SmoothSequence(9, 9, nullptr, 0); }},
        {"ReduceNumKeys", [](Q& c) { return int(c.ReduceNumKeys(1, 5, 1)); }},
        {"SetExtrapolationMethod",
         [](Q& c) { return c.SetExtrapolationMethod(C::CycleExtrapolation); }},
        {"SetAsTimeFCurve", [](Q& c) { return c.SetAsTimeFCurve(false); }},
        {"SetConstraint",
         [](Q& c) {
             double p = 2;
             return c.SetConstraint(p, C::ValueLocked, 1, 0);
         }},
    };
}

constexpr std::size_t kNumEditsThatLocksRefuse = 17;

TEST(HvQuatFCurve_keys, AreEditedOnAWritableCurve)
{
    for (Edit const& edit : Edits()) {
        SCOPED_TRACE(edit.name);
        Trio const trio = MakeTrio();
        EXPECT_GT(edit.call(*trio.y), 0);
    }
}

TEST(HvQuatFCurve_keys, StayOnAReadOnlyCurve)
{
    for (Edit const& edit : Edits()) {
        SCOPED_TRACE(edit.name);
        Trio const trio = MakeTrio();
        trio.x->SetReadOnlyConstraint(1);
        std::string const image = QuatImage(*trio.y);
        EXPECT_EQ(edit.call(*trio.y), 0);
        EXPECT_EQ(QuatImage(*trio.y), image);
    }
}

TEST(HvQuatFCurve_keys, StayWhereALockStandsInTheWay)
{
    std::vector<Edit> const edits = Edits();
    for (std::size_t i = 0; i < kNumEditsThatLocksRefuse; ++i) {
        SCOPED_TRACE(edits[i].name);
        Trio const trio = MakeTrio();
        double p = 2;
        trio.x->SetConstraint(p, C::AllLocked, 1, 0);
        std::string const image = QuatImage(*trio.y);
        EXPECT_EQ(edits[i].call(*trio.y), 0);
        EXPECT_EQ(QuatImage(*trio.y), image);
    }
}

TEST(HvQuatFCurve_keys, AreNotMergedBeyondTheirNeighbours)
{
    Trio const trio = MakeTrio();
    std::string const image = QuatImage(*trio.y);
    EXPECT_EQ(trio.y->MergeAndCreateKey(1.5, 2.5, 4, 7, 0, 0, 0), 0);
    EXPECT_EQ(trio.y->MergeAndCreateKey(1.5, 2.5, 0.5, 7, 0, 0, 0), 0);
    EXPECT_EQ(trio.y->MergeAndCreateKey(2.5, 3.5, 1.5, 7, 0, 0, 0), 0);
    EXPECT_EQ(trio.y->MergeAndCreateKey(1, 3, 1, 7, 1, 0, 0), 0)
        << "not onto the key of an open end";
    EXPECT_EQ(trio.y->MergeAndCreateKey(1, 4, 4, 7, 0, 1, 0), 0);
    EXPECT_EQ(trio.y->MergeAndCreateKey(3, 2, 2, 7, 0, 0, 0), 1) << "an empty interval";
    EXPECT_EQ(QuatImage(*trio.y), image);
}

TEST(HvQuatFCurve_keys, TakeNoNumberThatIsNone)
{
    for (double const bad : {kNaN, kInfinity, -kInfinity}) {
        Trio const trio = MakeTrio();
        HvQuatFCurve& y = *trio.y;
        std::string const image = QuatImage(y);
        EXPECT_EQ(y.CreateKey(bad, 1), 0);
        EXPECT_EQ(y.CreateKey(1, bad), 0);
        EXPECT_EQ(y.SetKeyValue(1, C::Left, bad, 0), 0);
        EXPECT_EQ(y.SetKeyValue(bad, C::Left, 1, 0), 0);
        EXPECT_EQ(y.SetValueWhenNoKeys(bad), 0);
        EXPECT_EQ(y.MergeAndCreateKey(1, 2, bad, 1, 0, 0, 0), 0);
        EXPECT_EQ(y.MergeAndCreateKey(1, 2, 1.5, bad, 0, 0, 0), 0);
        EXPECT_EQ(y.MergeAndCreateNonModifyingKey(1, 2, bad, 0, 0, 0, 0), 0);
        EXPECT_EQ(y.CreateNonModifyingKey(bad, 1), 0);
        EXPECT_EQ(y.RemoveKey(bad, 0), 0);
        EXPECT_EQ(y.RemoveTail(bad), 0);
        EXPECT_EQ(y.RemoveHead(bad), 0);
        EXPECT_EQ(y.ShiftParameters(bad), 0);
        EXPECT_EQ(y.ScaleParameterAxis(bad), 0);
        EXPECT_EQ(y.ShiftValues(bad), 0);
        EXPECT_EQ(y.ScaleAndShiftValues(2, bad), 0);
        EXPECT_EQ(y.ScaleAndShiftValues(bad, 2), 0);
        EXPECT_EQ(y.ScaleAndOffsetParameters(0, 9, bad, 2, 0, 0, 0, C::LeftHandle, 0), 0);
        EXPECT_EQ(y.ScaleAndOffsetParameters(0, 9, 0, bad, 0, 0, 0, C::LeftHandle, 0), 0);
        EXPECT_EQ(y.ScaleAndOffsetParameters(0, 9, 0, 2, bad, 0, 0, C::LeftHandle, 0), 0);
        HvQuatFCurve removed(0u);
        EXPECT_EQ(y.Cut(bad, 2, removed), 0);
        EXPECT_EQ(y.Cut(1, bad, removed), 0);
        EXPECT_EQ(y.ResampleSequence(bad, 2, 1, 0, 1), 0);
        EXPECT_EQ(y.ResampleSequence(1, bad, 1, 0, 1), 0);
        EXPECT_EQ(y.ReduceNumKeys(bad, 2, 1), 0u);
        EXPECT_EQ(QuatImage(y), image);
    }
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ResampleSequence(1, 2, kNaN, 0, 1), 0);
    EXPECT_EQ(trio.y->ResampleSequence(1, 2, 0, 0, 1), 0);
    EXPECT_EQ(trio.y->ReduceNumKeys(1, 2, kNaN), 0u);
    HvQuatFCurve even(0u);
    for (double const t : {0.0, 1.0, 2.0}) {
        even.CreateKey(t, 10 * t);
    }
    EXPECT_EQ(even.ReduceNumKeys(0, 2, -1), 0u);
    EXPECT_EQ(even.ReduceNumKeys(0, 2, kNaN), 0u);
    EXPECT_EQ(even.ReduceNumKeys(0, 2, 0), 1u);
    EXPECT_EQ(trio.y->ShiftParameters(1e300), 0) << "keys would meet";
    EXPECT_EQ(trio.y->ScaleParameterAxis(1e308), 0);
    EXPECT_EQ(trio.y->ScaleParameterAxis(-1), 0);
    EXPECT_EQ(trio.y->IsKeyParameter(1, kNaN), 0);
    EXPECT_EQ(trio.y->IsKeyParameter(1, -1), 0);
}

}  // namespace
