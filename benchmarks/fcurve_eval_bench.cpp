// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does one evaluation cost? Each kind of curve and segment with 10 to 100,000 keys, at
// parameters that walk on by a third of a key and at random ones: the walk must not depend on the
// number of keys, the random one grows with its logarithm. Beside them the curve's lock alone, many
// evaluations under one lock, and two threads on one curve and on two. The baseline is a bisection
// in an array of doubles with a third of the keys' size.

#include <hv/hv.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kNumParameters = 1 << 14;
constexpr double kStep = 0.3;

/// Keys at whole numbers from 0 on, as many as the benchmark's argument says.
struct Stepped {
    using Curve = HvIntegerFCurve;
    static Curve Make(int keys)
    {
        Curve curve(0);
        for (int i = 0; i < keys; ++i) {
            curve.CreateKey(i, i * 7919 % 1009);
        }
        return curve;
    }
};

struct Raw {
    using Curve = HvRawFCurve;
    static Curve Make(int keys)
    {
        Curve curve(0.0);
        for (int i = 0; i < keys; ++i) {
            curve.AppendLinearSegment(HvPoint2<double>(i, i * 7919 % 1009));
        }
        return curve;
    }
};

template <HvBaseFCurve::FSKind kKind>
struct Standard {
    using Curve = HvStdFCurve;
    static Curve Make(int keys)
    {
        HvPoint2dArray points;
        for (int i = 0; i < keys; ++i) {
            points.Add(HvPoint2<double>(i, i * 7919 % 1009));
        }
        Curve curve(points, HvStdFCurve::InterpCatmullRom, 0, kKind, kKind);
        curve.ConvertToUniformSegmentKind(kKind);
        return curve;
    }
};
using Constant = Standard<HvBaseFCurve::ConstantSegment>;
using Linear = Standard<HvBaseFCurve::LinearSegment>;
using Cubic = Standard<HvBaseFCurve::CubicSegment>;

/// Parameters inside the keys, in the order of evaluation.
std::vector<double> Walk(int keys)
{
    std::vector<double> parameters;
    double p = 0;
    for (std::size_t i = 0; i < kNumParameters; ++i) {
        p += kStep;
        if (p >= keys - 1) {
            p -= keys - 1;
        }
        parameters.push_back(p);
    }
    return parameters;
}

std::vector<double> Jump(int keys)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> anywhere(0, keys - 1);
    std::vector<double> parameters;
    for (std::size_t i = 0; i < kNumParameters; ++i) {
        parameters.push_back(anywhere(random));
    }
    return parameters;
}

/// One evaluation an iteration.
template <class Evaluate>
void Time(benchmark::State& state, std::vector<double> const& parameters, Evaluate evaluate)
{
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(evaluate(parameters[i]));
        i = (i + 1) % kNumParameters;
    }
    state.SetItemsProcessed(state.iterations());
}

template <class Kind, std::vector<double> (*kOrder)(int)>
void Eval(benchmark::State& state)
{
    int const keys = static_cast<int>(state.range(0));
    auto const curve = Kind::Make(keys);
    Time(state, kOrder(keys), [&](double p) { return curve.Eval(p, 0); });
}

template <class Kind>
void EvalManyAtOnce(benchmark::State& state)
{
    int const keys = static_cast<int>(state.range(0));
    auto const curve = Kind::Make(keys);
    std::vector<double> const parameters = Walk(keys);
    std::vector<double> values(kNumParameters);
    for (auto _ : state) {
        curve.EvalMany(parameters.data(), kNumParameters, values.data(), 0);
        benchmark::DoNotOptimize(values.data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(kNumParameters));
}

template <std::vector<double> (*kOrder)(int)>
void Bisection(benchmark::State& state)
{
    int const keys = static_cast<int>(state.range(0));
    std::vector<double> array;
    for (int i = 0; i < keys; ++i) {
        array.push_back(i);
    }
    Time(state, kOrder(keys),
         [&](double p) { return *std::upper_bound(array.begin(), array.end(), p); });
}

void LockAlone(benchmark::State& state)
{
    HvIntegerFCurve const curve(0);
    for (auto _ : state) {
        curve.AcquireLocks();
        curve.ReleaseLocks();
    }
    state.SetItemsProcessed(state.iterations());
}

/// The curves of the threads; one for all of them, or one for each.
template <class Kind, bool kShared>
void EvalInTwoThreads(benchmark::State& state)
{
    constexpr int kKeys = 1000;
    static auto const first = Kind::Make(kKeys);
    static auto const second = Kind::Make(kKeys);
    auto const& curve = kShared || state.thread_index() == 0 ? first : second;
    Time(state, Walk(kKeys), [&](double p) { return curve.Eval(p, 0); });
}

#define HV_EVAL_BENCH(kind)                                                                        \
    BENCHMARK_TEMPLATE(Eval, kind, Walk)->RangeMultiplier(10)->Range(10, 100000);                  \
    BENCHMARK_TEMPLATE(Eval, kind, Jump)->RangeMultiplier(10)->Range(10, 100000)

HV_EVAL_BENCH(Stepped);
HV_EVAL_BENCH(Raw);
HV_EVAL_BENCH(Constant);
HV_EVAL_BENCH(Linear);
HV_EVAL_BENCH(Cubic);
BENCHMARK_TEMPLATE(Bisection, Walk)->RangeMultiplier(10)->Range(10, 100000);
BENCHMARK_TEMPLATE(Bisection, Jump)->RangeMultiplier(10)->Range(10, 100000);
BENCHMARK(LockAlone);
BENCHMARK_TEMPLATE(EvalManyAtOnce, Stepped)->Arg(1000);
BENCHMARK_TEMPLATE(EvalManyAtOnce, Cubic)->Arg(1000);
BENCHMARK_TEMPLATE(EvalInTwoThreads, Stepped, true)->Threads(2)->UseRealTime();
BENCHMARK_TEMPLATE(EvalInTwoThreads, Stepped, false)->Threads(2)->UseRealTime();
BENCHMARK_TEMPLATE(EvalInTwoThreads, Cubic, true)->Threads(2)->UseRealTime();
BENCHMARK_TEMPLATE(EvalInTwoThreads, Cubic, false)->Threads(2)->UseRealTime();

}  // namespace
