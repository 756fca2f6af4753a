// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluating the standard curve: the inversion of a cubic segment, and how its ends continue.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/extrapolation.h>

#include <cmath>

namespace {

using Curve = CFCBaseImpl<double, CFCStdKey, CFCStdStore>;
using Word = CFCKeyConstraint;

/// A parameter this close to an end of a cubic segment takes the end.
constexpr double kSegmentEndParameter = 1e-20;
/// The solver stops at the first step below this: the answer's error, as a share of the segment.
constexpr double kSolverStep = 1e-9;
/// Rounds of the solver; bisection alone needs 30, the rest is a net for segments that turn back.
constexpr unsigned int kMaxSolverRounds = 100;
/// A handle whose squared length is below this has no direction to extrapolate along.
constexpr double kShortHandleSquared = 1e-7;
/// A handle shorter than this in x is widened by it before it divides.
constexpr double kVerticalHandleRun = 1e-7;

double SquaredLength(double x, double y)
{
    return x * x + y * y;
}

/// What is added to the run of a handle so that it does not vanish.
double RunCorrection(double run)
{
    return std::fabs(run) < kVerticalHandleRun ? kVerticalHandleRun : 0;
}

/// The tangent of a cubic last segment, continued to x. The right handle leads when it has a
/// length; its slope is measured from the left value, where the line starts too, so that a jump at
/// the last key belongs to the line and not to what follows.
double EvalBeyondCubicLastKey(Curve const& curve, double x)
{
    unsigned int const last = curve.NumKeys() - 1;
    CFCStdKey const& key = curve.keys[last];
    if (key.constraints.HasAny(Word::kFlatTangents | Word::kFlatAtExtremum)) {
        return key.rightValue;
    }
    double const p = key.parameter;
    double const left = key.leftValue;
    HvPoint2<double> const& out = key.rightHandle;
    double const outRun = out.x - p;
    if (SquaredLength(outRun, out.y - key.rightValue) >= kShortHandleSquared) {
        return (x - p) * (out.y - left) / (out.x + RunCorrection(outRun) - p) + left;
    }
    HvPoint2<double> const& in = key.leftHandle;
    double const inRun = in.x - p;
    if (SquaredLength(inRun, in.y - left) < kShortHandleSquared) {
        return CFCChord_Eval(curve, last - 1, x);
    }
    double const inX = in.x - RunCorrection(inRun);
    return (x - inX) * (left - in.y) / (p - inX) + in.y;
}

/// The tangent of a cubic first segment, continued back to x. The left handle leads when it has a
/// length; its slope ends at the right value.
double EvalBeforeCubicFirstKey(Curve const& curve, double x)
{
    CFCStdKey const& key = curve.keys[0];
    if (key.constraints.HasAny(Word::kFlatTangents | Word::kFlatAtExtremum)) {
        return key.leftValue;
    }
    double const p = key.parameter;
    double const right = key.rightValue;
    HvPoint2<double> const& in = key.leftHandle;
    double const inRun = in.x - p;
    if (SquaredLength(inRun, in.y - key.leftValue) >= kShortHandleSquared) {
        double const inX = in.x - RunCorrection(inRun);
        return (x - inX) * (right - in.y) / (p - inX) + in.y;
    }
    HvPoint2<double> const& out = key.rightHandle;
    double const outRun = out.x - p;
    if (SquaredLength(outRun, out.y - right) < kShortHandleSquared) {
        return CFCChord_Eval(curve, 0, x);
    }
    return (x - p) * (out.y - right) / (out.x + RunCorrection(outRun) - p) + right;
}

/// Linear extrapolation of two or more keys. The stored handles lead, not the evaluated ones.
struct StdEnds {
    static double AfterLastKey(Curve const& curve, double x)
    {
        unsigned int const last = curve.NumKeys() - 1;
        switch (curve.keys[last - 1].segmentKind) {
        case HvBaseFCurve::ConstantSegment:
            return curve.keys[last].rightValue;
        case HvBaseFCurve::LinearSegment:
            return CFCChord_Eval(curve, last - 1, x);
        case HvBaseFCurve::CubicSegment:
            return EvalBeyondCubicLastKey(curve, x);
        default:
            return 0;
        }
    }
    static double BeforeFirstKey(Curve const& curve, double x)
    {
        switch (curve.keys[0].segmentKind) {
        case HvBaseFCurve::ConstantSegment:
            return curve.keys[0].leftValue;
        case HvBaseFCurve::LinearSegment:
            return CFCChord_Eval(curve, 0, x);
        case HvBaseFCurve::CubicSegment:
            return EvalBeforeCubicFirstKey(curve, x);
        default:
            return 0;
        }
    }
};

template <class Twin>
using Extrapolation = CFCExtrapolation<Curve, Twin, StdEnds>;

template <class Twin>
double EvalSnapped(Curve const& curve, double x)
{
    if (curve.NumKeys() == 0) {
        return curve.valueWhenNoKeys;
    }
    CFCLocation const at = CFCLocation_FindSnapped(curve, x);
    return Extrapolation<Twin>::EvalAt(curve, x, at);
}

}  // namespace

double FindCubicParameter(double x, double x0, double x1, double x2, double x3)
{
    if (x - x0 < kSegmentEndParameter) {
        return 0;
    }
    if (x3 - x < kSegmentEndParameter) {
        return 1;
    }
    double const a = 3 * x1 + x3 - 3 * x2 - x0;
    double const b = 3 * (x0 - 2 * x1 + x2);
    double const c = 3 * (x1 - x0);
    double const d = x0 - x;
    auto const valueAt = [&](double t) { return ((a * t + b) * t + c) * t + d; };
    auto const slopeAt = [&](double t) { return (3 * a * t + 2 * b) * t + c; };

    double t = 0.5;
    double low = 0;
    double high = 1;
    double f = valueAt(t);
    double slope = slopeAt(t);
    double partner = f < 0 ? 1 : 0;  // the root lies between t and here
    for (unsigned int round = 0; round < kMaxSolverRounds; ++round) {
        bool const newtonStaysInside = ((low - t) * slope + f) * ((high - t) * slope + f) < 0;
        double const step = newtonStaysInside ? f / slope : (t - partner) * 0.5;
        t -= step;
        if (!(std::fabs(step) >= kSolverStep)) {  // NaN ends here too
            break;
        }
        f = valueAt(t);
        if (f == 0) {
            break;
        }
        if (f < 0) {
            low = t;
            partner = high;
        } else {
            high = t;
            partner = low;
        }
        slope = slopeAt(t);
    }
    return t > 0 ? (t < 1 ? t : 1) : 0;
}

double HvStdFCurveImpl::Clamp(double value, int clamp) const
{
    return clamp != 0 ? ClampValue(value) : value;
}

template <>
double
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalRightUsingExtrapolationMethod(double p) const
{
    return Extrapolation<CFCRightTwin>::Eval(*this, p);
}

template <>
double CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalLeftUsingExtrapolationMethod(double p) const
{
    return Extrapolation<CFCLeftTwin>::Eval(*this, p);
}

double HvStdFCurveImpl::EvalRight(double x, int clamp) const
{
    return Clamp(EvalSnapped<CFCRightTwin>(*this, x), clamp);
}

double HvStdFCurveImpl::EvalLeft(double x, int clamp) const
{
    return Clamp(EvalSnapped<CFCLeftTwin>(*this, x), clamp);
}

double HvStdFCurve::EvalNoLock(double x, int clamp) const
{
    return impl_->EvalRight(x, clamp);
}

double HvStdFCurve::EvalLeft(double x, int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalLeft(x, clamp);
}

int HvStdFCurve::GetNearestKeyParameterInCenteredIntervalNoLock(double& parameter,
                                                                double tolerance) const
{
    unsigned int index = 0;
    if (impl_->FindKey(parameter, tolerance, index) == 0) {
        return 0;
    }
    parameter = impl_->Parameter(index);
    return 1;
}

unsigned int HvStdFCurve::EvalSequence(double from, double to, double step, double tolerance,
                                       HvDoubleArray& parameters, HvDoubleArray& values,
                                       int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalSequence(from, to, step, tolerance, parameters, values, clamp);
}
