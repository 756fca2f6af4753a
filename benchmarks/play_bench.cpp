// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How many frames a second does the player of tools/play paint, 512 pixels wide, beside rlottie?
//
// Every file of examples/data is played by itself, and so are those of the folder that the variable
// HV_ANIMATIONS names, together as one item. "Hv" paints with one thread or with as many as the
// machine has processors, each a frame of its own; rlottie divides the work of a frame by itself.
// "kite_plain" is the kite without what rlottie does not paint: it ignores the feather of a mask,
// and moves the points of outlines of different build without a morph between these.
// Reading the files is not counted, encoding neither. Items a second are frames a second; "cpu_us"
// is the processor time of a frame, that of all threads, in microseconds, which tells more where
// other programs run.

#include <tools/files.h>
#include <tools/play/output/frame_run.h>
#include <tools/play/scene/scene_reader.h>

#include <benchmark/benchmark.h>

#ifdef HV_PEER_RLOTTIE
#include <rlottie.h>
#endif

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kWidth = 512;
/// Of each file at most so many frames are painted, evenly spread; none twice, for which rlottie
/// would have nothing to do.
constexpr double kMostFrames = 48.0;

/// Takes frames and drops them.
class Nowhere : public FrameOutput {
public:
    EncodedFrame Encode(Canvas const& canvas, std::size_t) const override
    {
        benchmark::DoNotOptimize(canvas.Pixel(0, 0));
        return {"", canvas.Box()};
    }
    void Take(EncodedFrame const&, std::size_t) override {}
    void Close() override {}
};

struct File {
    std::string text;
    Scene scene;
    int height;
    double step;
    std::size_t numFrames;
};

using Files = std::vector<std::shared_ptr<File>>;

std::shared_ptr<File> FileOf(Json const& document)
{
    LeftOut leftOut;
    auto file = std::make_shared<File>();
    file->text = document.dump();
    file->scene = SceneReader_Read(document, leftOut);
    file->height = static_cast<int>(std::lround(kWidth * file->scene.height / file->scene.width));
    double const span = std::floor(file->scene.endFrame - file->scene.firstFrame);
    file->step = std::max(std::ceil(span / kMostFrames), 1.0);
    file->numFrames = static_cast<std::size_t>(std::max(std::floor(span / file->step), 1.0));
    return file;
}

std::shared_ptr<File> Read(std::string const& path)
{
    return FileOf(Json_Parse(File_Read(path)));
}

/// Whether the keys of a path, each of one outline, have different numbers of vertices.
bool IsMorph(Json const& keys)
{
    auto const numVertices = [](Json const& key) { return key["s"][0]["v"].size(); };
    return std::any_of(keys.begin(), keys.end(), [&](Json const& key) {
        return numVertices(key) != numVertices(keys.front());
    });
}

/// Takes the feather from all masks, and from a morph all but its first outline.
Json WithoutMorphsAndFeathers(Json document)
{
    if (document.is_structured()) {
        for (Json& child : document) {
            child = WithoutMorphsAndFeathers(std::move(child));
        }
    }
    if (document.is_object() && document.contains("masksProperties")) {
        for (Json& mask : document["masksProperties"]) {
            mask.erase("f");
        }
    }
    bool const isMoving = document.is_object() && document.value("ty", Json()) == "sh" &&
                          document["ks"].value("a", 0) == 1;
    if (isMoving && IsMorph(document["ks"]["k"])) {
        document["ks"] = {{"a", 0}, {"k", document["ks"]["k"][0]["s"][0]}};
    }
    return document;
}

std::vector<std::string> AnimationsIn(std::string const& folder)
{
    std::vector<std::string> paths;
    for (auto const& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".json") {
            paths.push_back(entry.path().string());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::int64_t FramesOf(Files const& files)
{
    std::size_t count = 0;
    for (auto const& file : files) {
        count += file->numFrames;
    }
    return static_cast<std::int64_t>(count);
}

/// Counts what a benchmark painted.
class Frames {
public:
    explicit Frames(benchmark::State& state) : state_(state), begin_(std::clock()) {}

    void Report(std::int64_t count) const
    {
        auto const painted = static_cast<double>(state_.iterations() * count);
        double const seconds = static_cast<double>(std::clock() - begin_) / CLOCKS_PER_SEC;
        state_.SetItemsProcessed(state_.iterations() * count);
        state_.counters["cpu_us"] = seconds * 1e6 / painted;
    }

private:
    benchmark::State& state_;
    std::clock_t begin_;
};

void Play_Hv(benchmark::State& state, Files const& files, unsigned int numThreads)
{
    Frames const frames(state);
    for (auto _ : state) {
        for (auto const& file : files) {
            FrameRun const run = {kWidth,     file->height,    file->scene.firstFrame,
                                  file->step, file->numFrames, numThreads};
            Nowhere output;
            FrameRun_Paint(file->scene, run, output, [] {});
        }
    }
    frames.Report(FramesOf(files));
}

#ifdef HV_PEER_RLOTTIE
void Play_Rlottie(benchmark::State& state, Files const& files)
{
    std::vector<std::unique_ptr<rlottie::Animation>> animations;
    std::size_t pixels = 0;
    for (auto const& file : files) {
        animations.push_back(rlottie::Animation::loadFromData(file->text, "", "", false));
        pixels = std::max(pixels, static_cast<std::size_t>(kWidth * file->height));
    }
    std::vector<std::uint32_t> buffer(pixels);
    Frames const frames(state);
    for (auto _ : state) {
        for (std::size_t i = 0; i < files.size(); ++i) {
            for (std::size_t frame = 0; frame < files[i]->numFrames; ++frame) {
                rlottie::Surface const surface(
                    buffer.data(), kWidth, static_cast<std::size_t>(files[i]->height), kWidth * 4);
                animations[i]->renderSync(
                    static_cast<std::size_t>(static_cast<double>(frame) * files[i]->step), surface);
            }
        }
    }
    frames.Report(FramesOf(files));
}
#endif

void Register(std::string const& name, Files const& files)
{
    auto const add = [&name](std::string const& who, auto const& play) {
        benchmark::RegisterBenchmark(("Play_" + who + "/" + name).c_str(), play)
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    };
    add("HvOneThread", [files](benchmark::State& state) { Play_Hv(state, files, 1); });
    add("Hv", [files](benchmark::State& state) {
        Play_Hv(state, files, std::max(std::thread::hardware_concurrency(), 1u));
    });
#ifdef HV_PEER_RLOTTIE
    add("Rlottie", [files](benchmark::State& state) { Play_Rlottie(state, files); });
#endif
}

}  // namespace

int main(int argc, char** argv)
{
    for (std::string const& path : AnimationsIn(HV_EXAMPLE_DATA)) {
        Register(std::filesystem::path(path).stem().string(), {Read(path)});
    }
    Register(
        "kite_plain",
        {FileOf(WithoutMorphsAndFeathers(Json_Parse(File_Read(HV_EXAMPLE_DATA "/kite.json"))))});
    if (char const* const folder = std::getenv("HV_ANIMATIONS")) {
        Files files;
        for (std::string const& path : AnimationsIn(folder)) {
            files.push_back(Read(path));
        }
        Register("folder", files);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
