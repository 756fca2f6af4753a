// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Changing the value of a key of the standard curve.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

int HvStdFCurve::SetKeyValue(double x, KeySide side, double value, double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_IsSide(side) || !HvStdEdit_AreFinite(value) ||
        impl_->HasConstraintInInterval(CFCKeyConstraint::kValueLocked, false, x, x, 0, 0)) {
        return 0;
    }
    unsigned int i = 0;
    if (!impl_->FindKey(x, tolerance, i)) {
        return 1;
    }
    // The lock was looked for at exactly x. A locked key that stands beside x keeps its value, and
    // its handle moves all the same.
    CFCStdKey& key = impl_->keys[i];
    double& keyValue = side == Left ? key.leftValue : key.rightValue;
    HvPoint2<double>& handle = side == Left ? key.leftHandle : key.rightHandle;
    handle = HvStdEdit_FiniteOr(handle + HvPoint2<double>(0, value - keyValue),
                                HvPoint2<double>(key.parameter, value));
    if (!key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
        keyValue = value;
    }
    return 1;
}
