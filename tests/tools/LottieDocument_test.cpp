// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The walk through a document: what is found where, and what is no document.

#include <tools/ToolError.h>
#include <tools/lottie/LottieDocument.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Refusal(std::string const& text)
{
    try {
        LottieDocument_Parse(text);
    } catch (ToolError const& error) {
        return error.what();
    }
    return std::string();
}

/// An animated property.
std::string const kMoving = R"({"a": 1, "k": [{"t": 0, "s": [1], "h": 1}, {"t": 1, "s": [2]}]})";

}  // namespace

TEST(LottieDocument, HeadIsRead)
{
    LottieDocument const d =
        LottieDocument_Parse(R"({"nm": "ball", "fr": 29.97, "ip": 5, "op": 90, "layers": []})");
    EXPECT_EQ(d.name, "ball");
    EXPECT_EQ(d.frameRate, 29.97);
    EXPECT_EQ(d.firstFrame, 5);
    EXPECT_EQ(d.lastFrame, 90);
    EXPECT_TRUE(d.tracks.empty());
}

TEST(LottieDocument, HeadMayBeMissing)
{
    LottieDocument const d = LottieDocument_Parse(R"({"layers": []})");
    EXPECT_EQ(d.name, "");
    EXPECT_EQ(d.frameRate, 0);
}

TEST(LottieDocument, TracksFollowTheOrderOfTheFileAndAssetsComeLast)
{
    LottieDocument const d = LottieDocument_Parse(
        R"({"assets": [{"id": "a", "layers": [{"nm": "Inner", "ks": {"o": )" + kMoving +
        R"(}}]}], "layers": [{"nm": "Ball", "ks": {"r": )" + kMoving + R"(, "o": )" + kMoving +
        R"(}, "shapes": [{"nm": "Group", "ty": "gr", "it": [{"nm": "Trim", "ty": "tm", "s": )" +
        kMoving + R"(, "e": {"a": 0, "k": 100}}]}]}]})");
    ASSERT_EQ(d.tracks.size(), 4u);
    EXPECT_EQ(d.tracks[0].path, "layers[0].ks.r");
    EXPECT_EQ(d.tracks[0].name, "Ball / rotation");
    EXPECT_EQ(d.tracks[1].path, "layers[0].ks.o");
    EXPECT_EQ(d.tracks[2].path, "layers[0].shapes[0].it[0].s");
    EXPECT_EQ(d.tracks[2].name, "Ball / Group / Trim / trim start");
    EXPECT_EQ(d.tracks[3].path, "assets[0].layers[0].ks.o");
    EXPECT_EQ(d.tracks[3].name, "Inner / opacity");
}

TEST(LottieDocument, SplitPositionIsNamedByItsAxis)
{
    LottieDocument const d = LottieDocument_Parse(
        R"({"layers": [{"nm": "Ball", "ks": {"p": {"s": true, "y": )" + kMoving + "}}}]}");
    ASSERT_EQ(d.tracks.size(), 1u);
    EXPECT_EQ(d.tracks[0].path, "layers[0].ks.p.y");
    EXPECT_EQ(d.tracks[0].name, "Ball / position y");
}

TEST(LottieDocument, StaticPropertiesAreNoTracks)
{
    LottieDocument const d = LottieDocument_Parse(
        R"({"layers": [{"ks": {"r": {"a": 0, "k": 5}, "p": {"a": 0, "k": [1, 2, 3]},
            "a": {"k": []}, "s": {"k": [{"v": 1}]}}}]})");
    EXPECT_TRUE(d.tracks.empty());
    EXPECT_TRUE(d.notes.empty());
}

TEST(LottieDocument, ExpressionsAreIgnoredWithANote)
{
    LottieDocument const d = LottieDocument_Parse(
        R"({"layers": [{"ks": {"r": {"a": 0, "k": 5, "x": "var $bm_rt = loopOut();"}}}]})");
    ASSERT_EQ(d.notes.size(), 1u);
    EXPECT_EQ(d.notes[0].path, "layers[0].ks.r");
    EXPECT_EQ(d.notes[0].text, "its expression is ignored");
}

TEST(LottieDocument, ControlCharactersOfNamesReachNobody)
{
    LottieDocument const d = LottieDocument_Parse(
        R"({"nm": "a\u001b[31m\nb", "layers": [{"nm": "\u007f", "k\u0007s": {"r": )" + kMoving +
        "}}]}");
    EXPECT_EQ(d.name, "a?[31m?b");
    ASSERT_EQ(d.tracks.size(), 1u);
    EXPECT_EQ(d.tracks[0].path, "layers[0].k?s.r");
    EXPECT_EQ(d.tracks[0].name, "? / rotation");
}

TEST(LottieDocument, WhatIsNoDocumentIsRefused)
{
    EXPECT_EQ(Refusal("[]"), "not a Lottie document: it has no list of layers");
    EXPECT_EQ(Refusal("{}"), "not a Lottie document: it has no list of layers");
    EXPECT_EQ(Refusal(R"({"layers": {}})"), "not a Lottie document: it has no list of layers");
    EXPECT_EQ(Refusal(R"({"layers": [], "fr": "fast"})"), "fr is not a number");
    for (char const* broken :
         {"", "{", "{\"layers\": [}", "\xff\xfe", "nul", "{\"layers\": []} x"}) {
        EXPECT_EQ(Refusal(broken).rfind("not JSON: parse error", 0), 0u) << broken;
        EXPECT_EQ(Refusal(broken).find('\n'), std::string::npos) << broken;
    }
    EXPECT_EQ(Refusal(R"({"layers": [], "fr": 1e999})"),
              "not JSON that can be read: it holds a number beyond all range");
    // A parser that quotes what it met must not quote a megabyte.
    EXPECT_LT(Refusal("[\"" + std::string(100000, 'a')).size(), 200u);
}

TEST(LottieDocument, DeepNestingIsRefused)
{
    std::string const open(100000, '[');
    std::string const close(100000, ']');
    std::string const message = Refusal(R"({"layers": [)" + open + close + "]}");
    EXPECT_NE(message.find("nested deeper than 256 levels"), std::string::npos);
    EXPECT_LT(message.size(), 200u);
}
