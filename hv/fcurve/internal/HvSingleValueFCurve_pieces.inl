// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Single-value curves: cutting, trimming and joining whole pieces. Edits of several steps run on a
// copy that is exchanged for the curve at the end: a refusal or a failed allocation leaves it as it
// was.

#ifndef HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_PIECES_INL
#define HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_PIECES_INL

#include <hv/fcurve/internal/HvSingleValueFCurve.inl>
#include <hv/foundation/array_capacity.h>

#include <cmath>

/// Clears the locks of the keys `first` to `end` - 1.
template <class Impl>
void HvSingleValueFCurve<Impl>::Unlock(unsigned int first, unsigned int end)
{
    for (unsigned int i = first; i < end; ++i) {
        unsigned short const word = impl_->ConstraintWord(i);
        impl_->SetConstraintWord(i, static_cast<unsigned short>(word & ~Impl::kEveryLock));
    }
}

template <class Impl>
void HvSingleValueFCurve<Impl>::ExchangeContents(HvSingleValueFCurve& other) noexcept
{
    impl_->Swap(*other.impl_);
    this->ExchangeUserData(other);
}

/// Starts the curve at `from` and ends it at `to` where keys lie beyond, whatever they lock. Works
/// on a read-only curve.
template <class Impl>
void HvSingleValueFCurve<Impl>::TrimTo(double from, double to)
{
    unsigned char const readOnly = impl_->readOnly;
    impl_->readOnly = 0;
    int exact;
    if (impl_->NumKeys() != 0 && from > impl_->FirstParameter()) {
        unsigned int const r = impl_->LocateParameter(from, exact);
        Unlock(0, exact ? r - 1 : r);
        RemoveHead(from);
    }
    if (impl_->NumKeys() != 0 && impl_->LastParameter() > to) {
        Unlock(impl_->LocateParameter(to, exact), impl_->NumKeys());
        RemoveTail(to);
    }
    impl_->readOnly = readOnly;
}

template <class Impl>
HvSingleValueFCurve<Impl>::HvSingleValueFCurve(HvSingleValueFCurve const& source, double from,
                                               double to)
    : HvSingleValueFCurve(source)
{
    TrimTo(from, to);
}

template <class Impl>
int HvSingleValueFCurve<Impl>::RemoveTail(double parameter)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !std::isfinite(parameter)) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        double const last = impl_->LastParameter();
        if (last == parameter) {
            return 1;
        }
        if (last > parameter && AreAnyLocked(parameter, last, 1, 0)) {
            return 0;
        }
    }
    if (!Traits::CanHold(impl_->ValueHeldAt(parameter))) {
        return 0;
    }
    unsigned int i;
    impl_->CreateNonModifyingKey(parameter, i, *this);
    impl_->RemoveTailAfterExistingKey(i, *this);
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::RemoveHead(double parameter)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !std::isfinite(parameter)) {
        return 0;
    }
    if (impl_->NumKeys() != 0) {
        double const first = impl_->FirstParameter();
        if (first == parameter) {
            return 1;
        }
        if (parameter > first && AreAnyLocked(first, parameter, 0, 1)) {
            return 0;
        }
    }
    if (!Traits::CanHold(impl_->ValueHeldAt(parameter))) {
        return 0;
    }
    unsigned int i;
    impl_->CreateNonModifyingKey(parameter, i, *this);
    impl_->RemoveHeadBeforeExistingKey(i, *this);
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::Append(HvBaseFCurve const& other)
{
    using Curve = typename Traits::Curve;
    HvCurveWriter const lock(*this);
    if (&other == this) {
        Curve const copy(static_cast<Curve const&>(other));
        return Append(copy);
    }
    if (impl_->readOnly || other.QueryFCurveKind(GetKind()) == nullptr) {
        return 0;
    }
    HvCurveReader const lockOnOther(other);
    Impl const& source = *static_cast<HvSingleValueFCurve const&>(other).impl_;
    if (source.NumKeys() == 0 || impl_->NumKeys() == 0) {
        return 0;
    }
    // Everything that may refuse comes first.
    unsigned int const fused = impl_->NumKeys() - 1;
    double const shift = impl_->LastParameter() - source.FirstParameter();
    double before = impl_->LastParameter();
    for (unsigned int i = 1; i < source.NumKeys(); ++i) {
        double const parameter = source.Parameter(i) + shift;
        bool const isCrowded = !(parameter > before);
        if ((isCrowded && Traits::kIsStepped) || !std::isfinite(parameter)) {
            return 0;
        }
        before = parameter;
    }
    auto const value = source.keys[0].value;
    CFCKeyConstraint const word{impl_->ConstraintWord(fused)};
    if (word.HasAny(CFCKeyConstraint::kValueLocked) && impl_->keys[fused].value != value) {
        return 0;
    }
    impl_->ReserveKeys(HvArrayCapacity_GrownSize(fused, source.NumKeys()));
    impl_->SetValOnExistingKey(fused, value);
    bool const hasUserData = other.HasUserData() != 0;
    if (hasUserData) {
        this->CopyKeyUserData(other, source.FirstParameter(), impl_->LastParameter());
    }
    for (unsigned int i = 1; i < source.NumKeys(); ++i) {
        auto key = source.keys[i];
        key.parameter += shift;
        if (!(key.parameter > impl_->LastParameter())) {
            continue;  // the shift has rounded two keys to one
        }
        impl_->InsertKey(impl_->NumKeys(), key, source.ConstraintWord(i));
        if (hasUserData) {
            this->CopyKeyUserData(other, source.Parameter(i), key.parameter);
        }
    }
    return impl_->HasAscendingParameters();
}

template <class Impl>
int HvSingleValueFCurve<Impl>::Paste(HvBaseFCurve const& other, double from, double to)
{
    using Curve = typename Traits::Curve;
    HvCurveWriter const lock(*this);
    HvCurveReader const lockOnOther(other);
    constexpr unsigned int kFewestKeys = Traits::kIsStepped ? 2 : 1;
    if (impl_->readOnly || other.QueryFCurveKind(GetKind()) == nullptr ||
        other.GetNumKeys() < kFewestKeys || (!Traits::kIsStepped && from > to)) {
        return 0;
    }
    if (impl_->NumKeys() != 0 && from <= impl_->LastParameter() &&
        AreAnyLocked(from, impl_->LastParameter(), 0, 0)) {
        return 0;
    }
    Curve result(static_cast<Curve const&>(*this));
    Curve tailCurve(result);
    HvSingleValueFCurve& tail = tailCurve;
    if (tail.impl_->NumKeys() != 0 && to >= tail.impl_->FirstParameter()) {
        int exact;
        tail.Unlock(0, tail.impl_->LocateParameter(to, exact));
    }
    if (!tail.RemoveHead(to) || !result.RemoveTail(from) || !result.Append(other) ||
        !result.Append(tail)) {
        return 0;
    }
    ExchangeContents(result);
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::Cut(double from, double to, HvBaseFCurve& removed)
{
    using Curve = typename Traits::Curve;
    HvCurveWriter const lock(*this);
    // An interval that is turned round, or not finite, has nothing to cut.
    bool const isInterval = from <= to && std::isfinite(from) && std::isfinite(to);
    if (impl_->readOnly || !isInterval || &removed == this ||
        removed.QueryFCurveKind(GetKind()) == nullptr) {
        return 0;
    }
    HvCurveReader const lockOnRemoved(removed);
    if ((Traits::kIsStepped && removed.GetNumKeys() != 0) || AreAnyLocked(from, to, 0, 0) ||
        !Traits::CanHold(impl_->ValueHeldAt(from)) || !Traits::CanHold(impl_->ValueHeldAt(to))) {
        return 0;
    }
    Curve keptCurve(static_cast<Curve const&>(*this));
    Curve piece(keptCurve);
    HvSingleValueFCurve& kept = keptCurve;
    if (!kept.impl_->Cut(from, to, kept)) {
        return 0;
    }
    // Locks outside of the piece do not concern it.
    piece.TrimTo(from, to);
    piece.RemoveHead(from);
    piece.RemoveTail(to);
    static_cast<HvSingleValueFCurve&>(removed).ExchangeContents(piece);
    ExchangeContents(kept);
    return 1;
}

#endif
