// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The numeric vectors.

#include <hv/foundation/HvVectorDouble.h>
#include <hv/foundation/HvVectorLong.h>

#include "../support/allocation_failure.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <type_traits>

namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

template <class T>
std::string Printed(T const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

template <class V>
class HvNumericVector_kinds : public testing::Test {
};
using Kinds = testing::Types<HvVectorDouble, HvVectorLong>;
TYPED_TEST_SUITE(HvNumericVector_kinds, Kinds, );

}  // namespace

TYPED_TEST(HvNumericVector_kinds, ElementsStartAtZeroAndAreApart)
{
    for (int const low : {1, 0, -3, 1000000, kLeast, kMost - 4}) {
        TypeParam vector(low, low + 4);
        EXPECT_EQ(vector.Low(), low);
        EXPECT_EQ(vector.High(), low + 4);
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(vector[low + i], 0);
            vector[low + i] = i + 1;
        }
        TypeParam const& constant = vector;
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(constant[low + i], i + 1);
        }
    }
}

TYPED_TEST(HvNumericVector_kinds, HaveOneElementMoreThanTheRange)
{
    AllocationCounter const counter;
    TypeParam const vector(3, 7);
    EXPECT_EQ(counter.Allocations(), 1);
    EXPECT_EQ(counter.Bytes(), 6 * sizeof(vector[3]));
}

TYPED_TEST(HvNumericVector_kinds, RangeThatEndsBeforeItBeginsIsEmpty)
{
    AllocationCounter const counter;
    TypeParam const vector(5, 0);
    TypeParam const extreme(kMost, kLeast);
    EXPECT_EQ(vector.Low(), 5);
    EXPECT_EQ(vector.High(), 0);
    EXPECT_EQ(counter.Bytes(), 2 * sizeof(vector[5]));
}

TYPED_TEST(HvNumericVector_kinds, MoreThanAnArrayHoldsIsRefused)
{
    EXPECT_THROW(TypeParam(kLeast, kMost), std::bad_alloc);
    EXPECT_THROW(TypeParam(kLeast, -1), std::bad_alloc);
    EXPECT_EQ(RefuseEachAllocation([] { TypeParam(1, 3); }), 1);
}

TYPED_TEST(HvNumericVector_kinds, CannotBeCopied)
{
    EXPECT_FALSE(std::is_copy_constructible<TypeParam>::value);
    EXPECT_FALSE(std::is_copy_assignable<TypeParam>::value);
}

TEST(HvNumericVector, PrintersWriteTheBoundsAlone)
{
    EXPECT_EQ(Printed(HvVectorDouble(1, 3)), "double vector [1..3]\n");
    EXPECT_EQ(Printed(HvVectorLong(-2, 0)), "LONG vector [-2..0]\n");
    EXPECT_EQ(Printed(HvVectorLong(5, 0)), "LONG vector [5..0]\n");
}

TEST(HvNumericVector, LongElementsAreOf32Bits)
{
    HvVectorLong vector(0, 0);
    vector[0] = kMost;
    EXPECT_EQ(vector[0], 2147483647);
    EXPECT_EQ(sizeof(vector[0]), 4u);
}

TEST(HvNumericVector, CountOfARange)
{
    EXPECT_EQ(HvIndexRange_Count(0, 0), 1u);
    EXPECT_EQ(HvIndexRange_Count(-2, 2), 5u);
    EXPECT_EQ(HvIndexRange_Count(1, 0), 0u);
    EXPECT_EQ(HvIndexRange_Count(kMost, kLeast), 0u);
    EXPECT_EQ(HvIndexRange_Count(kLeast, -1), 2147483648u);
    EXPECT_THROW(HvIndexRange_Count(kLeast, 0), std::bad_alloc);
    EXPECT_THROW(HvIndexRange_Count(kLeast, kMost), std::bad_alloc);
}
