// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Frames of small documents, pixel by pixel: layers, mattes, masks and compositions.

#include "play_documents.h"

#include <tools/files.h>

#include <gtest/gtest.h>
#include <png.h>

#include <string>
#include <vector>

namespace {

using Pixel = std::vector<int>;

Pixel const kNothing = {0, 0, 0, 0};
Pixel const kRed = {255, 0, 0, 255};
Pixel const kGreen = {0, 255, 0, 255};
Pixel const kBlue = {0, 0, 255, 255};

std::string const kAll = PlayRect(0, 0, 16, 16);
std::string const kLeft = PlayRect(0, 0, 8, 16);

std::string RedLayer(std::string const& outline, std::string const& more = "")
{
    return PlayLayer(outline + "," + PlayFill("1,0,0"), more);
}

std::string GreenLayer(std::string const& outline, std::string const& more = "")
{
    return PlayLayer(outline + "," + PlayFill("0,1,0"), more);
}

/// A closed polygon as the outline of a mask.
std::string MaskOver(double left, double right, std::string const& mode, std::string const& more)
{
    std::string const l = std::to_string(left);
    std::string const r = std::to_string(right);
    return R"({"mode":")" + mode + R"(","pt":{"k":{"c":true,"v":[[)" + l + ",0],[" + r + ",0],[" +
           r + ",16],[" + l +
           R"(,16]],"i":[[0,0],[0,0],[0,0],[0,0]],"o":[[0,0],[0,0],[0,0],[0,0]]}})" + more + "}";
}

std::string Masked(std::string const& masks)
{
    return PlayDocument(RedLayer(kAll, R"("masksProperties":[)" + masks + "]"));
}

std::string Numbers(std::vector<int> const& values)
{
    std::string text;
    for (int const value : values) {
        text += std::to_string(value) + " ";
    }
    return text;
}

/// The opacities of a row at the middles of four columns.
std::string Row(Canvas const& canvas)
{
    return Numbers({canvas.Pixel(2, 8)[3], canvas.Pixel(6, 8)[3], canvas.Pixel(10, 8)[3],
                    canvas.Pixel(14, 8)[3]});
}

}  // namespace

TEST(FramePainter, FillsAShapeWhereItStands)
{
    Canvas const canvas = PlayFrame(PlayDocument(RedLayer(PlayRect(4, 2, 12, 6))), 0);
    EXPECT_EQ(PlayPixel(canvas, 4, 2), kRed);
    EXPECT_EQ(PlayPixel(canvas, 11, 5), kRed);
    EXPECT_EQ(PlayPixel(canvas, 2, 2), kNothing);
    EXPECT_EQ(PlayPixel(canvas, 8, 8), kNothing);
}

TEST(FramePainter, TheFirstLayerAndTheFirstShapeAreInFront)
{
    EXPECT_EQ(PlayPixel(PlayFrame(PlayDocument(RedLayer(kAll) + "," + GreenLayer(kAll)), 0), 8, 8),
              kRed);
    std::string const paints = kAll + "," + PlayFill("0,1,0") + "," + PlayFill("1,0,0");
    EXPECT_EQ(PlayPixel(PlayFrame(PlayDocument(PlayLayer(paints)), 0), 8, 8), kGreen);
}

TEST(FramePainter, APaintSeesOutlinesBeforeItInItsGroup)
{
    std::string const inner = R"({"ty":"gr","it":[)" + kLeft + R"(,{"ty":"tr","p":{"k":[4,0]}}]})";
    std::string const shapes = inner + "," + PlayFill("1,0,0") + "," + PlayRect(14, 0, 16, 16);
    Canvas const canvas = PlayFrame(PlayDocument(PlayLayer(shapes)), 0);
    EXPECT_EQ(Row(canvas), "0 255 255 0 ");
}

TEST(FramePainter, BothFillRules)
{
    std::string const twice = kAll + "," + PlayRect(4, 4, 12, 12);
    auto const middle = [&twice](std::string const& rule) {
        std::string const fill = PlayFill("1,0,0", R"("r":)" + rule);
        return PlayPixel(PlayFrame(PlayDocument(PlayLayer(twice + "," + fill)), 0), 8, 8);
    };
    EXPECT_EQ(middle("1"), kRed);
    EXPECT_EQ(middle("2"), kNothing);
}

TEST(FramePainter, LayersShowFromInPointUpToOutPoint)
{
    std::string const layer =
        R"({"ty":4,"ip":3,"op":5,"shapes":[)" + kAll + "," + PlayFill("1,0,0") + "]}";
    std::string const document = PlayDocument(layer);
    for (double const frame : {0.0, 2.0, 2.99, 5.0, 9.0}) {
        EXPECT_EQ(PlayPixel(PlayFrame(document, frame), 8, 8), kNothing) << frame;
    }
    for (double const frame : {3.0, 4.0, 4.99}) {
        EXPECT_EQ(PlayPixel(PlayFrame(document, frame), 8, 8), kRed) << frame;
    }
}

TEST(FramePainter, HiddenLayersAndShapesAreNotPainted)
{
    EXPECT_EQ(PlayPixel(PlayFrame(PlayDocument(RedLayer(kAll, R"("hd":true)")), 0), 8, 8),
              kNothing);
    std::string const fill = PlayFill("1,0,0", R"("hd":true)");
    EXPECT_EQ(PlayPixel(PlayFrame(PlayDocument(PlayLayer(kAll + "," + fill)), 0), 8, 8), kNothing);
}

TEST(FramePainter, ParentsCarryTheirChildrenAndDoNotFadeThem)
{
    std::string const child =
        RedLayer(PlayRect(0, 0, 4, 4), R"("ind":1,"parent":2,"ks":{"p":{"k":[2,0]}})");
    std::string const parent =
        R"({"ty":3,"ind":2,"ip":0,"op":10,"ks":{"p":{"k":[4,8]},"s":{"k":[200,100]},"o":{"k":0}}})";
    Canvas const canvas = PlayFrame(PlayDocument(child + "," + parent), 0);
    // x: 4 + 2 * (2 + [0, 4]), y: 8 + [0, 4]
    EXPECT_EQ(PlayPixel(canvas, 9, 9), kRed);
    EXPECT_EQ(PlayPixel(canvas, 14, 10), kRed);
    EXPECT_EQ(PlayPixel(canvas, 6, 9), kNothing);
    EXPECT_EQ(PlayPixel(canvas, 9, 5), kNothing);
}

TEST(FramePainter, ALayerOfSeveralPaintsFadesAsOne)
{
    std::string const shapes = kAll + "," + PlayFill("0,1,0") + "," + PlayFill("1,0,0");
    Canvas const canvas = PlayFrame(PlayDocument(PlayLayer(shapes, R"("ks":{"o":{"k":50}})")), 0);
    // Half of green, and nothing of the red behind it.
    EXPECT_EQ(PlayPixel(canvas, 8, 8), (Pixel{0, 128, 0, 128}));
}

TEST(FramePainter, MattesLetThroughByOpacityAndBrightness)
{
    // White on the left, blue on the right of the matte: brightness 29/256 of full.
    std::string const matte = PlayLayer(R"({"ty":"gr","it":[)" + PlayRect(0, 0, 4, 16) + "," +
                                            PlayFill("1,1,1") + R"(]},{"ty":"gr","it":[)" +
                                            PlayRect(4, 0, 8, 16) + "," + PlayFill("0,0,1") + "]}",
                                        R"("td":1)");
    auto const row = [&matte](std::string const& mode) {
        return Row(PlayFrame(PlayDocument(matte + "," + RedLayer(kAll, R"("tt":)" + mode)), 0));
    };
    EXPECT_EQ(row("1"), "255 255 0 0 ");
    EXPECT_EQ(row("2"), "0 0 255 255 ");
    EXPECT_EQ(row("3"), "255 28 0 0 ");
    EXPECT_EQ(row("4"), "0 227 255 255 ");
}

TEST(FramePainter, AMatteIsFoundByItsNumber)
{
    std::string const matte = RedLayer(kLeft, R"("ind":7,"td":1)");
    std::string const other = R"({"ty":3,"ind":8,"ip":0,"op":10})";
    std::string const layer = GreenLayer(kAll, R"("tt":1,"tp":7)");
    EXPECT_EQ(Row(PlayFrame(PlayDocument(matte + "," + other + "," + layer), 0)), "255 255 0 0 ");
}

TEST(FramePainter, MasksCombine)
{
    auto const row = [](std::string const& masks) { return Row(PlayFrame(Masked(masks), 0)); };
    EXPECT_EQ(row(MaskOver(0, 8, "a", "")), "255 255 0 0 ");
    EXPECT_EQ(row(MaskOver(0, 8, "a", R"(,"inv":true)")), "0 0 255 255 ");
    EXPECT_EQ(row(MaskOver(0, 8, "a", R"(,"o":{"k":40})")), "102 102 0 0 ");
    EXPECT_EQ(row(MaskOver(0, 8, "s", "")), "0 0 255 255 ");
    EXPECT_EQ(row(MaskOver(0, 8, "i", "")), "255 255 0 0 ");
    EXPECT_EQ(row(MaskOver(0, 8, "n", "")), "255 255 255 255 ");
    std::string const first = MaskOver(0, 8, "a", "");
    EXPECT_EQ(row(first + "," + MaskOver(4, 12, "a", "")), "255 255 255 0 ");
    EXPECT_EQ(row(first + "," + MaskOver(4, 12, "s", "")), "255 0 0 0 ");
    EXPECT_EQ(row(first + "," + MaskOver(4, 12, "i", "")), "0 255 0 0 ");
    EXPECT_EQ(row(first + "," + MaskOver(4, 12, "f", "")), "255 0 255 0 ");
    std::string const half = MaskOver(0, 8, "a", R"(,"o":{"k":40})");
    EXPECT_EQ(row(half + "," + MaskOver(4, 12, "l", R"(,"o":{"k":60})")), "102 153 153 0 ");
    EXPECT_EQ(row(half + "," + MaskOver(4, 12, "d", R"(,"o":{"k":60})")), "0 102 0 0 ");
}

TEST(FramePainter, SolidsHaveTheirColourAndSize)
{
    std::string const solid =
        R"({"ty":1,"sc":"#00ff00","sw":8,"sh":16,"ip":0,"op":10,"ks":{"p":{"k":[4,0]}}})";
    Canvas const canvas = PlayFrame(PlayDocument(solid), 0);
    EXPECT_EQ(PlayPixel(canvas, 6, 8), kGreen);
    EXPECT_EQ(Row(canvas), "0 255 255 0 ");
}

TEST(FramePainter, CompositionsRunInTheirOwnTimeAndAreCutAtTheirRim)
{
    // A square that stands at its frame number.
    std::string const asset =
        R"({"id":"c","layers":[)" +
        RedLayer(PlayRect(0, 0, 1, 16),
                 R"("ks":{"p":{"k":[{"t":0,"s":[0,0]},{"t":10,"s":[10,0]}]}})") +
        "]}";
    auto const firstColumn = [&asset](std::string const& more, double frame) {
        std::string const layer =
            R"({"ty":0,"refId":"c","ip":0,"op":10,"w":6,"h":16,)" + more + "}";
        Canvas const canvas = PlayFrame(PlayDocument(layer, asset), frame);
        for (int x = 0; x < 16; ++x) {
            if (canvas.Pixel(x, 8)[3] == 255) {
                return x;
            }
        }
        return -1;
    };
    EXPECT_EQ(firstColumn(R"("st":0)", 4), 4);
    EXPECT_EQ(firstColumn(R"("st":2)", 4), 2);
    EXPECT_EQ(firstColumn(R"("st":0,"sr":2)", 4), 2);
    EXPECT_EQ(firstColumn(R"("tm":{"k":0.3})", 4), 3) << "0.3 seconds are frame 3";
    EXPECT_EQ(firstColumn(R"("tm":{"k":[{"t":0,"s":[0.5]},{"t":10,"s":[0]}]})", 8), 1);
    EXPECT_EQ(firstColumn(R"("st":0)", 8), -1) << "it is 6 wide";
}

TEST(FramePainter, APictureOfAnotherShapeShowsTheSceneInItsMiddle)
{
    Scene const scene = PlayScene(PlayDocument(RedLayer(kAll)));
    Canvas canvas(64, 32);
    FramePainter(scene, 64, 32).Paint(0, canvas);
    EXPECT_EQ(PlayPixel(canvas, 13, 16), kNothing);
    EXPECT_EQ(PlayPixel(canvas, 17, 1), kRed);
    EXPECT_EQ(PlayPixel(canvas, 46, 30), kRed);
    EXPECT_EQ(PlayPixel(canvas, 50, 16), kNothing);
}

TEST(FramePainter, AFeatheredMaskFadesOverItsRim)
{
    // The rim is 8 wide about x = 8: nothing is faded before 4, all is gone from 12 on.
    std::string const mask = MaskOver(-40, 8, "a", R"(,"f":{"k":[8,8]})");
    Canvas const canvas = PlayFrame(Masked(mask), 0);
    EXPECT_GE(canvas.Pixel(2, 8)[3], 250);
    EXPECT_NEAR((canvas.Pixel(7, 8)[3] + canvas.Pixel(8, 8)[3]) / 2.0, 127.5, 20.0);
    EXPECT_LE(canvas.Pixel(13, 8)[3], 5);
    for (int x = 1; x < 16; ++x) {
        EXPECT_LE(canvas.Pixel(x, 8)[3], canvas.Pixel(x - 1, 8)[3]) << x;
    }
}

TEST(FramePainter, ThePictureOfTheFirstPageIsWhatItPaints)
{
    Scene const scene = PlayScene(File_Read(HV_PLAY_SCENE));
    Canvas canvas(640, 480);
    FramePainter(scene, 640, 480).Paint(13, canvas);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, HV_PLAY_STILL), 0);
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(image));
    ASSERT_NE(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr), 0);
    EXPECT_TRUE(pixels == canvas.StraightPixels()) << "look at it, and copy it there";
}

TEST(FramePainter, WhatFramesBeforeHavePaintedDoesNotMatter)
{
    // What rests is kept from frame to frame; fresh painters have nothing to keep.
    Scene const scene = PlayScene(File_Read(HV_PLAY_SCENE));
    FramePainter painter(scene, 64, 48);
    Canvas canvas(64, 48);
    for (double const frame : {20.0, 20.0, 20.0, 21.0, 22.0, 5.0, 20.0, 20.5}) {
        Canvas fresh(64, 48);
        FramePainter(scene, 64, 48).Paint(frame, fresh);
        painter.Paint(frame, canvas);
        EXPECT_TRUE(canvas.StraightPixels() == fresh.StraightPixels()) << frame;
    }
}

TEST(FramePainter, MasksOfOnePaintAreAsThoseOfSeveral)
{
    // A second paint that paints nothing takes the other way, over a canvas of its own.
    std::string const masks =
        R"("masksProperties":[)" + MaskOver(2.3, 9.6, "a", R"(,"o":{"k":70})") + "," +
        MaskOver(4, 12, "s", R"(,"o":{"k":30})") + R"(],"ks":{"o":{"k":60},"r":{"k":10}})";
    std::string const shapes = PlayRect(1.2, 0.7, 13.4, 15.1) + "," + PlayFill("1,0.5,0.2");
    auto const painted = [&masks](std::string const& all) {
        return PlayFrame(PlayDocument(PlayLayer(all, masks)), 0).StraightPixels();
    };
    EXPECT_EQ(painted(shapes), painted(shapes + "," + PlayFill("0,0,1", R"("o":{"k":0})")));
}

TEST(FramePainter, NothingStaysOfTheFrameBefore)
{
    std::string const layer =
        R"({"ty":4,"ip":0,"op":1,"shapes":[)" + kAll + "," + PlayFill("0,0,1") + "]}";
    Scene const scene = PlayScene(PlayDocument(layer));
    FramePainter painter(scene, 16, 16);
    Canvas canvas(16, 16);
    painter.Paint(0, canvas);
    EXPECT_EQ(PlayPixel(canvas, 8, 8), kBlue);
    painter.Paint(1, canvas);
    EXPECT_EQ(PlayPixel(canvas, 8, 8), kNothing);
}
