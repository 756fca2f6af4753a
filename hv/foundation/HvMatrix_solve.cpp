// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Linear systems by Gauss-Jordan elimination with full pivoting. Source: Press et al., Numerical
// Recipes, 2007, 2.1. The ties are part of the contract: of several largest elements the last one
// is the pivot, and a pivot is only refused when it is exactly 0.

#include <hv/foundation/HvMatrix.h>

#include <hv/foundation/HvVectorLong.h>

#include <cmath>
#include <utility>

namespace {

/// Where a pivot was found; row 0 for nowhere.
struct Pivot {
    int row;
    int column;
};

/// Whether the matrix has the rows 1 to `rows` and the columns 1 to `columns`.
bool Covers(HvMatrix const& matrix, int rows, int columns)
{
    return matrix.FirstRow() <= 1 && matrix.LastRow() >= rows && matrix.FirstColumn() <= 1 &&
           matrix.LastColumn() >= columns;
}

/// The largest element in the rows and columns without a pivot, 1 in `hasPivot` for those that have
/// one: the pivots of earlier passes stand on the diagonal. Nowhere when all of them are NaN.
Pivot FindPivot(HvMatrix const& a, int n, HvVectorLong const& hasPivot)
{
    Pivot best{0, 0};
    double size = 0;
    for (int j = 1; j <= n; ++j) {
        if (hasPivot[j] == 1) {
            continue;
        }
        double const* const row = a[j];
        for (int k = 1; k <= n; ++k) {
            if (hasPivot[k] == 0 && std::fabs(row[k]) >= size) {
                size = std::fabs(row[k]);
                best = {j, k};
            }
        }
    }
    return best;
}

// Operations on rows over the columns 1 to `columns`. Without columns there need not be rows.

void SwapRows(HvMatrix& matrix, int i, int j, int columns)
{
    for (int k = 1; k <= columns; ++k) {
        std::swap(matrix[i][k], matrix[j][k]);
    }
}

void ScaleRow(HvMatrix& matrix, int i, double factor, int columns)
{
    for (int k = 1; k <= columns; ++k) {
        matrix[i][k] *= factor;
    }
}

void SubtractRow(HvMatrix& matrix, int i, int subtracted, double factor, int columns)
{
    for (int k = 1; k <= columns; ++k) {
        matrix[i][k] -= factor * matrix[subtracted][k];
    }
}

/// Makes column k that of the identity, by rows; in its place the column of the inverse grows.
void Eliminate(HvMatrix& a, HvMatrix& b, int k, int n, int m)
{
    double const inverse = 1.0 / a[k][k];
    a[k][k] = 1.0;
    ScaleRow(a, k, inverse, n);
    ScaleRow(b, k, inverse, m);
    for (int l = 1; l <= n; ++l) {
        if (l != k) {
            double const factor = a[l][k];
            a[l][k] = 0.0;
            SubtractRow(a, l, k, factor, n);
            SubtractRow(b, l, k, factor, m);
        }
    }
}

}  // namespace

int HvMatrix_GaussJordanElim(HvMatrix& a, HvMatrix& b)
{
    int const n = a.LastRow();
    int const m = b.LastColumn();
    if (n < 1) {
        return 1;
    }
    if (!Covers(a, n, n) || (m > 0 && !Covers(b, n, m))) {
        return 0;
    }
    HvVectorLong columns(1, n);
    HvVectorLong rows(1, n);
    HvVectorLong hasPivot(1, n);
    for (int i = 1; i <= n; ++i) {
        Pivot const pivot = FindPivot(a, n, hasPivot);
        if (pivot.row == 0) {
            return 0;
        }
        ++hasPivot[pivot.column];
        if (pivot.row != pivot.column) {
            SwapRows(a, pivot.row, pivot.column, n);
            SwapRows(b, pivot.row, pivot.column, m);
        }
        rows[i] = pivot.row;
        columns[i] = pivot.column;
        if (a[pivot.column][pivot.column] == 0) {
            return 0;
        }
        Eliminate(a, b, pivot.column, n, m);
    }
    // The rows were exchanged; the inverse has its columns exchanged, in reverse order.
    for (int i = n; i >= 1; --i) {
        if (rows[i] != columns[i]) {
            for (int k = 1; k <= n; ++k) {
                std::swap(a[k][rows[i]], a[k][columns[i]]);
            }
        }
    }
    return 1;
}
