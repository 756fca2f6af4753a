// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pictures as PNG files, through libpng.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/paint/png_file.h>

#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

/// Most pixels of an image that is read: a small file may claim any size.
constexpr std::uint64_t kMostPixels = std::uint64_t(1) << 28;

/// In the numbers as they stand, as viewers do it: libpng itself would mix light.
std::uint8_t OverWhite(std::uint8_t grey, std::uint8_t alpha)
{
    return static_cast<std::uint8_t>((grey * alpha + 255 * (255 - alpha) + 127) / 255);
}

}  // namespace

std::string PngFile_Bytes(std::string const& path, Canvas const& canvas, PixelBox const& box,
                          PngEffort effort)
{
    std::vector<std::uint8_t> const pixels = canvas.StraightPixels(box);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(box.right - box.left);
    image.height = static_cast<png_uint_32>(box.bottom - box.top);
    image.format = PNG_FORMAT_RGBA;
    image.flags = effort == PngEffort::Quick ? PNG_IMAGE_FLAG_FAST : 0;
    // The greatest size, so that the picture is not compressed twice to learn it.
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string bytes(size, '\0');
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0) {
        throw ToolError(path + ": cannot be written: " + image.message);
    }
    bytes.resize(size);
    return bytes;
}

void PngFile_Write(std::string const& path, Canvas const& canvas)
{
    File_Write(path, PngFile_Bytes(path, canvas, canvas.Box(), PngEffort::Small));
}

GreyImage PngFile_ReadGrey(std::string const& path)
{
    std::string const bytes = File_Read(path);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) {
        throw ToolError(path + ": " + image.message);
    }
    if (std::uint64_t(image.width) * image.height > kMostPixels) {
        png_image_free(&image);
        throw ToolError(path + ": too many pixels");
    }
    image.format = PNG_FORMAT_GA;
    std::vector<std::uint8_t> pairs(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, pairs.data(), 0, nullptr) == 0) {
        throw ToolError(path + ": " + image.message);
    }
    GreyImage grey = {static_cast<int>(image.width), static_cast<int>(image.height), {}};
    grey.pixels.resize(pairs.size() / 2);
    for (std::size_t i = 0; i < grey.pixels.size(); ++i) {
        grey.pixels[i] = OverWhite(pairs[2 * i], pairs[2 * i + 1]);
    }
    return grey;
}
