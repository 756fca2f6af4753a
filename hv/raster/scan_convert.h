// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Parallelograms and ellipses into pixels, directly from their three points.

#ifndef HV_RASTER_SCAN_CONVERT_H
#define HV_RASTER_SCAN_CONVERT_H

#include <hv/foundation/HvPoint2.h>
#include <hv/platform/HvExport.h>

class HvFloatRaster;
class HvUByteRaster;

/// What a parallelogram leaves in the pixels that it covers: those whose sample point is inside, or
/// in the modes that say "touched" every pixel that holds one of its points, where a pixel is the
/// unit square that begins at its sample point.
enum RectFillMode : int {
    RectFillPlain = 0,          ///< the value
    RectFillTouched = 1,        ///< the value; touched
    RectFillNothing = 2,        ///< nothing
    RectFillRadial = 3,         ///< the distance from the centre: the larger one of those from the
                                ///< two centre lines, each 1 at the sides
    RectFillLinear = 4,         ///< the distance from the centre line along p0 p1, where smaller
    RectFillLinearTouched = 5,  ///< the same; touched
    RectFillLinearThin = 6      ///< as RectFillLinearTouched
};

/// What an ellipse leaves in the pixels that it covers.
enum OvalFillMode : int {
    OvalFillPlain = 0,   ///< the value
    OvalFillBrushed = 1  ///< the value, and around the ends of each row's span the distance from
                         ///< them, where smaller, up to the brush's radius
};                       // larger numbers count as 0, but for shapes without an area

// For all of them: p0 is a corner of the parallelogram, p1 and p2 are its neighbours, the fourth
// corner is p1 + p2 - p0; an ellipse touches the sides in their middles. `half` is where a pixel is
// sampled, in both coordinates from its corner: 0.5, its middle. What lies outside of the raster
// is cut off, and pixels that are not covered keep their value. Coordinates may be any numbers: one
// that is not finite covers nothing. Cost: the covered pixels, and a step for each covered row.

/// Scans a parallelogram.
///
/// @param raster    target of the modes 0 and 1.
/// @param distance  target of the modes 3 to 6; the others do not look at it.
///
/// A sample point on a left or lower side is inside, on a right or upper side it is not, so that
/// neighbours share no pixel. Distances are taken at the corners of pixels and scaled by that of
/// floor(p0); they end at 1.
HV_API void ScanConvert(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                        HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                        unsigned char value, HvFloatRaster& distance, RectFillMode mode);

/// Scans an ellipse: the pixels whose sample point has a quadratic form of at most 1.000001, where
/// 1 is the curve. Nothing when a half axis is below 1e-4 in both coordinates.
///
/// @param distance     target of the brush; the other modes do not look at it.
/// @param brushRadius  in pixels; std::bad_alloc for a brush beyond what a raster holds.
HV_API void ScanConvert(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                        HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                        unsigned char value, HvFloatRaster& distance, int brushRadius,
                        OvalFillMode mode);

/// Scans an ellipse whose axes lie along x and y, symmetrically about the pixel nearest to its
/// centre: the pixels whose integer offset from that one lies in the ellipse. Without width or
/// height it is a run of pixels, at least one.
HV_API void ScanConvertIsothetic(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                                 HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                                 unsigned char value, HvFloatRaster& distance, int brushRadius,
                                 OvalFillMode mode);

/// Lowers the pixels in an ellipse to their distance from its centre, 1 at the curve, where that is
/// smaller. The pixels are those of the ellipse's ScanConvert.
HV_API void FillDistanceRaster(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                               HvPoint2<float> const& p2, double half, HvFloatRaster& distance);

/// The same for axes along x and y, with the pixels of ScanConvertIsothetic.
HV_API void FillDistanceRasterIsothetic(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                                        HvPoint2<float> const& p2, double half,
                                        HvFloatRaster& distance);

#endif
