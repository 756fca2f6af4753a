// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Questions about a transform, and its inverse.

#include <hv/rotation/HvTransfo4.h>

#include <cmath>
#include <utility>

namespace {

/// How far an element that should be 1 may lie from it.
constexpr double kOneTolerance = 1e-10;
/// How far an element that should be 0 may lie from it in the identity: wide, so that products of a
/// matrix and its inverse pass.
constexpr double kIdentityZeroTolerance = 1e-7;
/// The same in an offset or a scale, where callers then skip the element altogether: rounding only.
constexpr double kAffineZeroTolerance = 1e-15;
/// A pivot up to this size counts as none.
constexpr double kPivotTolerance = 1e-15;

bool IsOne(double value)
{
    return kOneTolerance > std::fabs(value - 1.0);
}

bool IsZero(double value, double tolerance)
{
    return tolerance > std::fabs(value);
}

/// Whether the last row and all of the upper 3x3 but the diagonals vanish.
bool IsDiagonalBesideTranslation(double const* m)
{
    for (int i : {1, 2, 3, 4, 6, 7, 8, 9, 11}) {
        if (!IsZero(m[i], kAffineZeroTolerance)) {
            return false;
        }
    }
    return true;
}

/// The row at or below the diagonal with the largest entry in column i; of equals the upper one.
int FindPivotRow(double const* a, int i)
{
    int pivot = i;
    for (int row = i + 1; row < 4; ++row) {
        if (std::fabs(a[row + 4 * i]) > std::fabs(a[pivot + 4 * i])) {
            pivot = row;
        }
    }
    return pivot;
}

void SwapRows(double* a, int first, int second)
{
    for (int column = 0; column < 4; ++column) {
        std::swap(a[first + 4 * column], a[second + 4 * column]);
    }
}

void ScaleRow(double* a, int row, double factor)
{
    for (int column = 0; column < 4; ++column) {
        a[row + 4 * column] *= factor;
    }
}

void SubtractRow(double* a, int row, double factor, int source)
{
    for (int column = 0; column < 4; ++column) {
        a[row + 4 * column] -= factor * a[source + 4 * column];
    }
}

}  // namespace

int HvTransfo4::IsIdentity() const
{
    for (int i = 0; i < 16; ++i) {
        bool const onDiagonal = i % 5 == 0;
        if (onDiagonal ? !IsOne(m[i]) : !IsZero(m[i], kIdentityZeroTolerance)) {
            return 0;
        }
    }
    return 1;
}

int HvTransfo4::IsTranslation() const
{
    return IsOne(m[0]) && IsOne(m[5]) && IsOne(m[10]) && IsScalingAndTranslation();
}

int HvTransfo4::IsScalingAndTranslation() const
{
    return IsOne(m[15]) && IsDiagonalBesideTranslation(m);
}

double HvTransfo4::GetXYUnitVectorSquaredLength() const
{
    double const x = m[0] + m[4];
    double const y = m[1] + m[5];
    return x * x + y * y;
}

double HvTransfo4::GetXYZUnitVectorSquaredLength() const
{
    double const x = m[0] + m[4] + m[8];
    double const y = m[1] + m[5] + m[9];
    return x * x + y * y;
}

int HvTransfo4::Inverse(HvTransfo4& out) const
{
    // The copy comes first: `out` may be this object.
    HvTransfo4 work(*this);
    out.SetToIdentity();
    for (int i = 0; i < 4; ++i) {
        int const pivotRow = FindPivotRow(work.m, i);
        if (pivotRow != i) {
            SwapRows(work.m, i, pivotRow);
            SwapRows(out.m, i, pivotRow);
        }
        double const pivot = work.m[5 * i];
        if (kPivotTolerance >= std::fabs(pivot)) {
            return 0;
        }
        ScaleRow(work.m, i, 1.0 / pivot);
        ScaleRow(out.m, i, 1.0 / pivot);
        for (int row = 0; row < 4; ++row) {
            if (row != i) {
                double const factor = work.m[row + 4 * i];
                SubtractRow(work.m, row, factor, i);
                SubtractRow(out.m, row, factor, i);
            }
        }
    }
    return 1;
}

int HvTransfo4::IsSingular() const
{
    HvTransfo4 inverse;
    return !Inverse(inverse);
}

int HvTransfo4::TestInverse() const
{
    HvTransfo4 inverse;
    if (!Inverse(inverse)) {
        return 0;
    }
    HvTransfo4 right(*this);
    HvTransfo4 left(inverse);
    return right.PostMultiply(inverse).IsIdentity() && left.PostMultiply(*this).IsIdentity();
}
