// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What do rectangles and ovals cost that are scanned directly, beside the same shapes as paths?
//
// A parallelogram, upright or turned, and the ellipse in it, in a square raster of the given side.
// "PathFill" is the hard fill of the path of the same outline. Distances cost a root for each pixel
// of an oval, and a falloff is looked up for each pixel of a radial fill. The degenerate shape is a
// sliver without an area, of which only touched pixels are left.

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/scan_convert.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvRect2f.h>

#include <benchmark/benchmark.h>

#include <limits>
#include <string>

namespace {

using Point = HvPoint2<float>;

constexpr double kHalf = 0.5;
constexpr int kBrush = 4;

struct Scene {
    Point p0, p1, p2;
    HvUByteRaster raster;
    HvFloatRaster distance;
    HvGC gc;

    Scene(int size, Point const& a, Point const& b, Point const& c)
        : p0(a * static_cast<float>(size)), p1(b * static_cast<float>(size)),
          p2(c * static_cast<float>(size)), raster(size, size, 0),
          distance(size, size, std::numeric_limits<float>::max())
    {
        gc.flatness = 0.25;
        gc.softRadiusA = 2.0;
    }
};

Scene Upright(int size)
{
    return Scene(size, {0.05F, 0.05F}, {0.95F, 0.05F}, {0.05F, 0.95F});
}

Scene Turned(int size)
{
    return Scene(size, {0.05F, 0.35F}, {0.65F, 0.05F}, {0.35F, 0.95F});
}

Scene Sliver(int size)
{
    return Scene(size, {0.05F, 0.05F}, {0.05F, 0.05F}, {0.95F, 0.95F});
}

template <int Mode>
void ScanRect(Scene& s)
{
    ScanConvert(s.p0, s.p1, s.p2, kHalf, s.raster, 255, s.distance, RectFillMode(Mode));
}

template <int Mode>
void ScanOval(Scene& s)
{
    ScanConvert(s.p0, s.p1, s.p2, kHalf, s.raster, 255, s.distance, kBrush, OvalFillMode(Mode));
}

template <int Mode>
void ScanIsothetic(Scene& s)
{
    ScanConvertIsothetic(s.p0, s.p1, s.p2, kHalf, s.raster, 255, s.distance, kBrush,
                         OvalFillMode(Mode));
}

void Distances(Scene& s)
{
    FillDistanceRaster(s.p0, s.p1, s.p2, kHalf, s.distance);
}

void DistancesIsothetic(Scene& s)
{
    FillDistanceRasterIsothetic(s.p0, s.p1, s.p2, kHalf, s.distance);
}

template <class Shape>
Shape Of(Scene const& s)
{
    return Shape(s.p0, s.p1, s.p2);
}

template <class Shape>
void Fill(Scene& s)
{
    Of<Shape>(s).Fill(s.gc, s.raster, nullptr);
}

template <class Shape>
void AAFill(Scene& s)
{
    Of<Shape>(s).AAFill(s.gc, s.raster, nullptr);
}

template <class Shape>
void SoftFill(Scene& s)
{
    Of<Shape>(s).SoftFill(s.gc, s.raster, nullptr);
}

template <class Shape>
void RadialFill(Scene& s)
{
    Of<Shape>(s).RadialFill(s.gc, s.raster);
}

template <class Shape>
void PathFill(Scene& s)
{
    HvPath2f(Of<Shape>(s)).Fill(s.gc, s.raster, nullptr);
}

void Register(std::string const& name, Scene (*make)(int), void (*scan)(Scene&))
{
    auto const measure = [make, scan](benchmark::State& state) {
        int const size = static_cast<int>(state.range(0));
        Scene scene = make(size);
        for (auto _ : state) {
            scan(scene);
            benchmark::ClobberMemory();
        }
        double const pixels = static_cast<double>(state.iterations()) * size * size;
        state.counters["pixels/s"] = benchmark::Counter(pixels, benchmark::Counter::kIsRate);
    };
    benchmark::RegisterBenchmark(name.c_str(), measure)
        ->Arg(64)
        ->Arg(512)
        ->Unit(benchmark::kMicrosecond);
}

void RegisterAll(std::string const& place, Scene (*make)(int))
{
    Register("Rect/Scan/" + place, make, ScanRect<RectFillPlain>);
    Register("Rect/Touched/" + place, make, ScanRect<RectFillTouched>);
    Register("Rect/Radial/" + place, make, ScanRect<RectFillRadial>);
    Register("Rect/Linear/" + place, make, ScanRect<RectFillLinear>);
    Register("Rect/Fill/" + place, make, Fill<HvRect2f>);
    Register("Rect/PathFill/" + place, make, PathFill<HvRect2f>);
    Register("Rect/AAFill/" + place, make, AAFill<HvRect2f>);
    Register("Rect/SoftFill/" + place, make, SoftFill<HvRect2f>);
    Register("Rect/RadialFill/" + place, make, RadialFill<HvRect2f>);
    Register("Oval/Scan/" + place, make, ScanOval<OvalFillPlain>);
    Register("Oval/Brushed/" + place, make, ScanOval<OvalFillBrushed>);
    Register("Oval/Isothetic/" + place, make, ScanIsothetic<OvalFillPlain>);
    Register("Oval/IsotheticBrushed/" + place, make, ScanIsothetic<OvalFillBrushed>);
    Register("Oval/Distances/" + place, make, Distances);
    Register("Oval/DistancesIsothetic/" + place, make, DistancesIsothetic);
    Register("Oval/Fill/" + place, make, Fill<HvOval2f>);
    Register("Oval/PathFill/" + place, make, PathFill<HvOval2f>);
    Register("Oval/AAFill/" + place, make, AAFill<HvOval2f>);
    Register("Oval/SoftFill/" + place, make, SoftFill<HvOval2f>);
    Register("Oval/RadialFill/" + place, make, RadialFill<HvOval2f>);
}

bool const isRegistered = [] {
    RegisterAll("upright", Upright);
    RegisterAll("turned", Turned);
    Register("Rect/Touched/sliver", Sliver, ScanRect<RectFillTouched>);
    Register("Oval/Scan/sliver", Sliver, ScanOval<OvalFillPlain>);
    return true;
}();

}  // namespace
