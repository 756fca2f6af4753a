// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stepped curves: life, values, evaluation and constraints. Included by the source files of the
// boolean and the integer curve.

#ifndef HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_INL
#define HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_INL

#include <hv/fcurve/HvBooleanFCurve.h>
#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvSingleValueFCurve.inl>
#include <hv/fcurve/internal/stepped_value.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/array_capacity.h>

#include <algorithm>

/// What both stepped kinds have in common of their traits.
template <class T>
struct CFCSteppedTraits {
    static constexpr bool kIsStepped = true;
    /// Mask bits of the fields that a stepped curve has not: default segment kind and clamps.
    static constexpr unsigned int kUnsupportedCurveInfo = 0x38;
    /// The same of a key: tangents and segment kind.
    static constexpr unsigned int kUnsupportedKeyInfo = 0x1F0;

    static bool IsValue(double number) { return CFCSteppedValue_IsExact<T>(number); }
    static bool CanHold(double) { return true; }
    static T ValueFrom(double number) { return CFCSteppedValue_From<T>(number); }

    static T ValueForNewKey(CFCSteppedImpl<T> const& impl, double p) { return impl.ValueHeldAt(p); }

    static int FillCurveInfo(CFCSteppedImpl<T> const&, HvBaseFCurve::FCurveInfo& info)
    {
        if ((info.mask & kUnsupportedCurveInfo) == 0) {
            return 1;
        }
        info.mask &= ~kUnsupportedCurveInfo;
        info.defaultSegmentKind = HvBaseFCurve::ConstantSegment;
        info.lowerClamp = 0;
        info.upperClamp = 0;
        return 0;
    }
    static int FillSegmentInfo(HvBaseFCurve::KeyInfo& info)
    {
        if ((info.mask & kUnsupportedKeyInfo) == 0) {
            return 1;
        }
        info.mask &= ~kUnsupportedKeyInfo;
        info.leftTangentX = 0;
        info.leftTangentY = 0;
        info.rightTangentX = 0;
        info.rightTangentY = 0;
        info.segmentKind = HvBaseFCurve::ConstantSegment;
        return 0;
    }
};

template <>
struct CFCSingleValueTraits<CFCBooleanImpl> : CFCSteppedTraits<bool> {
    using Curve = HvBooleanFCurve;
    static constexpr HvBaseFCurve::Kind kKind = HvBaseFCurve::Boolean;
};
template <>
struct CFCSingleValueTraits<CFCIntegerImpl> : CFCSteppedTraits<int> {
    using Curve = HvIntegerFCurve;
    static constexpr HvBaseFCurve::Kind kKind = HvBaseFCurve::Integer;
};

// Life.

template <class T>
HvSteppedFCurve<T>::HvSteppedFCurve(T whenNoKeys)
    : HvSingleValueFCurve<CFCSteppedImpl<T>>(new CFCSteppedImpl<T>(whenNoKeys))
{
}

template <class T>
HvSteppedFCurve<T>::HvSteppedFCurve(HvSteppedFCurve const& source, double from, double to)
    : HvSingleValueFCurve<CFCSteppedImpl<T>>(source, from, to)
{
}

template <class T>
HvSteppedFCurve<T>::HvSteppedFCurve(HvSteppedFCurve const& other) = default;

template <class T>
HvSteppedFCurve<T>& HvSteppedFCurve<T>::operator=(HvSteppedFCurve const& other) = default;

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

// Writing values.

template <class T>
int HvSteppedFCurve<T>::SetKeyValue(double parameter, KeySide side, double value, double tolerance)
{
    HvCurveWriter const lock(*this);
    unsigned int i;
    bool const isSide = side == HvBaseFCurve::Left || side == HvBaseFCurve::Right;
    if (impl_->readOnly || !isSide ||
        this->AreAnyValuesLockedInInterval(parameter, parameter, 0, 0) ||
        !impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    T const v = CFCSteppedValue_From<T>(value);
    bool const isLeftOfFirst = side == HvBaseFCurve::Left && i == 0;
    unsigned int const target = side == HvBaseFCurve::Left && i != 0 ? i - 1 : i;
    if (impl_->constraints[target].HasAny(CFCKeyConstraint::kValueLocked) &&
        impl_->keys[target].value != v) {
        return 0;
    }
    // The left value of the curve follows its own side only.
    (isLeftOfFirst ? impl_->leftValue : impl_->keys[target].value) = v;
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::MirrorValues()
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || this->AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        return 1;
    }
    impl_->valueWhenNoKeys = CFCSteppedValue_Mirrored(impl_->valueWhenNoKeys);
    for (auto& key : impl_->keys) {
        key.value = CFCSteppedValue_Mirrored(key.value);
    }
    // Not the mirrored one: a mirrored curve starts from nothing.
    impl_->leftValue = T();
    return 1;
}

template <class T>
int HvSteppedFCurve<T>::MirrorParameters()
{
    HvCurveWriter const lock(*this);
    if (!HvSingleValueFCurve<CFCSteppedImpl<T>>::MirrorParameters()) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        impl_->valueWhenNoKeys = impl_->keys[0].value;
        impl_->leftValue = T();
    }
    return 1;
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

// Constraints.

/// The bits of a stepped key's word for a supported constraint.
constexpr unsigned short CFCSteppedConstraint_Bits(HvBaseFCurve::KeyConstraint constraint)
{
    return CFCKeyConstraint_Bits(constraint) & CFCBooleanStore::kEveryLock;
}

template <class T>
int HvSteppedFCurve<T>::SetConstraint(double& parameter, KeyConstraint constraint, int on,
                                      double tolerance)
{
    if (!this->IsConstraintSupported(constraint)) {
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
    if (!this->IsConstraintSupported(constraint)) {
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
    if (!this->IsConstraintSupported(constraint) || index >= impl_->NumKeys()) {
        return 0;
    }
    on = impl_->constraints[index].HasAll(CFCSteppedConstraint_Bits(constraint)) ? 1 : 0;
    return 1;
}

#endif
