// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The small systems of least squares over the handles of a cubic.

#ifndef HV_BEZIER_INTERNAL_SYMMETRIC_SYSTEM_H
#define HV_BEZIER_INTERNAL_SYMMETRIC_SYSTEM_H

#include <hv/foundation/HvPoint2.h>

#include <cmath>

/// A normal matrix whose determinant is below this share of the product of its diagonal says
/// nothing about the handles: with four digits more than rounding leaves, the handles that it gives
/// are still good to a few digits.
constexpr double kDegenerateShare = 1e-11;

/// The matrix (xx xy; xy yy).
struct HvSymmetric2 {
    double xx = 0.0;
    double xy = 0.0;
    double yy = 0.0;

    void Add(HvSymmetric2 const& other, double factor)
    {
        xx += other.xx * factor;
        xy += other.xy * factor;
        yy += other.yy * factor;
    }
    HvPoint2<double> Times(HvPoint2<double> const& p) const
    {
        return {xx * p.x + xy * p.y, xy * p.x + yy * p.y};
    }
    /// Leaves of a vector the part across `t`, and of that along it 1 - `share` |t|^2.
    static HvSymmetric2 Across(HvPoint2<double> const& t, double share)
    {
        return {1.0 - share * t.x * t.x, -share * t.x * t.y, 1.0 - share * t.y * t.y};
    }
};

/// Solves a symmetric positive system of at most four unknowns, given by its lower triangle, in
/// place by Cholesky's method; false when it is degenerate.
inline bool HvSymmetricSystem_Solve(double (*matrix)[4], double* right, int count)
{
    for (int j = 0; j < count; ++j) {
        double const diagonal = matrix[j][j];
        for (int k = 0; k < j; ++k) {
            matrix[j][j] -= matrix[j][k] * matrix[j][k];
            right[j] -= matrix[j][k] * right[k];
        }
        if (!(matrix[j][j] > kDegenerateShare * diagonal)) {
            return false;
        }
        matrix[j][j] = std::sqrt(matrix[j][j]);
        right[j] /= matrix[j][j];
        for (int i = j + 1; i < count; ++i) {
            for (int k = 0; k < j; ++k) {
                matrix[i][j] -= matrix[i][k] * matrix[j][k];
            }
            matrix[i][j] /= matrix[j][j];
        }
    }
    for (int j = count - 1; j >= 0; --j) {
        for (int i = j + 1; i < count; ++i) {
            right[j] -= matrix[i][j] * right[i];
        }
        right[j] /= matrix[j][j];
    }
    return true;
}

#endif
