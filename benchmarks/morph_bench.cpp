// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Morph steps per second, of outlines of different lengths at one spacing.

#include <hv/morph/HvMorpher.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

constexpr double kTurn = 6.283185307179586;

/// A closed wave around a circle, of `nodes` sides of about one unit each.
HvPath2fProp1d Wave(unsigned int nodes, int waves)
{
    HvPath2fProp1d path(nodes + 1);
    double const radius = nodes / kTurn;
    for (unsigned int i = 0; i <= nodes; ++i) {
        double const angle = kTurn * (i % nodes) / nodes;
        double const r = radius * (1 + 0.1 * std::sin(waves * angle));
        HvPoint2<float> const point(static_cast<float>(r * std::cos(angle)),
                                    static_cast<float>(r * std::sin(angle)));
        i == 0 ? path.Moveto(point) : path.Lineto(point);
    }
    path.Closeto();
    return path;
}

using Morph = int (HvMorpher::*)(double, HvPath2fProp1d&) const;

/// Items are samples of the longer outline: the cost of one tells whether it grows with their
/// number.
template <Morph morph>
void Step(benchmark::State& state)
{
    auto const points = static_cast<unsigned int>(state.range(0));
    HvPath2fProp1d const first = Wave(points, 5);
    // Not as many points, so that the outlines are no siblings.
    HvPath2fProp1d const second = Wave(points - 1, 3);
    HvGC gc;
    gc.minPointGap = 1.0;
    HvMorpher const morpher(&first, &second, gc);
    double t = 0.0;
    for (auto _ : state) {
        HvPath2fProp1d out(0u);
        (morpher.*morph)(t, out);
        benchmark::DoNotOptimize(out.NumPoints());
        t = t < 1.0 ? t + 0.1 : 0.0;
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * points);
}

BENCHMARK_TEMPLATE(Step, &HvMorpher::LinearMorph)
    ->Name("morph_linear")
    ->RangeMultiplier(10)
    ->Range(100, 100000);
BENCHMARK_TEMPLATE(Step, &HvMorpher::TurtleMorph)
    ->Name("morph_turtle")
    ->RangeMultiplier(10)
    ->Range(100, 100000);

}  // namespace
