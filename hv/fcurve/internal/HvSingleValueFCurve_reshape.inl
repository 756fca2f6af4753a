// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves of single values: whole stretches moved, resampled and reduced. Each works on a copy, so
// that a refusal or a failed allocation leaves the curve as it was.

#ifndef HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_RESHAPE_INL
#define HV_FCURVE_INTERNAL_HVSINGLEVALUEFCURVE_RESHAPE_INL

#include <hv/fcurve/internal/CFCSingleValueImpl_reshape.inl>
#include <hv/fcurve/internal/HvSingleValueFCurve.inl>
#include <hv/fcurve/internal/SnapShotHelper.h>
#include <hv/fcurve/internal/curve_rescale.h>

template <class Impl>
int HvSingleValueFCurve<Impl>::ScaleAndOffsetParameters(double from, double to, double pivot,
                                                        double scale, double offset, int rippleLeft,
                                                        int rippleRight, RegionHandle handle,
                                                        int selectedOnly)
{
    using Curve = typename Traits::Curve;
    HvCurveWriter const lock(*this);
    HvCurveRescale const rescale{from,       to,          pivot,  scale,       offset,
                                 rippleLeft, rippleRight, handle, selectedOnly};
    if (impl_->readOnly ||
        this->AreAnyParametersLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0) ||
        !rescale.IsPossible()) {
        return 0;
    }
    if (rescale.IsIdentity() || impl_->NumKeys() == 0) {
        return 1;
    }
    Curve work(static_cast<Curve const&>(*this));
    if (!rescale.ApplyTo(work)) {
        return 0;
    }
    ExchangeContents(work);
    return 1;
}

template <class Impl>
int HvSingleValueFCurve<Impl>::ResampleSequence(double from, double to, double step,
                                                int keepExisting, int ignoreExtrapolation)
{
    using Curve = typename Traits::Curve;
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    HvResampleIntervals const intervals = HvResample_Fold(*impl_, from, to, ignoreExtrapolation);
    Curve work(static_cast<Curve const&>(*this));
    auto& keys = *static_cast<HvSingleValueFCurve&>(work).impl_;
    for (unsigned int i = 0; i < intervals.count; ++i) {
        if (!keys.ResampleSequence(intervals.from[i], intervals.to[i], step, keepExisting, work)) {
            return 0;
        }
    }
    ExchangeContents(work);
    return 1;
}

template <class Impl>
unsigned int HvSingleValueFCurve<Impl>::ReduceNumKeys(double from, double to, double tolerance)
{
    using Curve = typename Traits::Curve;
    HvCurveWriter const lock(*this);
    if (impl_->readOnly) {
        return 0;
    }
    Curve work(static_cast<Curve const&>(*this));
    auto& keys = *static_cast<HvSingleValueFCurve&>(work).impl_;
    unsigned int const removed = keys.ReduceNumKeys(from, to, tolerance, work);
    ExchangeContents(work);
    return removed;
}

#endif
