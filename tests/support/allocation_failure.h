// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Counting and refusing the library's allocations.

#ifndef TESTS_SUPPORT_ALLOCATION_FAILURE_H
#define TESTS_SUPPORT_ALLOCATION_FAILURE_H

#include <hv/foundation/HvMemory.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <new>

/// Counts what passes HvAllocate and HvFree while it lives, in all threads, and can refuse one
/// allocation. One at a time: the hooks of the library are global.
///
///     AllocationCounter const counter;
///     curve.Eval(0.5, 0);
///     EXPECT_EQ(counter.Allocations(), 0);
class AllocationCounter {
public:
    AllocationCounter()
    {
        state().allocations = 0;
        state().releases = 0;
        state().bytes = 0;
        state().countdown = 0;
        state().refused = false;
        HvSetAllocationHook(&AllocationCounter::OnAllocate);
        HvSetReleaseHook(&AllocationCounter::OnRelease);
    }
    ~AllocationCounter()
    {
        HvSetAllocationHook(nullptr);
        HvSetReleaseHook(nullptr);
    }
    AllocationCounter(AllocationCounter const&) = delete;
    AllocationCounter& operator=(AllocationCounter const&) = delete;

    /// Allocations granted so far.
    long Allocations() const { return state().allocations; }
    /// Bytes of them.
    std::size_t Bytes() const { return state().bytes; }
    /// Blocks granted and not given back. Blocks from before the counter count -1 when given back.
    long Live() const { return state().allocations - state().releases; }

    /// Lets the `n`-th allocation from now on fail, n >= 1, and only that one; 0 refuses none.
    void RefuseAllocation(long n)
    {
        state().refused = false;
        state().countdown = n;
    }
    /// Whether the allocation told to RefuseAllocation came.
    bool HasRefused() const { return state().refused; }

private:
    struct State {
        std::atomic<long> allocations{0};
        std::atomic<long> releases{0};
        std::atomic<std::size_t> bytes{0};
        std::atomic<long> countdown{0};
        std::atomic<bool> refused{false};
    };

    static State& state()
    {
        static State theState;
        return theState;
    }

    static int OnAllocate(std::size_t size)
    {
        if (state().countdown > 0 && --state().countdown == 0) {
            state().refused = true;
            return 0;
        }
        ++state().allocations;
        state().bytes += size;
        return 1;
    }

    static void OnRelease(void*) { ++state().releases; }
};

/// Runs an operation again and again on a fresh object, with its first allocation refused, then its
/// second, and so on, until a run makes no refused allocation any more. After each run the object
/// is checked and destroyed, and nothing may be left allocated.
///
/// @param prepare  `Object prepare()`: the object; its own allocations are not refused. The object
///                 holds everything that the operation works on.
/// @param operate  `void operate(Object&)`: the operation; lets std::bad_alloc out, or catches it.
/// @param check    `void check(Object&, bool completed)`: what must hold; `completed` is false when
///                 std::bad_alloc came out.
/// @return         number of allocations that the operation makes.
template <class Prepare, class Operate, class Check>
long RefuseEachAllocation(Prepare prepare, Operate operate, Check check)
{
    constexpr long kMostAllocations = 100000;  // ends the walk of an operation that never ends
    AllocationCounter counter;
    for (long n = 1; n <= kMostAllocations; ++n) {
        SCOPED_TRACE(testing::Message() << "allocation " << n << " refused");
        long const live = counter.Live();
        bool refused = false;
        {
            auto object = prepare();
            bool completed = true;
            counter.RefuseAllocation(n);
            try {
                operate(object);
            } catch (std::bad_alloc const&) {
                completed = false;
            }
            refused = counter.HasRefused();
            counter.RefuseAllocation(0);
            if (!refused) {
                EXPECT_TRUE(completed) << "std::bad_alloc although nothing was refused";
            }
            check(object, completed);
        }
        EXPECT_EQ(counter.Live(), live) << "blocks leaked";
        if (!refused || testing::Test::HasFatalFailure()) {
            return n - 1;
        }
    }
    ADD_FAILURE() << "the operation makes allocations without end";
    return kMostAllocations;
}

/// The same for an operation that makes, uses and destroys all its objects itself.
template <class Scenario>
long RefuseEachAllocation(Scenario scenario)
{
    return RefuseEachAllocation([] { return 0; }, [&](int&) { scenario(); }, [](int&, bool) {});
}

#endif
