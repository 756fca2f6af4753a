// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Samples of a path, each with its property.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/rotation/HvTransfo4.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <cmath>
#include <limits>
#include <new>

namespace {

using Values = std::vector<double>;
using Tags = std::vector<int>;
using Places = std::vector<float>;

PropSamples Sampled(HvPath2fProp1d const& path, HvGC const& gc)
{
    return Appended([&](auto& points, auto& tags, auto& values) {
        return path.Sample(gc, points, tags, values);
    });
}

PropSamples PropertySampled(HvPath2fProp1d const& path, HvGC const& gc)
{
    return Appended([&](auto& points, auto& tags, auto& values) {
        return path.PropertySample(gc, points, tags, values);
    });
}

// A line along x of some length, with a property.
OpenProp Line(float length, HvRawFCurve const& curve)
{
    OpenProp path;
    path.AddLines({{0, 0}, {length, 0}});
    path.SetPropCurve(0, curve);
    return path;
}

// A closed square of side 2.
OpenProp Square(HvRawFCurve const& curve)
{
    OpenProp path;
    path.AddLines({{0, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 0}});
    path.Closeto();
    path.SetPropCurve(0, curve);
    return path;
}

}  // namespace

// Even samples.

TEST(HvPath2fProp1d_sample, PointsAreThoseOfThePath)
{
    OpenProp path = ThreeLines();
    path.Moveto({5, 5});
    path.Curveto({6, 9}, {9, 9}, {9, 5});
    HvGC gc;
    gc.sampleSpacing = 0.7;
    HvPoint2fArray points;
    HvPointTagArray tags;
    path.Sample(gc, points, tags);
    PropSamples const samples = Sampled(path, gc);
    EXPECT_EQ(samples.points, std::vector<PropPoint>(points.begin(), points.end()));
    EXPECT_EQ(samples.tags, Tags(tags.begin(), tags.end()));
}

TEST(HvPath2fProp1d_sample, ValuesRunFromTheStartOfTheCurveToItsEnd)
{
    // Four samples, at 0, 1, 2 and 3 of 4; the values as though they reached the end.
    PropSamples const samples = Sampled(Line(4, Through({{0, 0}, {9, 9}})), HvGC());
    EXPECT_EQ(XOf(samples), (Places{0, 1, 2, 3}));
    EXPECT_EQ(samples.tags, (Tags{0, 1, 1, 2}));
    EXPECT_EQ(samples.values, (Values{0, 3, 6, 9}));
}

TEST(HvPath2fProp1d_sample, WithoutACurveTheValuesAreTheDefault)
{
    OpenProp path;
    path.AddLines({{0, 0}, {3, 0}});
    HvGC gc;
    EXPECT_EQ(Sampled(path, gc).values, (Values{1, 1, 1}));
    gc.defaultProperty = 0.25;
    EXPECT_EQ(Sampled(path, gc).values, (Values{0.25, 0.25, 0.25}));
    EXPECT_EQ(PropertySampled(path, gc).values, (Values{0.25, 0.25, 0.25}));
    EXPECT_EQ(XOf(PropertySampled(path, gc)), (Places{0, 1, 2}));
}

TEST(HvPath2fProp1d_sample, ShortSubpathHasBothEnds)
{
    PropSamples const samples = Sampled(Line(1, Through({{0, 2}, {5, 7}})), HvGC());
    EXPECT_EQ(XOf(samples), (Places{0, 1}));
    EXPECT_EQ(samples.values, (Values{2, 7}));
}

TEST(HvPath2fProp1d_sample, ValuesAreClamped)
{
    OpenProp path = Line(4, Through({{0, 0}, {9, 9}}));
    path.GetPropCurve(0)->SetClampingValues(1, 5);
    EXPECT_EQ(Sampled(path, HvGC()).values, (Values{1, 3, 5, 5}));
}

TEST(HvPath2fProp1d_sample, CurveWithoutKeysIsItsValue)
{
    EXPECT_EQ(Sampled(Line(3, HvRawFCurve(6.0)), HvGC()).values, (Values{6, 6, 6}));
    EXPECT_EQ(PropertySampled(Line(3, HvRawFCurve(6.0)), HvGC()).values, (Values{6, 6, 6}));
}

// Far from the origin, where float tells no less than 1/16, the sample a hundredth before the end
// is the end: 400 steps, 400 samples, of which the last is left out.
TEST(HvPath2fProp1d_sample, RepeatOfAClosedSubpathIsLeftOutWithItsValue)
{
    OpenProp path;
    path.AddLines({{1e6F, 0}, {1e6F + 1, 0}, {1e6F + 1, 1}, {1e6F, 1}, {1e6F, 0}});
    path.SetPropCurve(0, Through({{0, 0}, {511, 511}}));
    HvGC gc;
    gc.sampleSpacing = 1.0 / 128;
    gc.transform.Translate(0, 1e6, 0);
    EXPECT_EQ(Sampled(path, gc).values.size(), 512u);
    EXPECT_EQ(Sampled(path, gc).values.back(), 511.0);
    path.Closeto();
    PropSamples const samples = Sampled(path, gc);
    EXPECT_EQ(samples.values.size(), 511u);
    EXPECT_NEAR(samples.values.back(), 510.0, 1e-10);
    EXPECT_EQ(samples.tags.back(), 2);
}

// The fifth step ends 4e-7 before the end of the square, which float does not tell from it there.
TEST(HvPath2fProp1d_sample, RepeatOfAClosedSubpathByThePropertyIsLeftOutWithItsValue)
{
    OpenProp path;
    path.AddLines({{1e3F, 1e3F}, {1002, 1e3F}, {1002, 1002}, {1e3F, 1002}, {1e3F, 1e3F}});
    path.SetPropCurve(0, Through({{0, 1}, {8, 1.5}}));
    HvGC gc;
    gc.sampleSpacing = 2 - 1e-7;
    EXPECT_EQ(PropertySampled(path, gc).values.size(), 5u);
    EXPECT_EQ(PropertySampled(path, gc).tags, (Tags{0, 1, 1, 1, 2}));
    path.Closeto();
    PropSamples const samples = PropertySampled(path, gc);
    EXPECT_EQ(samples.tags, (Tags{0, 1, 1, 2}));
    EXPECT_NEAR(samples.values.back(), 1.375, 1e-6);
}

TEST(HvPath2fProp1d_sample, LonePointsGiveNothing)
{
    OpenProp path;
    path.Moveto({0, 0});
    path.SetPropCurve(0, Constant(5));
    path.AddLines({{0, 0}, {2, 0}});
    EXPECT_EQ(Sampled(path, HvGC()).values, (Values{1, 1}));
    EXPECT_EQ(PropertySampled(path, HvGC()).values, (Values{1, 1}));
    EXPECT_TRUE(Sampled(OpenProp(), HvGC()).values.empty());
    EXPECT_TRUE(PropertySampled(OpenProp(), HvGC()).values.empty());
}

// Samples by the property.

// The sum worked by hand: length 3, curve of length 6, so r is 2; values 1 - s / 8.
TEST(HvPath2fProp1d_sample, StepFollowsTheProperty)
{
    HvGC gc;
    PropSamples const samples = PropertySampled(Line(3, Through({{0, 1}, {6, 0.25}})), gc);
    EXPECT_EQ(XOf(samples), (Places{0, 1, 1.75, 2.3125, 2.8125}));
    EXPECT_EQ(samples.tags, (Tags{0, 1, 1, 1, 2}));
    EXPECT_EQ(samples.values, (Values{1, 0.75, 0.5625, 0.421875, 0.296875}));
}

TEST(HvPath2fProp1d_sample, StepIsAtMostTheSpacing)
{
    HvGC gc;
    gc.sampleSpacing = 2;
    EXPECT_EQ(XOf(PropertySampled(Line(7, Constant(100)), gc)), (Places{0, 2, 4, 6}));
}

TEST(HvPath2fProp1d_sample, GapWinsOverTheSpacing)
{
    HvGC gc;
    gc.sampleSpacing = 0.5;
    gc.minPointGap = 3;
    EXPECT_EQ(XOf(PropertySampled(Line(7, Constant(1)), gc)), (Places{0, 3, 6}));
    gc.sampleSpacing = 1;
    EXPECT_EQ(XOf(PropertySampled(Line(7, Constant(-5)), gc)), (Places{0, 3, 6}));
}

TEST(HvPath2fProp1d_sample, ShortSubpathHasItsLastPointWithTheLastValue)
{
    for (float const length : {0.5F, 1.0F}) {
        PropSamples const samples =
            PropertySampled(Line(length, Through({{0, 1}, {6, 4}})), HvGC());
        EXPECT_EQ(XOf(samples), (Places{0, length}));
        EXPECT_EQ(samples.tags, (Tags{0, 2}));
        EXPECT_EQ(samples.values, (Values{1, 4}));
    }
}

TEST(HvPath2fProp1d_sample, StepsRunThroughTheCorners)
{
    HvGC gc;
    gc.sampleSpacing = 1.5;
    PropSamples const samples = PropertySampled(Square(Constant(1)), gc);
    EXPECT_EQ(samples.points,
              (std::vector<PropPoint>{{0, 0}, {1.5, 0}, {2, 1}, {1.5, 2}, {0, 2}, {0, 0.5}}));
    EXPECT_EQ(samples.tags, (Tags{0, 1, 1, 1, 1, 2}));
}

TEST(HvPath2fProp1d_sample, PropertySamplesAreClamped)
{
    OpenProp path = Line(4, Through({{0, 0}, {8, 8}}));
    path.GetPropCurve(0)->SetClampingValues(1, 5);
    PropSamples const samples = PropertySampled(path, HvGC());
    EXPECT_EQ(XOf(samples), (Places{0, 1, 2, 3}));
    EXPECT_EQ(samples.values, (Values{1, 2, 4, 5}));
}

TEST(HvPath2fProp1d_sample, CurveWithoutLengthIsAskedAtItsStart)
{
    PropSamples const samples = PropertySampled(Line(2, Constant(0.75)), HvGC());
    EXPECT_EQ(XOf(samples), (Places{0, 0.75, 1.5}));
    EXPECT_EQ(samples.values, (Values{0.75, 0.75, 0.75}));
}

TEST(HvPath2fProp1d_sample, WalkEndsWhereAStepDoesNotLeadOn)
{
    HvGC gc;
    gc.minPointGap = 0;
    for (double const value : {0.0, -1.0, -1e308}) {
        PropSamples const samples = PropertySampled(Line(7, Constant(value)), gc);
        EXPECT_EQ(XOf(samples), (Places{0, 7}));
    }
    // The step shrinks towards the middle, where it is less than the place can tell.
    PropSamples const samples = PropertySampled(Line(4, Through({{0, 1}, {2, 0}, {4, 1}})), gc);
    EXPECT_LT(samples.points.size(), 400u);
    EXPECT_NEAR(samples.points.back().x, 2, 1e-6);
    gc.minPointGap = -1;
    EXPECT_EQ(XOf(PropertySampled(Line(7, Constant(-1)), gc)), (Places{0, 7}));
}

// More samples than an array holds.

TEST(HvPath2fProp1d_sample, MoreThanAnArrayHoldsIsRefused)
{
    OpenProp const path = Line(1e6F, Constant(1e-6));
    HvGC gc;
    gc.minPointGap = 0;
    gc.sampleSpacing = 1e-3;
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    points.Add({1, 1});
    AllocationCounter const counter;
    EXPECT_THROW(path.PropertySample(gc, points, tags, values), std::bad_alloc);
    gc.sampleSpacing = 1e-6;
    EXPECT_THROW(path.Sample(gc, points, tags, values), std::bad_alloc);
    EXPECT_LT(counter.Bytes(), 100000u);
    EXPECT_EQ(points.Size(), 1u);
    EXPECT_EQ(tags.Size(), 0u);
    EXPECT_EQ(values.Size(), 0u);
}

TEST(HvPath2fProp1d_sample, HostileNumbersDoNoHarm)
{
    float const floats[] = {0.0F, 1e-45F, 3e38F, std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()};
    double const doubles[] = {0.0,
                              -0.0,
                              5e-324,
                              1e308,
                              -1e308,
                              std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    for (float const f : floats) {
        for (double const d : doubles) {
            OpenProp path;
            path.AddLines({{0, 0}, {f, 0}, {1, f}, {2, 2}});
            path.SetPropCurve(0, Through({{0, d}, {1, 1e308}, {2, -1e308}, {1e308, d}}));
            for (int which = 0; which < 3; ++which) {
                HvGC gc;
                (which == 0 ? gc.minPointGap : which == 1 ? gc.sampleSpacing : gc.flatness) = d;
                HvPoint2fArray points;
                HvPointTagArray tags;
                HvDoubleArray values;
                try {
                    path.Sample(gc, points, tags, values);
                } catch (std::bad_alloc const&) {
                }
                try {
                    path.PropertySample(gc, points, tags, values);
                } catch (std::bad_alloc const&) {
                }
                EXPECT_EQ(points.Size(), tags.Size());
                EXPECT_EQ(points.Size(), values.Size());
            }
        }
    }
}

// Those in an extent.

TEST(HvPath2fProp1d_sample, SamplesInAnExtentKeepTagsAndValues)
{
    OpenProp const path = Line(4, Through({{0, 0}, {9, 9}}));
    HvExtent2<float> const extent(1.5F, -1, 3, 1);
    PropSamples samples = Appended([&](auto& points, auto& tags, auto& values) {
        return path.IntersectSamplePointsExtent(HvGC(), extent, points, tags, values, 0);
    });
    EXPECT_EQ(XOf(samples), (Places{2, 3}));
    EXPECT_EQ(samples.tags, (Tags{1, 2}));
    EXPECT_EQ(samples.values, (Values{6, 9}));
    samples = Appended([&](auto& points, auto& tags, auto& values) {
        return path.IntersectPropertySamplePointsExtent(HvGC(), extent, points, tags, values, 0);
    });
    EXPECT_EQ(XOf(samples), (Places{1.5, 2.5}));
    EXPECT_EQ(samples.values, (Values{3.375, 5.625}));
}

TEST(HvPath2fProp1d_sample, ExtentBesideThePathHoldsNone)
{
    OpenProp const path = Line(4, Constant(1));
    HvPoint2fArray points;
    HvPointTagArray tags;
    HvDoubleArray values;
    HvExtent2<float> const beside(5, 5, 6, 6);
    for (int const skip : {0, 1}) {
        EXPECT_EQ(path.IntersectSamplePointsExtent(HvGC(), beside, points, tags, values, skip), 0);
        EXPECT_EQ(
            path.IntersectPropertySamplePointsExtent(HvGC(), beside, points, tags, values, skip),
            0);
    }
    // The test of the extents comes before any sample is taken.
    HvGC gc;
    gc.sampleSpacing = 1e-12;
    EXPECT_EQ(path.IntersectSamplePointsExtent(gc, beside, points, tags, values, 0), 0);
    EXPECT_THROW(path.IntersectSamplePointsExtent(gc, beside, points, tags, values, 1),
                 std::bad_alloc);
    EXPECT_EQ(path.IntersectSamplePointsExtent(HvGC(), HvExtent2<float>(), points, tags, 0), 0);
}
