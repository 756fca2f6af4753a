// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does a property cost on top of its path? Flattening and sampling with values should cost
// little more than without; a step of a morph between two strokes is a frame's work; a value that
// arrives with a point of the pen costs the same however long the stroke is.

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/pathbuild/HvLinearPathPropBuilder.h>
#include <hv/pathbuild/HvMipPath2fProp1d.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

// A wavy stroke of about `n` points, with a key of its property at each node.
HvPath2fProp1d Stroke(int n, float amplitude)
{
    HvPath2fProp1d path(static_cast<unsigned int>(n));
    auto const at = [&](int i) {
        float const x = static_cast<float>(i);
        return HvPoint2<float>(x, amplitude * std::sin(0.1F * x));
    };
    HvRawFCurve curve(0.0, 1.0);
    path.Moveto(at(0));
    for (int i = 0; i + 3 < n; i += 3) {
        path.Curveto(at(i + 1), at(i + 2), at(i + 3));
        curve.AppendLinearSegment({i + 3.0, 1.0 + 0.5 * std::sin(0.07 * i)});
    }
    path.SetPropCurve(0, curve);
    return path;
}

struct Output {
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;

    void Clear()
    {
        points.Chop(0);
        tags.Chop(0);
        values.Chop(0);
    }
};

// Runs `operation(path, gc, output)` and counts the points that it gives.
template <class Operation>
void Run(benchmark::State& state, Operation operation)
{
    HvPath2fProp1d const path = Stroke(static_cast<int>(state.range(0)), 20);
    HvGC const gc;
    Output output;
    for (auto _ : state) {
        output.Clear();
        operation(path, gc, output);
        benchmark::DoNotOptimize(output.points.Data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * output.points.Size());
}

void FlattenAlone(benchmark::State& state)
{
    Run(state, [](auto const& path, auto const& gc, Output& out) {
        path.Flatten(gc, out.points, out.tags);
    });
}
void Flatten(benchmark::State& state)
{
    Run(state, [](auto const& path, auto const& gc, Output& out) {
        path.Flatten(gc, out.points, out.tags, out.values);
    });
}
void SampleAlone(benchmark::State& state)
{
    Run(state, [](auto const& path, auto const& gc, Output& out) {
        path.Sample(gc, out.points, out.tags);
    });
}
void Sample(benchmark::State& state)
{
    Run(state, [](auto const& path, auto const& gc, Output& out) {
        path.Sample(gc, out.points, out.tags, out.values);
    });
}
void PropertySample(benchmark::State& state)
{
    Run(state, [](auto const& path, auto const& gc, Output& out) {
        path.PropertySample(gc, out.points, out.tags, out.values);
    });
}

void Lerp(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    HvPath2fProp1d const a = Stroke(n, 20);
    HvPath2fProp1d const b = Stroke(n, 35);
    HvPath2fProp1d between(0u);
    for (auto _ : state) {
        between.SetToLerpAB(a, b, 0.3, 1.0, 0.01);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * n);
}

void BuildByPoints(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    HvGC const gc;
    for (auto _ : state) {
        HvPath2fProp1d path(0u);
        HvLinearPathPropBuilder builder(gc, &path, 0.05);
        builder.StartSubpath({0, 0}, 1.0);
        for (int i = 1; i < n; ++i) {
            float const x = static_cast<float>(i);
            builder.AddInputPoint({x, 30 * std::sin(0.05F * x)}, 1.0 + 0.5 * std::sin(0.03 * i), 0);
            if (i % 8 == 0) {
                builder.GetTrailingSamples();
            }
        }
        builder.EndSubpath({static_cast<float>(n), 0}, 1.0, 0);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * n);
}

void BuildLevels(benchmark::State& state)
{
    HvPath2fProp1d const path = Stroke(static_cast<int>(state.range(0)), 20);
    for (auto _ : state) {
        HvMipPath2fProp1d const mip(path, 0.25, 0.01);
        benchmark::DoNotOptimize(mip.Level(mip.NumLevels() - 1).get());
    }
}

BENCHMARK(FlattenAlone)->Arg(1000)->Arg(100000);
BENCHMARK(Flatten)->Arg(1000)->Arg(100000);
BENCHMARK(SampleAlone)->Arg(1000)->Arg(100000);
BENCHMARK(Sample)->Arg(1000)->Arg(100000);
BENCHMARK(PropertySample)->Arg(1000)->Arg(100000);
BENCHMARK(Lerp)->Arg(1000)->Arg(100000);
BENCHMARK(BuildByPoints)->Arg(1000)->Arg(100000);
BENCHMARK(BuildLevels)->Arg(1000);

}  // namespace
