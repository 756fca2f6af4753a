// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Extents to redraw.

#include "flattened.h"

#include <hv/fcurve/internal/CFCSingleValueImpl.h>

#include <gtest/gtest.h>

namespace {

using Extent = HvExtent2<double>;

void ExpectExtent(Extent const& e, double minX, double minY, double maxX, double maxY)
{
    EXPECT_EQ(e.state, Extent::Ordinary);
    EXPECT_EQ(e.min, HvPoint2<double>(minX, minY));
    EXPECT_EQ(e.max, HvPoint2<double>(maxX, maxY));
}

/// Keys at 0 to 6 of the values 0, 10, 20, ... without handles.
HvStdFCurveImpl MakeStairs()
{
    HvStdFCurveImpl impl(0, kLinear);
    for (int i = 0; i < 7; ++i) {
        impl.keys.Add(CFCStdKey(i, i * 10, kLinear));
    }
    return impl;
}

}  // namespace

TEST(CFCBaseImpl_extent, ReachesTwoKeysOnEachSideOfAStandardKey)
{
    auto const impl = MakeStairs();
    Extent e;
    EXPECT_EQ(impl.ComputeKeyExtent(3, e), 1);
    ExpectExtent(e, 1, 10, 5, 50);
    Extent first;
    EXPECT_EQ(impl.ComputeKeyExtent(0, first), 1);
    ExpectExtent(first, 0, 0, 2, 20);
}

TEST(CFCBaseImpl_extent, HoldsBothValuesAndStoredAndEvaluatedHandles)
{
    HvStdFCurveImpl impl(0, kLinear);
    CFCStdKey key(0, 1, kCubic);
    key.rightValue = 4;
    key.leftHandle = {-3, 2};
    key.rightHandle = {2, 9};
    // Flat: the evaluated handles are level with their values, the stored ones stay where they are.
    key.constraints.Set(CFCKeyConstraint::kFlatTangents);
    impl.keys.Add(key);
    Extent e;
    EXPECT_EQ(impl.ComputeKeyExtent(0, e), 1);
    ExpectExtent(e, -3, 1, 2, 9);
}

TEST(CFCBaseImpl_extent, TakesTheNeighboursOfAParameterWithoutTheKeyThere)
{
    auto const impl = MakeStairs();
    Extent between;
    EXPECT_EQ(impl.ComputeNeighboringKeysExtent(2.5, between), 1);
    ExpectExtent(between, 0, 0, 5, 50);
    Extent at;
    EXPECT_EQ(impl.ComputeNeighboringKeysExtent(6, at), 1);
    ExpectExtent(at, 3, 30, 6, 60);
    Extent outside;
    EXPECT_EQ(impl.ComputeNeighboringKeysExtent(-1, outside), 1);
    ExpectExtent(outside, 0, 0, 2, 20);
}

TEST(CFCBaseImpl_extent, ReachesOneKeyOnASteppedCurve)
{
    CFCIntegerImpl impl(0);
    impl.leftValue = -7;
    for (int i = 0; i < 5; ++i) {
        impl.InsertKey(static_cast<unsigned int>(i), {double(i), i * 10, 0}, 0);
    }
    Extent inner;
    EXPECT_EQ(impl.ComputeKeyExtent(3, inner), 1);
    ExpectExtent(inner, 2, 10, 4, 40);
    Extent first;
    EXPECT_EQ(impl.ComputeKeyExtent(0, first), 1);
    ExpectExtent(first, 0, -7, 1, 10);
    Extent all;
    EXPECT_EQ(impl.ComputeAllKeysExtent(all), 1);
    ExpectExtent(all, 0, -7, 4, 40);
}

TEST(CFCBaseImpl_extent, AugmentsAndLeavesTheExtentWhereNoKeyContributes)
{
    auto const impl = MakeStairs();
    Extent e(100, 100, 101, 101);
    EXPECT_EQ(impl.ComputeKeyExtent(2.5, e), 0);
    ExpectExtent(e, 100, 100, 101, 101);
    EXPECT_EQ(impl.ComputeAllKeysExtent(e), 1);
    ExpectExtent(e, 0, 0, 101, 101);

    HvStdFCurveImpl const empty(1, kLinear);
    Extent untouched;
    EXPECT_EQ(empty.ComputeKeyExtent(0, untouched), 0);
    EXPECT_EQ(empty.ComputeNeighboringKeysExtent(0, untouched), 0);
    EXPECT_EQ(empty.ComputeAllKeysExtent(untouched), 0);
    EXPECT_EQ(untouched.state, Extent::Empty);

    HvStdFCurveImpl single(1, kLinear);
    single.keys.Add(CFCStdKey(2, 3, kLinear));
    EXPECT_EQ(single.ComputeNeighboringKeysExtent(2, untouched), 0);
}
