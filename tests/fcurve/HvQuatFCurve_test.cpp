// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: three components over one rotation, copies, infos and settings.

#include "quat_fcurve_support.h"

#include <algorithm>
#include <limits>

namespace {

using C = HvBaseFCurve;

TEST(HvQuatFCurve, IsOfItsKindAlone)
{
    HvQuatFCurve const curve(1u);
    EXPECT_EQ(curve.GetKind(), 40);
    EXPECT_EQ(curve.QueryFCurveKind(C::Quaternion), &curve);
    EXPECT_EQ(curve.QueryFCurveKind(C::Standard), nullptr);
    EXPECT_EQ(curve.GetComponent(), 1u);
}

TEST(HvQuatFCurve, StartsEmpty)
{
    HvQuatFCurve const curve(2u);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.Eval(3, 0), 0);
    EXPECT_EQ(curve.GetExtrapolationMethod(), C::ConstantExtrapolation);
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.IsSelected(), 0);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 0);
    EXPECT_EQ(curve.GetMinusInfinityVal(), 0);
    EXPECT_EQ(curve.GetPlusInfinityVal(), 0);
}

TEST(HvQuatFCurve, MakesItsOwnRotationForNone)
{
    HvQuatFCurve curve(nullptr, 1u);
    ASSERT_NE(curve.GetQuatCurve(), nullptr);
    EXPECT_EQ(curve.CreateKey(1, 2), 1);
}

TEST(HvQuatFCurve, ShowsItsComponentInDegrees)
{
    Trio const trio = MakeTrio();
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 20});
    ExpectNear(ValuesOf(*trio.y), {-20, 15, 35, 5});
    ExpectNear(ValuesOf(*trio.z), {30, 60, 200, 120});
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 4, 5}));
}

TEST(HvQuatFCurve, LetsTheOthersSeeAnEdit)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->CreateKey(3, 77), 1);
    EXPECT_EQ(trio.y->GetNumKeys(), 5u);
    EXPECT_EQ(trio.z->IsKeyParameter(3, 0), 1);
    EXPECT_EQ(trio.y->RemoveKey(2, 0), 1);
    EXPECT_EQ(trio.x->IsKeyParameter(2, 0), 0);
    EXPECT_EQ(trio.z->SetReadOnlyConstraint(1), 1);
    EXPECT_EQ(trio.x->IsReadOnly(), 1);
    EXPECT_EQ(trio.x->CreateKey(8, 1), 0);
    EXPECT_EQ(trio.x->SetSelected(1), 1);
    EXPECT_EQ(trio.z->IsSelected(), 1);
}

TEST(HvQuatFCurve, DiesInEveryOrder)
{
    int order[] = {0, 1, 2};
    do {
        Trio trio = MakeTrio();
        std::unique_ptr<HvQuatFCurve>* const all[] = {&trio.x, &trio.y, &trio.z};
        for (int const i : order) {
            double const value = (*all[order[2]])->Eval(3, 0);
            all[i]->reset();
            if (i != order[2]) {
                EXPECT_EQ((*all[order[2]])->Eval(3, 0), value);
            }
        }
    } while (std::next_permutation(order, order + 3));
}

TEST(HvQuatFCurve, LivesOnAfterTheHostLetGo)
{
    auto* const curve = new HvQuatCurve;
    curve->Ref();
    HvQuatFCurve const shown(curve, 0u);
    curve->SetKey(KeyOf(1, 5, 0, 0), 0.0);
    curve->UnRef();
    EXPECT_NEAR(shown.Eval(0, 0), 5, kRoundTrip);
}

TEST(HvQuatFCurve, CopiesIntoARotationOfItsOwn)
{
    Trio const trio = MakeTrio();
    trio.y->SetAsTimeFCurve(false);
    std::unique_ptr<C> const clone(trio.y->Clone());
    HvQuatFCurve copy(*trio.y);
    EXPECT_EQ(QuatImage(static_cast<HvQuatFCurve const&>(*clone)), QuatImage(*trio.y));
    EXPECT_EQ(QuatImage(copy), QuatImage(*trio.y));
    EXPECT_NE(copy.GetQuatCurve(), trio.curve);
    copy.CreateKey(9, 9);
    EXPECT_EQ(trio.y->GetNumKeys(), 4u);
}

TEST(HvQuatFCurve, IsAssignedIntoTheRotationThatItShows)
{
    Trio const trio = MakeTrio();
    HvQuatFCurve other(2u);
    other.CreateKey(7, 70);
    HvQuatCurve* const shown = trio.x->GetQuatCurve();
    *trio.x = other;
    EXPECT_EQ(trio.x->GetQuatCurve(), shown);
    EXPECT_EQ(trio.x->GetComponent(), 2u);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{7}));
    EXPECT_NEAR(trio.x->Eval(0, 0), 70, kRoundTrip);
    // Another component of the same rotation: only the component changes.
    *trio.y = *trio.z;
    EXPECT_EQ(trio.y->GetComponent(), 2u);
    EXPECT_EQ(trio.y->GetNumKeys(), 1u);
    EXPECT_EQ(trio.y->HasUserData(), 0) << "user data are those of the other";
}

TEST(HvQuatFCurve, IsSetByItsKindAlone)
{
    Trio const trio = MakeTrio();
    HvQuatFCurve copy(0u);
    EXPECT_EQ(copy.Set(*trio.y), 1);
    EXPECT_EQ(QuatImage(copy), QuatImage(*trio.y));
    EXPECT_EQ(copy.Set(copy), 1);
    EXPECT_EQ(QuatImage(copy), QuatImage(*trio.y));
}

TEST(HvQuatFCurve, TellsWhatItHasAndClearsTheRest)
{
    Trio const trio = MakeTrio();
    C::FCurveInfo info{};
    info.mask = 0x7F;
    info.lowerClamp = 9;
    EXPECT_EQ(trio.y->GetFCurveInfo(&info), 0);
    EXPECT_EQ(info.mask, 0x47u);
    EXPECT_EQ(info.kind, C::Quaternion);
    EXPECT_EQ(info.numKeys, 4u);
    EXPECT_EQ(info.extrapolation, C::ConstantExtrapolation);
    EXPECT_EQ(info.defaultSegmentKind, C::ConstantSegment);
    EXPECT_EQ(info.lowerClamp, 0);
    info.mask = 0x47;
    EXPECT_EQ(trio.y->GetFCurveInfo(&info), 1);
    EXPECT_EQ(trio.y->GetFCurveInfo(nullptr), 0);
}

TEST(HvQuatFCurve, TellsOfAKey)
{
    Trio const trio = MakeTrio();
    trio.curve->SetSelected(1);
    trio.curve->SetKeySelected(2, 1);
    C::KeyInfo info{};
    info.mask = 0x3FF;
    info.leftTangentX = 5;
    EXPECT_EQ(trio.z->GetKeyInfoFromIndex(2, &info), 0);
    EXPECT_EQ(info.mask, 0x20Fu);
    EXPECT_EQ(info.index, 2u);
    EXPECT_EQ(info.parameter, 4);
    EXPECT_NEAR(info.leftValue, 200, kRoundTrip);
    EXPECT_EQ(info.rightValue, info.leftValue);
    EXPECT_EQ(info.selected, 1);
    EXPECT_EQ(info.leftTangentX, 0);
    EXPECT_EQ(info.segmentKind, C::ConstantSegment);
    info.mask = 0x20F;
    EXPECT_EQ(trio.z->GetKeyInfoFromParameter(4, &info), 1);
    info.mask = 0x3FF;
    EXPECT_EQ(trio.z->GetKeyInfoFromParameter(4.5, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    info.mask = 0x3FF;
    EXPECT_EQ(trio.z->GetKeyInfoFromIndex(4, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    EXPECT_EQ(trio.z->GetKeyInfoFromIndex(0, nullptr), 0);
    EXPECT_EQ(trio.z->GetKeyInfoFromParameter(1, nullptr), 0);
}

TEST(HvQuatFCurve, WalksItsKeys)
{
    Trio const trio = MakeTrio();
    double p = 0;
    unsigned int i = 9;
    HvDoubleArray parameters;
    EXPECT_EQ(trio.x->GetNextKeyParameter(2, p, 0), 1);
    EXPECT_EQ(p, 4);
    EXPECT_EQ(trio.x->GetNextKeyParameter(2, p, 1), 1);
    EXPECT_EQ(p, 2);
    EXPECT_EQ(trio.x->GetNextKeyParameter(5, p, 0), 0);
    EXPECT_EQ(trio.x->GetPrevKeyParameter(2, p, 0), 1);
    EXPECT_EQ(p, 1);
    EXPECT_EQ(trio.x->GetPrevKeyParameter(1, p, 0), 0);
    EXPECT_EQ(trio.x->GetNearestKeyParameter(3, p), 1);
    EXPECT_EQ(p, 4) << "the right one on a tie";
    p = 3.5;
    EXPECT_EQ(trio.x->GetNearestKeyParameterInCenteredInterval(p, 0.5), 1);
    EXPECT_EQ(p, 4);
    EXPECT_EQ(trio.x->GetKeyIndex(4, i), 1);
    EXPECT_EQ(i, 2u);
    EXPECT_EQ(trio.x->GetKeyIndex(4.5, i), 0);
    EXPECT_EQ(trio.x->GetKeyParameters(1, 4, parameters, 1, 0, 0), 2u);
    EXPECT_EQ(trio.x->GetKeyParameters(1, 1, parameters, 1, 0, 0), 1u);
    EXPECT_EQ(trio.x->GetAllKeyParameters(parameters), 4u);
    EXPECT_EQ(trio.x->GetSmallestKeyParameter(p), 1);
    EXPECT_EQ(p, 1);
    EXPECT_EQ(trio.x->GetLargestKeyParameter(p), 1);
    EXPECT_EQ(p, 5);
    EXPECT_EQ(trio.x->IsSmallestKeyParameter(1), 1);
    EXPECT_EQ(trio.x->IsLargestKeyParameter(4), 0);
    EXPECT_NEAR(trio.x->GetMinusInfinityVal(), 10, kRoundTrip);
    EXPECT_NEAR(trio.x->GetPlusInfinityVal(), 20, kRoundTrip);
}

TEST(HvQuatFCurve, SelectsKeysForAllComponents)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->SetKeySelected(4.0, 1), 1);
    EXPECT_EQ(trio.x->SetKeySelected(9u, 1), 0);
    EXPECT_EQ(trio.y->IsKeySelected(2u), 0) << "the curve itself is not";
    EXPECT_EQ(trio.y->HasSelectedKeys(), 0);
    trio.z->SetSelected(1);
    EXPECT_EQ(trio.y->IsKeySelected(2u), 1);
    EXPECT_EQ(trio.y->IsKeySelected(4.0), 1);
    EXPECT_EQ(trio.y->HasSelectedKeys(), 1);
    HvDoubleArray parameters, left, right;
    EXPECT_EQ(trio.y->GetKeyParameters(0, 9, parameters, 0, 0, 1), 1u);
    EXPECT_EQ(trio.y->GetKeys(parameters, left, right, 1), 1u);
    EXPECT_EQ(trio.y->GetKeys(parameters, left, right, 0), 4u);
}

TEST(HvQuatFCurve, LocksKeys)
{
    Trio const trio = MakeTrio();
    double p = 2.1;
    int on = 9;
    EXPECT_EQ(trio.x->SetConstraint(p, C::ValueLocked, 1, 0.2), 1);
    EXPECT_EQ(p, 2);
    EXPECT_EQ(trio.y->GetConstraintByIndex(1, C::ValueLocked, on), 1);
    EXPECT_EQ(on, 1);
    EXPECT_EQ(trio.y->GetConstraintByIndex(1, C::AllLocked, on), 1);
    EXPECT_EQ(on, 0);
    double near = 1.9;
    on = 9;
    EXPECT_EQ(trio.z->GetConstraint(near, C::ValueLocked, on, 0.2), 1);
    EXPECT_EQ(on, 1);
    EXPECT_EQ(near, 2);
    EXPECT_EQ(trio.z->GetConstraint(near, C::ParameterLocked, on, 0), 1);
    EXPECT_EQ(on, 0);
    near = 1.5;
    on = 9;
    EXPECT_EQ(trio.z->GetConstraint(near, C::ValueLocked, on, 0.2), 0);
    EXPECT_EQ(near, 1.5);
    EXPECT_EQ(on, 9);
    EXPECT_EQ(trio.y->AreAnyValuesLockedInInterval(1, 5, 0, 0), 1);
    EXPECT_EQ(trio.y->AreAnyParametersLockedInInterval(1, 5, 0, 0), 0);
    EXPECT_EQ(trio.y->AreAnyKeysLockedInInterval(1, 5, 0, 0), 0);
    EXPECT_EQ(trio.y->AreAnyValuesLockedInInterval(2, 5, 1, 0), 0);
    EXPECT_EQ(trio.x->SetConstraint(p, C::AllLocked, 1, 0), 1);
    EXPECT_EQ(trio.curve->GetConstraintData(1), 6);
    EXPECT_EQ(trio.y->AreAnyKeysLockedInInterval(1, 5, 0, 0), 1);
    EXPECT_EQ(trio.x->SetConstraint(p, C::ParameterLocked, 0, 0), 1);
    EXPECT_EQ(trio.curve->GetConstraintData(1), 2);
    for (int c = 4; c <= 8192; c *= 2) {
        auto const constraint = static_cast<C::KeyConstraint>(c);
        if (constraint != C::AllLocked) {
            EXPECT_EQ(trio.x->IsConstraintSupported(constraint), 0);
            EXPECT_EQ(trio.x->SetConstraint(p, constraint, 1, 0), 0);
            EXPECT_EQ(trio.x->GetConstraint(p, constraint, on, 0), 0);
            EXPECT_EQ(trio.x->GetConstraintByIndex(0, constraint, on), 0);
        }
    }
    p = 3;
    EXPECT_EQ(trio.x->SetConstraint(p, C::ValueLocked, 1, 0.5), 0);
    EXPECT_EQ(trio.x->GetConstraint(p, C::ValueLocked, on, 0.5), 0);
}

TEST(HvQuatFCurve, RefusesLinearExtrapolation)
{
    HvQuatFCurve curve(0u);
    for (int const method : {0, 2, 5, -1}) {
        EXPECT_EQ(curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method)), 0);
    }
    EXPECT_EQ(curve.SetExtrapolationMethod(C::CycleExtrapolation), 1);
    EXPECT_EQ(curve.GetExtrapolationMethod(), C::CycleExtrapolation);
    curve.SetReadOnlyConstraint(1);
    EXPECT_EQ(curve.SetExtrapolationMethod(C::ConstantExtrapolation), 0);
}

TEST(HvQuatFCurve, EvaluatesByTheNewExtrapolationAtOnce)
{
    Trio const trio = MakeTrio();
    double const held = trio.x->Eval(7, 0);
    trio.x->SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_GT(std::abs(trio.x->Eval(7, 0) - held), 1);
}

TEST(HvQuatFCurve, HasNoClampsNorInverse)
{
    Trio const trio = MakeTrio();
    double lower = 0;
    double upper = 0;
    EXPECT_EQ(trio.x->SetClampingValues(-1, 1), 0);
    EXPECT_EQ(trio.x->GetClampingValues(lower, upper), 1);
    EXPECT_EQ(lower, -std::numeric_limits<double>::max());
    EXPECT_EQ(upper, std::numeric_limits<double>::max());
    EXPECT_EQ(trio.x->EvalInverse(15, lower, 0), 0);
    EXPECT_FALSE(trio.x->IsBijective());
}

TEST(HvQuatFCurve, KeepsFlagsPerObject)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->SetAsTimeFCurve(true), 0);
    EXPECT_EQ(trio.x->SetAsTimeFCurve(false), 1);
    EXPECT_EQ(trio.x->IsTimeFCurve(), 0);
    EXPECT_EQ(trio.y->IsTimeFCurve(), 1);
    EXPECT_EQ(trio.x->SetDefaultBezierTangentConstraint(true), 1);
    EXPECT_EQ(trio.x->IsDefautlBezierTangentConstraintOn(), 1);
    EXPECT_EQ(trio.y->IsDefautlBezierTangentConstraintOn(), 0);
}

TEST(HvQuatFCurve, CountsItsMemory)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->GetDynamicMemSize(), sizeof(HvQuatCurve) + trio.curve->GetDynamicMemSize());
}

TEST(HvQuatFCurve, RefusesValuesOfNoComponent)
{
    HvQuatFCurve curve(7u);
    EXPECT_EQ(curve.CreateKey(1, 2), 0);
    EXPECT_EQ(curve.SetValueWhenNoKeys(2), 0);
    EXPECT_EQ(curve.CreateNonModifyingKey(1, 0), 1);
    EXPECT_EQ(curve.SetKeyValue(1, C::Left, 2, 0), 0);
    EXPECT_EQ(curve.ShiftValues(2), 0);
    EXPECT_EQ(curve.Eval(1, 0), 0);
}

TEST(HvQuatFCurve, SnapsAsItIs)
{
    Trio const trio = MakeTrio();
    std::unique_ptr<C> const same(trio.z->SnapShot(-20, 30, C::ConstantExtrapolation));
    std::unique_ptr<C> const inside(trio.z->SnapShot(4.5, 1.5, C::CycleExtrapolation));
    std::unique_ptr<C> const kept(
        trio.z->SnapShot(-20, 30, static_cast<C::ExtrapolationMethod>(0)));
    ASSERT_TRUE(same && inside && kept);
    for (double t = -20; t <= 30; t += 0.37) {
        EXPECT_EQ(same->Eval(t, 0), trio.z->Eval(t, 0));
        EXPECT_EQ(kept->Eval(t, 0), trio.z->Eval(t, 0));
        if (t >= 1.5 && t <= 4.5) {
            EXPECT_EQ(inside->Eval(t, 0), trio.z->Eval(t, 0));
        }
    }
    EXPECT_EQ(inside->GetExtrapolationMethod(), C::CycleExtrapolation);
    EXPECT_EQ(kept->GetExtrapolationMethod(), C::ConstantExtrapolation);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    // Before its keys a copy that cycles would show something else.
    std::unique_ptr<C> const beyond(trio.z->SnapShot(0, 3, C::CycleExtrapolation));
    ASSERT_TRUE(beyond);
    EXPECT_EQ(beyond->GetExtrapolationMethod(), C::ConstantExtrapolation);
    EXPECT_EQ(beyond->Eval(0, 0), trio.z->Eval(0, 0));
    // One end beyond is enough, and the ends of the keys are not.
    for (double const from : {0.5, 1.0}) {
        for (double const to : {5.0, 5.5}) {
            std::unique_ptr<C> const copy(trio.z->SnapShot(from, to, C::CycleExtrapolation));
            ASSERT_TRUE(copy);
            EXPECT_EQ(copy->GetExtrapolationMethod(),
                      from == 1 && to == 5 ? C::CycleExtrapolation : C::ConstantExtrapolation);
        }
    }
    HvQuatFCurve single(2u);
    single.CreateKey(1, 7);
    std::unique_ptr<C> const one(single.SnapShot(0, 3, C::CycleExtrapolation));
    ASSERT_TRUE(one);
    EXPECT_EQ(one->GetExtrapolationMethod(), C::CycleExtrapolation) << "all methods are one";
    // A value at either end that is no number gives none.
    for (unsigned int const i : {0u, 3u}) {
        Trio const bad = MakeTrio();
        bad.curve->SetKeyValue(i, HvPoint3<double>(NAN, NAN, NAN));
        EXPECT_EQ(bad.z->SnapShot(0, 5, C::ConstantExtrapolation), nullptr) << i;
    }
    EXPECT_EQ(trio.z->SnapShot(nan, 3, C::ConstantExtrapolation), nullptr);
    std::unique_ptr<C> const empty(HvQuatFCurve(0u).SnapShot(0, 3, C::CycleExtrapolation));
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->GetExtrapolationMethod(), C::CycleExtrapolation);
}

}  // namespace
