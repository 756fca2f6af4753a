// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The one way in which the library clips a line segment to a rectangle.

#ifndef HV_BEZIER_LINE_CLIP_H
#define HV_BEZIER_LINE_CLIP_H

#include <hv/foundation/HvExtent2.h>

/// Clips the segment a to b to a closed rectangle.
///
/// A clipped end takes the coordinate of the side that cut it exactly as it stands in `clip`, so
/// that neighbouring pieces meet there; its other coordinate is interpolated. An end inside stays
/// as it is. When two sides cut at one point, the first in the order minimum x, maximum x, minimum
/// y, maximum y counts. A segment that only touches the rectangle gives two equal ends.
///
/// @param a, b  the ends; on a miss they stay as they are.
/// @param clip  any state. Sides may be infinite or of any size; a rectangle with a NaN side or a
///              minimum above its maximum holds nothing.
/// @return      1 when some of the segment lies in `clip`, otherwise 0; 0 as well when a coordinate
///              of an end is not finite.
///
/// Cost: no division unless an end moves. Source: Liang, Barsky, "A new concept and method for line
/// clipping", 1984, with the parameters kept as fractions.
HV_API int HvLineClip_Clip(HvPoint2<double>& a, HvPoint2<double>& b, HvExtent2<double> const& clip);

/// Whether some of the segment a to b lies in a closed rectangle: the result of HvLineClip_Clip,
/// without moving the ends.
///
/// Cost: no division.
HV_API int HvLineClip_Meets(HvPoint2<double> const& a, HvPoint2<double> const& b,
                            HvExtent2<double> const& clip);

#endif
