// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Appending one segment to the standard curve.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvUserDataMoves.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <cmath>

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
    LayUnusedHandlesOnKeys(last);
}

bool HvStdFCurveImpl::ExtendLinearSegment(Point const& P, double tolerance, HvBaseFCurve& curve)
{
    if (NumKeys() < 2 || SegmentKind(NumKeys() - 2) != HvBaseFCurve::LinearSegment) {
        return false;
    }
    unsigned int const last = NumKeys() - 1;
    CFCStdKey& key = keys[last];
    Point const from = RightPoint(last - 1);
    double const y =
        from.y + (key.leftValue - from.y) * ((P.x - from.x) / (key.parameter - from.x));
    // The line of a tiny segment may have no number there, which no tolerance makes one.
    if (!HvStdEdit_AreFinite(y) || !(std::fabs(y - P.y) <= tolerance)) {
        return false;
    }
    Point const left = LeftVector(last);
    Point const right = RightVector(last);
    if (!key.constraints.HasAny(CFCKeyConstraint::kParameterLocked)) {
        HvUserDataMoves moves(curve);
        moves.Add(key.parameter, P.x);
        moves.Apply();
        key.parameter = P.x;
    }
    if (!key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
        key.leftValue = y;
        key.rightValue = y;
    }
    WriteLeftHandle(last, HvStdEdit_FiniteOr(LeftPoint(last) + left, LeftPoint(last)));
    key.rightHandle = HvStdEdit_FiniteOr(RightPoint(last) + right, RightPoint(last));
    return true;
}

void HvStdFCurveImpl::AppendOrExtendLinearSegment(Point const& P, double tolerance,
                                                  HvBaseFCurve& curve)
{
    if (!ExtendLinearSegment(P, tolerance, curve)) {
        AppendLinearSegment(P);
        LayUnusedHandlesOnKeys(NumKeys() < 2 ? 0 : NumKeys() - 2);
    }
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
    impl_->LayUnusedHandlesOnKeys(impl_->NumKeys() < 2 ? 0 : impl_->NumKeys() - 2);
    return 1;
}

int HvStdFCurve::AppendOrExtendLinearSegment(HvPoint2<double> const& P, double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !impl_->CanAppendAt(P)) {
        return 0;
    }
    impl_->AppendOrExtendLinearSegment(P, tolerance, *this);
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
