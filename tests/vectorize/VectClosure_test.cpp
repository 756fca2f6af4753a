// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/VectClosure.h>

#include <gtest/gtest.h>

namespace {

using Point = HvPoint2<float>;

bool Extends(Point const& a, Point const& b, Point const& p)
{
    VectClosure closure;
    closure.beforeX = a.x;
    closure.beforeY = a.y;
    closure.x = b.x;
    closure.y = b.y;
    closure.subpathPoints = 2;
    return ShouldExtendLastSegment(closure, p);
}

}  // namespace

TEST(VectClosure, ExtendsALineInItsOwnDirection)
{
    Point const origin(0, 0);
    for (Point const& d : {Point(2, 0), Point(-2, 0), Point(0, 2), Point(0, -2)}) {
        EXPECT_TRUE(Extends(origin, d, d * 2.0f));
        EXPECT_TRUE(Extends(origin, d, d)) << "by nothing";
        EXPECT_FALSE(Extends(origin, d, d * 0.5f)) << "back";
        EXPECT_FALSE(Extends(origin, d, -d)) << "back beyond the start";
        EXPECT_FALSE(Extends(origin, d, d * 2.0f + Point(d.y, d.x))) << "aside";
        EXPECT_FALSE(Extends(origin, d, d + Point(-d.y, d.x))) << "around a corner";
    }
}

TEST(VectClosure, ExtendsNoPoint)
{
    EXPECT_FALSE(Extends(Point(1, 1), Point(1, 1), Point(1, 1)));
    EXPECT_FALSE(Extends(Point(1, 1), Point(1, 1), Point(2, 1)));
}

TEST(VectClosure, ExtendsNothingInASubpathOfFewerThanTwoPoints)
{
    VectClosure closure;
    closure.x = 1;
    EXPECT_FALSE(ShouldExtendLastSegment(closure, Point(2, 0)));
    closure.subpathPoints = 1;
    EXPECT_FALSE(ShouldExtendLastSegment(closure, Point(2, 0)));
    closure.subpathPoints = 2;
    EXPECT_TRUE(ShouldExtendLastSegment(closure, Point(2, 0)));
}
