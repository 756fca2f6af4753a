// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Clipped flattening of cubics: runs, tags, flags, the plain way as a judge.

#include <hv/bezier/HvBezierTool_clip.h>

#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/bezier/line_clip.h>

#include "../support/allocation_failure.h"
#include "flattened_runs_test_support.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Extent = HvExtent2<double>;

// y = 12 t (1 - t), x = 3 t; at tolerance 0.25 the vertices
// (0,0)(0.75,2.25)(1.5,3)(2.25,2.25)(3,0).
Point2 const kArch[4] = {{0, 0}, {1, 4}, {2, 4}, {3, 0}};
constexpr double kArchTolerance = 0.25;

Extent WithState(int state)
{
    Extent e(0, 0, 1, 1);
    e.state = state;
    return e;
}

void Clip(Point2 const* cubic, Extent const& clip, RunArrays& a, double tolerance = kArchTolerance)
{
    HvBezierTool_ClipAndFlattenCubic2d(cubic, tolerance, clip, &a.points, &a.tags, &a.flags);
}

}  // namespace

TEST(HvBezierTool_clip, GivesTheWholeCurveInsideTheClip)
{
    // The box of the control points, closed: its corners lie on the clip's.
    for (Extent const& clip : {Extent(0, 0, 3, 4), WithState(Extent::WholePlane)}) {
        RunArrays a;
        Clip(kArch, clip, a);
        EXPECT_EQ(a.Points(), "(0,0)(0.75,2.25)(1.5,3)(2.25,2.25)(3,0)");
        EXPECT_EQ(a.Tags(), "0 1 1 1 1");
        EXPECT_EQ(a.Flags(), "1 1 1 1 1");
    }
}

TEST(HvBezierTool_clip, GivesNothingInAnEmptyClip)
{
    RunArrays a;
    a.runs.BeginEdge({9, 9}, 1);
    Clip(kArch, WithState(Extent::Empty), a);
    EXPECT_EQ(a.Points(), "(9,9)");
    EXPECT_EQ(a.Tags(), "0");
    EXPECT_EQ(a.Flags(), "1");
}

TEST(HvBezierTool_clip, BreaksWhereTheCurveLeavesAndReturns)
{
    // Above y = 2.25 the arch is cut off between its second and fourth vertex.
    RunArrays a;
    Clip(kArch, Extent(-1, -1, 4, 2.25), a);
    EXPECT_EQ(a.Points(), "(0,0)(0.75,2.25)(0.75,2.25)(2.25,2.25)(2.25,2.25)(3,0)");
    EXPECT_EQ(a.Tags(), "0 1 2 0 1 1");
    RunArrays b;
    Clip(kArch, Extent(-1, -1, 4, 1.125), b);
    EXPECT_EQ(b.Points(), "(0,0)(0.375,1.125)(2.625,1.125)(3,0)");
    EXPECT_EQ(b.Tags(), "0 2 0 1");
    EXPECT_EQ(b.Flags(), "1 1 1 1");
}

TEST(HvBezierTool_clip, BreaksFromTheVertexBeforeWithAFlagThatTellsThePath)
{
    RunArrays inside;
    inside.runs.BeginEdge({-1, -1}, 1);
    inside.runs.EndEdge({-1, 0});
    Clip(kArch, Extent(0, 0, 3, 4), inside);
    EXPECT_EQ(inside.Tags(), "0 2 0 1 1 1 1");
    EXPECT_EQ(inside.Flags(), "1 0 1 1 1 1 1");

    RunArrays clipped;
    clipped.runs.BeginEdge({-1, -1}, 1);
    clipped.runs.EndEdge({-1, 0});
    // The curve is wholly visible, but its control points are not.
    Clip(kArch, Extent(0, 0, 3, 3.5), clipped);
    EXPECT_EQ(clipped.Points(), "(-1,-1)(-1,0)(0,0)(0.75,2.25)(1.5,3)(2.25,2.25)(3,0)");
    EXPECT_EQ(clipped.Tags(), "0 2 0 1 1 1 1");
    EXPECT_EQ(clipped.Flags(), "1 1 1 1 1 1 1");
}

TEST(HvBezierTool_clip, GoesOnFromTheVertexBefore)
{
    for (Extent const& clip : {Extent(0, 0, 3, 4), Extent(0, 0, 3, 3.5)}) {
        RunArrays a;
        a.runs.BeginJump({-1, -1});
        a.runs.BeginJump({0, 0});
        Clip(kArch, clip, a);
        EXPECT_EQ(a.Points(), "(-1,-1)(0,0)(0.75,2.25)(1.5,3)(2.25,2.25)(3,0)");
        EXPECT_EQ(a.Tags(), "2 0 1 1 1 1");
        EXPECT_EQ(a.Flags(), "0 0 1 1 1 1") << "the flag of the joint is not touched";
    }
}

TEST(HvBezierTool_clip, TouchesNothingWhenNothingIsVisible)
{
    for (Extent const& clip : {Extent(5, 0, 9, 9), Extent(-9, 0, -5, 9), Extent(0, 5, 3, 9),
                               Extent(0, -9, 3, -5), Extent(0, 3.5, 3, 9), Extent(1, 0.5, 2, 1),
                               Extent(3, 4, 0, 0), Extent(kNaN, 0, 3, 4), Extent(0, 0, 3, kNaN)}) {
        RunArrays a;
        a.runs.BeginEdge({9, 9}, 1);
        Clip(kArch, clip, a);
        EXPECT_EQ(a.Points(), "(9,9)");
        EXPECT_EQ(a.Tags(), "0");
        EXPECT_EQ(a.Flags(), "1");
    }
}

TEST(HvBezierTool_clip, TakesItsCubicFromTheOutputsOwnStorage)
{
    for (Extent const& clip : {Extent(-9, -9, 9, 9), Extent(0, 1, 3, 2)}) {
        RunArrays expected;
        RunArrays own;
        for (Point2 const& p : kArch) {
            for (RunArrays* a : {&expected, &own}) {
                a->points.Add(p);
                a->tags.Add(HvPointTagInner);
                a->flags.Add(1);
            }
        }
        Clip(kArch, clip, expected);
        Clip(own.points.Data(), clip, own);
        EXPECT_EQ(own.Points(), expected.Points());
        EXPECT_EQ(own.Tags(), expected.Tags());
    }
}

TEST(HvBezierTool_clip, AgreesWithClippingTheWholePolyline)
{
    RandomCurves random(7);
    int visible = 0;
    for (int round = 0; round < 1500; ++round) {
        double const scale = random.Scale(-20, 20);
        double const tolerance = scale * random.Scale(-10, 0);
        Point2 p[4];
        random.Fill(p, 4, scale);
        Point2 c[2];
        random.Fill(c, 2, scale * random.Scale(-3, 0.5));
        Extent const clip(std::fmin(c[0].x, c[1].x), std::fmin(c[0].y, c[1].y),
                          std::fmax(c[0].x, c[1].x), std::fmax(c[0].y, c[1].y));
        RunArrays a;
        Clip(p, clip, a, tolerance);

        HvPoint2dArray whole;
        HvBezierTool_FlattenCubic2d(p, tolerance, &whole, 0);
        RunArrays plain;
        for (unsigned int i = 0; i + 1 < whole.Size(); ++i) {
            Point2 from = whole[i];
            Point2 to = whole[i + 1];
            if (HvLineClip_Clip(from, to, clip) != 0) {
                plain.runs.BeginEdge(from, 1);
                plain.runs.EndEdge(to);
            }
        }
        ASSERT_EQ(a.points.Size(), plain.points.Size());
        for (unsigned int i = 0; i < a.points.Size(); ++i) {
            ASSERT_EQ(a.points[i], plain.points[i]);
        }
        ASSERT_EQ(a.Tags(), plain.Tags());
        ASSERT_EQ(a.Flags(), plain.Flags());
        visible += a.points.Size() != 0 ? 1 : 0;
    }
    EXPECT_GT(visible, 300);
    EXPECT_LT(visible, 1200);
}

TEST(HvBezierTool_clip, EndsForHostileNumbers)
{
    double const hostile[] = {kNaN, kInfinity, -kInfinity, kGreatest, -kGreatest, 5e-324, 0.0};
    for (double const value : hostile) {
        for (int i = 0; i < 4; ++i) {
            double s[4] = {0, 0, 2, 2};
            s[i] = value;
            RunArrays sides;
            Clip(kArch, Extent(s[0], s[1], s[2], s[3]), sides);
            EXPECT_EQ(sides.points.Size(), sides.tags.Size());

            Point2 p[4] = {kArch[0], kArch[1], kArch[2], kArch[3]};
            p[i].y = value;
            RunArrays controls;
            Clip(p, Extent(0, 0, 2, 2), controls);
            EXPECT_EQ(controls.points.Size(), controls.flags.Size());
            for (Point2 const& q : controls.points) {
                EXPECT_TRUE(std::isfinite(q.x) && std::isfinite(q.y));
            }
        }
        RunArrays tolerance;
        Clip(kArch, Extent(0, 0, 2, 2), tolerance, value);
        EXPECT_LE(tolerance.points.Size(), 1026u);
    }
}

TEST(HvBezierTool_clip, ReachesTheViewFarInsideAHugeCurve)
{
    // 2^20 vertices in the whole, of which the view shows a few: the rest is not walked.
    Point2 const p[4] = {{-4e6, 0}, {1e6, 9e6}, {-1e6, -9e6}, {4e6, 0}};
    RunArrays a;
    Clip(p, Extent(-2, -2, 2, 2), a, 0.001);
    EXPECT_GE(a.points.Size(), 2u);
    EXPECT_LT(a.points.Size(), 1000u);
}

TEST(HvBezierTool_clip, RestoresTheArraysWhenMemoryFails)
{
    // Both paths, starting from a run that they would break.
    for (Extent const& clip : {Extent(-9, -9, 99, 99), Extent(0, 1, 3, 2)}) {
        long const allocations = RefuseEachAllocation(
            [] {
                auto a = std::make_unique<RunArrays>();
                a->runs.BeginEdge({-1, -1}, 1);
                a->runs.EndEdge({-1, 0});
                return a;
            },
            [&clip](std::unique_ptr<RunArrays>& a) { Clip(kArch, clip, *a, 1e-4); },
            [](std::unique_ptr<RunArrays>& a, bool completed) {
                EXPECT_EQ(a->points.Size(), a->tags.Size());
                EXPECT_EQ(a->points.Size(), a->flags.Size());
                if (!completed) {
                    EXPECT_EQ(a->Points(), "(-1,-1)(-1,0)");
                    EXPECT_EQ(a->Tags(), "0 1");
                    EXPECT_EQ(a->Flags(), "1 1");
                }
            });
        EXPECT_GT(allocations, 3);
    }
}

TEST(HvBezierTool_clip, AllocatesNothingForACurveOutOfView)
{
    RunArrays a;
    AllocationCounter const counter;
    Clip(kArch, Extent(100, 100, 200, 200), a, 1e-4);
    EXPECT_EQ(counter.Allocations(), 0);
}
