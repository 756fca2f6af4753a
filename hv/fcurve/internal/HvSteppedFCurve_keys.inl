// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stepped curves: making, setting and removing keys. A parameter that is not finite makes no key:
// the order of the keys would be lost.

#ifndef HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_KEYS_INL
#define HV_FCURVE_INTERNAL_HVSTEPPEDFCURVE_KEYS_INL

#include <hv/fcurve/internal/HvSteppedFCurve.inl>

#include <algorithm>
#include <cmath>

template <class T>
int HvSteppedFCurve<T>::AreAnyLocked(double from, double to, int openAtFrom, int openAtTo) const
{
    constexpr bool kAnyBit = false;
    return impl_->HasConstraintInInterval(CFCBooleanStore::kEveryLock, kAnyBit, from, to,
                                          openAtFrom, openAtTo);
}

/// The value at a parameter, without extrapolation but the constant one.
template <class T>
T HvSteppedFCurve<T>::ValueHeldAt(double parameter) const
{
    if (impl_->NumKeys() == 0) {
        return impl_->valueWhenNoKeys;
    }
    int exact;
    unsigned int const r = impl_->LocateParameter(parameter, exact);
    return r == 0 ? impl_->leftValue : impl_->keys[r - 1].value;
}

template <class T>
int HvSteppedFCurve<T>::CreateKey(double parameter, double value)
{
    if (!CFCSteppedValue_IsExact<T>(value) || !std::isfinite(parameter)) {
        return 0;
    }
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    return impl_->CreateKey(parameter, CFCSteppedValue_From<T>(value), *this);
}

template <class T>
int HvSteppedFCurve<T>::MergeAndCreateKey(double from, double to, double parameter, double value,
                                          int openAtFrom, int openAtTo, int keepKeyData)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !std::isfinite(parameter) || std::isnan(from) || std::isnan(to) ||
        AreAnyLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    return impl_->MergeAndCreateKey(from, to, parameter, CFCSteppedValue_From<T>(value), *this,
                                    openAtFrom, openAtTo, keepKeyData);
}

template <class T>
int HvSteppedFCurve<T>::CreateNonModifyingKey(double parameter, int ignoreExtrapolation)
{
    HvCurveWriter const lock(*this);
    double const p = ignoreExtrapolation ? parameter : impl_->FoldParameter(parameter);
    if (impl_->readOnly || !std::isfinite(p)) {
        return 0;
    }
    return impl_->CreateKey(p, ValueHeldAt(p), *this);
}

template <class T>
int HvSteppedFCurve<T>::MergeAndCreateNonModifyingKey(double from, double to, double parameter,
                                                      int openAtFrom, int openAtTo, int keepKeyData,
                                                      int ignoreExtrapolation)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || AreAnyLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    double p = parameter;
    if (!ignoreExtrapolation && impl_->Cycles()) {
        // The interval moves along into the key range.
        p = impl_->FoldParameter(parameter);
        double const d = p - parameter;
        from = std::min(to + d, from + d);
        to = to + d;
        p = p < from ? from : p > to ? to : p;
    }
    if (!std::isfinite(p) || std::isnan(from) || std::isnan(to)) {
        return 0;
    }
    return impl_->MergeAndCreateKey(from, to, p, ValueHeldAt(p), *this, openAtFrom, openAtTo,
                                    keepKeyData);
}

template <class T>
int HvSteppedFCurve<T>::RemoveKey(double parameter, double tolerance)
{
    HvCurveWriter const lock(*this);
    // Locks are asked for at the parameter itself: a locked key near it can be removed.
    if (impl_->readOnly || AreAnyLocked(parameter, parameter, 0, 0)) {
        return 0;
    }
    return impl_->NumKeys() == 0 ? 1 : impl_->RemoveKey(parameter, tolerance, *this);
}

template <class T>
int HvSteppedFCurve<T>::RemoveKeys(double from, double to, int openAtFrom, int openAtTo)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    if (impl_->NumKeys() == 0 || !(from <= to)) {
        return 1;
    }
    bool const closed = from == to && (openAtFrom != 0) != (openAtTo != 0);
    int const openFrom = closed ? 0 : openAtFrom;
    int const openTo = closed ? 0 : openAtTo;
    if (AreAnyLocked(from, to, openFrom, openTo)) {
        return 0;
    }
    impl_->RemoveKeysBetween(from, to, openFrom, openTo, *this);
    return 1;
}

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
int HvSteppedFCurve<T>::SetValueWhenNoKeys(double value)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    impl_->valueWhenNoKeys = CFCSteppedValue_From<T>(value);
    return 1;
}

#endif
