// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes with a property: where the values of the points come to lie, for both builders.

#include <hv/pathbuild/HvBasePathPropBuilder.h>

#include <hv/foundation/polyline_length.h>
#include <hv/pathbuild/HvBezierFitPathBuilder.h>
#include <hv/pathbuild/HvBezierFitPathPropBuilder.h>
#include <hv/pathbuild/HvLinearPathBuilder.h>
#include <hv/pathbuild/HvLinearPathPropBuilder.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "prop_path_support.h"

#include <cmath>
#include <limits>
#include <memory>

namespace {

using Builder = std::unique_ptr<HvBasePathPropBuilder>;

/// The builders, with a tolerance of the property.
Builder Linear(HvGC const& gc, HvPath2fProp1d* path, double tolerance)
{
    return std::make_unique<HvLinearPathPropBuilder>(gc, path, tolerance);
}
Builder Fit(HvGC const& gc, HvPath2fProp1d* path, double tolerance)
{
    return std::make_unique<HvBezierFitPathPropBuilder>(gc, path, 30.0, 3.0, 0.5, 4u, tolerance);
}

/// The arc length of each vertex of a polyline.
std::vector<double> ArcsOf(HvPath2f const& path)
{
    std::vector<double> arcs{0.0};
    for (unsigned int i = 1; i < path.NumPoints(); ++i) {
        PropPoint const a = path.GetPoint(i - 1);
        PropPoint const b = path.GetPoint(i);
        arcs.push_back(arcs.back() + std::hypot(double(b.x) - a.x, double(b.y) - a.y));
    }
    return arcs;
}

/// A vertex of a zigzag along x, far enough from its neighbours to be kept.
PropPoint Zigzag(int i)
{
    return {static_cast<float>(3 * i), i % 2 == 0 ? 0.0F : 4.0F};
}

}  // namespace

// The linear builder: every point of a zigzag is a vertex, and has its value there.

TEST(HvBasePathPropBuilder, VerticesHaveTheValuesOfTheirPoints)
{
    EXPECT_TRUE(rc::check([] {
        HvGC const gc;
        OpenProp path;
        path.AddLines({{-5, -5}, {-4, -4}});  // another subpath before
        path.SetPropCurve(0, Constant(77));
        double const tolerance = PickInRange(0, 4) * 0.25;
        Builder const builder = Linear(gc, &path, tolerance);
        std::vector<double> values;
        int const count = PickInRange(2, 40);
        for (int i = 0; i < count; ++i) {
            values.push_back(PickInRange(-8, 9) * 0.25);
            if (i == 0) {
                builder->StartSubpath(Zigzag(0), values[0]);
            } else if (i + 1 == count) {
                builder->EndSubpath(Zigzag(i), values.back(), 0);
            } else {
                builder->AddInputPoint(Zigzag(i), values.back(), 0);
                if (PickInRange(0, 5) == 0) {
                    builder->GetTrailingSamples();
                }
            }
        }
        RC_ASSERT(path.NumPoints() == 2 + unsigned(count));
        RC_ASSERT(path.EvalPropCurve(0, 0) == 77.0);
        HvPath2f const stroke(path, 2, path.NumPoints() - 1);
        std::vector<double> const arcs = ArcsOf(stroke);
        for (std::size_t i = 0; i < values.size(); ++i) {
            // Lengths are sums of as many roundings.
            RC_ASSERT(std::fabs(path.EvalPropCurve(2, arcs[i]) - values[i]) <= tolerance + 1e-9);
        }
        RC_ASSERT(std::fabs(path.GetLargestArcLength(2) - arcs.back()) <= 1e-9);
        RC_ASSERT(path.GetPropCurve(2)->GetNumKeys() <= values.size());
    }));
}

TEST(HvBasePathPropBuilder, ValuesBetweenVerticesLieAlongTheWay)
{
    // Points of one line are one edge; their values are keys on it.
    HvGC const gc;
    OpenProp path;
    Builder const builder = Linear(gc, &path, 0.0);
    builder->StartSubpath({0, 0}, 1);
    builder->AddInputPoint({2, 0}, 5, 0);
    builder->AddInputPoint({6, 0}, 2, 0);
    builder->EndSubpath({10, 0}, 8, 0);
    EXPECT_EQ(path.NumPoints(), 3u);  // the held point and the end
    for (auto const& [s, value] :
         {std::pair(0.0, 1.0), std::pair(2.0, 5.0), std::pair(6.0, 2.0), std::pair(10.0, 8.0)}) {
        EXPECT_NEAR(path.EvalPropCurve(0, s), value, 1e-12) << s;
    }
}

TEST(HvBasePathPropBuilder, SteadyValuesNeedTwoKeys)
{
    HvGC const gc;
    OpenProp path;
    Builder const builder = Linear(gc, &path, 0.1);
    builder->StartSubpath(Zigzag(0), 1);
    for (int i = 1; i < 100; ++i) {
        builder->AddInputPoint(Zigzag(i), 1 + 0.05 * std::sin(i), 0);
        builder->GetTrailingSamples();
    }
    builder->EndSubpath(Zigzag(100), 1, 0);
    EXPECT_EQ(path.GetPropCurve(0)->GetNumKeys(), 2u);
}

TEST(HvBasePathPropBuilder, PointWithinTheGapGivesItsValueToThePlace)
{
    HvGC const gc;
    for (bool const isLinear : {true, false}) {
        OpenProp path;
        Builder const builder = isLinear ? Linear(gc, &path, 0.0) : Fit(gc, &path, 0.0);
        builder->StartSubpath({0, 0}, 1);
        builder->AddInputPoint({0.25F, 0}, 2, 0);
        builder->AddInputPoint({2, 0}, 3, 0);
        builder->AddInputPoint({2.25F, 0}, 4, 0);
        builder->EndSubpath({6, 0}, 5, 0);
        EXPECT_NEAR(path.EvalPropCurve(0, 0), 2, 1e-12);
        EXPECT_NEAR(path.EvalPropCurve(0, 2), 4, 1e-6);
        EXPECT_NEAR(path.EvalPropCurve(0, 6), 5, 1e-12);
    }
}

TEST(HvBasePathPropBuilder, ClosingStepLeadsBackToTheFirstValue)
{
    HvGC const gc;
    for (bool const isLinear : {true, false}) {
        OpenProp path;
        Builder const builder = isLinear ? Linear(gc, &path, 0.0) : Fit(gc, &path, 0.0);
        builder->StartSubpath({0, 0}, 1);
        builder->AddInputPoint({20, 0}, 2, 1);
        builder->AddInputPoint({20, 20}, 3, 1);
        builder->EndSubpath({0, 20}, 4, 1);
        EXPECT_EQ(path.IsSubpathClosed(0), 1);
        HvPoint2fArray line;
        path.FlattenSubpath(0, gc.flatness, line);
        double const length = HvPoint2fArraySingleComponent_ComputeLength(line);
        EXPECT_NEAR(path.GetLargestArcLength(0), length, 1e-9);
        EXPECT_NEAR(path.EvalPropCurve(0, path.GetLargestArcLength(0)), 1.0, 1e-12);
        EXPECT_EQ(path.EvalPropCurve(0, 0), 1.0);
    }
}

TEST(HvBasePathPropBuilder, StrokeOfOnePointHasItsValue)
{
    HvGC const gc;
    for (int const closed : {0, 1}) {
        OpenProp path;
        Builder const builder = Linear(gc, &path, 0.0);
        builder->StartSubpath({3, 4}, 7);
        EXPECT_EQ(builder->EndSubpath({3, 4}, 8, closed)->Size(), 0u);
        EXPECT_EQ(path.NumPoints(), 1u);
        EXPECT_EQ(path.Keys(), (PropKeys{{0, 8}}));
    }
}

TEST(HvBasePathPropBuilder, StrokesFollowOneAnother)
{
    HvGC const gc;
    OpenProp path;
    OpenProp other;
    Builder const builder = Fit(gc, nullptr, 0.1);
    builder->StartSubpath({0, 0}, 1, &path);
    builder->EndSubpath({9, 0}, 1, 0);
    unsigned int const second = path.NumPoints();
    builder->StartSubpath({0, 9}, 2);
    builder->AddInputPoint({5, 9}, 2, 0);
    builder->StartSubpath({0, 20}, 3);  // the one before is given up
    builder->EndSubpath({9, 20}, 3, 0);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {second, 3}}));
    builder->StartSubpath({0, 0}, 4, &other);
    builder->EndSubpath({9, 0}, 4, 0);
    EXPECT_EQ(other.Keys(), (PropKeys{{0, 4}}));
    EXPECT_EQ(path.NumSubpaths(), 2u);
}

TEST(HvBasePathPropBuilder, ResetForgetsTheStroke)
{
    HvGC const gc;
    OpenProp path;
    Builder const builder = Linear(gc, &path, 0.1);
    builder->StartSubpath({0, 0}, 1);
    builder->AddInputPoint({5, 5}, 2, 0);
    builder->Reset();
    EXPECT_EQ(builder->GetTrailingSamples()->Size(), 0u);
    EXPECT_EQ(path.NumPoints(), 0u);
    EXPECT_EQ(builder->GetTrailingValues()->Size(), 0u);
}

// Outline and samples are those of the path builders.

TEST(HvBasePathPropBuilder, OutlineIsThatOfThePathBuilder)
{
    EXPECT_TRUE(rc::check([] {
        HvGC gc;
        gc.transform.Scale(1.5);
        bool const isLinear = PickInRange(0, 2) == 0;
        HvPath2f plain(0u);
        OpenProp path;
        std::unique_ptr<HvBasePathBuilder> model;
        Builder builder;
        if (isLinear) {
            model = std::make_unique<HvLinearPathBuilder>(gc, &plain);
            builder = Linear(gc, &path, 0.1);
        } else {
            model = std::make_unique<HvBezierFitPathBuilder>(gc, &plain, 30.0, 3.0, 0.5, 4u);
            builder = Fit(gc, &path, 0.1);
        }
        auto const requireSame = [&](HvPoint2fArray const* a, HvPoint2fArray const* b) {
            RC_ASSERT(std::equal(a->begin(), a->end(), b->begin(), b->end()));
            RC_ASSERT(builder->GetTrailingValues()->Size() == b->Size());
            RC_ASSERT(path.IsSiblingOf(plain) == 1);
        };
        PropPoint p(0, 0);
        model->StartSubpath(p);
        builder->StartSubpath(p, 0);
        int const count = PickInRange(0, 40);
        for (int i = 0; i < count; ++i) {
            p = p + PropPoint(float(PickInRange(-4, 12)), float(PickInRange(-6, 7)));
            int const force = PickInRange(0, 10) == 0 ? 1 : 0;
            model->AddInputPoint(p, force);
            builder->AddInputPoint(p, i, force);
            if (PickInRange(0, 6) == 0) {
                requireSame(model->GetTrailingSamples(), builder->GetTrailingSamples());
            }
        }
        int const closed = PickInRange(0, 2);
        requireSame(model->EndSubpath(p, closed), builder->EndSubpath(p, 1, closed));
        RC_ASSERT(path.HasPropCurve(0) == 1);
    }));
}

// The value of every point is its x, on a stroke that goes from left to right and does not come
// near itself: so the place of a value is the nearest of the whole outline, found by brute force
// here.
TEST(HvBasePathPropBuilder, ValuesLieWhereThePenWas)
{
    HvGC gc;
    gc.flatness = 0.1;
    double const tolerance = 0.2;
    for (bool const isLinear : {true, false}) {
        for (int const period : {1, 7, 1000}) {
            OpenProp path;
            Builder const builder =
                isLinear ? Linear(gc, &path, tolerance) : Fit(gc, &path, tolerance);
            auto const penAt = [](int i) {
                float const x = 0.75F * static_cast<float>(i);
                return PropPoint(x, 20 * std::sin(x * 0.1F));
            };
            builder->StartSubpath(penAt(0), 0);
            for (int i = 1; i <= 200; ++i) {
                builder->AddInputPoint(penAt(i), penAt(i).x, 0);
                if (i % period == 0) {
                    HvPoint2fArray const* const samples = builder->GetTrailingSamples();
                    for (unsigned int k = 0; k < samples->Size(); ++k) {
                        // The outline may be off by as much as smoothing and flatness let it.
                        EXPECT_NEAR((*builder->GetTrailingValues())[k], (*samples)[k].x, 1.0);
                    }
                }
            }
            builder->EndSubpath(penAt(201), penAt(201).x, 0);
            HvPoint2fArray line;
            HvDoubleArray arcs;
            path.FlattenSubpath(0, gc.flatness, line);
            HvPoint2fArraySingleComponent_ComputeChordLength(line, arcs);
            EXPECT_NEAR(path.GetLargestArcLength(0), arcs[arcs.Size() - 1], 1e-9);
            for (int i = 0; i <= 201; ++i) {
                double least = 1e9;
                double foot = 0;
                for (unsigned int k = 1; k < line.Size(); ++k) {
                    for (int part = 0; part <= 64; ++part) {
                        double const t = part / 64.0;
                        double const x = line[k - 1].x * (1 - t) + line[k].x * t - penAt(i).x;
                        double const y = line[k - 1].y * (1 - t) + line[k].y * t - penAt(i).y;
                        if (x * x + y * y < least) {
                            least = x * x + y * y;
                            foot = arcs[k - 1] * (1 - t) + arcs[k] * t;
                        }
                    }
                }
                // Beside the tolerance: places of brute force, and pieces of the stroke that were
                // committed before the outline came nearest to a point.
                EXPECT_NEAR(path.EvalPropCurve(0, foot), penAt(i).x, tolerance + 0.1)
                    << isLinear << " " << period << " " << i;
            }
        }
    }
}

TEST(HvBasePathPropBuilder, ValuesThatAreNotFiniteRepeatTheOneBefore)
{
    HvGC const gc;
    OpenProp path;
    Builder const builder = Linear(gc, &path, 0.0);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    builder->StartSubpath(Zigzag(0), nan);
    builder->AddInputPoint(Zigzag(1), 3, 0);
    builder->AddInputPoint(Zigzag(2), std::numeric_limits<double>::infinity(), 0);
    builder->EndSubpath(Zigzag(3), nan, 0);
    std::vector<double> const arcs = ArcsOf(path);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(path.EvalPropCurve(0, arcs[i]), i == 0 ? 0 : 3, 1e-12);
    }
}

TEST(HvBasePathPropBuilder, HostileNumbersDoNoHarm)
{
    float const floats[] = {0.0F,
                            1e-45F,
                            1e38F,
                            -3e38F,
                            std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()};
    double const doubles[] = {0.0, -1.0, 1e308, -1e308, std::numeric_limits<double>::quiet_NaN()};
    HvGC gc;
    for (float const f : floats) {
        for (double const d : doubles) {
            for (bool const isLinear : {true, false}) {
                OpenProp path;
                gc.sampleSpacing = d;
                Builder const builder = isLinear ? Linear(gc, &path, d) : Fit(gc, &path, d);
                builder->StartSubpath({f, 0}, d);
                try {
                    for (int i = 0; i < 8; ++i) {
                        builder->AddInputPoint({i % 3 == 0 ? f : float(i), float(i)}, d * i, i % 2);
                    }
                    builder->GetTrailingSamples();
                    builder->EndSubpath({1, f}, d, 1);
                } catch (std::bad_alloc const&) {
                }
                EXPECT_EQ(path.HasPropCurve(0), path.NumPoints() != 0 ? 1 : 0);
            }
        }
    }
}

// A stroke during which an allocation failed goes on, and its property is complete in the end.
TEST(HvBasePathPropBuilder, WithoutMemoryTheStrokeGoesOn)
{
    HvGC const gc;
    for (bool const isLinear : {true, false}) {
        struct Scene {
            OpenProp path;
            Builder builder;
        };
        RefuseEachAllocation(
            [&] {
                auto scene = std::make_unique<Scene>();
                scene->builder =
                    isLinear ? Linear(gc, &scene->path, 0.0) : Fit(gc, &scene->path, 0.0);
                scene->builder->StartSubpath(Zigzag(0), 0);
                for (int i = 1; i < 200; ++i) {
                    scene->builder->AddInputPoint(Zigzag(i), i % 5, 1);
                }
                return scene;
            },
            [](std::unique_ptr<Scene>& scene) { scene->builder->GetTrailingSamples(); },
            [](std::unique_ptr<Scene>& scene, bool) {
                scene->builder->EndSubpath(Zigzag(200), 1, 0);
                OpenProp const& path = scene->path;
                EXPECT_EQ(path.NumSubpaths(), 1u);
                EXPECT_EQ(path.HasPropCurve(0), 1);
                EXPECT_EQ(path.EvalPropCurve(0, 0), 0.0);
                EXPECT_NEAR(path.EvalPropCurve(0, path.GetLargestArcLength(0)), 1.0, 1e-12);
                EXPECT_GT(path.GetPropCurve(0)->GetNumKeys(), 70u);
            });
    }
}

// An end that fails has told the track of a point that then does not come. The pen goes on, and the
// values of what follows lie at their points all the same.
TEST(HvBasePathPropBuilder, AfterAnEndThatFailedValuesLieAtTheirPoints)
{
    // As many points as the input of a builder first holds, so that it has no room for the end,
    // which lies far off: its way is long, and none of it is in the path.
    constexpr int kFull = 128;
    constexpr int kEnd = kFull + 12;
    constexpr double kStep = 3.0;
    PropPoint const away(static_cast<float>(kStep * (kFull - 0.5)), 40);
    auto const place = [](int i) { return PropPoint(static_cast<float>(kStep * i), 0); };
    HvGC const gc;
    for (bool const isLinear : {true, false}) {
        struct Scene {
            OpenProp path;
            Builder builder;
        };
        int withoutEnd = 0;
        RefuseEachAllocation(
            [&] {
                auto scene = std::make_unique<Scene>();
                scene->builder =
                    isLinear ? Linear(gc, &scene->path, 0.0) : Fit(gc, &scene->path, 0.0);
                scene->builder->StartSubpath(place(0), 0);
                for (int i = 1; i < kFull; ++i) {
                    scene->builder->AddInputPoint(place(i), i % 2, 1);
                }
                return scene;
            },
            [&](std::unique_ptr<Scene>& scene) { scene->builder->EndSubpath(away, 9, 0); },
            [&](std::unique_ptr<Scene>& scene, bool completed) {
                OpenProp const& path = scene->path;
                if (!completed) {
                    for (int i = kFull; i < kEnd; ++i) {
                        scene->builder->AddInputPoint(place(i), i % 2, 1);
                    }
                    scene->builder->EndSubpath(place(kEnd), 0, 0);
                }
                ASSERT_EQ(path.HasPropCurve(0), 1);
                if (!completed && path.GetLargestArcLength(0) < kStep * kEnd + 1) {
                    ++withoutEnd;
                    // The path runs along the x axis, where the arc of a point is its x, but for
                    // the rounding of handles.
                    for (int i = kFull; i <= kEnd; ++i) {
                        EXPECT_NEAR(path.EvalPropCurve(0, kStep * i), i % 2, 1e-4) << i;
                    }
                }
            });
        EXPECT_GT(withoutEnd, 0);
    }
}
