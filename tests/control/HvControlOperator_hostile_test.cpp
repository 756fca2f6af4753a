// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The control operator under numbers that nobody means, and without memory.

#include "control_test_support.h"

#include "../support/allocation_failure.h"
#include "../support/lock_probe.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kDenormal = std::numeric_limits<double>::denorm_min();

double const kNumbers[] = {0,    -0.0,      kDenormal, -kDenormal,   kMax,  -kMax,
                           kInf, -kInf,     kNaN,      2147483648.0, 1e-12, 9007199254740992.0,
                           1,    1 + 1e-15, -1e300,    0.1};

/// Curves of extreme keys: tiny and huge ranges, steep and flat, with every extrapolation.
std::vector<CurvePtr> ExtremeCurves()
{
    std::vector<CurvePtr> curves;
    for (int method = 1; method <= 4; ++method) {
        auto const m = static_cast<Curve::ExtrapolationMethod>(method);
        curves.push_back(StdCurve({{0, 0, 0, kCubic}, {1, 1, 1, kCubic}}, m));
        curves.push_back(StdCurve({{0, 0, 5, kLinear}, {kDenormal, 1, 1, kCubic}}, m));
        curves.push_back(StdCurve({{0, -1e-300, 1e-300, kCubic}, {1e-300, 1, 2, kCubic}}, m));
        curves.push_back(
            StdCurve({{-1e300, -1e300, 1e300, kCubic}, {1e300, 1e300, 0, kLinear}}, m));
        curves.push_back(StdCurve({{-1, kMax, -kMax, kLinear}, {1, kMax, -kMax, kCubic}}, m));
        curves.push_back(
            StdCurve({{0, 0, 0, kCubic}, {1e-13, 3, 0, kCubic}, {2e-13, 1, 1, kCubic}}, m));
        curves.push_back(StdCurve({{1e15, 0, 0, kCubic}, {1e15 + 1, 1, 1, kCubic}}, m));
    }
    curves.emplace_back(new HvStdFCurve(kMax, kConstant));
    curves.emplace_back(new HvIntegerFCurve(2147483647));
    return curves;
}

}  // namespace

TEST(HvControlOperator_hostile, ArgumentsThatAreNoRangeAreRefused)
{
    StdPtr const c = Line(0, 0, 1, 1);
    for (double const bad : {kNaN, kInf, -kInf}) {
        EXPECT_EQ(Compose(*c, *c, bad, 1, 0.1), nullptr);
        EXPECT_EQ(Compose(*c, *c, 0, bad, 0.1), nullptr);
    }
    for (double const bad : {kNaN, -kInf, -1.0, 0.0, -0.0}) {
        EXPECT_EQ(Compose(*c, *c, 0, 1, bad), nullptr);
    }
    EXPECT_EQ(Compose(*c, *c, -kMax, kMax, 0.1), nullptr);
    EXPECT_NE(Compose(*c, *c, 0, 1, kInf), nullptr);
    EXPECT_NE(Compose(*c, *c, 0, 1, kDenormal), nullptr);
}

TEST(HvControlOperator_hostile, AnyArgumentsEnd)
{
    StdPtr const c = StdCurve({{0, 0, 0, kCubic}, {1, 2, 0, kCubic}, {3, 1, 1, kCubic}},
                              Curve::LinearExtrapolation);
    StdPtr const d = StdCurve({{0, 0, 0, kCubic}, {1, 2, 0, kCubic}, {3, 1, 1, kCubic}});
    HvControlOperator const op(*c, *d);
    for (double const from : kNumbers) {
        op.Eval(from);
        for (double const to : kNumbers) {
            StdPtr const r = Compose(*c, *d, from, to, 1e-3);
            StdPtr const adjusted(static_cast<HvStdFCurve*>(d->Clone()));
            op.AdjustTangents(*adjusted, from, to);
            if (r != nullptr) {
                EXPECT_GE(r->GetNumKeys(), 1u);
            }
        }
    }
}

TEST(HvControlOperator_hostile, ExtremeCurvesEnd)
{
    std::vector<CurvePtr> const curves = ExtremeCurves();
    unsigned int refused = 0;
    for (CurvePtr const& c : curves) {
        for (CurvePtr const& d : curves) {
            HvControlOperator const op(*c, *d);
            op.Eval(0.5);
            for (double const to : {1.0, 2e-13, 1e16}) {
                try {
                    Compose(*c, *d, -0.5, to, 1e-3);
                } catch (std::bad_alloc const&) {
                    ++refused;
                }
            }
        }
    }
    EXPECT_GT(refused, 0u);
}

TEST(HvControlOperator_hostile, CyclesBeyondWhatAnArrayHoldsAreRefused)
{
    StdPtr const fast = Line(0, 0, 1e-9, 1, Curve::CycleExtrapolation);
    StdPtr const slow = Line(0, 0, 1, 1);
    EXPECT_THROW(Compose(*fast, *slow, 0, 100, 1e-3), std::bad_alloc);
    EXPECT_THROW(Compose(*Line(0, 0, 1, 1e6), *fast, 0, 1, 1e-3), std::bad_alloc);
    EXPECT_THROW(Compose(*Line(0, 0, 1, 1e300), *fast, 0, 1, 1e-3), std::bad_alloc);
    // A controller that jumps over the cycles meets none of them.
    StdPtr const jump = StdCurve({{0, 0, 1e6, kConstant}, {1, 1e6, 0, kConstant}});
    EXPECT_NE(Compose(*jump, *fast, 0, 1, 1e-3), nullptr);
}

TEST(HvControlOperator_memory, EvaluationAllocatesNothing)
{
    CurveMaker make(3);
    CurvePtr const c = make.Standard(6, 0, 5, 0, 5);
    CurvePtr const d = make.Standard(6, 0, 5, 0, 5);
    HvControlOperator const op(*c, *d);
    double values[3] = {0, 1, 7};
    AllocationCounter const counter;
    op.Eval(2);
    op.EvalMany(values, 3, values);
    EXPECT_EQ(counter.Allocations(), 0);
}

TEST(HvControlOperator_memory, RefusedAllocationsLeaveNothingAndReleaseTheLocks)
{
    StdPtr const c = Cubic({0, 0}, {1, 2}, {1.5, -1}, {3, 3});
    StdPtr const d = Cubic({0, 0}, {0.5, 5}, {2.5, -4}, {3, 3});
    unsigned int const numKeys = Compose(*c, *d, 0, 3, 1e-3)->GetNumKeys();
    long const composing = RefuseEachAllocation(
        [&] { EXPECT_EQ(Compose(*c, *d, 0, 3, 1e-3)->GetNumKeys(), numKeys); });
    EXPECT_GT(composing, 8);
    StdPtr const curve(static_cast<HvStdFCurve*>(c->Clone()));
    long const adjusting =
        RefuseEachAllocation([&] { HvControlOperator(*c, *d).AdjustTangents(*curve, 0, 3); });
    EXPECT_GT(adjusting, 4);
    EXPECT_LT(adjusting, composing);
    long const creating = RefuseEachAllocation([&] { delete new HvControlOperator(*c, *d); });
    EXPECT_EQ(creating, 1);
    EXPECT_TRUE(LockProbe_AreBothFree(*c));
    EXPECT_TRUE(LockProbe_AreBothFree(*d));
}
