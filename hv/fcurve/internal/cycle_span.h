// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The repetitions of a cycling curve that an interval touches.

#ifndef HV_FCURVE_INTERNAL_CYCLE_SPAN_H
#define HV_FCURVE_INTERNAL_CYCLE_SPAN_H

#include <hv/foundation/array_capacity.h>

#include <cmath>
#include <new>

/// p folded into the key range [a, b] of a cycle.
inline double HvCycle_Fold(double p, double a, double b)
{
    double q = p;
    if (p > b) {
        q = std::fmod(p - a, b - a) + a;
    } else if (a > p) {
        q = b - std::fmod(a - p, b - a);
    }
    return q > b ? b : a > q ? a : q;
}

/// Cycles `first` to `last`, the key range itself being number 0. Whole numbers kept as double,
/// because a narrow key range in a wide interval is repeated more often than an integer counts.
struct HvCycleSpan {
    double first;
    double last;
};

/// Beyond this, neighbouring whole numbers are no longer neighbouring doubles: 2^53.
constexpr double kHvLargestCycle = 9007199254740992.0;

/// The cycles of [from, to], from <= to. Where two cycles meet, `from` belongs to the later one and
/// `to` to the earlier one, so that neither end brings a cycle of no length.
///
/// Throws std::bad_alloc when the cycles, of `numKeys` keys each, have more keys than an array can
/// hold, and when numbers are so large that neighbouring cycles fall on one double.
inline HvCycleSpan HvCycleSpan_Of(double from, double to, double firstKey, double lastKey,
                                  unsigned int numKeys)
{
    double const w = lastKey - firstKey;
    double const first = std::floor((from - firstKey) / w);
    double const end = std::ceil((to - firstKey) / w) - 1;
    double const last = end > first ? end : first;
    bool const isCountable = std::fabs(first) < kHvLargestCycle && std::fabs(end) < kHvLargestCycle;
    if (!isCountable || !((last - first + 1) * numKeys + 2 <= kHvArrayMaxCapacity)) {
        throw std::bad_alloc();
    }
    return {first, last};
}

#endif
