// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The typed arrays: growth, shrinking, aliasing, failed allocations.

#include <hv/foundation/HvDoubleArray.h>

#include <gtest/gtest.h>

TEST(HvTypedArray, HoldsOneElementOfCapacityByDefault)
{
    HvDoubleArray const a;
    EXPECT_EQ(a.Size(), 0u);
    EXPECT_EQ(a.Capacity(), 1u);
}

TEST(HvTypedArray, DoublesItsCapacity)
{
    HvDoubleArray a(2u);
    for (int i = 0; i < 3; ++i) {
        a.Add(i);
    }
    EXPECT_EQ(a.Capacity(), 4u);
    a.Add(3);
    a.Add(4);
    EXPECT_EQ(a.Capacity(), 8u);
}
