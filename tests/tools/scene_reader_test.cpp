// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Documents that are refused, and what is left out of others.

#include "play_documents.h"

#include <tools/ToolError.h>
#include <tools/files.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string Refusal(std::string const& document)
{
    try {
        Scene const scene = PlayScene(document);
        Canvas canvas(16, 16);
        FramePainter(scene, 16, 16).Paint(0, canvas);
    } catch (ToolError const& error) {
        return error.what();
    }
    return "";
}

std::string Instances(std::string const& id, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::string(i > 0 ? "," : "") + R"({"ty":0,"ip":0,"op":10,"refId":")" + id + "\"}";
    }
    return text;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(SceneReader, WhatIsNoAnimationIsRefused)
{
    EXPECT_EQ(Refusal("{}"), "not a Lottie document: it has no size");
    EXPECT_EQ(Refusal(R"({"w":1,"h":1,"layers":[]})"),
              "not a Lottie document: it has no frame rate");
    EXPECT_EQ(Refusal(R"({"w":1,"h":1,"fr":1})"),
              "not a Lottie document: it has no list of layers");
    EXPECT_EQ(Refusal(R"({"w":-1,"h":1,"fr":1,"layers":[]})"),
              "not a Lottie document: it has no size");
    EXPECT_EQ(Refusal(R"({"w":1e101,"h":1,"fr":1,"layers":[]})"), "w is beyond 1e100");
}

TEST(SceneReader, WrongValuesAreRefusedWithTheirPlace)
{
    EXPECT_EQ(Refusal(PlayDocument(PlayLayer("", R"("ks":{"o":{"k":"full"}})"))),
              "layers[0].ks.o is not a number");
    EXPECT_EQ(Refusal(PlayDocument(R"({"ty":4,"shapes":{}})")),
              "layers[0].shapes is no list of shapes");
    EXPECT_EQ(Refusal(PlayDocument(PlayLayer(R"({"ty":"sh","ks":{"k":{"v":[[0]]}}})"))),
              "layers[0].shapes[0].ks.k.v[0] is no point");
    EXPECT_EQ(
        Refusal(PlayDocument(PlayLayer(R"({"ty":"sh","ks":{"k":{"v":[[0,0]],"i":[],"o":[]}}})"))),
        "layers[0].shapes[0].ks.k has not as many handles as nodes");
    EXPECT_EQ(Refusal(PlayDocument(R"({"ty":1,"sc":"red","sw":1,"sh":1})")),
              "layers[0].sc is no colour");
    EXPECT_EQ(Refusal(PlayDocument(Instances("none", 1))), "layers[0].refId names no composition");
    EXPECT_EQ(Refusal(PlayDocument(PlayLayer(R"({"ty":"gf","g":{"p":3,"k":{"k":[0,0,0,0]}}})"))),
              "layers[0].shapes[0].g has not the colours that it counts");
}

TEST(SceneReader, RingsAreRefused)
{
    EXPECT_EQ(Refusal(PlayDocument(R"({"ty":3,"ind":1,"parent":2},{"ty":3,"ind":2,"parent":1})")),
              "layers[0] is its own parent");
    EXPECT_EQ(Refusal(PlayDocument(R"({"ty":3,"ind":1,"tt":1,"tp":1})")),
              "layers[0] is its own matte");
    EXPECT_EQ(Refusal(PlayDocument(Instances("c", 1),
                                   R"({"id":"c","layers":[)" + Instances("c", 1) + "]}")),
              "assets[0].layers[0]: the composition \"c\" contains itself");
}

TEST(SceneReader, CompositionsThatMultiplyAreRefused)
{
    std::string assets = R"({"id":"0","layers":[]})";
    for (int i = 1; i <= 30; ++i) {
        assets += R"(,{"id":")" + std::to_string(i) + R"(","layers":[)" +
                  Instances(std::to_string(i - 1), 2) + "]}";
    }
    EXPECT_NE(Refusal(PlayDocument(Instances("30", 1), assets)).find("more than a million layers"),
              std::string::npos);
}

TEST(SceneReader, RepeatersThatMultiplyAreRefused)
{
    std::string shapes = PlayRect(0, 0, 1, 1);
    for (int i = 0; i < 5; ++i) {
        shapes += R"(,{"ty":"rp","c":{"k":1000}})";
    }
    EXPECT_NE(Refusal(PlayDocument(PlayLayer(shapes))).find("more than a million"),
              std::string::npos);
}

TEST(SceneReader, CompositionsNestedTooDeepAreRefused)
{
    std::string assets = R"({"id":"0","layers":[]})";
    for (int i = 1; i <= 100; ++i) {
        assets += R"(,{"id":")" + std::to_string(i) + R"(","layers":[)" +
                  Instances(std::to_string(i - 1), 1) + "]}";
    }
    EXPECT_EQ(Refusal(PlayDocument(Instances("100", 1), assets)),
              "compositions are nested deeper than 64 levels");
}

TEST(SceneReader, WhatIsNotDoneIsCollectedOnce)
{
    EXPECT_EQ(PlayLeftOut(PlayDocument(PlayLayer(PlayRect(0, 0, 1, 1)))), Texts());
    EXPECT_EQ(PlayLeftOut(PlayDocument(R"({"ty":2},{"ty":5},{"ty":2},{"ty":77})")),
              (Texts{"images", "texts", "layers of the type 77"}));
    EXPECT_EQ(PlayLeftOut(PlayDocument(PlayLayer("", R"("ef":[{}],"bm":3,"ddd":1)"))),
              (Texts{"effects", "blend modes", "the third dimension"}));
    EXPECT_EQ(PlayLeftOut(PlayDocument(PlayLayer(R"({"ty":"zz"},{"ty":"mm","mm":4})"))),
              (Texts{"shapes of the type \"zz\"", "merging of outlines other than by adding"}));
    EXPECT_EQ(PlayLeftOut(PlayDocument(PlayLayer("", R"("ks":{"r":{"k":0,"x":"time"}})"))),
              (Texts{"expressions"}));
}

TEST(SceneReader, EveryBeginningOfADocumentIsReadOrRefused)
{
    std::string const text = File_Read(HV_SAMPLE_ANIMATION);
    EXPECT_EQ(Refusal(text), "");
    for (std::size_t length = 0; length + 2 < text.size(); length += 97) {
        EXPECT_NE(Refusal(text.substr(0, length)), "") << length;
    }
}

TEST(SceneReader, HostileNumbersDoNoHarm)
{
    for (char const* number : {"1e99", "-1e99", "1e-99", "0", "-0.0", "2147483648", "1e18"}) {
        std::string const n = number;
        std::string const pair = "[" + n + "," + n + "]";
        std::string const shapes =
            R"({"ty":"rc","p":{"k":[8,8]},"s":{"k":)" + pair + R"(},"r":{"k":)" + n +
            R"(}},{"ty":"sr","pt":{"k":)" + n + R"(},"or":{"k":)" + n + R"(},"ir":{"k":1}},)" +
            R"({"ty":"tm","s":{"k":)" + n + R"(},"e":{"k":50},"o":{"k":)" + n + "}}," +
            R"({"ty":"st","c":{"k":[1,1,1]},"w":{"k":)" + n + R"(},"ml":)" + n +
            R"(,"d":[{"n":"d","v":{"k":)" + n + "}}]}," + PlayFill("1,1,1") +
            R"(,{"ty":"tr","s":{"k":)" + pair + R"(},"sk":{"k":)" + n + "}}";
        Refusal(PlayDocument(
            PlayLayer(shapes, R"("ks":{"r":{"k":)" + n + R"(},"p":{"k":)" + pair + "}}")));
    }
    SUCCEED();
}
