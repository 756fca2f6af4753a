// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Sizes of pixel arrays and of the arrays that a fill works in.

#ifndef HV_RASTER_INTERNAL_RASTER_SIZE_H
#define HV_RASTER_INTERNAL_RASTER_SIZE_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

/// Bytes of width * height elements. The number of elements must fit an int, as everything that
/// walks a raster counts its pixels so: std::bad_alloc otherwise, before anything is allocated. A
/// size below 1 on either axis gives 0.
template <class T>
std::size_t HvRasterSize_Bytes(std::int64_t width, std::int64_t height)
{
    if (width < 1 || height < 1) {
        return 0;
    }
    if (width > std::numeric_limits<int>::max() / height) {
        throw std::bad_alloc();
    }
    return static_cast<std::size_t>(width * height) * sizeof(T);
}

#endif
