// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Appending one segment to the standard curve.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/HvUserDataMoves.h>
#include <hv/fcurve/internal/std_edit_checks.h>

bool HvStdFCurveImpl::CanAppendAt(Point const& P) const
{
    return HvStdEdit_AreFinite(P) && CanHoldParameter(P.x) &&
           (NumKeys() == 0 || P.x > LastParameter());
}

void HvStdFCurveImpl::AppendConstantSegment(Point const& P)
{
    if (NumKeys() == 0) {
        InsertKey(0, CFCStdKey(P.x, P.y, FirstSegmentKind()),
                  CFCKeyConstraint::kTangentContinuityLocked);
        return;
    }
    unsigned int const last = NumKeys() - 1;
    CFCStdKey key(P.x, P.y, SegmentKind(last));
    key.leftValue = keys[last].rightValue;
    key.leftHandle.y = keys[last].rightValue;
    InsertKey(last + 1, key, CFCKeyConstraint::kTangentContinuityLocked);
    SetKind(last, HvBaseFCurve::ConstantSegment);
}

int HvStdFCurve::AppendBezierCubicSegment(HvPoint2<double> const& P1, HvPoint2<double> const& P2,
                                          HvPoint2<double> const& P3)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || impl_->NumKeys() == 0 || !impl_->CanAppendAt(P3) ||
        !HvStdEdit_AreFinite(P1) || !HvStdEdit_AreFinite(P2)) {
        return 0;
    }
    HvPoint2<double> const P0 = impl_->RightPoint(impl_->NumKeys() - 1);
    if (!HvStdFCurve_IsCubicSegmentValid(P0, P1, P2, P3)) {
        return 0;
    }
    impl_->AppendCubicSegment(P0, P1, P2, P3);
    return 1;
}

int HvStdFCurve::AppendLinearSegment(HvPoint2<double> const& P)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanAppendAt(P)) {
        return 0;
    }
    impl_->AppendLinearSegment(P);
    return 1;
}

int HvStdFCurve::AppendOrExtendLinearSegment(HvPoint2<double> const& P, double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanAppendAt(P)) {
        return 0;
    }
    unsigned int const n = impl_->NumKeys();
    double const last = n == 0 ? P.x : impl_->LastParameter();
    if (n == 0 || !HasUserData(last)) {
        impl_->AppendOrExtendLinearSegment(P, tolerance);
    } else {
        Rollback rollback(*this);
        impl_->AppendOrExtendLinearSegment(P, tolerance);
        HvUserDataMoves moves(*this);
        moves.Add(last, impl_->Parameter(n - 1));
        if (!moves.Apply()) {
            return 0;
        }
        rollback.Commit();
    }
    if (n != 0) {
        // A key that was moved has its third elsewhere.
        impl_->WriteLeftHandle(n - 1, impl_->keys[n - 1].leftHandle);
    }
    return 1;
}

int HvStdFCurve::AppendConstantSegment(HvPoint2<double> const& P)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanAppendAt(P)) {
        return 0;
    }
    impl_->AppendConstantSegment(P);
    return 1;
}
