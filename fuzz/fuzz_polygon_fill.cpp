// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any polygons fill a raster to the byte as the slow scan converter of the tests does; with
// coordinates that are no numbers they only have to stay within their box.

#include <fuzz/fuzz_input.h>
#include <hv/raster/polygon_fill.h>
#include <tests/support/slow_fill.h>

#include <cstddef>
#include <cstdint>

namespace {

constexpr unsigned char kBefore = 77;

double Falloff(double x)
{
    return x < 0.5 ? 1.0 : -0.3;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    FuzzInput bytes(data, size);
    HvUByteRaster raster{bytes.Next() % 160, bytes.Next() % 48, kBefore};
    int const kind = bytes.Next() % 3;
    int const rule = bytes.Next() % 2;
    double const radius = 1.0 + bytes.Next() / 32.0;
    double const maxCoverage = bytes.Next() / 128.0;
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvExtent2<float> extent;
    while (!bytes.Empty()) {
        tags.Add(bytes.Next() % 6 == 0 ? HvPointTagEnd : HvPointTagInner);
        double const x = bytes.Coordinate();
        points.Add(x, bytes.Coordinate());
        extent.Augment(HvPoint2<float>(points[points.Size() - 1]));
    }
    bool const isTame = bytes.IsTame();
    HvFillBox box;
    if (HvFillBox_FromExtent(extent, raster, box) == 0) {
        return 0;
    }
    HvUByteRaster expected(raster);
    HvPolygons const polygons = {points, tags, rule, box};
    SlowBox const slowBox = {box.x0, box.y0, box.x1, box.y1};
    if (kind == 0) {
        HvPolygons_Fill(polygons, raster, nullptr);
    } else if (kind == 1) {
        HvPolygons_AAFill(polygons, maxCoverage, raster, nullptr);
    } else {
        HvPolygons_SoftFill(polygons, HvBlurKernel(radius, Falloff), maxCoverage, raster, nullptr);
    }
    if (isTame && kind == 0) {
        SlowFill(points, tags, rule, slowBox, expected, {});
    } else if (isTame && kind == 1) {
        SlowAAFill(points, tags, rule, slowBox, maxCoverage, expected, {});
    } else if (isTame) {
        SlowSoftFill(points, tags, rule, slowBox, radius, Falloff, maxCoverage, expected, {});
    }
    for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
        int const x = static_cast<int>(i) % raster.width;
        int const y = static_cast<int>(i) / raster.width;
        bool const isInBox = x >= box.x0 && x < box.x1 && y >= box.y0 && y < box.y1;
        FuzzRequire(isTame ? raster.data[i] == expected.data[i]
                           : isInBox || kind == 2 || raster.data[i] == kBefore);
    }
    return 0;
}
