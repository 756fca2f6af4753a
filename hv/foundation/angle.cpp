// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The direction of a vector of the plane as an angle.

#include <hv/foundation/angle.h>

#include <algorithm>
#include <cmath>

namespace {

// The half and the full circle with fifteen digits of pi, and the factor that takes this half
// circle to 180 and this full circle to 360 exactly. The nearest doubles of pi and 180 / pi would
// not: the three numbers belong together.
constexpr double kHalfCircleRadian = 3.14159265358979;
constexpr double kFullCircleRadian = 6.28318530717958;
constexpr double kDegreesPerRadian = 57.29577951308238;
constexpr double kFullCircleDegree = 360.0;

// Cosine and sine of an eighth of the circle: below it the arc cosine is the more accurate inverse,
// above it the arc sine.
constexpr double kCosineOfEighth = 0.7071067811865476;

/// The angle in radians; rounding may carry it to the full circle or just out of the range.
double RawAngle(double x, double y)
{
    double const r = std::sqrt(x * x + y * y);
    if (r == 0.0 || !std::isfinite(r)) {
        return 0.0;
    }
    double const c = std::clamp(x / r, -1.0, 1.0);
    double const s = std::clamp(y / r, -1.0, 1.0);
    if (std::fabs(c) <= kCosineOfEighth) {
        double const a = std::acos(c);
        return s <= 0.0 ? kFullCircleRadian - a : a;
    }
    if (c <= 0.0) {
        return kHalfCircleRadian - std::asin(s);
    }
    return s < 0.0 ? std::asin(s) + kFullCircleRadian : std::asin(s);
}

/// `angle` when it lies in [0, fullCircle), otherwise 0.
double InCircle(double angle, double fullCircle)
{
    return angle >= 0.0 && angle < fullCircle ? angle : 0.0;
}

}  // namespace

double AngleWithFirstAxisRadian(double x, double y)
{
    return InCircle(RawAngle(x, y), kFullCircleRadian);
}

double AngleWithFirstAxisDegree(double x, double y)
{
    return InCircle(RawAngle(x, y) * kDegreesPerRadian, kFullCircleDegree);
}
