// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The values of stepped curves: how a double becomes one, and their arithmetic.

#ifndef HV_FCURVE_INTERNAL_STEPPED_VALUE_H
#define HV_FCURVE_INTERNAL_STEPPED_VALUE_H

#include <hv/foundation/saturate.h>

#include <cmath>
#include <limits>

// Sums and products are made in 64 bits, where those of two 32-bit values and a 32-bit cycle number
// always fit, and cut to the value's range at the end.

/// The value that a number stands for where no number is refused: true is exactly 1; an integer is
/// cut toward zero and saturates.
template <class T>
T CFCSteppedValue_From(double number);
template <>
inline bool CFCSteppedValue_From<bool>(double number)
{
    return number == 1.0;
}
template <>
inline int CFCSteppedValue_From<int>(double number)
{
    return HvSaturate_To<int>(number);
}

/// Whether a number is a value of the curve exactly.
template <class T>
bool CFCSteppedValue_IsExact(double number);
template <>
inline bool CFCSteppedValue_IsExact<bool>(double number)
{
    return number == 0.0 || number == 1.0;
}
template <>
inline bool CFCSteppedValue_IsExact<int>(double number)
{
    return number == std::floor(number) && number >= std::numeric_limits<int>::min() &&
           number <= std::numeric_limits<int>::max();
}

/// A sum as a value: any but 0 is true; an integer saturates.
template <class T>
T CFCSteppedValue_Narrow(long long sum);
template <>
inline bool CFCSteppedValue_Narrow<bool>(long long sum)
{
    return sum != 0;
}
template <>
inline int CFCSteppedValue_Narrow<int>(long long sum)
{
    constexpr long long kLow = std::numeric_limits<int>::min();
    constexpr long long kHigh = std::numeric_limits<int>::max();
    return static_cast<int>(sum < kLow ? kLow : sum > kHigh ? kHigh : sum);
}

/// What a relative cycle adds to the values.
inline long long CFCSteppedValue_Offset(bool first, bool last)
{
    return first != last ? 1 : 0;
}
inline long long CFCSteppedValue_Offset(int first, int last)
{
    return static_cast<long long>(last) - first;
}

/// The value mirrored about zero; a boolean inverted.
inline bool CFCSteppedValue_Mirrored(bool value)
{
    return !value;
}
inline int CFCSteppedValue_Mirrored(int value)
{
    return CFCSteppedValue_Narrow<int>(-static_cast<long long>(value));
}

/// A real scale or offset as the whole number that stepped arithmetic uses.
inline int CFCSteppedValue_Rounded(double number)
{
    return HvSaturate_To<int>(std::floor(number + 0.5));
}

#endif
