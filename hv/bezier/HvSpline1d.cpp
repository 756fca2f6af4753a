// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A smooth piecewise cubic function, fitted to samples.

#include <hv/bezier/HvSpline1d.h>

#include <hv/bezier/internal/spline_fitter.h>
#include <hv/bezier/internal/spline_piece.h>

#include <algorithm>
#include <cmath>

namespace {

bool IsRising(HvDoubleArray const& x)
{
    for (unsigned int i = 1; i < x.Size(); ++i) {
        if (!(x[i - 1] < x[i])) {
            return false;
        }
    }
    // Rising numbers are finite when the range is.
    return std::isfinite(x[x.Size() - 1] - x[0]);
}

bool IsFinite(HvDoubleArray const& y)
{
    return std::all_of(y.begin(), y.end(), [](double value) { return std::isfinite(value); });
}

}  // namespace

int HvSpline1d::OpenFit(HvDoubleArray const& x, HvDoubleArray const& y, double tolerance, int kind)
{
    if (kind != ContinuousDerivative || x.Size() < 2 || x.Size() != y.Size() ||
        !(tolerance >= 0.0) || !IsRising(x) || !IsFinite(y)) {
        return 0;
    }
    HvSplineFitter fitter(x.Data(), y.Data(), x.Size(), tolerance);
    fitter.Fit();
    HvDoubleArray knots(fitter.NumKnots());
    HvDoubleArray values(fitter.NumKnots());
    HvDoubleArray derivatives(fitter.NumKnots());
    for (unsigned int i = 0; i < fitter.NumKnots(); ++i) {
        HvSplineKnot const knot = fitter.Knot(i);
        knots.Add(knot.x);
        values.Add(knot.y);
        derivatives.Add(knot.derivative);
    }
    knots_.Swap(knots);
    values_.Swap(values);
    derivatives_.Swap(derivatives);
    return 1;
}

double HvSpline1d::Eval(double x) const
{
    if (knots_.Size() == 0) {
        return 0.0;
    }
    unsigned int const last = knots_.Size() - 1;
    if (x <= knots_[0]) {
        return x == knots_[0] ? values_[0] : values_[0] + (x - knots_[0]) * derivatives_[0];
    }
    if (!(x < knots_[last])) {
        return x == knots_[last] ? values_[last]
                                 : values_[last] + (x - knots_[last]) * derivatives_[last];
    }
    unsigned int const right = static_cast<unsigned int>(
        std::upper_bound(knots_.begin(), knots_.end(), x) - knots_.begin());
    unsigned int const left = right - 1;
    return HvSplinePiece_Eval({knots_[left], values_[left], derivatives_[left]},
                              {knots_[right], values_[right], derivatives_[right]}, x);
}
