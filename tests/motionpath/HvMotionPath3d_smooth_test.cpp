// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Handles that are derived from nodes.

#include <hv/motionpath/HvMotionPath3d.h>

#include <tests/motionpath/motion_path_support.h>

namespace {

/// What rounding may do to coordinates of about 10.
constexpr double kRounding = 1e-14;

/// Three cubics: nodes (0, 0), (3, 0), (6, 0), (9, 0); handles that point nowhere in particular.
Path ThreeCubics()
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({0, 1, 0}, {3, 2, 0}, {3, 0, 0}, 1);
    path.Curveto({4, 5, 0}, {5, 7, 0}, {6, 0, 0}, 2);
    path.Curveto({6, -1, 0}, {8, 5, 0}, {9, 0, 0}, 3);
    return path;
}

TEST(HvMotionPath3d_smooth, LinearizePutsControlsAtThirds)
{
    Path path = ThreeCubics();
    path.LockG1ContinuityAtAllNodes();
    EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(3), 0);
    ASSERT_EQ(path.LinearizeSegment(3), 1);
    ExpectNear(PointOf(path, 4), {4, 0, 0}, kRounding);
    ExpectNear(PointOf(path, 5), {5, 0, 0}, kRounding);
    EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(3), 1);
    EXPECT_EQ(KindOf(path, 3), Path::CurveNode) << "it is not marked straight";
    int const locked[4] = {1, 0, 0, 1};
    for (unsigned int k = 0; k < 4; ++k) {
        EXPECT_EQ(path.IsG1ContinuityLocked(3 * k), locked[k]);
    }
}

TEST(HvMotionPath3d_smooth, LinearizeRefusesWhereNoSegmentStarts)
{
    Path path = ThreeCubics();
    auto const before = ImageOf(path);
    for (unsigned int point : {1u, 5u, 9u, 12u, 4294967295u}) {
        EXPECT_EQ(path.LinearizeSegment(point), 0);
        EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(point), 0);
        EXPECT_EQ(path.SmoothSegment(point), 0);
    }
    EXPECT_EQ(ImageOf(path), before);
    EXPECT_EQ(Path().LinearizeSegment(0), 0);
}

TEST(HvMotionPath3d_smooth, StraightSegmentNeedsNoLinearizing)
{
    Path path({0, 0, 0}, {3, 3, 3}, 0, 1);
    auto const before = ImageOf(path);
    EXPECT_EQ(path.LinearizeSegment(0), 1);
    EXPECT_EQ(ImageOf(path), before);
    EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(0), 0) << "both controls are at its end";
}

TEST(HvMotionPath3d_smooth, ThirdsAreMetWithinTheirTolerance)
{
    Path path = ThreeCubics();
    path.LinearizeSegment(3);
    for (Point const& off : {Point(9e-8, 0, 0), Point(0, -9e-8, 0), Point(0, 0, 9e-8)}) {
        path.ReplaceControlPoint(4, Point(4, 0, 0) + off, 0);
        EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(3), 1);
        path.ReplaceControlPoint(4, Point(4, 0, 0) + off * 2, 0);
        EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(3), 0);
    }
    path.ReplaceControlPoint(4, {4, 0, 0}, 0);
    path.ReplaceControlPoint(5, {kNaN, 0, 0}, 0);
    EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(3), 0);
}

TEST(HvMotionPath3d_smooth, FirstSegmentFollowsTheSecond)
{
    Path path = ThreeCubics();
    ASSERT_EQ(path.SmoothSegment(0), 1);
    // d = (3, 0) - (4, 5), the chord 3: the handle is 1 long; the node is collinear already.
    double const root = std::sqrt(26.0);
    ExpectNear(PointOf(path, 2), {3 - 1 / root, -5 / root, 0}, kRounding);
    ExpectNear(PointOf(path, 4), {4, 5, 0}, kRounding);
    EXPECT_EQ(PointOf(path, 1), Point(0, 1, 0));
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 1);
    EXPECT_EQ(path.IsG1ContinuityLocked(0), 0);
}

TEST(HvMotionPath3d_smooth, LastSegmentFollowsTheOneBefore)
{
    Path path = ThreeCubics();
    ASSERT_EQ(path.SmoothSegment(6), 1);
    double const root = std::sqrt(50.0);
    ExpectNear(PointOf(path, 7), {6 + 1 / root, -7 / root, 0}, kRounding);
    ExpectNear(PointOf(path, 5), {5, 7, 0}, kRounding);
    EXPECT_EQ(PointOf(path, 8), Point(8, 5, 0));
    EXPECT_EQ(path.IsG1ContinuityLocked(6), 1);
    EXPECT_EQ(path.IsG1ContinuityLocked(9), 0);
}

TEST(HvMotionPath3d_smooth, MiddleSegmentFollowsBothNeighbours)
{
    Path path = ThreeCubics();
    ASSERT_EQ(path.SmoothSegment(3), 1);
    ExpectNear(PointOf(path, 4), {3, -1, 0}, kRounding);
    ExpectNear(PointOf(path, 5), {6, 1, 0}, kRounding);
    ExpectNear(PointOf(path, 2), {3, 2, 0}, kRounding);
    ExpectNear(PointOf(path, 7), {6, -1, 0}, kRounding);
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 1);
    EXPECT_EQ(path.IsG1ContinuityLocked(6), 1);
}

TEST(HvMotionPath3d_smooth, StraightNeighbourGivesItsChordAndNoLock)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Lineto({0, 4, 0}, 1);
    path.Curveto({1, 5, 0}, {2, 5, 0}, {3, 4, 0}, 2);
    path.Lineto({3, 0, 0}, 3);
    ASSERT_EQ(path.SmoothSegment(3), 1);
    ExpectNear(PointOf(path, 4), {0, 5, 0}, kRounding);
    ExpectNear(PointOf(path, 5), {3, 5, 0}, kRounding);
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 0);
    EXPECT_EQ(path.IsG1ContinuityLocked(6), 0);
    EXPECT_EQ(path.SmoothSegment(0), 0) << "a straight one";
    EXPECT_EQ(path.SmoothSegment(6), 0);
}

TEST(HvMotionPath3d_smooth, OnlySegmentIsSmooth)
{
    Path path({0, 0, 0}, {3, 0, 0}, 0, 1, {0, 1, 0}, {3, 1, 0});
    auto const before = ImageOf(path);
    EXPECT_EQ(path.SmoothSegment(0), 1);
    EXPECT_EQ(ImageOf(path), before);
}

TEST(HvMotionPath3d_smooth, NeighbourWithoutDirectionRefusesBothEnds)
{
    // A squared length of 1e-7 is 3.16e-4.
    for (double const handle : {0.0, 3.1e-4}) {
        Path path = ThreeCubics();
        path.ReplaceControlPoint(7, {6 + handle, 0, 0}, 0);
        auto const before = ImageOf(path);
        EXPECT_EQ(path.SmoothSegment(3), 0);
        EXPECT_EQ(ImageOf(path), before) << "the near end is not touched either";
        path = ThreeCubics();
        path.ReplaceControlPoint(2, {3, handle, 0}, 0);
        auto const other = ImageOf(path);
        EXPECT_EQ(path.SmoothSegment(3), 0);
        EXPECT_EQ(ImageOf(path), other);
        path.ReplaceControlPoint(4, {3, handle, 0}, 0);
        EXPECT_EQ(path.SmoothSegment(0), 0);
        path.ReplaceControlPoint(5, {6, handle, 0}, 0);
        EXPECT_EQ(path.SmoothSegment(6), 0);
    }
    Path path = ThreeCubics();
    path.ReplaceControlPoint(7, {6 + 3.2e-4, 0, 0}, 0);
    EXPECT_EQ(path.SmoothSegment(3), 1);
    path.ReplaceControlPoint(7, {kNaN, 0, 0}, 0);
    EXPECT_EQ(path.SmoothSegment(3), 0);
    path.ReplaceControlPointIgnoringLock(7, {kInfinity, 0, 0});
    EXPECT_EQ(path.SmoothSegment(3), 0);
}

TEST(HvMotionPath3d_smooth, SegmentWithoutAChordGetsNoLock)
{
    Path path = ThreeCubics();
    path.ReplaceControlPoint(6, {3, 0, 0}, 0);  // the middle segment's end onto its start
    ASSERT_EQ(path.SmoothSegment(3), 1);
    EXPECT_EQ(PointOf(path, 4), Point(3, 0, 0));
    EXPECT_EQ(path.IsG1ContinuityLocked(3), 0) << "handles of no length have no line";
}

// Adjusting two cubics.

void ExpectAdjusted(Path const& path, unsigned int first, Point const& direction)
{
    Point p[7];
    double t[7];
    ASSERT_EQ(path.GetControlPoints(first, first + 6, p, t), 1);
    ExpectNear(p[2], p[3] - direction * (Distance(p[0], p[3]) / 3), kRounding);
    ExpectNear(p[4], p[3] + direction * (Distance(p[3], p[6]) / 3), kRounding);
}

TEST(HvMotionPath3d_smooth, AdjustedJoinIsSmoothAndItsHandlesAreThirds)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({9, 9, 9}, {8, 8, 8}, {2, 6, 0}, 1);
    path.Curveto({7, 7, 7}, {6, 6, 6}, {4, 0, 3}, 2);
    Point direction(9, 9, 9);
    ASSERT_EQ(path.AdjustFirstTwoCubics(direction), 1);
    ExpectNear(direction, {0.8, 0, 0.6}, kRounding);
    ExpectAdjusted(path, 0, {0.8, 0, 0.6});
    // Both ends of the path: half-way to the other control.
    ExpectNear(PointOf(path, 1), PointOf(path, 2) * 0.5, kRounding);
    ExpectNear(PointOf(path, 5), (PointOf(path, 4) + Point(4, 0, 3)) * 0.5, kRounding);
    auto const image = ImageOf(path);
    ASSERT_EQ(path.AdjustLastTwoCubics(direction), 1) << "the same two";
    EXPECT_EQ(ImageOf(path), image);
    EXPECT_EQ(path.LockG1Continuity(3), 1);
}

TEST(HvMotionPath3d_smooth, AdjustingKeepsTheDirectionOfAnInnerHandle)
{
    Path path = ThreeCubics();
    Point direction;
    ASSERT_EQ(path.AdjustFirstTwoCubics(direction), 1);
    ExpectAdjusted(path, 0, {1, 0, 0});
    double const root = std::sqrt(50.0);
    ExpectNear(PointOf(path, 5), {6 - 1 / root, 7 / root, 0}, kRounding);
    EXPECT_EQ(PointOf(path, 7), Point(6, -1, 0)) << "beyond the two";

    path = ThreeCubics();
    ASSERT_EQ(path.AdjustLastTwoCubics(direction), 1);
    ExpectAdjusted(path, 3, {1, 0, 0});
    double const other = std::sqrt(26.0);
    ExpectNear(PointOf(path, 4), {3 + 1 / other, 5 / other, 0}, kRounding);
    ExpectNear(PointOf(path, 8), {8, 0, 0}, kRounding);
    EXPECT_EQ(PointOf(path, 2), Point(3, 2, 0));

    path = ThreeCubics();
    path.ReplaceControlPoint(5, {6, 0, 0}, 0);  // no direction to keep
    ASSERT_EQ(path.AdjustFirstTwoCubics(direction), 1);
    ExpectNear(PointOf(path, 5), {5, 0, 0}, kRounding);
}

TEST(HvMotionPath3d_smooth, AdjustingAnEvenLineGivesThirds)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({9, 9, 9}, {8, 8, 8}, {3, 0, 0}, 1);
    path.Curveto({7, 7, 7}, {6, 6, 6}, {6, 0, 0}, 2);
    Point direction;
    ASSERT_EQ(path.AdjustLastTwoCubics(direction), 1);
    for (unsigned int i = 0; i < 7; ++i) {
        ExpectNear(PointOf(path, i), {i * 1.0, 0, 0}, kRounding);
    }
}

TEST(HvMotionPath3d_smooth, CoincidentNeighboursUseTheGivenDirection)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({9, 9, 9}, {8, 8, 8}, {3, 0, 0}, 1);
    path.Curveto({7, 7, 7}, {6, 6, 6}, {5e-8, 0, 0}, 2);
    Point direction(0, 2, 0);
    ASSERT_EQ(path.AdjustFirstTwoCubics(direction), 1);
    EXPECT_EQ(direction, Point(0, 2, 0));
    ExpectNear(PointOf(path, 2), {3, -1, 0}, 1e-7);
    ExpectNear(PointOf(path, 4), {3, 1, 0}, 1e-7);

    direction = Point();
    ASSERT_EQ(path.AdjustFirstTwoCubics(direction), 1);
    EXPECT_EQ(direction, Point());
    double const thirds[7] = {0, 1, 2, 3, 2, 1, 0};
    for (unsigned int i = 0; i < 7; ++i) {
        ExpectNear(PointOf(path, i), {thirds[i], 0, 0}, 1e-7);
    }
    direction = Point(kNaN, 0, 0);
    EXPECT_EQ(path.AdjustFirstTwoCubics(direction), 1);
}

TEST(HvMotionPath3d_smooth, AdjustingNeedsTwoCubics)
{
    Point direction(1, 2, 3);
    Path path({0, 0, 0}, {3, 0, 0}, 0, 1, {0, 1, 0}, {3, 1, 0});
    EXPECT_EQ(path.AdjustFirstTwoCubics(direction), 0);
    EXPECT_EQ(path.AdjustLastTwoCubics(direction), 0);
    EXPECT_EQ(Path().AdjustFirstTwoCubics(direction), 0);
    path.Lineto({6, 0, 0}, 2);
    auto const before = ImageOf(path);
    EXPECT_EQ(path.AdjustFirstTwoCubics(direction), 0);
    EXPECT_EQ(path.AdjustLastTwoCubics(direction), 0);
    EXPECT_EQ(ImageOf(path), before);
    EXPECT_EQ(direction, Point(1, 2, 3));
}

}  // namespace
