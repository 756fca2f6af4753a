// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The process-wide access lock.

#include "run_threads.h"

#include <hv/platform/CActiveDataMultiThreadedRenderingLock.h>

#include <gtest/gtest.h>

#include <chrono>

namespace {

using AccessLock = CActiveDataMultiThreadedRenderingLock;

// Takes the lock before main begins and after it ends; a lock that is not ready would hang or
// crash.
struct StaticUser {
    StaticUser() { Use(); }
    ~StaticUser() { Use(); }
    static void Use()
    {
        AccessLock::ADAccessLock();
        AccessLock::ADAccessLock();
        AccessLock::ADAccessUnlock();
        AccessLock::ADAccessUnlock();
    }
};

StaticUser staticUser;

}  // namespace

TEST(CActiveDataMultiThreadedRenderingLock_threads, HolderTakesItAgainAndOthersWaitForTheLastUnlock)
{
    std::atomic<bool> arriving{false};
    std::atomic<bool> passed{false};
    AccessLock::ADAccessLock();
    AccessLock::ADAccessLock();
    std::thread other([&] {
        arriving = true;
        AccessLock::ADAccessLock();
        passed = true;
        AccessLock::ADAccessUnlock();
    });
    while (!arriving.load()) {
        std::this_thread::yield();
    }
    AccessLock::ADAccessUnlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(passed.load());
    AccessLock::ADAccessUnlock();
    other.join();
    EXPECT_TRUE(passed.load());
}

TEST(CActiveDataMultiThreadedRenderingLock_threads, EightThreadsCountWithoutLoss)
{
    constexpr int kSteps = 3000;
    int count = 0;
    RunThreads(8, [&](int) {
        for (int step = 0; step < kSteps; ++step) {
            AccessLock::ADAccessLock();
            ++count;
            AccessLock::ADAccessUnlock();
        }
    });
    EXPECT_EQ(count, 8 * kSteps);
}
