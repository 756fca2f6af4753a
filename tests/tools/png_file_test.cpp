// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "tool_fixture.h"

#include <tools/ToolError.h>
#include <tools/paint/png_file.h>

#include <png.h>

namespace {

using png_file = ToolFixture;

std::vector<std::uint8_t> PixelsOf(std::string const& bytes)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_NE(png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()), 0);
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    EXPECT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
    return pixels;
}

Canvas Gradient(int side)
{
    Canvas canvas(side, side);
    for (int i = 0; i < side * side; ++i) {
        auto const alpha = static_cast<std::uint8_t>(i % 256);
        canvas.SetPixel(i % side, i / side,
                        {static_cast<std::uint8_t>(alpha / 2), alpha, 0, alpha});
    }
    return canvas;
}

}  // namespace

TEST_F(png_file, AFaultNamesTheFile)
{
    // Wider than any PNG file that libpng writes.
    std::string const path = PathOf("wide.png");
    try {
        PngFile_Write(path, Canvas(1000001, 1));
        FAIL() << "was written";
    } catch (ToolError const& error) {
        EXPECT_EQ(std::string(error.what()).find(path + ": cannot be written: "), 0u)
            << error.what();
    }
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(png_file, BothEffortsHoldTheSamePixels)
{
    Canvas const canvas = Gradient(32);
    std::string const small = PngFile_Bytes("", canvas, canvas.Box(), PngEffort::Small);
    std::string const quick = PngFile_Bytes("", canvas, canvas.Box(), PngEffort::Quick);
    EXPECT_EQ(PixelsOf(small), canvas.StraightPixels());
    EXPECT_EQ(PixelsOf(quick), canvas.StraightPixels());
    EXPECT_LE(small.size(), quick.size());
}

TEST_F(png_file, WritesTheCanvas)
{
    Canvas const canvas = Gradient(8);
    std::string const path = PathOf("new/picture.png");
    PngFile_Write(path, canvas);
    EXPECT_EQ(PixelsOf(Read(path)), canvas.StraightPixels());
}
