// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: the fills that need no path.

#include <hv/shape/HvRect2f.h>

#include "shape_lock_probe.h"

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/shape_boolean.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace {

using Point = HvPoint2<float>;

std::string Picture(HvUByteRaster const& raster)
{
    std::string picture;
    for (int y = raster.height - 1; y >= 0; --y) {
        for (int x = 0; x < raster.width; ++x) {
            picture += raster.data[y * raster.width + x] == 255 ? '#' : '.';
        }
        picture += '\n';
    }
    return picture;
}

int AskedTooOften()
{
    ADD_FAILURE() << "a rectangle asks no interrupt test";
    return 1;
}

}  // namespace

TEST(HvRect2f_fill, CoversThePixelsWithTheirMiddleInside)
{
    HvUByteRaster raster(6, 4, 7);
    HvRect2f(Point(1, 1), Point(4, 1), Point(1, 3)).Fill(HvGC(), raster, AskedTooOften);
    EXPECT_EQ(Picture(raster), "......\n.###..\n.###..\n......\n");
    EXPECT_EQ(raster.data[0], 7);
}

TEST(HvRect2f_fill, MapsToTheDevice)
{
    HvGC gc;
    gc.transform.Translate(1, 1, 0).Scale(0.5, 1, 1);
    HvUByteRaster raster(6, 4, 7);
    HvRect2f(Point(0, 0), Point(6, 0), Point(0, 2)).Fill(gc, raster, nullptr);
    EXPECT_EQ(Picture(raster), "......\n.###..\n.###..\n......\n");
}

TEST(HvRect2f_fill, OutsideTheRasterLeavesIt)
{
    for (float const offset : {-20.0F, 20.0F, std::numeric_limits<float>::quiet_NaN()}) {
        HvRect2f rect(Point(1, 1), Point(4, 1), Point(1, 3));
        rect.Translate(Point(offset, 0));
        HvUByteRaster raster(6, 4, 7);
        AllocationCounter const counter;
        rect.Fill(HvGC(), raster, nullptr);
        rect.RadialFill(HvGC(), raster);
        EXPECT_EQ(raster.AllPixelValuesAre(7), 1) << offset;
    }
}

TEST(HvRect2f_fill, ShapesCombineAsPixels)
{
    HvRect2f const a(Point(0, 0), Point(4, 0), Point(0, 2));
    HvRect2f const b(Point(2, 1), Point(6, 1), Point(2, 3));
    HvGC const gc;
    HvUByteRaster both(6, 3, 0);
    HvShape2f_IntersectionAB(gc, &a, &b, both);
    EXPECT_EQ(Picture(both), "......\n..##..\n......\n");
    HvUByteRaster first(6, 3, 0);
    HvShape2f_DifferenceAB(gc, &a, &b, first);
    EXPECT_EQ(Picture(first), "......\n##....\n####..\n");
    HvUByteRaster either(6, 3, 0);
    HvShape2f_UnionAB(gc, &a, &b, either);
    EXPECT_EQ(Picture(either), "..####\n######\n####..\n");
}

TEST(HvRect2f_fill, RadialFillFallsOffToTheSides)
{
    HvUByteRaster raster(12, 12, 7);
    HvRect2f(Point(2, 2), Point(10, 2), Point(2, 10)).RadialFill(HvGC(), raster);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 12; ++x) {
            bool const isInside = x >= 2 && x < 10 && y >= 2 && y < 10;
            double const d = std::max(std::abs(x - 6), std::abs(y - 6)) / 4.0;
            double const expected = isInside ? std::floor(255.0 * (1.0 - d) + 0.5) : 7.0;
            EXPECT_EQ(raster.data[y * 12 + x], expected) << x << ' ' << y;
        }
    }
}

TEST(HvRect2f_fill, RadialFillTakesTheFalloffsValues)
{
    HvRect2f const rect(Point(2, 2), Point(10, 2), Point(2, 10));
    struct {
        double value;
        int pixel;
    } const rows[] = {{0.4, 102}, {1.5, 255}, {-0.5, 0}};
    for (auto const& row : rows) {
        HvGC gc;
        gc.falloff = HvStdFCurve(row.value, HvBaseFCurve::CubicSegment);
        HvUByteRaster raster(12, 12, 7);
        rect.RadialFill(gc, raster);
        EXPECT_EQ(raster.data[6 * 12 + 6], row.pixel);
        EXPECT_EQ(raster.data[2 * 12 + 2], row.pixel);
        EXPECT_EQ(raster.data[0], 7);
    }
}

TEST(HvRect2f_fill, FillsWaitForTheLock)
{
    HvRect2f const rect(Point(2, 2), Point(10, 2), Point(2, 10));
    HvGC const gc;
    HvUByteRaster raster(12, 12, 7);
    EXPECT_TRUE(ShapeLockProbe_Waits(rect, true, [&] { rect.Fill(gc, raster, nullptr); }));
    EXPECT_TRUE(ShapeLockProbe_Waits(rect, true, [&] { rect.RadialFill(gc, raster); }));
    EXPECT_TRUE(ShapeLockProbe_IsFree(rect));
}

TEST(HvRect2f_fill, RefusedAllocationLeavesTheRaster)
{
    HvRect2f const rect(Point(2, 2), Point(10, 2), Point(2, 10));
    HvGC const gc;
    RefuseEachAllocation([] { return HvUByteRaster(12, 12, 7); },
                         [&](HvUByteRaster& raster) { rect.Fill(gc, raster, nullptr); },
                         [](HvUByteRaster const& raster, bool completed) {
                             EXPECT_EQ(raster.AllPixelValuesAre(7), completed ? 0 : 1);
                         });
    RefuseEachAllocation([] { return HvUByteRaster(12, 12, 7); },
                         [&](HvUByteRaster& raster) { rect.RadialFill(gc, raster); },
                         [](HvUByteRaster const& raster, bool completed) {
                             EXPECT_EQ(raster.AllPixelValuesAre(7), completed ? 0 : 1);
                         });
    EXPECT_TRUE(ShapeLockProbe_IsFree(rect));
}

TEST(HvRect2f_fill, TakesAnyNumbersAndRasters)
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const numbers[] = {0.0F,   -1.0F,    3e38F,     -3e38F,
                             1e-40F, infinity, -infinity, std::numeric_limits<float>::quiet_NaN()};
    for (float const a : numbers) {
        for (float const b : numbers) {
            HvRect2f const rect(Point(a, 0), Point(b, 2), Point(5, a));
            HvUByteRaster raster(5, 4, 7);
            HvUByteRaster empty(0, 4, 7);
            for (HvUByteRaster* const target : {&raster, &empty}) {
                rect.Fill(HvGC(), *target, nullptr);
                rect.RadialFill(HvGC(), *target);
            }
        }
    }
}
