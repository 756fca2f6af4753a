// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Thread-local slots.

#include "run_threads.h"

#include <hv/platform/internal/raw_storage.h>
#include <hv/platform/thread_local_slots.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <vector>

namespace {

void* AsPointer(std::uintptr_t value)
{
    return reinterpret_cast<void*>(value);
}

std::atomic<int> allocations{0};

int CountAllocation(std::size_t)
{
    ++allocations;
    return 1;
}

class AllocationCount {
public:
    AllocationCount()
    {
        allocations = 0;
        HvRawStorage_SetRefusal(&CountAllocation);
    }
    ~AllocationCount() { HvRawStorage_SetRefusal(nullptr); }
    int Value() const { return allocations.load(); }
};

// Stores on the destruction of the thread, after the thread's own pages may have gone.
struct LateUser {
    unsigned int slot = 0;
    int* stored = nullptr;
    void** read = nullptr;
    ~LateUser()
    {
        if (stored != nullptr) {
            *stored = XQTlsSetValue(slot, AsPointer(3));
            *read = XQTlsGetValue(slot);
        }
    }
};

}  // namespace

TEST(thread_local_slots, NewSlotReadsNull)
{
    unsigned int const slot = XQTlsAlloc();
    EXPECT_EQ(XQTlsGetValue(slot), nullptr);
    XQTlsFree(slot);
}

TEST(thread_local_slots, StoredPointerIsReadBack)
{
    unsigned int const first = XQTlsAlloc();
    unsigned int const second = XQTlsAlloc();
    EXPECT_NE(first, second);
    EXPECT_EQ(XQTlsSetValue(first, AsPointer(1)), 1);
    EXPECT_EQ(XQTlsSetValue(second, AsPointer(UINTPTR_MAX)), 1);
    EXPECT_EQ(XQTlsGetValue(first), AsPointer(1));
    EXPECT_EQ(XQTlsGetValue(second), AsPointer(UINTPTR_MAX));
    EXPECT_EQ(XQTlsSetValue(first, nullptr), 1);
    EXPECT_EQ(XQTlsGetValue(first), nullptr);
    XQTlsFree(first);
    XQTlsFree(second);
}

TEST(thread_local_slots, FreedSlotReadsNullAndRefuses)
{
    unsigned int const slot = XQTlsAlloc();
    XQTlsSetValue(slot, AsPointer(1));
    XQTlsFree(slot);
    EXPECT_EQ(XQTlsGetValue(slot), nullptr);
    EXPECT_EQ(XQTlsSetValue(slot, AsPointer(2)), 0);
    EXPECT_EQ(XQTlsSetValue(slot, nullptr), 0);
    EXPECT_EQ(XQTlsGetValue(slot), nullptr);
}

TEST(thread_local_slots, NumberNeverGivenOutReadsNullAndRefuses)
{
    for (unsigned int const slot : {100000000U, 0x7FFFFFFFU, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        EXPECT_EQ(XQTlsGetValue(slot), nullptr);
        EXPECT_EQ(XQTlsSetValue(slot, AsPointer(1)), 0);
        XQTlsFree(slot);
    }
}

TEST(thread_local_slots, FreedNumberIsUsedAgainAndReadsNull)
{
    unsigned int const slot = XQTlsAlloc();
    XQTlsSetValue(slot, AsPointer(1));
    XQTlsFree(slot);
    ASSERT_EQ(XQTlsAlloc(), slot);
    EXPECT_EQ(XQTlsGetValue(slot), nullptr);
    EXPECT_EQ(XQTlsSetValue(slot, AsPointer(2)), 1);
    EXPECT_EQ(XQTlsGetValue(slot), AsPointer(2));
    XQTlsFree(slot);
}

TEST(thread_local_slots, MillionSlotsAreAliveAtOnce)
{
    constexpr unsigned int kSlots = 1000000;
    std::vector<unsigned int> slots(kSlots);
    for (unsigned int& slot : slots) {
        slot = XQTlsAlloc();
    }
    unsigned int stored = 0;
    for (unsigned int k = 0; k < kSlots; ++k) {
        stored += static_cast<unsigned int>(XQTlsSetValue(slots[k], AsPointer(k + 1)));
    }
    EXPECT_EQ(stored, kSlots);
    unsigned int right = 0;
    for (unsigned int k = 0; k < kSlots; ++k) {
        right += XQTlsGetValue(slots[k]) == AsPointer(k + 1) ? 1 : 0;
    }
    EXPECT_EQ(right, kSlots);
    for (unsigned int const slot : slots) {
        XQTlsFree(slot);
    }
}

TEST(thread_local_slots, ReadingAllocatesNothing)
{
    std::vector<unsigned int> slots;
    for (int k = 0; k < 1000; ++k) {
        slots.push_back(XQTlsAlloc());
    }
    AllocationCount const count;
    std::thread([&slots] {
        for (unsigned int const slot : slots) {
            EXPECT_EQ(XQTlsGetValue(slot), nullptr);
            EXPECT_EQ(XQTlsSetValue(slot, nullptr), 1);
        }
    }).join();
    EXPECT_EQ(count.Value(), 0);
    for (unsigned int const slot : slots) {
        XQTlsFree(slot);
    }
}

// A list of pages and one page; nothing more for the other numbers of the page.
TEST(thread_local_slots, ThreadPaysByTheNumbersThatItUses)
{
    std::vector<unsigned int> slots;
    for (int k = 0; k < 100000; ++k) {
        slots.push_back(XQTlsAlloc());
    }
    AllocationCount const count;
    std::thread([&slots] {
        XQTlsSetValue(slots.back(), AsPointer(1));
        XQTlsSetValue(slots.back(), AsPointer(2));
        EXPECT_EQ(XQTlsGetValue(slots.back()), AsPointer(2));
        EXPECT_EQ(XQTlsGetValue(slots.front()), nullptr);
    }).join();
    EXPECT_EQ(count.Value(), 2);
    for (unsigned int const slot : slots) {
        XQTlsFree(slot);
    }
}

TEST(thread_local_slots, RefusedAllocationStoresNothing)
{
    unsigned int const slot = XQTlsAlloc();
    static std::atomic<int> allowed{0};
    std::thread([slot] {
        for (int n = 0; n < 2; ++n) {
            allowed = n;
            HvRawStorage_SetRefusal([](std::size_t) { return allowed-- > 0 ? 1 : 0; });
            EXPECT_EQ(XQTlsSetValue(slot, AsPointer(1)), 0) << n;
            EXPECT_EQ(XQTlsGetValue(slot), nullptr) << n;
            HvRawStorage_SetRefusal(nullptr);
        }
        EXPECT_EQ(XQTlsSetValue(slot, AsPointer(1)), 1);
        EXPECT_EQ(XQTlsGetValue(slot), AsPointer(1));
    }).join();
    XQTlsFree(slot);
}

TEST(thread_local_slots, RefusedAllocationOfASlotThrows)
{
    std::vector<unsigned int> slots;
    HvRawStorage_SetRefusal([](std::size_t) { return 0; });
    // Numbers that were used before come without storage; when they are gone a segment is wanted.
    EXPECT_THROW(
        for (;;) { slots.push_back(XQTlsAlloc()); }, std::bad_alloc);
    HvRawStorage_SetRefusal(nullptr);
    unsigned int const slot = XQTlsAlloc();
    EXPECT_EQ(XQTlsSetValue(slot, AsPointer(1)), 1);
    XQTlsFree(slot);
    for (unsigned int const other : slots) {
        XQTlsFree(other);
    }
}

TEST(thread_local_slots_threads, EachThreadHasItsOwnPointer)
{
    unsigned int const slot = XQTlsAlloc();
    XQTlsSetValue(slot, AsPointer(1000));
    RunThreads(8, [slot](int k) {
        auto const own = AsPointer(static_cast<std::uintptr_t>(k) + 1);
        EXPECT_EQ(XQTlsGetValue(slot), nullptr);
        EXPECT_EQ(XQTlsSetValue(slot, own), 1);
        for (int step = 0; step < 100; ++step) {
            EXPECT_EQ(XQTlsGetValue(slot), own);
            std::this_thread::yield();
        }
    });
    EXPECT_EQ(XQTlsGetValue(slot), AsPointer(1000));
    XQTlsFree(slot);
}

// Two threads that live on keep values of a first life of the number; neither sees them in the
// next.
TEST(thread_local_slots_threads, NumberUsedAgainReadsNullInEveryThread)
{
    std::atomic<int> phase{0};
    std::atomic<int> done{0};
    std::atomic<unsigned int> slot{XQTlsAlloc()};
    unsigned int const first = slot.load();
    auto const waitForPhase = [&phase](int wanted) {
        while (phase.load() < wanted) {
            std::this_thread::yield();
        }
    };
    std::vector<std::thread> threads;
    for (int k = 0; k < 2; ++k) {
        threads.emplace_back([&] {
            XQTlsSetValue(slot.load(), AsPointer(7));
            ++done;
            waitForPhase(1);
            EXPECT_EQ(XQTlsGetValue(slot.load()), nullptr);
            EXPECT_EQ(XQTlsSetValue(slot.load(), AsPointer(8)), 1);
            EXPECT_EQ(XQTlsGetValue(slot.load()), AsPointer(8));
        });
    }
    while (done.load() < 2) {
        std::this_thread::yield();
    }
    XQTlsFree(slot.load());
    slot = XQTlsAlloc();
    EXPECT_EQ(slot.load(), first);
    phase = 1;
    for (std::thread& thread : threads) {
        thread.join();
    }
    XQTlsFree(slot.load());
}

// All threads allocate, use and free at once, and read a slot that stays, while the registry grows.
TEST(thread_local_slots_threads, EightThreadsAllocateAndFreeAtOnce)
{
    unsigned int const common = XQTlsAlloc();
    RunThreads(8, [common](int k) {
        std::vector<unsigned int> slots;
        auto const own = AsPointer(static_cast<std::uintptr_t>(k) + 1);
        XQTlsSetValue(common, own);
        int wrong = 0;
        for (int round = 0; round < 20; ++round) {
            for (int n = 0; n < 300; ++n) {
                unsigned int const slot = XQTlsAlloc();
                wrong += XQTlsGetValue(slot) != nullptr ? 1 : 0;
                XQTlsSetValue(slot, AsPointer(std::uintptr_t(slot) + 1));
                slots.push_back(slot);
            }
            for (unsigned int const slot : slots) {
                wrong += XQTlsGetValue(slot) != AsPointer(std::uintptr_t(slot) + 1) ? 1 : 0;
            }
            wrong += XQTlsGetValue(common) != own ? 1 : 0;
            if (round % 2 != 0) {
                for (unsigned int const slot : slots) {
                    XQTlsFree(slot);
                }
                slots.clear();
            }
        }
        EXPECT_EQ(wrong, 0);
    });
    XQTlsFree(common);
}

// The pages of ended threads are given back, or the leak checker of a sanitized run would tell; a
// destructor that runs after them finds null and stores nothing.
TEST(thread_local_slots_threads, EndingThreadReadsNullAndStoresNothing)
{
    unsigned int const slot = XQTlsAlloc();
    int stored = -1;
    void* read = AsPointer(9);
    std::thread([&] {
        thread_local LateUser late;  // made before the pages, so it goes after them
        late.slot = slot;
        late.stored = &stored;
        late.read = &read;
        XQTlsSetValue(slot, AsPointer(2));
    }).join();
    EXPECT_EQ(stored, 0);
    EXPECT_EQ(read, nullptr);
    XQTlsFree(slot);
}
