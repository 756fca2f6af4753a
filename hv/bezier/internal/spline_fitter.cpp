// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The choice of knots and derivatives of a smooth piecewise cubic through samples.

#include <hv/bezier/internal/spline_fitter.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Weight of the samples' slope at a knot against the error at one sample: a piece with samples
/// does not notice it, a piece without any still has equations well above rounding.
constexpr double kSlopeWeight = 1e-13;

/// A piece waits for a neighbour that misses its samples by so many times more: halving the
/// neighbour may be all that it needs, since errors run on from piece to piece, a quarter each.
constexpr double kPatience = 2.0;

/// Knots on each side of a removed one whose derivatives are fitted anew: the influence of a
/// derivative falls by about a quarter with each knot.
constexpr unsigned int kNeighbours = 3;

/// The power of two that brings `magnitude` to 0.5 to 1; 1 for 0.
double ScaleOf(double magnitude)
{
    int exponent = 0;
    std::frexp(magnitude, &exponent);
    // Beyond 1022 the power is subnormal, or infinite with the other sign.
    return std::ldexp(1.0, std::clamp(-exponent, -1022, 1022));
}

/// Rounds of halving that bring any number of samples to single ones, when no piece ever has to
/// wait for its neighbours.
unsigned int HalvingRounds(unsigned long count)
{
    unsigned int rounds = 1;
    for (; count > 1; count /= 2) {
        ++rounds;
    }
    return rounds;
}

}  // namespace

template <class Value>
HvSplineFitter<Value>::HvSplineFitter(double const* x, Value const* y, unsigned long count,
                                      double tolerance)
    : x_(x), y_(y), count_(count), tolerance_(tolerance)
{
    double greatest = 0.0;
    for (unsigned long i = 0; i < count; ++i) {
        greatest = std::max(greatest, HvSplineValue_Magnitude(y[i]));
    }
    xScale_ = ScaleOf(x[count - 1] - x[0]);
    yScale_ = ScaleOf(greatest);
}

template <class Value>
void HvSplineFitter<Value>::Fit()
{
    knots_.Add(0);
    knots_.Add(count_ - 1);
    SolveAll();
    // A piece that met its samples may miss them once its neighbours are halved, and pieces that
    // wait take rounds as well. The limits leave room for both and bound the work.
    unsigned int const needed = HalvingRounds(count_);
    for (unsigned int round = 0; HalvePieces(round < 2 * needed); ++round) {
        if (round == 4 * needed) {
            TakeAllSamples();
        }
        SolveAll();
    }
    for (unsigned int round = HalvingRounds(knots_.Size()); round > 0 && RemoveKnots(); --round) {
    }
}

/// The slope of the line from sample i to the next, in scaled numbers; beyond the ends the slopes
/// go on linearly.
template <class Value>
Value HvSplineFitter<Value>::Secant(std::int64_t i) const
{
    std::int64_t const last = static_cast<std::int64_t>(count_) - 2;
    if (last > 0 && (i < 0 || i > last)) {
        std::int64_t const end = i < 0 ? 0 : last;
        std::int64_t const inner = i < 0 ? 1 : last - 1;
        double const steps = static_cast<double>(i < 0 ? -i : i - last);
        return Secant(end) + (Secant(end) - Secant(inner)) * steps;
    }
    std::int64_t const k = last > 0 ? i : 0;
    return HvSplineValue_Quotient(y_[k + 1] * yScale_ - y_[k] * yScale_,
                                  (x_[k + 1] - x_[k]) * xScale_);
}

/// The slope of the samples at sample i, in scaled numbers. It goes with the side that bends less,
/// so that it keeps out of corners and jumps.
/// Source: Akima, "A new method of interpolation and smooth curve fitting based on local
/// procedures", 1970.
template <class Value>
Value HvSplineFitter<Value>::SampleSlope(unsigned long i) const
{
    std::int64_t const k = static_cast<std::int64_t>(i);
    Value const left = Secant(k - 1);
    Value const right = Secant(k);
    double const leftWeight = HvSplineValue_Length(Secant(k + 1) - right);
    double const rightWeight = HvSplineValue_Length(left - Secant(k - 2));
    double const sum = leftWeight + rightWeight;
    return sum > 0.0 ? HvSplineValue_Quotient(left * leftWeight + right * rightWeight, sum)
                     : (left + right) * 0.5;
}

template <class Value>
typename HvSplineFitter<Value>::Equations HvSplineFitter<Value>::EquationsOf(unsigned long from,
                                                                             unsigned long to) const
{
    double const h = x_[to] - x_[from];
    Value const height = y_[to] * yScale_ - y_[from] * yScale_;
    // In derivatives over the piece; in the end they become those over the scaled x.
    double const scaled = h * xScale_;
    Equations e{kSlopeWeight, 0.0, kSlopeWeight, SampleSlope(from) * kSlopeWeight * scaled,
                SampleSlope(to) * kSlopeWeight * scaled};
    for (unsigned long i = from + 1; i < to; ++i) {
        double const t = (x_[i] - x_[from]) / h;
        double const left = HvSplinePiece_DerivativeBlend(t);
        double const right = -HvSplinePiece_DerivativeBlend(1.0 - t);
        Value const rest =
            (y_[i] * yScale_ - y_[from] * yScale_) - height * HvSplinePiece_ValueBlend(t);
        e.leftLeft += left * left;
        e.leftRight += left * right;
        e.rightRight += right * right;
        e.left = e.left + rest * left;
        e.right = e.right + rest * right;
    }
    return {e.leftLeft * scaled * scaled, e.leftRight * scaled * scaled,
            e.rightRight * scaled * scaled, e.left * scaled, e.right * scaled};
}

/// Sets the derivatives of some consecutive knots, but for those of the ends that are kept.
template <class Value>
void HvSplineFitter<Value>::Solve(Knots const& knots, bool keepFirst, bool keepLast)
{
    unsigned int const count = knots.count;
    double const toScaled = yScale_ / xScale_;
    double* const diagonal = diagonal_.Data();
    double* const off = offDiagonal_.Data();
    Value* const right = rightSide_.Data();
    std::fill_n(diagonal, count, 0.0);
    std::fill_n(right, count, Value());
    for (unsigned int i = 0; i + 1 < count; ++i) {
        Equations const e = EquationsOf(knots.samples[i], knots.samples[i + 1]);
        diagonal[i] += e.leftLeft;
        diagonal[i + 1] += e.rightRight;
        off[i] = e.leftRight;
        right[i] = right[i] + e.left;
        right[i + 1] = right[i + 1] + e.right;
    }
    if (keepFirst) {
        Value const kept = knots.derivatives[0] * toScaled;
        right[1] = right[1] - kept * off[0];
        diagonal[0] = 1.0;
        off[0] = 0.0;
        right[0] = kept;
    }
    if (keepLast) {
        Value const kept = knots.derivatives[count - 1] * toScaled;
        right[count - 2] = right[count - 2] - kept * off[count - 2];
        diagonal[count - 1] = 1.0;
        off[count - 2] = 0.0;
        right[count - 1] = kept;
    }
    // The matrix is tridiagonal, symmetric and positive definite.
    for (unsigned int i = 1; i < count; ++i) {
        double const factor = off[i - 1] / diagonal[i - 1];
        diagonal[i] -= factor * off[i - 1];
        right[i] = right[i] - right[i - 1] * factor;
    }
    for (unsigned int i = count; i-- > 0;) {
        Value const above = i + 1 < count ? right[i + 1] * off[i] : Value();
        // Numbers so far apart that the equations vanish: the halving then goes down to the
        // samples.
        right[i] =
            HvSplineValue_FiniteOrZero(HvSplineValue_Quotient(right[i] - above, diagonal[i]));
    }
    for (unsigned int i = keepFirst ? 1 : 0; i < (keepLast ? count - 1 : count); ++i) {
        knots.derivatives[i] =
            HvSplineValue_FiniteOrZero(HvSplineValue_Quotient(right[i], toScaled));
    }
}

/// The greatest error at the samples of a piece; infinite when one is NaN.
template <class Value>
double HvSplineFitter<Value>::ErrorOf(unsigned long from, unsigned long to,
                                      Value const& fromDerivative, Value const& toDerivative) const
{
    HvSplineKnot<Value> const a = MakeKnot(from, fromDerivative);
    HvSplineKnot<Value> const b = MakeKnot(to, toDerivative);
    double greatest = 0.0;
    for (unsigned long i = from + 1; i < to; ++i) {
        double const error = HvSplineValue_Length(HvSplinePiece_Eval(a, b, x_[i]) - y_[i]);
        if (!(error <= greatest)) {
            greatest = std::isnan(error) ? std::numeric_limits<double>::infinity() : error;
        }
    }
    return greatest;
}

template <class Value>
bool HvSplineFitter<Value>::Meets(Knots const& knots) const
{
    for (unsigned int i = 0; i + 1 < knots.count; ++i) {
        if (ErrorOf(knots.samples[i], knots.samples[i + 1], knots.derivatives[i],
                    knots.derivatives[i + 1]) > tolerance_) {
            return false;
        }
    }
    return true;
}

template <class Value>
void HvSplineFitter<Value>::SolveAll()
{
    unsigned int const count = knots_.Size();
    unsigned int const size = std::max(count, 2 * kNeighbours);
    diagonal_.Resize(size);
    offDiagonal_.Resize(size);
    rightSide_.Resize(size);
    derivatives_.Resize(count);
    Solve({knots_.Data(), derivatives_.Data(), count}, false, false);
}

/// Puts a knot in the middle of the samples of the pieces that miss one; patiently: but for those
/// beside a piece that misses by much more. False when no piece misses.
template <class Value>
bool HvSplineFitter<Value>::HalvePieces(bool patiently)
{
    unsigned int const pieces = knots_.Size() - 1;
    errors_.Resize(pieces);
    for (unsigned int i = 0; i < pieces; ++i) {
        errors_[i] = ErrorOf(knots_[i], knots_[i + 1], derivatives_[i], derivatives_[i + 1]);
    }
    newKnots_.Chop(0);
    for (unsigned int i = 0; i < pieces; ++i) {
        double const beside =
            std::max(i > 0 ? errors_[i - 1] : 0.0, i + 1 < pieces ? errors_[i + 1] : 0.0);
        bool const waits = patiently && beside > kPatience * errors_[i];
        newKnots_.Add(knots_[i]);
        if (errors_[i] > tolerance_ && !waits) {
            newKnots_.Add(knots_[i] + (knots_[i + 1] - knots_[i]) / 2);
        }
    }
    newKnots_.Add(count_ - 1);
    knots_.Swap(newKnots_);
    return knots_.Size() != newKnots_.Size();
}

template <class Value>
void HvSplineFitter<Value>::TakeAllSamples()
{
    knots_.Chop(0);
    for (unsigned long i = 0; i < count_; ++i) {
        knots_.Add(i);
    }
}

/// Takes out knots that are not needed, never two neighbours, so that a pass costs a fixed number
/// of looks at each sample; false when all are needed.
template <class Value>
bool HvSplineFitter<Value>::RemoveKnots()
{
    unsigned int const count = knots_.Size();
    newKnots_.Chop(0);
    newDerivatives_.Chop(0);
    bool mayRemove = false;
    for (unsigned int i = 0; i < count; ++i) {
        if (mayRemove && i + 1 < count && CanRemove(i + 1)) {
            mayRemove = false;
            continue;
        }
        newKnots_.Add(knots_[i]);
        newDerivatives_.Add(derivatives_[i]);
        mayRemove = true;
    }
    knots_.Swap(newKnots_);
    derivatives_.Swap(newDerivatives_);
    return knots_.Size() != count;
}

/// Whether the samples are met when the last of the new knots is followed by the old knot `next`.
/// If so, the derivatives around are set to those that meet them.
template <class Value>
bool HvSplineFitter<Value>::CanRemove(unsigned int next)
{
    unsigned int const before = std::min(kNeighbours, newKnots_.Size());
    unsigned int const after = std::min(kNeighbours, knots_.Size() - next);
    unsigned long samples[2 * kNeighbours];
    Value derivatives[2 * kNeighbours];
    unsigned int const firstNew = newKnots_.Size() - before;
    for (unsigned int i = 0; i < before; ++i) {
        samples[i] = newKnots_[firstNew + i];
        derivatives[i] = newDerivatives_[firstNew + i];
    }
    for (unsigned int i = 0; i < after; ++i) {
        samples[before + i] = knots_[next + i];
        derivatives[before + i] = derivatives_[next + i];
    }
    unsigned int const count = before + after;
    Knots const around = {samples, derivatives, count};
    Solve(around, samples[0] != 0, samples[count - 1] != count_ - 1);
    if (!Meets(around)) {
        return false;
    }
    std::copy_n(derivatives, before, newDerivatives_.Data() + firstNew);
    std::copy_n(derivatives + before, after, derivatives_.Data() + next);
    return true;
}

template class HvSplineFitter<double>;
template class HvSplineFitter<HvPoint2<double>>;
template class HvSplineFitter<HvPoint3<double>>;
