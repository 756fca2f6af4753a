// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Eight threads on shared objects, in schedules that a seed decides: what each thread does, and
// where it lets others run. HV_SCHEDULES in the environment sets how many are run; 360,000 take
// about an hour.

#include "shared_objects.h"

#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvExtent2.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

constexpr unsigned int kThreads = 8;
constexpr unsigned int kStepsOfAThread = 40;
constexpr unsigned int kSchedulesOfATest = 100;

unsigned int NumSchedules()
{
    char const* const wanted = std::getenv("HV_SCHEDULES");
    return wanted == nullptr ? kSchedulesOfATest
                             : static_cast<unsigned int>(std::strtoul(wanted, nullptr, 10));
}

/// Runs `step(thread, random)` some times in each of the threads, which begin together. The seed
/// decides how often each of them lets the others run.
template <class Step>
void RunSchedule(unsigned int seed, Step step)
{
    std::atomic<unsigned int> waiting{kThreads};
    std::vector<std::thread> threads;
    for (unsigned int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            ScheduleRandom random(seed * kThreads + thread);
            for (--waiting; waiting != 0;) {
                std::this_thread::yield();
            }
            for (unsigned int i = 0; i < kStepsOfAThread; ++i) {
                step(thread, random);
                if (random() % 4 == 0) {
                    std::this_thread::yield();
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

/// Edits, assignments in both directions and all ways of reading, at once: whatever a thread reads
/// is of one version.
void ExpectWholeVersions(std::unique_ptr<SharedPair> (*makePair)())
{
    for (unsigned int seed = 0; seed < NumSchedules(); ++seed) {
        std::unique_ptr<SharedPair> const pair = makePair();
        std::atomic<unsigned int> torn{0};
        RunSchedule(seed, [&](unsigned int thread, ScheduleRandom& random) {
            unsigned int const which = random() % 2;
            if (thread == 0) {
                pair->Edit(which);
            } else if (thread <= 2) {
                pair->Assign(thread - 1);
            } else if (thread == 3) {
                torn += pair->IsArchiveWhole(which) ? 0 : 1;
            } else if (thread == 4) {
                torn += pair->IsCopyWhole(which) ? 0 : 1;
            } else {
                torn += pair->IsReadingWhole(which, random) ? 0 : 1;
            }
        });
        ASSERT_EQ(torn, 0u) << "schedule " << seed;
    }
}

}  // namespace

TEST(schedules_threads, StandardCurvesAreReadWhole)
{
    ExpectWholeVersions(MakeSharedStandardCurves);
}

TEST(schedules_threads, IntegerCurvesAreReadWhole)
{
    ExpectWholeVersions(MakeSharedIntegerCurves);
}

TEST(schedules_threads, RawCurvesAreReadWhole)
{
    ExpectWholeVersions(MakeSharedRawCurves);
}

TEST(schedules_threads, PathsAreReadWhole)
{
    ExpectWholeVersions(MakeSharedPaths);
}

TEST(schedules_threads, MotionPathsAreReadWhole)
{
    ExpectWholeVersions(MakeSharedMotionPaths);
}

TEST(schedules_threads, ADragIsSeenByReadersAsACurve)
{
    for (unsigned int seed = 0; seed < NumSchedules(); ++seed) {
        HvStdFCurve curve(0.0, HvBaseFCurve::CubicSegment);
        for (int i = 0; i < 10; ++i) {
            curve.CreateKey(i, i % 3);
        }
        HvExtent2<double> const limits(-100, -100, 100, 100);
        HvDoubleArray dragged;
        dragged.Add(4.0);
        std::unique_ptr<HvFCurveKeyMover> mover(
            new HvFCurveKeyMover(curve, dragged, limits, HvExtent2<double>(4, 1, 4, 1)));
        std::atomic<unsigned int> wrong{0};
        RunSchedule(seed, [&](unsigned int thread, ScheduleRandom& random) {
            if (thread == 0) {
                HvPoint2<double> offset(static_cast<double>(random() % 60) * 0.1 - 3.0, 0.5);
                HvExtent2<double> invalid;
                HvExtent2<double> moved;
                HvDoubleArray parameters;
                mover->Update(offset, parameters, invalid, moved, -10, 20);
                return;
            }
            HvDoubleArray parameters;
            unsigned int const keys = curve.GetAllKeyParameters(parameters);
            for (unsigned int i = 1; i < keys; ++i) {
                wrong += parameters[i - 1] < parameters[i] ? 0 : 1;
            }
            double const value = curve.Eval(static_cast<double>(random() % 90) * 0.1, 0);
            wrong += value > -50 && value < 50 ? 0 : 1;
        });
        mover->Finalize();
        ASSERT_EQ(wrong, 0u) << "schedule " << seed;
        ASSERT_GE(curve.GetNumKeys(), 9u);
    }
}
