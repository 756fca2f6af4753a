// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Quaternions made from angles, normalized and multiplied.

#include "long_quat.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

TEST(HvQuat, IdentityByDefault)
{
    EXPECT_EQ(Difference(HvQuat(), HvQuat(1, 0, 0, 0)), 0);
}

TEST(HvQuat, NumbersOfTheOrdersAreThoseOfFiles)
{
    EXPECT_EQ(HvQuat::XYZ, 0);
    EXPECT_EQ(HvQuat::XZY, 1);
    EXPECT_EQ(HvQuat::YXZ, 2);
    EXPECT_EQ(HvQuat::YZX, 3);
    EXPECT_EQ(HvQuat::ZXY, 4);
    EXPECT_EQ(HvQuat::ZYX, 5);
}

TEST(HvQuat, PositiveAngleTurnsCounterClockwise)
{
    // A quarter turn about z takes x to y.
    HvQuat const q(HvPoint3<double>(0, 0, kPi / 2));
    HvQuat const image = q * HvQuat(0, 1, 0, 0) * q.Conjugate();
    EXPECT_LT(Difference(image, HvQuat(0, 0, 1, 0)), 1e-15L);
}

TEST(HvQuat, UnitVectorsMultiplyAsHamiltons)
{
    HvQuat const i(0, 1, 0, 0);
    HvQuat const j(0, 0, 1, 0);
    HvQuat const k(0, 0, 0, 1);
    HvQuat const minusOne(-1, 0, 0, 0);
    EXPECT_EQ(Difference(i * j, k), 0);
    EXPECT_EQ(Difference(j * k, i), 0);
    EXPECT_EQ(Difference(k * i, j), 0);
    EXPECT_EQ(Difference(j * i, HvQuat(0, 0, 0, -1)), 0);
    EXPECT_EQ(Difference(i * i, minusOne), 0);
    EXPECT_EQ(Difference(i * j * k, minusOne), 0);
}

RC_GTEST_PROP(HvQuat, EachOrderIsTheProductOfItsRotations, ())
{
    HvPoint3<double> const angles = *AnyPoint3();
    double const byAxis[3] = {angles.x, angles.y, angles.z};
    for (HvQuat::RotOrder order : kAllOrders) {
        HvQuat const q(angles, order);
        LongMatrix expected;
        for (int axis : kOrderAxes[order]) {
            expected = LongMatrix::Rotation(byAxis[axis] / kLongPi * 180.0L, axis == 0, axis == 1,
                                            axis == 2) *
                       expected;
        }
        // Half a dozen roundings of numbers up to 1.
        RC_ASSERT(Difference(LongQuat(q).Matrix(), expected) < 2e-15L);
        RC_ASSERT(Difference(q, LongQuat::FromAngles(angles, order)) < 1e-15L);
    }
    RC_ASSERT(Difference(HvQuat(angles), HvQuat(angles, HvQuat::XYZ)) == 0);
}

TEST(HvQuat, NoOrderGivesTheIdentity)
{
    for (int order : {-1, 6, 255, -2147483647}) {
        HvQuat const q(HvPoint3<double>(1, 2, 3), static_cast<HvQuat::RotOrder>(order));
        EXPECT_EQ(Difference(q, HvQuat()), 0) << order;
    }
}

TEST(HvQuat, NormalizedLengthIsOne)
{
    HvQuat q(3, -4, 12, 84);
    EXPECT_EQ(&q.Normalize(), &q);
    EXPECT_LT(Difference(q, HvQuat(3 / 85.0, -4 / 85.0, 12 / 85.0, 84 / 85.0)), 3e-16L);
}

TEST(HvQuat, AlmostUnitLengthIsLeft)
{
    // Squared lengths 1 +- 0.8e-12.
    for (double x : {1 + 4e-13, 1 - 4e-13}) {
        HvQuat q(0, x, 0, 0);
        EXPECT_EQ(q.Normalize().x, x);
    }
    // Squared lengths 1 +- 1.2e-12.
    for (double x : {1 + 6e-13, 1 - 6e-13}) {
        HvQuat q(0, x, 0, 0);
        EXPECT_NEAR(q.Normalize().x, 1, 3e-16);
    }
}

TEST(HvQuat, NoLengthGivesTheIdentity)
{
    HvQuat short1(0, 9.9e-7, 0, 0);
    EXPECT_EQ(Difference(short1.Normalize(), HvQuat()), 0);
    HvQuat zero(0, 0, 0, 0);
    EXPECT_EQ(Difference(zero.Normalize(), HvQuat()), 0);
    // Its squared length is the bound itself, which counts as a length.
    ASSERT_EQ(1e-6 * 1e-6, 1e-12);
    HvQuat justEnough(0, 1e-6, 0, 0);
    EXPECT_LT(Difference(justEnough.Normalize(), HvQuat(0, 1, 0, 0)), 3e-16L);
    HvQuat longEnough(0, 0, -1.01e-6, 0);
    EXPECT_LT(Difference(longEnough.Normalize(), HvQuat(0, 0, -1, 0)), 3e-16L);
}

TEST(HvQuat, ScalarPartAloneIsCut)
{
    HvQuat above(1 + 4e-13, 0, 0, 0);
    EXPECT_EQ(above.Normalize().w, 1);
    HvQuat below(-1 - 4e-13, 0, 0, 0);
    EXPECT_EQ(below.Normalize().w, -1);
    HvQuat vector(0, 0, 0, 1 + 4e-13);
    EXPECT_EQ(vector.Normalize().z, 1 + 4e-13);
}

TEST(HvQuat, NormalizingTwiceChangesNothing)
{
    for (double scale : {1e-5, 0.3, 1.0, 7e100}) {
        HvQuat once(scale, 2 * scale, -3 * scale, 4 * scale);
        once.Normalize();
        HvQuat twice = once;
        EXPECT_EQ(Difference(twice.Normalize(), once), 0) << scale;
    }
}

TEST(HvQuat, HostileNumbersComeToAnEnd)
{
    for (double a : kHostileNumbers) {
        for (double b : kHostileNumbers) {
            for (HvQuat::RotOrder order : kAllOrders) {
                HvQuat const q(HvPoint3<double>(a, b, 1), order);
                if (std::isfinite(a) && std::isfinite(b)) {
                    EXPECT_NEAR(q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z, 1, 1e-14);
                } else {
                    EXPECT_TRUE(std::isnan(q.w));
                }
            }
            HvQuat q(a, b, 0, 0);
            q.Normalize();
            EXPECT_FALSE(std::fabs(q.w) > 1);
        }
    }
}
