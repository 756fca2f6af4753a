// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What do the operations on whole stretches cost, per key of the curve: resampling, reducing lines
// and cubics, smoothing, and snapshots over cycles? Does the cost of a key stay the same from one
// curve of 1,000 keys to one of 100,000? The baseline of the long curve are a hundred short ones
// and one copy of the long one: as many keys, and as much new memory, for an operation that can
// fail copies its curve first. The copies that each round starts from are timed on their own. Items
// are keys of the curves, of a snapshot keys that it makes.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

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

/// Times `operate` on fresh copies of a wave, all there at once, each round. Several come with a
/// copy of a wave of all their keys.
template <class Operate>
void OnCopies(benchmark::State& state, HvBaseFCurve::FSKind kind, Operate operate)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    auto const numCurves = static_cast<unsigned>(state.range(1));
    auto const wave = Wave(kind, numKeys);
    auto const whole = numCurves == 1 ? nullptr : Wave(kind, numKeys * numCurves);
    std::vector<std::unique_ptr<HvStdFCurve>> curves(numCurves);
    for (auto _ : state) {
        for (auto& curve : curves) {
            curve = std::make_unique<HvStdFCurve>(*wave);
        }
        if (whole) {
            benchmark::DoNotOptimize(std::make_unique<HvStdFCurve>(*whole));
        }
        for (auto& curve : curves) {
            benchmark::DoNotOptimize(operate(*curve));
        }
        for (auto& curve : curves) {
            curve.reset();
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * state.range(1));
}

/// Keys of a curve, and curves.
void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Args({1000, 1})->Args({1000, 100})->Args({100000, 1});
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

BENCHMARK(Copy)->Apply(Sizes);
BENCHMARK(ReduceLines)->Apply(Sizes);
BENCHMARK(ReduceCubics)->Apply(Sizes);
BENCHMARK(ReduceCubicsToTwoKeys)->Apply(Sizes);
BENCHMARK(Resample)->Apply(Sizes);
BENCHMARK(Smooth)->Apply(Sizes);
BENCHMARK(SnapShotOverCycles)->Arg(1000)->Arg(100000);
