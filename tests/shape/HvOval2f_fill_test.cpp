// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The oval: the hard fill, by each of its three scans.

#include <hv/shape/HvOval2f.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tests/support/raster_text.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Point = HvPoint2<float>;

std::string Filled(HvOval2f const& oval)
{
    HvUByteRaster raster(8, 6, 7);
    oval.Fill(HvGC(), raster, nullptr);
    return RasterText(raster, 255);
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
    HvOval2f(Point(3, 5), Point(31, 5), Point(3, 27)).Fill(HvGC(), raster, nullptr);
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
