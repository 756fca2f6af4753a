// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does a position on a motion path cost, in sequence, at random and after an edit, from 3 to
// 10,000 nodes, and how far is a call of its own from EvalSequence? Sequences take 32 samples to a
// segment.

#include <hv/motionpath/HvMotionPath3d.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

/// A thousandth of the segments' size: what a preview asks for.
constexpr double kTolerance = 1e-2;
constexpr unsigned int kSamplesPerSegment = 32;

/// Curved segments some ten units long, one unit of time each.
HvMotionPath3d PathOf(unsigned int nodes)
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> place(-5, 5);
    auto const point = [&] {
        return HvPoint3<double>(place(engine), place(engine), place(engine));
    };
    HvMotionPath3d path;
    path.Moveto(point(), 0);
    for (unsigned int k = 1; k < nodes; ++k) {
        path.Curveto(point(), point(), point(), k);
    }
    return path;
}

unsigned int NodesOf(benchmark::State const& state)
{
    return static_cast<unsigned int>(state.range(0));
}

/// Times inside a path, shuffled.
std::vector<double> RandomTimes(unsigned int nodes)
{
    std::mt19937 engine(11);
    std::uniform_real_distribution<double> time(0, nodes - 1.0);
    std::vector<double> times(8192);
    for (double& t : times) {
        t = time(engine);
    }
    return times;
}

void EvalInSequence(benchmark::State& state)
{
    HvMotionPath3d const path = PathOf(NodesOf(state));
    double const last = path.GetLastTime(0);
    HvPoint3<double> p;
    double t = 0;
    for (auto _ : state) {
        path.Eval(t, kTolerance, p, 0);
        benchmark::DoNotOptimize(p);
        t += 1.0 / kSamplesPerSegment;
        t = t > last ? 0 : t;
    }
    state.SetItemsProcessed(state.iterations());
}

void EvalAtRandom(benchmark::State& state)
{
    HvMotionPath3d const path = PathOf(NodesOf(state));
    std::vector<double> const times = RandomTimes(NodesOf(state));
    HvPoint3<double> p;
    std::size_t i = 0;
    for (auto _ : state) {
        path.Eval(times[i++ % times.size()], kTolerance, p, 0);
        benchmark::DoNotOptimize(p);
    }
    state.SetItemsProcessed(state.iterations());
}

/// One sequence over a path of which nothing is flattened yet.
void EvalSequence(benchmark::State& state)
{
    HvMotionPath3d path = PathOf(NodesOf(state));
    HvPoint3<double> const first;
    HvPoint3dArray out;
    for (auto _ : state) {
        path.ReplaceControlPoint(0, first, 0);
        out.Chop(0);
        path.EvalSequence(0, path.GetLastTime(0), 1.0 / kSamplesPerSegment, kTolerance, out, 0);
        benchmark::DoNotOptimize(out.Data());
    }
    state.SetItemsProcessed(state.iterations() * out.Size());
}

/// The same samples by calls of their own.
void EvalEachOfASequence(benchmark::State& state)
{
    HvMotionPath3d path = PathOf(NodesOf(state));
    HvPoint3<double> const first;
    unsigned int const count = (NodesOf(state) - 1) * kSamplesPerSegment + 1;
    HvPoint3<double> p;
    for (auto _ : state) {
        path.ReplaceControlPoint(0, first, 0);
        for (unsigned int i = 0; i < count; ++i) {
            path.Eval(i * (1.0 / kSamplesPerSegment), kTolerance, p, 0);
            benchmark::DoNotOptimize(p);
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// The first position after each edit: three cubics are flattened.
void EvalAfterAnEdit(benchmark::State& state)
{
    HvMotionPath3d path = PathOf(NodesOf(state));
    std::vector<double> const times = RandomTimes(NodesOf(state));
    HvPoint3<double> const first;
    HvPoint3<double> p;
    std::size_t i = 0;
    for (auto _ : state) {
        path.ReplaceControlPoint(0, first, 0);
        path.Eval(times[i++ % times.size()], kTolerance, p, 0);
        benchmark::DoNotOptimize(p);
    }
    state.SetItemsProcessed(state.iterations());
}

/// The degenerate case: every node a straight segment, nothing to flatten.
void EvalOnLines(benchmark::State& state)
{
    HvMotionPath3d path;
    path.Moveto({}, 0);
    for (unsigned int k = 1; k < NodesOf(state); ++k) {
        path.Lineto({k * 1.0, 0, 0}, k);
    }
    std::vector<double> const times = RandomTimes(NodesOf(state));
    HvPoint3<double> p;
    std::size_t i = 0;
    for (auto _ : state) {
        path.Eval(times[i++ % times.size()], kTolerance, p, 0);
        benchmark::DoNotOptimize(p);
    }
    state.SetItemsProcessed(state.iterations());
}

void Sizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(3)->Arg(100)->Arg(1000)->Arg(10000);
}

BENCHMARK(EvalInSequence)->Apply(Sizes);
BENCHMARK(EvalAtRandom)->Apply(Sizes);
BENCHMARK(EvalSequence)->Apply(Sizes);
BENCHMARK(EvalEachOfASequence)->Apply(Sizes);
BENCHMARK(EvalAfterAnEdit)->Apply(Sizes);
BENCHMARK(EvalOnLines)->Apply(Sizes);

}  // namespace
