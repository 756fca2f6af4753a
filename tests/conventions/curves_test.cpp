// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The sections on curves and operations of docs/conventions.md, line by line.

#include <hv/hv.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

// Keys at 0, 1 and 2 with the values 0, 10 and 5, joined by lines.
HvStdFCurve ThreeKeys()
{
    HvPoint2dArray points;
    points.Add(HvPoint2<double>(0, 0));
    points.Add(HvPoint2<double>(1, 10));
    points.Add(HvPoint2<double>(2, 5));
    return HvStdFCurve(points, HvStdFCurve::ApproxLinearFitC0, 1e-3, HvBaseFCurve::ConstantSegment,
                       HvBaseFCurve::ConstantSegment);
}

// One key at 1 that jumps from 3 to 7.
HvStdFCurve Jump()
{
    return HvStdFCurve(1, 3, 7, HvBaseFCurve::ConstantSegment, HvBaseFCurve::ConstantSegment);
}

}  // namespace

TEST(Conventions_curves, KeysAscendStrictly)
{
    HvStdFCurve const curve = ThreeKeys();
    HvDoubleArray parameters;
    ASSERT_EQ(curve.GetAllKeyParameters(parameters), 3u);
    EXPECT_LT(parameters[0], parameters[1]);
    EXPECT_LT(parameters[1], parameters[2]);
}

TEST(Conventions_curves, TheLeftValueIsReachedAndTheRightOneLeaves)
{
    HvStdFCurve const curve = Jump();
    EXPECT_EQ(curve.Eval(0.999, 0), 3.0);
    EXPECT_EQ(curve.EvalLeft(1, 0), 3.0);
    EXPECT_EQ(curve.Eval(1, 0), 7.0);
    EXPECT_EQ(curve.Eval(1.001, 0), 7.0);
}

TEST(Conventions_curves, AKeysKindIsThatOfTheSegmentToItsRight)
{
    HvStdFCurve const line(0, 0, 1, 1, HvBaseFCurve::ConstantSegment, HvBaseFCurve::CubicSegment);
    HvBaseFCurve::FSKind left{};
    HvBaseFCurve::FSKind right{};
    ASSERT_EQ(line.GetSegmentKindsByIndex(0, left, right), 1);
    EXPECT_EQ(left, HvBaseFCurve::ConstantSegment);
    EXPECT_EQ(right, HvBaseFCurve::LinearSegment);
    ASSERT_EQ(line.GetSegmentKindsByIndex(1, left, right), 1);
    EXPECT_EQ(right, HvBaseFCurve::CubicSegment);
}

TEST(Conventions_curves, HandlesAreVectorsFromTheKey)
{
    HvStdFCurve const curve({1, 2}, {2, 5}, {3, 5}, {4, 2}, HvBaseFCurve::CubicSegment,
                            HvBaseFCurve::CubicSegment);
    HvPoint2<double> handle;
    ASSERT_EQ(curve.GetActualKeyTgtHandle(1, HvBaseFCurve::Right, handle, 0), 1);
    EXPECT_EQ(handle, HvPoint2<double>(1, 3));
    ASSERT_EQ(curve.GetActualKeyTgtHandle(4, HvBaseFCurve::Left, handle, 0), 1);
    EXPECT_EQ(handle, HvPoint2<double>(-1, 3));
}

TEST(Conventions_curves, AParameterWithinATrillionthOfAKeyIsTheKey)
{
    HvStdFCurve const curve = Jump();
    EXPECT_EQ(curve.Eval(1 - 0.9e-12, 0), 7.0);
    EXPECT_EQ(curve.Eval(1 - 1.1e-12, 0), 3.0);
}

TEST(Conventions_curves, TheNearestKeyIsFoundAndTheEarliestOnATie)
{
    HvStdFCurve const curve = ThreeKeys();
    double parameter = 0.75;
    ASSERT_EQ(curve.GetNearestKeyParameterInCenteredInterval(parameter, 1), 1);
    EXPECT_EQ(parameter, 1.0);
    parameter = 0.5;
    ASSERT_EQ(curve.GetNearestKeyParameterInCenteredInterval(parameter, 1), 1);
    EXPECT_EQ(parameter, 0.0);
}

TEST(Conventions_curves, IntervalsAreClosedUnlessOpen)
{
    HvStdFCurve const curve = ThreeKeys();
    HvDoubleArray parameters;
    EXPECT_EQ(curve.GetKeyParameters(0, 2, parameters, 0, 0, 0), 3u);
    EXPECT_EQ(curve.GetKeyParameters(0, 2, parameters, 1, 0, 0), 2u);
    EXPECT_EQ(curve.GetKeyParameters(0, 2, parameters, 1, 1, 0), 1u);
}

TEST(Conventions_curves, ExtrapolationIsConstantAtFirst)
{
    HvStdFCurve const curve = ThreeKeys();
    EXPECT_EQ(curve.GetExtrapolationMethod(), HvBaseFCurve::ConstantExtrapolation);
    EXPECT_EQ(curve.Eval(-100, 0), 0.0);
    EXPECT_EQ(curve.Eval(100, 0), 5.0);
}

TEST(Conventions_operations, ARefusalIsZeroAndChangesNothing)
{
    HvStdFCurve curve = ThreeKeys();
    EXPECT_EQ(curve.SetExtrapolationMethod(HvBaseFCurve::CycleExtrapolation), 1);
    EXPECT_EQ(curve.SetExtrapolationMethod(static_cast<HvBaseFCurve::ExtrapolationMethod>(5)), 0);
    EXPECT_EQ(curve.GetExtrapolationMethod(), HvBaseFCurve::CycleExtrapolation);
    double parameter = 42;
    EXPECT_EQ(curve.GetKeyParameter(3, parameter), 0);
    EXPECT_EQ(parameter, 42.0);
}

TEST(Conventions_operations, ResultsAreAppended)
{
    HvStdFCurve const curve = ThreeKeys();
    HvDoubleArray parameters;
    parameters.Add(-1);
    EXPECT_EQ(curve.GetAllKeyParameters(parameters), 3u);
    ASSERT_EQ(parameters.Size(), 4u);
    EXPECT_EQ(parameters[0], -1.0);
    EXPECT_EQ(parameters[3], 2.0);
}

TEST(Conventions_operations, ACloneIsTheCallersToDelete)
{
    std::unique_ptr<HvBaseFCurve> clone;
    {
        HvStdFCurve const curve = ThreeKeys();
        clone.reset(curve.Clone());
    }
    EXPECT_EQ(clone->Eval(0.5, 0), 5.0);
}
