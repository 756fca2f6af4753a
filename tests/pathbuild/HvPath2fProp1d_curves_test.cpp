// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The property curves of a path: setting, asking, evaluating.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvPoint2dArray.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <cmath>
#include <limits>

namespace {

HvPoint2dArray Points(std::initializer_list<HvPoint2<double>> pts)
{
    HvPoint2dArray array;
    for (HvPoint2<double> const& p : pts) {
        array.Add(p);
    }
    return array;
}

}  // namespace

TEST(HvPath2fProp1d_curves, KeyIsTheStartOfTheSubpathFromAnyPoint)
{
    for (unsigned int const index : {4u, 6u, 7u}) {
        OpenProp path = ThreeLines();
        path.RemovePropCurveInsideCriticalSection(4);
        path.SetPropCurve(index, Constant(9));
        EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 9}, {8, 3}}));
        for (unsigned int i = 4; i < 8; ++i) {
            EXPECT_EQ(path.HasPropCurve(i), 1);
            EXPECT_EQ(path.EvalPropCurve(i, 0.5), 9.0);
        }
    }
}

TEST(HvPath2fProp1d_curves, StandInOrderWhateverTheOrderOfSetting)
{
    OpenProp path;
    for (int k = 0; k < 5; ++k) {
        path.AddLines({{0, 0}, {1, 0}});
    }
    for (unsigned int const k : {3u, 1u, 4u, 0u, 2u}) {
        path.SetPropCurve(2 * k + 1, Constant(k));
    }
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 0}, {2, 1}, {4, 2}, {6, 3}, {8, 4}}));
}

TEST(HvPath2fProp1d_curves, SetAgainACurveStaysWhereItIs)
{
    OpenProp path = ThreeLines();
    HvRawFCurve* const curve = path.GetPropCurve(5);
    path.SetPropCurve(6, Through({{0, 1}, {2, 5}}));
    EXPECT_EQ(path.GetPropCurve(4), curve);
    EXPECT_EQ(curve->Eval(1, 0), 3.0);
    EXPECT_EQ(path.propCurves->Count(), 3u);
}

TEST(HvPath2fProp1d_curves, ItsOwnCurveMayBeSet)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(0, *path.GetPropCurve(0));
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
    path.SetPropCurve(0, *path.GetPropCurve(8));
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {4, 2}, {8, 3}}));
    path.RemovePropCurveInsideCriticalSection(4);
    path.SetPropCurve(4, *path.GetPropCurve(0));
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {4, 3}, {8, 3}}));
}

TEST(HvPath2fProp1d_curves, BeyondThePathNothingHappens)
{
    OpenProp path = ThreeLines();
    double s = 7.0;
    HvDoubleArray out;
    path.SetPropCurve(12, Constant(9));
    path.SetPropCurve(12, Points({{0, 9}}), 0.1);
    path.SetPropCurve(12, 0u);
    path.SetPropCurve(0, 12u);
    path.SetPropCurve(12, path, 0);
    path.SetPropCurve(0, path, 12);
    path.AppendLinearSegment(12, 5, 5);
    path.AppendOrExtendLinearSegment(12, 5, 5, 0.1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
    EXPECT_EQ(path.HasPropCurve(12), 0);
    EXPECT_EQ(path.GetPropCurve(12), nullptr);
    EXPECT_EQ(path.EvalPropCurve(12, 0), 0.0);
    EXPECT_EQ(path.EvalPropCurve(12, HvDoubleArray(1.0, 3), out), 0u);
    EXPECT_EQ(out.Size(), 0u);
    EXPECT_EQ(path.GetLargestArcLength(12), 0.0);
    EXPECT_EQ(path.GetPropCurveParameter(12, 0.1, s), 0);
    EXPECT_EQ(s, 7.0);
}

// From points.

TEST(HvPath2fProp1d_curves, NoPointsSetNothing)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(4, HvPoint2dArray(), 0.1);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
}

TEST(HvPath2fProp1d_curves, OnePointIsAConstantFromZero)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(5, Points({{3, 7}}), 0.1);
    HvRawFCurve const& curve = *path.GetPropCurve(4);
    EXPECT_EQ(curve.GetNumKeys(), 1u);
    EXPECT_EQ(path.GetLargestArcLength(4), 0.0);
    EXPECT_EQ(curve.Eval(100, 0), 7.0);
}

TEST(HvPath2fProp1d_curves, TwoPointsAreALine)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(5, Points({{1, 10}, {3, 30}}), 100);
    EXPECT_EQ(path.GetPropCurve(4)->GetNumKeys(), 2u);
    EXPECT_EQ(path.EvalPropCurve(4, 2), 20.0);
    EXPECT_EQ(path.GetLargestArcLength(4), 3.0);
}

TEST(HvPath2fProp1d_curves, TwoPointsOfOneLengthAreTheLaterValue)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(5, Points({{2, 10}, {2, 30}}), 0.1);
    EXPECT_EQ(path.GetPropCurve(4)->GetNumKeys(), 1u);
    EXPECT_EQ(path.EvalPropCurve(4, 2), 30.0);
    EXPECT_EQ(path.GetLargestArcLength(4), 2.0);
}

TEST(HvPath2fProp1d_curves, ManyPointsAreAPolylineWithinTheTolerance)
{
    HvPoint2dArray points;
    for (int i = 0; i <= 100; ++i) {
        points.Add(i, std::abs(i - 50) + 0.01 * (i % 2));
    }
    OpenProp path = ThreeLines();
    path.SetPropCurve(5, points, 0.1);
    EXPECT_LT(path.GetPropCurve(4)->GetNumKeys(), 20u);
    for (HvPoint2<double> const& p : points) {
        EXPECT_NEAR(path.EvalPropCurve(4, p.x), p.y, 0.1 + 1e-9);
    }
}

// From other subpaths.

TEST(HvPath2fProp1d_curves, CurveOfAnotherSubpathIsCopied)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(1, 9u);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {4, 2}, {8, 3}}));
    path.RemovePropCurveInsideCriticalSection(4);
    path.SetPropCurve(1, 5u);  // has none
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {8, 3}}));
    path.SetPropCurve(5, 2u);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {4, 3}, {8, 3}}));
    path.SetPropCurve(5, 6u);  // the same subpath
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {4, 3}, {8, 3}}));
}

TEST(HvPath2fProp1d_curves, CurveOfAnotherPathIsCopied)
{
    OpenProp path = ThreeLines();
    OpenProp source;
    source.AddLines({{0, 0}, {1, 1}});
    source.AddLines({{0, 0}, {1, 1}});
    source.SetPropCurve(2, Constant(8));
    path.SetPropCurve(5, source, 3);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 8}, {8, 3}}));
    path.SetPropCurve(1, source, 0);  // has none
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 8}, {8, 3}}));
    path.SetPropCurve(1, path, 9);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 3}, {4, 8}, {8, 3}}));
}

// Evaluating.

TEST(HvPath2fProp1d_curves, WithoutACurveTheAnswersAreZero)
{
    OpenProp path;
    path.AddLines({{0, 0}, {1, 0}});
    HvDoubleArray out;
    EXPECT_EQ(path.EvalPropCurve(0, 3), 0.0);
    EXPECT_EQ(path.EvalPropCurve(0, HvDoubleArray(1.0, 3), out), 0u);
    EXPECT_EQ(path.GetLargestArcLength(1), 0.0);
    path.AppendLinearSegment(0, 1, 1);
    path.AppendOrExtendLinearSegment(0, 1, 1, 1);
    EXPECT_EQ(path.propCurves->Count(), 0u);
}

TEST(HvPath2fProp1d_curves, ValuesAreNotClamped)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(0, Through({{0, 0}, {4, 8}}));
    path.GetPropCurve(0)->SetClampingValues(1, 2);
    EXPECT_EQ(path.EvalPropCurve(0, 3), 6.0);
}

TEST(HvPath2fProp1d_curves, ManyValuesAreAppended)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(0, Through({{0, 0}, {4, 8}}));
    HvDoubleArray s;
    for (double const x : {4.0, 0.0, 1.0, 9.0}) {
        s.Add(x);
    }
    HvDoubleArray out(5.0, 1);
    EXPECT_EQ(path.EvalPropCurve(2, s, out), 4u);
    EXPECT_EQ(std::vector<double>(out.begin(), out.end()), (std::vector<double>{5, 8, 0, 2, 8}));
    EXPECT_EQ(path.EvalPropCurve(2, s, s), 4u);
    EXPECT_EQ(std::vector<double>(s.begin(), s.end()),
              (std::vector<double>{4, 0, 1, 9, 8, 0, 2, 8}));
}

TEST(HvPath2fProp1d_curves, LargestArcLengthIsThatOfTheLastKey)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(0, Through({{0, 0}, {4, 8}, {6, 1}}));
    EXPECT_EQ(path.GetLargestArcLength(3), 6.0);
    path.SetPropCurve(0, HvRawFCurve(3.0));
    EXPECT_EQ(path.GetLargestArcLength(3), 0.0);
    EXPECT_EQ(path.HasPropCurve(3), 1);
}

TEST(HvPath2fProp1d_curves, SegmentsAreAppendedToTheCurve)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(0, Constant(1));
    path.AppendLinearSegment(2, 2, 3);
    path.AppendLinearSegment(2, 2, 9);  // not past the last key
    EXPECT_EQ(path.GetPropCurve(0)->GetNumKeys(), 2u);
    path.AppendOrExtendLinearSegment(1, 4, 5.05, 0.1);
    EXPECT_EQ(path.GetPropCurve(0)->GetNumKeys(), 2u);
    EXPECT_EQ(path.EvalPropCurve(0, 4), 5.0);
    path.AppendOrExtendLinearSegment(1, 6, 5, 0.1);
    EXPECT_EQ(path.GetPropCurve(0)->GetNumKeys(), 3u);
}

// Where a node lies on its curve.

TEST(HvPath2fProp1d_curves, NodeLiesOnTheCurveAsOnTheSubpath)
{
    OpenProp path = ThreeLines();
    path.SetPropCurve(4, Through({{0, 0}, {12, 1}}));
    double const expected[] = {0, 4, 8, 12};
    for (unsigned int i = 0; i < 4; ++i) {
        double s = -1;
        EXPECT_EQ(path.GetPropCurveParameter(4 + i, 0.1, s), 1);
        EXPECT_NEAR(s, expected[i], 1e-12);
    }
}

TEST(HvPath2fProp1d_curves, HandlesHaveNoParameter)
{
    OpenProp path;
    path.Moveto({0, 0});
    path.Curveto({1, 0}, {2, 0}, {3, 0});
    path.Curveto({4, 0}, {6, 0});
    path.SetPropCurve(0, Through({{0, 0}, {6, 1}}));
    double s = -1;
    for (unsigned int const handle : {1u, 2u, 4u}) {
        EXPECT_EQ(path.GetPropCurveParameter(handle, 0.01, s), 0);
        EXPECT_EQ(s, -1);
    }
    for (unsigned int const node : {0u, 3u, 5u}) {
        EXPECT_EQ(path.GetPropCurveParameter(node, 0.01, s), 1);
        EXPECT_NEAR(s, path.GetPoint(node).x, 1e-5);
    }
}

TEST(HvPath2fProp1d_curves, NodeOnACurveWithoutLengthIsAtZero)
{
    OpenProp path = ThreeLines();
    for (HvRawFCurve const& curve :
         {HvRawFCurve(4.0), Constant(4), Through({{0, 1}, {0.9e-7, 2}})}) {
        path.SetPropCurve(0, curve);
        double s = -1;
        EXPECT_EQ(path.GetPropCurveParameter(3, 0.1, s), 1);
        EXPECT_EQ(s, 0.0);
    }
    double s = -1;
    path.SetPropCurve(0, Through({{0, 1}, {1e-7, 2}}));
    EXPECT_EQ(path.GetPropCurveParameter(3, 0.1, s), 1);
    EXPECT_EQ(s, 1e-7);
    OpenProp bare = ThreeLines();
    bare.RemovePropCurveInsideCriticalSection(0);
    EXPECT_EQ(bare.GetPropCurveParameter(3, 0.1, s), 0);
}

TEST(HvPath2fProp1d_curves, NodeBarelyBehindTheStartIsAtZero)
{
    OpenProp path;
    path.AddLines({{0, 0}, {0.9e-7F, 0}, {1, 0}});
    path.SetPropCurve(0, Through({{0, 0}, {1e6, 1}}));
    double s = -1;
    EXPECT_EQ(path.GetPropCurveParameter(1, 0.1, s), 1);
    EXPECT_EQ(s, 0.0);
}

TEST(HvPath2fProp1d_curves, HostileNumbersDoNoHarm)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    OpenProp path = ThreeLines();
    for (double const x : {0.0, -0.0, 5e-324, inf, -inf, nan, 1e308, -1e308}) {
        path.SetPropCurve(0, Points({{x, x}}), x);
        path.SetPropCurve(0, Points({{x, x}, {-x, 1}}), x);
        path.SetPropCurve(0, Points({{0, x}, {x, 1}, {2, x}}), x);
        path.AppendLinearSegment(0, x, x);
        path.AppendOrExtendLinearSegment(0, x, x, x);
        path.EvalPropCurve(0, x);
        double s = 0;
        EXPECT_EQ(path.GetPropCurveParameter(3, x, s), 1);
        EXPECT_TRUE(std::isfinite(s));
        EXPECT_TRUE(std::isfinite(path.GetLargestArcLength(0)));
    }
}
