// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The curve that a composition writes.

#include <hv/control/internal/HvComposedCurve.h>

#include <cmath>
#include <utility>

namespace {

using Point = HvPoint2<double>;
using Curve = HvBaseFCurve;

// The sine of the angle under which two handles still lie on one line: what rounding leaves of
// tangents that were derived from one slope.
constexpr double kContinuitySine = 1e-9;

bool AreOnOneLine(Point const& left, Point const& right)
{
    double const cross = left.x * right.y - left.y * right.x;
    double const lengths = std::hypot(left.x, left.y) * std::hypot(right.x, right.y);
    return !(std::fabs(cross) > kContinuitySine * lengths);
}

}  // namespace

HvComposedCurve::HvComposedCurve(double from, double value)
    : curve_(new HvStdFCurve(from, value, value, Curve::ConstantSegment, Curve::ConstantSegment)),
      last_(from), lastValue_(value), constantTo_(from), hasFailed_(!std::isfinite(value))
{
}

void HvComposedCurve::AddConstant(double to, double value)
{
    if (hasConstant_ && value != lastValue_) {
        FlushConstant();
    }
    if (!hasConstant_) {
        JumpTo(value);
    }
    hasConstant_ = true;
    constantTo_ = to;
}

void HvComposedCurve::AddLine(Point const& P0, Point const& P3)
{
    FlushConstant();
    JumpTo(P0.y);
    hasFailed_ = hasFailed_ || !curve_->AppendLinearSegment(P3);
    last_ = P3.x;
    lastValue_ = P3.y;
    lastHandle_ = Point();
}

void HvComposedCurve::AddCubic(Point const* P)
{
    FlushConstant();
    if (!AreOnOneLine(lastHandle_, P[1] - P[0])) {
        curve_->UnlockTangentContinuity(last_, 0);
    }
    JumpTo(P[0].y);
    hasFailed_ = hasFailed_ || !curve_->AppendBezierCubicSegment(P[1], P[2], P[3]);
    last_ = P[3].x;
    lastValue_ = P[3].y;
    lastHandle_ = P[2] - P[3];
}

std::unique_ptr<HvStdFCurve> HvComposedCurve::Finish(double value)
{
    FlushConstant();
    JumpTo(value);
    return hasFailed_ ? nullptr : std::move(curve_);
}

void HvComposedCurve::JumpTo(double value)
{
    if (value != lastValue_) {
        curve_->UnlockTangentContinuity(last_, 0);
        hasFailed_ = hasFailed_ || !curve_->SetKeyValue(last_, Curve::Right, value, 0);
        lastValue_ = value;
    }
}

void HvComposedCurve::FlushConstant()
{
    if (hasConstant_) {
        hasFailed_ = hasFailed_ || !curve_->AppendConstantSegment(Point(constantTo_, lastValue_));
        last_ = constantTo_;
        lastHandle_ = Point();
        hasConstant_ = false;
    }
}
