// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The section on motion paths of docs/conventions.md, line by line.

#include <hv/hv.h>

#include <gtest/gtest.h>

namespace {

using Place = HvPoint3<double>;

// Two cubics on a line whose parameter is far from even: x from 0 to 8 and from 8 to 16.
HvMotionPath3d TwoSegments()
{
    HvMotionPath3d path(Place(0, 0, 0), Place(8, 0, 0), 1, 3, Place(0, 0, 0), Place(0, 0, 0));
    path.Curveto(Place(8, 0, 0), Place(8, 0, 0), Place(16, 0, 0), 5);
    return path;
}

double At(HvMotionPath3d const& path, double t)
{
    Place p;
    path.Eval(t, 1e-6, p, 0);
    return p.x;
}

}  // namespace

TEST(Conventions_motion_paths, IndicesAreOfPoints)
{
    HvMotionPath3d const path = TwoSegments();
    EXPECT_EQ(path.NumNodes(), 3u);
    Place p;
    double t = 0;
    ASSERT_EQ(path.GetNode(3, p, t), 1);
    EXPECT_EQ(p, Place(8, 0, 0));
    EXPECT_EQ(path.GetNode(1, p, t), 0);
}

TEST(Conventions_motion_paths, TimesAscendAndTheObjectRestsBeyondThem)
{
    HvMotionPath3d path = TwoSegments();
    EXPECT_EQ(path.Lineto(Place(), 5), 0);
    EXPECT_EQ(At(path, -100), 0.0);
    EXPECT_EQ(At(path, 100), 16.0);
}

TEST(Conventions_motion_paths, TimeRunsOverArcLength)
{
    HvMotionPath3d path = TwoSegments();
    path.SetRightTangentInfo(0, HvMotionPath3d::TangentLinear);
    path.SetLeftTangentInfo(3, HvMotionPath3d::TangentLinear);
    EXPECT_NEAR(At(path, 1.5), 2.0, 1e-9);
    EXPECT_NEAR(At(path, 2.0), 4.0, 1e-9);
}

TEST(Conventions_motion_paths, LeftRulesEndAndRightRulesBegin)
{
    HvMotionPath3d path = TwoSegments();
    double const before = At(path, 2.5);
    double const behind = At(path, 3.5);
    path.SetLeftTangentInfo(3, HvMotionPath3d::TangentStop);
    EXPECT_NE(At(path, 2.5), before);
    EXPECT_EQ(At(path, 3.5), behind);
    path.SetRightTangentInfo(3, HvMotionPath3d::TangentStep);
    EXPECT_EQ(At(path, 3.5), 8.0);
}
