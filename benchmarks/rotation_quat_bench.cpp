// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does it cost to take the angles out of a quaternion, in each order, near a pole and at it?
// What does one evaluation of a quaternion curve cost, near the last time and anywhere, with 10 to
// 10,000 keys, and what of it is the spline, beside a textbook slerp between the two keys around
// the time? What does an edit cost, with an evaluation after it and among others? Items are
// quaternions, evaluations or keys.

#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatSpline.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace {

using Angles = HvPoint3<double>;

/// Questions asked in each round; more than a branch predictor learns by heart.
constexpr unsigned kRequests = 4096;

/// Where the middle angles of the quaternions lie.
enum class Middle {
    Anywhere,
    NearPole,
    AtPole
};

std::vector<HvQuat> Quaternions(HvQuat::RotOrder order, Middle middle)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> turn(-3.14, 3.14);
    std::vector<HvQuat> quaternions;
    for (unsigned i = 0; i < kRequests; ++i) {
        Angles angles(turn(random), turn(random), turn(random));
        if (middle != Middle::Anywhere) {
            angles.y = 1.5707963267948966 + (middle == Middle::NearPole ? 1e-3 : 0);
        }
        quaternions.emplace_back(angles, order);
    }
    return quaternions;
}

void Get(benchmark::State& state, HvQuat::RotOrder order, Middle middle)
{
    std::vector<HvQuat> const quaternions = Quaternions(order, middle);
    Angles const reference(0.1, 0.2, 0.3);
    Angles angles;
    for (auto _ : state) {
        for (HvQuat const& q : quaternions) {
            q.Get(angles, reference, order);
            benchmark::DoNotOptimize(angles);
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

void Make(benchmark::State& state)
{
    std::vector<HvQuat> const quaternions = Quaternions(HvQuat::XYZ, Middle::Anywhere);
    for (auto _ : state) {
        for (HvQuat const& q : quaternions) {
            benchmark::DoNotOptimize(HvQuat(Angles(q.x, q.y, q.z), HvQuat::XYZ));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

/// `numKeys` keys at 0, 1, ..., or at times that grow with the square, whose angles wander.
std::vector<HvQuatKey> Keys(unsigned numKeys, bool even)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> step(-1, 1);
    std::vector<HvQuatKey> keys;
    Angles angles;
    for (unsigned i = 0; i < numKeys; ++i) {
        angles = angles + Angles(step(random), step(random), step(random));
        keys.emplace_back(even ? i : i * 1e-3 * i, angles, 0.0f, 0.0f, 0.0f, 0);
    }
    return keys;
}

HvQuatCurve CurveOf(std::vector<HvQuatKey> const& keys)
{
    HvQuatCurve curve;
    for (HvQuatKey const& key : keys) {
        curve.SetKey(key, 0.0);
    }
    return curve;
}

/// Times over the keys: a hundred to a segment in order, or anywhere.
std::vector<double> Times(std::vector<HvQuatKey> const& keys, bool random)
{
    std::mt19937 engine(3);
    double const last = keys.back().time;
    std::uniform_real_distribution<double> anywhere(0, last);
    std::vector<double> times(kRequests);
    for (unsigned i = 0; i < kRequests; ++i) {
        times[i] = random ? anywhere(engine) : std::fmod(i * 0.01, last);
    }
    return times;
}

void Eval(benchmark::State& state, bool random, bool even)
{
    std::vector<HvQuatKey> const keys = Keys(static_cast<unsigned>(state.range(0)), even);
    HvQuatCurve const curve = CurveOf(keys);
    std::vector<double> const times = Times(keys, random);
    for (auto _ : state) {
        for (double const t : times) {
            benchmark::DoNotOptimize(curve.Eval(t));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

/// The quaternion alone, without the angles.
void EvalSpline(benchmark::State& state, bool random)
{
    std::vector<HvQuatKey> const keys = Keys(static_cast<unsigned>(state.range(0)), true);
    HvQuatSpline const spline(static_cast<int>(keys.size()), keys.data(), HvQuat::XYZ, 1);
    std::vector<double> const times = Times(keys, random);
    for (auto _ : state) {
        for (double const t : times) {
            benchmark::DoNotOptimize(spline.Eval(t));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

/// Relative cycles far away cost what near ones do.
void EvalRelativeCycle(benchmark::State& state)
{
    std::vector<HvQuatKey> const keys = Keys(10, true);
    HvQuatCurve curve = CurveOf(keys);
    curve.SetExtrapolationMethod(HvQuatSpline::RelativeCycleExtrapolation);
    double t = std::pow(10.0, static_cast<double>(state.range(0)));
    for (auto _ : state) {
        t = std::nextafter(t, 1e300);
        benchmark::DoNotOptimize(curve.Eval(t));
    }
    state.SetItemsProcessed(state.iterations());
}

/// The baseline: bisection for the two keys, their slerp, no angles.
/// Source: K. Shoemake, "Animating rotation with quaternion curves", 1985.
void TextbookSlerp(benchmark::State& state, bool random)
{
    std::vector<HvQuatKey> const keys = Keys(static_cast<unsigned>(state.range(0)), true);
    std::vector<double> keyTimes;
    std::vector<HvQuat> quaternions;
    for (HvQuatKey const& key : keys) {
        keyTimes.push_back(key.time);
        quaternions.emplace_back(key.angles);
    }
    std::vector<double> const times = Times(keys, random);
    for (auto _ : state) {
        for (double const t : times) {
            auto const after = std::upper_bound(keyTimes.begin() + 1, keyTimes.end() - 1, t);
            auto const i = static_cast<std::size_t>(after - keyTimes.begin());
            HvQuat const& a = quaternions[i - 1];
            HvQuat const& b = quaternions[i];
            double const u = (t - keyTimes[i - 1]) / (keyTimes[i] - keyTimes[i - 1]);
            double const dot = a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
            double const angle = std::acos(std::fabs(dot));
            double const sine = std::sin(angle);
            double const f = std::sin((1 - u) * angle) / sine;
            double const g = std::copysign(std::sin(u * angle) / sine, dot);
            benchmark::DoNotOptimize(
                HvQuat(f * a.w + g * b.w, f * a.x + g * b.x, f * a.y + g * b.y, f * a.z + g * b.z));
        }
    }
    state.SetItemsProcessed(state.iterations() * kRequests);
}

/// An edit and the evaluation that makes the spline anew; items are keys.
void EditAndEval(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    HvQuatCurve curve = CurveOf(Keys(numKeys, true));
    double degrees = 0;
    for (auto _ : state) {
        curve.SetKeyValue(numKeys / 2, 0, degrees += 0.1);
        benchmark::DoNotOptimize(curve.Eval(numKeys * 0.5));
    }
    state.SetItemsProcessed(state.iterations() * numKeys);
}

/// A curve made by setting one angle after the other, which looks at the curve each time.
void SetComponents(benchmark::State& state)
{
    auto const numKeys = static_cast<unsigned>(state.range(0));
    for (auto _ : state) {
        HvQuatCurve curve;
        for (unsigned i = 0; i < numKeys; ++i) {
            curve.SetKey(i, i % 3, i, 0.0);
        }
        benchmark::DoNotOptimize(curve.GetNumKeys());
    }
    state.SetItemsProcessed(state.iterations() * numKeys);
}

}  // namespace

BENCHMARK_CAPTURE(Get, xyz, HvQuat::XYZ, Middle::Anywhere);
BENCHMARK_CAPTURE(Get, xzy, HvQuat::XZY, Middle::Anywhere);
BENCHMARK_CAPTURE(Get, yxz, HvQuat::YXZ, Middle::Anywhere);
BENCHMARK_CAPTURE(Get, yzx, HvQuat::YZX, Middle::Anywhere);
BENCHMARK_CAPTURE(Get, zxy, HvQuat::ZXY, Middle::Anywhere);
BENCHMARK_CAPTURE(Get, zyx, HvQuat::ZYX, Middle::Anywhere);
BENCHMARK_CAPTURE(Get, xyz_near_pole, HvQuat::XYZ, Middle::NearPole);
BENCHMARK_CAPTURE(Get, xyz_at_pole, HvQuat::XYZ, Middle::AtPole);
BENCHMARK(Make);
BENCHMARK_CAPTURE(Eval, sequential, false, true)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(Eval, random, true, true)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(Eval, random_uneven, true, false)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(EvalSpline, sequential, false)->Arg(1000);
BENCHMARK_CAPTURE(EvalSpline, random, true)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK_CAPTURE(TextbookSlerp, sequential, false)->Arg(1000);
BENCHMARK_CAPTURE(TextbookSlerp, random, true)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(EvalRelativeCycle)->Arg(2)->Arg(9)->Arg(17);
BENCHMARK(EditAndEval)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(SetComponents)->RangeMultiplier(10)->Range(10, 10000);
