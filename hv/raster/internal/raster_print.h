// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The text form of rasters.

#ifndef HV_RASTER_INTERNAL_RASTER_PRINT_H
#define HV_RASTER_INTERNAL_RASTER_PRINT_H

#include <hv/raster/HvRasterGrid.h>

#include <cstddef>
#include <iostream>

/// Prints the header "`name` W x H = ..." and the rows, the last row first so that y grows upward,
/// each pixel through printPixel(stream, pixel). What printPixel sets on the stream stays set.
template <class T, class PrintPixel>
void HvRaster_Print(char const* name, HvRasterGrid<T> const& raster, PrintPixel const& printPixel)
{
    std::cout << name << " W x H = " << raster.width << " x " << raster.height << std::endl;
    for (int y = raster.height - 1; y >= 0; --y) {
        T const* const row = raster.data + static_cast<std::ptrdiff_t>(y) * raster.width;
        for (int x = 0; x < raster.width; ++x) {
            printPixel(std::cout, row[x]);
        }
        std::cout << "\n" << std::flush;
    }
}

#endif
