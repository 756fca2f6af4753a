// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Ellipses into pixels: by hand, and against the form of each pixel.

#include <hv/raster/scan_convert.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>
#include <tests/support/raster_text.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace {

using Point = HvPoint2<float>;

constexpr float kFar = std::numeric_limits<float>::max();

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
    EXPECT_EQ(RasterText(raster, 9), "......\n.####.\n.####.\n.####.\n.####.\n......\n");
    // Of radius 2.55: (0.5, 2.5) lies at 2.5495 from it.
    ScanConvert(Point(0.45F, 0.45F), Point(5.55F, 0.45F), Point(0.45F, 5.55F), 0.5, raster, 9,
                distance, 0, OvalFillPlain);
    EXPECT_EQ(RasterText(raster, 9), "..##..\n.####.\n######\n######\n.####.\n..##..\n");
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

TEST(scan_convert_oval, ThinLeaningEllipseLeavesTheRowsItRunsThrough)
{
    // Of all their points x + y is 55.875 but for 3e-5, and of sample points it is a whole number.
    // The axes lie so close to each other that rounding leaves some rows without a root.
    HvFloatRaster unused(1, 1, kFar);
    for (int lean = -8; lean <= 8; ++lean) {
        HvUByteRaster raster(64, 64, 7);
        ScanConvert(Point(30.25F, 25.625F), Point(30.21875F, 25.65625F),
                    Point(19.75F, 36.125F + static_cast<float>(lean) * 0x1p-18F), 0.5, raster, 9,
                    unused, 0, OvalFillPlain);
        EXPECT_EQ(std::count(raster.data, raster.data + 64 * 64, 9), 0) << lean;
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
    EXPECT_EQ(RasterText(raster, 9), "..........\n.....#....\n...#####..\n..#######.\n...#####..\n"
                                     ".....#....\n..........\n..........\n");
}

TEST(scan_convert_oval, IsotheticCoversWholeOffsetsOnTheCurve)
{
    // Half axes a and b have (a 3/5, b 4/5) on the curve, and (a 4/5, b 3/5).
    for (int a = 5; a <= 60; a += 5) {
        for (int b = 5; b <= 60; b += 5) {
            HvUByteRaster raster(121, 121, 7);
            HvFloatRaster unused(1, 1, kFar);
            auto const left = static_cast<float>(60 - a);
            auto const top = static_cast<float>(60 - b);
            auto const right = static_cast<float>(60 + a);
            ScanConvertIsothetic(Point(left, top), Point(right, top),
                                 Point(left, static_cast<float>(60 + b)), 0.5, raster, 9, unused, 0,
                                 OvalFillPlain);
            for (int const k : {3, 4}) {
                unsigned char const* const row = raster.data + (60 - b / 5 * (7 - k)) * 121;
                EXPECT_EQ(row[60 + a / 5 * k], 9) << a << ' ' << b << ' ' << k;
                EXPECT_EQ(row[60 - a / 5 * k], 9) << a << ' ' << b << ' ' << k;
                EXPECT_EQ(row[60 + a / 5 * k + 1], 7) << a << ' ' << b << ' ' << k;
            }
        }
    }
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
    EXPECT_EQ(RasterText(raster, 9), "..........\n..........\n..........\n...#####..\n..........\n"
                                     "..........\n..........\n..........\n");
    HvUByteRaster upright(10, 8, 7);
    ScanConvertIsothetic(Point(3, 1), Point(3, 1), Point(3, 5), 0.5, upright, 9, distance, 0,
                         OvalFillPlain);
    EXPECT_EQ(RasterText(upright, 9), "..........\n..........\n..........\n...#......\n...#......\n"
                                      "...#......\n..........\n..........\n");
    HvUByteRaster pixel(3, 3, 7);
    ScanConvertIsothetic(Point(1, 1), Point(1, 1), Point(1, 1), 0.5, pixel, 9, distance, 0,
                         OvalFillPlain);
    EXPECT_EQ(RasterText(pixel, 9), "...\n.#.\n...\n");
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

TEST(scan_convert_oval, HugeEllipseCoversTheRaster)
{
    for (float const r : {1e6F, 1e9F, 1e15F, 1e17F, 1e30F, 1e38F}) {
        HvUByteRaster raster(7, 5, 7);
        HvFloatRaster distance(7, 5, kFar);
        ScanConvert(Point(-r, -r), Point(r, -r), Point(-r, r), 0.5, raster, 9, distance, 0,
                    OvalFillPlain);
        EXPECT_EQ(raster.AllPixelValuesAre(9), 1) << r;
        // Sheared, so that the rows' spans do not lie about the same column.
        HvUByteRaster sheared(7, 5, 7);
        ScanConvert(Point(-r, -r), Point(r, -r * 0.5F), Point(-r, r * 0.5F), 0.5, sheared, 9,
                    distance, 0, OvalFillPlain);
        EXPECT_EQ(sheared.AllPixelValuesAre(9), 1) << r;
        FillDistanceRaster(Point(-r, -r), Point(r, -r), Point(-r, r), 0.5, distance);
        EXPECT_LT(*std::max_element(distance.data, distance.data + 35), 1e-5F) << r;
        HvUByteRaster isothetic(7, 5, 7);
        ScanConvertIsothetic(Point(-r, -r), Point(r, -r), Point(-r, r), 0.5, isothetic, 9, distance,
                             0, OvalFillPlain);
        EXPECT_EQ(isothetic.AllPixelValuesAre(9), 1) << r;
    }
}

TEST(scan_convert_oval, HalfAxisOfTheLimitIsScanned)
{
    // Half axes of about 1e-4 along x and of 2 along y.
    float const limit = 9.999999747378752e-05F;
    auto const scannedRows = [](float halfWidth, int mode) {
        HvUByteRaster raster(1, 6, 7);
        HvFloatRaster unused(1, 1, kFar);
        // About x = 0, sampled at 0, so that the axis is as exact as it is small.
        ScanConvert(Point(-halfWidth, 1), Point(halfWidth, 1), Point(-halfWidth, 5), 0.0, raster, 9,
                    unused, 0, static_cast<OvalFillMode>(mode));
        return std::count(raster.data, raster.data + 6, 9);
    };
    float const below = std::nextafter(limit, 0.0F);
    EXPECT_EQ(scannedRows(limit, 0), 5);
    EXPECT_EQ(scannedRows(below, 0), 0);
    EXPECT_EQ(scannedRows(below, 1), 0);
    EXPECT_EQ(scannedRows(below, 2), 5);
    EXPECT_EQ(scannedRows(0.0F, 2), 0);
}

TEST(scan_convert_oval, IsotheticHalfAxisOfTheLimitMakesNoRun)
{
    // Half height 2: about pixel 3 the ellipse reaches 2 rows each way, the run floor(2 - 0.5) = 1.
    auto const scannedRows = [](float halfWidth) {
        HvUByteRaster raster(1, 7, 7);
        HvFloatRaster unused(1, 1, kFar);
        ScanConvertIsothetic(Point(-halfWidth, 1), Point(halfWidth, 1), Point(-halfWidth, 5), 0.5,
                             raster, 9, unused, 0, OvalFillPlain);
        return std::count(raster.data, raster.data + 7, 9);
    };
    float const limit = 9.999999747378752e-05F;
    EXPECT_EQ(scannedRows(limit), 5);
    EXPECT_EQ(scannedRows(std::nextafter(limit, 0.0F)), 3);
    EXPECT_EQ(scannedRows(0.0F), 3);
}

RC_GTEST_PROP(scan_convert_oval, ThinEllipseAgreesWithTheForm, ())
{
    // Slivers of any direction, some of them far longer than the raster.
    auto const coordinate = [] { return static_cast<float>(PickInRange(-2000, 2000)) / 4.0F; };
    auto const offset = [] { return static_cast<float>(PickInRange(-64, 65)) / 512.0F; };
    Point const p0(coordinate(), coordinate());
    Point const p1 = Point(16, 16) - p0 + Point(offset(), offset());
    Point const p2 = p0 + Point(offset(), offset());
    long double const area = std::fabs(HvPoint2_ABdetCD(p0, p1, p0, p2));
    RC_PRE(area > 0.125L);
    HvUByteRaster raster(16, 16, 7);
    HvFloatRaster unused(1, 1, kFar);
    ScanConvert(p0, p1, p2, 0.5, raster, 9, unused, 0, OvalFillPlain);
    // With sides of length L and l the form's terms are up to (L l / area)^2 times as large as the
    // form is near the curve, and each is rounded a few times; so are the roots.
    long double const terms = HvPoint2_LengthAB(p0, p1) * HvPoint2_LengthAB(p0, p2) / area;
    long double const margin = 1e-14L * (terms * terms + HvPoint2_LengthAB(p0, p1) / area);
    double const centreY = (double(p1.y) + p2.y) / 2;
    double const reach = std::hypot(double(p1.y) - p0.y, double(p2.y) - p0.y) / 2;
    for (int y = 0; y < 16; ++y) {
        bool const isRow = std::fabs(y + 0.5 - centreY) < reach;
        for (int x = 0; x < 16; ++x) {
            long double const form = FormAt(p0, p1, p2, x + 0.5, y + 0.5);
            if (std::fabs(form - 1.000001L) > margin) {
                RC_ASSERT((raster.data[y * 16 + x] == 9) == (form <= 1.000001L && isRow));
            }
        }
    }
}

RC_GTEST_PROP(scan_convert_oval, IsotheticAgreesWithWholeOffsets, ())
{
    // Quarters: all products are exact in 64 bits, in units of an eighth.
    int const left = PickInRange(-40, 80);
    int const top = PickInRange(-40, 80);
    int const width = PickInRange(1, 120);
    int const height = PickInRange(1, 120);
    bool const alongY = PickInRange(0, 2) == 1;
    auto const quarters = [](int n) { return static_cast<float>(n) / 4.0F; };
    Point const p0(quarters(left), quarters(top));
    Point const right(quarters(left + width), quarters(top));
    Point const bottom(quarters(left), quarters(top + height));
    HvUByteRaster raster(16, 12, 7);
    HvFloatRaster unused(1, 1, kFar);
    ScanConvertIsothetic(p0, alongY ? bottom : right, alongY ? right : bottom, 0.5, raster, 9,
                         unused, 0, OvalFillPlain);
    HvFloatRaster distance(16, 12, 2.0F);
    FillDistanceRasterIsothetic(p0, alongY ? bottom : right, alongY ? right : bottom, 0.5,
                                distance);
    // floor(mean + 0.5), the mean being (2 left + width) eighths.
    auto const centreX = static_cast<int>(std::floor((2 * left + width + 4) / 8.0));
    auto const centreY = static_cast<int>(std::floor((2 * top + height + 4) / 8.0));
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 16; ++x) {
            long long const i = (x - centreX) * 8LL * height;
            long long const j = (y - centreY) * 8LL * width;
            long long const limit = 1LL * width * height;
            bool const isInside = i * i + j * j <= limit * limit;
            RC_ASSERT((raster.data[y * 16 + x] == 9) == isInside);
            double const d = std::hypot((x - centreX) * 8.0 / width, (y - centreY) * 8.0 / height);
            double const expected = isInside ? std::min(d, 1.0) : 2.0;
            RC_ASSERT(std::fabs(distance.data[y * 16 + x] - expected) < 1e-6);
        }
    }
}

TEST(scan_convert_oval, DistanceLowersOnlyWhatIsAboveAndEndsAtOne)
{
    // The circle of radius 4 about (4, 4).
    HvFloatRaster distance(8, 8, 0.5F);
    distance.data[0] = kFar;
    FillDistanceRaster(Point(0, 0), Point(8, 0), Point(0, 8), 0.5, distance);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            if (x == 0 && y == 0) {
                continue;  // outside
            }
            double const d = std::hypot(x - 3.5, y - 3.5) / 4.0;
            EXPECT_FLOAT_EQ(distance.data[y * 8 + x], static_cast<float>(std::min(d, 0.5)));
        }
    }
    EXPECT_EQ(distance.data[0], kFar);
    // A sample point just outside of the curve counts, with 1: its form is below 1.000001.
    HvFloatRaster point(1, 1, kFar);
    FillDistanceRaster(Point(0.5F, -1.5F), Point(0.5F, 2.5F), Point(-3.5000008F, -1.5F), 0.5,
                       point);
    EXPECT_LE(point.data[0], 1.0F);
    EXPECT_GT(point.data[0], 0.999999F);
}

TEST(scan_convert_oval, SamplePointMovesWithHalf)
{
    for (double const half : {0.0, 0.25, 0.5, -3.0}) {
        HvUByteRaster raster(12, 12, 7);
        HvFloatRaster unused(1, 1, kFar);
        ScanConvert(Point(2, 1), Point(9, 3), Point(1, 8), half, raster, 9, unused, 0,
                    OvalFillPlain);
        for (int y = 0; y < 12; ++y) {
            for (int x = 0; x < 12; ++x) {
                long double const form =
                    FormAt(Point(2, 1), Point(9, 3), Point(1, 8), x + half, y + half);
                EXPECT_EQ(raster.data[y * 12 + x], form <= 1.000001L ? 9 : 7)
                    << half << ' ' << x << ' ' << y;
            }
        }
    }
}

TEST(scan_convert_oval, BrushMayBeOfAnyRadius)
{
    // Half axes 2 and 1 about pixel (4, 3): the spans 4, 2 to 6, 4.
    int const ends[][2] = {{4, 2}, {2, 3}, {6, 3}, {4, 4}};
    for (int const radius : {-2147483647 - 1, -1, 0, 1, 5, 1 << 20, 2147483647}) {
        HvUByteRaster raster(8, 6, 7);
        HvFloatRaster distance(20, 30, kFar);
        AllocationCounter const counter;
        ScanConvertIsothetic(Point(2, 2), Point(6, 2), Point(2, 4), 0.5, raster, 9, distance,
                             radius, OvalFillBrushed);
        EXPECT_EQ(counter.Allocations(), 0);
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 20; ++x) {
                float nearest = kFar;
                for (auto const& end : ends) {
                    double const d = std::hypot(x - end[0], y - end[1]);
                    nearest = d <= radius ? std::min(nearest, static_cast<float>(d)) : nearest;
                }
                EXPECT_EQ(distance.data[y * 20 + x], nearest) << radius << ' ' << x << ' ' << y;
            }
        }
    }
}

TEST(scan_convert_oval, BrushReachesInFromEndsBesideTheRaster)
{
    // Half axes 2 and 0.5: one span from 7 to 11, of which the raster shows 7.
    HvUByteRaster raster(8, 3, 7);
    HvFloatRaster distance(8, 3, kFar);
    ScanConvertIsothetic(Point(7, 0.5F), Point(11, 0.5F), Point(7, 1.5F), 0.5, raster, 9, distance,
                         4, OvalFillBrushed);
    EXPECT_EQ(std::count(raster.data, raster.data + 24, 9), 1);
    EXPECT_EQ(raster.data[8 + 7], 9);
    for (int x = 0; x < 8; ++x) {
        double const left = std::abs(x - 7);
        EXPECT_EQ(distance.data[8 + x], left <= 4 ? static_cast<float>(left) : kFar) << x;
    }
    // From beside the right end alone.
    HvFloatRaster beside(8, 3, kFar);
    ScanConvertIsothetic(Point(9, 0.5F), Point(13, 0.5F), Point(9, 1.5F), 0.5, raster, 9, beside, 4,
                         OvalFillBrushed);
    EXPECT_EQ(beside.data[8 + 7], 2.0F);
    EXPECT_EQ(beside.data[8 + 4], kFar);
    EXPECT_EQ(std::count(raster.data, raster.data + 24, 9), 1);
}

TEST(scan_convert_oval, ModesAboveTheBrushLeaveTheValueAlone)
{
    HvUByteRaster plain(12, 12, 7);
    HvUByteRaster other(12, 12, 7);
    HvFloatRaster distance(12, 12, kFar);
    Point const p0(2, 1);
    Point const p1(9, 3);
    Point const p2(1, 8);
    ScanConvert(p0, p1, p2, 0.5, plain, 9, distance, 3, OvalFillPlain);
    ScanConvert(p0, p1, p2, 0.5, other, 9, distance, 3, static_cast<OvalFillMode>(2));
    EXPECT_TRUE(std::equal(plain.data, plain.data + 144, other.data));
    EXPECT_EQ(*std::min_element(distance.data, distance.data + 144), kFar);
}

TEST(scan_convert_oval, TakesAnySamplePoint)
{
    double const greatest = std::numeric_limits<double>::max();
    for (double const half : {1e300, -1e300, greatest, -greatest, 2147483648.0, -9007199254740993.0,
                              std::numeric_limits<double>::denorm_min(), -0.0}) {
        HvUByteRaster raster(5, 5, 7);
        HvFloatRaster distance(5, 5, kFar);
        ScanConvert(Point(1, 1), Point(4, 1), Point(1, 4), half, raster, 9, distance, 2147483647,
                    OvalFillBrushed);
        FillDistanceRaster(Point(1, 1), Point(4, 1), Point(1, 4), half, distance);
        bool const isFarOff = std::fabs(half) > 1.0;
        EXPECT_EQ(raster.AllPixelValuesAre(7), isFarOff) << half;
        EXPECT_EQ(*std::min_element(distance.data, distance.data + 25) == kFar, isFarOff) << half;
        // The isothetic scan lies about a pixel, wherever that is sampled; a run may be of any
        // length.
        HvUByteRaster isothetic(5, 5, 7);
        ScanConvertIsothetic(Point(0, 2), Point(4, 2), Point(0, 2), half, isothetic, 9, distance, 1,
                             OvalFillPlain);
        EXPECT_EQ(isothetic.data[2 * 5 + 2], 9) << half;
        EXPECT_EQ(std::count(isothetic.data, isothetic.data + 10, 9), 0) << half;
    }
}
