// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life of raw curves, their infos, lookups, selection and settings.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <tests/fcurve/raw_test_support.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using C = HvBaseFCurve;

// Construction.

TEST(HvRawFCurve, StartsWithTheDefaults)
{
    OpenRaw const curve(7.0);
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.WhenNoKeys(), 7);
    EXPECT_EQ(curve.GetExtrapolationMethod(), C::ConstantExtrapolation);
    EXPECT_EQ(curve.LowerClamp(), -1.7976931348623157e308);
    EXPECT_EQ(curve.UpperClamp(), 1.7976931348623157e308);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 0);
    EXPECT_EQ(curve.IsReadOnly(), 0);
    EXPECT_EQ(curve.IsTimeFCurve(), 1);
    EXPECT_EQ(curve.IsSelected(), 0);
    EXPECT_EQ(curve.HasUserData(), 0);
}

TEST(HvRawFCurve, StartsWithTheKeysGiven)
{
    OpenRaw const one(1, 2);
    EXPECT_EQ(KeysOf(one), (Keys{{1, 2}}));
    EXPECT_EQ(one.WhenNoKeys(), 2);
    OpenRaw const two(1, 2, 3, 4);
    EXPECT_EQ(KeysOf(two), (Keys{{1, 2}, {3, 4}}));
    EXPECT_EQ(two.WhenNoKeys(), 2);
    EXPECT_EQ(KeysOf(OpenRaw(3, 4, 3, 5)), (Keys{{3, 4}})) << "out of order";
    EXPECT_EQ(KeysOf(OpenRaw(kNaN, 4, 3, 5)), (Keys{{3, 5}}));
    EXPECT_EQ(OpenRaw(kInfinity, 4).GetNumKeys(), 0u);
}

TEST(HvRawFCurve, IsOfItsKindOnly)
{
    HvRawFCurve const curve(7.0);
    EXPECT_EQ(curve.GetKind(), C::Raw);
    EXPECT_EQ(static_cast<int>(curve.GetKind()), 30);
    for (int const kind : {0, 10, 15, 20, 30, 40}) {
        EXPECT_EQ(curve.QueryFCurveKind(static_cast<C::Kind>(kind)),
                  kind == 30 ? static_cast<C const*>(&curve) : nullptr);
    }
}

OpenRaw Full()
{
    OpenRaw curve = Zigzag();
    curve.SetSelected(1);
    curve.SetKeySelected(2.0, 1);
    curve.SetClampingValues(-5, 35);
    curve.SetExtrapolationMethod(C::RelativeCycleExtrapolation);
    curve.SetDefaultBezierTangentConstraint(true);
    curve.SetAsTimeFCurve(false);
    Tag(curve, 3, 3);
    return curve;
}

TEST(HvRawFCurve, CopiesKeysFieldsAndData)
{
    OpenRaw const source = Full();
    std::string const image = CurveImage(source);
    OpenRaw const copy(source);
    EXPECT_EQ(CurveImage(copy), image);
    EXPECT_EQ(TagAt(copy, 3), 3);
    std::unique_ptr<C> const clone(source.Clone());
    EXPECT_EQ(clone->GetKind(), C::Raw);
    EXPECT_EQ(CurveImage(*clone), image);
    OpenRaw assigned(1, 2);
    assigned = source;
    EXPECT_EQ(CurveImage(assigned), image);
    EXPECT_NE(assigned.Impl().hintSlot, OpenRaw(source).Impl().hintSlot);
    OpenRaw& same = assigned;
    assigned = same;
    EXPECT_EQ(CurveImage(assigned), image);
}

TEST(HvRawFCurve, SetTakesCurvesOfItsKindOnly)
{
    OpenRaw curve = Full();
    std::string const image = CurveImage(curve);
    EXPECT_EQ(curve.Set(HvStdFCurve(1, C::LinearSegment)), 0);
    EXPECT_EQ(curve.Set(HvIntegerFCurve(1)), 0);
    EXPECT_EQ(CurveImage(curve), image);
    OpenRaw const other(1, 2);
    EXPECT_EQ(curve.Set(other), 1);
    EXPECT_EQ(CurveImage(curve), CurveImage(other));
    EXPECT_EQ(HvIntegerFCurve(1).Set(curve), 0);
    EXPECT_EQ(curve.Set(curve), 1);
}

TEST(HvRawFCurve, AnswersThroughTheContract)
{
    // Every slot reaches the raw curve's own body.
    std::unique_ptr<C> const curve(Full().Clone());
    EXPECT_EQ(curve->Eval(1.5, 1), 20);
    EXPECT_EQ(curve->Eval(4, 1), 35);
    EXPECT_EQ(curve->GetMinusInfinityVal(), 10);
    EXPECT_EQ(curve->GetPlusInfinityVal(), 40);
    double p = 0;
    EXPECT_EQ(curve->GetSmallestKeyParameter(p), 1);
    EXPECT_EQ(p, 1);
    EXPECT_EQ(curve->GetLargestKeyParameter(p), 1);
    EXPECT_EQ(p, 4);
    EXPECT_EQ(curve->IsSmallestKeyParameter(1), 1);
    EXPECT_EQ(curve->IsLargestKeyParameter(1), 0);
    EXPECT_EQ(curve->GetNextKeyParameter(2, p, 0), 1);
    EXPECT_EQ(p, 3);
    EXPECT_EQ(curve->GetPrevKeyParameter(2, p, 1), 1);
    EXPECT_EQ(p, 2);
    EXPECT_EQ(curve->GetNearestKeyParameter(2.5, p), 1);
    EXPECT_EQ(p, 3) << "the right one on a tie";
    EXPECT_EQ(curve->IsKeyParameter(2.1, 0.2), 1);
    EXPECT_EQ(curve->IsBijective(), false);
    HvDoubleArray parameters;
    EXPECT_EQ(curve->GetKeyParameters(2, 3, parameters, 1, 0, 0), 1u);
    EXPECT_EQ(parameters[0], 3);
    EXPECT_EQ(curve->GetAllKeyParameters(parameters), 4u);
    unsigned int index = 9;
    EXPECT_EQ(curve->GetKeyIndex(3, index), 1);
    EXPECT_EQ(index, 2u);
}

// Infos.

TEST(HvRawFCurve, HasEveryFieldOfACurveInfo)
{
    OpenRaw const curve = Full();
    C::FCurveInfo info{};
    info.mask = 0x7F;
    EXPECT_EQ(curve.GetFCurveInfo(&info), 1);
    EXPECT_EQ(info.mask, 0x7Fu);
    EXPECT_EQ(info.kind, C::Raw);
    EXPECT_EQ(info.numKeys, 4u);
    EXPECT_EQ(info.valueWhenNoKeys, 7);
    EXPECT_EQ(info.defaultSegmentKind, C::LinearSegment);
    EXPECT_EQ(info.lowerClamp, -5);
    EXPECT_EQ(info.upperClamp, 35);
    EXPECT_EQ(info.extrapolation, C::RelativeCycleExtrapolation);
    EXPECT_EQ(curve.GetFCurveInfo(nullptr), 0);
}

TEST(HvRawFCurve, HasEveryFieldOfAKeyInfo)
{
    OpenRaw const curve = Full();
    C::KeyInfo info{0x3FF, 9, 9, 9, 9, 9, 9, 9, 9, C::CubicSegment, 9};
    EXPECT_EQ(curve.GetKeyInfoFromIndex(1, &info), 1);
    EXPECT_EQ(info.mask, 0x3FFu);
    EXPECT_EQ(info.index, 1u);
    EXPECT_EQ(info.parameter, 2);
    EXPECT_EQ(info.leftValue, 30);
    EXPECT_EQ(info.rightValue, 30);
    EXPECT_EQ(info.leftTangentX, 0);
    EXPECT_EQ(info.leftTangentY, 0);
    EXPECT_EQ(info.rightTangentX, 0);
    EXPECT_EQ(info.rightTangentY, 0);
    EXPECT_EQ(info.segmentKind, C::LinearSegment);
    EXPECT_EQ(info.selected, 1);
}

TEST(HvRawFCurve, FillsTheFieldsOfTheMaskAndNoOther)
{
    OpenRaw const curve = Full();
    for (unsigned int bit = 1; bit < 0x80; bit *= 2) {
        C::FCurveInfo info{bit, C::Boolean, -9, 99, C::CubicSegment, -9, -9, C::CycleExtrapolation};
        EXPECT_EQ(curve.GetFCurveInfo(&info), 1);
        EXPECT_EQ(info.mask, bit);
        EXPECT_EQ(info.kind, bit == 0x01 ? C::Raw : C::Boolean);
        EXPECT_EQ(info.numKeys, bit == 0x02 ? 4u : 99u);
        EXPECT_EQ(info.valueWhenNoKeys, bit == 0x04 ? 7 : -9);
        EXPECT_EQ(info.defaultSegmentKind, bit == 0x08 ? C::LinearSegment : C::CubicSegment);
        EXPECT_EQ(info.lowerClamp, bit == 0x10 ? -5 : -9);
        EXPECT_EQ(info.upperClamp, bit == 0x20 ? 35 : -9);
        EXPECT_EQ(info.extrapolation,
                  bit == 0x40 ? C::RelativeCycleExtrapolation : C::CycleExtrapolation);
    }
    for (unsigned int bit = 1; bit < 0x400; bit *= 2) {
        C::KeyInfo info{bit, 9, 9, 9, 9, 9, 9, 9, 9, C::CubicSegment, 9};
        EXPECT_EQ(curve.GetKeyInfoFromParameter(2, &info), 1);
        EXPECT_EQ(info.mask, bit);
        EXPECT_EQ(info.index, bit == 0x001 ? 1u : 9u);
        EXPECT_EQ(info.parameter, bit == 0x002 ? 2 : 9);
        EXPECT_EQ(info.leftValue, bit == 0x004 ? 30 : 9);
        EXPECT_EQ(info.rightValue, bit == 0x008 ? 30 : 9);
        EXPECT_EQ(info.leftTangentX, bit == 0x010 ? 0 : 9);
        EXPECT_EQ(info.leftTangentY, bit == 0x020 ? 0 : 9);
        EXPECT_EQ(info.rightTangentX, bit == 0x040 ? 0 : 9);
        EXPECT_EQ(info.rightTangentY, bit == 0x080 ? 0 : 9);
        EXPECT_EQ(info.segmentKind, bit == 0x100 ? C::LinearSegment : C::CubicSegment);
        EXPECT_EQ(info.selected, bit == 0x200 ? 1 : 9);
    }
}

TEST(HvRawFCurve, ClearsTheMaskWithoutAKey)
{
    OpenRaw const curve = Full();
    C::KeyInfo info{};
    info.mask = 0x3FF;
    EXPECT_EQ(curve.GetKeyInfoFromIndex(4, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    info.mask = 0x3FF;
    EXPECT_EQ(curve.GetKeyInfoFromParameter(2.5, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    EXPECT_EQ(curve.GetKeyInfoFromIndex(0, nullptr), 0);
    EXPECT_EQ(curve.GetKeyInfoFromParameter(2, nullptr), 0);
}

// Selection and reading all keys.

TEST(HvRawFCurve, SelectsByTheFlagOfTheKey)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.SetKeySelected(1u, 1), 1);
    EXPECT_EQ(curve.SetKeySelected(4.0, 5), 1);
    EXPECT_NE(curve.Impl().keys[1].flag, 0);
    EXPECT_EQ(curve.Impl().keys[2].flag, 0);
    EXPECT_EQ(curve.IsKeySelected(1u), 0) << "the curve is not selected";
    EXPECT_EQ(curve.HasSelectedKeys(), 0);
    curve.SetSelected(1);
    EXPECT_EQ(curve.IsKeySelected(1u), 1);
    EXPECT_EQ(curve.IsKeySelected(2u), 0);
    EXPECT_EQ(curve.IsKeySelected(4.0), 1);
    EXPECT_EQ(curve.IsKeySelected(4u), 0);
    EXPECT_EQ(curve.HasSelectedKeys(), 1);
    EXPECT_EQ(curve.SetKeySelected(4u, 1), 0);
    EXPECT_EQ(curve.SetKeySelected(2.5, 1), 0);
    curve.SetReadOnlyConstraint(1);
    EXPECT_EQ(curve.SetKeySelected(1u, 0), 1) << "also on a read-only curve";
    EXPECT_EQ(curve.IsKeySelected(1u), 0);
}

TEST(HvRawFCurve, GivesAllKeysOrTheSelectedOnes)
{
    OpenRaw curve = Zigzag();
    curve.SetKeySelected(1u, 1);
    curve.SetKeySelected(3u, 1);
    HvDoubleArray parameters;
    HvDoubleArray left;
    HvDoubleArray right;
    EXPECT_EQ(curve.GetKeys(parameters, left, right, 1), 0u) << "the curve is not selected";
    curve.SetSelected(1);
    EXPECT_EQ(curve.GetKeys(parameters, left, right, 1), 2u);
    EXPECT_EQ(curve.GetKeys(parameters, left, right, 0), 4u);
    ASSERT_EQ(parameters.Size(), 6u) << "appended";
    double const expected[] = {30, 40, 10, 30, 0, 40};
    double const at[] = {2, 4, 1, 2, 3, 4};
    for (unsigned int i = 0; i < 6; ++i) {
        EXPECT_EQ(parameters[i], at[i]);
        EXPECT_EQ(left[i], expected[i]);
        EXPECT_EQ(right[i], expected[i]);
    }
}

// Settings.

TEST(HvRawFCurve, AcceptsTheFourExtrapolations)
{
    OpenRaw curve = Zigzag();
    for (int method = 1; method <= 4; ++method) {
        EXPECT_EQ(curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method)), 1);
        EXPECT_EQ(static_cast<int>(curve.GetExtrapolationMethod()), method);
    }
    for (int const method : {0, 5, -1, 256 + 1}) {
        EXPECT_EQ(curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method)), 0);
    }
    EXPECT_EQ(curve.GetExtrapolationMethod(), C::RelativeCycleExtrapolation);
}

TEST(HvRawFCurve, OnlyStoresTheDefaultTangentFlag)
{
    OpenRaw curve = Zigzag();
    curve.SetReadOnlyConstraint(1);
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(true), 1) << "also on a read-only curve";
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 1);
    EXPECT_EQ(KeysOf(curve), KeysOf(Zigzag()));
    EXPECT_EQ(curve.SetDefaultBezierTangentConstraint(false), 1);
    EXPECT_EQ(curve.IsDefautlBezierTangentConstraintOn(), 0);
}

TEST(HvRawFCurve, CountsTheMemoryOfItsKeys)
{
    OpenRaw curve(7);
    unsigned long const empty = curve.GetDynamicMemSize();
    EXPECT_EQ(empty, 2 * sizeof(CFCSingleValueKey<double>)) << "room for two keys";
    for (int i = 0; i < 5; ++i) {
        curve.CreateKey(i, i);
    }
    EXPECT_EQ(curve.GetDynamicMemSize(), 8 * sizeof(CFCSingleValueKey<double>));
    Tag(curve, 1, 1);
    EXPECT_GT(curve.GetDynamicMemSize(), 8 * sizeof(CFCSingleValueKey<double>));
}

TEST(HvRawFCurve, IsValidWithAscendingKeysAndNumbersOnly)
{
    EXPECT_EQ(OpenRaw(7).Impl().IsValid(), 1);
    EXPECT_EQ(Zigzag().Impl().IsValid(), 1);
    OpenRaw parameters = Zigzag();
    parameters.Impl().keys[1].parameter = 3;
    EXPECT_EQ(parameters.Impl().IsValid(), 0);
    parameters.Impl().keys[1].parameter = kNaN;
    EXPECT_EQ(parameters.Impl().IsValid(), 0);
    OpenRaw values = Zigzag();
    values.Impl().keys[1].value = kNaN;
    EXPECT_EQ(values.Impl().IsValid(), 0);
    OpenRaw fields = Zigzag();
    fields.Impl().valueWhenNoKeys = kNaN;
    EXPECT_EQ(fields.Impl().IsValid(), 0);
    OpenRaw clamps = Zigzag();
    clamps.Impl().lowerClamp = kNaN;
    EXPECT_EQ(clamps.Impl().IsValid(), 0);
}

}  // namespace
