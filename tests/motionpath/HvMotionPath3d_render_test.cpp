// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Motion paths for display.

#include <hv/motionpath/HvMotionPath3d.h>

#include <tests/motionpath/motion_path_support.h>
#include <tests/support/allocation_failure.h>

namespace {

struct Samples {
    HvPoint3dArray positions;
    HvUByteArray kinds;
    HvDoubleArray times;
    HvULongArray nodes;

    unsigned int Count() const
    {
        EXPECT_EQ(kinds.Size(), positions.Size());
        EXPECT_EQ(times.Size(), positions.Size());
        EXPECT_EQ(nodes.Size(), positions.Size());
        return positions.Size();
    }
};

Samples Rendered(Path const& path, double first, double last, unsigned int count)
{
    Samples samples;
    path.Render(first, last, count, samples.positions, samples.kinds, samples.times, samples.nodes);
    return samples;
}

/// A straight segment, a curved one, a held one; times 0, 2, 4, 6.
Path MixedPath()
{
    Path path({0, 0, 0}, {4, 0, 0}, 0, 2);
    path.Curveto({5, 2, 0}, {7, 2, 0}, {8, 0, 0}, 4);
    path.Curveto({9, -2, 0}, {11, -2, 0}, {12, 0, 0}, 6);
    path.SetRightTangentInfo(6, Path::TangentStep);
    return path;
}

TEST(HvMotionPath3d_render, SamplesAreEvenInTime)
{
    Path const path = MixedPath();
    Samples const s = Rendered(path, -1, 7, 9);
    ASSERT_EQ(s.Count(), 9u);
    int const kinds[9] = {3, 0, 1, 0, 2, 0, 3, 0, 3};
    unsigned long const nodes[9] = {0, 0, 0, 3, 3, 6, 6, 9, 9};
    for (unsigned int i = 0; i < 9; ++i) {
        EXPECT_EQ(s.times[i], i - 1.0);
        EXPECT_EQ(s.kinds[i], kinds[i]) << i;
        EXPECT_EQ(s.nodes[i], nodes[i]) << i;
        ExpectNear(s.positions[i], At(path, i - 1.0, 1e-9), 12 * 2e-4);
    }
}

TEST(HvMotionPath3d_render, FirstAndLastSampleAreExact)
{
    Path const path = MixedPath();
    Samples const s = Rendered(path, 0.1, 0.7, 8);
    ASSERT_EQ(s.Count(), 8u);
    EXPECT_EQ(s.times[0], 0.1);
    EXPECT_EQ(s.times[7], 0.7);
    EXPECT_EQ(Rendered(path, 0.1, 0.7, 1).times[0], 0.1);
    EXPECT_EQ(Rendered(path, 0.1, 0.7, 2).times[1], 0.7);
    EXPECT_EQ(Rendered(path, 0.1, 0.7, 0).Count(), 0u);
    EXPECT_EQ(Rendered(path, 3, 3, 4).Count(), 4u);
}

TEST(HvMotionPath3d_render, NothingWithoutPointsOrAnInterval)
{
    Path const path = MixedPath();
    EXPECT_EQ(Rendered(Path(), 0, 1, 5).Count(), 0u);
    EXPECT_EQ(Rendered(path, 1, 0, 5).Count(), 0u);
    for (double const number : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(Rendered(path, number, 1, 5).Count(), 0u);
        EXPECT_EQ(Rendered(path, 0, number, 5).Count(), 0u);
    }
    EXPECT_EQ(Rendered(path, -1.7e308, 1.7e308, 3).Count(), 0u);
}

TEST(HvMotionPath3d_render, PathWithoutExtentIsRendered)
{
    Path path;
    path.Moveto({1, 2, 3}, 0);
    path.Curveto({1, 2, 3}, {1, 2, 3}, {1, 2, 3}, 1);
    Samples const s = Rendered(path, 0, 1, 3);
    ASSERT_EQ(s.Count(), 3u);
    EXPECT_EQ(s.positions[1], Point(1, 2, 3));
}

TEST(HvMotionPath3d_render, AppendsOrLeavesAll)
{
    Path const path = MixedPath();
    RefuseEachAllocation(
        [] { return Rendered(MixedPath(), 0, 6, 2); },
        [&](Samples& s) { path.Render(0, 6, 40, s.positions, s.kinds, s.times, s.nodes); },
        [](Samples& s, bool completed) {
            EXPECT_EQ(s.Count(), completed ? 42u : 2u);
            EXPECT_EQ(s.times[1], 6);
        });
    Samples s;
    EXPECT_THROW(path.Render(0, 1, 4294967295u, s.positions, s.kinds, s.times, s.nodes),
                 std::bad_alloc);
    EXPECT_EQ(s.Count(), 0u);
}

TEST(HvMotionPath3d_render, LeavesWhatEvaluationKeeps)
{
    Path const path = MixedPath();
    At(path, 3, 1e-5);
    Rendered(path, 0, 6, 10);
    AllocationCounter const counter;
    At(path, 3.5, 1e-5);
    EXPECT_EQ(counter.Allocations(), 0);
}

}  // namespace
