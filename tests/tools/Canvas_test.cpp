// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/paint/Canvas.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> PixelOf(Canvas const& canvas, int x, int y)
{
    std::uint8_t const* const bytes = canvas.Pixel(x, y);
    return {bytes[0], bytes[1], bytes[2], bytes[3]};
}

}  // namespace

TEST(Canvas, PaintIsPremultipliedAndRounded)
{
    Canvas canvas(3, 1);
    std::uint8_t const coverage[] = {0, 255, 128};
    canvas.Paint(coverage, {0, 0, 3, 1}, {200, 100, 0, 255});
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
    std::uint8_t const coverage = 51;  // a fifth
    canvas.Paint(&coverage, {0, 0, 1, 1}, {0, 0, 0, 255});
    EXPECT_EQ(PixelOf(canvas, 0, 0), (std::vector<int>{204, 204, 204, 255}));
}

TEST(Canvas, PixelsOutsideTheBoxStay)
{
    Canvas canvas(3, 3);
    std::vector<std::uint8_t> const coverage(9, 255);
    canvas.Paint(coverage.data(), {1, 1, 2, 3}, {9, 9, 9, 255});
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            EXPECT_EQ(PixelOf(canvas, x, y)[3], x == 1 && y >= 1 ? 255 : 0);
        }
    }
}

TEST(Canvas, LayerIsPaintedAsOne)
{
    // Two opaque paints in a layer of a fifth: the upper hides the lower, then both grow faint.
    Canvas canvas(1, 1);
    canvas.Fill({255, 255, 255, 255});
    Canvas layer(1, 1);
    std::uint8_t const whole = 255;
    layer.Paint(&whole, {0, 0, 1, 1}, {255, 0, 0, 255});
    layer.Paint(&whole, {0, 0, 1, 1}, {0, 0, 255, 255});
    canvas.Paint(layer, 51);
    EXPECT_EQ(PixelOf(canvas, 0, 0), (std::vector<int>{204, 204, 255, 255}));
}

TEST(Canvas, OpaquePaintNeverOverflows)
{
    for (int alpha = 0; alpha < 256; ++alpha) {
        for (int share = 0; share < 256; share += 5) {
            Canvas canvas(1, 1);
            canvas.Fill({255, 255, 255, 255});
            auto const coverage = static_cast<std::uint8_t>(share);
            canvas.Paint(&coverage, {0, 0, 1, 1},
                         {255, 255, 255, static_cast<std::uint8_t>(alpha)});
            EXPECT_GE(PixelOf(canvas, 0, 0)[0], 254);
        }
    }
}
