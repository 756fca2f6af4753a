// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CXQCriticalSection: a section that counts its entries.

#include "run_threads.h"

#include <hv/platform/CXQCriticalSection.h>

#include <gtest/gtest.h>

#include <new>

namespace {

int TryFromAnotherThread(CXQCriticalSection& target)
{
    return AskedByAnotherThread([&target] {
        int const entered = TryEnterCriticalSection(&target.section);
        if (entered != 0) {
            LeaveCriticalSection(&target.section);
        }
        return entered;
    });
}

}  // namespace

TEST(CXQCriticalSection, DepthCountsOpenEntries)
{
    CXQCriticalSection target;
    EXPECT_EQ(target.depth, 0);
    target.Enter();
    EXPECT_EQ(target.depth, 1);
    target.Enter();
    EXPECT_EQ(target.depth, 2);
    target.Leave();
    EXPECT_EQ(target.depth, 1);
    target.Leave();
    EXPECT_EQ(target.depth, 0);
}

TEST(CXQCriticalSection, DepthFollowsTheSection)
{
    CXQCriticalSection target;
    auto const* const start = reinterpret_cast<unsigned char const*>(&target);
    EXPECT_EQ(reinterpret_cast<unsigned char const*>(&target.section), start);
    EXPECT_EQ(reinterpret_cast<unsigned char const*>(&target.depth), start + sizeof target.section);
}

TEST(CXQCriticalSection_threads, LockHoldsToTheEndOfItsScope)
{
    CXQCriticalSection target;
    {
        CXQCriticalSectionLock const outer(target);
        {
            CXQCriticalSectionLock const inner(target);
            EXPECT_EQ(target.depth, 2);
        }
        EXPECT_EQ(TryFromAnotherThread(target), 0);
    }
    EXPECT_EQ(target.depth, 0);
    EXPECT_EQ(TryFromAnotherThread(target), 1);
}

TEST(CXQCriticalSection_threads, LockIsReleasedWhenAnExceptionPasses)
{
    CXQCriticalSection target;
    EXPECT_THROW(
        {
            CXQCriticalSectionLock const lock(target);
            throw std::bad_alloc();
        },
        std::bad_alloc);
    EXPECT_EQ(target.depth, 0);
    EXPECT_EQ(TryFromAnotherThread(target), 1);
}

TEST(CXQCriticalSection_threads, EightThreadsCountWithoutLoss)
{
    constexpr int kSteps = 3000;
    CXQCriticalSection target;
    int count = 0;
    bool depthIsRight = true;
    RunThreads(8, [&](int) {
        for (int step = 0; step < kSteps; ++step) {
            CXQCriticalSectionLock const outer(target);
            CXQCriticalSectionLock const inner(target);
            depthIsRight = depthIsRight && target.depth == 2;
            ++count;
        }
    });
    EXPECT_TRUE(depthIsRight);
    EXPECT_EQ(count, 8 * kSteps);
    EXPECT_EQ(target.depth, 0);
}
