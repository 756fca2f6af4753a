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
    // A part of the keys.
    ExpectRefused(curve, [&] { return Rescale(curve, 0, 5, 0, 2, 0); });
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
