// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One cubic fitted to points: tolerance, ends, tangents, split, refusals, hostile numbers.

#include <hv/bezier/HvBezierTool.h>

#include "../support/allocation_failure.h"
#include "fit_test_support.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned int kUntouched = 12345;
FitPoint const kMark(-77.0F, -78.0F);

enum Form {
    G1G1,
    G1C0,
    C0G1,
    C0C0
};
constexpr Form kForms[] = {G1G1, G1C0, C0G1, C0C0};

struct OneFit {
    int result = 0;
    FitPoint cubic[4] = {kMark, kMark, kMark, kMark};
    unsigned int split = kUntouched;

    bool IsUntouched() const
    {
        return split == kUntouched &&
               std::all_of(cubic, cubic + 4, [](FitPoint const& p) { return p == kMark; });
    }
};

struct Input {
    HvPoint2fArray points;
    HvDoubleArray parameters;
    Point2 start;
    Point2 end;

    OneFit Fit(Form form, unsigned int first, unsigned int last, double tolerance,
               unsigned int rounds) const
    {
        HvBezierTool tool;
        OneFit fit;
        switch (form) {
        case G1G1:
            fit.result = tool.SingleCurveFitG1G1(points, parameters, first, last, start, end,
                                                 tolerance, rounds, fit.cubic, fit.split);
            break;
        case G1C0:
            fit.result = tool.SingleCurveFitG1C0(points, parameters, first, last, start, tolerance,
                                                 rounds, fit.cubic, fit.split);
            break;
        case C0G1:
            fit.result = tool.SingleCurveFitC0G1(points, parameters, first, last, end, tolerance,
                                                 rounds, fit.cubic, fit.split);
            break;
        case C0C0:
            fit.result = tool.SingleCurveFitC0C0(points, parameters, first, last, tolerance, rounds,
                                                 fit.cubic, fit.split);
            break;
        }
        return fit;
    }
};

Point2 Unit(Point2 const& v)
{
    return v * (1.0 / Length(v));
}

Input InputOf(HvPoint2fArray const& points, Point2 const& start, Point2 const& end)
{
    return {points, LengthsOf(points), start, end};
}

/// `count` + 1 points of a cubic at equal parameters, with its true tangents.
Input SampledCubic(Point2 const* cubic, int count)
{
    HvPoint2fArray points;
    for (int i = 0; i <= count; ++i) {
        points.Add(ToFloat(CubicAt(cubic, double(i) / count)));
    }
    return InputOf(points, Unit(cubic[1] - cubic[0]), Unit(cubic[3] - cubic[2]));
}

Point2 const kBow[4] = {{0, 0}, {120, -40}, {-30, 100}, {100, 80}};

}  // namespace

TEST(HvBezierTool_fit, SampledCubicComesBackInEveryForm)
{
    Input const input = SampledCubic(kBow, 200);
    for (Form const form : kForms) {
        for (double const tolerance : {1.0, 0.1, 0.01}) {
            OneFit const fit = input.Fit(form, 0, 200, tolerance, 32);
            ASSERT_EQ(fit.result, 1) << form << " " << tolerance;
            EXPECT_EQ(fit.split, kUntouched);
            EXPECT_EQ(fit.cubic[0], input.points[0]);
            EXPECT_EQ(fit.cubic[3], input.points[200]);
            Point2 cubic[4];
            std::transform(fit.cubic, fit.cubic + 4, cubic, [](FitPoint p) { return Point2(p); });
            for (FitPoint const& p : input.points) {
                EXPECT_LE(DistanceFrom(cubic, Point2(p)), tolerance + 1e-9);
            }
        }
    }
}

TEST(HvBezierTool_fit, TrueParametersGiveTheCubicItselfWithoutRounds)
{
    Input input = SampledCubic(kBow, 50);
    for (unsigned int i = 0; i <= 50; ++i) {
        input.parameters[i] = i;
    }
    for (Form const form : kForms) {
        OneFit const fit = input.Fit(form, 0, 50, 1e-3, 0);
        ASSERT_EQ(fit.result, 1) << form;
        for (int k = 0; k < 4; ++k) {
            // Points rounded to float, by 4e-6 at most, through a matrix of condition 10.
            EXPECT_NEAR(fit.cubic[k].x, kBow[k].x, 1e-4);
            EXPECT_NEAR(fit.cubic[k].y, kBow[k].y, 1e-4);
        }
    }
}

TEST(HvBezierTool_fit, GivenTangentsAreKept)
{
    RandomCurves random(7);
    for (int round = 0; round < 200; ++round) {
        HvPoint2fArray points;
        for (int i = 0; i < 8; ++i) {
            points.Add(FitPoint(static_cast<float>(10 * i + random.Uniform(-2, 2)),
                                static_cast<float>(random.Uniform(-5, 5))));
        }
        double const a = random.Uniform(-1, 1);
        double const b = random.Uniform(-1, 1);
        Input const input = InputOf(points, {std::cos(a), std::sin(a)}, {std::cos(b), std::sin(b)});
        for (Form const form : {G1G1, G1C0, C0G1}) {
            OneFit const fit = input.Fit(form, 0, 7, 1000, 4);
            ASSERT_EQ(fit.result, 1);
            Point2 const out = Point2(fit.cubic[1]) - Point2(fit.cubic[0]);
            Point2 const in = Point2(fit.cubic[3]) - Point2(fit.cubic[2]);
            // Controls below 128 are rounded by 4e-6; the sine gains that over the length.
            if (form != C0G1) {
                EXPECT_GT(Dot(out, input.start), 0.0);
                EXPECT_NEAR(HvPoint2_AdetB(out, input.start), 0.0, 1e-5);
            }
            if (form != G1C0) {
                EXPECT_GT(Dot(in, input.end), 0.0);
                EXPECT_NEAR(HvPoint2_AdetB(in, input.end), 0.0, 1e-5);
            }
        }
    }
}

TEST(HvBezierTool_fit, OneStepHasHandlesOfAThirdOfTheChord)
{
    Input const input = InputOf(ArrayOf({{0, 0}, {9, 0}}), {0, 1}, {1, 0});
    OneFit fit = input.Fit(G1G1, 0, 1, 0.0, 3);
    ASSERT_EQ(fit.result, 1);
    EXPECT_EQ(fit.cubic[1], FitPoint(0, 3));
    EXPECT_EQ(fit.cubic[2], FitPoint(6, 0));
    fit = input.Fit(G1C0, 0, 1, 0.0, 3);
    EXPECT_EQ(fit.cubic[1], FitPoint(0, 3));
    EXPECT_EQ(fit.cubic[2], FitPoint(6, 0));
    fit = input.Fit(C0C0, 0, 1, 0.0, 3);
    EXPECT_EQ(fit.cubic[1], FitPoint(3, 0));
    EXPECT_EQ(fit.cubic[2], FitPoint(6, 0));
}

TEST(HvBezierTool_fit, BackwardHandleFallsBackToAThirdOfTheChord)
{
    // The points bulge upward, the tangents lead down: both handles would be negative.
    Input const input = InputOf(ArrayOf({{0, 0}, {3, 3}, {6, 3}, {9, 0}}), {0, -1}, {0, 1});
    OneFit const fit = input.Fit(G1G1, 0, 3, 100, 0);
    ASSERT_EQ(fit.result, 1);
    EXPECT_EQ(fit.cubic[1], FitPoint(0, -3));
    EXPECT_EQ(fit.cubic[2], FitPoint(9, -3));
}

TEST(HvBezierTool_fit, OneInnerPointDoesNotDetermineFreeHandles)
{
    Input const input = InputOf(ArrayOf({{0, 0}, {4, 1}, {9, 0}}), {}, {});
    OneFit const fit = input.Fit(C0C0, 0, 2, 2, 0);
    ASSERT_EQ(fit.result, 1);
    EXPECT_EQ(fit.cubic[1], FitPoint(3, 0));
    EXPECT_EQ(fit.cubic[2], FitPoint(6, 0));
}

TEST(HvBezierTool_fit, ZeroTangentCollapsesItsHandle)
{
    for (Point2 const& none : {Point2(0, 0), Point2(kNaN, 0), Point2(kInfinity, 1)}) {
        Input const input = InputOf(ArrayOf({{0, 0}, {3, 1}, {6, 1}, {9, 0}}), none, none);
        OneFit const fit = input.Fit(G1G1, 0, 3, 10, 2);
        ASSERT_EQ(fit.result, 1);
        EXPECT_EQ(fit.cubic[1], FitPoint(0, 0));
        EXPECT_EQ(fit.cubic[2], FitPoint(9, 0));
    }
}

TEST(HvBezierTool_fit, MoreRoundsReachASmallerTolerance)
{
    // Chord lengths are far from the parameters of a curve as bent as this.
    Input const input = SampledCubic(kBow, 40);
    EXPECT_EQ(input.Fit(C0C0, 0, 40, 0.02, 0).result, 0);
    EXPECT_EQ(input.Fit(C0C0, 0, 40, 0.02, 32).result, 1);
}

TEST(HvBezierTool_fit, SplitIsTheWorstPointAndStrictlyInside)
{
    HvPoint2fArray points;
    for (int i = 0; i <= 20; ++i) {
        points.Add(FitPoint(static_cast<float>(i), i == 13 ? 8.0F : 0.0F));
    }
    Input const input = InputOf(points, {1, 0}, {1, 0});
    for (Form const form : kForms) {
        OneFit const fit = input.Fit(form, 0, 20, 0.5, 3);
        EXPECT_EQ(fit.result, 0);
        EXPECT_EQ(fit.split, 13u) << form;
        EXPECT_EQ(fit.cubic[1], kMark);
    }
    RandomCurves random(3);
    for (int round = 0; round < 300; ++round) {
        HvPoint2fArray scattered;
        for (int i = 0; i < 12; ++i) {
            scattered.Add(FitPoint(static_cast<float>(random.Uniform(-9, 9)),
                                   static_cast<float>(random.Uniform(-9, 9))));
        }
        auto const first = static_cast<unsigned int>(random.Uniform(0, 9));
        auto const last = first + 2 + static_cast<unsigned int>(random.Uniform(0, 9.0 - first));
        Input const wild = InputOf(scattered, {1, 0}, {0, 1});
        for (Form const form : kForms) {
            OneFit const fit = wild.Fit(form, first, last, 1e-6, 5);
            if (fit.result == 0) {
                EXPECT_GT(fit.split, first);
                EXPECT_LT(fit.split, last);
            }
        }
    }
}

TEST(HvBezierTool_fit, SplitIsTheWorstPointWithoutAnyTolerance)
{
    // On the line but one point, which is off it in the second half.
    Input input;
    for (int i = 0; i <= 20; ++i) {
        input.points.Add(FitPoint(static_cast<float>(i), i == 14 ? 5.0F : 0.0F));
        input.parameters.Add(i);
    }
    input.start = input.end = Point2(1, 0);
    for (Form const form : kForms) {
        OneFit const fit = input.Fit(form, 0, 20, 0.0, 8);
        EXPECT_EQ(fit.result, 0);
        EXPECT_EQ(fit.split, 14u);
    }
}

TEST(HvBezierTool_fit, SuccessMeansThatEveryPointIsWithinTheTolerance)
{
    RandomCurves random(11);
    int successes = 0;
    for (int round = 0; round < 150; ++round) {
        Point2 cubic[4];
        random.Fill(cubic, 4, 100);
        Input input = SampledCubic(cubic, 30);
        for (FitPoint& p : input.points) {
            p = p + FitPoint(static_cast<float>(random.Uniform(-1, 1)),
                             static_cast<float>(random.Uniform(-1, 1)));
        }
        input.parameters = LengthsOf(input.points);
        for (Form const form : kForms) {
            OneFit const fit = input.Fit(form, 0, 30, 2.0, 8);
            if (fit.result == 1) {
                ++successes;
                Point2 wide[4];
                std::transform(fit.cubic, fit.cubic + 4, wide,
                               [](FitPoint p) { return Point2(p); });
                for (FitPoint const& p : input.points) {
                    EXPECT_LE(DistanceFrom(wide, Point2(p)), 2.0 + Slack(input.points));
                }
            }
        }
    }
    EXPECT_GT(successes, 100);
}

TEST(HvBezierTool_fit, RefusesWhatIsNoStretchOfThePoints)
{
    Input input = SampledCubic(kBow, 10);
    struct {
        unsigned int first, last;
    } const rows[] = {{0, 0}, {5, 4}, {0, 11}, {3, 4294967295u}, {11, 12}, {4294967295u, 0}};
    for (auto const& row : rows) {
        for (Form const form : kForms) {
            OneFit const fit = input.Fit(form, row.first, row.last, 1e6, 3);
            EXPECT_EQ(fit.result, 0);
            EXPECT_TRUE(fit.IsUntouched());
        }
    }
    input.parameters.Chop(10);
    EXPECT_EQ(input.Fit(C0C0, 0, 10, 1e6, 3).result, 0);
    EXPECT_EQ(input.Fit(C0C0, 0, 9, 1e6, 3).result, 1);
    EXPECT_EQ(Input().Fit(C0C0, 0, 0, 1e6, 3).result, 0);
}

TEST(HvBezierTool_fit, RefusesStepsAndTolerancesThatAreNoNumbers)
{
    Input const step = InputOf(ArrayOf({{0, 0}, {9, 0}}), {1, 0}, {1, 0});
    for (double const tolerance : {kNaN, -1.0, -kInfinity, -1e-300}) {
        OneFit const fit = step.Fit(C0C0, 0, 1, tolerance, 3);
        EXPECT_EQ(fit.result, 0);
        EXPECT_TRUE(fit.IsUntouched());
    }
    auto const nan = static_cast<float>(kNaN);
    Input const broken = InputOf(ArrayOf({{nan, 0}, {9, 0}}), {1, 0}, {1, 0});
    EXPECT_EQ(broken.Fit(G1G1, 0, 1, 1e9, 3).result, 0);
    EXPECT_TRUE(broken.Fit(G1G1, 0, 1, 1e9, 3).IsUntouched());
}

TEST(HvBezierTool_fit, UselessParametersCountAsEvenOnes)
{
    Input input = SampledCubic(kBow, 30);
    HvDoubleArray even;
    for (unsigned int i = 0; i <= 30; ++i) {
        even.Add(i);
    }
    Input plain = input;
    plain.parameters = even;
    OneFit const expected = plain.Fit(C0C0, 0, 30, 0.1, 4);
    ASSERT_EQ(expected.result, 1);
    for (double const useless : {0.0, kNaN, kInfinity, -kInfinity, 7.0}) {
        for (double& parameter : input.parameters) {
            parameter = useless;
        }
        OneFit const fit = input.Fit(C0C0, 0, 30, 0.1, 4);
        ASSERT_EQ(fit.result, 1) << useless;
        EXPECT_EQ(fit.cubic[1], expected.cubic[1]);
        EXPECT_EQ(fit.cubic[2], expected.cubic[2]);
    }
}

TEST(HvBezierTool_fit, HostileNumbersEndInAResult)
{
    double const numbers[] = {0.0,  -0.0, 1e-310, -1e-310,   kGreatest, -kGreatest,
                              kNaN, 1.0,  3e38,   kInfinity, -kInfinity};
    Input const good = SampledCubic(kBow, 12);
    for (double const number : numbers) {
        for (Form const form : kForms) {
            for (unsigned int at = 0; at <= 12; at += 4) {
                Input input = good;
                input.points[at].x = static_cast<float>(std::fabs(number) <= 3.5e38 ? number
                                                        : number > 0                ? kInfinity
                                                                                    : -kInfinity);
                OneFit fit = input.Fit(form, 0, 12, 1.0, 4294967295u);
                EXPECT_TRUE(fit.result == 1 || (fit.split > 0 && fit.split < 12));
                input = good;
                input.parameters[at] = number;
                fit = input.Fit(form, 0, 12, 1.0, 4294967295u);
                EXPECT_TRUE(fit.result == 1 || (fit.split > 0 && fit.split < 12));
            }
            Input input = good;
            input.start.x = number;
            input.end.y = number;
            OneFit fit = input.Fit(form, 0, 12, 1.0, 9);
            EXPECT_TRUE(fit.result == 1 || (fit.split > 0 && fit.split < 12));
            fit = good.Fit(form, 0, 12, number, 9);
            EXPECT_TRUE(fit.result == 1 || (fit.split > 0 && fit.split < 12));
        }
    }
}

TEST(HvBezierTool_fit, HandlesBeyondFloatAreTheGreatestFloat)
{
    Input const input = InputOf(ArrayOf({{-3e38F, 0}, {3e38F, 0}}), {-1, 0}, {-1, 0});
    OneFit const fit = input.Fit(G1G1, 0, 1, 0.0, 1);
    ASSERT_EQ(fit.result, 1);
    EXPECT_EQ(fit.cubic[1].x, -std::numeric_limits<float>::max());
    EXPECT_EQ(fit.cubic[2].x, std::numeric_limits<float>::max());
}

TEST(HvBezierTool_fit, RefusedMemoryLeavesTheOutputs)
{
    Input const input = SampledCubic(kBow, 40);
    OneFit fit;
    long const allocations = RefuseEachAllocation(
        [&] {
            fit = OneFit();
            return HvBezierTool();
        },
        [&](HvBezierTool& tool) {
            fit.result = tool.SingleCurveFitC0C0(input.points, input.parameters, 0, 40, 0.5, 4,
                                                 fit.cubic, fit.split);
        },
        [&](HvBezierTool&, bool completed) { EXPECT_NE(fit.IsUntouched(), completed); });
    EXPECT_GE(allocations, 1);
}
