// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does it cost to build and to cut down a standard curve? Keys appended in order should cost
// the same each, however long the curve; a key inserted anywhere one search and one block move; a
// range removed one block move. The baselines move the same bytes in a bare array.

#include <hv/fcurve/HvStdFCurve.h>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr HvBaseFCurve::FSKind kCubic = HvBaseFCurve::CubicSegment;
constexpr unsigned int kSeed = 20260101;

/// Bytes of a key, for the baselines.
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

void AppendInOrder(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        HvStdFCurve const curve = Ascending(n);
        benchmark::DoNotOptimize(curve.GetNumKeys());
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(AppendInOrder)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void AppendInOrderBaseline(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        std::vector<KeyBytes> keys;
        for (int i = 0; i < n; ++i) {
            keys.emplace_back();
            benchmark::DoNotOptimize(keys.data());
        }
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(AppendInOrderBaseline)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// Keys in random order: every insertion moves half of the keys there are on average.
void InsertAtRandom(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> parameter(0, 1000);
    std::vector<double> parameters(static_cast<std::size_t>(n));
    for (double& x : parameters) {
        x = parameter(random);
    }
    for (auto _ : state) {
        HvStdFCurve curve(0, kCubic);
        for (double const x : parameters) {
            curve.CreateKey(x, 1);
        }
        benchmark::DoNotOptimize(curve.GetNumKeys());
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(InsertAtRandom)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// One key in and out in the middle of a long curve.
void InsertAndRemoveInTheMiddle(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    HvStdFCurve curve = Ascending(n);
    double const x = n / 2 + 0.5;
    for (auto _ : state) {
        curve.CreateKey(x, 1);
        curve.RemoveKey(x, 0);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(InsertAndRemoveInTheMiddle)->Arg(100)->Arg(10000)->Arg(100000);

void InsertAndRemoveInTheMiddleBaseline(benchmark::State& state)
{
    std::size_t const n = static_cast<std::size_t>(state.range(0));
    std::vector<KeyBytes> keys(n + 1);
    std::size_t const tail = (n - n / 2) * sizeof(KeyBytes);
    for (auto _ : state) {
        std::memmove(keys.data() + n / 2 + 1, keys.data() + n / 2, tail);
        benchmark::DoNotOptimize(keys.data());
        std::memmove(keys.data() + n / 2, keys.data() + n / 2 + 1, tail);
        benchmark::DoNotOptimize(keys.data());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(InsertAndRemoveInTheMiddleBaseline)->Arg(100000);

/// The keys of the middle half go at once.
void RemoveARange(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    HvStdFCurve const whole = Ascending(n);
    for (auto _ : state) {
        state.PauseTiming();
        HvStdFCurve curve(whole);
        state.ResumeTiming();
        curve.RemoveKeys(n / 4, 3 * (n / 4), 0, 0);
        benchmark::DoNotOptimize(curve.GetNumKeys());
    }
    state.SetItemsProcessed(state.iterations() * (n / 2));
}
BENCHMARK(RemoveARange)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

/// One look at each key that goes, which might be locked, those that stay moved into a block of
/// half the size, and the large one given back.
void RemoveARangeBaseline(benchmark::State& state)
{
    std::size_t const n = static_cast<std::size_t>(state.range(0));
    std::vector<KeyBytes> const whole(n);
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<KeyBytes> keys(whole);
        state.ResumeTiming();
        int locked = 0;
        for (std::size_t i = n / 4; i < 3 * (n / 4); ++i) {
            locked |= keys[i].bytes[0];
        }
        benchmark::DoNotOptimize(locked);
        std::vector<KeyBytes> kept;
        kept.reserve(n / 2);
        auto const quarter = static_cast<std::ptrdiff_t>(n / 4);
        kept.insert(kept.end(), keys.begin(), keys.begin() + quarter);
        kept.insert(kept.end(), keys.begin() + 3 * quarter, keys.end());
        keys.swap(kept);
        benchmark::DoNotOptimize(keys.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) / 2);
}
BENCHMARK(RemoveARangeBaseline)->Arg(1000000)->Unit(benchmark::kMicrosecond);

/// A stretch cut out of the middle and pasted back.
void CutAndPaste(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    HvStdFCurve curve = Ascending(n);
    HvStdFCurve clipboard(0, kCubic);
    for (auto _ : state) {
        curve.Cut(n / 2, n / 2 + 10, clipboard);
        curve.Paste(clipboard, n / 2, n / 2);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(CutAndPaste)->Arg(100)->Arg(100000)->Unit(benchmark::kMicrosecond);

}  // namespace
