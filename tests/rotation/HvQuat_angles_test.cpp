// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The angles of a quaternion, near a reference.

#include "long_quat.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <random>

namespace {

using Angles = HvPoint3<double>;

double Member(Angles const& angles, int axis)
{
    return axis == 0 ? angles.x : (axis == 1 ? angles.y : angles.z);
}

/// Angles given in degrees for the first, second and third axis of an order.
Angles ByAxes(HvQuat::RotOrder order, double first, double second, double third)
{
    double byAxis[3];
    byAxis[kOrderAxes[order][0]] = first * kDegree;
    byAxis[kOrderAxes[order][1]] = second * kDegree;
    byAxis[kOrderAxes[order][2]] = third * kDegree;
    return Angles(byAxis[0], byAxis[1], byAxis[2]);
}

/// What Get gives for angles of an order near a reference, all by axes and in degrees.
Angles GetByAxes(HvQuat::RotOrder order, Angles const& of, Angles const& near)
{
    Angles angles;
    HvQuat(ByAxes(order, of.x, of.y, of.z), order)
        .Get(angles, ByAxes(order, near.x, near.y, near.z), order);
    int const* axes = kOrderAxes[order];
    return Angles(Member(angles, axes[0]), Member(angles, axes[1]), Member(angles, axes[2])) *
           (1 / kDegree);
}

void ExpectNear(Angles const& actual, Angles const& expected, double tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

/// Whether the order turns like x, y, z: then the poles' difference is determined at +90 degrees.
bool IsEven(HvQuat::RotOrder order)
{
    return order == HvQuat::XYZ || order == HvQuat::YZX || order == HvQuat::ZXY;
}

double Distance(double a, double b)
{
    return std::fabs(std::remainder(a - b, 2 * kPi));
}

/// Rounding of angles in degrees at the size of a few turns.
constexpr double kDegreeTolerance = 1e-12;

}  // namespace

TEST(HvQuat_angles, IdentityHasNone)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        Angles angles(1, 2, 3);
        HvQuat().Get(angles, order);
        EXPECT_EQ(angles, Angles(0, 0, 0)) << order;
    }
}

TEST(HvQuat_angles, ShorterFormsTakeOrderXyzAndNoReference)
{
    Angles const reference(7, -8, 9);
    HvQuat const q(Angles(0.3, 0.4, 0.5), HvQuat::ZXY);
    Angles full, brief;
    q.Get(full, reference, HvQuat::XYZ);
    q.Get(brief, reference);
    EXPECT_EQ(brief, full);
    q.Get(full, Angles(), HvQuat::XYZ);
    q.Get(brief);
    EXPECT_EQ(brief, full);
    q.Get(full, Angles(), HvQuat::ZXY);
    q.Get(brief, HvQuat::ZXY);
    EXPECT_EQ(brief, full);
}

TEST(HvQuat_angles, NoOrderLeavesTheAngles)
{
    for (int order : {-1, 6, 1000}) {
        Angles angles(1, 2, 3);
        HvQuat().Get(angles, Angles(4, 5, 6), static_cast<HvQuat::RotOrder>(order));
        EXPECT_EQ(angles, Angles(1, 2, 3));
    }
}

TEST(HvQuat_angles, ReferenceMayBeTheResult)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        HvQuat const q(Angles(0.3, 1.4, 0.5), order);
        Angles const reference(20, -7, 9);
        Angles apart, same = reference;
        q.Get(apart, reference, order);
        q.Get(same, same, order);
        EXPECT_EQ(same, apart);
    }
}

TEST(HvQuat_angles, WholeTurnsOfTheReferenceAreKept)
{
    Angles angles;
    HvQuat(Angles(0.1, 0, 0)).Get(angles, Angles(2 * kPi + 0.1, 0, 0));
    ExpectNear(angles, Angles(2 * kPi + 0.1, 0, 0), 2e-15);
    HvQuat(Angles(0.1, 0.2, 0.3)).Get(angles, Angles(-40 * kPi, 20 * kPi, 6 * kPi));
    ExpectNear(angles, Angles(0.1 - 40 * kPi, 0.2 + 20 * kPi, 0.3 + 6 * kPi), 1e-13);
}

TEST(HvQuat_angles, MiddleBeyondTheQuarterTurnIsKeptNearItsReferenceOnly)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        Angles const of(10, 100, 20);
        // Near 0 the other triple lies at 170 + 80 + 160 against 10 + 100 + 20.
        ExpectNear(GetByAxes(order, of, Angles()), of, kDegreeTolerance);
        ExpectNear(GetByAxes(order, of, Angles(170, 90, -150)), Angles(190, 80, -160),
                   kDegreeTolerance);
        // 100 + 100 + 120 against 80 + 80 + 60.
        ExpectNear(GetByAxes(order, Angles(100, 100, 120), Angles()), Angles(-80, 80, -60),
                   kDegreeTolerance);
    }
}

TEST(HvQuat_angles, TieTakesTheOtherTriple)
{
    // 180 + 0 + 90 against 0 + 180 + 90, of numbers that are exact but for the smallest.
    Angles const angles = GetByAxes(HvQuat::XYZ, Angles(180, 0, 90), Angles());
    EXPECT_NEAR(angles.x, 0, kDegreeTolerance);
    EXPECT_NEAR(std::fabs(angles.y), 180, kDegreeTolerance);
    EXPECT_NEAR(angles.z, -90, kDegreeTolerance);
    // A reference a little to either side decides.
    ExpectNear(GetByAxes(HvQuat::XYZ, Angles(180, 0, 90), Angles(0.1, 0, 0)), Angles(180, 0, 90),
               kDegreeTolerance);
    EXPECT_NEAR(GetByAxes(HvQuat::XYZ, Angles(180, 0, 90), Angles(0, 0, -0.1)).z, -90,
                kDegreeTolerance);
}

TEST(HvQuat_angles, NearTieIsDecidedByTheDistances)
{
    // The first triple is nearer by twice the 1e-8 degrees.
    ExpectNear(GetByAxes(HvQuat::XYZ, Angles(180, 0, 90), Angles(1e-8, 0, 0)), Angles(180, 0, 90),
               kDegreeTolerance);
    EXPECT_NEAR(GetByAxes(HvQuat::XYZ, Angles(180, 0, 90), Angles(0, 0, -1e-8)).z, -90,
                kDegreeTolerance);
}

TEST(HvQuat_angles, PoleReachesToItsSine)
{
    // 1 - cos(1.2e-6) is 0.72e-12, and of 1.6e-6 it is 1.28e-12.
    for (HvQuat::RotOrder order : kAllOrders) {
        for (double const side : {1.0, -1.0}) {
            double const quarter = side * kPi / 2;
            Angles middle(0, 0, 0);
            double* const byAxis[3] = {&middle.x, &middle.y, &middle.z};
            double& at = *byAxis[kOrderAxes[order][1]];
            Angles got;
            at = quarter - side * 1.2e-6;
            HvQuat(middle, order).Get(got, order);
            EXPECT_EQ(Member(got, kOrderAxes[order][1]), quarter);
            at = quarter - side * 1.6e-6;
            HvQuat(middle, order).Get(got, order);
            EXPECT_NEAR(Member(got, kOrderAxes[order][1]), at, 1e-9);
        }
    }
}

TEST(HvQuat_angles, PoleOfASmallAngleIsThatOfNone)
{
    double const degree = 1 / kDegree;
    for (HvQuat::RotOrder order : kAllOrders) {
        double const difference = IsEven(order) ? 90 : -90;
        // 0.75e-6 counts as none, and both get the mean; 1.5e-6 is shared out.
        Angles none =
            GetByAxes(order, Angles(0.75e-6 * degree, difference, 0), Angles(30, difference, 6));
        ExpectNear(none, Angles(18, difference, 18), kDegreeTolerance);
        Angles some =
            GetByAxes(order, Angles(1.5e-6 * degree, difference, 0), Angles(30, difference, 6));
        EXPECT_NEAR(some.x - some.z, 1.5e-6 * degree, 1e-12 * degree);
        // The sum of none gives both the mean's negative; otherwise they add up.
        none =
            GetByAxes(order, Angles(0.75e-6 * degree, -difference, 0), Angles(30, -difference, 10));
        ExpectNear(none, Angles(-20, -difference, -20), kDegreeTolerance);
        some =
            GetByAxes(order, Angles(1.5e-6 * degree, -difference, 0), Angles(30, -difference, 10));
        ExpectNear(some, Angles(10 + 0.75e-6 * degree, -difference, -10 + 0.75e-6 * degree),
                   1e-12 * degree);
    }
}

TEST(HvQuat_angles, PoleKeepsADifferenceOfTheReferenceThatIsRounding)
{
    // Angles below 1 are rounded to 1e-16.
    for (HvQuat::RotOrder order : kAllOrders) {
        int const* const axes = kOrderAxes[order];
        double const pole = IsEven(order) ? 90 : -90;
        for (double const side : {1.0, -1.0}) {
            for (double const difference : {0.75e-12, 1.5e-12}) {
                // At the pole of the difference they lie beside each other, at that of the sum
                // beside each other's negative.
                double references[3];
                references[axes[0]] = 0.25 + difference;
                references[axes[1]] = side * pole * kDegree;
                references[axes[2]] = side * 0.25;
                Angles got;
                HvQuat(ByAxes(order, 0.5 / kDegree, side * pole, 0), order)
                    .Get(got, Angles(references[0], references[1], references[2]), order);
                double const kept = difference < 1e-12 ? difference : 0.0;
                EXPECT_NEAR(Member(got, axes[0]) - side * Member(got, axes[2]), 0.5 + kept, 5e-15);
            }
        }
    }
}

TEST(HvQuat_angles, LongQuaternionsGiveWhatTheirElementsAreCutTo)
{
    // The sine of x is 2 and its cosine -1: cut to 1, that is a quarter turn.
    Angles angles;
    HvQuat(1, 1, 0, 0).Get(angles);
    ExpectNear(angles, Angles(kPi / 2, 0, 0), 1e-15);
    HvQuat(1, -1, 0, 0).Get(angles);
    ExpectNear(angles, Angles(-kPi / 2, 0, 0), 1e-15);
    // The sine of y is 1.5 or -1.5: a pole.
    HvQuat(1, 0, 0.75, 0).Get(angles);
    EXPECT_EQ(angles.y, kPi / 2);
    HvQuat(1, 0, -0.75, 0).Get(angles);
    EXPECT_EQ(angles.y, -kPi / 2);
}

TEST(HvQuat_angles, PoleSharesTheDifference)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        double const pole = IsEven(order) ? 90 : -90;
        // The difference is 20, that of the reference 50: both move by 15.
        ExpectNear(GetByAxes(order, Angles(30, pole, 10), Angles(50, pole, 0)),
                   Angles(35, pole, 15), kDegreeTolerance);
        // Equal references.
        ExpectNear(GetByAxes(order, Angles(30, pole, 10), Angles(7, pole, 7)), Angles(17, pole, -3),
                   kDegreeTolerance);
        // No difference: the mean.
        ExpectNear(GetByAxes(order, Angles(10, pole, 10), Angles(30, pole, 6)),
                   Angles(18, pole, 18), kDegreeTolerance);
        // 340 to share out: half a turn further it is only 20 the other way.
        ExpectNear(GetByAxes(order, Angles(170, pole, 0), Angles(-85, pole, 85)),
                   Angles(-95, pole, 95), kDegreeTolerance);
    }
}

TEST(HvQuat_angles, PoleSharesTheSum)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        double const pole = IsEven(order) ? -90 : 90;
        // The sum is 40, that of the reference 50.
        ExpectNear(GetByAxes(order, Angles(30, pole, 10), Angles(50, pole, 0)),
                   Angles(45, pole, -5), kDegreeTolerance);
        ExpectNear(GetByAxes(order, Angles(30, pole, 10), Angles(7, pole, -7)),
                   Angles(27, pole, 13), kDegreeTolerance);
        ExpectNear(GetByAxes(order, Angles(170, pole, 0), Angles(-85, pole, -85)),
                   Angles(-95, pole, -95), kDegreeTolerance);
    }
}

TEST(HvQuat_angles, PoleWithoutASumTakesTheNegativeMean)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        double const pole = IsEven(order) ? -90 : 90;
        // The mean is 20; both get -20, though these do not add up to 0.
        ExpectNear(GetByAxes(order, Angles(10, pole, -10), Angles(30, pole, 10)),
                   Angles(-20, pole, -20), kDegreeTolerance);
    }
}

TEST(HvQuat_angles, PoleTieTakesTheOtherPair)
{
    // The middle angle is 90, and the outer ones differ by exactly half a turn: shared out around a
    // reference of zeros that is -90 and 90, or 90 and -90 half a turn further, which is as near.
    double const half = std::sqrt(0.5);
    Angles angles;
    HvQuat(0, half, 0, -half).Get(angles);
    ExpectNear(angles * (1 / kDegree), Angles(90, 90, -90), kDegreeTolerance);
}

TEST(HvQuat_angles, PoleKeepsTheWindingOfTheReference)
{
    ExpectNear(GetByAxes(HvQuat::XYZ, Angles(30, 90, 10), Angles(50 + 720, 90 - 360, 0 - 1080)),
               Angles(35 + 720, 90 - 360, 15 - 1080), 10 * kDegreeTolerance);
}

TEST(HvQuat_angles, PoleTakesTheMiddleByItself)
{
    // Both middle angles are 90: it stays, also where the outer pair is turned by half a turn.
    Angles const angles = GetByAxes(HvQuat::XYZ, Angles(170, 90, 0), Angles(-85, -80, 85));
    ExpectNear(angles, Angles(-95, 90, 95), kDegreeTolerance);
}

// What comes back is the same rotation, nearest to the reference.
TEST(HvQuat_angles, RandomRotationsComeBackNearTheirReference)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> turns(-12, 12);
    auto const any = [&] { return Angles(turns(random), turns(random), turns(random)); };
    for (int round = 0; round < 4000; ++round) {
        Angles const of = any();
        Angles const reference = any();
        for (HvQuat::RotOrder order : kAllOrders) {
            HvQuat const q(of, order);
            Angles got;
            q.Get(got, reference, order);
            // The middle angle goes to a pole that is within 1.5e-6.
            double const toPole = std::fabs(std::cos(Member(got, kOrderAxes[order][1])));
            ASSERT_LT(RotationDifference(q, HvQuat(got, order)), toPole < 1e-9 ? 1.5e-6L : 1e-12L);
            double distance = 0;
            double other = 0;
            for (int i = 0; i < 3; ++i) {
                int const axis = kOrderAxes[order][i];
                double const g = Member(got, axis);
                double const r = Member(reference, axis);
                // Half a turn, and the rounding of its limit.
                ASSERT_LE(std::fabs(g - r), kPi + 1e-13);
                distance += Distance(g, r);
                other += Distance(i == 1 ? kPi - g : g + kPi, r);
            }
            ASSERT_LE(distance, other + 1e-12);
        }
    }
}

// The literal elements of the rotation matrix lose half of their digits near the poles. The angles
// must not: outer angles that stand still stand still there, on the way in, at the pole and out.
TEST(HvQuat_angles, NearThePolesNeighboursDoNotJump)
{
    for (HvQuat::RotOrder order : kAllOrders) {
        int const* axes = kOrderAxes[order];
        for (double pole : {90.0, -90.0}) {
            std::vector<double> offsets;
            for (double offset = 1e-3; offset > 1e-13; offset *= 0.8) {
                offsets.push_back(offset);
                offsets.insert(offsets.begin(), -offset);
            }
            Angles previous = ByAxes(order, 40, pole, 17);
            for (double offset : offsets) {
                Angles of = ByAxes(order, 40, pole, 17);
                (axes[1] == 0 ? of.x : (axes[1] == 1 ? of.y : of.z)) += offset;
                HvQuat const q(of, order);
                Angles got;
                q.Get(got, previous, order);
                // A rounding of 2e-16 over the cosine at the edge of the pole, 1.4e-6, for each of
                // the samples there.
                EXPECT_NEAR(Member(got, axes[0]), 40 * kDegree, 2e-9) << order << " " << offset;
                EXPECT_NEAR(Member(got, axes[2]), 17 * kDegree, 2e-9) << order << " " << offset;
                EXPECT_NEAR(Member(got, axes[1]), Member(of, axes[1]), 1.5e-6);
                bool const atPole = std::fabs(offset) < 1.4e-6;
                EXPECT_LT(RotationDifference(q, HvQuat(got, order)), atPole ? 1.5e-6L : 1e-14L);
                previous = got;
            }
        }
    }
}

TEST(HvQuat_angles, LengthAndSignDoNotTurnTheRotation)
{
    // Sign: the elements are products of two components. Length: roundings of 1e-15.
    for (HvQuat::RotOrder order : kAllOrders) {
        HvQuat const q(Angles(0.4, 1.1, -0.7), order);
        Angles plain, negative, stretched;
        q.Get(plain, order);
        HvQuat(-q.w, -q.x, -q.y, -q.z).Get(negative, order);
        EXPECT_EQ(plain, negative);
        double const s = 1 + 1e-15;
        HvQuat(q.w * s, q.x * s, q.y * s, q.z * s).Get(stretched, order);
        ExpectNear(stretched, plain, 1e-14);
    }
    Angles none;
    HvQuat(0, 0, 0, 0).Get(none);
    EXPECT_EQ(none, Angles(0, 0, 0));
}

TEST(HvQuat_angles, HostileNumbersComeToAnEnd)
{
    for (double a : kHostileNumbers) {
        for (double b : kHostileNumbers) {
            for (HvQuat::RotOrder order : kAllOrders) {
                Angles angles;
                HvQuat(a, b, 0.5, 0.5).Get(angles, Angles(b, a, 1), order);
                HvQuat(0.5, a, b, b).Get(angles, Angles(1, b, a), order);
                HvQuat(0.5, 0.5, 0.5, 0.5).Get(angles, Angles(a, b, a), order);
                if (std::fabs(a) < 1e10 && std::fabs(b) < 1e10) {
                    EXPECT_TRUE(std::isfinite(angles.x) && std::isfinite(angles.y) &&
                                std::isfinite(angles.z));
                }
            }
        }
    }
}
