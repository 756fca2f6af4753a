// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "std_edit.h"

#include "../support/generators.h"

#include <gtest/gtest.h>

namespace {

using KeyConstraint = HvBaseFCurve::KeyConstraint;

constexpr unsigned short kAutomaticBits = Word::kAutomaticTangents | Word::kUnlimitedAutoSlope;

KeyConstraint Mask(int bits)
{
    return static_cast<KeyConstraint>(bits);
}

unsigned short WordOf(StdCurve const& curve, unsigned int i)
{
    return curve.Impl().keys[i].constraints.word;
}

/// Keys at 0, 3, 6, 9 on a slope, with words of the caller's.
StdCurve FourKeys(unsigned short word)
{
    StdCurve curve({KeyWithHandles(0, 0, {-1, 0}, {1, 2}), KeyWithHandles(3, 1, {-1, 2}, {1, 3}),
                    KeyWithHandles(6, 4, {-1, 0}, {1, 1}), KeyWithHandles(9, 5, {-1, 2}, {1, 2})});
    for (CFCStdKey& key : curve.Impl().keys) {
        key.constraints.word = word;
    }
    return curve;
}

}  // namespace

TEST(HvStdFCurve_constraints, EachConstraintSetsAndClearsItsBit)
{
    struct Row {
        int constraint;
        unsigned short bits;
    };
    for (Row const& row :
         {Row{1, 0x0004}, Row{2, 0x0002}, Row{4, 0x0001}, Row{8, 0x0008}, Row{16, 0x0010},
          Row{32, 0x001E}, Row{64, 0x0020}, Row{128, 0x0040}, Row{256, 0x0080}, Row{512, 0x0100},
          Row{1024, 0x0200}, Row{2048, 0x0400}, Row{4096, 0x0800}, Row{8192, 0x1000},
          Row{64 | 2, 0x0022}, Row{0, 0}, Row{16384, 0}, Row{16384 | 1, 0x0004}}) {
        StdCurve curve = FourKeys(0);
        double x = 3.1;
        EXPECT_EQ(curve.SetConstraint(x, Mask(row.constraint), 7, 0.2), 1);
        EXPECT_EQ(x, 3) << "the key's parameter comes back";
        EXPECT_EQ(WordOf(curve, 1), row.bits) << row.constraint;
        EXPECT_EQ(WordOf(curve, 0), 0);

        curve.Impl().keys[1].constraints.word = 0xFFFF;
        EXPECT_EQ(curve.SetConstraint(x, Mask(row.constraint), 0, 0), 1);
        int const modifier = (row.constraint & 8192) ? 0x0080 : 0;
        EXPECT_EQ(WordOf(curve, 1), 0xFFFF & ~(row.bits | modifier)) << row.constraint;
    }
}

TEST(HvStdFCurve_constraints, ParameterInsideTheCurveMayBeTheArgument)
{
    StdCurve curve = FourKeys(0);
    EXPECT_EQ(curve.SetConstraint(curve.Impl().keys[1].parameter, Mask(1), 1, 0), 1);
    EXPECT_EQ(curve.Impl().keys[1].parameter, 3);
    EXPECT_EQ(WordOf(curve, 1), 0x0004);
}

TEST(HvStdFCurve_constraints, MissingKeysAndReadOnlyCurvesRefuseAndLeaveTheArgument)
{
    StdCurve curve = FourKeys(0);
    StdCurve empty(0, kCubic);
    double x = 4;
    ExpectRefused(curve, [&] { return curve.SetConstraint(x, Mask(1), 1, 0.5); });
    ExpectRefused(empty, [&] { return empty.SetConstraint(x, Mask(1), 1, 99); });
    ExpectRefused(curve, [&] { return curve.LockTangentContinuity(x, 0.5); });
    ExpectRefused(curve, [&] { return curve.UnlockTangentContinuity(x, 0.5); });
    ExpectRefused(curve, [&] { return curve.LockTangentLengthContinuity(x, 1, 0.5); });
    ExpectRefused(curve, [&] { return curve.UnlockTangentLengthContinuity(x, 1, 0.5); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.SetConstraint(x, Mask(1), 1, 99); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.LockTangentContinuity(x, 99); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.UnlockTangentContinuity(x, 99); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.LockTangentLengthContinuity(x, 1, 99); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.UnlockTangentLengthContinuity(x, 1, 99); });
    EXPECT_EQ(x, 4);
}

TEST(HvStdFCurve_constraints, ContinuityIsLockedAndUnlockedWithoutMovingHandles)
{
    StdCurve curve = FourKeys(0);
    std::string const before = StdImage(curve);
    double x = 2.9;
    EXPECT_EQ(curve.LockTangentContinuity(x, 0.2), 1);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(WordOf(curve, 1), 0x0001);
    x = 2.9;
    EXPECT_EQ(curve.UnlockTangentContinuity(x, 0.2), 1);
    EXPECT_EQ(x, 3);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvStdFCurve_constraints, LengthContinuityBetweenCubicsWantsEqualVisualLengths)
{
    StdCurve curve = FourKeys(0);  // the handles of the key at 3: (-1, 2) and (1, 3)
    double x = 2.9;
    ExpectRefused(curve, [&] { return curve.LockTangentLengthContinuity(x, 1, 0.2); });
    EXPECT_EQ(x, 2.9);
    EXPECT_EQ(curve.LockTangentLengthContinuity(x, 0, 0.2), 1) << "seen from above they are equal";
    EXPECT_EQ(x, 3);
    EXPECT_EQ(WordOf(curve, 1), 0x0200);
    EXPECT_EQ(curve.LockTangentLengthContinuity(x, 1, 0), 1) << "what is locked stays locked";
    EXPECT_EQ(curve.UnlockTangentLengthContinuity(x, 1, 0), 1);
    EXPECT_EQ(WordOf(curve, 1), 0);
}

TEST(HvStdFCurve_constraints, LengthContinuityOfEndKeysAndBesideOtherSegmentsIsJustLocked)
{
    StdCurve curve = FourKeys(0);
    for (double x : {0.0, 9.0}) {
        EXPECT_EQ(curve.LockTangentLengthContinuity(x, 1, 0), 1);
    }
    for (unsigned int const i : {0u, 1u}) {
        StdCurve beside = FourKeys(0);
        beside.Impl().SetKind(i, kLinear);
        double x = 3;
        EXPECT_EQ(beside.LockTangentLengthContinuity(x, 1, 0), 1);
    }
}

TEST(HvStdFCurve_constraints, LengthContinuityOfTheOneInnerKeyIsRefusedAndThatOfBothEndsIsNot)
{
    StdCurve curve({KeyWithHandles(0, 0, {-1, 0}, {0.5, 0}),
                    KeyWithHandles(2, 0, {-1, 0}, {0.5, 0}),
                    KeyWithHandles(4, 0, {-1, 0}, {0.5, 0})});
    double inner = 2;
    ExpectRefused(curve, [&] { return curve.LockTangentLengthContinuity(inner, 1, 0); });
    for (double end : {0.0, 4.0}) {
        EXPECT_EQ(curve.LockTangentLengthContinuity(end, 1, 0), 1);
    }
}

// Freezing.

TEST(HvStdFCurve_constraints, FrozenTangentsKeepTheShapeAndTheirBitsUnlessAsked)
{
    StdCurve curve = FourKeys(kAutomaticBits | 1);
    StdCurve const before(curve);
    EXPECT_EQ(curve.FreezeAllTangents(0), 1);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(WordOf(curve, i), kAutomaticBits | 1);
        EXPECT_EQ(curve.Impl().keys[i].leftHandle, before.Impl().GetEvaluatedLeftTgt(i));
        EXPECT_EQ(curve.Impl().keys[i].rightHandle, before.Impl().GetEvaluatedRightTgt(i));
    }
    EXPECT_EQ(curve.FreezeAllTangents(8192), 1);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(WordOf(curve, i), 1) << "the modifier goes with the bit";
    }
    EXPECT_LT(LargestDifference(curve, before, -1, 10), kRounding);
}

TEST(HvStdFCurve_constraints, MaskIsClearedOnlyWhenItHoldsADerivingConstraint)
{
    for (int const deriving : {64, 128, 512, 2048, 8192}) {
        StdCurve curve = FourKeys(0x0003);
        EXPECT_EQ(curve.FreezeAllTangents(deriving | 2), 1);
        EXPECT_EQ(WordOf(curve, 1) & 0x0002, 0) << deriving;
    }
    for (int const other : {1, 2, 4, 8, 16, 32, 256, 1024, 4096}) {
        StdCurve curve = FourKeys(0x0FFE);
        EXPECT_EQ(curve.FreezeAllTangents(other), 1);
        EXPECT_EQ(WordOf(curve, 1), 0x0FFE) << other;
    }
}

TEST(HvStdFCurve_constraints, ContinuityGoesWhereFrozenHandlesAreBentWhileTheirBitsCount)
{
    StdCurve bent = FourKeys(0x0001);  // (-1, 2) and (1, 3) at the key at 3
    EXPECT_EQ(bent.FreezeAllTangents(0), 1);
    EXPECT_EQ(WordOf(bent, 1), 0x0000);
    // Flat handles lie on one line; the test comes before the bit goes.
    StdCurve flat = FourKeys(0x0021);
    EXPECT_EQ(flat.FreezeAllTangents(64), 1);
    EXPECT_EQ(WordOf(flat, 1), 0x0001);
    EXPECT_EQ(flat.Impl().keys[1].leftHandle, Point(2, 1));
    EXPECT_EQ(flat.Impl().keys[1].rightHandle, Point(4, 1));
}

// 2026-11-20: freezing a key of zero-length tangents left a segment that turned back when the
// handle it faces reached past the key.
TEST(HvStdFCurve_constraints, HandleThatReachesPastAFrozenKeyIsShortenedUntilTheSegmentIsValid)
{
    // x(t) over 0, 3.5, 1, 3 rises; over 0, 3.5, 3, 3 and over 0, 3.15, 3, 3 it turns back, over
    // 0, 2.835, 3, 3 it rises again.
    StdCurve leftFrozen(
        {KeyWithHandles(0, 0, {-1, 0}, {3.5, 2}), KeyWithHandles(3, 1, {-2, 0}, {1, 0})});
    leftFrozen.Impl().keys[1].constraints.Set(Word::kZeroLengthTangents);
    ASSERT_EQ(leftFrozen.Impl().IsValid(), 1);
    StdCurve oneKey(leftFrozen);
    EXPECT_EQ(leftFrozen.FreezeAllTangents(512), 1);
    EXPECT_EQ(leftFrozen.Impl().keys[1].leftHandle, Point(3, 1));
    EXPECT_EQ(leftFrozen.Impl().keys[0].leftHandle, Point(-1, 0));
    ExpectNear(leftFrozen.Impl().keys[0].rightHandle, 2.835, 1.62);
    EXPECT_EQ(leftFrozen.Impl().IsValid(), 1);
    EXPECT_TRUE(EverySegmentRunsForward(leftFrozen));

    oneKey.Impl().FreezeKey(1);
    ExpectNear(oneKey.Impl().keys[0].rightHandle, 2.835, 1.62);
    EXPECT_EQ(oneKey.Impl().IsValid(), 1);

    StdCurve rightFrozen(
        {KeyWithHandles(0, 0, {-1, 0}, {2, 0}), KeyWithHandles(3, 1, {-3.5, 2}, {1, 0})});
    rightFrozen.Impl().keys[0].constraints.Set(Word::kZeroLengthTangents);
    ASSERT_EQ(rightFrozen.Impl().IsValid(), 1);
    EXPECT_EQ(rightFrozen.FreezeTangentsInInterval(0U, 0U, 1, 0, 0), 1);
    EXPECT_EQ(rightFrozen.Impl().keys[0].rightHandle, Point(0, 0));
    ExpectNear(rightFrozen.Impl().keys[1].leftHandle, 3 - 2.835, 1 + 1.62);
    EXPECT_EQ(rightFrozen.Impl().keys[1].rightHandle, Point(4, 1));
    EXPECT_EQ(rightFrozen.Impl().IsValid(), 1);
}

TEST(HvStdFCurve_constraints, SidesOfAnIntervalFreezeItsEndKeysInside)
{
    StdCurve const before = FourKeys(Word::kFlatTangents);
    auto const frozen = [&](unsigned int i, unsigned int j, int left, int right) {
        StdCurve curve(before);
        EXPECT_EQ(curve.FreezeTangentsInInterval(i, j, left, right, 0), 1);
        std::string handles;
        for (unsigned int k = 0; k < 4; ++k) {
            CFCStdKey const& key = curve.Impl().keys[k];
            CFCStdKey const& old = before.Impl().keys[k];
            handles += key.leftHandle == old.leftHandle ? "-" : "l";
            handles += key.rightHandle == old.rightHandle ? "- " : "r ";
        }
        return handles;
    };
    // The left handles of the keys at 0 and 6 are flat as they stand.
    EXPECT_EQ(frozen(0, 3, 0, 0), "-r lr -r lr ");
    EXPECT_EQ(frozen(1, 3, 0, 0), "-- lr -r lr ");
    EXPECT_EQ(frozen(1, 3, 1, 0), "-- -r -r lr ");
    EXPECT_EQ(frozen(1, 3, 1, 1), "-- -r -r l- ");
    EXPECT_EQ(frozen(0, 1, 1, 1), "-r l- -- -- ");
    EXPECT_EQ(frozen(1, 1, 0, 0), "-- lr -- -- ");
    EXPECT_EQ(frozen(1, 1, 1, 0), "-- -r -- -- ");
    EXPECT_EQ(frozen(1, 1, 0, 1), "-- l- -- -- ");
    EXPECT_EQ(frozen(1, 1, 1, 1), "-- lr -- -- ");
}

// 2026-11-21: both handles were frozen before the constraints went.
TEST(HvStdFCurve_constraints, OneKeyFrozenFromBothSidesGivesUpItsConstraintsWithTheRightHandle)
{
    StdCurve curve = FourKeys(Word::kFlatTangents);
    StdCurve const before(curve);
    EXPECT_EQ(curve.FreezeTangentsInInterval(1u, 1u, 1, 1, HvBaseFCurve::FlatTangents), 1);
    CFCStdKey const& key = curve.Impl().keys[1];
    EXPECT_FALSE(key.constraints.HasAny(Word::kFlatTangents));
    EXPECT_EQ(key.rightHandle.y, key.rightValue);
    EXPECT_EQ(key.leftHandle, before.Impl().keys[1].leftHandle) << "no longer flat by then";
}

TEST(HvStdFCurve_constraints, IntervalOfParametersRunsBetweenTheNearestKeysTiesToTheLeft)
{
    StdCurve const before = FourKeys(Word::kFlatTangents);
    StdCurve byIndex(before);
    StdCurve byParameter(before);
    EXPECT_EQ(byIndex.FreezeTangentsInInterval(1u, 2u, 0, 0, 64), 1);
    EXPECT_EQ(byParameter.FreezeTangentsInInterval(4.5, 7.4, 0, 0, 64), 1);
    EXPECT_EQ(StdImage(byParameter), StdImage(byIndex));
}

TEST(HvStdFCurve_constraints, FreezeRefusals)
{
    StdCurve curve = FourKeys(Word::kFlatTangents);
    StdCurve empty(0, kCubic);
    ExpectRefused(empty, [&] { return empty.FreezeAllTangents(64); });
    ExpectRefused(empty, [&] { return empty.FreezeTangentsInInterval(0.0, 9.0, 0, 0, 64); });
    ExpectRefused(empty, [&] { return empty.FreezeTangentsInInterval(0u, 0u, 0, 0, 64); });
    ExpectRefused(curve, [&] { return curve.FreezeTangentsInInterval(2u, 1u, 0, 0, 64); });
    ExpectRefused(curve, [&] { return curve.FreezeTangentsInInterval(1u, 4u, 0, 0, 64); });
    ExpectRefused(curve, [&] { return curve.FreezeTangentsInInterval(9.0, 0.0, 0, 0, 64); });
    ExpectRefused(curve, [&] { return curve.FreezeTangentsInInterval(std::nan(""), 9, 0, 0, 64); });
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.FreezeAllTangents(64); });
    ExpectRefusedWhenReadOnly(curve,
                              [&] { return curve.FreezeTangentsInInterval(0.0, 9.0, 0, 0, 64); });
}

TEST(HvStdFCurve_constraints, FreezingKeepsTheShape)
{
    ExpectProperty("a curve of any derived tangents evaluates as before when they are frozen", [] {
        auto const number = [] { return PickInRange(-400, 401) * 0.01; };
        StdCurve curve(0, kCubic);
        for (int i = 0; i < 5; ++i) {
            curve.CreateKey(3 * i, number());
        }
        for (CFCStdKey& key : curve.Impl().keys) {
            key.leftHandle = Point(key.parameter - 1, number());
            key.rightHandle = Point(key.parameter + 1, number());
            unsigned short const bits[] = {0,
                                           Word::kFlatTangents,
                                           Word::kZeroLengthTangents,
                                           Word::kLinearTangents,
                                           Word::kAutomaticTangents,
                                           kAutomaticBits};
            key.constraints.word = bits[PickInRange(0, 6)];
        }
        StdCurve const before(curve);
        RC_ASSERT(curve.FreezeAllTangents(64 | 128 | 512 | 2048 | 8192) == 1);
        RC_ASSERT(LargestDifference(curve, before, -1, 13) < kSolver);
    });
}
