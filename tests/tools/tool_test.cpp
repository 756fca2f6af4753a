// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tool as its users meet it: exit codes, what it prints, what it writes.

#include "tool_fixture.h"

namespace {

using tool = ToolFixture;

char const* const kSample = HV_SAMPLE_ANIMATION;
char const* const kStroke = HV_SAMPLE_STROKE;

}  // namespace

TEST_F(tool, ListsEveryAnimatedTrack)
{
    ToolRun const run({"curve", kSample});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("\"bounce\", frames 0 to 120 at 60 a second, 14 animated tracks"),
              std::string::npos);
    EXPECT_NE(run.out.find("layers[1].ks.p.y  (Ball / position y)"), std::string::npos);
    EXPECT_NE(run.out.find("(Ball / Disc / Fill / colour blue)"), std::string::npos);
    EXPECT_NE(run.out.find("layers[1].ks.s[1]  (Ball / scale y)"), std::string::npos);
    EXPECT_NE(run.out.find("0 to 120  0 to 340"), std::string::npos);
    EXPECT_NE(run.out.find("constant"), std::string::npos);
    EXPECT_NE(run.out.find("note: layers[2].shapes[0].it[0].ks: its keys hold paths"),
              std::string::npos);
    EXPECT_NE(run.out.find("assets[0].layers[0].ks.o  (Lamp / Bulb / opacity)"), std::string::npos);
}

TEST_F(tool, ListsAndDrawsMotionPaths)
{
    ToolRun const list({"curve", kSample});
    EXPECT_NE(list.out.find("1 motion path\n"), std::string::npos);
    EXPECT_NE(list.out.find("layers[2].ks.p  (Shadow / position)"), std::string::npos);

    std::string const svg = PathOf("path.svg");
    for (char const* plane : {"xy", "xz", "yz"}) {
        ToolRun const run({"curve", kSample, "--path", "0", "--plot", svg.c_str(), "--plane", plane,
                           "--ticks", "10"});
        EXPECT_EQ(run.code, 0) << run.err;
        EXPECT_NE(Read(svg).find("every 10 frames"), std::string::npos);
    }
}

TEST_F(tool, RefusesMotionPathsThatAreNot)
{
    std::string const svg = PathOf("path.svg");
    EXPECT_TRUE(Refused(ToolRun({"curve", kSample, "--path", "1", "--plot", svg.c_str()})));
    EXPECT_TRUE(Refused(ToolRun({"curve", kSample, "--path", "0", "--track", "0"})));
    EXPECT_TRUE(Refused(ToolRun({"curve", kSample, "--plane", "xy"})));
    for (std::vector<char const*> const& more :
         std::vector<std::vector<char const*>>{{"--plane", "zx"},
                                               {"--ticks", "0"},
                                               {"--ticks", "-1"},
                                               {"--ticks", "nan"},
                                               {"--ticks", "inf"},
                                               {"--ticks", "1e-9"}}) {
        std::vector<char const*> all = {"curve", kSample, "--path", "0", "--plot", svg.c_str()};
        all.insert(all.end(), more.begin(), more.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << more[0] << " " << more[1];
    }
    std::string const none = Write("none.json", R"({"layers": []})");
    EXPECT_TRUE(Refused(ToolRun({"curve", none.c_str(), "--path", "0"})));
}

TEST_F(tool, CheckPassesOnTheSample)
{
    ToolRun const run({"curve", kSample, "--check"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("checked 14 tracks"), std::string::npos);
    EXPECT_NE(run.out.find("largest error 0\n"), std::string::npos);
}

TEST_F(tool, EvaluatesOnBothSidesOfAJump)
{
    ToolRun const run(
        {"curve", kSample, "--track", "0", "--evaluate", "-5", "24", "110", "120", "1e3"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "-5 340\n24 0\n110 0\n120 340 (from the left 0)\n1000 340\n");
}

TEST_F(tool, EvaluatesNaNAndInfinity)
{
    ToolRun const run({"curve", kSample, "--track", "0", "--evaluate", "nan", "inf"});
    EXPECT_EQ(run.code, 0);
}

TEST_F(tool, SamplesIntoAFile)
{
    std::string const csv = PathOf("made/for/it/samples.csv");
    ToolRun const run({"curve", kSample, "--track", "0", "--csv", csv.c_str(), "--step", "50"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Read(csv).substr(0, 18), "frame,value\n0,340\n");
    // 0, 50, 100, and the last key at 120, between two steps.
    EXPECT_EQ(Read(csv).substr(Read(csv).rfind("\n100,")), "\n100,0\n120,340\n");
}

TEST_F(tool, PrintsSamplesAndNothingElse)
{
    ToolRun const run(
        {"curve", kSample, "--track", "0", "--csv", "-", "--from", "96", "--to", "98"});
    EXPECT_EQ(run.out, "frame,value\n96,0\n97,0\n98,0\n");
    ToolRun const point({"curve", kSample, "--track", "0", "--csv", "-", "--from", "130"});
    EXPECT_EQ(point.out, "frame,value\n130,340\n");
}

TEST_F(tool, DrawsIntoAFile)
{
    std::string const svg = PathOf("plot.svg");
    ToolRun const run({"curve", kSample, "--track", "0", "--plot", svg.c_str()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Read(svg).substr(0, 5), "<svg ");
    EXPECT_NE(Read(svg).find("Ball / position y"), std::string::npos);
    EXPECT_EQ(Read(svg).substr(Read(svg).size() - 7), "</svg>\n");
}

TEST_F(tool, RefusesWrongArgumentsInOneLine)
{
    std::string const file = PathOf("x");
    std::vector<std::vector<char const*>> const wrong = {
        {},
        {"curve"},
        {"bend", kSample},
        {"curve", kSample, "--colour"},
        {"curve", kSample, "--track", "one"},
        {"curve", kSample, "--track", "-1"},
        {"curve", kSample, "--track", "14"},
        {"curve", kSample, "--track", "99999999999999999999999"},
        {"curve", kSample, "--plot", file.c_str()},
        {"curve", kSample, "--evaluate", "1"},
        {"curve", kSample, "--track", "0", "--step", "1"},
        {"curve", kSample, "--track", "0", "--csv", "-", "--step", "0"},
        {"curve", kSample, "--track", "0", "--csv", "-", "--step", "-1"},
        {"curve", kSample, "--track", "0", "--csv", "-", "--step", "nan"},
        {"curve", kSample, "--track", "0", "--csv", "-", "--step", "1e-300"},
        {"curve", kSample, "--track", "0", "--csv", "-", "--from", "nan"},
        {"curve", kSample, "--track", "0", "--csv", "-", "--from", "5", "--to", "5"},
        {"curve", kSample, "--track", "0", "--plot", file.c_str(), "--to", "inf"},
    };
    for (std::vector<char const*> const& arguments : wrong) {
        ToolRun const run(arguments);
        EXPECT_TRUE(Refused(run)) << run.code << " " << run.err;
        EXPECT_EQ(run.out.find("frame,value"), std::string::npos);
    }
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(tool, NamesTheTracksThereAre)
{
    ToolRun const run({"curve", kSample, "--track", "14"});
    EXPECT_NE(run.err.find("has no track 14; its tracks are 0 to 13"), std::string::npos);
    std::string const still = Write("still.json", R"({"layers": []})");
    ToolRun const none({"curve", still.c_str(), "--track", "0"});
    EXPECT_NE(none.err.find("has no animated tracks"), std::string::npos);
    EXPECT_EQ(ToolRun({"curve", still.c_str()}).code, 0);
}

TEST_F(tool, RefusesBadFilesInOneLine)
{
    std::string const files[] = {
        PathOf("missing.json"),
        PathOf(""),
        Write("empty.json", ""),
        Write("binary.json", std::string("\0\x1b[31m\xff", 7)),
        Write("list.json", "[1, 2]"),
        Write("cut.json", Read(kSample).substr(0, 5000)),
        Write("falling.json",
              R"({"layers": [{"ks": {"r": {"k": [{"t": 1, "s": 1}, {"t": 0, "s": 1}]}}}]})"),
    };
    for (std::string const& file : files) {
        for (char const* option : {"--check", "--track=0"}) {
            ToolRun const run({"curve", file.c_str(), option});
            EXPECT_TRUE(Refused(run)) << file << ": " << run.err;
            EXPECT_EQ(run.out, "");
            EXPECT_EQ(run.err.find('\x1b'), std::string::npos);
        }
    }
}

TEST_F(tool, SaysWhyAFileCannotBeWritten)
{
    std::string const inTheWay = Write("file", "");
    std::string const svg = inTheWay + "/plot.svg";
    ToolRun const run({"curve", kSample, "--track", "0", "--plot", svg.c_str()});
    EXPECT_TRUE(Refused(run)) << run.err;
    EXPECT_NE(run.err.find("cannot be written"), std::string::npos);
    ToolRun const full({"curve", kSample, "--track", "0", "--csv", "/dev/full"});
    EXPECT_TRUE(Refused(full)) << full.err;
}

TEST_F(tool, HelpsEachCommand)
{
    ToolRun const all({"--help"});
    EXPECT_EQ(all.code, 0);
    EXPECT_NE(all.out.find("curve"), std::string::npos);
    ToolRun const curve({"curve", "--help"});
    EXPECT_EQ(curve.code, 0);
    EXPECT_NE(curve.out.find("Example: hv curve bounce.json"), std::string::npos);
    EXPECT_EQ(curve.err, "");
}

// Every prefix of a real document, and the document with each of its bytes changed in turn, is read
// or refused; nothing crashes.
TEST_F(tool, DamagedFilesDoNoHarm)
{
    std::string const text = Read(kSample);
    for (std::size_t i = 0; i < text.size(); i += 101) {
        std::string damaged = text;
        damaged[i] = "0-\"[{e,}"[i % 8];
        std::string const file = Write("damaged.json", damaged);
        ToolRun const run({"curve", file.c_str(), "--check"});
        EXPECT_TRUE(run.code == 0 || Refused(run)) << run.err;
    }
}

TEST_F(tool, ReducesEveryTrackAndTellsTheError)
{
    ToolRun const run({"curve", kSample, "--reduce", "0.01"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("largest error  allowed  place"), std::string::npos);
    // Five equal values need two keys, and none is lost.
    EXPECT_NE(run.out.find("      8     5           2              0        0  "
                           "layers[1].shapes[0].it[1].c[3]\n"),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("\nreduced 87 keys to "), std::string::npos);
}

TEST_F(tool, ResamplesOneTrack)
{
    std::string const path = PathOf("resampled.hvc");
    EXPECT_EQ(
        ToolRun({"curve", kSample, "--track", "1", "--resample", "30", "--save", path.c_str()})
            .code,
        0);
    ToolRun const inspected({"inspect", path.c_str()});
    // The track has keys at 0, 108 and 120; the new ones stand 30 apart from its first on.
    EXPECT_NE(inspected.out.find("curve 0 at byte 0: standard, version 266, "), std::string::npos);
    for (std::string const at :
         {"    0    0  ", "    1   30  ", "    2   60  ", "    3   90  ", "    4  120  "}) {
        EXPECT_NE(inspected.out.find(at), std::string::npos) << at << inspected.out;
    }
    EXPECT_EQ(inspected.out.find("  108  "), std::string::npos);
    EXPECT_NE(inspected.out.find(": 1 curve, 397 bytes\n"), std::string::npos) << inspected.out;
}

TEST_F(tool, SmoothsByTheBinomialCoefficients)
{
    // Keys 0, 8, 0 at frames 0, 10, 20: the middle one becomes 0/4 + 8/2 + 0/4.
    std::string const file = Write(
        "peak.json",
        R"({"v":"5","fr":30,"ip":0,"op":30,"w":1,"h":1,"layers":[{"ty":3,"ks":{"r":{"a":1,"k":[)"
        R"({"t":0,"s":[0],"i":{"x":1,"y":1},"o":{"x":0,"y":0}},)"
        R"({"t":10,"s":[8],"i":{"x":1,"y":1},"o":{"x":0,"y":0}},{"t":20,"s":[0]}]}}}]})");
    ToolRun const run({"curve", file.c_str(), "--track", "0", "--smooth", "3", "--evaluate", "10"});
    EXPECT_EQ(run.out, "10 4\n");
}

TEST_F(tool, ReshapingNumbersThatMeanNothingAreRefused)
{
    for (std::vector<char const*> const& arguments : {std::vector<char const*>{"--resample", "0"},
                                                      {"--resample", "nan"},
                                                      {"--resample", "1e-9"},
                                                      {"--smooth", "2"},
                                                      {"--smooth", "1001"},
                                                      {"--smooth", "-1"},
                                                      {"--reduce", "-0.1"},
                                                      {"--reduce", "nan"},
                                                      {"--check", "--reduce", "1"},
                                                      {"--check", "--save", "x"}}) {
        std::vector<char const*> all = {"curve", kSample};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << arguments[0] << " " << arguments[1];
    }
}

TEST_F(tool, SavesEveryTrackOneBehindAnother)
{
    std::string const path = PathOf("all.hvc");
    EXPECT_EQ(ToolRun({"curve", kSample, "--save", path.c_str()}).code, 0);
    ToolRun const run({"inspect", path.c_str(), "--brief"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    // 68 bytes, 64 for each of 9 keys and 9 of user data that there are not.
    EXPECT_NE(run.out.find("curve 0 at byte 0: standard, version 266, 653 bytes, 9 keys, beyond "
                           "keys constant, time curve\ncurve 1 at byte 653: "),
              std::string::npos)
        << run.out;
    EXPECT_NE(run.out.find("curve 13 at byte "), std::string::npos);
    EXPECT_EQ(run.out.find("curve 14"), std::string::npos);
    EXPECT_EQ(run.out.find("segment"), std::string::npos) << "brief shows no keys";
}

TEST_F(tool, DamagedArchiveIsRefusedWithPlaceAndReason)
{
    std::string const path = PathOf("good.hvc");
    ToolRun({"curve", kSample, "--track", "1", "--save", path.c_str()});
    std::string const good = Read(path);
    ASSERT_EQ(good.size(), 269u);

    std::string const twice = good + good;
    ToolRun const cut({"inspect", Write("cut.hvc", twice.substr(0, 500)).c_str()});
    EXPECT_TRUE(Refused(cut));
    EXPECT_NE(cut.out.find("curve 0 at byte 0"), std::string::npos) << "what is good is shown";
    EXPECT_NE(cut.err.find("curve 1, which starts at byte 269, is refused at byte 273: it ends in "
                           "the middle"),
              std::string::npos)
        << cut.err;

    std::string kind = twice;
    kind[269 + 8] = 21;
    EXPECT_NE(ToolRun({"inspect", Write("kind.hvc", kind).c_str()})
                  .err.find("is refused at byte 277: there is no such kind of curve"),
              std::string::npos);
    std::string tag = good;
    tag[44 + 3 * 60] = 2;
    EXPECT_NE(ToolRun({"inspect", Write("tag.hvc", tag).c_str()})
                  .err.find("is refused at byte 224: the tag of a section is another one"),
              std::string::npos);
    EXPECT_TRUE(Refused(ToolRun({"inspect", "does-not-exist.hvc"})));
    ToolRun const empty({"inspect", Write("empty.hvc", "").c_str()});
    EXPECT_EQ(empty.code, 0);
    EXPECT_NE(empty.out.find(": 0 curves, 0 bytes\n"), std::string::npos);
}

TEST_F(tool, RendersADrawing)
{
    std::string const svg =
        Write("drawing.svg", "<svg viewBox='0 0 4 2'><rect width='4' height='2'/><text/></svg>");
    std::string const png = PathOf("made/drawing.png");
    ToolRun const run({"render", svg.c_str(), "--out", png.c_str(), "--size", "64"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, png + ": 64 x 32 pixels, 1 shape\nleft out: <text> is not supported\n");
    EXPECT_EQ(Read(png).substr(1, 3), "PNG");
    EXPECT_EQ(
        ToolRun({"render", svg.c_str(), "--out", png.c_str(), "--soft", "1.5", "--stroke", "0.5"})
            .code,
        0);
}

TEST_F(tool, RenderingRefusesWhatItCannotUse)
{
    std::string const svg = Write("drawing.svg", "<svg viewBox='0 0 4 2'/>");
    std::string const png = PathOf("drawing.png");
    for (std::vector<char const*> const& arguments : {std::vector<char const*>{"--size", "0"},
                                                      {"--size", "nan"},
                                                      {"--size", "1e9"},
                                                      {"--soft", "-1"},
                                                      {"--soft", "1e9"},
                                                      {"--stroke", "0"},
                                                      {"--stroke", "inf"}}) {
        std::vector<char const*> all = {"render", svg.c_str(), "--out", png.c_str()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << arguments[0] << " " << arguments[1];
    }
    EXPECT_TRUE(Refused(ToolRun({"render", Write("no.svg", "no").c_str(), "--out", png.c_str()})));
    EXPECT_TRUE(Refused(ToolRun({"render", "does-not-exist.svg", "--out", png.c_str()})));
}

// hv fit.

TEST_F(tool, FitsAStroke)
{
    std::string const svg = PathOf("new/folder/hook.svg");
    ToolRun const run({"fit", kStroke, "--out", svg.c_str()});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_NE(run.out.find("41 points as"), std::string::npos);
    EXPECT_NE(Read(svg).find("stroke_hook.csv"), std::string::npos);
    EXPECT_NE(Read(svg).find("ribbon"), std::string::npos);
    EXPECT_EQ(ToolRun({"fit", kStroke, "--out", svg.c_str(), "--width", "none"}).code, 0);
    EXPECT_EQ(Read(svg).find("class=\"ribbon\""), std::string::npos);
    for (std::vector<char const*> const& more :
         std::vector<std::vector<char const*>>{{"--live", "4"},
                                               {"--closed"},
                                               {"--corner", "90"},
                                               {"--tolerance", "0.1"},
                                               {"--width", "speed"}}) {
        std::vector<char const*> all = {"fit", kStroke, "--out", svg.c_str()};
        all.insert(all.end(), more.begin(), more.end());
        EXPECT_EQ(ToolRun(all).code, 0) << more[0];
    }
}

TEST_F(tool, FitsWithinExtremeTolerances)
{
    std::string const svg = PathOf("hook.svg");
    for (char const* tolerance : {"1e-300", "1e300", "1e-9"}) {
        for (char const* live : {"0", "1", "5"}) {
            ToolRun const extreme(
                {"fit", kStroke, "--out", svg.c_str(), "--tolerance", tolerance, "--live", live});
            EXPECT_EQ(extreme.code, 0) << tolerance << " " << live << " " << extreme.err;
        }
    }
}

TEST_F(tool, RefusesStrokesAndNumbersThatAreNot)
{
    std::string const svg = PathOf("hook.svg");
    EXPECT_TRUE(Refused(ToolRun({"fit", kStroke})));
    std::string const bare = Write("bare.csv", "1,2\n3,4\n");
    for (char const* width : {"pressure", "speed", "other"}) {
        EXPECT_TRUE(
            Refused(ToolRun({"fit", bare.c_str(), "--out", svg.c_str(), "--width", width})));
    }
    EXPECT_TRUE(Refused(ToolRun({"fit", "does-not-exist.csv", "--out", svg.c_str()})));
    std::string const bad = Write("bad.csv", "x,y\n1,2\n3,q\n");
    ToolRun const run({"fit", bad.c_str(), "--out", svg.c_str()});
    EXPECT_TRUE(Refused(run));
    EXPECT_NE(run.err.find("bad.csv: line 3: \"q\" is no number"), std::string::npos);
    for (std::vector<char const*> const& more :
         std::vector<std::vector<char const*>>{{"--tolerance", "0"},
                                               {"--tolerance", "-1"},
                                               {"--tolerance", "nan"},
                                               {"--tolerance", "inf"},
                                               {"--corner", "91"},
                                               {"--corner", "-1"},
                                               {"--corner", "nan"},
                                               {"--live", "-1"},
                                               {"--live", "x"}}) {
        std::vector<char const*> all = {"fit", kStroke, "--out", svg.c_str()};
        all.insert(all.end(), more.begin(), more.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << more[0] << " " << more[1];
    }
    EXPECT_FALSE(std::filesystem::exists(svg));
    ToolRun const unwritable({"fit", kStroke, "--out", "/proc/none/hook.svg"});
    EXPECT_TRUE(Refused(unwritable));
}

// hv morph.

TEST_F(tool, MorphsOneDrawingIntoAnother)
{
    std::string const first = Write(
        "first.svg", "<svg viewBox='0 0 9 9'><rect width='9' height='9' fill='#ff0000'/></svg>");
    std::string const second =
        Write("second.svg", "<svg viewBox='0 0 9 9'><circle id='small' r='1'/>"
                            "<path id='large' d='M0,0 9,0 4,9z' fill='#0000ff'/></svg>");
    std::string const folder = PathOf("made/frames");
    ToolRun const run({"morph", first.c_str(), second.c_str(), "--out", folder.c_str(), "--steps",
                       "3", "--size", "20"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, folder + ": 3 frames of 20 x 20 pixels\n");
    for (char const* frame : {"0", "1", "2"}) {
        EXPECT_NE(Read(folder + "/frame_000" + frame + ".png").find("IHDR"), std::string::npos);
    }
    // The files are there now.
    EXPECT_TRUE(Refused(ToolRun({"morph", first.c_str(), second.c_str(), "--out", folder.c_str(),
                                 "--steps", "2", "--size", "20"})));
    for (std::vector<char const*> const& more : std::vector<std::vector<char const*>>{
             {"--second", "small"}, {"--by", "turtle"}, {"--spacing", "0.5"}}) {
        std::vector<char const*> all = {"morph",        first.c_str(), second.c_str(), "--out",
                                        folder.c_str(), "--force",     "--steps",      "2",
                                        "--size",       "20"};
        all.insert(all.end(), more.begin(), more.end());
        EXPECT_EQ(ToolRun(all).code, 0) << more[0];
    }
}

TEST_F(tool, MorphingRefusesWhatItCannotUse)
{
    std::string const drawing =
        Write("drawing.svg", "<svg viewBox='0 0 9 9'><rect width='9' height='9'/></svg>");
    std::string const empty = Write("empty.svg", "<svg viewBox='0 0 9 9'/>");
    std::string const folder = PathOf("frames");
    EXPECT_TRUE(Refused(ToolRun({"morph", drawing.c_str(), "none.svg", "--out", folder.c_str()})));
    EXPECT_TRUE(
        Refused(ToolRun({"morph", drawing.c_str(), empty.c_str(), "--out", folder.c_str()})));
    for (std::vector<char const*> const& more :
         std::vector<std::vector<char const*>>{{"--steps", "1"},
                                               {"--steps", "10001"},
                                               {"--size", "0"},
                                               {"--size", "nan"},
                                               {"--spacing", "0"},
                                               {"--spacing", "nan"},
                                               {"--by", "magic"},
                                               {"--first", "nobody"}}) {
        std::vector<char const*> all = {"morph", drawing.c_str(), drawing.c_str(), "--out",
                                        folder.c_str()};
        all.insert(all.end(), more.begin(), more.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << more[0] << " " << more[1];
    }
    EXPECT_FALSE(std::filesystem::exists(folder));
}

// hv vectorize.

TEST_F(tool, VectorizesAPicture)
{
    std::string const png = PathOf("picture.png");
    std::string const svg =
        Write("drawing.svg", "<svg viewBox='0 0 4 2'><rect x='1' width='2' height='2'/></svg>");
    EXPECT_EQ(ToolRun({"render", svg.c_str(), "--out", png.c_str(), "--size", "8"}).code, 0);
    std::string const out = PathOf("made/outlines.svg");
    std::string const head =
        "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='4' viewBox='0 0 8 4'>\n"
        "<path fill-rule='evenodd' d='";
    std::string const tail = "'/>\n</svg>\n";

    ToolRun const dark({"vectorize", png.c_str(), "--out", out.c_str()});
    EXPECT_EQ(dark.code, 0) << dark.err;
    EXPECT_EQ(dark.out, out + ": 1 contour, 4 segments\n");
    EXPECT_EQ(Read(out), head + "M2,0V4H6V0Z\n" + tail);

    EXPECT_EQ(
        ToolRun({"vectorize", png.c_str(), "--out", out.c_str(), "--value", "255", "--area", "4"})
            .out,
        out + ": 0 contours, 0 segments\n");
    ToolRun const white({"vectorize", png.c_str(), "--out", out.c_str(), "--threshold", "256"});
    EXPECT_EQ(Read(out), head + "M0,0V4H8V0Z\n" + tail) << white.err;

    ToolRun const fitted({"vectorize", png.c_str(), "--out", out.c_str(), "--fit", "0.2"});
    EXPECT_EQ(fitted.code, 0) << fitted.err;
    EXPECT_NE(Read(out).find('C'), std::string::npos);
    // What was written can be drawn.
    EXPECT_EQ(ToolRun({"render", out.c_str(), "--out", png.c_str()}).code, 0);
}

TEST_F(tool, VectorizingRefusesWhatItCannotUse)
{
    std::string const png = PathOf("picture.png");
    std::string const svg = Write("drawing.svg", "<svg viewBox='0 0 4 2'/>");
    EXPECT_EQ(ToolRun({"render", svg.c_str(), "--out", png.c_str()}).code, 0);
    std::string const out = PathOf("outlines.svg");
    for (std::vector<char const*> const& arguments : {std::vector<char const*>{"--value", "256"},
                                                      {"--value", "-1"},
                                                      {"--value", "x"},
                                                      {"--threshold", "-1"},
                                                      {"--threshold", "nan"},
                                                      {"--value", "1", "--threshold", "5"},
                                                      {"--fit", "-1"},
                                                      {"--fit", "nan"},
                                                      {"--area", "-1"},
                                                      {"--perimeter", "nan"}}) {
        std::vector<char const*> all = {"vectorize", png.c_str(), "--out", out.c_str()};
        all.insert(all.end(), arguments.begin(), arguments.end());
        EXPECT_TRUE(Refused(ToolRun(all))) << arguments[0] << " " << arguments[1];
    }
    EXPECT_TRUE(Refused(ToolRun({"vectorize", svg.c_str(), "--out", out.c_str()})));
    EXPECT_TRUE(Refused(ToolRun({"vectorize", "none.png", "--out", out.c_str()})));
    // A picture that is cut off, at any place.
    std::string const whole = Read(png);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        std::string const cut = Write("cut.png", whole.substr(0, length));
        ToolRun const run({"vectorize", cut.c_str(), "--out", out.c_str()});
        EXPECT_TRUE(run.code == 0 || Refused(run)) << length;
    }
}
