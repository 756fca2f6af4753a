// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stepped curves shared by threads: the values are those of one thread, edits do not disturb.

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>

#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

namespace {

constexpr unsigned int kNumThreads = 8;
constexpr int kSteps = 3000;

template <class Work>
void InThreads(Work work)
{
    std::vector<std::thread> threads;
    for (unsigned int t = 0; t < kNumThreads; ++t) {
        threads.emplace_back([=] { work(t); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(HvSteppedFCurve_threads, EvaluateInEightThreadsAsInOne)
{
    HvIntegerFCurve curve(0);
    for (int i = 0; i < 500; ++i) {
        curve.CreateKey(i, (i * 7919) % 1009);
    }
    curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    std::vector<std::vector<double>> expected(kNumThreads);
    std::vector<std::vector<double>> parameters(kNumThreads);
    for (unsigned int t = 0; t < kNumThreads; ++t) {
        std::mt19937 random(t);
        std::uniform_real_distribution<double> anywhere(-1000, 1500);
        double p = anywhere(random);
        for (int i = 0; i < kSteps; ++i) {
            // Half of the threads walk, half jump.
            p = t % 2 == 0 ? p + 0.3 : anywhere(random);
            parameters[t].push_back(p);
            expected[t].push_back(curve.Eval(p, 0));
        }
    }
    std::atomic<int> differences{0};
    InThreads([&](unsigned int t) {
        for (int i = 0; i < kSteps; ++i) {
            auto const k = static_cast<std::size_t>(i);
            if (curve.Eval(parameters[t][k], 0) != expected[t][k]) {
                ++differences;
            }
        }
    });
    EXPECT_EQ(differences, 0);
}

TEST(HvSteppedFCurve_threads, EvaluateWhileOthersEdit)
{
    HvBooleanFCurve curve(1);
    curve.CreateKey(0, 1);
    std::atomic<int> wrong{0};
    InThreads([&](unsigned int t) {
        std::mt19937 random(t);
        for (int i = 0; i < kSteps / 4; ++i) {
            double const p = static_cast<double>(random() % 50);
            if (t % 2 == 0) {
                // All keys are true, so whatever the edits leave evaluates to true.
                random() % 3 == 0 ? curve.RemoveKey(p, 0) : curve.CreateKey(p, 1);
            } else if (curve.Eval(p, 0) != 1) {
                ++wrong;
            }
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST(HvSteppedFCurve_threads, JoinTwoCurvesInOppositeDirections)
{
    HvIntegerFCurve a(0);
    HvIntegerFCurve b(0);
    for (int i = 0; i < 3; ++i) {
        a.CreateKey(i, i);
        b.CreateKey(i, -i);
    }
    InThreads([&](unsigned int t) {
        for (int i = 0; i < 50; ++i) {
            HvIntegerFCurve& from = t % 2 == 0 ? a : b;
            HvIntegerFCurve& to = t % 2 == 0 ? b : a;
            to.Append(from);
            to.RemoveTail(2);
            HvIntegerFCurve removed(0);
            to.Cut(0.5, 1, removed);
            to.Set(from);
        }
    });
    EXPECT_GE(a.GetNumKeys(), 1u);
    EXPECT_GE(b.GetNumKeys(), 1u);
}

TEST(HvSteppedFCurve_threads, LiveAndDieBesideOthers)
{
    InThreads([](unsigned int t) {
        for (int i = 0; i < 300; ++i) {
            HvIntegerFCurve curve(0);
            curve.CreateKey(t, 1);
            curve.CreateKey(t + 1.0, 2);
            EXPECT_EQ(curve.Eval(t + 0.5, 0), 1);
            HvIntegerFCurve const copy(curve);
            EXPECT_EQ(copy.Eval(t + 1.5, 0), 2);
        }
    });
}

}  // namespace
