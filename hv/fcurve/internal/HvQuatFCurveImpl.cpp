// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One component of a quaternion curve: life, finding keys and evaluating.

#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/fcurve/internal/cycle_span.h>
#include <hv/foundation/HvExtent2.h>

#include <algorithm>
#include <cmath>
#include <utility>

HvQuatFCurveImpl::HvQuatFCurveImpl(HvQuatCurve* shared, unsigned int shown)
    : component(shown), curve_(shared != nullptr ? shared : new HvQuatCurve)
{
    curve_->Ref();
}

HvQuatFCurveImpl::HvQuatFCurveImpl(HvQuatFCurveImpl const& other)
    : component(other.component),
      defaultBezierTangentConstraint(other.defaultBezierTangentConstraint),
      timeCurve(other.timeCurve), curve_(new HvQuatCurve(*other.curve_))
{
    curve_->Ref();
}

HvQuatFCurveImpl::~HvQuatFCurveImpl()
{
    curve_->UnRef();
}

void HvQuatFCurveImpl::Swap(HvQuatFCurveImpl& other) noexcept
{
    std::swap(component, other.component);
    std::swap(defaultBezierTangentConstraint, other.defaultBezierTangentConstraint);
    std::swap(timeCurve, other.timeCurve);
    curve_->Swap(*other.curve_);
}

// Keys.

double HvQuatFCurveImpl::AngleOf(unsigned int i) const
{
    HvPoint3<double> const angles = curve_->GetKeyValue(i);
    return component == 0 ? angles.x : component == 1 ? angles.y : angles.z;
}

void HvQuatFCurveImpl::SetAngle(unsigned int i, double radians)
{
    HvPoint3<double> angles = curve_->GetKeyValue(i);
    (component == 0 ? angles.x : component == 1 ? angles.y : angles.z) = radians;
    unsigned short const word = curve_->GetConstraintData(i);
    curve_->SetConstraintData(i, 0);
    curve_->SetKeyValue(i, angles);
    curve_->SetConstraintData(i, word);
}

void HvQuatFCurveImpl::SetValue(unsigned int i, double degrees)
{
    unsigned short const word = curve_->GetConstraintData(i);
    curve_->SetConstraintData(i, 0);
    curve_->SetKeyValue(i, component, degrees);
    curve_->SetConstraintData(i, word);
}

void HvQuatFCurveImpl::AugmentByKeys(unsigned int first, unsigned int last,
                                     HvExtent2<double>& extent) const
{
    for (unsigned int i = first; i <= last; ++i) {
        double const value = RightValueOf(i);
        extent.Augment({Parameter(i), value - kExtentMarginDegrees});
        extent.Augment({Parameter(i), value + kExtentMarginDegrees});
    }
}

// Finding keys.

unsigned int HvQuatFCurveImpl::LocateParameter(double p, int& exact) const
{
    unsigned int const count = std::min(curve_->GetNextKey(p, 0.0), NumKeys());
    exact = count != 0 && Parameter(count - 1) == p ? 1 : 0;
    return count;
}

unsigned int HvQuatFCurveImpl::GetNearestKeyIndex(double p) const
{
    int exact;
    unsigned int const r = LocateParameter(p, exact);
    if (exact || r == NumKeys()) {
        return r - 1;
    }
    return r != 0 && Parameter(r) - p >= p - Parameter(r - 1) ? r - 1 : r;
}

int HvQuatFCurveImpl::GetKeyIndicesInClosedInterval(double lo, double hi, unsigned int& first,
                                                    unsigned int& last) const
{
    return GetKeyIndicesInInterval(lo, hi, first, last, 0, 0);
}

int HvQuatFCurveImpl::GetKeyIndicesInInterval(double lo, double hi, unsigned int& first,
                                              unsigned int& last, int openAtLo, int openAtHi) const
{
    if (NumKeys() == 0 || !(lo <= hi)) {
        return 0;
    }
    int exactAtLo;
    int exactAtHi;
    unsigned int const toLo = LocateParameter(lo, exactAtLo);
    unsigned int const toHi = LocateParameter(hi, exactAtHi);
    unsigned int const begin = exactAtLo && !openAtLo ? toLo - 1 : toLo;
    unsigned int const end = exactAtHi && openAtHi ? toHi - 1 : toHi;
    if (begin >= end) {
        return 0;
    }
    first = begin;
    last = end - 1;
    return 1;
}

int HvQuatFCurveImpl::FindKey(double p, double tolerance, unsigned int& index) const
{
    unsigned int const i = tolerance >= 0 ? curve_->FindKey(p, tolerance) : HvQuatCurve::kNoKey;
    if (i == HvQuatCurve::kNoKey) {
        return 0;
    }
    index = i;
    return 1;
}

int HvQuatFCurveImpl::HasConstraintInInterval(unsigned short bits, bool all, double from, double to,
                                              int openAtFrom, int openAtTo) const
{
    unsigned int i;
    unsigned int last;
    if (!GetKeyIndicesInInterval(from, to, i, last, openAtFrom, openAtTo)) {
        return 0;
    }
    for (; i <= last; ++i) {
        CFCKeyConstraint const word{ConstraintWord(i)};
        if (all ? word.HasAll(bits) : word.HasAny(bits)) {
            return 1;
        }
    }
    return 0;
}

// Evaluating.

bool HvQuatFCurveImpl::Cycles() const
{
    return NumKeys() > 1 && (Method() == HvBaseFCurve::CycleExtrapolation ||
                             Method() == HvBaseFCurve::RelativeCycleExtrapolation);
}

double HvQuatFCurveImpl::FoldParameter(double p) const
{
    if (!Cycles()) {
        return p;
    }
    double const q = HvCycle_Fold(p, FirstParameter(), LastParameter());
    unsigned int i;
    return FindKey(q, kKeySnapParameter, i) ? Parameter(i) : q;
}

double HvQuatFCurveImpl::Eval(double p) const
{
    unsigned int i;
    return curve_->Eval(FindKey(p, kKeySnapParameter, i) ? Parameter(i) : p, component);
}

HvPoint3<double> HvQuatFCurveImpl::AnglesHeldAt(double p) const
{
    unsigned int const n = NumKeys();
    if (n == 0 || !(p > FirstParameter())) {
        return curve_->GetKeyValue(0);
    }
    return p < LastParameter() ? curve_->Eval(p) : curve_->GetKeyValue(n - 1);
}
