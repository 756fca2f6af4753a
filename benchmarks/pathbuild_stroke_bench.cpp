// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does a live stroke cost, and does a point cost the same at its end as at its beginning?
//
// A smooth stroke of 1,000, 10,000 or 100,000 points, two units apart, with some noise, and a
// corner now and then; samples one unit apart are asked for after each point, or after eight, as
// when a pen at 1,000 points a second is drawn at 125 frames. Constant time for each point shows as
// equal items a second; such a pen takes 1,000 of them of one core. "longest_us" is the longest
// single point of a pass, in microseconds, the shortest of all passes: with the growth of the
// arrays, as far as possible without what else the machine does. The baseline keeps the points in
// an array and does nothing with them.

#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvCubicPathBuilder.h>
#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

namespace {

using Clock = std::chrono::steady_clock;

HvPoint2fArray Stroke(unsigned int count)
{
    std::mt19937 engine(1);
    std::normal_distribution<double> noise(0.0, 0.1);
    HvPoint2fArray points(count);
    double angle = 0.0;
    HvPoint2<double> p;
    for (unsigned int i = 0; i < count; ++i) {
        points.Add(HvPoint2<float>(p + HvPoint2<double>(noise(engine), noise(engine))));
        angle += 0.03 * std::sin(i * 0.01) + (i % 97 == 96 ? 2.0 : 0.0);
        p = p + HvPoint2<double>(std::cos(angle), std::sin(angle)) * 2.0;
    }
    return points;
}

using Maker = std::unique_ptr<HvBasePathBuilder> (*)(HvGC const& gc, HvPath2f& path);

std::unique_ptr<HvBasePathBuilder> MakeLinear(HvGC const& gc, HvPath2f& path)
{
    return std::make_unique<HvLinearPathBuilder>(gc, &path);
}
std::unique_ptr<HvBasePathBuilder> MakeCubic(HvGC const& gc, HvPath2f& path)
{
    return std::make_unique<HvCubicPathBuilder>(gc, &path);
}
std::unique_ptr<HvBasePathBuilder> MakeFit(HvGC const& gc, HvPath2f& path)
{
    return std::make_unique<HvBezierFitPathBuilder>(gc, &path, 40.0, 20.0, 1.0, 4u);
}

/// Arguments: the points of the stroke, and after how many of them samples are asked for.
void Draw(benchmark::State& state, Maker make)
{
    unsigned int const count = static_cast<unsigned int>(state.range(0));
    unsigned int const stride = static_cast<unsigned int>(state.range(1));
    HvPoint2fArray const stroke = Stroke(count);
    HvGC const gc;
    double shortest = std::numeric_limits<double>::infinity();
    unsigned int samples = 0;
    unsigned int points = 0;
    for (auto _ : state) {
        HvPath2f path(16u);
        std::unique_ptr<HvBasePathBuilder> const builder = make(gc, path);
        builder->StartSubpath(stroke[0]);
        samples = 0;
        double longest = 0.0;
        for (unsigned int i = 1; i < count; ++i) {
            Clock::time_point const start = Clock::now();
            builder->AddInputPoint(stroke[i], 0);
            if (i % stride == 0) {
                samples += builder->GetTrailingSamples()->Size();
            }
            std::chrono::duration<double, std::micro> const took = Clock::now() - start;
            longest = std::max(longest, took.count());
        }
        samples += builder->EndSubpath(stroke[count - 1], 0)->Size();
        points = path.NumPoints();
        shortest = std::min(shortest, longest);
        benchmark::DoNotOptimize(points);
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.counters["longest_us"] = shortest;
    state.counters["samples"] = samples;
    state.counters["path_points"] = points;
}

void KeepPoints(benchmark::State& state)
{
    unsigned int const count = static_cast<unsigned int>(state.range(0));
    HvPoint2fArray const stroke = Stroke(count);
    for (auto _ : state) {
        HvPoint2fArray kept(128);
        for (unsigned int i = 0; i < count; ++i) {
            Clock::time_point const start = Clock::now();
            kept.Add(stroke[i]);
            benchmark::DoNotOptimize(Clock::now() - start);
        }
        benchmark::DoNotOptimize(kept.Data());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// The degenerate stroke: a pen that stands still.
void StandStill(benchmark::State& state)
{
    HvGC const gc;
    HvPath2f path(16u);
    HvBezierFitPathBuilder builder(gc, &path, 40.0, 20.0, 1.0, 4u);
    builder.StartSubpath({1, 1});
    for (auto _ : state) {
        builder.AddInputPoint({1, 1}, 0);
        benchmark::DoNotOptimize(builder.GetTrailingSamples());
    }
    state.SetItemsProcessed(state.iterations());
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    for (int stride : {1, 8}) {
        for (int count : {1000, 10000, 100000}) {
            benchmark->Args({count, stride});
        }
    }
    benchmark->ArgNames({"points", "every"})->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Draw, Linear, MakeLinear)->Apply(Sizes);
BENCHMARK_CAPTURE(Draw, Cubic, MakeCubic)->Apply(Sizes);
BENCHMARK_CAPTURE(Draw, Fit, MakeFit)->Apply(Sizes);
BENCHMARK(KeepPoints)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(StandStill);

}  // namespace
