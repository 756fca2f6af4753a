// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What do the operations on whole stretches cost, per key of the curve: resampling, reducing lines
// and cubics, smoothing, and snapshots over cycles? Does the cost of a key stay the same from 1,000
// to 100,000 keys? The copy that each round starts from is timed on its own as the baseline. Items
// are keys of the curve, of a snapshot keys that it makes.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>

namespace {

/// A wave of `numKeys` keys at 0, 1, ..., a hundred to a period.
std::unique_ptr<HvStdFCurve> Wave(HvBaseFCurve::FSKind kind, unsigned numKeys)
{
    HvPoint2dArray points(numKeys);
    for (unsigned i = 0; i < numKeys; ++i) {
        points.Add(HvPoint2<double>(i, std::sin(i * 0.0628)));
    }
    auto curve =
        std::make_unique<HvStdFCurve>(points, HvStdFCurve::InterpCatmullRom, 0, kind, kind);
    curve->ConvertToUniformSegmentKind(kind);
    return curve;
}

/// Times `operate` on a fresh copy of a wave each round.
template <class Operate>
void OnCopies(benchmark::State& state, HvBaseFCurve::FSKind kind, Operate operate)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    auto const wave = Wave(kind, numKeys);
    for (auto _ : state) {
        HvStdFCurve curve(*wave);
        benchmark::DoNotOptimize(operate(curve));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(numKeys));
}

void Copy(benchmark::State& state)
{
    OnCopies(state, HvBaseFCurve::CubicSegment, [](HvStdFCurve&) { return 1; });
}

void ReduceLines(benchmark::State& state)
{
    OnCopies(state, HvBaseFCurve::LinearSegment,
             [](HvStdFCurve& curve) { return curve.ReduceNumKeys(0.01); });
}

void ReduceCubics(benchmark::State& state)
{
    OnCopies(state, HvBaseFCurve::CubicSegment,
             [](HvStdFCurve& curve) { return curve.ReduceNumKeys(0.01); });
}

/// The worst case of a cubic run: one stretch takes all keys.
void ReduceCubicsToTwoKeys(benchmark::State& state)
{
    OnCopies(state, HvBaseFCurve::CubicSegment,
             [](HvStdFCurve& curve) { return curve.ReduceNumKeys(10); });
}

void Resample(benchmark::State& state)
{
    auto const last = static_cast<double>(state.range(0) - 1);
    OnCopies(state, HvBaseFCurve::CubicSegment,
             [last](HvStdFCurve& curve) { return curve.ResampleSequence(0, last, 0.7, 0, 0); });
}

void Smooth(benchmark::State& state)
{
    double const kernel[] = {0.1, 0.2, 0.4, 0.2, 0.1};
    auto const last = static_cast<double>(state.range(0) - 1);
    OnCopies(state, HvBaseFCurve::CubicSegment,
             [&](HvStdFCurve& curve) { return curve.SmoothSequence(0, last, kernel, 5); });
}

/// 1,000 keys repeated over as many cycles as give the number of keys.
void SnapShotOverCycles(benchmark::State& state)
{
    auto const curve = Wave(HvBaseFCurve::CubicSegment, 1001);
    curve->SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    auto const to = static_cast<double>(state.range(0));
    for (auto _ : state) {
        std::unique_ptr<HvBaseFCurve> const snap(
            curve->SnapShot(0.5, to, HvBaseFCurve::ConstantExtrapolation));
        benchmark::DoNotOptimize(snap.get());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

}  // namespace

BENCHMARK(Copy)->Arg(1000)->Arg(100000);
BENCHMARK(ReduceLines)->Arg(1000)->Arg(100000);
BENCHMARK(ReduceCubics)->Arg(1000)->Arg(100000);
BENCHMARK(ReduceCubicsToTwoKeys)->Arg(1000)->Arg(100000);
BENCHMARK(Resample)->Arg(1000)->Arg(100000);
BENCHMARK(Smooth)->Arg(1000)->Arg(100000);
BENCHMARK(SnapShotOverCycles)->Arg(1000)->Arg(100000);
