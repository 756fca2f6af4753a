// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A cubic between two knots.

#ifndef HV_BEZIER_INTERNAL_SPLINE_PIECE_H
#define HV_BEZIER_INTERNAL_SPLINE_PIECE_H

#include <cmath>

/// A value and a derivative at a place.
struct HvSplineKnot {
    double x;
    double y;
    double derivative;
};

/// How much of the way from the left to the right value is done at 0 <= t <= 1.
inline double HvSplinePiece_ValueBlend(double t)
{
    return t * t * (3.0 - 2.0 * t);
}

/// What a left derivative of 1 over the piece contributes at t; the right one contributes the
/// negative of it at 1 - t.
inline double HvSplinePiece_DerivativeBlend(double t)
{
    return t * (1.0 - t) * (1.0 - t);
}

/// The value at x of the cubic from a to b; exactly that of a knot at the knot.
inline double HvSplinePiece_Eval(HvSplineKnot const& a, HvSplineKnot const& b, double x)
{
    if (x == a.x || x == b.x) {
        return x == a.x ? a.y : b.y;
    }
    double const h = b.x - a.x;
    double const t = (x - a.x) / h;
    double const blend = HvSplinePiece_ValueBlend(t);
    double const rise = b.y - a.y;
    // Values at the two ends of the number range differ by more than it holds.
    double const value =
        std::isfinite(rise) ? a.y + rise * blend : a.y * (1.0 - blend) + b.y * blend;
    return value + h * (a.derivative * HvSplinePiece_DerivativeBlend(t) -
                        b.derivative * HvSplinePiece_DerivativeBlend(1.0 - t));
}

#endif
