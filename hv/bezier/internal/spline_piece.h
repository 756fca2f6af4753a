// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A cubic between two knots.

#ifndef HV_BEZIER_INTERNAL_SPLINE_PIECE_H
#define HV_BEZIER_INTERNAL_SPLINE_PIECE_H

#include <hv/bezier/internal/spline_value.h>

/// A value and a derivative at a place.
template <class Value>
struct HvSplineKnot {
    double x;
    Value y;
    Value derivative;
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
template <class Value>
Value HvSplinePiece_Eval(HvSplineKnot<Value> const& a, HvSplineKnot<Value> const& b, double x)
{
    if (x == a.x || x == b.x) {
        return x == a.x ? a.y : b.y;
    }
    double const h = b.x - a.x;
    double const t = (x - a.x) / h;
    double const blend = HvSplinePiece_ValueBlend(t);
    Value const rise = b.y - a.y;
    // Values at the two ends of the number range differ by more than it holds.
    Value const value =
        HvSplineValue_IsFinite(rise) ? a.y + rise * blend : a.y * (1.0 - blend) + b.y * blend;
    Value const bend = a.derivative * HvSplinePiece_DerivativeBlend(t) -
                       b.derivative * HvSplinePiece_DerivativeBlend(1.0 - t);
    return value + bend * h;
}

#endif
