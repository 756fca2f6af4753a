// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The matrix: storage, products, comparisons, printing.

#include <hv/foundation/HvMatrix.h>

#include "../support/allocation_failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <type_traits>

namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

// Numbers 1, 2, 3, ... row after row.
HvMatrix Counting(int firstRow, int lastRow, int firstColumn, int lastColumn)
{
    HvMatrix matrix(firstRow, lastRow, firstColumn, lastColumn);
    double next = 1;
    for (int r = firstRow; r <= lastRow; ++r) {
        for (int c = firstColumn; c <= lastColumn; ++c) {
            matrix[r][c] = next++;
        }
    }
    return matrix;
}

std::string Printed(HvMatrix const& matrix)
{
    std::ostringstream stream;
    stream << matrix;
    return stream.str();
}

}  // namespace

TEST(HvMatrix, ElementsStartAtZeroAndAreApart)
{
    for (int const firstRow : {1, 0, -2, kLeast, kMost - 2}) {
        for (int const firstColumn : {1, 0, -7, kLeast, kMost - 3}) {
            HvMatrix matrix(firstRow, firstRow + 2, firstColumn, firstColumn + 3);
            EXPECT_EQ(matrix.FirstRow(), firstRow);
            EXPECT_EQ(matrix.LastRow(), firstRow + 2);
            EXPECT_EQ(matrix.FirstColumn(), firstColumn);
            EXPECT_EQ(matrix.LastColumn(), firstColumn + 3);
            for (int k = 0; k < 12; ++k) {
                EXPECT_EQ(matrix[firstRow + k / 4][firstColumn + k % 4], 0);
                matrix[firstRow + k / 4][firstColumn + k % 4] = k + 1;
            }
            HvMatrix const& constant = matrix;
            for (int k = 0; k < 12; ++k) {
                EXPECT_EQ(constant[firstRow + k / 4][firstColumn + k % 4], k + 1);
            }
        }
    }
}

TEST(HvMatrix, RowsLieOneBehindTheOther)
{
    HvMatrix matrix(1, 3, 1, 4);
    EXPECT_EQ(&matrix[2][1], &matrix[1][4] + 1);
    EXPECT_EQ(&matrix[3][1], &matrix[2][4] + 1);
}

TEST(HvMatrix, StorageIsOneBlockAndATable)
{
    AllocationCounter const counter;
    HvMatrix const matrix(1, 3, 1, 4);
    EXPECT_EQ(counter.Allocations(), 2);
    EXPECT_EQ(counter.Bytes(), 13 * sizeof(double) + 5 * sizeof(double*));
}

TEST(HvMatrix, CopyIsDeep)
{
    HvMatrix const matrix = Counting(-1, 1, 2, 4);
    HvMatrix copy(matrix);
    EXPECT_EQ(copy.FirstRow(), -1);
    EXPECT_EQ(copy.LastColumn(), 4);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(matrix, copy, 0), 1);
    copy[0][3] = 100;
    EXPECT_EQ(matrix[0][3], 5);
    EXPECT_FALSE(std::is_copy_assignable<HvMatrix>::value);
}

TEST(HvMatrix, EmptyRangesHoldNothing)
{
    for (HvMatrix const& matrix :
         {HvMatrix(0, -5, 1, 3), HvMatrix(1, 3, 0, -5), HvMatrix(kMost, kLeast, kMost, kLeast)}) {
        HvMatrix const copy(matrix);
        EXPECT_EQ(copy.IsIdentity(0), 1);
        EXPECT_EQ(HvMatrix_AreAlmostEqual(matrix, copy, 0), 1);
    }
    EXPECT_EQ(Printed(HvMatrix(0, -5, 1, 3)), "Matrix [0..-5][1..3]\n\n");
    EXPECT_EQ(Printed(HvMatrix(1, 2, 0, -5)), "Matrix [1..2][0..-5]\n\n\n\n");
}

TEST(HvMatrix, MoreThanAnArrayHoldsIsRefused)
{
    EXPECT_THROW(HvMatrix(1, 65536, 1, 65536), std::bad_alloc);
    EXPECT_THROW(HvMatrix(kLeast, kMost, 1, 1), std::bad_alloc);
    EXPECT_THROW(HvMatrix(1, 1, kLeast, kMost), std::bad_alloc);
    EXPECT_THROW(HvMatrix(kLeast, -1, 1, 0), std::bad_alloc);
}

TEST(HvMatrix, RefusedAllocationsLeaveNothing)
{
    EXPECT_EQ(RefuseEachAllocation([] { HvMatrix(1, 3, 1, 4); }), 2);
    HvMatrix const matrix(1, 3, 1, 4);
    EXPECT_EQ(RefuseEachAllocation([&] { HvMatrix copy(matrix); }), 2);
}

TEST(HvMatrix, IsIdentityWhereRowAndColumnHaveOneNumber)
{
    HvMatrix matrix(1, 2, 0, 2);
    matrix[1][1] = 1;
    matrix[2][2] = 1;
    EXPECT_EQ(matrix.IsIdentity(0), 1);
    matrix[1][0] = 0.25;
    EXPECT_EQ(matrix.IsIdentity(0.25), 1);
    EXPECT_EQ(matrix.IsIdentity(std::nextafter(0.25, 0)), 0);
    matrix[1][0] = 0;
    matrix[2][2] = 0.75;
    EXPECT_EQ(matrix.IsIdentity(0.25), 1);
    EXPECT_EQ(matrix.IsIdentity(std::nextafter(0.25, 0)), 0);
    matrix[2][2] = std::nan("");
    EXPECT_EQ(matrix.IsIdentity(0), 1);
    EXPECT_EQ(HvMatrix(1, 1, 1, 1).IsIdentity(0.5), 0);
}

TEST(HvMatrix, ProductOfTwoByHand)
{
    // (1 2 3; 4 5 6) (1 2; 3 4; 5 6) = (22 28; 49 64)
    HvMatrix const a = Counting(1, 2, 1, 3);
    HvMatrix const b = Counting(1, 3, 1, 2);
    HvMatrix product = Counting(1, 2, 1, 2);
    EXPECT_EQ(HvMatrix_Multiply(a, b, product), 1);
    EXPECT_EQ(product[1][1], 22);
    EXPECT_EQ(product[1][2], 28);
    EXPECT_EQ(product[2][1], 49);
    EXPECT_EQ(product[2][2], 64);
}

TEST(HvMatrix, ProductOverNoColumnsIsZero)
{
    HvMatrix product = Counting(1, 2, 1, 2);
    EXPECT_EQ(HvMatrix_Multiply(HvMatrix(1, 2, 1, 0), HvMatrix(1, 0, 1, 2), product), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(product, HvMatrix(1, 2, 1, 2), 0), 1);
}

// Against sums in long double: each of the k products and sums is off by half a unit of the last
// place at most.
TEST(HvMatrix, ProductIsThatOfLongDouble)
{
    std::mt19937 engine(5);
    std::uniform_real_distribution<double> uniform(-1, 1);
    HvMatrix a(-3, 8, 2, 20);
    HvMatrix b(2, 20, 0, 6);
    for (int k = 2; k <= 20; ++k) {
        for (int r = -3; r <= 8; ++r) {
            a[r][k] = uniform(engine);
        }
        for (int c = 0; c <= 6; ++c) {
            b[k][c] = uniform(engine);
        }
    }
    HvMatrix product(-3, 8, 0, 6);
    HvMatrix_Multiply(a, b, product);
    for (int r = -3; r <= 8; ++r) {
        for (int c = 0; c <= 6; ++c) {
            long double sum = 0;
            for (int k = 2; k <= 20; ++k) {
                sum += static_cast<long double>(a[r][k]) * b[k][c];
            }
            EXPECT_NEAR(product[r][c], static_cast<double>(sum), 2 * 19 * 19 * 1.2e-16);
        }
    }
}

TEST(HvMatrix, AreAlmostEqualUpToTheTolerance)
{
    HvMatrix const a = Counting(1, 2, 1, 2);
    HvMatrix b(a);
    b[2][1] = 3.5;
    EXPECT_EQ(HvMatrix_AreAlmostEqual(a, b, 0.5), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(b, a, 0.5), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(a, b, std::nextafter(0.5, 0)), 0);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(a, b, -1), 0);
    // Rows of the first, columns of the second: what lies beyond is not looked at.
    EXPECT_EQ(HvMatrix_AreAlmostEqual(Counting(1, 1, 1, 2), Counting(1, 3, 1, 2), 0), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(Counting(1, 1, 1, 3), Counting(1, 1, 1, 2), 0), 1);
}

TEST(HvMatrix, PrinterWritesBoundsAndRows)
{
    HvMatrix matrix = Counting(0, 1, -1, 1);
    matrix[1][0] = 0.5;
    EXPECT_EQ(Printed(matrix), "Matrix [0..1][-1..1]\n1 2 3 \n4 0.5 6 \n\n");
}
