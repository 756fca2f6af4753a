// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Questions about a transform, each on both sides of its tolerance, and the inverse.

#include "long_matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

bool IsDiagonal(int i)
{
    return i % 5 == 0;
}

/// The identity with number i replaced.
HvTransfo4 IdentityWith(int i, double value)
{
    HvTransfo4 t;
    t.GetMatrixPtr()[i] = value;
    return t;
}

/// A matrix given by its rows.
HvTransfo4 Rows(double const (&rows)[4][4])
{
    HvTransfo4 t;
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) {
            t.GetMatrixPtr()[r + 4 * c] = rows[r][c];
        }
    }
    return t;
}

}  // namespace

TEST(HvTransfo4_inverse, KnowsTheIdentityWithinTwoTolerances)
{
    EXPECT_EQ(HvTransfo4().IsIdentity(), 1);
    for (int i = 0; i < 16; ++i) {
        double const one = IsDiagonal(i) ? 1 : 0;
        double const tolerance = IsDiagonal(i) ? 1e-10 : 1e-7;
        for (double sign : {-1.0, 1.0}) {
            EXPECT_EQ(IdentityWith(i, one + sign * tolerance * 0.99).IsIdentity(), 1) << i;
            EXPECT_EQ(IdentityWith(i, one + sign * tolerance * 1.01).IsIdentity(), 0) << i;
        }
        EXPECT_EQ(IdentityWith(i, kNaN).IsIdentity(), 0) << i;
        EXPECT_EQ(IdentityWith(i, kInfinity).IsIdentity(), 0) << i;
    }
    // Strict: the tolerance itself is outside.
    EXPECT_EQ(IdentityWith(1, 1e-7).IsIdentity(), 0);
    EXPECT_EQ(IdentityWith(1, std::nextafter(1e-7, 0)).IsIdentity(), 1);
}

TEST(HvTransfo4_inverse, KnowsATranslation)
{
    EXPECT_EQ(HvTransfo4().IsTranslation(), 1);
    EXPECT_EQ(HvTransfo4().Translate(1e9, -3, kInfinity).IsTranslation(), 0);
    EXPECT_EQ(HvTransfo4().Translate(1e9, -3, 5).IsTranslation(), 1);
    for (int i = 0; i < 12; ++i) {
        double const one = IsDiagonal(i) ? 1 : 0;
        double const tolerance = IsDiagonal(i) ? 1e-10 : 1e-15;
        EXPECT_EQ(IdentityWith(i, one - tolerance * 0.99).IsTranslation(), 1) << i;
        EXPECT_EQ(IdentityWith(i, one - tolerance * 1.01).IsTranslation(), 0) << i;
        EXPECT_EQ(IdentityWith(i, kNaN).IsTranslation(), 0) << i;
    }
    EXPECT_EQ(IdentityWith(15, 1 + 0.9e-10).IsTranslation(), 1);
    EXPECT_EQ(IdentityWith(15, 1 + 1.1e-10).IsTranslation(), 0);
    EXPECT_EQ(IdentityWith(1, 1e-15).IsTranslation(), 0);
    EXPECT_EQ(IdentityWith(12, kNaN).IsTranslation(), 1);
}

TEST(HvTransfo4_inverse, HoldsATranslationToAStricterMeasureThanTheIdentity)
{
    HvTransfo4 const t = IdentityWith(1, 1e-12);
    EXPECT_EQ(t.IsTranslation(), 0);
    EXPECT_EQ(t.IsIdentity(), 1);
}

TEST(HvTransfo4_inverse, KnowsAScalingAndTranslation)
{
    EXPECT_EQ(HvTransfo4().Translate(3, 4, 5).Scale(-2, 0, 7).IsScalingAndTranslation(), 1);
    EXPECT_EQ(HvTransfo4().Scale(-2, 0, 7).IsTranslation(), 0);
    for (int i : {1, 2, 3, 4, 6, 7, 8, 9, 11}) {
        EXPECT_EQ(IdentityWith(i, 0.99e-15).IsScalingAndTranslation(), 1) << i;
        EXPECT_EQ(IdentityWith(i, -1.01e-15).IsScalingAndTranslation(), 0) << i;
        EXPECT_EQ(IdentityWith(i, kNaN).IsScalingAndTranslation(), 0) << i;
    }
    for (int i : {0, 5, 10, 12, 13, 14}) {
        EXPECT_EQ(IdentityWith(i, 123.0).IsScalingAndTranslation(), 1) << i;
    }
    EXPECT_EQ(IdentityWith(15, 1 + 1.1e-10).IsScalingAndTranslation(), 0);
}

TEST(HvTransfo4_inverse, MeasuresTheImagesOfTheUnitVectors)
{
    double const m[16] = {1, 2, 50, 0, 3, 5, 60, 0, 7, 11, 70, 0, 100, 100, 100, 1};
    EXPECT_EQ(HvTransfo4(m).GetXYUnitVectorSquaredLength(), 4 * 4 + 7 * 7);
    EXPECT_EQ(HvTransfo4(m).GetXYZUnitVectorSquaredLength(), 11 * 11 + 18 * 18);
}

RC_GTEST_PROP(HvTransfo4_inverse, UndoesAWellConditionedMatrix, ())
{
    // A dominant diagonal keeps the condition number small: products then come back to 1e-12.
    HvTransfo4 t = *AnyTransfo();
    for (int i = 0; i < 16; i += 5) {
        t.GetMatrixPtr()[i] += t.GetMatrixPtr()[i] < 0 ? -40 : 40;
    }
    HvTransfo4 inverse;
    RC_ASSERT(t.Inverse(inverse) == 1);
    RC_ASSERT(Difference(LongMatrix(t) * LongMatrix(inverse), LongMatrix()) < 1e-12L);
    RC_ASSERT(Difference(LongMatrix(inverse) * LongMatrix(t), LongMatrix()) < 1e-12L);
    RC_ASSERT(t.IsSingular() == 0);
    RC_ASSERT(t.TestInverse() == 1);
    HvTransfo4 own(t);
    RC_ASSERT(own.Inverse(own) == 1);
    RC_ASSERT(Same(own, inverse));
}

TEST(HvTransfo4_inverse, SwapsRowsPastALeadingZero)
{
    HvTransfo4 const t = Rows({{0, 2, 0, 0}, {4, 0, 0, 0}, {0, 0, 0, 8}, {0, 0, 1, 0}});
    HvTransfo4 inverse;
    EXPECT_EQ(t.Inverse(inverse), 1);
    EXPECT_TRUE(
        Same(inverse, Rows({{0, 0.25, 0, 0}, {0.5, 0, 0, 0}, {0, 0, 0, 1}, {0, 0, 0.125, 0}})));
}

// Where two rows tie for the pivot the upper serves. With 3 and -3 in the first column both roads
// are exact in rational numbers, but round differently: the result below is the upper road's,
// worked through step by step in the order of the elimination.
TEST(HvTransfo4_inverse, TakesTheUpperOfEqualPivots)
{
    HvTransfo4 const t = Rows({{3, 0.1, 0, 0}, {-3, 0.7, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}});
    HvTransfo4 inverse;
    EXPECT_EQ(t.Inverse(inverse), 1);
    double const third = 1.0 / 3.0;
    double const up = 0.1 * third;                 // row 0 after its scaling
    double const second = 1.0 / (0.7 + 3.0 * up);  // row 1's pivot, turned over
    double const lower = 3.0 * third * second;     // what row 1 owes row 0's history
    EXPECT_EQ(inverse.GetMatrixElement(1, 0), lower);
    EXPECT_EQ(inverse.GetMatrixElement(1, 1), second);
    EXPECT_EQ(inverse.GetMatrixElement(0, 0), third - up * lower);
    EXPECT_EQ(inverse.GetMatrixElement(0, 1), -(up * second));
}

TEST(HvTransfo4_inverse, RefusesPivotsUpToItsTolerance)
{
    HvTransfo4 inverse;
    EXPECT_EQ(HvTransfo4().Scale(1, 1, 1e-15).Inverse(inverse), 0);
    EXPECT_EQ(HvTransfo4().Scale(1, 1, -1e-15).IsSingular(), 1);
    EXPECT_EQ(HvTransfo4().Scale(1, 1, 1.01e-15).Inverse(inverse), 1);
    EXPECT_EQ(HvTransfo4().Scale(0).IsSingular(), 1);
    EXPECT_EQ(HvTransfo4().Scale(1, 0, 1).TestInverse(), 0);
}

TEST(HvTransfo4_inverse, LeavesTheResultHalfWayAtASingularPivot)
{
    HvTransfo4 inverse;
    EXPECT_EQ(HvTransfo4().Scale(2, 0, 4).Inverse(inverse), 0);
    EXPECT_TRUE(Same(inverse, HvTransfo4().Scale(0.5, 1, 1)));
}

TEST(HvTransfo4_inverse, AdmitsWhenTheProductsMissTheIdentity)
{
    // An invertible matrix so ill-conditioned that no double inverse brings the products back.
    HvTransfo4 const t =
        Rows({{1, 0.3, 0, 0}, {0.7, 0.21 + 6e-15, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}});
    EXPECT_EQ(t.IsSingular(), 0);
    EXPECT_EQ(t.TestInverse(), 0);
}

TEST(HvTransfo4_inverse, EndsOnHostileNumbers)
{
    for (double v : {kNaN, kInfinity, 1e308, 5e-324, 0.0}) {
        for (int i = 0; i < 16; ++i) {
            HvTransfo4 t = IdentityWith(i, v);
            HvTransfo4 inverse;
            t.Inverse(inverse);
            t.TestInverse();
            t.Inverse(t);
        }
    }
    // NaN is no pivot up to the tolerance: the elimination goes through and hands NaN on.
    EXPECT_EQ(IdentityWith(0, kNaN).IsSingular(), 0);
    EXPECT_EQ(IdentityWith(0, kNaN).TestInverse(), 0);
}
