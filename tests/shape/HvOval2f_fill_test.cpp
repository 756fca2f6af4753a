// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The oval: the hard fill, by each of its three scans.

#include <hv/shape/HvOval2f.h>

#include "shape_lock_probe.h"

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

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

std::string Filled(HvOval2f const& oval)
{
    HvUByteRaster raster(8, 6, 7);
    oval.Fill(HvGC(), raster, nullptr);
    return Picture(raster);
}

int AskedTooOften()
{
    ADD_FAILURE() << "an oval asks no interrupt test";
    return 1;
}

}  // namespace

TEST(HvOval2f_fill, GeneralScanCoversTheMiddlesInside)
{
    // The circle of radius 2.55 about (3, 3): the pixel middle (0.5, 2.5) off it is at 2.5495.
    EXPECT_EQ(Filled(HvOval2f(Point(0.45F, 0.45F), Point(5.55F, 0.45F), Point(0.45F, 5.55F))),
              "..##....\n.####...\n######..\n######..\n.####...\n..##....\n");
}

TEST(HvOval2f_fill, WidthAlongYIsScannedAboutAPixel)
{
    // The same circle with its width along y lies about pixel (3, 3), half axes 2.55.
    EXPECT_EQ(Filled(HvOval2f(Point(0.45F, 0.45F), Point(0.45F, 5.55F), Point(5.55F, 0.45F))),
              "..###...\n.#####..\n.#####..\n.#####..\n..###...\n........\n");
}

TEST(HvOval2f_fill, LargeOvalAlongXIsScannedAboutAPixel)
{
    HvUByteRaster raster(40, 40, 7);
    HvOval2f(Point(3, 5), Point(31, 5), Point(3, 27)).Fill(HvGC(), raster, AskedTooOften);
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 40; ++x) {
            int const i = x - 17;
            int const j = y - 16;
            bool const isInside = 11 * 11 * i * i + 14 * 14 * j * j <= 14 * 14 * 11 * 11;
            EXPECT_EQ(raster.data[y * 40 + x], isInside ? 255 : 7) << x << ' ' << y;
        }
    }
}

TEST(HvOval2f_fill, ThinOvalThatLiesIsScannedByItsColumns)
{
    // Half axes 3 and 0.5 about (4, 2.75): at the row middle 2.5 it reaches 3 sqrt(3 / 4) = 2.598
    // each way, which holds the column middles 1.5 to 6.5.
    EXPECT_EQ(Filled(HvOval2f(Point(1, 2.25F), Point(7, 2.25F), Point(1, 3.25F))),
              "........\n........\n........\n.######.\n........\n........\n");
}

TEST(HvOval2f_fill, TransposedScanEqualsTheOtherOfTheTransposedOval)
{
    for (float const lean : {0.0F, 0.25F, 0.5F}) {
        HvOval2f const lying(Point(1, 2), Point(7, 2 + lean), Point(1.125F, 3.25F));
        HvOval2f const standing(Point(2, 1), Point(2 + lean, 7), Point(3.25F, 1.125F));
        HvUByteRaster rows(8, 8, 7);
        HvUByteRaster columns(8, 8, 7);
        lying.Fill(HvGC(), rows, nullptr);
        standing.Fill(HvGC(), columns, nullptr);
        for (int y = 0; y < 8; ++y) {
            for (int x = 0; x < 8; ++x) {
                EXPECT_EQ(rows.data[y * 8 + x], columns.data[x * 8 + y]) << x << ' ' << y;
            }
        }
    }
}

TEST(HvOval2f_fill, MapsToTheDevice)
{
    HvGC gc;
    gc.transform.Translate(0.45, 0.45, 0).Scale(0.5, 1, 1);
    HvUByteRaster raster(8, 6, 7);
    HvOval2f(Point(0, 0), Point(10.2F, 0), Point(0, 5.1F)).Fill(gc, raster, nullptr);
    EXPECT_EQ(Picture(raster), "..##....\n.####...\n######..\n######..\n.####...\n..##....\n");
}

TEST(HvOval2f_fill, OutsideTheRasterLeavesIt)
{
    for (float const offset : {-20.0F, 20.0F, std::numeric_limits<float>::quiet_NaN()}) {
        HvOval2f oval(Point(1, 1), Point(4, 1), Point(1, 3));
        oval.Translate(Point(offset, 0));
        HvUByteRaster raster(8, 6, 7);
        oval.Fill(HvGC(), raster, nullptr);
        EXPECT_EQ(raster.AllPixelValuesAre(7), 1) << offset;
    }
}

TEST(HvOval2f_fill, WaitsForTheLock)
{
    HvOval2f const oval(Point(1, 1), Point(4, 1), Point(1, 3));
    HvGC const gc;
    HvUByteRaster raster(8, 6, 7);
    EXPECT_TRUE(ShapeLockProbe_Waits(oval, true, [&] { oval.Fill(gc, raster, nullptr); }));
    EXPECT_TRUE(ShapeLockProbe_Waits(oval, true, [&] { oval.RadialFill(gc, raster); }));
    EXPECT_TRUE(ShapeLockProbe_IsFree(oval));
}

TEST(HvOval2f_fill, RefusedAllocationLeavesTheRaster)
{
    HvOval2f const ovals[] = {HvOval2f(Point(1, 1), Point(1, 5), Point(7, 1)),
                              HvOval2f(Point(1, 1), Point(7, 1), Point(1, 5)),
                              HvOval2f(Point(1, 2.25F), Point(7, 2.25F), Point(1, 3.25F))};
    HvGC const gc;
    for (HvOval2f const& oval : ovals) {
        RefuseEachAllocation([] { return HvUByteRaster(8, 6, 7); },
                             [&](HvUByteRaster& raster) { oval.Fill(gc, raster, nullptr); },
                             [](HvUByteRaster const& raster, bool completed) {
                                 EXPECT_EQ(raster.AllPixelValuesAre(7), completed ? 0 : 1);
                             });
        EXPECT_TRUE(ShapeLockProbe_IsFree(oval));
    }
}

TEST(HvOval2f_fill, TakesAnyNumbersAndRasters)
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const numbers[] = {0.0F,   -1.0F,    3e38F,     -3e38F,
                             1e-40F, infinity, -infinity, std::numeric_limits<float>::quiet_NaN()};
    for (float const a : numbers) {
        for (float const b : numbers) {
            HvUByteRaster raster(5, 4, 7);
            HvUByteRaster empty(0, 4, 7);
            for (HvUByteRaster* const target : {&raster, &empty}) {
                HvOval2f(Point(a, 0), Point(b, 2), Point(5, a)).Fill(HvGC(), *target, nullptr);
                HvOval2f(Point(0, a), Point(0, b), Point(a, a)).Fill(HvGC(), *target, nullptr);
            }
        }
    }
}
