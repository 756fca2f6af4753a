// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuat: making and normalizing.

#include <hv/rotation/HvQuat.h>
#include <hv/rotation/internal/quat_axes.h>

#include <cmath>

namespace {

/// Squared lengths nearer to 1 than this are left alone, so that normalizing twice changes nothing;
/// those nearer to 0 have no direction to keep.
constexpr double kUnitTolerance = 1e-12;

}  // namespace

HvQuat::HvQuat(HvPoint3<double> const& angles) : HvQuat(angles, XYZ) {}

// With a, b, c the first, second and third axis, unit vectors as quaternions, and p the parity of
// their order, c b = -p a, b a = -p c, c a = p b and c b a = p. So of the product
//
//     (cC + sC c) (cB + sB b) (cA + sA a)
//
// each component has two terms, and only the sign of the second depends on the order.
HvQuat::HvQuat(HvPoint3<double> const& angles, RotOrder order) : HvQuat()
{
    if (!HvQuat_IsOrder(order)) {
        return;
    }
    HvQuatAxes const& axes = kQuatAxes[order];
    double const half[3] = {angles.x * 0.5, angles.y * 0.5, angles.z * 0.5};
    double const sA = std::sin(half[axes.first]);
    double const cA = std::cos(half[axes.first]);
    double const sB = std::sin(half[axes.second]);
    double const cB = std::cos(half[axes.second]);
    double const sC = std::sin(half[axes.third]);
    double const cC = std::cos(half[axes.third]);
    double const p = axes.parity;
    double v[3];
    w = cA * cB * cC + p * (sA * sB * sC);
    v[axes.first] = sA * cB * cC - p * (cA * sB * sC);
    v[axes.second] = cA * sB * cC + p * (sA * cB * sC);
    v[axes.third] = cA * cB * sC - p * (sA * sB * cC);
    x = v[0];
    y = v[1];
    z = v[2];
    Normalize();
}

HvQuat& HvQuat::Normalize()
{
    double const n = w * w + x * x + y * y + z * z;
    if (std::fabs(n - 1.0) < kUnitTolerance) {
        // Near enough.
    } else if (n < kUnitTolerance) {
        *this = HvQuat();
    } else {
        double const factor = 1.0 / std::sqrt(n);
        w *= factor;
        x *= factor;
        y *= factor;
        z *= factor;
    }
    if (w < -1.0) {
        w = -1.0;
    } else if (w > 1.0) {
        w = 1.0;
    }
    return *this;
}
