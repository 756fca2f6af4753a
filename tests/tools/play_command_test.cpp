// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv play as its users meet it: files, exit codes and what it prints.

#include "play_documents.h"
#include "tool_fixture.h"

namespace {

using play_command = ToolFixture;

std::string const kMoving =
    PlayDocument(PlayLayer(PlayRect(0, 0, 4, 4) + "," + PlayFill("1,0,0"),
                           R"("ks":{"p":{"k":[{"t":0,"s":[0,0]},{"t":10,"s":[12,12]}]}})"));

}  // namespace

TEST_F(play_command, WritesAFileForEachFrame)
{
    std::string const file = Write("moving.json", kMoving);
    std::string const folder = PathOf("frames");
    ToolRun const run({"play", file.c_str(), "--out", folder.c_str()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, folder + ": 10 frames of 16 x 16 pixels\n");
    EXPECT_EQ(Read(folder + "/frame_0000.png").substr(1, 3), "PNG");
    EXPECT_EQ(Read(folder + "/frame_0009.png").substr(1, 3), "PNG");
    EXPECT_FALSE(std::filesystem::exists(folder + "/frame_0010.png"));
}

TEST_F(play_command, FramesSizeAndTimeAreAskedFor)
{
    std::string const file = Write("moving.json", kMoving);
    std::string const film = PathOf("film.png");
    ToolRun const run({"play", file.c_str(), "--apng", film.c_str(), "--size", "32x48", "--frames",
                       "2..5", "--time-stretch", "2.5"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, film + ": 10 frames of 32 x 48 pixels\n");
    EXPECT_EQ(
        ToolRun({"play", file.c_str(), "--apng", film.c_str(), "--size", "24", "--force"}).out,
        film + ": 10 frames of 24 x 24 pixels\n");
}

TEST_F(play_command, FramesAreThoseOfTheAnimation)
{
    std::string const file = Write("moving.json", kMoving);
    std::string const film = PathOf("film.png");
    for (char const* const frames : {"9..10", "-1..3", "10..10", "0..999999999"}) {
        ToolRun const run({"play", file.c_str(), "--apng", film.c_str(), "--frames", frames});
        EXPECT_TRUE(Refused(run)) << frames;
        EXPECT_NE(run.err.find("--frames must lie within 0..9, the frames of the animation"),
                  std::string::npos)
            << run.err;
        EXPECT_FALSE(std::filesystem::exists(film));
    }
    for (char const* const frames : {"0..9", "9..9"}) {
        EXPECT_EQ(
            ToolRun({"play", file.c_str(), "--apng", film.c_str(), "--force", "--frames", frames})
                .code,
            0)
            << frames;
    }
}

TEST_F(play_command, TheNumberOfThreadsDoesNotMatter)
{
    std::string const one = PathOf("one.png");
    std::string const four = PathOf("four.png");
    EXPECT_EQ(ToolRun({"play", HV_SAMPLE_ANIMATION, "--apng", one.c_str(), "--size", "64",
                       "--frames", "0..11", "--threads", "1"})
                  .code,
              0);
    EXPECT_EQ(ToolRun({"play", HV_SAMPLE_ANIMATION, "--apng", four.c_str(), "--size", "64",
                       "--frames", "0..11", "--threads", "4"})
                  .code,
              0);
    EXPECT_GT(Read(one).size(), 1000u);
    EXPECT_EQ(Read(one), Read(four));
}

TEST_F(play_command, WhatIsLeftOutIsToldOnce)
{
    std::string const file = Write(
        "left.json", PlayDocument(R"({"ty":2,"ip":0,"op":10},{"ty":2,"ip":0,"op":10},{"ty":5})"));
    std::string const film = PathOf("film.png");
    ToolRun const run({"play", file.c_str(), "--apng", film.c_str()});
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(run.out, film + ": 10 frames of 16 x 16 pixels\n"
                              "left out: images, at layers[0] and 1 place more\n"
                              "left out: texts, at layers[2]\n");
    EXPECT_TRUE(std::filesystem::exists(film));
}

TEST_F(play_command, NothingIsWrittenOverAFileUnlessAsked)
{
    std::string const file = Write("moving.json", kMoving);
    std::string const mine = Write("mine.png", "mine");
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--apng", mine.c_str()})));
    EXPECT_EQ(Read(mine), "mine");
    EXPECT_EQ(ToolRun({"play", file.c_str(), "--apng", mine.c_str(), "--force"}).code, 0);
    EXPECT_NE(Read(mine), "mine");
    std::string const folder = PathOf("frames");
    EXPECT_EQ(ToolRun({"play", file.c_str(), "--out", folder.c_str(), "--frames", "3..3"}).code, 0);
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--out", folder.c_str()})));
    EXPECT_FALSE(std::filesystem::exists(folder + "/frame_0001.png"));
}

TEST_F(play_command, RefusesWhatItCannotUse)
{
    std::string const file = Write("moving.json", kMoving);
    std::string const film = PathOf("film.png");
    for (std::vector<char const*> const& arguments : {std::vector<char const*>{"--size", "0x8"},
                                                      {"--size", "x"},
                                                      {"--size", "99999"},
                                                      {"--frames", "5..2"},
                                                      {"--frames", "all"},
                                                      {"--time-stretch", "0"},
                                                      {"--time-stretch", "nan"},
                                                      {"--threads", "100000"},
                                                      {"--threads", "0"},
                                                      {"--out", "both"}}) {
        std::vector<char const*> all = {"play", file.c_str(), "--apng", film.c_str()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << arguments[0] << " " << arguments[1];
        EXPECT_FALSE(std::filesystem::exists(film));
    }
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str()}))) << "no output";
    EXPECT_TRUE(Refused(ToolRun({"play", "does-not-exist.json", "--apng", film.c_str()})));
    for (std::string const& text : {std::string("no"), kMoving.substr(0, 60), std::string("{}")}) {
        std::string const broken = Write("broken.json", text);
        EXPECT_TRUE(Refused(ToolRun({"play", broken.c_str(), "--apng", film.c_str()}))) << text;
    }
}

TEST_F(play_command, AFaultWhilePaintingLeavesNoFile)
{
    std::string shapes = PlayRect(0, 0, 1, 1);
    for (int i = 0; i < 5; ++i) {
        shapes += R"(,{"ty":"rp","c":{"k":1000}})";
    }
    std::string const file = Write("many.json", PlayDocument(PlayLayer(shapes)));
    std::string const film = PathOf("film.png");
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--apng", film.c_str(), "--threads", "3"})));
    EXPECT_FALSE(std::filesystem::exists(film));
    EXPECT_FALSE(std::filesystem::exists(film + ".part"));
    std::string const mine = Write("mine.png", "mine");
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--apng", mine.c_str(), "--force"})));
    EXPECT_EQ(Read(mine), "mine") << "it is written over once all is there";
}

TEST_F(play_command, WhatCannotBeWrittenIsNamed)
{
    std::string const file = Write("moving.json", kMoving);
    std::string const folder = PathOf("folder");
    std::filesystem::create_directory(folder);
    ToolRun const run({"play", file.c_str(), "--apng", folder.c_str(), "--force"});
    EXPECT_TRUE(Refused(run));
    EXPECT_NE(run.err.find(folder + ": cannot be written: it is a folder"), std::string::npos);
    std::string const below = PathOf("moving.json/film.png");
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--apng", below.c_str()})));
    EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--out", file.c_str()})));
    if (std::filesystem::exists("/dev/full")) {
        EXPECT_TRUE(Refused(ToolRun({"play", file.c_str(), "--apng", "/dev/full", "--force"})));
        EXPECT_TRUE(std::filesystem::exists("/dev/full")) << "not removed";
        EXPECT_FALSE(std::filesystem::exists("/dev/full.part"));
    }
}
