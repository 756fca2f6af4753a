// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Flattening of cubics: counts worked by hand, edges, the true curve, hostile numbers.

#include <hv/bezier/HvBezierTool_flatten.h>

#include "../support/allocation_failure.h"
#include "cubic_test_support.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

namespace {

// With this tolerance the coefficient 0.75 / tolerance is exactly 1, so that v is the deviation.
constexpr double kUnitTolerance = 0.75;

// The parabola x = 3 t, y = 3 bend t (1 - t): both second differences are (0, -bend), across its
// level chord, and the third is 0. So v = bend at kUnitTolerance.
struct Parabola {
    Point2 p[4];
    explicit Parabola(double bend) : p{{0, 0}, {1, bend}, {2, bend}, {3, 0}} {}
};

unsigned int Count(Point2 const* p, double tolerance)
{
    HvPoint2dArray out;
    return HvBezierTool_FlattenCubic2d(p, tolerance, &out, 0);
}

unsigned int Count(Point3 const* p, double tolerance)
{
    HvPoint3dArray out;
    return HvBezierTool_FlattenCubic3d(p, tolerance, &out, 0);
}

unsigned int CountAsFloat(Point2 const* p, double tolerance)
{
    HvPoint2<float> const f[4] = {HvPoint2<float>(p[0]), HvPoint2<float>(p[1]),
                                  HvPoint2<float>(p[2]), HvPoint2<float>(p[3])};
    HvPoint2fArray out;
    return HvBezierTool_FlattenCubic2f(f, tolerance, &out, 0);
}

}  // namespace

TEST(HvBezierTool_flatten, GivesOnlyTheEndsOfACollapsedCubic)
{
    Point2 const p[4] = {{2, 3}, {2, 3}, {2, 3}, {2, 3}};
    HvPoint2dArray out;
    EXPECT_EQ(HvBezierTool_FlattenCubic2d(p, 0.1, &out, 0), 2u);
    EXPECT_EQ(HvBezierTool_FlattenCubic2d(p, 0.1, &out, 1), 1u);
    ASSERT_EQ(out.Size(), 3u);
    for (Point2 const& q : out) {
        EXPECT_EQ(q, p[0]);
    }
}

TEST(HvBezierTool_flatten, GivesTheEndsOfAStraightCubicAlsoWhenItOvershoots)
{
    Point2 const even[4] = {{0, 0}, {1, 2}, {2, 4}, {3, 6}};
    Point2 const overshoot[4] = {{0, 0}, {8, 0}, {-5, 0}, {3, 0}};
    EXPECT_EQ(Count(even, 0.001), 2u);
    // D = (3 - 3 (-5) + 3 8, 0) = (42, 0): at tolerance 6.1, q = 7, one digit, no halving.
    EXPECT_EQ(Count(overshoot, 6.1), 2u);
    // At 5.5, q = 8: two digits, one midpoint.
    EXPECT_EQ(Count(overshoot, 5.5), 3u);
}

TEST(HvBezierTool_flatten, CountsLevelsInBaseEight)
{
    // A straight cubic with third difference d along itself: no steps, so that the points are the
    // midpoints of the levels and the ends. P = 0, 0, 0, d.
    struct {
        double thirdDifference;
        unsigned int points;
    } const rows[] = {{0.49, 2}, {0.5, 2},   {7.49, 2},  {7.5, 3},    {63.49, 3},  {63.5, 5},
                      {511, 5},  {511.5, 9}, {4096, 17}, {32768, 33}, {262144, 65}};
    for (auto const& row : rows) {
        Point2 const p[4] = {{0, 0}, {0, 0}, {0, 0}, {row.thirdDifference, 0}};
        EXPECT_EQ(Count(p, 1.0), row.points) << row.thirdDifference;
        EXPECT_EQ(CountAsFloat(p, 1.0), row.points) << row.thirdDifference;
        Point3 const q[4] = {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, row.thirdDifference}};
        EXPECT_EQ(Count(q, 1.0), row.points) << row.thirdDifference;
    }
}

TEST(HvBezierTool_flatten, KeepsThirtyTwoBitsOfTheThirdDifference)
{
    double const twoTo32 = 4294967296.0;
    struct {
        double thirdDifference;
        unsigned int points;
    } const rows[] = {
        {twoTo32, 2},
        {twoTo32 + 7, 2},
        {twoTo32 + 8, 3},
        {twoTo32 * 3 + 64, 5},
        {twoTo32 - 1, 1025},           // eleven digits, 2^10 pieces
        {9223372036854775808.0, 2},    // 2^63: no 64-bit integer
        {9223372036854774784.0, 1025}  // the number below: its low word is -1024
    };
    for (auto const& row : rows) {
        Point2 const p[4] = {{0, 0}, {0, 0}, {0, 0}, {row.thirdDifference, 0}};
        EXPECT_EQ(Count(p, 1.0), row.points) << row.thirdDifference;
    }
}

TEST(HvBezierTool_flatten, CountsDoublingsInBaseFour)
{
    struct {
        double v;
        unsigned int steps;
    } const rows[] = {{0.49, 1},  {0.5, 2},    {3.49, 2},   {3.5, 4},  {15.25, 4},
                      {15.5, 8},  {63, 8},     {64, 16},    {255, 16}, {256, 32},
                      {1024, 64}, {4096, 128}, {16384, 256}};
    for (auto const& row : rows) {
        Parabola const curve(row.v);
        EXPECT_EQ(Count(curve.p, kUnitTolerance), row.steps + 1) << row.v;
        Point3 q[4];
        for (int i = 0; i < 4; ++i) {
            q[i] = Point3(0, curve.p[i].x, curve.p[i].y);
        }
        EXPECT_EQ(Count(q, kUnitTolerance), row.steps + 1) << row.v;
    }
}

TEST(HvBezierTool_flatten, CapsThePlaneInDoubleAlone)
{
    // v = 2^20: eleven digits, 2048 steps; the plane in double stays at 1024.
    Parabola const curve(1048576.0);
    EXPECT_EQ(Count(curve.p, kUnitTolerance), 1025u);
    EXPECT_EQ(CountAsFloat(curve.p, kUnitTolerance), 2049u);
    Point3 q[4];
    for (int i = 0; i < 4; ++i) {
        q[i] = Point3(curve.p[i].x, curve.p[i].y, 0);
    }
    EXPECT_EQ(Count(q, kUnitTolerance), 2049u);
}

TEST(HvBezierTool_flatten, QuartersWhatExceedsThirtyOneBits)
{
    // v = 2^32 has 17 base-4 digits, but quartering it down to 1 takes 16.
    Parabola const curve(4294967296.0);
    EXPECT_EQ(CountAsFloat(curve.p, kUnitTolerance), 65537u);
    // v = 2^30: sixteen digits.
    Parabola const below(1073741824.0);
    EXPECT_EQ(CountAsFloat(below.p, kUnitTolerance), 65537u);
}

TEST(HvBezierTool_flatten, MeasuresAClosedCubicFromItsStart)
{
    // Deviation 5, so v = 3.75, rounded 4: two base-4 digits. Q1 = Q2 gives no third difference.
    Point2 const p[4] = {{1, 1}, {4, 5}, {4, 5}, {1, 1}};
    EXPECT_EQ(Count(p, 1.0), 5u);
    // The farther of the two counts, on either place.
    Point2 const first[4] = {{0, 0}, {5, 0}, {4, 0}, {0, 0}};
    Point2 const second[4] = {{0, 0}, {4, 0}, {5, 0}, {0, 0}};
    EXPECT_EQ(Count(first, 1.0), 5u);
    EXPECT_EQ(Count(second, 1.0), 5u);
    Point3 const inSpace[4] = {{0, 0, 0}, {0, 0, 5}, {0, 0, 4}, {0, 0, 0}};
    EXPECT_EQ(Count(inSpace, 1.0), 5u);
}

TEST(HvBezierTool_flatten, StepsExactlyOnDyadicCurves)
{
    // v = 0.75 / 0.25 * 4 = 12, two base-4 digits.
    Parabola const curve(4.0);
    HvPoint2dArray out;
    ASSERT_EQ(HvBezierTool_FlattenCubic2d(curve.p, 0.25, &out, 0), 5u);
    for (unsigned int i = 0; i < 5; ++i) {
        double const t = i / 4.0;
        EXPECT_EQ(out[i], Point2(3 * t, 12 * t * (1 - t))) << i;
    }
}

TEST(HvBezierTool_flatten, AppendsAndKeepsTheCallersEnds)
{
    Point2 const p[4] = {{0.1, 0.2}, {1, 3}, {2, 3}, {3.3, 0.7}};
    HvPoint2dArray out;
    out.Add(Point2(9, 9));
    unsigned int const count = HvBezierTool_FlattenCubic2d(p, 0.01, &out, 0);
    ASSERT_EQ(out.Size(), count + 1);
    EXPECT_EQ(out[0], Point2(9, 9));
    EXPECT_EQ(out[1], p[0]);
    EXPECT_EQ(out[count], p[3]);
    EXPECT_EQ(HvBezierTool_FlattenCubic2d(p, 0.01, &out, 1), count - 1);
    EXPECT_EQ(out[out.Size() - 1], p[3]);
    EXPECT_NE(out[count + 1], p[0]);
}

TEST(HvBezierTool_flatten, TakesItsCubicFromTheOutputsOwnStorage)
{
    Parabola const curve(64.0);
    HvPoint2dArray expected;
    unsigned int const count = HvBezierTool_FlattenCubic2d(curve.p, 0.01, &expected, 0);
    HvPoint2dArray out;
    for (Point2 const& q : curve.p) {
        out.Add(q);
    }
    ASSERT_EQ(out.Size(), out.Capacity());
    ASSERT_EQ(HvBezierTool_FlattenCubic2d(out.Data(), 0.01, &out, 0), count);
    for (unsigned int i = 0; i < count; ++i) {
        ASSERT_EQ(out[i + 4], expected[i]);
    }
}

namespace {

/// Checks the points of one piece, from `polyline` on, against the curve: they stand at equal
/// parameters, and between them the polyline strays from the curve by no more than `tolerance`
/// across the chord of the piece. Returns the steps of the piece.
template <class Point, class Array>
unsigned int CheckPiece(Point const* cubic, double tolerance, Array const& polyline,
                        unsigned int first)
{
    unsigned int steps = 1;
    while (first + steps < polyline.Size() && polyline[first + steps] != cubic[3]) {
        ++steps;
    }
    EXPECT_LT(first + steps, polyline.Size());
    EXPECT_EQ(steps & (steps - 1), 0u);
    // The forward differences of 2^l steps lose about l + 2 bits.
    double const rounding = Magnitude(cubic, 4) * steps * 16 * 2.3e-16;
    Point const chord = cubic[3] - cubic[0];
    double const length = Length(chord);
    for (unsigned int i = 0; i < steps; ++i) {
        Point const a = polyline[first + i];
        Point const b = polyline[first + i + 1];
        EXPECT_LE(Length(a - CubicAt(cubic, double(i) / steps)), rounding);
        for (int k = 1; k < 8; ++k) {
            Point const off = CubicAt(cubic, (i + k / 8.0) / steps) - (a + (b - a) * (k / 8.0));
            Point const across = off - chord * (Dot(off, chord) / (length * length));
            EXPECT_LE(Length(across), tolerance + 2 * rounding);
        }
    }
    return steps;
}

/// The same for a whole cubic: the pieces are found by halving as often as the third difference
/// asks for.
template <class Point, class Array>
unsigned int CheckPieces(Point const* cubic, double tolerance, int depth, Array const& polyline,
                         unsigned int first)
{
    if (depth == 0) {
        return CheckPiece(cubic, tolerance, polyline, first);
    }
    Point const a = (cubic[0] + cubic[1]) * 0.5;
    Point const m = (cubic[1] + cubic[2]) * 0.5;
    Point const d = (cubic[2] + cubic[3]) * 0.5;
    Point const b = (a + m) * 0.5;
    Point const c = (m + d) * 0.5;
    Point const middle = (b + c) * 0.5;
    Point const left[4] = {cubic[0], a, b, middle};
    Point const right[4] = {middle, c, d, cubic[3]};
    unsigned int const steps = CheckPieces(left, tolerance, depth - 1, polyline, first);
    return steps + CheckPieces(right, tolerance, depth - 1, polyline, first + steps);
}

template <class Point>
int DepthOf(Point const* p, double tolerance)
{
    Point const d = ((p[3] - p[2]) - (p[2] - p[1])) - ((p[2] - p[1]) - (p[1] - p[0]));
    int digits = 0;
    for (double q = std::floor(Length(d) / tolerance + 0.5); q >= 1; q = std::floor(q / 8)) {
        ++digits;
    }
    return digits < 2 ? 0 : digits - 1;
}

}  // namespace

TEST(HvBezierTool_flatten, StaysWithinTheToleranceOfTheTrueCurve)
{
    RandomCurves random(1);
    for (int round = 0; round < 150; ++round) {
        double const scale = random.Scale(-30, 30);
        double const tolerance = scale * random.Scale(-14, 1);
        Point2 p[4];
        random.Fill(p, 4, scale);
        HvPoint2dArray plane;
        HvBezierTool_FlattenCubic2d(p, tolerance, &plane, 0);
        ASSERT_EQ(CheckPieces(p, tolerance, DepthOf(p, tolerance), plane, 0) + 1, plane.Size());

        Point3 q[4];
        random.Fill(q, 4, scale);
        HvPoint3dArray space;
        HvBezierTool_FlattenCubic3d(q, tolerance, &space, 0);
        ASSERT_EQ(CheckPieces(q, tolerance, DepthOf(q, tolerance), space, 0) + 1, space.Size());
    }
}

TEST(HvBezierTool_flatten, GivesInFloatTheRoundedPointsOfTheDoubleForm)
{
    RandomCurves random(2);
    for (int round = 0; round < 100; ++round) {
        double const scale = random.Scale(-10, 10);
        Point2 p[4];
        HvPoint2<float> f[4];
        random.Fill(p, 4, scale);
        for (int i = 0; i < 4; ++i) {
            f[i] = HvPoint2<float>(p[i]);
            p[i] = Point2(f[i]);
        }
        HvPoint2dArray inDouble;
        HvPoint2fArray inFloat;
        double const tolerance = scale * random.Scale(-12, 0);
        HvBezierTool_FlattenCubic2d(p, tolerance, &inDouble, 0);
        HvBezierTool_FlattenCubic2f(f, tolerance, &inFloat, 0);
        ASSERT_EQ(inDouble.Size(), inFloat.Size());
        for (unsigned int i = 0; i < inFloat.Size(); ++i) {
            ASSERT_EQ(inFloat[i], HvPoint2<float>(inDouble[i]));
        }
    }
}

TEST(HvBezierTool_flatten, GivesTheSamePointsInSpaceForAPlaneCubic)
{
    RandomCurves random(3);
    for (int round = 0; round < 50; ++round) {
        Point2 p[4];
        Point3 q[4];
        random.Fill(p, 4, 100.0);
        for (int i = 0; i < 4; ++i) {
            q[i] = Point3(p[i].x, p[i].y, 0);
        }
        HvPoint2dArray plane;
        HvPoint3dArray space;
        HvBezierTool_FlattenCubic2d(p, 0.3, &plane, 0);
        HvBezierTool_FlattenCubic3d(q, 0.3, &space, 0);
        // Their deviations differ by rounding, which a digit's border could show; not in this set.
        ASSERT_EQ(plane.Size(), space.Size());
        for (unsigned int i = 0; i < plane.Size(); ++i) {
            ASSERT_EQ(Point3(plane[i].x, plane[i].y, 0), space[i]);
        }
    }
}

TEST(HvBezierTool_flatten, RefusesMorePointsThanAnArrayHolds)
{
    // v = 0.75 * 4^40: some 2^40 steps in one piece.
    Parabola const curve(std::ldexp(1.0, 80));
    HvPoint3dArray space;
    Point3 q[4];
    HvPoint2<float> f[4];
    for (int i = 0; i < 4; ++i) {
        q[i] = Point3(curve.p[i].x, curve.p[i].y, 0);
        f[i] = HvPoint2<float>(curve.p[i]);
    }
    space.Add(Point3(7, 7, 7));
    EXPECT_THROW(HvBezierTool_FlattenCubic3d(q, 1.0, &space, 0), std::bad_alloc);
    ASSERT_EQ(space.Size(), 1u);
    EXPECT_EQ(space[0], Point3(7, 7, 7));
    HvPoint2fArray plane;
    EXPECT_THROW(HvBezierTool_FlattenCubic2f(f, 1.0, &plane, 0), std::bad_alloc);
    EXPECT_EQ(plane.Size(), 0u);
    EXPECT_EQ(Count(curve.p, 1.0), 1025u);
}

TEST(HvBezierTool_flatten, EndsForEveryTolerance)
{
    Parabola const curve(10.0);
    // Not a number and negative: no doublings. D is 0, so that q is 0 too.
    EXPECT_EQ(Count(curve.p, kNaN), 2u);
    EXPECT_EQ(Count(curve.p, -1.0), 2u);
    EXPECT_EQ(Count(curve.p, kInfinity), 2u);
    // Zero and the least numbers have an infinite inverse: as many steps as allowed.
    for (double const tolerance : {0.0, 5e-324, 1e-310, 1e-300}) {
        EXPECT_EQ(Count(curve.p, tolerance), 1025u) << tolerance;
        EXPECT_THROW(CountAsFloat(curve.p, tolerance), std::bad_alloc) << tolerance;
    }
    Point2 const bent[4] = {{0, 0}, {1, 5}, {2, -3}, {3, 1}};
    for (double const tolerance : {0.0, -0.0, -0.25, -1e-300, kNaN, kInfinity, -kInfinity}) {
        EXPECT_GE(Count(bent, tolerance), 2u) << tolerance;
    }
}

TEST(HvBezierTool_flatten, EndsForEveryPoint)
{
    double const hostile[] = {kNaN, kInfinity, -kInfinity, kGreatest, -kGreatest, 5e-324, 1e200};
    for (double const value : hostile) {
        for (int i = 0; i < 4; ++i) {
            Point2 p[4] = {{0, 0}, {1, 5}, {2, -3}, {3, 1}};
            p[i].y = value;
            HvPoint2dArray out;
            unsigned int const count = HvBezierTool_FlattenCubic2d(p, 0.25, &out, 0);
            EXPECT_EQ(count, out.Size());
            EXPECT_GE(count, 2u);
        }
    }
    Point2 const notFinite[4] = {{0, 0}, {1, kNaN}, {2, kInfinity}, {3, 1}};
    EXPECT_EQ(Count(notFinite, 0.25), 2u);
}

TEST(HvBezierTool_flatten, AllocatesOnlyWhatTheOutputGrowsBy)
{
    Parabola const curve(300.0);
    HvPoint2dArray out(4096u);
    AllocationCounter const counter;
    EXPECT_GT(HvBezierTool_FlattenCubic2d(curve.p, 0.01, &out, 0), 100u);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvBezierTool_flatten, LeavesTheOutputAloneWhenMemoryFails)
{
    Point3 const p[4] = {{0, 0, 0}, {100, 900, 3}, {200, -900, 7}, {300, 0, 0}};
    long const allocations = RefuseEachAllocation(
        [] {
            auto out = std::make_unique<HvPoint3dArray>();
            out->Add(Point3(7, 7, 7));
            return out;
        },
        [&p](std::unique_ptr<HvPoint3dArray>& out) {
            HvBezierTool_FlattenCubic3d(p, 0.01, out.get(), 0);
        },
        [](std::unique_ptr<HvPoint3dArray>& out, bool completed) {
            EXPECT_EQ((*out)[0], Point3(7, 7, 7));
            EXPECT_EQ(out->Size() == 1, !completed);
        });
    EXPECT_GT(allocations, 3);
}
