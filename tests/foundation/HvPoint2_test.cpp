// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points of the plane: products, lengths, angles, segments and triangles.

#include <hv/foundation/HvPoint2.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;
using PointF = HvPoint2<float>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr float kNaNF = std::numeric_limits<float>::quiet_NaN();

struct Closest {
    int result;
    double squaredDistance;
    double parameter;
};

Closest FindClosest(Point p, Point a, Point b, double limit)
{
    Closest c{0, -1.0, -1.0};
    c.result =
        HvPoint2_FindClosestPointOnLineSegment(p, a, b, limit, c.squaredDistance, c.parameter);
    return c;
}

double AngleOrMinusOne(Point a, Point b)
{
    double angle = -1.0;
    int const result = HvPoint2_AngleInDegrees(a, b, angle);
    EXPECT_EQ(result, angle == -1.0 ? 0 : 1);
    return angle;
}

Point RandomPoint()
{
    return Point(PickInRange(-1000000, 1000000) / 1024.0, PickInRange(-1000000, 1000000) / 1024.0);
}

}  // namespace

template <class T>
class HvPoint2Typed : public testing::Test {
};
using Coordinates = testing::Types<float, double>;
TYPED_TEST_SUITE(HvPoint2Typed, Coordinates, );

TYPED_TEST(HvPoint2Typed, HasPlainArithmetic)
{
    using P = HvPoint2<TypeParam>;
    EXPECT_EQ(P(), P(0, 0));
    EXPECT_EQ(P(1, 2) + P(3, 5), P(4, 7));
    EXPECT_EQ(P(1, 2) - P(3, 5), P(-2, -3));
    EXPECT_EQ(-P(1, -2), P(-1, 2));
    EXPECT_EQ(P(1, -2) * TypeParam(3), P(3, -6));
    EXPECT_TRUE(P(1, 2) != P(1, 3));
    EXPECT_TRUE(P(1, 2) != P(0, 2));
    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_FALSE(P(nan, 0) == P(nan, 0));
    EXPECT_EQ(sizeof(P), 2 * sizeof(TypeParam));
}

TYPED_TEST(HvPoint2Typed, ConvertsExplicitly)
{
    EXPECT_EQ(HvPoint2<TypeParam>(HvPoint2<double>(1.5, -2)),
              HvPoint2<TypeParam>(TypeParam(1.5), -2));
    EXPECT_EQ(HvPoint2<TypeParam>(HvPoint2<float>(1.5f, -2)),
              HvPoint2<TypeParam>(TypeParam(1.5), -2));
}

TYPED_TEST(HvPoint2Typed, MultipliesVectors)
{
    using P = HvPoint2<TypeParam>;
    P const a(1, 2), b(4, 7), c(-1, 3), d(2, 5);
    EXPECT_EQ(HvPoint2_AdotB(a, b), 4.0 + 14.0);
    EXPECT_EQ(HvPoint2_ABdotCD(a, b, c, d), 3.0 * 3.0 + 5.0 * 2.0);
    EXPECT_EQ(HvPoint2_AdetB(a, b), 7.0 - 8.0);
    EXPECT_EQ(HvPoint2_ABdetCD(a, b, c, d), 3.0 * 2.0 - 5.0 * 3.0);
}

TYPED_TEST(HvPoint2Typed, MeasuresLengths)
{
    using P = HvPoint2<TypeParam>;
    EXPECT_EQ(HvPoint2_Length(P(3, -4)), 5.0);
    EXPECT_EQ(HvPoint2_LengthAB(P(1, 1), P(4, 5)), 5.0);
    EXPECT_EQ(HvPoint2_SquaredLengthAB(P(1, 1), P(4, 5)), 25.0);
}

TEST(HvPoint2, CheapLengthCountsAThirdOfTheShorterDifference)
{
    EXPECT_EQ(HvPoint2_CheapLengthAB(Point(1, 1), Point(4, 5)), 4.0 + 0.3334 * 3.0);
    EXPECT_EQ(HvPoint2_CheapLengthAB(Point(4, 5), Point(1, 1)), 4.0 + 0.3334 * 3.0);
    EXPECT_EQ(HvPoint2_CheapLengthAB(Point(1, 1), Point(-7, 1)), 8.0);
    // The differences are float's: 2^24 + 1 and 2^24 are equal there.
    EXPECT_EQ(HvPoint2_CheapLengthAB(PointF(-1, 0), PointF(16777216, 0)), 16777216.0);
    EXPECT_EQ(HvPoint2_CheapLengthAB(Point(-1, 0), Point(16777216, 0)), 16777217.0);
    EXPECT_TRUE(std::isnan(HvPoint2_CheapLengthAB(Point(kNaN, 0), Point(0, 5))));
    EXPECT_TRUE(std::isnan(HvPoint2_CheapLengthAB(Point(0, kNaN), Point(5, 0))));
    for (int degree = 0; degree < 360; degree += 3) {
        double const angle = degree * 3.14159265358979323846 / 180.0;
        Point const p(std::cos(angle), std::sin(angle));
        EXPECT_NEAR(HvPoint2_CheapLengthAB(p, Point()), 1.0, 0.06) << degree;
    }
}

TYPED_TEST(HvPoint2Typed, IsNearUpToTheRootOfTheTolerance)
{
    using P = HvPoint2<TypeParam>;
    EXPECT_EQ(HvPoint2_AIsNearB(P(0, 0), P(0, 0)), 1);
    EXPECT_EQ(HvPoint2_AIsNearB(P(0, 0), P(TypeParam(0.0003), 0)), 1);
    EXPECT_EQ(HvPoint2_AIsNearB(P(0, 0), P(0, TypeParam(0.0004))), 0);
    TypeParam const nan = std::numeric_limits<TypeParam>::quiet_NaN();
    EXPECT_EQ(HvPoint2_AIsNearB(P(0, 0), P(nan, 0)), 0);
}

TEST(HvPoint2, ComputesFloatCoordinatesInDouble)
{
    // In float each of these would overflow or lose the small term.
    PointF const big(3e38f, 1.0f);
    EXPECT_EQ(HvPoint2_AdotB(big, big), double(3e38f) * double(3e38f) + 1.0);
    EXPECT_EQ(HvPoint2_Length(PointF(3e38f, 0)), double(3e38f));
    PointF const far(16777216.0f, 0.0f);
    EXPECT_EQ(HvPoint2_LengthAB(far, PointF(-1.0f, 0.0f)), 16777217.0);
    EXPECT_EQ(HvPoint2_ABdetCD(PointF(-1, 0), far, PointF(0, 0), PointF(0, 1)), 16777217.0);
    EXPECT_EQ(HvPoint2_ABdotCD(PointF(-1, 0), far, PointF(0, 0), PointF(1, 0)), 16777217.0);
    EXPECT_EQ(HvPoint2_AdetB(PointF(16777217.0f, 1), PointF(1, 16777215.0f)),
              16777216.0 * 16777215.0 - 1.0);
}

TEST(HvPoint2, MeasuresLengthsWithoutOverflow)
{
    EXPECT_NEAR(HvPoint2_Length(Point(3e200, 4e200)) / 5e200, 1.0, 1e-15);
    EXPECT_NEAR(HvPoint2_LengthAB(Point(3e-200, 0), Point(0, 4e-200)) / 5e-200, 1.0, 1e-15);
}

TEST(HvPoint2_near, HasAStrictLimit)
{
    // The tolerance is on the squared distance: the root of 1e-7 squared rounds to one side or the
    // other, so the limit is looked up among the neighbours of the root.
    double d = std::sqrt(kHvGeometryTolerance);
    while (d * d < kHvGeometryTolerance) {
        d = std::nextafter(d, 1.0);
    }
    EXPECT_EQ(HvPoint2_AIsNearB(Point(), Point(d, 0)), 0);
    EXPECT_EQ(HvPoint2_AIsNearB(Point(), Point(std::nextafter(d, 0.0), 0)), 1);
}

TEST(HvPoint2_AngleInDegrees, TurnsCounterClockwise)
{
    EXPECT_NEAR(AngleOrMinusOne({1, 0}, {0, 1}), 90.0, 1e-12);
    EXPECT_NEAR(AngleOrMinusOne({0, 1}, {1, 0}), 270.0, 1e-12);
    EXPECT_EQ(AngleOrMinusOne({0.3, 0.7}, {0.3, 0.7}), 0.0);
    EXPECT_EQ(AngleOrMinusOne({1, 0}, {-2, 0}), 180.0);
    EXPECT_EQ(AngleOrMinusOne({-2, 0}, {1, 0}), 180.0);
    double angle = -1.0;
    EXPECT_EQ(HvPoint2_AngleInDegrees(PointF(0, -1), PointF(1, 0), angle), 1);
    EXPECT_NEAR(angle, 90.0, 1e-12);
}

TEST(HvPoint2_AngleInDegrees, TurnsAFullCircleIntoZero)
{
    // A direction 6e-15 degrees above the other: 360 less that rounds to 360.
    EXPECT_EQ(AngleOrMinusOne({1, 1e-16}, {1, 0}), 0.0);
}

TEST(HvPoint2_AngleInDegrees, RefusesVectorsWithSmallComponents)
{
    EXPECT_EQ(AngleOrMinusOne({0, 0}, {1, 0}), -1.0);
    EXPECT_EQ(AngleOrMinusOne({1, 0}, {0, 0}), -1.0);
    EXPECT_EQ(AngleOrMinusOne({9.9e-8, -9.9e-8}, {1, 0}), -1.0);
    // The tolerance is strict and each component counts by itself.
    EXPECT_EQ(AngleOrMinusOne({1e-7, 0}, {1, 0}), 0.0);
    EXPECT_EQ(AngleOrMinusOne({0, 0}, {0, 0}), -1.0);
}

TEST(HvPoint2_AngleInDegrees, AgreesWithTheArcTangentOfDeterminantAndProduct)
{
    EXPECT_TRUE(rc::check([] {
        Point const a = RandomPoint() + Point(0, 2000);
        Point const b = RandomPoint();
        RC_PRE(std::fabs(b.x) + std::fabs(b.y) > 1.0);
        double angle = -1.0;
        RC_ASSERT(HvPoint2_AngleInDegrees(a, b, angle) == 1);
        RC_ASSERT(angle >= 0.0 && angle < 360.0);
        long double const det = (long double)(a.x) * b.y - (long double)(a.y) * b.x;
        long double const dot = (long double)(a.x) * b.x + (long double)(a.y) * b.y;
        long double expected = atan2l(det, dot) * 180 / 3.14159265358979323846L;
        expected = expected < 0 ? expected + 360 : expected;
        long double const difference = fabsl(angle - expected);
        // Two angles, each good to 6e-13 degrees.
        RC_ASSERT(difference < 1.2e-12L || 360 - difference < 1.2e-12L);
    }));
}

TEST(HvPoint2_FindClosest, DropsAPerpendicular)
{
    Closest const c = FindClosest({3, 4}, {0, 0}, {10, 0}, 16);
    EXPECT_EQ(c.result, 1);
    EXPECT_EQ(c.squaredDistance, 16.0);
    EXPECT_EQ(c.parameter, 0.3);
}

TEST(HvPoint2_FindClosest, ClampsHitsBeyondTheEnds)
{
    Closest const before = FindClosest({-3, 4}, {0, 0}, {10, 0}, 25);
    EXPECT_EQ(before.result, 1);
    EXPECT_EQ(before.squaredDistance, 25.0);
    EXPECT_EQ(before.parameter, 0.0);
    Closest const after = FindClosest({15, 0}, {0, 0}, {10, 0}, 25);
    EXPECT_EQ(after.result, 1);
    EXPECT_EQ(after.squaredDistance, 25.0);
    EXPECT_EQ(after.parameter, 1.0);
}

TEST(HvPoint2_FindClosest, WritesTheFootOnRefusal)
{
    Closest const inside = FindClosest({3, 4}, {0, 0}, {10, 0}, 15.9);
    EXPECT_EQ(inside.result, 0);
    EXPECT_EQ(inside.squaredDistance, -1.0);
    EXPECT_EQ(inside.parameter, 0.3);
    EXPECT_EQ(FindClosest({-3, 4}, {0, 0}, {10, 0}, 24).parameter, -0.3);
    EXPECT_EQ(FindClosest({15, 0}, {0, 0}, {10, 0}, 24).parameter, 1.5);
    EXPECT_EQ(FindClosest({15, 0}, {0, 0}, {10, 0}, 24).result, 0);
}

TEST(HvPoint2_FindClosest, TakesAShortSegmentAsItsStart)
{
    Closest const hit = FindClosest({3, 4}, {0, 0}, {0.0003, 0}, 25);
    EXPECT_EQ(hit.result, 1);
    EXPECT_EQ(hit.squaredDistance, 25.0);
    EXPECT_EQ(hit.parameter, 0.0);
    Closest const miss = FindClosest({3, 4}, {0, 0}, {0.0003, 0}, 24);
    EXPECT_EQ(miss.result, 0);
    EXPECT_EQ(miss.squaredDistance, -1.0);
    EXPECT_EQ(miss.parameter, 0.0);
}

TEST(HvPoint2_FindClosest, CountsANaNDistanceAsAHit)
{
    Closest const c = FindClosest({kNaN, 0}, {0, 0}, {10, 0}, 1);
    EXPECT_EQ(c.result, 1);
    EXPECT_TRUE(std::isnan(c.squaredDistance));
    EXPECT_TRUE(std::isnan(c.parameter));
    EXPECT_EQ(FindClosest({kInfinity, 0}, {0, 0}, {10, 0}, 1).result, 0);
    EXPECT_EQ(FindClosest({3, 4}, {0, 0}, {10, 0}, kNaN).result, 1);
}

TEST(HvPoint2_FindClosest, IsNoFartherThanAnyPointOfTheSegment)
{
    EXPECT_TRUE(rc::check([] {
        Point const p = RandomPoint();
        Point const a = RandomPoint();
        Point const b = RandomPoint();
        RC_PRE(HvPoint2_AIsNearB(a, b) == 0);
        Closest const c = FindClosest(p, a, b, kInfinity);
        RC_ASSERT(c.result == 1);
        RC_ASSERT(c.parameter >= 0.0 && c.parameter <= 1.0);
        for (int i = 0; i <= 64; ++i) {
            double const d = HvPoint2_SquaredLengthAB(p, a + (b - a) * (i / 64.0));
            // Squares of lengths up to 4000 round by up to 4000^2 times a few 1e-16.
            RC_ASSERT(c.squaredDistance <= d + 1e-8);
        }
    }));
}

TEST(HvPoint2_IsInLineSegment, AcceptsPointsOfTheSegment)
{
    PointF const a(1, 1), b(5, 3);
    EXPECT_EQ(HvPoint2_IsInLineSegment(a, a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(b, a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(3, 2), a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(3, 2.5f), a, b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(7, 4), a, b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(-1, 0), a, b), 0);
}

TEST(HvPoint2_IsInLineSegment, MeasuresTheSquaredDistanceFromTheLine)
{
    PointF const a(0, 0), b(1, 1);
    // The distance is the difference of the coordinates over the root of two: 2.97e-4 and 3.32e-4
    // on both sides of 3.16e-4.
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(0.5f, 0.50042f), a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(0.5f, 0.50047f), a, b), 0);
}

TEST(HvPoint2_IsInLineSegment, HasABoxWithoutTolerance)
{
    PointF const a(0, 0), b(4, 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(2, 0), a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(2, 1e-10f), a, b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(2, -1e-10f), a, b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(4.000001f, 0), b, a), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(-1e-10f, 0), b, a), 0);
}

TEST(HvPoint2_IsInLineSegment, TakesAShortSegmentAsItsStart)
{
    PointF const a(0, 0), b(0.0003f, 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(0, 0.0003f), a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(-0.0003f, 0), a, b), 1);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(0.0004f, 0), a, b), 0);
}

TEST(HvPoint2_IsInLineSegment, HoldsNoNaN)
{
    PointF const a(0, 0), b(4, 4);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(kNaNF, 1), a, b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(1, kNaNF), a, b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(1, 1), PointF(kNaNF, 0), b), 0);
    EXPECT_EQ(HvPoint2_IsInLineSegment(PointF(1, 1), a, PointF(4, kNaNF)), 0);
}

namespace {

/// Whether P is in the triangle, the same for all six orders of its corners.
int IsInTriangle(PointF p, PointF a, PointF b, PointF c)
{
    int const result = HvPoint2_IsInTriangle(p, a, b, c);
    for (auto const& o :
         {std::array<PointF, 3>{a, c, b}, {b, a, c}, {b, c, a}, {c, a, b}, {c, b, a}}) {
        EXPECT_EQ(HvPoint2_IsInTriangle(p, o[0], o[1], o[2]), result) << p.x << ", " << p.y;
    }
    return result;
}

}  // namespace

TEST(HvPoint2_IsInTriangle, IsClosed)
{
    PointF const a(0, 0), b(4, 0), c(0, 4);
    EXPECT_EQ(IsInTriangle(PointF(1, 1), a, b, c), 1);
    for (PointF const& onBorder : {a, b, c, PointF(2, 0), PointF(2, 2), PointF(0, 2)}) {
        EXPECT_EQ(IsInTriangle(onBorder, a, b, c), 1) << onBorder.x << ", " << onBorder.y;
    }
}

TEST(HvPoint2_IsInTriangle, LeavesOutWhatIsOutside)
{
    PointF const a(0, 0), b(4, 0), c(0, 4);
    // Beyond each edge, beyond each corner, and on the lines of the edges outside the edges.
    for (PointF const& outside :
         {PointF(2, -1), PointF(3, 3), PointF(-1, 2), PointF(-1, -1), PointF(9, -1), PointF(-1, 9),
          PointF(5, 0), PointF(-1, 0), PointF(0, 5), PointF(0, -1), PointF(5, -1), PointF(-1, 5)}) {
        EXPECT_EQ(IsInTriangle(outside, a, b, c), 0) << outside.x << ", " << outside.y;
    }
}

TEST(HvPoint2_IsInTriangle, TakesNearCornersAsASegment)
{
    PointF const a(0, 0), nearA(0.0002f, 0), c(4, 4);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(2, 2), a, nearA, c), 1);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(2, 2), a, c, nearA), 1);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(2, 2), c, a, nearA), 1);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(2, 3), a, nearA, c), 0);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(2, 3), a, c, nearA), 0);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(2, 3), c, a, nearA), 0);
}

TEST(HvPoint2_IsInTriangle, TakesThreeEqualCornersAsAPoint)
{
    PointF const a(1, 1);
    EXPECT_EQ(IsInTriangle(PointF(1.0002f, 1), a, a, a), 1);
    EXPECT_EQ(IsInTriangle(PointF(1.0004f, 1), a, a, a), 0);
}

TEST(HvPoint2_IsInTriangle, TakesCollinearCornersAsTheLongestSegment)
{
    PointF const a(0, 0), b(2, 2), c(6, 6);
    EXPECT_EQ(IsInTriangle(PointF(4, 4), a, b, c), 1);
    EXPECT_EQ(IsInTriangle(PointF(7, 7), a, b, c), 0);
    EXPECT_EQ(IsInTriangle(PointF(4, 5), a, b, c), 0);
}

TEST(HvPoint2_IsInTriangle, ReadsADeterminantBelowTheToleranceAsOnTheLine)
{
    // The first edge has length 1/1024, so a point 6e-5 inside has a determinant of 6e-8: it is
    // judged as a point of an edge. The box of that edge has no height, so it is none.
    PointF const a(0, 0), b(0.0009765625f, 0), c(0, 0.0009765625f);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(0.0004f, 6e-5f), a, b, c), 0);
    EXPECT_EQ(HvPoint2_IsInTriangle(PointF(0.0003f, 0.0003f), a, b, c), 1);
}

TEST(HvPoint2_IsInTriangle, HoldsNoNaN)
{
    PointF const a(0, 0), b(4, 0), c(0, 4), nan(kNaNF, 1), inside(1, 1);
    EXPECT_EQ(IsInTriangle(nan, a, b, c), 0);
    EXPECT_EQ(IsInTriangle(PointF(1, kNaNF), a, b, c), 0);
    EXPECT_EQ(IsInTriangle(inside, nan, b, c), 0);
    float const inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(IsInTriangle(PointF(inf, 1), a, b, c), 0);
}

TEST(HvPoint2_IsInTriangle, AgreesWithBarycentricCoordinates)
{
    EXPECT_TRUE(rc::check([] {
        auto const corner = [] {
            return PointF(float(PickInRange(-20, 21)), float(PickInRange(-20, 21)));
        };
        PointF const a = corner(), b = corner(), c = corner(), p = corner();
        double const area = HvPoint2_ABdetCD(a, b, a, c);
        RC_PRE(area != 0.0);
        // Whole numbers, so the weights have exact signs.
        bool const inside = HvPoint2_ABdetCD(a, b, a, p) * area >= 0 &&
                            HvPoint2_ABdetCD(b, c, b, p) * area >= 0 &&
                            HvPoint2_ABdetCD(c, a, c, p) * area >= 0;
        RC_ASSERT(IsInTriangle(p, a, b, c) == int(inside));
    }));
}
