// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The angles found in a rotation: that they give it again, and that the reference decides.

#include "long_matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Angles = HvPoint3<double>;

double const kPi = std::acos(-1.0);

HvTransfo4 Rotation(Angles const& radians)
{
    return HvTransfo4().RotateXYZ(radians * (180 / kPi));
}

Angles Extract(HvTransfo4 const& t, Angles const& reference)
{
    Angles angles = reference;
    t.ExtractXYZRotationAngles(angles);
    return angles;
}

/// Distance on the circle, in long double.
long double OnCircle(double a, double b)
{
    return std::fabs(std::remainder(static_cast<long double>(a) - b, 2 * std::acos(-1.0L)));
}

long double OnCircle(Angles const& a, Angles const& b)
{
    return OnCircle(a.x, b.x) + OnCircle(a.y, b.y) + OnCircle(a.z, b.z);
}

/// Angles of some turns either way.
Angles AnyAngles()
{
    return Angles(*AnyNumber(), *AnyNumber(), *AnyNumber());
}

bool WithinHalfATurn(Angles const& a, Angles const& reference)
{
    double const limit = kPi + 1e-9;
    return std::fabs(a.x - reference.x) <= limit && std::fabs(a.y - reference.y) <= limit &&
           std::fabs(a.z - reference.z) <= limit;
}

}  // namespace

RC_GTEST_PROP(HvTransfo4_angles, GivesTheRotationAgainNearTheReference, ())
{
    Angles const turned = AnyAngles();
    Angles const reference = AnyAngles();
    HvTransfo4 const t = Rotation(turned);
    RC_PRE(std::fabs(std::cos(turned.y)) > 0.05);
    Angles const found = Extract(t, reference);
    // The arc sine near a cosine of 0.05 and the division by it cost 400 ulps each.
    RC_ASSERT(Difference(Rotation(found), LongMatrix(t)) < 1e-11L);
    RC_ASSERT(WithinHalfATurn(found, reference));
    // Of the two triples that give this rotation the other is not nearer.
    Angles const other(turned.x + kPi, kPi - turned.y, turned.z + kPi);
    long double const nearest = std::min(OnCircle(turned, reference), OnCircle(other, reference));
    RC_ASSERT(OnCircle(found, reference) < nearest + 1e-9L);
}

RC_GTEST_PROP(HvTransfo4_angles, FollowsAReferenceThatIsTheAnswer, ())
{
    Angles const turned = AnyAngles();
    RC_PRE(std::fabs(std::cos(turned.y)) > 0.05);
    RC_ASSERT(HvPoint3_LengthAB(Extract(Rotation(turned), turned), turned) < 1e-11);
}

TEST(HvTransfo4_angles, ReadsEveryOctantOfXAndZ)
{
    for (int i = -17; i < 18; ++i) {
        for (int k = -17; k < 18; ++k) {
            Angles const turned(i * 10 * kPi / 180, 0.3, k * 10 * kPi / 180);
            Angles const found = Extract(Rotation(turned), turned);
            EXPECT_NEAR(found.x, turned.x, 1e-13);
            EXPECT_NEAR(found.y, turned.y, 1e-13);
            EXPECT_NEAR(found.z, turned.z, 1e-13);
        }
    }
}

// The identity is (0, 0, 0) and (pi, pi, pi). With the pi of fifteen digits a quarter turn is
// exactly as far from the one as from the other.
TEST(HvTransfo4_angles, TieTakesTheSecondTriple)
{
    double const pi = 3.14159265358979;
    Angles const quarter(pi / 2, pi / 2, pi / 2);
    EXPECT_EQ(Extract(HvTransfo4(), quarter), Angles(pi, pi, pi));
    EXPECT_NEAR(Extract(HvTransfo4(), quarter * 0.999).x, 0, 1e-12);
    EXPECT_NEAR(Extract(HvTransfo4(), quarter * 1.001).x, pi, 1e-12);
}

TEST(HvTransfo4_angles, KeepsTheTurnsOfTheReference)
{
    Angles const found = Extract(Rotation(Angles(0.1, 0.2, 0.3)),
                                 Angles(0.1 + 4 * kPi, 0.2 - 2 * kPi, 0.3 + 20 * kPi));
    EXPECT_NEAR(found.x, 0.1 + 4 * kPi, 1e-12);
    EXPECT_NEAR(found.y, 0.2 - 2 * kPi, 1e-12);
    EXPECT_NEAR(found.z, 0.3 + 20 * kPi, 1e-12);
}

// At y = 90 degrees only x - z is determined: both move equally far from the reference.
TEST(HvTransfo4_angles, UpperPoleKeepsTheDifference)
{
    for (double x : {-2.0, -0.4, 0.0, 1.1, 3.0}) {
        HvTransfo4 const t = Rotation(Angles(x, kPi / 2, 0.25));
        for (Angles const& reference :
             {Angles(0, 1.5, 0), Angles(0.7, 1.6, -0.5), Angles(1, 9, 1)}) {
            Angles const found = Extract(t, reference);
            EXPECT_LT(Difference(Rotation(found), LongMatrix(t)), 1e-9L);
            EXPECT_TRUE(WithinHalfATurn(found, reference));
            // Equal and opposite, up to whole turns and the half turn of both.
            EXPECT_LT(OnCircle(found.x - reference.x, reference.z - found.z), 1e-9L);
        }
    }
}

TEST(HvTransfo4_angles, UpperPoleFollowsItsOwnAngles)
{
    Angles const turned(0.7, kPi / 2, -0.3);
    Angles const found = Extract(Rotation(turned), turned);
    EXPECT_NEAR(found.x, 0.7, 1e-9);
    EXPECT_NEAR(found.y, kPi / 2, 1e-7);
    EXPECT_NEAR(found.z, -0.3, 1e-9);
    // A reference whose x and z agree to 1e-5 counts as balanced: its difference is left standing.
    Angles const balanced =
        Extract(Rotation(Angles(0.7, kPi / 2, 0.3)), Angles(0.5 + 4e-6, 1.5, 0.5));
    EXPECT_NEAR(balanced.x - balanced.z, 0.4 + 4e-6, 1e-12);
    Angles const apart = Extract(Rotation(Angles(0.7, kPi / 2, 0.3)), Angles(0.5 + 2e-5, 1.5, 0.5));
    EXPECT_NEAR(apart.x - apart.z, 0.4, 1e-12);
}

// At y = -90 degrees only x + z is determined.
TEST(HvTransfo4_angles, LowerPoleKeepsTheSum)
{
    for (double x : {-2.0, -0.4, 0.5, 1.1, 2.5}) {
        HvTransfo4 const t = Rotation(Angles(x, -kPi / 2, 0.25));
        for (Angles const& reference :
             {Angles(0, -1.5, 0), Angles(0.7, -1.6, 0.4), Angles(1, 9, 1)}) {
            Angles const found = Extract(t, reference);
            EXPECT_LT(Difference(Rotation(found), LongMatrix(t)), 1e-9L);
            EXPECT_TRUE(WithinHalfATurn(found, reference));
            EXPECT_LT(OnCircle(found.x - reference.x, found.z - reference.z), 1e-9L);
        }
    }
    Angles const turned(0.7, -kPi / 2, 0.4);
    Angles const found = Extract(Rotation(turned), turned);
    EXPECT_NEAR(found.x, 0.7, 1e-9);
    EXPECT_NEAR(found.y, -kPi / 2, 1e-7);
    EXPECT_NEAR(found.z, 0.4, 1e-9);
}

// With x + z = 0 at the lower pole, half of the reference's own sum is taken for the answer's: a
// deliberate lean towards the reference.
TEST(HvTransfo4_angles, LowerPoleWithoutASumLeansToTheReference)
{
    HvTransfo4 const t = Rotation(Angles(0.2, -kPi / 2, -0.2));
    Angles const found = Extract(t, Angles(0.4, -1.5, 0.2));
    EXPECT_NEAR(found.x, 0.4 - 0.15, 1e-12);
    EXPECT_NEAR(found.z, 0.2 - 0.15, 1e-12);
    // A reference whose sum is below 1e-5 is left as it is.
    Angles const balanced = Extract(t, Angles(0.4, -1.5, -0.4));
    EXPECT_NEAR(balanced.x, 0.4, 1e-12);
    EXPECT_NEAR(balanced.z, -0.4, 1e-12);
}

TEST(HvTransfo4_angles, PoleBeginsAtItsTolerance)
{
    // At a distance of 1.1e-5 from the pole x and z are still read from the matrix by themselves:
    // the arc sine knows y to 1e-11 there, so the quotients are known to 1e-6.
    Angles const regular(0.7, kPi / 2 - 1.1e-5, 0.2);
    Angles const far = Extract(Rotation(regular), Angles(0, 1.5, 0));
    EXPECT_NEAR(far.x, 0.7, 1e-5);
    EXPECT_NEAR(far.z, 0.2, 1e-5);
    // At 0.9e-5 the difference is shared out.
    Angles const polar(0.7, kPi / 2 - 0.9e-5, 0.2);
    Angles const near = Extract(Rotation(polar), Angles(0, 1.5, 0));
    EXPECT_NEAR(near.x, 0.25, 1e-8);
    EXPECT_NEAR(near.z, -0.25, 1e-8);
}

TEST(HvTransfo4_angles, PoleChoosesYByItself)
{
    HvTransfo4 const t = Rotation(Angles(0, kPi / 2 - 9e-6, 0));
    double const tilted = kPi / 2 + 9e-6;
    EXPECT_NEAR(Extract(t, Angles(0, 1.5, 0)).y, kPi / 2 - 9e-6, 1e-10);
    EXPECT_NEAR(Extract(t, Angles(0, 1.7, 0)).y, tilted, 1e-10);
}

TEST(HvTransfo4_angles, TakesNumbersBeyondTheUnitInterval)
{
    // What rounding does to a product of rotations, made large.
    HvTransfo4 t = Rotation(Angles(0, 0.2, 0));
    for (int i = 0; i < 12; ++i) {
        t.GetMatrixPtr()[i] *= 1 + 1e-7;
    }
    Angles const found = Extract(t, Angles());
    EXPECT_NEAR(found.x, 0, 1e-7);
    EXPECT_NEAR(found.y, 0.2, 1e-6);
    EXPECT_NEAR(found.z, 0, 1e-7);
    Angles const pole = Extract(HvTransfo4().Scale(2).RotateXYZ(Angles(0, 90, 0)), Angles(0, 1, 0));
    EXPECT_NEAR(pole.y, kPi / 2, 1e-12);
}

TEST(HvTransfo4_angles, HandsNaNOnAndEnds)
{
    for (double v : {kNaN, kInfinity, -kInfinity, 1e308, 5e-324}) {
        for (int i = 0; i < 11; ++i) {
            HvTransfo4 t;
            t.GetMatrixPtr()[i] = v;
            Extract(t, Angles());
            Extract(t, Angles(v, 1, v));
        }
    }
    EXPECT_TRUE(std::isnan(Extract(HvTransfo4(), Angles(0, kNaN, 0)).y));
    HvTransfo4 t;
    t.GetMatrixPtr()[2] = kNaN;
    EXPECT_TRUE(std::isnan(Extract(t, Angles()).y));
}
