// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which repetitions of a cycling curve a view shows.

#include <hv/fcurve/internal/cycle_range.h>

#include <hv/foundation/array_capacity.h>
#include <hv/rotation/HvTransfo4.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// Beyond this, neighbouring whole numbers are no longer neighbouring doubles: 2^53.
constexpr double kLargestCycle = 9007199254740992.0;

/// Narrows `range` to the c for which [low, high] + c * step meets [clipLow, clipHigh]. One cycle
/// more on either side covers the rounding of the division.
void NarrowOnAxis(HvCycleRange& range, double low, double high, double step, double clipLow,
                  double clipHigh)
{
    if (step == 0) {
        return;
    }
    double const c0 = (clipLow - high) / step;
    double const c1 = (clipHigh - low) / step;
    double const lower = std::floor(std::min(c0, c1)) - 1;
    double const upper = std::ceil(std::max(c0, c1)) + 1;
    // A NaN limit narrows nothing.
    if (lower > range.first) {
        range.first = lower;
    }
    if (upper < range.last) {
        range.last = upper;
    }
}

}  // namespace

HvCycleRange HvCycleRange_Visible(HvCycleRange range, HvExtent2<double> const& hull, double w,
                                  double d, HvTransfo4 const& transfo,
                                  HvExtent2<double> const& clip, unsigned int segments)
{
    constexpr HvCycleRange kNone{1, 0};
    if (clip.state == HvExtent2<double>::Empty || !(range.first <= range.last)) {
        return kNone;
    }
    if (clip.state == HvExtent2<double>::Ordinary) {
        HvExtent2<double> const view = transfo.Map(hull);
        HvPoint2<double> const step =
            transfo.Map(HvPoint2<double>(w, d)) - transfo.Map(HvPoint2<double>());
        NarrowOnAxis(range, view.min.x, view.max.x, step.x, clip.min.x, clip.max.x);
        NarrowOnAxis(range, view.min.y, view.max.y, step.y, clip.min.y, clip.max.y);
        if (!(range.first <= range.last)) {
            return kNone;
        }
    }
    double const vertices = (range.last - range.first + 1) * segments;
    if (!(std::fabs(range.first) < kLargestCycle && std::fabs(range.last) < kLargestCycle &&
          vertices <= kHvArrayMaxCapacity)) {
        throw std::bad_alloc();
    }
    return range;
}
