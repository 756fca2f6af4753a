// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How many points does a spline take in a second, how many knots come out, and what does a curve
// through all points cost?
//
// A smooth curve of 1,000 to 100,000 points (the first argument), about half a unit apart, with
// even noise of 0 or 0.25 units to each side (the second, in hundredths), as splines within 1 unit.
// "knots" counts them. The Catmull-Rom curve goes through the same points. The degenerate case:
// points that lie so wild that half of them become knots.

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/HvBezierTool.h>
#include <hv/bezier/HvSpline1d.h>
#include <hv/bezier/HvSpline2d.h>
#include <hv/bezier/HvSpline3d.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace {

constexpr double kTolerance = 1.0;

HvPoint3dArray Curve(benchmark::State const& state)
{
    std::mt19937 engine(1);
    double const noise = static_cast<double>(state.range(1)) / 100.0;
    std::uniform_real_distribution<double> even(-noise, noise);
    HvPoint3dArray points;
    for (int i = 0; i < state.range(0); ++i) {
        double const t = 0.00125 * i;
        double const x = 300 * std::cos(0.7 * t) + 100 * std::cos(1.9 * t);
        double const y = 300 * std::sin(0.71 * t) + 100 * std::sin(2.1 * t);
        double const dx = even(engine);
        points.Add({x + dx, y + even(engine), 50 * std::sin(t)});
    }
    return points;
}

template <class Fit>
void Measure(benchmark::State& state, Fit const& fit)
{
    unsigned int knots = 0;
    for (auto _ : state) {
        knots = fit();
        benchmark::DoNotOptimize(knots);
    }
    state.counters["knots"] = knots;
    state.counters["points/s"] = benchmark::Counter(
        static_cast<double>(state.range(0) * state.iterations()), benchmark::Counter::kIsRate);
}

void Spline1d(benchmark::State& state)
{
    HvDoubleArray x;
    HvDoubleArray y;
    for (HvPoint3<double> const& p : Curve(state)) {
        x.Add(0.5 * x.Size());
        y.Add(p.x);
    }
    Measure(state, [&] {
        HvSpline1d spline;
        spline.OpenFit(x, y, kTolerance, HvSpline1d::ContinuousDerivative);
        return spline.NumKnots();
    });
}

void Spline2d(benchmark::State& state)
{
    HvPoint2dArray points;
    for (HvPoint3<double> const& p : Curve(state)) {
        points.Add(p.x, p.y);
    }
    Measure(state, [&] {
        HvSpline2d spline;
        spline.OpenFit(points, kTolerance, HvSpline2d::ContinuousDerivative);
        return spline.NumKnots();
    });
}

void Spline3d(benchmark::State& state)
{
    HvPoint3dArray const points = Curve(state);
    Measure(state, [&] {
        HvSpline3d spline;
        spline.OpenFit(points, kTolerance, HvSpline3d::ContinuousDerivative);
        return spline.NumKnots();
    });
}

void Spline2dOfWildPoints(benchmark::State& state)
{
    std::mt19937 engine(2);
    std::uniform_real_distribution<double> even(-50, 50);
    HvPoint2dArray points;
    for (int i = 0; i < state.range(0); ++i) {
        double const x = even(engine);
        points.Add(x, even(engine));
    }
    Measure(state, [&] {
        HvSpline2d spline;
        spline.OpenFit(points, kTolerance, HvSpline2d::ContinuousDerivative);
        return spline.NumKnots();
    });
}

struct NoSink : HvBezierSink {
    void Moveto(HvPoint2<float> const&) override {}
    void Lineto(HvPoint2<float> const&) override {}
    void Curveto(HvPoint2<float> const&, HvPoint2<float> const&, HvPoint2<float> const&) override {}
    int Closeto() override { return 1; }
};

void CatmullRom(benchmark::State& state)
{
    HvPoint2fArray points;
    for (HvPoint3<double> const& p : Curve(state)) {
        points.Add(HvPoint2<float>(HvPoint2<double>(p.x, p.y)));
    }
    HvBezierTool tool;
    Measure(state, [&] {
        NoSink sink;
        return tool.OpenCatmullRomFit(points, sink, 0) / 3 + 1;
    });
}

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgsProduct({{1000, 10000, 100000}, {0, 25}})->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(Spline1d)->Apply(Sizes);
BENCHMARK(Spline2d)->Apply(Sizes);
BENCHMARK(Spline3d)->Apply(Sizes);
BENCHMARK(Spline2dOfWildPoints)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(CatmullRom)->Apply(Sizes);
