// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The oval: its outline, hits and radial fill.

#include <hv/shape/HvOval2f.h>

#include "shape_lock_probe.h"

#include <hv/foundation/HvExtent2.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Extent = HvExtent2<float>;
using Point = HvPoint2<float>;

/// The value of a radial fill by the definition: the oval's own coordinates of the pixel's centre,
/// by Cramer's rule in long double, and the falloff 1 - distance.
double ExpectedRadial(Point const& p0, Point const& p1, Point const& p2, int x, int y)
{
    using Wide = long double;
    Wide const ux = Wide(p1.x) - p0.x;
    Wide const uy = Wide(p1.y) - p0.y;
    Wide const vx = Wide(p2.x) - p0.x;
    Wide const vy = Wide(p2.y) - p0.y;
    Wide const dx = x + 0.5L - p0.x;
    Wide const dy = y + 0.5L - p0.y;
    Wide const area = ux * vy - uy * vx;
    Wide const s = 2 * (dx * vy - dy * vx) / area - 1;
    Wide const t = 2 * (ux * dy - uy * dx) / area - 1;
    Wide const distance = std::sqrt(s * s + t * t);
    return distance > 1 ? 0.0 : static_cast<double>(255 * (1 - distance));
}

}  // namespace

TEST(HvOval2f, OutlineIsFourCubicsInAClosedSubpath)
{
    HvOval2f const oval(Point(10, 20), Point(18, 22), Point(11, 26));
    HvPath2f path(1);
    path.Moveto(Point(1, 1));
    path.Lineto(Point(2, 2));
    oval.SetupPathRep(path);
    ASSERT_EQ(path.NumPoints(), 15U);
    EXPECT_EQ(path.NumSubpaths(), 2U);
    EXPECT_EQ(path.IsStartOfSubpath(2), 1);
    EXPECT_EQ(path.IsSubpathClosed(2), 1);
    for (unsigned int quarter = 0; quarter < 4; ++quarter) {
        unsigned int const start = 2 + 3 * quarter;
        EXPECT_EQ(path.GetPoint(start), oval.GetPoint(2 * quarter + 1)) << quarter;
        EXPECT_EQ(path.GetDegree(start + 1), 3U);
        EXPECT_EQ(path.EndOfSegment(start + 1), start + 3);
    }
    EXPECT_EQ(path.GetPoint(14), oval.GetPoint(1));
}

TEST(HvOval2f, OutlineIsSmoothWhereItsQuartersMeet)
{
    HvOval2f const oval(Point(10, 20), Point(18, 22), Point(11, 26));
    HvPath2f path(1);
    oval.SetupPathRep(path);
    for (unsigned int node = 0; node <= 12; node += 3) {
        EXPECT_EQ(path.IsG1Continuous(node), 1) << node;
    }
}

TEST(HvOval2f, OutlineWaitsForTheLock)
{
    HvOval2f const oval;
    HvPath2f path(1);
    EXPECT_TRUE(ShapeLockProbe_Waits(oval, true, [&] { oval.SetupPathRep(path); }));
    EXPECT_TRUE(ShapeLockProbe_IsFree(oval));
}

TEST(HvOval2f, HitsItsCurveAndNotItsCorners)
{
    // The circle of radius 10 about (10, 10), moved by (100, 0).
    HvOval2f const oval(Point(0, 0), Point(20, 0), Point(0, 20));
    HvGC gc;
    gc.transform.Translate(100, 0, 0);
    EXPECT_EQ(oval.IsIntersectingExtent(gc, Extent(101, 1, 102, 2), 0), 0);   // its corner
    EXPECT_EQ(oval.IsIntersectingExtent(gc, Extent(102, 2, 104, 4), 0), 1);   // its curve
    EXPECT_EQ(oval.IsIntersectingExtent(gc, Extent(108, 8, 112, 12), 0), 0);  // its inside
    EXPECT_EQ(oval.IsIntersectingExtent(gc, Extent(0, 0, 20, 20), 0), 0);
    EXPECT_FALSE(oval.IsInteriorIntersectingExtent(gc, Extent(101, 1, 102, 2), 0));
    EXPECT_TRUE(oval.IsInteriorIntersectingExtent(gc, Extent(102, 2, 104, 4), 0));
    EXPECT_TRUE(oval.IsInteriorIntersectingExtent(gc, Extent(108, 8, 112, 12), 0));
}

TEST(HvOval2f, BecomesAPathInFloat)
{
    HvOval2f const oval(Point(0, 0), Point(6, 0), Point(0, 6));
    HvPath2f const path(oval);
    HvPath2f exact(1);
    oval.SetupPathRep(exact);
    ASSERT_EQ(path.NumPoints(), 13U);
    EXPECT_EQ(path.IsSiblingOf(exact), 1);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    // See oval_outline.RoundsByTheTypeOfItsArithmetic.
    EXPECT_EQ(path.GetPoint(10).x, std::nextafter(exact.GetPoint(10).x, 9.0F));
    for (unsigned int node = 0; node <= 12; node += 3) {
        EXPECT_EQ(path.GetPoint(node), exact.GetPoint(node));
    }
}

TEST(HvOval2f, RadialFillFollowsTheDistanceFromTheCentre)
{
    struct {
        Point p0, p1, p2;
    } const rows[] = {{Point(2, 3), Point(30, 3), Point(2, 21)},
                      {Point(10, -5), Point(35, 8), Point(3, 20)},
                      {Point(2, 30), Point(30, 30), Point(2, 4)}};
    for (auto const& row : rows) {
        HvUByteRaster raster(40, 32, 7);
        HvOval2f(row.p0, row.p1, row.p2).RadialFill(HvGC(), raster);
        for (int y = 0; y < 32; ++y) {
            for (int x = 0; x < 40; ++x) {
                // Half a step is rounding; in double the rest is far below the slack.
                EXPECT_NEAR(raster.data[y * 40 + x], ExpectedRadial(row.p0, row.p1, row.p2, x, y),
                            0.5 + 1e-6)
                    << x << ' ' << y;
            }
        }
    }
}

TEST(HvOval2f, RadialFillReachesTheLastKeyAtTheCurve)
{
    // The constant 0.6 up to parameter 4: the inside of the circle of radius 8 about (10, 10).
    HvGC gc;
    gc.falloff =
        HvStdFCurve(0, 0.6, 4, 0.6, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
    HvUByteRaster raster(20, 20, 7);
    HvOval2f(Point(2, 2), Point(18, 2), Point(2, 18)).RadialFill(gc, raster);
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            bool const isInside = std::hypot(x + 0.5 - 10, y + 0.5 - 10) <= 8.0;
            EXPECT_EQ(raster.data[y * 20 + x], isInside ? 153 : 0) << x << ' ' << y;
        }
    }
}

TEST(HvOval2f, RadialFillWithoutAnAreaIsBlack)
{
    HvOval2f const flat(Point(2, 2), Point(18, 2), Point(10, 2));
    HvUByteRaster raster(20, 20, 7);
    flat.RadialFill(HvGC(), raster);
    EXPECT_EQ(raster.AllPixelValuesAre(0), 1);

    // A falloff whose last key is not beyond 0 has no distance either.
    HvOval2f const oval(Point(2, 2), Point(18, 2), Point(2, 18));
    HvGC gc;
    gc.falloff = HvStdFCurve(-1, 1, 0, 1, HvBaseFCurve::CubicSegment, HvBaseFCurve::CubicSegment);
    HvUByteRaster again(20, 20, 7);
    oval.RadialFill(gc, again);
    EXPECT_EQ(again.AllPixelValuesAre(0), 1);
}

TEST(HvOval2f, RadialFillWithoutKeysIsConstant)
{
    HvGC gc;
    gc.falloff = HvStdFCurve(0.4, HvBaseFCurve::CubicSegment);
    HvUByteRaster raster(20, 20, 7);
    HvOval2f(Point(2, 2), Point(18, 2), Point(2, 18)).RadialFill(gc, raster);
    EXPECT_EQ(raster.data[10 * 20 + 10], 102);
    EXPECT_EQ(raster.data[0], 0);
}
