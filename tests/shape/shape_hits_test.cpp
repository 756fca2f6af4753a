// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tests of which the hit tests of all shapes are made.

#include <hv/shape/internal/shape_hits.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using Extent = HvExtent2<float>;
using Point = HvPoint2<float>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

Extent WithState(int state)
{
    Extent extent(0, 0, 1, 1);
    extent.state = state;
    return extent;
}

}  // namespace

TEST(shape_hits, ExtentsOverlapByTheirStates)
{
    struct {
        int query, shape;
        bool overlap;
    } const rows[] = {{0, 0, true},  {0, 1, false}, {0, 2, true},  {1, 0, false}, {1, 1, false},
                      {1, 2, false}, {2, 0, true},  {2, 1, false}, {2, 2, true}};
    for (auto const& row : rows) {
        EXPECT_EQ(HvShapeHit_DoExtentsOverlap(WithState(row.query), WithState(row.shape)),
                  row.overlap)
            << row.query << ' ' << row.shape;
    }
}

TEST(shape_hits, ExtentsOverlapAtASharedEdge)
{
    Extent const shape(0, 0, 10, 10);
    float const above = std::nextafter(10.0F, 11.0F);
    float const below = -std::numeric_limits<float>::denorm_min();
    EXPECT_TRUE(HvShapeHit_DoExtentsOverlap(Extent(10, 10, 12, 12), shape));
    EXPECT_TRUE(HvShapeHit_DoExtentsOverlap(Extent(-2, -2, 0, 0), shape));
    EXPECT_FALSE(HvShapeHit_DoExtentsOverlap(Extent(above, 0, 12, 10), shape));
    EXPECT_FALSE(HvShapeHit_DoExtentsOverlap(Extent(0, above, 10, 12), shape));
    EXPECT_FALSE(HvShapeHit_DoExtentsOverlap(Extent(-2, 0, below, 10), shape));
    EXPECT_FALSE(HvShapeHit_DoExtentsOverlap(Extent(0, -2, 10, below), shape));
}

TEST(shape_hits, ExtentWithoutNumbersMeetsThePlaneAlone)
{
    Extent const nowhere(kNaN, 0, 1, 1);
    EXPECT_FALSE(HvShapeHit_DoExtentsOverlap(Extent(0, 0, 1, 1), nowhere));
    EXPECT_FALSE(HvShapeHit_DoExtentsOverlap(nowhere, Extent(0, 0, 1, 1)));
    EXPECT_TRUE(HvShapeHit_DoExtentsOverlap(WithState(2), nowhere));
}

TEST(shape_hits, SegmentMeetsAnExtentByItsState)
{
    EXPECT_TRUE(HvShapeHit_DoesSegmentMeet(WithState(2), Point(90, 90), Point(91, 91)));
    EXPECT_FALSE(HvShapeHit_DoesSegmentMeet(WithState(1), Point(0, 0), Point(1, 1)));
}

TEST(shape_hits, SegmentMeetsTheClosedExtent)
{
    Extent const extent(0, 0, 10, 10);
    EXPECT_TRUE(HvShapeHit_DoesSegmentMeet(extent, Point(2, 2), Point(3, 3)));
    EXPECT_TRUE(HvShapeHit_DoesSegmentMeet(extent, Point(-5, 5), Point(15, 5)));
    EXPECT_TRUE(HvShapeHit_DoesSegmentMeet(extent, Point(-4, 4), Point(4, -4)));    // a corner
    EXPECT_TRUE(HvShapeHit_DoesSegmentMeet(extent, Point(-4, 10), Point(14, 10)));  // a side
    EXPECT_FALSE(HvShapeHit_DoesSegmentMeet(extent, Point(-5, 4), Point(4, -5)));
    EXPECT_FALSE(HvShapeHit_DoesSegmentMeet(extent, Point(11, 0), Point(11, 10)));
    EXPECT_FALSE(HvShapeHit_DoesSegmentMeet(extent, Point(kNaN, 5), Point(5, 5)));
    EXPECT_FALSE(HvShapeHit_DoesSegmentMeet(extent, Point(-kInfinity, 5), Point(kInfinity, 5)));
}

TEST(shape_hits, SquareIsClosedAndHalfItsSideWide)
{
    Point const center(1, 2);
    EXPECT_TRUE(HvShapeHit_IsInSquare(Point(3, 4), center, 4.0));
    EXPECT_TRUE(HvShapeHit_IsInSquare(Point(-1, 0), center, 4.0));
    EXPECT_FALSE(HvShapeHit_IsInSquare(Point(std::nextafter(3.0F, 4.0F), 2), center, 4.0));
    EXPECT_FALSE(HvShapeHit_IsInSquare(Point(1, std::nextafter(4.0F, 5.0F)), center, 4.0));
    EXPECT_TRUE(HvShapeHit_IsInSquare(center, center, 0.0));
    EXPECT_FALSE(HvShapeHit_IsInSquare(center, center, -1e-300));
    EXPECT_FALSE(HvShapeHit_IsInSquare(center, center, std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(HvShapeHit_IsInSquare(Point(kNaN, 2), center, 4.0));
    EXPECT_TRUE(HvShapeHit_IsInSquare(Point(3e38F, -3e38F), Point(-3e38F, 3e38F), 1.3e39));
}
