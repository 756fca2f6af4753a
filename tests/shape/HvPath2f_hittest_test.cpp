// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/HvULongArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/polygon_fill.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/internal/polygon_clip.h>
#include <tests/support/allocation_failure.h>

#include "outline_paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <new>

namespace {

using Extent = HvExtent2<float>;

Extent StateOnly(int state)
{
    Extent extent(100, 100, 101, 101);
    extent.state = state;
    return extent;
}

HvPath2f Square()
{
    return PolygonPath({{0, 0}, {8, 0}, {8, 8}, {0, 8}}, true);
}

}  // namespace

TEST(HvPath2f_hittest, FirstPointInTheSquareIsPicked)
{
    HvPath2f const path = PolygonPath({{5, 5}, {1, 1}, {1.5F, 1}}, false);
    unsigned int index = 77;
    EXPECT_EQ(path.GetClosePointIndex({2, 2}, 2.0, &index), 1);
    EXPECT_EQ(index, 1u) << "the side of the square counts as inside";
    index = 77;
    EXPECT_EQ(path.GetClosePointIndex({2, 2}, 1.5, &index), 0);
    EXPECT_EQ(path.GetClosePointIndex({2, 2}, -1.0, &index), 0);
    EXPECT_EQ(path.GetClosePointIndex({2, 2}, std::nan(""), &index), 0);
    EXPECT_EQ(index, 77u);
}

TEST(HvPath2f_hittest, NearestPointIsTheLowestOfSeveral)
{
    unsigned int index = 77;
    EXPECT_EQ(HvPath2f(1u).GetClosePointIndex({0, 0}, &index), 0);
    EXPECT_EQ(index, 0u);
    // By max + 0.3334 min, (3, 3) is at 4.0002 and (4, 0) at 4.
    HvPath2f const path = PolygonPath({{9, 9}, {3, 3}, {4, 0}, {0, -4}}, false);
    EXPECT_EQ(path.GetClosePointIndex({0, 0}, &index), 1);
    EXPECT_EQ(index, 2u);
    HvPath2f const far = PolygonPath({{3e38F, -3e38F}, {3e38F, 3e38F}}, false);
    EXPECT_EQ(far.GetClosePointIndex({-3e38F, 0}, &index), 1);
    EXPECT_EQ(index, 0u) << "nothing is nearer than a float can tell";
}

TEST(HvPath2f_hittest, PointsInsideAreAppended)
{
    HvPath2f const path = Square();
    HvULongArray indices;
    indices.Add(9);
    EXPECT_EQ(path.GetPointsInExtentIndices({0, 0, 8, 4}, &indices), 3u);
    EXPECT_EQ(std::vector<unsigned long>(indices.begin(), indices.end()),
              (std::vector<unsigned long>{9, 0, 1, 4}));
    EXPECT_EQ(path.GetPointsInExtentIndices(StateOnly(Extent::Empty), &indices), 0u);
    EXPECT_EQ(path.GetPointsInExtentIndices(StateOnly(Extent::WholePlane), &indices), 5u);
}

TEST(HvPath2f_hittest, OutlineIsMetOnNodesAndBetween)
{
    HvPath2f const path = Square();
    HvGC const gc;
    EXPECT_EQ(path.IsIntersectingExtent(gc, {-1, -1, 0, 0}, 0), 1) << "a corner on the corner";
    EXPECT_EQ(path.IsIntersectingExtent(gc, {3, -1, 4, 1}, 0), 1) << "an edge through it";
    EXPECT_EQ(path.IsIntersectingExtent(gc, {3, -1, 4, 0}, 0), 1) << "an edge along its side";
    EXPECT_EQ(path.IsIntersectingExtent(gc, {3, 3, 4, 4}, 0), 0) << "inside, nothing is met";
    EXPECT_EQ(path.IsIntersectingExtent(gc, {9, 9, 10, 10}, 0), 0);
    // The last corner meets the first only where the path says so.
    HvPath2f const open = PolygonPath({{0, 0}, {8, 0}, {8, 8}, {0, 8}}, false);
    EXPECT_EQ(open.IsIntersectingExtent(gc, {-1, 3, 1, 4}, 0), 0);
    EXPECT_EQ(path.IsIntersectingExtent(gc, {-1, 3, 1, 4}, 0), 1);
}

TEST(HvPath2f_hittest, HandlesAreNotNodes)
{
    HvPath2f path(1u);
    path.Moveto({0, 0});
    path.Curveto({0, 16}, {16, 16}, {16, 0});
    HvGC const gc;
    EXPECT_EQ(path.IsIntersectingExtent(gc, {-1, 15, 1, 17}, 0), 0);
    EXPECT_EQ(path.IsIntersectingExtent(gc, {7, 11, 9, 13}, 0), 1) << "the top of the curve";
}

TEST(HvPath2f_hittest, QueriesWithoutNumbers)
{
    HvPath2f const path = Square();
    HvGC const gc;
    EXPECT_EQ(path.IsIntersectingExtent(gc, StateOnly(Extent::Empty), 0), 0);
    EXPECT_EQ(path.IsIntersectingExtent(gc, StateOnly(Extent::Empty), 1), 0);
    EXPECT_EQ(path.IsIntersectingExtent(gc, StateOnly(Extent::WholePlane), 0), 1);
    EXPECT_EQ(HvPath2f(1u).IsIntersectingExtent(gc, StateOnly(Extent::WholePlane), 0), 0);
    EXPECT_EQ(HvPath2f(1u).IsIntersectingExtent(gc, StateOnly(Extent::WholePlane), 1), 0);
    EXPECT_FALSE(path.IsInteriorIntersectingExtent(gc, StateOnly(Extent::Empty), 0));
    EXPECT_FALSE(path.IsInteriorIntersectingExtent(gc, StateOnly(Extent::Empty), 1));
    EXPECT_TRUE(path.IsInteriorIntersectingExtent(gc, StateOnly(Extent::WholePlane), 0));
    EXPECT_FALSE(HvPath2f(1u).IsInteriorIntersectingExtent(gc, StateOnly(Extent::WholePlane), 1));
}

TEST(HvPath2f_hittest, ExtentTestCanBeSkipped)
{
    // A query far off its extent test: the outline decides the same.
    HvPath2f const path = Square();
    HvGC const gc;
    EXPECT_EQ(path.IsIntersectingExtent(gc, {3, -1, 4, 1}, 1), 1);
    EXPECT_EQ(path.IsIntersectingExtent(gc, {90, 90, 91, 91}, 1), 0);
    EXPECT_FALSE(path.IsInteriorIntersectingExtent(gc, {90, 90, 91, 91}, 1));
}

TEST(HvPath2f_hittest, InteriorIsInsideOfClosedSubpaths)
{
    HvPath2f path = Square();
    HvGC gc;
    EXPECT_TRUE(path.IsInteriorIntersectingExtent(gc, {3, 3, 4, 4}, 0));
    EXPECT_TRUE(path.IsInteriorIntersectingExtent(gc, {-1, 3, 1, 4}, 0)) << "the outline";
    EXPECT_FALSE(path.IsInteriorIntersectingExtent(gc, {9, 3, 10, 4}, 0));
    HvPath2f const open = PolygonPath({{0, 0}, {8, 0}, {8, 8}, {0, 8}}, false);
    EXPECT_FALSE(open.IsInteriorIntersectingExtent(gc, {3, 3, 4, 4}, 0));
    // A hole of the same direction is one by the even-odd rule alone.
    path.Moveto({2, 2});
    path.Lineto({6, 2});
    path.Lineto({6, 6});
    path.Lineto({2, 6});
    path.Lineto({2, 2});
    path.Closeto();
    EXPECT_TRUE(path.IsInteriorIntersectingExtent(gc, {3, 3, 4, 4}, 0));
    gc.fillRule = 0;
    EXPECT_FALSE(path.IsInteriorIntersectingExtent(gc, {3, 3, 4, 4}, 0));
}

TEST(HvPath2f_hittest, QueryIsInDeviceSpace)
{
    HvPath2f const path = Square();
    HvGC gc;
    gc.transform.Translate(1000, 0, 0);
    gc.transform.ScaleXY(10, 10, HvPoint2<double>());
    EXPECT_TRUE(path.IsInteriorIntersectingExtent(gc, {1040, 40, 1041, 41}, 0));
    EXPECT_EQ(path.IsIntersectingExtent(gc, {1040, 40, 1041, 41}, 0), 0);
    EXPECT_FALSE(path.IsInteriorIntersectingExtent(gc, {40, 40, 41, 41}, 0));
    EXPECT_EQ(path.IsIntersectingExtent(gc, {1079, 40, 1081, 41}, 0), 1);
}

RC_GTEST_PROP(HvPath2f_hittest, OutlineIsMetWhereItsPolylineIs, ())
{
    HvPath2f const path = RandomOutline();
    HvGC gc;
    gc.flatness = 0.25;
    gc.transform.ScaleXY(1.5, -0.5, HvPoint2<double>(3, 4));
    HvPoint2fArray pts;
    HvPointTagArray tags;
    path.Flatten(gc, pts, tags);
    for (int k = 0; k < 20; ++k) {
        auto const x = static_cast<float>(PickInRange(-80, 200)) / 4;
        auto const y = static_cast<float>(PickInRange(-80, 200)) / 4;
        Extent const query(x, y, x + static_cast<float>(PickInRange(0, 8)) / 4,
                           y + static_cast<float>(PickInRange(0, 8)) / 4);
        // Edges are looked at in a thousand places; what is met is met by more than a thousandth,
        // or is not asked.
        bool met = false;
        bool near = false;
        for (unsigned int i = 0; i + 1 < pts.Size(); ++i) {
            if (tags[i] == HvPointTagEnd) {
                continue;
            }
            for (int s = 0; s <= 1000; ++s) {
                double const t = s / 1000.0;
                double const px = pts[i].x + (double(pts[i + 1].x) - pts[i].x) * t;
                double const py = pts[i].y + (double(pts[i + 1].y) - pts[i].y) * t;
                met = met || (px >= query.min.x && px <= query.max.x && py >= query.min.y &&
                              py <= query.max.y);
                near = near || (px >= query.min.x - 0.1 && px <= query.max.x + 0.1 &&
                                py >= query.min.y - 0.1 && py <= query.max.y + 0.1);
            }
        }
        int const result = path.IsIntersectingExtent(gc, query, 0);
        RC_ASSERT(result == path.IsIntersectingExtent(gc, query, 1));
        RC_ASSERT(!met || result == 1);
        RC_ASSERT(near || result == 0);
    }
}

/// Whether the pixel at the corner of the query is covered when the whole outline is flattened,
/// clipped and filled.
bool IsCornerCovered(HvPath2f const& path, HvGC const& gc, Extent const& query)
{
    HvTransfo4 toCorner;
    toCorner.Translate(-double(query.min.x), -double(query.min.y), 0.0);
    HvTransfo4 transform = gc.transform;
    transform.PreMultiply(toCorner);
    HvUByteRaster pixel(1, 1, 0);
    HvExtent2<float> extent;
    path.GetExtent(extent);
    HvFillBox box;
    if (HvFillBox_FromExtent(transform.Map(extent), pixel, box) == 0) {
        return false;
    }
    HvPoint2dArray whole;
    HvPoint2dArray points;
    HvPointTagArray wholeTags;
    HvPointTagArray tags;
    path.TransformAndFlattenClosedSubPaths(transform, gc.flatness, whole, wholeTags);
    HvPoint2dArray polygon;
    HvPoint2dArray spare;
    for (unsigned int i = 0; i < whole.Size(); ++i) {
        if (wholeTags[i] != HvPointTagEnd) {
            polygon.Add(whole[i]);
            continue;
        }
        if (box.isClamped) {
            HvPolygon_Clip(polygon, box.Clip(), spare);
        }
        for (unsigned int k = 0; polygon.Size() != 0 && k <= polygon.Size(); ++k) {
            points.Add(polygon[k % polygon.Size()]);
            tags.Add(k == polygon.Size() ? HvPointTagEnd : HvPointTagInner);
        }
        polygon.Chop(0);
    }
    HvPolygons_Fill({points, tags, gc.fillRule, box}, pixel, nullptr);
    return pixel.data[0] == 255;
}

// Most of the outline lies beside the query and is not flattened: the answer is as if it were.
RC_GTEST_PROP(HvPath2f_hittest, InteriorIsThatOfTheWholeOutline, ())
{
    HvPath2f path = RandomOutline();
    path.CloseSubpath(0);
    HvGC gc;
    gc.flatness = 0.25;
    gc.fillRule = PickInRange(0, 2);
    gc.transform.ScaleXY(PickInRange(-3, 4), 0.75, HvPoint2<double>(3, 4));
    for (int k = 0; k < 40; ++k) {
        auto const x = static_cast<float>(PickInRange(-100, 200)) / 4;
        auto const y = static_cast<float>(PickInRange(-100, 200)) / 4;
        Extent const query(x, y, x + 0.5F, y + 0.5F);
        bool const expected =
            path.IsIntersectingExtent(gc, query, 1) != 0 || IsCornerCovered(path, gc, query);
        RC_ASSERT(path.IsInteriorIntersectingExtent(gc, query, 1) == expected);
    }
}

TEST(HvPath2f_hittest, SamplesInsideKeepTheirTags)
{
    HvPath2f const path = PolygonPath({{0, 0}, {10, 0}}, false);
    HvGC const gc;
    HvPoint2fArray pts;
    HvPointTagArray tags;
    EXPECT_EQ(path.IntersectSamplePointsExtent(gc, {2.5F, -1, 4.5F, 1}, pts, tags, 0), 2);
    EXPECT_EQ(pts[0], HvPoint2<float>(3, 0));
    EXPECT_EQ(pts[1], HvPoint2<float>(4, 0));
    EXPECT_EQ(tags[0], HvPointTagInner);
    EXPECT_EQ(tags[1], HvPointTagInner);
    EXPECT_EQ(path.IntersectSamplePointsExtent(gc, {-1, -1, 0, 0}, pts, tags, 0), 1);
    EXPECT_EQ(tags[2], HvPointTagStart);
    EXPECT_EQ(path.IntersectSamplePointsExtent(gc, {20, 0, 21, 1}, pts, tags, 0), 0);
    EXPECT_EQ(path.IntersectSamplePointsExtent(gc, {20, 0, 21, 1}, pts, tags, 1), 0);
    EXPECT_EQ(pts.Size(), 3u);
}

TEST(HvPath2f_hittest, HostileNumbersEnd)
{
    float const infinity = std::numeric_limits<float>::infinity();
    float const nan = std::numeric_limits<float>::quiet_NaN();
    for (float const bad : {infinity, -infinity, nan, 3e38F}) {
        HvPath2f path(1u);
        path.Moveto({0, 0});
        path.Curveto({bad, 1}, {2, bad}, {3, 3});
        path.Lineto({bad, -bad});
        path.Lineto({0, 0});
        path.Closeto();
        HvGC const gc;
        unsigned int index = 0;
        for (Extent const& query :
             {Extent(0, 0, 1, 1), Extent(bad, bad, bad, bad), Extent(-bad, 0, 2, bad)}) {
            for (int const skip : {0, 1}) {
                try {
                    path.IsInteriorIntersectingExtent(gc, query, skip);
                } catch (std::bad_alloc const&) {
                    // The outline would have more points than an array holds.
                }
            }
            path.GetClosePointIndex(query.min, &index);
            path.GetClosePointIndex(query.max, bad, &index);
        }
        EXPECT_LT(index, path.NumPoints());
    }
}

TEST(HvPath2f_hittest, WithoutMemoryNothingIsHeld)
{
    long const some = RefuseEachAllocation([] {
        HvPath2f path(1u);
        path.Moveto({0, 0});
        path.Curveto({0, 500}, {500, 500}, {0, 0});
        path.Closeto();
        HvGC gc;
        gc.flatness = 0.01;
        path.IsIntersectingExtent(gc, {3, 100, 4, 101}, 0);
        path.IsInteriorIntersectingExtent(gc, {50, 200, 51, 201}, 0);
        HvPoint2fArray pts;
        HvPointTagArray tags;
        path.IntersectSamplePointsExtent(gc, {0, 0, 300, 300}, pts, tags, 0);
    });
    EXPECT_GT(some, 10);
}
