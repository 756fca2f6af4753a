// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The part of a raster that a shape can reach.

#ifndef HV_RASTER_HVFILLBOX_H
#define HV_RASTER_HVFILLBOX_H

#include <hv/foundation/HvExtent2.h>
#include <hv/raster/HvUByteRaster.h>

/// The columns x0 up to but not including x1 and the rows y0 up to but not including y1 of a
/// raster. A fill scans these rows and cuts its spans to these columns.
struct HV_API_TYPE HvFillBox {
    int x0;          ///< the first column
    int y0;          ///< the first row
    int x1;          ///< behind the last column
    int y1;          ///< behind the last row
    bool isClamped;  ///< whether the shape sticks out of the raster, so that it has to be clipped

    /// The box as the rectangle to which polygons are clipped.
    HvExtent2<double> Clip() const;
};

/// Finds the box of a shape with the extent `extent` in device space, where pixel (x, y) is the
/// square from (x, y) to (x + 1, y + 1): its whole pixels, cut to the raster.
///
/// @param extent  numbers of any size; the whole plane gives the whole raster, clamped.
/// @return        1; 0, with `box` as it was, when the extent is empty, has a NaN, or does not
///                touch the closed rectangle from (0, 0) to (width, height).
HV_API int HvFillBox_FromExtent(HvExtent2<float> const& extent, HvUByteRaster const& raster,
                                HvFillBox& box);

#endif
