// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Scaling and moving of the standard curve along the parameter axis.

#include "std_edit.h"

#include <tests/support/allocation_failure.h>
#include <tests/support/lock_probe.h>

#include <hv/foundation/HvDoubleArray.h>

namespace {

constexpr HvBaseFCurve::RegionHandle kHandle = HvBaseFCurve::RightHandle;

int Rescale(StdCurve& curve, double from, double to, double pivot, double scale, double offset,
            int selectedOnly = 0)
{
    return curve.ScaleAndOffsetParameters(from, to, pivot, scale, offset, 0, 0, kHandle,
                                          selectedOnly);
}

std::vector<double> ParametersOf(HvStdFCurve const& curve)
{
    HvDoubleArray parameters;
    curve.GetAllKeyParameters(parameters);
    return std::vector<double>(parameters.begin(), parameters.end());
}

using Parameters = std::vector<double>;

/// The parameters of MixedCurve, which are 0, 2, 3, 5 and 8, after those from 2 to 5 are moved.
Parameters Moved(double offset, int rippleLeft, int rippleRight)
{
    StdCurve curve = MixedCurve();
    EXPECT_EQ(
        curve.ScaleAndOffsetParameters(2, 5, 0, 1, offset, rippleLeft, rippleRight, kHandle, 0), 1);
    return ParametersOf(curve);
}

/// The same after those from 2 to 5 are scaled.
Parameters Scaled(double pivot, double scale, int rippleLeft, int rippleRight,
                  HvBaseFCurve::RegionHandle handle = kHandle)
{
    StdCurve curve = MixedCurve();
    EXPECT_EQ(
        curve.ScaleAndOffsetParameters(2, 5, pivot, scale, 0, rippleLeft, rippleRight, handle, 0),
        1);
    EXPECT_EQ(curve.Impl().IsValid(), 1);
    return ParametersOf(curve);
}

void ExpectNearAll(Parameters const& actual, Parameters const& expected)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        EXPECT_NEAR(actual[i], expected[i], kRounding) << "key " << i;
    }
}

}  // namespace

TEST(HvStdFCurve_rescale, ScalesAboutThePivotAndMoves)
{
    StdCurve curve = MixedCurve();  // keys at 0, 2, 3, 5, 8
    EXPECT_EQ(Rescale(curve, 0, 8, 2, 0.5, 10), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{11, 12, 12.5, 13.5, 15}));
    // The right handle of the first key was at (1, 1).
    ExpectNear(curve.Impl().keys[0].rightHandle, 11.5, 1);
}

TEST(HvStdFCurve_rescale, NegativeScaleMirrorsTheKeys)
{
    StdCurve curve({KeyAt(0, 1, 1, kLinear), KeyAt(1, 5, 5, kConstant), KeyAt(4, 3, 3, kCubic)});
    EXPECT_EQ(Rescale(curve, 0, 4, 0, -2, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 6, 8}));
    EXPECT_EQ(curve.Eval(0, 0), 3);
    EXPECT_EQ(curve.Eval(8, 0), 1);
    EXPECT_EQ(curve.GetSegmentKindAtParameter(7), kLinear);
}

TEST(HvStdFCurve_rescale, EndsNearKeysAreTheKeys)
{
    StdCurve curve = MixedCurve();
    EXPECT_EQ(Rescale(curve, 0.9e-6, 8 - 0.9e-6, 0, 1, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{1, 3, 4, 6, 9}));
    // Further away they are not: the first key stays.
    EXPECT_EQ(Rescale(curve, 1 + 1.1e-6, 9, 0, 1, 0.5), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{1, 3.5, 4.5, 6.5, 9.5}));
}

TEST(HvStdFCurve_rescale, PartOfTheKeysIsMoved)
{
    EXPECT_EQ(Moved(0.5, 0, 0), (Parameters{0, 2.5, 3.5, 5.5, 8}));
    EXPECT_EQ(Moved(-0.5, 0, 0), (Parameters{0, 1.5, 2.5, 4.5, 8}));
}

TEST(HvStdFCurve_rescale, KeysBesideThePartRippleAlong)
{
    EXPECT_EQ(Moved(1, 1, 1), (Parameters{1, 3, 4, 6, 9}));
    EXPECT_EQ(Moved(-1, 1, 1), (Parameters{-1, 1, 2, 4, 7}));
    // The left ripple is pushed, the right one drawn.
    EXPECT_EQ(Moved(0.5, 1, 0), (Parameters{0, 2.5, 3.5, 5.5, 8.5}));
    EXPECT_EQ(Moved(-0.5, 1, 0), (Parameters{-0.5, 1.5, 2.5, 4.5, 8}));
    EXPECT_EQ(Moved(0.5, 0, 1), (Parameters{0.5, 2.5, 3.5, 5.5, 8}));
    EXPECT_EQ(Moved(-0.5, 0, 1), (Parameters{0, 1.5, 2.5, 4.5, 7.5}));
}

TEST(HvStdFCurve_rescale, KeyInTheWayStopsThePart)
{
    EXPECT_EQ(Moved(3, 0, 0), (Parameters{0, 2, 3, 5, 8}));
}

TEST(HvStdFCurve_rescale, MovedPartKeepsItsUserDataAndValues)
{
    StdCurve curve = MixedCurve();
    curve.SetUserDataSet(SetOf(1, "three"), 3);
    EXPECT_EQ(Rescale(curve, 2, 5, 0, 1, 4), 1);  // over the key at 8
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 6, 7, 8, 9}));
    EXPECT_EQ(TextIn(curve.GetUserDataSet(7), 1), "three");
    EXPECT_EQ(curve.Eval(9, 0), 4);
    EXPECT_EQ(curve.Impl().keys[1].leftValue, 1);
    EXPECT_EQ(curve.Impl().keys[1].rightValue, 3);
    EXPECT_EQ(curve.Impl().IsValid(), 1);
}

TEST(HvStdFCurve_rescale, SelectedKeysOfAPartAreMoved)
{
    StdCurve curve = MixedCurve();
    curve.SetSelected(1);
    curve.SetKeySelected(2u, 1);
    EXPECT_EQ(Rescale(curve, 0, 8, 0, 1, 0.5, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 3.5, 5, 8}));
    EXPECT_EQ(curve.IsKeySelected(3.5), 1);
}

TEST(HvStdFCurve_rescale, PartOfTheKeysIsScaled)
{
    for (HvBaseFCurve::RegionHandle const handle :
         {HvBaseFCurve::LeftHandle, HvBaseFCurve::RightHandle, HvBaseFCurve::TopHandle}) {
        EXPECT_EQ(Scaled(2, 0.5, 0, 0, handle), (Parameters{0, 2, 2.5, 3.5, 8}));
        EXPECT_EQ(Scaled(5, 0.5, 0, 0, handle), (Parameters{0, 3.5, 4, 5, 8}));
        EXPECT_EQ(Scaled(4, 1.5, 0, 0, handle), (Parameters{0, 1, 2.5, 5.5, 8}));
        EXPECT_EQ(Scaled(0, 1.5, 0, 0, handle), (Parameters{0, 3, 4.5, 7.5, 8}));
    }
}

TEST(HvStdFCurve_rescale, KeysBesideAScaledPartRippleAlong)
{
    EXPECT_EQ(Scaled(2, 2, 0, 1), (Parameters{0, 2, 4, 8, 11}));
    EXPECT_EQ(Scaled(2, 2, 1, 1), (Parameters{0, 2, 4, 8, 11})) << "the left end stays";
    EXPECT_EQ(Scaled(5, 2, 1, 0), (Parameters{-3, -1, 1, 5, 8}));
    EXPECT_EQ(Scaled(5, 0.5, 1, 1), (Parameters{1.5, 3.5, 4, 5, 8}));
    for (HvBaseFCurve::RegionHandle const handle :
         {HvBaseFCurve::LeftHandle, HvBaseFCurve::RightHandle}) {
        EXPECT_EQ(Scaled(4, 2, 1, 1, handle), (Parameters{-2, 0, 2, 6, 9}));
    }
}

TEST(HvStdFCurve_rescale, KeyInTheWayStopsAScaledPart)
{
    // The right end, from 5, stops at 7.999.
    double const scale = 5.999 / 3;
    ExpectNearAll(Scaled(2, 2.5, 0, 0), (Parameters{0, 2, 2 + scale, 7.999, 8}));
    ExpectNearAll(Scaled(2, 2.5, 1, 0), (Parameters{0, 2, 2 + scale, 7.999, 8}));
}

TEST(HvStdFCurve_rescale, ScaledPartIsMovedThen)
{
    StdCurve curve = MixedCurve();
    EXPECT_EQ(Rescale(curve, 2, 5, 2, 0.5, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 3, 3.5, 4.5, 8}));
    curve = MixedCurve();
    curve.SetUserDataSet(SetOf(1, "three"), 3);
    EXPECT_EQ(curve.ScaleAndOffsetParameters(2, 5, 2, 2, 10, 1, 1, kHandle, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{10, 12, 14, 18, 21}));
    EXPECT_EQ(TextIn(curve.GetUserDataSet(14), 1), "three");
}

TEST(HvStdFCurve_rescale, SelectedKeysOfAPartAreScaled)
{
    StdCurve curve = MixedCurve();
    curve.SetSelected(1);
    curve.SetKeySelected(1u, 1);
    curve.SetKeySelected(3u, 1);
    EXPECT_EQ(Rescale(curve, 0, 8, 2, 1.5, 0, 1), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 3, 6.5, 8}));
    EXPECT_EQ(curve.IsKeySelected(6.5), 1);
    EXPECT_EQ(Rescale(curve, 0, 8, 2, 0.1, 0, 1), 1) << "the key at 3 stays and stops it";
    ExpectNearAll(ParametersOf(curve), (Parameters{0, 2, 3, 3.001, 8}));
}

TEST(HvStdFCurve_rescale, NegativeScaleTurnsAPartRound)
{
    StdCurve const start({KeyAt(0, 0, 0, kLinear), KeyAt(2, 1, 1, kLinear), KeyAt(3, 2, 5, kLinear),
                          KeyWithHandles(5, 4, {-1, 0}, {1, 0}), KeyAt(6, 0, 0, kCubic)});
    StdCurve curve(start);
    EXPECT_EQ(Rescale(curve, 2, 5, 2, -0.5, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 2, 3, 3.5, 6}));
    for (double x = 2; x < 3.5; x += 0.0625) {
        // x = 2 + t is where t from the end was, at half the size.
        EXPECT_NEAR(curve.Eval(x, 0), start.EvalLeft(5 - (x - 2) * 2, 0), kSolver) << x;
    }
    EXPECT_NEAR(curve.Eval(1, 0), 0.5, kSolver) << "what is beside it stays";
    EXPECT_EQ(curve.Impl().IsValid(), 1);
}

TEST(HvStdFCurve_rescale, EndsMayBeBeyondTheKeysOrNowhere)
{
    double const infinity = NonFinite()[1];
    StdCurve curve = MixedCurve();
    EXPECT_EQ(Rescale(curve, -infinity, 3, 0, 0.5, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 1.5, 5, 8}));
    EXPECT_EQ(Rescale(curve, 4, infinity, 8, 0.5, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 1.5, 6.5, 8}));
    EXPECT_EQ(Rescale(curve, 1e6, infinity, 8, 0.5, 0), 1) << "no key at all";
    EXPECT_EQ(Rescale(curve, 5, 4, 8, 0.5, 0), 1);
    EXPECT_EQ(Rescale(curve, 6.5, 6.5, 6.5, 7, 0), 1) << "one on the pivot";
    EXPECT_EQ(Rescale(curve, 6.5, 6.5, 6.5, -7, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 1.5, 6.5, 8}));
    EXPECT_EQ(Rescale(curve, 6.5, 6.5, 5.5, 2, 0), 1);
    EXPECT_EQ(ParametersOf(curve), (Parameters{0, 1, 1.5, 7.5, 8}));
}

TEST(HvStdFCurve_rescale, FailedAllocationInAPartLeavesTheCurveAsItWas)
{
    std::string before;
    RefuseEachAllocation(
        [&] {
            StdCurve curve = MixedCurve();
            curve.SetUserDataSet(SetOf(1, "three"), 3);
            before = StdImage(curve);
            return curve;
        },
        [](StdCurve& curve) {
            EXPECT_EQ(curve.ScaleAndOffsetParameters(2, 5, 2, -1.5, 3, 1, 1, kHandle, 0), 1);
        },
        [&](StdCurve& curve, bool completed) {
            EXPECT_EQ(StdImage(curve) == before, !completed);
            EXPECT_TRUE(LockProbe_AreBothFree(curve));
        });
}

TEST(HvStdFCurve_rescale, IdentityChangesNothing)
{
    StdCurve curve = MixedCurve();
    std::string const before = StdImage(curve);
    AllocationCounter const counter;
    EXPECT_EQ(Rescale(curve, 0, 8, 3, 1 + 0.9e-7, -0.9e-7), 1);
    EXPECT_EQ(Rescale(curve, 2, 3, 3, 1, 0), 1);
    EXPECT_EQ(counter.Allocations(), 0);
    EXPECT_EQ(StdImage(curve), before);
}

TEST(HvStdFCurve_rescale, OfACurveWithoutKeysIsDone)
{
    StdCurve curve(1.0, kLinear);
    EXPECT_EQ(Rescale(curve, 0, 8, 3, 2, 5), 1);
}

TEST(HvStdFCurve_rescale, AllKeysMayBeTheSelectedOnes)
{
    StdCurve curve = MixedCurve();
    curve.SetSelected(1);
    EXPECT_EQ(Rescale(curve, 0, 8, 0, 1, 1, 1), 1) << "none is";
    EXPECT_EQ(ParametersOf(curve), ParametersOf(MixedCurve()));
    for (unsigned int i = 0; i < 5; ++i) {
        curve.SetKeySelected(i, 1);
    }
    EXPECT_EQ(Rescale(curve, 0, 8, 0, 1, 1, 1), 1);
    EXPECT_EQ(curve.IsKeySelected(9.0), 1);
}

TEST(HvStdFCurve_rescale, CarriesUserDataAlong)
{
    StdCurve curve = MixedCurve();
    curve.SetUserDataSet(SetOf(1, "three"), 3);
    EXPECT_EQ(Rescale(curve, 0, 8, 0, -1, 2), 1);
    EXPECT_EQ(TextIn(curve.GetUserDataSet(7), 1), "three");  // 8 - 3 + 2
}

TEST(HvStdFCurve_rescale, Refuses)
{
    StdCurve curve = MixedCurve();
    ExpectRefusedWhenReadOnly(curve, [&] { return Rescale(curve, 0, 8, 0, 1, 0); });
    ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, 0.9e-7, 1); });
    ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, -0.9e-7, 1); });
    for (double const x : NonFinite()) {
        ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, x, 2, 1); });
        ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, x, 1); });
        ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, 1, x); });
    }
    ExpectRefused(curve, [&] { return Rescale(curve, NonFinite()[0], 8, 0, 1, 1); });
    // Numbers that would not stay apart.
    ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, 1, 1e300); });
    ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, 1.7e308, 0); });
    Lock(curve, 3, Word::kParameterLocked);
    ExpectRefused(curve, [&] { return Rescale(curve, 0, 8, 0, 1, 0); });
}

TEST(HvStdFCurve_rescale, FailedAllocationLeavesTheCurveAsItWas)
{
    std::string before;
    RefuseEachAllocation(
        [&] {
            StdCurve curve = MixedCurve();
            curve.SetUserDataSet(SetOf(1, "three"), 3);
            before = StdImage(curve);
            return curve;
        },
        [](StdCurve& curve) { Rescale(curve, 0, 8, 1, -2, 3); },
        [&](StdCurve& curve, bool completed) {
            EXPECT_EQ(StdImage(curve) == before, !completed);
            EXPECT_TRUE(LockProbe_AreBothFree(curve));
        });
}
