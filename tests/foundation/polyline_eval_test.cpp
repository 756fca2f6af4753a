// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Positions, directions and tables of values.

#include <hv/foundation/polyline_eval.h>

#include <hv/foundation/polyline_length.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Point3 = HvPoint3<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

HvPoint2dArray MakeTable(std::vector<Point> const& points)
{
    return HvPoint2dArray(points.data(), unsigned(points.size()));
}

/// A line of three segments of lengths 7, 0 and 5.
class ComputePosition : public testing::Test {
protected:
    ComputePosition()
    {
        for (Point3 const& p : {Point3(0, 0, 0), {2, -3, 6}, {2, -3, 6}, {5, 1, 6}}) {
            line.Add(p);
        }
        HvPoint3dArraySingleComponent_ComputeChordLength(line, chord);
    }

    Point3 At(double s) const
    {
        Point3 out(99, 99, 99);
        HvPoint3dArraySingleComponent_ComputePosition(line, chord, s, out);
        return out;
    }

    HvPoint3dArray line;
    HvDoubleArray chord;
};

}  // namespace

TEST_F(ComputePosition, GivesTheEnds)
{
    EXPECT_EQ(At(0), Point3(0, 0, 0));
    EXPECT_EQ(At(-0.0), Point3(0, 0, 0));
    EXPECT_EQ(At(12), Point3(5, 1, 6));
    EXPECT_EQ(At(12.5), Point3(5, 1, 6));
    EXPECT_EQ(At(kInfinity), Point3(5, 1, 6));
}

TEST_F(ComputePosition, InterpolatesAllComponents)
{
    EXPECT_EQ(At(3.5), Point3(1, -1.5, 3));
    EXPECT_EQ(At(7), Point3(2, -3, 6));
    EXPECT_EQ(At(9.5), Point3(3.5, -1, 6));
}

TEST_F(ComputePosition, ExtendsTheFirstSegmentBelowZero)
{
    EXPECT_EQ(At(-7), Point3(-2, 3, -6));
}

TEST_F(ComputePosition, GivesNaNForNaN)
{
    EXPECT_TRUE(std::isnan(At(kNaN).x));
}

TEST_F(ComputePosition, KnowsSinglePointsAndNone)
{
    HvPoint3dArray const one(Point3(1, 2, 3), 1u);
    HvDoubleArray const zero(0.0, 1u);
    for (double const s : {0.0, 5.0, -5.0, kNaN, -kInfinity}) {
        Point3 out;
        HvPoint3dArraySingleComponent_ComputePosition(one, zero, s, out);
        EXPECT_EQ(out, Point3(1, 2, 3));
    }
    Point3 out(9, 9, 9);
    HvPoint3dArraySingleComponent_ComputePosition(HvPoint3dArray(), HvDoubleArray(), 1.0, out);
    EXPECT_EQ(out, Point3(9, 9, 9));
}

TEST_F(ComputePosition, KeepsToAFirstSegmentWithoutLength)
{
    HvPoint3dArray twice(Point3(1, 2, 3), 2u);
    twice.Add(Point3(2, 2, 3));
    HvDoubleArray lengths;
    HvPoint3dArraySingleComponent_ComputeChordLength(twice, lengths);
    Point3 out;
    HvPoint3dArraySingleComponent_ComputePosition(twice, lengths, -1.0, out);
    EXPECT_EQ(out, Point3(1, 2, 3));
}

TEST_F(ComputePosition, AgreesWithAWalkFromTheStart)
{
    EXPECT_TRUE(rc::check([] {
        HvPoint3dArray a;
        int const count = PickInRange(2, 40);
        for (int i = 0; i < count; ++i) {
            a.Add(Point3(PickInRange(-99, 99), PickInRange(-99, 99), PickInRange(-99, 99)));
        }
        HvDoubleArray lengths;
        double const total = HvPoint3dArraySingleComponent_ComputeChordLength(a, lengths);
        RC_PRE(total > 0.0);
        double const s = total * PickInRange(0, 1001) / 1000.0;
        Point3 out;
        HvPoint3dArraySingleComponent_ComputePosition(a, lengths, s, out);
        unsigned int i = 1;
        while (i + 1 < a.Size() && lengths[i] < s) {
            ++i;
        }
        double const step = lengths[i] - lengths[i - 1];
        double const f = step == 0.0 ? 0.0 : (s - lengths[i - 1]) / step;
        // Coordinates below 100 and fractions up to 1 round by about 1e-13.
        RC_ASSERT(HvPoint3_LengthAB(out, a[i - 1] + (a[i] - a[i - 1]) * f) < 1e-12);
    }));
}

TEST(Polyline_Tangents, AreUnitVectorsAtTheEnds)
{
    HvPoint2dArray const a = MakeTable({{1, 1}, {4, 5}, {4, 9}, {-1, -3}});
    EXPECT_EQ(HvPoint2dArray_FirstTangent(a), Point(0.6, 0.8));
    EXPECT_EQ(HvPoint2dArray_LastTangent(a), Point(-5.0 / 13, -12.0 / 13));
}

TEST(Polyline_Tangents, AreZeroWithoutADifference)
{
    EXPECT_EQ(HvPoint2dArray_FirstTangent(MakeTable({{1, 1}, {1, 1}, {2, 2}})), Point());
    EXPECT_EQ(HvPoint2dArray_LastTangent(MakeTable({{0, 0}, {1, 1}, {1, 1}})), Point());
    EXPECT_EQ(HvPoint2dArray_FirstTangent(MakeTable({{1, 1}})), Point());
    EXPECT_EQ(HvPoint2dArray_LastTangent(MakeTable({{1, 1}})), Point());
    EXPECT_EQ(HvPoint2dArray_FirstTangent(HvPoint2dArray()), Point());
    EXPECT_EQ(HvPoint2dArray_LastTangent(HvPoint2dArray()), Point());
}

TEST(Polyline_EvalYInSortedArray, InterpolatesBetweenNeighbours)
{
    HvPoint2dArray const a = MakeTable({{0, 1}, {2, 5}, {3, 5}, {7, -3}});
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 0), 1.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 1), 3.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 2), 5.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 2.5), 5.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 5), 1.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 7), -3.0);
}

TEST(Polyline_EvalYInSortedArray, ExtendsTheEndSegments)
{
    HvPoint2dArray const a = MakeTable({{0, 1}, {2, 5}, {3, 5}, {7, -3}});
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, -1), -1.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 9), -7.0);
}

TEST(Polyline_EvalYInSortedArray, TakesTheEndsBeforeItBisects)
{
    // Of equal abscissas at an end the outermost point tells; of inner ones the one that the
    // bisection meets, here the middle of the five.
    HvPoint2dArray const a = MakeTable({{0, 1}, {0, 2}, {0, 3}, {5, 4}, {5, 6}});
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 0), 1.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(a, 5), 6.0);
    HvPoint2dArray const inner = MakeTable({{-1, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 4}});
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(inner, 0), 2.0);
}

TEST(Polyline_EvalYInSortedArray, KnowsSinglePointsAndNone)
{
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(HvPoint2dArray(), 3), 0.0);
    HvPoint2dArray const one = MakeTable({{2, 5}});
    for (double const x : {2.0, 3.0, -kInfinity, kNaN}) {
        EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(one, x), 5.0);
    }
    HvPoint2dArray const vertical = MakeTable({{2, 5}, {2, 9}});
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(vertical, 2), 5.0);
    EXPECT_EQ(HvPoint2dArray_EvalYInSortedArray(vertical, 3), 5.0);
}

TEST(Polyline_EvalYInSortedArray, GivesNaNForNaN)
{
    EXPECT_TRUE(
        std::isnan(HvPoint2dArray_EvalYInSortedArray(MakeTable({{0, 1}, {1, 2}, {2, 3}}), kNaN)));
}

TEST(Polyline_EvalYInSortedArray, AgreesWithALinearSearch)
{
    EXPECT_TRUE(rc::check([] {
        HvPoint2dArray a;
        int const count = PickInRange(2, 60);
        for (int i = 0; i < count; ++i) {
            double const last = a.Size() == 0 ? -50.0 : a[a.Size() - 1].x;
            a.Add(last + PickInRange(1, 9), PickInRange(-99, 99));
        }
        double const x = PickInRange(-600, 600) / 2.0;
        unsigned int i = 1;
        while (i + 1 < a.Size() && a[i].x < x) {
            ++i;
        }
        double const f = (x - a[i - 1].x) / (a[i].x - a[i - 1].x);
        double const expected = a[i - 1].y + (a[i].y - a[i - 1].y) * f;
        // Slopes up to 198 over distances up to 600: values to 1.2e5 round by about 1e-10.
        RC_ASSERT(std::fabs(HvPoint2dArray_EvalYInSortedArray(a, x) - expected) < 1e-9);
    }));
}
