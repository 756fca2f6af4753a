// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluating the raw curve, forwards and backwards, and the bounds of its values.

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/extrapolation.h>
#include <hv/fcurve/internal/monotone_inverse.h>

#include <algorithm>

namespace {

using Base = CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>;

/// Linear extrapolation continues the end spans.
struct RawEnds {
    static double AfterLastKey(Base const& curve, double x)
    {
        return CFCChord_Eval(curve, curve.NumKeys() - 2, x);
    }
    static double BeforeFirstKey(Base const& curve, double x) { return CFCChord_Eval(curve, 0, x); }
};

template <class Twin>
using Extrapolation = CFCExtrapolation<Base, Twin, RawEnds>;

}  // namespace

template <>
double
CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::EvalRightUsingExtrapolationMethod(
    double p) const
{
    return Extrapolation<CFCRightTwin>::Eval(*this, p);
}

template <>
double
CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::EvalLeftUsingExtrapolationMethod(
    double p) const
{
    return Extrapolation<CFCLeftTwin>::Eval(*this, p);
}

double HvRawFCurveImpl::EvalRight(double x, int clamp) const
{
    double const value = EvalRightUsingExtrapolationMethod(x);
    return clamp ? ClampValue(value) : value;
}

double HvRawFCurveImpl::EvalPolyline(double x) const
{
    bool const goesOn = extrapolation == HvBaseFCurve::LinearExtrapolation;
    return goesOn ? EvalRightUsingExtrapolationMethod(x) : ValueHeldAt(x);
}

bool HvRawFCurveImpl::IsBijective() const
{
    if (NumKeys() < 2) {
        return false;
    }
    bool const up = keys[0].value < keys[1].value;
    for (unsigned int i = 1; i < NumKeys(); ++i) {
        double const from = keys[i - 1].value;
        double const to = keys[i].value;
        if (!(up ? from < to : from > to)) {
            return false;
        }
    }
    return true;
}

int HvRawFCurveImpl::EvalInverse(double value, double& parameter) const
{
    if (!IsBijective()) {
        return 0;
    }
    return CFCMonotone_Inverse(*this, value, parameter, [this, value](unsigned int i) {
        return CFCChord_Inverse(*this, i, value);
    });
}

double HvRawFCurveImpl::GetValueLowerBound(int clamp) const
{
    double bound = NumKeys() == 0 ? valueWhenNoKeys : keys[0].value;
    for (auto const& key : keys) {
        bound = std::min(bound, key.value);
    }
    return clamp ? ClampValue(bound) : bound;
}

double HvRawFCurveImpl::GetValueUpperBound(int clamp) const
{
    double bound = NumKeys() == 0 ? valueWhenNoKeys : keys[0].value;
    for (auto const& key : keys) {
        bound = std::max(bound, key.value);
    }
    return clamp ? ClampValue(bound) : bound;
}

double HvRawFCurve::EvalNoLock(double x, int clamp) const
{
    return impl_->EvalRight(x, clamp);
}

unsigned int HvRawFCurve::EvalSequence(double from, double to, double step, double tolerance,
                                       HvDoubleArray& parameters, HvDoubleArray& values,
                                       int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalSequence(from, to, step, tolerance, parameters, values, clamp);
}

double HvRawFCurve::GetValueUpperBound(int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->GetValueUpperBound(clamp);
}

double HvRawFCurve::GetValueLowerBound(int clamp) const
{
    HvCurveReader const lock(*this);
    return impl_->GetValueLowerBound(clamp);
}

bool HvRawFCurve::IsBijective() const
{
    HvCurveReader const lock(*this);
    return impl_->IsBijective();
}

int HvRawFCurve::EvalInverse(double value, double& parameter, int) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalInverse(value, parameter);
}
