// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path between two paths.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "prop_path_support.h"

#include <cmath>
#include <limits>
#include <new>

namespace {

// A line along x of some length from (0, y).
OpenProp Line(float length, float y)
{
    OpenProp path;
    path.AddLines({{0, y}, {length, y}});
    return path;
}

OpenProp Line(float length, float y, HvRawFCurve const& curve)
{
    OpenProp path = Line(length, y);
    path.SetPropCurve(0, curve);
    return path;
}

}  // namespace

TEST(HvPath2fProp1d_lerp, PointsLieBetween)
{
    OpenProp path;
    path.SetToLerpAB(Line(4, 0), Line(8, 2), 0.25, 1, 0.1);
    EXPECT_EQ(path.GetPoint(0), PropPoint(0, 0.5F));
    EXPECT_EQ(path.GetPoint(1), PropPoint(5, 0.5F));
    EXPECT_EQ(path.NumPoints(), 2u);
    EXPECT_EQ(path.Keys(), PropKeys());
}

// The factors of a third are no floats: each product is rounded before they are added.
TEST(HvPath2fProp1d_lerp, ProductsAreRoundedBeforeTheSum)
{
    double const t = 1.0 / 3.0;
    OpenProp path;
    EXPECT_TRUE(rc::check([&] {
        float const a = float(PickInRange(-1000000, 1000000)) * 1e-3F;
        float const b = float(PickInRange(-1000000, 1000000)) * 1e-3F;
        path.SetToLerpAB(Line(a, b), Line(b, a), t, 1, 0.1);
        float const first = static_cast<float>((1.0 - t) * double(a));
        float const second = static_cast<float>(t * double(b));
        RC_ASSERT(path.GetPoint(1).x == first + second);
    }));
}

TEST(HvPath2fProp1d_lerp, StructureAndLocksAreThoseOfTheFirst)
{
    OpenProp a;
    a.AddLines({{0, 0}, {1, 0}, {0, 1}, {0, 0}});
    a.Closeto();
    OpenProp b;
    b.AddLines({{0, 0}, {2, 0}, {0, 2}, {0, 0}});
    b.Closeto();
    OpenProp path = ThreeLines();
    path.SetToLerpAB(a, b, 0.5, 1, 0.1);
    EXPECT_EQ(path.IsSiblingOf(a), 1);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_EQ(path.Keys(), PropKeys());
}

TEST(HvPath2fProp1d_lerp, NothingHappensUnlessTheyAreSiblings)
{
    OpenProp path = ThreeLines();
    OpenProp const three = ThreeLines();
    path.SetToLerpAB(Line(1, 1), three, 0.5, 1, 0.1);
    path.SetToLerpAB(three, Line(1, 1), 0.5, 1, 0.1);
    EXPECT_EQ(path.NumPoints(), 12u);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
}

TEST(HvPath2fProp1d_lerp, OneOfTwoCurvesIsCopied)
{
    HvRawFCurve const curve = Through({{0, 5}, {3, 7}});
    for (bool const isFirst : {true, false}) {
        OpenProp path;
        OpenProp const with = Line(4, 0, curve);
        OpenProp const without = Line(4, 0);
        path.SetToLerpAB(isFirst ? with : without, isFirst ? without : with, 0.5, 0, 0.1);
        ASSERT_EQ(path.HasPropCurve(0), 1);
        EXPECT_EQ(path.EvalPropCurve(0, 1.5), 6.0);
        EXPECT_EQ(path.GetPropCurve(0)->GetNumKeys(), 2u);
    }
}

TEST(HvPath2fProp1d_lerp, PropertyLiesBetween)
{
    // Lengths 4 and 2: 4 steps of 1, that is of 1 on the first curve and of 2 on the second.
    OpenProp const a = Line(4, 0, Through({{0, 0}, {4, 4}}));
    OpenProp const b = Line(2, 0, Through({{0, 10}, {8, 30}}));
    OpenProp path;
    path.SetToLerpAB(a, b, 0.25, 1, 1e-9);
    EXPECT_EQ(path.GetLargestArcLength(0), 8.0);
    for (double const share : {0.0, 0.25, 0.3, 0.5, 1.0}) {
        EXPECT_NEAR(path.EvalPropCurve(0, 8 * share), 0.75 * (4 * share) + 0.25 * (10 + 20 * share),
                    1e-9);
    }
    path.SetToLerpAB(b, a, 0.75, 1, 1e-9);  // the same from the other side
    EXPECT_EQ(path.GetLargestArcLength(0), 8.0);
    EXPECT_NEAR(path.EvalPropCurve(0, 8), 10.5, 1e-9);
}

TEST(HvPath2fProp1d_lerp, PropertyIsTakenAtEvenSteps)
{
    // A peak at a step is kept, one between two steps is cut.
    OpenProp const a = Line(4, 0, Through({{0, 0}, {2, 8}, {4, 0}}));
    OpenProp const flat = Line(4, 0, Through({{0, 0}, {4, 0}}));
    OpenProp path;
    path.SetToLerpAB(a, flat, 0.5, 1, 1e-9);
    EXPECT_NEAR(path.EvalPropCurve(0, 2), 4, 1e-9);
    OpenProp const peak = Line(4, 0, Through({{0, 0}, {1, 0}, {1.5, 8}, {2, 0}, {4, 0}}));
    path.SetToLerpAB(peak, flat, 0.5, 1, 1e-9);
    EXPECT_NEAR(path.EvalPropCurve(0, 1.5), 0, 1e-9);
    path.SetToLerpAB(peak, flat, 0.5, 0.5, 1e-9);
    EXPECT_NEAR(path.EvalPropCurve(0, 1.5), 4, 1e-9);
}

TEST(HvPath2fProp1d_lerp, SubpathWithoutLengthTakesTheOtherCurve)
{
    HvRawFCurve const one = Constant(1);
    HvRawFCurve const two = Constant(2);
    struct Case {
        float lengthOfA;
        float lengthOfB;
        double expected;
    };
    float const none = 0.9e-7F;
    for (Case const& c : {Case{4, none, 1}, Case{none, 4, 2}, Case{none, none, 1}, Case{0, 0, 1},
                          Case{4, 4, 1.5}, Case{std::numeric_limits<float>::quiet_NaN(), 4, 2}}) {
        OpenProp path;
        path.SetToLerpAB(Line(c.lengthOfA, 0, one), Line(c.lengthOfB, 0, two), 0.5, 1, 0.01);
        EXPECT_EQ(path.EvalPropCurve(0, 0), c.expected) << c.lengthOfA << " " << c.lengthOfB;
    }
}

TEST(HvPath2fProp1d_lerp, LonePointsKeepTheirCurve)
{
    OpenProp a;
    a.Moveto({0, 0});
    a.AddLines({{0, 0}, {1, 0}});
    a.SetPropCurve(0, Constant(1));
    a.SetPropCurve(1, Constant(3));
    OpenProp b = a;
    b.SetPropCurve(0, Constant(2));
    b.SetPropCurve(1, Constant(5));
    OpenProp path;
    path.SetToLerpAB(a, b, 0.5, 1, 0.01);
    EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {1, 4}}));
}

TEST(HvPath2fProp1d_lerp, MayBeOneOfTheTwo)
{
    OpenProp const a = Line(4, 0, Through({{0, 0}, {4, 4}}));
    OpenProp const b = Line(2, 2, Through({{0, 10}, {8, 30}}));
    OpenProp expected;
    expected.SetToLerpAB(a, b, 0.25, 1, 1e-9);
    OpenProp first = a;
    first.SetToLerpAB(first, b, 0.25, 1, 1e-9);
    OpenProp second = b;
    second.SetToLerpAB(a, second, 0.25, 1, 1e-9);
    OpenProp both = a;
    both.SetToLerpAB(both, both, 0.25, 1, 1e-9);
    for (OpenProp const* const path : {&first, &second}) {
        EXPECT_EQ(path->GetPoint(1), expected.GetPoint(1));
        for (double const s : {0.0, 3.0, 8.0}) {
            EXPECT_EQ(path->EvalPropCurve(0, s), expected.EvalPropCurve(0, s));
        }
    }
    EXPECT_EQ(both.GetPoint(1), a.GetPoint(1));
    EXPECT_EQ(both.EvalPropCurve(0, 3), 3.0);
}

TEST(HvPath2fProp1d_lerp, EndsOfTheWayAreThePaths)
{
    OpenProp const a = Line(4, 0, Through({{0, 0}, {4, 4}}));
    OpenProp const b = Line(2, 2, Through({{0, 10}, {8, 30}}));
    OpenProp path;
    path.SetToLerpAB(a, b, 0, 1, 1e-9);
    EXPECT_EQ(path.GetPoint(1), a.GetPoint(1));
    EXPECT_EQ(path.EvalPropCurve(0, 8), 4.0);
    path.SetToLerpAB(a, b, 1, 1, 1e-9);
    EXPECT_EQ(path.GetPoint(1), b.GetPoint(1));
    EXPECT_EQ(path.EvalPropCurve(0, 8), 30.0);
}

TEST(HvPath2fProp1d_lerp, WithoutAStepTwoCurvesChangeNothing)
{
    OpenProp const a = Line(4, 0, Constant(1));
    OpenProp const b = Line(2, 2, Constant(2));
    for (double const step : {0.0, -0.0, -1.0, std::numeric_limits<double>::quiet_NaN(),
                              -std::numeric_limits<double>::infinity()}) {
        OpenProp path = ThreeLines();
        path.SetToLerpAB(a, b, 0.5, step, 0.1);
        EXPECT_EQ(path.NumPoints(), 12u);
        EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
        path.SetToLerpAB(Line(4, 0), b, 0.5, step, 0.1);  // one curve needs no step
        EXPECT_EQ(path.NumPoints(), 2u);
    }
}

TEST(HvPath2fProp1d_lerp, LongStepIsOne)
{
    OpenProp const a = Line(4, 0, Through({{0, 0}, {2, 8}, {4, 0}}));
    OpenProp const b = Line(2, 2, Constant(2));
    for (double const step : {4.0, 1e300, std::numeric_limits<double>::infinity()}) {
        OpenProp path;
        path.SetToLerpAB(a, b, 0.5, step, 0.1);
        EXPECT_EQ(path.GetPropCurve(0)->GetNumKeys(), 2u);
        EXPECT_EQ(path.EvalPropCurve(0, 2), 1.0);
    }
}

TEST(HvPath2fProp1d_lerp, MoreStepsThanAnArrayHoldsAreRefused)
{
    OpenProp const a = Line(4, 0, Constant(1));
    OpenProp const b = Line(1e30F, 2, Constant(2));
    OpenProp path = ThreeLines();
    AllocationCounter const counter;
    for (double const step : {1e-9, 5e-324}) {
        EXPECT_THROW(path.SetToLerpAB(a, b, 0.5, step, 0.1), std::bad_alloc);
        EXPECT_LT(counter.Bytes(), 100000u);
        EXPECT_EQ(path.NumPoints(), 12u);
        EXPECT_EQ(path.Keys(), (PropKeys{{0, 1}, {4, 2}, {8, 3}}));
    }
}

TEST(HvPath2fProp1d_lerp, HostileNumbersDoNoHarm)
{
    double const inf = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const x : {0.0, -0.0, 5e-324, 1e308, -1e308, inf, -inf, nan}) {
        OpenProp a = Line(float(1), 0, Through({{0, x}, {1e308, 1}}));
        OpenProp b =
            Line(float(x == x && std::fabs(x) < 1e38 ? x : 3), 1, Through({{-5, 1}, {-1, x}}));
        OpenProp path;
        path.SetToLerpAB(a, b, x, 0.1, 0.1);
        path.SetToLerpAB(a, b, 0.5, 0.1, x);
        EXPECT_EQ(path.NumPoints(), 2u);
        EXPECT_EQ(path.HasPropCurve(0), 1);
    }
}
