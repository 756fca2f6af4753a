// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Transforms built from and taken apart into scale, shear, angle and points.

#include "long_matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Point2 = HvPoint2<double>;
using Point3 = HvPoint3<double>;

/// What DecomposeXY writes, with marks where it wrote nothing.
struct Parts {
    int result = -1;
    double sx = -77;
    double sy = -77;
    double shear = -77;
    double degrees = -77;
    Point2 translation = Point2(-77, -77);

    explicit Parts(HvTransfo4 const& t, Point2 const& centre = Point2())
    {
        result = t.DecomposeXY(centre, sx, sy, shear, degrees, translation);
    }
};

/// A transform whose block is (m0, m4; m1, m5).
HvTransfo4 Block(double m0, double m4, double m1, double m5)
{
    HvTransfo4 t;
    t.GetMatrixPtr()[0] = m0;
    t.GetMatrixPtr()[4] = m4;
    t.GetMatrixPtr()[1] = m1;
    t.GetMatrixPtr()[5] = m5;
    return t;
}

/// A scale of 0.1 to 10 of either sign: away from what cannot be taken apart.
double AnyScale()
{
    double const v = *AnyNumber();
    return v < 0 ? v - 0.1 : v + 0.1;
}

}  // namespace

RC_GTEST_PROP(HvTransfo4_decompose, RecomposesAsTheProductOfItsParts, ())
{
    Point2 const centre = *AnyPoint2();
    Point2 const offset = *AnyPoint2();
    double const sx = *AnyNumber();
    double const sy = *AnyNumber();
    double const shear = *AnyNumber();
    double const degrees = *AnyDegrees();
    HvTransfo4 t = *AnyTransfo();
    t.RecomposeXY(centre, sx, sy, shear, degrees, offset);
    LongMatrix const expected =
        LongMatrix::Translation(centre.x + offset.x, centre.y + offset.y, 0) *
        LongMatrix::Rotation(degrees, 0, 0, 1) * LongMatrix().With(0, 1, shear) *
        LongMatrix::Scaling(sx, sy, 1) * LongMatrix::Translation(-centre.x, -centre.y, 0);
    // Terms up to 10 * 10 * 10, angles up to 720 degrees known to 1e-15 of a degree's ulp.
    RC_ASSERT(Difference(t, expected) < 2e-11L);
}

RC_GTEST_PROP(HvTransfo4_decompose, TakesApartWhatWasRecomposed, ())
{
    Point2 const centre = *AnyPoint2();
    Point2 const offset = *AnyPoint2();
    // A negative sx is found as a positive one half a turn further.
    double const sx = std::fabs(AnyScale());
    double const sy = AnyScale();
    double const shear = *AnyNumber() / 10;
    double const degrees = std::fabs(*AnyNumber()) * 35;
    HvTransfo4 t;
    t.RecomposeXY(centre, sx, sy, shear, degrees, offset);
    Parts const parts(t, centre);
    RC_ASSERT(parts.result == 1);
    RC_ASSERT(std::fabs(parts.sx - sx) < 1e-12);
    RC_ASSERT(std::fabs(parts.sy - sy) < 1e-11);
    RC_ASSERT(std::fabs(parts.shear - shear) < 1e-11);
    // At 0 degrees a rounding below snaps to 0 as well.
    RC_ASSERT(std::fabs(parts.degrees - degrees) < 1e-10);
    RC_ASSERT(std::fabs(parts.translation.x - offset.x) < 1e-11);
    RC_ASSERT(std::fabs(parts.translation.y - offset.y) < 1e-11);
}

RC_GTEST_PROP(HvTransfo4_decompose, ComesBackFromItsParts, ())
{
    HvTransfo4 const t = Block(*AnyNumber(), *AnyNumber(), *AnyNumber(), *AnyNumber());
    double const det = t.GetMatrixElement(0, 0) * t.GetMatrixElement(1, 1) -
                       t.GetMatrixElement(0, 1) * t.GetMatrixElement(1, 0);
    RC_PRE(std::fabs(det) > 0.01);
    Point2 const centre = *AnyPoint2();
    Parts const parts(t, centre);
    RC_ASSERT(parts.result == 1);
    RC_ASSERT(parts.degrees >= 0 && parts.degrees < 360);
    HvTransfo4 back;
    back.RecomposeXY(centre, parts.sx, parts.sy, parts.shear, parts.degrees, parts.translation);
    // The shear divides by the determinant, 0.01 and more: 1e-13 becomes 1e-11, times the centre.
    RC_ASSERT(Difference(back, LongMatrix(t)) < 1e-9L);
}

TEST(HvTransfo4_decompose, IdentityHasUnitScaleAndNothingElse)
{
    Parts const p((HvTransfo4()));
    EXPECT_EQ(p.result, 1);
    EXPECT_EQ(p.sx, 1);
    EXPECT_EQ(p.sy, 1);
    EXPECT_EQ(p.shear, 0);
    EXPECT_EQ(p.degrees, 0);
    EXPECT_EQ(p.translation, Point2(0, 0));
}

TEST(HvTransfo4_decompose, DiagonalBlockKeepsItsSigns)
{
    Parts const p(Block(-2, 0, 0, 0).Translate(1, 0, 0), Point2(3, 4));
    EXPECT_EQ(p.result, 1);
    EXPECT_EQ(p.sx, -2);
    EXPECT_EQ(p.sy, 0);
    EXPECT_EQ(p.shear, 0);
    EXPECT_EQ(p.degrees, 0);
    // (3, 4) goes to (-2 * 3 - 2, 0).
    EXPECT_EQ(p.translation, Point2(-11, -4));
}

TEST(HvTransfo4_decompose, ExactQuarterTurnIsNinetyDegrees)
{
    Parts const p(Block(0, -3, 2, 0));
    EXPECT_EQ(p.result, 1);
    EXPECT_EQ(p.sx, 2);
    EXPECT_EQ(p.sy, 3);
    EXPECT_EQ(p.shear, 0);
    EXPECT_EQ(p.degrees, 90);
}

TEST(HvTransfo4_decompose, RoundedQuarterTurnIsTakenApartInGeneral)
{
    Parts const p(HvTransfo4().RotateXY(90, Point2()));
    EXPECT_EQ(p.result, 1);
    EXPECT_NE(p.shear, -77);
    EXPECT_NEAR(p.degrees, 90, 1e-12);
    EXPECT_NEAR(p.sx, 1, 1e-15);
}

TEST(HvTransfo4_decompose, FindsTheAngleInEveryOctant)
{
    for (double degrees : {10.0, 44.0, 46.0, 80.0, 100.0, 134.0, 136.0, 170.0, 190.0, 224.0, 226.0,
                           260.0, 280.0, 314.0, 316.0, 350.0}) {
        Parts const p(HvTransfo4().RotateXY(degrees, Point2()));
        EXPECT_EQ(p.result, 1);
        EXPECT_NEAR(p.degrees, degrees, 1e-12);
        EXPECT_NEAR(p.shear, 0, 1e-15);
    }
}

TEST(HvTransfo4_decompose, HalfTurnOfAShearIsExact)
{
    // m1 = 0 with m4 set passes the first two questions: c = -1, s = 0.
    Parts const p(Block(-1, 0.5, 0, -1));
    EXPECT_EQ(p.degrees, 180);
    EXPECT_EQ(p.sx, 1);
    EXPECT_EQ(p.sy, 1);
    EXPECT_EQ(p.shear, -0.5);
}

TEST(HvTransfo4_decompose, AngleRoundedToAFullTurnIsNone)
{
    // The sine is so small that its angle vanishes beside the full turn.
    Parts const p(Block(1, 0.5, -1e-17, 1));
    EXPECT_EQ(p.result, 1);
    EXPECT_EQ(p.degrees, 0);
}

TEST(HvTransfo4_decompose, RefusesAVanishingAxisAndDeterminant)
{
    Parts const axis(Block(1e-16, 1, 0, 1));
    EXPECT_EQ(axis.result, 0);
    EXPECT_EQ(axis.sx, 1e-16);
    EXPECT_EQ(axis.sy, -77);
    EXPECT_EQ(axis.degrees, -77);
    EXPECT_EQ(axis.translation, Point2(-77, -77));

    Parts const flat(Block(3, 6, 4, 8));
    EXPECT_EQ(flat.result, 0);
    EXPECT_EQ(flat.sx, 5);
    EXPECT_EQ(flat.sy, -77);
    EXPECT_EQ(flat.shear, -77);

    // Just above both limits; 1e-15 itself is not below it.
    EXPECT_EQ(Parts(Block(1e-15, 1, 0, 1)).result, 1);
    EXPECT_EQ(Parts(Block(1, 1, 0, 0.99e-15)).result, 0);
    EXPECT_EQ(Parts(Block(1, 1, 0, 1e-15)).result, 1);
}

TEST(HvTransfo4_decompose, TakesTheCentreFromTheOffsetItWrites)
{
    HvTransfo4 const t = HvTransfo4().Translate(1, 2, 0).Scale(2, 2, 1);
    double sx, sy, shear, degrees;
    Point2 both(3, 4);
    EXPECT_EQ(t.DecomposeXY(both, sx, sy, shear, degrees, both), 1);
    EXPECT_EQ(both, Point2(4, 6));
}

RC_GTEST_PROP(HvTransfo4_decompose, TakesThreePointsToThree, ())
{
    Point2 const from[3] = {*AnyPoint2(), *AnyPoint2(), *AnyPoint2()};
    Point2 const to[3] = {*AnyPoint2(), *AnyPoint2(), *AnyPoint2()};
    RC_PRE(std::fabs(HvPoint2_ABdetCD(from[0], from[1], from[0], from[2])) > 0.1);
    HvTransfo4 t = *AnyTransfo();
    RC_ASSERT(t.SetTo3PointTransformXY(from, to) == 1);
    for (int i = 0; i < 3; ++i) {
        // Elements up to 400 / 0.1, times 10, with a few roundings.
        RC_ASSERT(HvPoint2_LengthAB(t.Map(from[i]), to[i]) < 1e-9);
    }
    RC_ASSERT(t.Map(Point3(0, 0, 5)).z == 5);
    RC_ASSERT(t.GetMatrixElement(3, 3) == 1);
}

TEST(HvTransfo4_decompose, RefusesCollinearPoints)
{
    double counted[16];
    for (int i = 0; i < 16; ++i) {
        counted[i] = i;
    }
    Point2 const line[3] = {Point2(0, 0), Point2(1, 1), Point2(3, 3)};
    Point2 const to[3] = {Point2(0, 0), Point2(1, 0), Point2(0, 1)};
    HvTransfo4 t(counted);
    EXPECT_EQ(t.SetTo3PointTransformXY(line, to), 0);
    EXPECT_TRUE(Same(t, HvTransfo4(counted)));
    Point2 const thin[3] = {Point2(0, 0), Point2(1, 0), Point2(0, 0.99e-15)};
    EXPECT_EQ(t.SetTo3PointTransformXY(thin, to), 0);
    Point2 const justEnough[3] = {Point2(0, 0), Point2(1, 0), Point2(0, 1e-15)};
    EXPECT_EQ(t.SetTo3PointTransformXY(justEnough, to), 1);
}

RC_GTEST_PROP(HvTransfo4_decompose, TakesTheUnitFrameToFourPoints, ())
{
    Point3 const p[4] = {*AnyPoint3(), *AnyPoint3(), *AnyPoint3(), *AnyPoint3()};
    HvTransfo4 t = *AnyTransfo();
    RC_ASSERT(&t.SetTo4PointTransform(p[0], p[1], p[2], p[3]) == &t);
    RC_ASSERT(t.Map(Point3(0, 0, 0)) == p[0]);
    RC_ASSERT(HvPoint3_LengthAB(t.Map(Point3(1, 0, 0)), p[1]) < 1e-13);
    RC_ASSERT(HvPoint3_LengthAB(t.Map(Point3(0, 1, 0)), p[2]) < 1e-13);
    RC_ASSERT(HvPoint3_LengthAB(t.Map(Point3(0, 0, 1)), p[3]) < 1e-13);
    RC_ASSERT(t.GetMatrixElement(3, 0) == 0 && t.GetMatrixElement(3, 3) == 1);
}

TEST(HvTransfo4_decompose, ThreePointsOfSpaceTakeTheFourthAtHeightOne)
{
    HvTransfo4 t;
    EXPECT_EQ(&t.SetTo3PointTransformXY(Point3(1, 2, 5), Point3(2, 2, 5), Point3(1, 4, 5)), &t);
    EXPECT_EQ(t.Map(Point3(0, 0, 1)), Point3(1, 2, 1));
    EXPECT_EQ(t.GetMatrixElement(2, 2), -4);
    EXPECT_EQ(t.Map(Point3(1, 1, 0)), Point3(2, 4, 5));
}

RC_GTEST_PROP(HvTransfo4_decompose, ExtractsScaleRotationAndTranslation, ())
{
    Point3 const offset = *AnyPoint3();
    Point3 const size(std::fabs(AnyScale()), std::fabs(AnyScale()), std::fabs(AnyScale()));
    Point3 const degrees(*AnyNumber() * 17, *AnyNumber() * 8, *AnyNumber() * 17);
    HvTransfo4 const t =
        HvTransfo4().Translate(offset).RotateXYZ(degrees).Scale(size.x, size.y, size.z);
    // The reference is read in radians.
    Point3 rotation = degrees * (std::acos(-1.0) / 180);
    Point3 scale;
    Point3 translation;
    t.ExtractTransforms(scale, rotation, translation);
    RC_ASSERT(HvPoint3_LengthAB(scale, size) < 1e-13);
    RC_ASSERT(translation == offset);
    // Near the poles, reached up to 10.3 degrees here, angles lose two digits.
    RC_ASSERT(HvPoint3_LengthAB(rotation, degrees) < 1e-9);
}

TEST(HvTransfo4_decompose, ScaleOfZeroGivesNaNAngles)
{
    Point3 scale, rotation, translation;
    HvTransfo4().Scale(0, 1, 1).ExtractTransforms(scale, rotation, translation);
    EXPECT_EQ(scale, Point3(0, 1, 1));
    EXPECT_TRUE(std::isnan(rotation.y));
}

TEST(HvTransfo4_decompose, EndsOnHostileNumbers)
{
    for (double v : {kNaN, kInfinity, -kInfinity, 1e308, 5e-324, -0.0}) {
        HvTransfo4 t;
        t.RecomposeXY(Point2(v, 1), v, 2, v, v, Point2(1, v));
        Parts const whole(t, Point2(v, v));
        Parts const one(Block(v, 1, 1, v));
        Parts const other(Block(1, v, v, 1));
        EXPECT_FALSE(one.degrees >= 360 || (one.degrees < 0 && one.degrees != -77)) << v;
        EXPECT_FALSE(other.degrees >= 360 || (other.degrees < 0 && other.degrees != -77)) << v;
        Point2 const points[3] = {Point2(v, 0), Point2(0, v), Point2(1, 1)};
        t.SetTo3PointTransformXY(points, points);
        Point3 scale, rotation(v, v, v), translation;
        Block(v, 1, 1, v).ExtractTransforms(scale, rotation, translation);
    }
}
