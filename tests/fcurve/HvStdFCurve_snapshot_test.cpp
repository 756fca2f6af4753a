// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Snapshots of the standard curve.

#include "std_edit.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/curve_image.h>
#include <tests/support/generators.h>
#include <tests/support/lock_probe.h>

#include <hv/foundation/HvDoubleArray.h>

#include <memory>
#include <new>

namespace {

using Method = HvBaseFCurve::ExtrapolationMethod;

constexpr Method kHold = HvBaseFCurve::ConstantExtrapolation;
constexpr Method kLine = HvBaseFCurve::LinearExtrapolation;
constexpr Method kCycle = HvBaseFCurve::CycleExtrapolation;
constexpr Method kRelative = HvBaseFCurve::RelativeCycleExtrapolation;

/// Values of curves below 100 high behind the solver of curve parameters.
constexpr double kSameValue = 1e-9;

std::unique_ptr<HvStdFCurve> Snap(HvStdFCurve const& curve, double from, double to,
                                  Method method = kHold)
{
    return std::unique_ptr<HvStdFCurve>(
        static_cast<HvStdFCurve*>(curve.SnapShot(from, to, method)));
}

/// Keys that make every cubic x(t) linear, so that a split keeps the shape exactly: handles at the
/// thirds, jumps and all kinds of segment. Parameters are eighths: their sums are exact.
StdCurve RandomThirds(unsigned int numKeys)
{
    StdCurve curve(0.0, kCubic);
    double x = PickInRange(-16, 16) / 8.0;
    std::vector<double> spans;
    for (unsigned int i = 0; i <= numKeys; ++i) {
        spans.push_back(PickInRange(4, 24) / 8.0);
    }
    for (unsigned int i = 0; i < numKeys; ++i) {
        auto const value = [] { return PickInRange(-80, 80) / 16.0; };
        double const left = value();
        CFCStdKey key = KeyAt(x, left, PickInRange(0, 3) == 0 ? value() : left,
                              static_cast<FSKind>(PickInRange(1, 4)));
        key.leftHandle = Point(x - spans[i] / 3, key.leftValue + value());
        key.rightHandle = Point(x + spans[i + 1] / 3, key.rightValue + value());
        if (PickInRange(0, 3) == 0) {
            key.constraints.Set(Word::kAutomaticTangents);
        }
        curve.Impl().keys.Add(key);
        x += spans[i + 1];
    }
    return curve;
}

void ExpectSameOn(HvStdFCurve const& a, HvStdFCurve const& b, double from, double to)
{
    for (int k = 0; k <= 64; ++k) {
        double const x = from + (to - from) * k / 64;
        ASSERT_NEAR(a.Eval(x, 0), b.Eval(x, 0), kSameValue) << "at " << x;
    }
}

}  // namespace

TEST(HvStdFCurve_snapshot, OfACurveWithoutKeysHasTwoKeysOfItsValue)
{
    StdCurve const curve(2.5, kLinear);
    auto const snap = Snap(curve, 1, 4, kCycle);
    ASSERT_EQ(snap->GetNumKeys(), 2u);
    EXPECT_EQ(snap->Eval(1, 0), 2.5);
    EXPECT_EQ(snap->Eval(3, 0), 2.5);
    EXPECT_EQ(snap->GetExtrapolationMethod(), kCycle);
}

TEST(HvStdFCurve_snapshot, InsideTheKeysIsTheSection)
{
    StdCurve const curve = MixedCurve();
    auto const snap = Snap(curve, 1, 4);
    HvStdFCurve const section(curve, 1, 4);
    EXPECT_EQ(CurveImage(*snap), CurveImage(section));
}

TEST(HvStdFCurve_snapshot, HoldsTheEndValuesBeyondTheKeys)
{
    StdCurve const curve({KeyAt(0, 1, 2, kLinear), KeyAt(2, 4, 6, kCubic)});
    auto const snap = Snap(curve, -1, 3);
    ASSERT_EQ(snap->GetNumKeys(), 4u);
    EXPECT_EQ(snap->Eval(-1, 0), 1);
    EXPECT_EQ(snap->Eval(-0.25, 0), 1);
    EXPECT_EQ(snap->Eval(0, 0), 2);
    EXPECT_EQ(snap->Eval(1, 0), 3);
    EXPECT_EQ(snap->Eval(2, 0), 6);
    EXPECT_EQ(snap->Eval(3, 0), 6);
    EXPECT_EQ(snap->GetSegmentKindAtParameter(-0.5), kConstant);
    EXPECT_EQ(snap->GetSegmentKindAtParameter(2.5), kConstant);
    EXPECT_EQ(snap->GetFirstSegmentKind(), kCubic);
    EXPECT_EQ(snap->GetSegmentKindAtParameter(4), kCubic);
}

TEST(HvStdFCurve_snapshot, ContinuesLinesBeyondTheKeys)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(2, 4, 4, kLinear)}, kLine);
    auto const snap = Snap(curve, -3, 5, kLine);
    ASSERT_EQ(snap->GetNumKeys(), 4u);
    EXPECT_EQ(snap->Eval(-3, 0), -6);
    EXPECT_EQ(snap->Eval(-1, 0), -2);
    EXPECT_EQ(snap->Eval(4, 0), 8);
    EXPECT_EQ(snap->GetSegmentKindAtParameter(-1), kLinear);
    EXPECT_EQ(snap->GetSegmentKindAtParameter(3), kLinear);
}

TEST(HvStdFCurve_snapshot, LineBeforeAJumpReachesTheKeyBesideItsLeftValue)
{
    // The line starts at the right value 1 of the first key, so before it the curve is 1 + x.
    StdCurve curve({KeyAt(0, 9, 1, kLinear), KeyAt(2, 3, 3, kLinear)}, kLine);
    auto const snap = Snap(curve, -2, 2);
    EXPECT_EQ(snap->Eval(-2, 0), -1);
    EXPECT_NEAR(snap->Eval(-0.5, 0), 0.5, kRounding);
    EXPECT_EQ(snap->Eval(0, 0), 1);
}

TEST(HvStdFCurve_snapshot, WhollyBesideTheKeysHasTwoKeys)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(2, 4, 4, kConstant)}, kLine);
    auto const before = Snap(curve, -3, -1);
    ASSERT_EQ(before->GetNumKeys(), 2u);
    EXPECT_EQ(before->Eval(-2, 0), -4);
    curve.SetExtrapolationMethod(kHold);
    auto const after = Snap(curve, 3, 5);
    ASSERT_EQ(after->GetNumKeys(), 2u);
    EXPECT_EQ(after->Eval(4, 0), 4);
    EXPECT_EQ(after->GetSegmentKindAtParameter(3.5), kConstant);
    EXPECT_EQ(Snap(curve, 7, 7)->GetNumKeys(), 1u);
}

TEST(HvStdFCurve_snapshot, SpansCyclesWithTheirJumps)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(2, 4, 4, kLinear)}, kCycle);
    auto const snap = Snap(curve, -1, 5);
    // Keys at -1, 0, 2, 4, 5; each inner one falls from 4 to 0.
    ASSERT_EQ(snap->GetNumKeys(), 5u);
    double left = 0;
    double right = 0;
    snap->GetKeyValuesByIndex(2, left, right);
    EXPECT_EQ(left, 4);
    EXPECT_EQ(right, 0);
    EXPECT_EQ(snap->Eval(-1, 0), 2);
    EXPECT_EQ(snap->Eval(3, 0), 2);
    EXPECT_EQ(snap->Eval(5, 0), 2);
}

TEST(HvStdFCurve_snapshot, RisesFromCycleToCycleWhenRelative)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(2, 4, 4, kLinear)}, kRelative);
    auto const snap = Snap(curve, -3, 9, kRelative);
    for (double const x : {-3.0, -2.0, -0.5, 0.0, 1.0, 2.0, 3.5, 4.0, 8.0, 9.0}) {
        EXPECT_EQ(snap->Eval(x, 0), 2 * x) << x;
    }
    EXPECT_EQ(snap->GetExtrapolationMethod(), kRelative);
}

TEST(HvStdFCurve_snapshot, EndingWhereACycleEndsHasTheValueThere)
{
    StdCurve curve({KeyAt(0, 0, 1, kLinear), KeyAt(2, 4, 5, kLinear)}, kCycle);
    for (double const to : {2.0, 4.0, -2.0}) {
        auto const snap = Snap(curve, to - 1, to);
        EXPECT_EQ(snap->Eval(to, 0), curve.Eval(to, 0)) << to;
        EXPECT_EQ(snap->EvalLeft(to, 0), 4) << to;
        EXPECT_EQ(snap->GetNumKeys(), 2u) << to;
    }
}

TEST(HvStdFCurve_snapshot, EndingWhereARelativeCycleEndsHasTheRisenValueThere)
{
    // Each cycle adds 5 - 1, and starts with the right value of the first key.
    StdCurve curve({KeyAt(0, 0, 1, kLinear), KeyAt(2, 4, 5, kLinear)}, kRelative);
    for (int const cycle : {-2, 0, 1, 5}) {
        double const to = 2.0 * (cycle + 1);
        auto const snap = Snap(curve, to - 3, to);
        EXPECT_EQ(snap->Eval(to, 0), 1 + 4.0 * (cycle + 1)) << to;
        EXPECT_EQ(snap->EvalLeft(to, 0), 4 + 4.0 * cycle) << to;
    }
}

TEST(HvStdFCurve_snapshot, EvaluatesLikeItsSourceOnTheInterval)
{
    ExpectProperty("a snapshot evaluates like its source", [] {
        StdCurve curve = RandomThirds(static_cast<unsigned int>(PickInRange(1, 7)));
        curve.SetExtrapolationMethod(static_cast<Method>(PickInRange(1, 5)));
        double const from = PickInRange(-160, 160) / 8.0 + 1.0 / 64;
        double const to = from + PickInRange(1, 240) / 8.0;
        auto const snap = Snap(curve, from, to);
        RC_ASSERT(snap != nullptr);
        RC_ASSERT(snap->IsSmallestKeyParameter(from) == 1);
        RC_ASSERT(snap->IsLargestKeyParameter(to) == 1);
        for (int k = 0; k <= 64; ++k) {
            // Not on keys, which folding may miss by a rounding; and where a line goes on beyond a
            // last key that jumps, the key itself is a point apart.
            double const x = from + (to - from) * k / 64;
            if (curve.IsKeyParameter(curve.FoldParameter(x), 1e-9) == 0) {
                RC_ASSERT(std::fabs(snap->Eval(x, 0) - curve.Eval(x, 0)) < 1e-7);
            }
        }
    });
}

TEST(HvStdFCurve_snapshot, KeepsAutomaticTangentsAcrossCycles)
{
    StdCurve curve({KeyAt(0, 0, 0, kCubic), KeyAt(1, 3, 3, kCubic), KeyAt(2, 1, 1, kCubic),
                    KeyAt(4, 2, 2, kCubic)},
                   kRelative);
    for (unsigned int i = 0; i < 4; ++i) {
        curve.Impl().keys[i].constraints.Set(Word::kAutomaticTangents);
    }
    auto const snap = Snap(curve, -6, 11);
    ExpectSameOn(*snap, curve, -6, 11);
}

TEST(HvStdFCurve_snapshot, CarriesUserDataIntoEachCycle)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 3, 3, kLinear), KeyAt(2, 1, 1, kLinear)},
                   kCycle);
    curve.SetUserDataSet(SetOf(1, "first"), 0);
    curve.SetUserDataSet(SetOf(1, "inner"), 1);
    auto const snap = Snap(curve, -0.5, 5.5);
    EXPECT_EQ(TextIn(snap->GetUserDataSet(0), 1), "first");
    EXPECT_EQ(TextIn(snap->GetUserDataSet(2), 1), "first");
    EXPECT_EQ(TextIn(snap->GetUserDataSet(3), 1), "inner");
    EXPECT_EQ(TextIn(snap->GetUserDataSet(5), 1), "inner");
    EXPECT_EQ(TextIn(snap->GetUserDataSet(-0.5), 1), "none");
    EXPECT_EQ(TextIn(snap->GetUserDataSet(5.5), 1), "none");
}

TEST(HvStdFCurve_snapshot, CrossesLocksAndReadOnlyCurves)
{
    StdCurve curve({KeyAt(0, 0, 1, kLinear), KeyAt(2, 4, 4, kLinear)}, kCycle);
    Lock(curve, 0, Word::kAllLocked);
    Lock(curve, 1, Word::kAllLocked);
    curve.SetReadOnlyConstraint(1);
    auto const snap = Snap(curve, 1, 7);
    ExpectSameOn(*snap, curve, 1, 7);
    EXPECT_EQ(snap->IsReadOnly(), 1);
    EXPECT_EQ(Snap(curve, -5, -4)->IsReadOnly(), 1);
}

TEST(HvStdFCurve_snapshot, EndsMayComeInAnyOrder)
{
    StdCurve const curve = MixedCurve();
    EXPECT_EQ(CurveImage(*Snap(curve, 6, 1)), CurveImage(*Snap(curve, 1, 6)));
}

TEST(HvStdFCurve_snapshot, UnknownMethodKeepsThatOfTheCurve)
{
    StdCurve curve = MixedCurve();
    curve.SetExtrapolationMethod(kLine);
    EXPECT_EQ(Snap(curve, 1, 4, static_cast<Method>(0))->GetExtrapolationMethod(), kLine);
    EXPECT_EQ(Snap(curve, 1, 4, static_cast<Method>(5))->GetExtrapolationMethod(), kLine);
}

TEST(HvStdFCurve_snapshot, OfNoFiniteIntervalIsNull)
{
    StdCurve curve = MixedCurve();
    for (double const x : NonFinite()) {
        EXPECT_EQ(curve.SnapShot(x, 1, kHold), nullptr);
        EXPECT_EQ(curve.SnapShot(1, x, kHold), nullptr);
    }
    EXPECT_EQ(curve.SnapShot(-1.7e308, 1.7e308, kHold), nullptr);
}

TEST(HvStdFCurve_snapshot, OfMoreCyclesThanAnArrayHoldsIsRefusedBeforeItStarts)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1e-3, 4, 4, kLinear)}, kCycle);
    EXPECT_THROW(curve.SnapShot(0, 1e300, kHold), std::bad_alloc);
    EXPECT_THROW(curve.SnapShot(0, 1e8, kHold), std::bad_alloc);
    EXPECT_THROW(curve.SnapShot(1e300, 1e300, kHold), std::bad_alloc);
    EXPECT_TRUE(LockProbe_AreBothFree(curve));
}

TEST(HvStdFCurve_snapshot, OfCyclesThatRiseBeyondAllNumbersIsNull)
{
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 1e308, 1e308, kLinear)}, kRelative);
    EXPECT_NE(Snap(curve, 0.25, 0.75), nullptr);
    EXPECT_EQ(curve.SnapShot(0.25, 3.5, kHold), nullptr);
}

TEST(HvStdFCurve_snapshot, FarAwayKeysThatRoundToOneAreDropped)
{
    // At 2^50 neighbouring doubles are a quarter apart.
    double const far = 1125899906842624.0;
    StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(0.125, 9, 9, kLinear), KeyAt(1, 4, 4, kLinear)},
                   kCycle);
    auto const snap = Snap(curve, far, far + 3);
    HvDoubleArray parameters;
    snap->GetAllKeyParameters(parameters);
    for (unsigned int i = 1; i < parameters.Size(); ++i) {
        EXPECT_LT(parameters[i - 1], parameters[i]);
    }
    EXPECT_EQ(snap->IsLargestKeyParameter(far + 3), 1);
}

TEST(HvStdFCurve_snapshot, TakesBothLocks)
{
    StdCurve const curve = MixedCurve();
    auto const call = [&] { Snap(curve, 1, 4); };
    EXPECT_TRUE(LockProbe_Waits(curve, ProbedLock::Access, true, call));
    EXPECT_TRUE(LockProbe_Waits(curve, ProbedLock::Section, true, call));
}

TEST(HvStdFCurve_snapshot, FailedAllocationLeavesNothingBehind)
{
    RefuseEachAllocation([] {
        StdCurve curve({KeyAt(0, 0, 0, kLinear), KeyAt(1, 3, 3, kCubic), KeyAt(2, 1, 1, kCubic)},
                       kRelative);
        curve.SetUserDataSet(SetOf(1, "inner"), 1);
        std::string const before = StdImage(curve);
        try {
            Snap(curve, -3, 5);
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(StdImage(curve), before);
            throw;
        }
    });
}
