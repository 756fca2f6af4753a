// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Building the raw curve from left to right.

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>
#include <hv/fcurve/internal/HvUserDataMoves.h>
#include <hv/fcurve/internal/data_points.h>
#include <hv/fcurve/internal/extrapolation.h>
#include <hv/foundation/HvPoint2dArray.h>

#include <cmath>

bool HvRawFCurveImpl::CanAppendAt(Point const& P) const
{
    return std::isfinite(P.x) && std::isfinite(P.y) && (NumKeys() == 0 || P.x > LastParameter());
}

void HvRawFCurveImpl::AppendKey(double p, double value)
{
    if (CanAppendAt(Point(p, value))) {
        keys.Add({p, value, 0});
    }
}

bool HvRawFCurveImpl::ExtendLastSegment(Point const& P, double tolerance, HvBaseFCurve& curve)
{
    if (NumKeys() < 2) {
        return false;
    }
    unsigned int const last = NumKeys() - 1;
    double const y = CFCChord_Eval(*this, last - 1, P.x);
    if (!(std::fabs(y - P.y) <= tolerance) || !std::isfinite(y)) {
        return false;
    }
    HvUserDataMoves moves(curve);
    moves.Add(LastParameter(), P.x);
    moves.Apply();
    keys[last].parameter = P.x;
    keys[last].value = y;
    return true;
}

void HvRawFCurveImpl::SetToApproxLinearFitC0(HvPoint2dArray const& points, double tolerance)
{
    HvPoint2dArray const kept = CFCDataPoints_LinearFit(points, tolerance);
    ReserveKeys(kept.Size());
    for (Point const& point : kept) {
        AppendKey(point.x, point.y);
    }
}

int HvRawFCurve::AppendLinearSegment(HvPoint2<double> const& P)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !impl_->CanAppendAt(P)) {
        return 0;
    }
    impl_->AppendKey(P.x, P.y);
    return 1;
}

int HvRawFCurve::AppendOrExtendLinearSegment(HvPoint2<double> const& P, double tolerance)
{
    HvCurveWriter const lock(*this);
    if (impl_->readOnly || !impl_->CanAppendAt(P)) {
        return 0;
    }
    if (!impl_->ExtendLastSegment(P, tolerance, *this)) {
        impl_->AppendKey(P.x, P.y);
    }
    return 1;
}
