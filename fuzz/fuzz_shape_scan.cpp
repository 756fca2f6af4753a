// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any parallelogram, and the ellipse in it, scanned directly and as shapes: plain scans cover the
// pixels whose middle lies inside, distances lie where they are said to, and no scan writes beside
// its rasters, whatever the numbers are.

#include <fuzz/fuzz_input.h>
#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/scan_convert.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<float>;

constexpr unsigned char kBefore = 77;
constexpr unsigned char kValue = 200;
constexpr float kFar = std::numeric_limits<float>::max();
// A middle that is nearer to the outline, in units of the shape's sides, may be on either side. The
// smallest area on the grid is 2^-16, and rounding of the scan about 1e-13.
constexpr double kUncertain = 1e-4;

struct Scene {
    Point p0, p1, p2;
    double half;
    int brush;
    HvUByteRaster raster;
    HvFloatRaster distance;

    explicit Scene(FuzzInput& input)
        : p0(input.Point()), p1(input.Point()), p2(input.Point()),
          half(input.Next() % 4 != 0 ? 0.5 : input.Coordinate()),
          brush(input.Next() - 4), raster{input.Next() % 48, input.Next() % 48, kBefore},
          distance{input.Next() % 48, input.Next() % 48, kFar}
    {
    }

    double Area() const { return HvPoint2_ABdetCD(p0, p1, p0, p2); }

    // Where the middle of a pixel lies along p0 p1 and p0 p2, from -1 to 1 inside.
    HvPoint2<double> Place(int x, int y) const
    {
        HvPoint2<double> const d = HvPoint2<double>(x + 0.5, y + 0.5) - HvPoint2<double>(p0);
        HvPoint2<double> const u(p1 - p0);
        HvPoint2<double> const v(p2 - p0);
        return {2 * HvPoint2_AdetB(d, v) / Area() - 1, 2 * HvPoint2_AdetB(u, d) / Area() - 1};
    }

    // Requires of all pixels whose middle is certainly on one side of the outline, which is at
    // `radius`(place) 1, that they are covered when it is inside.
    template <class Radius>
    void RequireCovered(Radius const& radius) const
    {
        for (int y = 0; y < raster.height; ++y) {
            for (int x = 0; x < raster.width; ++x) {
                double const r = radius(Place(x, y));
                unsigned char const pixel = raster.data[y * raster.width + x];
                FuzzRequire(pixel == kBefore || pixel == kValue);
                FuzzRequire(std::fabs(r - 1.0) < kUncertain || (pixel == kValue) == (r < 1.0));
            }
        }
    }

    void RequireDistances(float greatest) const
    {
        for (std::size_t i = 0; i < distance.NumPixels(); ++i) {
            float const value = distance.data[i];
            FuzzRequire(value == kFar || (value >= 0.0F && value <= greatest));
        }
    }
};

double Square(HvPoint2<double> const& place)
{
    return std::max(std::fabs(place.x), std::fabs(place.y));
}

double Round(HvPoint2<double> const& place)
{
    return std::hypot(place.x, place.y);
}

// The shape by each of its fills; a direct fill writes 255 alone.
template <class Shape>
void FillShape(Scene const& scene, int kind)
{
    Shape const shape(scene.p0, scene.p1, scene.p2);
    HvUByteRaster raster(scene.raster.width, scene.raster.height, kBefore);
    HvGC gc;
    gc.softRadiusA = 1.5;
    switch (kind % 4) {
    case 0:
        shape.Fill(gc, raster, nullptr);
        for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
            FuzzRequire(raster.data[i] == kBefore || raster.data[i] == 255);
        }
        break;
    case 1:
        shape.AAFill(gc, raster, nullptr);
        break;
    case 2:
        shape.SoftFill(gc, raster, nullptr);
        break;
    default:
        shape.RadialFill(gc, raster);
        break;
    }
}

void Scan(Scene& s, int kind, int mode)
{
    bool const hasArea = s.Area() != 0.0 && s.half == 0.5;
    bool const isPlain = mode != OvalFillBrushed;
    // A brush leaves distances up to its radius; the other scans up to 1.
    float const greatest = kind == 0 || isPlain ? 1.0F : static_cast<float>(s.brush);
    switch (kind) {
    case 0:
        ScanConvert(s.p0, s.p1, s.p2, s.half, s.raster, kValue, s.distance, RectFillMode(mode));
        if (mode == RectFillPlain && hasArea) {
            s.RequireCovered(Square);
        }
        break;
    case 1:
        ScanConvert(s.p0, s.p1, s.p2, s.half, s.raster, kValue, s.distance, s.brush,
                    OvalFillMode(mode));
        break;
    case 2:
        ScanConvertIsothetic(s.p0, s.p1, s.p2, s.half, s.raster, kValue, s.distance, s.brush,
                             OvalFillMode(mode));
        break;
    case 3:
        FillDistanceRaster(s.p0, s.p1, s.p2, s.half, s.distance);
        break;
    case 4:
        FillDistanceRasterIsothetic(s.p0, s.p1, s.p2, s.half, s.distance);
        break;
    case 5:
        FillShape<HvRect2f>(s, mode);
        break;
    default:
        FillShape<HvOval2f>(s, mode);
        break;
    }
    s.RequireDistances(kind < 3 ? greatest : 1.0F);
    // An ellipse that is wide enough in both directions for its outline to be told in float.
    if (kind == 1 && hasArea && std::fabs(s.Area()) > 1.0) {
        s.RequireCovered(Round);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput input(data, size);
    int const kind = input.Next() % 7;
    int const mode = input.Next() % 9 - 1;
    Scene scene(input);
    if (input.IsTame()) {
        Scan(scene, kind, mode);
        return 0;
    }
    // Of hostile numbers nothing is required but an end.
    scene.half = kind % 2 == 0 ? scene.half : 0.5;
    HvUByteRaster& raster = scene.raster;
    ScanConvert(scene.p0, scene.p1, scene.p2, scene.half, raster, kValue, scene.distance,
                RectFillMode(mode));
    ScanConvert(scene.p0, scene.p1, scene.p2, scene.half, raster, kValue, scene.distance,
                scene.brush, OvalFillMode(mode));
    ScanConvertIsothetic(scene.p0, scene.p1, scene.p2, scene.half, raster, kValue, scene.distance,
                         scene.brush, OvalFillMode(mode));
    FillDistanceRaster(scene.p0, scene.p1, scene.p2, scene.half, scene.distance);
    FillDistanceRasterIsothetic(scene.p0, scene.p1, scene.p2, scene.half, scene.distance);
    FillShape<HvRect2f>(scene, mode);
    FillShape<HvOval2f>(scene, mode);
    return 0;
}
