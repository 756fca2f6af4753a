// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Single-value curves: making, setting and removing keys. A parameter that is not finite makes no
// key: the order of the keys would be lost.

#ifndef HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_KEYS_INL
#define HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_KEYS_INL

#include <hv/fcurve/internal/HvSingleValueFCurve.inl>

#include <algorithm>
#include <cmath>

template <class Impl>
int HvSingleValueFCurve<Impl>::AreAnyLocked(double from, double to, int openAtFrom,
                                            int openAtTo) const
{
    constexpr bool kAnyBit = false;
    return impl_->HasConstraintInInterval(Impl::kEveryLock, kAnyBit, from, to, openAtFrom,
                                          openAtTo);
}

template <class Impl>
int HvSingleValueFCurve<Impl>::CreateKey(double parameter, double value)
{
    if (!Traits::IsValue(value) || !std::isfinite(parameter)) {
        return 0;
    }
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    return impl_->CreateKey(parameter, Traits::ValueFrom(value), *this);
}

template <class Impl>
int HvSingleValueFCurve<Impl>::MergeAndCreateKey(double from, double to, double parameter,
                                                 double value, int openAtFrom, int openAtTo,
                                                 int keepKeyData)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !std::isfinite(parameter) || std::isnan(from) || std::isnan(to) ||
        !Traits::CanHold(value) || AreAnyLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    if (!Traits::kIsStepped && from > to) {
        return 1;  // an interval that is turned round is empty
    }
    return impl_->MergeAndCreateKey(from, to, parameter, Traits::ValueFrom(value), *this,
                                    openAtFrom, openAtTo, keepKeyData);
}

template <class Impl>
int HvSingleValueFCurve<Impl>::CreateNonModifyingKey(double parameter, int ignoreExtrapolation)
{
    HvCurveWriter const lock(*this);
    double const p = ignoreExtrapolation ? parameter : impl_->FoldParameter(parameter);
    if (impl_->readOnly || !std::isfinite(p)) {
        return 0;
    }
    auto const value = Traits::ValueForNewKey(*impl_, p);
    return Traits::CanHold(value) ? impl_->CreateKey(p, value, *this) : 0;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::MergeAndCreateNonModifyingKey(double from, double to,
                                                             double parameter, int openAtFrom,
                                                             int openAtTo, int keepKeyData,
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
    if (!Traits::kIsStepped && from > to) {
        return 1;
    }
    auto const value = impl_->ValueHeldAt(p);
    return Traits::CanHold(value) ? impl_->MergeAndCreateKey(from, to, p, value, *this, openAtFrom,
                                                             openAtTo, keepKeyData)
                                  : 0;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::RemoveKey(double parameter, double tolerance)
{
    HvCurveWriter const lock(*this);
    // Locks are asked for at the parameter itself: a locked key near it can be removed.
    if (impl_->readOnly || AreAnyLocked(parameter, parameter, 0, 0)) {
        return 0;
    }
    return impl_->NumKeys() == 0 ? 1 : impl_->RemoveKey(parameter, tolerance, *this);
}

template <class Impl>
int HvSingleValueFCurve<Impl>::RemoveKeys(double from, double to, int openAtFrom, int openAtTo)
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

template <class Impl>
int HvSingleValueFCurve<Impl>::SetValueWhenNoKeys(double value)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !Traits::CanHold(value)) {
        return 0;
    }
    impl_->valueWhenNoKeys = Traits::ValueFrom(value);
    return 1;
}

#endif
