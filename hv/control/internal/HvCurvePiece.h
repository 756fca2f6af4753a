// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvCurvePiece: a stretch of a function curve without keys inside.

#ifndef HV_CONTROL_INTERNAL_HVCURVEPIECE_H
#define HV_CONTROL_INTERNAL_HVCURVEPIECE_H

#include <hv/control/internal/monotone_cubic.h>
#include <hv/foundation/HvPoint2.h>

class HvBaseFCurve;

/// A function over [First(), Last()] that is constant, a line, a cubic Bezier segment, or known
/// from evaluating a curve alone. At its two ends it has the limits from inside, whatever value the
/// curve has there. Arguments outside are taken at the nearer end.
class HvCurvePiece {
public:
    using Point = HvPoint2<double>;

    enum Shape : int {
        Constant,
        Line,
        Cubic,
        Sampled
    };

    /// Most turns that Turns() can give.
    static constexpr int kMaxTurns = 32;

    static HvCurvePiece OfConstant(double first, double last, double value);
    static HvCurvePiece OfLine(Point const& P0, Point const& P3);
    /// A cubic whose x rises; shape Line or Constant where the points lie so.
    static HvCurvePiece OfCubic(Point const* P);
    /// The curve's values between the two ends, less `offset` already in the ends.
    static HvCurvePiece OfCurve(HvBaseFCurve const& curve, Point const& P0, Point const& P3);

    Shape GetShape() const { return shape_; }
    double First() const { return P_[0].x; }
    double Last() const { return P_[3].x; }

    double Value(double x) const;
    /// The derivative at x; infinite where the tangent is upright, and NaN where there is none.
    double Slope(double x) const;
    /// Where between `from` and `to` the piece stops rising or falling, in order: x in `turns`, at
    /// most kMaxTurns. Returns how many.
    int Turns(double from, double to, double* turns) const;
    /// The x of [from, to] where the piece has `value`; it must rise or fall between the two.
    double FindValue(double value, double from, double to) const;
    /// The control points of the part from `from` to `to` of a cubic.
    void CubicBetween(double from, double to, Point* P) const;

private:
    double FindParameter(double x) const;
    double CubicSlope(double s) const;
    double SampledSlope(double x) const;
    int SampledTurns(double from, double to, double* turns) const;

    Shape shape_ = Constant;
    Point P_[4];
    HvCubicTerms x_{0, 0, 0};  // of a cubic
    HvCubicTerms y_{0, 0, 0};
    bool isEven_ = false;  // whether x_ is a line
    HvBaseFCurve const* curve_ = nullptr;
};

#endif
