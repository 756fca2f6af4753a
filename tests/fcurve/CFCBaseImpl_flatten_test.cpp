// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A curve over a parameter interval as a clipped polyline.

#include "flattened.h"

#include "../support/allocation_failure.h"

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/HvRawFCurveImpl.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Flattened Make(std::vector<HvPoint2<double>> points, std::vector<int> tags, std::vector<int> flags)
{
    return {std::move(points), std::move(tags), std::move(flags)};
}

/// A curve of one value for each key; before the first it has none, 0 or false.
template <class Impl, class Value>
Impl MakeSingle(std::vector<HvPoint2<double>> const& keys, int extrapolation)
{
    Impl impl(Value(0));
    impl.extrapolation = static_cast<unsigned char>(extrapolation);
    for (auto const& key : keys) {
        impl.InsertKey(impl.NumKeys(), {key.x, static_cast<Value>(key.y), 0}, 0);
    }
    return impl;
}

CFCIntegerImpl MakeInteger(int left, std::vector<HvPoint2<double>> const& keys,
                           int extrapolation = 1)
{
    auto impl = MakeSingle<CFCIntegerImpl, int>(keys, extrapolation);
    impl.leftValue = left;
    return impl;
}

}  // namespace

// Hand-worked curves.

TEST(CFCBaseImpl_flatten, KeepsAConnectedJumpInsideItsRun)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 3}, {kLinear, 2, 5, 5}});
    EXPECT_EQ(FromTo(impl, -1, 3), Make({{-1, 0}, {0, 0}, {1, 1}, {1, 3}, {2, 5}, {3, 5}},
                                        {0, 1, 1, 1, 1, 2}, {1, 1, 0, 1, 1, 1}));
}

TEST(CFCBaseImpl_flatten, BreaksBeforeAJumpThatAConstantSegmentDoesNotReach)
{
    auto const impl = MakeStd({{kConstant, 0, 1, 1}, {kLinear, 1, 2, 4}, {kLinear, 2, 6, 6}});
    EXPECT_EQ(FromTo(impl, 0, 2), Make({{0, 1}, {1, 1}, {1, 2}, {1, 4}, {2, 6}, {2, 6}},
                                       {0, 2, 0, 1, 1, 2}, {1, 0, 0, 1, 1, 1}));
}

TEST(CFCBaseImpl_flatten, FlagsABreakBeforeAnUnclippedCubicAndNotBeforeALine)
{
    auto const cubic = MakeStd({{kConstant, 0, 0, 0}, {kCubic, 1, 5, 5}, {kLinear, 2, 8, 8}});
    EXPECT_EQ(FromTo(cubic, -1, 3), Make({{-1, 0}, {0, 0}, {1, 0}, {1, 5}, {2, 8}, {3, 8}},
                                         {0, 1, 2, 0, 1, 2}, {1, 1, 0, 1, 1, 1}));
    auto const line = MakeStd({{kConstant, 0, 0, 0}, {kLinear, 1, 5, 5}, {kLinear, 2, 8, 8}});
    EXPECT_EQ(FromTo(line, -1, 3).flags, std::vector<int>({1, 1, 1, 1, 1, 1}));
}

TEST(CFCBaseImpl_flatten, ClipsEdgesAndJumpsToTheExtent)
{
    auto const jump = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 2, 10}, {kLinear, 2, 10, 10}});
    EXPECT_EQ(FromTo(jump, 0.5, 1.5, 0, 5), Make({{0.5, 1}, {1, 2}, {1, 5}}, {0, 1, 2}, {1, 0, 1}));
    auto const tent = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 10, 10}, {kLinear, 2, 0, 0}});
    EXPECT_EQ(FromTo(tent, 0, 3, 0, 5),
              Make({{0, 0}, {0.5, 5}, {1.5, 5}, {2, 0}, {3, 0}}, {0, 2, 0, 1, 2}, {1, 1, 1, 1, 1}));
}

TEST(CFCBaseImpl_flatten, DrawsTheEndJumpOfEachCycle)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 2, 4, 4}}, 3);
    EXPECT_EQ(FromTo(impl, -1, 3), Make({{-1, 2}, {0, 4}, {0, 0}, {2, 4}, {2, 0}, {3, 2}},
                                        {0, 1, 1, 1, 1, 2}, {1, 0, 1, 0, 1, 1}));
    EXPECT_EQ(FromTo(impl, 0, 4),
              Make({{0, 0}, {2, 4}, {2, 0}, {4, 4}}, {0, 1, 1, 2}, {1, 0, 1, 1}));
    EXPECT_EQ(FromTo(impl, 0, 2), Make({{0, 0}, {2, 4}}, {0, 2}, {1, 1}));
}

TEST(CFCBaseImpl_flatten, OffsetsRelativeCycles)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 2, 4, 4}}, 4);
    EXPECT_EQ(FromTo(impl, -1, 3), Make({{-1, -2}, {0, 0}, {0, 0}, {2, 4}, {2, 4}, {3, 6}},
                                        {0, 1, 1, 1, 1, 2}, {1, 0, 1, 0, 1, 1}));
}

TEST(CFCBaseImpl_flatten, DrawsTheJumpOfOneParameterOfACycle)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 2, 4, 4}}, 3);
    for (double boundary : {2.0, 4.0}) {
        EXPECT_EQ(FromTo(impl, boundary, boundary),
                  Make({{boundary, 4}, {boundary, 0}}, {0, 2}, {0, 0}));
    }
    EXPECT_EQ(FromTo(impl, 1, 1), Make({{1, 2}, {1, 2}}, {0, 2}, {1, 1}));
}

TEST(CFCBaseImpl_flatten, JumpsAtTheKeysOfSteppedCurves)
{
    auto const impl = MakeInteger(7, {{0, 1}, {1, 1}, {2, 4}});
    EXPECT_EQ(FromTo(impl, -1, 3), Make({{-1, 7}, {0, 7}, {0, 1}, {1, 1}, {2, 1}, {2, 4}, {3, 4}},
                                        {0, 1, 1, 1, 1, 1, 2}, {1, 0, 1, 1, 0, 1, 1}));
}

TEST(CFCBaseImpl_flatten, DrawsASingleKeyWithItsJump)
{
    auto const impl = MakeStd({{kLinear, 1, 2, 5}});
    EXPECT_EQ(FromTo(impl, 0, 2),
              Make({{0, 2}, {1, 2}, {1, 5}, {2, 5}}, {0, 1, 1, 2}, {1, 0, 1, 1}));
}

// Where the interval lies among the keys.

TEST(CFCBaseImpl_flatten, HoldsTheFirstLeftValueBeforeTheKeys)
{
    auto const impl = MakeStd({{kLinear, 0, 3, 4}, {kLinear, 1, 5, 5}});
    EXPECT_EQ(FromTo(impl, -3, -1), Make({{-3, 3}, {-1, 3}}, {0, 2}, {1, 1}));
    // The jump at the first key is not drawn when the interval ends there.
    EXPECT_EQ(FromTo(impl, -3, 0), Make({{-3, 3}, {0, 3}}, {0, 2}, {1, 1}));
}

TEST(CFCBaseImpl_flatten, HoldsTheLastRightValueBehindTheKeys)
{
    auto const impl = MakeStd({{kLinear, 0, 3, 4}, {kLinear, 1, 5, 7}});
    EXPECT_EQ(FromTo(impl, 2, 3), Make({{2, 7}, {3, 7}}, {0, 2}, {1, 1}));
    // The jump at the last key is not drawn when the interval starts there, and is when it ends
    // there.
    EXPECT_EQ(FromTo(impl, 1, 3), Make({{1, 7}, {3, 7}}, {0, 2}, {1, 1}));
    EXPECT_EQ(FromTo(impl, 0.5, 1),
              Make({{0.5, 4.5}, {1, 5}, {1, 7}, {1, 7}}, {0, 1, 1, 2}, {1, 0, 1, 1}));
}

TEST(CFCBaseImpl_flatten, IsOpenForJumpsAtItsStartAndClosedAtItsEnd)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 2}, {kLinear, 2, 3, 3}});
    EXPECT_EQ(FromTo(impl, 1, 1.5), Make({{1, 2}, {1.5, 2.5}}, {0, 2}, {1, 1}));
    EXPECT_EQ(FromTo(impl, 0.5, 1),
              Make({{0.5, 0.5}, {1, 1}, {1, 2}, {1, 2}}, {0, 1, 1, 2}, {1, 0, 1, 1}));
}

TEST(CFCBaseImpl_flatten, DrawsAPartOfOneSegment)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 4, 8, 8}});
    EXPECT_EQ(FromTo(impl, 1, 2), Make({{1, 2}, {2, 4}}, {0, 2}, {1, 1}));
    auto const level = MakeStd({{kConstant, 0, 3, 3}, {kLinear, 4, 8, 8}});
    EXPECT_EQ(FromTo(level, 1, 2), Make({{1, 3}, {2, 3}}, {0, 2}, {1, 1}));
}

TEST(CFCBaseImpl_flatten, DrawsAPartOfOneSegmentOfSteppedAndRawCurves)
{
    auto const integer = MakeSingle<CFCIntegerImpl, int>({{0, 3}, {4, 7}}, 1);
    EXPECT_EQ(FromTo(integer, 1, 3), Make({{1, 3}, {3, 3}}, {0, 2}, {1, 1}));
    auto const boolean = MakeSingle<CFCBooleanImpl, bool>({{0, 1}, {4, 0}}, 1);
    EXPECT_EQ(FromTo(boolean, 1, 3), Make({{1, 1}, {3, 1}}, {0, 2}, {1, 1}));
    auto const raw = MakeSingle<HvRawFCurveImpl, double>({{0, 0}, {4, 8}}, 1);
    EXPECT_EQ(FromTo(raw, 1, 2), Make({{1, 2}, {2, 4}}, {0, 2}, {1, 1}));
    // In the second cycle, which begins at 4.
    auto const cycling = MakeSingle<HvRawFCurveImpl, double>({{0, 0}, {4, 8}}, 3);
    EXPECT_EQ(FromTo(cycling, 5, 7), Make({{5, 2}, {7, 6}}, {0, 2}, {1, 1}));
}

TEST(CFCBaseImpl_flatten, ContinuesTheEndSegmentsUnderLinearExtrapolation)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 2, 4, 4}}, 2);
    EXPECT_EQ(FromTo(impl, -1, 3),
              Make({{-1, -2}, {0, 0}, {2, 4}, {3, 6}}, {0, 1, 1, 2}, {1, 1, 1, 1}));
    EXPECT_EQ(FromTo(impl, 3, 4), Make({{3, 6}, {4, 8}}, {0, 2}, {1, 1}));
    EXPECT_EQ(FromTo(impl, -2, -1), Make({{-2, -4}, {-1, -2}}, {0, 2}, {1, 1}));
}

TEST(CFCBaseImpl_flatten, DrawsTheValueWhenNoKeys)
{
    HvStdFCurveImpl impl(3, kLinear);
    EXPECT_EQ(FromTo(impl, 1, 2), Make({{1, 3}, {2, 3}}, {0, 2}, {1, 1}));
    EXPECT_EQ(FromTo(impl, 1, 1), Make({{1, 3}, {1, 3}}, {0, 2}, {1, 1}));
    EXPECT_EQ(FromTo(impl, 1, 2, 4, 5), Flattened());
}

TEST(CFCBaseImpl_flatten, DrawsNothingOfAnUnknownSegmentKind)
{
    auto impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 1}, {kLinear, 2, 2, 2}});
    impl.keys[1].segmentKind = 0;
    EXPECT_EQ(FromTo(impl, 0, 2),
              Make({{0, 0}, {1, 1}, {2, 2}, {2, 2}}, {0, 2, 0, 2}, {1, 1, 1, 1}));
}

// The states of the extent, and what the arrays held.

TEST(CFCBaseImpl_flatten, DrawsNothingInAnEmptyExtentAndAllInTheWholePlane)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1e6, 1e6}});
    HvExtent2<double> extent(0, -1, 1, 1);
    FlattenArrays out;
    extent.state = HvExtent2<double>::Empty;
    impl.FlattenFromTo(extent, HvTransfo4(), 1, out.points, out.tags, out.flags);
    EXPECT_EQ(out.Get(), Flattened());
    extent.state = HvExtent2<double>::WholePlane;
    impl.FlattenFromTo(extent, HvTransfo4(), 1, out.points, out.tags, out.flags);
    EXPECT_EQ(out.points.Size(), 3u);
    EXPECT_EQ(out.points[1], HvPoint2<double>(1, 1e6));
}

TEST(CFCBaseImpl_flatten, AppendsAndGoesOnFromTheLastPoint)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 1}, {kLinear, 2, 0, 0}});
    FlattenArrays out;
    impl.FlattenFromTo({0, -9, 0.5, 9}, HvTransfo4(), 1, out.points, out.tags, out.flags);
    impl.FlattenFromTo({0.5, -9, 1.5, 9}, HvTransfo4(), 1, out.points, out.tags, out.flags);
    EXPECT_EQ(out.points.Size(), 4u);
    impl.FlattenFromTo({1.75, -9, 2, 9}, HvTransfo4(), 1, out.points, out.tags, out.flags);
    EXPECT_EQ(out.tags[3], HvPointTagEnd);
    EXPECT_EQ(out.tags[4], HvPointTagStart);
}

TEST(CFCBaseImpl_flatten, MapsBeforeItClips)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 1}});
    HvTransfo4 transfo;
    transfo.Translate(10, 20, 0);
    transfo.Scale(2, -4, 1);
    EXPECT_EQ(FromTo(impl, 0, 2, -5, 5, transfo),
              Make({{10, 20}, {12, 16}, {14, 16}}, {0, 1, 2}, {1, 1, 1}));
}

// Cubics.

namespace {

/// An S between (0, 0) and (3, 6) with level ends, as a cubic.
HvStdFCurveImpl MakeS(int extrapolation = 1)
{
    auto impl = MakeStd({{kCubic, 0, 0, 0}, {kCubic, 3, 6, 6}}, extrapolation);
    impl.keys[0].rightHandle = {1, 0};
    impl.keys[1].leftHandle = {2, 6};
    return impl;
}

/// y of MakeS at x: x(t) = 3t, y(t) = 6 (3t^2 - 2t^3).
double S(double x)
{
    double const t = x / 3;
    return 6 * t * t * (3 - 2 * t);
}

}  // namespace

TEST(CFCBaseImpl_flatten, KeepsCubicsWithinTheTolerance)
{
    auto const impl = MakeS();
    for (auto const& range : std::vector<std::pair<double, double>>{
             {0, 3}, {0.5, 3}, {0, 2.5}, {0.5, 2.5}, {-1, 2}, {1, 5}}) {
        auto const f = FromTo(impl, range.first, range.second);
        ASSERT_GE(f.points.size(), 2u);
        EXPECT_EQ(f.points.front().x, range.first);
        EXPECT_EQ(f.points.back().x, range.second);
        for (std::size_t i = 0; i + 1 < f.points.size(); ++i) {
            auto const& a = f.points[i];
            auto const& b = f.points[i + 1];
            EXPECT_LE(a.x, b.x);
            for (double t : {0.0, 0.25, 0.5, 0.75, 1.0}) {
                double const x = a.x + (b.x - a.x) * t;
                double const y = a.y + (b.y - a.y) * t;
                double const inKeys = std::min(std::max(x, 0.0), 3.0);
                // The tolerance holds across the chord; vertically it grows with the slope, here at
                // most 3, so by the factor sqrt(1 + 3^2).
                EXPECT_NEAR(y, S(inKeys), kTestTolerance * std::sqrt(10.0)) << "x " << x;
            }
        }
    }
}

TEST(CFCBaseImpl_flatten, DrawsALineAlongTheHandleWhereACutLeavesNoHalf)
{
    auto const impl = MakeS();
    double const x = 1e-8;  // t = x / 3 is below the smallest cut
    auto const left = FromTo(impl, -1, x);
    EXPECT_EQ(left.points, (std::vector<HvPoint2<double>>{{-1, 0}, {0, 0}, {x, 0}}));
    auto const partial = FromTo(impl, 0, x);
    EXPECT_EQ(partial.points, (std::vector<HvPoint2<double>>{{0, 0}, {x, impl.EvalRight(x, 0)}}));
    double const y = 3 - x;
    auto const right = FromTo(impl, y, 3);
    // The last key is the end of the interval as well: a line of no length follows.
    EXPECT_EQ(right.points, (std::vector<HvPoint2<double>>{{y, 6}, {3, 6}, {3, 6}}));
}

TEST(CFCBaseImpl_flatten, DrawsNoSpikeAlongAVerticalHandle)
{
    auto impl = MakeStd({{kLinear, -1, 0, 0}, {kCubic, 0, 0, 0}, {kCubic, 3, 6, 6}});
    impl.keys[1].rightHandle = {0, 5};
    EXPECT_EQ(FromTo(impl, -0.5, 0).points,
              (std::vector<HvPoint2<double>>{{-0.5, 0}, {0, 0}, {0, 0}}));
    // The handle lies outside the extent: the line still goes nowhere.
    EXPECT_EQ(FromTo(impl, -0.5, 0, -1, 1).points,
              (std::vector<HvPoint2<double>>{{-0.5, 0}, {0, 0}, {0, 0}}));
}

TEST(CFCBaseImpl_flatten, RepeatsCubicsOverCycles)
{
    auto const impl = MakeS(4);
    auto const one = FromTo(impl, 0, 3);
    auto const many = FromTo(impl, 0, 9);
    // A cycle's end stands twice, for the jump of no height; the second is the next cycle's start.
    ASSERT_EQ(many.points.size(), 3 * one.points.size());
    for (std::size_t c = 0; c < 3; ++c) {
        for (std::size_t i = 0; i < one.points.size(); ++i) {
            auto const& p = many.points[c * one.points.size() + i];
            // Offsets are small whole numbers, so only the forward differences round: far below
            // 1e-9.
            EXPECT_NEAR(p.x, one.points[i].x + 3.0 * static_cast<double>(c), 1e-9);
            EXPECT_NEAR(p.y, one.points[i].y + 6.0 * static_cast<double>(c), 1e-9);
        }
    }
}

// Properties.

TEST(CFCBaseImpl_flatten, AgreesWithTheEvaluationOnLinearCurves)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> value(-10, 10);
    for (int extrapolation = 1; extrapolation <= 4; ++extrapolation) {
        for (int round = 0; round < 50; ++round) {
            std::vector<StdKey> keys;
            for (int i = 0; i < 1 + round % 6; ++i) {
                double const y = value(random);
                keys.push_back({i % 3 == 0 ? kConstant : kLinear, i * 0.5, y, y});
                if (i != 0 && i % 3 == 1) {
                    keys.back().left = keys[keys.size() - 2].right;
                }
            }
            auto const impl = MakeStd(keys, extrapolation);
            double const a = value(random);
            double const b = a + std::fabs(value(random));
            auto const f = FromTo(impl, a, b, -1e6, 1e6);
            for (std::size_t i = 0; i + 1 < f.points.size(); ++i) {
                if (f.flags[i] == 0 || f.tags[i] == HvPointTagEnd ||
                    !(f.points[i + 1].x - f.points[i].x > 1e-6)) {
                    continue;
                }
                double const x = (f.points[i].x + f.points[i + 1].x) / 2;
                double const y = (f.points[i].y + f.points[i + 1].y) / 2;
                // Values stay below 1e3 here and a handful of roundings separate the two ways.
                EXPECT_NEAR(y, impl.EvalRightUsingExtrapolationMethod(x), 1e-9)
                    << "method " << extrapolation << " x " << x << " in " << f;
            }
        }
    }
}

TEST(CFCBaseImpl_flatten, DrawsOnlyTheCyclesThatShow)
{
    // A million cycles climb by 4 each; ten of them pass the view.
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 4, 4}}, 4);
    auto const f = FromTo(impl, -5e5, 5e5, 0, 40);
    EXPECT_EQ(f.points.front(), HvPoint2<double>(0, 0));
    EXPECT_EQ(f.points.back(), HvPoint2<double>(10, 40));
    EXPECT_LE(f.points.size(), 24u);
}

// Bad numbers.

TEST(CFCBaseImpl_flatten, DrawsNothingOfAnIntervalThatIsNone)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1, 1, 1}});
    EXPECT_EQ(FromTo(impl, 2, 1), Flattened());
    EXPECT_EQ(FromTo(impl, kNaN, 1), Flattened());
    EXPECT_EQ(FromTo(impl, 0, kNaN), Flattened());
    EXPECT_EQ(FromTo(HvStdFCurveImpl(1, kLinear), 2, 1), Flattened());
}

TEST(CFCBaseImpl_flatten, EndsWhateverTheNumbers)
{
    for (int extrapolation : {0, 1, 2, 3, 4, 5, 255}) {
        for (double bad : {kNaN, kInf, -kInf, 1e308, -1e308, 5e-324, 0.0}) {
            auto impl = MakeStd({{kCubic, 0, 0, 0}, {kLinear, 1, 2, 3}, {kConstant, 2, 1, 1}},
                                extrapolation);
            impl.keys[0].rightHandle = {bad, bad};
            impl.keys[1].leftValue = bad;
            FromTo(impl, -1, 3);
            FromTo(impl, 0.25, 1.5);
            Whole(impl, 1);
            impl.keys[2].parameter = bad;
            FromTo(impl, -1, 3);
            Whole(impl, 1);
            FlattenArrays out;
            MakeStd({{kCubic, 0, 0, 0}, {kLinear, 1, 2, 3}}, extrapolation)
                .FlattenFromTo({-2, -9, 2, 9}, HvTransfo4(), std::fabs(bad) < 1e-300 ? 1e-9 : bad,
                               out.points, out.tags, out.flags);
            EXPECT_EQ(out.points.Size(), out.tags.Size());
            EXPECT_EQ(out.points.Size(), out.flags.Size());
        }
    }
}

TEST(CFCBaseImpl_flatten, RefusesMoreVerticesThanAnArrayHolds)
{
    auto const impl = MakeStd({{kLinear, 0, 0, 0}, {kLinear, 1e-9, 1, 1}}, 3);
    FlattenArrays out;
    EXPECT_THROW(
        impl.FlattenFromTo({0, -9, 1e3, 9}, HvTransfo4(), 1, out.points, out.tags, out.flags),
        std::bad_alloc);
}

TEST(CFCBaseImpl_flatten, KeepsTheArraysParallelWhenMemoryRunsOut)
{
    auto const impl = MakeS(4);
    RefuseEachAllocation([] { return FlattenArrays(); },
                         [&](FlattenArrays& out) {
                             impl.FlattenFromTo({-4, -99, 9, 99}, HvTransfo4(), 1e-3, out.points,
                                                out.tags, out.flags);
                         },
                         [](FlattenArrays& out, bool) {
                             EXPECT_EQ(out.points.Size(), out.tags.Size());
                             EXPECT_EQ(out.points.Size(), out.flags.Size());
                         });
}
