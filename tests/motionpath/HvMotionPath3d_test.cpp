// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life and reading of motion paths.

#include <hv/motionpath/HvMotionPath3d.h>

#include <hv/motionpath/HvTwoSidedTangent.h>
#include <tests/motionpath/motion_path_support.h>
#include <tests/platform/run_threads.h>
#include <tests/support/allocation_failure.h>

namespace {

/// Node 0, a straight segment, node 3, a curved one, node 6.
Path MixedPath()
{
    Path path;
    EXPECT_EQ(path.Moveto({1, 2, 3}, 10), 1);
    EXPECT_EQ(path.Lineto({4, 5, 6}, 20), 1);
    EXPECT_EQ(path.Curveto({7, 8, 9}, {10, 11, 12}, {13, 14, 15}, 40), 1);
    return path;
}

TEST(CanBeAdjacentTimeValues, LimitIsAbsolute)
{
    EXPECT_EQ(CanBeAdjacentTimeValues(0, 1), 1);
    EXPECT_EQ(CanBeAdjacentTimeValues(1, 0), 0);
    EXPECT_EQ(CanBeAdjacentTimeValues(1, 1), 0);
    EXPECT_EQ(CanBeAdjacentTimeValues(1.0, 1.0 + 1e-31), 0);  // rounds to 1
    EXPECT_EQ(CanBeAdjacentTimeValues(0, 1e-30), 0);
    EXPECT_EQ(CanBeAdjacentTimeValues(0, std::nextafter(1e-30, 1.0)), 1);
    EXPECT_EQ(CanBeAdjacentTimeValues(kNaN, 1), 0);
    EXPECT_EQ(CanBeAdjacentTimeValues(1, kNaN), 0);
}

TEST(HvTwoSidedTangent, IsSmoothAtFirstAndKnowsFiveRules)
{
    HvTwoSidedTangent const tangent;
    EXPECT_EQ(tangent.left, 3);
    EXPECT_EQ(tangent.right, 3);
    for (int value = 0; value <= 4; ++value) {
        EXPECT_EQ(HvTwoSidedTangent::IsValid(static_cast<Path::TangentInfo>(value)), 1);
    }
    EXPECT_EQ(HvTwoSidedTangent::IsValid(static_cast<Path::TangentInfo>(-1)), 0);
    EXPECT_EQ(HvTwoSidedTangent::IsValid(static_cast<Path::TangentInfo>(5)), 0);
}

TEST(HvMotionPath3d, HasNothingAtFirst)
{
    Path path;
    Point p;
    double t = 7;
    double first = 8;
    double last = 9;
    Path::PointKind kind = Path::CurveNode;
    Path::TangentInfo info = Path::TangentStop;
    EXPECT_EQ(path.NumPoints(), 0u);
    EXPECT_EQ(path.NumNodes(), 0u);
    EXPECT_EQ(path.IsNode(0), 0);
    EXPECT_EQ(path.GetControlPoint(0, p), 0);
    EXPECT_EQ(path.GetControlPoints(0, 0, &p, &t), 0);
    EXPECT_EQ(path.GetControlPointKind(0, kind), 0);
    EXPECT_EQ(path.GetNode(0, p, t), 0);
    EXPECT_EQ(path.GetLeftTangentInfo(0, info), 0);
    EXPECT_EQ(path.GetRightTangentInfo(0, info), 0);
    EXPECT_EQ(path.SetLeftTangentInfo(0, info), 0);
    EXPECT_EQ(path.SetRightTangentInfo(0, info), 0);
    path.SetClientData(0, &p);
    EXPECT_EQ(path.GetClientData(0), nullptr);
    EXPECT_EQ(path.GetFirstTime(0), 0.0);
    EXPECT_EQ(path.GetLastTime(0), 0.0);
    path.GetTimeInterval(first, last);
    EXPECT_EQ(first, 8);
    EXPECT_EQ(last, 9);
    EXPECT_EQ(t, 7);
    EXPECT_EQ(kind, Path::CurveNode);
    EXPECT_EQ(info, Path::TangentStop);
}

TEST(HvMotionPath3d, TwoPointsMakeAStraightSegment)
{
    Path const path({1, 2, 3}, {4, 5, 6}, 7, 8);
    ASSERT_EQ(path.NumPoints(), 4u);
    EXPECT_EQ(path.NumNodes(), 2u);
    EXPECT_EQ(PointOf(path, 0), Point(1, 2, 3));
    for (unsigned int i = 1; i < 4; ++i) {
        EXPECT_EQ(PointOf(path, i), Point(4, 5, 6));
    }
    EXPECT_EQ(KindOf(path, 0), Path::LineNode);
    EXPECT_EQ(TimeOf(path, 0), 7);
    EXPECT_EQ(TimeOf(path, 3), 8);
}

TEST(HvMotionPath3d, FourPointsMakeACubicWithTheControlsLast)
{
    Path const path({1, 0, 0}, {4, 0, 0}, 7, 8, {2, 0, 0}, {3, 0, 0});
    ASSERT_EQ(path.NumPoints(), 4u);
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(PointOf(path, i), Point(i + 1.0, 0, 0));
    }
    EXPECT_EQ(KindOf(path, 0), Path::CurveNode);
}

TEST(HvMotionPath3d, RefusedEndOfASegmentLeavesOneNode)
{
    EXPECT_EQ(Path({1, 2, 3}, {4, 5, 6}, 8, 8).NumPoints(), 1u);
    EXPECT_EQ(Path({1, 2, 3}, {4, 5, 6}, 8, kInfinity).NumPoints(), 1u);
    EXPECT_EQ(Path({1, 2, 3}, {4, 5, 6}, 8, 7, {}, {}).NumPoints(), 1u);
    EXPECT_EQ(Path({1, 2, 3}, {4, 5, 6}, kNaN, 7).NumPoints(), 0u);
}

TEST(HvMotionPath3d, TellsPointsNodesAndTimes)
{
    Path const path = MixedPath();
    ASSERT_EQ(path.NumPoints(), 7u);
    EXPECT_EQ(path.NumNodes(), 3u);
    Point points[7];
    double times[7];
    ASSERT_EQ(path.GetControlPoints(0, 6, points, times), 1);
    double const expected[7] = {10, 10, 10, 20, 20, 20, 40};
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(points[i], PointOf(path, i));
        EXPECT_EQ(times[i], expected[i]);
        EXPECT_EQ(path.IsNode(i), i % 3 == 0 ? 1 : 0);
        Point p(9, 9, 9);
        double t = -1;
        EXPECT_EQ(path.GetNode(i, p, t), i % 3 == 0 ? 1 : 0);
        EXPECT_EQ(t, i % 3 == 0 ? expected[i] : -1);
    }
    EXPECT_EQ(path.IsNode(7), 0);
    EXPECT_EQ(path.IsNode(9), 0);
    EXPECT_EQ(path.GetFirstTime(1), 10);
    EXPECT_EQ(path.GetLastTime(1), 40);
    double first = 0;
    double last = 0;
    path.GetTimeInterval(first, last);
    EXPECT_EQ(first, 10);
    EXPECT_EQ(last, 40);
}

TEST(HvMotionPath3d, RangesOfPointsAreInclusive)
{
    Path const path = MixedPath();
    Point points[3] = {{-1, -1, -1}, {-1, -1, -1}, {-1, -1, -1}};
    double times[3] = {-1, -1, -1};
    EXPECT_EQ(path.GetControlPoints(4, 5, points, times), 1);
    EXPECT_EQ(points[0], Point(7, 8, 9));
    EXPECT_EQ(points[1], Point(10, 11, 12));
    EXPECT_EQ(points[2], Point(-1, -1, -1));
    EXPECT_EQ(times[2], -1);
    EXPECT_EQ(path.GetControlPoints(5, 4, points, times), 1) << "nothing to copy";
    EXPECT_EQ(points[0], Point(7, 8, 9));
    EXPECT_EQ(path.GetControlPoints(0, 7, points, times), 0);
    EXPECT_EQ(path.GetControlPoints(7, 0, points, times), 0);
    EXPECT_EQ(path.GetControlPoints(4294967295u, 4294967295u, points, times), 0);
}

TEST(HvMotionPath3d, EveryPointHasItsKind)
{
    Path const path = MixedPath();
    Path::PointKind const kinds[7] = {
        Path::LineNode,          Path::LineFirstControl,   Path::LineSecondControl, Path::CurveNode,
        Path::CurveFirstControl, Path::CurveSecondControl, Path::LastCurveNode};
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(KindOf(path, i), kinds[i]) << i;
        EXPECT_EQ(static_cast<int>(kinds[i]),
                  i < 3 ? static_cast<int>(i) : static_cast<int>(i) + 1);
    }
    Path::PointKind kind = Path::LineNode;
    EXPECT_EQ(path.GetControlPointKind(7, kind), 0);

    Path single;
    single.Moveto({}, 0);
    EXPECT_EQ(KindOf(single, 0), Path::SinglePoint);
    EXPECT_EQ(static_cast<int>(Path::SinglePoint), 8);
}

TEST(HvMotionPath3d, LastNodeKeepsTheMarkOfARemovedStraightSegment)
{
    Path path = MixedPath();
    ASSERT_EQ(path.Lineto({0, 0, 0}, 50), 1);
    ASSERT_EQ(path.RemoveNodes(9, 9), 3u);
    EXPECT_EQ(KindOf(path, 6), Path::LastLineNode);
    EXPECT_EQ(static_cast<int>(Path::LastLineNode), 3);
}

TEST(HvMotionPath3d, RulesBelongToTheNodeOfASegment)
{
    Path path = MixedPath();
    EXPECT_EQ(path.SetLeftTangentInfo(4, Path::TangentStop), 1);
    EXPECT_EQ(path.SetRightTangentInfo(5, Path::TangentStep), 1);
    Path::TangentInfo info = Path::TangentFree;
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(path.GetLeftTangentInfo(i, info), 1);
        EXPECT_EQ(info, i / 3 == 1 ? Path::TangentStop : Path::TangentSmooth);
        EXPECT_EQ(path.GetRightTangentInfo(i, info), 1);
        EXPECT_EQ(info, i / 3 == 1 ? Path::TangentStep : Path::TangentSmooth);
    }
    auto const before = ImageOf(path);
    EXPECT_EQ(path.SetLeftTangentInfo(7, Path::TangentStop), 0);
    EXPECT_EQ(path.SetRightTangentInfo(0, static_cast<Path::TangentInfo>(5)), 0);
    EXPECT_EQ(path.SetLeftTangentInfo(0, static_cast<Path::TangentInfo>(-1)), 0);
    EXPECT_EQ(ImageOf(path), before);
}

TEST(HvMotionPath3d, ClientPointersStandAtPoints)
{
    Path path = MixedPath();
    int data[7];
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(path.GetClientData(i), nullptr);
        path.SetClientData(i, data + i);
    }
    path.SetClientData(7, data);
    EXPECT_EQ(path.GetClientData(7), nullptr);
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(path.GetClientData(i), data + i);
    }
}

TEST(HvMotionPath3d, CopiesAreDeep)
{
    Path path = MixedPath();
    int data = 0;
    path.SetClientData(2, &data);
    path.SetLeftTangentInfo(0, Path::TangentStop);
    auto const before = ImageOf(path);
    Path copy(path);
    Path assigned({}, {}, 0, 1);
    assigned = path;
    Path& alias = path;
    path = alias;
    EXPECT_EQ(ImageOf(path), before);
    path.ReplaceControlPoint(0, {9, 9, 9}, 0);
    EXPECT_EQ(ImageOf(copy), before);
    EXPECT_EQ(ImageOf(assigned), before);
}

TEST(HvMotionPath3d, FailedCopiesLeaveBothAsTheyWere)
{
    Path const source = MixedPath();
    auto const image = ImageOf(source);
    long const made = RefuseEachAllocation([&] {
        Path const copy(source);
        EXPECT_EQ(ImageOf(copy), image);
    });
    EXPECT_EQ(made, 6);
    Path const other({1, 1, 1}, {2, 2, 2}, 0, 1);
    RefuseEachAllocation([&] { return Path(other); }, [&](Path& target) { target = source; },
                         [&](Path& target, bool completed) {
                             EXPECT_EQ(ImageOf(target), completed ? image : ImageOf(other));
                             EXPECT_EQ(ImageOf(source), image);
                         });
}

TEST(HvMotionPath3d, StorageIsTheLibrarysOwn)
{
    AllocationCounter const counter;
    Path* const path = new Path({}, {}, 0, 1);
    EXPECT_GT(counter.Allocations(), 0);
    delete path;
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvMotionPath3d_threads, PathsMayBeAssignedToEachOther)
{
    Path a = MixedPath();
    Path b({1, 1, 1}, {2, 2, 2}, 0, 1);
    RunThreads(4, [&](int k) {
        for (int i = 0; i < 2000; ++i) {
            if (k % 2 == 0) {
                a = b;
            } else {
                b = a;
            }
        }
    });
    EXPECT_TRUE(a.NumPoints() == 7 || a.NumPoints() == 4);
}

}  // namespace
