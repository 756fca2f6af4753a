// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The section on rotations of docs/conventions.md, line by line.

#include <hv/hv.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kQuarter = 1.5707963267948966;

/// Where a rotation takes a vector: q v q*.
HvPoint3<double> Turned(HvQuat const& q, HvPoint3<double> const& v)
{
    HvQuat const image = q * HvQuat(0, v.x, v.y, v.z) * q.Conjugate();
    return {image.x, image.y, image.z};
}

void ExpectNear(HvPoint3<double> const& a, HvPoint3<double> const& b)
{
    EXPECT_NEAR(a.x, b.x, 1e-12);
    EXPECT_NEAR(a.y, b.y, 1e-12);
    EXPECT_NEAR(a.z, b.z, 1e-12);
}

}  // namespace

TEST(Conventions_rotations, AProductTurnsByItsSecondFactorFirst)
{
    HvQuat const aboutX(HvPoint3<double>(kQuarter, 0, 0));
    HvQuat const aboutZ(HvPoint3<double>(0, 0, kQuarter));
    // About x, y becomes z, which stays when it is turned about z.
    ExpectNear(Turned(aboutZ * aboutX, {0, 1, 0}), {0, 0, 1});
    ExpectNear(Turned(aboutX * aboutZ, {0, 1, 0}), {-1, 0, 0});
}

TEST(Conventions_rotations, TheFirstLetterOfAnOrderTurnsFirst)
{
    HvPoint3<double> const angles(kQuarter, 0, kQuarter);
    ExpectNear(Turned(HvQuat(angles, HvQuat::XYZ), {0, 1, 0}), {0, 0, 1});
    ExpectNear(Turned(HvQuat(angles, HvQuat::ZYX), {0, 1, 0}), {-1, 0, 0});
    ExpectNear(Turned(HvQuat(angles), {0, 1, 0}), {0, 0, 1});
}

TEST(Conventions_rotations, OneComponentIsInDegrees)
{
    HvQuatCurve curve;
    curve.SetValueWhenNoKeys(HvPoint3<double>(0, kQuarter, 0));
    EXPECT_NEAR(curve.GetValueWhenNoKeys(1), 90, 1e-12);
    EXPECT_EQ(curve.GetValueWhenNoKeys(2), 0);
}

TEST(Conventions_rotations, BetweenKeysItTurnsTheShortWay)
{
    HvQuatKey first;
    HvQuatKey last;
    last.time = 1;
    last.angles = HvPoint3<double>(0, 0, 3 * kQuarter);
    HvQuatKey const keys[] = {first, last};
    HvQuatSpline const spline(2, keys, HvQuat::XYZ, HvQuatSpline::ConstantExtrapolation);
    // Half way to three quarters is an eighth backward: x lies between x and -y.
    ExpectNear(Turned(spline.Eval(0.5), {1, 0, 0}), {std::sqrt(0.5), -std::sqrt(0.5), 0});
}

TEST(Conventions_rotations, AnglesStayWithinHalfATurnOfTheReference)
{
    HvPoint3<double> angles;
    HvQuat(HvPoint3<double>(0, 0, 0.5))
        .Get(angles, HvPoint3<double>(0, 0, 8 * kQuarter), HvQuat::XYZ);
    EXPECT_NEAR(angles.z, 8 * kQuarter + 0.5, 1e-9);
}
