// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv play: an animation as pictures.

#include <tools/ProgressBar.h>
#include <tools/ToolError.h>
#include <tools/commands/play_command.h>
#include <tools/files.h>
#include <tools/number_text.h>
#include <tools/play/output/ApngFile.h>
#include <tools/play/output/PngFolder.h>
#include <tools/play/output/frame_run.h>
#include <tools/play/scene/scene_reader.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <thread>

namespace {

/// The longest side of a picture, in pixels.
constexpr double kMostPixels = 16384.0;
/// An hour of film at 30 frames a second, and some more.
constexpr double kMostFrames = 120000.0;
constexpr unsigned int kMostThreads = 256;
constexpr double kLongestStretch = 1000.0;

/// What was asked for.
struct Request {
    std::string file;
    std::string folder;
    std::string apng;
    std::string size;
    std::string frames;
    std::optional<unsigned int> threads;
    double timeStretch = 1.0;
    bool isForced = false;
};

Scene ReadScene(std::string const& file, LeftOut& leftOut)
{
    std::string const text = File_Read(file);
    try {
        return SceneReader_Read(Json_Parse(text), leftOut);
    } catch (ToolError const& error) {
        throw ToolError(file + ": " + error.what());
    }
}

int PixelsOf(double length, char const* what)
{
    if (!(length >= 1.0 && length <= kMostPixels)) {
        throw ToolError(std::string("the ") + what + " of the picture must lie between 1 and " +
                        NumberText_Exact(kMostPixels) + " pixels");
    }
    return static_cast<int>(length);
}

/// Two integers with a separator between them; the second may be missing with it.
struct IntegerPair {
    int first = 0;
    std::optional<int> second;
};

/// Nothing when the text is no such pair.
std::optional<IntegerPair> PairOf(std::string const& text, std::string const& separator)
{
    auto const read = [](std::string const& part, int& value) {
        char const* const end = part.data() + part.size();
        auto const [stop, error] = std::from_chars(part.data(), end, value);
        return error == std::errc() && stop == end;
    };
    IntegerPair pair;
    std::size_t const at = text.find(separator);
    if (!read(text.substr(0, at), pair.first)) {
        return std::nullopt;
    }
    if (at != text.npos) {
        int second = 0;
        if (!read(text.substr(at + separator.size()), second)) {
            return std::nullopt;
        }
        pair.second = second;
    }
    return pair;
}

/// "512x256", or "512": that wide, and as high as the animation asks for.
void SetSize(Request const& request, Scene const& scene, FrameRun& run)
{
    double width = std::ceil(scene.width);
    double height = std::ceil(scene.height);
    if (!request.size.empty()) {
        std::optional<IntegerPair> const pair = PairOf(request.size, "x");
        if (!pair) {
            throw ToolError("--size must be pixels, as in 512x256 or 512");
        }
        width = pair->first;
        height = pair->second ? *pair->second
                              : std::max(1.0, std::round(width * scene.height / scene.width));
    }
    run.width = PixelsOf(width, "width");
    run.height = PixelsOf(height, "height");
}

/// "a..b", both included and frames of the animation; initially all of these.
void SetFrames(Request const& request, Scene const& scene, FrameRun& run)
{
    double first = scene.firstFrame;
    double end = scene.endFrame;
    if (!request.frames.empty()) {
        std::optional<IntegerPair> const pair = PairOf(request.frames, "..");
        if (!pair || !pair->second) {
            throw ToolError("--frames must be two frames, as in 0..59");
        }
        first = pair->first;
        end = *pair->second + 1.0;
        double const wholeFirst = std::ceil(scene.firstFrame);
        double const wholeEnd = std::ceil(scene.endFrame);
        if (!(first >= wholeFirst && end <= wholeEnd)) {
            throw ToolError("--frames must lie within " + NumberText_Exact(wholeFirst) + ".." +
                            NumberText_Exact(wholeEnd - 1.0) + ", the frames of the animation");
        }
    }
    double const stretch = request.timeStretch;
    if (!(stretch >= 1.0 / kLongestStretch && stretch <= kLongestStretch)) {
        throw ToolError("--time-stretch must lie between 0.001 and 1000");
    }
    // A frame that is begun counts; rounding does not begin one.
    double const count = std::ceil((end - first) * stretch - 1e-9);
    if (!(count >= 1.0)) {
        throw ToolError("there are no frames from " + NumberText_Exact(first) + " up to " +
                        NumberText_Exact(end));
    }
    if (!(count <= kMostFrames)) {
        throw ToolError("more than " + NumberText_Exact(kMostFrames) +
                        " frames: --frames takes some of them");
    }
    run.firstFrame = first;
    run.step = 1.0 / stretch;
    run.numFrames = static_cast<std::size_t>(count);
}

unsigned int ThreadsOf(Request const& request)
{
    unsigned int const wanted =
        request.threads.value_or(std::clamp(std::thread::hardware_concurrency(), 1u, kMostThreads));
    if (wanted < 1 || wanted > kMostThreads) {
        throw ToolError("--threads must lie between 1 and " + std::to_string(kMostThreads));
    }
    return wanted;
}

std::unique_ptr<FrameOutput> OutputOf(Request const& request, Scene const& scene,
                                      FrameRun const& run)
{
    if (!request.apng.empty()) {
        return std::make_unique<ApngFile>(request.apng, run.numFrames, scene.frameRate,
                                          request.isForced);
    }
    return std::make_unique<PngFolder>(request.folder, run.numFrames, request.isForced);
}

int Run(Request const& request, ToolStreams const& streams)
{
    if (request.folder.empty() == request.apng.empty()) {
        throw ToolError("play takes one of --out and --apng");
    }
    LeftOut leftOut;
    Scene const scene = ReadScene(request.file, leftOut);
    FrameRun run;
    SetSize(request, scene, run);
    SetFrames(request, scene, run);
    run.numThreads = ThreadsOf(request);
    std::unique_ptr<FrameOutput> const output = OutputOf(request, scene, run);
    {
        ProgressBar progress(streams.err, streams.showProgress, "playing", run.numFrames);
        progress.ShowRate("frames/s");
        FrameRun_Paint(scene, run, *output, [&progress] { progress.Advance(1); });
    }
    streams.out << (request.apng.empty() ? request.folder : request.apng) << ": "
                << NumberText_Counted(run.numFrames, "frame") << " of " << run.width << " x "
                << run.height << " pixels\n";
    for (LeftOut::Entry const& entry : leftOut.Entries()) {
        streams.out << "left out: " << entry.text << ", at " << entry.place;
        if (entry.count > 1) {
            streams.out << " and " << NumberText_Counted(entry.count - 1, "place") << " more";
        }
        streams.out << "\n";
    }
    return leftOut.Entries().empty() ? ToolExitDone : ToolExitLeftOut;
}

}  // namespace

void PlayCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command = app.add_subcommand("play", "Paint the frames of a Lottie animation.");
    command->footer("Example: hv play flight.json --apng flight.png --size 512");
    auto const request = std::make_shared<Request>();
    command->add_option("FILE", request->file, "the animation, in JSON")->required();
    command->add_option("--out", request->folder, "a folder for the frames, in PNG");
    command->add_option("--apng", request->apng, "one file for all frames, an animated PNG");
    command->add_option("--size", request->size,
                        "pixels, as 512x256, or 512 for the width; initially the animation's own");
    command->add_option("--frames", request->frames,
                        "the first and the last frame, as 0..59; initially all");
    command->add_option("--threads", request->threads,
                        "how many paint at once; initially as many as the machine has processors");
    command->add_option("--time-stretch", request->timeStretch,
                        "how much slower it plays; 2 gives twice as many frames");
    command->add_flag("--force", request->isForced, "write over files that exist");
    command->callback([request, &streams, &result] { result = Run(*request, streams); });
}
