// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tests/support/allocation_failure.h>

#include "outline_paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

namespace {

using Point = HvPoint2<float>;

/// A wide stroke whose joins are always made.
HvGC WideStroke(double width)
{
    HvGC gc;
    gc.strokeWidth = width;
    gc.flatness = 1e-3;
    return gc;
}

HvPath2f OutlineOf(HvPath2f const& path, HvGC const& gc)
{
    HvPath2f outline(1u);
    path.GetStrokeOutline(gc, outline);
    return outline;
}

/// The points of a path, each subpath on a line of its own with its closing marked.
std::string TextOf(HvPath2f const& path)
{
    std::ostringstream text;
    for (unsigned int i = 0; i < path.NumPoints(); ++i) {
        Point const p = path.GetPoint(i);
        text << (path.IsStartOfSubpath(i) != 0 ? (i == 0 ? "" : "\n") : " ") << p.x << "," << p.y;
        int closed = 0;
        if (path.IsEndOfSubpath(i, closed) != 0 && closed != 0) {
            text << " z";
        }
    }
    return text.str();
}

/// The bend of a right angle, to the left for the eye that has y up: its left side is the inner
/// one.
HvPath2f const kBend = PolygonPath({{0, 0}, {10, 0}, {10, 10}}, false);

}  // namespace

TEST(HvPath2f_stroke, CapsOfALine)
{
    HvPath2f const line = PolygonPath({{0, 0}, {10, 0}}, false);
    HvGC gc = WideStroke(4);
    EXPECT_EQ(TextOf(OutlineOf(line, gc)), "0,2 10,2 10,-2 0,-2 0,2 z");
    gc.capStyle = 1;
    EXPECT_EQ(TextOf(OutlineOf(line, gc)), "0,2 10,2 12,2 12,-2 10,-2 0,-2 -2,-2 -2,2 0,2 z");
    gc.capStyle = 0;
    HvPath2f const round = OutlineOf(line, gc);
    ASSERT_EQ(round.NumPoints(), 15u);
    EXPECT_EQ(round.GetPoint(4), Point(12, 0)) << "the apex";
    EXPECT_EQ(round.GetPoint(7), Point(10, -2));
    EXPECT_EQ(round.GetPoint(11), Point(-2, 0));
    // Handles at 0.5522847498307935 of the way to the corners.
    EXPECT_FLOAT_EQ(round.GetPoint(2).x, 10 + 2 * 0.5522847498307935F);
    EXPECT_EQ(round.GetPoint(2).y, 2);
    EXPECT_EQ(round.GetPoint(3).x, 12);
    EXPECT_FLOAT_EQ(round.GetPoint(3).y, 2 * 0.5522847498307935F);
}

TEST(HvPath2f_stroke, StyleThatThereIsNotIsTheLastOne)
{
    HvPath2f const line = PolygonPath({{0, 0}, {10, 0}}, false);
    HvGC gc = WideStroke(4);
    for (int const known : {1, 2, 0}) {
        gc.capStyle = known;
        std::string const expected = TextOf(OutlineOf(line, gc));
        for (int const unknown : {3, -1, 1 << 30}) {
            gc.capStyle = unknown;
            EXPECT_EQ(TextOf(OutlineOf(line, gc)), expected);
        }
    }
    for (int const known : {0, 1, 2}) {
        gc.capStyle = 2;
        gc.joinStyle = known;
        std::string const expected = TextOf(OutlineOf(kBend, gc));
        gc.joinStyle = 77;
        EXPECT_EQ(TextOf(OutlineOf(kBend, gc)), expected);
    }
}

TEST(HvPath2f_stroke, JoinsOfARightAngle)
{
    HvGC gc = WideStroke(4);
    std::string const left = "0,2 10,2 10,0 8,0 8,10 12,10 ";
    std::string const end = " 0,-2 0,2 z";
    gc.joinStyle = 0;
    EXPECT_EQ(TextOf(OutlineOf(kBend, gc)), left + "12,0 10,-2" + end);
    gc.joinStyle = 1;
    gc.miterLimit = 1.5;  // the tip is 1.41 half widths away
    EXPECT_EQ(TextOf(OutlineOf(kBend, gc)), left + "12,-2" + end);
    gc.joinStyle = 2;
    EXPECT_EQ(TextOf(OutlineOf(kBend, gc)), left + "12,0 12,-2 10,-2" + end);
    EXPECT_EQ(OutlineOf(kBend, gc).GetDegree(8), 2u) << "one quadratic through the tip";
}

TEST(HvPath2f_stroke, MiterIsCutByItsLimit)
{
    HvGC gc = WideStroke(4);
    // r = 2, D = 2 sqrt 2. The cut lies 2 L - D from the vertex, across the diagonal, so it meets
    // the outer sides (2 L - D) sqrt 2 - 2 behind the points beside the vertex.
    double const d = 2 * std::sqrt(2.0);
    for (double const limit : {1.0, 1.2, 1.4}) {
        gc.miterLimit = limit;
        HvPath2f const outline = OutlineOf(kBend, gc);
        ASSERT_EQ(outline.NumPoints(), 10u);
        double const beyond = (2 * limit * 2 - d) * std::sqrt(2.0) - 2;
        EXPECT_NEAR(outline.GetPoint(6).x, 12, 1e-6);
        EXPECT_NEAR(outline.GetPoint(6).y, -beyond, 1e-6);
        EXPECT_NEAR(outline.GetPoint(7).x, 10 + beyond, 1e-6);
        EXPECT_NEAR(outline.GetPoint(7).y, -2, 1e-6);
    }
    // What is below 1, or no number, counts as 1.
    gc.miterLimit = 1;
    std::string const expected = TextOf(OutlineOf(kBend, gc));
    for (double const limit : {0.5, -3.0, std::nan("")}) {
        gc.miterLimit = limit;
        EXPECT_EQ(TextOf(OutlineOf(kBend, gc)), expected);
    }
}

TEST(HvPath2f_stroke, RoundJoinOfAReversalIsABevel)
{
    HvGC gc = WideStroke(4);
    gc.joinStyle = 2;
    // A turn of 119 degrees is round, one of 121 is not.
    for (double const degrees : {119.0, 121.0}) {
        double const turn = degrees * 3.14159265358979323846 / 180;
        HvPath2f const bend = PolygonPath({{0, 0},
                                           {10, 0},
                                           {static_cast<float>(10 + 10 * std::cos(turn)),
                                            static_cast<float>(10 * std::sin(turn))}},
                                          false);
        EXPECT_EQ(OutlineOf(bend, gc).LargestDegree(), degrees < 120 ? 2u : 1u);
    }
}

TEST(HvPath2f_stroke, SmallGapIsNoJoin)
{
    // The offsets of a right angle are 2 sqrt 2 apart.
    HvGC gc = WideStroke(4);
    gc.flatness = std::nextafter(2 * std::sqrt(2.0), 9.0);
    EXPECT_EQ(TextOf(OutlineOf(kBend, gc)), "0,2 8,0 8,10 12,10 10,-2 0,-2 0,2 z");
    // Initially the gap is 1 and the width 1: no turn of a thin stroke is joined but a sharp one.
    HvPath2f const straight = PolygonPath({{0, 0}, {5, 0}, {10, 0}}, false);
    EXPECT_EQ(TextOf(OutlineOf(straight, WideStroke(4))), "0,2 5,2 10,2 10,-2 5,-2 0,-2 0,2 z");
}

TEST(HvPath2f_stroke, ClosedSubpathGivesTwoRings)
{
    HvPath2f const square = PolygonPath({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    HvGC gc = WideStroke(4);
    gc.joinStyle = 0;
    EXPECT_EQ(TextOf(OutlineOf(square, gc)),
              "0,2 10,2 10,0 8,0 8,10 10,10 10,8 0,8 0,10 2,10 2,0 0,0 0,2 z\n"
              "-2,0 -2,10 0,12 10,12 12,10 12,0 10,-2 0,-2 -2,0 z");
    gc.joinStyle = 1;
    gc.miterLimit = 2;
    EXPECT_EQ(TextOf(OutlineOf(square, gc)),
              "0,2 10,2 10,0 8,0 8,10 10,10 10,8 0,8 0,10 2,10 2,0 0,0 0,2 0,2 z\n"
              "-2,0 -2,12 12,12 12,-2 -2,-2 -2,0 z");
    // What counts is that the ends are equal, not that somebody closed the path.
    HvPath2f const open = PolygonPath({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}, false);
    EXPECT_EQ(TextOf(OutlineOf(open, gc)), TextOf(OutlineOf(square, gc)));
}

TEST(HvPath2f_stroke, ReversalTurnsInsideOnBothSides)
{
    HvGC const gc = WideStroke(4);
    HvPath2f const back = PolygonPath({{0, 0}, {10, 0}, {0, 0}}, false);
    std::string const text = TextOf(OutlineOf(back, gc));
    // The same ring twice, once for each side, with the seam's point repeated as for every miter.
    std::string const ring = "0,2 10,2 10,0 10,-2 0,-2 0,0 0,2 0,2 z";
    EXPECT_EQ(text, ring + "\n" + ring);
}

TEST(HvPath2f_stroke, DotsAndEmptyPathsDrawNothing)
{
    HvGC const gc = WideStroke(4);
    EXPECT_EQ(TextOf(OutlineOf(HvPath2f(1u), gc)), "");
    HvPath2f const dot = PolygonPath({{3, 3}, {3, 3}, {3, 3}}, false);
    EXPECT_EQ(TextOf(OutlineOf(dot, gc)), "3,3");
    HvUByteRaster raster(8, 8, 0);
    dot.Stroke(gc, raster);
    EXPECT_EQ(raster.AllPixelValuesAre(0), 1);
    HvPath2f lone(1u);
    lone.Moveto({3, 3});
    EXPECT_EQ(TextOf(OutlineOf(lone, gc)), "");
}

TEST(HvPath2f_stroke, TaperSwellsToTheMiddle)
{
    HvGC gc = WideStroke(4);
    gc.taperStroke = 1;
    HvPath2f const line = PolygonPath({{0, 0}, {4, 0}, {8, 0}, {16, 0}}, false);
    // At a quarter 4 * 1/4 * 3/4 of the half width 2.
    EXPECT_EQ(TextOf(OutlineOf(line, gc)), "0,0 4,1.5 8,2 16,0 16,0 8,-2 4,-1.5 0,0 0,0 z");
    HvPath2f const dot = PolygonPath({{3, 3}, {3, 3}}, false);
    EXPECT_EQ(TextOf(OutlineOf(dot, gc)), "3,3");
}

TEST(HvPath2f_stroke, WidthIsInDeviceSpace)
{
    HvPath2f const line = PolygonPath({{0, 0}, {1, 0}}, false);
    HvGC gc = WideStroke(4);
    gc.transform.Translate(5, 5, 0);
    gc.transform.ScaleXY(10, 10, HvPoint2<double>());
    EXPECT_EQ(TextOf(OutlineOf(line, gc)), "5,7 15,7 15,3 5,3 5,7 z");
}

TEST(HvPath2f_stroke, OutlineMayBeThePathItself)
{
    HvPath2f path = PolygonPath({{0, 0}, {10, 0}}, false);
    path.GetStrokeOutline(WideStroke(4), path);
    EXPECT_EQ(TextOf(path), "0,2 10,2 10,-2 0,-2 0,2 z");
}

TEST(HvPath2f_stroke, StrokeIsItsOutlineFilledByWinding)
{
    HvPath2f const square = PolygonPath({{4, 4}, {14, 4}, {14, 14}, {4, 14}}, true);
    HvGC gc = WideStroke(3);
    gc.fillRule = 0;
    HvUByteRaster raster(20, 20, 0);
    square.Stroke(gc, raster);
    HvUByteRaster expected(20, 20, 0);
    HvGC winding;
    OutlineOf(square, gc).Fill(winding, expected, nullptr);
    EXPECT_EQ(std::vector<int>(raster.data, raster.data + 400),
              std::vector<int>(expected.data, expected.data + 400));
    EXPECT_EQ(raster.data[9 * 20 + 9], 0) << "the middle stays free";
    EXPECT_EQ(raster.data[9 * 20 + 4], 255);
}

RC_GTEST_PROP(HvPath2f_stroke, PixelsNearTheLineAreCoveredAndOthersNot, ())
{
    // Round caps and joins: a pixel whose centre is well within half the width is covered, one well
    // beyond it is not. Corners are one quadratic through the tip, which strays from the circle by
    // less than a third of the radius up to the turn of 120 degrees; sharper ones are bevels.
    HvPath2f path(1u);
    path.Moveto({static_cast<float>(PickInRange(4, 60)), static_cast<float>(PickInRange(4, 60))});
    int const segments = PickInRange(1, 4);
    for (int k = 0; k < segments; ++k) {
        path.Lineto(
            {static_cast<float>(PickInRange(4, 60)), static_cast<float>(PickInRange(4, 60))});
    }
    HvGC gc;
    gc.flatness = 0.05;
    gc.capStyle = 0;
    gc.joinStyle = 2;
    gc.strokeWidth = PickInRange(2, 9);
    HvUByteRaster raster(64, 64, 0);
    path.Stroke(gc, raster);
    double const half = gc.strokeWidth / 2;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            double nearest = 1e9;
            bool isBesideAnEdge = false;
            for (unsigned int i = 0; i + 1 < path.NumPoints(); ++i) {
                HvPoint2<double> const a(path.GetPoint(i));
                HvPoint2<double> const b(path.GetPoint(i + 1));
                HvPoint2<double> const d = b - a;
                HvPoint2<double> const p = HvPoint2<double>(x + 0.5, y + 0.5) - a;
                double const squared = d.x * d.x + d.y * d.y;
                double const t = squared == 0 ? 0 : (p.x * d.x + p.y * d.y) / squared;
                double const along = std::min(1.0, std::max(0.0, t));
                double const distance = std::hypot(p.x - along * d.x, p.y - along * d.y);
                nearest = std::min(nearest, distance);
                isBesideAnEdge = isBesideAnEdge || (t > 0 && t < 1 && distance < half - 0.01);
            }
            int const pixel = raster.data[y * 64 + x];
            RC_ASSERT(!isBesideAnEdge || pixel == 255);
            // The pixel of the right end counts, so a pixel more on the right.
            RC_ASSERT(nearest < half * 1.34 + 1.1 || pixel == 0);
        }
    }
}

TEST(HvPath2f_stroke, HostileNumbersEnd)
{
    double const infinity = std::numeric_limits<double>::infinity();
    HvUByteRaster raster(8, 8, 0);
    for (double const bad : {infinity, -infinity, std::nan(""), 1e300, -4.0, 0.0, 5e-324}) {
        for (int const style : {0, 1, 2}) {
            HvGC gc;
            gc.capStyle = style;
            gc.joinStyle = style;
            gc.taperStroke = style;
            gc.strokeWidth = bad;
            kBend.Stroke(gc, raster);
            gc.strokeWidth = 3;
            gc.miterLimit = bad;
            kBend.Stroke(gc, raster);
            gc.flatness = bad;
            kBend.Stroke(gc, raster);
            auto const narrow = static_cast<float>(std::min(std::max(bad, -3e38), 3e38));
            PolygonPath({{0, 0}, {narrow, 4}, {4, narrow}, {1, 1}}, true).Stroke(HvGC(), raster);
        }
    }
}

TEST(HvPath2f_stroke, WithoutMemoryTheOutlineIsAsItWas)
{
    struct Work {
        HvPath2f path = PolygonPath({{0, 0}, {9, 0}, {9, 9}, {0, 4}}, true);
        HvPath2f outline = PolygonPath({{7, 7}, {8, 8}}, false);
        HvUByteRaster raster = HvUByteRaster(16, 16, 0);
    };
    HvGC const gc = WideStroke(2);
    EXPECT_GT(
        RefuseEachAllocation([] { return Work(); },
                             [&](Work& work) { work.path.GetStrokeOutline(gc, work.outline); },
                             [](Work& work, bool completed) {
                                 EXPECT_EQ(work.outline.NumPoints() == 2, !completed);
                             }),
        5);
    EXPECT_GT(RefuseEachAllocation([] { return Work(); },
                                   [&](Work& work) { work.path.Stroke(gc, work.raster); },
                                   [&](Work& work, bool) {
                                       work.path.Stroke(gc, work.raster);
                                       EXPECT_EQ(work.raster.data[4 * 16 + 9], 255);
                                   }),
              10);
}
