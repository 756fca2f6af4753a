// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Positions of an animation as motion paths.

#include <tools/ToolError.h>
#include <tools/curve/track_path.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Place = HvPoint3<double>;

LottiePathKey Key(double time, Place const& place, LottieSegment segment)
{
    LottiePathKey key;
    key.time = time;
    key.place = place;
    key.segment = segment;
    return key;
}

LottiePathKey Eased(double time, Place const& place, LottieEasing const& easing)
{
    LottiePathKey key = Key(time, place, LottieSegment::Eased);
    key.easing = easing;
    return key;
}

/// The rules at the two ends of the only segment, the start's first.
std::pair<int, int> RulesOf(LottiePathKey const& first)
{
    HvMotionPath3d const path =
        TrackPath_Build({"p", "n", {first, Key(10, {9, 0, 0}, LottieSegment::Hold)}});
    HvMotionPath3d::TangentInfo start = HvMotionPath3d::TangentFree;
    HvMotionPath3d::TangentInfo end = HvMotionPath3d::TangentFree;
    path.GetRightTangentInfo(0, start);
    path.GetLeftTangentInfo(3, end);
    return {start, end};
}

}  // namespace

TEST(track_path, HandlesAreAddedToThePlaces)
{
    LottiePathKey first = Key(2, {1, 2, 3}, LottieSegment::Linear);
    first.leaving = {1, 0, 0};
    first.arriving = {0, -1, 0};
    HvMotionPath3d const path =
        TrackPath_Build({"p", "n", {first, Key(7, {5, 6, 7}, LottieSegment::Hold)}});
    ASSERT_EQ(path.NumPoints(), 4u);
    Place const expected[4] = {{1, 2, 3}, {2, 2, 3}, {5, 5, 7}, {5, 6, 7}};
    for (unsigned int i = 0; i < 4; ++i) {
        Place p;
        path.GetControlPoint(i, p);
        EXPECT_EQ(p, expected[i]);
    }
    EXPECT_EQ(path.GetFirstTime(0), 2);
    EXPECT_EQ(path.GetLastTime(0), 7);
}

TEST(track_path, WithoutHandlesTheChordIsEven)
{
    HvMotionPath3d const path = TrackPath_Build(
        {"p",
         "n",
         {Key(0, {0, 0, 0}, LottieSegment::Linear), Key(9, {3, 6, 0}, LottieSegment::Hold)}});
    EXPECT_EQ(path.IsCubicSegmentLinearlyParameterized(0), 1);
    Place p;
    path.Eval(3, 1e-3, p, 0);
    EXPECT_NEAR(p.x, 1, 1e-12);
    EXPECT_NEAR(p.y, 2, 1e-12);
}

TEST(track_path, EasingBecomesTheNearestRules)
{
    using P = HvMotionPath3d;
    EXPECT_EQ(RulesOf(Key(0, {}, LottieSegment::Hold)).first, P::TangentStep);
    EXPECT_EQ(RulesOf(Key(0, {}, LottieSegment::Linear)),
              std::make_pair(int(P::TangentLinear), int(P::TangentLinear)));
    EXPECT_EQ(RulesOf(Eased(0, {}, {0.167, 0.167, 0.833, 0.833})),
              std::make_pair(int(P::TangentLinear), int(P::TangentLinear)));
    EXPECT_EQ(RulesOf(Eased(0, {}, {0.3, 0, 0.7, 1})),
              std::make_pair(int(P::TangentStop), int(P::TangentStop)));
    EXPECT_EQ(RulesOf(Eased(0, {}, {0.3, 0.2, 0.7, 0.7})),
              std::make_pair(int(P::TangentSmooth), int(P::TangentLinear)));
    EXPECT_EQ(RulesOf(Eased(0, {}, {0, 0, 0.7, 0.9})),
              std::make_pair(int(P::TangentSmooth), int(P::TangentSmooth)))
        << "a handle of no length is not level";
}

TEST(track_path, HeldSegmentJumpsAtTheNextKey)
{
    HvMotionPath3d const path = TrackPath_Build(
        {"p",
         "n",
         {Key(0, {1, 1, 0}, LottieSegment::Hold), Key(4, {5, 5, 0}, LottieSegment::Hold)}});
    Place p;
    path.Eval(3.9, 1e-3, p, 0);
    EXPECT_EQ(p, Place(1, 1, 0));
    path.Eval(4, 1e-3, p, 0);
    EXPECT_EQ(p, Place(5, 5, 0));
}

TEST(track_path, SingleKeyIsASingleNode)
{
    HvMotionPath3d const path =
        TrackPath_Build({"p", "n", {Key(3, {1, 2, 3}, LottieSegment::Hold)}});
    EXPECT_EQ(path.NumNodes(), 1u);
}

TEST(track_path, KeysThatThePathRefusesAreToldWithTheirPlace)
{
    LottiePath const path = {
        "layers[0].ks.p", "n", {Key(1, {}, LottieSegment::Hold), Key(1, {}, LottieSegment::Hold)}};
    try {
        TrackPath_Build(path);
        ADD_FAILURE() << "taken";
    } catch (ToolError const& error) {
        EXPECT_NE(std::string(error.what()).find("layers[0].ks.p"), std::string::npos);
    }
}
