// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Tangents of a curve from those of a composition.

#include "control_test_support.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// Slopes come out of inverted cubics.
constexpr double kSlopeRounding = 1e-9;

// c(t) = t^2 and d(v) = v^2 over even handles, so that d(c(t)) = t^4 with slope 4 t^3.
StdPtr Square()
{
    return Cubic({0, 0}, {2 / 3.0, 0}, {4 / 3.0, 4 / 3.0}, {2, 4});
}
StdPtr WideSquare()
{
    return Cubic({0, 0}, {4 / 3.0, 0}, {8 / 3.0, 16 / 3.0}, {4, 16});
}

// Cubic segments with keys at 0, 1 and 2 on t^4 and flat handles of length 0.25.
StdPtr FlatCurve()
{
    StdPtr curve(
        new HvStdFCurve(Point(0, 0), Point(0.25, 0), Point(0.75, 1), Point(1, 1), kCubic, kCubic));
    curve->AppendBezierCubicSegment(Point(1.25, 1), Point(1.75, 16), Point(2, 16));
    return curve;
}

struct Tangents {
    Point left;
    Point right;
};

Tangents Stored(HvStdFCurve const& curve, double x)
{
    Tangents t;
    curve.GetActualKeyTgtHandles(x, t.left, t.right, 0);
    return t;
}

void ExpectNear(Point const& actual, Point const& expected)
{
    EXPECT_NEAR(actual.x, expected.x, kSlopeRounding);
    EXPECT_NEAR(actual.y, expected.y, kSlopeRounding * 32);
}

}  // namespace

TEST(HvControlOperator_tangents, BecomeTheComposedSlope)
{
    StdPtr const c = Square();
    StdPtr const d = WideSquare();
    StdPtr const curve = FlatCurve();
    EXPECT_EQ(HvControlOperator(*c, *d).AdjustTangents(*curve, 0, 2), 3u);
    ExpectNear(Stored(*curve, 0).right, Point(0.25, 0));
    ExpectNear(Stored(*curve, 1).left, Point(-0.25, -1));
    ExpectNear(Stored(*curve, 1).right, Point(0.25, 1));
    ExpectNear(Stored(*curve, 2).left, Point(-0.25, -8));
}

TEST(HvControlOperator_tangents, OnlyKeysOfTheClosedRangeAreTurnedInEitherOrder)
{
    StdPtr const c = Square();
    StdPtr const d = WideSquare();
    HvControlOperator const op(*c, *d);
    StdPtr curve = FlatCurve();
    EXPECT_EQ(op.AdjustTangents(*curve, 1, 2), 2u);
    EXPECT_EQ(op.AdjustTangents(*FlatCurve(), 2, 1), 2u);
    EXPECT_EQ(op.AdjustTangents(*FlatCurve(), 1.5, 0.5), 1u);
    EXPECT_EQ(op.AdjustTangents(*FlatCurve(), 3, 4), 0u);
    double const inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(op.AdjustTangents(*FlatCurve(), -inf, inf), 3u);
    EXPECT_EQ(op.AdjustTangents(*FlatCurve(), 1, std::nan("")), 0u);
    EXPECT_EQ(op.AdjustTangents(*FlatCurve(), std::nan(""), 1), 0u);
}

TEST(HvControlOperator_tangents, HandleWithoutLengthGetsAThirdOfItsSpan)
{
    StdPtr const curve = FlatCurve();
    curve->SetKeyTgtHandles(1, Point(0, 0), Point(0, 0), 0);
    StdPtr const c = Square();
    StdPtr const d = WideSquare();
    HvControlOperator(*c, *d).AdjustTangents(*curve, 1, 1);
    ExpectNear(Stored(*curve, 1).left, Point(-1 / 3.0, -4 / 3.0));
    ExpectNear(Stored(*curve, 1).right, Point(1 / 3.0, 4 / 3.0));
}

TEST(HvControlOperator_tangents, LockedAndDerivedTangentsStay)
{
    StdPtr const c = Square();
    StdPtr const d = WideSquare();
    HvControlOperator const op(*c, *d);
    for (Curve::KeyConstraint const constraint :
         {Curve::TangentDirectionLocked, Curve::TangentLengthLocked, Curve::FlatTangents,
          Curve::ZeroLengthTangents, Curve::LinearTangents, Curve::AutomaticTangents}) {
        StdPtr const curve = FlatCurve();
        double x = 1;
        curve->SetConstraint(x, constraint, 1, 0);
        Tangents const before = Stored(*curve, 1);
        EXPECT_EQ(op.AdjustTangents(*curve, 0, 2), 2u) << constraint;
        EXPECT_EQ(Stored(*curve, 1).left, before.left) << constraint;
        EXPECT_EQ(Stored(*curve, 1).right, before.right) << constraint;
    }
    StdPtr const readOnly = FlatCurve();
    readOnly->SetReadOnlyConstraint(1);
    EXPECT_EQ(op.AdjustTangents(*readOnly, 0, 2), 0u);
    EXPECT_EQ(Stored(*readOnly, 1).right, Stored(*FlatCurve(), 1).right);
}

// d rises with slope 1 up to 1 and with slope 7 beyond it, c is t.
TEST(HvControlOperator_tangents, BreakOfTheSlopeIsFollowedUnlessContinuityIsLocked)
{
    StdPtr const c = Line(0, 0, 2, 2);
    StdPtr const d = StdCurve({{0, 0, 0, kLinear}, {1, 1, 1, kLinear}, {2, 8, 8, kLinear}});
    HvControlOperator const op(*c, *d);
    StdPtr const locked = FlatCurve();
    StdPtr const free = FlatCurve();
    double x = 1;
    free->UnlockTangentContinuity(x, 0);
    EXPECT_EQ(op.AdjustTangents(*free, 1, 1), 1u);
    ExpectNear(Stored(*free, 1).left, Point(-0.25, -0.25));
    ExpectNear(Stored(*free, 1).right, Point(0.25, 1.75));
    EXPECT_EQ(op.AdjustTangents(*locked, 1, 1), 1u);
    // tan((atan 1 + atan 7) / 2) is 2: the half of 45 and of 81.87 degrees is 63.43 degrees.
    ExpectNear(Stored(*locked, 1).left, Point(-0.25, -0.5));
    ExpectNear(Stored(*locked, 1).right, Point(0.25, 0.5));
}

TEST(HvControlOperator_tangents, LockedLengthsBecomeThoseOfTheShorter)
{
    StdPtr const c = Square();
    StdPtr const d = WideSquare();
    StdPtr const curve = FlatCurve();
    curve->SetKeyTgtHandles(1, Point(-0.25, 0), Point(0.125, 0), 0);
    double x = 1;
    curve->SetConstraint(x, Curve::TangentLengthContinuityLocked, 1, 0);
    HvControlOperator(*c, *d).AdjustTangents(*curve, 1, 1);
    ExpectNear(Stored(*curve, 1).left, Point(-0.125, -0.5));
    ExpectNear(Stored(*curve, 1).right, Point(0.125, 0.5));
}

TEST(HvControlOperator_tangents, OnlyHandlesOfCubicSegmentsAreTurned)
{
    StdPtr const c = Square();
    StdPtr const d = WideSquare();
    StdPtr const curve = FlatCurve();
    curve->SetSegmentKind(1, Curve::Right, kLinear, 0);
    Tangents const before = Stored(*curve, 1);
    EXPECT_EQ(HvControlOperator(*c, *d).AdjustTangents(*curve, 1, 2), 1u);
    ExpectNear(Stored(*curve, 1).left, Point(-0.25, -1));
    EXPECT_EQ(Stored(*curve, 1).right, before.right);
}

TEST(HvControlOperator_tangents, UprightSlopesTurnNothing)
{
    StdPtr const c = Line(0, 0, 2, 2);
    StdPtr const d = Cubic({1, 0}, {1, 2}, {1.5, 2}, {2, 3});
    StdPtr const curve = FlatCurve();
    double x = 1;
    curve->UnlockTangentContinuity(x, 0);
    EXPECT_EQ(HvControlOperator(*c, *d).AdjustTangents(*curve, 1, 1), 1u);
    ExpectNear(Stored(*curve, 1).left, Point(-0.25, 0));
    EXPECT_EQ(Stored(*curve, 1).right, Point(0.25, 0));
}

TEST(HvControlOperator_tangents, UprightOverLevelHasTheSlopeOfTheTwoTogether)
{
    // The cube root starts upright and the cube level: t is what they give together.
    StdPtr const root = Cubic({0, 0}, {0, 1 / 3.0}, {0, 2 / 3.0}, {1, 1});
    StdPtr const cube = Cubic({0, 0}, {1 / 3.0, 0}, {2 / 3.0, 0}, {1, 1});
    StdPtr const curve = FlatCurve();
    EXPECT_EQ(HvControlOperator(*root, *cube).AdjustTangents(*curve, 0, 0), 1u);
    ExpectNear(Stored(*curve, 0).right, Point(0.25, 0.25));
}

TEST(HvControlOperator_tangents, ControllerThatTurnsSeesOneSideOfTheDriven)
{
    // c comes up to 1 at t = 1 and goes back; d has slope 1 below 1 and slope 7 above.
    StdPtr const c = StdCurve({{0, 0, 0, kLinear}, {1, 1, 1, kLinear}, {2, 0, 0, kLinear}});
    StdPtr const d = StdCurve({{0, 0, 0, kLinear}, {1, 1, 1, kLinear}, {2, 8, 8, kLinear}});
    StdPtr const curve = FlatCurve();
    double x = 1;
    curve->UnlockTangentContinuity(x, 0);
    HvControlOperator(*c, *d).AdjustTangents(*curve, 1, 1);
    ExpectNear(Stored(*curve, 1).left, Point(-0.25, -0.25));
    ExpectNear(Stored(*curve, 1).right, Point(0.25, -0.25));
}

TEST(HvControlOperator_tangents, OperatorsOwnCurveMayBeAdjusted)
{
    StdPtr const c = Line(0, 0, 2, 2);
    StdPtr const d = FlatCurve();
    Tangents const before = Stored(*d, 1);
    EXPECT_EQ(HvControlOperator(*c, *d).AdjustTangents(*d, 0, 2), 3u);
    ExpectNear(Stored(*d, 1).left, before.left);
    ExpectNear(Stored(*d, 1).right, before.right);
}

// A composition has the tangents that adjusting would give it.
TEST(HvControlOperator_tangents, OfACompositionStayWhatTheyAre)
{
    StdPtr const c = Cubic({0, 0}, {1, 2}, {1.5, -1}, {3, 3});
    StdPtr const d = Cubic({0, 0}, {0.5, 5}, {2.5, -4}, {3, 3});
    StdPtr const r = Compose(*c, *d, 0, 3, 1e-3);
    StdPtr const adjusted(static_cast<HvStdFCurve*>(r->Clone()));
    EXPECT_EQ(HvControlOperator(*c, *d).AdjustTangents(*adjusted, 0, 3), r->GetNumKeys());
    for (double t = 0; t <= 3; t += 0.01) {
        EXPECT_NEAR(adjusted->Eval(t, 0), r->Eval(t, 0), 1e-6) << t;
    }
}
