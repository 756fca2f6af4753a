// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// CRITICAL_SECTION: exclusion, recursion, trying, waking.

#include "run_threads.h"

#include <hv/platform/critical_section.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstring>

namespace {

constexpr int kThreads = 8;

class Section {
public:
    Section() { InitializeCriticalSection(&section); }
    ~Section() { DeleteCriticalSection(&section); }

    void Enter() { EnterCriticalSection(&section); }
    int TryEnter() { return TryEnterCriticalSection(&section); }
    void Leave() { LeaveCriticalSection(&section); }

    int IsFreeForOthers()
    {
        return AskedByAnotherThread([this] {
            int const entered = TryEnter();
            if (entered != 0) {
                Leave();
            }
            return entered;
        });
    }

private:
    CRITICAL_SECTION section;
};

CRITICAL_SECTION neverInitialized;

}  // namespace

TEST(critical_section, RecordIsSmall)
{
    EXPECT_LE(sizeof(CRITICAL_SECTION), 16u);
}

TEST(critical_section, RecordInStaticStorageIsFree)
{
    EXPECT_EQ(TryEnterCriticalSection(&neverInitialized), 1);
    LeaveCriticalSection(&neverInitialized);
}

TEST(critical_section, InitializationFreesRecordOfAnyBytes)
{
    alignas(CRITICAL_SECTION) unsigned char bytes[sizeof(CRITICAL_SECTION)];
    std::memset(bytes, 0xA5, sizeof bytes);
    auto* const section = reinterpret_cast<CRITICAL_SECTION*>(bytes);
    InitializeCriticalSection(section);
    EXPECT_EQ(TryEnterCriticalSection(section), 1);
    LeaveCriticalSection(section);
    EXPECT_EQ(TryEnterCriticalSection(section), 1);
    LeaveCriticalSection(section);
    DeleteCriticalSection(section);
}

TEST(critical_section_threads, HeldSectionRefusesOtherThreads)
{
    Section section;
    EXPECT_EQ(section.IsFreeForOthers(), 1);
    section.Enter();
    EXPECT_EQ(section.IsFreeForOthers(), 0);
    section.Leave();
    EXPECT_EQ(section.IsFreeForOthers(), 1);
}

TEST(critical_section_threads, OwnerEntersAgainAndLeavesAsOften)
{
    Section section;
    section.Enter();
    EXPECT_EQ(section.TryEnter(), 1);
    section.Enter();
    EXPECT_EQ(section.TryEnter(), 1);
    for (int entriesLeft = 3; entriesLeft > 0; --entriesLeft) {
        section.Leave();
        EXPECT_EQ(section.IsFreeForOthers(), 0) << entriesLeft;
    }
    section.Leave();
    EXPECT_EQ(section.IsFreeForOthers(), 1);
}

TEST(critical_section_threads, FirstEntryByTryingIsRecursiveToo)
{
    Section section;
    EXPECT_EQ(section.TryEnter(), 1);
    section.Enter();
    section.Leave();
    EXPECT_EQ(section.IsFreeForOthers(), 0);
    section.Leave();
    EXPECT_EQ(section.IsFreeForOthers(), 1);
}

TEST(critical_section_threads, TwoSectionsOfOneThreadAreApart)
{
    Section first;
    Section second;
    first.Enter();
    second.Enter();
    first.Leave();
    EXPECT_EQ(first.IsFreeForOthers(), 1);
    EXPECT_EQ(second.IsFreeForOthers(), 0);
    second.Leave();
}

// A thread born after the owner's end may have its stack and thread-local block at the same
// address.
TEST(critical_section_threads, EndedOwnerLeavesNoIdentityBehind)
{
    Section section;
    for (int k = 0; k < 20; ++k) {
        std::thread([&section] {
            section.Enter();
            section.Leave();
        }).join();
    }
    section.Enter();
    EXPECT_EQ(section.IsFreeForOthers(), 0);
    section.Leave();
}

TEST(critical_section_threads, EightThreadsCountWithoutLoss)
{
    constexpr int kSteps = 4000;
    Section section;
    long long count = 0;
    int inside = 0;
    bool alone = true;
    RunThreads(kThreads, [&](int thread) {
        for (int step = 0; step < kSteps; ++step) {
            section.Enter();
            bool const nested = (step + thread) % 3 == 0;
            if (nested) {
                section.Enter();
            }
            alone = alone && ++inside == 1;
            ++count;
            --inside;
            if (nested) {
                section.Leave();
            }
            section.Leave();
        }
    });
    EXPECT_TRUE(alone);
    EXPECT_EQ(count, static_cast<long long>(kThreads) * kSteps);
}

TEST(critical_section_threads, TryingNeverEntersBesideTheHolder)
{
    constexpr int kSteps = 4000;
    Section section;
    int inside = 0;
    bool alone = true;
    std::atomic<int> entered{0};
    RunThreads(kThreads, [&](int thread) {
        for (int step = 0; step < kSteps; ++step) {
            if (thread % 2 == 0) {
                section.Enter();
            } else if (section.TryEnter() == 0) {
                continue;
            }
            alone = alone && ++inside == 1;
            --inside;
            section.Leave();
            ++entered;
        }
    });
    EXPECT_TRUE(alone);
    EXPECT_GE(entered.load(), kThreads / 2 * kSteps);
}

// The holder sleeps far longer than a visitor looks before it is parked, so all of them are parked,
// and each leave must wake the next one.
TEST(critical_section_threads, ParkedThreadsAreAllWoken)
{
    Section section;
    std::atomic<int> arriving{0};
    std::atomic<int> passed{0};
    section.Enter();
    std::vector<std::thread> visitors;
    for (int k = 0; k < kThreads; ++k) {
        visitors.emplace_back([&] {
            ++arriving;
            section.Enter();
            ++passed;
            section.Leave();
        });
    }
    while (arriving.load() < kThreads) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(passed.load(), 0);
    section.Leave();
    for (std::thread& visitor : visitors) {
        visitor.join();
    }
    EXPECT_EQ(passed.load(), kThreads);
    EXPECT_EQ(section.IsFreeForOthers(), 1);
}

TEST(critical_section_threads, ErrnoStaysWhileWaiting)
{
    Section section;
    section.Enter();
    std::atomic<bool> arriving{false};
    int seen = 0;
    std::thread visitor([&] {
        errno = EDOM;
        arriving = true;
        section.Enter();
        section.Leave();
        seen = errno;
    });
    while (!arriving.load()) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    section.Leave();
    visitor.join();
    EXPECT_EQ(seen, EDOM);
}

// Whoever enters last may end the section's life at once: the leaver before it no longer reads it.
TEST(critical_section_threads, SectionMayBeDeletedByTheNextOwner)
{
    for (int round = 0; round < 200; ++round) {
        auto* const section = new Section;
        std::atomic<int> left{2};
        RunThreads(2, [&](int) {
            section->Enter();
            bool const last = --left == 0;
            section->Leave();
            if (last) {
                delete section;
            }
        });
    }
}
