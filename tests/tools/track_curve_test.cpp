// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Tracks as curves: values at the keys and between them.

#include <tools/curve/track_curve.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace {

LottieKey Key(double time, double value, LottieSegment segment)
{
    LottieKey key;
    key.time = time;
    key.value = value;
    key.segment = segment;
    return key;
}

LottieKey Eased(double time, double value, double outX, double outY, double inX, double inY)
{
    LottieKey key = Key(time, value, LottieSegment::Eased);
    key.easing = {outX, outY, inX, inY};
    return key;
}

/// The easing's value at a share of its time, in long double, by bisection: 0 to 1.
long double Ease(LottieEasing const& e, long double time)
{
    auto const bezier = [](long double a, long double b, long double t) {
        return 3 * (1 - t) * (1 - t) * t * a + 3 * (1 - t) * t * t * b + t * t * t;
    };
    long double low = 0;
    long double high = 1;
    for (int i = 0; i < 80; ++i) {
        long double const middle = (low + high) / 2;
        (bezier(e.outX, e.inX, middle) < time ? low : high) = middle;
    }
    return bezier(e.outY, e.inY, low);
}

double Share()
{
    return *rc::gen::inRange(0, 1001) / 1000.0;
}

}  // namespace

TEST(track_curve, SingleKeyIsAConstant)
{
    LottieTrack const track = {"p", "n", {Key(5, 7, LottieSegment::Hold)}};
    auto const curve = TrackCurve_Build(track);
    EXPECT_EQ(curve->GetNumKeys(), 1u);
    EXPECT_EQ(curve->Eval(-100, 0), 7);
    EXPECT_EQ(curve->Eval(5, 0), 7);
    EXPECT_EQ(curve->Eval(100, 0), 7);
    EXPECT_EQ(TrackCurve_LargestError(track, *curve), 0);
}

TEST(track_curve, HoldsJumpAtTheNextKey)
{
    LottieTrack const track = {"p",
                               "n",
                               {Key(0, 1, LottieSegment::Hold), Key(10, 4, LottieSegment::Hold),
                                Key(20, 2, LottieSegment::Hold)}};
    auto const curve = TrackCurve_Build(track);
    EXPECT_EQ(curve->Eval(9.999, 0), 1);
    EXPECT_EQ(curve->EvalLeft(10, 0), 1);
    EXPECT_EQ(curve->Eval(10, 0), 4);
    EXPECT_EQ(curve->EvalLeft(20, 0), 4);
    EXPECT_EQ(curve->Eval(20, 0), 2);
    EXPECT_EQ(curve->Eval(21, 0), 2);
    EXPECT_EQ(TrackCurve_LeftValue(track, 0), 1);
    EXPECT_EQ(TrackCurve_LeftValue(track, 2), 4);
    EXPECT_EQ(TrackCurve_LargestError(track, *curve), 0);
}

TEST(track_curve, LinearSegmentIsALine)
{
    LottieTrack const track = {
        "p", "n", {Key(0, 1, LottieSegment::Linear), Key(4, 9, LottieSegment::Hold)}};
    auto const curve = TrackCurve_Build(track);
    EXPECT_EQ(curve->Eval(1, 0), 3);
    EXPECT_EQ(curve->Eval(3, 0), 7);
}

TEST(track_curve, SegmentsOfAllKindsFollowEachOther)
{
    LottieTrack const track = {"p",
                               "n",
                               {Eased(-3, 5, 0.3, 0, 0.7, 1), Key(1, -2, LottieSegment::Linear),
                                Key(2, 8, LottieSegment::Hold), Eased(6, 1, 0, 2, 1, -1),
                                Key(9, 3, LottieSegment::Hold)}};
    auto const curve = TrackCurve_Build(track);
    EXPECT_EQ(curve->GetNumKeys(), 5u);
    EXPECT_EQ(curve->GetSegmentKindAtParameter(0), HvBaseFCurve::CubicSegment);
    EXPECT_EQ(curve->GetSegmentKindAtParameter(1.5), HvBaseFCurve::LinearSegment);
    EXPECT_EQ(curve->GetSegmentKindAtParameter(3), HvBaseFCurve::ConstantSegment);
    EXPECT_EQ(curve->GetSegmentKindAtParameter(7), HvBaseFCurve::CubicSegment);
    EXPECT_EQ(TrackCurve_LargestError(track, *curve), 0);
    EXPECT_EQ(curve->GetExtrapolationMethod(), HvBaseFCurve::ConstantExtrapolation);
}

RC_GTEST_PROP(track_curve, FollowsItsEasing, ())
{
    LottieKey const first =
        Eased(*rc::gen::inRange(-50, 50) / 3.0, *rc::gen::inRange(-500, 500) / 7.0, Share(),
              Share() * 4 - 2, Share(), Share() * 4 - 2);
    LottieKey const last = Key(first.time + *rc::gen::inRange(1, 90) / 3.0,
                               *rc::gen::inRange(-500, 500) / 7.0, LottieSegment::Hold);
    auto const curve = TrackCurve_Build({"p", "n", {first, last}});
    for (int i = 1; i < 20; ++i) {
        double const time = first.time + (last.time - first.time) * i / 20;
        long double const share = (static_cast<long double>(time) - first.time) /
                                  (static_cast<long double>(last.time) - first.time);
        long double const expected =
            first.value +
            (static_cast<long double>(last.value) - first.value) * Ease(first.easing, share);
        // The curve's parameter is solved to 1e-9 in time; an easing that stands upright makes of
        // that its cube root, 1e-3, of a range of values of at most 300. Elsewhere it is far
        // better.
        double const steep =
            std::fabs(first.easing.outX - 1) < 0.2 && first.easing.inX < 0.2 ? 0.3 : 1e-4;
        RC_ASSERT(std::fabs(curve->Eval(time, 0) - static_cast<double>(expected)) < steep);
    }
}

// Time stands still in the middle of this easing; a hair more and it would run backwards.
TEST(track_curve, SteepestEasingIsTakenAtAnyPlace)
{
    for (int i = 0; i < 1000; ++i) {
        double const start = std::pow(1.02, i) - 700;
        double const end = start + (i % 97 + 1) / 7.0;
        LottieTrack const track = {
            "p", "n", {Eased(start, 0, 1, 0, 0, 1), Key(end, 100, LottieSegment::Hold)}};
        auto const curve = TrackCurve_Build(track);
        EXPECT_EQ(TrackCurve_LargestError(track, *curve), 0);
        EXPECT_NEAR(curve->Eval(start + (end - start) / 4, 0),
                    100 * static_cast<double>(Ease(track.keys[0].easing, 0.25L)), 0.1);
    }
}

TEST(track_curve, HugeAndTinyNumbersAreTaken)
{
    for (double value : {1e100, -1e100, 5e-324, 0.0}) {
        LottieTrack const track = {
            "p",
            "n",
            {Eased(0, value, 0.3, 1e100, 0.7, -1e100), Key(5e-324, -value, LottieSegment::Hold)}};
        TrackCurve_LargestError(track, *TrackCurve_Build(track));
        LottieTrack const wide = {
            "p",
            "n",
            {Eased(-1e100, value, 0.3, 0, 0.7, 1), Key(1e100, -value, LottieSegment::Hold)}};
        EXPECT_EQ(TrackCurve_LargestError(wide, *TrackCurve_Build(wide)), 0);
    }
}
