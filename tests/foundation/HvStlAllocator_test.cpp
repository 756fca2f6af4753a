// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The allocator of standard containers.

#include <tests/support/allocation_failure.h>

#include <hv/foundation/HvStlAllocator.h>

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <utility>

namespace {

using Map = std::map<int, int, std::less<int>, HvStlAllocator<std::pair<int const, int>>>;

}  // namespace

TEST(HvStlAllocator, NodesComeFromTheLibrarysStorageAndGoBack)
{
    AllocationCounter const counter;
    {
        Map map;
        EXPECT_EQ(counter.Allocations(), 0);
        map[1] = 2;
        map[3] = 4;
        EXPECT_EQ(counter.Live(), 2);
        Map const copy = map;
        EXPECT_EQ(copy.at(3), 4);
        EXPECT_EQ(counter.Live(), 4);
    }
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvStlAllocator, NodesMoveBetweenContainersWithoutAllocation)
{
    Map first;
    Map second;
    first[1] = 2;
    AllocationCounter const counter;
    second.insert(first.extract(1));
    EXPECT_EQ(second.at(1), 2);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvStlAllocator, SizeBeyondAllMemoryIsRefused)
{
    AllocationCounter const counter;
    std::size_t const most = std::numeric_limits<std::size_t>::max();
    // 2^61 + 1 elements of eight bytes: a product that wraps round would be eight.
    EXPECT_THROW(HvStlAllocator<double>().allocate(most / 8 + 2), std::bad_alloc);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvStlAllocator, AllAreEqual)
{
    EXPECT_TRUE(HvStlAllocator<int>() == HvStlAllocator<double>());
    EXPECT_FALSE(HvStlAllocator<int>() != HvStlAllocator<double>());
}
