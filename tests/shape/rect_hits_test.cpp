// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Hits of a rectangle, against a count of half planes.

#include <hv/shape/internal/rect_hits.h>

#include <hv/rotation/HvTransfo4.h>
#include <hv/shape/HvParallelogram2f.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

namespace {

using Extent = HvExtent2<float>;
using Frame = HvParallelogram2f;
using Point = HvPoint2<float>;

Frame const kRect(Point(0, 0), Point(8, 0), Point(0, 4));

Extent WithState(int state)
{
    Extent extent(100, 100, 101, 101);
    extent.state = state;
    return extent;
}

}  // namespace

TEST(rect_hits, OutlineMeetsAnExtentAtACornerOrASide)
{
    HvRectHits const hits(kRect, HvTransfo4());
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(-1, -1, 0, 0)));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(8, 4, 9, 9)));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(3, -1, 4, 1)));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(7, 1, 9, 2)));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(3, 3, 4, 5)));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(-2, 1, 1, 2)));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(-9, -9, 20, 20)));
    EXPECT_FALSE(hits.DoesOutlineMeet(Extent(1, 1, 7, 3)));
    EXPECT_FALSE(hits.DoesOutlineMeet(Extent(9, 0, 12, 4)));
}

TEST(rect_hits, OutlineMeetsByTheStateOfTheExtent)
{
    HvRectHits const hits(kRect, HvTransfo4());
    EXPECT_TRUE(hits.DoesOutlineMeet(WithState(Extent::WholePlane)));
    EXPECT_FALSE(hits.DoesOutlineMeet(WithState(Extent::Empty)));
    EXPECT_FALSE(hits.DoesOutlineMeet(WithState(Extent::Ordinary)));
}

TEST(rect_hits, HoldsItsClosedInside)
{
    HvRectHits const hits(kRect, HvTransfo4());
    for (Point const& inside : {Point(4, 2), Point(0, 0), Point(8, 4), Point(8, 0), Point(0, 4),
                                Point(4, 0), Point(1, 3), Point(7, 1)}) {
        EXPECT_TRUE(hits.Holds(inside)) << inside.x << ' ' << inside.y;
    }
    for (Point const& outside :
         {Point(-0.5F, 2), Point(8.5F, 2), Point(4, -0.5F), Point(4, 4.5F)}) {
        EXPECT_FALSE(hits.Holds(outside)) << outside.x << ' ' << outside.y;
    }
}

TEST(rect_hits, WorkInDeviceCoordinates)
{
    HvRectHits const hits(kRect, HvTransfo4().Translate(10, 20, 0).Scale(2, 2, 1));
    EXPECT_TRUE(hits.DoesOutlineMeet(Extent(25, 27, 27, 29)));
    EXPECT_FALSE(hits.DoesOutlineMeet(Extent(7, 3, 9, 5)));
    EXPECT_TRUE(hits.Holds(Point(18, 24)));
    EXPECT_FALSE(hits.Holds(Point(4, 2)));
}

TEST(rect_hits, NumbersThatAreNotFiniteAreNotMet)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    HvRectHits const hits(Frame(Point(nan, nan), Point(nan, nan), Point(nan, nan)), HvTransfo4());
    EXPECT_FALSE(hits.DoesOutlineMeet(Extent(0, 0, 1, 1)));
    EXPECT_FALSE(hits.Holds(Point(0, 0)));
}

RC_GTEST_PROP(rect_hits, AgreeWithHalfPlanes, ())
{
    auto const coordinate = [] { return static_cast<float>(PickInRange(-20, 21)); };
    Frame const rect(Point(coordinate(), coordinate()), Point(coordinate(), coordinate()),
                     Point(coordinate(), coordinate()));
    RC_PRE(!rect.IsDegenerate());
    Point const p(coordinate(), coordinate());
    // On this grid the determinants are exact: the coordinates of p in the rectangle's frame,
    // times its area.
    double const area = HvPoint2_ABdetCD(rect.p0, rect.p1, rect.p0, rect.p2);
    double const s = HvPoint2_ABdetCD(rect.p0, p, rect.p0, rect.p2) / area;
    double const t = HvPoint2_ABdetCD(rect.p0, rect.p1, rect.p0, p) / area;
    bool const isInside = s >= 0 && t >= 0 && s <= 1 && t <= 1;
    bool const isOnOutline = isInside && (s == 0 || t == 0 || s == 1 || t == 1);
    HvRectHits const hits(rect, HvTransfo4());
    RC_ASSERT(hits.Holds(p) == isInside);
    RC_ASSERT(hits.DoesOutlineMeet(Extent(p.x, p.y, p.x, p.y)) == isOnOutline);
}
