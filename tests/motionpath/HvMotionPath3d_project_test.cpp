// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Motion paths as paths of the plane.

#include <hv/motionpath/HvMotionPath3d.h>

#include <hv/shape/HvPath2f.h>
#include <tests/motionpath/motion_path_support.h>
#include <tests/support/allocation_failure.h>

namespace {

/// A cubic and a straight segment; coordinates that a float holds.
Path MixedPath()
{
    Path path({1, 2, 3}, {10, 11, 12}, 0, 1, {4, 5, 6}, {7, 8, 9});
    path.Lineto({13, 14, 15}, 2);
    return path;
}

void ExpectPoints(HvPath2f const& path, std::vector<HvPoint2<float>> const& expected)
{
    ASSERT_EQ(path.NumPoints(), expected.size());
    for (unsigned int i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(path.GetPoint(i), expected[i]) << i;
    }
}

TEST(HvMotionPath3d_project, EachPlaneKeepsItsTwoAxes)
{
    HvPath2f out(1);
    EXPECT_EQ(MixedPath().GetProjectedPath(Path::ProjectionXY, out), 1);
    ExpectPoints(out, {{1, 2}, {4, 5}, {7, 8}, {10, 11}, {13, 14}});
    EXPECT_EQ(MixedPath().GetProjectedPath(Path::ProjectionXZ, out), 1);
    ExpectPoints(out, {{1, 3}, {4, 6}, {7, 9}, {10, 12}, {13, 15}});
    EXPECT_EQ(MixedPath().GetProjectedPath(Path::ProjectionYZ, out), 1);
    ExpectPoints(out, {{2, 3}, {5, 6}, {8, 9}, {11, 12}, {14, 15}});
}

TEST(HvMotionPath3d_project, SegmentsKeepTheirDegree)
{
    HvPath2f out(1);
    MixedPath().GetProjectedPath(Path::ProjectionXY, out);
    EXPECT_EQ(out.NumSubpaths(), 1u);
    EXPECT_EQ(out.NumSegments(), 2u);
    EXPECT_EQ(out.GetDegree(1), 3u);
    EXPECT_EQ(out.GetDegree(4), 1u);
    EXPECT_EQ(out.IsSubpathClosed(0), 0);
}

TEST(HvMotionPath3d_project, ReplacesWhatWasThere)
{
    HvPath2f out(1);
    MixedPath().GetProjectedPath(Path::ProjectionXY, out);
    Path single;
    single.Moveto({1, 2, 3}, 0);
    EXPECT_EQ(single.GetProjectedPath(Path::ProjectionXZ, out), 1);
    ExpectPoints(out, {{1, 3}});
    EXPECT_EQ(Path().GetProjectedPath(Path::ProjectionXZ, out), 1);
    EXPECT_EQ(out.NumPoints(), 0u);
}

TEST(HvMotionPath3d_project, PlaneThatIsNoneIsRefused)
{
    HvPath2f out(1);
    MixedPath().GetProjectedPath(Path::ProjectionXY, out);
    for (int const plane : {-1, 3}) {
        EXPECT_EQ(MixedPath().GetProjectedPath(static_cast<Path::Projection>(plane), out), 0);
        EXPECT_EQ(out.NumPoints(), 5u);
    }
}

TEST(HvMotionPath3d_project, FailedAllocationsLeaveTheOutput)
{
    Path const path = MixedPath();
    RefuseEachAllocation(
        [] {
            HvPath2f out(1);
            out.Moveto({5, 6});
            return out;
        },
        [&](HvPath2f& out) { path.GetProjectedPath(Path::ProjectionXY, out); },
        [&](HvPath2f& out, bool completed) {
            EXPECT_EQ(out.NumPoints(), completed ? 5u : 1u);
            EXPECT_EQ(path.NumPoints(), 7u);
        });
}

}  // namespace
