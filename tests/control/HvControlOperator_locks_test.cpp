// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The locks of the control operator, and many threads at once.

#include "control_test_support.h"

#include "../support/lock_probe.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

struct Pair {
    StdPtr c = Line(0, 0, 1, 1);
    StdPtr d = Line(0, 0, 1, 1);
    HvControlOperator op{*c, *d};
};

}  // namespace

TEST(HvControlOperator_locks, EvaluationTakesTheSectionsAlone)
{
    Pair const pair;
    double value = 0;
    for (HvStdFCurve const* curve : {pair.c.get(), pair.d.get()}) {
        EXPECT_TRUE(LockProbe_Waits(*curve, ProbedLock::Section, true, [&] { pair.op.Eval(0.5); }));
        EXPECT_TRUE(LockProbe_Waits(*curve, ProbedLock::Section, true,
                                    [&] { pair.op.EvalMany(&value, 1, &value); }));
    }
    EXPECT_FALSE(LockProbe_Waits(*pair.c, ProbedLock::Access, false, [&] { pair.op.Eval(0.5); }));
    EXPECT_FALSE(LockProbe_Waits(*pair.c, ProbedLock::Access, false,
                                 [&] { pair.op.EvalMany(&value, 1, &value); }));
}

TEST(HvControlOperator_locks, CompositionTakesAllThree)
{
    Pair const pair;
    auto const compose = [&] { Compose(*pair.c, *pair.d, 0, 1); };
    auto const adjust = [&] {
        StdPtr const curve = Line(0, 0, 1, 1);
        pair.op.AdjustTangents(*curve, 0, 1);
    };
    EXPECT_TRUE(LockProbe_Waits(*pair.c, ProbedLock::Access, true, compose));
    EXPECT_TRUE(LockProbe_Waits(*pair.c, ProbedLock::Access, true, adjust));
    for (HvStdFCurve const* curve : {pair.c.get(), pair.d.get()}) {
        EXPECT_TRUE(LockProbe_Waits(*curve, ProbedLock::Section, true, compose));
        EXPECT_TRUE(LockProbe_Waits(*curve, ProbedLock::Section, true, adjust));
        EXPECT_TRUE(LockProbe_AreBothFree(*curve));
    }
}

TEST(HvControlOperator_locks, AdjustedCurveIsLockedToo)
{
    Pair const pair;
    StdPtr const curve = Line(0, 0, 1, 1);
    EXPECT_TRUE(LockProbe_Waits(*curve, ProbedLock::Section, true,
                                [&] { pair.op.AdjustTangents(*curve, 0, 1); }));
    EXPECT_TRUE(LockProbe_AreBothFree(*curve));
}

// Readers and composers of a pair in both directions, and writers that take both curves in both
// directions, as far as they exist: assignment copies one curve onto the other. Every result is a
// composition of two whole states: all values of both are 1 or all are 2.
TEST(HvControlOperator_threads, MeetWritersInEveryOrder)
{
    StdPtr const ones = StdCurve({{0, 1, 1, kCubic}, {1, 1, 1, kLinear}, {2, 1, 1, kCubic}});
    StdPtr const twos = StdCurve({{0, 2, 2, kLinear}, {2, 2, 2, kLinear}});
    StdPtr const a(static_cast<HvStdFCurve*>(ones->Clone()));
    StdPtr const b(static_cast<HvStdFCurve*>(twos->Clone()));
    std::atomic<int> wrong{0};
    auto const isWhole = [](double value) { return value == 1 || value == 2; };
    auto const work = [&](unsigned int thread) {
        HvControlOperator const op(thread % 2 == 0 ? *a : *b, thread % 2 == 0 ? *b : *a);
        for (int k = 0; k < 60; ++k) {
            if (thread < 2) {
                (k % 3 == 0 ? *a : *b) = k % 2 == 0 ? *ones : *twos;
                (thread == 0 ? *a : *b) = thread == 0 ? *b : *a;
            } else if (thread < 5) {
                StdPtr const r(op.Compose(0, 2, 0.1));
                wrong += !isWhole(r->Eval(0.7, 0)) || r->Eval(0.1, 0) != r->Eval(1.9, 0);
            } else if (thread < 7) {
                wrong += !isWhole(op.Eval(0.5));
            } else {
                StdPtr const mine(static_cast<HvStdFCurve*>(ones->Clone()));
                op.AdjustTangents(*mine, 0, 2);
            }
        }
    };
    std::vector<std::thread> threads;
    for (unsigned int thread = 0; thread < 8; ++thread) {
        threads.emplace_back(work, thread);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, 0);
}
