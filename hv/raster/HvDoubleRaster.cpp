// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Grids of double: distance maps.

#include <hv/raster/HvDoubleRaster.h>

#include <hv/raster/internal/raster_print.h>

#include <iomanip>

HvDoubleRaster::HvDoubleRaster(int w, int h, double value) : HvRasterGrid(w, h, value) {}

HvDoubleRaster::HvDoubleRaster(HvDoubleRaster const& other) : HvRasterGrid(other), HvAllocated() {}

HvDoubleRaster& HvDoubleRaster::operator=(HvDoubleRaster const& other)
{
    if (this != &other) {
        HvFree(ReplaceWithCopyOf(other));
    }
    return *this;
}

HvDoubleRaster::~HvDoubleRaster()
{
    HvFree(data);
}

void HvDoubleRaster::Print() const
{
    HvRaster_Print("double raster", *this, [](std::ostream& out, double pixel) {
        out << std::setprecision(3) << pixel << " ";
    });
}
