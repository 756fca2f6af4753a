// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Does a redraw cost what is in view, however long the curve is? A curve of n keys is flattened
// over the interval of ten of them; the baseline is a curve that has only those ten. Then the whole
// curve, per key.

#include <hv/hv.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr double kTolerance = 0.25;
constexpr int kKeysInView = 10;

/// A wave through one point a unit, in pixels.
HvStdFCurve MakeWave(int keys)
{
    HvPoint2dArray points;
    for (int i = 0; i < keys; ++i) {
        points.Add(i, 100 * std::sin(i * 0.7));
    }
    return HvStdFCurve(points, HvStdFCurve::InterpCatmullRom, 0, HvBaseFCurve::CubicSegment,
                       HvBaseFCurve::CubicSegment);
}

void Flatten(benchmark::State& state, HvStdFCurve const& curve, double from, double to)
{
    HvTransfo4 view;
    view.Scale(20, 1, 1);
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    for (auto _ : state) {
        points.Chop(0);
        tags.Chop(0);
        flags.Chop(0);
        benchmark::DoNotOptimize(curve.FlattenFromTo(HvExtent2<double>(from, -200, to, 200), view,
                                                     kTolerance, points, tags, flags, 0));
    }
    state.counters["points"] = points.Size();
}

void FlattenTenKeysInView(benchmark::State& state)
{
    int const keys = static_cast<int>(state.range(0));
    double const from = keys / 2 + 0.5;
    Flatten(state, MakeWave(keys), from, from + kKeysInView - 1);
}
BENCHMARK(FlattenTenKeysInView)->Arg(12)->Arg(1000)->Arg(100000);

void FlattenAllKeys(benchmark::State& state)
{
    int const keys = static_cast<int>(state.range(0));
    Flatten(state, MakeWave(keys), 0, keys - 1);
    state.SetItemsProcessed(state.iterations() * keys);
}
BENCHMARK(FlattenAllKeys)->Arg(1000)->Arg(100000);

/// A relative cycle seen from far away in time: cost of the cycles that show, not of those between.
void FlattenDistantCycles(benchmark::State& state)
{
    HvStdFCurve curve(0, 0, 1, 4, HvBaseFCurve::LinearSegment, HvBaseFCurve::LinearSegment);
    curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
    double const span = static_cast<double>(state.range(0));
    Flatten(state, curve, -span, span);
}
BENCHMARK(FlattenDistantCycles)->Arg(1000)->Arg(1000000000);

}  // namespace
