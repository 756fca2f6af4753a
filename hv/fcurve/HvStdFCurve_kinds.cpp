// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Changing the kinds of the spans of the standard curve.

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <cmath>

namespace {

/// Two thirds of a span, as the handle rules use them.
constexpr double kTwoThirdsOfSpan = 0.6666666666666666;

}  // namespace

void HvStdFCurveImpl::ModifyFSK(unsigned int i, FSKind kind)
{
    if (kind == SegmentKind(i)) {
        return;
    }
    if (kind == HvBaseFCurve::CubicSegment && i + 1 < NumKeys() &&
        !IsSegmentValidWith(i, keys[i].rightHandle, keys[i + 1].leftHandle)) {
        Point const from = RightPoint(i);
        Point const chord = LeftPoint(i + 1) - from;
        WriteRightHandle(i, HvStdEdit_FiniteOr(from + chord * kThirdOfSpan, from));
        WriteLeftHandle(i + 1,
                        HvStdEdit_FiniteOr(from + chord * kTwoThirdsOfSpan, LeftPoint(i + 1)));
    }
    SetKind(i, kind);
}

void HvStdFCurveImpl::SetValidBezierTangentsOnConstantOrLinearSegments()
{
    unsigned int const n = NumKeys();
    if (n != 0 && FirstSegmentKind() != HvBaseFCurve::CubicSegment &&
        keys[0].leftHandle.x > Parameter(0)) {
        WriteLeftHandle(0, LeftPoint(0));
    }
    for (unsigned int i = 0; i + 1 < n; ++i) {
        LayUnusedHandlesOnKeys(i);
    }
}

void HvStdFCurveImpl::LayUnusedHandlesOnKeys(unsigned int i)
{
    if (i + 1 < NumKeys() && SegmentKind(i) != HvBaseFCurve::CubicSegment &&
        !IsSegmentValidWith(i, keys[i].rightHandle, keys[i + 1].leftHandle)) {
        WriteRightHandle(i, RightPoint(i));
        WriteLeftHandle(i + 1, LeftPoint(i + 1));
    }
}

int HvStdFCurve::SetSegmentKind(double x, KeySide side, FSKind kind, double tolerance)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_IsSide(side) || !HvStdEdit_IsKind(kind)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        impl_->defaultSegmentKind = kind;
        return 1;
    }
    unsigned int k = 0;
    if (!impl_->FindKey(x, tolerance, k)) {
        return 0;
    }
    if (side == Right) {
        impl_->ModifyFSK(k, kind);
    } else if (k == 0) {
        impl_->defaultSegmentKind = kind;
    } else {
        impl_->ModifyFSK(k - 1, kind);
    }
    return 1;
}

int HvStdFCurve::SetSegmentKindAtParameter(double x, FSKind kind)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_IsKind(kind) || std::isnan(x)) {
        return 0;
    }
    unsigned int const notAbove = impl_->NumKeysNotAbove(x);
    if (notAbove == 0) {
        impl_->defaultSegmentKind = kind;
    } else {
        impl_->ModifyFSK(notAbove - 1, kind);
    }
    return 1;
}

int HvStdFCurve::ConvertToUniformSegmentKind(FSKind kind)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly || !HvStdEdit_IsKind(kind)) {
        return 0;
    }
    impl_->defaultSegmentKind = kind;
    for (unsigned int i = 0; i < impl_->NumKeys(); ++i) {
        impl_->ModifyFSK(i, kind);
    }
    return 1;
}
