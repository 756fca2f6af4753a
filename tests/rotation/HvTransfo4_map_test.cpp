// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points, vectors and extents through a transform.

#include "long_matrix.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

// Sums of four products up to 100, at most eight roundings of 400 * 2^-53.
constexpr double kTolerance = 4e-13;

/// One coordinate of the image of (x, y, z, w), in long double.
long double Coordinate(HvTransfo4 const& t, unsigned int row, double x, double y, double z,
                       double w)
{
    LongMatrix const m(t);
    return m.e[row][0] * x + m.e[row][1] * y + m.e[row][2] * z + m.e[row][3] * w;
}

bool Near(double a, long double b)
{
    return std::fabs(a - b) < kTolerance;
}

/// Whether a float is the double rounded once.
bool RoundedOnce(float f, double d)
{
    return f == static_cast<float>(d);
}

}  // namespace

RC_GTEST_PROP(HvTransfo4_map, MapsVectorsOfFour, ())
{
    HvTransfo4 const t = *AnyTransfo();
    double v[4] = {*AnyNumber(), *AnyNumber(), *AnyNumber(), *AnyNumber()};
    double out[4];
    t.Map(v, out);
    for (unsigned int r = 0; r < 4; ++r) {
        RC_ASSERT(Near(out[r], Coordinate(t, r, v[0], v[1], v[2], v[3])));
    }
    t.Map(v, v);
    for (unsigned int r = 0; r < 4; ++r) {
        RC_ASSERT(v[r] == out[r]);
    }
}

RC_GTEST_PROP(HvTransfo4_map, MapsPointsOfSpaceWithoutTheLastRow, ())
{
    HvTransfo4 const t = *AnyTransfo();
    HvPoint3<double> const p = *AnyPoint3();
    HvPoint3<double> const image = t.Map(p);
    RC_ASSERT(Near(image.x, Coordinate(t, 0, p.x, p.y, p.z, 1)));
    RC_ASSERT(Near(image.y, Coordinate(t, 1, p.x, p.y, p.z, 1)));
    RC_ASSERT(Near(image.z, Coordinate(t, 2, p.x, p.y, p.z, 1)));
    HvPoint3<double> q;
    t.Map(p, q);
    RC_ASSERT(q == image);
    q = p;
    t.Map(q, q);
    RC_ASSERT(q == image);
    q = p;
    t.MapInPlace(q);
    RC_ASSERT(q == image);
}

RC_GTEST_PROP(HvTransfo4_map, MapsPointsOfThePlaneWithoutTheThirdColumn, ())
{
    HvTransfo4 const t = *AnyTransfo();
    HvPoint2<double> const p = *AnyPoint2();
    HvPoint2<double> const image = t.Map(p);
    RC_ASSERT(Near(image.x, Coordinate(t, 0, p.x, p.y, 0, 1)));
    RC_ASSERT(Near(image.y, Coordinate(t, 1, p.x, p.y, 0, 1)));
    HvPoint2<double> q;
    t.Map(p, q);
    RC_ASSERT(q == image);
    q = p;
    t.Map(q, q);
    RC_ASSERT(q == image);
    q = p;
    t.MapInPlace(q);
    RC_ASSERT(q == image);
}

RC_GTEST_PROP(HvTransfo4_map, MapsFloatsInDoubleAndRoundsOnce, ())
{
    HvTransfo4 const t = *AnyTransfo();
    HvPoint3<float> p(*AnyPoint3());
    HvPoint3<double> const exact = t.Map(HvPoint3<double>(p));
    HvPoint2<float> q(p.x, p.y);
    HvPoint2<double> const flat = t.Map(HvPoint2<double>(q));
    t.MapInPlace(p);
    t.MapInPlace(q);
    RC_ASSERT(RoundedOnce(p.x, exact.x) && RoundedOnce(p.y, exact.y) && RoundedOnce(p.z, exact.z));
    RC_ASSERT(RoundedOnce(q.x, flat.x) && RoundedOnce(q.y, flat.y));
}

RC_GTEST_PROP(HvTransfo4_map, MapsArraysPointByPoint, ())
{
    HvTransfo4 const t = *AnyTransfo();
    auto const points = *rc::gen::container<std::vector<HvPoint3<double>>>(AnyPoint3());
    unsigned int const n = static_cast<unsigned int>(points.size());
    std::vector<HvPoint3<double>> out(n);
    std::vector<HvPoint3<double>> inPlace(points);
    std::vector<HvPoint2<float>> flat(n);
    for (unsigned int i = 0; i < n; ++i) {
        flat[i] = HvPoint2<float>(HvPoint2<double>(points[i].x, points[i].y));
    }
    std::vector<HvPoint2<float>> const before(flat);
    std::vector<HvPoint2<float>> flatOut(n);
    t.Map(points.data(), n, out.data());
    t.MapInPlace(inPlace.data(), n);
    t.Map(flat.data(), n, flatOut.data());
    t.MapInPlace(flat.data(), n);
    for (unsigned int i = 0; i < n; ++i) {
        RC_ASSERT(out[i] == t.Map(points[i]));
        RC_ASSERT(inPlace[i] == out[i]);
        RC_ASSERT(flat[i] == t.Map(before[i]));
        RC_ASSERT(flatOut[i] == flat[i]);
    }
}

TEST(HvTransfo4_map, LeavesArraysOfNoPointsAlone)
{
    HvPoint3<float> p(1, 2, 3);
    HvPoint2<double> q(1, 2);
    HvTransfo4 const t = HvTransfo4().Scale(2);
    t.MapInPlace(&p, 0);
    t.Map(&q, 0, &q);
    t.MapInPlace(static_cast<HvPoint2<double>*>(nullptr), 0);
    EXPECT_EQ(p, HvPoint3<float>(1, 2, 3));
    EXPECT_EQ(q, HvPoint2<double>(1, 2));
}

TEST(HvTransfo4_map, BoxesARotatedExtent)
{
    HvTransfo4 const t = HvTransfo4().RotateXY(45, HvPoint2<double>());
    HvExtent2<double> const box = t.Map(HvExtent2<double>(-1, -1, 1, 1));
    double const r = std::sqrt(2.0);
    EXPECT_EQ(box.state, 0);
    EXPECT_NEAR(box.min.x, -r, 1e-14);
    EXPECT_NEAR(box.min.y, -r, 1e-14);
    EXPECT_NEAR(box.max.x, r, 1e-14);
    EXPECT_NEAR(box.max.y, r, 1e-14);
}

RC_GTEST_PROP(HvTransfo4_map, BoxesTheFourCorners, ())
{
    HvTransfo4 const t = *AnyTransfo();
    HvPoint2<float> const a(*AnyPoint2());
    HvPoint2<float> const b(*AnyPoint2());
    HvExtent2<float> const extent(std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x),
                                  std::max(a.y, b.y));
    HvExtent2<float> expected;
    for (HvPoint2<float> const& corner :
         {a, b, HvPoint2<float>(a.x, b.y), HvPoint2<float>(b.x, a.y)}) {
        expected.Augment(t.Map(corner));
    }
    HvExtent2<float> box = t.Map(extent);
    RC_ASSERT(box.state == 0);
    RC_ASSERT(box.min == expected.min);
    RC_ASSERT(box.max == expected.max);
    HvExtent2<float> out;
    t.Map(extent, out);
    RC_ASSERT(out.min == box.min && out.max == box.max && out.state == 0);
    out = extent;
    t.MapInPlace(out);
    RC_ASSERT(out.min == box.min && out.max == box.max && out.state == 0);
}

TEST(HvTransfo4_map, ReturnsEmptyAndWholePlaneAsTheyAre)
{
    HvTransfo4 const t = HvTransfo4().Scale(3).Translate(1, 1, 1);
    for (int state : {1, 2}) {
        HvExtent2<double> e(1, 2, 3, 4);
        e.state = state;
        HvExtent2<double> const image = t.Map(e);
        EXPECT_EQ(image.state, state);
        EXPECT_EQ(image.min, e.min);
        EXPECT_EQ(image.max, e.max);
        t.MapInPlace(e);
        EXPECT_EQ(e.max, image.max);
        EXPECT_EQ(e.state, state);
    }
}

TEST(HvTransfo4_map, PassesHostileNumbersOn)
{
    HvTransfo4 const t = HvTransfo4().Scale(2).Translate(1, 1, 1);
    EXPECT_TRUE(std::isnan(t.Map(HvPoint2<double>(kNaN, 0)).x));
    EXPECT_EQ(t.Map(HvPoint3<double>(kInfinity, 0, 0)).x, kInfinity);
    // Beyond the range of float the narrowed coordinate is infinite.
    EXPECT_EQ(HvTransfo4().Scale(1e300).Map(HvPoint2<float>(1, 0)).x,
              std::numeric_limits<float>::infinity());
    EXPECT_EQ(t.Map(HvExtent2<double>(kNaN, 0, kNaN, 1)).state, 0);
}
