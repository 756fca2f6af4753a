// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Can a million curves be alive at once, and what does each cost? Curves of two keys are made, each
// is evaluated by two threads, so that each has a search hint in both, and all are destroyed. Time
// and resident memory are per curve; a tenth of the number beside it shows that both are in
// proportion.

#include <hv/hv.h>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#if defined(__linux__)
#include <malloc.h>
#include <unistd.h>
#endif

namespace {

/// Bytes of the process that are in memory, without what the heap keeps from earlier runs; 0 where
/// the system does not tell.
double ResidentBytes()
{
#if defined(__linux__)
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
    long total = 0;
    long resident = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &total, &resident) != 2) {
            resident = 0;
        }
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
#else
    return 0;
#endif
}

double NanosecondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start)
        .count();
}

HvBaseFCurve* MakeInteger()
{
    auto* const curve = new HvIntegerFCurve(0);
    curve->CreateKey(0, 1);
    curve->CreateKey(1, 2);
    return curve;
}

HvBaseFCurve* MakeCubic()
{
    return new HvStdFCurve(HvPoint2<double>(0, 0), HvPoint2<double>(0.3, 0),
                           HvPoint2<double>(0.7, 1), HvPoint2<double>(1, 1),
                           HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
}

template <HvBaseFCurve* (*kMake)()>
void Million(benchmark::State& state)
{
    auto const n = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        std::vector<std::unique_ptr<HvBaseFCurve>> curves;
        curves.resize(n);
        double const before = ResidentBytes();

        auto start = std::chrono::steady_clock::now();
        for (auto& curve : curves) {
            curve.reset(kMake());
        }
        double const made = NanosecondsSince(start);

        // At the last key the hint is no longer the initial one, so both threads store theirs.
        double sums[2] = {0, 0};
        auto const evaluate = [&](double& sum) {
            for (auto const& curve : curves) {
                sum += curve->Eval(1, 0);
            }
        };
        // Memory is read while both threads live, with the hints that each holds.
        std::promise<void> evaluated;
        std::promise<void> measured;
        start = std::chrono::steady_clock::now();
        std::thread other([&] {
            evaluate(sums[1]);
            evaluated.set_value();
            measured.get_future().wait();
        });
        evaluate(sums[0]);
        evaluated.get_future().wait();
        double const evaluation = NanosecondsSince(start);
        double const bytes = ResidentBytes() - before;
        measured.set_value();
        other.join();
        benchmark::DoNotOptimize(sums);

        start = std::chrono::steady_clock::now();
        curves.clear();
        double const destroyed = NanosecondsSince(start);

        auto const count = static_cast<double>(n);
        state.counters["bytes/curve"] = bytes / count;
        state.counters["ns/make"] = made / count;
        state.counters["ns/eval"] = evaluation / count / 2;
        state.counters["ns/destroy"] = destroyed / count;
    }
}
BENCHMARK_TEMPLATE(Million, MakeInteger)->Arg(100000)->Arg(1000000)->Iterations(1);
BENCHMARK_TEMPLATE(Million, MakeCubic)->Arg(100000)->Arg(1000000)->Iterations(1);

}  // namespace
