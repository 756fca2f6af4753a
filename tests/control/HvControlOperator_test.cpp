// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluation and composition: cases worked by hand, then random curves against evaluation of one
// curve after the other.

#include "control_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

// Rounding of values of a few units over a few operations.
constexpr double kRounding = 1e-13;

struct KeyRow {
    double x;
    double left;
    double right;
};

std::vector<KeyRow> Keys(HvStdFCurve const& curve)
{
    std::vector<KeyRow> rows;
    for (unsigned int i = 0; i < curve.GetNumKeys(); ++i) {
        KeyRow row{};
        curve.GetKeyParameter(i, row.x);
        curve.GetKeyValuesByIndex(i, row.left, row.right);
        rows.push_back(row);
    }
    return rows;
}

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

Curve::FSKind KindAfter(HvStdFCurve const& curve, unsigned int i)
{
    Curve::FSKind kind = kConstant;
    curve.GetSegmentKindByIndex(i, Curve::Right, kind);
    return kind;
}

// Whether every cubic segment is a function of the parameter, and the keys rise.
bool IsValid(HvStdFCurve const& curve)
{
    std::vector<KeyRow> const rows = Keys(curve);
    for (unsigned int i = 0; i + 1 < rows.size(); ++i) {
        Point left;
        Point right;
        Point unused;
        curve.GetEvaluatedKeyTgtHandlesByIndex(i, unused, right);
        curve.GetEvaluatedKeyTgtHandlesByIndex(i + 1, left, unused);
        Point const P0(rows[i].x, rows[i].right);
        Point const P3(rows[i + 1].x, rows[i + 1].left);
        if (!(P0.x < P3.x) || (KindAfter(curve, i) == kCubic &&
                               !HvStdFCurve_IsCubicSegmentValid(P0, P0 + right, P3 + left, P3))) {
            return false;
        }
    }
    return true;
}

// The greatest difference at even samples of [from, to].
double WorstDifference(HvStdFCurve const& r, HvControlOperator const& op, double from, double to,
                       int n)
{
    double worst = 0;
    for (int k = 0; k <= n; ++k) {
        double const t = from + (to - from) * k / n;
        double const e = std::fabs(r.Eval(t, 0) - op.Eval(t));
        worst = e <= worst ? worst : e;
    }
    return worst;
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

// x(s) all but stands still in the middle, where y runs on: a step a ten-thousandth wide between
// samples that are far apart. Found by a random pair, November 2026.
TEST(HvControlOperator_compose, SteepPlaceInsideASegmentIsFollowed)
{
    StdPtr const steep = Cubic({0, 0}, {0.9999, 0.2}, {0.0001, 0.8}, {1, 1});
    StdPtr const d = Cubic({0, 0}, {0.2, 2}, {0.8, -1}, {1, 1});
    HvControlOperator const op(*steep, *d);
    StdPtr const r = Compose(*steep, *d, 0, 1, 0.01);
    EXPECT_LE(WorstDifference(*r, op, 0, 1, 5000), 0.01);
    EXPECT_LE(WorstDifference(*r, op, 0.499, 0.501, 5000), 0.01);
    StdPtr const reversed = Compose(*d, *steep, 0, 1, 0.01);
    EXPECT_LE(WorstDifference(*reversed, HvControlOperator(*d, *steep), 0, 1, 5000), 0.01);
}

// The tangent of d that the controller's level start would stretch without end. Found by a random
// pair, November 2026.
TEST(HvControlOperator_compose, LevelControllerOverAnUprightDrivenIsNotRefused)
{
    StdPtr const level = Cubic({0, 0}, {1, 0}, {2, 3}, {3, 3});
    StdPtr const upright = Cubic({0, 0}, {0, 2}, {1, 3}, {3, 3});
    StdPtr const r = Compose(*level, *upright, 0, 3, 1e-3);
    ASSERT_NE(r, nullptr);
    EXPECT_LE(WorstDifference(*r, HvControlOperator(*level, *upright), 0, 3, 5000), 1e-3);
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

// How many keys a smooth composition needs. Cubics at even cuts with tangents by the chain rule and
// handles at the thirds are the yardstick: the fit must not need more than two thirds of them.
TEST(HvControlOperator_compose, TakesFewKeys)
{
    StdPtr const c = Cubic({0, 0}, {1, 2}, {1.5, -1}, {3, 3});
    StdPtr const d = Cubic({0, 0}, {0.5, 5}, {2.5, -4}, {3, 3});
    HvControlOperator const op(*c, *d);
    for (double const tolerance : {1e-2, 1e-4, 1e-6}) {
        StdPtr const r = Compose(*c, *d, 0, 3, tolerance);
        EXPECT_LE(WorstDifference(*r, op, 0, 3, 5000), tolerance);

        unsigned int even = 1;
        for (double worst = 1; worst > tolerance && even < 2000; ++even) {
            HvStdFCurve hermite(0, op.Eval(0), op.Eval(0), kCubic, kCubic);
            double const h = 3.0 / even;
            auto const slope = [&](double t) {
                double const e = 1e-5;
                return (op.Eval(std::min(t + e, 3.0)) - op.Eval(std::max(t - e, 0.0))) /
                       (std::min(t + e, 3.0) - std::max(t - e, 0.0));
            };
            for (unsigned int k = 0; k < even; ++k) {
                double const t0 = h * k;
                double const t1 = k + 1 < even ? h * (k + 1) : 3;
                hermite.AppendBezierCubicSegment(Point(t0 + h / 3, op.Eval(t0) + slope(t0) * h / 3),
                                                 Point(t1 - h / 3, op.Eval(t1) - slope(t1) * h / 3),
                                                 Point(t1, op.Eval(t1)));
            }
            worst = WorstDifference(hermite, op, 0, 3, 600);
        }
        EXPECT_LE(3 * r->GetNumKeys(), 2 * even) << tolerance;
    }
}

// Random curves of every kind, every extrapolation, jumps, constraints; beyond the keys of both.
TEST(HvControlOperator_random, IsWithinToleranceEverywhereAndValid)
{
    for (unsigned int seed = 0; seed < 400; ++seed) {
        CurveMaker make(seed);
        CurvePtr const c = make.Any(6, -2, 8, -3, 7);
        CurvePtr const d = make.Any(6, -2, 6, -5, 5);
        double const tolerance = std::pow(10, -make.Real(1, 7));
        StdPtr const r = Compose(*c, *d, -5, 12, tolerance);
        ASSERT_NE(r, nullptr) << seed;
        EXPECT_TRUE(IsValid(*r)) << seed;
        EXPECT_LE(WorstDifference(*r, HvControlOperator(*c, *d), -5, 12, 2000), tolerance) << seed;
    }
}

// Close to every key of the result, on both sides, where jumps and turns are.
TEST(HvControlOperator_random, IsWithinToleranceBesideItsKeys)
{
    constexpr double kBeside = 1e-7;
    for (unsigned int seed = 1000; seed < 1300; ++seed) {
        CurveMaker make(seed);
        CurvePtr const c = make.Any(6, -2, 8, -3, 7);
        CurvePtr const d = make.Any(6, -2, 6, -5, 5);
        StdPtr const r = Compose(*c, *d, -5, 12, 1e-4);
        ASSERT_NE(r, nullptr) << seed;
        HvControlOperator const op(*c, *d);
        for (KeyRow const& key : Keys(*r)) {
            for (double const t : {key.x - kBeside, key.x + kBeside}) {
                if (t > -5 && t < 12) {
                    EXPECT_LE(std::fabs(r->Eval(t, 0) - op.Eval(t)), 1e-4) << seed << " at " << t;
                }
            }
        }
    }
}
