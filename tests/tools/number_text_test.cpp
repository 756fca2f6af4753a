// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Numbers as text.

#include <tools/number_text.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <limits>

TEST(number_text, ExactIsTheShortestThatReadsBack)
{
    EXPECT_EQ(NumberText_Exact(0.1), "0.1");
    EXPECT_EQ(NumberText_Exact(24), "24");
    EXPECT_EQ(NumberText_Exact(-1.5), "-1.5");
    EXPECT_EQ(NumberText_Exact(std::numeric_limits<double>::quiet_NaN()), "nan");
}

RC_GTEST_PROP(number_text, ExactReadsBack, (double value))
{
    RC_ASSERT(std::strtod(NumberText_Exact(value).c_str(), nullptr) == value);
}

TEST(number_text, RoundedHasSoManyDigits)
{
    EXPECT_EQ(NumberText_Rounded(1234.5678, 6), "1234.57");
    EXPECT_EQ(NumberText_Rounded(24, 6), "24");
    EXPECT_EQ(NumberText_Rounded(1e-12, 3), "1e-12");
}

TEST(number_text, FixedHasSoManyDecimals)
{
    EXPECT_EQ(NumberText_Fixed(1.005, 1), "1.0");
    EXPECT_EQ(NumberText_Fixed(-0.001, 2), "0.00");
    EXPECT_EQ(NumberText_Fixed(-0.01, 2), "-0.01");
    EXPECT_EQ(NumberText_Fixed(-std::numeric_limits<double>::infinity(), 2), "-inf");
    EXPECT_EQ(NumberText_Fixed(1.7976931348623157e308, 2).size(), 312u);
}

TEST(number_text, CountedIsSingularForOneAlone)
{
    EXPECT_EQ(NumberText_Counted(0, "key"), "0 keys");
    EXPECT_EQ(NumberText_Counted(1, "key"), "1 key");
    EXPECT_EQ(NumberText_Counted(2, "key"), "2 keys");
}
