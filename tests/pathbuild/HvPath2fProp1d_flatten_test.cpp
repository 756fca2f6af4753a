// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline with the breaks of its property.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "prop_path_support.h"

#include <cmath>
#include <limits>

namespace {

using Values = std::vector<double>;
using Tags = std::vector<int>;

PropSamples Flattened(HvPath2fProp1d const& path, HvGC const& gc)
{
    return Appended([&](auto& points, auto& tags, auto& values) {
        return path.Flatten(gc, points, tags, values);
    });
}

// A line along x through the given places, with a property through keys of length and value.
OpenProp LineAlongX(std::initializer_list<float> places,
                    std::initializer_list<std::pair<double, double>> keys)
{
    OpenProp path;
    bool isFirst = true;
    for (float const x : places) {
        if (isFirst) {
            path.Moveto({x, 0});
        } else {
            path.Lineto({x, 0});
        }
        isFirst = false;
    }
    path.SetPropCurve(0, Through(keys));
    return path;
}

}  // namespace

TEST(HvPath2fProp1d_flatten, WithoutACurveTheValuesAreZero)
{
    OpenProp path;
    path.AddLines({{0, 0}, {3, 0}, {3, 4}});
    PropSamples const flat = Flattened(path, HvGC());
    EXPECT_EQ(flat.points, (std::vector<PropPoint>{{0, 0}, {3, 0}, {3, 4}}));
    EXPECT_EQ(flat.tags, (Tags{0, 1, 2}));
    EXPECT_EQ(flat.values, (Values{0, 0, 0}));
}

// The sum worked by hand: lengths of the vertices 0, 2, 6, 10; breaks at 0, 2, 4, 4.3, 10.
TEST(HvPath2fProp1d_flatten, VerticesAndBreaksAreMerged)
{
    OpenProp const path = LineAlongX({0, 2, 6, 10}, {{0, 1}, {2, 3}, {4, 5}, {4.3, 4}, {10, 0}});
    PropSamples const flat = Flattened(path, HvGC());
    ASSERT_EQ(XOf(flat), (std::vector<float>{0, 2, 4, 6, 10}));
    EXPECT_EQ(flat.tags, (Tags{0, 1, 1, 1, 2}));
    EXPECT_EQ(flat.values[0], 1.0);
    EXPECT_EQ(flat.values[1], 3.0);
    EXPECT_EQ(flat.values[2], 5.0);
    EXPECT_NEAR(flat.values[3], 4 * (1 - 1.7 / 5.7), 1e-15);
    EXPECT_EQ(flat.values[4], 0.0);
}

TEST(HvPath2fProp1d_flatten, BreaksAreRescaledToTheOutline)
{
    // The curve is 100 long, the line 10 in its own coordinates and 20 on the device.
    OpenProp const path = LineAlongX({0, 10}, {{0, 0}, {25, 4}, {100, 0}});
    HvGC gc;
    gc.transform.Scale(2.0);
    PropSamples const flat = Flattened(path, gc);
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 5, 20}));
    EXPECT_EQ(flat.values, (Values{0, 4, 0}));
}

TEST(HvPath2fProp1d_flatten, BreaksWithinTheGapBehindAPointAreLeftOut)
{
    HvGC gc;
    // At the start, and closed: exactly the gap away is too close.
    PropSamples flat =
        Flattened(LineAlongX({0, 10}, {{0, 0}, {0.5, 5}, {1, 1}, {1.5, 9}, {10, 0}}), gc);
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 1, 10}));
    EXPECT_EQ(flat.values, (Values{0, 1, 0}));
    // Behind a vertex; not before one.
    flat = Flattened(LineAlongX({0, 4, 10}, {{0, 0}, {3.75, 5}, {4.25, 7}, {10, 0}}), gc);
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 3.75, 4, 10}));
    EXPECT_EQ(flat.values, (Values{0, 5, 6, 0}));
    // The gap is that of the context.
    gc.minPointGap = 0.2;
    flat = Flattened(LineAlongX({0, 4, 10}, {{0, 0}, {3.75, 5}, {4.25, 7}, {10, 0}}), gc);
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 3.75, 4, 4.25, 10}));
}

TEST(HvPath2fProp1d_flatten, VerticesAreNeverLeftOut)
{
    PropSamples const flat =
        Flattened(LineAlongX({0, 4.25F, 4.5F, 10}, {{0, 0}, {4, 4}, {10, 10}}), HvGC());
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 4, 4.25F, 4.5F, 10}));
    EXPECT_EQ(flat.values, (Values{0, 4, 4.25, 4.5, 10}));
}

TEST(HvPath2fProp1d_flatten, SubpathShorterThanTheGapIsTwoPoints)
{
    OpenProp const path = LineAlongX({0, 0.1F, 0.2F, 0.4F}, {{0, 3}, {1, 8}, {1.5, 9}, {2, 5}});
    HvGC gc;
    PropSamples flat = Flattened(path, gc);
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 0.4F}));
    EXPECT_EQ(flat.tags, (Tags{0, 2}));
    EXPECT_EQ(flat.values, (Values{3, 5}));
    gc.minPointGap = double(0.4F);  // no longer shorter
    flat = Flattened(path, gc);
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 0.1F, 0.2F, 0.4F}));
    EXPECT_EQ(flat.values.back(), 5.0);
}

TEST(HvPath2fProp1d_flatten, SubpathWithoutLengthHasBothEndsOfTheCurve)
{
    OpenProp path;
    path.AddLines({{1, 1}, {1, 1}, {1, 1}});
    path.SetPropCurve(0, Through({{0, 3}, {1, 8}, {2, 5}}));
    HvGC gc;
    EXPECT_EQ(Flattened(path, gc).values, (Values{3, 5}));
    gc.minPointGap = 0;
    EXPECT_EQ(Flattened(path, gc).values, (Values{3, 5, 5}));
}

TEST(HvPath2fProp1d_flatten, ShortCurvesAreConstant)
{
    for (HvRawFCurve const& curve :
         {HvRawFCurve(7.0), Constant(7), HvRawFCurve(4.0, 7.0), HvRawFCurve(-4.0, 7.0)}) {
        OpenProp path;
        path.AddLines({{0, 0}, {3, 0}, {10, 0}});
        path.SetPropCurve(0, curve);
        PropSamples const flat = Flattened(path, HvGC());
        EXPECT_EQ(XOf(flat), (std::vector<float>{0, 3, 10}));
        EXPECT_EQ(flat.values, (Values{7, 7, 7}));
    }
}

TEST(HvPath2fProp1d_flatten, CurveThatEndsBeforeZeroRunsFromItsFirstToItsLastValue)
{
    OpenProp const path = LineAlongX({0, 5, 10}, {{-4, 1}, {-2, 9}, {-1, 3}});
    EXPECT_EQ(Flattened(path, HvGC()).values, (Values{1, 2, 3}));
}

TEST(HvPath2fProp1d_flatten, FirstValueHoldsFromTheStart)
{
    // The first key lies at 5 of 10; the rest stays where it is.
    OpenProp const path = LineAlongX({0, 10}, {{5, 2}, {7.5, 4}, {10, 8}});
    PropSamples const flat = Flattened(path, HvGC());
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 7.5, 10}));
    EXPECT_EQ(flat.values, (Values{2, 4, 8}));
}

TEST(HvPath2fProp1d_flatten, ClampingValuesDoNotCount)
{
    OpenProp path = LineAlongX({0, 10}, {{0, 0}, {5, 9}, {10, 0}});
    path.GetPropCurve(0)->SetClampingValues(1, 2);
    EXPECT_EQ(Flattened(path, HvGC()).values, (Values{0, 9, 0}));
}

TEST(HvPath2fProp1d_flatten, DoubledPointsAtTheEndHaveTheLastValue)
{
    PropSamples const flat = Flattened(LineAlongX({0, 10, 10, 10}, {{0, 1}, {10, 5}}), HvGC());
    EXPECT_EQ(XOf(flat), (std::vector<float>{0, 10, 10, 10}));
    EXPECT_EQ(flat.values, (Values{1, 5, 5, 5}));
    EXPECT_EQ(flat.tags, (Tags{0, 1, 1, 2}));
}

// The scale of a curve rounds; its end is the end of the outline even so.
TEST(HvPath2fProp1d_flatten, EndOfTheCurveIsTheEndOfTheOutline)
{
    HvGC gc;
    gc.minPointGap = 0;
    for (int k = 1; k < 200; ++k) {
        float const length = 0.1F * static_cast<float>(k);
        PropSamples const flat =
            Flattened(LineAlongX({0, length}, {{0, 1}, {0.7 * k + 0.1, 5}}), gc);
        EXPECT_EQ(XOf(flat), (std::vector<float>{0, length}));
        EXPECT_EQ(flat.values, (Values{1, 5}));
    }
}

TEST(HvPath2fProp1d_flatten, DoubledPointsAtTheStartHaveTheFirstValue)
{
    PropSamples const flat = Flattened(LineAlongX({0, 0, 10}, {{0, 1}, {10, 5}}), HvGC());
    EXPECT_EQ(flat.values, (Values{1, 1, 5}));
}

TEST(HvPath2fProp1d_flatten, EachSubpathHasItsOwnProperty)
{
    OpenProp path = ThreeLines();
    path.RemovePropCurveInsideCriticalSection(4);
    path.Moveto({9, 9});  // a lone point has no outline
    path.AddLines({{0, 0}, {2, 0}});
    path.SetPropCurve(13, Through({{0, 0}, {1, 8}}));
    PropSamples const flat = Flattened(path, HvGC());
    EXPECT_EQ(flat.values, (Values{1, 1, 1, 1, 0, 0, 0, 0, 3, 3, 3, 3, 0, 8}));
    EXPECT_EQ(flat.tags, (Tags{0, 1, 1, 2, 0, 1, 1, 2, 0, 1, 1, 2, 0, 2}));
}

TEST(HvPath2fProp1d_flatten, TheFormWithoutValuesIsThatOfThePath)
{
    OpenProp const path = LineAlongX({0, 10}, {{0, 0}, {5, 9}, {10, 0}});
    HvPoint2fArray points;
    HvPointTagArray tags;
    EXPECT_EQ(path.Flatten(HvGC(), points, tags), 2u);
}

// Random paths: every vertex of the plain outline is there, in order, and at each point the value
// is that of the property, at its place, within what left-out breaks may bend it.
TEST(HvPath2fProp1d_flatten, FollowsOutlineAndProperty)
{
    EXPECT_TRUE(rc::check([] {
        OpenProp path;
        path.Moveto({0, 0});
        int const segments = PickInRange(1, 6);
        for (int k = 0; k < segments; ++k) {
            auto const pick = [] {
                return PropPoint(float(PickInRange(-20, 21)), float(PickInRange(-20, 21)));
            };
            if (PickInRange(0, 2) == 0) {
                path.Lineto(pick());
            } else {
                PropPoint const a = pick();
                PropPoint const b = pick();
                path.Curveto(a, b, pick());
            }
        }
        HvRawFCurve curve(0.0, double(PickInRange(-5, 6)));
        double s = 0;
        int const keys = PickInRange(0, 12);
        for (int k = 0; k < keys; ++k) {
            s += PickInRange(1, 40) * 0.1;
            curve.AppendLinearSegment({s, double(PickInRange(-5, 6))});
        }
        path.SetPropCurve(0, curve);
        HvGC gc;
        gc.flatness = 0.1;
        gc.minPointGap = PickInRange(0, 3) * 0.5;
        HvPoint2fArray line;
        HvPointTagArray lineTags;
        path.HvPath2f::Flatten(gc, line, lineTags);
        long double total = 0;
        for (unsigned int i = 1; i < line.Size(); ++i) {
            total += std::hypot(static_cast<long double>(line[i].x) - line[i - 1].x,
                                static_cast<long double>(line[i].y) - line[i - 1].y);
        }
        PropSamples const flat = Flattened(path, gc);
        if (total < gc.minPointGap) {
            RC_ASSERT(flat.points.size() == 2);
            return;
        }
        unsigned int next = 0;
        for (PropPoint const& p : flat.points) {
            next += next < line.Size() && p == line[next] ? 1 : 0;
        }
        RC_ASSERT(next == line.Size());
        RC_ASSERT(flat.values.back() == curve.Eval(s, 0) || total == 0);
        if (gc.minPointGap > 0) {
            return;
        }
        // Without a gap every break is there, and every value is that of the curve. Rounding of
        // points to float moves lengths by some 1e-5, and the steepest slope is 10 in 0.1 units of
        // the curve.
        long double at = 0;
        for (unsigned int i = 0; i < flat.points.size() && total > 0; ++i) {
            if (i > 0) {
                at += std::hypot(static_cast<long double>(flat.points[i].x) - flat.points[i - 1].x,
                                 static_cast<long double>(flat.points[i].y) - flat.points[i - 1].y);
            }
            double const place = double(at / total) * s;
            RC_ASSERT(std::fabs(flat.values[i] - curve.Eval(place, 0)) <=
                      100 * (1e-5 * s / double(total) + 1e-6));
        }
    }));
}

TEST(HvPath2fProp1d_flatten, HostileNumbersDoNoHarm)
{
    float const floats[] = {0.0F,
                            1e-45F,
                            1e38F,
                            -3e38F,
                            std::numeric_limits<float>::infinity(),
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
            HvGC gc;
            gc.minPointGap = d;
            PropSamples flat = Flattened(path, gc);
            EXPECT_LE(flat.points.size(), 8u);
            gc = HvGC();
            gc.propFlatness = d;
            gc.transform.Translate(d, d, d);
            flat = Flattened(path, gc);
            EXPECT_LE(flat.points.size(), 8u);
        }
    }
}
