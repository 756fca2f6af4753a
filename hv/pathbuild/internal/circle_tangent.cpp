// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tangent of a circle through three points.

#include <hv/pathbuild/internal/circle_tangent.h>

#include <hv/pathbuild/internal/unit_direction.h>

#include <cmath>

namespace {

/// Below this sum of products of squared lengths the points count as one line: their centre would
/// be drowned by the rounding of the coordinates.
constexpr double kLeastWeight = 1e-6;

/// One coordinate of a weighted mean; each product is rounded to float.
double WeightedSum(double wa, float a, double wb, float b, double wc, float c)
{
    return double(static_cast<float>(wc * double(c))) + double(static_cast<float>(wb * double(b))) +
           double(static_cast<float>(wa * double(a)));
}

}  // namespace

HvPoint2<float> HvCircle_Tangent(HvPoint2<float> const& a, HvPoint2<float> const& b,
                                 HvPoint2<float> const& c, HvWalk walk)
{
    if (a == b) {
        return b - a;
    }
    if (b == c) {
        return HvPoint2<float>(HvDirection_FromTo(b, a));
    }
    HvPoint2<double> const chord =
        walk == HvWalk::ToEnd ? HvDirection_FromTo(b, c) : HvDirection_FromTo(c, b);

    // The circumcentre by its barycentric coordinates, made of the dot products at the corners.
    double const da = HvPoint2_ABdotCD(a, c, a, b);
    double const db = HvPoint2_ABdotCD(b, c, b, a);
    double const dc = HvPoint2_ABdotCD(c, a, c, b);
    double const p = da * db;
    double const q = db * dc + da * dc;
    double const t = p + q;
    if (std::fabs(t) < kLeastWeight) {
        return HvPoint2<float>(chord);
    }
    double const wa = p + da * dc;
    double const wb = db * dc + p;
    HvPoint2<float> const centre(
        static_cast<float>(WeightedSum(wa, a.x, wb, b.x, q, c.x) / (2.0 * t)),
        static_cast<float>(WeightedSum(wa, a.y, wb, b.y, q, c.y) / (2.0 * t)));
    if (!std::isfinite(centre.x) || !std::isfinite(centre.y)) {
        return HvPoint2<float>(chord);
    }

    HvPoint2<double> const radius = HvDirection_FromTo(centre, c);
    bool const isLeftTurn = HvPoint2_ABdetCD(centre, c, centre, b) < 0.0;  // walking from b to c
    bool const turnsLeft = isLeftTurn == (walk == HvWalk::ToEnd);
    return HvPoint2<float>(turnsLeft ? HvPoint2<double>(-radius.y, radius.x)
                                     : HvPoint2<double>(radius.y, -radius.x));
}
