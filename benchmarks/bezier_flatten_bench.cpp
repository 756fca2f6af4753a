// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How many points of a flattened curve come out in a second, and how many does a curve take?
//
// 100,000 random cubics in a square of 1000 units, at the tolerances 0.25 and 0.01 (the argument,
// in thousandths): the library's forms beside the plain way, which halves a cubic until its control
// points lie within the tolerance of the chord. "points" is the number of points of a curve. The
// clipped form is timed with a view of a tenth of the square in its middle, and with one far
// outside. The degenerate case is a cubic whose points are all one.

#include <hv/bezier/HvBezierTool.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

namespace {

using Point = HvPoint2<double>;

constexpr std::size_t kCurves = 100000;
constexpr double kSide = 1000.0;

/// Four points for each curve.
std::vector<Point> const& Curves()
{
    static std::vector<Point> const curves = [] {
        std::mt19937 engine(1);
        std::uniform_real_distribution<double> coordinate(0.0, kSide);
        std::vector<Point> points;
        for (std::size_t i = 0; i < 4 * kCurves; ++i) {
            double const x = coordinate(engine);
            points.emplace_back(x, coordinate(engine));
        }
        return points;
    }();
    return curves;
}

double ToleranceOf(benchmark::State const& state)
{
    return static_cast<double>(state.range(0)) / 1000.0;
}

/// Runs `flatten`, which gives the number of points of one curve, over all curves.
template <class Flatten>
void Measure(benchmark::State& state, Flatten const& flatten)
{
    std::vector<Point> const& curves = Curves();
    std::size_t points = 0;
    for (auto _ : state) {
        points = 0;
        for (std::size_t i = 0; i < 4 * kCurves; i += 4) {
            points += flatten(curves.data() + i);
        }
        benchmark::DoNotOptimize(points);
    }
    double const perRun = static_cast<double>(points);
    double const runs = static_cast<double>(state.iterations());
    state.counters["points"] = perRun / static_cast<double>(kCurves);
    state.counters["points/s"] = benchmark::Counter(perRun * runs, benchmark::Counter::kIsRate);
    state.counters["curves/s"] =
        benchmark::Counter(static_cast<double>(kCurves) * runs, benchmark::Counter::kIsRate);
}

/// The plain way. The distance of the inner control points from the chord bounds that of the curve
/// to three quarters; the ends of a closed piece count as the chord.
class RecursiveSubdivision {
public:
    RecursiveSubdivision(double tolerance, HvPoint2dArray& out) : tolerance_(tolerance), out_(out)
    {
    }

    void Add(Point const* p, int depth)
    {
        if (depth == 0 || IsFlat(p)) {
            out_.Add(p[3]);
            return;
        }
        Point const a = (p[0] + p[1]) * 0.5;
        Point const m = (p[1] + p[2]) * 0.5;
        Point const d = (p[2] + p[3]) * 0.5;
        Point const b = (a + m) * 0.5;
        Point const c = (m + d) * 0.5;
        Point const middle = (b + c) * 0.5;
        Point const left[4] = {p[0], a, b, middle};
        Point const right[4] = {middle, c, d, p[3]};
        Add(left, depth - 1);
        Add(right, depth - 1);
    }

private:
    bool IsFlat(Point const* p) const
    {
        Point const chord = p[3] - p[0];
        double const length = std::hypot(chord.x, chord.y);
        if (length == 0.0) {
            return std::max(std::hypot(p[1].x - p[0].x, p[1].y - p[0].y),
                            std::hypot(p[2].x - p[0].x, p[2].y - p[0].y)) *
                       0.75 <=
                   tolerance_;
        }
        double const limit = tolerance_ * length / 0.75;
        return std::fabs((p[1].x - p[0].x) * chord.y - (p[1].y - p[0].y) * chord.x) <= limit &&
               std::fabs((p[2].x - p[0].x) * chord.y - (p[2].y - p[0].y) * chord.x) <= limit;
    }

    double tolerance_;
    HvPoint2dArray& out_;
};

void RecursiveCubic2d(benchmark::State& state)
{
    HvPoint2dArray out(65536u);
    Measure(state, [&](Point const* p) {
        out.Chop(0);
        out.Add(p[0]);
        RecursiveSubdivision(ToleranceOf(state), out).Add(p, 16);
        return out.Size();
    });
}

void FlattenCubic2d(benchmark::State& state)
{
    HvPoint2dArray out(65536u);
    Measure(state, [&](Point const* p) {
        out.Chop(0);
        return HvBezierTool_FlattenCubic2d(p, ToleranceOf(state), &out, 0);
    });
}

void FlattenCubic2f(benchmark::State& state)
{
    HvPoint2fArray out(65536u);
    Measure(state, [&](Point const* p) {
        out.Chop(0);
        HvPoint2<float> const f[4] = {HvPoint2<float>(p[0]), HvPoint2<float>(p[1]),
                                      HvPoint2<float>(p[2]), HvPoint2<float>(p[3])};
        return HvBezierTool_FlattenCubic2f(f, ToleranceOf(state), &out, 0);
    });
}

void FlattenCubic3d(benchmark::State& state)
{
    HvPoint3dArray out(65536u);
    Measure(state, [&](Point const* p) {
        out.Chop(0);
        HvPoint3<double> const q[4] = {
            {p[0].x, p[0].y, 0}, {p[1].x, p[1].y, 0}, {p[2].x, p[2].y, 0}, {p[3].x, p[3].y, 0}};
        return HvBezierTool_FlattenCubic3d(q, ToleranceOf(state), &out, 0);
    });
}

void FlattenDegree3(benchmark::State& state)
{
    HvPoint2dArray out(65536u);
    HvBezierTool tool;
    Measure(state, [&](Point const* p) {
        out.Chop(0);
        return tool.Flatten(p, 0, 3, ToleranceOf(state), &out, 0);
    });
}

void MeasureClipped(benchmark::State& state, HvExtent2<double> const& view)
{
    HvPoint2dArray points(65536u);
    HvPointTagArray tags(65536u);
    HvBoolArray flags(65536u);
    Measure(state, [&](Point const* p) {
        points.Chop(0);
        tags.Chop(0);
        flags.Chop(0);
        HvBezierTool_ClipAndFlattenCubic2d(p, ToleranceOf(state), view, &points, &tags, &flags);
        return points.Size();
    });
}

void ClipToTheWhole(benchmark::State& state)
{
    MeasureClipped(state, HvExtent2<double>(0, 0, kSide, kSide));
}

void ClipToTheMiddle(benchmark::State& state)
{
    MeasureClipped(state,
                   HvExtent2<double>(0.45 * kSide, 0.45 * kSide, 0.55 * kSide, 0.55 * kSide));
}

void ClipFarOutside(benchmark::State& state)
{
    MeasureClipped(state, HvExtent2<double>(9 * kSide, 9 * kSide, 10 * kSide, 10 * kSide));
}

void FlattenCollapsedCubic(benchmark::State& state)
{
    Point const p[4] = {{1, 1}, {1, 1}, {1, 1}, {1, 1}};
    HvPoint2dArray out(16u);
    for (auto _ : state) {
        out.Chop(0);
        benchmark::DoNotOptimize(HvBezierTool_FlattenCubic2d(p, ToleranceOf(state), &out, 0));
    }
}

}  // namespace

BENCHMARK(RecursiveCubic2d)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(FlattenCubic2d)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(FlattenCubic2f)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(FlattenCubic3d)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(FlattenDegree3)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(ClipToTheWhole)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(ClipToTheMiddle)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(ClipFarOutside)->Arg(250)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(FlattenCollapsedCubic)->Arg(250);
