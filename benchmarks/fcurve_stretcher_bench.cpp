// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does a mouse step of a region's stretch cost on a long curve? A row of keys should cost the
// same however long the curve around it is; keys of a list, spread over the curve, one pass over
// what lies between them, never a block move for each; a ripple over all keys one pass; values no
// more than the keys themselves. Construction reads the keys concerned once. The baseline moves the
// bytes of all keys once.

#include <hv/fcurve/HvFCurveStretcher.h>
#include <hv/fcurve/HvStdFCurve.h>
#include <hv/foundation/HvDoubleArray.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <limits>
#include <vector>

namespace {

constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;

/// Bytes of a key, for the baseline.
struct KeyBytes {
    char bytes[64];
};

HvStdFCurve Ascending(int n)
{
    HvStdFCurve curve(0, kCubic);
    for (int i = 0; i < n; ++i) {
        curve.CreateKey(i, i % 7);
    }
    return curve;
}

/// What a stretch concerns.
struct Stretched {
    HvExtent2<double> region;
    HvDoubleArray listed;
    HvPoint2<double> pivot;
    HvBaseFCurve::RegionHandle handle;
    int ripple;
};

/// The keys from `first` on, `count` of them, about the right end.
Stretched Row(int first, int count, HvBaseFCurve::RegionHandle handle, int ripple = 0)
{
    double const last = first + count - 0.5;
    return {HvExtent2<double>(first - 0.5, -1, last, 8), HvDoubleArray(),
            HvPoint2<double>(ripple ? first + count / 2 + 0.5 : last, -1), handle, ripple};
}

/// Steps back and forth of the dragged side.
void Drag(benchmark::State& state, Stretched what)
{
    HvStdFCurve curve = Ascending(static_cast<int>(state.range(0)));
    HvFCurveStretcher stretcher(curve, what.region, what.listed, HvExtent2<double>(), what.pivot,
                                what.handle, what.ripple, 0);
    HvDoubleArray before;
    HvDoubleArray after;
    bool isFar = false;
    for (auto _ : state) {
        isFar = !isFar;
        double const amount = isFar ? 0.4 : 0.2;
        HvPoint2<double> translation(amount, amount);
        HvExtent2<double> invalid;
        HvExtent2<double> region;
        int limited = 0;
        before.Chop(0);
        after.Chop(0);
        benchmark::DoNotOptimize(
            stretcher.Update(translation, -10, 1e6, before, after, invalid, region, limited));
    }
}

void StretchARow(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    int const count = static_cast<int>(state.range(1));
    Drag(state, Row(n / 4, count, HvBaseFCurve::LeftHandle));
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(StretchARow)
    ->Args({100000, 10})
    ->Args({10000, 1000})
    ->Args({100000, 1000})
    ->Args({100000, 10000})
    ->Unit(benchmark::kMicrosecond);

/// The others in the width of the region have no height in it and stay.
void StretchListedKeys(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    int const count = static_cast<int>(state.range(1));
    Stretched what = Row(0, n, HvBaseFCurve::LeftHandle);
    what.region.min.y = what.region.max.y = std::numeric_limits<double>::infinity();
    for (int k = 0; k < count; ++k) {
        what.listed.Add(k * (n / count) + 1);
    }
    Drag(state, what);
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(StretchListedKeys)
    ->Args({100000, 100})
    ->Args({100000, 1000})
    ->Args({100000, 10000})
    ->Unit(benchmark::kMicrosecond);

void StretchWithRippleOnBothSides(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    Drag(state, Row(n / 4, 1000, HvBaseFCurve::LeftHandle, 1));
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(StretchWithRippleOnBothSides)->Arg(10000)->Arg(100000)->Unit(benchmark::kMicrosecond);

void StretchValues(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    int const count = static_cast<int>(state.range(1));
    Drag(state, Row(n / 4, count, HvBaseFCurve::TopHandle));
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(StretchValues)->Args({100000, 1000})->Unit(benchmark::kMicrosecond);

void TakeHoldOfARow(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    HvStdFCurve curve = Ascending(n);
    Stretched what = Row(n / 4, static_cast<int>(state.range(1)), HvBaseFCurve::LeftHandle);
    for (auto _ : state) {
        HvFCurveStretcher stretcher(curve, what.region, what.listed, HvExtent2<double>(),
                                    what.pivot, what.handle, what.ripple, 0);
        benchmark::DoNotOptimize(&stretcher);
    }
    state.SetItemsProcessed(state.iterations() * state.range(1));
}
BENCHMARK(TakeHoldOfARow)->Args({100000, 1000})->Unit(benchmark::kMicrosecond);

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
