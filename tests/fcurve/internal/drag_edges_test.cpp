// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/internal/drag_edges.h>

#include "../std_edit.h"

namespace {

using Extent = HvExtent2<double>;

/// Keys at (0, 1) and (2, 5) on a line of slope 2; the first jumps from 3.
StdCurve Rising(HvBaseFCurve::ExtrapolationMethod method)
{
    return StdCurve({KeyAt(0, 3, 1, kLinear), KeyAt(2, 5, 5, kLinear)}, method);
}

Extent Edges(StdCurve const& curve, double left, double right, bool atLeft = true,
             bool atRight = true)
{
    Extent extent;
    HvDragEdges_Augment(curve.Impl(), left, right, atLeft, atRight, extent);
    return extent;
}

void ExpectExtent(Extent const& actual, Extent const& expected)
{
    EXPECT_EQ(actual.state, expected.state);
    EXPECT_EQ(actual.min, expected.min);
    EXPECT_EQ(actual.max, expected.max);
}

}  // namespace

TEST(drag_edges, HoldTheEndValuesUnderConstantExtrapolation)
{
    StdCurve const curve = Rising(HvBaseFCurve::ConstantExtrapolation);
    ExpectExtent(Edges(curve, -10, 10), Extent(-10, 3, 10, 5));
    ExpectExtent(Edges(curve, -10, 10, true, false), Extent(-10, 3, -10, 3));
    ExpectExtent(Edges(curve, -10, 10, false, true), Extent(10, 5, 10, 5));
    EXPECT_EQ(Edges(curve, -10, 10, false, false).state, Extent::Empty);
}

TEST(drag_edges, LieOnTheLinesUnderLinearExtrapolation)
{
    StdCurve const curve = Rising(HvBaseFCurve::LinearExtrapolation);
    double const left = curve.Eval(-10, 0);
    double const right = curve.Eval(10, 0);
    Extent const edges = Edges(curve, -10, 10);
    EXPECT_TRUE(edges.Contains({-10, left}) && edges.Contains({10, right}));
    EXPECT_EQ(right, 21);
}

TEST(drag_edges, HoldTheWholeRangeUnderACycle)
{
    StdCurve const curve = Rising(HvBaseFCurve::CycleExtrapolation);
    ExpectExtent(Edges(curve, -10, 10, false, false), Extent(-10, 1, 10, 5));
}

TEST(drag_edges, RiseWithTheCyclesUnderARelativeCycle)
{
    StdCurve const curve = Rising(HvBaseFCurve::RelativeCycleExtrapolation);
    // Evaluated, a cycle rises by 5 - 1; -3 is in cycle -2, 7 in cycle 3.
    ExpectExtent(Edges(curve, -3, 7, false, false), Extent(-3, 1 - 8, 7, 5 + 12));
}

TEST(drag_edges, ThatAreNoNumbersAreSkipped)
{
    double const nan = NonFinite()[0];
    for (HvBaseFCurve::ExtrapolationMethod const method :
         {HvBaseFCurve::ConstantExtrapolation, HvBaseFCurve::LinearExtrapolation,
          HvBaseFCurve::CycleExtrapolation, HvBaseFCurve::RelativeCycleExtrapolation}) {
        EXPECT_EQ(Edges(Rising(method), nan, nan).state, Extent::Empty);
        EXPECT_EQ(Edges(Rising(method), nan, 10).min.x, 10);
    }
    StdCurve const empty(0.0, kCubic);
    EXPECT_EQ(Edges(empty, 0, 1).state, Extent::Empty);
}
