// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Grids of float: distance values.

#ifndef HV_RASTER_HVFLOATRASTER_H
#define HV_RASTER_HVFLOATRASTER_H

#include <hv/foundation/HvMemory.h>
#include <hv/raster/HvRasterGrid.h>

/// A grid of distances that owns its pixels; copies are deep. See HvRasterGrid for layout, sizes
/// and placement.
class HV_API HvFloatRaster : public HvRasterGrid<float>, public HvAllocated {
public:
    /// New pixels, each `value`.
    HvFloatRaster(int w, int h, float value);
    /// Copies size and pixels.
    HvFloatRaster(HvFloatRaster const& other);
    /// Takes size and pixels of `other`; the new pixels are allocated before the old are freed.
    HvFloatRaster& operator=(HvFloatRaster const& other);
    ~HvFloatRaster();

    using HvRasterGrid::SetValWhenSmaller;
    /// Pixel (x, y), which must lie within the raster, takes `value` when its own is above.
    void SetValWhenSmaller(int x, int y, float value)
    {
        float& pixel = data[static_cast<std::ptrdiff_t>(y) * width + x];
        if (pixel > value) {
            pixel = value;
        }
    }

    /// Prints on standard output: a header line, then the rows from the last to the first, each
    /// value with three significant digits; the stream keeps that precision.
    void Print() const;
};

#endif
