// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The round numbers along an axis. Source: P. S. Heckbert, Nice Numbers for Graph Labels, Graphics
// Gems, 1990, without its rounding of the range itself.

#include <tools/number_text.h>
#include <tools/plot/NiceTicks.h>

#include <algorithm>
#include <cmath>

namespace {

/// How far a multiple may lie outside the range, in steps: rounding of the range's ends.
constexpr double kSlack = 1e-9;
/// A range below this share of its numbers cannot be told apart in a label.
constexpr double kSmallestShare = 1e-9;
/// From this exponent on, and below its negative, labels are written as powers of ten.
constexpr int kLargestPlainExponent = 6;
constexpr int kSmallestPlainExponent = -6;

}  // namespace

NiceTicks::NiceTicks(double low, double high, int most)
{
    double const wanted = (high - low) / most;
    exponent_ = static_cast<int>(std::clamp(std::floor(std::log10(wanted)), -320.0, 308.0));
    double const power = std::pow(10.0, exponent_);
    // 10 is the last resort of the rounding of `wanted` above; it then always fits.
    for (double const factor : {1.0, 2.0, 5.0, 10.0}) {
        step_ = factor * power;
        if (step_ >= wanted * (1.0 - kSlack)) {
            exponent_ += factor == 10.0 ? 1 : 0;
            break;
        }
    }
    first_ = std::ceil(low / step_ - kSlack);
    double const last = std::floor(high / step_ + kSlack);
    count_ = static_cast<int>(std::clamp(last - first_ + 1.0, 0.0, most + 1.0));
}

double NiceTicks::Value(int i) const
{
    return (first_ + i) * step_;
}

std::string NiceTicks::Label(int i) const
{
    double const value = Value(i);
    double const largest = std::max(std::fabs(Value(0)), std::fabs(Value(count_ - 1)));
    int const largestExponent =
        largest > 0.0 ? static_cast<int>(std::floor(std::log10(largest))) : 0;
    if (largestExponent >= kLargestPlainExponent || exponent_ < kSmallestPlainExponent) {
        // As many digits as reach from the largest number down to the step.
        return NumberText_Rounded(value, std::clamp(largestExponent - exponent_ + 1, 1, 15));
    }
    return NumberText_Fixed(value, std::max(0, -exponent_));
}

void NiceTicks_Widen(double& low, double& high)
{
    double const magnitude = std::max(std::fabs(low), std::fabs(high));
    double const least = std::max(magnitude * kSmallestShare, 1e-12);
    if (high - low < least) {
        double const middle = low + (high - low) / 2;
        double const half = magnitude > 0.0 ? std::max(magnitude * 0.1, 1e-11) : 1.0;
        low = middle - half;
        high = middle + half;
    }
}
