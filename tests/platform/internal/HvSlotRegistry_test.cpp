// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Numbers and generations of the slots. The registries here count generations in a byte, so that a
// number's whole life fits into a test; segments are never given back, hence the static storage.

#include <hv/platform/internal/HvSlotRegistry.h>

#include <gtest/gtest.h>

#include <set>

namespace {

using Registry = HvSlotRegistry<std::uint8_t>;

}  // namespace

TEST(HvSlotRegistry, NumbersStartAtZeroAndAreDense)
{
    static Registry registry;
    for (unsigned int k = 0; k < 2000; ++k) {
        ASSERT_EQ(registry.Allocate(), k);
    }
}

TEST(HvSlotRegistry, FreedNumberComesBackInAnotherLife)
{
    static Registry registry;
    unsigned int const slot = registry.Allocate();
    std::uint8_t const first = registry.GenerationOf(slot);
    EXPECT_TRUE(Registry::IsAlive(first));
    registry.Free(slot);
    EXPECT_FALSE(Registry::IsAlive(registry.GenerationOf(slot)));
    EXPECT_EQ(registry.Allocate(), slot);
    EXPECT_TRUE(Registry::IsAlive(registry.GenerationOf(slot)));
    EXPECT_NE(registry.GenerationOf(slot), first);
}

TEST(HvSlotRegistry, FreeingTwiceOrAnUnknownNumberDoesNothing)
{
    static Registry registry;
    registry.Free(0);
    registry.Free(0xFFFFFFFFU);
    unsigned int const first = registry.Allocate();
    unsigned int const second = registry.Allocate();
    registry.Free(first);
    registry.Free(first);
    registry.Free(1000);
    EXPECT_EQ(registry.Allocate(), first);
    EXPECT_NE(registry.Allocate(), second);
}

TEST(HvSlotRegistry, GenerationOfUnknownNumbersIsZero)
{
    static Registry registry;
    EXPECT_EQ(registry.GenerationOf(0), 0);
    EXPECT_EQ(registry.GenerationOf(0xFFFFFFFFU), 0);
    registry.Allocate();
    EXPECT_EQ(registry.GenerationOf(1), 0);    // within the first segment
    EXPECT_EQ(registry.GenerationOf(256), 0);  // beyond it
}

// Generations 1, 3, ... 253 are lives, 254 is the end: a life that began at 255 would be followed
// by generation 0 and by 1 again.
TEST(HvSlotRegistry, NumberWhoseGenerationsAreUsedUpIsRetired)
{
    static Registry registry;
    std::set<int> generations;
    for (int life = 0; life < 127; ++life) {
        unsigned int const slot = registry.Allocate();
        ASSERT_EQ(slot, 0u) << life;
        EXPECT_TRUE(generations.insert(registry.GenerationOf(slot)).second) << life;
        registry.Free(slot);
    }
    EXPECT_EQ(registry.Allocate(), 1u);
    EXPECT_FALSE(Registry::IsAlive(registry.GenerationOf(0)));
    registry.Free(0);
    EXPECT_EQ(registry.Allocate(), 2u);
}

TEST(HvSlotRegistry, RefusedSegmentChangesNothing)
{
    static Registry registry;
    HvRawStorage_SetRefusal([](std::size_t) { return 0; });
    EXPECT_THROW(registry.Allocate(), std::bad_alloc);
    HvRawStorage_SetRefusal(nullptr);
    for (unsigned int k = 0; k < 256; ++k) {
        ASSERT_EQ(registry.Allocate(), k);
    }
    HvRawStorage_SetRefusal([](std::size_t) { return 0; });
    EXPECT_THROW(registry.Allocate(), std::bad_alloc);
    registry.Free(7);
    EXPECT_EQ(registry.Allocate(), 7u);  // needs no storage
    HvRawStorage_SetRefusal(nullptr);
    EXPECT_EQ(registry.Allocate(), 256u);
}
