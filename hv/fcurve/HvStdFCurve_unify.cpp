// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Uniting the two tangents of a key of the standard curve, and locking them together.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/HvStdTgtMover.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <cmath>

bool HvStdFCurveImpl::AreSegmentsBesideCubic(unsigned int i) const
{
    bool const left = i == 0 || SegmentKind(i - 1) == HvBaseFCurve::CubicSegment;
    bool const right = i + 1 == NumKeys() || SegmentKind(i) == HvBaseFCurve::CubicSegment;
    return left && right;
}

int HvStdFCurveImpl::UnifyActualTangentWith(unsigned int i, KeySide model)
{
    return model == HvBaseFCurve::Left ? UnifyActualRightTangentWithActualLeftTangent(i)
                                       : UnifyActualLeftTangentWithActualRightTangent(i);
}

int HvStdFCurveImpl::UnifyActualTangentLengthWith(unsigned int i, KeySide model, double scale)
{
    bool const isLeft = model == HvBaseFCurve::Left;
    Point const from = isLeft ? LeftVector(i) : RightVector(i);
    Point const other = isLeft ? RightVector(i) : LeftVector(i);
    double const factor = std::hypot(from.x, from.y * scale) / std::hypot(other.x, other.y * scale);
    if (!std::isfinite(factor)) {
        return 0;  // a handle of no length has no direction to grow in
    }
    return SetActualKeyTgtHandle(i, isLeft ? HvBaseFCurve::Right : HvBaseFCurve::Left,
                                 other * factor);
}

int HvStdFCurve::UnifyAndLockTangentContinuity(double& x, KeySide side, double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int k = 0;
    if (!HvStdEdit_IsSide(side) || !impl_->FindFreeHandles(x, tolerance, k)) {
        return 0;
    }
    CFCKeyConstraint const word = impl_->keys[k].constraints;
    double const parameter = impl_->Parameter(k);
    bool const unified = impl_->ActualTangentsAreUnified(k);
    if (unified && word.HasAny(CFCKeyConstraint::kTangentContinuityLocked)) {
        return 0;
    }
    if (!unified && impl_->AreSegmentsBesideCubic(k)) {
        Rollback rollback(*this);
        HvStdTgtMover mover(*this, parameter, side, 0);
        HvExtent2<double> extent;
        HvPoint2<double> const handle = impl_->StoredHandle(k, side);
        int const keepLength = word.HasAny(CFCKeyConstraint::kTangentLengthContinuityLocked);
        // The mover keeps an angle between the handles; what it leaves is straightened after it.
        if (!mover.Update(handle, 1, keepLength, 1.0, extent) ||
            (!impl_->ActualTangentsAreUnified(k) && !impl_->UnifyActualTangentWith(k, side))) {
            return 0;
        }
        rollback.Commit();
    }
    x = parameter;
    return impl_->LockTangentContinuity(k);
}

int HvStdFCurve::UnifyAndLockTangentLengthContinuity(double& x, KeySide side, double scale,
                                                     double tolerance)
{
    HvCurveWriter const guard(*this);
    unsigned int k = 0;
    if (!HvStdEdit_IsSide(side) || !(scale > 0) || !HvStdEdit_AreFinite(scale) ||
        !impl_->FindFreeHandles(x, tolerance, k)) {
        return 0;
    }
    CFCKeyConstraint const word = impl_->keys[k].constraints;
    double const parameter = impl_->Parameter(k);
    bool const same = impl_->ActualTangentsHaveSameVisualLength(k, scale);
    if (same && word.HasAny(CFCKeyConstraint::kTangentLengthContinuityLocked)) {
        return 0;
    }
    if (!same && impl_->AreSegmentsBesideCubic(k)) {
        Rollback rollback(*this);
        HvStdTgtMover mover(*this, parameter, side, 0);
        HvExtent2<double> extent;
        HvPoint2<double> const handle = impl_->StoredHandle(k, side);
        int const keepContinuity = word.HasAny(CFCKeyConstraint::kTangentContinuityLocked);
        if (!mover.Update(handle, keepContinuity, 1, scale, extent) ||
            (!impl_->ActualTangentsHaveSameVisualLength(k, scale) &&
             !impl_->UnifyActualTangentLengthWith(k, side, scale))) {
            return 0;
        }
        rollback.Commit();
    }
    x = parameter;
    impl_->SetConstraints(k, TangentLengthContinuityLocked, true);
    return 1;
}
