// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Snapshots, resampling, smoothing, reducing and rescaling of the raw curve.

#include <tests/fcurve/raw_test_support.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <new>

namespace {

using Method = HvBaseFCurve::ExtrapolationMethod;
using CurvePtr = std::unique_ptr<HvBaseFCurve>;

constexpr Method kHold = HvBaseFCurve::ConstantExtrapolation;

CurvePtr Snap(HvBaseFCurve const& curve, double from, double to, Method method = kHold)
{
    return CurvePtr(curve.SnapShot(from, to, method));
}

/// A polyline with keys at eighths and values of sixteenths.
OpenRaw RandomLine()
{
    OpenRaw curve(PickInRange(-4, 5));
    int const numKeys = PickInRange(0, 8);
    double p = PickInRange(-16, 16) / 8.0;
    for (int i = 0; i < numKeys; ++i) {
        curve.Impl().AppendKey(p, PickInRange(-80, 81) / 16.0);
        p += PickInRange(1, 20) / 8.0;
    }
    return curve;
}

template <class Edit>
void ExpectRefused(OpenRaw& curve, Edit edit)
{
    std::string const before = CurveImage(curve);
    EXPECT_EQ(edit(), 0);
    EXPECT_EQ(CurveImage(curve), before);
}

}  // namespace

TEST(HvRawFCurve_reshape, SnapShotHasKeysAtBothEnds)
{
    OpenRaw const curve = Zigzag();
    EXPECT_EQ(KeysOf(*Snap(curve, 1.5, 3.5)), (Keys{{1.5, 20}, {2, 30}, {3, 0}, {3.5, 20}}));
    EXPECT_EQ(KeysOf(*Snap(curve, 0, 1.5)), (Keys{{0, 10}, {1, 10}, {1.5, 20}}));
    EXPECT_EQ(KeysOf(*Snap(curve, 5, 6)), (Keys{{5, 40}, {6, 40}}));
}

TEST(HvRawFCurve_reshape, SnapShotContinuesLines)
{
    OpenRaw curve = Zigzag();
    curve.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);
    EXPECT_EQ(KeysOf(*Snap(curve, 0, 5)),
              (Keys{{0, -10}, {1, 10}, {2, 30}, {3, 0}, {4, 40}, {5, 80}}));
}

TEST(HvRawFCurve_reshape, SnapShotFallsFromCycleToCycle)
{
    OpenRaw curve(0, {{0, 1}, {1, 3}});
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    CurvePtr const snap = Snap(curve, 0.5, 2);
    // One more key just before 1 and one just before 2 hold the end of a cycle.
    EXPECT_EQ(snap->GetNumKeys(), 5u);
    EXPECT_EQ(snap->Eval(0.75, 0), 2.5);
    EXPECT_EQ(snap->Eval(1, 0), 1);
    EXPECT_EQ(snap->Eval(1.5, 0), 2);
    EXPECT_EQ(snap->Eval(2, 0), 1);
}

TEST(HvRawFCurve_reshape, SnapShotEvaluatesLikeItsSource)
{
    EXPECT_TRUE(rc::check("a snapshot evaluates like its source", [] {
        OpenRaw curve = RandomLine();
        curve.SetExtrapolationMethod(static_cast<Method>(PickInRange(1, 5)));
        double const from = PickInRange(-160, 160) / 8.0 + PickInRange(0, 2) / 64.0;
        double const to = from + PickInRange(0, 240) / 8.0;
        CurvePtr const snap = Snap(curve, from, to);
        RC_ASSERT(snap != nullptr);
        for (int k = 0; k <= 96; ++k) {
            double const x = from + (to - from) * k / 96;
            double const folded = curve.FoldParameter(x);
            // Not beside a key, which folding may pass by a rounding.
            if (curve.IsKeyParameter(folded, 1e-9) == 0) {
                RC_ASSERT(std::fabs(snap->Eval(x, 0) - curve.Eval(x, 0)) < 1e-9);
            }
        }
    }));
}

TEST(HvRawFCurve_reshape, SnapShotKeepsSelectionAndUserData)
{
    OpenRaw curve = Zigzag();
    curve.SetSelected(1);
    curve.SetKeySelected(2.0, 1);
    Tag(curve, 2, 12);
    CurvePtr const snap = Snap(curve, 1.5, 3.5);
    EXPECT_EQ(snap->IsKeySelected(2.0), 1);
    EXPECT_EQ(snap->IsKeySelected(1.5), 0);
    EXPECT_EQ(TagAt(*snap, 2), 12);
}

TEST(HvRawFCurve_reshape, SnapShotTakesTheSectionOnly)
{
    OpenRaw const curve = Zigzag();
    CurvePtr kept;
    auto const call = [&] { kept.reset(curve.SnapShot(1, 2, kHold)); };
    EXPECT_FALSE(LockProbe_Waits(curve, ProbedLock::Access, false, call));
    auto const again = [&] { delete curve.SnapShot(1, 2, kHold); };
    EXPECT_TRUE(LockProbe_Waits(curve, ProbedLock::Section, true, again));
}

TEST(HvRawFCurve_reshape, SnapShotOfWhatIsNotFiniteIsNull)
{
    OpenRaw curve(0, {{0, -1e308}, {1e-3, 1e308}});
    curve.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);
    EXPECT_EQ(curve.SnapShot(0, 1e9, kHold), nullptr);
    EXPECT_EQ(curve.SnapShot(kNaN, 1, kHold), nullptr);
    EXPECT_EQ(curve.SnapShot(0, kInfinity, kHold), nullptr);
}

TEST(HvRawFCurve_reshape, SnapShotOfTooManyCyclesIsRefusedBeforeItStarts)
{
    OpenRaw curve(0, {{0, 1}, {1e-3, 3}});
    curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation);
    EXPECT_THROW(curve.SnapShot(0, 1e300, kHold), std::bad_alloc);
    EXPECT_THROW(curve.SnapShot(0, 1e8, kHold), std::bad_alloc);
}

TEST(HvRawFCurve_reshape, ResampleKeepsTheValuesAtTheSamples)
{
    EXPECT_TRUE(rc::check("the samples keep their values", [] {
        OpenRaw curve = RandomLine();
        OpenRaw const before = curve;
        RC_ASSERT(curve.ResampleSequence(-3, 9, 0.375, PickInRange(0, 2), 1) == 1);
        for (int k = 0; k <= 32; ++k) {
            double const x = -3 + 0.375 * k;
            RC_ASSERT(curve.IsKeyParameter(x, 0) == 1);
            RC_ASSERT(std::fabs(curve.Eval(x, 0) - before.Eval(x, 0)) < 1e-13);
        }
    }));
}

TEST(HvRawFCurve_reshape, ResamplePutsKeysAtEachStep)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.ResampleSequence(1.5, 3.5, 0.75, 0, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 10}, {1.5, 20}, {2.25, 22.5}, {3, 0}, {3.5, 20}, {4, 40}}));
}

TEST(HvRawFCurve_reshape, ValuesThatOverflowAreRefused)
{
    OpenRaw curve(0, {{0, -1.7e308}, {1, 1.7e308}});
    ExpectRefused(curve, [&] { return curve.ResampleSequence(0, 1, 0.25, 0, 0); });
    ExpectRefused(curve, [&] { return static_cast<int>(curve.ReduceNumKeys(0.25, 0.75, 1)); });
}

TEST(HvRawFCurve_reshape, SmoothSumsTheNeighbours)
{
    double const kernel[] = {0.25, 0.5, 0.25};
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.SmoothSequence(1, 4, kernel, 3), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{1, 12.5 / 0.75}, {2, 17.5}, {3, 17.5}, {4, 20 / 0.75}}));
    double const one[] = {1};
    std::string const before = CurveImage(curve);
    EXPECT_EQ(curve.SmoothSequence(1, 4, one, 1), 1);
    EXPECT_EQ(CurveImage(curve), before);
    curve.SetReadOnlyConstraint(1);
    ExpectRefused(curve, [&] { return curve.SmoothSequence(1, 4, kernel, 3); });
}

TEST(HvRawFCurve_reshape, ReduceDropsKeysOnLines)
{
    OpenRaw curve(0, {{0, 0}, {1, 1}, {2, 2}, {3, 5}, {4, 8}, {5, 8}});
    Tag(curve, 1, 11);
    EXPECT_EQ(curve.ReduceNumKeys(0, 5, 0.0), 2u);
    EXPECT_EQ(KeysOf(curve), (Keys{{0, 0}, {2, 2}, {4, 8}, {5, 8}}));
    EXPECT_EQ(TagAt(curve, 1), -1);
    ExpectRefused(curve, [&] { return static_cast<int>(curve.ReduceNumKeys(0, 5, kNaN)); });
}

TEST(HvRawFCurve_reshape, RescaleMovesAllKeys)
{
    OpenRaw curve = Zigzag();
    EXPECT_EQ(curve.ScaleAndOffsetParameters(1, 4, 1, -2, 1, 0, 0, HvBaseFCurve::LeftHandle, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 40}, {4, 0}, {6, 30}, {8, 10}}));
    EXPECT_EQ(curve.ScaleAndOffsetParameters(4, 8, 1, 1, 1, 0, 0, HvBaseFCurve::LeftHandle, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 40}, {5, 0}, {7, 30}, {9, 10}}));
    EXPECT_EQ(curve.ScaleAndOffsetParameters(5, 9, 5, 2, 1, 0, 0, HvBaseFCurve::LeftHandle, 0), 1);
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 40}, {6, 0}, {10, 30}, {14, 10}}));
    EXPECT_EQ(curve.ScaleAndOffsetParameters(6, 10, 6, -1, 0, 0, 0, HvBaseFCurve::LeftHandle, 0),
              1);
    EXPECT_EQ(KeysOf(curve), (Keys{{2, 40}, {6, 30}, {10, 0}, {14, 10}}));
}

TEST(HvRawFCurve_reshape, FailedAllocationLeavesNothingBehind)
{
    double const kernel[] = {0.5, 0.5};
    std::string const before = CurveImage(Zigzag());
    auto const check = [&](OpenRaw& curve, bool completed) {
        EXPECT_EQ(CurveImage(curve) == before, !completed);
        EXPECT_TRUE(LockProbe_AreBothFree(curve));
    };
    RefuseEachAllocation(
        Zigzag, [](OpenRaw& curve) { curve.ResampleSequence(1.5, 3.5, 0.5, 0, 0); }, check);
    RefuseEachAllocation(
        Zigzag, [](OpenRaw& curve) { curve.ReduceNumKeys(1, 4, 2.0); }, check);
    RefuseEachAllocation(
        Zigzag, [&](OpenRaw& curve) { curve.SmoothSequence(1, 4, kernel, 2); }, check);
    RefuseEachAllocation([] {
        OpenRaw curve = Zigzag();
        curve.SetExtrapolationMethod(HvBaseFCurve::RelativeCycleExtrapolation);
        Snap(curve, -5, 9);
    });
}
