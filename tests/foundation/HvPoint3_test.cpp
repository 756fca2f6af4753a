// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points of space.

#include <hv/foundation/HvPoint3.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Point = HvPoint3<double>;

}  // namespace

TEST(HvPoint3, HasPlainArithmetic)
{
    EXPECT_EQ(Point(), Point(0, 0, 0));
    EXPECT_EQ(Point(1, 2, 3) + Point(3, 5, 7), Point(4, 7, 10));
    EXPECT_EQ(Point(1, 2, 3) - Point(3, 5, 7), Point(-2, -3, -4));
    EXPECT_EQ(-Point(1, -2, 3), Point(-1, 2, -3));
    EXPECT_EQ(Point(1, -2, 3) * 3.0, Point(3, -6, 9));
    EXPECT_TRUE(Point(1, 2, 3) != Point(1, 2, 4));
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(Point(0, 0, nan) == Point(0, 0, nan));
    EXPECT_EQ(HvPoint3<float>(Point(0.5, 1, 2)), HvPoint3<float>(0.5f, 1, 2));
}

TEST(HvPoint3, MeasuresLengths)
{
    EXPECT_EQ(HvPoint3_Length(Point(3, 4, 0)), 5.0);
    EXPECT_EQ(HvPoint3_Length(Point(2, -3, 6)), 7.0);
    EXPECT_EQ(HvPoint3_SquaredLength(Point(2, -3, 6)), 49.0);
    EXPECT_EQ(HvPoint3_LengthAB(Point(1, 1, 0), Point(4, 5, 0)), 5.0);
    EXPECT_EQ(HvPoint3_LengthAB(Point(1, 1, 1), Point(3, -2, 7)), 7.0);
    EXPECT_EQ(HvPoint3_LengthAB(Point(1, 1, 5), Point(4, 5, 5)), 5.0);
    EXPECT_EQ(HvPoint3_SquaredLengthAB(Point(1, 1, 1), Point(3, -2, 7)), 49.0);
}

TEST(HvPoint3, MeasuresInThePlaneWithoutOverflow)
{
    EXPECT_NEAR(HvPoint3_Length(Point(3e200, 4e200, -0.0)) / 5e200, 1.0, 1e-15);
    EXPECT_NEAR(HvPoint3_LengthAB(Point(3e200, 0, 0), Point(0, 4e200, 0)) / 5e200, 1.0, 1e-15);
    // Outside the plane the plain squares overflow.
    EXPECT_TRUE(std::isinf(HvPoint3_Length(Point(3e200, 4e200, 1))));
    EXPECT_TRUE(std::isinf(HvPoint3_LengthAB(Point(3e200, 0, 1), Point(0, 4e200, 1))));
}
