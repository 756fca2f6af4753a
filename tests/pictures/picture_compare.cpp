// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where two pictures differ.

#include "picture_compare.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// Of a pixel that did not change, so that every change is brighter.
constexpr int kEqualDarkening = 4;
/// Of the smallest change, and how much brighter the greatest is.
constexpr int kLeastChange = 128;
constexpr int kChangeRange = 127;

}  // namespace

bool Picture_IsSameSize(HvUByteRaster const& kept, HvUByteRaster const& drawn)
{
    return kept.width == drawn.width && kept.height == drawn.height;
}

PictureDifference Picture_Compare(HvUByteRaster const& kept, HvUByteRaster const& drawn)
{
    PictureDifference difference;
    difference.left = kept.width;
    difference.top = kept.height;
    std::size_t i = 0;
    for (int y = 0; y < kept.height; ++y) {
        for (int x = 0; x < kept.width; ++x, ++i) {
            int const before = kept.data[i];
            int const now = drawn.data[i];
            if (before == now) {
                continue;
            }
            difference.pixels.push_back({x, y, before, now});
            difference.left = std::min(difference.left, x);
            difference.right = std::max(difference.right, x);
            difference.top = std::min(difference.top, y);
            difference.bottom = std::max(difference.bottom, y);
            difference.worst = std::max(difference.worst, std::abs(now - before));
        }
    }
    return difference;
}

std::vector<unsigned char> Picture_DifferenceColours(HvUByteRaster const& kept,
                                                     HvUByteRaster const& drawn)
{
    std::size_t const count = kept.NumPixels();
    std::vector<unsigned char> colours(3 * count);
    for (std::size_t i = 0; i < count; ++i) {
        unsigned char* const colour = &colours[3 * i];
        int const change = drawn.data[i] - kept.data[i];
        if (change == 0) {
            std::fill_n(colour, 3, static_cast<unsigned char>(kept.data[i] / kEqualDarkening));
        } else {
            int const brightness = kLeastChange + std::abs(change) * kChangeRange / 255;
            colour[change < 0 ? 0 : 1] = static_cast<unsigned char>(brightness);
        }
    }
    return colours;
}
