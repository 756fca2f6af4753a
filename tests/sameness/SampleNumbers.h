// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The numbers that fixed inputs are made of.

#ifndef TESTS_SAMENESS_SAMPLENUMBERS_H
#define TESTS_SAMENESS_SAMPLENUMBERS_H

#include <hv/foundation/HvPoint2.h>

#include <cstdint>

/// SplitMix64 (Steele, Lea, Flood 2014): the same numbers everywhere, made of integer operations
/// and exact scalings, which the distributions of the standard library do not promise. A call that
/// draws more than one number draws them in statements of their own, or in braces: the order in
/// which arguments in parentheses are worked out is the compiler's.
class SampleNumbers {
public:
    explicit SampleNumbers(std::uint64_t seed) : state_(seed) {}

    /// A number of [0, 1), a multiple of 2^-32.
    double Next()
    {
        state_ += 0x9e3779b97f4a7c15;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
        z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
        return static_cast<double>((z ^ (z >> 31)) >> 32) * 0x1p-32;
    }
    double In(double low, double high) { return low + (high - low) * Next(); }
    /// A whole number of [0, count).
    unsigned int Below(unsigned int count)
    {
        return static_cast<unsigned int>(Next() * static_cast<double>(count));
    }
    HvPoint2<float> PointIn(double low, double high)
    {
        double const x = In(low, high);
        double const y = In(low, high);
        return {static_cast<float>(x), static_cast<float>(y)};
    }

private:
    std::uint64_t state_;
};

#endif
