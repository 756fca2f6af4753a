// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/morph/HvMorpherImpl.h>

#include "morph_support.h"

#include <hv/fcurve/HvRawFCurve.h>

#include <gtest/gtest.h>

namespace {

class HvMorpher_property : public testing::Test {
protected:
    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}});
    HvPath2fProp1d second = Polyline({{0, 0}, {20, 0}});
    HvPath2fProp1d out = Polyline({{0, 0}, {15, 0}});
    HvGC gc = SpacedContext(1.0);
    HvMorpherImpl morph{&first, &second, gc};

    static void Give(HvPath2fProp1d& path, std::initializer_list<HvPoint2<double>> points)
    {
        HvPoint2dArray array;
        for (HvPoint2<double> const& point : points) {
            array.Add(point);
        }
        path.SetPropCurve(0, array, 1e-9);
    }
};

}  // namespace

TEST_F(HvMorpher_property, WithoutCurvesThereIsNone)
{
    morph.SetThePropertyCurve(0.5, out, 4, 0, 0, 0);
    EXPECT_EQ(out.HasPropCurve(0), 0);
    morph.SetThePropertyCurve(0.5, 0, 0, 4, 0, 0, 4, 5, out, 0);
    EXPECT_EQ(out.HasPropCurve(0), 0);
}

TEST_F(HvMorpher_property, ASingleCurveIsCopied)
{
    Give(first, {{0, 1}, {3, 5}, {10, 2}});
    morph.SetThePropertyCurve(0.5, out, 4, 0, 0, 0);
    ASSERT_NE(out.HasPropCurve(0), 0);
    EXPECT_EQ(out.GetPropCurve(0)->GetNumKeys(), 3u);
    EXPECT_EQ(out.EvalPropCurve(0, 3.0), 5.0);
    HvPath2fProp1d other = Polyline({{0, 0}, {1, 0}});
    HvMorpherImpl const backwards(&second, &first, gc);
    backwards.SetThePropertyCurve(0.5, other, 4, 0, 0, 0);
    EXPECT_EQ(other.EvalPropCurve(0, 3.0), 5.0);
}

TEST_F(HvMorpher_property, TwoCurvesAreBlendedOverTheLongerOne)
{
    Give(first, {{0, 0}, {10, 10}});
    Give(second, {{0, 100}, {20, 140}});
    morph.SetThePropertyCurve(0.25, out, 5, 0, 0, 0);
    EXPECT_NEAR(out.GetLargestArcLength(0), 20.0, 1e-12);
    for (double const u : {0.0, 0.3, 0.5, 1.0}) {
        EXPECT_NEAR(out.EvalPropCurve(0, 20 * u), 0.75 * 10 * u + 0.25 * (100 + 40 * u), 1e-5);
    }
    HvMorpherImpl const backwards(&second, &first, gc);
    backwards.SetThePropertyCurve(0.75, out, 5, 0, 0, 0);
    EXPECT_NEAR(out.GetLargestArcLength(0), 20.0, 1e-12);
    EXPECT_NEAR(out.EvalPropCurve(0, 10), 0.75 * 5 + 0.25 * 120, 1e-5);
}

TEST_F(HvMorpher_property, StretchesStartAtTheirStep)
{
    Give(first, {{0, 0}, {10, 10}});
    Give(second, {{0, 100}, {20, 140}});
    // Steps 2 to 4 of 5 on the first, 4, 6, 8; steps 1 to 3 of 10 on the second, 102... 106, each
    // of length 2.
    morph.SetThePropertyCurve(0.5, 0, 2, 5, 0, 1, 10, 3, out, 0);
    EXPECT_NEAR(out.GetLargestArcLength(0), 4.0, 1e-12);
    EXPECT_NEAR(out.EvalPropCurve(0, 0), 0.5 * (4 + 104), 1e-9);
    EXPECT_NEAR(out.EvalPropCurve(0, 4), 0.5 * (8 + 112), 1e-9);
}

TEST_F(HvMorpher_property, StretchesOfASingleCurveStandAlone)
{
    Give(second, {{0, 100}, {20, 140}});
    morph.SetThePropertyCurve(0.125, 0, 2, 5, 0, 1, 10, 3, out, 0);
    EXPECT_NEAR(out.GetLargestArcLength(0), 4.0, 1e-12);
    EXPECT_NEAR(out.EvalPropCurve(0, 0), 104, 1e-9);
    EXPECT_NEAR(out.EvalPropCurve(0, 4), 112, 1e-9);
}

TEST_F(HvMorpher_property, NoStepsHarmNothing)
{
    Give(first, {{0, 0}, {10, 10}});
    Give(second, {{0, 100}, {20, 140}});
    morph.SetThePropertyCurve(0.5, out, 0, 0, 0, 0);
    EXPECT_EQ(out.EvalPropCurve(0, 0), 50.0);
    morph.SetThePropertyCurve(0.5, 0, 0, 0, 0, 0, 0, 0, out, 0);
    EXPECT_EQ(out.EvalPropCurve(0, 0), 50.0);
    EXPECT_THROW(morph.SetThePropertyCurve(0.5, out, 0xFFFFFFFFu, 0, 0, 0), std::bad_alloc);
    EXPECT_THROW(morph.SetThePropertyCurve(0.5, 0, 0, 1, 0, 0, 1, 0xFFFFFFFFu, out, 0),
                 std::bad_alloc);
    EXPECT_EQ(out.EvalPropCurve(0, 0), 50.0);
}
