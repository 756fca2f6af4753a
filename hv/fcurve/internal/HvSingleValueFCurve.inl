// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves whose keys hold one value: life, infos and settings. Included by the one source file of
// each kind that instantiates the slots, after the kind's traits.

#ifndef HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_INL
#define HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_INL

#include <hv/fcurve/HvSingleValueFCurve.h>
#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvCurveGuards.h>

/// What tells one kind from another. A specialisation has
///  - `Curve` and `kKind`, the class and its kind;
///  - `kIsStepped`: a stepped kind has no linear extrapolation, keeps even the stored flags when it
///    is read-only, pastes only curves of two keys or more, cuts only into an empty curve and
///    refuses to append where two keys would fall on one parameter;
///  - `IsValue(number)`: whether CreateKey takes the number, `CanHold(number)`: whether the other
///    slots do, and `ValueFrom(number)`: the value that it stands for;
///  - `ValueForNewKey(impl, p)`: the value at p of a key that shall not change the curve;
///  - `FillCurveInfo(impl, info)` and `FillSegmentInfo(info)`: the fields of the infos that not
///    every kind has, and the result of the slot.
template <class Impl>
struct CFCSingleValueTraits;

// Life.

template <class Impl>
HvSingleValueFCurve<Impl>::HvSingleValueFCurve(Impl* impl) : HvFCurveShell<Impl>(impl)
{
}

template <class Impl>
HvSingleValueFCurve<Impl>::HvSingleValueFCurve(HvSingleValueFCurve const& other) = default;

template <class Impl>
HvSingleValueFCurve<Impl>&
HvSingleValueFCurve<Impl>::operator=(HvSingleValueFCurve const& other) = default;

template <class Impl>
HvBaseFCurve const* HvSingleValueFCurve<Impl>::QueryFCurveKind(Kind kind) const
{
    HvCurveReader const lock(*this);
    return kind == Traits::kKind ? this : nullptr;
}

template <class Impl>
HvBaseFCurve::Kind HvSingleValueFCurve<Impl>::GetKind() const
{
    return Traits::kKind;
}

template <class Impl>
HvBaseFCurve* HvSingleValueFCurve<Impl>::Clone() const
{
    using Curve = typename Traits::Curve;
    return new Curve(static_cast<Curve const&>(*this));
}

template <class Impl>
int HvSingleValueFCurve<Impl>::Set(HvBaseFCurve const& other)
{
    if (other.GetKind() != GetKind()) {
        return 0;
    }
    *this = static_cast<HvSingleValueFCurve const&>(other);
    return 1;
}

// Infos.

template <class Impl>
int HvSingleValueFCurve<Impl>::GetFCurveInfo(FCurveInfo* info) const
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
    return Traits::FillCurveInfo(*impl_, *info);
}

template <class Impl>
int HvSingleValueFCurve<Impl>::GetKeyInfoFromIndex(unsigned int index, KeyInfo* info) const
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

template <class Impl>
int HvSingleValueFCurve<Impl>::GetKeyInfoFromParameter(double parameter, KeyInfo* info) const
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

template <class Impl>
int HvSingleValueFCurve<Impl>::FillKeyInfo(unsigned int index, KeyInfo& info) const
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
    return Traits::FillSegmentInfo(info);
}

// Constraints and settings.

template <class Impl>
int HvSingleValueFCurve<Impl>::IsConstraintSupported(KeyConstraint constraint) const
{
    return constraint == HvBaseFCurve::ParameterLocked || constraint == HvBaseFCurve::ValueLocked ||
                   constraint == HvBaseFCurve::AllLocked
               ? 1
               : 0;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::SetExtrapolationMethod(ExtrapolationMethod method)
{
    HvCurveWriter const lock(*this);
    bool const isMethod = method >= HvBaseFCurve::ConstantExtrapolation &&
                          method <= HvBaseFCurve::RelativeCycleExtrapolation;
    bool const hasNoLine = Traits::kIsStepped && method == HvBaseFCurve::LinearExtrapolation;
    if (impl_->readOnly || !isMethod || hasNoLine) {
        return 0;
    }
    impl_->extrapolation = static_cast<unsigned char>(method);
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::SetDefaultBezierTangentConstraint(bool on)
{
    HvCurveWriter const lock(*this);
    if (Traits::kIsStepped && impl_->readOnly) {
        return 0;
    }
    impl_->defaultBezierTangentConstraint = on ? 1 : 0;
    return 1;
}

#endif
