// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where two pictures differ.

#ifndef TESTS_PICTURES_PICTURE_COMPARE_H
#define TESTS_PICTURES_PICTURE_COMPARE_H

#include <hv/raster/HvUByteRaster.h>

#include <cstddef>
#include <vector>

struct DifferentPixel {
    int x = 0;
    int y = 0;
    int before = 0;  ///< the byte that was kept
    int now = 0;
};

/// All that differs between a picture that was kept and one of the same size.
struct PictureDifference {
    /// Row by row.
    std::vector<DifferentPixel> pixels;
    /// The box of these pixels, both corners included.
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;
    /// The greatest difference of a byte.
    int worst = 0;
};

/// Whether the pictures have one size, without which there is nothing to compare.
bool Picture_IsSameSize(HvUByteRaster const& kept, HvUByteRaster const& drawn);

PictureDifference Picture_Compare(HvUByteRaster const& kept, HvUByteRaster const& drawn);

/// Red, green and blue of each pixel: what is equal in dark grey, what became brighter in green,
/// what became darker in red; one step of a byte shows as well as 255.
std::vector<unsigned char> Picture_DifferenceColours(HvUByteRaster const& kept,
                                                     HvUByteRaster const& drawn);

#endif
