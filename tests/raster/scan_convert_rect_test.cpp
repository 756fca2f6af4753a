// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parallelograms into pixels: by hand, and against half planes.

#include <hv/raster/scan_convert.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
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

/// The rows from the last to the first, '#' for the value.
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

std::string Scanned(Point const& p0, Point const& p1, Point const& p2, RectFillMode mode)
{
    HvUByteRaster raster(6, 4, 7);
    HvFloatRaster distance(6, 4, kFar);
    ScanConvert(p0, p1, p2, 0.5, raster, 9, distance, mode);
    return Picture(raster);
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
