// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Building raw curves from left to right: segments and data points.

#include <hv/foundation/HvPoint2dArray.h>
#include <tests/fcurve/raw_test_support.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

namespace {

using Point = HvPoint2<double>;

HvPoint2dArray Points(std::initializer_list<Point> points)
{
    HvPoint2dArray array;
    for (Point const& point : points) {
        array.Add(point);
    }
    return array;
}

TEST(HvRawFCurve_append, LinearSegmentAddsAKey)
{
    OpenRaw curve(7);
    EXPECT_EQ(curve.AppendLinearSegment(Point(1, 2)), 1);
    EXPECT_EQ(curve.AppendLinearSegment(Point(3, 4)), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 2}, {3, 4}}));
    EXPECT_EQ(curve.WhenNoKeys(), 7);
}

TEST(HvRawFCurve_append, RefusesAPointNotPastTheLastKey)
{
    OpenRaw curve(7, {{1, 2}, {3, 4}});
    std::string const image = CurveImage(curve);
    for (Point const& P : {Point(3, 5), Point(2, 5), Point(kNaN, 5), Point(kInfinity, 5),
                           Point(4, kNaN), Point(4, kInfinity)}) {
        EXPECT_EQ(curve.AppendLinearSegment(P), 0);
        EXPECT_EQ(curve.AppendOrExtendLinearSegment(P, 1), 0);
    }
    curve.SetReadOnlyConstraint(1);
    EXPECT_EQ(curve.AppendLinearSegment(Point(4, 5)), 0);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(4, 5), 1), 0);
    curve.SetReadOnlyConstraint(0);
    EXPECT_EQ(CurveImage(curve), image);
}

TEST(HvRawFCurve_append, ExtendsTheLineWithinTheTolerance)
{
    OpenRaw curve(7, {{0, 0}, {1, 2}});
    Tag(curve, 1, 1);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(3, 6.5), 0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {3, 6}})) << "the line's value, on the border";
    EXPECT_EQ(TagAt(curve, 3), 1) << "data move along";
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(4, 8.75), 0.5), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {3, 6}, {4, 8.75}})) << "too far from the line";
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(5, 11.5), 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {3, 6}, {5, 11.5}})) << "exactly on the line";
}

TEST(HvRawFCurve_append, ExtendsNothingWithFewerThanTwoKeys)
{
    OpenRaw curve(7);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(0, 1), 100), 1);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(1, 1), 100), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {1, 1}}));
}

TEST(HvRawFCurve_append, ExtendsNothingWithAToleranceThatIsNone)
{
    OpenRaw curve(7, {{0, 0}, {1, 2}});
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(2, 4), kNaN), 1);
    EXPECT_EQ(curve.AppendOrExtendLinearSegment(Point(3, 6), -1), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {1, 2}, {2, 4}, {3, 6}}));
    OpenRaw steep(7, {{0, 0}, {1, 1e308}});
    EXPECT_EQ(steep.AppendOrExtendLinearSegment(Point(4, 5), kInfinity), 1);
    EXPECT_EQ(KeysOf(steep), (Keys{{0, 0}, {1, 1e308}, {4, 5}})) << "the line is not finite there";
}

// Data points.

TEST(HvRawFCurve_append, KeepsThePointsThatALineMisses)
{
    // The line through (0, 0) and (1, 1) misses (3, 2.5) by 0.5; the line from (2, 2) through it
    // meets the rest.
    HvPoint2dArray const points = Points({{0, 0}, {1, 1}, {2, 2}, {3, 2.5}, {4, 3}, {5, 3.5}});
    OpenRaw const curve(points, 0.25);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {2, 2}, {5, 3.5}}));
    EXPECT_EQ(curve.WhenNoKeys(), 0);
    EXPECT_EQ(KeysOf(HvRawFCurve(points, 0.5)), (Keys{{0, 0}, {3, 2.5}, {5, 3.5}}))
        << "a point at the tolerance is met";
    EXPECT_EQ(KeysOf(HvRawFCurve(points, 99)), (Keys{{0, 0}, {5, 3.5}}));
}

TEST(HvRawFCurve_append, TakesFewPointsAsTheyAre)
{
    OpenRaw const none(Points({}), 1);
    EXPECT_EQ(none.GetNumKeys(), 0u);
    EXPECT_EQ(none.WhenNoKeys(), 0);
    OpenRaw const one(Points({{3, 4}}), 1);
    EXPECT_EQ(KeysOf(one), (Keys{{3, 4}}));
    EXPECT_EQ(one.WhenNoKeys(), 4);
    EXPECT_EQ(KeysOf(OpenRaw(Points({{3, 4}, {5, 6}}), 1)), (Keys{{3, 4}, {5, 6}}));
}

TEST(HvRawFCurve_append, LeavesOutPointsThatCannotBeKeys)
{
    OpenRaw const curve(Points({{kNaN, 1},
                                {0, kNaN},
                                {0, kInfinity},
                                {0, 1},
                                {0, 9},
                                {-1, 9},
                                {kInfinity, 9},
                                {1, 5}}),
                        0);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {1, 5}}));
    EXPECT_EQ(curve.WhenNoKeys(), 1);
}

TEST(HvRawFCurve_append, KeepsEveryPointWithoutAToleranceUnlessOnTheLine)
{
    EXPECT_TRUE(rc::check("the keys are points, and both ends", [] {
        HvPoint2dArray points;
        unsigned int const n = PickInRange(1u, 30u);
        for (unsigned int i = 0; i < n; ++i) {
            points.Add(Point(i, PickInRange(0, 5)));
        }
        double const tolerance = PickInRange(0, 8) / 4.0;
        OpenRaw const curve(points, tolerance);
        Keys const keys = KeysOf(curve);
        RC_ASSERT(keys.front() == std::make_pair(points[0].x, points[0].y));
        RC_ASSERT(keys.back() == std::make_pair(points[n - 1].x, points[n - 1].y));
        for (auto const& key : keys) {
            RC_ASSERT(points[static_cast<unsigned int>(key.first)].y == key.second);
        }
        // The walk told in words: a line through a key and the next point, until a point is missed.
        for (unsigned int k = 0; k + 1 < keys.size(); ++k) {
            auto const first = static_cast<unsigned int>(keys[k].first);
            auto const last = static_cast<unsigned int>(keys[k + 1].first);
            double const slope = points[first + 1].y - points[first].y;
            auto const misses = [&](unsigned int i) {
                return std::fabs(points[first].y + slope * (i - first) - points[i].y) > tolerance;
            };
            for (unsigned int i = first; i < last; ++i) {
                RC_ASSERT(!misses(i));
            }
            bool const ends = last + 1 == n || misses(last + 1);
            RC_ASSERT(ends);
        }
    }));
}

}  // namespace
