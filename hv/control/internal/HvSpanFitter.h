// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvSpanFitter: a composed span as few cubic segments.

#ifndef HV_CONTROL_INTERNAL_HVSPANFITTER_H
#define HV_CONTROL_INTERNAL_HVSPANFITTER_H

#include <hv/control/internal/HvComposedCurve.h>
#include <hv/control/internal/HvComposedSpan.h>

/// Appends a span to a curve, as the constant, line or cubic that it is, otherwise as cubics that
/// keep within a tolerance of it.
///
/// A cubic has the span's values and directions at its ends; what is free are the lengths of its
/// two handles. Handles of a third of the stretch, and those that either curve's own cubic
/// suggests, are tried first, then the best of them is improved by least squares over the two
/// lengths. Where that is not enough, the stretch is cut into as many equal parts as the error
/// asks for, whose number falls with the fifth root: the error of such a fit shrinks with the
/// fourth to sixth power of the length.
class HvSpanFitter {
public:
    HvSpanFitter(HvComposedCurve& curve, double tolerance) : curve_(curve), tolerance_(tolerance) {}

    void Add(HvComposedSpan const& span);

private:
    using Point = HvPoint2<double>;

    /// A cubic with its greatest distance, in values, from the span.
    struct Fit {
        Point P[4];
        double error;
    };

    void AddFitted(HvComposedSpan const& span, double from, double to);
    Fit BestFit(HvComposedSpan const& span, double from, double to) const;
    void Try(HvComposedSpan const& span, HvComposedSpan::Handles const& handles, Fit& best) const;
    void Improve(HvComposedSpan const& span, Fit& best) const;
    double Allowed(double from, double to, double fromValue, double toValue) const;

    HvComposedCurve& curve_;
    double tolerance_;
};

#endif
