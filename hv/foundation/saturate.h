// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The only way from a double to an integer: a bare conversion is undefined outside the integer's
// range.

#ifndef HV_FOUNDATION_SATURATE_H
#define HV_FOUNDATION_SATURATE_H

#include <limits>

/// `value` cut toward zero to an integer of type I; beyond the range of I its nearer limit, for NaN
/// 0.
template <class I>
constexpr I HvSaturate_To(double value)
{
    // The limits widened to double may round up to one above the range, so the comparison is
    // closed.
    constexpr double kLow = static_cast<double>(std::numeric_limits<I>::min());
    constexpr double kHigh = static_cast<double>(std::numeric_limits<I>::max());
    if (value >= kHigh) {
        return std::numeric_limits<I>::max();
    }
    if (value <= kLow) {
        return std::numeric_limits<I>::min();
    }
    return value == value ? static_cast<I>(value) : I(0);
}

#endif
