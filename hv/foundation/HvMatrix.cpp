// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The dense matrix.

#include <hv/foundation/HvMatrix.h>

#include <hv/foundation/HvNumericVector.h>
#include <hv/foundation/raw_elements.h>

#include <cmath>
#include <cstdint>
#include <new>
#include <ostream>

namespace {

/// The elements of a matrix and one more; throws std::bad_alloc for more than an array holds.
double* AllocateElements(unsigned int rows, unsigned int columns)
{
    if (columns != 0 && rows > (kHvArrayMaxCapacity - 1) / columns) {
        throw std::bad_alloc();
    }
    return HvElements_Allocate<double>(rows * columns + 1);
}

/// The place from which column number `column` is that at `first`. It lies outside the block, which
/// arithmetic on pointers does not know.
double* AddressedFrom(double* first, int column)
{
    auto const offset = static_cast<std::intptr_t>(column) * std::intptr_t{sizeof(double)};
    return reinterpret_cast<double*>(reinterpret_cast<std::uintptr_t>(first) -
                                     static_cast<std::uintptr_t>(offset));
}

}  // namespace

HvMatrix::HvMatrix(int firstRow, int lastRow, int firstColumn, int lastColumn)
    : firstRow_(firstRow), lastRow_(lastRow), firstColumn_(firstColumn), lastColumn_(lastColumn)
{
    unsigned int const rows = HvIndexRange_Count(firstRow, lastRow);
    unsigned int const columns = HvIndexRange_Count(firstColumn, lastColumn);
    table_ = HvElements_Allocate<double*>(HvArrayCapacity_GrownSize(rows, 2));
    try {
        table_[0] = AllocateElements(rows, columns);
    } catch (...) {
        HvFree(table_);
        throw;
    }
    double* row = table_[0];
    for (unsigned int k = 0; k < rows; ++k) {
        table_[k + 1] = AddressedFrom(row, firstColumn);
        row += columns;
    }
}

HvMatrix::HvMatrix(HvMatrix const& other)
    : HvMatrix(other.firstRow_, other.lastRow_, other.firstColumn_, other.lastColumn_)
{
    HvElements_Copy(table_[0], other.table_[0],
                    HvIndexRange_Count(firstRow_, lastRow_) *
                        HvIndexRange_Count(firstColumn_, lastColumn_));
}

HvMatrix::~HvMatrix()
{
    HvFree(table_[0]);
    HvFree(table_);
}

// Indices run in 64 bits: the last one may be the largest int.

int HvMatrix::IsIdentity(double tolerance) const
{
    for (std::int64_t r = firstRow_; r <= lastRow_; ++r) {
        double const* const row = (*this)[static_cast<int>(r)];
        for (std::int64_t c = firstColumn_; c <= lastColumn_; ++c) {
            if (std::fabs(row[c] - (r == c ? 1 : 0)) > tolerance) {
                return 0;
            }
        }
    }
    return 1;
}

// Each element is summed over k from the first column of `a` on; the columns run inside, so that
// all three matrices are walked along their rows.
int HvMatrix_Multiply(HvMatrix const& a, HvMatrix const& b, HvMatrix& out)
{
    for (std::int64_t r = a.FirstRow(); r <= a.LastRow(); ++r) {
        double const* const factors = a[static_cast<int>(r)];
        double* const sums = out[static_cast<int>(r)];
        for (std::int64_t c = b.FirstColumn(); c <= b.LastColumn(); ++c) {
            sums[c] = 0;
        }
        for (std::int64_t k = a.FirstColumn(); k <= a.LastColumn(); ++k) {
            double const* const row = b[static_cast<int>(k)];
            for (std::int64_t c = b.FirstColumn(); c <= b.LastColumn(); ++c) {
                sums[c] += factors[k] * row[c];
            }
        }
    }
    return 1;
}

int HvMatrix_AreAlmostEqual(HvMatrix const& a, HvMatrix const& b, double tolerance)
{
    for (std::int64_t r = a.FirstRow(); r <= a.LastRow(); ++r) {
        double const* const left = a[static_cast<int>(r)];
        double const* const right = b[static_cast<int>(r)];
        for (std::int64_t c = b.FirstColumn(); c <= b.LastColumn(); ++c) {
            if (std::fabs(left[c] - right[c]) > tolerance) {
                return 0;
            }
        }
    }
    return 1;
}

std::ostream& operator<<(std::ostream& stream, HvMatrix const& matrix)
{
    stream << "Matrix [" << matrix.FirstRow() << ".." << matrix.LastRow() << "]["
           << matrix.FirstColumn() << ".." << matrix.LastColumn() << "]" << std::endl;
    for (std::int64_t r = matrix.FirstRow(); r <= matrix.LastRow(); ++r) {
        double const* const row = matrix[static_cast<int>(r)];
        for (std::int64_t c = matrix.FirstColumn(); c <= matrix.LastColumn(); ++c) {
            stream << row[c] << " ";
        }
        stream << std::endl;
    }
    return stream << std::endl;
}
