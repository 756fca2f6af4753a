// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pictures as PNG files: 8-bit grey for what is kept, colours for what differs.

#ifndef TESTS_PICTURES_PICTURE_PNG_H
#define TESTS_PICTURES_PICTURE_PNG_H

#include <hv/raster/HvUByteRaster.h>

#include <string>
#include <vector>

// All of them throw std::runtime_error, with the file's name, when the file cannot be read or
// written.

/// Row 0 of the raster is the top of the picture.
HvUByteRaster PicturePng_Read(std::string const& path);
void PicturePng_Write(std::string const& path, HvUByteRaster const& picture);

/// Red, green and blue for each pixel.
void PicturePng_WriteColours(std::string const& path, int width, int height,
                             std::vector<unsigned char> const& colours);

#endif
