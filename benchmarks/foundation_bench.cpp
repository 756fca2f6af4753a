// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What do the arrays cost beside std::vector, and how many points a second do the polyline
// algorithms take, beside a binary search for each point? Argument: number of points.

#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/polyline.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

using Point = HvPoint2<double>;

void SetPoints(benchmark::State& state, std::int64_t pointsPerRound)
{
    state.SetItemsProcessed(std::int64_t(state.iterations()) * pointsPerRound);
}

unsigned int NumPoints(benchmark::State const& state)
{
    return unsigned(state.range(0));
}

// Growth and appending.

void Array_Add(benchmark::State& state)
{
    for (auto _ : state) {
        HvPoint2dArray a;
        for (unsigned int i = 0; i < NumPoints(state); ++i) {
            a.Add(Point(i, 1));
        }
        benchmark::DoNotOptimize(a.Data());
    }
    SetPoints(state, state.range(0));
}

void Vector_PushBack(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<Point> a;
        for (unsigned int i = 0; i < NumPoints(state); ++i) {
            a.push_back(Point(i, 1));
        }
        benchmark::DoNotOptimize(a.data());
    }
    SetPoints(state, state.range(0));
}

void Array_AddReserved(benchmark::State& state)
{
    HvPoint2dArray a;
    a.Reserve(NumPoints(state));
    for (auto _ : state) {
        a.Chop(0);
        for (unsigned int i = 0; i < NumPoints(state); ++i) {
            a.Add(Point(i, 1));
        }
        benchmark::DoNotOptimize(a.Data());
        benchmark::ClobberMemory();
    }
    SetPoints(state, state.range(0));
}

void Vector_PushBackReserved(benchmark::State& state)
{
    std::vector<Point> a;
    a.reserve(NumPoints(state));
    for (auto _ : state) {
        a.clear();
        for (unsigned int i = 0; i < NumPoints(state); ++i) {
            a.push_back(Point(i, 1));
        }
        benchmark::DoNotOptimize(a.data());
        benchmark::ClobberMemory();
    }
    SetPoints(state, state.range(0));
}

void Array_InsertInTheMiddle(benchmark::State& state)
{
    for (auto _ : state) {
        HvPoint2dArray a;
        for (unsigned int i = 0; i < NumPoints(state); ++i) {
            a.InsertBefore(i / 2, Point(i, 1));
        }
        benchmark::DoNotOptimize(a.Data());
    }
    SetPoints(state, state.range(0));
}

void Vector_InsertInTheMiddle(benchmark::State& state)
{
    for (auto _ : state) {
        std::vector<Point> a;
        for (unsigned int i = 0; i < NumPoints(state); ++i) {
            a.insert(a.begin() + i / 2, Point(i, 1));
        }
        benchmark::DoNotOptimize(a.data());
    }
    SetPoints(state, state.range(0));
}

// Arrays of arrays: the inner storage is handed over, not copied, when the outer one grows.

constexpr unsigned int kInnerPoints = 100;

void DynArray_AddArrays(benchmark::State& state)
{
    HvPoint2fArray const inner(HvPoint2<float>(1, 2), kInnerPoints);
    for (auto _ : state) {
        HvDynArray<HvPoint2fArray> a(1);
        for (unsigned int i = 0; i < NumPoints(state) / kInnerPoints; ++i) {
            a.Add(inner);
        }
        benchmark::DoNotOptimize(a.Data());
    }
    SetPoints(state, state.range(0));
}

void Vector_PushBackVectors(benchmark::State& state)
{
    std::vector<HvPoint2<float>> const inner(kInnerPoints, HvPoint2<float>(1, 2));
    for (auto _ : state) {
        std::vector<std::vector<HvPoint2<float>>> a;
        for (unsigned int i = 0; i < NumPoints(state) / kInnerPoints; ++i) {
            a.push_back(inner);
        }
        benchmark::DoNotOptimize(a.data());
    }
    SetPoints(state, state.range(0));
}

// Polylines. A random walk of steps of about the same length, and a copy with twice the points; of
// the degenerate walk all points are equal.

struct Walk {
    HvPoint2fArray points;
    HvDoubleArray chord;
    HvPoint2fArray fine;
    HvDoubleArray fineChord;

    Walk(unsigned int count, float step)
    {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> uniform(-step, step);
        HvPoint2<float> p;
        for (unsigned int i = 0; i < count; ++i) {
            points.Add(p);
            fine.Add(p);
            HvPoint2<float> const next = p + HvPoint2<float>(uniform(random), uniform(random));
            fine.Add((p + next) * 0.5f);
            p = next;
        }
        HvPoint2fArraySingleComponent_ComputeChordLength(points, chord);
        HvPoint2fArraySingleComponent_ComputeChordLength(fine, fineChord);
    }
};

/// Point at length `s` by a binary search in the table.
HvPoint2<float> Search(HvPoint2fArray const& points, HvDoubleArray const& chord, double s)
{
    double const* const found = std::lower_bound(chord.begin() + 1, chord.end() - 1, s);
    auto const i = unsigned(found - chord.begin());
    double const f = (s - chord[i - 1]) / (chord[i] - chord[i - 1]);
    return points[i - 1] + (points[i] - points[i - 1]) * float(f);
}

void Polyline_ChordLength(benchmark::State& state)
{
    Walk const walk(NumPoints(state), 1.0f);
    HvDoubleArray chord;
    for (auto _ : state) {
        chord.Chop(0);
        benchmark::DoNotOptimize(
            HvPoint2fArraySingleComponent_ComputeChordLength(walk.points, chord));
    }
    SetPoints(state, state.range(0));
}

void Subdivide(benchmark::State& state, float step)
{
    Walk const walk(NumPoints(state), step);
    HvPoint2fArray out;
    for (auto _ : state) {
        out.Chop(0);
        HvPoint2fArraySingleComponent_EvenSubdivide(walk.points, walk.chord, NumPoints(state), out);
        benchmark::DoNotOptimize(out.Data());
        benchmark::ClobberMemory();
    }
    SetPoints(state, state.range(0));
}

void Polyline_EvenSubdivide(benchmark::State& state)
{
    Subdivide(state, 1.0f);
}

void Polyline_EvenSubdivideDegenerate(benchmark::State& state)
{
    Subdivide(state, 0.0f);
}

void Search_EvenSubdivide(benchmark::State& state)
{
    unsigned int const n = NumPoints(state);
    Walk const walk(n, 1.0f);
    std::vector<HvPoint2<float>> out;
    for (auto _ : state) {
        out.clear();
        for (unsigned int k = 0; k <= n; ++k) {
            out.push_back(Search(walk.points, walk.chord, walk.chord[n - 1] * k / n));
        }
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    SetPoints(state, state.range(0));
}

void Polyline_AreClose(benchmark::State& state)
{
    Walk const walk(NumPoints(state), 1.0f);
    unsigned int failedAt = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(HvPoint2fArray_PolylinesAreClose(
            walk.points, walk.chord, 0, walk.points.Size() - 1, walk.fine, walk.fineChord, 0,
            walk.fine.Size() - 1, 1e9, failedAt));
    }
    SetPoints(state, 2 * state.range(0));
}

void Search_AreClose(benchmark::State& state)
{
    Walk const walk(NumPoints(state), 1.0f);
    for (auto _ : state) {
        int close = 1;
        for (unsigned int j = 1; j + 1 < walk.fine.Size() && close != 0; ++j) {
            HvPoint2<float> const p = Search(walk.points, walk.chord, walk.fineChord[j]);
            close = HvPoint2_SquaredLengthAB(p, walk.fine[j]) <= 1e18 ? 1 : 0;
        }
        benchmark::DoNotOptimize(close);
    }
    SetPoints(state, 2 * state.range(0));
}

void Polyline_Turtle(benchmark::State& state)
{
    Walk const walk(NumPoints(state), 1.0f);
    HvPoint2fArray out;
    for (auto _ : state) {
        HvPoint2fArraySingleComponent_TurtleInterp(walk.points, walk.points, 0.5, out);
        benchmark::DoNotOptimize(out.Data());
        benchmark::ClobberMemory();
    }
    SetPoints(state, state.range(0));
}

void Polyline_Lerp(benchmark::State& state)
{
    Walk const walk(NumPoints(state), 1.0f);
    HvPoint2fArray out;
    for (auto _ : state) {
        HvPoint2fArraySingleComponent_Lerp(walk.points, walk.points, 0.5, out);
        benchmark::DoNotOptimize(out.Data());
        benchmark::ClobberMemory();
    }
    SetPoints(state, state.range(0));
}

}  // namespace

BENCHMARK(Array_Add)->Arg(100)->Arg(1000000);
BENCHMARK(Vector_PushBack)->Arg(100)->Arg(1000000);
BENCHMARK(Array_AddReserved)->Arg(100)->Arg(10000);
BENCHMARK(Vector_PushBackReserved)->Arg(100)->Arg(10000);
BENCHMARK(Array_InsertInTheMiddle)->Arg(100)->Arg(10000);
BENCHMARK(Vector_InsertInTheMiddle)->Arg(100)->Arg(10000);
BENCHMARK(DynArray_AddArrays)->Arg(100000);
BENCHMARK(Vector_PushBackVectors)->Arg(100000);
BENCHMARK(Polyline_ChordLength)->Arg(100)->Arg(100000);
BENCHMARK(Polyline_EvenSubdivide)->Arg(100)->Arg(100000);
BENCHMARK(Polyline_EvenSubdivideDegenerate)->Arg(100000);
BENCHMARK(Search_EvenSubdivide)->Arg(100)->Arg(100000);
BENCHMARK(Polyline_AreClose)->Arg(100)->Arg(100000);
BENCHMARK(Search_AreClose)->Arg(100)->Arg(100000);
BENCHMARK(Polyline_Lerp)->Arg(100000);
BENCHMARK(Polyline_Turtle)->Arg(100000);
