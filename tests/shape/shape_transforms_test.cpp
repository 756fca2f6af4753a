// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transforms of the affine edits.

#include <hv/shape/internal/shape_transforms.h>

#include <gtest/gtest.h>

namespace {

using Point = HvPoint2<float>;

}  // namespace

TEST(shape_transforms, RotationTurnsCounterClockwiseAboutItsCentre)
{
    HvTransfo4 const turn = HvShapeTransform_Rotation(90.0, Point(10, 20));
    EXPECT_EQ(turn.Map(Point(10, 20)), Point(10, 20));
    // (5, 0) from the centre becomes (0, 5); the cosine of 90 degrees is 6e-17, lost in float.
    EXPECT_EQ(turn.Map(Point(15, 20)), Point(10, 25));
}

TEST(shape_transforms, ScaleKeepsItsCentre)
{
    HvTransfo4 const scale = HvShapeTransform_Scale(2.0, -3.0, Point(1, 2));
    EXPECT_EQ(scale.Map(Point(1, 2)), Point(1, 2));
    EXPECT_EQ(scale.Map(Point(2, 4)), Point(3, -4));
    EXPECT_EQ(scale.Map(HvPoint3<double>(1, 2, 5)).z, 5.0);
}

TEST(shape_transforms, ShearXIgnoresItsSecondArgument)
{
    for (double const y0 : {0.0, 7.0, -1e6}) {
        HvTransfo4 const shear = HvShapeTransform_ShearX(0.5, y0);
        EXPECT_EQ(shear.Map(Point(1, 4)), Point(3, 4)) << y0;
    }
}

TEST(shape_transforms, ShearYKeepsTheLineOfItsSecondArgument)
{
    HvTransfo4 const shear = HvShapeTransform_ShearY(0.5, 2.0);
    EXPECT_EQ(shear.Map(Point(2, 9)), Point(2, 9));
    EXPECT_EQ(shear.Map(Point(6, 9)), Point(6, 11));
}
