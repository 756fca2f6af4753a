// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/internal/polygon_clip.h>
#include <tests/support/allocation_failure.h>

#include "outline_paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

using Points = std::vector<HvPoint2<double>>;

template <class Array>
Points InDouble(Array const& pts)
{
    Points result;
    for (auto const& p : pts) {
        result.emplace_back(p);
    }
    return result;
}

std::vector<int> TagsOf(HvPointTagArray const& tags)
{
    return std::vector<int>(tags.begin(), tags.end());
}

/// The runs of a path, put together segment by segment from what the Bezier tool makes of each.
struct Runs {
    Points points;
    std::vector<int> tags;

    template <class T, class Array>
    static Runs Of(HvPath2f const& path, double tolerance)
    {
        Runs runs;
        HvBezierTool tool;
        HvPath2fIter subpaths(path);
        unsigned int first = 0;
        unsigned int last = 0;
        while (subpaths.GetNextSubPathIndices(first, last) != 0) {
            std::size_t const begin = runs.points.size();
            for (unsigned int start = first; start < last;) {
                unsigned int const end = path.EndOfSegment(start + 1);
                std::vector<HvPoint2<T>> controls(end - start + 1);
                path.GetPoints(start, end, controls.data());
                Array line;
                tool.Flatten(controls.data(), 0, path.GetDegree(end), tolerance, &line, 0);
                // The first point of all but the first segment is there already.
                for (unsigned int i = start == first ? 0 : 1; i < line.Size(); ++i) {
                    runs.points.emplace_back(line[i]);
                    runs.tags.push_back(HvPointTagInner);
                }
                start = end;
            }
            if (runs.points.size() != begin) {
                runs.tags[begin] = HvPointTagStart;
                runs.tags.back() = HvPointTagEnd;
            }
        }
        return runs;
    }
};

}  // namespace

TEST(HvPath2f_flatten, LinesKeepTheirPoints)
{
    HvPath2f const path = PolygonPath({{1, 2}, {5, 2}, {5, 9}}, true);
    HvPoint2fArray pts;
    HvPointTagArray tags;
    EXPECT_EQ(path.AltFlatten(1, pts, tags), 4u);
    EXPECT_EQ(InDouble(pts), (Points{{1, 2}, {5, 2}, {5, 9}, {1, 2}}));
    EXPECT_EQ(TagsOf(tags), (std::vector<int>{0, 1, 1, 2}));
    // A second call appends.
    EXPECT_EQ(path.AltFlatten(1, pts, tags), 4u);
    EXPECT_EQ(pts.Size(), 8u);
    EXPECT_EQ(TagsOf(tags), (std::vector<int>{0, 1, 1, 2, 0, 1, 1, 2}));
}

TEST(HvPath2f_flatten, EmptyPathAndLonePointsGiveNothing)
{
    HvPath2f path(1u);
    HvPoint2fArray pts;
    HvPoint2dArray pts2;
    HvPointTagArray tags;
    HvGC const gc;
    EXPECT_EQ(path.Flatten(gc, pts, tags), 0u);
    path.Moveto({1, 1});
    path.Moveto({2, 2});
    path.Lineto({3, 3});
    path.Moveto({4, 4});
    EXPECT_EQ(path.Flatten(gc, pts, tags), 2u);
    EXPECT_EQ(TagsOf(tags), (std::vector<int>{0, 2}));
    EXPECT_EQ(path.TransformAndFlattenPath(gc.transform, 1, pts2, tags), 1u);
    EXPECT_EQ(InDouble(pts2), (Points{{2, 2}, {3, 3}}));
    EXPECT_EQ(path.FlattenSubpath(0, 1, pts), 0u);
    EXPECT_EQ(path.FlattenSubpath(99, 1, pts), 0u);
    EXPECT_EQ(path.FlattenSubpath(2, 1, pts), 2u);
    EXPECT_EQ(pts.Size(), 4u);
}

TEST(HvPath2f_flatten, SubpathNeedsNoMemoryWhereThereIsRoom)
{
    HvPath2f path(1u);
    path.Moveto({0, 0});
    path.Curveto({0, 50}, {50, 50}, {50, 0});
    HvPoint2fArray pts(1000);
    AllocationCounter const counter;
    EXPECT_GT(path.FlattenSubpath(0, 0.01, pts), 10u);
    EXPECT_EQ(counter.Allocations(), 0);
}

RC_GTEST_PROP(HvPath2f_flatten, OutlineIsThatOfItsSegments, ())
{
    HvPath2f const path = RandomOutline();
    double const tolerance = std::ldexp(1.0, -PickInRange(-2, 8));
    HvPoint2fArray pts;
    HvPointTagArray tags;
    unsigned int const added = path.AltFlatten(tolerance, pts, tags);
    RC_ASSERT(added == pts.Size());
    Runs const narrow = Runs::Of<float, HvPoint2fArray>(path, tolerance);
    RC_ASSERT(InDouble(pts) == narrow.points);
    RC_ASSERT(TagsOf(tags) == narrow.tags);

    HvPoint2dArray pts2;
    HvPointTagArray tags2;
    RC_ASSERT(path.TransformAndFlattenPath(HvTransfo4(), tolerance, pts2, tags2) ==
              path.NumSubpaths());
    Runs const wide = Runs::Of<double, HvPoint2dArray>(path, tolerance);
    RC_ASSERT(InDouble(pts2) == wide.points);
    RC_ASSERT(TagsOf(tags2) == wide.tags);
}

RC_GTEST_PROP(HvPath2f_flatten, MappingFirstIsWhatTheTransformDoes, ())
{
    HvPath2f const path = RandomOutline();
    HvGC gc;
    gc.flatness = 0.125;
    gc.transform.Translate(PickInRange(-9, 9), PickInRange(-9, 9), 0.0);
    gc.transform.ScaleXY(PickInRange(1, 8) * 0.3, -0.7, HvPoint2<double>(1, 2));
    HvPoint2fArray pts;
    HvPointTagArray tags;
    path.Flatten(gc, pts, tags);
    HvPath2f mapped(path);
    mapped.Transform(gc.transform);
    HvPoint2fArray expected;
    HvPointTagArray expectedTags;
    mapped.AltFlatten(gc.flatness, expected, expectedTags);
    RC_ASSERT(InDouble(pts) == InDouble(expected));
    RC_ASSERT(TagsOf(tags) == TagsOf(expectedTags));
}

RC_GTEST_PROP(HvPath2f_flatten, SubpathsOneByOneMakeUpTheWhole, ())
{
    HvPath2f const path = RandomOutline();
    HvPoint2fArray whole;
    HvPointTagArray tags;
    path.AltFlatten(0.25, whole, tags);
    HvPoint2fArray joined;
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        path.FlattenSubpath(PickInRange(first, last + 1), 0.25, joined);
    }
    RC_ASSERT(InDouble(joined) == InDouble(whole));
}

TEST(HvPath2f_flatten, OpenSubpathsAreNotAmongTheClosedOnes)
{
    HvPath2f path = PolygonPath({{0, 0}, {4, 0}, {4, 4}}, false);
    path.Moveto({1, 1});
    path.Lineto({2, 1});
    path.Lineto({1, 1});
    path.Closeto();
    path.Moveto({7, 7});
    path.Lineto({8, 8});
    path.Lineto({7, 7});  // ends where it began, but nobody closed it
    HvPoint2dArray pts;
    HvPointTagArray tags;
    EXPECT_EQ(path.TransformAndFlattenClosedSubPaths(HvTransfo4(), 1, pts, tags), 1u);
    EXPECT_EQ(InDouble(pts), (Points{{1, 1}, {2, 1}, {1, 1}}));
    EXPECT_EQ(TagsOf(tags), (std::vector<int>{0, 1, 2}));
}

TEST(HvPath2f_flatten, ClosedSubpathOfTwoPointsIsClippedAwayOnly)
{
    HvPath2f path(1u);
    path.Moveto({1, 1});
    path.Lineto({1, 1});
    ASSERT_EQ(path.Closeto(), 1);
    HvPoint2dArray pts;
    HvPointTagArray tags;
    EXPECT_EQ(path.TransformAndFlattenClosedSubPaths(HvTransfo4(), 1, pts, tags), 1u);
    EXPECT_EQ(pts.Size(), 2u);
    EXPECT_EQ(path.TransformFlattenAndClipClosedSubPaths(HvTransfo4(), 1, {0, 0, 9, 9}, pts, tags),
              0u);
    EXPECT_EQ(pts.Size(), 2u);
}

TEST(HvPath2f_flatten, ClippedPolygonsAreClosedAndCounted)
{
    HvPath2f path = PolygonPath({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
    HvPath2f const away = PolygonPath({{10, 10}, {14, 10}, {14, 14}}, true);
    for (unsigned int i = 0; i < away.NumPoints(); ++i) {
        if (i == 0) {
            path.Moveto(away.GetPoint(i));
        } else {
            path.Lineto(away.GetPoint(i));
        }
    }
    path.Closeto();
    HvPoint2dArray pts;
    HvPointTagArray tags;
    EXPECT_EQ(path.TransformFlattenAndClipClosedSubPaths(HvTransfo4(), 1, {1, -9, 2, 2}, pts, tags),
              1u);
    EXPECT_EQ(InDouble(pts), (Points{{1, 2}, {1, 0}, {2, 0}, {2, 2}, {1, 2}}));
    EXPECT_EQ(TagsOf(tags), (std::vector<int>{0, 1, 1, 1, 2}));
}

// What lies beyond a side is not flattened; nobody can tell. The rectangle is small against the
// path, at its rim, or beside it, as that of a single pixel is.
RC_GTEST_PROP(HvPath2f_flatten, ClippedPolygonsAreThoseOfTheWholeOutline, ())
{
    HvPath2f const path = RandomOutline();
    HvTransfo4 transform;
    transform.Translate(PickInRange(-8, 9), PickInRange(-8, 9), 0.0);
    transform.ScaleXY(PickInRange(-4, 5), PickInRange(1, 5) / 3.0, HvPoint2<double>(3, 4));
    double const tolerance = std::ldexp(1.0, -PickInRange(-2, 8));
    for (int k = 0; k < 20; ++k) {
        double const x = PickInRange(-100, 201) / 4.0;
        double const y = PickInRange(-100, 201) / 4.0;
        HvExtent2<double> const clip(x, y, x + PickInRange(0, 40) / 4.0,
                                     y + PickInRange(0, 40) / 4.0);
        HvPoint2dArray expected;
        unsigned int count = 0;
        HvPath2fIter subpaths(path);
        unsigned int first = 0;
        unsigned int last = 0;
        while (subpaths.GetNextSubPathIndices(first, last) != 0) {
            HvPoint2dArray polygon;
            HvPoint2dArray spare;
            HvPointTagArray tags;
            if (last - first < 2 || HvPath2f(path, first, last)
                                            .TransformAndFlattenClosedSubPaths(
                                                transform, tolerance, polygon, tags) == 0) {
                continue;
            }
            polygon.Chop(polygon.Size() - 1);
            HvPolygon_Clip(polygon, clip, spare);
            if (polygon.Size() != 0) {
                expected.Add(polygon);
                expected.Add(polygon[0]);
                ++count;
            }
        }
        HvPoint2dArray clipped;
        HvPointTagArray tags;
        RC_ASSERT(path.TransformFlattenAndClipClosedSubPaths(transform, tolerance, clip, clipped,
                                                             tags) == count);
        RC_ASSERT(InDouble(clipped) == InDouble(expected));
        RC_ASSERT(tags.Size() == clipped.Size());
    }
}

// A turn around the rectangle beyond all its sides, from side to side and across corners.
TEST(HvPath2f_flatten, OutlineAroundTheRectangleIsTheRectangle)
{
    HvPath2f path(1u);
    path.Moveto({-20, 1});
    path.Curveto({-20, -20}, {-30, -40}, {3, -20});
    path.Curveto({30, -20}, {60, -60}, {20, 2});
    path.Lineto({20, 25});
    path.Curveto({19, 30}, {-20, 40}, {-20, 22});
    path.Lineto({-20, 1});
    path.Closeto();
    HvPoint2dArray pts;
    HvPointTagArray tags;
    EXPECT_EQ(
        path.TransformFlattenAndClipClosedSubPaths(HvTransfo4(), 0.01, {0, 0, 4, 4}, pts, tags),
        1u);
    for (HvPoint2<double> const& corner : {HvPoint2<double>(0, 0), HvPoint2<double>(4, 0),
                                           HvPoint2<double>(4, 4), HvPoint2<double>(0, 4)}) {
        EXPECT_NE(std::find(pts.begin(), pts.end(), corner), pts.end());
    }
    for (HvPoint2<double> const& p : pts) {
        EXPECT_TRUE(p.x == 0 || p.x == 4 || p.y == 0 || p.y == 4) << p.x << " " << p.y;
    }
}

TEST(HvPath2f_flatten, DoubleFormNeverNarrows)
{
    HvPath2f const path = PolygonPath({{1, 0}, {2, 0}, {2, 1}}, true);
    HvTransfo4 third;
    third.ScaleXY(1.0 / 3.0, 1.0, HvPoint2<double>());
    HvPoint2dArray pts;
    HvPointTagArray tags;
    path.TransformAndFlattenPath(third, 1, pts, tags);
    EXPECT_EQ(pts[0].x, 1.0 / 3.0);
    HvGC gc;
    gc.transform = third;
    HvPoint2fArray narrow;
    path.Flatten(gc, narrow, tags);
    EXPECT_EQ(narrow[0].x, 1.0F / 3.0F);
}

TEST(HvPath2f_flatten, HostileNumbersEnd)
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const nan = std::numeric_limits<float>::quiet_NaN();
    for (float const bad : {infinity, -infinity, nan, 3e38F, 1e-45F}) {
        HvPath2f path(1u);
        path.Moveto({0, 0});
        path.Curveto({bad, 1}, {2, bad}, {3, 3});
        path.Lineto({bad, bad});
        path.Lineto({0, 0});
        path.Closeto();
        for (double const tolerance : {1.0, 0.0, -1.0, 1e300, double(infinity), double(nan)}) {
            HvPoint2fArray pts;
            HvPoint2dArray pts2;
            HvPointTagArray tags;
            // More points than an array holds are refused; then nothing has been appended.
            try {
                path.AltFlatten(tolerance, pts, tags);
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(pts.Size(), 0u);
            }
            EXPECT_EQ(pts.Size(), tags.Size());
            tags.Chop(0);
            try {
                path.TransformFlattenAndClipClosedSubPaths(HvTransfo4(), tolerance, {0, 0, 8, 8},
                                                           pts2, tags);
            } catch (std::bad_alloc const&) {
                EXPECT_EQ(pts2.Size(), 0u);
            }
            EXPECT_EQ(pts2.Size(), tags.Size());
        }
    }
}

TEST(HvPath2f_flatten, WithoutMemoryBothArraysAreAsTheyWere)
{
    struct Work {
        HvPath2f path = PolygonPath({{0, 0}, {9, 0}, {9, 9}}, true);
        HvPoint2fArray pts;
        HvPoint2dArray pts2;
        HvPointTagArray tags;
    };
    auto const prepare = [] {
        Work work;
        work.path.Moveto({0, 0});
        work.path.Curveto({0, 50}, {50, 0}, {0, 0});
        work.path.Closeto();
        work.pts.Add(HvPoint2<float>(7, 7));
        work.pts2.Add(HvPoint2<double>(7, 7));
        work.tags.Add(HvPointTagEnd);
        return work;
    };
    auto const check = [](Work& work, bool completed) {
        if (!completed) {
            EXPECT_EQ(work.pts.Size() + work.pts2.Size() - 1, work.tags.Size());
            EXPECT_EQ(work.tags.Size(), 1u);
        }
    };
    long const some = RefuseEachAllocation(
        prepare, [](Work& work) { work.path.AltFlatten(0.1, work.pts, work.tags); }, check);
    EXPECT_GT(some, 2);
    RefuseEachAllocation(
        prepare,
        [](Work& work) {
            work.path.TransformAndFlattenPath(HvTransfo4(), 0.1, work.pts2, work.tags);
        },
        check);
    RefuseEachAllocation(
        prepare,
        [](Work& work) {
            work.path.TransformFlattenAndClipClosedSubPaths(HvTransfo4(), 0.1, {1, 1, 4, 4},
                                                            work.pts2, work.tags);
        },
        check);
}
