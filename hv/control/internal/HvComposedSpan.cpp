// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A driven piece over a controller's piece.

#include <hv/control/internal/HvComposedSpan.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

using Point = HvPoint2<double>;

// How far from a place without a slope of its own the quotient looks, as a part of the span.
constexpr double kSecantStep = 1e-4;

HvCurvePiece::Shape ComposedShape(HvCurvePiece::Shape controller, HvCurvePiece::Shape driven)
{
    if (controller == HvCurvePiece::Constant || driven == HvCurvePiece::Constant) {
        return HvCurvePiece::Constant;
    }
    // A line maps the cubic of the other into a cubic; two lines make a line.
    if (controller == HvCurvePiece::Line) {
        return driven;
    }
    return driven == HvCurvePiece::Line ? controller : HvCurvePiece::Sampled;
}

HvComposedSpan::Handles NoHandles()
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    return {Point(kNone, kNone), Point(kNone, kNone)};
}

}  // namespace

HvComposedSpan::HvComposedSpan(HvCurvePiece const& controller, HvCurvePiece const& driven,
                               double from, double to, double fromValue, double toValue)
    : controller_(controller), driven_(driven),
      shape_(ComposedShape(controller.GetShape(), driven.GetShape())), from_(from), to_(to),
      fromValue_(fromValue), toValue_(toValue)
{
}

// Rounding may not carry a value of c out of the span, beyond a key of d.
double HvComposedSpan::ControllerValue(double t) const
{
    if (!(t > from_)) {
        return fromValue_;
    }
    if (!(t < to_)) {
        return toValue_;
    }
    double const low = std::min(fromValue_, toValue_);
    double const high = std::max(fromValue_, toValue_);
    return std::min(std::max(controller_.Value(t), low), high);
}

double HvComposedSpan::Slope(double t) const
{
    double const slope = driven_.Slope(ControllerValue(t)) * controller_.Slope(t);
    if (!std::isnan(slope)) {
        return slope;
    }
    double const step = (to_ - from_) * kSecantStep;
    double const low = std::max(t - step, from_);
    double const high = std::min(t + step, to_);
    return (Value(high) - Value(low)) / (high - low);
}

bool HvComposedSpan::IsSmooth() const
{
    return controller_.GetShape() != HvCurvePiece::Sampled &&
           driven_.GetShape() != HvCurvePiece::Sampled;
}

void HvComposedSpan::CubicBetween(double from, double to, Point* P) const
{
    if (controller_.GetShape() == HvCurvePiece::Line) {
        double const slope = controller_.Slope(from);
        double const low = ControllerValue(from);
        double const high = ControllerValue(to);
        DrivenCubic(low, high, P);
        P[1].x = from + (P[1].x - low) / slope;
        P[2].x = to + (P[2].x - high) / slope;
    } else {
        controller_.CubicBetween(from, to, P);
        double const slope = driven_.Slope(ControllerValue(from));
        P[1].y = Value(from) + (P[1].y - P[0].y) * slope;
        P[2].y = Value(to) + (P[2].y - P[3].y) * slope;
    }
    P[0] = Point(from, Value(from));
    P[3] = Point(to, Value(to));
}

// The driven cubic along the controller's way, which may run down through it.
void HvComposedSpan::DrivenCubic(double fromValue, double toValue, Point* P) const
{
    driven_.CubicBetween(std::min(fromValue, toValue), std::max(fromValue, toValue), P);
    if (toValue < fromValue) {
        std::swap(P[0], P[3]);
        std::swap(P[1], P[2]);
    }
}

HvComposedSpan::Handles HvComposedSpan::EvenHandles(double from, double to) const
{
    double const third = (to - from) / 3;
    return {Point(third, third * Slope(from)), Point(-third, -third * Slope(to))};
}

HvComposedSpan::Handles HvComposedSpan::ControllerHandles(double from, double to) const
{
    if (controller_.GetShape() != HvCurvePiece::Cubic) {
        return NoHandles();
    }
    Point P[4];
    controller_.CubicBetween(from, to, P);
    Point const first = P[1] - P[0];
    Point const last = P[2] - P[3];
    return {Point(first.x, first.y * driven_.Slope(ControllerValue(from))),
            Point(last.x, last.y * driven_.Slope(ControllerValue(to)))};
}

HvComposedSpan::Handles HvComposedSpan::DrivenHandles(double from, double to) const
{
    if (driven_.GetShape() != HvCurvePiece::Cubic) {
        return NoHandles();
    }
    Point P[4];
    DrivenCubic(ControllerValue(from), ControllerValue(to), P);
    Point const first = P[1] - P[0];
    Point const last = P[2] - P[3];
    return {Point(first.x / controller_.Slope(from), first.y),
            Point(last.x / controller_.Slope(to), last.y)};
}
