// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Doubles cut to integers.

#include <hv/foundation/saturate.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

template <class I>
class HvSaturate : public testing::Test {
};
using Integers = testing::Types<signed char, unsigned char, short, unsigned short, int,
                                unsigned int, long long, unsigned long long>;
TYPED_TEST_SUITE(HvSaturate, Integers, );

TYPED_TEST(HvSaturate, CutsTowardZero)
{
    EXPECT_EQ(HvSaturate_To<TypeParam>(0.0), TypeParam(0));
    EXPECT_EQ(HvSaturate_To<TypeParam>(-0.0), TypeParam(0));
    EXPECT_EQ(HvSaturate_To<TypeParam>(99.99), TypeParam(99));
    EXPECT_EQ(HvSaturate_To<TypeParam>(-0.99), TypeParam(0));
    EXPECT_EQ(HvSaturate_To<TypeParam>(5e-324), TypeParam(0));
    if (std::numeric_limits<TypeParam>::is_signed) {
        EXPECT_EQ(HvSaturate_To<TypeParam>(-99.99), static_cast<TypeParam>(-99));
    }
}

TYPED_TEST(HvSaturate, StopsAtTheLimits)
{
    using Limits = std::numeric_limits<TypeParam>;
    for (double const huge :
         {kInfinity, std::numeric_limits<double>::max(), std::ldexp(1.0, Limits::digits)}) {
        EXPECT_EQ(HvSaturate_To<TypeParam>(huge), Limits::max());
        EXPECT_EQ(HvSaturate_To<TypeParam>(-huge), Limits::min());
    }
    EXPECT_EQ(HvSaturate_To<TypeParam>(std::numeric_limits<double>::quiet_NaN()), TypeParam(0));
}

TYPED_TEST(HvSaturate, KeepsEveryDoubleBelowTheLimit)
{
    using Limits = std::numeric_limits<TypeParam>;
    // 2^digits is the first number that does not fit; the double below it has a fraction, or is a
    // whole number that fits.
    double const below = std::nextafter(std::ldexp(1.0, Limits::digits), 0.0);
    EXPECT_EQ(HvSaturate_To<TypeParam>(below), static_cast<TypeParam>(below));
    EXPECT_EQ(double(HvSaturate_To<TypeParam>(below)), std::trunc(below));
}

TYPED_TEST(HvSaturate, RoundTripsIntegersThatADoubleHolds)
{
    EXPECT_TRUE(rc::check([](TypeParam i) {
        if (std::fabs(static_cast<long double>(i)) <= 9007199254740992.0L) {
            RC_ASSERT(HvSaturate_To<TypeParam>(static_cast<double>(i)) == i);
        }
    }));
}
