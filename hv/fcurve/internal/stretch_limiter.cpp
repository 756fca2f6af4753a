// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How far a stretch of a curve may go: the limits of all its coordinates in one interval.

#include <hv/fcurve/internal/stretch_limiter.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// A side this near to the pivot gives no scale: the quotient would be rounding.
constexpr double kLeastDistanceFromPivot = 1e-7;
/// No scale is nearer to 0: keys would fall onto the pivot, from where nothing brings them back.
constexpr double kLeastScale = 0.001;

/// The way from `start` down to `limit`, which is `distance` long; 0 where the start lies on the
/// limit or beyond.
double Room(double start, double limit, double distance)
{
    if (limit < start) {
        return distance;
    }
    return limit >= start ? 0 : kInfinity;
}

}  // namespace

HvStretchLimiter::HvStretchLimiter(double pivot, double side, double minimalScale)
    : pivot_(pivot), side_(side), leastScale_(kLeastScale), lowest_(-kInfinity), highest_(kInfinity)
{
    if (minimalScale > kLeastScale) {
        leastScale_ = std::min(minimalScale, 1.0);
    }
}

bool HvStretchLimiter::HasScale() const
{
    return std::fabs(side_ - pivot_) >= kLeastDistanceFromPivot;
}

void HvStretchLimiter::Keep(double start, double weight, double low, double high)
{
    if (weight == 0) {
        return;
    }
    double const below = Room(start, low, start - low);
    double const above = Room(-start, -high, high - start);
    double const size = std::fabs(weight);
    lowest_ = std::max(lowest_, -(weight > 0 ? below : above) / size);
    highest_ = std::min(highest_, (weight > 0 ? above : below) / size);
}

void HvStretchLimiter::ForbidFlip()
{
    highest_ = std::min(highest_, 1 - leastScale_);
}

HvStretchLimiter::Step HvStretchLimiter::Limit(double amount) const
{
    Step step;
    if (!HasScale()) {
        step.limited = true;
        return step;
    }
    double const distance = side_ - pivot_;
    step.amount = amount;
    step.scale = (distance + amount) / distance;
    step.share = -amount / distance;
    if (step.share < lowest_ || step.share > highest_) {
        step.limited = true;
        step.share = step.share < lowest_ ? lowest_ : highest_;
        step.scale = 1 - step.share;
        step.amount = -step.share * distance;
    }
    if (std::fabs(step.scale) < leastScale_) {
        // A flip that the limits do not let through stops before the pivot.
        bool const flips = step.scale < 0 && 1 + leastScale_ <= highest_;
        step.scale = flips ? -leastScale_ : leastScale_;
        step.share = 1 - step.scale;
        step.amount = -step.share * distance;
    }
    return step;
}
