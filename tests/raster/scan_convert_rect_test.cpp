// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parallelograms into pixels: by hand, and against half planes.

#include <hv/raster/scan_convert.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <tests/support/generators.h>
#include <tests/support/raster_text.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace {

using Point = HvPoint2<float>;

constexpr float kFar = std::numeric_limits<float>::max();

std::string Scanned(Point const& p0, Point const& p1, Point const& p2, RectFillMode mode)
{
    HvUByteRaster raster(6, 4, 7);
    HvFloatRaster distance(6, 4, kFar);
    ScanConvert(p0, p1, p2, 0.5, raster, 9, distance, mode);
    return RasterText(raster, 9);
}

using Wide = long double;
using WidePoint = std::array<Wide, 2>;

/// What of a polygon lies on or above `limit` along an axis, `sign` 1, or on or below it, -1.
std::vector<WidePoint> ClipAt(std::vector<WidePoint> const& polygon, std::size_t axis, int sign,
                              Wide limit)
{
    std::vector<WidePoint> clipped;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        WidePoint const& a = polygon[i];
        WidePoint const& b = polygon[(i + 1) % polygon.size()];
        Wide const da = sign * (a[axis] - limit);
        Wide const db = sign * (b[axis] - limit);
        if (da >= 0) {
            clipped.push_back(a);
        }
        if ((da >= 0) != (db >= 0)) {
            Wide const t = da / (da - db);
            clipped.push_back({a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1])});
        }
    }
    return clipped;
}

/// Whether the parallelogram has a point in the closed square from (left, top), of side 1, grown by
/// `margin` on each side.
bool Meets(Point const& p0, Point const& p1, Point const& p2, double left, double top,
           double margin)
{
    std::vector<WidePoint> polygon = {{p0.x, p0.y},
                                      {p1.x, p1.y},
                                      {Wide(p1.x) + p2.x - p0.x, Wide(p1.y) + p2.y - p0.y},
                                      {p2.x, p2.y}};
    polygon = ClipAt(polygon, 0, 1, left - margin);
    polygon = ClipAt(polygon, 0, -1, left + 1 + margin);
    polygon = ClipAt(polygon, 1, 1, top - margin);
    polygon = ClipAt(polygon, 1, -1, top + 1 + margin);
    return !polygon.empty();
}

/// The distance from the centre line along `side`, 1 at the whole corner, at most 1; -1 where that
/// gives no scale.
double DistanceFromCentreLine(Point const& p0, Point const& p1, Point const& p2, Point const& side,
                              int x, int y)
{
    auto const height = [&](Wide px, Wide py) {
        Wide const cx = (Wide(p1.x) + p2.x) / 2;
        Wide const cy = (Wide(p1.y) + p2.y) / 2;
        return (Wide(side.x) * (py - cy) - Wide(side.y) * (px - cx)) /
               std::hypot(Wide(side.x), Wide(side.y));
    };
    Wide const scale = height(std::floor(p0.x), std::floor(p0.y));
    if (scale == 0) {
        return -1.0;
    }
    return static_cast<double>(std::min(Wide(1), std::fabs(height(x, y) / scale)));
}

}  // namespace

TEST(scan_convert_rect, SamplePointsOnLeftAndLowerSidesAreInside)
{
    EXPECT_EQ(Scanned(Point(1, 1), Point(4, 1), Point(1, 3), RectFillPlain),
              "......\n.###..\n.###..\n......\n");
    EXPECT_EQ(Scanned(Point(1.5F, 0.5F), Point(3.5F, 0.5F), Point(1.5F, 2.5F), RectFillPlain),
              "......\n......\n.##...\n.##...\n");
    EXPECT_EQ(Scanned(Point(1.5F, 1), Point(1.75F, 1), Point(1.5F, 2), RectFillPlain),
              "......\n......\n.#....\n......\n");
    EXPECT_EQ(Scanned(Point(1.25F, 1), Point(1.5F, 1), Point(1.25F, 2), RectFillPlain),
              "......\n......\n......\n......\n");
}

TEST(scan_convert_rect, TurnedParallelogramIsCutByItsSides)
{
    // The square of the corners (3, 0), (5, 2), (3, 4), (1, 2).
    EXPECT_EQ(Scanned(Point(3, 0), Point(5, 2), Point(1, 2), RectFillPlain),
              "..#...\n.###..\n.###..\n..#...\n");
}

TEST(scan_convert_rect, WhatSticksOutIsCutOff)
{
    EXPECT_EQ(Scanned(Point(-5, -5), Point(3, -5), Point(-5, 2), RectFillPlain),
              "......\n......\n###...\n###...\n");
    EXPECT_EQ(Scanned(Point(4, 2), Point(40, 2), Point(4, 40), RectFillPlain),
              "....##\n....##\n......\n......\n");
    EXPECT_EQ(
        Scanned(Point(-1e30F, -1e30F), Point(1e30F, -1e30F), Point(-1e30F, 1e30F), RectFillPlain),
        "######\n######\n######\n######\n");
    EXPECT_EQ(Scanned(Point(7, 0), Point(9, 0), Point(7, 4), RectFillPlain),
              "......\n......\n......\n......\n");
}

TEST(scan_convert_rect, TouchedPixelsAreCoveredFromTheirSamplePoint)
{
    // Pixel (x, y) stands for [x + 0.5, x + 1.5), so 1.5 to 3.25 touches the columns 1 and 2.
    EXPECT_EQ(Scanned(Point(1.5F, 1.75F), Point(3.25F, 1.75F), Point(1.5F, 2), RectFillTouched),
              "......\n......\n.##...\n......\n");
    // A line has no inside but touches.
    EXPECT_EQ(Scanned(Point(0.75F, 2), Point(4.75F, 2), Point(0.75F, 2), RectFillTouched),
              "......\n......\n#####.\n......\n");
    // The upper corner (3.5, 3.5) is the sample point of pixel (3, 3).
    EXPECT_EQ(Scanned(Point(3.5F, 0.5F), Point(5, 2), Point(2, 2), RectFillTouched),
              "...#..\n..###.\n.####.\n..###.\n");
}

TEST(scan_convert_rect, ModeTwoLeavesEverything)
{
    HvUByteRaster raster(6, 4, 7);
    HvFloatRaster distance(6, 4, kFar);
    ScanConvert(Point(0, 0), Point(6, 0), Point(0, 4), 0.5, raster, 9, distance, RectFillNothing);
    EXPECT_EQ(raster.AllPixelValuesAre(7), 1);
    EXPECT_TRUE(std::all_of(distance.data, distance.data + 24, [](float d) { return d == kFar; }));
}

TEST(scan_convert_rect, RadialDistanceIsTheLargerOfBoth)
{
    HvUByteRaster raster(10, 10, 7);
    HvFloatRaster distance(10, 10, 0.001F);
    ScanConvert(Point(1, 1), Point(9, 1), Point(1, 9), 0.5, raster, 9, distance, RectFillRadial);
    EXPECT_EQ(raster.AllPixelValuesAre(7), 1);
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 10; ++x) {
            bool const isInside = x >= 1 && x <= 8 && y >= 1 && y <= 8;
            float const d = static_cast<float>(std::max(std::abs(x - 5), std::abs(y - 5))) / 4.0F;
            EXPECT_EQ(distance.data[y * 10 + x], isInside ? d : 0.001F) << x << ' ' << y;
        }
    }
}

TEST(scan_convert_rect, LinearDistanceIsThatFromTheLineAlongTheWidth)
{
    for (RectFillMode const mode : {RectFillLinear, RectFillLinearTouched, RectFillLinearThin}) {
        HvUByteRaster raster(10, 10, 7);
        HvFloatRaster distance(10, 10, 0.6F);
        ScanConvert(Point(1, 1), Point(9, 1), Point(1, 9), 0.5, raster, 9, distance, mode);
        for (int y = 1; y <= 8; ++y) {
            float const d = static_cast<float>(std::abs(y - 5)) / 4.0F;
            EXPECT_EQ(distance.data[y * 10 + 3], std::min(d, 0.6F)) << mode << ' ' << y;
        }
        EXPECT_EQ(distance.data[9 * 10 + 3], 0.6F);
    }
}

TEST(scan_convert_rect, DistancesAreScaledByTheWholeCorner)
{
    // From the centre line x = 5.25 to floor(1.5) = 1 it is 4.25.
    HvUByteRaster raster(10, 10, 7);
    HvFloatRaster distance(10, 10, kFar);
    ScanConvert(Point(1.5F, 1), Point(9, 1), Point(1.5F, 9), 0.5, raster, 9, distance,
                RectFillRadial);
    EXPECT_FLOAT_EQ(distance.data[5 * 10 + 3], 2.25F / 4.25F);
    // Without a scale the distance is 1: the centre lies on the whole corner.
    HvFloatRaster small(2, 2, kFar);
    ScanConvert(Point(0.25F, 0.25F), Point(0.75F, 0.25F), Point(-0.75F, 0.75F), 0.25, raster, 9,
                small, RectFillRadial);
    EXPECT_TRUE(std::all_of(small.data, small.data + 4, [](float d) { return d >= 1.0F; }));
}

TEST(scan_convert_rect, TakesAnyNumbersAndRasters)
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const numbers[] = {0.0F,   -1.5F,    3e38F,     -3e38F,
                             1e-40F, infinity, -infinity, std::numeric_limits<float>::quiet_NaN()};
    for (float const a : numbers) {
        for (float const b : numbers) {
            for (int mode = -1; mode <= 8; ++mode) {
                HvUByteRaster raster(5, 4, 7);
                HvFloatRaster distance(5, 4, kFar);
                auto const fillMode = static_cast<RectFillMode>(mode);
                ScanConvert(Point(a, 0), Point(b, 2), Point(5, a), 0.5, raster, 9, distance,
                            fillMode);
                ScanConvert(Point(0, 0), Point(4, 0), Point(0, 4), a, raster, 9, distance,
                            fillMode);
                HvUByteRaster empty(0, 4, 7);
                HvFloatRaster none(3, 0, kFar);
                ScanConvert(Point(0, 0), Point(4, 0), Point(0, 4), 0.5, empty, 9, none, fillMode);
            }
        }
    }
}

RC_GTEST_PROP(scan_convert_rect, AgreesWithHalfPlanes, ())
{
    // Quarters, so that sample points lie on sides and corners often; all is exact in double.
    auto const coordinate = [] { return static_cast<float>(PickInRange(-16, 49)) / 4.0F; };
    Point const p0(coordinate(), coordinate());
    Point const p1(coordinate(), coordinate());
    Point const p2(coordinate(), coordinate());
    double const area = HvPoint2_ABdetCD(p0, p1, p0, p2);
    RC_PRE(area != 0.0);
    HvUByteRaster raster(8, 8, 7);
    HvFloatRaster distance(1, 1, kFar);
    ScanConvert(p0, p1, p2, 0.5, raster, 9, distance, RectFillPlain);
    // A sample point is inside when one a little to its right and above it, less above than right,
    // is: so the left and lower sides belong to the shape.
    constexpr double kRight = 1e-6;
    constexpr double kAbove = 1e-9;
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            HvPoint2<double> const p(x + 0.5 + kRight, y + 0.5 + kAbove);
            HvPoint2<double> const o(p0);
            double const s = HvPoint2_AdetB(p - o, HvPoint2<double>(p2) - o) / area;
            double const t = HvPoint2_AdetB(HvPoint2<double>(p1) - o, p - o) / area;
            bool const isInside = s > 0 && t > 0 && s < 1 && t < 1;
            bool const isFilled = raster.data[y * 8 + x] == 9;
            // Where the line crosses at a number that double cannot hold, the last bit may tell.
            bool const isClear =
                std::min({std::fabs(s), std::fabs(t), std::fabs(s - 1), std::fabs(t - 1)}) > 1e-12;
            RC_ASSERT(isFilled == isInside || !isClear);
        }
    }
}

RC_GTEST_PROP(scan_convert_rect, NeighboursShareNoPixel, ())
{
    auto const coordinate = [] { return static_cast<float>(PickInRange(0, 33)) / 2.0F; };
    Point const p0(coordinate(), coordinate());
    Point const p1(coordinate(), coordinate());
    Point const u(coordinate() - 8, coordinate() - 8);
    HvUByteRaster first(20, 20, 0);
    HvUByteRaster second(20, 20, 0);
    HvFloatRaster distance(1, 1, kFar);
    // Two parallelograms on both sides of p0 p1.
    ScanConvert(p0, p1, p0 + u, 0.5, first, 9, distance, RectFillPlain);
    ScanConvert(p0, p1, p0 - u, 0.5, second, 9, distance, RectFillPlain);
    for (int i = 0; i < 400; ++i) {
        RC_ASSERT(first.data[i] == 0 || second.data[i] == 0);
    }
}

RC_GTEST_PROP(scan_convert_rect, TouchedPixelsMeetTheParallelogram, ())
{
    // Lines and points too.
    auto const coordinate = [] { return static_cast<float>(PickInRange(-16, 49)) / 4.0F; };
    Point const p0(coordinate(), coordinate());
    Point const p1 = PickInRange(0, 8) == 0 ? p0 : Point(coordinate(), coordinate());
    Point const p2 = PickInRange(0, 8) == 0 ? p0 : Point(coordinate(), coordinate());
    double const half = PickInRange(0, 5) / 4.0;
    HvUByteRaster raster(8, 8, 7);
    HvFloatRaster linear(8, 8, 2.0F);
    HvFloatRaster thin(8, 8, 2.0F);
    ScanConvert(p0, p1, p2, half, raster, 9, linear, RectFillTouched);
    ScanConvert(p0, p1, p2, half, raster, 9, linear, RectFillLinearTouched);
    ScanConvert(p0, p1, p2, half, raster, 9, thin, RectFillLinearThin);
    // A pixel is touched when the shape reaches into its square, and is not when it stays off; what
    // only meets its boundary may be either, and coordinates of quarters come no nearer than this.
    constexpr double kMargin = 1e-6;
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            bool const isFilled = raster.data[y * 8 + x] == 9;
            RC_ASSERT(isFilled || !Meets(p0, p1, p2, x + half, y + half, -kMargin));
            RC_ASSERT(!isFilled || Meets(p0, p1, p2, x + half, y + half, kMargin));
            RC_ASSERT((linear.data[y * 8 + x] <= 1.0F) == isFilled);
            RC_ASSERT(thin.data[y * 8 + x] == linear.data[y * 8 + x]);
        }
    }
}

RC_GTEST_PROP(scan_convert_rect, TouchedPixelsHoldThePointsOfTheParallelogram, ())
{
    // Each point of the shape, also one on its sides, lies in the square of a touched pixel, whose
    // left and lower sides belong to it.
    auto const eighths = [](int low, int high) {
        return static_cast<float>(PickInRange(low, high)) / 8.0F;
    };
    Point const p0(eighths(0, 32), eighths(0, 32));
    Point const u(eighths(-32, 32), eighths(-32, 32));
    Point const v(eighths(-32, 32), eighths(-32, 32));
    HvUByteRaster raster(16, 16, 7);
    HvFloatRaster unused(1, 1, kFar);
    // Moved into the raster.
    Point const origin = p0 + Point(6, 6);
    ScanConvert(origin, origin + u, origin + v, 0.5, raster, 9, unused, RectFillTouched);
    for (int i = 0; i <= 4; ++i) {
        for (int j = 0; j <= 4; ++j) {
            Point const p =
                origin + u * (static_cast<float>(i) / 4.0F) + v * (static_cast<float>(j) / 4.0F);
            int const x = static_cast<int>(std::floor(p.x - 0.5F));
            int const y = static_cast<int>(std::floor(p.y - 0.5F));
            if (x >= 0 && x < 16 && y >= 0 && y < 16) {
                RC_ASSERT(raster.data[y * 16 + x] == 9);
            }
        }
    }
}

RC_GTEST_PROP(scan_convert_rect, DistancesAreThoseFromTheCentreLines, ())
{
    auto const coordinate = [] { return static_cast<float>(PickInRange(-16, 49)) / 4.0F; };
    Point const p0(coordinate(), coordinate());
    Point const p1(coordinate(), coordinate());
    Point const p2(coordinate(), coordinate());
    HvUByteRaster raster(8, 8, 7);
    HvFloatRaster radial(8, 8, 2.0F);
    HvFloatRaster linear(8, 8, 0.5F);
    ScanConvert(p0, p1, p2, 0.5, raster, 9, radial, RectFillPlain);
    ScanConvert(p0, p1, p2, 0.5, raster, 8, radial, RectFillRadial);
    ScanConvert(p0, p1, p2, 0.5, raster, 8, linear, RectFillLinear);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            std::size_t const i = static_cast<std::size_t>(y) * 8 + static_cast<std::size_t>(x);
            RC_ASSERT(raster.data[i] == 7 || raster.data[i] == 9);
            if (raster.data[i] == 7) {
                RC_ASSERT(radial.data[i] == 2.0F);
                RC_ASSERT(linear.data[i] == 0.5F);
                continue;
            }
            double const u = DistanceFromCentreLine(p0, p1, p2, p1 - p0, x, y);
            double const v = DistanceFromCentreLine(p0, p1, p2, p2 - p0, x, y);
            double const expected = std::max(u < 0 ? 1.0 : u, v < 0 ? 1.0 : v);
            RC_ASSERT(std::fabs(radial.data[i] - expected) < 1e-6);
            RC_ASSERT(std::fabs(linear.data[i] - std::min(u < 0 ? 1.0 : u, 0.5)) < 1e-6);
        }
    }
}

TEST(scan_convert_rect, ASlantedSideMeetsSamplePointsExactly)
{
    // The side from (15, 0) to (0, 11) passes through the middle of pixel (7, 5), though 15 / 11 is
    // no double: to its right the pixel is inside, to its left it is not.
    for (float const offset : {4.0F, -4.0F}) {
        HvUByteRaster raster(20, 11, 7);
        HvFloatRaster unused(1, 1, kFar);
        ScanConvert(Point(15, 0), Point(0, 11), Point(15 + offset, 0), 0.5, raster, 9, unused,
                    RectFillPlain);
        EXPECT_EQ(raster.data[5 * 20 + 7], offset > 0.0F ? 9 : 7);
        EXPECT_EQ(raster.data[5 * 20 + 6], offset > 0.0F ? 7 : 9);
        EXPECT_EQ(raster.data[5 * 20 + 8], offset > 0.0F ? 9 : 7);
    }
}

TEST(scan_convert_rect, ACollapsedWidthLeavesTheHeight)
{
    // The line from (2.75, 1) to (2.75, 5) is its own centre line, 0.75 from floor(p0). Sampled so
    // that a pixel's square begins one to the left of and below its corner, it lies in column
    // floor(2.75 + 1) and in the rows floor(1 + 1) to floor(5 + 1).
    HvUByteRaster raster(6, 8, 7);
    HvFloatRaster distance(6, 8, kFar);
    ScanConvert(Point(2.75F, 1), Point(2.75F, 1), Point(2.75F, 5), -1.0, raster, 9, distance,
                RectFillLinearTouched);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 6; ++x) {
            bool const isTouched = x == 3 && y >= 2 && y <= 6;
            EXPECT_FLOAT_EQ(distance.data[y * 6 + x], isTouched ? 0.25F / 0.75F : kFar);
        }
    }
    // A point has no line.
    HvFloatRaster point(6, 6, kFar);
    ScanConvert(Point(2.75F, 1.5F), Point(2.75F, 1.5F), Point(2.75F, 1.5F), 0.5, raster, 9, point,
                RectFillLinearThin);
    // Its square begins at (2.5, 1.5).
    EXPECT_EQ(point.data[6 + 2], 1.0F);
    EXPECT_EQ(std::count(point.data, point.data + 36, kFar), 35);
    EXPECT_EQ(raster.AllPixelValuesAre(7), 1);
}

TEST(scan_convert_rect, NumbersWithoutANameLeaveEverything)
{
    for (int const mode : {-1, 7, 2147483647}) {
        HvUByteRaster raster(6, 4, 7);
        HvFloatRaster distance(6, 4, kFar);
        ScanConvert(Point(0, 0), Point(6, 0), Point(0, 4), 0.5, raster, 9, distance,
                    static_cast<RectFillMode>(mode));
        EXPECT_EQ(raster.AllPixelValuesAre(7), 1) << mode;
        EXPECT_EQ(*std::min_element(distance.data, distance.data + 24), kFar) << mode;
    }
}

TEST(scan_convert_rect, EachModeIsCutToItsOwnRaster)
{
    HvUByteRaster bytes(3, 9, 7);
    HvFloatRaster distance(8, 2, kFar);
    Point const p0(1, 1);
    Point const p1(7, 1);
    Point const p2(1, 7);
    ScanConvert(p0, p1, p2, 0.5, bytes, 9, distance, RectFillPlain);
    EXPECT_EQ(std::count(bytes.data, bytes.data + 27, 9), 2 * 6);
    EXPECT_EQ(std::count(distance.data, distance.data + 16, kFar), 16);
    ScanConvert(p0, p1, p2, 0.5, bytes, 8, distance, RectFillRadial);
    EXPECT_EQ(std::count(bytes.data, bytes.data + 27, 9), 2 * 6);
    EXPECT_EQ(std::count(distance.data, distance.data + 16, kFar), 16 - 6);
}

TEST(scan_convert_rect, TakesAnySamplePoint)
{
    double const greatest = std::numeric_limits<double>::max();
    for (double const half : {1e300, -1e300, greatest, -greatest, 2147483648.0, -9007199254740993.0,
                              std::numeric_limits<double>::denorm_min(), -0.0}) {
        for (int mode = 0; mode <= 6; ++mode) {
            HvUByteRaster raster(5, 4, 7);
            HvFloatRaster distance(5, 4, kFar);
            ScanConvert(Point(1, 1), Point(4, 1), Point(1, 3), half, raster, 9, distance,
                        static_cast<RectFillMode>(mode));
            bool const isFarOff = std::fabs(half) > 1.0;
            EXPECT_EQ(raster.AllPixelValuesAre(7), isFarOff || mode > 1) << half << ' ' << mode;
            float const least = *std::min_element(distance.data, distance.data + 20);
            EXPECT_EQ(least == kFar, isFarOff || mode < 3) << half << ' ' << mode;
        }
    }
}
