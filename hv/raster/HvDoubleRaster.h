// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Grids of double: distance maps.

#ifndef HV_RASTER_HVDOUBLERASTER_H
#define HV_RASTER_HVDOUBLERASTER_H

#include <hv/foundation/HvMemory.h>
#include <hv/raster/HvRasterGrid.h>
#include <hv/raster/HvUByteRaster.h>

/// A grid of distances that owns its pixels; copies are deep. See HvRasterGrid for layout, sizes
/// and placement.
class HV_API HvDoubleRaster : public HvRasterGrid<double>, public HvAllocated {
public:
    /// New pixels, each `value`.
    HvDoubleRaster(int w, int h, double value);
    /// Copies size and pixels.
    HvDoubleRaster(HvDoubleRaster const& other);
    /// Takes size and pixels of `other`; the new pixels are allocated before the old are freed.
    HvDoubleRaster& operator=(HvDoubleRaster const& other);
    ~HvDoubleRaster();

    // Distance maps: each pixel becomes its distance, in pixels, from the seeds, which are the
    // pixels where the mask is 1.
    //
    // The offset to a seed is propagated from pixel to pixel in one pass down and one pass up, so a
    // value may exceed the true distance by a little where seeds compete; it is never below it.
    // Each pass sweeps to and fro in every row but its first: in a raster of one row nothing
    // spreads. What no seed reaches has the offset (m, m), m = max(width, height) + 1.
    //
    // The mask must have this raster's size. Only its bytes are read, by this raster's width and
    // height; a mask of fewer pixels is refused, and the raster stays as it was, as it does when
    // std::bad_alloc goes out. Cost: linear in the number of pixels. Source: P.-E. Danielsson,
    // "Euclidean distance mapping", 1980.

    /// The distance max(|dx|, |dy|).
    void SetToLInfinityDistanceMap(HvUByteRaster const& mask);
    /// The distance dx^2 + dy^2, negated where the mask is 2, which stands for the inside.
    void SetToSquaredEuclideanDistanceMap(HvUByteRaster const& mask);

    /// Prints on standard output: a header line, then the rows from the last to the first, each
    /// value with three significant digits; the stream keeps that precision.
    void Print() const;
};

#endif
