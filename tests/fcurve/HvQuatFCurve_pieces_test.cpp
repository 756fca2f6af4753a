// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: whole pieces cut, trimmed and joined.

#include "quat_fcurve_support.h"

#include <hv/fcurve/HvRawFCurve.h>

namespace {

using C = HvBaseFCurve;

TEST(HvQuatFCurve_pieces, EndAtTheRotationThere)
{
    Trio const trio = MakeTrio();
    double const z = trio.z->Eval(3, 0);
    EXPECT_EQ(trio.y->RemoveTail(3), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 3}));
    EXPECT_NEAR(ValuesOf(*trio.z)[2], z, kRoundTrip);
    EXPECT_EQ(trio.y->HasUserData(4.0), 0);
    EXPECT_EQ(trio.y->HasUserData(1.0), 1);
    EXPECT_EQ(trio.y->RemoveTail(3), 1);
    EXPECT_EQ(trio.y->RemoveTail(9), 1) << "a key of the value held there";
    ExpectNear({ValuesOf(*trio.z)[3]}, {z});
    EXPECT_EQ(trio.y->RemoveTail(0), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{0}));
    ExpectNear(ValuesOf(*trio.z), {30});
}

TEST(HvQuatFCurve_pieces, StartAtTheRotationThere)
{
    Trio const trio = MakeTrio();
    double const x = trio.x->Eval(3, 0);
    EXPECT_EQ(trio.y->RemoveHead(3), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{3, 4, 5}));
    EXPECT_NEAR(ValuesOf(*trio.x)[0], x, kRoundTrip);
    EXPECT_EQ(trio.y->HasUserData(1.0), 0);
    EXPECT_EQ(trio.y->RemoveHead(3), 1);
    EXPECT_EQ(trio.y->RemoveHead(7), 1);
    ExpectNear(ValuesOf(*trio.x), {20});
}

TEST(HvQuatFCurve_pieces, KeepLockedKeysOutsideOfWhatGoes)
{
    Trio const trio = MakeTrio();
    trio.curve->SetParamLock(1, 1);
    EXPECT_EQ(trio.y->RemoveTail(1.5), 0);
    EXPECT_EQ(trio.y->RemoveTail(3), 1);
    EXPECT_EQ(trio.y->RemoveHead(2.5), 0);
    EXPECT_EQ(trio.y->RemoveHead(1.5), 1);
    EXPECT_EQ(trio.y->RemoveHead(2), 1) << "the one at the cut stays";
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{2, 3}));
    EXPECT_EQ(trio.y->RemoveTail(2), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{2}));
}

TEST(HvQuatFCurve_pieces, JoinAtOneKey)
{
    Trio const trio = MakeTrio();
    Trio const other = MakeTrio();
    HvQuatKey key = other.curve->GetKey(0);
    key.spins = 2;
    other.curve->SetKey(0u, key);
    EXPECT_EQ(trio.y->Append(*other.y), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 4, 5, 6, 8, 9}));
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 10, 40, -30, 20});
    EXPECT_EQ(trio.curve->GetKey(3).spins, 2);
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(5), 1), "one");
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(8), 1), "four");
    EXPECT_EQ(other.y->GetNumKeys(), 4u);
}

TEST(HvQuatFCurve_pieces, JoinWithThemselves)
{
    Trio const trio = MakeTrio();
    EXPECT_EQ(trio.x->Append(*trio.x), 1);
    ExpectNear(ValuesOf(*trio.x), {10, 40, -30, 10, 40, -30, 20});
    EXPECT_EQ(trio.z->Append(*trio.y), 1) << "another component of the same rotation";
    EXPECT_EQ(trio.x->GetNumKeys(), 13u);
    ExpectNear({ValuesOf(*trio.x)[7]}, {40});
}

TEST(HvQuatFCurve_pieces, AreNotJoinedWhenOneIsEmptyOrOfAnotherOrderOrKind)
{
    Trio const trio = MakeTrio();
    std::string const image = QuatImage(*trio.y);
    HvQuatFCurve empty(0u);
    EXPECT_EQ(trio.y->Append(empty), 0);
    EXPECT_EQ(empty.Append(*trio.y), 0);
    EXPECT_EQ(trio.y->Append(HvRawFCurve(0, 1, 2, 3)), 0);
    EXPECT_EQ(trio.y->Paste(HvRawFCurve(0, 1, 2, 3), 1, 2), 0);
    EXPECT_EQ(trio.y->Set(HvRawFCurve(0, 1, 2, 3)), 0);
    HvRawFCurve raw(0, 1, 2, 3);
    EXPECT_EQ(trio.y->Cut(1, 2, raw), 0);
    Trio const turned = MakeTrio();
    turned.curve->SetRotOrder(HvQuat::ZYX);
    EXPECT_EQ(trio.y->Append(*turned.y), 0);
    EXPECT_EQ(trio.y->Paste(*turned.y, 1, 2), 0);
    EXPECT_EQ(QuatImage(*trio.y), image);
    // A locked value where the two meet, unless both hold the same.
    trio.curve->SetValueLock(3, 1);
    EXPECT_EQ(trio.y->Append(*MakeTrio().y), 0);
    EXPECT_EQ(trio.y->GetNumKeys(), 4u);
}

TEST(HvQuatFCurve_pieces, JoinAtALockedKeyOfTheSameAngles)
{
    Trio const trio = MakeTrio();
    trio.curve->SetValueLock(3, 1);
    HvQuatFCurve other(0u);
    other.GetQuatCurve()->SetKey(KeyOf(0, 20, 5, 120), 0.0);
    other.GetQuatCurve()->SetKey(KeyOf(1, 7, 8, 9), 0.0);
    EXPECT_EQ(trio.y->Append(other), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 4, 5, 6}));
}

TEST(HvQuatFCurve_pieces, JoinWithoutKeysThatRoundingPutsOnTheJoint)
{
    HvQuatFCurve curve(0u);
    curve.GetQuatCurve()->SetKey(KeyOf(1e16, 1, 2, 3), 0.0);
    HvQuatFCurve other(0u);
    other.GetQuatCurve()->SetKey(KeyOf(0, 10, 20, 30), 0.0);
    other.GetQuatCurve()->SetKey(KeyOf(0.5, 40, 50, 60), 0.0);
    other.GetQuatCurve()->SetKey(KeyOf(64, 70, 80, 90), 0.0);
    EXPECT_EQ(curve.Append(other), 1);
    EXPECT_EQ(TimesOf(curve), (std::vector<double>{1e16, 1e16 + 64}));
    ExpectNear(ValuesOf(curve), {10, 70});
}

TEST(HvQuatFCurve_pieces, ReplaceAnInterval)
{
    Trio const trio = MakeTrio();
    HvQuatFCurve other(0u);
    other.CreateKey(10, 1);
    other.CreateKey(13, 2);
    double const end = trio.x->Eval(4.5, 0);
    EXPECT_EQ(trio.y->Paste(other, 1.5, 4.5), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 1.5, 4.5, 5}));
    ExpectNear(ValuesOf(*trio.x), {10, 1, end, 20}, 1e-11);
    EXPECT_EQ(trio.y->Paste(other, 3, 2), 0);
    EXPECT_EQ(trio.y->Paste(*trio.z, 4.75, 5), 1) << "the same rotation";
    EXPECT_EQ(trio.y->GetNumKeys(), 7u);
}

TEST(HvQuatFCurve_pieces, HeedLocksWhereTheyAre)
{
    Trio const trio = MakeTrio();
    trio.curve->SetValueLock(0, 1);
    HvQuatFCurve other(0u);
    other.CreateKey(0, 1);
    other.CreateKey(0.5, 2);
    EXPECT_EQ(trio.y->Paste(other, 2.5, 3), 1) << "a lock before it does not matter";
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 2.5, 3, 4, 5}));
    EXPECT_EQ(trio.curve->IsValueLocked(0), -1);
    trio.curve->SetValueLock(4, 1);
    EXPECT_EQ(trio.y->Paste(other, 2.5, 3), 0) << "one behind it does";
    Trio const target;
    EXPECT_EQ(trio.y->Cut(2.5, 3, *target.x), 1) << "a value that moves along";
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 2, 2.5, 3.5, 4.5}));
    EXPECT_EQ(trio.curve->IsValueLocked(3), -1);
    trio.curve->SetParamLock(4, 1);
    EXPECT_EQ(trio.y->Cut(2.25, 3, *target.x), 0) << "a parameter that would";
}

TEST(HvQuatFCurve_pieces, AreCutOutAndTheGapCloses)
{
    Trio const trio = MakeTrio();
    Trio const target;
    double const from = trio.x->Eval(1.5, 0);
    double const to = trio.x->Eval(3, 0);
    EXPECT_EQ(trio.y->Cut(1.5, 3, *target.z), 1);
    EXPECT_EQ(TimesOf(*trio.y), (std::vector<double>{1, 1.5, 2.5, 3.5}));
    ExpectNear(ValuesOf(*trio.x), {10, to, -30, 20}, 1e-11);
    EXPECT_EQ(TextIn(trio.y->GetUserDataSet(2.5), 1), "four");
    EXPECT_EQ(TimesOf(*target.z), (std::vector<double>{1.5, 2, 3}));
    ExpectNear(ValuesOf(*target.x), {from, 40, to}, 1e-11);
    EXPECT_EQ(target.z->GetComponent(), 2u);
}

TEST(HvQuatFCurve_pieces, AreNotCutIntoTheirOwnRotation)
{
    Trio const trio = MakeTrio();
    std::string const image = QuatImage(*trio.y);
    EXPECT_EQ(trio.y->Cut(1.5, 3, *trio.y), 0);
    EXPECT_EQ(trio.y->Cut(1.5, 3, *trio.x), 0);
    HvQuatFCurve target(0u);
    EXPECT_EQ(trio.y->Cut(3, 1.5, target), 0);
    trio.curve->SetParamLock(3, 1);
    EXPECT_EQ(trio.y->Cut(1.5, 3, target), 0) << "a key that would have to move";
    trio.curve->SetParamLock(3, 0);
    EXPECT_EQ(QuatImage(*trio.y), image);
    EXPECT_EQ(target.GetNumKeys(), 0u);
}

}  // namespace
