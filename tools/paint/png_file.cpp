// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pictures as PNG files, through libpng.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/paint/png_file.h>

#include <png.h>

#include <string>
#include <vector>

void PngFile_Write(std::string const& path, Canvas const& canvas)
{
    std::vector<std::uint8_t> const pixels = canvas.StraightPixels();
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(canvas.Width());
    image.height = static_cast<png_uint_32>(canvas.Height());
    image.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = 0;
    std::string bytes;
    bool written =
        png_image_write_to_memory(&image, nullptr, &size, 0, pixels.data(), 0, nullptr) != 0;
    if (written) {
        bytes.resize(size);
        written = png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0,
                                            nullptr) != 0;
    }
    if (!written) {
        throw ToolError(path + ": " + image.message);
    }
    bytes.resize(size);
    File_Write(path, bytes);
}
