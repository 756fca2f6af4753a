// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What is remembered of flattened segments.

#include <hv/motionpath/internal/HvSegmentPolylines.h>

#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/foundation/polyline_length.h>
#include <tests/motionpath/motion_path_support.h>
#include <tests/support/allocation_failure.h>

namespace {

HvPoint3dArray PointsOf(Path const& path)
{
    HvPoint3dArray points;
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        points.Add(PointOf(path, i));
    }
    return points;
}

TEST(HvSegmentPolylines, AreWhatFlatteningGives)
{
    HvPoint3dArray const points = PointsOf(PathSource(1).CurvedPath(3));
    HvSegmentPolylines lines;
    for (unsigned int k = 0; k < 3; ++k) {
        HvPoint3dArray flat;
        HvDoubleArray chord;
        HvBezierTool_FlattenCubic3d(points.Data() + 3 * k, 1e-3, &flat, 0);
        double const length = HvPoint3dArraySingleComponent_ComputeChordLength(flat, chord);
        HvSegmentPolyline const& line = lines.Polyline(points, k, 1e-3);
        EXPECT_EQ(line.length, length);
        EXPECT_EQ(lines.Length(points, k, 1e-3), length);
        ASSERT_EQ(line.points.Size(), flat.Size());
        ASSERT_EQ(line.chord.Size(), flat.Size());
        for (unsigned int i = 0; i < flat.Size(); ++i) {
            EXPECT_EQ(line.points[i], flat[i]);
            EXPECT_EQ(line.chord[i], chord[i]);
        }
    }
}

TEST(HvSegmentPolylines, AreMadeOnceUntilDropped)
{
    HvPoint3dArray const points = PointsOf(PathSource(2).CurvedPath(3));
    HvSegmentPolylines lines;
    lines.Length(points, 1, 1e-3);
    AllocationCounter const counter;
    lines.Polyline(points, 1, 1e-3);
    lines.Length(points, 1, 1e-3);
    EXPECT_EQ(counter.Allocations(), 0);
    lines.Polyline(points, 1, 1e-2);
    EXPECT_GT(counter.Allocations(), 0) << "another tolerance";
    long const made = counter.Allocations();
    lines.Drop();
    lines.Polyline(points, 1, 1e-2);
    EXPECT_GT(counter.Allocations(), made);
}

TEST(HvSegmentPolylines, ToleranceWithoutSenseIsOneTolerance)
{
    HvPoint3dArray const points = PointsOf(Path({0, 0, 0}, {3, 0, 0}, 0, 1, {1, 1, 0}, {2, 1, 0}));
    HvSegmentPolylines lines;
    double const length = lines.Length(points, 0, 0);
    AllocationCounter const counter;
    EXPECT_EQ(lines.Length(points, 0, kNaN), length);
    EXPECT_EQ(lines.Length(points, 0, -1), length);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvSegmentPolylines, MemoryIsLimited)
{
    // Segments of about 32,000 points each: eight of them pass the limit.
    HvPoint3dArray const points = PointsOf(PathSource(3).CurvedPath(24));
    std::size_t const limit = 40u * HvSegmentPolylines::kMostPoints;
    HvSegmentPolylines lines;
    AllocationCounter const counter;
    long most = 0;
    double length = 0;
    for (unsigned int k = 0; k < 24; ++k) {
        length += lines.Length(points, k, 1e-8);
        most = std::max(most, counter.Live());
    }
    EXPECT_GT(counter.Bytes(), limit) << "more was flattened than may be kept";
    EXPECT_LT(most, 1 + 5 * 20) << "but never all of it at once";
    long const made = counter.Allocations();
    for (unsigned int k = 0; k < 24; ++k) {
        length -= lines.Length(points, k, 1e-8);
    }
    EXPECT_EQ(counter.Allocations(), made) << "lengths stay";
    EXPECT_NEAR(length, 0, 1e-9);
}

TEST(HvSegmentPolylines, FinestToleranceIsRelative)
{
    Point const cubic[4] = {{0, 0, 0}, {100, 0, 0}, {200, 0, 0}, {300, 0, 0}};
    EXPECT_EQ(HvSegment_UsableTolerance(cubic, 1e-3), 1e-3);
    for (double const tolerance : {0.0, -1.0, kNaN, 1e-300}) {
        EXPECT_NEAR(HvSegment_UsableTolerance(cubic, tolerance), 3e-9, 1e-15);
    }
    Point const none[4] = {};
    EXPECT_GT(HvSegment_UsableTolerance(none, 0), 0);
}

}  // namespace
