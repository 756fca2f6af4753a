// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Tangents of a curve from those of a composition.

#include <hv/control/HvControlOperator.h>

#include <hv/control/internal/HvCurveComposer.h>
#include <hv/control/internal/HvCurvePair.h>
#include <hv/fcurve/HvCurveLock.h>
#include <hv/fcurve/HvStdFCurve.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<double>;
using Curve = HvBaseFCurve;

/// A key of the curve whose tangents are turned.
class KeyTangents {
public:
    KeyTangents(HvStdFCurve& curve, unsigned int i) : curve_(curve), i_(i)
    {
        curve.GetKeyParameter(i, x_);
        curve.GetSegmentKindsByIndex(i, leftKind_, rightKind_);
        curve.GetActualKeyTgtHandles(x_, left_, right_, 0);
    }

    double Parameter() const { return x_; }

    bool IsFree() const
    {
        return !Has(Curve::TangentDirectionLocked) && !Has(Curve::TangentLengthLocked) &&
               !Has(Curve::FlatTangents) && !Has(Curve::ZeroLengthTangents) &&
               !Has(Curve::LinearTangents) && !Has(Curve::AutomaticTangents);
    }

    /// Turns the handles into the slopes of both sides. Whether that changed the curve's key.
    bool Turn(double leftSlope, double rightSlope)
    {
        bool const turnsLeft = HasCubicOnLeft() && std::isfinite(leftSlope);
        bool const turnsRight = HasCubicOnRight() && std::isfinite(rightSlope);
        if (turnsLeft && turnsRight && Has(Curve::TangentContinuityLocked)) {
            leftSlope = rightSlope =
                std::tan(std::atan(leftSlope) * 0.5 + std::atan(rightSlope) * 0.5);
        }
        if (turnsLeft) {
            double const dx = left_.x < 0 ? left_.x : (Neighbour(i_ - 1) - x_) / 3;
            left_ = Point(dx, dx * leftSlope);
        }
        if (turnsRight) {
            double const dx = right_.x > 0 ? right_.x : (Neighbour(i_ + 1) - x_) / 3;
            right_ = Point(dx, dx * rightSlope);
        }
        if (turnsLeft && turnsRight && Has(Curve::TangentLengthContinuityLocked)) {
            double const leftLength = std::hypot(left_.x, left_.y);
            double const rightLength = std::hypot(right_.x, right_.y);
            left_ = left_ * std::min(1.0, rightLength / leftLength);
            right_ = right_ * std::min(1.0, leftLength / rightLength);
        }
        return (turnsLeft || turnsRight) && curve_.SetKeyTgtHandles(x_, left_, right_, 0) != 0;
    }

private:
    bool Has(Curve::KeyConstraint constraint) const
    {
        int on = 0;
        return curve_.GetConstraintByIndex(i_, constraint, on) && on;
    }
    bool HasCubicOnLeft() const { return i_ != 0 && leftKind_ == Curve::CubicSegment; }
    bool HasCubicOnRight() const
    {
        return i_ + 1 < curve_.GetNumKeys() && rightKind_ == Curve::CubicSegment;
    }
    double Neighbour(unsigned int i) const
    {
        double x = 0;
        curve_.GetKeyParameter(i, x);
        return x;
    }

    HvStdFCurve& curve_;
    unsigned int i_;
    double x_ = 0;
    Curve::FSKind leftKind_ = Curve::ConstantSegment;
    Curve::FSKind rightKind_ = Curve::ConstantSegment;
    Point left_;
    Point right_;
};

}  // namespace

unsigned int HvControlOperator::AdjustTangents(HvStdFCurve& curve, double from, double to) const
{
    if (std::isnan(from) || std::isnan(to)) {
        return 0;
    }
    HvCurvePair const pair(controller_, driven_);
    HvCurveComposer const composer(pair.Controller(), pair.Driven());
    double const first = std::min(from, to);
    double const last = std::max(from, to);
    unsigned int count = 0;

    HvAccessLock const access;
    HvCurveLock const lock(curve);
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        KeyTangents key(curve, i);
        double const x = key.Parameter();
        if (x >= first && x <= last && key.IsFree() &&
            key.Turn(composer.Slope(x, HvCurvePieces::Down),
                     composer.Slope(x, HvCurvePieces::Up))) {
            ++count;
        }
    }
    return count;
}
