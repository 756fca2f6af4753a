// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Any polygons fill a raster to the byte as the slow scan converter of the tests does; with
// coordinates that are no numbers they only have to stay within their box.

#include <hv/raster/polygon_fill.h>
#include <tests/support/slow_fill.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

constexpr unsigned char kBefore = 77;

// Hands out the input byte by byte; beyond its end there are zeros.
class Bytes {
public:
    Bytes(std::uint8_t const* data, std::size_t size) : data_(data), left_(size) {}
    bool Empty() const { return left_ == 0; }
    int Next()
    {
        if (left_ == 0) {
            return 0;
        }
        --left_;
        return *data_++;
    }
    // A number on a grid of 256ths from -64 to 191; one in 256 times one that is hostile.
    double Coordinate()
    {
        int const high = Next();
        int const low = Next();
        if (high == 255) {
            double const hostile[] = {
                std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::max(),
                -std::numeric_limits<double>::max(),      1e-310};
            return hostile[low % 6];
        }
        return (high * 256 + low) / 256.0 - 64.0;
    }

private:
    std::uint8_t const* data_;
    std::size_t left_;
};

double Falloff(double x)
{
    return x < 0.5 ? 1.0 : -0.3;
}

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Bytes bytes(data, size);
    HvUByteRaster raster(bytes.Next() % 48, bytes.Next() % 48, kBefore);
    int const kind = bytes.Next() % 3;
    int const rule = bytes.Next() % 2;
    double const radius = 1.0 + bytes.Next() / 32.0;
    double const maxCoverage = bytes.Next() / 128.0;
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvExtent2<float> extent;
    bool isTame = true;
    while (!bytes.Empty()) {
        tags.Add(bytes.Next() % 6 == 0 ? HvPointTagEnd : HvPointTagInner);
        double const x = bytes.Coordinate();
        points.Add(x, bytes.Coordinate());
        HvPoint2<double> const& point = points[points.Size() - 1];
        isTame = isTame && std::fabs(point.x) < 1e3 && std::fabs(point.y) < 1e3;
        extent.Augment(HvPoint2<float>(point));
    }
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
        Require(isTame ? raster.data[i] == expected.data[i]
                       : isInBox || kind == 2 || raster.data[i] == kBefore);
    }
    return 0;
}
