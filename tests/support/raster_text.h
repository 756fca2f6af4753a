// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Small rasters as text.

#ifndef TESTS_SUPPORT_RASTER_TEXT_H
#define TESTS_SUPPORT_RASTER_TEXT_H

#include <hv/raster/HvUByteRaster.h>

#include <string>

/// The rows from the last to the first, as y grows upward, '#' for the value and '.' for all else.
inline std::string RasterText(HvUByteRaster const& raster, unsigned char value)
{
    std::string text;
    for (int y = raster.height - 1; y >= 0; --y) {
        for (int x = 0; x < raster.width; ++x) {
            text += raster.data[y * raster.width + x] == value ? '#' : '.';
        }
        text += '\n';
    }
    return text;
}

#endif
