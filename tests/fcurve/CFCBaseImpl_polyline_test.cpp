// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A whole curve as a polyline, its clamp, and samples of it.

#include "flattened.h"

#include "../support/allocation_failure.h"

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/foundation/HvDoubleArray.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using Points = std::vector<HvPoint2<double>>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Samples {
    std::vector<double> parameters;
    std::vector<double> values;
};

template <class Impl>
Samples Sequence(Impl const& impl, double from, double to, double step, int clamp = 0)
{
    HvDoubleArray parameters;
    HvDoubleArray values;
    unsigned int const count =
        impl.EvalSequence(from, to, step, kTestTolerance, parameters, values, clamp);
    EXPECT_EQ(count, parameters.Size());
    EXPECT_EQ(count, values.Size());
    return {{parameters.begin(), parameters.end()}, {values.begin(), values.end()}};
}

HvStdFCurveImpl MakeTent()
{
    return MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 10, 10}, {kLinear, 2, 0, 0}});
}

}  // namespace

TEST(CFCBaseImpl_polyline, IsEmptyWithoutKeys)
{
    EXPECT_EQ(Whole(HvStdFCurveImpl(1, kLinear)), Flattened());
}

TEST(CFCBaseImpl_polyline, BreaksTheRunAtAJump)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 3}, {kLinear, 2, 5, 5}});
    auto const f = Whole(impl);
    EXPECT_EQ(f.points, (Points{{0, 0}, {1, 1}, {1, 3}, {2, 5}}));
    EXPECT_EQ(f.tags, std::vector<int>({0, 2, 0, 2}));
}

TEST(CFCBaseImpl_polyline, DrawsAConstantSegmentToTheNextLeftValue)
{
    auto const impl = MakeStd({{kConstant, 0, 1, 1}, {kLinear, 1, 2, 4}, {kLinear, 2, 6, 6}});
    EXPECT_EQ(Whole(impl).points, (Points{{0, 1}, {1, 2}, {1, 4}, {2, 6}}));
}

TEST(CFCBaseImpl_polyline, GivesFourPointsForOneKeyWithAJump)
{
    auto const f = Whole(MakeStd({{kLinear, 1, 2, 5}}));
    EXPECT_EQ(f.points, (Points{{1, 2}, {1, 2}, {1, 5}, {1, 5}}));
    EXPECT_EQ(f.tags, std::vector<int>({0, 2, 0, 2}));
    EXPECT_EQ(Whole(MakeStd({{kLinear, 1, 2, 2}})).points, (Points{{1, 2}, {1, 2}}));
}

TEST(CFCBaseImpl_polyline, GivesTheEndJumpARunOfItsOwn)
{
    auto const f = Whole(MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 3}}));
    EXPECT_EQ(f.points, (Points{{0, 0}, {1, 1}, {1, 1}, {1, 3}}));
    EXPECT_EQ(f.tags, std::vector<int>({0, 2, 0, 2}));
}

TEST(CFCBaseImpl_polyline, DrawsSteppedCurvesLevel)
{
    CFCBooleanImpl impl(false);
    impl.InsertKey(0, {0, true, 0}, 0);
    impl.InsertKey(1, {2, false, 0}, 0);
    auto const f = Whole(impl);
    EXPECT_EQ(f.points, (Points{{0, 0}, {0, 0}, {0, 1}, {2, 1}, {2, 1}, {2, 0}}));
    EXPECT_EQ(f.tags, std::vector<int>({0, 2, 0, 2, 0, 2}));
}

// The clamp.

TEST(CFCBaseImpl_polyline, CutsAtTheClampingValues)
{
    auto impl = MakeTent();
    impl.upperClamp = 5;
    auto const f = Whole(impl, 1);
    EXPECT_EQ(f.points, (Points{{0, 0}, {0.5, 5}, {1.5, 5}, {2, 0}}));
    EXPECT_EQ(f.tags, std::vector<int>({0, 2, 0, 2}));
    EXPECT_EQ(Whole(impl, 0).points.size(), 3u);
    impl.lowerClamp = 2.5;
    EXPECT_EQ(Whole(impl, 1).points, (Points{{0.25, 2.5}, {0.5, 5}, {1.5, 5}, {1.75, 2.5}}));
}

TEST(CFCBaseImpl_polyline, TurnsTheClampOverWithTheTransform)
{
    auto impl = MakeTent();
    impl.upperClamp = 5;
    HvTransfo4 flip;
    flip.Scale(1, -1, 1);
    EXPECT_EQ(Whole(impl, 1, flip).points, (Points{{0, 0}, {0.5, -5}, {1.5, -5}, {2, 0}}));
}

TEST(CFCBaseImpl_polyline, LeavesACurveOutsideTheClampsAsItIs)
{
    auto impl = MakeTent();
    impl.upperClamp = -1;
    EXPECT_EQ(Whole(impl, 1).points.size(), 3u);
}

TEST(CFCBaseImpl_polyline, TakesAVertexOnTheLimitAsItsOwnCrossing)
{
    auto impl = MakeStd({{kLinear, 0, 0, 0},
                         {kLinear, 1, 5, 5},
                         {kLinear, 2, 10, 10},
                         {kLinear, 3, 5, 5},
                         {kLinear, 4, 0, 0}});
    impl.upperClamp = 5;
    auto const f = Whole(impl, 1);
    EXPECT_EQ(f.points, (Points{{0, 0}, {1, 5}, {3, 5}, {4, 0}}));
    EXPECT_EQ(f.tags, std::vector<int>({0, 2, 0, 2}));
}

TEST(CFCBaseImpl_polyline, DropsARunOfOneVertex)
{
    // The tip of the tent touches the limit from below.
    auto impl = MakeTent();
    impl.lowerClamp = 10;
    EXPECT_EQ(Whole(impl, 1).points.size(), 3u);
    impl.keys.Add(CFCStdKey(3, 20, kLinear));
    auto const f = Whole(impl, 1);
    EXPECT_EQ(f.points, (Points{{2.5, 10}, {3, 20}}));
}

TEST(CFCBaseImpl_polyline, LeavesWhatTheArraysHeld)
{
    auto impl = MakeTent();
    impl.upperClamp = 5;
    HvPoint2dArray points;
    HvPointTagArray tags;
    points.Add(7, 70);
    tags.Add(HvPointTagEnd);
    EXPECT_EQ(impl.Flatten(HvTransfo4(), 1, points, tags, 1), 5u);
    EXPECT_EQ(points[0], HvPoint2<double>(7, 70));
    EXPECT_EQ(tags[0], HvPointTagEnd);
}

TEST(CFCBaseImpl_polyline, CutsTheArraysBackWhenMemoryRunsOut)
{
    auto impl = MakeTent();
    impl.upperClamp = 5;
    RefuseEachAllocation(
        [] { return FlattenArrays(); },
        [&](FlattenArrays& out) { impl.Flatten(HvTransfo4(), 1, out.points, out.tags, 1); },
        [](FlattenArrays& out, bool completed) {
            EXPECT_EQ(out.points.Size(), completed ? 4u : 0u);
            EXPECT_EQ(out.tags.Size(), out.points.Size());
        });
}

// Samples.

TEST(CFCBaseImpl_polyline, SamplesAtEqualStepsAndAtTheEnd)
{
    auto const s = Sequence(MakeTent(), 0, 1.75, 0.5);
    EXPECT_EQ(s.parameters, std::vector<double>({0, 0.5, 1, 1.5, 1.75}));
    EXPECT_EQ(s.values, std::vector<double>({0, 5, 10, 5, 2.5}));
}

TEST(CFCBaseImpl_polyline, SamplesAnEmptyIntervalTwice)
{
    auto const s = Sequence(MakeTent(), 0.5, 0.5, 1);
    EXPECT_EQ(s.parameters, std::vector<double>({0.5, 0.5}));
    EXPECT_EQ(s.values, std::vector<double>({5, 5}));
}

TEST(CFCBaseImpl_polyline, GivesOneSampleOfABackwardInterval)
{
    auto const s = Sequence(MakeTent(), 1, 0.5, 0.25);
    EXPECT_EQ(s.parameters, std::vector<double>({0.5}));
    EXPECT_EQ(s.values, std::vector<double>({10}));
}

TEST(CFCBaseImpl_polyline, SamplesTheFarSideOfAJump)
{
    auto const jump = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 3}, {kLinear, 2, 5, 5}});
    EXPECT_EQ(Sequence(jump, 0, 2, 0.5).values, std::vector<double>({0, 0.5, 3, 4, 5}));
    EXPECT_EQ(Sequence(jump, 1, 2, 0.5).values, std::vector<double>({3, 4, 5}));
    auto const broken = MakeStd({{kConstant, 0, 1, 1}, {kLinear, 1, 2, 2}, {kLinear, 2, 4, 4}});
    EXPECT_EQ(Sequence(broken, 0, 2, 0.5).values, std::vector<double>({1, 1, 2, 3, 4}));
}

TEST(CFCBaseImpl_polyline, ClampsEachSample)
{
    auto impl = MakeTent();
    impl.upperClamp = 7;
    impl.lowerClamp = 2;
    EXPECT_EQ(Sequence(impl, 0, 2, 0.5, 1).values, std::vector<double>({2, 5, 7, 5, 2}));
    EXPECT_EQ(Sequence(impl, 0, 2, 0.5, 0).values, std::vector<double>({0, 5, 10, 5, 0}));
}

TEST(CFCBaseImpl_polyline, EndsWhenAStepDoesNotMove)
{
    for (double step : {0.0, -1.0, 1e-300, kNaN}) {
        EXPECT_EQ(Sequence(MakeTent(), 1, 2, step).parameters, std::vector<double>({1, 2}));
    }
}

TEST(CFCBaseImpl_polyline, RefusesMoreSamplesThanAnArrayHolds)
{
    HvDoubleArray parameters;
    HvDoubleArray values;
    EXPECT_THROW(MakeTent().EvalSequence(0, 2, 1e-12, 1, parameters, values, 0), std::bad_alloc);
    EXPECT_EQ(parameters.Size(), 0u);
    EXPECT_EQ(values.Size(), 0u);
}

TEST(CFCBaseImpl_polyline, SamplesNothingOfNoNumbers)
{
    EXPECT_TRUE(Sequence(MakeTent(), kNaN, 1, 0.5).values.empty());
    EXPECT_TRUE(Sequence(MakeTent(), 0, kNaN, 0.5).values.empty());
}
