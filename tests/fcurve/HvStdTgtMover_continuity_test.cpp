// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How the opposite handle goes along with the dragged one.

#include <hv/fcurve/HvStdTgtMover.h>
#include <hv/fcurve/internal/HvStdTgtMoverImpl.h>

#include "tgt_drag.h"

TEST(HvStdTgtMover_continuity, CollinearHandlesStayOnOneLine)
{
    StdCurve curve = Around({-1, -1}, {0.6, 0.6});
    EXPECT_EQ(DragTo(curve, kLeft, {1.5, 3}, 1), 1);  // (-1.5, 2): of length 2.5
    double const length = std::hypot(0.6, 0.6);
    ExpectNear(RightOf(curve), 0.6 * length, -0.8 * length);
    EXPECT_EQ(DragTo(curve, kRight, {3.75, 2}, 1), 1);  // (0.75, 1)
    ExpectNear(LeftOf(curve), -1.5, -2);
}

TEST(HvStdTgtMover_continuity, FollowingHandleKeepsTheLengthSeenInTheView)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    EXPECT_EQ(DragTo(curve, kLeft, {2.4, 0.6}, 1, 0, 2), 1);  // seen as (-0.6, -0.8)
    ExpectNear(RightOf(curve), 0.6, 0.4);
}

TEST(HvStdTgtMover_continuity, LengthContinuityCopiesTheLength)
{
    StdCurve curve = Around({-1, -1}, {0.5, 0.5});
    EXPECT_EQ(DragTo(curve, kLeft, {1.8, 2.6}, 1, 1), 1);  // (-1.2, 1.6)
    ExpectNear(RightOf(curve), 1.2, -1.6);
    EXPECT_EQ(DragTo(curve, kLeft, {2.4, 1.8}, 0, 1), 1) << "length alone keeps the direction";
    ExpectNear(RightOf(curve), 0.6, -0.8);
    // In a view that doubles y, (-0.6, 0.4) is 1 long, and so is (0.6, -0.4).
    StdCurve seen = Around({-1, -1}, {0.3, -0.2});
    EXPECT_EQ(DragTo(seen, kLeft, {2.4, 1.4}, 0, 1, 2), 1);
    ExpectNear(RightOf(seen), 0.6, -0.4);
}

TEST(HvStdTgtMover_continuity, KinkKeepsItsAngleUpToTheVertical)
{
    // From (-1, 0) to (-0.6, -0.8) the left handle turns to the left by asin(0.8), and (1, 0), the
    // right one, with it: to (0.6, 0.8). They start at an angle of 135 degrees.
    double const root = std::sqrt(0.5);
    StdCurve curve = Around({-1, 0}, {root, -root});
    EXPECT_EQ(DragTo(curve, kLeft, {2.4, 0.2}, 1), 1);
    ExpectNear(RightOf(curve), root * (0.6 + 0.8), root * (0.8 - 0.6));
    // Turned by almost 135 degrees (1, 0) would point to the left: it stops.
    StdCurve up = Around({-root, root}, {1, 0});
    EXPECT_EQ(DragTo(up, kLeft, {2.999, 0}, 1), 1);
    ExpectNear(RightOf(up), 0, 1);
    StdCurve down = Around({-root, -root}, {1, 0});
    EXPECT_EQ(DragTo(down, kLeft, {2.999, 2}, 1), 1);
    ExpectNear(RightOf(down), 0, -1);
}

TEST(HvStdTgtMover_continuity, VerticalHandleDraggedThroughItsKeyTurnsCounterclockwise)
{
    // A half turn has no side of its own; counterclockwise takes (1, 0) up to the vertical. On the
    // other side of the key the picture is the mirrored one.
    StdCurve curve = Around({0, 1}, {1, 0});
    EXPECT_EQ(DragTo(curve, kLeft, {3, -1}, 1), 1);
    ExpectNear(RightOf(curve), 0, 1);
    StdCurve other = Around({-1, 0}, {0, 1});
    EXPECT_EQ(DragTo(other, kRight, {3, -1}, 1), 1);
    ExpectNear(LeftOf(other), 0, 1);
}

TEST(HvStdTgtMover_continuity, KinkIsMeasuredInTheView)
{
    // With y doubled the handles start at (-1, 0) and (1, 1), at 135 degrees, and the left one is
    // dragged to (-0.6, -0.8): the right one turns along, from (1, 1) to (0.6 - 0.8, ...), past the
    // vertical; dragged by half of that, by atan(1/2), to (1 - 0.5, 1 + 0.5) * 2 / sqrt(5).
    StdCurve past = Around({-1, 0}, {1, 0.5});
    EXPECT_EQ(DragTo(past, kLeft, {2.4, 0.6}, 1, 0, 2), 1);
    ExpectNear(RightOf(past), 0, std::sqrt(0.5));
    StdCurve half = Around({-1, 0}, {1, 0.5});
    EXPECT_EQ(DragTo(half, kLeft, {2, 0.75}, 1, 0, 2), 1);
    double const unit = 1 / std::sqrt(5.0);
    ExpectNear(RightOf(half), unit, 1.5 * unit);
}

TEST(HvStdTgtMover_continuity, HandleOfNoLengthHasNoAngleToKeep)
{
    StdCurve curve = Around({0, 0}, {1, 0});
    EXPECT_EQ(DragTo(curve, kLeft, {2.4, 0.2}, 1), 1);
    ExpectNear(RightOf(curve), 0.6, 0.8);
}

TEST(HvStdTgtMover_continuity, FoldedHandlesAreStraightened)
{
    StdCurve curve = Around({0, 1}, {0, 1});
    EXPECT_EQ(DragTo(curve, kLeft, {2.4, 1.8}, 1), 1);
    ExpectNear(RightOf(curve), 0.6, -0.8);
}

TEST(HvStdTgtMover_continuity, RightHandleMirrorsToTheLeft)
{
    StdCurve curve = Around({-1, 1}, {1, 1}, Word::kMirroredTangents);
    EXPECT_EQ(DragTo(curve, kRight, {3.6, 0.2}, 1), 1);
    double const length = std::sqrt(2.0);
    ExpectNear(LeftOf(curve), -0.6 * length, -0.8 * length);
}

TEST(HvStdTgtMover_continuity, MirroredTangentsMirror)
{
    StdCurve curve = Around({-1, 1}, {1, 1}, Word::kMirroredTangents);
    EXPECT_EQ(DragTo(curve, kLeft, {2.4, 1.8}, 1, 1), 1);
    ExpectNear(RightOf(curve), 0.6, 0.8);
}

TEST(HvStdTgtMover_continuity, HandleOnItsKeyLeavesTheOtherWhereItWas)
{
    StdCurve curve = Around({-1, -1}, {0.6, 0.6});
    HvStdTgtMover mover(curve, 3, kLeft, 0);
    HvExtent2<double> invalid;
    EXPECT_EQ(mover.Update({1.5, 3}, 1, 1, 1, invalid), 1);
    Point const working = RightOf(curve);
    EXPECT_EQ(mover.Update({3, 1}, 1, 1, 1, invalid), 1);
    ExpectNear(RightOf(curve), working.x, working.y);
    EXPECT_EQ(mover.Update({3, 1}, 1, 0, 1, invalid), 1);
    ExpectNear(RightOf(curve), 0.6, 0.6);
}

TEST(HvStdTgtMover_continuity, FollowingHandleShrinksTheNeighboursFirst)
{
    // The right handle follows to 3.4 in the span of 3. The facing handle, at 0.2, has to stand
    // between the roots of c*c - 3.4*c + 1.36, (3.4 -+ sqrt(6.12)) / 2, drawn inwards by a
    // millionth of their distance; it goes to the nearer one.
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.Impl().keys[2].leftHandle = Point(3.2, 2.8);
    EXPECT_EQ(DragTo(curve, kLeft, {-0.4, 1}, 1, 1), 1);
    ExpectNear(RightOf(curve), 3.4, 0);
    double const expected = (3.4 - std::sqrt(6.12)) / 2 + 1e-6 * std::sqrt(6.12);
    ExpectNear(curve.Impl().keys[2].leftHandle, 3 + expected, 3 - expected, 1e-12);
    EXPECT_TRUE(curve.Impl().IsValid());
}

TEST(HvStdTgtMover_continuity, FollowingHandleStopsWhereTheNeighboursHasNoLine)
{
    StdCurve curve = Around({-1, 0}, {1, 0});
    curve.Impl().keys[2].leftHandle = Point(6, 0);
    EXPECT_EQ(DragTo(curve, kLeft, {-0.4, 1}, 1, 1), 1);
    ExpectNear(RightOf(curve), 3, 0, 1e-5);
    EXPECT_TRUE(curve.Impl().IsValid());
}

TEST(HvStdTgtMover_continuity, CandidatesAreTheHandlesThatGoTogether)
{
    StdCurve curve = Around({-1, -1}, {0.6, 0.6});
    HvStdTgtMoverImpl const left(curve, 3, kLeft, 0);
    Point q(1.5, 3);
    Point p;
    left.CandidateP1FromCandidateQ2(q, 1, 1, 1, &p);
    ExpectNear(p, 4.5, -1);
    HvStdTgtMoverImpl const right(curve, 3, kRight, 0);
    q = Point(4.5, -1);
    right.CandidateQ2FromCandidateP1(q, 1, 1, 1, &p);
    ExpectNear(p, 1.5, 3);
    // Asked to keep nothing, the direction is kept and the length is that of the start.
    q = Point(1.5, 3);
    left.CandidateP1FromCandidateQ2(q, 1, 0, 0, &p);
    double const length = std::hypot(0.6, 0.6);
    ExpectNear(p, 3 + 0.6 * length, 1 - 0.8 * length);
}
