// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Snapshots, resampling, smoothing, reducing and rescaling of the stepped curves.

#include "stepped_test_support.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <memory>
#include <new>

namespace {

using Method = HvBaseFCurve::ExtrapolationMethod;

constexpr Method kHold = HvBaseFCurve::ConstantExtrapolation;
constexpr Method kLine = HvBaseFCurve::LinearExtrapolation;
constexpr Method kCycle = HvBaseFCurve::CycleExtrapolation;
constexpr Method kRelative = HvBaseFCurve::RelativeCycleExtrapolation;

using CurvePtr = std::unique_ptr<HvBaseFCurve>;

CurvePtr Snap(HvBaseFCurve const& curve, double from, double to, Method method = kHold)
{
    return CurvePtr(curve.SnapShot(from, to, method));
}

OpenInteger Stairs()
{
    return OpenInteger(0, {{0, 1}, {1, 4}, {2, 2}, {4, 3}});
}

/// A curve with keys at eighths.
template <class Curve>
Curve RandomCurve(int lowest, int end)
{
    Curve curve(0.0);
    int const numKeys = PickInRange(0, 7);
    double p = PickInRange(-16, 16) / 8.0;
    for (int i = 0; i < numKeys; ++i) {
        curve.CreateKey(p, PickInRange(lowest, end));
        p += PickInRange(1, 20) / 8.0;
    }
    curve.SetLeftValue(PickInRange(lowest, end));
    Method const methods[] = {kHold, kCycle, kRelative};
    curve.SetExtrapolationMethod(methods[PickInRange(0, 3)]);
    return curve;
}

template <class Curve>
void SnapShotEvaluatesLikeItsSource(int lowest, int end)
{
    EXPECT_TRUE(rc::check("a snapshot evaluates like its source", [=] {
        Curve const curve = RandomCurve<Curve>(lowest, end);
        double const from = PickInRange(-160, 160) / 8.0 + PickInRange(0, 2) / 64.0;
        double const to = from + PickInRange(0, 240) / 8.0;
        CurvePtr const snap = Snap(curve, from, to);
        RC_ASSERT(snap != nullptr);
        for (int k = 0; k <= 96; ++k) {
            // Not beside a key, which folding may pass by a rounding.
            double const x = from + (to - from) * k / 96;
            double const folded = curve.FoldParameter(x);
            if (curve.IsKeyParameter(folded, 1e-9) == 0) {
                RC_ASSERT(snap->Eval(x, 0) == curve.Eval(x, 0));
            }
        }
        RC_ASSERT(snap->IsSmallestKeyParameter(from) == 1);
        RC_ASSERT(snap->IsLargestKeyParameter(to) == 1);
    }));
}

template <class Curve, class Edit>
void ExpectRefused(Curve& curve, Edit edit)
{
    std::string const before = curve.Image();
    EXPECT_EQ(edit(), 0);
    EXPECT_EQ(curve.Image(), before);
}

}  // namespace

// Snapshots.

TEST(HvSteppedFCurve_reshape, SnapShotHasKeysAtBothEnds)
{
    OpenInteger curve = Stairs();
    curve.SetLeftValue(9);
    EXPECT_EQ(KeysOf(*Snap(curve, 0.5, 3)), (Keys{{0.5, 1}, {1, 4}, {2, 2}, {3, 2}}));
    EXPECT_EQ(KeysOf(*Snap(curve, -1, 5)), (Keys{{-1, 9}, {0, 1}, {1, 4}, {2, 2}, {4, 3}, {5, 3}}));
    EXPECT_EQ(KeysOf(*Snap(curve, 5, 7)), (Keys{{5, 3}, {7, 3}}));
    EXPECT_EQ(KeysOf(*Snap(curve, -7, -5)), (Keys{{-7, 9}, {-5, 9}}));
    EXPECT_EQ(KeysOf(*Snap(curve, 3, 0.5)), KeysOf(*Snap(curve, 0.5, 3)));
    EXPECT_EQ(KeysOf(*Snap(curve, 1, 1)), (Keys{{1, 4}}));
}

TEST(HvSteppedFCurve_reshape, SnapShotOfACurveWithoutKeysHasItsValue)
{
    OpenBoolean const curve(1.0);
    EXPECT_EQ(KeysOf(*Snap(curve, 0, 2)), (Keys{{0, 1}, {2, 1}}));
}

TEST(HvSteppedFCurve_reshape, SnapShotSpansCycles)
{
    OpenInteger curve(0, {{0, 1}, {1, 4}, {2, 3}});
    curve.SetExtrapolationMethod(kCycle);
    EXPECT_EQ(KeysOf(*Snap(curve, -0.5, 4)),
              (Keys{{-0.5, 4}, {0, 1}, {1, 4}, {2, 1}, {3, 4}, {4, 1}}));
    curve.SetExtrapolationMethod(kRelative);
    EXPECT_EQ(KeysOf(*Snap(curve, -0.5, 4, kRelative)),
              (Keys{{-0.5, 2}, {0, 1}, {1, 4}, {2, 3}, {3, 6}, {4, 5}}));
    EXPECT_EQ(Snap(curve, -0.5, 4, kRelative)->GetExtrapolationMethod(), kRelative);
    EXPECT_EQ(Snap(curve, 0, 1, static_cast<Method>(9))->GetExtrapolationMethod(), kRelative);
}

TEST(HvSteppedFCurve_reshape, SnapShotFromAKeyThatFoldingMissesHoldsTheKey)
{
    // -9 folds to just before the key at -1.5: the cycle is 1.5 long, and 14/3 has no exact double.
    OpenInteger curve(0, {{-2, -5}, {-1.5, -4}, {-0.5, -5}});
    for (Method const method : {kCycle, kRelative}) {
        curve.SetExtrapolationMethod(method);
        EXPECT_EQ(KeysOf(*Snap(curve, -9, -8.875)), (Keys{{-9, -4}, {-8.875, -4}}));
    }
}

TEST(HvSteppedFCurve_reshape, SnapShotEvaluatesLikeItsIntegerSource)
{
    SnapShotEvaluatesLikeItsSource<OpenInteger>(-5, 6);
}

TEST(HvSteppedFCurve_reshape, SnapShotEvaluatesLikeItsBooleanSource)
{
    SnapShotEvaluatesLikeItsSource<OpenBoolean>(0, 2);
}

TEST(HvSteppedFCurve_reshape, SnapShotShowsTheZeroOfLinearExtrapolation)
{
    OpenInteger curve = Stairs();
    curve.Impl().extrapolation = kLine;
    CurvePtr const snap = Snap(curve, -2, 6);
    for (double const x : {-2.0, -1.0, 0.0, 1.5, 4.0, 4.5, 6.0}) {
        EXPECT_EQ(snap->Eval(x, 0), curve.Eval(x, 0)) << x;
    }
}

TEST(HvSteppedFCurve_reshape, SnapShotCarriesLocksAndUserData)
{
    OpenInteger curve(0, {{0, 1}, {1, 4}, {2, 3}});
    Lock(curve, 1, HvBaseFCurve::AllLocked);
    Tag(curve, 0, 10);
    Tag(curve, 1, 11);
    Tag(curve, 2, 12);
    curve.SetExtrapolationMethod(kCycle);
    CurvePtr const snap = Snap(curve, -1.5, 3.5);
    EXPECT_EQ(TagAt(*snap, -1), 11);
    EXPECT_EQ(TagAt(*snap, 0), 10);
    EXPECT_EQ(TagAt(*snap, 1), 11);
    EXPECT_EQ(TagAt(*snap, 2), 10);
    EXPECT_EQ(TagAt(*snap, 3), 11);
    EXPECT_EQ(TagAt(*snap, 3.5), -1);
    EXPECT_EQ(IsLocked(*snap, 3, HvBaseFCurve::AllLocked), 1);
    CurvePtr const one = Snap(curve, 0.5, 1.5);
    EXPECT_EQ(TagAt(*one, 0), -1);
    EXPECT_EQ(TagAt(*one, 1), 11);
    EXPECT_EQ(TagAt(*one, 2), -1);
}

TEST(HvSteppedFCurve_reshape, SnapShotOfNoFiniteIntervalIsNull)
{
    OpenInteger const integer = Stairs();
    OpenBoolean const boolean(1.0);
    for (double const x : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_EQ(integer.SnapShot(x, 0, kHold), nullptr);
        EXPECT_EQ(boolean.SnapShot(0, x, kHold), nullptr);
    }
}

TEST(HvSteppedFCurve_reshape, SnapShotOfTooManyCyclesIsRefusedBeforeItStarts)
{
    OpenInteger curve(0, {{0, 1}, {1e-3, 4}});
    curve.SetExtrapolationMethod(kCycle);
    EXPECT_THROW(curve.SnapShot(0, 1e300, kHold), std::bad_alloc);
    EXPECT_THROW(curve.SnapShot(0, 1e8, kHold), std::bad_alloc);
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvSteppedFCurve_reshape, SnapShotTakesTheLocksOfItsKind)
{
    OpenInteger const integer = Stairs();
    auto const snapInteger = [&] { delete integer.SnapShot(0, 1, kHold); };
    EXPECT_TRUE(LockProbe_Waits(integer, ProbedLock::Section, true, snapInteger));
    CurvePtr kept;
    auto const keepInteger = [&] { kept.reset(integer.SnapShot(0, 1, kHold)); };
    EXPECT_FALSE(LockProbe_Waits(integer, ProbedLock::Access, false, keepInteger));

    OpenBoolean const boolean(1.0);
    auto const snapBoolean = [&] { delete boolean.SnapShot(0, 1, kHold); };
    EXPECT_TRUE(LockProbe_Waits(boolean, ProbedLock::Section, true, snapBoolean));
    CurvePtr keptBoolean;
    auto const keepBoolean = [&] { keptBoolean.reset(boolean.SnapShot(0, 1, kHold)); };
    EXPECT_TRUE(LockProbe_Waits(boolean, ProbedLock::Access, true, keepBoolean));
}

TEST(HvSteppedFCurve_reshape, FailedAllocationOfASnapShotLeavesNothingBehind)
{
    RefuseEachAllocation([] {
        OpenInteger curve(0, {{0, 1}, {1, 4}, {2, 3}});
        Tag(curve, 1, 11);
        curve.SetExtrapolationMethod(kRelative);
        Snap(curve, -1.5, 3.5);
    });
}

// Resampling.

TEST(HvSteppedFCurve_reshape, ResamplePutsKeysAtEachStep)
{
    OpenInteger curve = Stairs();
    Tag(curve, 1, 11);
    Tag(curve, 2, 12);
    EXPECT_EQ(curve.ResampleSequence(0.5, 3.75, 1.5, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {0.5, 1}, {2, 2}, {3.5, 2}, {3.75, 2}, {4, 3}}));
    EXPECT_EQ(TagAt(curve, 1), -1);
    EXPECT_EQ(TagAt(curve, 2), 12);
    OpenInteger kept = Stairs();
    EXPECT_EQ(kept.ResampleSequence(0.5, 3.75, 1.5, 1, 0), 1);
    EXPECT_EQ(KeysOf(kept), (Keys{{0, 1}, {0.5, 1}, {1, 4}, {2, 2}, {3.5, 2}, {3.75, 2}, {4, 3}}));
}

TEST(HvSteppedFCurve_reshape, ResampleReachesBeyondTheKeys)
{
    OpenInteger curve(0, {{1, 5}});
    curve.SetLeftValue(2);
    EXPECT_EQ(curve.ResampleSequence(0, 2, 0.75, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 2}, {0.75, 2}, {1.5, 5}, {2, 5}}));
    OpenBoolean empty(1.0);
    EXPECT_EQ(empty.ResampleSequence(0, 1, 1, 0, 0), 1);
    EXPECT_EQ(KeysOf(empty), (Keys{{0, 1}, {1, 1}}));
    EXPECT_EQ(empty.LeftValue(), 1);
}

TEST(HvSteppedFCurve_reshape, ResampleTakesAKeyNearASample)
{
    double const left = 1 - 0.9e-7;
    double const right = 2 + 0.9e-7;
    OpenInteger curve(0, {{0, 1}, {left, 2}, {right, 3}, {3 + 1.1e-7, 4}, {4, 5}});
    Lock(curve, right, HvBaseFCurve::AllLocked);
    EXPECT_EQ(curve.ResampleSequence(0, 4, 1, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {left, 2}, {right, 3}, {3, 3}, {4, 5}}));
    EXPECT_EQ(IsLocked(curve, right, HvBaseFCurve::AllLocked), 1);
}

TEST(HvSteppedFCurve_reshape, ResampleEndsJustBeforeAKeyThatServedAsSample)
{
    double const behind = 2 + 0.5e-7;
    OpenInteger curve(0, {{0, 1}, {behind, 3}});
    EXPECT_EQ(curve.ResampleSequence(0, 2, 1, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {1, 1}, {2, 1}, {behind, 3}}));
}

TEST(HvSteppedFCurve_reshape, ResampleFoldsTheEndsOfACyclingCurve)
{
    OpenInteger curve(0, {{0, 1}, {8, 4}});
    curve.SetExtrapolationMethod(kCycle);
    EXPECT_EQ(curve.ResampleSequence(7, 11, 2, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {2, 1}, {3, 1}, {7, 1}, {8, 4}}));
}

TEST(HvSteppedFCurve_reshape, ResampleKeepsTheValuesAtTheSamples)
{
    EXPECT_TRUE(rc::check("the samples keep their values", [] {
        OpenInteger curve = RandomCurve<OpenInteger>(-5, 6);
        OpenInteger const before = curve;
        bool const keepExisting = PickInRange(0, 2) != 0;
        RC_ASSERT(curve.ResampleSequence(-3, 9, 0.375, keepExisting, 1) == 1);
        for (int k = 0; k <= 32; ++k) {
            double const x = -3 + 0.375 * k;
            unsigned int i = 0;
            RC_ASSERT(curve.GetKeyIndex(x, i) == 1);
            double left = 0;
            double value = 0;
            curve.GetKeyValuesByIndex(i, left, value);
            OpenInteger held = before;
            held.SetExtrapolationMethod(kHold);
            RC_ASSERT(value == held.Eval(x, 0));
        }
    }));
}

TEST(HvSteppedFCurve_reshape, ResampleRefuses)
{
    OpenInteger curve = Stairs();
    for (double const x : {kNaN, kInfinity, -kInfinity}) {
        ExpectRefused(curve, [&] { return curve.ResampleSequence(x, 4, 1, 0, 0); });
        ExpectRefused(curve, [&] { return curve.ResampleSequence(0, x, 1, 0, 0); });
    }
    for (double const step : {0.0, -1.0, kNaN}) {
        ExpectRefused(curve, [&] { return curve.ResampleSequence(0, 4, step, 0, 0); });
    }
    ExpectRefused(curve, [&] { return curve.ResampleSequence(4, 0, 1, 0, 0); });
    EXPECT_THROW(curve.ResampleSequence(0, 4, 1e-300, 0, 0), std::bad_alloc);
    curve.SetReadOnlyConstraint(1);
    ExpectRefused(curve, [&] { return curve.ResampleSequence(0, 4, 1, 0, 0); });
}

// Smoothing.

TEST(HvSteppedFCurve_reshape, SmoothRoundsToTheNearestInteger)
{
    double const kernel[] = {0.25, 0.5, 0.25};
    OpenInteger curve = Stairs();
    curve.SetLeftValue(7);
    EXPECT_EQ(curve.SmoothSequence(0, 4, kernel, 3), 1);
    // 1.5/0.75 = 2, 2.75, 2.75, 2/0.75 = 2.67
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 2}, {1, 3}, {2, 3}, {4, 3}}));
    EXPECT_EQ(curve.LeftValue(), 2);
}

TEST(HvSteppedFCurve_reshape, SmoothWithOneTapOfWeightOneChangesNothing)
{
    double const kernel[] = {1};
    OpenInteger curve = Stairs();
    curve.SetLeftValue(7);
    std::string const before = curve.Image();
    EXPECT_EQ(curve.SmoothSequence(0, 4, kernel, 1), 1);
    EXPECT_EQ(curve.SmoothSequence(0, 4, nullptr, 1), 1);
    EXPECT_EQ(curve.SmoothSequence(0, 4, kernel, 0), 1);
    EXPECT_EQ(curve.Image(), before);
}

TEST(HvSteppedFCurve_reshape, SmoothOfAConstantIsTheConstant)
{
    double const kernel[] = {0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1, 0.1};
    OpenInteger curve(0, {{0, 7}, {1, 7}, {2, 7}});
    EXPECT_EQ(curve.SmoothSequence(0, 2, kernel, 10), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 7}, {1, 7}, {2, 7}}));
}

TEST(HvSteppedFCurve_reshape, SmoothRefusesLockedValues)
{
    double const kernel[] = {0.5, 0.5};
    OpenInteger curve = Stairs();
    Lock(curve, 2, HvBaseFCurve::ValueLocked);
    ExpectRefused(curve, [&] { return curve.SmoothSequence(0, 4, kernel, 2); });
    EXPECT_EQ(curve.SmoothSequence(0, 1, kernel, 2), 1);
    curve.SetReadOnlyConstraint(1);
    ExpectRefused(curve, [&] { return curve.SmoothSequence(0, 1, kernel, 2); });
    for (double const weight : {kNaN, kInfinity, 1e308}) {
        double const hostile[] = {weight, weight};
        OpenInteger other = Stairs();
        EXPECT_EQ(other.SmoothSequence(0, 4, hostile, 2), 1);
    }
}

// Reducing.

TEST(HvSteppedFCurve_reshape, ReduceDropsKeysThatHoldWhatIsHeld)
{
    OpenInteger curve(0, {{0, 1}, {1, 1}, {2, 5}, {3, 5}, {4, 1}, {5, 1}});
    Tag(curve, 3, 13);
    EXPECT_EQ(curve.ReduceNumKeys(0, 5, 0.0), 2u);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 1}, {2, 5}, {4, 1}, {5, 1}}));
    EXPECT_EQ(TagAt(curve, 3), -1);
    OpenBoolean boolean(0, {{0, 1}, {1, 1}, {2, 0}, {3, 0}, {4, 1}});
    EXPECT_EQ(boolean.ReduceNumKeys(0, 4, 0.0), 2u);
    EXPECT_EQ(KeysOf(boolean), (Keys{{0, 1}, {2, 0}, {4, 1}}));
}

TEST(HvSteppedFCurve_reshape, ReduceKeepsWithinTheTolerance)
{
    EXPECT_TRUE(rc::check("values stay within the tolerance", [] {
        OpenInteger curve = RandomCurve<OpenInteger>(-20, 21);
        curve.SetExtrapolationMethod(kHold);
        OpenInteger const before = curve;
        unsigned int const removed = curve.ReduceNumKeys(-2, 8, 0.1);
        RC_ASSERT(removed <= before.GetNumKeys());
        for (int k = 0; k <= 320; ++k) {
            double const x = -6 + k / 16.0;
            RC_ASSERT(std::fabs(curve.Eval(x, 0) - before.Eval(x, 0)) <= 0.1 * 40);
        }
    }));
}

TEST(HvSteppedFCurve_reshape, ReduceKeepsLockedKeys)
{
    OpenInteger curve(0, {{0, 1}, {1, 1}, {2, 1}, {3, 1}});
    Lock(curve, 1, HvBaseFCurve::ParameterLocked);
    Lock(curve, 2, HvBaseFCurve::ValueLocked);
    EXPECT_EQ(curve.ReduceNumKeys(0, 3, 1e300), 0u);
}

TEST(HvSteppedFCurve_reshape, ReduceRefuses)
{
    OpenInteger curve(0, {{0, 1}, {1, 1}, {2, 1}});
    auto const reduce = [&](double from, double to, double tolerance) {
        return static_cast<int>(curve.ReduceNumKeys(from, to, tolerance));
    };
    ExpectRefused(curve, [&] { return reduce(2, 0, 1); });
    ExpectRefused(curve, [&] { return reduce(0, 2, -1); });
    ExpectRefused(curve, [&] { return reduce(0, 2, kNaN); });
    ExpectRefused(curve, [&] { return reduce(kNaN, 2, 1); });
    ExpectRefused(curve, [&] { return reduce(0, kInfinity, 1); });
    curve.SetReadOnlyConstraint(1);
    ExpectRefused(curve, [&] { return reduce(0, 2, 1); });
}

// Rescaling.

TEST(HvSteppedFCurve_reshape, RescaleMovesAllKeys)
{
    auto const rescale = [](OpenInteger& curve, double scale, double offset) {
        return curve.ScaleAndOffsetParameters(0, 4, 2, scale, offset, 0, 0,
                                              HvBaseFCurve::LeftHandle, 0);
    };
    OpenInteger curve = Stairs();
    Tag(curve, 1, 11);
    EXPECT_EQ(rescale(curve, 0.5, 10), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{11, 1}, {11.5, 4}, {12, 2}, {13, 3}}));
    EXPECT_EQ(TagAt(curve, 11.5), 11);
    OpenInteger mirrored = Stairs();
    EXPECT_EQ(rescale(mirrored, -1, 0), 1);
    EXPECT_EQ(KeysOf(mirrored), (Keys{{0, 3}, {2, 2}, {3, 4}, {4, 1}}));

    OpenInteger refusing = Stairs();
    EXPECT_EQ(rescale(refusing, 1, 0), 1);
    ExpectRefused(refusing, [&] { return rescale(refusing, 0, 1); });
    ExpectRefused(refusing, [&] { return rescale(refusing, kNaN, 1); });
    ExpectRefused(refusing, [&] { return rescale(refusing, 1, 1e300); });
    OpenInteger moved = Stairs();
    EXPECT_EQ(moved.ScaleAndOffsetParameters(1, 4, 0, 1, 5, 0, 0, HvBaseFCurve::LeftHandle, 0), 1);
    EXPECT_EQ(KeysOf(moved), (Keys{{0, 1}, {6, 4}, {7, 2}, {9, 3}}));
    EXPECT_EQ(moved.ScaleAndOffsetParameters(6, 9, 6, 2, -5, 0, 0, HvBaseFCurve::LeftHandle, 0), 1);
    EXPECT_EQ(KeysOf(moved), (Keys{{0, 1}, {1, 4}, {3, 2}, {7, 3}}));
    Lock(refusing, 1, HvBaseFCurve::ParameterLocked);
    ExpectRefused(refusing, [&] { return rescale(refusing, 1, 0); });
}

TEST(HvSteppedFCurve_reshape, FailedAllocationLeavesTheCurveAsItWas)
{
    double const kernel[] = {0.5, 0.5};
    auto const prepare = [] {
        OpenInteger curve = Stairs();
        Tag(curve, 1, 11);
        return curve;
    };
    std::string const before = prepare().Image();
    auto const check = [&](OpenInteger& curve, bool completed) {
        EXPECT_EQ(curve.Image() == before, !completed);
        EXPECT_TRUE(LockProbe_AreBothFree(curve));
    };
    using Curve = OpenInteger;
    RefuseEachAllocation(
        prepare, [](Curve& curve) { curve.ResampleSequence(0.5, 3.5, 0.5, 0, 0); }, check);
    RefuseEachAllocation(
        prepare, [](Curve& curve) { curve.ReduceNumKeys(0.5, 4, 1.0); }, check);
    RefuseEachAllocation(
        prepare, [&](Curve& curve) { curve.SmoothSequence(0, 4, kernel, 2); }, check);
    RefuseEachAllocation(
        prepare,
        [](Curve& curve) {
            curve.ScaleAndOffsetParameters(0, 4, 0, -2, 3, 0, 0, HvBaseFCurve::LeftHandle, 0);
        },
        check);
}
