// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The inverse of a curve that strictly rises or strictly falls.

#ifndef HV_FCURVE_INTERNAL_MONOTONE_INVERSE_H
#define HV_FCURVE_INTERNAL_MONOTONE_INVERSE_H

#include <cmath>

/// A value this close to a key's answers the key.
constexpr double kKeyValueTolerance = 1e-7;

/// The parameter at which the line from key i to the next has `value`.
template <class Curve>
double CFCChord_Inverse(Curve const& curve, unsigned int i, double value)
{
    double const p = curve.Parameter(i);
    double const y = curve.RightValueOf(i);
    return p + (curve.Parameter(i + 1) - p) / (curve.RightValueOf(i + 1) - y) * (value - y);
}

/// Finds where a bijective curve has `value`; beyond its range the nearer end. 0 for NaN.
/// `inverseOfSegment(i)` gives the parameter on the segment after key i, whose end values `value`
/// lies strictly between.
template <class Curve, class InverseOfSegment>
int CFCMonotone_Inverse(Curve const& curve, double value, double& parameter,
                        InverseOfSegment const& inverseOfSegment)
{
    unsigned int const last = curve.NumKeys() - 1;
    unsigned int const lowest = curve.RightValueOf(0) < curve.RightValueOf(last) ? 0 : last;
    unsigned int const highest = last - lowest;
    if (value < curve.RightValueOf(lowest)) {
        parameter = curve.Parameter(lowest);
        return 1;
    }
    if (value > curve.RightValueOf(highest)) {
        parameter = curve.Parameter(highest);
        return 1;
    }
    for (unsigned int i = 0; i <= last; ++i) {
        double const here = curve.RightValueOf(i);
        if (i < last) {
            double const there = curve.RightValueOf(i + 1);
            if ((here < value && value < there) || (there < value && value < here)) {
                parameter = inverseOfSegment(i);
                return 1;
            }
        }
        if (std::fabs(here - value) < kKeyValueTolerance) {
            parameter = curve.Parameter(i);
            return 1;
        }
    }
    return 0;
}

#endif
