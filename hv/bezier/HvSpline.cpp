// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the splines of numbers and of points share.

#include <hv/bezier/HvSpline.h>

#include <hv/bezier/internal/spline_chords.h>
#include <hv/bezier/internal/spline_fitter.h>
#include <hv/bezier/internal/spline_piece.h>

#include <algorithm>
#include <cmath>

namespace {

template <class T>
bool CanFit(HvTypedArray<T> const& samples, double tolerance, int kind)
{
    return kind == HvSpline<T>::ContinuousDerivative && samples.Size() >= 2 && tolerance >= 0.0;
}

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

}  // namespace

template <class T>
int HvSpline<T>::OpenFit(HvDoubleArray const& x, HvTypedArray<T> const& y, double tolerance,
                         int kind)
{
    if (!CanFit(y, tolerance, kind) || x.Size() != y.Size() || !IsRising(x) ||
        !std::all_of(y.begin(), y.end(), HvSplineValue_IsFinite<T>)) {
        return 0;
    }
    Fit(x, y, tolerance);
    return 1;
}

template <class T>
int HvSpline<T>::FitPolyline(HvTypedArray<T> const& points, double tolerance, int kind,
                             HvDoubleArray* parameters)
{
    HvSplineChords<T> chords;
    if (!CanFit(points, tolerance, kind) || !chords.Take(points)) {
        return 0;
    }
    Fit(chords.lengths, chords.points, tolerance);
    if (parameters != nullptr) {
        parameters->Swap(chords.parameters);
    }
    return 1;
}

/// Fits valid samples, at least one.
template <class T>
void HvSpline<T>::Fit(HvDoubleArray const& x, HvTypedArray<T> const& y, double tolerance)
{
    HvDoubleArray knots;
    HvTypedArray<T> values;
    HvTypedArray<T> derivatives;
    if (x.Size() == 1) {
        knots.Add(x[0]);
        values.Add(y[0]);
        derivatives.Add(T());
    } else {
        HvSplineFitter<T> fitter(x.Data(), y.Data(), x.Size(), tolerance);
        fitter.Fit();
        for (unsigned int i = 0; i < fitter.NumKnots(); ++i) {
            HvSplineKnot<T> const knot = fitter.Knot(i);
            knots.Add(knot.x);
            values.Add(knot.y);
            derivatives.Add(knot.derivative);
        }
    }
    knots_.Swap(knots);
    values_.Swap(values);
    derivatives_.Swap(derivatives);
}

template <class T>
T HvSpline<T>::Eval(double x) const
{
    if (knots_.Size() == 0) {
        return T();
    }
    unsigned int const last = knots_.Size() - 1;
    if (x <= knots_[0]) {
        return x == knots_[0] ? values_[0]
                              : values_[0] + HvSplineValue_Step(derivatives_[0], x - knots_[0]);
    }
    if (!(x < knots_[last])) {
        return x == knots_[last]
                   ? values_[last]
                   : values_[last] + HvSplineValue_Step(derivatives_[last], x - knots_[last]);
    }
    unsigned int const right = static_cast<unsigned int>(
        std::upper_bound(knots_.begin(), knots_.end(), x) - knots_.begin());
    unsigned int const left = right - 1;
    return HvSplinePiece_Eval<T>({knots_[left], values_[left], derivatives_[left]},
                                 {knots_[right], values_[right], derivatives_[right]}, x);
}

template class HvSpline<double>;
template class HvSpline<HvPoint2<double>>;
template class HvSpline<HvPoint3<double>>;
