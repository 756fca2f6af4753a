// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include <gtest/gtest.h>

namespace {

StdCurve TwoKeys()
{
    CFCStdKey jump = KeyAt(3, 2, 4, kLinear);
    jump.leftHandle = Point(2, 1);
    jump.rightHandle = Point(4, 7);
    return StdCurve({KeyAt(0, 1, 1, kLinear), jump});
}

}  // namespace

TEST(HvStdFCurve_values, OneSideMovesWithItsHandle)
{
    StdCurve left = TwoKeys();
    EXPECT_EQ(left.SetKeyValue(3.1, kLeft, 10, 0.2), 1);
    EXPECT_EQ(left.Impl().keys[1].leftValue, 10);
    EXPECT_EQ(left.Impl().keys[1].leftHandle, Point(2, 9));
    EXPECT_EQ(left.Impl().keys[1].rightValue, 4);
    EXPECT_EQ(left.Impl().keys[1].rightHandle, Point(4, 7));

    StdCurve right = TwoKeys();
    EXPECT_EQ(right.SetKeyValue(3, kRight, 10, 0), 1);
    EXPECT_EQ(right.Impl().keys[1].leftValue, 2);
    EXPECT_EQ(right.Impl().keys[1].rightValue, 10);
    EXPECT_EQ(right.Impl().keys[1].rightHandle, Point(4, 13));
}

TEST(HvStdFCurve_values, FirstKeyLeavesTheValueWhenNoKeysAlone)
{
    StdCurve curve = TwoKeys();
    EXPECT_EQ(curve.SetKeyValue(0, kLeft, 10, 0), 1);
    EXPECT_EQ(curve.Impl().valueWhenNoKeys, 0);
}

TEST(HvStdFCurve_values, WithoutAKeyNearbyNothingChangesAndTheResultIsOne)
{
    StdCurve curve = TwoKeys();
    std::string const before = StdImage(curve);
    EXPECT_EQ(curve.SetKeyValue(2, kLeft, 10, 0.5), 1);
    EXPECT_EQ(curve.SetKeyValue(std::nan(""), kLeft, 10, 0.5), 1);
    EXPECT_EQ(StdImage(curve), before);
    StdCurve empty(1, kLinear);
    EXPECT_EQ(empty.SetKeyValue(2, kLeft, 10, 0.5), 1);
}

TEST(HvStdFCurve_values, LockAtTheParameterRefuses)
{
    StdCurve curve = TwoKeys();
    Lock(curve, 1, Word::kValueLocked);
    ExpectRefused(curve, [&] { return curve.SetKeyValue(3, kLeft, 10, 0.5); });
    ExpectRefused(curve, [&] { return curve.SetKeyValue(3, kLeft, 2, 0); });
}

TEST(HvStdFCurve_values, LockedKeyBesideTheParameterKeepsItsValueWhileItsHandleMoves)
{
    StdCurve curve = TwoKeys();
    Lock(curve, 1, Word::kValueLocked);
    EXPECT_EQ(curve.SetKeyValue(2.9, kRight, 10, 0.5), 1);
    EXPECT_EQ(curve.Impl().keys[1].rightValue, 4);
    EXPECT_EQ(curve.Impl().keys[1].rightHandle, Point(4, 13));
}

TEST(HvStdFCurve_values, UnknownSidesReadOnlyCurvesAndUnstorableValuesAreRefused)
{
    StdCurve curve = TwoKeys();
    for (int const side : {-1, 0, 3}) {
        ExpectRefused(curve, [&] {
            return curve.SetKeyValue(3, static_cast<HvBaseFCurve::KeySide>(side), 10, 0);
        });
    }
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetKeyValue(3, kLeft, 10, 0); });
    for (double const bad : NonFinite()) {
        ExpectRefused(curve, [&] { return curve.SetKeyValue(3, kLeft, bad, 0); });
    }
}
