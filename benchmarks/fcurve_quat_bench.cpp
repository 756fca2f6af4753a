// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does one angle of a rotation cost as a curve: evaluated near the last parameter and
// anywhere, with 10 to 10,000 keys, beside the rotation without locks; drawn; and dragged? A mouse
// step that moves one key should cost the same however long the curve is, and one that moves all of
// them a pass over the keys. Items are evaluations, keys drawn or keys moved.

#include <hv/hv.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

namespace {

/// Parameters asked for in each round; more than a branch predictor learns by heart.
constexpr unsigned kRequests = 4096;

/// The middle angle over `numKeys` keys at 0, 1, ..., whose angles wander.
std::unique_ptr<HvQuatFCurve> CurveOf(unsigned numKeys)
{
    auto curve = std::make_unique<HvQuatFCurve>(1u);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> step(-1, 1);
    std::vector<HvQuatKey> keys;
    HvPoint3<double> angles;
    for (unsigned i = 0; i < numKeys; ++i) {
        angles = angles + HvPoint3<double>(step(random), step(random), step(random));
        keys.emplace_back(i, angles, 0.0f, 0.0f, 0.0f, 0);
    }
    curve->GetQuatCurve()->SetKeys(keys.data(), numKeys);
    return curve;
}

/// Parameters over the keys: a hundred to a segment in order, or anywhere.
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

template <class Ask>
void AskAll(benchmark::State& state, bool random, Ask ask)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    std::unique_ptr<HvQuatFCurve> const curve = CurveOf(numKeys);
    std::vector<double> const parameters = Parameters(numKeys, random);
    for (auto _ : state) {
        for (double const x : parameters) {
            benchmark::DoNotOptimize(ask(*curve, x));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

void Eval(benchmark::State& state, bool random)
{
    AskAll(state, random, [](HvQuatFCurve const& curve, double x) { return curve.Eval(x, 0); });
}

/// The baseline: the rotation itself, without the locks and the snap to a key.
void EvalRotation(benchmark::State& state, bool random)
{
    AskAll(state, random,
           [](HvQuatFCurve const& curve, double x) { return curve.GetQuatCurve()->Eval(x, 1u); });
}

/// Flattens over the keys `from` to `to`, a key to 20 pixels and a degree to one.
void Flatten(benchmark::State& state, HvQuatFCurve const& curve, double from, double to)
{
    constexpr double kTolerance = 0.25;
    constexpr double kHighest = 1e6;
    HvTransfo4 view;
    view.Scale(20, 1, 1);
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    for (auto _ : state) {
        points.Chop(0);
        tags.Chop(0);
        flags.Chop(0);
        curve.FlattenFromTo(HvExtent2<double>(from, -kHighest, to, kHighest), view, kTolerance,
                            points, tags, flags, 0);
    }
    state.counters["points"] = points.Size();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(to - from));
}

void FlattenTenKeysInView(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    double const from = numKeys / 2 - 5;
    Flatten(state, *CurveOf(numKeys), from, from + 9);
}

void FlattenAllKeys(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    Flatten(state, *CurveOf(numKeys), 0, numKeys - 1);
}

/// One degenerate case: the middle angle passes 90 degrees, where all three swing fast.
void FlattenPole(benchmark::State& state)
{
    HvQuatFCurve curve(0u);
    HvQuatKey const keys[] = {HvQuatKey(0, {0, 1, 0}, 0.0f, 0.0f, 0.0f, 0),
                              HvQuatKey(1, {3.14, 1, 3.15}, 0.0f, 0.0f, 0.0f, 0)};
    curve.GetQuatCurve()->SetKeys(keys, 2);
    Flatten(state, curve, 0, 1);
}

/// Steps back and forth of `count` keys from the middle on.
void Drag(benchmark::State& state, bool all)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    std::unique_ptr<HvQuatFCurve> const curve = CurveOf(numKeys);
    HvDoubleArray keys;
    for (unsigned i = all ? 0 : numKeys / 2; i <= (all ? numKeys - 1 : numKeys / 2); ++i) {
        keys.Add(i);
    }
    HvFCurveKeyMover mover(*curve, keys, HvExtent2<double>(), HvExtent2<double>());
    HvDoubleArray parameters;
    bool isFar = false;
    for (auto _ : state) {
        isFar = !isFar;
        HvPoint2<double> translation(isFar ? 0.3 : 0.15, isFar ? 1 : 0);
        HvExtent2<double> invalid;
        HvExtent2<double> moved;
        parameters.Chop(0);
        benchmark::DoNotOptimize(mover.Update(translation, parameters, invalid, moved, -10, 1e6));
    }
    state.SetItemsProcessed(state.iterations() * keys.Size());
}

}  // namespace

BENCHMARK_CAPTURE(Eval, sequential, false)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(Eval, random, true)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(EvalRotation, sequential, false)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(EvalRotation, random, true)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(FlattenTenKeysInView)->Arg(12)->Arg(1000)->Arg(10000);
BENCHMARK(FlattenAllKeys)->Arg(1000)->Arg(10000);
BENCHMARK(FlattenPole);
BENCHMARK_CAPTURE(Drag, one_key, false)->Arg(100)->Arg(10000)->Arg(100000);
BENCHMARK_CAPTURE(Drag, all_keys, true)->Arg(100)->Arg(10000)->Arg(100000);
