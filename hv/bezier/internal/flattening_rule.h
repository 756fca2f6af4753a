// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How finely a curve is cut: the two counts that every flattening and locating operation uses.

#ifndef HV_BEZIER_INTERNAL_FLATTENING_RULE_H
#define HV_BEZIER_INTERNAL_FLATTENING_RULE_H

#include <hv/foundation/array_capacity.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

// A curve is cut in two stages.
//
//   1. Halving. The third difference of a piece shrinks by 8 with every halving, so the number of
//      base-8 digits of (third difference / tolerance) tells how many levels of midpoint
//      subdivision bring it down to the tolerance; from there on the second differences are nearly
//      constant.
//   2. Stepping. The distance of a chord from its arc shrinks by 4 when the steps are halved, so
//   the
//      number of base-4 digits of (c * deviation), with c = n (n - 1) / 8 / tolerance, is the
//      number of times that the step count of a piece is doubled.

/// From this ratio on the digits of an integer would not fit 32 bits; the ratio itself is
/// quartered.
constexpr double kHvFlatteningDigitLimit = 2147483647.0;

/// Digits of `value` written in base 2^`bitsPerDigit`; 0 for 0.
inline unsigned int HvFlattening_Digits(std::uint32_t value, unsigned int bitsPerDigit)
{
    unsigned int digits = 0;
    for (; value != 0; value >>= bitsPerDigit) {
        ++digits;
    }
    return digits;
}

/// The low 32 bits of `value` cut to a 64-bit integer; 0 for NaN and for what 64 bits do not hold.
inline std::uint32_t HvFlattening_LowWord(double value)
{
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (!(std::fabs(value) < kTwoTo63)) {
        return 0;
    }
    return static_cast<std::uint32_t>(HvSaturate_To<std::int64_t>(value) & 0xffffffff);
}

/// Base-8 digits of the rounded `thirdDifferenceOverTolerance`, at most 11. A result of 2 or more
/// asks for one level of midpoint subdivision less than it says; 0 and 1 ask for none.
inline unsigned int HvFlattening_Levels(double thirdDifferenceOverTolerance)
{
    return HvFlattening_Digits(HvFlattening_LowWord(thirdDifferenceOverTolerance + 0.5), 3);
}

/// How often the step count of a piece is doubled, for v = c * deviation: the base-4 digits of the
/// rounded v, and for a v beyond 31 bits the quarterings that bring it to 1. At most 512; 0 for a
/// negative v or NaN.
inline unsigned int HvFlattening_Doublings(double v)
{
    if (!(v >= kHvFlatteningDigitLimit)) {
        return HvFlattening_Digits(HvSaturate_To<std::uint32_t>(v + 0.5), 2);
    }
    // An infinite v would be quartered for ever.
    unsigned int doublings = 0;
    for (v = std::min(v, std::numeric_limits<double>::max()); v > 1.0; v *= 0.25) {
        ++doublings;
    }
    return doublings;
}

/// 2^`doublings`, or a count that no array can hold where that passes 63 bits.
inline std::uint64_t HvFlattening_Steps(unsigned int doublings)
{
    return std::uint64_t{1} << std::min(doublings, 63u);
}

#endif
