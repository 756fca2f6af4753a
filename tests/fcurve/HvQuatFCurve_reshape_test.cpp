// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: the parameter axis, resampling and reducing.

#include "quat_fcurve_support.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using C = HvBaseFCurve;

TEST(HvQuatFCurve_reshape, MovesAndScalesTheAxis)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ShiftParameters(10), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{11, 12, 14, 15}));
    EXPECT_EQ(trio.y->HasUserData(14.0), 1);
    EXPECT_EQ(trio.y->ScaleParameterAxis(2), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{22, 24, 28, 30}));
    EXPECT_EQ(trio.y->HasUserData(28.0), 1);
    EXPECT_EQ(trio.y->ScaleParameterAxis(0), 0);
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 20});
    EXPECT_EQ(HvQuatFCurve(0u).ShiftParameters(1), 1);
    EXPECT_EQ(HvQuatFCurve(0u).MirrorParameters(), 1);
}

TEST(HvQuatFCurve_reshape, MirrorsTheAxis)
{
    Trio const trio = MakeTrio();
    HvQuatKey key = trio.curve->GetKey(1);
    key.spins = 3;
    key.bias = 0.25f;
    trio.curve->SetKey(1u, key);
    std::string const image = QuatImage(*trio.y);
    EXPECT_EQ(trio.y->MirrorParameters(), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2, 4, 5}));
    ExpectNear(ValuesOf(*trio.x), {20, -30, 40, 10});
    EXPECT_EQ(trio.curve->GetKey(2).bias, -0.25f);
    EXPECT_EQ(trio.curve->GetKey(1).spins, 3) << "from 2 to 4 as before";
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(5), 1), "one");
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(2), 1), "four");
    EXPECT_EQ(trio.y->MirrorParameters(), 1);
    std::string const again = QuatImage(*trio.y);
    EXPECT_EQ(trio.curve->GetKey(1).bias, 0.25f);
    EXPECT_EQ(trio.curve->GetKey(1).spins, 3);
}

TEST(HvQuatFCurve_reshape, MirrorsTheEndsOntoEachOtherExactly)
{
    HvQuatFCurve curve(0u);
    for (double const t : {0.1, 0.2, 0.7}) {
        curve.CreateKey(t, 0);
    }
    EXPECT_EQ(curve.MirrorParameters(), 1);
    EXPECT_EQ(TimesOf(curve).front(), 0.1) << "which 0.1 + 0.7 - 0.7 is not";
    EXPECT_EQ(TimesOf(curve).back(), 0.7);
}

TEST(HvQuatFCurve_reshape, MirrorsTheRotationOfTwoKeys)
{
    // Two keys turn at constant speed, with or without spins, so the mirrored curve is the mirror.
    for (int const spins : {0, 1}) {
        HvQuatFCurve curve(2u);
        curve.GetQuatCurve()->SetKey(KeyOf(0, 0, 0, 10, spins), 0.0);
        curve.GetQuatCurve()->SetKey(KeyOf(4, 0, 0, 70), 0.0);
        HvQuatFCurve mirrored(curve);
        ASSERT_EQ(mirrored.MirrorParameters(), 1);
        for (double t = 0; t <= 4; t += 0.125) {
            double const d = (mirrored.Eval(t, 0) - curve.Eval(4 - t, 0)) / 360;
            EXPECT_NEAR(d, std::round(d), 1e-9) << t;
        }
    }
}

TEST(HvQuatFCurve_reshape, RescalesAllKeys)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(1, 5, 1, 2, 3, 0, 0, C::LeftHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{4, 6, 10, 12}));
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(10), 1), "four");
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(4, 12, 1, 1, 0, 0, 0, C::LeftHandle, 0), 1);
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(4, 12, 1, 1e-8, 0, 0, 0, C::LeftHandle, 0), 0);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{4, 6, 10, 12}));
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(4, 12, 0, -1, 0, 0, 0, C::LeftHandle, 0), 1);
    ExpectNear(ValuesOf(*trio.x), {20, -30, 40, 10});
}

TEST(HvQuatFCurve_reshape, MovesAPartOfTheKeys)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, 0, 1, 0.5, 0, 0, C::LeftHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2.5, 4.5, 5}));
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(4.5), 1), "four");
    ExpectNear(ValuesOf(*trio.z), {30, 60, 200, 120});
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(4.5, 4.5, 0, 1, 2, 1, 0, C::LeftHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2.5, 6.5, 7})) << "what is in front too";
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(1, 2.5, 0, 1, 4.25, 0, 0, C::LeftHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{5.25, 6.5, 6.75, 7}))
        << "over those that stay";
}

TEST(HvQuatFCurve_reshape, ScalesAPartOfTheKeys)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, 2, 0.5, 0, 0, 0, C::RightHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2, 3, 5}));
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(3), 1), "four");
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 3, 2, 3, 0, 0, 1, C::RightHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2, 5, 7})) << "what follows too";
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 20});
    ExpectNear(ValuesOf(*trio.y), {-20, 15, 35, 5});
}

TEST(HvQuatFCurve_reshape, TurnsAPartOfTheKeysRound)
{
    Trio const trio = MakeTrio();
    trio.curve->SetKey(KeyOf(3, -5, 25, 90, 2), 0.0);
    HvQuatKey shaped = trio.curve->GetKey(3);
    shaped.bias = 0.5f;
    shaped.spins = -1;
    trio.curve->SetKey(3u, shaped);
    trio.curve->SetValueLock(2, 1);
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, 2, -1, 0, 0, 0, C::RightHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 2, 3, 4, 5}));
    ExpectNear(ValuesOf(*trio.x), {10, -30, -5, 40, 20});
    ExpectNear(ValuesOf(*trio.y), {-20, 35, 25, 15, 5});
    ExpectNear(ValuesOf(*trio.z), {30, 200, 90, 60, 120});
    EXPECT_EQ(trio.curve->GetKey(1).bias, -0.5f);
    EXPECT_EQ(trio.curve->GetKey(1).spins, 2) << "what was from 3 to 4 is from 2 to 3";
    EXPECT_EQ(trio.curve->GetKey(2).spins, 0);
    EXPECT_EQ(trio.curve->GetKey(3).spins, -1) << "what leads away stays";
    EXPECT_EQ(trio.y->GetUserDataSet(4), nullptr);
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(2), 1), "four");
}

TEST(HvQuatFCurve_reshape, TurnsAPartRoundBetweenKeysThatItMakes)
{
    Trio const trio = MakeTrio();
    double const start = trio.z->Eval(1.5, 0);
    double const end = trio.z->Eval(4.5, 0);
    EXPECT_EQ(trio.z->ScaleAndOffsetParameters(1.5, 4.5, 3, -1, 0, 0, 0, C::RightHandle, 0), 1);
    EXPECT_EQ(TimesOf(*trio.x), (std::vector<double>{1, 1.5, 2, 4, 4.5, 5}));
    ExpectNear(ValuesOf(*trio.z), {30, end, 200, 60, start, 120}, 1e-9);
}

TEST(HvQuatFCurve_reshape, IsNotRescaledWhereThatCannotBe)
{
    Trio const trio = MakeTrio();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    std::string const image = QuatImage(*trio.y);
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, nan, 2, 0, 0, 0, C::LeftHandle, 0), 0);
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, 0, 1, 1e308 * 10, 0, 0, C::LeftHandle, 0), 0);
    EXPECT_EQ(QuatImage(*trio.y), image);
    trio.curve->SetParamLock(0, 1);
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, 2, 0.5, 0, 0, 0, C::LeftHandle, 0), 0);
    trio.curve->SetParamLock(0, 0);
    trio.curve->SetReadOnlyConstraint(1);
    EXPECT_EQ(trio.y->ScaleAndOffsetParameters(2, 4, 2, 0.5, 0, 0, 0, C::LeftHandle, 0), 0);
    trio.curve->SetReadOnlyConstraint(0);
    EXPECT_EQ(QuatImage(*trio.y), image);
}

TEST(HvQuatFCurve_reshape, SamplesTheRotation)
{
    Trio const trio = MakeTrio();
    HvQuatFCurve const before(*trio.z);
    EXPECT_EQ(trio.y->ResampleSequence(1.5, 4, 1, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 1.5, 2.5, 3.5, 4, 5}));
    for (double const t : {1.0, 1.5, 2.5, 3.5, 4.0, 5.0}) {
        EXPECT_NEAR(trio.z->Eval(t, 0), before.Eval(t, 0), 1e-9);
    }
    EXPECT_EQ(trio.y->HasUserData(1.0), 1);
    EXPECT_EQ(trio.y->HasUserData(4.0), 1);
    EXPECT_EQ(trio.y->ResampleSequence(1, 5, 9, 1, 0), 1) << "old keys stay";
    EXPECT_EQ(trio.y->GetNumKeys(), 6u);
    EXPECT_EQ(trio.y->ResampleSequence(1, 5, 9, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 5}));
    EXPECT_EQ(trio.y->HasUserData(4.0), 0);
    EXPECT_EQ(trio.y->ResampleSequence(3, 3, 1, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 3, 5}));
    EXPECT_EQ(trio.y->ResampleSequence(5, 1, 1, 0, 0), 0);
    EXPECT_THROW(trio.y->ResampleSequence(1, 5, 1e-300, 0, 0), std::bad_alloc);
}

TEST(HvQuatFCurve_reshape, TakesNoKeyThatIsJustNotBesideASample)
{
    HvQuatFCurve curve(0u);
    for (double const t : {-1.0, 1e-7, 1.0}) {
        curve.CreateKey(t, 0);
    }
    EXPECT_EQ(curve.ResampleSequence(-1, 1, 1, 0, 0), 1);
    EXPECT_EQ(TimesOf(curve), (std::vector<double>{-1, 0, 1}));
}

TEST(HvQuatFCurve_reshape, LeavesOutASampleBesideTheEnd)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ResampleSequence(1, 4.5, 1.75 - 1e-8, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 1 + (1.75 - 1e-8), 4.5, 5}));
}

TEST(HvQuatFCurve_reshape, TakesKeysBesideASampleForIt)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.y->ResampleSequence(1, 5, 1 + 5e-8, 0, 0), 1);
    std::vector<double> const times = TimesOf(*trio.y);
    ASSERT_EQ(times.size(), 5u);
    EXPECT_EQ(times[1], 2) << "5e-8 beside the sample";
    EXPECT_EQ(times[2], 1 + 2 * (1 + 5e-8)) << "1e-7 beside nothing";
    EXPECT_EQ(times[3], 1 + 3 * (1 + 5e-8)) << "1.5e-7 beside the key at 4";
}

TEST(HvQuatFCurve_reshape, SamplesACycleWhereItLies)
{
    Trio const trio = MakeTrio();
    trio.x->SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(trio.y->ResampleSequence(5.5, 8, 1, 0, 0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 1.5, 2.5, 3.5, 4, 5}));
}

TEST(HvQuatFCurve_reshape, DropsWhatConstantSpeedGives)
{
    HvQuatFCurve curve(2u);
    for (int i = 0; i <= 20; ++i) {
        curve.GetQuatCurve()->SetKey(KeyOf(i, 0, 0, 8.0 * i), 0.0);
    }
    curve.SetUserDataSet(SetOf(1, "seven"), 7);
    EXPECT_EQ(curve.ReduceNumKeys(0, 20, 0), 19u);
    EXPECT_EQ(TimesOf(curve), (std::vector<double>{0, 20}));
    EXPECT_EQ(curve.HasUserData(), 0);
    for (double t = 0; t <= 20; t += 0.3) {
        EXPECT_NEAR(curve.Eval(t, 0), 8 * t, 1e-9);
    }
}

TEST(HvQuatFCurve_reshape, MakesKeysAtTheEndsOfWhatItReduces)
{
    HvQuatFCurve curve(2u);
    for (int i = 0; i <= 20; ++i) {
        curve.GetQuatCurve()->SetKey(KeyOf(i, 0, 0, 8.0 * i), 0.0);
    }
    EXPECT_EQ(curve.ReduceNumKeys(2.5, 17.5, 0), 0u) << "two more, and a bend beside each of them";
    EXPECT_EQ(curve.GetNumKeys(), 23u);
    EXPECT_GT(curve.ReduceNumKeys(2.5, 17.5, 0.1), 2u);
    std::vector<double> const times = TimesOf(curve);
    for (double const t : {0.0, 1.0, 2.0, 2.5, 17.5, 18.0, 19.0, 20.0}) {
        EXPECT_EQ(std::count(times.begin(), times.end(), t), 1) << t;
    }
    for (double const t : times) {
        EXPECT_NEAR(curve.Eval(t, 0), 8 * t, 1e-9) << t;
    }
}

TEST(HvQuatFCurve_reshape, StaysWithinTheToleranceWhereItDrops)
{
    Trio const trio;
    for (int i = 0; i <= 60; ++i) {
        double const t = i * 0.1;
        trio.curve->SetKey(
            KeyOf(t, 40 * std::sin(t), 30 * std::cos(1.3 * t), 20 * t + 5 * std::sin(3 * t)), 0.0);
    }
    HvQuatFCurve const before[] = {HvQuatFCurve(*trio.x), HvQuatFCurve(*trio.y),
                                   HvQuatFCurve(*trio.z)};
    HvQuatFCurve const* const after[] = {trio.x.get(), trio.y.get(), trio.z.get()};
    std::vector<double> const times = TimesOf(*trio.x);
    unsigned int const removed = trio.y->ReduceNumKeys(0, 6, 0.01);
    EXPECT_GT(removed, 20u);
    EXPECT_EQ(trio.y->GetNumKeys(), 61 - removed);
    double low = 1e9;
    double high = -1e9;
    for (double const z : ValuesOf(before[2])) {
        low = std::min(low, z);
        high = std::max(high, z);
    }
    for (double const t : times) {
        for (int c = 0; c < 3; ++c) {
            EXPECT_NEAR(after[c]->Eval(t, 0), before[c].Eval(t, 0), 0.01 * (high - low) + 1e-9);
        }
    }
}

TEST(HvQuatFCurve_reshape, KeepsKeysThatHaveAShapeOrALock)
{
    HvQuatFCurve curve(2u);
    for (int i = 0; i <= 6; ++i) {
        HvQuatKey key = KeyOf(i, 0, 0, 9.0 * i);
        key.tension = i == 2 ? 0.5f : 0.0f;
        key.parameterLocked = i == 4;
        curve.GetQuatCurve()->SetKey(key, 0.0);
    }
    curve.ReduceNumKeys(0, 6, 10);
    EXPECT_EQ(TimesOf(curve), (std::vector<double>{0, 2, 4, 6}));
    EXPECT_EQ(curve.ReduceNumKeys(0, 6, -1), 0u);
    EXPECT_EQ(curve.ReduceNumKeys(6, 0, 1), 0u);
    EXPECT_EQ(HvQuatFCurve(0u).ReduceNumKeys(0, 1, 1), 0u);
}

TEST(HvQuatFCurve_reshape, MeasuresByTheComponentOfTheLargestRange)
{
    for (unsigned int component = 0; component < 3; ++component) {
        HvQuatFCurve curve(component);
        curve.CreateKey(0, 0);
        curve.CreateKey(1, 10.5);
        curve.CreateKey(2, 20);
        HvQuatFCurve shown(curve.GetQuatCurve(), 1u);
        EXPECT_EQ(shown.ReduceNumKeys(0, 2, 0.01), 0u) << component;
        EXPECT_EQ(shown.ReduceNumKeys(0, 2, 0.05), 1u) << component;
    }
}

TEST(HvQuatFCurve_reshape, LooksBetweenKeysWhereItDrops)
{
    // The bend is behind the key that goes, or in front of it.
    for (bool const isMirrored : {false, true}) {
        HvQuatFCurve without(2u);
        for (HvQuatKey const& key : {KeyOf(0, 0, 0, 0), KeyOf(2, 0, 0, 20), KeyOf(3, 0, 0, 150)}) {
            without.GetQuatCurve()->SetKey(key, 0.0);
        }
        // The key is on the curve and bends it beside.
        HvQuatFCurve curve(without);
        curve.CreateNonModifyingKey(1, 1);
        double const range = 20 - std::min(0.0, ValuesOf(curve)[1]);
        if (isMirrored) {
            without.MirrorParameters();
            curve.MirrorParameters();
        }
        double const key = isMirrored ? 2 : 1;
        auto const distance = [&](double t) {
            return std::fabs(curve.Eval(t, 0) - without.Eval(t, 0));
        };
        double const between = std::max(distance(key - 0.5), distance(key + 0.5));
        ASSERT_GT(between, distance(key));
        double const less = (between + distance(key)) / 2;
        EXPECT_EQ(curve.ReduceNumKeys(key - 1, key + 1, less / range), 0u);
        EXPECT_EQ(curve.ReduceNumKeys(key - 1, key + 1, (between + 1e-6) / range), 1u);
    }
}

}  // namespace
