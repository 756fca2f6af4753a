// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How near do saving and loading a curve come to copying its bytes? A curve of n keys is written
// and read; the baseline is memcpy of the archive. All are told in bytes of the archive a second.

#include <hv/hv.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

template <class Curve>
Curve MakeCurve(Curve curve, std::int64_t keys)
{
    for (std::int64_t i = 0; i < keys; ++i) {
        auto const x = static_cast<double>(i);
        curve.CreateKey(x, std::floor(2 + std::sin(x)) == 2 ? 1 : 0);
    }
    return curve;
}

HvBooleanFCurve BooleanCurve(std::int64_t keys)
{
    return MakeCurve(HvBooleanFCurve(0), keys);
}
HvIntegerFCurve IntegerCurve(std::int64_t keys)
{
    return MakeCurve(HvIntegerFCurve(0), keys);
}
HvRawFCurve RawCurve(std::int64_t keys)
{
    return MakeCurve(HvRawFCurve(0), keys);
}
HvStdFCurve StandardCurve(std::int64_t keys)
{
    return MakeCurve(HvStdFCurve(0, HvBaseFCurve::CubicSegment), keys);
}

Bytes ArchiveOf(HvBaseFCurve const& curve)
{
    Bytes archive(curve.GetBufferSize());
    curve.WriteToBuffer(archive.data());
    return archive;
}

template <class Curve>
void CountBytes(benchmark::State& state, Curve const& curve)
{
    state.SetBytesProcessed(state.iterations() * std::int64_t(curve.GetBufferSize()));
}

template <class Make>
void Copy(benchmark::State& state, Make make)
{
    auto const curve = make(state.range(0));
    Bytes const archive = ArchiveOf(curve);
    Bytes copy(archive.size());
    for (auto _ : state) {
        std::memcpy(copy.data(), archive.data(), archive.size());
        benchmark::ClobberMemory();
    }
    CountBytes(state, curve);
}

template <class Make>
void Write(benchmark::State& state, Make make)
{
    auto const curve = make(state.range(0));
    Bytes archive(curve.GetBufferSize());
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.WriteToBuffer(archive.data()));
    }
    CountBytes(state, curve);
}

template <class Make>
void Read(benchmark::State& state, Make make)
{
    auto const curve = make(state.range(0));
    Bytes const archive = ArchiveOf(curve);
    for (auto _ : state) {
        HvBaseFCurve* read = nullptr;
        benchmark::DoNotOptimize(
            HvBaseFCurve_CreateFromBuffer(archive.data(), archive.size(), &read));
        delete read;
    }
    CountBytes(state, curve);
}

BENCHMARK_CAPTURE(Copy, Standard, StandardCurve)->Arg(0)->Arg(100)->Arg(100000);
BENCHMARK_CAPTURE(Write, Standard, StandardCurve)->Arg(0)->Arg(100)->Arg(100000);
BENCHMARK_CAPTURE(Read, Standard, StandardCurve)->Arg(0)->Arg(100)->Arg(100000);
BENCHMARK_CAPTURE(Copy, Raw, RawCurve)->Arg(100000);
BENCHMARK_CAPTURE(Write, Raw, RawCurve)->Arg(100000);
BENCHMARK_CAPTURE(Read, Raw, RawCurve)->Arg(100000);
BENCHMARK_CAPTURE(Copy, Integer, IntegerCurve)->Arg(100000);
BENCHMARK_CAPTURE(Write, Integer, IntegerCurve)->Arg(100000);
BENCHMARK_CAPTURE(Read, Integer, IntegerCurve)->Arg(100000);
BENCHMARK_CAPTURE(Copy, Boolean, BooleanCurve)->Arg(100000);
BENCHMARK_CAPTURE(Write, Boolean, BooleanCurve)->Arg(100000);
BENCHMARK_CAPTURE(Read, Boolean, BooleanCurve)->Arg(100000);

}  // namespace
