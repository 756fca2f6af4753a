// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Ranges of rows and columns, cut to a raster.

#ifndef HV_RASTER_INTERNAL_PIXEL_SPAN_H
#define HV_RASTER_INTERNAL_PIXEL_SPAN_H

#include <hv/foundation/saturate.h>

#include <algorithm>

/// The whole numbers from `first` to `last`; none when `first` is above.
struct HvPixelSpan {
    int first;
    int last;

    bool IsEmpty() const { return first > last; }

    /// The numbers from `low` to `high`, which are whole or infinite, cut to 0 up to `size` - 1.
    static HvPixelSpan Cut(double low, double high, int size)
    {
        // NaN fails the comparison and leaves nothing.
        if (!(high >= low)) {
            return {0, -1};
        }
        return {HvSaturate_To<int>(std::max(low, 0.0)),
                HvSaturate_To<int>(std::max(std::min(high, size - 1.0), -1.0))};
    }
};

#endif
