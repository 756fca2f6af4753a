// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Folding a parameter into the key range of a curve that cycles relatively.

#ifndef HV_FCURVE_INTERNAL_RELATIVE_FOLD_H
#define HV_FCURVE_INTERNAL_RELATIVE_FOLD_H

#include <hv/foundation/saturate.h>

#include <cmath>

/// A parameter folded by the relative cycle method, and how many cycles it came from the first.
struct CFCRelativeFold {
    double parameter;
    int cycle;
};

/// Folds p into [a, b]. Where cycles meet, p belongs to the end of the earlier one: the cycle is
/// ceil(t) - 1 and the parameter b.
inline CFCRelativeFold CFCRelativeFold_EndsAtLast(double p, double a, double b)
{
    double const span = b - a;
    double const t = (p - a) / span;
    double const d = p > a ? (t - std::floor(t)) * span : (std::ceil(t) - t) * span;
    double q = b;
    if (d != 0) {
        q = p > a ? a + d : b - d;
        q = q > b ? b : a > q ? a : q;
    }
    return {q, HvSaturate_To<int>(std::ceil(t) - 1)};
}

/// The same, but where cycles meet p belongs to the start of the later one.
inline CFCRelativeFold CFCRelativeFold_StartsAtFirst(double p, double a, double b)
{
    double const span = b - a;
    double const t = (p - a) / span;
    double const d = p < a ? (std::ceil(t) - t) * span : (t - std::floor(t)) * span;
    double q = a;
    if (d != 0) {
        q = p < a ? b - d : a + d;
        q = q > b ? b : a > q ? a : q;
    }
    return {q, HvSaturate_To<int>(std::floor(t))};
}

#endif
