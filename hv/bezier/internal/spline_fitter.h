// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The choice of knots and derivatives of a smooth piecewise cubic through samples.

#ifndef HV_BEZIER_INTERNAL_SPLINE_FITTER_H
#define HV_BEZIER_INTERNAL_SPLINE_FITTER_H

#include <hv/bezier/internal/spline_piece.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint3dArray.h>
#include <hv/foundation/HvULongArray.h>

#include <cstdint>

/// Fits a piecewise cubic with a continuous derivative to samples, so that each is met within a
/// tolerance. The samples are numbers, or points whose coordinates share the knots; their errors
/// are distances, so that it does not matter how the axes lie.
///
/// The knots are samples, given by their indices. For given knots the derivatives minimise the sum
/// of the squared errors at the samples between; where there are none, a slope of the samples
/// around the knot decides. From the two ends on, pieces that miss a sample are halved, until none
/// does. The knots that the halving made in vain are then taken out one by one, each with a new fit
/// of its neighbourhood.
template <class Value>
class HvSplineFitter {
public:
    /// `count` samples with strictly rising x, at least two. The arrays must outlive the fitter.
    HvSplineFitter(double const* x, Value const* y, unsigned long count, double tolerance);

    void Fit();

    unsigned int NumKnots() const { return knots_.Size(); }
    HvSplineKnot<Value> Knot(unsigned int i) const { return MakeKnot(knots_[i], derivatives_[i]); }

private:
    /// The normal equations of one piece in its two derivatives.
    struct Equations {
        double leftLeft;
        double leftRight;
        double rightRight;
        Value left;
        Value right;
    };
    /// Some knots in order, with their derivatives.
    struct Knots {
        unsigned long const* samples;
        Value* derivatives;
        unsigned int count;
    };

    HvSplineKnot<Value> MakeKnot(unsigned long sample, Value const& derivative) const
    {
        return {x_[sample], y_[sample], derivative};
    }
    Value Secant(std::int64_t i) const;
    Value SampleSlope(unsigned long i) const;
    Equations EquationsOf(unsigned long from, unsigned long to) const;
    void Solve(Knots const& knots, bool keepFirst, bool keepLast);
    double ErrorOf(unsigned long from, unsigned long to, Value const& fromDerivative,
                   Value const& toDerivative) const;
    bool Meets(Knots const& knots) const;
    void SolveAll();
    bool HalvePieces(bool patiently);
    void TakeAllSamples();
    bool RemoveKnots();
    bool CanRemove(unsigned int next);

    double const* x_;
    Value const* y_;
    unsigned long count_;
    double tolerance_;
    // Powers of two that bring the range of x and the greatest coordinate of y to about 1: the
    // equations are quadratic in both.
    double xScale_;
    double yScale_;
    HvULongArray knots_;
    HvTypedArray<Value> derivatives_;
    HvULongArray newKnots_;
    HvTypedArray<Value> newDerivatives_;
    HvDoubleArray errors_;
    HvDoubleArray diagonal_;
    HvDoubleArray offDiagonal_;
    HvTypedArray<Value> rightSide_;
};

extern template class HvSplineFitter<double>;
extern template class HvSplineFitter<HvPoint2<double>>;
extern template class HvSplineFitter<HvPoint3<double>>;

#endif
