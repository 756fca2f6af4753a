// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Whether the standard curve is one to one over its keys, and its inverse.

#include <hv/fcurve/HvStdFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/monotone_inverse.h>

#include <utility>

namespace {

/// Whether the segment after key i takes the curve strictly up, or strictly down.
bool GoesOneWay(HvStdFCurveImpl const& curve, unsigned int i, bool up)
{
    switch (curve.keys[i].segmentKind) {
    case HvBaseFCurve::LinearSegment: {
        double const from = curve.keys[i].rightValue;
        double const to = curve.keys[i + 1].rightValue;
        return up ? from < to : from > to;
    }
    case HvBaseFCurve::CubicSegment: {
        HvPoint2<double> P[4];
        curve.BezierCubicSetupUsingEvaluatedTangents(i, i + 1, P);
        return up ? CubicRises(P[0].y, P[1].y, P[2].y, P[3].y)
                  : CubicRises(P[3].y, P[2].y, P[1].y, P[0].y);
    }
    default:
        return false;
    }
}

/// The parameter at which the monotone segment after key i has `value`, which lies strictly between
/// its end values.
double InverseOfSegment(HvStdFCurveImpl const& curve, unsigned int i, double value)
{
    if (curve.keys[i].segmentKind == HvBaseFCurve::LinearSegment) {
        return CFCChord_Inverse(curve, i, value);
    }
    HvPoint2<double> P[4];
    curve.BezierCubicSetupUsingEvaluatedTangents(i, i + 1, P);
    if (curve.keys[i + 1].rightValue < curve.keys[i].rightValue) {
        std::swap(P[0], P[3]);
        std::swap(P[1], P[2]);
    }
    double const t = FindCubicParameter(value, P[0].y, P[1].y, P[2].y, P[3].y);
    return EvalCubicAt(t, P[0].x, P[1].x, P[2].x, P[3].x);
}

}  // namespace

bool HvStdFCurveImpl::IsBijective() const
{
    unsigned int const n = NumKeys();
    if (n < 2 || keys[0].rightValue == keys[1].rightValue) {
        return false;
    }
    for (CFCStdKey const& key : keys) {
        if (key.leftValue != key.rightValue) {
            return false;
        }
    }
    bool const up = keys[0].rightValue < keys[1].rightValue;
    for (unsigned int i = 0; i + 1 < n; ++i) {
        if (!GoesOneWay(*this, i, up)) {
            return false;
        }
    }
    return true;
}

int HvStdFCurveImpl::EvalInverse(double value, double& parameter) const
{
    if (!IsBijective()) {
        return 0;
    }
    return CFCMonotone_Inverse(*this, value, parameter, [this, value](unsigned int i) {
        return InverseOfSegment(*this, i, value);
    });
}

bool HvStdFCurve::IsBijective() const
{
    HvCurveReader const lock(*this);
    return impl_->IsBijective();
}

int HvStdFCurve::EvalInverse(double value, double& parameter, int) const
{
    HvCurveReader const lock(*this);
    return impl_->EvalInverse(value, parameter);
}
