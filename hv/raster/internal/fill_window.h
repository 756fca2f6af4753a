// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rows and columns of a raster that a fill scans.

#ifndef HV_RASTER_INTERNAL_FILL_WINDOW_H
#define HV_RASTER_INTERNAL_FILL_WINDOW_H

#include <hv/raster/HvFillBox.h>
#include <hv/raster/internal/HvPolygonScanner.h>

#include <algorithm>

/// The window of a box. A box that was made for another raster cannot lead outside of this one.
inline HvScanWindow HvFillWindow_Of(HvFillBox const& box, HvUByteRaster const& raster)
{
    HvScanWindow window = {std::max(box.y0, 0), std::min(box.y1, raster.height),
                           std::max(box.x0, 0), std::min(box.x1, raster.width)};
    window.endRow = std::max(window.endRow, window.firstRow);
    window.endColumn = std::max(window.endColumn, window.firstColumn);
    return window;
}

#endif
