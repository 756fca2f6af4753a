// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pictures as PNG files, through libpng.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/paint/png_file.h>

#include <png.h>

#include <string>
#include <vector>

std::string PngFile_Bytes(Canvas const& canvas, PixelBox const& box)
{
    std::vector<std::uint8_t> const pixels = canvas.StraightPixels(box);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(box.right - box.left);
    image.height = static_cast<png_uint_32>(box.bottom - box.top);
    image.format = PNG_FORMAT_RGBA;
    // The greatest size, so that the picture is not compressed twice to learn it.
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string bytes(size, '\0');
    if (png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr) == 0) {
        throw ToolError(image.message);
    }
    bytes.resize(size);
    return bytes;
}

void PngFile_Write(std::string const& path, Canvas const& canvas)
{
    File_Write(path, PngFile_Bytes(canvas, canvas.Box()));
}
