// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Every form that keyframes come in, and what is refused of them.

#include <tools/ToolError.h>
#include <tools/lottie/LottieDocument.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// A document whose only animated property has these keyframes.
LottieDocument Read(std::string const& keys)
{
    return LottieDocument_Parse(R"({"layers": [{"ks": {"r": {"a": 1, "k": )" + keys + "}}}]}");
}

/// The message with which a document of these keyframes is refused; "" when it is read.
std::string Refusal(std::string const& keys)
{
    try {
        Read(keys);
    } catch (ToolError const& error) {
        return error.what();
    }
    return std::string();
}

}  // namespace

TEST(keyframes, ScalarWithEasing)
{
    LottieDocument const d = Read(R"([
        {"t": 1, "s": [10], "o": {"x": 0.25, "y": 0.5}, "i": {"x": 0.75, "y": 1.5}},
        {"t": 5, "s": [20]}])");
    ASSERT_EQ(d.tracks.size(), 1u);
    LottieTrack const& track = d.tracks[0];
    EXPECT_EQ(track.path, "layers[0].ks.r");
    EXPECT_EQ(track.name, "rotation");
    ASSERT_EQ(track.keys.size(), 2u);
    LottieKey const& key = track.keys[0];
    EXPECT_EQ(key.time, 1);
    EXPECT_EQ(key.value, 10);
    EXPECT_EQ(key.segment, LottieSegment::Eased);
    EXPECT_EQ(key.easing.outX, 0.25);
    EXPECT_EQ(key.easing.outY, 0.5);
    EXPECT_EQ(key.easing.inX, 0.75);
    EXPECT_EQ(key.easing.inY, 1.5);
    EXPECT_EQ(track.keys[1].time, 5);
    EXPECT_EQ(track.keys[1].value, 20);
    EXPECT_EQ(track.keys[1].segment, LottieSegment::Hold);
    EXPECT_TRUE(d.notes.empty());
}

TEST(keyframes, ValueAsBareNumber)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": 3, "h": 1}, {"t": 2, "s": 4.5}])");
    ASSERT_EQ(d.tracks.size(), 1u);
    EXPECT_EQ(d.tracks[0].keys[0].value, 3);
    EXPECT_EQ(d.tracks[0].keys[0].segment, LottieSegment::Hold);
    EXPECT_EQ(d.tracks[0].keys[1].value, 4.5);
}

TEST(keyframes, HoldWinsOverEasing)
{
    for (char const* held : {"1", "true"}) {
        LottieDocument const d =
            Read(std::string(R"([{"t": 0, "s": [1], "h": )") + held +
                 R"(, "o": {"x": 0, "y": 0}, "i": {"x": 1, "y": 1}}, {"t": 1, "s": [2]}])");
        EXPECT_EQ(d.tracks[0].keys[0].segment, LottieSegment::Hold);
    }
    LottieDocument const d = Read(R"([{"t": 0, "s": [1], "h": 0}, {"t": 1, "s": [2]}])");
    EXPECT_EQ(d.tracks[0].keys[0].segment, LottieSegment::Linear);
}

TEST(keyframes, WithoutEasingIsLinear)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": [1]}, {"t": 1, "s": [2],
        "o": {"x": 0, "y": 0}}, {"t": 2, "s": [3]}])");
    EXPECT_EQ(d.tracks[0].keys[0].segment, LottieSegment::Linear);
    // Half an easing is none.
    EXPECT_EQ(d.tracks[0].keys[1].segment, LottieSegment::Linear);
}

TEST(keyframes, OldFormHasTheEndWithTheStart)
{
    LottieDocument const d = Read(R"([
        {"t": 0, "s": [1], "e": [5], "o": {"x": 0, "y": 0}, "i": {"x": 1, "y": 1}},
        {"t": 4, "s": [5], "e": [7], "h": 1},
        {"t": 9}])");
    ASSERT_EQ(d.tracks[0].keys.size(), 3u);
    EXPECT_EQ(d.tracks[0].keys[1].value, 5);
    EXPECT_EQ(d.tracks[0].keys[2].value, 7);
    EXPECT_EQ(d.tracks[0].keys[2].time, 9);
}

TEST(keyframes, LastKeyOfTimeAloneStaysAtTheValueBefore)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": [1]}, {"t": 9}])");
    EXPECT_EQ(d.tracks[0].keys[1].value, 1);
}

TEST(keyframes, OwnStartWinsOverTheEndBefore)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": [1], "e": [5]}, {"t": 4, "s": [6]}])");
    EXPECT_EQ(d.tracks[0].keys[1].value, 6);
}

TEST(keyframes, ComponentsBecomeTracksWithEasingsOfTheirOwn)
{
    LottieDocument const d = Read(R"([
        {"t": 0, "s": [1, 2, 3], "o": {"x": [0.1, 0.2], "y": 0}, "i": {"x": 0.9, "y": [1, 2, 3]}},
        {"t": 1, "s": [4, 5, 6]}])");
    ASSERT_EQ(d.tracks.size(), 3u);
    EXPECT_EQ(d.tracks[0].path, "layers[0].ks.r[0]");
    EXPECT_EQ(d.tracks[2].path, "layers[0].ks.r[2]");
    EXPECT_EQ(d.tracks[1].name, "rotation y");
    EXPECT_EQ(d.tracks[1].keys[1].value, 5);
    EXPECT_EQ(d.tracks[0].keys[0].easing.outX, 0.1);
    EXPECT_EQ(d.tracks[1].keys[0].easing.outX, 0.2);
    // Two numbers for three components: the last serves the third.
    EXPECT_EQ(d.tracks[2].keys[0].easing.outX, 0.2);
    EXPECT_EQ(d.tracks[2].keys[0].easing.inX, 0.9);
    EXPECT_EQ(d.tracks[2].keys[0].easing.inY, 3);
}

TEST(keyframes, OnlyComponentsOfAllKeysBecomeTracks)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": [1, 2, 3]}, {"t": 1, "s": [4, 5]}])");
    EXPECT_EQ(d.tracks.size(), 2u);
}

TEST(keyframes, FourComponentsAreNumbered)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": [1, 2, 3, 4]}])");
    ASSERT_EQ(d.tracks.size(), 4u);
    EXPECT_EQ(d.tracks[3].name, "rotation 3");
}

TEST(keyframes, ColoursAreNamed)
{
    LottieDocument const d = LottieDocument_Parse(
        R"({"layers": [{"ty": "fl", "c": {"k": [{"t": 0, "s": [1, 0.5, 0, 1]}]}}]})");
    ASSERT_EQ(d.tracks.size(), 4u);
    EXPECT_EQ(d.tracks[1].name, "colour green");
    EXPECT_EQ(d.tracks[3].name, "colour alpha");
}

TEST(keyframes, PathsAndTextsAreSkippedWithANote)
{
    for (char const* value : {R"([{"i": [], "o": [], "v": [], "c": true}])", R"({"t": "words"})"}) {
        LottieDocument const d = Read(std::string(R"([{"t": 0, "s": )") + value + "}]");
        EXPECT_TRUE(d.tracks.empty());
        ASSERT_EQ(d.notes.size(), 1u);
        EXPECT_EQ(d.notes[0].path, "layers[0].ks.r");
        EXPECT_NE(d.notes[0].text.find("skipped"), std::string::npos);
    }
}

TEST(keyframes, LaterOfTwoKeysAtOneTimeIsKept)
{
    LottieDocument const d = Read(R"([{"t": 0, "s": [1], "e": [2]}, {"t": 4, "s": [2], "e": [3]},
        {"t": 4, "s": [8], "h": 1}, {"t": 6, "s": [9]}])");
    ASSERT_EQ(d.tracks[0].keys.size(), 3u);
    EXPECT_EQ(d.tracks[0].keys[1].time, 4);
    EXPECT_EQ(d.tracks[0].keys[1].value, 8);
    EXPECT_EQ(d.tracks[0].keys[1].segment, LottieSegment::Hold);
    ASSERT_EQ(d.notes.size(), 1u);
    EXPECT_EQ(d.notes[0].path, "layers[0].ks.r.k[2]");
}

TEST(keyframes, EasingTimesAreCutToTheSegment)
{
    LottieDocument const d = Read(R"([
        {"t": 0, "s": [1], "o": {"x": -0.5, "y": -2}, "i": {"x": 1.5, "y": 3}}, {"t": 1, "s": [2]}])");
    EXPECT_EQ(d.tracks[0].keys[0].easing.outX, 0);
    EXPECT_EQ(d.tracks[0].keys[0].easing.inX, 1);
    EXPECT_EQ(d.tracks[0].keys[0].easing.outY, -2);
    EXPECT_EQ(d.tracks[0].keys[0].easing.inY, 3);
    ASSERT_EQ(d.notes.size(), 1u);
}

TEST(keyframes, FallingTimesAreRefused)
{
    EXPECT_EQ(Refusal(R"([{"t": 10, "s": [1]}, {"t": 9.5, "s": [2]}])"),
              "layers[0].ks.r.k[1].t: key times must rise, but 9.5 follows 10");
}

TEST(keyframes, WrongTypesAreRefusedByTheirPlace)
{
    EXPECT_EQ(Refusal(R"([{"t": "soon", "s": [1]}])"), "layers[0].ks.r.k[0].t is not a number");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": "high"}])"), "layers[0].ks.r.k[0].s is not a number");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1, null]}])"), "layers[0].ks.r.k[0].s[1] is not a number");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": []}])"), "layers[0].ks.r.k[0].s is empty");
    EXPECT_EQ(Refusal(R"([{"t": 0}])"), "layers[0].ks.r.k[0] is the first key and has no value");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1]}, 7])"), "layers[0].ks.r.k[1] has no time");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1]}, {"s": [1]}])"), "layers[0].ks.r.k[1] has no time");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1], "i": 3, "o": {"x": 0, "y": 0}}])"), "");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1], "i": 3, "o": {"x": 0, "y": 0}}, {"t": 1, "s": [1]}])"),
              "layers[0].ks.r.k[0].i.x is missing");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1], "i": {"x": [], "y": 1}, "o": {"x": 0, "y": 0}},
                          {"t": 1, "s": [1]}])"),
              "layers[0].ks.r.k[0].i.x is empty");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1], "e": "up"}, {"t": 1}])"),
              "layers[0].ks.r.k[0].e is not a number");
}

TEST(keyframes, HugeNumbersAreRefused)
{
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [1e101]}])"), "layers[0].ks.r.k[0].s[0] is beyond 1e100");
    EXPECT_EQ(Refusal(R"([{"t": -1e101, "s": [1]}])"), "layers[0].ks.r.k[0].t is beyond 1e100");
    EXPECT_EQ(Refusal(R"([{"t": 0, "s": [-1e100]}])"), "");
    // No JSON at all: the parser knows neither.
    EXPECT_NE(Refusal(R"([{"t": 0, "s": [NaN]}])"), "");
    EXPECT_NE(Refusal(R"([{"t": 0, "s": [1e999]}])"), "");
}

TEST(keyframes, PositionWithHandlesIsAMotionPathToo)
{
    LottieDocument const d = Read(R"([
        {"t": 1, "s": [10, 20, 30], "o": {"x": 0.2, "y": 0}, "i": {"x": 1.5, "y": 1},
         "to": [1, 2, 3], "ti": [-4, -5, -6]},
        {"t": 5, "s": [20, 30, 40], "to": null, "ti": [7, 8]},
        {"t": 9, "s": [0, 0, 0]}])");
    EXPECT_EQ(d.tracks.size(), 3u);
    ASSERT_EQ(d.paths.size(), 1u);
    LottiePath const& path = d.paths[0];
    EXPECT_EQ(path.path, "layers[0].ks.r");
    EXPECT_EQ(path.name, "rotation");
    ASSERT_EQ(path.keys.size(), 3u);
    EXPECT_EQ(path.keys[0].time, 1);
    EXPECT_EQ(path.keys[0].place, HvPoint3<double>(10, 20, 30));
    EXPECT_EQ(path.keys[0].leaving, HvPoint3<double>(1, 2, 3));
    EXPECT_EQ(path.keys[0].arriving, HvPoint3<double>(-4, -5, -6));
    EXPECT_EQ(path.keys[0].segment, LottieSegment::Eased);
    EXPECT_EQ(path.keys[0].easing.outX, 0.2);
    EXPECT_EQ(path.keys[0].easing.inX, 1) << "cut to the segment";
    EXPECT_EQ(path.keys[1].segment, LottieSegment::Linear);
    EXPECT_EQ(path.keys[1].leaving, HvPoint3<double>());
    EXPECT_EQ(path.keys[1].arriving, HvPoint3<double>(7, 8, 0)) << "of a plane";
    EXPECT_EQ(path.keys[2].segment, LottieSegment::Hold);
}

TEST(keyframes, WithoutHandlesThereIsNoMotionPath)
{
    EXPECT_TRUE(Read(R"([{"t": 0, "s": [1, 2]}, {"t": 2, "s": [3, 4]}])").paths.empty());
    EXPECT_TRUE(
        Read(R"([{"t": 0, "s": [1], "to": [1], "ti": [1]}, {"t": 2, "s": [3]}])").paths.empty())
        << "a single number is no place";
}

TEST(keyframes, HandlesThatAreNoNumbersAreRefused)
{
    EXPECT_NE(
        Refusal(R"([{"t": 0, "s": [1, 2], "to": ["a", 1]}, {"t": 2, "s": [3, 4]}])").find("to"),
        std::string::npos);
    EXPECT_NE(Refusal(R"([{"t": 0, "s": [1, 2], "ti": {}}, {"t": 2, "s": [3, 4]}])"), "");
}
