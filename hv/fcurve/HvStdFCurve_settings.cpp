// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The standard curve's own fields: values, clamps, first segment kind, extrapolation.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>

#include <cmath>

int HvStdFCurve::GetFCurveInfo(FCurveInfo* info) const
{
    if (info == nullptr) {
        return 0;
    }
    HvCurveReader const lock(*this);
    if ((info->mask & 0x01) != 0) {
        info->kind = Standard;
    }
    if ((info->mask & 0x02) != 0) {
        info->numKeys = impl_->NumKeys();
    }
    if ((info->mask & 0x04) != 0) {
        info->valueWhenNoKeys = impl_->valueWhenNoKeys;
    }
    if ((info->mask & 0x08) != 0) {
        info->defaultSegmentKind = static_cast<FSKind>(impl_->defaultSegmentKind);
    }
    if ((info->mask & 0x10) != 0) {
        info->lowerClamp = impl_->lowerClamp;
    }
    if ((info->mask & 0x20) != 0) {
        info->upperClamp = impl_->upperClamp;
    }
    if ((info->mask & 0x40) != 0) {
        info->extrapolation = static_cast<ExtrapolationMethod>(impl_->extrapolation);
    }
    return 1;
}

int HvStdFCurve::SetValueWhenNoKeys(double value)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly != 0 || std::isnan(value)) {
        return 0;
    }
    impl_->valueWhenNoKeys = value;
    return 1;
}

int HvStdFCurve::SetClampingValues(double lower, double upper)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly != 0 || !(lower <= upper)) {
        return 0;
    }
    impl_->lowerClamp = lower;
    impl_->upperClamp = upper;
    return 1;
}

int HvStdFCurve::GetClampingValues(double& lower, double& upper) const
{
    HvCurveReader const lock(*this);
    lower = impl_->lowerClamp;
    upper = impl_->upperClamp;
    return 1;
}

int HvStdFCurve::SetExtrapolationMethod(ExtrapolationMethod method)
{
    HvCurveReader const lock(*this);  // the section alone, though it writes
    if (impl_->readOnly != 0 || method < ConstantExtrapolation ||
        method > RelativeCycleExtrapolation) {
        return 0;
    }
    impl_->extrapolation = static_cast<unsigned char>(method);
    return 1;
}

int HvStdFCurve::SetFirstSegmentKind(FSKind kind)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly != 0 || kind < ConstantSegment || kind > CubicSegment) {
        return 0;
    }
    impl_->defaultSegmentKind = kind;
    return 1;
}
