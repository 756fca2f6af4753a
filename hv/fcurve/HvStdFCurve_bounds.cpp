// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What the standard curve's values lie between, and whether its parts hold. The bounds come from
// the control polygon: no roots are sought.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

namespace {

using Curve = HvStdFCurveImpl;

struct LowerBound {
    static double Of(double a, double b) { return b < a ? b : a; }
};
struct UpperBound {
    static double Of(double a, double b) { return b > a ? b : a; }
};

/// The handle of an automatic key that reaches furthest: the tangent rises or falls through the key
/// with its neighbours' values.
double FurthestAutomaticHandle(Curve const& curve, unsigned int i, LowerBound)
{
    bool const rises = curve.keys[i - 1].rightValue < curve.keys[i + 1].leftValue;
    return rises ? curve.GetEvaluatedLeftTgtY(i) : curve.GetEvaluatedRightTgtY(i);
}
double FurthestAutomaticHandle(Curve const& curve, unsigned int i, UpperBound)
{
    bool const rises = curve.keys[i - 1].rightValue < curve.keys[i + 1].leftValue;
    return rises ? curve.GetEvaluatedRightTgtY(i) : curve.GetEvaluatedLeftTgtY(i);
}

/// What the segment after key i adds to the bound `m`. A cubic segment that leaves an inner
/// automatic key counts that key's furthest handle alone: the segments beside it bring the values.
template <class Bound>
double WithSegment(double m, Curve const& curve, unsigned int i)
{
    CFCStdKey const& key = curve.keys[i];
    CFCStdKey const& next = curve.keys[i + 1];
    switch (key.segmentKind) {
    case HvBaseFCurve::ConstantSegment:
        return Bound::Of(m, key.rightValue);
    case HvBaseFCurve::LinearSegment:
        return Bound::Of(m, Bound::Of(key.rightValue, next.leftValue));
    case HvBaseFCurve::CubicSegment:
        if (i > 0 && key.constraints.HasAny(CFCKeyConstraint::kAutomaticTangents)) {
            return Bound::Of(m, FurthestAutomaticHandle(curve, i, Bound()));
        }
        m = Bound::Of(m, Bound::Of(key.rightValue, curve.GetEvaluatedRightTgtY(i)));
        return Bound::Of(m, Bound::Of(next.leftValue, curve.GetEvaluatedLeftTgtY(i + 1)));
    default:
        return m;
    }
}

template <class Bound>
double ValueBound(Curve const& curve)
{
    unsigned int const n = curve.NumKeys();
    if (n == 0) {
        return curve.valueWhenNoKeys;
    }
    double m = curve.keys[0].leftValue;
    for (unsigned int i = 0; i + 1 < n; ++i) {
        m = WithSegment<Bound>(m, curve, i);
    }
    return Bound::Of(m, curve.keys[n - 1].rightValue);
}

}  // namespace

double HvStdFCurveImpl::GetValueLowerBound(int clamp) const
{
    return Clamp(ValueBound<LowerBound>(*this), clamp);
}

double HvStdFCurveImpl::GetValueUpperBound(int clamp) const
{
    return Clamp(ValueBound<UpperBound>(*this), clamp);
}

void HvStdFCurveImpl::ComputeEvaluatedValueRange(unsigned int i, double& lower, double& upper) const
{
    double values[4] = {0, 0, 0, 0};  // a segment of no known kind evaluates to 0
    switch (keys[i].segmentKind) {
    case HvBaseFCurve::ConstantSegment:
        values[0] = values[1] = values[2] = values[3] = keys[i].rightValue;
        break;
    case HvBaseFCurve::LinearSegment:
        values[0] = values[1] = keys[i].rightValue;
        values[2] = values[3] = keys[i + 1].leftValue;
        break;
    case HvBaseFCurve::CubicSegment:
        values[0] = keys[i].rightValue;
        values[1] = GetEvaluatedRightTgtY(i);
        values[2] = GetEvaluatedLeftTgtY(i + 1);
        values[3] = keys[i + 1].leftValue;
        break;
    default:
        break;
    }
    lower = upper = values[0];
    for (double const value : values) {
        lower = LowerBound::Of(lower, value);
        upper = UpperBound::Of(upper, value);
    }
}

int HvStdFCurveImpl::HasConstantValue() const
{
    unsigned int const n = NumKeys();
    for (unsigned int i = 0; i < n; ++i) {
        double const value = keys[0].leftValue;
        bool const isCubic = keys[i].segmentKind == HvBaseFCurve::CubicSegment && i + 1 < n;
        if (keys[i].leftValue != value || keys[i].rightValue != value ||
            (isCubic &&
             (GetEvaluatedRightTgtY(i) != value || GetEvaluatedLeftTgtY(i + 1) != value))) {
            return 0;
        }
    }
    return 1;
}

int HvStdFCurveImpl::IsValid() const
{
    bool const fieldsHold =
        defaultSegmentKind != 0 && valueWhenNoKeys == valueWhenNoKeys && lowerClamp <= upperClamp;
    if (!fieldsHold) {
        return 0;
    }
    unsigned int const n = NumKeys();
    for (unsigned int i = 0; i < n; ++i) {
        CFCStdKey const& key = keys[i];
        if (key.segmentKind == 0) {
            return 0;
        }
        if (i + 1 < n && !CubicRises(key.parameter, key.rightHandle.x, keys[i + 1].leftHandle.x,
                                     keys[i + 1].parameter)) {
            return 0;  // the parameters' own order is a part of this
        }
    }
    return 1;
}

double HvStdFCurve::GetValueLowerBound(int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->GetValueLowerBound(clamp);
}

double HvStdFCurve::GetValueUpperBound(int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->GetValueUpperBound(clamp);
}

int HvStdFCurve::GetValueRange(double x, KeySide side, double& lower, double& upper,
                               double tolerance, int clamp) const
{
    HvCurveReader const lock(*this);
    unsigned int k = 0;
    if ((side != Left && side != Right) || impl_->FindKey(x, tolerance, k) == 0) {
        return 0;
    }
    double low = 0;
    double high = 0;
    if (side == Left && k == 0) {
        low = high = impl_->keys[0].leftValue;
    } else if (side == Right && k + 1 == impl_->NumKeys()) {
        low = high = impl_->keys[k].rightValue;
    } else {
        impl_->ComputeEvaluatedValueRange(side == Left ? k - 1 : k, low, high);
    }
    lower = impl_->Clamp(low, clamp);
    upper = impl_->Clamp(high, clamp);
    return 1;
}

int HvStdFCurve::HasConstantValue() const
{
    HvCurveReader const lock(*this);
    return impl_->HasConstantValue();
}
