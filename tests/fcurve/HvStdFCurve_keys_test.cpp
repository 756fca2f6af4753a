// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvDoubleArray.h>
#include <tests/fcurve/std_curve.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

using Point = HvPoint2<double>;
using Word = CFCKeyConstraint;

constexpr HvBaseFCurve::FSKind kConstant = HvBaseFCurve::ConstantSegment;
constexpr HvBaseFCurve::FSKind kLinear = HvBaseFCurve::LinearSegment;
constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr HvBaseFCurve::KeySide kLeft = HvBaseFCurve::Left;
constexpr HvBaseFCurve::KeySide kRight = HvBaseFCurve::Right;
constexpr HvBaseFCurve::KeySide kNoSide = HvBaseFCurve::KeySide(3);

/// Keys at 0, 1 and 2 of kinds constant, linear and cubic; before them linear.
StdCurve ThreeKinds()
{
    StdCurve curve(
        {KeyAt(0, 10, 20, kConstant), KeyAt(1, 30, 40, kLinear), KeyAt(2, 50, 60, kCubic)});
    curve.SetFirstSegmentKind(kLinear);
    return curve;
}

}  // namespace

TEST(HvStdFCurve_keys, TellsValuesOnBothSides)
{
    StdCurve const curve = ThreeKinds();
    double value = -1;
    EXPECT_EQ(curve.GetKeyValue(1.1, kLeft, value, 0.2), 1);
    EXPECT_EQ(value, 30);
    EXPECT_EQ(curve.GetKeyValue(1.1, kRight, value, 0.2), 1);
    EXPECT_EQ(value, 40);
    EXPECT_EQ(curve.GetKeyValue(1.3, kRight, value, 0.2), 0);
    EXPECT_EQ(curve.GetKeyValue(1, kNoSide, value, 0.2), 0);
    EXPECT_EQ(value, 40);
    double left = -1;
    double right = -1;
    EXPECT_EQ(curve.GetKeyValues(0.5, left, right, 0.5), 1);  // a tie: the earlier key
    EXPECT_EQ(left, 10);
    EXPECT_EQ(right, 20);
    EXPECT_EQ(curve.GetKeyValuesByIndex(2, left, right), 1);
    EXPECT_EQ(left, 50);
    EXPECT_EQ(right, 60);
    EXPECT_EQ(curve.GetKeyValuesByIndex(3, left, right), 0);
    EXPECT_EQ(curve.GetMinusInfinityVal(), 10);
    EXPECT_EQ(curve.GetPlusInfinityVal(), 60);
    EXPECT_EQ(HvStdFCurve(4, kCubic).GetMinusInfinityVal(), 4);
    EXPECT_EQ(HvStdFCurve(4, kCubic).GetPlusInfinityVal(), 4);
}

TEST(HvStdFCurve_keys, TellsTheKindsOfSpans)
{
    StdCurve const curve = ThreeKinds();
    HvBaseFCurve::FSKind const lefts[] = {kLinear, kConstant, kLinear};
    HvBaseFCurve::FSKind const rights[] = {kConstant, kLinear, kCubic};
    for (unsigned i = 0; i < 3; ++i) {
        HvBaseFCurve::FSKind left{};
        HvBaseFCurve::FSKind right{};
        EXPECT_EQ(curve.GetSegmentKindByIndex(i, kLeft, left), 1);
        EXPECT_EQ(curve.GetSegmentKindByIndex(i, kRight, right), 1);
        EXPECT_EQ(left, lefts[i]);
        EXPECT_EQ(right, rights[i]);
        EXPECT_EQ(curve.GetSegmentKindsByIndex(i, right, left), 1);
        EXPECT_EQ(right, lefts[i]);
        EXPECT_EQ(left, rights[i]);
        EXPECT_EQ(curve.GetSegmentKind(i + 0.1, kLeft, left, 0.1001), 1);
        EXPECT_EQ(left, lefts[i]);
        EXPECT_EQ(curve.GetSegmentKinds(i, left, right, 0), 1);
        EXPECT_EQ(left, lefts[i]);
        EXPECT_EQ(right, rights[i]);
    }
    HvBaseFCurve::FSKind kind = kCubic;
    EXPECT_EQ(curve.GetSegmentKindByIndex(3, kLeft, kind), 0);
    EXPECT_EQ(curve.GetSegmentKindByIndex(0, kNoSide, kind), 0);
    EXPECT_EQ(curve.GetSegmentKindsByIndex(3, kind, kind), 0);
    EXPECT_EQ(curve.GetSegmentKind(0.5, kLeft, kind, 0.1), 0);
    EXPECT_EQ(curve.GetSegmentKind(0, kNoSide, kind, 0.1), 0);
    EXPECT_EQ(curve.GetSegmentKinds(0.5, kind, kind, 0.1), 0);
    EXPECT_EQ(HvStdFCurve(1, kLinear).GetSegmentKindByIndex(0, kLeft, kind), 0);
    EXPECT_EQ(kind, kCubic);
}

TEST(HvStdFCurve_keys, TellsTheKindAtAParameter)
{
    StdCurve const curve = ThreeKinds();
    std::pair<double, HvBaseFCurve::FSKind> const table[] = {
        {-1, kLinear},  {0, kConstant}, {0.5, kConstant}, {1, kLinear},
        {1.9, kLinear}, {2, kCubic},    {9, kCubic}};
    for (auto const& row : table) {
        EXPECT_EQ(curve.GetSegmentKindAtParameter(row.first), row.second) << row.first;
    }
    EXPECT_EQ(HvStdFCurve(1, kLinear).GetSegmentKindAtParameter(0), kLinear);
}

TEST(HvStdFCurve_keys, IsUniformWhenAllSpansAgree)
{
    HvBaseFCurve::FSKind kind = kConstant;
    EXPECT_EQ(HvStdFCurve(1, kLinear).HasUniformSegmentKind(kind), 1);
    EXPECT_EQ(kind, kLinear);
    EXPECT_EQ(HvStdFCurve(0, 0, 1, 1, kLinear, kLinear).HasUniformSegmentKind(kind = kConstant), 1);
    EXPECT_EQ(kind, kLinear);
    EXPECT_EQ(HvStdFCurve(0, 0, 1, 1, kCubic, kLinear).HasUniformSegmentKind(kind), 0);
    EXPECT_EQ(HvStdFCurve(0, 0, 1, 1, kLinear, kCubic).HasUniformSegmentKind(kind), 0);
    EXPECT_EQ(kind, kLinear);
}

TEST(HvStdFCurve_keys, GivesHandlesAsVectors)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(3, 10, 20, kCubic), KeyAt(6, 0, 0, kCubic)});
    CFCStdKey& key = curve.Impl().keys[1];
    key.leftHandle = Point(2, 7);
    key.rightHandle = Point(5, 21);
    Point handle;
    Point left;
    Point right;
    EXPECT_EQ(curve.GetActualKeyTgtHandle(3.1, kLeft, handle, 0.2), 1);
    EXPECT_EQ(handle, Point(-1, -3));
    EXPECT_EQ(curve.GetActualKeyTgtHandle(3, kRight, handle, 0), 1);
    EXPECT_EQ(handle, Point(2, 1));
    EXPECT_EQ(curve.GetActualKeyTgtHandles(3, left, right, 0), 1);
    EXPECT_EQ(left, Point(-1, -3));
    EXPECT_EQ(right, Point(2, 1));
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandles(3, left, right, 0), 1);
    EXPECT_EQ(left, Point(-1, -3));

    key.constraints.Set(Word::kFlatTangents);
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandle(3, kLeft, handle, 0), 1);
    EXPECT_EQ(handle, Point(-1, 0));
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandle(3, kRight, handle, 0), 1);
    EXPECT_EQ(handle, Point(2, 0));
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandlesByIndex(1, left, right), 1);
    EXPECT_EQ(left, Point(-1, 0));
    EXPECT_EQ(right, Point(2, 0));
    EXPECT_EQ(curve.GetActualKeyTgtHandle(3, kLeft, handle, 0), 1);
    EXPECT_EQ(handle, Point(-1, -3));

    EXPECT_EQ(curve.GetActualKeyTgtHandle(4, kLeft, handle, 0.5), 0);
    EXPECT_EQ(curve.GetActualKeyTgtHandle(3, kNoSide, handle, 0), 0);
    EXPECT_EQ(curve.GetActualKeyTgtHandles(4, left, right, 0.5), 0);
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandle(4, kLeft, handle, 0.5), 0);
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandle(3, kNoSide, handle, 0), 0);
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandles(4, left, right, 0.5), 0);
    EXPECT_EQ(curve.GetEvaluatedKeyTgtHandlesByIndex(3, left, right), 0);
    EXPECT_EQ(handle, Point(-1, -3));
    EXPECT_EQ(left, Point(-1, 0));
}

TEST(HvStdFCurve_keys, FillsTheKeyInfoThatIsAskedFor)
{
    StdCurve curve = ThreeKinds();
    CFCStdKey& key = curve.Impl().keys[1];
    key.leftHandle = Point(0.5, 27);
    key.rightHandle = Point(1.25, 44);
    key.constraints.Set(Word::kSelected);
    curve.SetSelected(1);
    HvBaseFCurve::KeyInfo info{0xFFF, 0, 0, 0, 0, 0, 0, 0, 0, {}, 0};
    EXPECT_EQ(curve.GetKeyInfoFromIndex(1, &info), 1);
    EXPECT_EQ(info.mask, 0xFFFu);
    EXPECT_EQ(info.index, 1u);
    EXPECT_EQ(info.parameter, 1);
    EXPECT_EQ(info.leftValue, 30);
    EXPECT_EQ(info.rightValue, 40);
    EXPECT_EQ(info.leftTangentX, -0.5);
    EXPECT_EQ(info.leftTangentY, -3);
    EXPECT_EQ(info.rightTangentX, 0.25);
    EXPECT_EQ(info.rightTangentY, 4);
    EXPECT_EQ(info.segmentKind, kLinear);
    EXPECT_EQ(info.selected, 1);
    curve.SetSelected(0);
    info.mask = 0x200;
    EXPECT_EQ(curve.GetKeyInfoFromParameter(1, &info), 1);
    EXPECT_EQ(info.selected, 0);

    HvBaseFCurve::KeyInfo const untouched{0, 7, 7, 7, 7, 7, 7, 7, 7, kCubic, 7};
    for (unsigned bit = 0; bit < 10; ++bit) {
        info = untouched;
        info.mask = 1u << bit;
        EXPECT_EQ(curve.GetKeyInfoFromIndex(1, &info), 1);
        EXPECT_EQ(info.index != 7, bit == 0);
        EXPECT_EQ(info.parameter != 7, bit == 1);
        EXPECT_EQ(info.leftValue != 7, bit == 2);
        EXPECT_EQ(info.rightValue != 7, bit == 3);
        EXPECT_EQ(info.leftTangentX != 7, bit == 4);
        EXPECT_EQ(info.leftTangentY != 7, bit == 5);
        EXPECT_EQ(info.rightTangentX != 7, bit == 6);
        EXPECT_EQ(info.rightTangentY != 7, bit == 7);
        EXPECT_EQ(info.segmentKind != kCubic, bit == 8);
        EXPECT_EQ(info.selected != 7, bit == 9);
    }
    info.mask = 0x3FF;
    EXPECT_EQ(curve.GetKeyInfoFromIndex(3, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    info.mask = 0x3FF;
    EXPECT_EQ(curve.GetKeyInfoFromParameter(1.0000001, &info), 0);
    EXPECT_EQ(info.mask, 0u);
    EXPECT_EQ(curve.GetKeyInfoFromIndex(0, nullptr), 0);
    EXPECT_EQ(curve.GetKeyInfoFromParameter(0, nullptr), 0);
}

TEST(HvStdFCurve_keys, ReadsEachConstraintByItsBits)
{
    std::pair<int, unsigned short> const table[] = {
        {1, 0x0004},    {2, 0x0002},    {4, 0x0001},    {8, 0x0008},   {16, 0x0010},
        {32, 0x001E},   {64, 0x0020},   {128, 0x0040},  {256, 0x0080}, {512, 0x0100},
        {1024, 0x0200}, {2048, 0x0400}, {4096, 0x0800}, {8192, 0x1000}};
    StdCurve curve({KeyAt(1, 0, 0, kCubic)});
    CFCKeyConstraint& constraints = curve.Impl().keys[0].constraints;
    for (auto const& set : table) {
        constraints.word = set.second;
        for (auto const& asked : table) {
            auto const constraint = HvBaseFCurve::KeyConstraint(asked.first);
            bool const expected = (asked.second & set.second) == asked.second;
            double x = 1.05;
            int on = -1;
            EXPECT_EQ(curve.GetConstraint(x, constraint, on, 0.1), 1);
            EXPECT_EQ(on, expected ? 1 : 0) << asked.first << " of " << set.first;
            EXPECT_EQ(x, 1);
            EXPECT_EQ(curve.GetConstraintByIndex(0, constraint, on = -1), 1);
            EXPECT_EQ(on, expected ? 1 : 0);
            EXPECT_EQ(curve.IsConstraintSupported(constraint), 1);
        }
    }
    // What is no single known constraint is not set.
    constraints.word = 0xFFFF;
    for (int odd : {0, 3, 16384, -1}) {
        int on = -1;
        EXPECT_EQ(curve.GetConstraintByIndex(0, HvBaseFCurve::KeyConstraint(odd), on), 1);
        EXPECT_EQ(on, 0);
    }
    // All but one of the four locks is not all.
    constraints.word = 0x0016;
    int on = -1;
    EXPECT_EQ(curve.GetConstraintByIndex(0, HvBaseFCurve::AllLocked, on), 1);
    EXPECT_EQ(on, 0);
    double x = 2;
    EXPECT_EQ(curve.GetConstraint(x, HvBaseFCurve::AllLocked, on = -1, 0.5), 0);
    EXPECT_EQ(curve.GetConstraintByIndex(1, HvBaseFCurve::AllLocked, on), 0);
    EXPECT_EQ(x, 2);
    EXPECT_EQ(on, -1);
}

TEST(HvStdFCurve_keys, TellsContinuityLocks)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(1, 0, 0, kCubic)});
    curve.Impl().keys[1].constraints.word = Word::kTangentLengthContinuityLocked;
    EXPECT_EQ(curve.IsTangentContinuityLocked(0.1, 0.2), 1);
    EXPECT_EQ(curve.IsTangentContinuityLocked(1, 0), 0);
    EXPECT_EQ(curve.IsTangentContinuityLocked(0.5, 0.1), 0);
    EXPECT_EQ(curve.IsTangentContinuityLockedByIndex(0), 1);
    EXPECT_EQ(curve.IsTangentContinuityLockedByIndex(1), 0);
    EXPECT_EQ(curve.IsTangentContinuityLockedByIndex(2), 0);
    EXPECT_EQ(curve.IsTangentLengthContinuityLocked(0, 0), 0);
    EXPECT_EQ(curve.IsTangentLengthContinuityLocked(1.1, 0.2), 1);
    EXPECT_EQ(curve.IsTangentLengthContinuityLockedByIndex(0), 0);
    EXPECT_EQ(curve.IsTangentLengthContinuityLockedByIndex(1), 1);
    EXPECT_EQ(curve.IsTangentLengthContinuityLockedByIndex(2), 0);
}

TEST(HvStdFCurve_keys, TellsLocksInAnInterval)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(1, 0, 0, kCubic), KeyAt(2, 0, 0, kCubic)});
    auto const answers = [&curve](double from, double to, int openFrom, int openTo) {
        return curve.AreAnyValuesLockedInInterval(from, to, openFrom, openTo) +
               10 * curve.AreAnyParametersLockedInInterval(from, to, openFrom, openTo) +
               100 * curve.AreAnyTgtDirectionsLockedInInterval(from, to, openFrom, openTo) +
               1000 * curve.AreAnyTgtLengthsLockedInInterval(from, to, openFrom, openTo) +
               10000 * curve.AreAnyKeysLockedInInterval(from, to, openFrom, openTo);
    };
    CFCKeyConstraint& constraints = curve.Impl().keys[1].constraints;
    std::pair<unsigned short, int> const table[] = {{0x0001, 0},     {0x0002, 1},    {0x0004, 10},
                                                    {0x0008, 100},   {0x0010, 1000}, {0x0016, 1011},
                                                    {0x001E, 11111}, {0xFFE1, 0}};
    for (auto const& row : table) {
        constraints.word = row.first;
        EXPECT_EQ(answers(0, 2, 0, 0), row.second);
        EXPECT_EQ(answers(1, 1, 0, 0), row.second);
        EXPECT_EQ(answers(1, 2, 1, 0), 0);
        EXPECT_EQ(answers(0, 1, 0, 1), 0);
        EXPECT_EQ(answers(1, 1, 1, 0), 0);
        EXPECT_EQ(answers(1.5, 9, 0, 0), 0);
    }
    EXPECT_EQ(HvStdFCurve(0, kCubic).AreAnyTgtLengthsLockedInInterval(0, 1, 0, 0), 0);
}

TEST(HvStdFCurve_keys, AppendsTheTableOfKeys)
{
    StdCurve curve = ThreeKinds();
    curve.Impl().keys[1].constraints.Set(Word::kSelected);
    HvDoubleArray x(1);
    HvDoubleArray left(1);
    HvDoubleArray right(1);
    x.Add(77);
    EXPECT_EQ(curve.GetKeys(x, left, right, 0), 3u);
    ASSERT_EQ(x.Size(), 4u);
    EXPECT_EQ(x[3], 2);
    EXPECT_EQ(left[2], 50);
    EXPECT_EQ(right[2], 60);
    // The curve's own selection gates that of its keys.
    EXPECT_EQ(curve.GetKeys(x, left, right, 1), 0u);
    curve.SetSelected(1);
    EXPECT_EQ(curve.GetKeys(x, left, right, 1), 1u);
    EXPECT_EQ(x[4], 1);
    EXPECT_EQ(left[3], 30);
    EXPECT_EQ(right[3], 40);
}

TEST(HvStdFCurve_keys, EmptiesTheTableOfKeysWhenMemoryRunsOut)
{
    StdCurve const curve = ThreeKinds();
    for (long n = 1;; ++n) {
        HvDoubleArray x(1);
        HvDoubleArray left(1);
        HvDoubleArray right(1);
        x.Add(77);
        AllocationCounter counter;
        counter.RefuseAllocation(n);
        unsigned const count = curve.GetKeys(x, left, right, 0);
        if (!counter.HasRefused()) {
            EXPECT_EQ(count, 3u);
            break;
        }
        EXPECT_EQ(count, 0u);
        EXPECT_EQ(x.Size(), 0u);
        EXPECT_EQ(left.Size(), 0u);
        EXPECT_EQ(right.Size(), 0u);
    }
}
