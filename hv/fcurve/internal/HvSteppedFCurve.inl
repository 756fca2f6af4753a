// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stepped curves: life, reading, evaluation and settings. Included by the source files of the
// boolean and the integer curve.

#ifndef HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_INL
#define HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_INL

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/stepped_value.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/array_capacity.h>

#include <algorithm>

/// The curve class of a value type.
template <class T>
struct CFCSteppedTraits;
template <>
struct CFCSteppedTraits<bool> {
    using Curve = HvBooleanFCurve;
    static constexpr HvBaseFCurve::Kind kKind = HvBaseFCurve::Boolean;
};
template <>
struct CFCSteppedTraits<int> {
    using Curve = HvIntegerFCurve;
    static constexpr HvBaseFCurve::Kind kKind = HvBaseFCurve::Integer;
};

/// Mask bits of the fields that a stepped curve has not: default segment kind and clamps.
constexpr unsigned int kSteppedUnsupportedCurveInfo = 0x38;
/// The same of a key: tangents and segment kind.
constexpr unsigned int kSteppedUnsupportedKeyInfo = 0x1F0;

// Life.

template <class T>
HvSteppedFCurve<T>::HvSteppedFCurve(T whenNoKeys)
    : HvFCurveShell<CFCSteppedImpl<T>>(new CFCSteppedImpl<T>(whenNoKeys))
{
}

template <class T>
HvSteppedFCurve<T>::HvSteppedFCurve(HvSteppedFCurve const& other) = default;

template <class T>
HvSteppedFCurve<T>& HvSteppedFCurve<T>::operator=(HvSteppedFCurve const& other) = default;

template <class T>
HvBaseFCurve const* HvSteppedFCurve<T>::QueryFCurveKind(Kind kind) const
{
    HvCurveReader const lock(*this);
    return kind == CFCSteppedTraits<T>::kKind ? this : nullptr;
}

template <class T>
HvBaseFCurve::Kind HvSteppedFCurve<T>::GetKind() const
{
    return CFCSteppedTraits<T>::kKind;
}

template <class T>
HvBaseFCurve* HvSteppedFCurve<T>::Clone() const
{
    using Curve = typename CFCSteppedTraits<T>::Curve;
    return new Curve(static_cast<Curve const&>(*this));
}

template <class T>
int HvSteppedFCurve<T>::Set(HvBaseFCurve const& other)
{
    if (other.GetKind() != GetKind()) {
        return 0;
    }
    *this = static_cast<HvSteppedFCurve const&>(other);
    return 1;
}

// Reading keys.

template <class T>
int HvSteppedFCurve<T>::GetKeyValue(double parameter, KeySide side, double& value,
                                    double tolerance) const
{
    HvCurveReader const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    value = static_cast<double>(side == HvBaseFCurve::Left ? impl_->LeftValueOf(i)
                                                           : impl_->RightValueOf(i));
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::GetFCurveInfo(FCurveInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    HvCurveReader const lock(*this);
    if (info->mask & 0x01) {
        info->kind = GetKind();
    }
    if (info->mask & 0x02) {
        info->numKeys = impl_->NumKeys();
    }
    if (info->mask & 0x04) {
        info->valueWhenNoKeys = static_cast<double>(impl_->valueWhenNoKeys);
    }
    if (info->mask & 0x40) {
        info->extrapolation = static_cast<ExtrapolationMethod>(impl_->extrapolation);
    }
    if ((info->mask & kSteppedUnsupportedCurveInfo) == 0) {
        return 1;
    }
    info->mask &= ~kSteppedUnsupportedCurveInfo;
    info->defaultSegmentKind = HvBaseFCurve::ConstantSegment;
    info->lowerClamp = 0;
    info->upperClamp = 0;
    return 0;
}

template <class T>
int HvSteppedFCurve<T>::GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    HvCurveReader const lock(*this);
    if (index >= impl_->NumKeys()) {
        info->mask = 0;
        return 0;
    }
    return FillKeyInfo(index, *info);
}

template <class T>
int HvSteppedFCurve<T>::GetKeyInfoFromParameter(double parameter, KeyInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    HvCurveReader const lock(*this);
    unsigned int index;
    if (!impl_->FindKey(parameter, 0, index)) {
        info->mask = 0;
        return 0;
    }
    int const result = FillKeyInfo(index, *info);
    if (info->mask & 0x002) {
        info->parameter = parameter;  // -0 stays -0
    }
    return result;
}

template <class T>
int HvSteppedFCurve<T>::FillKeyInfo(unsigned int index, KeyInfo& info) const
{
    double const value = static_cast<double>(impl_->RightValueOf(index));
    if (info.mask & 0x001) {
        info.index = index;
    }
    if (info.mask & 0x002) {
        info.parameter = impl_->Parameter(index);
    }
    if (info.mask & 0x004) {
        info.leftValue = value;
    }
    if (info.mask & 0x008) {
        info.rightValue = value;
    }
    if (info.mask & 0x200) {
        info.selected = impl_->selected && impl_->IsSelected(index) ? 1 : 0;
    }
    if ((info.mask & kSteppedUnsupportedKeyInfo) == 0) {
        return 1;
    }
    info.mask &= ~kSteppedUnsupportedKeyInfo;
    info.leftTangentX = 0;
    info.leftTangentY = 0;
    info.rightTangentX = 0;
    info.rightTangentY = 0;
    info.segmentKind = HvBaseFCurve::ConstantSegment;
    return 0;
}

template <class T>
unsigned int HvSteppedFCurve<T>::GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                                         HvDoubleArray& rightValues, int) const
{
    HvCurveReader const lock(*this);
    unsigned int const n = impl_->NumKeys();
    // All three grow first: either all get the keys or none does.
    parameters.Reserve(HvArrayCapacity_GrownSize(parameters.Size(), n));
    leftValues.Reserve(HvArrayCapacity_GrownSize(leftValues.Size(), n));
    rightValues.Reserve(HvArrayCapacity_GrownSize(rightValues.Size(), n));
    for (unsigned int i = 0; i < n; ++i) {
        parameters.Add(impl_->Parameter(i));
        leftValues.Add(static_cast<double>(impl_->LeftValueOf(i)));
        rightValues.Add(static_cast<double>(impl_->RightValueOf(i)));
    }
    return n;
}

// Evaluating.

template <class T>
double HvSteppedFCurve<T>::EvalNoLock(double parameter, int) const
{
    this->GetNearestKeyParameterInCenteredInterval(parameter, kKeySnapParameter);
    return static_cast<double>(impl_->EvalRightUsingExtrapolationMethod(parameter));
}

template <class T>
unsigned int HvSteppedFCurve<T>::EvalSequence(double from, double to, double step, double,
                                              HvDoubleArray& parameters, HvDoubleArray& values,
                                              int) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalSequence(from, to, step, 0, parameters, values, 0);
}

template <class T>
double HvSteppedFCurve<T>::GetValueUpperBound(int) const
{
    HvCurveReader const lock(*this);
    if (impl_->NumKeys() == 0) {
        return static_cast<double>(impl_->valueWhenNoKeys);
    }
    T bound = impl_->leftValue;
    for (auto const& key : impl_->keys) {
        bound = std::max(bound, key.value);
    }
    return static_cast<double>(bound);
}

template <class T>
double HvSteppedFCurve<T>::GetValueLowerBound(int) const
{
    HvCurveReader const lock(*this);
    if (impl_->NumKeys() == 0) {
        return static_cast<double>(impl_->valueWhenNoKeys);
    }
    T bound = impl_->leftValue;
    for (auto const& key : impl_->keys) {
        bound = std::min(bound, key.value);
    }
    return static_cast<double>(bound);
}

template <class T>
int HvSteppedFCurve<T>::SetClampingValues(double, double)
{
    return 0;
}

template <class T>
int HvSteppedFCurve<T>::GetClampingValues(double& lower, double& upper) const
{
    lower = -kHvMaxDouble;
    upper = kHvMaxDouble;
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::EvalInverse(double, double&, int) const
{
    HvCurveReader const lock(*this);
    return 0;
}

template <class T>
bool HvSteppedFCurve<T>::IsBijective() const
{
    HvCurveReader const lock(*this);
    return false;
}

// Constraints and settings.

/// The bits of a stepped key's word for a supported constraint.
constexpr unsigned short CFCSteppedConstraint_Bits(HvBaseFCurve::KeyConstraint constraint)
{
    return CFCKeyConstraint_Bits(constraint) & CFCBooleanStore::kEveryLock;
}

template <class T>
int HvSteppedFCurve<T>::SetConstraint(double& parameter, KeyConstraint constraint, int on,
                                      double tolerance)
{
    if (!IsConstraintSupported(constraint)) {
        return 0;
    }
    HvCurveWriter const lock(*this);
    unsigned int i;
    if (impl_->readOnly || !impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    impl_->constraints[i].Assign(CFCSteppedConstraint_Bits(constraint), on != 0);
    parameter = impl_->Parameter(i);
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::GetConstraint(double& parameter, KeyConstraint constraint, int& on,
                                      double tolerance) const
{
    if (!IsConstraintSupported(constraint)) {
        return 0;
    }
    HvCurveReader const lock(*this);
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    on = impl_->constraints[i].HasAll(CFCSteppedConstraint_Bits(constraint)) ? 1 : 0;
    parameter = impl_->Parameter(i);
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::GetConstraintByIndex(unsigned int index, KeyConstraint constraint,
                                             int& on) const
{
    HvCurveReader const lock(*this);
    if (!IsConstraintSupported(constraint) || index >= impl_->NumKeys()) {
        return 0;
    }
    on = impl_->constraints[index].HasAll(CFCSteppedConstraint_Bits(constraint)) ? 1 : 0;
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::IsConstraintSupported(KeyConstraint constraint) const
{
    return constraint == HvBaseFCurve::ParameterLocked || constraint == HvBaseFCurve::ValueLocked ||
                   constraint == HvBaseFCurve::AllLocked
               ? 1
               : 0;
}

template <class T>
int HvSteppedFCurve<T>::SetExtrapolationMethod(ExtrapolationMethod method)
{
    HvCurveWriter const lock(*this);
    bool const accepted = method == HvBaseFCurve::ConstantExtrapolation ||
                          method == HvBaseFCurve::CycleExtrapolation ||
                          method == HvBaseFCurve::RelativeCycleExtrapolation;
    if (impl_->readOnly || !accepted) {
        return 0;
    }
    impl_->extrapolation = static_cast<unsigned char>(method);
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::SetDefaultBezierTangentConstraint(bool on)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    impl_->defaultBezierTangentConstraint = on ? 1 : 0;
    return 1;
}

#endif
