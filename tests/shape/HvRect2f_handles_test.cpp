// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: dragging its handles.

#include <hv/shape/HvRect2f.h>

#include "shape_lock_probe.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Point = HvPoint2<float>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// Corners (0, 0), (8, 0), (0, 4), (8, 4).
HvRect2f MakeRect()
{
    return HvRect2f(Point(0, 0), Point(8, 0), Point(0, 4));
}

void ExpectPoints(HvRect2f const& rect, Point const& p0, Point const& p1, Point const& p2)
{
    EXPECT_EQ(rect.GetPoint(6), p0);
    EXPECT_EQ(rect.GetPoint(8), p1);
    EXPECT_EQ(rect.GetPoint(4), p2);
}

void ExpectUnchanged(HvRect2f const& rect)
{
    ExpectPoints(rect, Point(0, 0), Point(8, 0), Point(0, 4));
}

}  // namespace

TEST(HvRect2f_handles, TranslateTakesTheHandleToThePoint)
{
    for (unsigned int handle = 0; handle < 9; ++handle) {
        HvRect2f rect = MakeRect();
        EXPECT_EQ(rect.HandleTranslate(handle, Point(100, 200)), 1);
        EXPECT_EQ(rect.GetPoint(handle), Point(100, 200)) << handle;
        EXPECT_EQ(rect.GetPoint(8) - rect.GetPoint(6), Point(8, 0));
        EXPECT_EQ(rect.GetPoint(4) - rect.GetPoint(6), Point(0, 4));
    }
}

TEST(HvRect2f_handles, RotateTurnsAboutTheCentre)
{
    HvRect2f rect = MakeRect();
    EXPECT_TRUE(rect.HandleRotate(1, Point(4, 100), HvRect2f::RectangleCenter));
    ExpectPoints(rect, Point(6, -2), Point(6, 6), Point(2, -2));
}

TEST(HvRect2f_handles, RotateTurnsAboutTheOppositeHandle)
{
    HvRect2f rect = MakeRect();
    // Handle 8 at (8, 0) about handle 4 at (0, 4): from (8, -4) to (4, 8), a quarter.
    EXPECT_TRUE(rect.HandleRotate(8, Point(4, 12), HvRect2f::OppositeHandle));
    ExpectPoints(rect, Point(4, 4), Point(4, 12), Point(0, 4));
}

TEST(HvRect2f_handles, RotateTurnsAboutTheOriginByAnyOtherStyle)
{
    for (int style : {2, 3, -1}) {
        HvRect2f rect(Point(8, 0), Point(16, 0), Point(8, 4));
        EXPECT_TRUE(rect.HandleRotate(6, Point(0, 3), static_cast<HvRect2f::CenterStyle>(style)));
        // The cosine of 90 degrees is 6e-17 and stays in an x that should be 0.
        EXPECT_NEAR(HvPoint2_LengthAB(rect.GetPoint(6), Point(0, 8)), 0.0, 1e-14);
        EXPECT_NEAR(HvPoint2_LengthAB(rect.GetPoint(8), Point(0, 16)), 0.0, 1e-14);
        EXPECT_NEAR(HvPoint2_LengthAB(rect.GetPoint(4), Point(-4, 8)), 0.0, 1e-14);
    }
}

TEST(HvRect2f_handles, RotateRefusesTheCentreItself)
{
    HvRect2f rect = MakeRect();
    EXPECT_FALSE(rect.HandleRotate(0, Point(9, 9), HvRect2f::RectangleCenter));
    EXPECT_FALSE(rect.HandleRotate(1, Point(4, 2), HvRect2f::RectangleCenter));
    EXPECT_FALSE(rect.HandleRotate(6, Point(1, 1), HvRect2f::Origin));
    ExpectUnchanged(rect);
    // The centre about the handle that faces it by the count, 4.
    EXPECT_TRUE(rect.HandleRotate(0, Point(8, 0), HvRect2f::OppositeHandle));
}

TEST(HvRect2f_handles, SkewMovesASide)
{
    HvRect2f rect = MakeRect();
    EXPECT_EQ(rect.HandleSkew(3, Point(6, 5)), 1);
    ExpectPoints(rect, Point(0, 0), Point(8, 0), Point(2, 5));
    EXPECT_EQ(rect.HandleSkew(6, Point(1, 1)), 1);
    ExpectPoints(rect, Point(1, 1), Point(8, 0), Point(3, 6));
    EXPECT_EQ(rect.HandleSkew(0, Point(99, 99)), 1);
    ExpectPoints(rect, Point(1, 1), Point(8, 0), Point(3, 6));
    // Without the guard a side may vanish.
    EXPECT_EQ(rect.HandleSkew(4, Point(1, 1)), 1);
    ExpectPoints(rect, Point(1, 1), Point(8, 0), Point(1, 1));
}

TEST(HvRect2f_handles, GuardedSkewRefusesADegenerateRectangle)
{
    Point const unused(kNaN, kNaN);
    HvRect2f collapsed(Point(0, 0), Point(0, 0), Point(0, 4));
    EXPECT_EQ(collapsed.HandleSkew(1, Point(8, 2), unused), 0);
    ExpectPoints(collapsed, Point(0, 0), Point(0, 0), Point(0, 4));

    HvRect2f rect = MakeRect();
    EXPECT_EQ(rect.HandleSkew(4, Point(0, 0), unused), 0);
    EXPECT_EQ(rect.HandleSkew(4, Point(5, 0), unused), 0);
    EXPECT_EQ(rect.HandleSkew(4, Point(kNaN, 0), unused), 0);
    ExpectUnchanged(rect);
    EXPECT_EQ(rect.HandleSkew(0, Point(5, 0), unused), 1);
    ExpectUnchanged(rect);
    EXPECT_EQ(rect.HandleSkew(4, Point(5, 1), unused), 1);
    ExpectPoints(rect, Point(0, 0), Point(8, 0), Point(5, 1));
}

TEST(HvRect2f_handles, ScaleAboutAnAnchorStretches)
{
    HvRect2f rect = MakeRect();
    EXPECT_EQ(rect.HandleScale(1, Point(12, 99), Point(0, 0)), 1);
    ExpectPoints(rect, Point(0, 0), Point(12, 0), Point(0, 4));
    EXPECT_EQ(rect.HandleScale(2, Point(6, -8), Point(0, 0)), 1);
    ExpectPoints(rect, Point(0, 0), Point(6, 0), Point(0, -8));
    EXPECT_EQ(rect.HandleScale(0, Point(6, -8), Point(0, 0)), 0);
    EXPECT_EQ(rect.HandleScale(2, Point(6, 0), Point(0, 0)), 0);
    ExpectPoints(rect, Point(0, 0), Point(6, 0), Point(0, -8));
}

TEST(HvRect2f_handles, ScaleOfASideFollowsItsStyle)
{
    HvRect2f rect = MakeRect();
    EXPECT_EQ(rect.HandleScale(1, Point(12, 50), HvRect2f::RectangleCenter), 1);
    ExpectPoints(rect, Point(-4, 0), Point(12, 0), Point(-4, 4));
    rect = MakeRect();
    EXPECT_EQ(rect.HandleScale(1, Point(12, 50), HvRect2f::OppositeHandle), 1);
    ExpectPoints(rect, Point(0, 0), Point(12, 0), Point(0, 4));
    rect = HvRect2f(Point(2, 2), Point(4, 2), Point(2, 6));
    EXPECT_EQ(rect.HandleScale(3, Point(0, 12), HvRect2f::Origin), 1);
    ExpectPoints(rect, Point(2, 4), Point(4, 4), Point(2, 12));
    // Beyond its centre a side turns the rectangle over.
    rect = MakeRect();
    EXPECT_EQ(rect.HandleScale(1, Point(0, 0), HvRect2f::RectangleCenter), 1);
    ExpectPoints(rect, Point(8, 0), Point(0, 0), Point(8, 4));
}

TEST(HvRect2f_handles, ScaleOfACornerKeepsTheRatioOfTheSides)
{
    HvRect2f rect = MakeRect();
    EXPECT_EQ(rect.HandleScale(2, Point(12, 6), HvRect2f::RectangleCenter), 1);
    ExpectPoints(rect, Point(-4, -2), Point(12, -2), Point(-4, 6));
    rect = MakeRect();
    EXPECT_EQ(rect.HandleScale(2, Point(14, 12), HvRect2f::OppositeHandle), 1);
    ExpectPoints(rect, Point(0, 0), Point(16, 0), Point(0, 8));
    rect = HvRect2f(Point(2, 0), Point(4, 0), Point(2, 4));
    EXPECT_EQ(rect.HandleScale(8, Point(8, 0), static_cast<HvRect2f::CenterStyle>(9)), 1);
    ExpectPoints(rect, Point(4, 0), Point(8, 0), Point(4, 8));
}

TEST(HvRect2f_handles, RefusedScaleLeavesTheRectangle)
{
    HvRect2f rect = MakeRect();
    for (HvRect2f::CenterStyle const style :
         {HvRect2f::RectangleCenter, HvRect2f::OppositeHandle, HvRect2f::Origin}) {
        EXPECT_EQ(rect.HandleScale(0, Point(9, 9), style), 0);
        EXPECT_EQ(rect.HandleScale(9, Point(9, 9), style), 0);
        EXPECT_EQ(rect.HandleScale(10, Point(9, 9), style), 0);
        EXPECT_EQ(rect.HandleScale(2, Point(kNaN, 9), style), 0);
        EXPECT_EQ(rect.HandleScale(1, Point(kNaN, 9), style), 0);
    }
    EXPECT_EQ(rect.HandleScale(2, Point(4, 2), HvRect2f::RectangleCenter), 0);
    EXPECT_EQ(rect.HandleScale(2, Point(3, 1), HvRect2f::RectangleCenter), 0);
    EXPECT_EQ(rect.HandleScale(1, Point(4, 9), HvRect2f::RectangleCenter), 0);
    EXPECT_EQ(rect.HandleScale(6, Point(5, 5), HvRect2f::Origin), 0);
    EXPECT_EQ(rect.HandleScale(5, Point(5, 5), HvRect2f::Origin), 0);
    ExpectUnchanged(rect);
}

TEST(HvRect2f_handles, DragsWaitForTheLock)
{
    HvRect2f rect = MakeRect();
    Point const to(9, 9);
    auto const expectWait = [&](char const* name, auto call) {
        EXPECT_TRUE(ShapeLockProbe_Waits(rect, true, call)) << name;
    };
    expectWait("HandleTranslate", [&] { rect.HandleTranslate(1, to); });
    expectWait("HandleRotate", [&] { rect.HandleRotate(1, to, HvRect2f::Origin); });
    expectWait("HandleSkew", [&] { rect.HandleSkew(1, to); });
    expectWait("HandleSkew", [&] { rect.HandleSkew(1, to, to); });
    expectWait("HandleScale", [&] { rect.HandleScale(1, to, HvRect2f::Origin); });
    expectWait("HandleScale", [&] { rect.HandleScale(1, to, to); });
    EXPECT_TRUE(ShapeLockProbe_IsFree(rect));
}
