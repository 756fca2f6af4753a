// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Shifting, scaling and mirroring the axis of single-value curves. The new parameters are looked at
// before the first is stored, so that a refusal leaves the curve as it was.

#ifndef HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_AXES_INL
#define HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_AXES_INL

#include <hv/fcurve/internal/HvSingleValueFCurve.inl>
#include <hv/foundation/HvDoubleArray.h>

#include <cmath>

/// Whether move(0), move(1), ... are finite and rise strictly.
template <class Move>
bool CFCSingleValue_StaysInOrder(unsigned int numKeys, Move move)
{
    for (unsigned int i = 0; i < numKeys; ++i) {
        if (!std::isfinite(move(i)) || (i != 0 && !(move(i - 1) < move(i)))) {
            return false;
        }
    }
    return true;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::ShiftParameters(double offset)
{
    HvCurveWriter const lock(*this);
    auto const moved = [&](unsigned int i) { return impl_->Parameter(i) + offset; };
    if (impl_->readOnly ||
        this->AreAnyParametersLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0) ||
        !CFCSingleValue_StaysInOrder(impl_->NumKeys(), moved) ||
        !this->TranslateAllKeyUserData(offset)) {
        return 0;
    }
    for (auto& key : impl_->keys) {
        key.parameter += offset;
    }
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::ScaleParameterAxis(double scale)
{
    HvCurveWriter const lock(*this);
    auto const moved = [&](unsigned int i) { return impl_->Parameter(i) * scale; };
    if (impl_->readOnly ||
        this->AreAnyParametersLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0) ||
        !CFCSingleValue_StaysInOrder(impl_->NumKeys(), moved)) {
        return 0;
    }
    if (impl_->NumKeys() != 0 && !this->ScaleAllKeyUserData(scale)) {
        return 0;
    }
    for (auto& key : impl_->keys) {
        key.parameter *= scale;
    }
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::MirrorParameters()
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly ||
        this->AreAnyParametersLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    unsigned int const n = impl_->NumKeys();
    if (n == 0) {
        return 1;
    }
    // The ends change places exactly, whatever the sum rounds to.
    double const a = impl_->FirstParameter();
    double const b = impl_->LastParameter();
    auto const mirrored = [&](unsigned int i) {
        return i == 0 ? b : i == n - 1 ? a : a + b - impl_->Parameter(i);
    };
    if (!CFCSingleValue_StaysInOrder(n, [&](unsigned int i) { return mirrored(n - 1 - i); })) {
        return 0;
    }
    if (this->HasUserData()) {
        HvDoubleArray from(n);
        HvDoubleArray to(n);
        for (unsigned int i = 0; i < n; ++i) {
            if (this->HasUserData(impl_->Parameter(i))) {
                from.Add(impl_->Parameter(i));
                to.Add(mirrored(i));
            }
        }
        if (!this->MoveKeyUserDataTail(from, to)) {
            return 0;
        }
    }
    for (unsigned int i = 0; i < n; ++i) {
        impl_->keys[i].parameter = mirrored(i);
    }
    impl_->ReverseKeys();
    return 1;
}

#endif
