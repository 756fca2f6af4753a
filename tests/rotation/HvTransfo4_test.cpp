// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transform's numbers, products and printed form.

#include "long_matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <iomanip>
#include <sstream>

namespace {

double const kCounted[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

// A sum of four products of numbers up to 10 is at most 400; each of its seven roundings, and the
// reference's, costs at most half an ulp of that: below 400 * 8 * 2^-53.
constexpr long double kProductTolerance = 4e-13L;

}  // namespace

TEST(HvTransfo4, IsTheIdentityAtFirst)
{
    EXPECT_EQ(Difference(HvTransfo4(), LongMatrix()), 0.0L);
}

TEST(HvTransfo4, HoldsItsNumbersColumnAfterColumn)
{
    HvTransfo4 const t(kCounted);
    EXPECT_EQ(t.GetMatrixElement(0, 0), 1);
    EXPECT_EQ(t.GetMatrixElement(1, 0), 2);
    EXPECT_EQ(t.GetMatrixElement(0, 1), 5);
    EXPECT_EQ(t.GetMatrixElement(3, 2), 12);
    EXPECT_EQ(t.GetMatrixElement(0, 3), 13);
    EXPECT_EQ(t.GetMatrixElement(3, 3), 16);
}

TEST(HvTransfo4, GivesBackWhatWasSet)
{
    HvTransfo4 t;
    EXPECT_EQ(&t.SetMatrix(kCounted), &t);
    double out[16] = {};
    t.GetMatrix(out);
    for (int i = 0; i < 16; ++i) {
        EXPECT_EQ(out[i], kCounted[i]);
        EXPECT_EQ(t.GetMatrixPtr()[i], kCounted[i]);
    }
}

TEST(HvTransfo4, TakesItsOwnNumbers)
{
    HvTransfo4 t(kCounted);
    t.SetMatrix(t.GetMatrixPtr());
    t.GetMatrix(t.GetMatrixPtr());
    EXPECT_TRUE(Same(t, HvTransfo4(kCounted)));
}

TEST(HvTransfo4, ReturnsToTheIdentity)
{
    HvTransfo4 t(kCounted);
    t.SetToIdentity();
    EXPECT_TRUE(Same(t, HvTransfo4()));
    HvTransfo4 u(kCounted);
    EXPECT_EQ(&u.ResetToIdentity(), &u);
    EXPECT_TRUE(Same(u, HvTransfo4()));
}

TEST(HvTransfo4, SurvivesAssignmentToItself)
{
    HvTransfo4 t(kCounted);
    HvTransfo4 const& same = t;
    EXPECT_EQ(&(t = same), &t);
    EXPECT_TRUE(Same(t, HvTransfo4(kCounted)));
}

TEST(HvTransfo4, TransposesRowsToColumns)
{
    HvTransfo4 out;
    HvTransfo4(kCounted).Transpose(out);
    for (unsigned int r = 0; r < 4; ++r) {
        for (unsigned int c = 0; c < 4; ++c) {
            EXPECT_EQ(out.GetMatrixElement(r, c), HvTransfo4(kCounted).GetMatrixElement(c, r));
        }
    }
}

RC_GTEST_PROP(HvTransfo4, MultipliesOnEitherSide, ())
{
    HvTransfo4 const a = *AnyTransfo();
    HvTransfo4 const b = *AnyTransfo();
    HvTransfo4 post(a);
    RC_ASSERT(&post.PostMultiply(b) == &post);
    RC_ASSERT(Difference(post, LongMatrix(a) * LongMatrix(b)) < kProductTolerance);
    HvTransfo4 pre(a);
    RC_ASSERT(&pre.PreMultiply(b) == &pre);
    RC_ASSERT(Difference(pre, LongMatrix(b) * LongMatrix(a)) < kProductTolerance);
}

RC_GTEST_PROP(HvTransfo4, MultipliesWithItself, ())
{
    HvTransfo4 const a = *AnyTransfo();
    HvTransfo4 const copy(a);
    HvTransfo4 square(a);
    square.PostMultiply(copy);
    HvTransfo4 post(a);
    HvTransfo4 pre(a);
    RC_ASSERT(Same(post.PostMultiply(post), square));
    RC_ASSERT(Same(pre.PreMultiply(pre), square));
}

// 1e16 + 1 rounds back to 1e16: the order of a sum shows in its result.
TEST(HvTransfo4, SumsProductsFromLeftToRight)
{
    double row[16] = {};
    row[0] = 1e16;
    row[4] = 1;
    row[8] = -1e16;
    row[12] = 1;
    double ones[16] = {};
    ones[0] = ones[1] = ones[2] = ones[3] = 1;
    EXPECT_EQ(HvTransfo4(row).PostMultiply(HvTransfo4(ones)).GetMatrixElement(0, 0), 1.0);
}

TEST(HvTransfo4, PrintsFourRowsInBraces)
{
    std::ostringstream out;
    EXPECT_EQ(&(out << HvTransfo4(kCounted)), &out);
    EXPECT_EQ(out.str(), "{1 5 9 13}\n{2 6 10 14}\n{3 7 11 15}\n{4 8 12 16}\n");
}

TEST(HvTransfo4, PrintsInTheFormatOfTheStream)
{
    std::ostringstream out;
    out << std::fixed << std::setprecision(2) << HvTransfo4().Translate(0.125, -1.0 / 3.0, 1e3);
    EXPECT_EQ(out.str(), "{1.00 0.00 0.00 0.12}\n{0.00 1.00 0.00 -0.33}\n"
                         "{0.00 0.00 1.00 1000.00}\n{0.00 0.00 0.00 1.00}\n");
}
