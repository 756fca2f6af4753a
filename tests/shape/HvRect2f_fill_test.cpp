// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: the fills that need no path.

#include <hv/shape/HvRect2f.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/shape_boolean.h>
#include <tests/support/raster_text.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<float>;

}  // namespace

TEST(HvRect2f_fill, CoversThePixelsWithTheirMiddleInside)
{
    HvUByteRaster raster(6, 4, 7);
    HvRect2f(Point(1, 1), Point(4, 1), Point(1, 3)).Fill(HvGC(), raster, nullptr);
    EXPECT_EQ(RasterText(raster, 255), "......\n.###..\n.###..\n......\n");
    EXPECT_EQ(raster.data[0], 7);
}

TEST(HvRect2f_fill, ShapesCombineAsPixels)
{
    HvRect2f const a(Point(0, 0), Point(4, 0), Point(0, 2));
    HvRect2f const b(Point(2, 1), Point(6, 1), Point(2, 3));
    HvGC const gc;
    HvUByteRaster both(6, 3, 0);
    HvShape2f_IntersectionAB(gc, &a, &b, both);
    EXPECT_EQ(RasterText(both, 255), "......\n..##..\n......\n");
    HvUByteRaster first(6, 3, 0);
    HvShape2f_DifferenceAB(gc, &a, &b, first);
    EXPECT_EQ(RasterText(first, 255), "......\n##....\n####..\n");
    HvUByteRaster either(6, 3, 0);
    HvShape2f_UnionAB(gc, &a, &b, either);
    EXPECT_EQ(RasterText(either, 255), "..####\n######\n####..\n");
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
