// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The solver.

#include <hv/foundation/HvMatrix.h>

#include "../support/allocation_failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <random>

namespace {

using Rows = std::initializer_list<std::initializer_list<double>>;

HvMatrix Matrix(Rows const& rows)
{
    int const n = static_cast<int>(rows.size());
    int const m = n == 0 ? 0 : static_cast<int>(rows.begin()->size());
    HvMatrix matrix(1, n, 1, m);
    int r = 1;
    for (auto const& row : rows) {
        int c = 1;
        for (double const value : row) {
            matrix[r][c++] = value;
        }
        ++r;
    }
    return matrix;
}

HvMatrix Random(int n, int m, std::mt19937& engine)
{
    std::uniform_real_distribution<double> uniform(-1, 1);
    HvMatrix matrix(1, n, 1, m);
    for (int r = 1; r <= n; ++r) {
        for (int c = 1; c <= m; ++c) {
            matrix[r][c] = uniform(engine);
        }
    }
    return matrix;
}

// Of n equations with factors below 1 the elimination is off by about n units of the last place
// times the condition, which for these random systems stays below 1e5.
constexpr double kSolveRounding = 1e-10;

}  // namespace

TEST(HvMatrix_solve, TwoEquationsByHand)
{
    // 2x + y = 5, x + 3y = 10: x = 1, y = 3. The inverse is (3 -1; -1 2) / 5.
    HvMatrix a = Matrix({{2, 1}, {1, 3}});
    HvMatrix b = Matrix({{5}, {10}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, b), 1);
    EXPECT_NEAR(b[1][1], 1, 1e-15);
    EXPECT_NEAR(b[2][1], 3, 1e-15);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(a, Matrix({{0.6, -0.2}, {-0.2, 0.4}}), 1e-15), 1);
}

TEST(HvMatrix_solve, PermutationsAreSolvedExactly)
{
    HvMatrix a = Matrix({{0, 2, 0}, {0, 0, 4}, {8, 0, 0}});
    HvMatrix b = Matrix({{2, 4}, {4, 8}, {8, 16}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, b), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(b, Matrix({{1, 2}, {1, 2}, {1, 2}}), 0), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(a, Matrix({{0, 0, 0.125}, {0.5, 0, 0}, {0, 0.25, 0}}), 0), 1);
}

// Every pivot of a matrix of ones is a tie. The last element, (2, 2), is taken: its row is
// subtracted from the first, which leaves (0 -1) beside the pivot's row (1 1).
TEST(HvMatrix_solve, LastOfEqualElementsIsThePivot)
{
    HvMatrix a = Matrix({{1, 1}, {1, 1}});
    HvMatrix b = Matrix({{5}, {7}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, b), 0);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(a, Matrix({{0, -1}, {1, 1}}), 0), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(b, Matrix({{-2}, {7}}), 0), 1);
}

TEST(HvMatrix_solve, SolutionAndInverseOfRandomSystems)
{
    std::mt19937 engine(17);
    for (int n = 1; n <= 12; ++n) {
        for (int round = 0; round < 10; ++round) {
            HvMatrix const a = Random(n, n, engine);
            HvMatrix const b = Random(n, 3, engine);
            HvMatrix inverse(a);
            HvMatrix x(b);
            ASSERT_EQ(HvMatrix_GaussJordanElim(inverse, x), 1);
            HvMatrix product(1, n, 1, n);
            HvMatrix_Multiply(a, inverse, product);
            EXPECT_EQ(product.IsIdentity(kSolveRounding), 1) << n;
            HvMatrix_Multiply(inverse, a, product);
            EXPECT_EQ(product.IsIdentity(kSolveRounding), 1) << n;
            HvMatrix back(1, n, 1, 3);
            HvMatrix_Multiply(a, x, back);
            EXPECT_EQ(HvMatrix_AreAlmostEqual(back, b, kSolveRounding), 1) << n;
        }
    }
}

TEST(HvMatrix_solve, RowsAndColumnsCountFromOneWhateverTheBounds)
{
    HvMatrix a(0, 2, -1, 2);
    a[1][1] = 2;
    a[1][2] = 1;
    a[2][1] = 1;
    a[2][2] = 3;
    a[0][0] = a[0][1] = a[1][0] = a[2][-1] = 77;
    HvMatrix b(-2, 3, 0, 1);
    b[1][1] = 5;
    b[2][1] = 10;
    b[1][0] = b[3][1] = 88;
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, b), 1);
    EXPECT_NEAR(b[1][1], 1, 1e-15);
    EXPECT_NEAR(b[2][1], 3, 1e-15);
    EXPECT_NEAR(a[1][1], 0.6, 1e-15);
    for (double const untouched : {a[0][0], a[0][1], a[1][0], a[2][-1]}) {
        EXPECT_EQ(untouched, 77);
    }
    EXPECT_EQ(b[1][0], 88);
    EXPECT_EQ(b[3][1], 88);
}

TEST(HvMatrix_solve, WithoutEquationsNothingChanges)
{
    AllocationCounter const counter;
    HvMatrix a(0, 0, 0, 3);
    a[0][1] = 7;
    HvMatrix b(1, 2, 1, 2);
    long const before = counter.Allocations();
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, b), 1);
    EXPECT_EQ(a[0][1], 7);
    EXPECT_EQ(counter.Allocations(), before);
    HvMatrix negative(-5, -2, 1, 1);
    EXPECT_EQ(HvMatrix_GaussJordanElim(negative, b), 1);
}

TEST(HvMatrix_solve, WithoutRightHandSidesOnlyTheInverseIsComputed)
{
    HvMatrix none(1, 0, 1, 0);
    HvMatrix left(1, 2, -3, 0);
    left[1][0] = 9;
    for (HvMatrix* const b : {&none, &left}) {
        HvMatrix a = Matrix({{0, 1}, {4, 0}});
        EXPECT_EQ(HvMatrix_GaussJordanElim(a, *b), 1);
        EXPECT_EQ(HvMatrix_AreAlmostEqual(a, Matrix({{0, 0.25}, {1, 0}}), 0), 1);
    }
    EXPECT_EQ(left[1][0], 9);
}

TEST(HvMatrix_solve, SingularSystemsAreRefused)
{
    HvMatrix zero(1, 3, 1, 3);
    HvMatrix b = Matrix({{1}, {2}, {3}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(zero, b), 0);
    // All zeros: the last element is picked, and refused before anything moves.
    EXPECT_EQ(HvMatrix_AreAlmostEqual(zero, HvMatrix(1, 3, 1, 3), 0), 1);
    EXPECT_EQ(HvMatrix_AreAlmostEqual(b, Matrix({{1}, {2}, {3}}), 0), 1);
    HvMatrix dependent = Matrix({{1, 2}, {2, 4}});
    HvMatrix c = Matrix({{1}, {2}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(dependent, c), 0);
    // A pivot is refused when it is 0, however small others are.
    HvMatrix tiny = Matrix({{1e-300}});
    HvMatrix d = Matrix({{3e-300}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(tiny, d), 1);
    EXPECT_DOUBLE_EQ(d[1][1], 3);
}

TEST(HvMatrix_solve, ElementsThatAreNoNumbersAreNoPivots)
{
    double const nan = std::nan("");
    HvMatrix none = Matrix({{nan, nan}, {nan, nan}});
    HvMatrix b = Matrix({{1}, {2}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(none, b), 0);
    EXPECT_EQ(b[2][1], 2);
    HvMatrix one = Matrix({{nan, 1}, {1, nan}});
    EXPECT_EQ(HvMatrix_GaussJordanElim(one, b), 0);
    double const inf = std::numeric_limits<double>::infinity();
    HvMatrix infinite = Matrix({{inf, 1}, {1, inf}});
    HvMatrix_GaussJordanElim(infinite, b);
}

TEST(HvMatrix_solve, MatricesThatDoNotReachAsFarAsTheSystemAreRefused)
{
    HvMatrix b = Matrix({{1}, {2}});
    HvMatrix narrow(1, 2, 1, 1);
    HvMatrix late(2, 3, 1, 3);
    HvMatrix aside(1, 2, 2, 3);
    for (HvMatrix* const a : {&narrow, &late, &aside}) {
        EXPECT_EQ(HvMatrix_GaussJordanElim(*a, b), 0);
    }
    HvMatrix a = Matrix({{1, 0}, {0, 1}});
    HvMatrix low(1, 1, 1, 1);
    HvMatrix behind(1, 2, 2, 2);
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, low), 0);
    EXPECT_EQ(HvMatrix_GaussJordanElim(a, behind), 0);
    EXPECT_EQ(a.IsIdentity(0), 1);
}

TEST(HvMatrix_solve, RefusedAllocationsLeaveBothAsTheyWere)
{
    HvMatrix const system = Matrix({{2, 1}, {1, 3}});
    HvMatrix const sides = Matrix({{5}, {10}});
    struct Both {
        HvMatrix a;
        HvMatrix b;
    };
    long const allocations = RefuseEachAllocation(
        [&] {
            return Both{system, sides};
        },
        [](Both& both) { HvMatrix_GaussJordanElim(both.a, both.b); },
        [&](Both& both, bool completed) {
            EXPECT_EQ(HvMatrix_AreAlmostEqual(both.a, system, 0), completed ? 0 : 1);
            EXPECT_EQ(HvMatrix_AreAlmostEqual(both.b, sides, 0), completed ? 0 : 1);
        });
    EXPECT_EQ(allocations, 3);
}
