// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvCurveComposer: the walk along a controller through a driven curve.

#ifndef HV_CONTROL_INTERNAL_HVCURVECOMPOSER_H
#define HV_CONTROL_INTERNAL_HVCURVECOMPOSER_H

#include <hv/control/internal/HvCurvePieces.h>
#include <hv/control/internal/HvSpanFitter.h>

/// Walks along a controller c, cuts it where it turns and where its value crosses a key of the
/// driven curve d, and appends what lies between two cuts as a span.
///
///     c's pieces:  |-----------------|--------------
///     turns:       |-------^---------|----^---------
///     keys of d:   |---x---^-x----x--|-x--^----x----
class HvCurveComposer {
public:
    HvCurveComposer(HvCurvePieces const& controller, HvCurvePieces const& driven)
        : controller_(controller), driven_(driven)
    {
    }

    /// The composed curve over [from, to]; null when a value in it is not finite. Throws
    /// std::bad_alloc before it walks through more pieces than an array holds.
    std::unique_ptr<HvStdFCurve> Compose(double from, double to, double tolerance) const;

    /// The derivative of d(c(t)) to the left or to the right of t; not finite where there is none.
    double Slope(double t, HvCurvePieces::Side side) const;

private:
    struct Walk;

    void AddPiece(Walk& walk, HvCurvePiece const& piece, double from, double to) const;
    void AddMonotone(Walk& walk, HvCurvePiece const& piece, double from, double to,
                     double fromValue, double toValue) const;

    HvCurvePieces const& controller_;
    HvCurvePieces const& driven_;
};

#endif
