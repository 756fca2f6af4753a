// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How long does a distance map take?
//
// The mask is a square of the given side: "Rings" are the outlines of 20 circles as seeds, with
// classified insides, as the vectorizer sees a drawing; "Noise" has a seed in every hundredth
// pixel; "Empty" has none, the degenerate case. The peer is the distance transform of OpenCV, the
// precise one, from the same seeds; it gives the distance in float, not its square.

#include <hv/raster/HvDoubleRaster.h>

#include <benchmark/benchmark.h>

#if defined(HV_PEER_OPENCV)
#include <opencv2/imgproc.hpp>
#endif

#include <cmath>
#include <cstddef>
#include <random>

namespace {

enum class Mask {
    Rings,
    Noise,
    Empty
};

HvUByteRaster Make(Mask kind, int size)
{
    HvUByteRaster mask(size, size, 0);
    std::mt19937 engine(1);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    if (kind == Mask::Noise) {
        for (std::size_t i = 0; i < mask.NumPixels(); ++i) {
            mask.data[i] = unit(engine) < 0.01 ? 1 : 0;
        }
    }
    for (int ring = 0; ring < 20 && kind == Mask::Rings; ++ring) {
        double const cx = unit(engine) * size;
        double const cy = unit(engine) * size;
        double const radius = (0.05 + 0.1 * unit(engine)) * size;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                double const distance = std::hypot(x - cx, y - cy) - radius;
                unsigned char& pixel = mask.data[static_cast<std::ptrdiff_t>(y) * size + x];
                pixel = std::fabs(distance) < 0.7 ? 1 : distance < 0.0 && pixel != 1 ? 2 : pixel;
            }
        }
    }
    return mask;
}

void CountPixels(benchmark::State& state)
{
    double const size = static_cast<double>(state.range(0));
    state.counters["pixels/s"] = benchmark::Counter(
        static_cast<double>(state.iterations()) * size * size, benchmark::Counter::kIsRate);
}

void SquaredEuclidean(benchmark::State& state, Mask kind)
{
    int const size = static_cast<int>(state.range(0));
    HvUByteRaster const mask = Make(kind, size);
    HvDoubleRaster map(size, size, 0.0);
    for (auto _ : state) {
        map.SetToSquaredEuclideanDistanceMap(mask);
        benchmark::ClobberMemory();
    }
    CountPixels(state);
}

void LInfinity(benchmark::State& state, Mask kind)
{
    int const size = static_cast<int>(state.range(0));
    HvUByteRaster const mask = Make(kind, size);
    HvDoubleRaster map(size, size, 0.0);
    for (auto _ : state) {
        map.SetToLInfinityDistanceMap(mask);
        benchmark::ClobberMemory();
    }
    CountPixels(state);
}

#if defined(HV_PEER_OPENCV)
void OpenCV(benchmark::State& state, Mask kind)
{
    int const size = static_cast<int>(state.range(0));
    HvUByteRaster const mask = Make(kind, size);
    cv::Mat seeds(size, size, CV_8UC1);
    for (std::size_t i = 0; i < mask.NumPixels(); ++i) {
        seeds.data[i] = mask.data[i] == 1 ? 0 : 255;
    }
    cv::Mat map;
    cv::setNumThreads(1);
    for (auto _ : state) {
        cv::distanceTransform(seeds, map, cv::DIST_L2, cv::DIST_MASK_PRECISE);
        benchmark::ClobberMemory();
    }
    CountPixels(state);
}
#endif

void Sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(256)->Arg(2048)->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK_CAPTURE(SquaredEuclidean, Rings, Mask::Rings)->Apply(Sizes);
BENCHMARK_CAPTURE(SquaredEuclidean, Noise, Mask::Noise)->Apply(Sizes);
BENCHMARK_CAPTURE(SquaredEuclidean, Empty, Mask::Empty)->Apply(Sizes);
BENCHMARK_CAPTURE(LInfinity, Rings, Mask::Rings)->Apply(Sizes);
#if defined(HV_PEER_OPENCV)
BENCHMARK_CAPTURE(OpenCV, Rings, Mask::Rings)->Apply(Sizes);
BENCHMARK_CAPTURE(OpenCV, Noise, Mask::Noise)->Apply(Sizes);
BENCHMARK_CAPTURE(OpenCV, Empty, Mask::Empty)->Apply(Sizes);
#endif
