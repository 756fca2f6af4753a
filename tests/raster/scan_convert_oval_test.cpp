// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Ellipses into pixels: by hand, and against the form of each pixel.

#include <hv/raster/scan_convert.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace {

using Point = HvPoint2<float>;

constexpr float kFar = std::numeric_limits<float>::max();

std::string Picture(HvUByteRaster const& raster)
{
    std::string picture;
    for (int y = raster.height - 1; y >= 0; --y) {
        for (int x = 0; x < raster.width; ++x) {
            picture += raster.data[y * raster.width + x] == 9 ? '#' : '.';
        }
        picture += '\n';
    }
    return picture;
}

/// The quadratic form of the ellipse at a point, by Cramer's rule in long double.
long double FormAt(Point const& p0, Point const& p1, Point const& p2, double x, double y)
{
    using Wide = long double;
    Wide const ux = Wide(p1.x) - p0.x;
    Wide const uy = Wide(p1.y) - p0.y;
    Wide const vx = Wide(p2.x) - p0.x;
    Wide const vy = Wide(p2.y) - p0.y;
    Wide const dx = x - p0.x;
    Wide const dy = y - p0.y;
    Wide const area = ux * vy - uy * vx;
    Wide const s = 2 * (dx * vy - dy * vx) / area - 1;
    Wide const t = 2 * (ux * dy - uy * dx) / area - 1;
    return s * s + t * t;
}

}  // namespace

TEST(scan_convert_oval, CircleCoversTheSamplePointsInIt)
{
    HvUByteRaster raster(6, 6, 7);
    HvFloatRaster distance(1, 1, kFar);
    // The circle of radius 2.5 about (3, 3): sample points at (0.5, 1.5, 2.5) from it.
    ScanConvert(Point(0.5F, 0.5F), Point(5.5F, 0.5F), Point(0.5F, 5.5F), 0.5, raster, 9, distance,
                0, OvalFillPlain);
    EXPECT_EQ(Picture(raster), "......\n.####.\n.####.\n.####.\n.####.\n......\n");
    // Of radius 2.55: (0.5, 2.5) lies at 2.5495 from it.
    ScanConvert(Point(0.45F, 0.45F), Point(5.55F, 0.45F), Point(0.45F, 5.55F), 0.5, raster, 9,
                distance, 0, OvalFillPlain);
    EXPECT_EQ(Picture(raster), "..##..\n.####.\n######\n######\n.####.\n..##..\n");
}

RC_GTEST_PROP(scan_convert_oval, AgreesWithTheFormOfEachPixel, ())
{
    auto const coordinate = [] { return static_cast<float>(PickInRange(-64, 192)) / 8.0F; };
    Point const p0(coordinate(), coordinate());
    Point const p1(coordinate(), coordinate());
    Point const p2(coordinate(), coordinate());
    RC_PRE(std::fabs(HvPoint2_ABdetCD(p0, p1, p0, p2)) > 0.5);
    HvUByteRaster raster(16, 16, 7);
    HvFloatRaster unused(1, 1, kFar);
    ScanConvert(p0, p1, p2, 0.5, raster, 9, unused, 0, OvalFillPlain);
    HvFloatRaster distance(16, 16, 2.0F);
    FillDistanceRaster(p0, p1, p2, 0.5, distance);
    double const centreY = (double(p1.y) + p2.y) / 2;
    double const reach = std::hypot(double(p1.y) - p0.y, double(p2.y) - p0.y) / 2;
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            long double const form = FormAt(p0, p1, p2, x + 0.5, y + 0.5);
            bool const isRow = std::fabs(y + 0.5 - centreY) <= reach;
            bool const isInside = form <= 1.000001L && isRow;
            // Beside the threshold the last bits of double tell.
            if (std::fabs(form - 1.000001L) > 1e-9L &&
                std::fabs(std::fabs(y + 0.5 - centreY) - reach) > 1e-9) {
                RC_ASSERT((raster.data[y * 16 + x] == 9) == isInside);
                RC_ASSERT((distance.data[y * 16 + x] < 2.0F) == isInside);
            }
            if (distance.data[y * 16 + x] < 2.0F) {
                long double const d = std::min(1.0L, std::sqrt(form));
                RC_ASSERT(std::fabs(distance.data[y * 16 + x] - d) < 1e-6L);
            }
        }
    }
}

TEST(scan_convert_oval, DegenerateEllipseIsNotScanned)
{
    for (int mode : {0, 1, 2, 5}) {
        HvUByteRaster raster(8, 8, 7);
        HvFloatRaster distance(8, 8, kFar);
        auto const fillMode = static_cast<OvalFillMode>(mode);
        ScanConvert(Point(1, 1), Point(1, 1), Point(1, 6), 0.5, raster, 9, distance, 2, fillMode);
        ScanConvert(Point(1, 1), Point(6, 1), Point(1, 1), 0.5, raster, 9, distance, 2, fillMode);
        ScanConvert(Point(1, 1), Point(6, 1), Point(3, 1), 0.5, raster, 9, distance, 2, fillMode);
        EXPECT_EQ(raster.AllPixelValuesAre(7), 1) << mode;
        EXPECT_EQ(*std::min_element(distance.data, distance.data + 64), kFar) << mode;
    }
}

TEST(scan_convert_oval, BrushLeavesDistancesAroundTheEndsOfSpans)
{
    HvUByteRaster raster(20, 12, 7);
    HvFloatRaster distance(20, 12, 10.0F);
    ScanConvert(Point(4, 2), Point(16, 2), Point(4, 10), 0.5, raster, 9, distance, 2,
                OvalFillBrushed);
    // By definition: the nearest end of a span within 2 pixels.
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 20; ++x) {
            double nearest = 10.0;
            for (int row = 0; row < 12; ++row) {
                unsigned char const* const begin = raster.data + row * 20;
                unsigned char const* const first = std::find(begin, begin + 20, 9);
                if (first == begin + 20) {
                    continue;
                }
                auto const count = std::count(begin, begin + 20, 9);
                for (auto const end : {first - begin, first - begin + count - 1}) {
                    double const d = std::hypot(double(x) - double(end), y - row);
                    nearest = d <= 2.0 ? std::min(nearest, d) : nearest;
                }
            }
            EXPECT_EQ(distance.data[y * 20 + x], static_cast<float>(nearest)) << x << ' ' << y;
        }
    }
}

TEST(scan_convert_oval, IsotheticCoversWholeOffsetsInTheEllipse)
{
    // Half axes 3 and 2 about pixel (5, 4).
    HvUByteRaster raster(10, 8, 7);
    HvFloatRaster distance(1, 1, kFar);
    ScanConvertIsothetic(Point(2, 2), Point(8, 2), Point(2, 6), 0.5, raster, 9, distance, 0,
                         OvalFillPlain);
    // i^2 / 9 + j^2 / 4 <= 1: 3 at j = 0, 2 at j = 1, 0 at j = 2.
    EXPECT_EQ(Picture(raster), "..........\n.....#....\n...#####..\n..#######.\n...#####..\n"
                               ".....#....\n..........\n..........\n");
}

TEST(scan_convert_oval, IsotheticTakesTheWidthAlongEitherAxis)
{
    HvUByteRaster raster(40, 40, 7);
    HvUByteRaster swapped(40, 40, 7);
    HvFloatRaster distance(1, 1, kFar);
    ScanConvertIsothetic(Point(3, 5), Point(31, 5), Point(3, 27), 0.5, raster, 9, distance, 0,
                         OvalFillPlain);
    ScanConvertIsothetic(Point(3, 5), Point(3, 27), Point(31, 5), 0.5, swapped, 9, distance, 0,
                         OvalFillPlain);
    EXPECT_TRUE(std::equal(raster.data, raster.data + 1600, swapped.data));
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            int const i = x - 17;
            int const j = y - 16;
            bool const isInside = 11 * 11 * i * i + 14 * 14 * j * j <= 14 * 14 * 11 * 11;
            EXPECT_EQ(raster.data[y * 40 + x], isInside ? 9 : 7) << x << ' ' << y;
        }
    }
}

TEST(scan_convert_oval, IsotheticWithoutAreaIsARun)
{
    HvFloatRaster distance(1, 1, kFar);
    HvUByteRaster raster(10, 8, 7);
    // Half width 3: floor(3 - 0.5) = 2 each way.
    ScanConvertIsothetic(Point(2, 4), Point(8, 4), Point(2, 4), 0.5, raster, 9, distance, 0,
                         OvalFillPlain);
    EXPECT_EQ(Picture(raster), "..........\n..........\n..........\n...#####..\n..........\n"
                               "..........\n..........\n..........\n");
    HvUByteRaster upright(10, 8, 7);
    ScanConvertIsothetic(Point(3, 1), Point(3, 1), Point(3, 5), 0.5, upright, 9, distance, 0,
                         OvalFillPlain);
    EXPECT_EQ(Picture(upright), "..........\n..........\n..........\n...#......\n...#......\n"
                                "...#......\n..........\n..........\n");
    HvUByteRaster pixel(3, 3, 7);
    ScanConvertIsothetic(Point(1, 1), Point(1, 1), Point(1, 1), 0.5, pixel, 9, distance, 0,
                         OvalFillPlain);
    EXPECT_EQ(Picture(pixel), "...\n.#.\n...\n");
}

TEST(scan_convert_oval, IsotheticDistanceIsOneAtTheCurve)
{
    HvFloatRaster distance(40, 40, 0.75F);
    FillDistanceRasterIsothetic(Point(3, 5), Point(31, 5), Point(3, 27), 0.5, distance);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            double const d = std::hypot((x - 17) / 14.0, (y - 16) / 11.0);
            EXPECT_FLOAT_EQ(distance.data[y * 40 + x], static_cast<float>(std::min(d, 0.75)));
        }
    }
}

TEST(scan_convert_oval, TakesAnyNumbersAndRasters)
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const numbers[] = {0.0F,   -1.5F,    3e38F,     -3e38F,
                             1e-40F, infinity, -infinity, std::numeric_limits<float>::quiet_NaN()};
    for (float const a : numbers) {
        for (float const b : numbers) {
            for (int mode = -1; mode <= 3; ++mode) {
                auto const fillMode = static_cast<OvalFillMode>(mode);
                HvUByteRaster raster(5, 4, 7);
                HvFloatRaster distance(5, 4, kFar);
                for (double const half : {0.5, double(a)}) {
                    Point const p0(a, 0);
                    Point const p1(b, 2);
                    Point const p2(5, a);
                    ScanConvert(p0, p1, p2, half, raster, 9, distance, 1, fillMode);
                    ScanConvertIsothetic(p0, p1, p2, half, raster, 9, distance, 1, fillMode);
                    FillDistanceRaster(p0, p1, p2, half, distance);
                    FillDistanceRasterIsothetic(p0, p1, p2, half, distance);
                }
                HvUByteRaster empty(0, 4, 7);
                HvFloatRaster none(3, 0, kFar);
                ScanConvert(Point(0, 0), Point(4, 0), Point(0, 4), 0.5, empty, 9, none, -1,
                            fillMode);
            }
        }
    }
}

TEST(scan_convert_oval, BrushBeyondARasterIsRefused)
{
    HvUByteRaster raster(8, 8, 7);
    HvFloatRaster distance(8, 8, kFar);
    for (int const radius : {40000, 2147483647}) {
        EXPECT_THROW(ScanConvert(Point(1, 1), Point(6, 1), Point(1, 6), 0.5, raster, 9, distance,
                                 radius, OvalFillBrushed),
                     std::bad_alloc);
    }
    EXPECT_EQ(raster.AllPixelValuesAre(7), 1);
    RefuseEachAllocation([&] {
        ScanConvertIsothetic(Point(1, 1), Point(6, 1), Point(1, 6), 0.5, raster, 9, distance, 2,
                             OvalFillBrushed);
    });
}
