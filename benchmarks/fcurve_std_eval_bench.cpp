// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does one evaluation of a standard curve cost: near the last parameter and anywhere, in each
// kind of segment, with 10 to 100,000 keys, alone and beside another thread? What of it is the
// lock, and what does a batch save? The baseline of a long curve evaluates one of ten keys, and
// beside that searches bare records, as many and as large as the keys. Items are evaluations.

#include <hv/fcurve/HvCurveLock.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

namespace {

/// Parameters asked for in each round; more than the caches of a curve of 100,000 keys hold.
constexpr unsigned kRequests = 4096;

/// A curve of `numKeys` keys at 0, 1, ... whose values wander.
std::unique_ptr<HvStdFCurve> CurveOf(HvBaseFCurve::FSKind kind, unsigned numKeys)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> step(-1, 1);
    HvPoint2dArray points(numKeys);
    double value = 0;
    for (unsigned i = 0; i < numKeys; ++i) {
        points.Add(i, value += step(random));
    }
    auto const method = kind == HvBaseFCurve::CubicSegment ? HvStdFCurve::InterpCatmullRom
                                                           : HvStdFCurve::ApproxLinearFitC0;
    auto curve = std::make_unique<HvStdFCurve>(points, method, -1, kind, kind);
    curve->ConvertToUniformSegmentKind(kind);
    return curve;
}

/// Parameters over the keys of a curve: a hundred to a segment in order, or anywhere.
std::vector<double> Parameters(unsigned numKeys, bool random)
{
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> anywhere(0, numKeys - 1);
    std::vector<double> parameters(kRequests);
    for (unsigned i = 0; i < kRequests; ++i) {
        parameters[i] = random ? anywhere(engine) : std::fmod(i * 0.01, numKeys - 1);
    }
    return parameters;
}

void EvalAll(benchmark::State& state, HvStdFCurve const& curve,
             std::vector<double> const& parameters)
{
    for (auto _ : state) {
        for (double const x : parameters) {
            benchmark::DoNotOptimize(curve.Eval(x, 0));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(parameters.size()));
}

void Eval(benchmark::State& state, HvBaseFCurve::FSKind kind, bool random)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    EvalAll(state, *CurveOf(kind, numKeys), Parameters(numKeys, random));
}

/// As large as a key, for the baseline.
struct Record {
    double numbers[8];
};

/// The baseline: the short curve, and a plain search for two records of which all is read.
void SearchAndEvalTenKeys(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    std::vector<Record> records(numKeys);
    for (unsigned i = 0; i < numKeys; ++i) {
        records[i].numbers[0] = i;
    }
    std::vector<double> const sought = Parameters(numKeys, true);
    std::unique_ptr<HvStdFCurve> const curve = CurveOf(HvBaseFCurve::CubicSegment, 10);
    std::vector<double> const parameters = Parameters(10, true);
    for (auto _ : state) {
        for (unsigned i = 0; i < kRequests; ++i) {
            auto const found = std::lower_bound(
                records.begin() + 1, records.end() - 1, sought[i],
                [](Record const& record, double x) { return record.numbers[0] < x; });
            double sum = 0;
            for (unsigned k = 0; k < 8; ++k) {
                sum += found[-1].numbers[k] + found->numbers[k];
            }
            // The evaluation waits for what was read.
            benchmark::DoNotOptimize(curve->Eval(parameters[i] + (sum - sum), 0));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

/// The baseline: the lock and nothing else.
void LockAlone(benchmark::State& state)
{
    std::unique_ptr<HvStdFCurve> const curve = CurveOf(HvBaseFCurve::CubicSegment, 10);
    for (auto _ : state) {
        HvCurveLock const lock(*curve);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

/// Eval without its lock, under one lock for all.
void EvalNoLock(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    std::unique_ptr<HvStdFCurve> const curve = CurveOf(HvBaseFCurve::CubicSegment, numKeys);
    std::vector<double> const parameters = Parameters(numKeys, false);
    HvCurveLock const lock(*curve);
    for (auto _ : state) {
        for (double const x : parameters) {
            benchmark::DoNotOptimize(curve->EvalNoLock(x, 0));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

void EvalMany(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    std::unique_ptr<HvStdFCurve> const curve = CurveOf(HvBaseFCurve::CubicSegment, numKeys);
    std::vector<double> const parameters = Parameters(numKeys, false);
    std::vector<double> values(kRequests);
    for (auto _ : state) {
        curve->EvalMany(parameters.data(), kRequests, values.data(), 0);
        benchmark::DoNotOptimize(values.data());
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

void EvalOneCurve(benchmark::State& state)
{
    static std::unique_ptr<HvStdFCurve> const curve = CurveOf(HvBaseFCurve::CubicSegment, 1000);
    EvalAll(state, *curve, Parameters(1000, false));
}

void EvalOwnCurve(benchmark::State& state)
{
    EvalAll(state, *CurveOf(HvBaseFCurve::CubicSegment, 1000), Parameters(1000, false));
}

/// One degenerate case: handles on their keys, where the solver bisects at the ends.
void EvalHandlesOnKeys(benchmark::State& state)
{
    HvStdFCurve const curve({0, 0}, {0, 0}, {50, 1}, {50, 1}, HvBaseFCurve::CubicSegment,
                            HvBaseFCurve::CubicSegment);
    std::vector<double> parameters(kRequests);
    for (unsigned i = 0; i < kRequests; ++i) {
        parameters[i] = i * 50.0 / kRequests;
    }
    EvalAll(state, curve, parameters);
}

}  // namespace

BENCHMARK_CAPTURE(Eval, cubic_sequential, HvBaseFCurve::CubicSegment, false)
    ->RangeMultiplier(10)
    ->Range(10, 100000);
BENCHMARK_CAPTURE(Eval, cubic_random, HvBaseFCurve::CubicSegment, true)
    ->RangeMultiplier(10)
    ->Range(10, 100000);
BENCHMARK_CAPTURE(Eval, linear_sequential, HvBaseFCurve::LinearSegment, false)->Arg(1000);
BENCHMARK_CAPTURE(Eval, linear_random, HvBaseFCurve::LinearSegment, true)->Arg(1000);
BENCHMARK_CAPTURE(Eval, constant_sequential, HvBaseFCurve::ConstantSegment, false)->Arg(1000);
BENCHMARK_CAPTURE(Eval, constant_random, HvBaseFCurve::ConstantSegment, true)->Arg(1000);
BENCHMARK(SearchAndEvalTenKeys)->Arg(1000)->Arg(100000);
BENCHMARK(EvalHandlesOnKeys);
BENCHMARK(LockAlone);
BENCHMARK(EvalNoLock)->Arg(1000);
BENCHMARK(EvalMany)->Arg(1000);
BENCHMARK(EvalOwnCurve)->Threads(1)->Threads(2)->UseRealTime();
BENCHMARK(EvalOneCurve)->Threads(1)->Threads(2)->UseRealTime();
