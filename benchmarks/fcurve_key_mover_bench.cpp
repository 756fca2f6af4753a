// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does a mouse step cost that moves keys of a long curve? One key should cost the same however
// long the curve is, as long as it passes none; scattered keys as many times that, or, where each
// passes others, one pass over the curve, never a block move for each; the whole curve one pass.
// The baseline moves the bytes of all keys once.

#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

namespace {

constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

/// Bytes of a key, for the baseline.
struct KeyBytes {
    char bytes[64];
};

template <class Curve>
Curve Empty();
template <>
HvStdFCurve Empty()
{
    return HvStdFCurve(0, kCubic);
}
template <>
HvRawFCurve Empty()
{
    return HvRawFCurve(0);
}

template <class Curve>
Curve Ascending(int n)
{
    Curve curve = Empty<Curve>();
    for (int i = 0; i < n; ++i) {
        curve.CreateKey(i, i % 7);
    }
    return curve;
}

/// Steps back and forth of `count` keys, each so far from the next that they are spread over the
/// curve, by `way` parameters.
template <class Curve>
void Drag(benchmark::State& state, int first, int stride, int count, double way)
{
    Curve curve = Ascending<Curve>(static_cast<int>(state.range(0)));
    HvDoubleArray keys;
    for (int k = 0; k < count; ++k) {
        keys.Add(first + k * stride);
    }
    HvFCurveKeyMover mover(curve, keys, HvExtent2<double>(), HvExtent2<double>());
    HvDoubleArray parameters;
    bool isFar = false;
    for (auto _ : state) {
        isFar = !isFar;
        HvPoint2<double> translation(isFar ? way : way / 2, isFar ? 1 : 0);
        HvExtent2<double> invalid;
        HvExtent2<double> moved;
        parameters.Chop(0);
        benchmark::DoNotOptimize(mover.Update(translation, parameters, invalid, moved, -10, 1e6));
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void MoveOneKey(benchmark::State& state)
{
    Drag<HvStdFCurve>(state, static_cast<int>(state.range(0) / 2), 1, 1, 0.3);
}
BENCHMARK(MoveOneKey)->Arg(100)->Arg(10000)->Arg(100000)->Arg(1000000);

void MoveOneRawKey(benchmark::State& state)
{
    Drag<HvRawFCurve>(state, static_cast<int>(state.range(0) / 2), 1, 1, 0.3);
}
BENCHMARK(MoveOneRawKey)->Arg(100000);

/// The key passes a hundred others at each step.
void MoveOneKeyOverOthers(benchmark::State& state)
{
    Drag<HvStdFCurve>(state, static_cast<int>(state.range(0) / 2), 1, 1, 200.3);
}
BENCHMARK(MoveOneKeyOverOthers)->Arg(10000)->Arg(100000);

void MoveScatteredKeys(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(1));
    Drag<HvStdFCurve>(state, 1, static_cast<int>(state.range(0)) / count, count, 0.3);
}
BENCHMARK(MoveScatteredKeys)
    ->Args({100000, 100})
    ->Args({100000, 1000})
    ->Args({100000, 10000})
    ->Unit(benchmark::kMicrosecond);

/// Each key passes some, so that the whole curve is one place of work.
void MoveScatteredKeysOverOthers(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(1));
    int const stride = static_cast<int>(state.range(0)) / count;
    Drag<HvStdFCurve>(state, 1, stride, count, 2 * stride + 0.3);
}
BENCHMARK(MoveScatteredKeysOverOthers)
    ->Args({100000, 100})
    ->Args({100000, 1000})
    ->Args({100000, 10000})
    ->Unit(benchmark::kMicrosecond);

/// Neighbours in a row, as a selection by a rectangle gives.
void MoveARow(benchmark::State& state)
{
    int const count = static_cast<int>(state.range(1));
    Drag<HvStdFCurve>(state, static_cast<int>(state.range(0)) / 4, 1, count, 0.3);
}
BENCHMARK(MoveARow)->Args({100000, 1000})->Args({100000, 10000})->Unit(benchmark::kMicrosecond);

void MoveAllKeys(benchmark::State& state)
{
    Drag<HvStdFCurve>(state, 0, 1, static_cast<int>(state.range(0)), 0.3);
}
BENCHMARK(MoveAllKeys)->Arg(100000)->Unit(benchmark::kMicrosecond);

void OnePassBaseline(benchmark::State& state)
{
    std::vector<KeyBytes> keys(static_cast<std::size_t>(state.range(0)) + 1);
    for (auto _ : state) {
        std::memmove(keys.data() + 1, keys.data(), (keys.size() - 1) * sizeof(KeyBytes));
        benchmark::DoNotOptimize(keys.data());
    }
}
BENCHMARK(OnePassBaseline)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
