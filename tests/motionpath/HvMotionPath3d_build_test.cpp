// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Segments and nodes that come and go.

#include <hv/motionpath/HvMotionPath3d.h>

#include <tests/motionpath/motion_path_support.h>
#include <tests/support/allocation_failure.h>

namespace {

/// Three curved segments along x, each with its own height: nodes at x = 0, 3, 6, 9 and times 0, 1,
/// 2, 3.
Path ThreeCubics()
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    for (int i = 0; i < 3; ++i) {
        path.Curveto({3.0 * i + 1, 1.0 + i, 0}, {3.0 * i + 2, 1.0 + i, i * 1.0},
                     {3.0 * i + 3, 0, 0}, i + 1.0);
    }
    return path;
}

void ExpectRefused(Path& path, int result, std::vector<std::uint64_t> const& before)
{
    EXPECT_EQ(result, 0);
    EXPECT_EQ(ImageOf(path), before);
}

TEST(HvMotionPath3d_build, MovetoBeginsAPathOnce)
{
    Path path;
    EXPECT_EQ(path.Moveto({1, 2, 3}, kNaN), 0);
    EXPECT_EQ(path.Moveto({1, 2, 3}, kInfinity), 0);
    EXPECT_EQ(path.Moveto({1, 2, 3}, 4), 1);
    auto const before = ImageOf(path);
    ExpectRefused(path, path.Moveto({5, 6, 7}, 8), before);
    EXPECT_EQ(path.IsG1ContinuityLocked(0), 0);
    EXPECT_EQ(path.GetClientData(0), nullptr);
}

TEST(HvMotionPath3d_build, NothingIsAddedToAPathWithoutPoints)
{
    Path path;
    EXPECT_EQ(path.Lineto({}, 1), 0);
    EXPECT_EQ(path.PreLineto({}, 1), 0);
    EXPECT_EQ(path.Curveto({}, {}, {}, 1), 0);
    EXPECT_EQ(path.PreCurveto({}, {}, {}, 1), 0);
    EXPECT_EQ(path.NumPoints(), 0u);
}

TEST(HvMotionPath3d_build, TimesMustRise)
{
    Path path = ThreeCubics();
    auto const before = ImageOf(path);
    for (double const t : {3.0, 2.0, kNaN, kInfinity, -kInfinity}) {
        ExpectRefused(path, path.Lineto({}, t), before);
        ExpectRefused(path, path.Curveto({}, {}, {}, t), before);
    }
    for (double const t : {0.0, 1.0, kNaN, kInfinity, -kInfinity}) {
        ExpectRefused(path, path.PreLineto({}, t), before);
        ExpectRefused(path, path.PreCurveto({}, {}, {}, t), before);
    }
    ExpectRefused(path, path.PreLineto({}, -1e-30), before);
    EXPECT_EQ(path.PreLineto({}, -2e-30), 1);
}

TEST(HvMotionPath3d_build, LinetoPutsBothControlsOnItsEnd)
{
    Path path = ThreeCubics();
    path.LockG1Continuity(9);
    ASSERT_EQ(path.Lineto({7, 8, 9}, 5), 1);
    for (unsigned int i = 10; i < 13; ++i) {
        EXPECT_EQ(PointOf(path, i), Point(7, 8, 9));
    }
    EXPECT_EQ(KindOf(path, 9), Path::LineNode);
    EXPECT_EQ(KindOf(path, 12), Path::LastCurveNode);
    EXPECT_EQ(path.IsG1ContinuityLocked(9), 1) << "the lock stays";
    EXPECT_EQ(At(path, 4), Point(8, 4, 4.5));
}

TEST(HvMotionPath3d_build, PreLinetoPutsBothControlsOnItsStart)
{
    Path path = ThreeCubics();
    ASSERT_EQ(path.PreLineto({7, 8, 9}, -2), 1);
    EXPECT_EQ(path.NumPoints(), 13u);
    for (unsigned int i = 0; i < 3; ++i) {
        EXPECT_EQ(PointOf(path, i), Point(7, 8, 9));
    }
    EXPECT_EQ(PointOf(path, 3), Point(0, 0, 0));
    EXPECT_EQ(KindOf(path, 0), Path::LineNode);
    EXPECT_EQ(KindOf(path, 3), Path::CurveNode);
    EXPECT_EQ(TimeOf(path, 0), -2);
    EXPECT_EQ(At(path, -1), Point(3.5, 4, 4.5));
}

TEST(HvMotionPath3d_build, PreCurvetoIsTheMirrorOfCurveto)
{
    Path path;
    path.Moveto({4, 0, 0}, 4);
    ASSERT_EQ(path.PreCurveto({3, 0, 0}, {2, 0, 0}, {1, 0, 0}, 1), 1);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(PointOf(path, i), Point(i + 1.0, 0, 0));
    }
}

TEST(HvMotionPath3d_build, NewCubicIsAlignedAtALockedEnd)
{
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({0, 1, 0}, {1, 0, 0}, {3, 0, 0}, 1);
    ASSERT_EQ(path.LockG1Continuity(3), 1);
    ASSERT_EQ(path.Curveto({3, 4, 0}, {5, 5, 0}, {9, 0, 0}, 2), 1);
    // Handles (-2, 0) and (0, 4): the mean of (-2, 0) and (0, -4) is (-1, -2).
    double const root = std::sqrt(5.0);
    ExpectNear(PointOf(path, 2), {3 - 2 / root, -4 / root, 0}, 1e-15);
    ExpectNear(PointOf(path, 4), {3 + 4 / root, 8 / root, 0}, 4e-15);
    EXPECT_EQ(PointOf(path, 5), Point(5, 5, 0));

    ASSERT_EQ(path.LockG1Continuity(0), 1);
    ASSERT_EQ(path.PreCurveto({0, -1, 0}, {5, 5, 5}, {6, 6, 6}, -1), 1);
    EXPECT_EQ(PointOf(path, 2), Point(0, -1, 0)) << "collinear already";
    EXPECT_EQ(PointOf(path, 4), Point(0, 1, 0));
}

TEST(HvMotionPath3d_build, NewCubicIsNotAlignedBesideAStraightSegment)
{
    Path path({0, 0, 0}, {3, 0, 0}, 0, 1);
    ASSERT_EQ(path.UnlockG1Continuity(3), 1);
    ASSERT_EQ(path.Curveto({3, 4, 0}, {5, 5, 0}, {9, 0, 0}, 2), 1);
    EXPECT_EQ(PointOf(path, 2), Point(3, 0, 0));
    EXPECT_EQ(PointOf(path, 4), Point(3, 4, 0));
}

TEST(HvMotionPath3d_build, CurvetoBehindARemovedStraightSegmentIsCurved)
{
    Path path = ThreeCubics();
    path.Lineto({12, 0, 0}, 4);
    path.RemoveNodes(12, 12);
    ASSERT_EQ(KindOf(path, 9), Path::LastLineNode);
    ASSERT_EQ(path.Curveto({10, 1, 0}, {11, 1, 0}, {12, 0, 0}, 4), 1);
    EXPECT_EQ(KindOf(path, 9), Path::CurveNode);
}

TEST(HvMotionPath3d_build, InsertNodeOutsideFindsNothing)
{
    Path path = ThreeCubics();
    auto const before = ImageOf(path);
    for (double const t : {-1.0, 3.0, 4.0, kNaN, kInfinity}) {
        unsigned int point = 99;
        int exact = 7;
        ExpectRefused(path, path.InsertNode(t, 1e-3, 0.1, point, exact), before);
        EXPECT_EQ(point, 99u);
    }
    unsigned int point = 99;
    int exact = 7;
    EXPECT_EQ(Path().InsertNode(0, 1, 1, point, exact), 0);
    EXPECT_EQ(point, 99u);
}

TEST(HvMotionPath3d_build, InsertNodeFindsTheNodeAtOrNearATime)
{
    Path path = ThreeCubics();
    auto const before = ImageOf(path);
    struct Case {
        double t;
        double nearTime;
        unsigned int point;
    };
    for (Case const& c : {Case{1, 0, 3}, Case{1.25, 0.5, 3}, Case{1.75, 0.5, 6}, Case{0, 0, 0}}) {
        unsigned int point = 99;
        int exact = 7;
        ExpectRefused(path, path.InsertNode(c.t, 1e-3, c.nearTime, point, exact), before);
        EXPECT_EQ(exact, 1);
        EXPECT_EQ(point, c.point);
    }
    // The limits themselves are not near.
    unsigned int point = 99;
    int exact = 7;
    EXPECT_EQ(path.InsertNode(1.5, 1e-3, 0.5, point, exact), 1);
    EXPECT_EQ(exact, 0);
    EXPECT_EQ(point, 6u);
}

TEST(HvMotionPath3d_build, InsertNodeKeepsShapeAndPlace)
{
    PathSource source(1);
    for (int round = 0; round < 20; ++round) {
        Path path = source.CurvedPath(3);
        Path const old(path);
        double const t = source.Number(TimeOf(path, 3), TimeOf(path, 6));
        constexpr double kTolerance = 1e-6;
        Point const expected = At(path, t, kTolerance);
        unsigned int point = 99;
        int exact = 7;
        ASSERT_EQ(path.InsertNode(t, kTolerance, 1e-9, point, exact), 1);
        EXPECT_EQ(point, 6u);
        EXPECT_EQ(path.NumPoints(), 13u);
        EXPECT_EQ(TimeOf(path, 6), t);
        // `expected` may be a tolerance off the curve, so two off the polyline on which it is
        // located, whose points are one off the curve's at the same parameter.
        ExpectNear(PointOf(path, 6), expected, 3 * kTolerance);
        EXPECT_EQ(KindOf(path, 6), Path::CurveNode);
        for (unsigned int i = 0; i < 4; ++i) {
            EXPECT_EQ(PointOf(path, i), PointOf(old, i));
            EXPECT_EQ(PointOf(path, 9 + i), PointOf(old, 6 + i));
        }
        // The two halves are one cubic: the handles at the new node are collinear, their lengths in
        // the ratio of the parameters, and the outer handles in the same ratio to the old ones.
        double const u = Distance(PointOf(path, 4), PointOf(path, 3)) /
                         Distance(PointOf(old, 4), PointOf(old, 3));
        Point const in = PointOf(path, 6) - PointOf(path, 5);
        Point const out = PointOf(path, 7) - PointOf(path, 6);
        ExpectNear(in * (1 - u), out * u, 1e-12);
        ExpectNear(PointOf(path, 8), PointOf(old, 5) * (1 - u) + PointOf(old, 6) * u, 1e-12);
    }
}

TEST(HvMotionPath3d_build, InsertNodeInAStraightSegmentLeavesTheOldControls)
{
    Path path({0, 0, 0}, {8, 4, 0}, 0, 4);
    unsigned int point = 99;
    int exact = 7;
    ASSERT_EQ(path.InsertNode(1, 1e-3, 0, point, exact), 1);
    EXPECT_EQ(exact, 0);
    EXPECT_EQ(point, 3u);
    ASSERT_EQ(path.NumPoints(), 7u);
    for (unsigned int i : {1u, 2u, 6u}) {
        EXPECT_EQ(PointOf(path, i), Point(8, 4, 0));
    }
    for (unsigned int i : {3u, 4u, 5u}) {
        EXPECT_EQ(PointOf(path, i), Point(2, 1, 0));
    }
    EXPECT_EQ(KindOf(path, 0), Path::LineNode);
    EXPECT_EQ(KindOf(path, 3), Path::LineNode);
    EXPECT_EQ(At(path, 0.5), Point(1, 0.5, 0));
    EXPECT_EQ(At(path, 2.5), Point(5, 2.5, 0));
}

TEST(HvMotionPath3d_build, InsertNodeHalvesASegmentWithoutLength)
{
    Path path;
    path.Moveto({1, 2, 3}, 0);
    path.Curveto({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, 1);
    unsigned int point = 99;
    int exact = 7;
    ASSERT_EQ(path.InsertNode(0.75, 1e-3, 0, point, exact), 1);
    EXPECT_EQ(path.NumPoints(), 7u);
    EXPECT_EQ(TimeOf(path, 3), 0.75);
}

TEST(HvMotionPath3d_build, InsertNodeWhereTheObjectStandsAtAnEndIsRefused)
{
    // Long neighbours: the object reaches the end of the short segment early and rests there.
    Path path;
    path.Moveto({0, 0, 0}, 0);
    path.Curveto({30, 0, 0}, {60, 0, 0}, {100, 0, 0}, 1);
    path.Curveto({100.3, 0, 0}, {100.6, 0, 0}, {101, 0, 0}, 2);
    path.Curveto({130, 0, 0}, {160, 0, 0}, {201, 0, 0}, 3);
    ASSERT_EQ(At(path, 1.25), Point(101, 0, 0));
    auto const before = ImageOf(path);
    unsigned int point = 99;
    int exact = 7;
    EXPECT_EQ(path.InsertNode(1.25, 1e-3, 0, point, exact), 0);
    EXPECT_EQ(ImageOf(path), before);
    EXPECT_EQ(point, 99u);
}

TEST(HvMotionPath3d_build, InsertNodeGivesClientPointersRoom)
{
    Path path = ThreeCubics();
    int data[10];
    for (unsigned int i = 0; i < 10; ++i) {
        path.SetClientData(i, data + i);
    }
    unsigned int point = 99;
    int exact = 7;
    ASSERT_EQ(path.InsertNode(1.5, 1e-3, 0, point, exact), 1);
    for (unsigned int i = 0; i < 13; ++i) {
        void* const expected = i < 6 ? data + i : i < 9 ? nullptr : data + (i - 3);
        EXPECT_EQ(path.GetClientData(i), expected) << i;
    }
}

TEST(HvMotionPath3d_build, HostileInsertionsEnd)
{
    PathSource source(3);
    Path const original = source.CurvedPath(2);
    double const t = TimeOf(original, 3) + 0.1;
    for (double const number : kHostileNumbers) {
        unsigned int point = 0;
        int exact = 0;
        Path path(original);
        path.InsertNode(t, number, 0, point, exact);
        path.InsertNode(t + 0.1, 1e-3, number, point, exact);
        path.InsertNode(number, 1e-3, 0, point, exact);
        EXPECT_LT(point, path.NumPoints());
        for (unsigned int i = 3; i < path.NumPoints(); i += 3) {
            EXPECT_EQ(CanBeAdjacentTimeValues(TimeOf(path, i - 3), TimeOf(path, i)), 1);
        }
    }
}

TEST(HvMotionPath3d_build, RemoveNodesRefusesWhatIsNoRangeOfNodes)
{
    Path path = ThreeCubics();
    auto const before = ImageOf(path);
    ExpectRefused(path, static_cast<int>(path.RemoveNodes(1, 3)), before);
    ExpectRefused(path, static_cast<int>(path.RemoveNodes(0, 4)), before);
    ExpectRefused(path, static_cast<int>(path.RemoveNodes(6, 3)), before);
    ExpectRefused(path, static_cast<int>(path.RemoveNodes(0, 12)), before);
    ExpectRefused(path, static_cast<int>(path.RemoveNodes(12, 12)), before);
    EXPECT_EQ(Path().RemoveNodes(0, 0), 0u);
}

TEST(HvMotionPath3d_build, RemovedNodesTakeTheirControlsAlong)
{
    struct Case {
        unsigned int first;
        unsigned int last;
        std::vector<unsigned int> stay;
    };
    for (Case const& c :
         {Case{0, 0, {3, 4, 5, 6, 7, 8, 9}}, Case{0, 6, {9}}, Case{9, 9, {0, 1, 2, 3, 4, 5, 6}},
          Case{3, 9, {0}}, Case{3, 3, {0, 1, 5, 6, 7, 8, 9}}, Case{3, 6, {0, 1, 8, 9}},
          Case{0, 9, {}}}) {
        Path path = ThreeCubics();
        int data[10];
        for (unsigned int i = 0; i < 10; ++i) {
            path.SetClientData(i, data + i);
        }
        path.SetLeftTangentInfo(9, Path::TangentStop);
        path.LockG1Continuity(0);
        Path const old(path);
        EXPECT_EQ(path.RemoveNodes(c.first, c.last), 10 - c.stay.size());
        ASSERT_EQ(path.NumPoints(), c.stay.size());
        for (unsigned int i = 0; i < c.stay.size(); ++i) {
            EXPECT_EQ(PointOf(path, i), PointOf(old, c.stay[i]));
            EXPECT_EQ(path.GetClientData(i), data + c.stay[i]);
            if (i % 3 == 0) {
                Path::TangentInfo a = Path::TangentFree;
                Path::TangentInfo b = Path::TangentFree;
                path.GetLeftTangentInfo(i, a);
                old.GetLeftTangentInfo(c.stay[i], b);
                EXPECT_EQ(a, b);
                EXPECT_EQ(TimeOf(path, i), TimeOf(old, c.stay[i]));
                EXPECT_EQ(path.IsG1ContinuityLocked(i), c.stay[i] == 0 ? 1 : 0);
            }
        }
        EXPECT_EQ(path.Moveto({}, 0), c.stay.empty() ? 1 : 0);
    }
}

TEST(HvMotionPath3d_build, RemovalNeedsNoMemory)
{
    PathSource source(4);
    Path path = source.CurvedPath(100);
    AllocationCounter const counter;
    path.RemoveNodes(30, 270);
    EXPECT_EQ(counter.Allocations(), 0);
    EXPECT_EQ(path.NumNodes(), 20u);
}

TEST(HvMotionPath3d_build, TimesAreScaledAllOrNone)
{
    Path path = ThreeCubics();
    EXPECT_EQ(path.ScaleAndOffsetInitialTimes(2, 5), 1);
    for (unsigned int k = 0; k < 4; ++k) {
        EXPECT_EQ(TimeOf(path, 3 * k), 2.0 * k + 5);
    }
    auto const before = ImageOf(path);
    ExpectRefused(path, path.ScaleAndOffsetInitialTimes(0, 0), before);
    ExpectRefused(path, path.ScaleAndOffsetInitialTimes(-1, 0), before);
    ExpectRefused(path, path.ScaleAndOffsetInitialTimes(1, 1e300), before);
    ExpectRefused(path, path.ScaleAndOffsetInitialTimes(1e308, 0), before);
    ExpectRefused(path, path.ScaleAndOffsetInitialTimes(kNaN, 0), before);
    ExpectRefused(path, path.ScaleAndOffsetInitialTimes(1, kInfinity), before);
    Path single;
    single.Moveto({}, 3);
    EXPECT_EQ(single.ScaleAndOffsetInitialTimes(-2, 1), 1) << "a single time may go anywhere";
    EXPECT_EQ(TimeOf(single, 0), -5);
    EXPECT_EQ(single.ScaleAndOffsetInitialTimes(kNaN, 1), 0);
    EXPECT_EQ(Path().ScaleAndOffsetInitialTimes(kNaN, 1), 1) << "nothing to scale";
}

TEST(HvMotionPath3d_build, FailedAllocationsLeaveThePath)
{
    Path const original = ThreeCubics();
    auto const before = ImageOf(original);
    auto const check = [&](Path& path, bool completed) {
        if (!completed) {
            EXPECT_EQ(ImageOf(path), before);
        }
        EXPECT_EQ(path.Lineto({1, 1, 1}, 50), 1) << "the lock is released";
    };
    auto const prepare = [&] { return Path(original); };
    EXPECT_GT(RefuseEachAllocation(
                  prepare, [](Path& p) { p.Lineto({}, 9); }, check),
              0);
    EXPECT_GT(RefuseEachAllocation(
                  prepare, [](Path& p) { p.PreLineto({}, -9); }, check),
              0);
    EXPECT_GT(RefuseEachAllocation(
                  prepare, [](Path& p) { p.Curveto({}, {}, {}, 9); }, check),
              0);
    EXPECT_GT(RefuseEachAllocation(
                  prepare, [](Path& p) { p.PreCurveto({}, {}, {}, -9); }, check),
              0);
    EXPECT_GT(RefuseEachAllocation(
                  prepare,
                  [](Path& p) {
                      unsigned int point;
                      int exact;
                      p.InsertNode(1.5, 1e-3, 0, point, exact);
                  },
                  check),
              0);
}

}  // namespace
