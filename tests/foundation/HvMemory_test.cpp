// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Storage of the library: zero-filled blocks, blocks of another size, the hooks, class-scope new
// and delete.

#include <hv/foundation/HvMemory.h>

#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <numeric>

namespace {

struct BlockDeleter {
    void operator()(unsigned char* block) const { HvFree(block); }
};
using Block = std::unique_ptr<unsigned char, BlockDeleter>;

Block MakeBlock(std::size_t size)
{
    return Block(static_cast<unsigned char*>(HvAllocate(size)));
}

/// The block with another size; as it was when there is no memory for it.
void Resize(Block& block, std::size_t size)
{
    auto* const resized = static_cast<unsigned char*>(HvReallocate(block.get(), size));
    static_cast<void>(block.release());
    block.reset(resized);
}

struct Owned : HvAllocated {
    double numbers[8];
};

}  // namespace

TEST(HvMemory, FillsBlocksWithZeros)
{
    // The first round leaves dirty memory behind for the second.
    for (int round = 0; round < 2; ++round) {
        Block const block = MakeBlock(1000);
        for (std::size_t i = 0; i < 1000; ++i) {
            ASSERT_EQ(block.get()[i], 0);
        }
        std::memset(block.get(), 0xA5, 1000);
    }
}

TEST(HvMemory, GivesABlockForNoBytes)
{
    Block const block = MakeBlock(0);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(*block, 0);
}

TEST(HvMemory, KeepsTheBytesOfABlockThatChangesItsSize)
{
    Block block = MakeBlock(8);
    std::iota(block.get(), block.get() + 8, static_cast<unsigned char>(1));
    // Small and large to an allocator, and small again.
    for (std::size_t const size : {300u, 5000000u, 9000000u, 40u, 8u}) {
        Resize(block, size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.get()) % alignof(std::max_align_t), 0u);
        for (std::size_t i = 0; i < 8; ++i) {
            ASSERT_EQ(block.get()[i], i + 1) << size;
        }
        std::memset(block.get() + 8, 0xA5, size - 8);
    }
    Resize(block, 0);
    EXPECT_NE(block, nullptr);
}

TEST(HvMemory, CountsABlockThatChangesItsSizeAsOneForAnother)
{
    AllocationCounter const counter;
    Block block = MakeBlock(24);
    Resize(block, 40);
    EXPECT_EQ(counter.Allocations(), 2);
    EXPECT_EQ(counter.Bytes(), 64u);
    EXPECT_EQ(counter.Live(), 1);
}

TEST(HvMemory, LeavesABlockAsItWasWhenItMayNotChangeItsSize)
{
    AllocationCounter counter;
    Block block = MakeBlock(1);
    *block = 7;
    counter.RefuseAllocation(1);
    EXPECT_THROW(Resize(block, 1000), std::bad_alloc);
    EXPECT_EQ(*block, 7);
    EXPECT_EQ(counter.Live(), 1);
}

TEST(HvMemory, AlignsForEveryStandardType)
{
    for (std::size_t size = 1; size <= 64; ++size) {
        Block const block = MakeBlock(size);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.get()) % alignof(std::max_align_t), 0u);
    }
}

TEST(HvMemory, FreesNullWithoutTellingTheHook)
{
    AllocationCounter const counter;
    HvFree(nullptr);
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvMemory, CountsBlocksAndBytes)
{
    AllocationCounter const counter;
    Block block = MakeBlock(24);
    Block const other = MakeBlock(8);
    EXPECT_EQ(counter.Allocations(), 2);
    EXPECT_EQ(counter.Bytes(), 32u);
    EXPECT_EQ(counter.Live(), 2);
    block.reset();
    EXPECT_EQ(counter.Allocations(), 2);
    EXPECT_EQ(counter.Live(), 1);
}

TEST(HvMemory, RefusesTheToldAllocationOnly)
{
    AllocationCounter counter;
    counter.RefuseAllocation(2);
    Block const first = MakeBlock(1);
    EXPECT_THROW(MakeBlock(1), std::bad_alloc);
    EXPECT_TRUE(counter.HasRefused());
    Block const third = MakeBlock(1);
    EXPECT_EQ(counter.Live(), 2);
}

TEST(HvMemory, GivesObjectsTheStorageOfTheLibrary)
{
    AllocationCounter const counter;
    {
        auto const one = std::make_unique<Owned>();
        std::unique_ptr<Owned[]> const many(new Owned[3]);
        EXPECT_EQ(counter.Live(), 2);
    }
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvMemory, ConstructsObjectsInGivenPlaces)
{
    AllocationCounter const counter;
    alignas(Owned) unsigned char place[sizeof(Owned)];
    Owned* const object = new (static_cast<void*>(place)) Owned();
    object->~Owned();
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvMemory, WalksEachAllocationOfAnOperation)
{
    long refusals = 0;
    long const allocations =
        RefuseEachAllocation([] { return 0; },
                             [](int&) {
                                 Block const a = MakeBlock(1);
                                 Block const b = MakeBlock(2);
                                 Block const c = MakeBlock(3);
                             },
                             [&](int&, bool completed) { refusals += completed ? 0 : 1; });
    EXPECT_EQ(allocations, 3);
    EXPECT_EQ(refusals, 3);
}
