// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluation and composition, worked by hand.

#include "control_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

// Rounding of values of a few units over a few operations.
constexpr double kRounding = 1e-13;

void ExpectKeys(HvStdFCurve const& curve, std::vector<KeyRow> const& expected)
{
    std::vector<KeyRow> const rows = Keys(curve);
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_NEAR(rows[i].x, expected[i].x, kRounding) << "key " << i;
        EXPECT_NEAR(rows[i].left, expected[i].left, kRounding) << "key " << i;
        EXPECT_NEAR(rows[i].right, expected[i].right, kRounding) << "key " << i;
    }
}

// A curve of a kind that is known from evaluation alone: waves through its keys.
class WavyCurve : public HvStdFCurve {
public:
    explicit WavyCurve(double last) : HvStdFCurve(0, kConstant)
    {
        for (double x = 0; x <= last; x += 1) {
            CreateKey(x, Wave(x));
        }
    }
    Kind GetKind() const override { return Quaternion; }
    HvBaseFCurve* Clone() const override { return new WavyCurve(*this); }
    double EvalNoLock(double x, int) const override
    {
        double last = 0;
        GetLargestKeyParameter(last);
        return Wave(std::min(std::max(x, 0.0), last));
    }
    static double Wave(double x) { return 2 * std::sin(3 * x) + x; }
};

}  // namespace

TEST(HvControlOperator_eval, IsTheDrivenCurveAtTheControllersValue)
{
    StdPtr const c = Line(0, 0, 10, 5);
    StdPtr const d = Line(0, 100, 5, 200);
    HvControlOperator const op(*c, *d);
    EXPECT_EQ(op.Eval(-3), 100);
    EXPECT_EQ(op.Eval(4), 140);
    EXPECT_EQ(op.Eval(12), 200);
}

TEST(HvControlOperator_eval, TakesTheRightHandValueAtJumps)
{
    StdPtr const c = StdCurve({{0, 1, 1, kConstant}, {1, 1, 2, kConstant}, {2, 2, 3, kConstant}});
    StdPtr const d = StdCurve({{1, 5, 5, kConstant}, {2, 5, 6, kConstant}, {3, 6, 9, kConstant}});
    HvControlOperator const op(*c, *d);
    EXPECT_EQ(op.Eval(0.5), 5);
    EXPECT_EQ(op.Eval(1), 6);
    EXPECT_EQ(op.Eval(2), 9);
}

TEST(HvControlOperator_eval, ManyIsEvalBitForBitAlsoInPlace)
{
    CurveMaker make(7);
    CurvePtr const c = make.Standard(6, 0, 5, 0, 5);
    CurvePtr const d = make.Standard(6, 0, 5, 0, 5);
    HvControlOperator const op(*c, *d);
    std::vector<double> parameters(101);
    for (std::size_t k = 0; k < parameters.size(); ++k) {
        parameters[k] = 0.07 * static_cast<double>(k) - 1;
    }
    std::vector<double> values(parameters.size());
    op.EvalMany(parameters.data(), 101, values.data());
    for (std::size_t k = 0; k < values.size(); ++k) {
        EXPECT_EQ(values[k], op.Eval(parameters[k]));
    }
    op.EvalMany(parameters.data(), 101, parameters.data());
    EXPECT_EQ(parameters, values);
    op.EvalMany(nullptr, 0, nullptr);
}

TEST(HvControlOperator_compose, LineOverLineIsALine)
{
    StdPtr const r = Compose(*Line(0, 0, 10, 5), *Line(0, 100, 5, 200), 2, 8);
    ExpectKeys(*r, {{2, 120, 120}, {8, 180, 180}});
    EXPECT_EQ(KindAfter(*r, 0), kLinear);
    EXPECT_EQ(r->Eval(1, 0), 120);
    EXPECT_EQ(r->Eval(9, 0), 180);
}

TEST(HvControlOperator_compose, EndsMayBeGivenInEitherOrder)
{
    StdPtr const r = Compose(*Line(0, 0, 10, 5), *Line(0, 100, 5, 200), 8, 2);
    ExpectKeys(*r, {{2, 120, 120}, {8, 180, 180}});
}

TEST(HvControlOperator_compose, OfOneMomentHasOneKey)
{
    StdPtr const r = Compose(*Line(0, 0, 10, 5), *Line(0, 100, 5, 200), 4, 4);
    ExpectKeys(*r, {{4, 140, 140}});
}

TEST(HvControlOperator_compose, KeysStandAtTheControllersKeysAndWhereItCrossesThoseOfTheDriven)
{
    // c passes 1 at t = 2.5 on its way to 2 at t = 5, and 3 at t = 7.
    StdPtr const c = StdCurve({{0, 0, 0, kLinear}, {5, 2, 2, kLinear}, {9, 4, 4, kLinear}});
    StdPtr const d = StdCurve(
        {{0, 0, 0, kLinear}, {1, 10, 10, kLinear}, {3, 0, 0, kLinear}, {4, 8, 8, kLinear}});
    StdPtr const r = Compose(*c, *d, 0, 9);
    ExpectKeys(*r, {{0, 0, 0}, {2.5, 10, 10}, {5, 5, 5}, {7, 0, 0}, {9, 8, 8}});
}

TEST(HvControlOperator_compose, KeysStandWhereTheControllerTurns)
{
    // y(s) = 3 s (1 - s) over an even x turns at t = 0.5 with the value 0.75.
    StdPtr const c = Cubic({0, 0}, {1 / 3.0, 1}, {2 / 3.0, 1}, {1, 0});
    StdPtr const d = Line(0, 0, 1, 100);
    StdPtr const r = Compose(*c, *d, 0, 1);
    ExpectKeys(*r, {{0, 0, 0}, {0.5, 75, 75}, {1, 0, 0}});
    EXPECT_EQ(KindAfter(*r, 0), kCubic);
    HvControlOperator const op(*c, *d);
    EXPECT_LE(WorstDifference(*r, op, 0, 1, 1000), 1e-7);  // evaluation solves to 1e-9 of 75 / 0.5
}

TEST(HvControlOperator_compose, CubicOverALineIsTheCubicItself)
{
    StdPtr const c = Line(0, 0, 4, 2);
    StdPtr const d = Cubic({0, 1}, {1, 3}, {1.5, -2}, {2, 0});
    StdPtr const r = Compose(*c, *d, 0, 4, 1e-9);
    ExpectKeys(*r, {{0, 1, 1}, {4, 0, 0}});
    Point left;
    Point right;
    r->GetEvaluatedKeyTgtHandlesByIndex(0, left, right);
    EXPECT_EQ(right, Point(2, 2));
    r->GetEvaluatedKeyTgtHandlesByIndex(1, left, right);
    EXPECT_EQ(left, Point(-1, -2));
}

TEST(HvControlOperator_compose, CubicWalkedBackwardsIsTheCubicMirrored)
{
    StdPtr const c = Line(0, 2, 4, 0);
    StdPtr const d = Cubic({0, 1}, {1, 3}, {1.5, -2}, {2, 0});
    StdPtr const r = Compose(*c, *d, 0, 4, 1e-9);
    ExpectKeys(*r, {{0, 0, 0}, {4, 1, 1}});
    Point left;
    Point right;
    r->GetEvaluatedKeyTgtHandlesByIndex(0, left, right);
    EXPECT_EQ(right, Point(1, -2));
    r->GetEvaluatedKeyTgtHandlesByIndex(1, left, right);
    EXPECT_EQ(left, Point(-2, 2));
}

TEST(HvControlOperator_compose, LineOverACubicIsTheCubicScaled)
{
    StdPtr const c = Cubic({0, 0}, {2, 0}, {2, 3}, {3, 3});
    StdPtr const r = Compose(*c, *Line(0, 0, 3, 30), 0, 3, 1e-9);
    ExpectKeys(*r, {{0, 0, 0}, {3, 30, 30}});
    Point left;
    Point right;
    r->GetEvaluatedKeyTgtHandlesByIndex(0, left, right);
    EXPECT_EQ(right, Point(2, 0));
    r->GetEvaluatedKeyTgtHandlesByIndex(1, left, right);
    EXPECT_EQ(left, Point(-1, 0));
}

TEST(HvControlOperator_compose, CubicOverACubicHasTangentsByTheChainRule)
{
    // Slope 1 of c at 0, and 3 of d at 0; at the end 2 of c and -1 of d.
    StdPtr const c = Cubic({0, 0}, {1, 1}, {2, 1}, {3, 3});
    StdPtr const d = Cubic({0, 0}, {1, 3}, {2, 3}, {3, 2});
    StdPtr const r = Compose(*c, *d, 0, 3, 1e-4);
    unsigned int const last = r->GetNumKeys() - 1;
    Point left;
    Point right;
    r->GetEvaluatedKeyTgtHandlesByIndex(0, left, right);
    EXPECT_NEAR(right.y / right.x, 3, 1e-9);
    r->GetEvaluatedKeyTgtHandlesByIndex(last, left, right);
    EXPECT_NEAR(left.y / left.x, -2, 1e-9);
    for (unsigned int i = 1; i < last; ++i) {
        EXPECT_EQ(r->IsTangentContinuityLockedByIndex(i), 1) << i;
    }
}

TEST(HvControlOperator_compose, ContinuityIsUnlockedWhereTangentsBreak)
{
    StdPtr const c = Cubic({0, 0}, {1, 1}, {2, 1}, {3, 3});
    StdPtr const d(
        new HvStdFCurve(Point(0, 0), Point(0.5, 2), Point(1, 2), Point(1.5, 2), kCubic, kCubic));
    ASSERT_EQ(d->AppendBezierCubicSegment(Point(2, 5), Point(2.5, 4), Point(3, 4)), 1);
    StdPtr const r = Compose(*c, *d, 0, 3, 1e-3);
    double const t = 0.5 * 3 + 0.5;  // somewhere near; c passes 1.5 once
    unsigned int numBroken = 0;
    for (unsigned int i = 1; i + 1 < r->GetNumKeys(); ++i) {
        numBroken += r->IsTangentContinuityLockedByIndex(i) == 0;
    }
    EXPECT_EQ(numBroken, 1u);
    EXPECT_LE(std::fabs(r->Eval(t, 0) - HvControlOperator(*c, *d).Eval(t)), 1e-3);
}

TEST(HvControlOperator_compose, JumpOfTheControllerIsKept)
{
    StdPtr const c = StdCurve({{0, 0, 0, kLinear}, {1, 1, 3, kLinear}, {2, 2, 2, kLinear}});
    StdPtr const r = Compose(*c, *Line(0, 0, 10, 100), 0, 2);
    ExpectKeys(*r, {{0, 0, 0}, {1, 10, 30}, {2, 20, 20}});
}

TEST(HvControlOperator_compose, JumpOfTheDrivenIsKeptInBothDirections)
{
    StdPtr const d = StdCurve({{0, 0, 0, kLinear}, {1, 4, 7, kLinear}, {2, 9, 9, kLinear}});
    ExpectKeys(*Compose(*Line(0, 0, 2, 2), *d, 0, 2), {{0, 0, 0}, {1, 4, 7}, {2, 9, 9}});
    ExpectKeys(*Compose(*Line(0, 2, 2, 0), *d, 0, 2), {{0, 9, 9}, {1, 7, 4}, {2, 0, 0}});
}

TEST(HvControlOperator_compose, TurningOnAJumpStaysOnItsSide)
{
    // c comes up to the jump at 1 and goes back: the values beyond it are never seen.
    StdPtr const c = StdCurve({{0, 0, 0, kLinear}, {1, 1, 1, kLinear}, {2, 0, 0, kLinear}});
    StdPtr const d = StdCurve({{0, 0, 0, kLinear}, {1, 4, 7, kLinear}, {2, 9, 9, kLinear}});
    ExpectKeys(*Compose(*c, *d, 0, 2), {{0, 0, 0}, {1, 4, 4}, {2, 0, 0}});
}

TEST(HvControlOperator_compose, EndsOnTheRightHandValue)
{
    StdPtr const d = StdCurve({{0, 0, 0, kLinear}, {1, 4, 7, kLinear}, {2, 9, 9, kLinear}});
    ExpectKeys(*Compose(*Line(0, 0, 1, 1), *d, 0, 1), {{0, 0, 0}, {1, 4, 7}});
}

TEST(HvControlOperator_compose, ConstantControllerHoldsTheDrivenValue)
{
    HvStdFCurve const c(1.5, kConstant);
    StdPtr const r = Compose(c, *Line(0, 0, 2, 20), -1, 4);
    ExpectKeys(*r, {{-1, 15, 15}, {4, 15, 15}});
    EXPECT_EQ(KindAfter(*r, 0), kConstant);
}

TEST(HvControlOperator_compose, ControllerBeyondTheDrivenKeysFollowsTheExtrapolation)
{
    StdPtr const c = Line(0, -2, 6, 4);
    ExpectKeys(*Compose(*c, *Line(0, 0, 1, 10), 0, 6),
               {{0, 0, 0}, {2, 0, 0}, {3, 10, 10}, {6, 10, 10}});
    ExpectKeys(*Compose(*c, *Line(0, 0, 1, 10, Curve::LinearExtrapolation), 0, 6),
               {{0, -20, -20}, {2, 0, 0}, {3, 10, 10}, {6, 40, 40}});
    ExpectKeys(*Compose(*c, *Line(0, 0, 2, 10, Curve::CycleExtrapolation), 0, 6),
               {{0, 0, 0}, {2, 10, 0}, {4, 10, 0}, {6, 10, 0}});
    ExpectKeys(*Compose(*c, *Line(0, 0, 2, 10, Curve::RelativeCycleExtrapolation), 0, 6),
               {{0, -10, -10}, {2, 0, 0}, {4, 10, 10}, {6, 20, 20}});
}

TEST(HvControlOperator_compose, ControllerBeyondItsOwnKeysFollowsItsExtrapolation)
{
    StdPtr const d = Line(-10, -10, 10, 10);
    ExpectKeys(*Compose(*Line(0, 0, 1, 1), *d, -1, 2),
               {{-1, 0, 0}, {0, 0, 0}, {1, 1, 1}, {2, 1, 1}});
    ExpectKeys(*Compose(*Line(0, 0, 1, 1, Curve::LinearExtrapolation), *d, -1, 2),
               {{-1, -1, -1}, {0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
    ExpectKeys(*Compose(*Line(0, 0, 1, 1, Curve::CycleExtrapolation), *d, -1, 2),
               {{-1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {2, 1, 0}});
    ExpectKeys(*Compose(*Line(0, 0, 1, 1, Curve::RelativeCycleExtrapolation), *d, -1, 2),
               {{-1, -1, -1}, {0, 0, 0}, {1, 1, 1}, {2, 2, 2}});
}

TEST(HvControlOperator_compose, SteppedCurvesGiveConstantSegments)
{
    HvBooleanFCurve switched(false);
    switched.CreateKey(0, 0);
    switched.CreateKey(1, 1);
    switched.CreateKey(3, 0);
    StdPtr const slope = Line(0, 0, 8, 4);

    StdPtr const driven = Compose(*slope, switched, 0, 8);
    ExpectKeys(*driven, {{0, 0, 0}, {2, 0, 1}, {6, 1, 0}, {8, 0, 0}});
    StdPtr const driving = Compose(switched, *slope, 0, 4);
    ExpectKeys(*driving, {{0, 0, 0}, {1, 0, 0.5}, {3, 0.5, 0}, {4, 0, 0}});
    for (StdPtr const& r : {std::cref(driven), std::cref(driving)}) {
        for (unsigned int i = 0; i + 1 < r->GetNumKeys(); ++i) {
            EXPECT_EQ(KindAfter(*r, i), kConstant);
        }
    }
}

TEST(HvControlOperator_compose, PlateauOfTheDrivenHasNoKeysAtTurnsAndCrossings)
{
    // c turns at 0.5 and crosses the key at 0.5 twice, all while d holds 3.
    StdPtr const c = Cubic({0, 0}, {1 / 3.0, 1}, {2 / 3.0, 1}, {1, 0});
    StdPtr const d = StdCurve({{0, 3, 3, kConstant}, {0.5, 3, 3, kConstant}, {9, 3, 3, kConstant}});
    ExpectKeys(*Compose(*c, *d, 0, 1), {{0, 3, 3}, {1, 3, 3}});
}

TEST(HvControlOperator_compose, SourcesAndUserDataStayAsTheyWere)
{
    StdPtr const c = Cubic({0, 0}, {1, 1}, {2, 1}, {3, 3});
    c->SetConstraint(*std::make_unique<double>(0.0), Curve::AutomaticTangents, 1, 0);
    c->SetConstraint(*std::make_unique<double>(0.0), Curve::FlatAtExtremum, 1, 0);
    c->SetReadOnlyConstraint(1);
    std::vector<unsigned char> before(c->GetBufferSize());
    c->WriteToBuffer(before.data());
    StdPtr const r = Compose(*c, *c, 0, 3);
    std::vector<unsigned char> after(c->GetBufferSize());
    c->WriteToBuffer(after.data());
    EXPECT_EQ(before, after);
    EXPECT_EQ(r->IsReadOnly(), 0);
    EXPECT_EQ(r->GetExtrapolationMethod(), Curve::ConstantExtrapolation);
}

TEST(HvControlOperator_compose, CurveOverItselfIsComposedToo)
{
    StdPtr const c = Cubic({0, 0}, {1, 1}, {2, 1}, {3, 3});
    StdPtr const r = Compose(*c, *c, 0, 3, 1e-4);
    EXPECT_LE(WorstDifference(*r, HvControlOperator(*c, *c), 0, 3, 2000), 1e-4);
}

TEST(HvControlOperator_compose, UprightTangentsAreFollowed)
{
    // Both curves leave upright and arrive flat: y = x^(1/2) near 0, and the composition x^(1/4).
    StdPtr const root = Cubic({0, 0}, {0, 2 / 3.0}, {1 / 3.0, 1}, {1, 1});
    StdPtr const r = Compose(*root, *root, 0, 1, 1e-5);
    HvControlOperator const op(*root, *root);
    EXPECT_LE(WorstDifference(*r, op, 0, 1, 5000), 1e-5);
    EXPECT_LE(WorstDifference(*r, op, 0, 1e-3, 5000), 1e-5);
    EXPECT_TRUE(IsValid(*r));
}

TEST(HvControlOperator_compose, CurveThatIsOnlyKnownFromEvaluationIsFitted)
{
    WavyCurve const wavy(4);
    StdPtr const slope = Cubic({0, 0}, {1, 2}, {2, 2}, {4, 4});
    StdPtr const driven = Compose(*slope, wavy, -1, 5, 1e-4);
    EXPECT_LE(WorstDifference(*driven, HvControlOperator(*slope, wavy), -1, 5, 5000), 1e-4);
    StdPtr const driving = Compose(wavy, *slope, -1, 5, 1e-4);
    EXPECT_LE(WorstDifference(*driving, HvControlOperator(wavy, *slope), -1, 5, 5000), 1e-4);
    EXPECT_TRUE(IsValid(*driven));
    EXPECT_TRUE(IsValid(*driving));
    EXPECT_LE(driven->GetNumKeys(), 60u);
    EXPECT_LE(driving->GetNumKeys(), 60u);
}
