// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Inverting a polynomial of degree three where it rises or falls throughout.

#ifndef HV_CONTROL_INTERNAL_MONOTONE_CUBIC_H
#define HV_CONTROL_INTERNAL_MONOTONE_CUBIC_H

/// A polynomial of one coordinate of a cubic Bezier segment, less its first value:
/// ((a3 s + a2) s + a1) s. The missing constant keeps small differences of large coordinates.
struct HvCubicTerms {
    double a1;
    double a2;
    double a3;

    static HvCubicTerms Of(double p0, double p1, double p2, double p3)
    {
        double const e1 = 3 * (p1 - p0);
        double const e2 = 3 * (p2 - p1);
        return {e1, e2 - e1, (p3 - p0) - e2};
    }
    double At(double s) const { return ((a3 * s + a2) * s + a1) * s; }
    double SlopeAt(double s) const { return (3 * a3 * s + 2 * a2) * s + a1; }
};

/// The s of [low, high] where `terms` has `value`, to the last bits of s; the nearer end when it
/// has not. The polynomial must not turn between `low` and `high`.
///
/// @param guess  where the search begins.
///
/// Cost: at most kMaxSolveSteps evaluations, as a rule three to five. Source: bracketed Newton;
/// Press et al., Numerical Recipes, 2007, 9.4.
double HvMonotoneCubic_Solve(HvCubicTerms const& terms, double value, double low, double high,
                             double guess);

#endif
