// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parking over the standard library, which serves where the kernel offers nothing better.

#include "../run_threads.h"

#include <hv/platform/internal/HvParkingTable.h>

#include <gtest/gtest.h>

#include <chrono>

TEST(HvParkingTable, ChangedWordDoesNotSleep)
{
    HvParkingTable table;
    std::atomic<std::uint32_t> word{1};
    table.Wait(word, 2);
}

// A mutual exclusion of three states over the table: all steps are made only if no wake is missed.
TEST(HvParkingTable_threads, NoWakeIsMissed)
{
    constexpr int kThreads = 8;
    constexpr int kSteps = 500;
    HvParkingTable table;
    std::atomic<std::uint32_t> word{0};
    int count = 0;
    RunThreads(kThreads, [&](int) {
        for (int step = 0; step < kSteps; ++step) {
            while (word.exchange(2, std::memory_order_acquire) != 0) {
                table.Wait(word, 2);
            }
            ++count;
            word.store(0, std::memory_order_release);
            table.Wake(&word);
        }
    });
    EXPECT_EQ(count, kThreads * kSteps);
}

TEST(HvParkingTable_threads, SleeperStaysAsleepUntilItsWordChanges)
{
    HvParkingTable table;
    std::atomic<std::uint32_t> word{1};
    std::atomic<bool> passed{false};
    std::thread sleeper([&] {
        while (word.load() == 1) {
            table.Wait(word, 1);
        }
        passed = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    table.Wake(&word);  // for nothing
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    EXPECT_FALSE(passed.load());
    word = 0;
    table.Wake(&word);
    sleeper.join();
    EXPECT_TRUE(passed.load());
}
