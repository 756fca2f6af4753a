// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Quadratic equations.

#include <hv/bezier/quadratic.h>

#include <cmath>
#include <utility>

namespace {

/// Below this half of b its sign no longer decides which root is computed first: the cancellation
/// that the choice avoids is then far below the size of the roots.
constexpr double kSmallHalfB = 1e-7;

}  // namespace

int SolveQuadraticEquation(double& first, double& second, double a, double b, double c)
{
    double const h = b * 0.5;
    double const discriminant = h * h - a * c;
    if (discriminant < 0.0) {
        return 0;
    }
    double root = std::sqrt(discriminant);
    if (std::fabs(h) >= kSmallHalfB && !(h > 0.0)) {
        root = -root;
    }
    double const w = -(root + h);
    first = w / a;
    second = c / w;
    if (first > second) {
        std::swap(first, second);
    }
    return 1;
}
