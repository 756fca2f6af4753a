// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/paint/Canvas.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

std::vector<int> PixelOf(Canvas const& canvas, int x, int y)
{
    std::uint8_t const* const bytes = canvas.Pixel(x, y);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

Coverage CoverageOf(std::vector<std::uint8_t> const& shares, int width)
{
    int const height = static_cast<int>(shares.size()) / width;
    HvUByteRaster raster(width, height, 0);
    std::copy(shares.begin(), shares.end(), raster.data);
    Coverage coverage;
    coverage.Take(raster, {0, 0, width, height});
    return coverage;
}

Coverage One(std::uint8_t share)
{
    return CoverageOf({share}, 1);
}

/// Shares of all kinds, with runs.
std::vector<std::uint8_t> ManyShares(unsigned int seed)
{
    std::vector<std::uint8_t> shares;
    for (unsigned int i = 0; i < 40; ++i) {
        unsigned int const number = (i * 2654435761U + seed * 40503U) >> 7;
        std::uint8_t const kinds[] = {0, 255, 0, 255, static_cast<std::uint8_t>(number)};
        shares.insert(shares.end(), 1 + number % 24, kinds[number / 24 % 5]);
    }
    shares.resize(480);
    return shares;
}

}  // namespace

TEST(Canvas, PaintIsPremultipliedAndRounded)
{
    Canvas canvas(3, 1);
    canvas.Paint(CoverageOf({0, 255, 128}, 3), {200, 100, 0, 255});
    EXPECT_EQ(PixelOf(canvas, 0, 0), (std::vector<int>{0, 0, 0, 0}));
    EXPECT_EQ(PixelOf(canvas, 1, 0), (std::vector<int>{200, 100, 0, 255}));
    // 200 * 128 / 255 = 100.39, 100 * 128 / 255 = 50.2
    EXPECT_EQ(PixelOf(canvas, 2, 0), (std::vector<int>{100, 50, 0, 128}));
    EXPECT_EQ(canvas.StraightPixels()[8], 199) << "100 of 128 is 199.2 of 255";
}

TEST(Canvas, PaintGoesOverWhatIsThere)
{
    Canvas canvas(1, 1);
    canvas.Fill({255, 255, 255, 255});
    canvas.Paint(One(51), {0, 0, 0, 255});  // a fifth
    EXPECT_EQ(PixelOf(canvas, 0, 0), (std::vector<int>{204, 204, 204, 255}));
}

TEST(Canvas, LayerIsPaintedAsOne)
{
    // Two opaque paints in a layer of a fifth: the upper hides the lower, then both grow faint.
    Canvas canvas(1, 1);
    canvas.Fill({255, 255, 255, 255});
    Canvas layer(1, 1);
    layer.Paint(One(255), {255, 0, 0, 255});
    layer.Paint(One(255), {0, 0, 255, 255});
    canvas.Paint(layer, 51);
    EXPECT_EQ(PixelOf(canvas, 0, 0), (std::vector<int>{204, 204, 255, 255}));
}

TEST(Canvas, OpaquePaintNeverOverflows)
{
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int share = 0; share < 256; share += 5) {
            Canvas canvas(1, 1);
            canvas.Fill({255, 255, 255, 255});
            canvas.Paint(One(static_cast<std::uint8_t>(share)),
                         {255, 255, 255, static_cast<std::uint8_t>(alpha)});
            EXPECT_GE(PixelOf(canvas, 0, 0)[0], 254);
        }
    }
}

TEST(Canvas, ManyPixelsAreAsManyTimesOne)
{
    for (int const alpha : {1, 77, 254, 255}) {
        PaintColour const colour = {250, 100, 3, static_cast<std::uint8_t>(alpha)};
        std::vector<std::uint8_t> const shares = ManyShares(static_cast<unsigned int>(alpha));
        Canvas row(480, 1);
        row.Fill({10, 200, 30, 180});
        row.Paint(CoverageOf(shares, 480), colour);
        for (int x = 0; x < 480; ++x) {
            Canvas one(1, 1);
            one.Fill({10, 200, 30, 180});
            one.Paint(One(shares[static_cast<std::size_t>(x)]), colour);
            ASSERT_EQ(PixelOf(row, x, 0), PixelOf(one, 0, 0)) << x;
        }
    }
}

TEST(Canvas, AVeilIsACanvasMultipliedAndPaintedOver)
{
    for (int const opacity : {255, 130}) {
        Coverage const coverage = CoverageOf(ManyShares(1), 480);
        std::vector<std::uint8_t> const veil = ManyShares(2);
        PaintColour const colour = {250, 100, 3, 200};
        auto const share = static_cast<std::uint8_t>(opacity);
        Canvas veiled(480, 1);
        veiled.Fill({10, 200, 30, 180});
        veiled.Paint(coverage, colour, {veil.data(), share});
        Canvas apart(480, 1);
        apart.Fill({10, 200, 30, 180});
        Canvas layer(480, 1);
        layer.Paint(coverage, colour);
        layer.Multiply(veil.data());
        apart.Paint(layer, share);
        EXPECT_EQ(veiled.StraightPixels(), apart.StraightPixels());
    }
}

TEST(Canvas, WhatIsClearedWasTouched)
{
    Canvas canvas(480, 2);
    canvas.Paint(CoverageOf(ManyShares(3), 480), {9, 9, 9, 255});
    canvas.SetPixel(479, 1, {9, 9, 9, 9});
    canvas.Clear();
    EXPECT_TRUE(canvas.TouchedBox().IsEmpty());
    EXPECT_EQ(canvas.StraightPixels(), std::vector<std::uint8_t>(480 * 2 * 4, 0));
}

TEST(Canvas, ThePaintedBoxHoldsWhatIsNotTransparent)
{
    Canvas canvas(9, 9);
    EXPECT_TRUE(canvas.PaintedBox().IsEmpty());
    canvas.SetPixel(0, 0, {0, 0, 0, 0});
    canvas.SetPixel(3, 4, {1, 1, 1, 1});
    canvas.SetPixel(6, 2, {1, 1, 1, 1});
    PixelBox const box = canvas.PaintedBox();
    EXPECT_EQ(box.left, 3);
    EXPECT_EQ(box.top, 2);
    EXPECT_EQ(box.right, 7);
    EXPECT_EQ(box.bottom, 5);
}
