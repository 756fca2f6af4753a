// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What does it cost to build, ask and edit a path? A point appended should cost little more than
// in two bare arrays, a count one step for each segment, and an edit in the middle of a long path
// one block move, however many points it puts there.

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

HvPoint2<float> At(int i)
{
    return {static_cast<float>(i), static_cast<float>(i % 7)};
}

// About `n` points in subpaths of `segments` cubics, closed.
HvPath2f Cubics(int n, int segments)
{
    HvPath2f path(0u);
    for (int i = 0; i < n; i += 3 * segments + 1) {
        path.Moveto(At(i));
        for (int k = 1; k <= segments; ++k) {
            path.Curveto(At(i + 3 * k - 2), At(i + 3 * k - 1),
                         k < segments ? At(i + 3 * k) : At(i));
        }
        path.Closeto();
    }
    return path;
}

void BuildLines(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        HvPath2f path(0u);
        path.Moveto(At(0));
        for (int i = 1; i < n; ++i) {
            path.Lineto(At(i));
        }
        benchmark::DoNotOptimize(path.NumPoints());
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BuildLines)->Arg(100)->Arg(100000);

// The same bytes in two vectors, without a lock.
void BuildLinesBaseline(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        std::vector<HvPoint2<float>> points;
        std::vector<unsigned char> tags;
        for (int i = 0; i < n; ++i) {
            points.push_back(At(i));
            tags.push_back(3);
        }
        benchmark::DoNotOptimize(points.data());
        benchmark::DoNotOptimize(tags.data());
    }
    state.SetItemsProcessed(state.iterations() * n);
}
BENCHMARK(BuildLinesBaseline)->Arg(100)->Arg(100000);

void Copy(benchmark::State& state)
{
    HvPath2f const path = Cubics(static_cast<int>(state.range(0)), 10);
    for (auto _ : state) {
        HvPath2f const copy(path);
        benchmark::DoNotOptimize(copy.NumPoints());
    }
    state.SetItemsProcessed(state.iterations() * path.NumPoints());
}
BENCHMARK(Copy)->Arg(100)->Arg(100000);

void CountSegments(benchmark::State& state)
{
    HvPath2f const path = Cubics(100000, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.NumSegments());
    }
    state.SetItemsProcessed(state.iterations() * path.NumSegments());
}
BENCHMARK(CountSegments)->Arg(1)->Arg(33333);

// Each end of a segment, one call and lock for each.
void WalkSegments(benchmark::State& state)
{
    HvPath2f const path = Cubics(100000, 33333);
    unsigned int const count = path.NumPoints();
    for (auto _ : state) {
        for (unsigned int i = 0; i < count; i = path.EndOfSegment(i) + 1) {
            benchmark::DoNotOptimize(i);
        }
    }
    state.SetItemsProcessed(state.iterations() * path.NumSegments());
}
BENCHMARK(WalkSegments);

void WalkSubpaths(benchmark::State& state)
{
    HvPath2f const path = Cubics(100000, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        HvPath2fIter iter(path);
        unsigned int first = 0;
        unsigned int last = 0;
        while (iter.GetNextSubPathIndices(first, last) != 0) {
            benchmark::DoNotOptimize(last);
        }
    }
    state.SetItemsProcessed(state.iterations() * path.NumPoints());
}
BENCHMARK(WalkSubpaths)->Arg(1)->Arg(10)->Arg(33333);

// Drags every point of a path with all its nodes locked, ends of subpaths included.
void DragPoints(benchmark::State& state)
{
    HvPath2f path = Cubics(10000, 10);
    unsigned int const count = path.NumPoints();
    for (unsigned int i = 0; i < count; ++i) {
        path.LockG1(i);
    }
    for (auto _ : state) {
        for (unsigned int i = 0; i < count; ++i) {
            path.ReplacePoint(i, path.GetPoint(i) + HvPoint2<float>(0.5F, 0.25F), 1);
        }
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(DragPoints);

// A line in the middle becomes a cubic and a line again.
void ReplaceSegmentInTheMiddle(benchmark::State& state)
{
    HvPath2f path = Cubics(static_cast<int>(state.range(0)), 10);
    unsigned int const first = path.StartOfSegment(path.NumPoints() / 2);
    HvPoint2<float> const a = path.GetPoint(first);
    HvPoint2<float> const b = path.GetPoint(path.EndOfSegment(first + 1));
    HvPoint2<float> const line[] = {a, b};
    HvPoint2<float> const cubic[] = {a, At(1), At(2), b};
    for (auto _ : state) {
        path.ReplaceSegment(first + 1, line, 1);
        path.ReplaceSegment(first + 1, cubic, 3);
    }
    state.SetItemsProcessed(state.iterations() * 2);
}
BENCHMARK(ReplaceSegmentInTheMiddle)->Arg(1000)->Arg(100000);

// A section of many points comes in, and goes, in one move of the tail each.
void ReplaceSectionInTheMiddle(benchmark::State& state)
{
    HvPath2f path = Cubics(100000, 10);
    HvPath2f source =
        Cubics(static_cast<int>(state.range(0)), static_cast<int>(state.range(0)) / 3);
    unsigned int first = path.NumPoints() / 2;
    unsigned int last = 0;
    path.GetSubpathIndices(first, first, last);
    unsigned int const sourceLast = source.NumPoints() - 1;
    source.ReplacePoint(0, path.GetPoint(first), 0);
    for (auto _ : state) {
        path.ReplaceSubpathSection(first, last, source, 0, sourceLast);
        path.ReplaceSubpathSection(first, first + sourceLast);
        last = first + 1;
    }
    state.SetItemsProcessed(state.iterations() * sourceLast);
}
BENCHMARK(ReplaceSectionInTheMiddle)->Arg(300)->Arg(30000);

void Save(benchmark::State& state)
{
    HvPath2f const path = Cubics(100000, 10);
    std::vector<unsigned char> archive(path.GetBufferSize());
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.WriteToBuffer(archive.data()));
    }
    state.SetItemsProcessed(state.iterations() * path.NumPoints());
}
BENCHMARK(Save);

void Load(benchmark::State& state)
{
    HvPath2f const path = Cubics(100000, 10);
    std::vector<unsigned char> archive(path.GetBufferSize());
    path.WriteToBuffer(archive.data());
    HvPath2f read(0u);
    for (auto _ : state) {
        benchmark::DoNotOptimize(read.ReadFromBufferBody(archive.data() + 4));
    }
    state.SetItemsProcessed(state.iterations() * path.NumPoints());
}
BENCHMARK(Load);

}  // namespace
