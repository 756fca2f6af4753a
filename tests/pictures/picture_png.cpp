// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pictures as PNG files, through libpng.

#include "picture_png.h"

#include <png.h>

#include <stdexcept>

namespace {

png_image EmptyImage()
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    return image;
}

void Write(std::string const& path, int width, int height, png_uint_32 format,
           unsigned char const* pixels)
{
    png_image image = EmptyImage();
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    if (png_image_write_to_file(&image, path.c_str(), 0, pixels, 0, nullptr) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
}

}  // namespace

HvUByteRaster PicturePng_Read(std::string const& path)
{
    png_image image = EmptyImage();
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
    image.format = PNG_FORMAT_GRAY;
    HvUByteRaster picture(static_cast<int>(image.width), static_cast<int>(image.height), 0);
    if (png_image_finish_read(&image, nullptr, picture.data, 0, nullptr) == 0) {
        throw std::runtime_error(path + ": " + image.message);
    }
    return picture;
}

void PicturePng_Write(std::string const& path, HvUByteRaster const& picture)
{
    Write(path, picture.width, picture.height, PNG_FORMAT_GRAY, picture.data);
}

void PicturePng_WriteColours(std::string const& path, int width, int height,
                             std::vector<unsigned char> const& colours)
{
    Write(path, width, height, PNG_FORMAT_RGB, colours.data());
}
