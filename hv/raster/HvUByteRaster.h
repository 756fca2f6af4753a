// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Grids of bytes: coverage masks.

#ifndef HV_RASTER_HVUBYTERASTER_H
#define HV_RASTER_HVUBYTERASTER_H

#include <hv/foundation/HvMemory.h>
#include <hv/raster/HvRasterGrid.h>

/// A grid of bytes: the coverage that a fill writes, 0 outside to 255 inside, or the classes from
/// which a distance map is made. Its pixels are its own or a caller's. See HvRasterGrid for layout,
/// sizes and placement.
class HV_API HvUByteRaster : public HvRasterGrid<unsigned char>, public HvAllocated {
public:
    bool ownsData;  ///< whether the destructor frees the pixels

    /// New pixels, each `value`.
    HvUByteRaster(int w, int h, unsigned char value);
    /// Wraps w * h bytes at `pixels`, and always overwrites them with `value`.
    ///
    /// @param owns  whether the destructor frees `pixels`, which HvAllocate must then have made.
    HvUByteRaster(unsigned char* pixels, int w, int h, bool owns, unsigned char value);
    /// A copy of an owner owns pixels of its own. A copy of a raster that does not own its pixels
    /// shares them, and does not own them either.
    HvUByteRaster(HvUByteRaster const& other);
    /// Takes size and pixels of `other` into new pixels and gives back its own old ones; itself is
    /// left alone. It also takes `other.ownsData`, though the new pixels are always its own: what
    /// was assigned from a raster that does not own its pixels is freed by nobody, unless the
    /// caller sets the flag.
    HvUByteRaster& operator=(HvUByteRaster const& other);
    /// Frees the pixels when it owns them, and sets `data` to null.
    ~HvUByteRaster();

    /// 1 when every pixel is `value`, also when there is none; otherwise 0.
    int AllPixelValuesAre(unsigned char value) const;

    /// Prints on standard output: a header line, then the rows from the last to the first, each
    /// value as a number in four columns.
    void Print() const;
};

#endif
