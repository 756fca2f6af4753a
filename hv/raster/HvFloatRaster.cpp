// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Grids of float: distance values.

#include <hv/raster/HvFloatRaster.h>

#include <hv/raster/internal/raster_print.h>

#include <iomanip>

HvFloatRaster::HvFloatRaster(int w, int h, float value) : HvRasterGrid(w, h, value) {}

HvFloatRaster::HvFloatRaster(HvFloatRaster const& other) : HvRasterGrid(other), HvAllocated() {}

HvFloatRaster& HvFloatRaster::operator=(HvFloatRaster const& other)
{
    if (this != &other) {
        HvFree(ReplaceWithCopyOf(other));
    }
    return *this;
}

HvFloatRaster::~HvFloatRaster()
{
    HvFree(data);
}

void HvFloatRaster::Print() const
{
    HvRaster_Print("Float raster", *this, [](std::ostream& out, float pixel) {
        out << std::setprecision(3) << pixel << " ";
    });
}
