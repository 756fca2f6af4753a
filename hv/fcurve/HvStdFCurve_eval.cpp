// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluating the standard curve: the inversion of a cubic segment, and the four extrapolations with
// their right and left twins.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/foundation/saturate.h>

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

/// Which value a key gives, and which end a cycle's border belongs to.
struct RightTwin {
    static double Value(CFCStdKey const& key) { return key.rightValue; }
};
struct LeftTwin {
    static double Value(CFCStdKey const& key) { return key.leftValue; }
};

/// Where a parameter lies among the keys, as LocateParameter tells it.
struct Location {
    unsigned int count;  ///< keys whose parameter is not above the one located
    bool exact;          ///< the last of them stands at the parameter
};

Location Locate(Curve const& curve, double x)
{
    int exact = 0;
    unsigned int const count = curve.LocateParameter(x, exact);
    return {count, exact != 0};
}

/// Snaps x to a key and locates it, in one search.
Location LocateSnapped(Curve const& curve, double& x)
{
    Location const at = Locate(curve, x);
    unsigned int nearest = 0;
    if (curve.FindKeyBeside(x, kKeySnapParameter, at.count, at.exact, nearest) == 0) {
        return at;
    }
    x = curve.Parameter(nearest);
    return {nearest + 1, true};
}

double SquaredLength(double x, double y)
{
    return x * x + y * y;
}

/// What is added to the run of a handle so that it does not vanish.
double RunCorrection(double run)
{
    return std::fabs(run) < kVerticalHandleRun ? kVerticalHandleRun : 0;
}

/// The line of the segment after key i, continued to x.
double EvalChord(Curve const& curve, unsigned int i, double x)
{
    CFCStdKey const& a = curve.keys[i];
    CFCStdKey const& b = curve.keys[i + 1];
    return (x - a.parameter) * (b.leftValue - a.rightValue) / (b.parameter - a.parameter) +
           a.rightValue;
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
        return EvalChord(curve, last - 1, x);
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
        return EvalChord(curve, 0, x);
    }
    return (x - p) * (out.y - right) / (out.x + RunCorrection(outRun) - p) + right;
}

/// Linear extrapolation past the last of two or more keys. The stored handles lead, not the
/// evaluated ones.
double EvalLineAfterLastKey(Curve const& curve, double x)
{
    unsigned int const last = curve.NumKeys() - 1;
    switch (curve.keys[last - 1].segmentKind) {
    case HvBaseFCurve::ConstantSegment:
        return curve.keys[last].rightValue;
    case HvBaseFCurve::LinearSegment:
        return EvalChord(curve, last - 1, x);
    case HvBaseFCurve::CubicSegment:
        return EvalBeyondCubicLastKey(curve, x);
    default:
        return 0;
    }
}

/// Linear extrapolation before the first of two or more keys.
double EvalLineBeforeFirstKey(Curve const& curve, double x)
{
    switch (curve.keys[0].segmentKind) {
    case HvBaseFCurve::ConstantSegment:
        return curve.keys[0].leftValue;
    case HvBaseFCurve::LinearSegment:
        return EvalChord(curve, 0, x);
    case HvBaseFCurve::CubicSegment:
        return EvalBeforeCubicFirstKey(curve, x);
    default:
        return 0;
    }
}

template <class Twin>
double EvalConstant(Curve const& curve, double x, Location at)
{
    if (at.exact) {
        return Twin::Value(curve.keys[at.count - 1]);
    }
    if (at.count == curve.NumKeys()) {
        return curve.keys[at.count - 1].rightValue;
    }
    return at.count == 0 ? curve.keys[0].leftValue : curve.EvalJustAfterIndex(x, at.count - 1);
}

template <class Twin>
double EvalLinear(Curve const& curve, double x, Location at)
{
    if (!at.exact && curve.NumKeys() > 1) {
        if (at.count == curve.NumKeys()) {
            return EvalLineAfterLastKey(curve, x);
        }
        if (at.count == 0) {
            return EvalLineBeforeFirstKey(curve, x);
        }
    }
    return EvalConstant<Twin>(curve, x, at);
}

/// The right twin finds the first key at the end of a cycle, the left twin the last at its start.
unsigned int KeyOfCycle(Curve const& curve, unsigned int i, RightTwin)
{
    return i + 1 == curve.NumKeys() ? 0 : i;
}
unsigned int KeyOfCycle(Curve const& curve, unsigned int i, LeftTwin)
{
    return i == 0 ? curve.NumKeys() - 1 : i;
}

template <class Twin>
double EvalCycle(Curve const& curve, double x, Location at)
{
    if (curve.NumKeys() > 1) {
        x = curve.FoldIntoKeyRange(x);
        at = LocateSnapped(curve, x);
        if (at.exact) {
            return Twin::Value(curve.keys[KeyOfCycle(curve, at.count - 1, Twin())]);
        }
    }
    return EvalConstant<Twin>(curve, x, at);
}

/// Where a parameter falls in the repetition of the key range.
struct CycleFold {
    double x;       ///< in the key range
    double cycle;   ///< number of the cycle, 0 for the key range itself
    double offset;  ///< what each cycle adds
};

double CycleNumber(double number)
{
    return HvSaturate_To<int>(number);
}

double HeldInside(double x, double first, double last)
{
    return x > last ? last : (first > x ? first : x);
}

/// Folds for the relative cycle. The twins differ on purpose: at a border the right twin stands at
/// the end of the cycle before, the left twin at the start of the cycle after; and the right twin
/// measures the offset from the first right value, the left twin from the first left value.
CycleFold FoldRelative(Curve const& curve, double x, RightTwin)
{
    double const first = curve.FirstParameter();
    double const last = curve.LastParameter();
    double const span = last - first;
    double const ratio = (x - first) / span;
    bool const isAfterFirst = x > first;
    double const rest =
        (isAfterFirst ? ratio - std::floor(ratio) : std::ceil(ratio) - ratio) * span;
    double folded = last;
    if (rest != 0) {
        folded = HeldInside(isAfterFirst ? first + rest : last - rest, first, last);
    }
    return {folded, CycleNumber(std::ceil(ratio) - 1),
            curve.keys[curve.NumKeys() - 1].rightValue - curve.keys[0].rightValue};
}
CycleFold FoldRelative(Curve const& curve, double x, LeftTwin)
{
    double const first = curve.FirstParameter();
    double const last = curve.LastParameter();
    double const span = last - first;
    double const ratio = (x - first) / span;
    bool const isBeforeFirst = x < first;
    double const rest =
        (isBeforeFirst ? std::ceil(ratio) - ratio : ratio - std::floor(ratio)) * span;
    double folded = first;
    if (rest != 0) {
        folded = HeldInside(isBeforeFirst ? last - rest : first + rest, first, last);
    }
    return {folded, CycleNumber(std::floor(ratio)),
            curve.keys[curve.NumKeys() - 1].rightValue - curve.keys[0].leftValue};
}

/// The value of key i in the key range; the border key that a twin passes on to the other end of
/// the range brings one cycle's offset along.
double KeyInRelativeCycle(Curve const& curve, unsigned int i, double offset, RightTwin)
{
    return i + 1 == curve.NumKeys() ? offset + curve.keys[0].rightValue : curve.keys[i].rightValue;
}
double KeyInRelativeCycle(Curve const& curve, unsigned int i, double offset, LeftTwin)
{
    return i == 0 ? -offset + curve.keys[curve.NumKeys() - 1].rightValue : curve.keys[i].leftValue;
}

template <class Twin>
double EvalRelativeCycle(Curve const& curve, double x, Location at)
{
    unsigned int const numKeys = curve.NumKeys();
    if (numKeys == 1) {
        return EvalConstant<Twin>(curve, x, at);
    }
    CycleFold const fold = FoldRelative(curve, x, Twin());
    at = Locate(curve, fold.x);
    double const rise = fold.cycle * fold.offset;
    if (at.exact) {
        return rise + KeyInRelativeCycle(curve, at.count - 1, fold.offset, Twin());
    }
    if (at.count == numKeys) {
        return curve.keys[numKeys - 1].rightValue;
    }
    if (at.count == 0) {
        return curve.keys[0].leftValue;
    }
    return rise + curve.EvalJustAfterIndex(fold.x, at.count - 1);
}

/// The value at x, which stands at `at` among the keys; there are keys.
template <class Twin>
double EvalExtrapolated(Curve const& curve, double x, Location at)
{
    switch (curve.extrapolation) {
    case HvBaseFCurve::LinearExtrapolation:
        return EvalLinear<Twin>(curve, x, at);
    case HvBaseFCurve::CycleExtrapolation:
        return EvalCycle<Twin>(curve, x, at);
    case HvBaseFCurve::RelativeCycleExtrapolation:
        return EvalRelativeCycle<Twin>(curve, x, at);
    default:
        return EvalConstant<Twin>(curve, x, at);
    }
}

template <class Twin>
double EvalUsingExtrapolationMethod(Curve const& curve, double x)
{
    return curve.NumKeys() == 0 ? curve.valueWhenNoKeys
                                : EvalExtrapolated<Twin>(curve, x, Locate(curve, x));
}

template <class Twin>
double EvalSnapped(Curve const& curve, double x)
{
    if (curve.NumKeys() == 0) {
        return curve.valueWhenNoKeys;
    }
    Location const at = LocateSnapped(curve, x);
    return EvalExtrapolated<Twin>(curve, x, at);
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
    if (clamp != 0) {
        if (value > upperClamp) {
            return upperClamp;
        }
        if (lowerClamp > value) {
            return lowerClamp;
        }
    }
    return value;
}

template <>
double
CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalRightUsingExtrapolationMethod(double p) const
{
    return EvalUsingExtrapolationMethod<RightTwin>(*this, p);
}

template <>
double CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalLeftUsingExtrapolationMethod(double p) const
{
    return EvalUsingExtrapolationMethod<LeftTwin>(*this, p);
}

double HvStdFCurveImpl::EvalRight(double x, int clamp) const
{
    return Clamp(EvalSnapped<RightTwin>(*this, x), clamp);
}

double HvStdFCurveImpl::EvalLeft(double x, int clamp) const
{
    return Clamp(EvalSnapped<LeftTwin>(*this, x), clamp);
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
