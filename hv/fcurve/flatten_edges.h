// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The edges of a flattened curve: clipped to a view and appended to three parallel arrays.

#ifndef HV_FCURVE_FLATTEN_EDGES_H
#define HV_FCURVE_FLATTEN_EDGES_H

#include <hv/foundation/HvExtent2.h>
#include <hv/platform/HvExport.h>

class HvBoolArray;
class HvPoint2dArray;
class HvPointTagArray;

/// Clips the edge a to b to the closed rectangle `clip` and appends what is left. An edge that
/// starts exactly at the last point continues its run; otherwise that run ends, with tag 2 and flag
/// 1, and a new one starts. An edge that misses, or has an end that is not finite, adds nothing.
///
/// @param a, b  changed to the clipped ends, on a miss as they were; they may lie in `points`.
/// @param clip  in state Empty nothing is added, in state WholePlane nothing is clipped.
HV_API void ClipAndAddLineSegment(HvPoint2<double>& a, HvPoint2<double>& b,
                                  HvExtent2<double> const& clip, HvPoint2dArray& points,
                                  HvPointTagArray& tags, HvBoolArray& flags);

/// The same for an edge that is a jump of the curve: the vertex where it starts gets flag 0, and so
/// does the end of a run that it does not continue.
HV_API void ClipAndAddDiscontinuity(HvPoint2<double>& a, HvPoint2<double>& b,
                                    HvExtent2<double> const& clip, HvPoint2dArray& points,
                                    HvPointTagArray& tags, HvBoolArray& flags);

#endif
