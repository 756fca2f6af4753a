// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Extents: containment and augmentation in each state.

#include <hv/foundation/HvExtent2.h>

#include <gtest/gtest.h>

#include <limits>

template <class T>
class HvExtent2Typed : public testing::Test {
};
using Coordinates = testing::Types<float, double>;
TYPED_TEST_SUITE(HvExtent2Typed, Coordinates, );

TYPED_TEST(HvExtent2Typed, IsEmptyByDefault)
{
    HvExtent2<TypeParam> const e;
    EXPECT_EQ(e.state, HvExtent2<TypeParam>::Empty);
    EXPECT_EQ(e.min, HvPoint2<TypeParam>());
    EXPECT_EQ(e.max, HvPoint2<TypeParam>());
    EXPECT_EQ(e.Contains({0, 0}), 0);
}

TYPED_TEST(HvExtent2Typed, IsClosedOnAllSides)
{
    HvExtent2<TypeParam> const e(1, 2, 5, 4);
    for (HvPoint2<TypeParam> const& p :
         {HvPoint2<TypeParam>(1, 3), {5, 3}, {3, 2}, {3, 4}, {1, 2}, {5, 4}, {2, 3}}) {
        EXPECT_EQ(e.Contains(p), 1);
    }
    for (HvPoint2<TypeParam> const& p : {HvPoint2<TypeParam>(0, 3), {6, 3}, {3, 1}, {3, 5}}) {
        EXPECT_EQ(e.Contains(p), 0);
    }
}

TYPED_TEST(HvExtent2Typed, HoldsNoNaNUnlessItIsThePlane)
{
    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    HvExtent2<TypeParam> e(1, 2, 5, 4);
    EXPECT_EQ(e.Contains({nan, 3}), 0);
    EXPECT_EQ(e.Contains({3, nan}), 0);
    e.state = HvExtent2<TypeParam>::WholePlane;
    EXPECT_EQ(e.Contains({nan, nan}), 1);
    EXPECT_EQ(e.Contains({-100, 100}), 1);
    e.state = HvExtent2<TypeParam>::Empty;
    EXPECT_EQ(e.Contains({3, 3}), 0);
}

TYPED_TEST(HvExtent2Typed, GrowsFromNothing)
{
    using P = HvPoint2<TypeParam>;
    HvExtent2<TypeParam> e;
    e.Augment({3, -2});
    EXPECT_EQ(e.state, HvExtent2<TypeParam>::Ordinary);
    EXPECT_EQ(e.min, P(3, -2));
    EXPECT_EQ(e.max, P(3, -2));
    e.Augment({1, 7});
    e.Augment({2, 0});
    EXPECT_EQ(e.min, P(1, -2));
    EXPECT_EQ(e.max, P(3, 7));
    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    e.Augment({nan, 9});
    EXPECT_EQ(e.min, P(1, -2));
    EXPECT_EQ(e.max, P(3, 9));
}

TYPED_TEST(HvExtent2Typed, StaysTheWholePlane)
{
    HvExtent2<TypeParam> e(1, 2, 5, 4);
    e.state = HvExtent2<TypeParam>::WholePlane;
    e.Augment({100, 100});
    EXPECT_EQ(e.state, HvExtent2<TypeParam>::WholePlane);
    EXPECT_EQ(e.max, HvPoint2<TypeParam>(5, 4));
}
