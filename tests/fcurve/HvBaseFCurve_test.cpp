// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contract: the order of the virtual slots, the base's own bodies, the guard for hosts.

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvCurveLock.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace {

using Curve = HvBaseFCurve;

#if defined(__GNUC__)

/// The slot of a virtual member in the Itanium ABI: a pointer to such a member holds 1 plus the
/// slot's offset in the table.
template <class Member>
std::ptrdiff_t SlotOf(Member member)
{
    std::ptrdiff_t word = 0;
    static_assert(sizeof member >= sizeof word, "a pointer to member starts with its table offset");
    std::memcpy(&word, &member, sizeof word);
    EXPECT_EQ(word & 1, 1) << "not virtual";
    return (word - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

#define EXPECT_SLOT(slot, name) EXPECT_EQ(SlotOf(&Curve::name), slot) << #name

TEST(HvBaseFCurve, KeepsTheOrderOfItsFirstSlots)
{
    using Assign = Curve& (Curve::*)(Curve const&);
    EXPECT_EQ(SlotOf(static_cast<Assign>(&Curve::operator=)), 0);
    // 1 and 2 are the two entries of the destructor.
    EXPECT_SLOT(3, QueryFCurveKind);
    EXPECT_SLOT(4, GetKind);
    EXPECT_SLOT(5, Clone);
    EXPECT_SLOT(6, SnapShot);
    EXPECT_SLOT(7, CreateKey);
    EXPECT_SLOT(8, MergeAndCreateKey);
    EXPECT_SLOT(9, CreateNonModifyingKey);
    EXPECT_SLOT(10, MergeAndCreateNonModifyingKey);
    EXPECT_SLOT(11, RemoveKey);
    EXPECT_SLOT(12, RemoveKeys);
    EXPECT_SLOT(13, SetValueWhenNoKeys);
    EXPECT_SLOT(14, GetKeyValue);
    EXPECT_SLOT(15, GetKeyValues);
    EXPECT_SLOT(16, SetKeyValue);
    EXPECT_SLOT(17, Cut);
    EXPECT_SLOT(18, RemoveTail);
    EXPECT_SLOT(19, RemoveHead);
    EXPECT_SLOT(20, Append);
    EXPECT_SLOT(21, Paste);
    EXPECT_SLOT(22, ShiftParameters);
    EXPECT_SLOT(23, ScaleParameterAxis);
    EXPECT_SLOT(24, ShiftValues);
    EXPECT_SLOT(25, ReduceNumKeys);
    EXPECT_SLOT(26, GetFCurveInfo);
    EXPECT_SLOT(27, GetKeyInfoFromIndex);
    EXPECT_SLOT(28, GetKeyInfoFromParameter);
    EXPECT_SLOT(29, GetKeyParameter);
    EXPECT_SLOT(30, GetKeyIndex);
    EXPECT_SLOT(31, GetNumKeys);
}

TEST(HvBaseFCurve, KeepsTheOrderOfItsMiddleSlots)
{
    using IsIndex = int (Curve::*)(unsigned int) const;
    using IsParameter = int (Curve::*)(double) const;
    using SetIndex = int (Curve::*)(unsigned int, int);
    using SetParameter = int (Curve::*)(double, int);
    EXPECT_EQ(SlotOf(static_cast<IsIndex>(&Curve::IsKeySelected)), 32);
    EXPECT_EQ(SlotOf(static_cast<IsParameter>(&Curve::IsKeySelected)), 33);
    EXPECT_EQ(SlotOf(static_cast<SetIndex>(&Curve::SetKeySelected)), 34);
    EXPECT_EQ(SlotOf(static_cast<SetParameter>(&Curve::SetKeySelected)), 35);
    EXPECT_SLOT(36, GetKeyParameters);
    EXPECT_SLOT(37, IsKeyParameter);
    EXPECT_SLOT(38, GetAllKeyParameters);
    EXPECT_SLOT(39, GetNextKeyParameter);
    EXPECT_SLOT(40, GetPrevKeyParameter);
    EXPECT_SLOT(41, GetNearestKeyParameter);
    EXPECT_SLOT(42, GetNearestKeyParameterInCenteredInterval);
    EXPECT_SLOT(43, SetClampingValues);
    EXPECT_SLOT(44, GetClampingValues);
    EXPECT_SLOT(45, GetSmallestKeyParameter);
    EXPECT_SLOT(46, IsSmallestKeyParameter);
    EXPECT_SLOT(47, GetMinusInfinityVal);
    EXPECT_SLOT(48, GetLargestKeyParameter);
    EXPECT_SLOT(49, IsLargestKeyParameter);
    EXPECT_SLOT(50, GetPlusInfinityVal);
    EXPECT_SLOT(51, GetValueUpperBound);
    EXPECT_SLOT(52, GetValueLowerBound);
    EXPECT_SLOT(53, Eval);
    EXPECT_SLOT(54, EvalNoLock);
    EXPECT_SLOT(55, EvalSequence);
    EXPECT_SLOT(56, Flatten);
    EXPECT_SLOT(57, FlattenFromTo);
    EXPECT_SLOT(58, GetKeys);
    EXPECT_SLOT(59, ResampleSequence);
    EXPECT_SLOT(60, SmoothSequence);
    EXPECT_SLOT(61, MirrorValues);
    EXPECT_SLOT(62, MirrorParameters);
}

TEST(HvBaseFCurve, KeepsTheOrderOfItsLastSlots)
{
    EXPECT_SLOT(63, ScaleAndOffsetParameters);
    EXPECT_SLOT(64, SetReadOnlyConstraint);
    EXPECT_SLOT(65, IsReadOnly);
    EXPECT_SLOT(66, SetConstraint);
    EXPECT_SLOT(67, GetConstraint);
    EXPECT_SLOT(68, IsConstraintSupported);
    EXPECT_SLOT(69, AreAnyValuesLockedInInterval);
    EXPECT_SLOT(70, AreAnyParametersLockedInInterval);
    EXPECT_SLOT(71, AreAnyKeysLockedInInterval);
    EXPECT_SLOT(72, SetExtrapolationMethod);
    EXPECT_SLOT(73, GetExtrapolationMethod);
    EXPECT_SLOT(74, FoldParameter);
    EXPECT_SLOT(75, GetBufferSize);
    EXPECT_SLOT(76, WriteToBuffer);
    EXPECT_SLOT(77, ReadFromBufferBody);
    EXPECT_SLOT(78, ScaleAndShiftValues);
    EXPECT_SLOT(79, EvalInverse);
    EXPECT_SLOT(80, IsBijective);
    EXPECT_SLOT(81, SetDefaultBezierTangentConstraint);
    EXPECT_SLOT(82, IsDefautlBezierTangentConstraintOn);
    EXPECT_SLOT(83, SetAsTimeFCurve);
    EXPECT_SLOT(84, IsTimeFCurve);
    EXPECT_SLOT(85, Set);
    EXPECT_SLOT(86, IsSelected);
    EXPECT_SLOT(87, SetSelected);
    EXPECT_SLOT(88, HasSelectedKeys);
    EXPECT_SLOT(89, AcquireLocks);
    EXPECT_SLOT(90, ReleaseLocks);
    EXPECT_SLOT(91, GetConstraintByIndex);
    EXPECT_SLOT(92, GetKeyValuesByIndex);
    EXPECT_SLOT(93, GetDynamicMemSize);
}

#undef EXPECT_SLOT

#endif

TEST(HvBaseFCurve, FindsNoSelectedKeysOnACurveThatIsNotSelected)
{
    HvBooleanFCurve curve(0);
    curve.CreateKey(1, 1);
    curve.SetKeySelected(0u, 1);
    EXPECT_EQ(curve.HasSelectedKeys(), 0);
    EXPECT_EQ(curve.HvBaseFCurve::HasSelectedKeys(), 0);
    curve.SetSelected(1);
    EXPECT_EQ(curve.HasSelectedKeys(), 1);
    EXPECT_EQ(curve.HvBaseFCurve::HasSelectedKeys(), 1);
}

TEST(HvBaseFCurve, FindsNoSelectedKeysWithoutKeysOrAmongUnselectedOnes)
{
    HvBooleanFCurve curve(0);
    curve.SetSelected(1);
    EXPECT_EQ(curve.HasSelectedKeys(), 0);
    EXPECT_EQ(curve.HvBaseFCurve::HasSelectedKeys(), 0);
    curve.CreateKey(1, 1);
    curve.CreateKey(2, 1);
    EXPECT_EQ(curve.HasSelectedKeys(), 0);
    curve.SetKeySelected(2.0, 1);
    EXPECT_EQ(curve.HasSelectedKeys(), 1);
    EXPECT_EQ(curve.HvBaseFCurve::HasSelectedKeys(), 1);
}

TEST(HvBaseFCurve, LetsAWriterInWhileItsThreadHoldsTheSection)
{
    HvBooleanFCurve curve(0);
    curve.AcquireLocks();
    EXPECT_EQ(curve.CreateKey(1, 1), 1);
    EXPECT_EQ(curve.EvalNoLock(1, 0), 1);
    curve.ReleaseLocks();
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvBaseFCurve, IsHeldByTheGuardForHosts)
{
    HvBooleanFCurve const curve(1);
    {
        HvCurveLock const lock(curve);
        EXPECT_EQ(curve.EvalNoLock(0, 0), 1);
    }
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvBaseFCurve, CopiesNothingButUserDataThroughItsOwnAssignment)
{
    HvBooleanFCurve curve(0);
    HvBooleanFCurve other(1);
    other.CreateKey(1, 1);
    HvBaseFCurve& base = curve;
    base = other;
    EXPECT_EQ(curve.GetNumKeys(), 0u);
    EXPECT_EQ(curve.Eval(0, 0), 0);
}

}  // namespace
