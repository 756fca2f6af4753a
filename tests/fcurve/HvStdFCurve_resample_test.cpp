// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Resampling of the standard curve.

#include "std_edit.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

#include <hv/foundation/HvDoubleArray.h>

#include <new>

namespace {

std::vector<double> ParametersOf(HvStdFCurve const& curve)
{
    HvDoubleArray parameters;
    curve.GetAllKeyParameters(parameters);
    return std::vector<double>(parameters.begin(), parameters.end());
}

using Parameters = std::vector<double>;

/// What resampling means, key by key on the whole curve: the window must give the same.
void ResamplePlainly(StdCurve& curve, double from, double to, double step, bool keepExisting)
{
    HvStdFCurveImpl& impl = curve.Impl();
    unsigned int i = 0;
    unsigned int j = 0;
    impl.CreateNonModifyingKey(from, i, curve);
    auto const removeBetween = [&] {
        if (!keepExisting && i <= j) {
            impl.RemoveBodyBetweenExistingKeys(impl.SegmentKind(i), i, j, curve);
        }
    };
    auto const count = static_cast<unsigned int>(std::floor((to - from) / step));
    for (unsigned int k = 1; k <= count; ++k) {
        double const x = from + step * k;
        j = impl.GetNearestKeyIndex(x);
        if (std::fabs(impl.Parameter(j) - x) >= 1e-7) {
            impl.CreateNonModifyingKey(x, j, curve);
        }
        removeBetween();
        i = impl.GetNearestKeyIndex(x);
    }
    if (from < to) {
        impl.CreateNonModifyingKey(to, j, curve);
        removeBetween();
    }
}

/// Keys of all kinds and of the constraints that derive tangents. With handles at the thirds, and
/// without the constraints, a cubic that is split keeps its shape: a key that a sample falls on is
/// not frozen, and follows its new neighbours.
StdCurve RandomCurve(bool keepsShape = false)
{
    StdCurve curve(1.0, static_cast<FSKind>(PickInRange(1, 4)));
    int const numKeys = PickInRange(0, 9);
    double x = -2;
    for (int i = 0; i < numKeys; ++i) {
        double const y = PickInRange(-40, 40) / 8.0;
        CFCStdKey key =
            KeyWithHandles(x, y, {-0.2, PickInRange(-8, 8) / 8.0}, {0.2, PickInRange(-8, 8) / 8.0},
                           static_cast<FSKind>(PickInRange(1, 4)));
        unsigned short const words[] = {0, Word::kAutomaticTangents, Word::kFlatAtExtremum,
                                        Word::kLinearTangents};
        key.constraints.Set(words[keepsShape ? 0 : PickInRange(0, 4)]);
        curve.Impl().keys.Add(key);
        x += PickInRange(2, 20) / 4.0;
    }
    for (int i = 0; keepsShape && i + 1 < numKeys; ++i) {
        CFCStdKey& key = curve.Impl().keys[static_cast<unsigned int>(i)];
        CFCStdKey& next = curve.Impl().keys[static_cast<unsigned int>(i + 1)];
        key.rightHandle.x = key.parameter + (next.parameter - key.parameter) / 3;
        next.leftHandle.x = next.parameter - (next.parameter - key.parameter) / 3;
    }
    return curve;
}

}  // namespace

TEST(HvStdFCurve_resample, PutsKeysAtEachStepAndAtBothEnds)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1.25, 5, 5, kLinear), KeyAt(4, 0, 0, kLinear)});
    EXPECT_EQ(curve.ResampleSequence(0.5, 3.75, 1, 0, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 0.5, 1.5, 2.5, 3.5, 3.75, 4}));
    EXPECT_NEAR(curve.Eval(0.5, 0), 2, kRounding);
    EXPECT_NEAR(curve.Eval(1.5, 0), 5 - 0.25 * 5 / 2.75, kRounding);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(1), kLinear);
}

TEST(HvStdFCurve_resample, KeepsOldKeysWhenAsked)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1.25, 5, 5, kLinear), KeyAt(4, 0, 0, kLinear)});
    EXPECT_EQ(curve.ResampleSequence(0, 4, 1, 1, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 1.25, 2, 3, 4}));
    EXPECT_EQ(curve.Eval(1.25, 0), 5);
}

TEST(HvStdFCurve_resample, StepBeyondTheIntervalGivesTheEndsOnly)
{
    for (double const step : {5.0, 1e300, std::numeric_limits<double>::infinity()}) {
        StdCurve curve = MixedCurve();
        EXPECT_EQ(curve.ResampleSequence(1, 4, step, 0, 0), 1);
        EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 4, 5, 8}));
    }
}

TEST(HvStdFCurve_resample, IntervalOfNoLengthGivesOneKey)
{
    StdCurve curve = MixedCurve();
    EXPECT_EQ(curve.ResampleSequence(4, 4, 1, 0, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 3, 4, 5, 8}));
}

TEST(HvStdFCurve_resample, SampleNearAKeyIsTheKey)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1 + 0.9e-7, 5, 7, kLinear),
                    KeyAt(2 + 1.1e-7, 1, 1, kLinear), KeyAt(4, 0, 0, kLinear)});
    EXPECT_EQ(curve.ResampleSequence(0, 4, 1, 0, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1 + 0.9e-7, 2, 3, 4}));
    EXPECT_EQ(curve.Eval(1 + 0.9e-7, 0), 7);
}

TEST(HvStdFCurve_resample, OfACurveWithoutKeysHasItsValue)
{
    StdCurve curve(3.0, kLinear);
    EXPECT_EQ(curve.ResampleSequence(0, 2, 1, 0, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 2}));
    EXPECT_EQ(curve.Eval(1.5, 0), 3);
}

TEST(HvStdFCurve_resample, FoldsTheEndsOfACyclingCurve)
{
    auto const resampled = [](double from, double to, int ignoreExtrapolation) {
        StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(8, 4, 4, kLinear)},
                       HvBaseFCurve::CycleExtrapolation);
        EXPECT_EQ(curve.ResampleSequence(from, to, 2, 0, ignoreExtrapolation), 1);
        return ParametersOf(curve);
    };
    // Inside one cycle.
    EXPECT_EQ(resampled(17, 20, 0), (Parameters{0, 1, 3, 4, 8}));
    // Over the border, less than a cycle: the start and the end of the key range.
    EXPECT_EQ(resampled(7, 11, 0), (Parameters{0, 2, 3, 7, 8}));
    // More than a cycle: all of it.
    EXPECT_EQ(resampled(7, 16.5, 0), (Parameters{0, 2, 4, 6, 8}));
    // From border to border.
    EXPECT_EQ(resampled(8, 16, 0), (Parameters{0, 2, 4, 6, 8}));
    EXPECT_EQ(resampled(-8, 0, 0), (Parameters{0, 2, 4, 6, 8}));
    // As it is.
    EXPECT_EQ(resampled(9, 12, 1), (Parameters{0, 8, 9, 11, 12}));
}

TEST(HvStdFCurve_resample, KeepsTheValuesAtTheSamples)
{
    ExpectProperty("the samples keep their values", [] {
        StdCurve curve = RandomCurve(true);
        StdCurve const before = curve;
        double const from = curve.GetNumKeys() == 0 ? 0 : curve.Impl().FirstParameter();
        double const to = curve.GetNumKeys() == 0 ? 4 : curve.Impl().LastParameter();
        RC_ASSERT(curve.ResampleSequence(from, to, 0.75, 0, 1) == 1);
        for (double x = from; x <= to; x += 0.75) {
            RC_ASSERT(std::fabs(curve.Eval(x, 0) - before.Eval(x, 0)) < kSolver);
        }
    });
}

TEST(HvStdFCurve_resample, WindowGivesWhatTheWholeCurveGives)
{
    ExpectProperty("the window changes nothing", [] {
        StdCurve curve = RandomCurve();
        curve.Impl().defaultBezierTangentConstraint = static_cast<unsigned char>(PickInRange(0, 2));
        StdCurve plain = curve;
        double const from = PickInRange(-40, 40) / 8.0;
        double const to = from + PickInRange(0, 200) / 8.0;
        double const step = PickInRange(1, 60) / 16.0;
        bool const keepExisting = PickInRange(0, 2) != 0;
        ResamplePlainly(plain, from, to, step, keepExisting);
        RC_ASSERT(curve.ResampleSequence(from, to, step, keepExisting, 1) == 1);
        RC_ASSERT(StdImage(curve) == StdImage(plain));
    });
}

TEST(HvStdFCurve_resample, DropsTheUserDataOfTheKeysThatGo)
{
    StdCurve curve = MixedCurve();
    curve.SetUserDataSet(SetOf(1, "goes"), 3);
    curve.SetUserDataSet(SetOf(1, "stays"), 5);
    EXPECT_EQ(curve.ResampleSequence(0, 5, 2, 0, 0), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(3), 1), "none");
    EXPECT_EQ(TextIn(curve.GetUserDataSet(5), 1), "stays");
}

TEST(HvStdFCurve_resample, RefusesWhatGivesNoSamples)
{
    StdCurve curve = MixedCurve();
    ExpectRefusedWhenReadOnly(curve, [&] { return curve.ResampleSequence(0, 4, 1, 0, 0); });
    for (double const x : NonFinite()) {
        ExpectRefused(curve, [&] { return curve.ResampleSequence(x, 4, 1, 0, 0); });
        ExpectRefused(curve, [&] { return curve.ResampleSequence(0, x, 1, 0, 0); });
    }
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const step : {0.0, -0.0, -1.0, nan}) {
        ExpectRefused(curve, [&] { return curve.ResampleSequence(0, 4, step, 0, 0); });
    }
    ExpectRefused(curve, [&] { return curve.ResampleSequence(4, 0, 1, 0, 0); });
}

TEST(HvStdFCurve_resample, MoreSamplesThanAnArrayHoldsAreRefusedBeforeItStarts)
{
    StdCurve curve = MixedCurve();
    std::string const before = StdImage(curve);
    for (double const step : {1e-9, 5e-324, 1e-300}) {
        EXPECT_THROW(curve.ResampleSequence(0, 8, step, 0, 0), std::bad_alloc);
    }
    EXPECT_EQ(StdImage(curve), before);
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvStdFCurve_resample, ValuesThatOverflowAreRefused)
{
    StdCurve curve({KeyAt(0, -1.7e308, -1.7e308, kLinear), KeyAt(1, 1.7e308, 1.7e308, kLinear)});
    ExpectRefused(curve, [&] { return curve.ResampleSequence(0, 1, 0.25, 0, 0); });
    ExpectRefused(curve, [&] { return static_cast<int>(curve.ReduceNumKeys(0.25, 0.75, 1)); });
}

TEST(HvStdFCurve_resample, StepBelowTheResolutionEnds)
{
    double const far = 9007199254740992.0;  // 2^53: the next double is 2 away
    StdCurve curve({KeyAt(far, 0, 0, kLinear), KeyAt(far + 8, 8, 8, kLinear)});
    EXPECT_EQ(curve.ResampleSequence(far, far + 8, 0.25, 0, 0), 1);
    EXPECT_EQ(curve.Impl().HasAscendingParameters(), 1);
    EXPECT_EQ(curve.Eval(far + 4, 0), 4);
}

TEST(HvStdFCurve_resample, FailedAllocationLeavesTheCurveAsItWas)
{
    std::string before;
    RefuseEachAllocation(
        [&] {
            StdCurve curve = MixedCurve();
            curve.SetUserDataSet(SetOf(1, "goes"), 3);
            before = StdImage(curve);
            return curve;
        },
        [](StdCurve& curve) { curve.ResampleSequence(1, 7, 0.5, 0, 0); },
        [&](StdCurve& curve, bool completed) {
            EXPECT_EQ(StdImage(curve) == before, !completed);
            EXPECT_TRUE(LockProbe_AreBothFree(curve));
        });
}
