// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which repetitions of a cycling curve a view shows.

#ifndef HV_FCURVE_INTERNAL_CYCLE_RANGE_H
#define HV_FCURVE_INTERNAL_CYCLE_RANGE_H

#include <hv/foundation/HvExtent2.h>

class HvTransfo4;

/// The cycles `first` to `last`; none when `first` is above `last`. Whole numbers kept as double,
/// because a narrow key range under a wide view has more cycles than an integer holds.
struct HvCycleRange {
    double first;
    double last;
};

/// Narrows a range of cycles to those that may show in the clip.
///
/// @param hull     of the cycle that is not moved, in curve space; the others are moved by
/// multiples of
///                 (w, d).
/// @param clip     in view space.
/// @param segments of one cycle; each gives at least one vertex.
///
/// Throws std::bad_alloc when the visible cycles have more vertices than an array can hold, and
/// when numbers are so large that neighbouring cycles fall on one double. Cost: constant, by
/// division: the image of the hull moves by the same vector from cycle to cycle.
HvCycleRange HvCycleRange_Visible(HvCycleRange range, HvExtent2<double> const& hull, double w,
                                  double d, HvTransfo4 const& transfo,
                                  HvExtent2<double> const& clip, unsigned int segments);

#endif
