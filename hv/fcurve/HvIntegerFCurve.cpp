// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The integer curve: what only it does, and the stepped templates over int.

#include <hv/fcurve/HvIntegerFCurve.h>
#include <hv/fcurve/internal/CFCBaseImpl.inl>
#include <hv/fcurve/internal/CFCBaseImpl_stepped.inl>
#include <hv/fcurve/internal/CFCSingleValueImpl.inl>
#include <hv/fcurve/internal/HvFCurveShell.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_axes.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_keys.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_pieces.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve_reshape.inl>
#include <hv/fcurve/internal/HvSteppedFCurve.inl>

#include <cmath>
#include <memory>
#include <utility>

template class CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>;
template class CFCSingleValueImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>;
template class HvFCurveShell<CFCIntegerImpl>;
template class HvSingleValueFCurve<CFCIntegerImpl>;
template class HvSteppedFCurve<int>;

HvIntegerFCurve::HvIntegerFCurve(double valueWhenNoKeys)
    : HvSteppedFCurve<int>(CFCSteppedValue_From<int>(valueWhenNoKeys))
{
}

HvIntegerFCurve::HvIntegerFCurve(HvIntegerFCurve const& other) = default;

HvIntegerFCurve::HvIntegerFCurve(HvIntegerFCurve const& source, double from, double to)
    : HvSteppedFCurve<int>(source, from, to)
{
}

HvIntegerFCurve& HvIntegerFCurve::operator=(HvIntegerFCurve const& other) = default;

HvBaseFCurve* HvIntegerFCurve::SnapShot(double from, double to, ExtrapolationMethod method) const
{
    if (!HvSnapShot_IsInterval(from, to)) {
        return nullptr;
    }
    // The copy is made under this curve's section. What follows concerns the copy alone, whose user
    // data are edited as a writer: holding the section meanwhile would turn round the order of
    // locks.
    std::unique_ptr<HvIntegerFCurve> result(new HvIntegerFCurve(*this));
    bool const isMade = SnapShotHelper(*result, *result->impl_, from, to, method);
    return isMade ? result.release() : nullptr;
}

int HvIntegerFCurve::SmoothSequence(double from, double to, double const* kernel,
                                    unsigned int kernelSize)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(from, to, 0, 0)) {
        return 0;
    }
    return impl_->SmoothSequence(from, to, kernel, kernelSize, *this);
}

int HvIntegerFCurve::ShiftValues(double offset)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    long long const shift = CFCSteppedValue_Rounded(offset);
    impl_->valueWhenNoKeys = CFCSteppedValue_Narrow<int>(impl_->valueWhenNoKeys + shift);
    for (auto& key : impl_->keys) {
        key.value = CFCSteppedValue_Narrow<int>(key.value + shift);
    }
    return 1;
}

int HvIntegerFCurve::ScaleAndShiftValues(double scale, double offset)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !(std::fabs(scale) >= kSmallestValueScale) ||
        AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    long long const s = CFCSteppedValue_Rounded(scale);
    long long const o = CFCSteppedValue_Rounded(offset);
    auto const changed = [=](int value) { return CFCSteppedValue_Narrow<int>(o + s * value); };
    impl_->valueWhenNoKeys = changed(impl_->valueWhenNoKeys);
    impl_->lowerClamp = changed(impl_->lowerClamp);
    impl_->upperClamp = changed(impl_->upperClamp);
    if (impl_->lowerClamp > impl_->upperClamp) {
        std::swap(impl_->lowerClamp, impl_->upperClamp);
    }
    // A key's left value is the new value of the key before it: the chain is deliberate.
    for (unsigned int i = 0; i < impl_->NumKeys(); ++i) {
        impl_->keys[i].value = changed(impl_->LeftValueOf(i));
    }
    return 1;
}
