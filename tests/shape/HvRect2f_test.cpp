// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: its outline and hits.

#include <hv/shape/HvRect2f.h>

#include "shape_lock_probe.h"

#include <hv/foundation/HvExtent2.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

namespace {

using Extent = HvExtent2<float>;
using Point = HvPoint2<float>;

HvRect2f MakeRect()
{
    return HvRect2f(Point(0, 0), Point(8, 0), Point(0, 4));
}

Extent WithState(int state)
{
    Extent extent(2, 1, 3, 2);
    extent.state = state;
    return extent;
}

/// A context that moves by (100, 200) and doubles.
HvGC MakeContext()
{
    HvGC gc;
    gc.transform.Translate(100, 200, 0).Scale(2, 2, 1);
    return gc;
}

}  // namespace

TEST(HvRect2f, OutlineIsAClosedPolygon)
{
    HvRect2f const rect(Point(10, 20), Point(18, 22), Point(11, 26));
    HvPath2f path(1);
    path.Moveto(Point(1, 1));
    path.Lineto(Point(2, 2));
    rect.SetupPathRep(path);
    ASSERT_EQ(path.NumPoints(), 7U);
    Point const expected[] = {Point(10, 20), Point(18, 22), Point(19, 28), Point(11, 26),
                              Point(10, 20)};
    for (unsigned int i = 0; i < 5; ++i) {
        EXPECT_EQ(path.GetPoint(2 + i), expected[i]) << i;
    }
    EXPECT_EQ(path.IsStartOfSubpath(2), 1);
    EXPECT_EQ(path.NumSubpaths(), 2U);
    EXPECT_EQ(path.IsSubpathClosed(3), 1);
    EXPECT_EQ(path.IsPolyline(), 1);
}

TEST(HvRect2f, BecomesAPathFromItsFourthCorner)
{
    HvRect2f const rect(Point(10, 20), Point(18, 22), Point(11, 26));
    HvPath2f const path(rect);
    ASSERT_EQ(path.NumPoints(), 5U);
    Point const expected[] = {Point(19, 28), Point(11, 26), Point(10, 20), Point(18, 22),
                              Point(19, 28)};
    for (unsigned int i = 0; i < 5; ++i) {
        EXPECT_EQ(path.GetPoint(i), expected[i]) << i;
    }
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_EQ(path.IsPolyline(), 1);
}

TEST(HvRect2f, OutlineHitsInDeviceCoordinates)
{
    HvRect2f const rect = MakeRect();
    HvGC const gc = MakeContext();
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(115, 203, 117, 205), 0), 1);  // the right side
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(90, 190, 100, 200), 0), 1);   // a corner
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(104, 203, 106, 205), 0), 0);  // inside
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(117, 203, 119, 205), 0), 0);  // outside
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(0, 0, 8, 4), 0), 0);
}

TEST(HvRect2f, InsideHitsInDeviceCoordinates)
{
    HvRect2f const rect = MakeRect();
    HvGC const gc = MakeContext();
    EXPECT_TRUE(rect.IsInteriorIntersectingExtent(gc, Extent(115, 203, 117, 205), 0));
    EXPECT_TRUE(rect.IsInteriorIntersectingExtent(gc, Extent(104, 203, 106, 205), 0));
    EXPECT_FALSE(rect.IsInteriorIntersectingExtent(gc, Extent(117, 203, 119, 205), 0));
    EXPECT_TRUE(rect.IsInteriorIntersectingExtent(gc, Extent(0, 0, 300, 300), 0));
}

TEST(HvRect2f, OutlineOfATurnedRectangleIsNotItsExtent)
{
    // The square of the corners (0, 10), (10, 0), (20, 10), (10, 20); the query lies in a corner of
    // its extent.
    HvRect2f const rect(Point(0, 10), Point(10, 0), Point(10, 20));
    HvGC const gc;
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(1, 1, 3, 3), 0), 0);
    EXPECT_FALSE(rect.IsInteriorIntersectingExtent(gc, Extent(1, 1, 3, 3), 0));
    EXPECT_EQ(rect.IsIntersectingExtent(gc, Extent(1, 1, 5, 5), 0), 1);  // touches in (5, 5)
}

TEST(HvRect2f, HitsFollowTheStateOfTheQuery)
{
    HvRect2f const rect = MakeRect();
    HvGC const gc;
    for (int const skip : {0, 1}) {
        EXPECT_EQ(rect.IsIntersectingExtent(gc, WithState(Extent::WholePlane), skip), 1);
        EXPECT_TRUE(rect.IsInteriorIntersectingExtent(gc, WithState(Extent::WholePlane), skip));
        EXPECT_EQ(rect.IsIntersectingExtent(gc, WithState(Extent::Empty), skip), 0);
        EXPECT_FALSE(rect.IsInteriorIntersectingExtent(gc, WithState(Extent::Empty), skip));
        EXPECT_EQ(rect.IsIntersectingExtent(gc, WithState(Extent::Ordinary), skip), 0);
        EXPECT_TRUE(rect.IsInteriorIntersectingExtent(gc, WithState(Extent::Ordinary), skip));
    }
}

TEST(HvRect2f, HitsAllocateNothing)
{
    HvRect2f const rect = MakeRect();
    HvGC const gc;
    AllocationCounter const counter;
    rect.IsIntersectingExtent(gc, Extent(1, 1, 3, 3), 0);
    rect.IsInteriorIntersectingExtent(gc, Extent(1, 1, 3, 3), 0);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvRect2f, OutlineAndHitsWaitForTheLock)
{
    HvRect2f const rect = MakeRect();
    HvGC const gc;
    HvPath2f path(1);
    EXPECT_TRUE(ShapeLockProbe_Waits(rect, true, [&] { rect.SetupPathRep(path); }));
    EXPECT_TRUE(ShapeLockProbe_Waits(
        rect, true, [&] { rect.IsIntersectingExtent(gc, Extent(1, 1, 3, 3), 1); }));
    EXPECT_TRUE(ShapeLockProbe_Waits(
        rect, true, [&] { rect.IsInteriorIntersectingExtent(gc, Extent(1, 1, 3, 3), 1); }));
    EXPECT_TRUE(ShapeLockProbe_IsFree(rect));
}

TEST(HvRect2f, RefusedAllocationOfTheOutlineReleasesTheLock)
{
    HvRect2f const rect = MakeRect();
    long const made = RefuseEachAllocation([&] {
        try {
            HvPath2f path(1);
            rect.SetupPathRep(path);
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(ShapeLockProbe_IsFree(rect));
            throw;
        }
    });
    EXPECT_GT(made, 0);
}
