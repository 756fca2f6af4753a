// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the splines of numbers and of points share.

#ifndef HV_BEZIER_HVSPLINE_H
#define HV_BEZIER_HVSPLINE_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint3dArray.h>

/// A piecewise cubic function y(x) over strictly rising knots, with a value and a derivative at
/// each: the shape behind HvSpline1d, HvSpline2d and HvSpline3d. T, the type of y, is double or a
/// point of doubles, whose coordinates then have the same knots.
///
/// A new spline has no knots. Not thread-safe: several threads may read one spline, not write it.
template <class T>
class HV_API HvSpline : public HvAllocated {
public:
    /// How a spline is fitted.
    enum Kind {
        ContinuousDerivative = 20  ///< left and right derivatives are equal at every knot
    };

    /// Replaces the spline by one that meets every sample within a tolerance, with few knots.
    ///
    /// The knots are samples and the spline goes through them; first and last sample are knots.
    /// Where the samples have a corner or a jump, knots at neighbouring samples stand for it.
    ///
    /// @param x          strictly rising.
    /// @param y          as many values as `x`.
    /// @param tolerance  greatest distance of Eval(x[i]) from y[i], in the unit of y; 0 or above. A
    ///                   tolerance within the noise of the samples keeps many of them as knots.
    /// @param kind       a Kind.
    /// @return           1; 0, with the spline as it was, for fewer than two samples, arrays of
    ///                   different sizes, an x that does not rise, a number or a range of x that is
    ///                   not finite, a tolerance that is negative or NaN, or an unknown kind.
    ///
    /// Not promised: the least number of knots. Cost: O(n log n) for n samples. Source: least
    /// squares over the derivatives at given knots, and slopes as in Akima, "A new method of
    /// interpolation and smooth curve fitting based on local procedures", 1970, where no sample
    /// lies between them; knots by halving, as in Schneider, "An algorithm for automatically
    /// fitting digitized curves", Graphics Gems, 1990, and then by removal. With points, their
    /// distances stand for absolute values, so that a turn, a shift or a change of scale of the
    /// points does the same to the spline, to rounding.
    int OpenFit(HvDoubleArray const& x, HvTypedArray<T> const& y, double tolerance, int kind);

    /// The number of knots: 0 before the first fit; 1 after one to equal points, otherwise 2 and
    /// more.
    unsigned int NumKnots() const { return knots_.Size(); }
    /// The x of knot `i`, i < NumKnots().
    double Knot(unsigned int i) const { return knots_[i]; }
    /// The y at knot `i`.
    T Value(unsigned int i) const { return values_[i]; }
    /// The derivative at knot `i` of the piece on its left; at the first knot, that on its right.
    T LeftDerivative(unsigned int i) const { return derivatives_[i]; }
    /// The derivative at knot `i` of the piece on its right; at the last knot, that on its left.
    T RightDerivative(unsigned int i) const { return derivatives_[i]; }

    /// The value at `x`; beyond the first and the last knot on the straight line that goes on
    /// there. At a knot exactly its value; for NaN NaN; without knots 0 or the origin. Cost:
    /// O(log NumKnots()).
    T Eval(double x) const;

protected:
    HvSpline() = default;
    /// Copies the knots.
    HvSpline(HvSpline const&) = default;
    /// Takes the knots of the other, which is empty then.
    HvSpline(HvSpline&&) = default;
    /// Copies the knots.
    HvSpline& operator=(HvSpline const&) = default;
    /// Takes the knots of the other.
    HvSpline& operator=(HvSpline&&) = default;
    ~HvSpline() = default;

    /// The same for a polyline whose points have the length up to them as x, which is stored in
    /// `parameters` unless that is null; see HvSpline2d::OpenFit.
    int FitPolyline(HvTypedArray<T> const& points, double tolerance, int kind,
                    HvDoubleArray* parameters);

private:
    void Fit(HvDoubleArray const& x, HvTypedArray<T> const& y, double tolerance);

    HvDoubleArray knots_;
    HvTypedArray<T> values_;
    HvTypedArray<T> derivatives_;
};

extern template class HvSpline<double>;
extern template class HvSpline<HvPoint2<double>>;
extern template class HvSpline<HvPoint3<double>>;

#endif
