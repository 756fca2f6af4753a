// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does it cost to ask a path of 100,000 points what lies where, and to turn it into points?
//
// The path is a closed walk of cubics through a square of 1000 units, with steps of about ten: one
// subpath, or many of ten cubics each. Picking points should cost little more than reading them
// ("ReadPoints"). A query that the outline does not meet is the dear one: it cannot stop early, but
// it should cost far less than flattening everything ("Flatten"), which the plain way would begin
// with. Points a second are those that come out; the argument of flattening and sampling is the
// tolerance or the spacing, in thousandths. The degenerate path has all its points in one place.

#include <hv/foundation/HvFloatArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

using Point = HvPoint2<float>;
using Extent = HvExtent2<float>;

constexpr unsigned int kPoints = 100000;
constexpr float kSide = 1000.0F;
constexpr int kOneSubpath = static_cast<int>(kPoints / 3);
constexpr int kShortSubpath = 10;

/// A corner of the square that no point of a path comes near to, though its box covers it.
constexpr Extent EmptyCorner()
{
    return {0.5F, 0.5F, 1.5F, 1.5F};
}

/// Points that take steps of up to ten units and stay in the square, but not in its first corner.
class Walk {
public:
    Point Next()
    {
        Point next = at_;
        do {
            next = at_ + Point(step_(engine_), step_(engine_));
        } while (next.x < 0 || next.y < 0 || next.x > kSide || next.y > kSide ||
                 next.x + next.y < 100.0F);
        at_ = next;
        return at_;
    }

private:
    std::mt19937 engine_{1};
    std::uniform_real_distribution<float> step_{-10.0F, 10.0F};
    Point at_ = {kSide / 2, kSide / 2};
};

/// With the corners of the square's box as two small subpaths, so that no query is outside of it.
HvPath2f WalkPath(int segments)
{
    HvPath2f path(kPoints + 8);
    for (Point const& corner : {Point(0, 100), Point(100, 0), Point(kSide, kSide)}) {
        path.Moveto(corner);
        path.Lineto(corner);
    }
    Walk walk;
    while (path.NumPoints() + 1 < kPoints) {
        Point const start = walk.Next();
        path.Moveto(start);
        for (int k = 1; k <= segments && path.NumPoints() + 3 <= kPoints; ++k) {
            Point const a = walk.Next();
            Point const b = walk.Next();
            path.Curveto(a, b, walk.Next());
        }
        path.CloseSubpath(path.NumPoints() - 1);
    }
    return path;
}

HvPath2f const& PathOf(benchmark::State const& state)
{
    static HvPath2f const one = WalkPath(kOneSubpath);
    static HvPath2f const many = WalkPath(kShortSubpath);
    return state.range(0) == kOneSubpath ? one : many;
}

void CountPoints(benchmark::State& state, double points)
{
    state.counters["points/s"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * points, benchmark::Counter::kIsRate);
}

// --- asking -------------------------------------------------------------------------------------

/// Times a question about the path that the argument chooses.
template <class Ask>
void Hit(benchmark::State& state, Ask const& ask)
{
    HvPath2f const& path = PathOf(state);
    HvGC const gc;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ask(path, gc));
    }
    CountPoints(state, path.NumPoints());
}

void ReadPoints(benchmark::State& state)
{
    std::vector<Point> points(kPoints + 8);
    Hit(state, [&](HvPath2f const& path, HvGC const&) {
        return path.GetPoints(0, path.NumPoints() - 1, points.data());
    });
}
BENCHMARK(ReadPoints)->Arg(kOneSubpath)->Unit(benchmark::kMicrosecond);

void ClosePointMissed(benchmark::State& state)
{
    Hit(state, [](HvPath2f const& path, HvGC const&) {
        unsigned int index = 0;
        return path.GetClosePointIndex({1, 1}, 1.0, &index);
    });
}
BENCHMARK(ClosePointMissed)->Arg(kOneSubpath)->Unit(benchmark::kMicrosecond);

void NearestPoint(benchmark::State& state)
{
    Hit(state, [](HvPath2f const& path, HvGC const&) {
        unsigned int index = 0;
        path.GetClosePointIndex({500, 500}, &index);
        return index;
    });
}
BENCHMARK(NearestPoint)->Arg(kOneSubpath)->Unit(benchmark::kMicrosecond);

void PointsInExtent(benchmark::State& state)
{
    HvULongArray indices;
    Hit(state, [&](HvPath2f const& path, HvGC const&) {
        indices.Chop(0);
        return path.GetPointsInExtentIndices({400, 400, 600, 600}, &indices);
    });
}
BENCHMARK(PointsInExtent)->Arg(kOneSubpath)->Unit(benchmark::kMicrosecond);

void IntersectingMissed(benchmark::State& state)
{
    Hit(state, [](HvPath2f const& path, HvGC const& gc) {
        return path.IsIntersectingExtent(gc, EmptyCorner(), 0);
    });
}
BENCHMARK(IntersectingMissed)->Arg(kOneSubpath)->Arg(kShortSubpath)->Unit(benchmark::kMicrosecond);

void InteriorMissed(benchmark::State& state)
{
    Hit(state, [](HvPath2f const& path, HvGC const& gc) {
        return path.IsInteriorIntersectingExtent(gc, EmptyCorner(), 0);
    });
}
BENCHMARK(InteriorMissed)->Arg(kOneSubpath)->Arg(kShortSubpath)->Unit(benchmark::kMicrosecond);

void SamplesInExtent(benchmark::State& state)
{
    HvPoint2fArray points;
    HvPointTagArray tags;
    Hit(state, [&](HvPath2f const& path, HvGC const& gc) {
        points.Chop(0);
        tags.Chop(0);
        return path.IntersectSamplePointsExtent(gc, {400, 400, 600, 600}, points, tags, 0);
    });
}
BENCHMARK(SamplesInExtent)->Arg(kOneSubpath)->Unit(benchmark::kMicrosecond);

void TightExtent(benchmark::State& state)
{
    Hit(state, [](HvPath2f const& path, HvGC const&) {
        HvExtent2<float> extent;
        return path.GetTightExtent(extent).max.x;
    });
}
BENCHMARK(TightExtent)->Arg(kOneSubpath)->Unit(benchmark::kMicrosecond);

// --- turning into points ------------------------------------------------------------------------

/// Times what fills the two arrays, emptied before each pass, from a path and a number given in
/// thousandths.
template <class Points, class Append>
void Outline(benchmark::State& state, HvPath2f const& path, Append const& append)
{
    double const number = static_cast<double>(state.range(0)) / 1000.0;
    Points points;
    HvPointTagArray tags;
    for (auto _ : state) {
        points.Chop(0);
        tags.Chop(0);
        append(path, number, points, tags);
        benchmark::DoNotOptimize(points.Data());
    }
    CountPoints(state, points.Size());
    state.counters["points"] = static_cast<double>(points.Size());
}

HvPath2f const& LongPath()
{
    static HvPath2f const path = WalkPath(kOneSubpath);
    return path;
}

void AppendFlattened(HvPath2f const& path, double flatness, HvPoint2fArray& points,
                     HvPointTagArray& tags)
{
    HvGC gc;
    gc.flatness = flatness;
    path.Flatten(gc, points, tags);
}

void Flatten(benchmark::State& state)
{
    Outline<HvPoint2fArray>(state, LongPath(), AppendFlattened);
}
BENCHMARK(Flatten)->Arg(1000)->Arg(250)->Arg(10)->Unit(benchmark::kMicrosecond);

void FlattenOnePlace(benchmark::State& state)
{
    HvPath2f path(kPoints);
    path.Moveto({5, 5});
    for (int k = 0; k < kOneSubpath; ++k) {
        path.Curveto({5, 5}, {5, 5}, {5, 5});
    }
    Outline<HvPoint2fArray>(state, path, AppendFlattened);
}
BENCHMARK(FlattenOnePlace)->Arg(250)->Unit(benchmark::kMicrosecond);

void TransformAndFlattenDouble(benchmark::State& state)
{
    HvTransfo4 const identity;
    Outline<HvPoint2dArray>(
        state, LongPath(),
        [&](HvPath2f const& path, double tolerance, HvPoint2dArray& points, HvPointTagArray& tags) {
            path.TransformAndFlattenPath(identity, tolerance, points, tags);
        });
}
BENCHMARK(TransformAndFlattenDouble)->Arg(250)->Arg(10)->Unit(benchmark::kMicrosecond);

void Sample(benchmark::State& state)
{
    Outline<HvPoint2fArray>(
        state, LongPath(),
        [](HvPath2f const& path, double spacing, HvPoint2fArray& points, HvPointTagArray& tags) {
            HvGC gc;
            gc.sampleSpacing = spacing;
            path.Sample(gc, points, tags);
        });
}
BENCHMARK(Sample)->Arg(10000)->Arg(1000)->Arg(100)->Unit(benchmark::kMicrosecond);

void SampleAtFractions(benchmark::State& state)
{
    HvFloatArray fractions;
    for (unsigned int i = 0; i < kPoints; ++i) {
        fractions.Add(static_cast<float>(i) / static_cast<float>(kPoints));
    }
    Outline<HvPoint2fArray>(
        state, LongPath(),
        [&](HvPath2f const& path, double flatness, HvPoint2fArray& points, HvPointTagArray& tags) {
            HvGC gc;
            gc.flatness = flatness;
            path.Sample(gc, fractions, points, tags);
        });
}
BENCHMARK(SampleAtFractions)->Arg(250)->Unit(benchmark::kMicrosecond);

}  // namespace
