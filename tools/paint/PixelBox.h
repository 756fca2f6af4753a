// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A rectangle of pixels.

#ifndef HV_TOOLS_PAINT_PIXELBOX_H
#define HV_TOOLS_PAINT_PIXELBOX_H

#include <algorithm>

/// Columns from `left` up to but not including `right`, rows likewise.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool IsEmpty() const { return left >= right || top >= bottom; }

    /// The smallest box around both; an empty one adds nothing.
    PixelBox Union(PixelBox const& other) const
    {
        if (IsEmpty() || other.IsEmpty()) {
            return IsEmpty() ? other : *this;
        }
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }

    /// What lies in both; an empty box when nothing does.
    PixelBox Intersection(PixelBox const& other) const
    {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
};

#endif
