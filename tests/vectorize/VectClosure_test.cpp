// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/VectClosure.h>

#include <hv/shape/HvPath2f.h>

#include <gtest/gtest.h>

namespace {

using Point = HvPoint2<float>;

bool Extends(Point const& a, Point const& b, Point const& p)
{
    HvPath2f path(0);
    path.Moveto(a);
    path.Lineto(b);
    VectClosure closure;
    closure.path = &path;
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

TEST(VectClosure, ExtendsNothingOnAPathOfFewerThanTwoPoints)
{
    HvPath2f path(0);
    VectClosure closure;
    closure.path = &path;
    EXPECT_FALSE(ShouldExtendLastSegment(closure, Point(1, 0)));
    path.Moveto(Point(0, 0));
    EXPECT_FALSE(ShouldExtendLastSegment(closure, Point(1, 0)));
}
