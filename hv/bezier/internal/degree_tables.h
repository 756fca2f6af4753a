// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The numbers that forward differences of a Bezier curve of degree 0 to 8 need.

#ifndef HV_BEZIER_INTERNAL_DEGREE_TABLES_H
#define HV_BEZIER_INTERNAL_DEGREE_TABLES_H

#include <array>
#include <cstddef>

/// Greatest degree that is flattened.
constexpr unsigned int kHvBezierMaxDegree = 8;

/// n (n - 1) / 2 for each degree n.
constexpr std::array<unsigned int, kHvBezierMaxDegree + 1> DegreePairs = {0,  0,  1,  3, 6,
                                                                          10, 15, 21, 28};

using HvDegreeTable = std::array<std::array<int, kHvBezierMaxDegree + 1>, kHvBezierMaxDegree + 1>;

/// Row k: the number of ways to map k things onto r things, r! S(k, r), for each r.
constexpr HvDegreeTable HvDegreeTable_Surjections()
{
    HvDegreeTable t{};
    t[0][0] = 1;
    for (std::size_t k = 1; k < t.size(); ++k) {
        for (std::size_t r = 1; r <= k; ++r) {
            t[k][r] = static_cast<int>(r) * (t[k - 1][r - 1] + t[k - 1][r]);
        }
    }
    return t;
}

/// Row n: the binomial coefficients C(n, k) for each k.
constexpr HvDegreeTable HvDegreeTable_Binomials()
{
    HvDegreeTable t{};
    for (std::size_t n = 0; n < t.size(); ++n) {
        t[n][0] = 1;
        for (std::size_t k = 1; k <= n; ++k) {
            t[n][k] = t[n - 1][k - 1] + t[n - 1][k];
        }
    }
    return t;
}

constexpr std::array<HvDegreeTable, kHvBezierMaxDegree + 1> HvDegreeTable_ForwardDifferences()
{
    std::array<HvDegreeTable, kHvBezierMaxDegree + 1> t{};
    HvDegreeTable const surjections = HvDegreeTable_Surjections();
    HvDegreeTable const binomials = HvDegreeTable_Binomials();
    for (std::size_t n = 0; n < t.size(); ++n) {
        for (std::size_t k = 0; k <= n; ++k) {
            for (std::size_t r = 0; r <= k; ++r) {
                t[n][k][r] = binomials[n][k] * surjections[k][r];
            }
        }
    }
    return t;
}

/// [n][k][r]: with D(k) the k-th difference of the control points of a curve of degree n, the r-th
/// forward difference at step h is the sum of [n][k][r] * D(k) * h^k over k: C(n, k) D(k) is the
/// coefficient of t^k, and the r-th difference of t^k at 0 is r! S(k, r) h^k.
constexpr std::array<HvDegreeTable, kHvBezierMaxDegree + 1> ForwardDifferenceCoefficient =
    HvDegreeTable_ForwardDifferences();

#endif
