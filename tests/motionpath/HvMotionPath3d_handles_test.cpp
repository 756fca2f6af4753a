// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points that move, and nodes that stay smooth.

#include <hv/motionpath/HvMotionPath3d.h>

#include <hv/rotation/HvTransfo4.h>
#include <tests/motionpath/motion_path_support.h>

namespace {

/// Two cubics along x whose handles at the node between, (3, 0, 0), are 1 and 2 long and collinear.
Path SmoothPath()
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({1, 1, 0}, {2, 0, 0}, {3, 0, 0}, 1);
    path.Curveto({5, 0, 0}, {6, 3, 0}, {7, 0, 0}, 3);
    EXPECT_EQ(path.LockG1Continuity(3), 1);
    EXPECT_EQ(PointOf(path, 2), Point(2, 0, 0));
    EXPECT_EQ(PointOf(path, 4), Point(5, 0, 0));
    return path;
}

TEST(HvMotionPath3d_handles, ReplaceNodeRefusesTimesAtOrBeyondItsNeighbours)
{
    Path path = SmoothPath();
    auto const before = ImageOf(path);
    Point const p(9, 9, 9);
    struct Case {
        unsigned int point;
        double t;
        double gap;
    };
    for (Case const& c : {Case{3, 0, 0},         Case{3, 3, 0},        Case{3, -1, 0},
                          Case{3, 4, 0},         Case{3, 0.5, 0.5},    Case{3, 2.5, 0.5},
                          Case{0, 1, 0},         Case{0, 0.5, 0.5},    Case{6, 1, 0},
                          Case{6, 1.5, 0.5},     Case{3, 1, -1e-9},    Case{3, 1, kNaN},
                          Case{3, 1, kInfinity}, Case{3, kNaN, 0},     Case{0, -kInfinity, 0},
                          Case{6, kInfinity, 0}, Case{1, 0.5, 0},      Case{2, 0.5, 0},
                          Case{9, 5, 0},         Case{0, 1 - 1e-31, 0}}) {
        EXPECT_EQ(path.ReplaceNode(c.point, p, c.t, c.gap), 0) << c.point << " " << c.t;
        EXPECT_EQ(ImageOf(path), before);
    }
    EXPECT_EQ(Path().ReplaceNode(0, p, 0, 0), 0);
}

TEST(HvMotionPath3d_handles, ReplaceNodeTakesTheControlsOfALockedNodeAlong)
{
    Path path = SmoothPath();
    ASSERT_EQ(path.ReplaceNode(3, {3, 1, 2}, 1.5, 0.25), 1);
    EXPECT_EQ(PointOf(path, 2), Point(2, 1, 2));
    EXPECT_EQ(PointOf(path, 3), Point(3, 1, 2));
    EXPECT_EQ(PointOf(path, 4), Point(5, 1, 2));
    EXPECT_EQ(TimeOf(path, 3), 1.5);
    ASSERT_EQ(path.UnlockG1Continuity(3), 1);
    ASSERT_EQ(path.ReplaceNode(3, {0, 0, 0}, 1, 0), 1);
    EXPECT_EQ(PointOf(path, 2), Point(2, 1, 2));
    EXPECT_EQ(PointOf(path, 4), Point(5, 1, 2));
}

TEST(HvMotionPath3d_handles, ReplaceNodeAtTheEndsHasOneControl)
{
    Path path = SmoothPath();
    path.LockG1Continuity(0);
    path.LockG1Continuity(6);
    ASSERT_EQ(path.ReplaceNode(0, {0, 0, 1}, -5, 0), 1);
    ASSERT_EQ(path.ReplaceNode(6, {7, 0, 1}, 50, 0), 1);
    EXPECT_EQ(PointOf(path, 1), Point(1, 1, 1));
    EXPECT_EQ(PointOf(path, 5), Point(6, 3, 1));
    EXPECT_EQ(path.GetFirstTime(0), -5);
    EXPECT_EQ(path.GetLastTime(0), 50);
    Path single;
    single.Moveto({}, 0);
    EXPECT_EQ(single.ReplaceNode(0, {1, 2, 3}, -7, 100), 1);
    EXPECT_EQ(PointOf(single, 0), Point(1, 2, 3));
    EXPECT_EQ(TimeOf(single, 0), -7);
}

TEST(HvMotionPath3d_handles, MovedControlTurnsTheOppositeOneWithItsLength)
{
    Path path = SmoothPath();
    ASSERT_EQ(path.ReplaceControlPoint(4, {3, 4, 0}, 0), 1);
    EXPECT_EQ(PointOf(path, 4), Point(3, 4, 0));
    EXPECT_EQ(PointOf(path, 2), Point(3, -1, 0));
    path = SmoothPath();
    ASSERT_EQ(path.ReplaceControlPoint(2, {3, 4, 0}, 0), 1);
    EXPECT_EQ(PointOf(path, 2), Point(3, 4, 0));
    EXPECT_EQ(PointOf(path, 4), Point(3, -2, 0));
}

TEST(HvMotionPath3d_handles, MovedControlMayKeepTheRatioOfTheHandles)
{
    Path path = SmoothPath();
    ASSERT_EQ(path.ReplaceControlPoint(4, {3, 4, 0}, 1), 1);  // twice as long as before
    EXPECT_EQ(PointOf(path, 2), Point(3, -2, 0));
    path = SmoothPath();
    ASSERT_EQ(path.TranslateControlPoint(2, {1, 0.5, 0}, 1), 1);  // to (3, 0.5): half as long
    EXPECT_EQ(PointOf(path, 2), Point(3, 0.5, 0));
    EXPECT_EQ(PointOf(path, 4), Point(3, -1, 0));
}

TEST(HvMotionPath3d_handles, HandleWithoutLengthHasNoRatio)
{
    Path path = SmoothPath();
    ASSERT_EQ(path.ReplaceControlPoint(4, {3, 0, 0}, 1), 1) << "onto the node";
    EXPECT_EQ(PointOf(path, 2), Point(2, 0, 0)) << "no direction to turn to";
    ASSERT_EQ(path.ReplaceControlPoint(4, {3, 4, 0}, 1), 1) << "off it again";
    EXPECT_EQ(PointOf(path, 2), Point(3, -1, 0)) << "its old length";
}

TEST(HvMotionPath3d_handles, OppositeControlStaysWhereNothingBindsIt)
{
    Path path = SmoothPath();
    path.UnlockG1Continuity(3);
    path.ReplaceControlPoint(4, {3, 4, 0}, 0);
    EXPECT_EQ(PointOf(path, 2), Point(2, 0, 0));
    // The outer controls of the path have no opposite.
    path = SmoothPath();
    path.LockG1Continuity(0);
    path.LockG1Continuity(6);
    EXPECT_EQ(path.ReplaceControlPoint(1, {9, 9, 9}, 1), 1);
    EXPECT_EQ(path.ReplaceControlPoint(5, {8, 8, 8}, 1), 1);
    EXPECT_EQ(PointOf(path, 2), Point(2, 0, 0));
    EXPECT_EQ(PointOf(path, 4), Point(5, 0, 0));
    // A straight segment starts at the locked node.
    path = SmoothPath();
    path.LockG1Continuity(6);
    path.Lineto({9, 9, 0}, 4);
    path.ReplaceControlPoint(7, {9, 8, 0}, 0);
    EXPECT_EQ(PointOf(path, 5), Point(6, 3, 0));
}

TEST(HvMotionPath3d_handles, SinglePointIsReplaced)
{
    Path path;
    path.Moveto({}, 0);
    EXPECT_EQ(path.ReplaceControlPoint(0, {1, 2, 3}, 0), 1);
    EXPECT_EQ(path.TranslateControlPoint(0, {1, 1, 1}, 0), 1);
    EXPECT_EQ(PointOf(path, 0), Point(2, 3, 4));
}

TEST(HvMotionPath3d_handles, IndicesOutOfRangeAreRefused)
{
    Path path = SmoothPath();
    auto const before = ImageOf(path);
    for (unsigned int point : {7u, 9u, 4294967295u}) {
        EXPECT_EQ(path.ReplaceControlPoint(point, {}, 0), 0);
        EXPECT_EQ(path.TranslateControlPoint(point, {}, 0), 0);
        EXPECT_EQ(path.ReplaceControlPointIgnoringLock(point, {}), 0);
        EXPECT_EQ(path.ReplaceTangentVectorDirections(point, {}), 0);
        EXPECT_EQ(path.LockG1Continuity(point), 0);
        EXPECT_EQ(path.UnlockG1Continuity(point), 0);
        EXPECT_EQ(path.IsG1ContinuityLocked(point), 0);
    }
    EXPECT_EQ(ImageOf(path), before);
    EXPECT_EQ(Path().ReplaceControlPoint(0, {}, 0), 0);
}

TEST(HvMotionPath3d_handles, LockMayBeIgnored)
{
    Path path = SmoothPath();
    EXPECT_EQ(path.ReplaceControlPointIgnoringLock(3, {9, 9, 9}), 1);
    EXPECT_EQ(PointOf(path, 2), Point(2, 0, 0));
    EXPECT_EQ(PointOf(path, 3), Point(9, 9, 9));
    EXPECT_EQ(PointOf(path, 4), Point(5, 0, 0));
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 1);
}

TEST(HvMotionPath3d_handles, TangentVectorIsSetOnBothSidesOfAnInnerNode)
{
    Path path = SmoothPath();
    EXPECT_EQ(path.ReplaceTangentVectorDirections(3, {1, 2, 3}), 1);
    EXPECT_EQ(PointOf(path, 2), Point(2, -2, -3));
    EXPECT_EQ(PointOf(path, 4), Point(4, 2, 3));
    auto const before = ImageOf(path);
    for (unsigned int point : {0u, 1u, 2u, 4u, 6u}) {
        EXPECT_EQ(path.ReplaceTangentVectorDirections(point, {1, 1, 1}), 0);
    }
    EXPECT_EQ(ImageOf(path), before);
}

TEST(HvMotionPath3d_handles, TransformMapsPointsAndNotTimes)
{
    Path path = SmoothPath();
    HvTransfo4 transfo;
    transfo.Translate(1, 2, 3);
    transfo.Scale(2, 2, 2);
    EXPECT_EQ(path.Transform(transfo), 1);
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(PointOf(path, i), PointOf(SmoothPath(), i) * 2.0 + Point(1, 2, 3));
    }
    EXPECT_EQ(path.GetLastTime(0), 3);
    EXPECT_EQ(Path().Transform(transfo), 1);
}

TEST(HvMotionPath3d_handles, LockAlignsAnInnerNode)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({0, 1, 0}, {1, 0, 0}, {3, 0, 0}, 1);
    path.Curveto({3, 4, 0}, {5, 5, 0}, {9, 0, 0}, 2);
    ASSERT_EQ(path.LockG1Continuity(3), 1);
    double const root = std::sqrt(5.0);
    ExpectNear(PointOf(path, 2), {3 - 2 / root, -4 / root, 0}, 1e-15);
    ExpectNear(PointOf(path, 4), {3 + 4 / root, 8 / root, 0}, 4e-15);
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 1);
    EXPECT_EQ(path.UnlockG1Continuity(3), 1);
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 0);
    ExpectNear(PointOf(path, 2), {3 - 2 / root, -4 / root, 0}, 1e-15);
}

TEST(HvMotionPath3d_handles, LockNeedsHandles)
{
    for (double const length : {0.0, 9e-8}) {
        Path path;
        path.Moveto({0, 0, 0}, 0);
        path.Curveto({1, 1, 0}, {2, 0, 0}, {3, 0, 0}, 1);
        path.Curveto({3, length, 0}, {6, 3, 0}, {7, 0, 0}, 3);
        auto const before = ImageOf(path);
        EXPECT_EQ(path.LockG1Continuity(3), 0);
        EXPECT_EQ(ImageOf(path), before);
        path.ReplaceControlPoint(4, {5, 0, 0}, 0);
        path.ReplaceControlPoint(2, {3, length, 0}, 0);
        EXPECT_EQ(path.LockG1Continuity(3), 0);
    }
    // Handles that lie on each other have no mean direction.
    Path cusp;
    cusp.Moveto({0, 0, 0}, 0);
    cusp.Curveto({1, 1, 0}, {3, 1, 0}, {3, 0, 0}, 1);
    cusp.Curveto({3, 1, 0}, {6, 3, 0}, {7, 0, 0}, 3);
    EXPECT_EQ(cusp.LockG1Continuity(3), 0);
    EXPECT_EQ(cusp.IsG1ContinuityLocked(3), 0);
    cusp.ReplaceControlPoint(4, {kNaN, 1, 0}, 0);
    EXPECT_EQ(cusp.LockG1Continuity(3), 0);
    EXPECT_EQ(PointOf(cusp, 2), Point(3, 1, 0));
}

TEST(HvMotionPath3d_handles, LockOfAnEndMovesNothing)
{
    Path path = SmoothPath();
    Path const old(path);
    EXPECT_EQ(path.LockG1Continuity(0), 1);
    EXPECT_EQ(path.LockG1Continuity(6), 1);
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(PointOf(path, i), PointOf(old, i));
    }
    EXPECT_EQ(path.IsG1ContinuityLocked(0), 1);
    EXPECT_EQ(path.IsG1ContinuityLocked(6), 1);
}

TEST(HvMotionPath3d_handles, LockIsRefusedBesideStraightSegmentsAndOnControls)
{
    Path path = SmoothPath();
    path.Lineto({9, 9, 9}, 5);
    path.PreLineto({-9, 9, 9}, -5);
    auto const before = ImageOf(path);
    for (unsigned int point : {0u, 3u, 9u, 12u, 4u, 5u}) {
        EXPECT_EQ(path.LockG1Continuity(point), 0) << point;
    }
    EXPECT_EQ(ImageOf(path), before);
    EXPECT_EQ(path.LockG1Continuity(6), 1);
    Path single;
    single.Moveto({}, 0);
    EXPECT_EQ(single.LockG1Continuity(0), 0);
    EXPECT_EQ(single.UnlockG1Continuity(0), 1);
}

TEST(HvMotionPath3d_handles, AllNodesAreLockedThatCanBe)
{
    Path path = SmoothPath();
    path.UnlockG1Continuity(3);
    path.Lineto({9, 9, 9}, 5);
    path.Curveto({10, 9, 9}, {11, 9, 9}, {12, 9, 9}, 6);
    path.LockG1ContinuityAtAllNodes();
    int const locked[5] = {1, 1, 0, 0, 1};
    for (unsigned int k = 0; k < 5; ++k) {
        EXPECT_EQ(path.IsG1ContinuityLocked(3 * k), locked[k]) << k;
    }
    EXPECT_EQ(path.IsG1ContinuityLocked(4), 0) << "a control, whatever its node";
}

/// All edits that take or meet coordinates, on a path one point of which is hostile.
void EditAll(Path& path, Point const& p)
{
    unsigned int point = 0;
    int exact = 0;
    Point direction = p;
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        path.LockG1Continuity(i);
        path.ReplaceControlPoint(i, p, 1);
        path.TranslateControlPoint(i, p, 0);
        path.ReplaceTangentVectorDirections(i, p);
        path.SmoothSegment(i);
        path.IsCubicSegmentLinearlyParameterized(i);
        path.AdjustFirstTwoCubics(direction);
        path.AdjustLastTwoCubics(direction);
        path.InsertNode(0.5, 1e-1, 0, point, exact);
        path.GetClosestControlPointIndex(p, p.x, point);
        EXPECT_LT(point, path.NumPoints());
    }
}

TEST(HvMotionPath3d_handles, HostileCoordinatesEnd)
{
    for (double const number : kHostileNumbers) {
        for (Point const& p : {Point(number, 0, 0), Point(1, number, -number)}) {
            Path path = SmoothPath();
            EditAll(path, p);
            EXPECT_EQ(path.NumPoints(), 3 * path.NumNodes() - 2);
            for (double t = -1; t < 4; t += 0.25) {
                At(path, t, 1e-1);
            }
            // The archive takes what is finite of it.
            Path read;
            EXPECT_NE(read.ReadFromBufferBody(ArchiveOf(path).data() + 4), 0u);
        }
    }
}

}  // namespace
