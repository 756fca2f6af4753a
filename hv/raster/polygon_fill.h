// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons into coverage: the hard, the anti-aliased and the soft fill.

#ifndef HV_RASTER_POLYGON_FILL_H
#define HV_RASTER_POLYGON_FILL_H

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/platform/HvExport.h>
#include <hv/raster/HvBlurKernel.h>
#include <hv/raster/HvFillBox.h>
#include <hv/raster/HvUByteRaster.h>

/// What a fill scans: closed polygons in device space, where pixel (x, y) is the square from (x, y)
/// to (x + 1, y + 1).
struct HV_API_TYPE HvPolygons {
    /// The polygons one after the other, each with its first point repeated as its last.
    HvPoint2dArray const& points;
    /// HvPointTagEnd at the last point of each polygon; the other tags are not looked at. Points
    /// behind the last end belong to no polygon.
    HvPointTagArray const& tags;
    /// 0: the inside is what a ray leaves an odd number of times; otherwise: what the polygons wind
    /// around, in the sum of their directions.
    int fillRule;
    /// The rows that are scanned and the columns to which spans are cut, of HvFillBox_FromExtent.
    /// When it is clamped, the polygons should have been clipped to box.Clip(): what lies outside
    /// is not drawn in any case, but an edge far to the left costs as one inside.
    HvFillBox box;
};

/// Asked again and again during a fill; other than 0 abandons it. Null asks nobody.
using HvInterrupt = int (*)();

// For the three fills:
//
// A scanline is sampled at the middle of its row. The inside from `left` to `right` along it covers
// the pixels floor(left) to floor(right): the pixel that holds the right end counts, except where
// the box ends, so that shapes are a little fat on their right. What has no width covers nothing.
//
// They return 1 when done and 0 when `interrupted` has abandoned the fill. Then, and when an
// exception of `interrupted` or a std::bad_alloc passes, the raster holds what was written until
// then, and nothing is leaked. Points may have any coordinates: an edge to a NaN ordinate is none.
//
// Memory: proportional to the points and the width of the box. Cost: O(n log n) for n points, for
// each scanline its edges, and its covered pixels. Source: scan conversion with a table of active
// edges, Foley, van Dam et al., Computer Graphics, 1990, 3.6.

/// Sets the pixels that are inside to 255 and leaves all others. `interrupted` is asked before each
/// row of the box.
HV_API int HvPolygons_Fill(HvPolygons const& polygons, HvUByteRaster& raster,
                           HvInterrupt interrupted);

/// Writes the coverage sampled at 4 x 4 points: 16 for each point, all points 255.
///
/// In each row every pixel between the leftmost and the rightmost covered one is written, also
/// those not covered, with 0; all others stay.
///
/// @param maxCoverage  in 0 to 1; no pixel is written above 255 times it, rounded half up. Of a
///                     value outside, the low byte of that product is taken, and 0 when the
///                     product is NaN or exceeds an int.
/// @param interrupted  asked before each row of the box; by winding before each quarter of a row.
///                     A row is written once all its quarters are scanned.
HV_API int HvPolygons_AAFill(HvPolygons const& polygons, double maxCoverage, HvUByteRaster& raster,
                             HvInterrupt interrupted);

/// Overwrites the whole raster with the hard fill, cut to the box, blurred by `kernel` in x and in
/// y. Beyond the raster nothing is covered.
///
/// @param maxCoverage  factor of the blurred coverage; the product is rounded half up and limited
///                     to 0 to 255, NaN gives 0.
/// @param interrupted  asked before each row of the box, then before each column of the raster,
///                     which is written thereafter.
///
/// Memory: also a double for each pixel of the blurred box. Cost: inside solid areas independent of
/// the kernel.
HV_API int HvPolygons_SoftFill(HvPolygons const& polygons, HvBlurKernel const& kernel,
                               double maxCoverage, HvUByteRaster& raster, HvInterrupt interrupted);

/// Keeps of a soft fill what lies inside a shape: a pixel where the mask is 255 stays, others
/// become mask * pixel / 256, cut down. The mask has the raster's size.
HV_API void HvUByteRaster_ClipToMask(HvUByteRaster& raster, HvUByteRaster const& mask);

#endif
