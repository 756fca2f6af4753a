// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The transform's modifiers against products in long double.

#include "long_matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

// Products of numbers up to 10 three deep stay below 1e5; each rounding costs at most 1e5 * 2^-53,
// and no operation here has more than some forty on the way to one element.
constexpr long double kTolerance = 5e-10L;

/// `operation` moved from the origin to a centre.
LongMatrix About(HvPoint3<double> const& centre, LongMatrix const& operation)
{
    return LongMatrix::Translation(centre.x, centre.y, centre.z) * operation *
           LongMatrix::Translation(-centre.x, -centre.y, -centre.z);
}

/// Whether `modified`, the result of a modifier called on `t`, is t * operation, returned as t.
bool Composes(HvTransfo4 const& before, HvTransfo4 const& t, HvTransfo4 const& modified,
              LongMatrix const& operation)
{
    return &t == &modified && Difference(t, LongMatrix(before) * operation) < kTolerance;
}

HvPoint3<double> NonZeroAxis()
{
    return *rc::gen::suchThat(AnyPoint3(),
                              [](HvPoint3<double> const& p) { return HvPoint3_Length(p) > 0.1; });
}

}  // namespace

RC_GTEST_PROP(HvTransfo4_modify, TranslatesInTheLocalFrame, ())
{
    HvTransfo4 const a = *AnyTransfo();
    HvPoint3<double> const p = *AnyPoint3();
    LongMatrix const expected = LongMatrix::Translation(p.x, p.y, p.z);
    HvTransfo4 t(a);
    RC_ASSERT(Composes(a, t, t.Translate(p.x, p.y, p.z), expected));
    HvTransfo4 const direct(t);
    t = a;
    RC_ASSERT(Same(t.Translate(p), direct));
    t = a;
    RC_ASSERT(Same(t.Translate(HvPoint2<double>(p.x, p.y), p.z), direct));
}

RC_GTEST_PROP(HvTransfo4_modify, TranslatesByFloatsWidened, ())
{
    HvTransfo4 const a = *AnyTransfo();
    HvPoint3<float> const p(*AnyPoint3());
    HvPoint2<float> const xy(p.x, p.y);
    double const z = p.z;
    HvTransfo4 direct(a);
    direct.Translate(static_cast<double>(p.x), static_cast<double>(p.y), z);
    HvTransfo4 t(a);
    RC_ASSERT(Same(t.Translate(p), direct));
    t = a;
    RC_ASSERT(Same(t.Translate(xy, z), direct));
    t = a;
    RC_ASSERT(Same(t.Translate(xy, p.z), direct));
}

TEST(HvTransfo4_modify, TranslationReachesTheLastRow)
{
    HvTransfo4 t;
    t.GetMatrixPtr()[3] = 2;
    t.GetMatrixPtr()[7] = 3;
    t.GetMatrixPtr()[11] = 4;
    t.Translate(10, 100, 1000);
    EXPECT_EQ(t.GetMatrixElement(3, 3), 1 + 20 + 300 + 4000);
}

RC_GTEST_PROP(HvTransfo4_modify, Scales, ())
{
    HvTransfo4 const a = *AnyTransfo();
    HvPoint3<double> const s = *AnyPoint3();
    HvPoint3<double> const centre = *AnyPoint3();
    LongMatrix const scaling = LongMatrix::Scaling(s.x, s.y, s.z);
    HvTransfo4 t(a);
    RC_ASSERT(Composes(a, t, t.Scale(s.x, s.y, s.z), scaling));
    t = a;
    RC_ASSERT(Composes(a, t, t.Scale(s.x), LongMatrix::Scaling(s.x, s.x, s.x)));
    t = a;
    RC_ASSERT(Composes(a, t, t.Scale(s.x, s.y, s.z, centre), About(centre, scaling)));
    t = a;
    HvPoint3<float> const rough(centre);
    RC_ASSERT(
        Composes(a, t, t.Scale(s.x, s.y, s.z, rough), About(HvPoint3<double>(rough), scaling)));
    t = a;
    RC_ASSERT(
        Composes(a, t, t.ScaleXY(s.x, s.y, HvPoint2<double>(centre.x, centre.y)),
                 About(HvPoint3<double>(centre.x, centre.y, 0), LongMatrix::Scaling(s.x, s.y, 1))));
}

RC_GTEST_PROP(HvTransfo4_modify, Shears, ())
{
    HvTransfo4 const m = *AnyTransfo();
    double const a = *AnyNumber();
    double const b = *AnyNumber();
    HvPoint3<double> const centre = *AnyPoint3();
    LongMatrix const xy = LongMatrix().With(0, 2, a).With(1, 2, b);
    LongMatrix const xz = LongMatrix().With(0, 1, a).With(2, 1, b);
    LongMatrix const yz = LongMatrix().With(1, 0, a).With(2, 0, b);
    HvTransfo4 t(m);
    RC_ASSERT(Composes(m, t, t.ShearXY(a, b), xy));
    t = m;
    RC_ASSERT(Composes(m, t, t.ShearXZ(a, b), xz));
    t = m;
    RC_ASSERT(Composes(m, t, t.ShearYZ(a, b), yz));
    t = m;
    RC_ASSERT(Composes(m, t, t.ShearXY(a, b, centre), About(centre, xy)));
    t = m;
    RC_ASSERT(Composes(m, t, t.ShearXZ(a, b, centre), About(centre, xz)));
    t = m;
    RC_ASSERT(Composes(m, t, t.ShearYZ(a, b, centre), About(centre, yz)));
}

RC_GTEST_PROP(HvTransfo4_modify, RotatesAboutAnAxis, ())
{
    HvTransfo4 const m = *AnyTransfo();
    double const degrees = *AnyDegrees();
    HvPoint3<double> const axis = NonZeroAxis();
    HvPoint3<double> const a = *AnyPoint3();
    LongMatrix const rotation = LongMatrix::Rotation(degrees, axis.x, axis.y, axis.z);
    HvTransfo4 t(m);
    RC_ASSERT(Composes(m, t, t.Rotate(degrees, axis.x, axis.y, axis.z), rotation));
    t = m;
    RC_ASSERT(Composes(m, t, t.Rotate(degrees, a, a + axis), About(a, rotation)));
    t = m;
    HvPoint3<float> const from(a);
    HvPoint3<float> const to(a + axis);
    HvTransfo4 widened(m);
    widened.Rotate(degrees, HvPoint3<double>(from), HvPoint3<double>(to));
    RC_ASSERT(Same(t.Rotate(degrees, from, to), widened));
}

RC_GTEST_PROP(HvTransfo4_modify, RotatesAboutXThenYThenZ, ())
{
    HvTransfo4 const m = *AnyTransfo();
    HvPoint3<double> const d(*AnyDegrees(), *AnyDegrees(), *AnyDegrees());
    HvTransfo4 t(m);
    RC_ASSERT(Composes(m, t, t.RotateXYZ(d),
                       LongMatrix::Rotation(d.z, 0, 0, 1) * LongMatrix::Rotation(d.y, 0, 1, 0) *
                           LongMatrix::Rotation(d.x, 1, 0, 0)));
}

RC_GTEST_PROP(HvTransfo4_modify, RotatesInThePlane, ())
{
    HvTransfo4 const m = *AnyTransfo();
    double const degrees = *AnyDegrees();
    HvPoint2<double> const centre = *AnyPoint2();
    HvTransfo4 t(m);
    RC_ASSERT(Composes(
        m, t, t.RotateXY(degrees, centre),
        About(HvPoint3<double>(centre.x, centre.y, 0), LongMatrix::Rotation(degrees, 0, 0, 1))));
}

TEST(HvTransfo4_modify, RotatesCounterClockwise)
{
    HvPoint3<double> const p = HvTransfo4().Rotate(90, 0, 0, 5).Map(HvPoint3<double>(1, 0, 0));
    EXPECT_NEAR(p.x, 0, 1e-14);
    EXPECT_NEAR(p.y, 1, 1e-14);
    EXPECT_EQ(p.z, 0);
}

// The digits of the degree are the transform's own: 90 of them miss the right angle by 1.5e-15.
TEST(HvTransfo4_modify, DoesNotSnapTheRightAngle)
{
    double const c = HvTransfo4().RotateXY(90, HvPoint2<double>()).GetMatrixElement(0, 0);
    EXPECT_EQ(c, std::cos(90 * 0.017453292519943278));
    EXPECT_GT(c, 1e-15);
}

TEST(HvTransfo4_modify, RotatesFromOnePointToAnother)
{
    HvPoint2<double> const centre(3, 4);
    HvPoint2<double> const from(5, 4);
    HvPoint2<double> const to(3, 1);
    HvTransfo4 t;
    EXPECT_EQ(&t.RotateXY(centre, from, to), &t);
    HvPoint2<double> const image = t.Map(from);
    // The angle's degrees carry some 1e-13, times the radius of 2.
    EXPECT_NEAR(image.x, 3, 1e-11);
    EXPECT_NEAR(image.y, 2, 1e-11);
    EXPECT_NEAR(t.Map(centre).x, 3, 1e-14);
    EXPECT_NEAR(t.Map(centre).y, 4, 1e-14);
}

TEST(HvTransfo4_modify, StaysWhenADirectionIsMissing)
{
    HvPoint2<double> const centre(3, 4);
    HvPoint2<double> const other(5, 4);
    HvTransfo4 t;
    EXPECT_EQ(&t.RotateXY(centre, centre, other), &t);
    t.RotateXY(centre, other, HvPoint2<double>(3 + 5e-8, 4));
    EXPECT_TRUE(Same(t, HvTransfo4()));
}

TEST(HvTransfo4_modify, ZeroAxisGivesNaN)
{
    HvTransfo4 t;
    t.Rotate(10, 0, 0, 0);
    EXPECT_TRUE(std::isnan(t.GetMatrixElement(0, 0)));
    EXPECT_TRUE(std::isnan(t.GetMatrixElement(2, 1)));
    HvPoint3<double> const p(1, 2, 3);
    EXPECT_TRUE(std::isnan(HvTransfo4().Rotate(10, p, p).GetMatrixElement(0, 0)));
}

// Whatever the numbers, every modifier ends, and the sanitizers stay silent.
TEST(HvTransfo4_modify, TakesHostileNumbers)
{
    double const hostile[] = {0.0,        -0.0, 5e-324,       1.7976931348623157e308, kInfinity,
                              -kInfinity, kNaN, 2147483648.0, 9007199254740992.0};
    for (double v : hostile) {
        for (double w : hostile) {
            HvPoint3<double> const p(v, w, v);
            HvPoint2<double> const q(v, w);
            HvTransfo4 t;
            t.Translate(p).Translate(q, w).Scale(v, w, v).Scale(v).Scale(v, w, v, p);
            t.ScaleXY(v, w, q).ShearXY(v, w, p).ShearXZ(v, w, p).ShearYZ(v, w, p);
            t.Rotate(v, w, v, w).Rotate(v, p, p).RotateXYZ(p).RotateXY(v, q);
            t.RotateXY(q, HvPoint2<double>(w, v), HvPoint2<double>(1, 1));
            EXPECT_EQ(HvTransfo4().Translate(v, 0, 0).GetMatrixElement(1, 1), 1.0);
        }
    }
}
