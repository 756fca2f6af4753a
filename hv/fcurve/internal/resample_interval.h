// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which stretches of the key range a resampling covers, and how many samples it takes: the same for
// every kind of curve.

#ifndef HV_FCURVE_INTERNAL_RESAMPLE_INTERVAL_H
#define HV_FCURVE_INTERNAL_RESAMPLE_INTERVAL_H

#include <hv/foundation/array_capacity.h>
#include <hv/foundation/saturate.h>

#include <cmath>
#include <new>

/// A sample nearer than this to a key is that key. Larger would lose samples of fine curves,
/// smaller leaves pairs of keys that an editor cannot tell apart.
constexpr double kHvResampleKeyDistance = 1e-7;

/// Whether [from, to] can be sampled with `step`: finite, not turned round, a step above 0. An
/// infinite step gives the two ends alone.
inline bool HvResample_IsInterval(double from, double to, double step)
{
    return std::isfinite(to - from) && from <= to && step > 0;
}

/// Whole steps in [from, to]. Throws std::bad_alloc when they are more than an array can hold.
inline unsigned int HvResample_CountSteps(double from, double to, double step)
{
    double const count = std::floor((to - from) / step);
    if (!(count < kHvArrayMaxCapacity)) {
        throw std::bad_alloc();
    }
    return HvSaturate_To<unsigned int>(count);
}

/// One or two stretches.
struct HvResampleIntervals {
    double from[2];
    double to[2];
    unsigned int count;
};

/// The stretches of the key range that [from, to] covers on a curve that cycles; on others, and
/// with `ignoreExtrapolation`, the interval as it is.
///
///     less than a cycle, over a border:   f==to'----from'==l      else all of f to l
template <class Impl>
HvResampleIntervals HvResample_Fold(Impl const& curve, double from, double to,
                                    int ignoreExtrapolation)
{
    HvResampleIntervals const asItIs{{from, 0}, {to, 0}, 1};
    if (ignoreExtrapolation || !curve.Cycles() || !std::isfinite(to - from) || !(from <= to)) {
        return asItIs;
    }
    double const first = curve.FirstParameter();
    double const last = curve.LastParameter();
    double const w = last - first;
    double const c0 = std::floor((from - first) / w);
    double const c1 = std::ceil((to - first) / w) - 1;
    if (c0 < c1 && to - from <= w) {
        return {{first, curve.FoldParameter(from)}, {curve.FoldParameter(to), last}, 2};
    }
    if (c0 < c1) {
        return {{first, 0}, {last, 0}, 1};
    }
    // Folding alone would put a border at one end of the range whatever side the interval lies on.
    auto const folded = [&](double x) {
        double const inside = x - c0 * w;
        return curve.FoldParameter(inside < first ? first : inside > last ? last : inside);
    };
    return {{folded(from), 0}, {folded(to), 0}, 1};
}

#endif
