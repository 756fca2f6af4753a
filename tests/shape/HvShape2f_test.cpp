// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The base of all shapes: its slots, its lock, and what its copies leave alone.

#include <hv/shape/HvShape2f.h>

#include <hv/shape/HvShapeLock.h>

#include "probe_shape.h"
#include "shape_lock_probe.h"
#include "slot_of.h"
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <memory>

#if defined(__x86_64__) && defined(__GNUC__)
namespace {

template <class Result, class... Arguments>
using Reader = Result (HvShape2f::*)(Arguments...) const;

using Point = HvPoint2<float>;
using Interrupt = int (*)();

}  // namespace

TEST(HvShape2f, SlotsStandInTheirOrder)
{
    using S = HvShape2f;
    EXPECT_EQ(SlotOf(static_cast<S& (S::*)(S const&)>(&S::operator=)), 0U);
    EXPECT_EQ(SlotOf(&S::QueryShapeKind), 3U);
    EXPECT_EQ(SlotOf(&S::Clone), 4U);
    EXPECT_EQ(SlotOf(&S::NumPoints), 5U);
    EXPECT_EQ(SlotOf(static_cast<Reader<HvExtent2<float>&, HvExtent2<float>&>>(&S::GetExtent)), 6U);
    EXPECT_EQ(SlotOf(static_cast<Reader<HvExtent2<double>&, HvExtent2<double>&>>(&S::GetExtent)),
              7U);
    EXPECT_EQ(SlotOf(static_cast<Reader<HvExtent2<float>&, HvExtent2<float>&>>(&S::GetTightExtent)),
              8U);
    EXPECT_EQ(
        SlotOf(static_cast<Reader<HvExtent2<double>&, HvExtent2<double>&>>(&S::GetTightExtent)),
        9U);
    EXPECT_EQ(SlotOf(static_cast<Reader<int, unsigned int, Point&>>(&S::GetPoint)), 10U);
    EXPECT_EQ(SlotOf(static_cast<Reader<Point, unsigned int>>(&S::GetPoint)), 11U);
    EXPECT_EQ(
        SlotOf(static_cast<Reader<Point*, unsigned int, unsigned int, Point*>>(&S::GetPoints)),
        12U);
    using PointD = HvPoint2<double>;
    EXPECT_EQ(
        SlotOf(static_cast<Reader<PointD*, unsigned int, unsigned int, PointD*>>(&S::GetPoints)),
        13U);
    EXPECT_EQ(SlotOf(&S::GetClosePointIndex), 14U);
    EXPECT_EQ(SlotOf(&S::GetPointsInExtentIndices), 15U);
    EXPECT_EQ(SlotOf(&S::IsIntersectingExtent), 16U);
    EXPECT_EQ(SlotOf(&S::IsInteriorIntersectingExtent), 17U);
    EXPECT_EQ(SlotOf(&S::IntersectSamplePointsExtent), 18U);
    EXPECT_EQ(SlotOf(&S::Translate), 19U);
    EXPECT_EQ(SlotOf(&S::Rotate), 20U);
    EXPECT_EQ(SlotOf(&S::Scale), 21U);
    EXPECT_EQ(SlotOf(&S::ShearX), 22U);
    EXPECT_EQ(SlotOf(&S::ShearY), 23U);
    EXPECT_EQ(SlotOf(&S::Transform), 24U);
    EXPECT_EQ(SlotOf(&S::Flatten), 25U);
    EXPECT_EQ(SlotOf(&S::Sample), 26U);
    EXPECT_EQ(SlotOf(&S::Fill), 27U);
    EXPECT_EQ(SlotOf(&S::AAFill), 28U);
    EXPECT_EQ(SlotOf(&S::SoftFill), 29U);
    EXPECT_EQ(SlotOf(&S::Stroke), 30U);
    EXPECT_EQ(SlotOf(&S::WriteToBuffer), 31U);
    EXPECT_EQ(SlotOf(&S::GetBufferSize), 32U);
    EXPECT_EQ(SlotOf(&S::ReadFromBufferBody), 33U);
}
#endif

TEST(HvShape2f, HoldsTheLockAlone)
{
    // The virtual table's pointer, then the lock.
    EXPECT_EQ(sizeof(HvShape2f), sizeof(void*) + sizeof(CXQCriticalSection));
}

TEST(HvShape2f, StorageIsTheLibrarysOwn)
{
    AllocationCounter const counter;
    std::unique_ptr<HvShape2f> const shape(new ProbeShape);
    EXPECT_EQ(counter.Allocations(), 1);
    std::unique_ptr<HvShape2f> const clone(shape->Clone());
    EXPECT_EQ(counter.Allocations(), 2);
}

TEST(HvShape2f, LockCountsItsDepth)
{
    ProbeShape const shape;
    HvShapeLock const outer(shape);
    EXPECT_EQ(HvShapeLock::Depth(shape), 1);
    {
        HvShapeLock const inner(shape);
        EXPECT_EQ(HvShapeLock::Depth(shape), 2);
        HvShapeSection const section(shape);
        EXPECT_EQ(HvShapeLock::Depth(shape), 2);
    }
    EXPECT_EQ(HvShapeLock::Depth(shape), 1);
}

TEST(HvShape2f, CopyOfAHeldShapeIsFree)
{
    ProbeShape const shape;
    HvShapeLock const held(shape);
    ProbeShape const copy(shape);
    EXPECT_EQ(HvShapeLock::Depth(copy), 0);
    EXPECT_EQ(HvShapeLock::Depth(shape), 1);
}

TEST(HvShape2f, AssignmentCopiesNothing)
{
    ProbeShape target;
    ProbeShape const source;
    HvShapePairLock const held(target, source);
    HvShapeLock const again(target);
    EXPECT_EQ(&target.operator=(static_cast<HvShape2f const&>(source)), &target);
    EXPECT_EQ(HvShapeLock::Depth(target), 2);
    EXPECT_EQ(HvShapeLock::Depth(source), 1);
    HvShape2f& base = target;
    EXPECT_EQ(&(base = target), &target);
    EXPECT_EQ(HvShapeLock::Depth(target), 2);
}

TEST(HvShape2f, CopyAndAssignmentWaitForTheirSource)
{
    ProbeShape const source;
    EXPECT_TRUE(ShapeLockProbe_Waits(source, true, [&] { ProbeShape const copy(source); }));
    ProbeShape target;
    auto const assign = [&] { target.operator=(static_cast<HvShape2f const&>(source)); };
    EXPECT_TRUE(ShapeLockProbe_Waits(source, true, assign));
    EXPECT_TRUE(ShapeLockProbe_Waits(target, true, assign));
    EXPECT_TRUE(ShapeLockProbe_IsFree(source));
    EXPECT_TRUE(ShapeLockProbe_IsFree(target));
}

TEST(HvShape2f, PairOfOneShapeIsHeldTwice)
{
    ProbeShape const shape;
    {
        HvShapePairLock const held(shape, shape);
        EXPECT_EQ(HvShapeLock::Depth(shape), 2);
    }
    EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
}
