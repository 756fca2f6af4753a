// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The lowest set bit of a word.

#ifndef HV_RASTER_INTERNAL_BIT_SCAN_H
#define HV_RASTER_INTERNAL_BIT_SCAN_H

#include <cstdint>

/// Number of the lowest set bit of `word`, which is not 0.
inline unsigned int HvBits_Lowest(std::uint64_t word)
{
#if defined(__GNUC__)
    return static_cast<unsigned int>(__builtin_ctzll(word));
#else
    unsigned int bit = 0;
    while ((word >> bit & 1) == 0) {
        ++bit;
    }
    return bit;
#endif
}

#endif
