// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvComposedSpan: one piece of a driven curve over one piece of its controller.

#ifndef HV_CONTROL_INTERNAL_HVCOMPOSEDSPAN_H
#define HV_CONTROL_INTERNAL_HVCOMPOSEDSPAN_H

#include <hv/control/internal/HvCurvePiece.h>

/// d(c(t)) for t of [from, to], where c stays in one piece, rises or falls or is constant, and its
/// values stay in one piece of d. Smooth inside; at the ends the limits.
class HvComposedSpan {
public:
    using Point = HvPoint2<double>;

    /// @param fromValue, toValue  c at the two ends; told because where c crosses a key of d the
    ///                            key's own parameter is exact and c found there is not.
    HvComposedSpan(HvCurvePiece const& controller, HvCurvePiece const& driven, double from,
                   double to, double fromValue, double toValue);

    double From() const { return from_; }
    double To() const { return to_; }

    double Value(double t) const { return driven_.Value(ControllerValue(t)); }
    /// The derivative by the chain rule; where a factor is infinite and another 0, a difference
    /// quotient of the span.
    double Slope(double t) const;

    /// What the span is as a whole: Constant or Line, Cubic when it is the one cubic that
    /// CubicBetween gives, and Sampled when it has no such form.
    HvCurvePiece::Shape GetShape() const { return shape_; }
    /// Whether both curves are given by polynomials here, and not by evaluation alone.
    bool IsSmooth() const;
    /// Of a span of shape Cubic, the control points of a part of it.
    void CubicBetween(double from, double to, Point* P) const;

    /// Handles, as vectors from the two ends, that have the span's direction there and the length
    /// that the cubic of one of the two curves suggests. Not finite where there is none.
    struct Handles {
        Point first;
        Point last;
    };
    Handles EvenHandles(double from, double to) const;
    Handles ControllerHandles(double from, double to) const;
    Handles DrivenHandles(double from, double to) const;

private:
    double ControllerValue(double t) const;
    void DrivenCubic(double fromValue, double toValue, Point* P) const;

    HvCurvePiece const& controller_;
    HvCurvePiece const& driven_;
    HvCurvePiece::Shape shape_;
    double from_;
    double to_;
    double fromValue_;
    double toValue_;
};

#endif
