// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Moving points of paths, and the locks that keep handles in line.

#include <hv/shape/HvPath2f.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr unsigned int kNowhere = std::numeric_limits<unsigned int>::max();

// Two cubics that meet in the node 3 at the origin, with handles there to `before` and `after`.
OpenPath Joint(PathPoint before, PathPoint after)
{
    OpenPath path;
    path.Moveto({-9, 0});
    path.Curveto({-8, 0}, before, {0, 0});
    path.Curveto(after, {8, 0}, {9, 0});
    return path;
}

int IsJointSmooth(PathPoint before, PathPoint after)
{
    return Joint(before, after).IsG1Continuous(3);
}

}  // namespace

// In line or not.

TEST(HvPath2f_move, TakesOppositeHandlesAsInLine)
{
    EXPECT_EQ(IsJointSmooth({-1, 0}, {2, 0}), 1);
    EXPECT_EQ(IsJointSmooth({-1, -1}, {3, 3}), 1);
    EXPECT_EQ(IsJointSmooth({-1, 0}, {0, 1}), 0);
    // A cusp lies on one line and yet turns back.
    EXPECT_EQ(IsJointSmooth({1, 0}, {2, 0}), 0);
}

TEST(HvPath2f_move, TakesACollapsedHandleAsInLineUpToItsLimit)
{
    // Handles at right angles; the first float not above 1e-6 is collapsed, the next is not.
    float const collapsed = 1e-6F;
    ASSERT_LE(double(collapsed), 1e-6);
    float const standing = std::nextafterf(collapsed, 1);
    ASSERT_GT(double(standing), 1e-6);
    EXPECT_EQ(IsJointSmooth({-1, 0}, {0, collapsed}), 1);
    EXPECT_EQ(IsJointSmooth({-1, 0}, {0, standing}), 0);
    EXPECT_EQ(IsJointSmooth({-collapsed, 0}, {0, 1}), 1);
    EXPECT_EQ(IsJointSmooth({-standing, 0}, {0, 1}), 0);
    EXPECT_EQ(IsJointSmooth({0, 0}, {0, 0}), 1);
}

TEST(HvPath2f_move, TakesTurnsUpToASquaredSineOfOneMillionth)
{
    // Handles (-1, 0) and (1, s): the squared sine is s^2 / (1 + s^2). The steps of s are 1e-10, a
    // relative 2e-7 of the squared sine and far above the rounding of its computation in double.
    float s = 0.001F;
    while (static_cast<long double>(s) * s / (1 + static_cast<long double>(s) * s) <= 1e-6L) {
        s = std::nextafterf(s, 1);
    }
    EXPECT_EQ(IsJointSmooth({-1, 0}, {1, s}), 0);
    EXPECT_EQ(IsJointSmooth({-1, 0}, {1, std::nextafterf(s, 0)}), 1);
    EXPECT_EQ(IsJointSmooth({-1, 0}, {1, -s}), 0);
}

TEST(HvPath2f_move, FindsNothingInLineAmongNumbersThatAreNotFinite)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float const inf = std::numeric_limits<float>::infinity();
    float const max = std::numeric_limits<float>::max();
    EXPECT_EQ(IsJointSmooth({-1, 0}, {nan, 0}), 0);
    EXPECT_EQ(IsJointSmooth({-1, 0}, {inf, 0}), 0);
    EXPECT_EQ(IsJointSmooth({-inf, 0}, {inf, 0}), 0);
    EXPECT_EQ(IsJointSmooth({-max, 0}, {max, 0}), 1);
    EXPECT_EQ(IsJointSmooth({-max, -max}, {max, max}), 1);
}

TEST(HvPath2f_move, JudgesTheSeamOfAClosedSubpathFromBothItsEnds)
{
    OpenPath path = SmoothLoop();
    EXPECT_EQ(path.IsG1Continuous(0), 1);
    EXPECT_EQ(path.IsG1Continuous(6), 1);
    path.ReplacePointIgnoringLock(5, {1, 3});
    EXPECT_EQ(path.IsG1Continuous(0), 0);
    EXPECT_EQ(path.IsG1Continuous(6), 0);
    // An open subpath has no seam.
    OpenPath open = SmoothLoop();
    open.OpenSubpath(0);
    EXPECT_EQ(open.IsG1Continuous(0), 0);
    EXPECT_EQ(open.IsG1Continuous(6), 0);
    // Nor have three points.
    OpenPath flat;
    flat.Moveto({0, 0});
    flat.Lineto({1, 0});
    flat.Lineto({0, 0});
    flat.Closeto();
    EXPECT_EQ(flat.IsG1Continuous(0), 0);
    EXPECT_EQ(flat.IsG1Continuous(2), 0);
    // Four have.
    OpenPath line;
    line.Moveto({0, 0});
    line.Lineto({1, 0});
    line.Lineto({-1, 0});
    line.Lineto({0, 0});
    line.Closeto();
    EXPECT_EQ(line.IsG1Continuous(0), 1);
}

// Locking.

TEST(HvPath2f_move, LocksANodeBetweenCubics)
{
    OpenPath path = SmoothRun();
    EXPECT_EQ(path.LockG1(3), 1);
    EXPECT_EQ(path.tags[3], 138);
    EXPECT_EQ(path.LockG1(3), 1);
    path.ReplacePointIgnoringLock(4, {12, 5});
    EXPECT_EQ(path.LockG1(3), 1) << "a locked node stays so, in line or not";
    EXPECT_EQ(path.LockG1(6), 1);
    path.ReplacePointIgnoringLock(10, {32, 5});
    EXPECT_EQ(path.LockG1(9), 0);
    EXPECT_EQ(path.tags[9], 10);
    EXPECT_EQ(path.LockG1(0), 0) << "an open end";
    EXPECT_EQ(path.LockG1(12), 0);
    EXPECT_EQ(path.LockG1(4), 0) << "a handle";
    EXPECT_EQ(path.LockG1(13), 0);
    EXPECT_EQ(path.LockG1(kNowhere), 0);
}

TEST(HvPath2f_move, LocksANodeWithACollapsedHandle)
{
    OpenPath path = Joint({0, 0}, {1, 5});
    EXPECT_EQ(path.LockG1(3), 1);
}

TEST(HvPath2f_move, LocksASeamOnBothItsPoints)
{
    for (unsigned int const node : {0u, 6u}) {
        OpenPath path = SmoothLoop();
        EXPECT_EQ(path.LockG1(node), 1);
        EXPECT_EQ(path.tags[0], 129);
        EXPECT_EQ(path.tags[6], 139);
    }
}

TEST(HvPath2f_move, LocksNoNodeBesideALineOrAQuadratic)
{
    // All nodes lie on the x axis, so all are in line.
    OpenPath path;
    path.Moveto({0, 0});
    path.Lineto({1, 0});
    path.Curveto({2, 0}, {3, 0}, {4, 0});
    path.Curveto({5, 0}, {6, 0});
    path.Curveto({7, 0}, {8, 0}, {9, 0});
    PathPoint const quartic[] = {{10, 0}, {11, 0}, {12, 0}, {13, 0}};
    path.AltCurveto(quartic, 4);
    path.Lineto({14, 0});
    EXPECT_EQ(path.IsG1Continuous(1), 1);
    EXPECT_EQ(path.LockG1(1), 0);   // line, cubic
    EXPECT_EQ(path.LockG1(4), 0);   // cubic, quadratic
    EXPECT_EQ(path.LockG1(6), 0);   // quadratic, cubic
    EXPECT_EQ(path.LockG1(9), 1);   // cubic, quartic
    EXPECT_EQ(path.LockG1(13), 0);  // quartic, line
    // Before a closing line too.
    path.ReplacePointIgnoringLock(14, {0, 0});
    path.CloseSubpath(0);
    EXPECT_EQ(path.tags[14], 4);
    path.ReplacePointIgnoringLock(14, {20, 0});
    EXPECT_EQ(path.LockG1(13), 0);
}

TEST(HvPath2f_move, AsksOnlyTheClosingSegmentOfASeam)
{
    // A quadratic that closes cannot hold a handle, one that opens is not asked.
    OpenPath quadratic;
    quadratic.Moveto({0, 0});
    quadratic.Curveto({1, 0}, {2, 2}, {3, 3});
    quadratic.Curveto({-1, 0}, {0, 0});
    quadratic.Closeto();
    EXPECT_EQ(quadratic.IsG1Continuous(0), 1);
    EXPECT_EQ(quadratic.LockG1(0), 0);
    EXPECT_EQ(quadratic.LockG1(5), 0);
    OpenPath line;
    line.Moveto({0, 0});
    line.Lineto({1, 0});
    line.Curveto({2, 2}, {-1, 0}, {0, 0});
    line.Closeto();
    EXPECT_EQ(line.LockG1(4), 1);
    EXPECT_EQ(TagsOf(line), (std::vector<unsigned int>{129, 3, 8, 9, 139}));
    // Its far node moves along and turns as the handle does.
    line.ReplacePoint(0, {0, 1}, 0);
    EXPECT_EQ(line.points[1], PathPoint(1, 1));
    EXPECT_EQ(line.points[3], PathPoint(-1, 1));
    line.ReplacePoint(3, {0, 0}, 0);
    EXPECT_EQ(line.points[1], PathPoint(0, 2));
}

// Moving nodes.

TEST(HvPath2f_move, MovesAnUnlockedPointAlone)
{
    OpenPath const run = SmoothRun();
    for (unsigned int i = 0; i < run.NumPoints(); ++i) {
        OpenPath path = run;
        PathImage expected = ImageOf(path);
        expected.points[i] = {5, 5};
        path.ReplacePoint(i, {5, 5}, 0);
        EXPECT_EQ(ImageOf(path), expected);
    }
}

TEST(HvPath2f_move, MovesBothEndsOfAClosedSubpath)
{
    for (unsigned int const i : {0u, 3u}) {
        OpenPath path = Triangle();
        path.ReplacePoint(i, {-1, -2}, 0);
        EXPECT_EQ(path.points[0], PathPoint(-1, -2));
        EXPECT_EQ(path.points[3], PathPoint(-1, -2));
        EXPECT_EQ(path.points[1], PathPoint(4, 0));
    }
}

TEST(HvPath2f_move, TakesTheHandlesOfALockedNodeAlong)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePoint(3, {11, 5}, 0);
    EXPECT_EQ(path.points[2], PathPoint(8, 5));
    EXPECT_EQ(path.points[3], PathPoint(11, 5));
    EXPECT_EQ(path.points[4], PathPoint(13, 5));
    EXPECT_EQ(path.points[1], PathPoint(2, 0));

    OpenPath loop = SmoothLoop();
    loop.LockG1(0);
    loop.ReplacePoint(6, {1, 1}, 0);
    EXPECT_EQ(loop.points[0], PathPoint(1, 1));
    EXPECT_EQ(loop.points[6], PathPoint(1, 1));
    EXPECT_EQ(loop.points[1], PathPoint(1, 6));
    EXPECT_EQ(loop.points[5], PathPoint(1, -2));
    EXPECT_EQ(loop.points[4], PathPoint(10, -2));
}

TEST(HvPath2f_move, ProjectsTheHandleBehindANodeThatWasOutOfLine)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePointIgnoringLock(4, {12, 1});
    path.ReplacePoint(3, {10, 2}, 0);
    EXPECT_EQ(path.points[2], PathPoint(7, 2));
    EXPECT_EQ(path.points[4], PathPoint(12, 2)) << "(12, 3), projected";

    // On a slope, by hand: the line through (0, 0) and (3, 4), the point (5, 0): t = 15 / 25.
    OpenPath slope = Joint({-3, -4}, {3, 4});
    ASSERT_EQ(slope.LockG1(3), 1);
    slope.ReplacePointIgnoringLock(4, {2, -4});
    slope.ReplacePoint(3, {3, 4}, 0);
    EXPECT_EQ(slope.points[2], PathPoint(0, 0));
    EXPECT_FLOAT_EQ(slope.points[4].x, 1.8F);
    EXPECT_FLOAT_EQ(slope.points[4].y, 2.4F);

    // At a seam it is the handle before.
    OpenPath loop = SmoothLoop();
    loop.LockG1(0);
    loop.ReplacePointIgnoringLock(5, {1, -3});
    loop.ReplacePoint(0, {0, 1}, 0);
    EXPECT_EQ(loop.points[1], PathPoint(0, 6));
    EXPECT_EQ(loop.points[5], PathPoint(0, -2));
}

TEST(HvPath2f_move, ProjectsNothingOnAHandleThatIsNearItsNode)
{
    // Near means a squared distance below 1e-7, that is, about 3.16e-4.
    for (bool const isNear : {true, false}) {
        OpenPath path = Joint({isNear ? -3.1e-4F : -3.2e-4F, 0}, {1, 0});
        ASSERT_EQ(path.LockG1(3), 1);
        path.ReplacePointIgnoringLock(4, {1, 1});
        path.ReplacePoint(3, {0, 0}, 0);
        EXPECT_EQ(path.points[4], isNear ? PathPoint(1, 1) : PathPoint(1, 0));
    }
    for (bool const isNear : {true, false}) {
        OpenPath path = SmoothLoop();
        path.ReplacePointIgnoringLock(1, {0, isNear ? 3.1e-4F : 3.2e-4F});
        ASSERT_EQ(path.LockG1(6), 1);
        path.ReplacePointIgnoringLock(5, {1, -3});
        path.ReplacePoint(0, {0, 0}, 0);
        EXPECT_EQ(path.points[5], isNear ? PathPoint(1, -3) : PathPoint(0, -3));
    }
}

// Moving handles.

TEST(HvPath2f_move, TurnsTheOppositeHandleWithItsLength)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePoint(4, {10, 4}, 0);  // the handle before is 3 long
    EXPECT_EQ(path.points[2], PathPoint(10, -3));
    EXPECT_EQ(path.points[4], PathPoint(10, 4));
    path.ReplacePoint(2, {5, 0}, 0);
    EXPECT_EQ(path.points[4], PathPoint(14, 0));
    EXPECT_EQ(path.points[3], PathPoint(10, 0));
}

TEST(HvPath2f_move, TurnsTheOppositeHandleWithTheRatioOfBoth)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePoint(4, {10, 4}, 1);  // 2 long before, 4 now; the other was 3
    EXPECT_EQ(path.points[2], PathPoint(10, -6));
    path.ReplacePoint(2, {9, 0}, 7);
    EXPECT_FLOAT_EQ(path.points[4].x, 10 + 2.0F / 3);
    EXPECT_EQ(path.points[4].y, 0);
}

TEST(HvPath2f_move, ScalesTheRawOffsetWhereTheHandleLayOnItsNode)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePointIgnoringLock(4, {10, 0});
    path.ReplacePoint(4, {10, 2}, 1);  // minus 3 times (0, 2)
    EXPECT_EQ(path.points[2], PathPoint(10, -6));
    EXPECT_EQ(path.points[4], PathPoint(10, 2));
}

TEST(HvPath2f_move, CollapsesTheOppositeHandleWithTheOneOnTheNode)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePoint(4, {10, 0}, 0);
    EXPECT_EQ(path.points[2], PathPoint(10, 0));
    OpenPath ratio = SmoothRun();
    ratio.LockG1(3);
    ratio.ReplacePoint(4, {10, 0}, 1);
    EXPECT_EQ(ratio.points[2], PathPoint(10, 0));
}

TEST(HvPath2f_move, TurnsHandlesAroundASeam)
{
    OpenPath path = SmoothLoop();
    path.LockG1(0);
    path.ReplacePoint(1, {4, 0}, 0);
    EXPECT_EQ(path.points[5], PathPoint(-3, 0));
    path.ReplacePoint(5, {0, -1}, 0);
    EXPECT_EQ(path.points[1], PathPoint(0, 4));
}

TEST(HvPath2f_move, MovesMiddleControlsAlone)
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({1, 0}, {2, 0}, {3, 0});
    PathPoint const quintic[] = {{4, 0}, {5, 0}, {6, 0}, {7, 0}, {8, 0}};
    path.AltCurveto(quintic, 5);
    path.Curveto({9, 0}, {10, 0}, {11, 0});
    ASSERT_EQ(path.LockG1(3), 1);
    ASSERT_EQ(path.LockG1(8), 1);
    for (unsigned int const i : {5u, 6u}) {
        PathImage expected = ImageOf(path);
        expected.points[i] = {0, 9};
        path.ReplacePoint(i, {0, 9}, 0);
        EXPECT_EQ(ImageOf(path), expected);
    }
    path.ReplacePoint(7, {8, 3}, 0);
    EXPECT_EQ(path.points[9], PathPoint(8, -1));
}

TEST(HvPath2f_move, TakesReferencesToItsOwnPoints)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.ReplacePoint(3, path.points[4], 0);
    EXPECT_EQ(path.points[3], PathPoint(12, 0));
    EXPECT_EQ(path.points[4], PathPoint(14, 0));
    path.ReplacePoint(4, path.points[2], 0);
    EXPECT_EQ(path.points[4], PathPoint(9, 0));
    EXPECT_EQ(path.points[2], PathPoint(15, 0));
    path.ReplacePointIgnoringLock(0, path.points[3]);
    EXPECT_EQ(path.points[0], PathPoint(12, 0));
    EXPECT_EQ(path.ReplaceTangentVectorDirections(6, path.points[5]), 1);
    EXPECT_EQ(path.points[7], PathPoint(37, 0)) << "20 + 17";
}

TEST(HvPath2f_move, DoesNothingOutsideThePath)
{
    OpenPath path = Triangle();
    for (unsigned int const i : {4u, kNowhere}) {
        path.ReplacePoint(i, {9, 9}, 0);
        path.ReplacePointIgnoringLock(i, {9, 9});
        EXPECT_EQ(path.ReplaceTangentVectorDirections(i, {9, 9}), 0);
    }
    EXPECT_EQ(ImageOf(path), ImageOf(Triangle()));
    OpenPath empty;
    empty.ReplacePoint(0, {9, 9}, 0);
    EXPECT_EQ(ImageOf(empty), PathImage());
}

TEST(HvPath2f_move, StoresNumbersThatAreNotFinite)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    float const inf = std::numeric_limits<float>::infinity();
    for (PathPoint const p : {PathPoint(nan, 0), PathPoint(inf, -inf), PathPoint(1e38F, -3e38F)}) {
        for (int const keepRatio : {0, 1}) {
            for (unsigned int i = 0; i < 7; ++i) {
                OpenPath path = SmoothLoop();
                path.LockG1(0);
                path.LockG1(3);
                path.ReplacePoint(i, p, keepRatio);
                path.ReplacePoint(i, {1, 1}, keepRatio);
                EXPECT_EQ(path.points[i], PathPoint(1, 1));
            }
        }
    }
}

// Tangents.

TEST(HvPath2f_move, SetsBothHandlesOfANode)
{
    OpenPath path = SmoothRun();
    EXPECT_EQ(path.ReplaceTangentVectorDirections(3, {0, 2}), 1);
    EXPECT_EQ(path.points[2], PathPoint(10, -2));
    EXPECT_EQ(path.points[4], PathPoint(10, 2));
    PathImage const before = ImageOf(path);
    EXPECT_EQ(path.ReplaceTangentVectorDirections(0, {0, 2}), 0) << "an open end";
    EXPECT_EQ(path.ReplaceTangentVectorDirections(12, {0, 2}), 0);
    EXPECT_EQ(path.ReplaceTangentVectorDirections(4, {0, 2}), 0) << "a handle";
    EXPECT_EQ(ImageOf(path), before);
    for (unsigned int const node : {0u, 6u}) {
        OpenPath loop = SmoothLoop();
        EXPECT_EQ(loop.ReplaceTangentVectorDirections(node, {1, 0}), 1);
        EXPECT_EQ(loop.points[5], PathPoint(-1, 0));
        EXPECT_EQ(loop.points[1], PathPoint(1, 0));
    }
}
