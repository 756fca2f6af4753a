// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reducing the keys of the standard curve.

#include "std_edit.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

#include <hv/foundation/HvDoubleArray.h>

namespace {

using Parameters = std::vector<double>;

Parameters ParametersOf(HvStdFCurve const& curve)
{
    HvDoubleArray parameters;
    curve.GetAllKeyParameters(parameters);
    return Parameters(parameters.begin(), parameters.end());
}

/// A polyline over 0, 1, 2, ...
StdCurve Line(std::initializer_list<double> values)
{
    StdCurve curve(0.0, kLinear);
    double x = 0;
    for (double const value : values) {
        curve.Impl().keys.Add(KeyAt(x, value, value, kLinear));
        x += 1;
    }
    return curve;
}

/// One cubic with handles at the thirds, split into pieces that keep its shape.
StdCurve SplitCubic(unsigned int numPieces)
{
    StdCurve curve = ThirdsCubic();
    for (unsigned int i = 1; i < numPieces; ++i) {
        unsigned int index = 0;
        curve.Impl().CreateNonModifyingKey(3.0 * i / numPieces, index, curve);
    }
    return curve;
}

/// The largest difference of two curves at and between the keys of both.
double Deviation(StdCurve const& a, StdCurve const& b)
{
    double const first = a.Impl().FirstParameter();
    double const last = a.Impl().LastParameter();
    double largest = 0;
    for (int k = 0; k <= 640; ++k) {
        double const x = first + (last - first) * k / 640;
        largest = std::max(largest, std::fabs(a.Eval(x, 0) - b.Eval(x, 0)));
    }
    return largest;
}

double Range(StdCurve const& curve)
{
    double low = curve.Impl().keys[0].rightValue;
    double high = low;
    for (CFCStdKey const& key : curve.Impl().keys) {
        low = std::min(low, key.rightValue);
        high = std::max(high, key.rightValue);
    }
    return high - low;
}

}  // namespace

TEST(HvStdFCurve_reduce, DropsKeysOnALine)
{
    StdCurve curve = Line({0, 1, 2, 3, 5, 7, 9, 9});
    EXPECT_EQ(curve.ReduceNumKeys(0.0), 4u);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 3, 6, 7}));
    EXPECT_EQ(curve.Eval(5, 0), 7);
}

TEST(HvStdFCurve_reduce, ToleranceIsAShareOfTheValueRange)
{
    // The range is 10, so 0.01 allows 0.1. The line from 0 past 5 reaches 10 at 2.
    StdCurve near = Line({0, 5, 10.0, 10.0});
    near.Impl().keys[2].leftValue = near.Impl().keys[2].rightValue = 9.9;
    EXPECT_EQ(near.ReduceNumKeys(0.011), 1u);
    StdCurve far = Line({0, 5, 9.8, 10});
    EXPECT_EQ(far.ReduceNumKeys(0.01), 0u);
}

TEST(HvStdFCurve_reduce, LockedKeysStayWhateverTheTolerance)
{
    for (unsigned short const lock : {Word::kParameterLocked, Word::kValueLocked}) {
        StdCurve line = Line({0, 1, 2, 3, 4});
        Lock(line, 2, lock);
        EXPECT_EQ(line.ReduceNumKeys(1e300), 2u);
        EXPECT_EQ(ParametersOf(line), (Parameters{0, 2, 4}));
        StdCurve cubic = SplitCubic(4);
        Lock(cubic, 2, lock);
        EXPECT_EQ(cubic.ReduceNumKeys(1e9), 2u);
        EXPECT_EQ(ParametersOf(cubic), (Parameters{0, 1.5, 3}));
    }
}

TEST(HvStdFCurve_reduce, AJumpAwayFromTheLineStays)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1, 1, kLinear), KeyAt(2, 2, 7, kLinear),
                    KeyAt(3, 8, 8, kLinear), KeyAt(4, 9, 9, kLinear)});
    EXPECT_EQ(curve.ReduceNumKeys(0.0), 1u);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 2, 4}));
}

TEST(HvStdFCurve_reduce, RunsEndWhereTheKindChanges)
{
    StdCurve curve = Line({0, 1, 2, 3, 4});
    curve.Impl().SetKind(2, kConstant);
    EXPECT_EQ(curve.ReduceNumKeys(0.0), 1u);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 3, 4}));
    EXPECT_EQ(curve.GetSegmentKindAtParameter(2.5), kConstant);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(3.5), kLinear);
}

TEST(HvStdFCurve_reduce, CubicThatWasSplitBecomesOneAgain)
{
    for (unsigned int const pieces : {2u, 3u, 7u, 16u}) {
        StdCurve curve = SplitCubic(pieces);
        StdCurve const before = curve;
        EXPECT_EQ(curve.ReduceNumKeys(1e-9), pieces - 1);
        EXPECT_EQ(curve.GetNumKeys(), 2u);
        EXPECT_LT(Deviation(curve, before), 1e-8);
        EXPECT_TRUE(curve.Impl().IsValid());
    }
}

TEST(HvStdFCurve_reduce, KeepsWithinTheToleranceOnCubics)
{
    ExpectProperty("values stay within the tolerance", [] {
        StdCurve curve(0.0, kCubic);
        int const numKeys = PickInRange(3, 40);
        bool const automatic = PickInRange(0, 2) != 0;
        for (int i = 0; i < numKeys; ++i) {
            double const x = i * 0.5;
            CFCStdKey key = KeyWithHandles(x, std::sin(x) + PickInRange(-4, 5) * 0.01,
                                           {-0.1, -0.1 * std::cos(x)}, {0.1, 0.1 * std::cos(x)});
            if (automatic) {
                key.constraints.Set(Word::kAutomaticTangents);
            }
            curve.Impl().keys.Add(key);
        }
        StdCurve const before = curve;
        double const tolerance = PickInRange(0, 10) * 0.01;
        unsigned int const removed = curve.ReduceNumKeys(tolerance);
        RC_ASSERT(curve.GetNumKeys() + removed == before.GetNumKeys());
        double const allowed = tolerance * Range(before) + kSolver;
        for (CFCStdKey const& key : before.Impl().keys) {
            RC_ASSERT(std::fabs(curve.Eval(key.parameter, 0) - key.rightValue) <= allowed);
        }
        RC_ASSERT(EverySegmentRunsForward(curve));
    });
}

TEST(HvStdFCurve_reduce, KeepsWithinTwiceTheToleranceOnLines)
{
    // The line is not turned towards the keys it passes.
    ExpectProperty("values stay within twice the tolerance", [] {
        StdCurve curve(0.0, kLinear);
        int const numKeys = PickInRange(3, 40);
        for (int i = 0; i < numKeys; ++i) {
            double const y = i * 0.5 + PickInRange(-8, 9) * 0.1;
            curve.Impl().keys.Add(KeyAt(i, y, y, kLinear));
        }
        StdCurve const before = curve;
        double const tolerance = PickInRange(0, 20) * 0.01;
        curve.ReduceNumKeys(tolerance);
        RC_ASSERT(Deviation(curve, before) <= 2 * tolerance * Range(before) + kRounding);
    });
}

TEST(HvStdFCurve_reduce, KeepsTheShapeBesideWhatItDrops)
{
    // Automatic keys next to the keys that go would get other tangents; they are frozen.
    StdCurve curve = SplitCubic(4);
    curve.Impl().keys.Add(KeyAt(5, -2, -2, kCubic));
    curve.Impl().keys.Add(KeyAt(6, 4, 4, kCubic));
    for (unsigned int i = 4; i < 7; ++i) {
        curve.Impl().keys[i].constraints.Set(Word::kAutomaticTangents);
    }
    StdCurve const before = curve;
    curve.ReduceNumKeys(0, 3, 1.0);
    EXPECT_EQ(curve.GetNumKeys(), 4u);
    EXPECT_LT(LargestDifference(curve, before, 3, 6), 1e-9);
    EXPECT_TRUE(curve.Impl().keys[2].constraints.HasAny(Word::kAutomaticTangents));
}

TEST(HvStdFCurve_reduce, MakesKeysAtBothEndsOfTheInterval)
{
    StdCurve curve = Line({0, 1, 2, 3, 4, 5, 6});
    EXPECT_EQ(curve.ReduceNumKeys(1.5, 4.5, 0.0), 1u);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 1.5, 4.5, 5, 6}));
    StdCurve few = Line({0, 1});
    EXPECT_EQ(few.ReduceNumKeys(0.25, 0.75, 0.0), 0u);
    EXPECT_EQ(few.GetNumKeys(), 4u);
}

TEST(HvStdFCurve_reduce, DropsTheUserDataOfTheKeysThatGo)
{
    StdCurve curve = Line({0, 1, 2, 4});
    curve.SetUserDataSet(SetOf(1, "goes"), 1);
    curve.SetUserDataSet(SetOf(1, "stays"), 2);
    EXPECT_EQ(curve.ReduceNumKeys(0.0), 1u);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(1), 1), "none");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(2), 1), "stays");
}

TEST(HvStdFCurve_reduce, RefusesWhatNamesNoKeys)
{
    StdCurve curve = Line({0, 1, 2, 3});
    auto const reduce = [&](double from, double to, double tolerance) {
        return static_cast<int>(curve.ReduceNumKeys(from, to, tolerance));
    };
    ExpectRefusedWhenReadOnly(curve, [&] { return reduce(0, 3, 1); });
    ExpectRefusedWhenReadOnly(curve, [&] { return static_cast<int>(curve.ReduceNumKeys(1.0)); });
    ExpectRefused(curve, [&] { return reduce(3, 0, 1); });
    ExpectRefused(curve, [&] { return reduce(0, 3, -1e-300); });
    ExpectRefused(curve, [&] { return reduce(0, 3, NonFinite()[0]); });
    for (double const x : NonFinite()) {
        ExpectRefused(curve, [&] { return reduce(x, 3, 1); });
        ExpectRefused(curve, [&] { return reduce(0, x, 1); });
    }
    StdCurve empty(1.0, kLinear);
    ExpectRefused(empty, [&] { return static_cast<int>(empty.ReduceNumKeys(0, 3, 1)); });
    ExpectRefused(empty, [&] { return static_cast<int>(empty.ReduceNumKeys(1.0)); });
}

TEST(HvStdFCurve_reduce, HugeValuesAndTolerancesEnd)
{
    StdCurve curve = Line({-1.7e308, 1.7e308, -1.7e308, 1.7e308});
    curve.ReduceNumKeys(1e308);
    EXPECT_GE(curve.GetNumKeys(), 2u);
    StdCurve cubic = SplitCubic(8);
    EXPECT_EQ(cubic.ReduceNumKeys(std::numeric_limits<double>::infinity()), 7u);
}

TEST(HvStdFCurve_reduce, FailedAllocationLeavesTheCurveAsItWas)
{
    std::string before;
    RefuseEachAllocation(
        [&] {
            StdCurve curve = SplitCubic(4);
            curve.SetUserDataSet(SetOf(1, "goes"), 1.5);
            before = StdImage(curve);
            return curve;
        },
        [](StdCurve& curve) { curve.ReduceNumKeys(0.5, 3, 1e-6); },
        [&](StdCurve& curve, bool completed) {
            EXPECT_EQ(StdImage(curve) == before, !completed);
            EXPECT_TRUE(LockProbe_AreBothFree(curve));
        });
}
