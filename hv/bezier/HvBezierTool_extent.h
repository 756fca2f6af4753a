// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A bounding box of a cubic, tighter than that of its control points.

#ifndef HV_BEZIER_HVBEZIERTOOL_EXTENT_H
#define HV_BEZIER_HVBEZIERTOOL_EXTENT_H

#include <hv/foundation/HvExtent2.h>

/// Grows an extent so that it holds a cubic.
///
/// The cubic is quartered and the extent grows by the control points of the four parts: the box is
/// closer to the curve than that of `cubic`, and may still be larger than the curve.
///
/// @param extent     the whole plane stays what it is; the empty one starts anew; NaN coordinates
///                   are ignored in an ordinary one.
/// @param cubic      four points, P0 to P3.
/// @param skipFirst  not 0: P0 is left out, for a curve that goes on from one already held.
HV_API void HvBezierTool_AugmentExtentWithCubic2dTightExtent(HvExtent2<double>& extent,
                                                             HvPoint2<double> const* cubic,
                                                             int skipFirst);

/// The form in float: all averages are computed and rounded in float.
HV_API void HvBezierTool_AugmentExtentWithCubic2fTightExtent(HvExtent2<float>& extent,
                                                             HvPoint2<float> const* cubic,
                                                             int skipFirst);

#endif
