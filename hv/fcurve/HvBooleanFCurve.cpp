// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The boolean curve: what only it does, and the stepped templates over bool.

#include <hv/fcurve/HvBooleanFCurve.h>
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

#include <memory>

template class CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>;
template class CFCSingleValueImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>;
template class HvFCurveShell<CFCBooleanImpl>;
template class HvSingleValueFCurve<CFCBooleanImpl>;
template class HvSteppedFCurve<bool>;

HvBooleanFCurve::HvBooleanFCurve(double valueWhenNoKeys)
    : HvSteppedFCurve<bool>(CFCSteppedValue_From<bool>(valueWhenNoKeys))
{
}

HvBooleanFCurve::HvBooleanFCurve(HvBooleanFCurve const& other) = default;

HvBooleanFCurve::HvBooleanFCurve(HvBooleanFCurve const& source, double from, double to)
    : HvSteppedFCurve<bool>(source, from, to)
{
}

HvBooleanFCurve& HvBooleanFCurve::operator=(HvBooleanFCurve const& other) = default;

HvBaseFCurve* HvBooleanFCurve::SnapShot(double from, double to, ExtrapolationMethod method) const
{
    HvCurveWriter const lock(*this);
    if (!HvSnapShot_IsInterval(from, to)) {
        return nullptr;
    }
    std::unique_ptr<HvBooleanFCurve> result(new HvBooleanFCurve(*this));
    bool const isMade = SnapShotHelper(*result, *result->impl_, from, to, method);
    return isMade ? result.release() : nullptr;
}

int HvBooleanFCurve::ShiftValues(double)
{
    return 0;
}

int HvBooleanFCurve::ScaleAndShiftValues(double, double)
{
    return 0;
}

int HvBooleanFCurve::SmoothSequence(double, double, double const*, unsigned int)
{
    HvCurveWriter const lock(*this);
    return 0;
}

int HvBooleanFCurve::GetConstraintByIndex(unsigned int index, KeyConstraint constraint,
                                          int& on) const
{
    // Unlike the integer curve it refuses what it does not know before it locks.
    return IsConstraintSupported(constraint)
               ? HvSteppedFCurve<bool>::GetConstraintByIndex(index, constraint, on)
               : 0;
}
