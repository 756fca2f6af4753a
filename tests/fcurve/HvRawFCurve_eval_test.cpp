// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluating raw curves: spans, the four extrapolations from both sides, clamping, inverse, bounds,
// polylines.

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/fcurve/raw_test_support.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <map>

namespace {

using C = HvBaseFCurve;

OpenRaw Tent(C::ExtrapolationMethod method)
{
    OpenRaw curve(9, {{0, 1}, {2, 5}, {4, 3}});
    curve.SetExtrapolationMethod(method);
    return curve;
}

// Spans.

TEST(HvRawFCurve_eval, InterpolatesLinearlyBetweenKeys)
{
    OpenRaw const curve = Tent(C::ConstantExtrapolation);
    EXPECT_EQ(curve.Eval(0, 0), 1);
    EXPECT_EQ(curve.Eval(1, 0), 3);
    EXPECT_EQ(curve.Eval(2, 0), 5);
    EXPECT_EQ(curve.Eval(3, 0), 4);
    EXPECT_EQ(curve.Eval(4, 0), 3);
}

TEST(HvRawFCurve_eval, DoesNotSnapAParameterToAKey)
{
    OpenRaw curve(0, {{0, 0}, {1, 1e13}});
    double const x = 1e-13;
    EXPECT_DOUBLE_EQ(curve.EvalNoLock(x, 0), 1);
    EXPECT_DOUBLE_EQ(curve.Eval(x, 0), 1);
    EXPECT_DOUBLE_EQ(curve.Eval(1 - std::ldexp(1.0, -50), 0), 1e13 - 1e13 * std::ldexp(1.0, -50));
}

TEST(HvRawFCurve_eval, SnapsInsideTheFoldOfACycle)
{
    OpenRaw curve(0, {{0, 0}, {1, 1e13}, {2, 0}});
    curve.SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(curve.Eval(3 + 1e-13, 0), 1e13);
    // Inside the key range nothing is folded, but the snap is a part of the fold.
    EXPECT_EQ(curve.Eval(1 + 1e-13, 0), 1e13);
    curve.SetExtrapolationMethod(C::RelativeCycleExtrapolation);
    EXPECT_LT(curve.Eval(3 + 1e-13, 0), 1e13);
}

TEST(HvRawFCurve_eval, TakesTheValueWhenNoKeysUnderEveryMethod)
{
    for (int method = 1; method <= 4; ++method) {
        OpenRaw curve(9, {});
        ASSERT_EQ(curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method)), 1);
        EXPECT_EQ(curve.Eval(3, 0), 9);
        EXPECT_EQ(curve.EvalLeft(3), 9);
        curve.SetClampingValues(0, 4);
        EXPECT_EQ(curve.Eval(3, 1), 4);
        EXPECT_EQ(curve.Eval(3, 0), 9);
    }
}

TEST(HvRawFCurve_eval, TakesTheOnlyKeyUnderEveryMethod)
{
    for (int method = 1; method <= 4; ++method) {
        OpenRaw curve(9, {{2, 5}});
        curve.SetExtrapolationMethod(static_cast<C::ExtrapolationMethod>(method));
        for (double const x : {-3.0, 2.0, 7.0}) {
            EXPECT_EQ(curve.Eval(x, 0), 5) << "method " << method << " at " << x;
            EXPECT_EQ(curve.EvalLeft(x), 5) << "method " << method << " at " << x;
        }
    }
}

// Extrapolation, value and value from the left.

struct Sample {
    double x;
    double right;
    double left;
};

void ExpectSamples(OpenRaw const& curve, std::initializer_list<Sample> samples)
{
    for (Sample const& sample : samples) {
        EXPECT_EQ(curve.Eval(sample.x, 0), sample.right) << "at " << sample.x;
        EXPECT_EQ(curve.EvalNoLock(sample.x, 0), sample.right) << "at " << sample.x;
        EXPECT_EQ(curve.EvalLeft(sample.x), sample.left) << "left of " << sample.x;
    }
}

TEST(HvRawFCurve_eval, HoldsTheEndsUnderConstantExtrapolation)
{
    ExpectSamples(Tent(C::ConstantExtrapolation),
                  {{-9, 1, 1}, {0, 1, 1}, {1, 3, 3}, {2, 5, 5}, {4, 3, 3}, {5, 3, 3}});
}

TEST(HvRawFCurve_eval, ContinuesTheEndSpansUnderLinearExtrapolation)
{
    ExpectSamples(
        Tent(C::LinearExtrapolation),
        {{-1, -1, -1}, {0, 1, 1}, {1, 3, 3}, {2, 5, 5}, {4, 3, 3}, {6, 1, 1}, {14, -7, -7}});
}

TEST(HvRawFCurve_eval, RepeatsTheKeyRangeUnderCycleExtrapolation)
{
    // The end of a cycle is the start of the next from the right, and the other way round from the
    // left.
    ExpectSamples(Tent(C::CycleExtrapolation), {{-4, 1, 3},
                                                {-1, 4, 4},
                                                {0, 1, 3},
                                                {1, 3, 3},
                                                {2, 5, 5},
                                                {4, 1, 3},
                                                {5, 3, 3},
                                                {8, 1, 3},
                                                {41, 3, 3}});
}

TEST(HvRawFCurve_eval, OffsetsEachCycleUnderRelativeCycleExtrapolation)
{
    // The offset is 3 - 1; the curve is continuous, so that both twins agree.
    ExpectSamples(Tent(C::RelativeCycleExtrapolation), {{-4, -1, -1},
                                                        {-1, 2, 2},
                                                        {0, 1, 1},
                                                        {1, 3, 3},
                                                        {2, 5, 5},
                                                        {4, 3, 3},
                                                        {5, 5, 5},
                                                        {6, 7, 7},
                                                        {8, 5, 5}});
}

TEST(HvRawFCurve_eval, AgreesWithAnExactPolyline)
{
    EXPECT_TRUE(rc::check("a polyline in long double", [] {
        unsigned int const n = PickInRange(2u, 40u);
        std::map<int, int> exact;
        OpenRaw curve(0);
        for (unsigned int i = 0; i < n; ++i) {
            int const x = PickInRange(-100, 100);
            int const y = PickInRange(-1000, 1000);
            exact[x] = y;
            RC_ASSERT(curve.CreateKey(x, y) == 1);
        }
        RC_ASSERT(curve.GetNumKeys() == exact.size());
        for (int k = 0; k < 20; ++k) {
            double const x = PickInRange(-1200, 1200) / 10.0;
            auto const after = exact.upper_bound(static_cast<int>(std::floor(x)));
            long double expected;
            if (after == exact.begin()) {
                expected = after->second;
            } else if (after == exact.end()) {
                expected = exact.rbegin()->second;
            } else {
                auto const before = std::prev(after);
                long double const t =
                    (static_cast<long double>(x) - before->first) / (after->first - before->first);
                expected = before->second + t * (after->second - before->second);
            }
            // Three roundings of numbers below 2000.
            constexpr double kRounding = 3 * 2000 * 2.3e-16;
            RC_ASSERT(std::fabs(curve.Eval(x, 0) - static_cast<double>(expected)) <= kRounding);
        }
    }));
}

TEST(HvRawFCurve_eval, AnswersManyParametersLikeOne)
{
    double const at[] = {-1, 0, 1, 3.5, 4, 17};
    for (int method = 1; method <= 4; ++method) {
        OpenRaw const curve = Tent(static_cast<C::ExtrapolationMethod>(method));
        double values[6];
        AllocationCounter const counter;
        curve.EvalMany(at, 6, values, 1);
        EXPECT_EQ(counter.Allocations(), 0);
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(values[i], curve.Eval(at[i], 1));
        }
    }
}

// Clamping.

TEST(HvRawFCurve_eval, ClampsWhenAsked)
{
    OpenRaw curve = Tent(C::ConstantExtrapolation);
    EXPECT_EQ(curve.SetClampingValues(2, 4), 1);
    EXPECT_EQ(curve.Eval(0, 0), 1);
    EXPECT_EQ(curve.Eval(0, 1), 2);
    EXPECT_EQ(curve.Eval(1, 1), 3);
    EXPECT_EQ(curve.Eval(2, 1), 4);
    EXPECT_EQ(curve.EvalNoLock(2, 7), 4);
}

TEST(HvRawFCurve_eval, RefusesClampsThatCross)
{
    OpenRaw curve = Tent(C::ConstantExtrapolation);
    double lower = 0;
    double upper = 0;
    EXPECT_EQ(curve.GetClampingValues(lower, upper), 1);
    EXPECT_EQ(lower, -1.7976931348623157e308);
    EXPECT_EQ(upper, 1.7976931348623157e308);
    EXPECT_EQ(curve.SetClampingValues(3, 3), 1);
    EXPECT_EQ(curve.SetClampingValues(2, 1), 0);
    EXPECT_EQ(curve.SetClampingValues(kNaN, 1), 0);
    EXPECT_EQ(curve.SetClampingValues(1, kNaN), 0);
    EXPECT_EQ(curve.GetClampingValues(lower, upper), 1);
    EXPECT_EQ(lower, 3);
    EXPECT_EQ(upper, 3);
}

// Bounds.

TEST(HvRawFCurve_eval, BoundsAreThoseOfTheKeys)
{
    OpenRaw curve = Tent(C::LinearExtrapolation);
    EXPECT_EQ(curve.GetValueLowerBound(0), 1);
    EXPECT_EQ(curve.GetValueUpperBound(0), 5);
    curve.SetClampingValues(2, 4);
    EXPECT_EQ(curve.GetValueLowerBound(0), 1);
    EXPECT_EQ(curve.GetValueLowerBound(1), 2);
    EXPECT_EQ(curve.GetValueUpperBound(1), 4);
    OpenRaw const empty(9, {});
    EXPECT_EQ(empty.GetValueLowerBound(0), 9);
    EXPECT_EQ(empty.GetValueUpperBound(0), 9);
}

// The inverse.

TEST(HvRawFCurve_eval, IsBijectiveWhileValuesGoOneWay)
{
    EXPECT_FALSE(OpenRaw(0, {}).IsBijective());
    EXPECT_FALSE(OpenRaw(0, {{0, 0}}).IsBijective());
    EXPECT_TRUE(OpenRaw(0, {{0, 0}, {1, 1}}).IsBijective());
    EXPECT_TRUE(OpenRaw(0, {{0, 0}, {1, 1}, {2, 9}}).IsBijective());
    EXPECT_TRUE(OpenRaw(0, {{0, 9}, {1, 1}, {2, 0}}).IsBijective());
    EXPECT_FALSE(OpenRaw(0, {{0, 0}, {1, 0}, {2, 9}}).IsBijective());
    EXPECT_FALSE(OpenRaw(0, {{0, 0}, {1, 0}, {2, -9}}).IsBijective());
    EXPECT_FALSE(OpenRaw(0, {{0, 0}, {1, 1}, {2, 1}}).IsBijective());
    EXPECT_FALSE(OpenRaw(0, {{0, 0}, {1, 1}, {2, 0}}).IsBijective());
    EXPECT_FALSE(OpenRaw(0, {{0, 1}, {1, 0}, {2, 0}}).IsBijective());
}

double InverseOf(HvRawFCurve const& curve, double value)
{
    double parameter = -77;
    EXPECT_EQ(curve.EvalInverse(value, parameter, 0), 1) << value;
    double again = -77;
    EXPECT_EQ(curve.EvalInverse(value, again, 1), 1);
    EXPECT_EQ(again, parameter) << "the flag has an effect";
    return parameter;
}

TEST(HvRawFCurve_eval, InvertsARisingCurve)
{
    OpenRaw const curve(0, {{0, 0}, {1, 10}, {2, 30}});
    EXPECT_EQ(InverseOf(curve, -1), 0);
    EXPECT_EQ(InverseOf(curve, 0), 0);
    EXPECT_EQ(InverseOf(curve, 5), 0.5);
    EXPECT_EQ(InverseOf(curve, 10), 1);
    EXPECT_EQ(InverseOf(curve, 20), 1.5);
    EXPECT_EQ(InverseOf(curve, 30), 2);
    EXPECT_EQ(InverseOf(curve, 31), 2);
    // Strictly between two values the span answers, however near the key.
    EXPECT_DOUBLE_EQ(InverseOf(curve, 10 + 5e-8), 1 + 2.5e-9);
    EXPECT_DOUBLE_EQ(InverseOf(curve, 10 - 5e-8), 1 - 5e-9);
}

TEST(HvRawFCurve_eval, InvertsAFallingCurve)
{
    OpenRaw const curve(0, {{0, 30}, {1, 10}, {2, 0}});
    EXPECT_EQ(InverseOf(curve, 31), 0);
    EXPECT_EQ(InverseOf(curve, 30), 0);
    EXPECT_EQ(InverseOf(curve, 20), 0.5);
    EXPECT_EQ(InverseOf(curve, 10), 1);
    EXPECT_EQ(InverseOf(curve, 5), 1.5);
    EXPECT_EQ(InverseOf(curve, 0), 2);
    EXPECT_EQ(InverseOf(curve, -1), 2);
}

TEST(HvRawFCurve_eval, HasNoInverseWhereItIsNotBijective)
{
    double parameter = -77;
    EXPECT_EQ(Tent(C::ConstantExtrapolation).EvalInverse(2, parameter, 0), 0);
    EXPECT_EQ(OpenRaw(0, {}).EvalInverse(0, parameter, 0), 0);
    EXPECT_EQ(OpenRaw(0, {{0, 0}, {1, 1}}).EvalInverse(kNaN, parameter, 0), 0);
    EXPECT_EQ(parameter, -77);
}

TEST(HvRawFCurve_eval, InverseLeadsBackToTheValue)
{
    EXPECT_TRUE(rc::check("Eval of EvalInverse", [] {
        bool const up = PickInRange(0, 2) == 1;
        OpenRaw curve(0);
        double y = 0;
        for (int x = 0; x < 12; ++x) {
            y += PickInRange(1, 50) / 7.0 * (up ? 1 : -1);
            curve.CreateKey(x * 3, y);
        }
        double const first = curve.GetMinusInfinityVal();
        double const value = first + PickInRange(0, 1000) / 1000.0 * (y - first);
        AllocationCounter const counter;
        double parameter = 0;
        RC_ASSERT(curve.EvalInverse(value, parameter, 0) == 1);
        RC_ASSERT(counter.Allocations() == 0);
        // Both ways round a few times, slopes are below 3.
        RC_ASSERT(std::fabs(curve.Eval(parameter, 0) - value) <= 1e-12);
    }));
}

// Polylines.

TEST(HvRawFCurve_eval, SamplesThePolyline)
{
    OpenRaw curve = Tent(C::ConstantExtrapolation);
    HvDoubleArray parameters;
    HvDoubleArray values;
    EXPECT_EQ(curve.EvalSequence(0, 4, 1, 1e9, parameters, values, 0), 5u);
    double const expected[] = {1, 3, 5, 4, 3};
    for (unsigned int i = 0; i < 5; ++i) {
        EXPECT_EQ(parameters[i], i);
        EXPECT_EQ(values[i], expected[i]);
    }
    curve.SetClampingValues(2, 4);
    EXPECT_EQ(curve.EvalSequence(0, 2, 1, 0, parameters, values, 1), 3u);
    EXPECT_EQ(values[5], 2);
    EXPECT_EQ(values[6], 3);
    EXPECT_EQ(values[7], 4);
}

TEST(HvRawFCurve_eval, FlattensToItsKeysWhateverTheTolerance)
{
    OpenRaw const curve = Tent(C::ConstantExtrapolation);
    for (double const tolerance : {0.0, 1e-9, 1e9, kNaN, -1.0}) {
        HvPoint2dArray points;
        HvPointTagArray tags;
        EXPECT_EQ(curve.Flatten(HvTransfo4(), tolerance, points, tags, 0), 3u);
        ASSERT_EQ(points.Size(), 3u);
        EXPECT_EQ(points[0], HvPoint2<double>(0, 1));
        EXPECT_EQ(points[1], HvPoint2<double>(2, 5));
        EXPECT_EQ(points[2], HvPoint2<double>(4, 3));
        EXPECT_EQ(tags[0], HvPointTagStart);
        EXPECT_EQ(tags[1], HvPointTagInner);
        EXPECT_EQ(tags[2], HvPointTagEnd);
    }
}

TEST(HvRawFCurve_eval, DrawsAViewWithoutRegardToTheTolerance)
{
    for (int method = 1; method <= 4; ++method) {
        OpenRaw const curve = Tent(static_cast<C::ExtrapolationMethod>(method));
        HvPoint2dArray points[2];
        HvPointTagArray tags[2];
        HvBoolArray flags[2];
        HvExtent2<double> const view(-5, -100, 9, 100);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(curve.FlattenFromTo(view, HvTransfo4(), i == 0 ? 1e-9 : 1e9, points[i],
                                          tags[i], flags[i], 0),
                      1);
        }
        ASSERT_EQ(points[0].Size(), points[1].Size());
        for (unsigned int i = 0; i < points[0].Size(); ++i) {
            EXPECT_EQ(points[0][i], points[1][i]);
            EXPECT_EQ(tags[0][i], tags[1][i]);
            EXPECT_EQ(flags[0][i], flags[1][i]);
            // Every vertex lies on the curve, on one of its sides.
            double const x = points[0][i].x;
            double const y = points[0][i].y;
            EXPECT_TRUE(std::fabs(curve.Eval(x, 0) - y) < 1e-9 ||
                        std::fabs(curve.EvalLeft(x) - y) < 1e-9)
                << "method " << method << " at " << x;
        }
        EXPECT_EQ(points[0][0].x, -5);
        EXPECT_EQ(points[0][points[0].Size() - 1].x, 9);
    }
}

// Folding.

TEST(HvRawFCurve_eval, FoldsParametersOfACycleOnly)
{
    for (int method = 1; method <= 4; ++method) {
        OpenRaw const curve = Tent(static_cast<C::ExtrapolationMethod>(method));
        bool const cycles = method >= 3;
        EXPECT_EQ(curve.FoldParameter(5), cycles ? 1 : 5);
        EXPECT_EQ(curve.FoldParameter(-1), cycles ? 3 : -1);
        EXPECT_EQ(curve.FoldParameter(6 + 1e-13), cycles ? 2 : 6 + 1e-13);
    }
}

}  // namespace
