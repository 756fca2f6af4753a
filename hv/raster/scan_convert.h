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
    RectFillNothing = 2,        ///< nothing; so do numbers without a name
    RectFillRadial = 3,         ///< the distance from the centre: the larger one of those from the
                                ///< two centre lines, each 1 at the sides
    RectFillLinear = 4,         ///< the distance from the centre line along p0 p1, where smaller
    RectFillLinearTouched = 5,  ///< the same; touched
    RectFillLinearThin = 6      ///< as RectFillLinearTouched
};

/// What an ellipse leaves in the pixels that it covers.
enum OvalFillMode : int {
    OvalFillPlain = 0,   ///< the value
    OvalFillBrushed = 1  ///< the value, and around both ends of each row's span the distance from
                         ///< them, where smaller, up to the brush's radius
};                       // larger numbers count as 0, but for shapes without an area

// For all of them: p0 is a corner of the parallelogram, p1 and p2 are its neighbours, the fourth
// corner is p1 + p2 - p0; an ellipse touches the sides in their middles. `half` is where a pixel is
// sampled, in both coordinates from its corner: 0.5, its middle. What lies outside of the raster
// is cut off, and pixels that are not covered keep their value; the two rasters may differ in size.
//
// Coordinates and `half` may be any numbers: one that is not finite covers nothing. All is computed
// in double. Nothing is allocated or locked. Cost: the rows that are covered, and their pixels.

/// Scans a parallelogram.
///
/// @param raster    target of the modes 0 and 1; the others do not look at it.
/// @param value     what it receives.
/// @param distance  target of the modes 3 to 6; the others do not look at it.
///
/// A sample point on a left or lower side is inside, on a right or upper side it is not, so that
/// neighbours share no pixel, and what has no area covers none, unless touched. Distances are those
/// of the corners (x, y) of pixels, not of their sample points; they are scaled by the distance of
/// (floor(p0.x), floor(p0.y)), which is exact for a whole p0, and end at 1. Of a side that has no
/// length the other one takes the place; with no scale, or no side at all, each distance is 1.
///
/// Source: scan conversion of convex polygons, Foley, van Dam et al., Computer Graphics, 1990, 3.5.
HV_API void ScanConvert(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                        HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                        unsigned char value, HvFloatRaster& distance, RectFillMode mode);

/// Scans an ellipse: the pixels whose sample point has a quadratic form of at most 1.000001, where
/// 1 is the curve, in the rows whose sample line meets the curve.
///
/// A half axis below 1e-4 in both coordinates is none: the modes 0 and 1 then cover nothing, and so
/// does every mode when the ellipse has no area.
///
/// @param raster       the spans of its rows receive `value`.
/// @param distance     target of the brush; the other modes do not look at it. Around ends beyond
///                     the left or right side of `raster` the brush is stamped too.
/// @param brushRadius  in pixels, of any size; below 0 there is no brush. Distances up to it, from
///                     pixel to pixel, are left, 0 at the end itself.
///
/// Cost: with the brush, for each row also the pixels that it reaches from both ends.
HV_API void ScanConvert(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                        HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                        unsigned char value, HvFloatRaster& distance, int brushRadius,
                        OvalFillMode mode);

/// Scans an ellipse whose axes lie along x and y, symmetrically about one pixel: that of the corner
/// nearest to its centre, (floor(centre.x + 0.5), floor(centre.y + 0.5)). Covered are the pixels at
/// whole offsets (i, j) from that one with (i / a)^2 + (j / b)^2 <= 1 for half axes a and b, which
/// is tested without division. Either of p1 and p2 may be the one along x: when p1 - p0 and p2 - p0
/// lean by less than 1e-4 from y and x, p2 is.
///
/// Without width or height, that is with a or b below 1e-4, it is a run of floor(a - half) or
/// floor(b - half) pixels each way from that pixel, which is always covered.
///
/// @param half  plays no other part.
///
/// The other arguments are those of the general scan, and larger modes count as 0.
HV_API void ScanConvertIsothetic(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                                 HvPoint2<float> const& p2, double half, HvUByteRaster& raster,
                                 unsigned char value, HvFloatRaster& distance, int brushRadius,
                                 OvalFillMode mode);

/// Lowers the pixels in an ellipse to the root of its quadratic form at their sample points, that
/// is to their distance from its centre, 1 at the curve, where that is smaller; at most 1.
///
/// The pixels are those of the ellipse's ScanConvert, also of an ellipse with short half axes; none
/// without an area.
HV_API void FillDistanceRaster(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                               HvPoint2<float> const& p2, double half, HvFloatRaster& distance);

/// The same for axes along x and y, with the pixels of ScanConvertIsothetic and the distance
/// sqrt((i / a)^2 + (j / b)^2) of their offsets; along a run, of the axis that is left.
HV_API void FillDistanceRasterIsothetic(HvPoint2<float> const& p0, HvPoint2<float> const& p1,
                                        HvPoint2<float> const& p2, double half,
                                        HvFloatRaster& distance);

#endif
