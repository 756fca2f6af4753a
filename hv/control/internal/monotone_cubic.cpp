// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Bracketed Newton on a cubic.

#include <hv/control/internal/monotone_cubic.h>

#include <cmath>

namespace {

// Halving alone takes 53 steps from 1 to the last bit of s; the rest is room for steps of Newton
// that did not help.
constexpr int kMaxSolveSteps = 100;

// A step of this length no longer changes an s of 0 to 1.
constexpr double kStepTolerance = 1e-16;

}  // namespace

double HvMonotoneCubic_Solve(HvCubicTerms const& terms, double value, double low, double high,
                             double guess)
{
    double const sign = terms.At(high) < terms.At(low) ? -1.0 : 1.0;
    auto const excess = [&](double s) { return sign * (terms.At(s) - value); };
    if (!(excess(low) < 0)) {
        return low;
    }
    if (!(excess(high) > 0)) {
        return high;
    }
    double s = guess > low && guess < high ? guess : low + (high - low) * 0.5;
    double previousStep = high - low;
    for (int k = 0; k < kMaxSolveSteps; ++k) {
        double const f = excess(s);
        if (f == 0) {
            break;
        }
        (f < 0 ? low : high) = s;
        // A step of Newton is taken when it stays in the bracket and is at most half as long as the
        // one before; otherwise the bracket is halved.
        double const newton = s - f / (sign * terms.SlopeAt(s));
        bool const isGood =
            newton > low && newton < high && std::fabs(newton - s) <= 0.5 * previousStep;
        double const next = isGood ? newton : low + (high - low) * 0.5;
        previousStep = std::fabs(next - s);
        s = next;
        if (previousStep <= kStepTolerance) {
            break;
        }
    }
    return s;
}
