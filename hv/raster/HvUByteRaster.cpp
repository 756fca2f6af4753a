// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Grids of bytes: coverage masks.

#include <hv/raster/HvUByteRaster.h>

#include <hv/raster/internal/raster_print.h>

#include <algorithm>
#include <iomanip>

HvUByteRaster::HvUByteRaster(int w, int h, unsigned char value)
    : HvRasterGrid(w, h, value), ownsData(true)
{
}

HvUByteRaster::HvUByteRaster(unsigned char* pixels, int w, int h, bool owns, unsigned char value)
    : HvRasterGrid(pixels, w, h, value), ownsData(owns)
{
}

HvUByteRaster::HvUByteRaster(HvUByteRaster const& other)
    : HvRasterGrid(nullptr, 0, 0, 0), HvAllocated(), ownsData(other.ownsData)
{
    if (ownsData) {
        ReplaceWithCopyOf(other);
    } else {
        Share(other);
    }
}

HvUByteRaster& HvUByteRaster::operator=(HvUByteRaster const& other)
{
    if (this != &other) {
        unsigned char* const replaced = ReplaceWithCopyOf(other);
        if (ownsData) {
            HvFree(replaced);
        }
        ownsData = other.ownsData;
    }
    return *this;
}

HvUByteRaster::~HvUByteRaster()
{
    if (ownsData) {
        HvFree(data);
    }
    data = nullptr;
}

int HvUByteRaster::AllPixelValuesAre(unsigned char value) const
{
    return std::all_of(data, data + NumPixels(),
                       [&](unsigned char pixel) { return pixel == value; });
}

void HvUByteRaster::Print() const
{
    HvRaster_Print("UBYTE raster", *this, [](std::ostream& out, unsigned char pixel) {
        out << std::setw(4) << static_cast<int>(pixel);
    });
}
