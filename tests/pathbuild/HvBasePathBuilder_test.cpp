// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What all path builders promise.

#include <hv/pathbuild/HvBasePathBuilder.h>

#include "stroke_test_support.h"
#include <hv/pathbuild/stroke_sampling.h>
#include <tests/shape/slot_of.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <rapidcheck.h>

#include <memory>
#include <new>

namespace {

/// What a builder of any kind stands on.
template <class Builder>
struct Pen;

template <>
struct Pen<OpenLinear> {
    HvGC gc;
    HvPath2f path = HvPath2f(4u);
    OpenLinear builder = OpenLinear(gc, &path);
};
template <>
struct Pen<OpenCubic> {
    HvGC gc;
    HvPath2f path = HvPath2f(4u);
    OpenCubic builder = OpenCubic(gc, &path);
};
template <>
struct Pen<OpenFit> {
    HvGC gc;
    HvPath2f path = HvPath2f(4u);
    OpenFit builder = OpenFit(gc, &path, 60.0, 25.0, 1.0, 4u);
};

template <class Builder>
class AllBuilders : public testing::Test {
};
using Builders = testing::Types<OpenLinear, OpenCubic, OpenFit>;
TYPED_TEST_SUITE(AllBuilders, Builders, );

void AddAll(HvBasePathBuilder& builder, std::vector<StrokePoint> const& points, int force = 0)
{
    for (StrokePoint const& p : points) {
        builder.AddInputPoint(p, force);
    }
}

/// A stroke as a hand draws it: curls, with corners here and there.
std::vector<StrokePoint> RandomStroke(unsigned int count)
{
    std::vector<StrokePoint> points;
    HvPoint2<double> p;
    double angle = 0.0;
    double bend = 0.0;
    for (unsigned int i = 0; i < count; ++i) {
        points.emplace_back(p);
        bend = 0.9 * bend + 0.01 * PickInRange(-10, 11);
        angle += bend + (PickInRange(0, 25) == 0 ? 2.5 : 0.0);
        double const step = PickInRange(0, 20) == 0 ? 70.0 : 0.1 * PickInRange(2, 100);
        p = p + HvPoint2<double>(std::cos(angle), std::sin(angle)) * step;
    }
    return points;
}

/// Draws a stroke, asking for samples after each `stride` points, and collects them.
std::vector<StrokePoint> Draw(HvBasePathBuilder& builder, std::vector<StrokePoint> const& points,
                              std::size_t stride, int closed)
{
    std::vector<StrokePoint> samples;
    auto const take = [&samples](HvPoint2fArray const* added) {
        samples.insert(samples.end(), added->begin(), added->end());
    };
    builder.StartSubpath(points[0]);
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        builder.AddInputPoint(points[i], 0);
        if (i % stride == 0) {
            take(builder.GetTrailingSamples());
        }
    }
    take(builder.EndSubpath(points.back(), closed));
    return samples;
}

}  // namespace

// Life.

TYPED_TEST(AllBuilders, NewBuilderIsEmpty)
{
    Pen<TypeParam> pen;
    EXPECT_EQ(pen.builder.input.Size(), 0u);
    EXPECT_EQ(pen.builder.input.Capacity(), 128u);
    EXPECT_EQ(pen.builder.samples.Capacity(), 128u);
    EXPECT_EQ(pen.builder.processedIndex, 0u);
    EXPECT_EQ(pen.builder.firstSamples, 1);
    EXPECT_EQ(pen.builder.needMoveto, 1);
    EXPECT_EQ(pen.builder.sampleRemainder, 0.0);
}

TYPED_TEST(AllBuilders, StartTouchesNoPath)
{
    Pen<TypeParam> pen;
    pen.builder.StartSubpath({3, 4});
    EXPECT_EQ(pen.path.NumPoints(), 0u);
    ExpectPoints(ToVector(pen.builder.input), {{3, 4}}, 0.0);
}

TYPED_TEST(AllBuilders, SinglePointGivesAMovetoAndNoSample)
{
    Pen<TypeParam> pen;
    pen.builder.StartSubpath({3, 4});
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(pen.builder.GetTrailingSamples(), &pen.builder.samples);
        EXPECT_EQ(pen.builder.samples.Size(), 0u);
        EXPECT_EQ(PointsOf(pen.path), std::vector<StrokePoint>{StrokePoint(3, 4)});
        EXPECT_EQ(pen.builder.firstSamples, 1);
        EXPECT_EQ(pen.builder.needMoveto, 0);
    }
}

TYPED_TEST(AllBuilders, PointsAreMappedToDeviceSpace)
{
    Pen<TypeParam> pen;
    pen.gc.transform.Scale(2.0, 2.0, 1.0);
    pen.builder.StartSubpath({1, 2});
    pen.builder.AddInputPoint({5, 2}, 0);
    ExpectPoints(ToVector(*pen.builder.EndSubpath({10, 2}, 0)),
                 {{2, 4},
                  {3, 4},
                  {4, 4},
                  {5, 4},
                  {6, 4},
                  {7, 4},
                  {8, 4},
                  {9, 4},
                  {10, 4},
                  {11, 4},
                  {12, 4},
                  {13, 4},
                  {14, 4},
                  {15, 4},
                  {16, 4},
                  {17, 4},
                  {18, 4},
                  {19, 4},
                  {20, 4}},
                 1e-4);
    EXPECT_EQ(pen.path.GetPoint(0), StrokePoint(2, 4));
    EXPECT_EQ(pen.path.GetCurrentPoint(), StrokePoint(20, 4));
}

TYPED_TEST(AllBuilders, StrokesFollowEachOtherAsSubpaths)
{
    Pen<TypeParam> pen;
    std::vector<StrokePoint> const stroke = {{0, 0}, {20, 3}, {40, 0}, {50, 20}};
    std::vector<StrokePoint> const first = Draw(pen.builder, stroke, 2, 0);
    unsigned int const count = pen.path.NumPoints();
    std::vector<StrokePoint> const second = Draw(pen.builder, stroke, 2, 0);
    EXPECT_EQ(first, second);
    EXPECT_EQ(pen.path.NumSubpaths(), 2u);
    ASSERT_EQ(pen.path.NumPoints(), 2 * count);
    for (unsigned int i = 0; i < count; ++i) {
        EXPECT_EQ(pen.path.GetPoint(i), pen.path.GetPoint(i + count));
    }
}

TYPED_TEST(AllBuilders, ClosedStrokeBehindAnotherSubpathIsTheSame)
{
    std::vector<StrokePoint> const stroke = {{0, 0}, {20, 3}, {40, 0}, {50, 20}, {30, 45}, {5, 30}};
    Pen<TypeParam> alone;
    std::vector<StrokePoint> const first = Draw(alone.builder, stroke, 10, 1);
    Pen<TypeParam> behind;
    behind.path.Moveto({-100, 0});
    behind.path.Curveto({-100, 50}, {-50, 50}, {-50, 0});
    std::vector<StrokePoint> const second = Draw(behind.builder, stroke, 10, 1);
    EXPECT_EQ(first, second);
    std::vector<StrokePoint> const points = PointsOf(behind.path);
    EXPECT_EQ(PointsOf(alone.path), std::vector<StrokePoint>(points.begin() + 4, points.end()));
    EXPECT_EQ(behind.path.IsSubpathClosed(4), 1);
    EXPECT_EQ(behind.path.IsSubpathClosed(0), 0);
}

TYPED_TEST(AllBuilders, StartCanTurnToAnotherPath)
{
    Pen<TypeParam> pen;
    HvPath2f other(4u);
    pen.builder.StartSubpath({0, 0}, &other);
    pen.builder.EndSubpath({10, 0}, 0);
    EXPECT_EQ(pen.path.NumPoints(), 0u);
    EXPECT_GT(other.NumPoints(), 0u);
    pen.builder.StartSubpath({0, 0});
    pen.builder.EndSubpath({10, 0}, 0);
    EXPECT_EQ(other.NumSubpaths(), 2u);
}

TYPED_TEST(AllBuilders, AbandonedStrokeLeavesNoTraceInTheNext)
{
    Pen<TypeParam> pen;
    pen.builder.StartSubpath({0, 0});
    AddAll(pen.builder, {{20, 3}, {40.4f, 0}});
    pen.builder.GetTrailingSamples();
    AddAll(pen.builder, {{50, 9}});
    std::vector<StrokePoint> const stroke = {{0, 0}, {20, 3}, {40, 0}, {50, 20}};
    Pen<TypeParam> fresh;
    EXPECT_EQ(Draw(pen.builder, stroke, 2, 0), Draw(fresh.builder, stroke, 2, 0));
    pen.builder.Reset();
    EXPECT_EQ(pen.builder.sampleRemainder, 0.0);
    EXPECT_EQ(pen.builder.input.Size(), 0u);
    EXPECT_EQ(pen.builder.samples.Size(), 0u);
    EXPECT_EQ(pen.builder.subpathStart, 0u);
}

TYPED_TEST(AllBuilders, CallsWithoutAStrokeAreSafe)
{
    Pen<TypeParam> pen;
    EXPECT_EQ(pen.builder.GetTrailingSamples()->Size(), 0u);
    EXPECT_EQ(pen.path.NumPoints(), 0u);
    EXPECT_EQ(pen.builder.EndSubpath({1, 1}, 1)->Size(), 0u);
    EXPECT_EQ(pen.path.NumPoints(), 1u);
    pen.builder.Reset();
    pen.builder.AddInputPoint({2, 2}, 0);
    pen.builder.AddInputPoint({9, 2}, 0);
    pen.builder.EndSubpath({15, 2}, 0);
    EXPECT_EQ(pen.path.NumSubpaths(), 2u);
}

TYPED_TEST(AllBuilders, GoesOnSafelyOnAPathThatWasEmptied)
{
    for (bool asksBefore : {false, true}) {
        Pen<TypeParam> pen;
        pen.builder.StartSubpath({0, 0});
        if (asksBefore) {
            pen.builder.GetTrailingSamples();
        }
        AddAll(pen.builder, {{20, 3}, {40, 0}, {60, 5}});
        pen.builder.GetTrailingSamples();
        pen.path = HvPath2f(1u);
        AddAll(pen.builder, {{80, 3}, {100, 0}});
        pen.builder.GetTrailingSamples();
        pen.path = HvPath2f(1u);
        EXPECT_LE(pen.builder.GetTrailingSamples()->Size(), 100u);
        pen.builder.EndSubpath({0, 0}, 1);
    }
}

TEST(HvBasePathBuilder, VirtualOperationsStandInTheirSlots)
{
    using B = HvBasePathBuilder;
    using P = StrokePoint const&;
    EXPECT_EQ(SlotOf(static_cast<void (B::*)(P)>(&B::StartSubpath)), 2u);
    EXPECT_EQ(SlotOf(static_cast<void (B::*)(P, HvPath2f*)>(&B::StartSubpath)), 3u);
    EXPECT_EQ(SlotOf(&B::AddInputPoint), 4u);
    EXPECT_EQ(SlotOf(&B::GetTrailingSamples), 5u);
    EXPECT_EQ(SlotOf(&B::EndSubpath), 6u);
    EXPECT_EQ(SlotOf(&B::Reset), 7u);
}

// Smoothing.

TYPED_TEST(AllBuilders, SmoothingUsesTheOriginalBeforeAndThePointBehind)
{
    Pen<TypeParam> pen;
    std::vector<StrokePoint> const raw = {{0, 0}, {8, 8}, {16, 0}, {24, 16}, {32, 0}};
    pen.builder.input = Points(raw);
    pen.builder.SmoothInput(1, 4);
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {8, 8}, {16, 6}, {24, 8}, {32, 0}}, 0.0);
}

TYPED_TEST(AllBuilders, SmoothingMovesASingleInnerPointAndNoEnd)
{
    Pen<TypeParam> pen;
    pen.builder.input = Points({{0, 0}, {8, 8}, {16, 0}});
    pen.builder.SmoothInput(0, 1);
    pen.builder.SmoothInput(1, 2);
    pen.builder.SmoothInput(1, 1);
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {8, 8}, {16, 0}}, 0.0);
    pen.builder.SmoothInput(0, 2);
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {8, 4}, {16, 0}}, 0.0);
}

TYPED_TEST(AllBuilders, SmoothingStopsShortOfThePointBefore)
{
    // The middle would come to (0.5, 0), which is within the gap of the start.
    Pen<TypeParam> pen;
    pen.builder.input = Points({{0, 0}, {2, 0}, {-2, 0}, {-6, 0}});
    pen.builder.SmoothInput(0, 3);
    // (-2, 0) goes on with the original (2, 0) before it: -1 + (2 - 6) / 4.
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {2, 0}, {-2, 0}, {-6, 0}}, 0.0);
    pen.builder.input = Points({{0, 0}, {1, 0}, {3, 8}, {-6, 0}});
    pen.builder.SmoothInput(0, 3);
    // 1 / 2 + 3 / 4 and 8 / 4; then 3 / 2 + (1 - 6) / 4 and 8 / 2.
    ExpectPoints(ToVector(pen.builder.input), {{0, 0}, {1.25f, 2}, {0.25f, 4}, {-6, 0}}, 0.0);
}

// Properties.

TYPED_TEST(AllBuilders, SamplesLieOnThePathEvenlySpaced)
{
    rc::check([] {
        Pen<TypeParam> pen;
        pen.gc.flatness = 0.25 * PickInRange(1, 5);
        pen.gc.sampleSpacing = 0.5 * PickInRange(1, 8);
        std::vector<StrokePoint> const stroke = RandomStroke(PickInRange(3u, 60u));
        std::vector<StrokePoint> const samples = Draw(pen.builder, stroke, PickInRange(1u, 20u), 0);
        HvPoint2fArray flat(64);
        pen.path.FlattenSubpath(0, pen.gc.flatness, flat);
        std::vector<StrokePoint> const line = ToVector(flat);
        // The flattened path is what the pieces were sampled from: all at once must give the same.
        HvPoint2fArray whole(64);
        whole.Add(flat[0]);
        double length = 0.0;
        double remainder = 0.0;
        SampleSubpath(flat, 0, flat.Size() - 1, pen.gc.sampleSpacing, length, remainder, whole, 1);
        std::size_t const common = std::min<std::size_t>(samples.size(), whole.Size());
        RC_ASSERT(common + 1 >= samples.size() && common + 1 >= whole.Size());
        for (std::size_t i = 0; i + 1 < common; ++i) {
            // Floats of up to a few thousand hold 1e-4; the phases add up as many roundings.
            RC_ASSERT(HvPoint2_LengthAB(samples[i], whole[static_cast<unsigned int>(i)]) < 2e-3);
        }
        RC_ASSERT(samples.front() == stroke.front());
        for (StrokePoint const& p : samples) {
            RC_ASSERT(DistanceFrom(line, p) < 2e-3);
        }
    });
}

TYPED_TEST(AllBuilders, TurnedStrokesGiveTurnedPaths)
{
    rc::check([] {
        std::vector<StrokePoint> const stroke = RandomStroke(PickInRange(3u, 50u));
        unsigned int const stride = PickInRange(1u, 20u);
        // Quarter turns, mirrors and shifts by whole powers of two keep every comparison exact as
        // long as the coordinates are short numbers.
        std::vector<StrokePoint> grid;
        std::vector<StrokePoint> turned;
        for (StrokePoint const& p : stroke) {
            float const x = std::round(p.x * 16.0f) / 16.0f;
            float const y = std::round(p.y * 16.0f) / 16.0f;
            grid.emplace_back(x, y);
            turned.emplace_back(-y, x);
        }
        Pen<TypeParam> straight;
        Pen<TypeParam> quarter;
        Draw(straight.builder, grid, stride, 0);
        Draw(quarter.builder, turned, stride, 0);
        std::vector<StrokePoint> const a = PointsOf(straight.path);
        std::vector<StrokePoint> const b = PointsOf(quarter.path);
        RC_ASSERT(a.size() == b.size());
        for (std::size_t i = 0; i < a.size(); ++i) {
            RC_ASSERT(std::fabs(-a[i].y - b[i].x) < 0.02f);
            RC_ASSERT(std::fabs(a[i].x - b[i].y) < 0.02f);
        }
    });
}

TYPED_TEST(AllBuilders, ScaledStrokesGiveScaledPaths)
{
    // Doubling everything, tolerances included, doubles every number exactly but those that roots
    // and fits have rounded.
    rc::check([] {
        std::vector<StrokePoint> const stroke = RandomStroke(PickInRange(3u, 50u));
        unsigned int const stride = PickInRange(1u, 20u);
        std::vector<StrokePoint> doubled;
        for (StrokePoint const& p : stroke) {
            doubled.push_back(p * 2.0f);
        }
        HvGC gc;
        gc.minPointGap = 1.0;
        gc.flatness = 2.0;
        gc.sampleSpacing = 2.0;
        Pen<TypeParam> once;
        HvPath2f path(4u);
        std::unique_ptr<HvBasePathBuilder> twice;
        if constexpr (std::is_same<TypeParam, OpenFit>::value) {
            twice.reset(new OpenFit(gc, &path, 120.0, 50.0, 2.0, 4u));
        } else {
            twice.reset(new TypeParam(gc, &path));
        }
        std::vector<StrokePoint> const a = Draw(once.builder, stroke, stride, 0);
        std::vector<StrokePoint> const b = Draw(*twice, doubled, stride, 0);
        std::vector<StrokePoint> const pa = PointsOf(once.path);
        std::vector<StrokePoint> const pb = PointsOf(path);
        RC_ASSERT(pa.size() == pb.size());
        for (std::size_t i = 0; i < pa.size(); ++i) {
            RC_ASSERT(HvPoint2_LengthAB(pa[i] * 2.0f, pb[i]) < 0.02);
        }
        RC_ASSERT(a.size() + 1 >= b.size() && b.size() + 1 >= a.size());
    });
}

TEST(HvBezierFitPathBuilder_joins, CurvesJoinInOneDirectionExceptAtCorners)
{
    rc::check([] {
        Pen<OpenFit> pen;
        std::vector<StrokePoint> const stroke = RandomStroke(PickInRange(3u, 80u));
        Draw(pen.builder, stroke, PickInRange(1u, 30u), 0);
        OpenFit const& builder = pen.builder;
        std::vector<StrokePoint> corners;
        for (unsigned int i = 0; i < builder.corners.Size(); ++i) {
            if (builder.corners[i]) {
                corners.push_back(builder.input[i]);
            }
        }
        HvPath2f const& path = pen.path;
        for (unsigned int i = path.EndOfSegment(1); i + 1 < path.NumPoints();
             i = path.EndOfSegment(i + 1)) {
            StrokePoint const node = path.GetPoint(i);
            if (std::find(corners.begin(), corners.end(), node) != corners.end()) {
                continue;
            }
            HvPoint2<double> const in(node - path.GetPoint(i - 1));
            HvPoint2<double> const out(path.GetPoint(i + 1) - node);
            double const longer = std::max(HvPoint2_Length(in), HvPoint2_Length(out));
            // How far the shorter handle lies off the line of the longer one: the rounding of a few
            // hundred units, carried along the longer one in proportion.
            RC_ASSERT(std::fabs(HvPoint2_AdetB(in, out)) <= 1e-3 * longer);
            RC_ASSERT(HvPoint2_AdotB(in, out) >= -1e-3 * longer);
        }
    });
}

// Cost.

TYPED_TEST(AllBuilders, CallsAllocateOnlyToGrow)
{
    Pen<TypeParam> pen;
    pen.builder.StartSubpath({0, 0});
    AllocationCounter const counter;
    long const count = 4000;
    for (int i = 1; i <= count; ++i) {
        pen.builder.AddInputPoint({static_cast<float>(3 * i), static_cast<float>(i % 7)}, 0);
        pen.builder.GetTrailingSamples();
    }
    // The cubic builder makes a polyline for each call, the fit one array for the points of each
    // fit; beside those only the doubling of arrays.
    EXPECT_LE(counter.Allocations(), 4 * count + 100);
    pen.builder.Reset();
}

// Failures and hostile numbers.

TYPED_TEST(AllBuilders, FailedAllocationLeavesThePathAndABuilderThatGoesOn)
{
    for (int closed : {0, 1}) {
        // The arrays are full, so that every step has to grow one.
        struct Object {
            std::unique_ptr<Pen<TypeParam>> pen = std::make_unique<Pen<TypeParam>>();
            std::vector<StrokePoint> before;
        };
        std::vector<StrokePoint> stroke;
        for (int i = 0; i < 300; ++i) {
            double const a = i * 0.05;
            stroke.emplace_back(static_cast<float>((20 + i) * std::cos(a)),
                                static_cast<float>((20 + i) * std::sin(a)));
        }
        auto const prepare = [&stroke] {
            Object object;
            object.pen->builder.StartSubpath(stroke[0]);
            AddAll(object.pen->builder, {stroke.begin() + 1, stroke.begin() + 20});
            object.pen->builder.GetTrailingSamples();
            AddAll(object.pen->builder, {stroke.begin() + 20, stroke.end()});
            object.before = PointsOf(object.pen->path);
            return object;
        };
        RefuseEachAllocation(
            prepare,
            [&](Object& object) {
                object.pen->builder.EndSubpath({500, 500}, closed);
            },
            [&](Object& object, bool completed) {
                TypeParam& builder = object.pen->builder;
                if (!completed) {
                    EXPECT_EQ(PointsOf(object.pen->path), object.before);
                    builder.EndSubpath({500, 500}, closed);
                }
                HvPath2f const& path = object.pen->path;
                EXPECT_EQ(path.IsSubpathClosed(0), closed);
                EXPECT_EQ(path.NumSubpaths(), 1u);
                StrokePoint const end = closed != 0 ? stroke[0] : StrokePoint(500, 500);
                EXPECT_EQ(path.GetCurrentPoint(), end);
                EXPECT_GT(builder.samples.Size(), 1000u);
            });
    }
}

TYPED_TEST(AllBuilders, FailedFirstCommitLeavesAtMostTheStart)
{
    auto const prepare = [] {
        auto pen = std::make_unique<Pen<TypeParam>>();
        pen->builder.StartSubpath({0, 0});
        for (int i = 1; i < 400; ++i) {
            pen->builder.AddInputPoint({static_cast<float>(2 * i), static_cast<float>(i % 3)}, 0);
        }
        return pen;
    };
    RefuseEachAllocation(
        prepare, [](std::unique_ptr<Pen<TypeParam>>& pen) { pen->builder.GetTrailingSamples(); },
        [](std::unique_ptr<Pen<TypeParam>>& pen, bool completed) {
            if (!completed) {
                EXPECT_LE(pen->path.NumPoints(), 1u);
                pen->builder.EndSubpath({900, 0}, 0);
            }
            EXPECT_EQ(pen->path.NumSubpaths(), 1u);
            EXPECT_EQ(pen->path.GetPoint(0), StrokePoint(0, 0));
        });
}

TYPED_TEST(AllBuilders, HostilePointsEnd)
{
    float const hostile[] = {0.0f,
                             -0.0f,
                             1.0f,
                             std::numeric_limits<float>::denorm_min(),
                             std::numeric_limits<float>::max(),
                             -std::numeric_limits<float>::max(),
                             kInfinite,
                             -kInfinite,
                             kNoNumber};
    for (float x : hostile) {
        for (float y : hostile) {
            for (int force : {0, 1}) {
                Pen<TypeParam> pen;
                pen.gc.sampleSpacing = 1e37;
                pen.gc.flatness = 1e37;
                pen.builder.StartSubpath({y, x});
                AddAll(pen.builder, {{1, 1}, {x, y}, {2, 2}, {y, x}, {x, x}, {30, 30}}, force);
                pen.builder.GetTrailingSamples();
                AddAll(pen.builder, {{x, y}, {x, 0}, {0, y}, {40, 40}}, force);
                pen.builder.EndSubpath({y, y}, force);
            }
        }
    }
}

TYPED_TEST(AllBuilders, HostileContextsEnd)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const hostile[] = {0.0,
                              -0.0,
                              -1.0,
                              std::numeric_limits<double>::denorm_min(),
                              1e-300,
                              1e300,
                              std::numeric_limits<double>::max(),
                              -std::numeric_limits<double>::max(),
                              inf,
                              -inf,
                              std::numeric_limits<double>::quiet_NaN(),
                              2147483648.0};
    std::vector<StrokePoint> const stroke = {{0, 0}, {20, 3}, {40, 0}, {50, 20}, {50, 20}, {0, 1}};
    for (double value : hostile) {
        for (int field = 0; field < 4; ++field) {
            Pen<TypeParam> pen;
            if (field == 0) {
                pen.gc.minPointGap = value;
            } else if (field == 1) {
                pen.gc.sampleSpacing = value;
            } else if (field == 2) {
                pen.gc.flatness = value;
            } else {
                pen.gc.transform.Scale(value, 1.0, 1.0);
            }
            try {
                Draw(pen.builder, stroke, 2, 1);
            } catch (std::bad_alloc const&) {
                // More samples or points than an array holds; the builder goes on.
                pen.gc.sampleSpacing = 1.0;
                pen.gc.flatness = 1.0;
                pen.gc.transform = HvTransfo4();
                Draw(pen.builder, stroke, 2, 1);
            }
        }
    }
}

TEST(HvBezierFitPathBuilder_numbers, HostileArgumentsEnd)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const hostile[] = {0.0,   -0.0, -1.0, std::numeric_limits<double>::denorm_min(),
                              1e300, inf,  -inf, std::numeric_limits<double>::quiet_NaN(),
                              1e-3};
    std::vector<StrokePoint> const stroke = {{0, 0},   {20, 3},  {40, 0}, {50, 20},
                                             {50, 20}, {45, 22}, {0, 1}};
    HvGC const gc;
    for (double longStep : hostile) {
        for (double spacing : hostile) {
            for (double tolerance : hostile) {
                for (unsigned int fewest : {0u, 1u, 5u, ~0u}) {
                    // A thousandth would make a hundred thousand points.
                    HvPath2f path(4u);
                    OpenFit builder(gc, &path, longStep, spacing == 1e-3 ? 5.0 : spacing, tolerance,
                                    fewest);
                    Draw(builder, stroke, 3, 1);
                    EXPECT_EQ(path.IsSubpathClosed(0), 1);
                }
            }
        }
    }
}
