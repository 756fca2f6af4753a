// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Moving, scaling and mirroring the standard curve as a whole.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/std_edit_checks.h>
#include <hv/fcurve/internal/std_mend.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// Gives every parameter p the place map(p), handles with it; false, with nothing changed, when the
/// keys would not stay in order or a number would not stay finite.
template <class Map>
bool MapParameters(HvStdFCurveImpl& curve, Map const& map)
{
    unsigned int const n = curve.NumKeys();
    for (unsigned int i = 0; i < n; ++i) {
        CFCStdKey const& key = curve.keys[i];
        double const p = map(key.parameter);
        if (!HvStdEdit_AreFinite(p, p - map(curve.FirstParameter())) ||
            !HvStdEdit_AreFinite(map(key.leftHandle.x), map(key.rightHandle.x)) ||
            (i != 0 && !(map(curve.Parameter(i - 1)) < p))) {
            return false;
        }
    }
    for (CFCStdKey& key : curve.keys) {
        key.parameter = map(key.parameter);
    }
    for (unsigned int i = 0; i < n; ++i) {
        CFCStdKey& key = curve.keys[i];
        key.leftHandle.x = curve.MovedHandleX(i, HvBaseFCurve::Left, map(key.leftHandle.x));
        key.rightHandle.x = curve.MovedHandleX(i, HvBaseFCurve::Right, map(key.rightHandle.x));
    }
    return true;
}

/// Adds `offset` to every parameter; a curve whose segments are valid keeps them so. False, with
/// nothing changed, as MapParameters.
bool Shift(HvStdFCurveImpl& curve, double offset)
{
    bool const wasValid = curve.IsValid() != 0;
    if (!MapParameters(curve, [offset](double x) { return x + offset; })) {
        return false;
    }
    if (wasValid) {
        HvStdEdit_MendSegments(curve);
    }
    return true;
}

/// Gives every value of the keys, handles included, and the value when no keys the height map(y);
/// false, with nothing changed, when a number would not stay finite.
template <class Map>
bool MapValues(HvStdFCurveImpl& curve, Map const& map)
{
    bool finite = HvStdEdit_AreFinite(map(curve.valueWhenNoKeys));
    for (CFCStdKey const& key : curve.keys) {
        finite = finite && HvStdEdit_AreFinite(map(key.leftValue), map(key.rightValue)) &&
                 HvStdEdit_AreFinite(map(key.leftHandle.y), map(key.rightHandle.y));
    }
    if (!finite) {
        return false;
    }
    curve.valueWhenNoKeys = map(curve.valueWhenNoKeys);
    for (CFCStdKey& key : curve.keys) {
        key.leftValue = map(key.leftValue);
        key.rightValue = map(key.rightValue);
        key.leftHandle.y = map(key.leftHandle.y);
        key.rightHandle.y = map(key.rightHandle.y);
    }
    return true;
}

}  // namespace

bool HvStdFCurveImpl::IsAnyKeyLocked(unsigned short bits) const
{
    return HasConstraintInInterval(bits, false, -kHvMaxDouble, kHvMaxDouble, 0, 0) != 0;
}

int HvStdFCurve::ShiftParameters(double offset)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_AreFinite(offset) ||
        impl_->IsAnyKeyLocked(CFCKeyConstraint::kParameterLocked)) {
        return 0;
    }
    if (!HasUserData()) {
        return Shift(*impl_, offset) ? 1 : 0;
    }
    Rollback rollback(*this);
    if (!Shift(*impl_, offset)) {
        return 0;
    }
    TranslateAllKeyUserData(offset);
    return rollback.Commit();
}

int HvStdFCurve::ScaleParameterAxis(double scale)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_AreFinite(scale) ||
        impl_->IsAnyKeyLocked(CFCKeyConstraint::kParameterLocked)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        return 1;
    }
    if (!impl_->IsValid()) {
        return 0;
    }
    Rollback rollback(*this);
    if (!MapParameters(*impl_, [scale](double x) { return x * scale; })) {
        return 0;
    }
    HvStdEdit_MendSegments(*impl_);
    if (!impl_->IsValid()) {
        return 0;
    }
    if (HasUserData()) {
        ScaleAllKeyUserData(scale);
    }
    return rollback.Commit();
}

int HvStdFCurve::ShiftValues(double offset)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_AreFinite(offset) ||
        impl_->IsAnyKeyLocked(CFCKeyConstraint::kValueLocked)) {
        return 0;
    }
    return MapValues(*impl_, [offset](double y) { return y + offset; }) ? 1 : 0;
}

int HvStdFCurve::ScaleAndShiftValues(double scale, double offset)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_AreFinite(scale, offset) ||
        kSmallestValueScale > std::fabs(scale) ||
        impl_->IsAnyKeyLocked(CFCKeyConstraint::kValueLocked) || !impl_->IsValid()) {
        return 0;
    }
    auto const mapped = [scale, offset](double y) { return y * scale + offset; };
    auto const mappedClamp = [mapped](double clamp) {
        return std::fabs(clamp) == kHvMaxDouble ? clamp : mapped(clamp);
    };
    // An infinite clamp stays infinite; a finite one may not become so.
    auto const overflows = [mappedClamp](double clamp) {
        return std::isfinite(clamp) && !std::isfinite(mappedClamp(clamp));
    };
    if (overflows(impl_->lowerClamp) || overflows(impl_->upperClamp) ||
        !MapValues(*impl_, mapped)) {
        return 0;
    }
    double lower = mappedClamp(impl_->lowerClamp);
    double upper = mappedClamp(impl_->upperClamp);
    if (lower > upper) {
        std::swap(lower, upper);
    }
    impl_->lowerClamp = lower;
    impl_->upperClamp = upper;
    return 1;
}

int HvStdFCurve::MirrorValues()
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || impl_->IsAnyKeyLocked(CFCKeyConstraint::kValueLocked)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        return 1;
    }
    double const sum = impl_->GetValueUpperBound(0) + impl_->GetValueLowerBound(0);
    return impl_->IsValid() && MapValues(*impl_, [sum](double y) { return sum - y; }) ? 1 : 0;
}

/// Turns the order of the keys round about the middle of the key range. Every span keeps its kind,
/// those beyond the end keys included.
bool HvStdFCurveImpl::MirrorParameters()
{
    if (!IsValid()) {
        return false;
    }
    unsigned int const n = NumKeys();
    double const sum = FirstParameter() + LastParameter();
    FSKind const firstKind = FirstSegmentKind();
    defaultSegmentKind = SegmentKind(n - 1);
    for (unsigned int i = n - 1; i != 0; --i) {
        SetKind(i, SegmentKind(i - 1));
    }
    SetKind(0, firstKind);
    std::reverse(keys.begin(), keys.end());
    bool finite = HvStdEdit_AreFinite(sum);
    for (CFCStdKey& key : keys) {
        key.parameter = sum - key.parameter;
        std::swap(key.leftValue, key.rightValue);
        std::swap(key.leftHandle, key.rightHandle);
        key.leftHandle.x = sum - key.leftHandle.x;
        key.rightHandle.x = sum - key.rightHandle.x;
        finite = finite && HvStdEdit_AreFinite(key.leftHandle.x, key.rightHandle.x);
    }
    HvStdEdit_MendSegments(*this);
    return finite && IsValid() != 0;
}

int HvStdFCurve::MirrorParameters()
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || impl_->IsAnyKeyLocked(CFCKeyConstraint::kParameterLocked)) {
        return 0;
    }
    unsigned int const n = impl_->NumKeys();
    if (n == 0) {
        return 1;
    }
    Rollback rollback(*this);
    if (!impl_->MirrorParameters()) {
        return 0;
    }
    if (HasUserData()) {
        RemoveAllKeyUserData();
        for (unsigned int i = 0; i < n; ++i) {
            double const before = rollback.Before().impl_->Parameter(n - 1 - i);
            if (rollback.Before().HasUserData(before)) {
                CopyKeyUserData(rollback.Before(), before, impl_->Parameter(i));
            }
        }
    }
    return rollback.Commit();
}
