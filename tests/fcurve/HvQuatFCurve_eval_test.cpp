// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: evaluating.

#include "quat_fcurve_support.h"

#include <rapidcheck/gtest.h>
#include <tests/support/allocation_failure.h>

#include <cmath>
#include <limits>

namespace {

using C = HvBaseFCurve;

TEST(HvQuatFCurve_eval, IsThatOfTheRotation)
{
    Trio const trio = MakeTrio();
    for (auto const method :
         {C::ConstantExtrapolation, C::CycleExtrapolation, C::RelativeCycleExtrapolation}) {
        trio.x->SetExtrapolationMethod(method);
        for (double t = -9.3; t < 15; t += 0.71) {
            EXPECT_EQ(trio.x->Eval(t, 0), trio.curve->Eval(t, 0));
            EXPECT_EQ(trio.y->Eval(t, 1), trio.curve->Eval(t, 1));
            EXPECT_EQ(trio.z->EvalNoLock(t, 0), trio.curve->Eval(t, 2));
        }
    }
}

TEST(HvQuatFCurve_eval, MeetsTheKeys)
{
    Trio const trio = MakeTrio();
    for (double const t : {1.0, 2.0, 4.0, 5.0}) {
        double value = 0;
        trio.y->GetKeyValue(t, C::Left, value, 0);
        EXPECT_NEAR(trio.y->Eval(t, 0), value, 1e-9);
        EXPECT_EQ(trio.y->Eval(t + 5e-13, 0), trio.y->Eval(t, 0)) << "snaps";
        EXPECT_EQ(trio.y->Eval(t - 5e-13, 0), trio.y->Eval(t, 0)) << "snaps";
    }
}

TEST(HvQuatFCurve_eval, FollowsTheWindingOfTheKeys)
{
    HvQuatFCurve curve(0u);
    curve.CreateKey(0, 0);
    curve.CreateKey(1, 170);
    curve.CreateKey(2, 340);
    curve.CreateKey(3, 510);
    for (double t = 0; t <= 3; t += 0.01) {
        EXPECT_NEAR(curve.Eval(t, 0), 170 * t, 1e-9);
    }
}

TEST(HvQuatFCurve_eval, SamplesEvenlyAndTheEnd)
{
    Trio const trio = MakeTrio();
    HvDoubleArray parameters, values;
    EXPECT_EQ(trio.x->EvalSequence(1, 3, 0.75, 0.1, parameters, values, 1), 4u);
    double const expected[] = {1, 1.75, 2.5, 3};
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(parameters[i], expected[i]);
        EXPECT_EQ(values[i], trio.x->Eval(expected[i], 0));
    }
    EXPECT_EQ(trio.x->EvalSequence(3, 3, 1, 0.1, parameters, values, 0), 2u);
    EXPECT_EQ(trio.x->EvalSequence(1, 3, 0, 0.1, parameters, values, 0), 2u);
    EXPECT_EQ(trio.x->EvalSequence(1, 3, -1, 0.1, parameters, values, 0), 2u);
    EXPECT_EQ(trio.x->EvalSequence(3, 1, 1, 0.1, parameters, values, 0), 1u);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(trio.x->EvalSequence(nan, 1, 1, 0.1, parameters, values, 0), 0u);
    EXPECT_EQ(parameters.Size(), values.Size());
    EXPECT_THROW(trio.x->EvalSequence(0, 1e300, 1, 0.1, parameters, values, 0), std::bad_alloc);
}

TEST(HvQuatFCurve_eval, HasBoundsOfKeysAndHalfATurn)
{
    Trio const trio = MakeTrio();
    EXPECT_NEAR(trio.x->GetValueUpperBound(0), 220, 1e-5);
    EXPECT_NEAR(trio.x->GetValueLowerBound(1), -210, 1e-5);
    HvQuatFCurve one(1u);
    one.SetValueWhenNoKeys(7);
    EXPECT_NEAR(one.GetValueUpperBound(0), 7, kRoundTrip);
    one.CreateKey(3, 9);
    EXPECT_NEAR(one.GetValueUpperBound(0), 9, kRoundTrip);
    EXPECT_NEAR(one.GetValueLowerBound(0), 9, kRoundTrip);
}

RC_GTEST_PROP(HvQuatFCurve_eval, StaysInItsBounds, ())
{
    auto const degrees = rc::gen::inRange(-720, 721);
    auto const numKeys = *rc::gen::inRange(2, 7);
    Trio const trio;
    for (int i = 0; i < numKeys; ++i) {
        HvQuatKey key = KeyOf(i, *degrees, *degrees, *degrees, *rc::gen::inRange(-2, 3));
        key.continuity = 0.1f * static_cast<float>(*rc::gen::inRange(-10, 11));
        trio.curve->SetKey(key, 0.0);
    }
    HvQuatFCurve const* const components[] = {trio.x.get(), trio.y.get(), trio.z.get()};
    for (HvQuatFCurve const* const curve : components) {
        double const low = curve->GetValueLowerBound(0);
        double const high = curve->GetValueUpperBound(0);
        for (double t = 0; t <= numKeys - 1; t += 0.0625) {
            double const value = curve->Eval(t, 0);
            RC_ASSERT(low <= value);
            RC_ASSERT(value <= high);
        }
    }
}

TEST(HvQuatFCurve_eval, AllocatesNothingOnceItHasRun)
{
    Trio const trio = MakeTrio();
    trio.x->Eval(2.5, 0);
    AllocationCounter const counter;
    trio.x->Eval(3.5, 0);
    trio.y->Eval(4.5, 0);
    trio.y->FoldParameter(9);
    trio.y->GetValueUpperBound(0);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvQuatFCurve_eval, LivesWithKeysInDisorder)
{
    Trio const trio = MakeTrio();
    trio.curve->SetParameter(1, 9);
    for (double t = 0; t < 10; t += 0.5) {
        trio.x->Eval(t, 0);
        double p = 0;
        trio.x->GetNextKeyParameter(t, p, 1);
        trio.x->GetPrevKeyParameter(t, p, 1);
        trio.x->GetNearestKeyParameter(t, p);
        trio.x->AreAnyKeysLockedInInterval(0, t, 0, 0);
    }
    EXPECT_EQ(trio.x->ShiftParameters(1), 0);
}

TEST(HvQuatFCurve_eval, TakesAnyParameter)
{
    double const numbers[] = {0.0,
                              -0.0,
                              std::numeric_limits<double>::denorm_min(),
                              std::numeric_limits<double>::max(),
                              -std::numeric_limits<double>::max(),
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN(),
                              2147483648.0,
                              9007199254740992.0,
                              std::nextafter(5.0, 6.0),
                              std::nextafter(1.0, 0.0)};
    Trio const trio = MakeTrio();
    for (auto const method :
         {C::ConstantExtrapolation, C::CycleExtrapolation, C::RelativeCycleExtrapolation}) {
        trio.x->SetExtrapolationMethod(method);
        for (double const number : numbers) {
            trio.x->Eval(number, 0);
            trio.x->FoldParameter(number);
            double p = number;
            trio.x->GetNearestKeyParameterInCenteredInterval(p, number);
            trio.x->IsKeyParameter(1, number);
        }
    }
}

}  // namespace
