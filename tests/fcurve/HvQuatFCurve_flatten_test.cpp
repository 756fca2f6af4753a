// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind as a polyline, held against dense evaluation.

#include "quat_fcurve_support.h"

#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/rotation/HvTransfo4.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using C = HvBaseFCurve;
using Extent = HvExtent2<double>;

constexpr double kHuge = std::numeric_limits<double>::max();

struct Polyline {
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    int result = 0;

    unsigned int NumJumps() const
    {
        return flags.Size() - static_cast<unsigned int>(std::count(flags.begin(), flags.end(), 1));
    }
};

Polyline Drawn(HvQuatFCurve const& curve, Extent const& extent, double tolerance,
               HvTransfo4 const& transfo = HvTransfo4())
{
    Polyline line;
    line.result =
        curve.FlattenFromTo(extent, transfo, tolerance, line.points, line.tags, line.flags, 0);
    EXPECT_EQ(line.points.Size(), line.tags.Size());
    EXPECT_EQ(line.points.Size(), line.flags.Size());
    return line;
}

Polyline Drawn(HvQuatFCurve const& curve, double from, double to, double tolerance)
{
    return Drawn(curve, Extent(from, -kHuge, to, kHuge), tolerance);
}

double DistanceToEdge(HvPoint2<double> const& p, HvPoint2<double> const& a,
                      HvPoint2<double> const& b)
{
    HvPoint2<double> const d = b - a;
    double const square = d.x * d.x + d.y * d.y;
    double t = square > 0 ? ((p.x - a.x) * d.x + (p.y - a.y) * d.y) / square : 0;
    t = std::min(std::max(t, 0.0), 1.0);
    return std::hypot(p.x - a.x - t * d.x, p.y - a.y - t * d.y);
}

/// The farthest that the curve is from the polyline, on [from, to]; edges are sorted by x.
double Farthest(HvQuatFCurve const& curve, Polyline const& line, double from, double to, int n)
{
    double farthest = 0;
    unsigned int v = 0;
    for (int i = 0; i <= n; ++i) {
        double const x = from + (to - from) * i / n;
        HvPoint2<double> const p(x, curve.Eval(x, 0));
        while (v + 2 < line.points.Size() && line.points[v + 1].x < x) {
            ++v;
        }
        double nearest = 1e300;
        unsigned int const first = v < 4 ? 0 : v - 4;
        for (unsigned int k = first; k + 1 < line.points.Size() && k < v + 5; ++k) {
            if (line.flags.Size() == 0 || line.flags[k] != 0) {
                nearest = std::min(nearest, DistanceToEdge(p, line.points[k], line.points[k + 1]));
            }
        }
        farthest = std::max(farthest, nearest);
    }
    return farthest;
}

TEST(HvQuatFCurve_flatten, StaysNearTheCurve)
{
    Trio const trio = MakeTrio();
    HvQuatFCurve const* const components[] = {trio.x.get(), trio.y.get(), trio.z.get()};
    for (HvQuatFCurve const* const curve : components) {
        unsigned int before = 0;
        for (double const tolerance : {1.0, 0.1, 0.001}) {
            Polyline const line = Drawn(*curve, 0, 6, tolerance);
            EXPECT_EQ(line.result, 1);
            EXPECT_EQ(line.NumJumps(), 0u);
            // The probes look at quarters: what lies between them may be a little further.
            EXPECT_LE(Farthest(*curve, line, 0, 6, 5000), 1.25 * tolerance);
            EXPECT_GE(line.points.Size(), before);
            before = line.points.Size();
            EXPECT_LT(before, 3000u);
            EXPECT_EQ(line.points[0].x, 0);
            EXPECT_EQ(line.points[before - 1].x, 6);
            EXPECT_EQ(line.tags[0], HvPointTagStart);
            EXPECT_EQ(line.tags[before - 1], HvPointTagEnd);
        }
    }
}

TEST(HvQuatFCurve_flatten, CoversTheKeysAlone)
{
    Trio const trio = MakeTrio();
    Polyline line;
    HvTransfo4 const identity;
    unsigned int const count = trio.x->Flatten(identity, 0.01, line.points, line.tags, 1);
    EXPECT_EQ(count, line.points.Size());
    EXPECT_EQ(line.points[0].x, 1);
    EXPECT_NEAR(line.points[0].y, 10, 1e-9);
    EXPECT_EQ(line.points[count - 1].x, 5);
    EXPECT_EQ(line.tags[0], HvPointTagStart);
    EXPECT_EQ(line.tags[1], HvPointTagInner);
    EXPECT_EQ(line.tags[count - 1], HvPointTagEnd);
    EXPECT_LE(Farthest(*trio.x, line, 1, 5, 4000), 0.0125);
    // Appended, as a run of its own.
    EXPECT_EQ(trio.x->Flatten(identity, 0.01, line.points, line.tags, 1), 2 * count);
    EXPECT_EQ(line.tags[count], HvPointTagStart);
}

TEST(HvQuatFCurve_flatten, GivesAKeyTwiceAndNothingWithoutKeys)
{
    HvQuatFCurve curve(0u);
    Polyline line;
    HvTransfo4 const identity;
    EXPECT_EQ(curve.Flatten(identity, 1, line.points, line.tags, 0), 0u);
    curve.CreateKey(3, 7);
    EXPECT_EQ(curve.Flatten(identity, 1, line.points, line.tags, 0), 2u);
    EXPECT_EQ(line.points[1].x, 3);
    EXPECT_NEAR(line.points[1].y, 7, kRoundTrip);
    EXPECT_EQ(line.tags[0], HvPointTagStart);
    EXPECT_EQ(line.tags[1], HvPointTagEnd);
}

TEST(HvQuatFCurve_flatten, IsALineWithoutKeysAndOutsideOfThem)
{
    HvQuatFCurve empty(1u);
    empty.SetValueWhenNoKeys(4);
    Polyline line = Drawn(empty, 0, 2, 1);
    ASSERT_EQ(line.points.Size(), 2u);
    EXPECT_NEAR(line.points[1].y, 4, kRoundTrip);
    EXPECT_EQ(Drawn(empty, Extent(0, 5, 2, 6), 1).points.Size(), 0u);
    Trio const trio = MakeTrio();
    line = Drawn(*trio.x, -4, 0.5, 1);
    ASSERT_EQ(line.points.Size(), 2u);
    EXPECT_NEAR(line.points[0].y, 10, 1e-9);
    EXPECT_EQ(line.tags[1], HvPointTagEnd);
    EXPECT_EQ(Drawn(*trio.x, 7, 9, 1).points.Size(), 2u);
}

TEST(HvQuatFCurve_flatten, ShowsAJumpWhereTheAngleJumps)
{
    // A whole turn between two equal keys: the angle climbs to half a turn, falls by one, climbs.
    HvQuatFCurve curve(2u);
    curve.GetQuatCurve()->SetKey(KeyOf(0, 0, 0, 10, 1), 0.0);
    curve.GetQuatCurve()->SetKey(KeyOf(4, 0, 0, 70), 0.0);
    Polyline const line = Drawn(curve, 0, 4, 0.01);
    EXPECT_EQ(line.NumJumps(), 1u);
    for (unsigned int i = 0; i + 1 < line.points.Size(); ++i) {
        double const step = std::abs(line.points[i + 1].y - line.points[i].y);
        bool const isJump = line.flags[i] == 0 && line.flags[i + 1] != 0;
        if (isJump) {
            EXPECT_NEAR(step, 360, 1e-6);
            EXPECT_EQ(line.points[i].x, line.points[i + 1].x);
        }
    }
    EXPECT_LE(Farthest(curve, line, 0, 4, 4001), 0.0125);
}

TEST(HvQuatFCurve_flatten, RepeatsCyclesWithTheirJumps)
{
    Trio const trio = MakeTrio();
    trio.x->SetExtrapolationMethod(C::CycleExtrapolation);
    Polyline const line = Drawn(*trio.x, -7.5, 13.25, 0.01);
    EXPECT_LE(Farthest(*trio.x, line, -7.5, 13.25, 7919), 0.0125);
    // 10 at the start of a cycle, 20 at its end: a jump of 10 at -3, 1, 5, 9 and 13, and at -7.
    unsigned int jumps = 0;
    for (unsigned int i = 0; i + 1 < line.points.Size(); ++i) {
        HvPoint2<double> const d = line.points[i + 1] - line.points[i];
        if (line.flags[i] == 0 && d.x == 0) {
            ++jumps;
            EXPECT_NEAR(std::abs(d.y), 10, 1e-6) << line.points[i].x;
            EXPECT_EQ(std::fmod(line.points[i].x + 7, 4), 0);
        }
    }
    EXPECT_EQ(jumps, 6u);
    trio.x->SetExtrapolationMethod(C::RelativeCycleExtrapolation);
    Polyline const relative = Drawn(*trio.x, -7.5, 13.25, 0.01);
    EXPECT_LE(Farthest(*trio.x, relative, -7.5, 13.25, 7919), 0.0125);
}

TEST(HvQuatFCurve_flatten, FollowsALinearExtrapolation)
{
    Trio const trio = MakeTrio();
    trio.curve->SetExtrapolationMethod(2);
    Polyline const line = Drawn(*trio.y, -3, 8, 0.01);
    EXPECT_LE(Farthest(*trio.y, line, -3, 8, 7919), 0.0125);
}

TEST(HvQuatFCurve_flatten, IsMappedThenClipped)
{
    Trio const trio = MakeTrio();
    HvTransfo4 transfo;
    transfo.Scale(10, -0.5, 1);
    Polyline const line = Drawn(*trio.x, Extent(1.5, 0, 4.5, 30), 0.05, transfo);
    ASSERT_GT(line.points.Size(), 4u);
    for (auto const& p : line.points) {
        EXPECT_GE(p.x, 15 - 1e-9);
        EXPECT_LE(p.x, 45 + 1e-9);
        EXPECT_GE(p.y, -15 - 1e-9);
        EXPECT_LE(p.y, 1e-9);
        EXPECT_NEAR(-2 * p.y, trio.x->Eval(p.x / 10, 0), 0.2);
    }
    EXPECT_GE(std::count(line.tags.begin(), line.tags.end(), HvPointTagStart), 2)
        << "the curve leaves the view and comes back";
    EXPECT_EQ(Drawn(*trio.x, Extent(1.5, 300, 4.5, 301), 0.05, transfo).points.Size(), 0u);
}

TEST(HvQuatFCurve_flatten, GivesOneParameterTwice)
{
    Trio const trio = MakeTrio();
    Polyline line = Drawn(*trio.x, 2, 2, 1);
    ASSERT_EQ(line.points.Size(), 2u);
    EXPECT_NEAR(line.points[0].y, 40, 1e-9);
    EXPECT_EQ(line.points[0], line.points[1]);
    EXPECT_EQ(line.flags[0], 1);
    EXPECT_EQ(line.tags[1], HvPointTagEnd);
    EXPECT_EQ(Drawn(*trio.x, Extent(2, 50, 2, 60), 1).points.Size(), 0u);
    EXPECT_EQ(Drawn(*trio.x, 3, 2, 1).points.Size(), 0u);
}

RC_GTEST_PROP(HvQuatFCurve_flatten, StaysNearAnyPlainCurve, ())
{
    auto const degrees = rc::gen::inRange(-80, 81);
    Trio const trio;
    for (int i = 0; i < 4; ++i) {
        trio.curve->SetKey(KeyOf(10 * i, *degrees, *degrees / 2, *degrees), 0.0);
    }
    Polyline const line = Drawn(*trio.z, 0, 30, 0.05);
    RC_ASSERT(Farthest(*trio.z, line, 0, 30, 601) <= 0.0625);
}

TEST(HvQuatFCurve_flatten, EndsForAnyTolerance)
{
    Trio const trio = MakeTrio();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const tolerance : {0.0, -1.0, nan, 1e-300, kHuge, double(INFINITY)}) {
        Polyline const line = Drawn(*trio.z, 0, 6, tolerance);
        EXPECT_EQ(line.result, 1);
        EXPECT_GE(line.points.Size(), 2u);
        EXPECT_LT(line.points.Size(), 20000u);
    }
}

TEST(HvQuatFCurve_flatten, EndsForAnyExtent)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const numbers[] = {-INFINITY, -kHuge, -1e17, 0,        1 + 1e-16,
                              3,         1e17,   kHuge, INFINITY, nan};
    Trio const trio = MakeTrio();
    for (unsigned int const method : {1u, 2u, 3u, 4u}) {
        trio.curve->SetExtrapolationMethod(method);
        for (double const from : numbers) {
            for (double const to : numbers) {
                Polyline const line = Drawn(*trio.z, from, to, 1);
                EXPECT_TRUE(line.result == 1 || line.points.Size() == 0);
            }
        }
    }
    // More cycles than anybody sees.
    trio.x->SetExtrapolationMethod(C::CycleExtrapolation);
    EXPECT_EQ(Drawn(*trio.z, 0, 1e8, 1).result, 0);
}

TEST(HvQuatFCurve_flatten, LeavesOutWhatIsNoNumber)
{
    HvQuatFCurve curve(0u);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    curve.GetQuatCurve()->SetKey(KeyOf(0, 1, 0, 0), 0.0);
    curve.GetQuatCurve()->SetKey(KeyOf(1, nan, 0, 0), 0.0);
    curve.GetQuatCurve()->SetKey(KeyOf(2, INFINITY, 0, 0), 0.0);
    for (auto const& p : Drawn(curve, -1, 3, 0.1).points) {
        EXPECT_TRUE(std::isfinite(p.y));
    }
}

}  // namespace
