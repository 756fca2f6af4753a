// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A polyline near points that arrive one by one.

#include <hv/pathbuild/internal/HvSwingFilter.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Point = HvPoint2<double>;
using Points = std::vector<Point>;

Points KeysOf(Points const& points, double tolerance)
{
    HvSwingFilter filter(tolerance);
    filter.Start(points[0]);
    Points keys{points[0]};
    Point key;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (filter.Add(points[i], key)) {
            keys.push_back(key);
        }
    }
    if (filter.HasEnd()) {
        keys.push_back(filter.End());
    }
    return keys;
}

double At(Points const& keys, double x)
{
    std::size_t k = 1;
    while (k + 1 < keys.size() && keys[k].x < x) {
        ++k;
    }
    return keys[k - 1].y +
           (keys[k].y - keys[k - 1].y) * (x - keys[k - 1].x) / (keys[k].x - keys[k - 1].x);
}

}  // namespace

TEST(HvSwingFilter, LineIsTwoKeys)
{
    Points points;
    for (int i = 0; i < 50; ++i) {
        points.push_back({double(i), 3.0 * i});
    }
    EXPECT_EQ(KeysOf(points, 0.0), (Points{{0, 0}, {49, 147}}));
}

TEST(HvSwingFilter, WithoutAToleranceEveryBendIsAKey)
{
    Points const points{{0, 0}, {1, 1}, {2, 2}, {3, 0}, {4, 5}};
    for (double const tolerance : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(KeysOf(points, tolerance), (Points{{0, 0}, {2, 2}, {3, 0}, {4, 5}}));
    }
}

TEST(HvSwingFilter, EndFollowsTheNewestPoint)
{
    HvSwingFilter filter(0.5);
    Point key;
    filter.Start({0, 0});
    EXPECT_FALSE(filter.HasEnd());
    EXPECT_FALSE(filter.Add({1, 0}, key));
    EXPECT_EQ(filter.End(), Point(1, 0));
    EXPECT_FALSE(filter.Add({2, 0.75}, key));  // the cone is +-0.5 at 1, so up to 1 at 2
    EXPECT_EQ(filter.End(), Point(2, 0.75));
    EXPECT_FALSE(filter.Add({4, 2.5}, key));  // at most 2 there, which is within the tolerance
    EXPECT_EQ(filter.End(), Point(4, 2));
    EXPECT_TRUE(filter.Add({5, 0}, key));
    EXPECT_EQ(key, Point(4, 2));
    EXPECT_EQ(filter.End(), Point(5, 0));
    EXPECT_EQ(filter.Reach(), 5);
}

TEST(HvSwingFilter, PointThatDoesNotLieBehindIsLeftOut)
{
    HvSwingFilter filter(0.5);
    Point key;
    filter.Start({0, 0});
    EXPECT_FALSE(filter.Add({0, 9}, key));
    EXPECT_FALSE(filter.HasEnd());
    filter.Add({2, 0}, key);
    for (double const x : {2.0, 1.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(filter.Add({x, 9}, key));
        EXPECT_EQ(filter.End(), Point(2, 0));
    }
}

TEST(HvSwingFilter, PassesEveryPointWithinTheTolerance)
{
    EXPECT_TRUE(rc::check([] {
        double const tolerance = PickInRange(0, 20) * 0.1;
        Points points{{0, 0}};
        int const count = PickInRange(1, 60);
        for (int i = 0; i < count; ++i) {
            points.push_back({points.back().x + PickInRange(1, 10) * 0.3,
                              points.back().y + PickInRange(-10, 11) * 0.1});
        }
        Points const keys = KeysOf(points, tolerance);
        RC_ASSERT(keys.size() >= 2);
        RC_ASSERT(keys.size() <= points.size());
        for (Point const& p : points) {
            RC_ASSERT(std::fabs(At(keys, p.x) - p.y) <= tolerance + 1e-12);
        }
    }));
}
