// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does it cost to drive many curves by one? 1,000 driven curves of four keys are composed over
// one controller, whose length is the argument; the longest is that of a minute of captured motion.
// Composed are lines, which need no fit, and cubics, which do, to a thousandth of their range. The
// baseline evaluates the pairs at twenty times for each key of the controller, one by one and in
// batches. Items are driven curves; "keys" are those of one composition on average.

#include <hv/control/HvControlOperator.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace {

using CurvePtr = std::unique_ptr<HvStdFCurve>;

constexpr unsigned kNumDriven = 1000;
constexpr double kTolerance = 1e-3;

/// A wave between about 0 and 1 with keys at 0, 1, ..., ten to a period.
CurvePtr Controller(unsigned numKeys)
{
    HvPoint2dArray points(numKeys);
    for (unsigned i = 0; i < numKeys; ++i) {
        points.Add(HvPoint2<double>(i, 0.5 + 0.5 * std::sin(i * 0.628)));
    }
    return std::make_unique<HvStdFCurve>(points, HvStdFCurve::InterpCatmullRom, 0,
                                         HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
}

/// Curves of four keys from 0 to 1, with values of that range.
std::vector<CurvePtr> Driven(HvBaseFCurve::FSKind kind)
{
    std::vector<CurvePtr> curves;
    for (unsigned k = 0; k < kNumDriven; ++k) {
        HvPoint2dArray points(4);
        for (unsigned i = 0; i < 4; ++i) {
            points.Add(HvPoint2<double>(i / 3.0, 0.5 + 0.5 * std::sin(k + 2.5 * i)));
        }
        curves.push_back(
            std::make_unique<HvStdFCurve>(points, HvStdFCurve::InterpCatmullRom, 0, kind, kind));
        curves.back()->ConvertToUniformSegmentKind(kind);
    }
    return curves;
}

void Compose(benchmark::State& state, HvBaseFCurve::FSKind kind)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    CurvePtr const controller = Controller(numKeys);
    std::vector<CurvePtr> const driven = Driven(kind);
    std::int64_t keys = 0;
    for (auto _ : state) {
        for (CurvePtr const& curve : driven) {
            CurvePtr const composed(
                HvControlOperator::Compose(*controller, *curve, 0, numKeys - 1.0, kTolerance));
            keys += composed->GetNumKeys();
        }
    }
    state.SetItemsProcessed(state.iterations() * kNumDriven);
    state.counters["keys"] = static_cast<double>(keys) /
                             static_cast<double>(state.iterations() * std::int64_t{kNumDriven});
}

void ComposeLines(benchmark::State& state)
{
    Compose(state, HvBaseFCurve::LinearSegment);
}

void ComposeCubics(benchmark::State& state)
{
    Compose(state, HvBaseFCurve::CubicSegment);
}

/// Twenty times between two keys of the controller.
std::vector<double> Times(unsigned numKeys)
{
    std::vector<double> times;
    for (unsigned i = 0; i < 20 * (numKeys - 1); ++i) {
        times.push_back(i / 20.0);
    }
    return times;
}

void EvalEach(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    CurvePtr const controller = Controller(numKeys);
    std::vector<CurvePtr> const driven = Driven(HvBaseFCurve::CubicSegment);
    std::vector<double> const times = Times(numKeys);
    for (auto _ : state) {
        for (CurvePtr const& curve : driven) {
            HvControlOperator const op(*controller, *curve);
            for (double const t : times) {
                benchmark::DoNotOptimize(op.Eval(t));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * kNumDriven);
}

void EvalBatch(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    CurvePtr const controller = Controller(numKeys);
    std::vector<CurvePtr> const driven = Driven(HvBaseFCurve::CubicSegment);
    std::vector<double> const times = Times(numKeys);
    std::vector<double> values(times.size());
    for (auto _ : state) {
        for (CurvePtr const& curve : driven) {
            HvControlOperator(*controller, *curve)
                .EvalMany(times.data(), static_cast<unsigned>(times.size()), values.data());
            benchmark::DoNotOptimize(values.data());
        }
    }
    state.SetItemsProcessed(state.iterations() * kNumDriven);
}

}  // namespace

BENCHMARK(ComposeLines)->Arg(10)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(ComposeCubics)->Arg(10)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(EvalEach)->Arg(10)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(EvalBatch)->Arg(10)->Arg(1000)->Unit(benchmark::kMillisecond);
