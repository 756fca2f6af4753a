// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvMatrix: a small dense matrix with index ranges of any bounds, and its solver.

#ifndef HV_FOUNDATION_HVMATRIX_H
#define HV_FOUNDATION_HVMATRIX_H

#include <hv/foundation/HvMemory.h>
#include <hv/platform/HvExport.h>

#include <cstddef>
#include <iosfwd>

/// A dense matrix of double numbers, row after row in one block. No index is checked. Not
/// thread-safe.
class HV_API HvMatrix {
public:
    /// Zeros for the rows `firstRow` to `lastRow` and the columns `firstColumn` to `lastColumn`; a
    /// range that ends before it begins is empty. Throws std::bad_alloc, also for more elements
    /// than an array holds.
    HvMatrix(int firstRow, int lastRow, int firstColumn, int lastColumn);
    /// Deep copy.
    HvMatrix(HvMatrix const& other);
    ~HvMatrix();
    HvMatrix& operator=(HvMatrix const&) = delete;

    /// The number of the first row.
    int FirstRow() const { return firstRow_; }
    /// The number of the last row.
    int LastRow() const { return lastRow_; }
    /// The number of the first column.
    int FirstColumn() const { return firstColumn_; }
    /// The number of the last column.
    int LastColumn() const { return lastColumn_; }

    /// The row, addressed by the column number: m[row][column].
    double* operator[](int row) { return table_[Slot(row)]; }
    /// The row, addressed by the column number: m[row][column].
    double const* operator[](int row) const { return table_[Slot(row)]; }

    /// 1 unless an element differs by more than `tolerance` from 1 on the diagonal, where row and
    /// column have one number, or from 0 elsewhere. An empty matrix is an identity, and one of NaN
    /// is not told from it.
    int IsIdentity(double tolerance) const;

private:
    /// The slot of a row; the spare one lies before that of the first.
    std::ptrdiff_t Slot(int row) const { return static_cast<std::ptrdiff_t>(row) - firstRow_ + 1; }

    int firstRow_;
    int lastRow_;
    int firstColumn_;
    int lastColumn_;
    // The spare slot, which keeps the block of the elements; a pointer for each row, less the
    // number of its first column, so that it is addressed by the column; a zero.
    double** table_;
};

/// Stores the product of `a` and `b` in `out`: for each row of `a` and column of `b` the sum over
/// the columns of `a`. Returns 1. `out` must not be `a` or `b`, and must have the rows of `a` and
/// the columns of `b`; sizes are not checked.
HV_API int HvMatrix_Multiply(HvMatrix const& a, HvMatrix const& b, HvMatrix& out);

/// 1 unless an element of `a` and that of `b` differ by more than `tolerance`, over the rows of `a`
/// and the columns of `b`; sizes are not checked.
HV_API int HvMatrix_AreAlmostEqual(HvMatrix const& a, HvMatrix const& b, double tolerance);

/// Solves a x = b for every column of `b`, and inverts `a`.
///
/// Both are addressed from row 1 and column 1: the system has as many equations as the last row of
/// `a` tells, and as many right-hand sides as the last column of `b`, which may be 0 or less.
///
/// @param a  replaced by its inverse.
/// @param b  each column replaced by its solution.
/// @return   1, at once when there is no equation. 0 when the matrix is singular, with both left as
///           they stand at that point, and when a matrix does not reach as far as the system does,
///           with both as they were.
///
/// std::bad_alloc leaves both as they were. Cost: n^3 + n^2 m multiplications. Source: Gauss-Jordan
/// elimination with full pivoting; Press et al., Numerical Recipes, 2007, 2.1.
HV_API int HvMatrix_GaussJordanElim(HvMatrix& a, HvMatrix& b);

/// Writes "Matrix [", the bounds of the rows, "][", those of the columns, "]" and a line end; each
/// row on a line of its own, every element followed by a space; and an empty line.
HV_API std::ostream& operator<<(std::ostream& stream, HvMatrix const& matrix);

#endif
