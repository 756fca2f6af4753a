// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The performance counter.

#include <hv/platform/performance_counter.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

TEST(performance_counter, FrequencyIsPositiveAndStays)
{
    LARGE_INTEGER first{};
    LARGE_INTEGER second{};
    EXPECT_NE(QueryPerformanceFrequency(&first), 0);
    EXPECT_NE(QueryPerformanceFrequency(&second), 0);
    EXPECT_GT(first.QuadPart, 0);
    EXPECT_EQ(first.QuadPart, second.QuadPart);
}

TEST(performance_counter, NeverGoesBack)
{
    LARGE_INTEGER previous{};
    EXPECT_NE(QueryPerformanceCounter(&previous), 0);
    for (int k = 0; k < 1000; ++k) {
        LARGE_INTEGER next{};
        QueryPerformanceCounter(&next);
        ASSERT_GE(next.QuadPart, previous.QuadPart);
        previous = next;
    }
}

// A sleep lasts at least as long as asked for, and on a busy machine rather longer; the two clocks
// are read around one another, so that each gives a bound of the other.
TEST(performance_counter, CountsSecondsByItsFrequency)
{
    using Clock = std::chrono::steady_clock;
    LARGE_INTEGER frequency{};
    LARGE_INTEGER from{};
    LARGE_INTEGER to{};
    QueryPerformanceFrequency(&frequency);
    auto const outerFrom = Clock::now();
    QueryPerformanceCounter(&from);
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    QueryPerformanceCounter(&to);
    auto const outerTo = Clock::now();
    double const seconds =
        static_cast<double>(to.QuadPart - from.QuadPart) / static_cast<double>(frequency.QuadPart);
    EXPECT_GE(seconds, 0.010);
    // A microsecond for the rounding of either clock.
    EXPECT_LE(seconds, std::chrono::duration<double>(outerTo - outerFrom).count() + 1e-6);
}
