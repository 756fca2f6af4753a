// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the three rasters share.

#ifndef HV_RASTER_HVRASTERGRID_H
#define HV_RASTER_HVRASTERGRID_H

#include <hv/platform/HvExport.h>

#include <cstddef>

/// A grid of pixels stored row by row without padding: pixel (x, y) is data[y * width + x]. The
/// shape behind HvUByteRaster, HvFloatRaster and HvDoubleRaster; nobody uses this base by name.
///
/// The fields are public, and fills read them directly. A size below 1 on either axis is an empty
/// raster; a negative size counts as 0. More pixels than an int counts are refused with
/// std::bad_alloc. No virtual members and no lock: one thread at a time owns a raster.
template <class T>
class HV_API HvRasterGrid {
public:
    int width;   ///< pixels in a row
    int height;  ///< rows
    T* data;     ///< the pixels, row after row without padding

    /// width * height.
    std::size_t NumPixels() const
    {
        return width < 1 || height < 1
                   ? 0
                   : static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    }

    // Placement: the source's pixel (0, 0) comes to lie on (x, y) of this raster, and what sticks
    // out is cut off. Any x and y will do. A source that shares its pixels with this raster is
    // read row by row while the target is written, in ascending order.

    /// Takes the pixels of `source`.
    void CopyRaster(int x, int y, HvRasterGrid const& source);
    /// Takes a pixel of `source` only where it is below the one that stands here; NaN is not below
    /// anything, nor anything below it.
    void SetValWhenSmaller(int x, int y, HvRasterGrid const& source);

protected:
    // Whether the pixels are owned is for the class above to say: it frees them.

    /// New pixels, each `value`.
    HvRasterGrid(int w, int h, T value);
    /// The pixels at `pixels`, all overwritten with `value`.
    HvRasterGrid(T* pixels, int w, int h, T value);
    /// New pixels that hold the same bytes.
    HvRasterGrid(HvRasterGrid const& other);
    HvRasterGrid& operator=(HvRasterGrid const& other) = delete;
    /// Leaves the pixels alone.
    ~HvRasterGrid() = default;

    /// Points to the pixels of `other`.
    void Share(HvRasterGrid const& other);
    /// Points to new pixels that hold the bytes of `other`, of its size, and gives back what it
    /// pointed to before for the class above to free. Throws before anything has changed.
    T* ReplaceWithCopyOf(HvRasterGrid const& other);
};

extern template class HvRasterGrid<unsigned char>;
extern template class HvRasterGrid<float>;
extern template class HvRasterGrid<double>;

#endif
