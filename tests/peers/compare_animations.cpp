// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Holds what `hv play` paints against rlottie, over a folder of animations.
//
//     hv_compare_animations FOLDER [--width 512] [--limit 2] [--pictures DIR]
//
// Paints each FOLDER/*.json with both at five times, and prints for each file the mean absolute
// difference in percent of full scale, over all pixels: of the channel, of the four premultiplied
// ones, and at the time where it is greatest. With --pictures writes ours and theirs side by side.
// Ends with 1 when a file is above the limit, with 2 when one cannot be painted.

#include <tools/ToolError.h>
#include <tools/files.h>
#include <tools/paint/png_file.h>
#include <tools/play/painting/FramePainter.h>
#include <tools/play/scene/scene_reader.h>

#include <rlottie.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr int kTimes = 5;
/// Files that are named one by one.
constexpr std::size_t kWorstShown = 20;

struct Request {
    std::string folder;
    int width = 512;
    double limit = 2.0;
    std::string pictures;
};

struct Difference {
    double percent = 0.0;
    std::size_t frame = 0;
    std::string name;
};

/// The pixels of rlottie, as those of a canvas.
Canvas Theirs(rlottie::Animation& animation, std::size_t frame, int width, int height)
{
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width * height));
    rlottie::Surface const surface(pixels.data(), static_cast<std::size_t>(width),
                                   static_cast<std::size_t>(height),
                                   static_cast<std::size_t>(width) * 4);
    animation.renderSync(frame, surface);
    Canvas canvas(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            std::uint32_t const p = pixels[static_cast<std::size_t>(y * width + x)];
            canvas.SetPixel(x, y,
                            {static_cast<std::uint8_t>(p >> 16), static_cast<std::uint8_t>(p >> 8),
                             static_cast<std::uint8_t>(p), static_cast<std::uint8_t>(p >> 24)});
        }
    }
    return canvas;
}

double PercentBetween(Canvas const& ours, Canvas const& theirs)
{
    double sums[4] = {};
    for (int y = 0; y < ours.Height(); ++y) {
        for (int x = 0; x < ours.Width(); ++x) {
            for (int part = 0; part < 4; ++part) {
                sums[part] += std::abs(ours.Pixel(x, y)[part] - theirs.Pixel(x, y)[part]);
            }
        }
    }
    return *std::max_element(sums, sums + 4) / (255.0 * ours.Width() * ours.Height()) * 100.0;
}

/// Ours, theirs and, in red and blue, what only one of them has, over white.
void WritePicture(Request const& request, Difference const& difference, Canvas const& ours,
                  Canvas const& theirs)
{
    int const width = ours.Width();
    Canvas sheet(3 * width, ours.Height());
    for (int y = 0; y < ours.Height(); ++y) {
        for (int x = 0; x < width; ++x) {
            auto const overWhite = [x, y](Canvas const& canvas) {
                std::uint8_t const* const p = canvas.Pixel(x, y);
                auto const part = [p](int i) {
                    return static_cast<std::uint8_t>(p[i] + 255 - p[3]);
                };
                return PaintColour{part(0), part(1), part(2), 255};
            };
            sheet.SetPixel(x, y, overWhite(ours));
            sheet.SetPixel(width + x, y, overWhite(theirs));
            int const more = ours.Pixel(x, y)[3] - theirs.Pixel(x, y)[3];
            auto const red = static_cast<std::uint8_t>(255 - std::max(-more, 0));
            auto const blue = static_cast<std::uint8_t>(255 - std::max(more, 0));
            sheet.SetPixel(2 * width + x, y, {red, std::min(red, blue), blue, 255});
        }
    }
    PngFile_Write(request.pictures + "/" + difference.name + "_" +
                      std::to_string(difference.frame) + ".png",
                  sheet);
}

Difference Compare(Request const& request, std::filesystem::path const& file)
{
    LeftOut leftOut;
    Scene const scene = SceneReader_Read(Json_Parse(File_Read(file.string())), leftOut);
    for (LeftOut::Entry const& entry : leftOut.Entries()) {
        std::printf("%s: left out %s\n", file.stem().c_str(), entry.text.c_str());
    }
    int const height = static_cast<int>(std::lround(request.width * scene.height / scene.width));
    std::unique_ptr<rlottie::Animation> const theirs =
        rlottie::Animation::loadFromFile(file.string());
    if (theirs == nullptr) {
        throw ToolError(file.string() + ": rlottie does not read it");
    }
    FramePainter painter(scene, request.width, height);
    Canvas ours(request.width, height);
    Difference worst;
    for (int i = 0; i < kTimes; ++i) {
        double const span = scene.endFrame - scene.firstFrame;
        double const frame = std::floor(span * (2 * i + 1) / (2 * kTimes));
        painter.Paint(scene.firstFrame + frame, ours);
        Canvas const peer = Theirs(*theirs, static_cast<std::size_t>(frame), request.width, height);
        Difference const here = {PercentBetween(ours, peer), static_cast<std::size_t>(frame),
                                 file.stem().string()};
        if (!request.pictures.empty()) {
            WritePicture(request, here, ours, peer);
        }
        worst = i == 0 || here.percent > worst.percent ? here : worst;
    }
    return worst;
}

int Run(Request const& request)
{
    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::directory_iterator(request.folder)) {
        if (entry.path().extension() == ".json") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<Difference> found;
    double sum = 0.0;
    for (std::filesystem::path const& file : files) {
        found.push_back(Compare(request, file));
        sum += found.back().percent;
    }
    std::stable_sort(found.begin(), found.end(), [](Difference const& a, Difference const& b) {
        return a.percent > b.percent;
    });
    auto const above = std::count_if(found.begin(), found.end(), [&request](Difference const& d) {
        return d.percent > request.limit;
    });
    std::printf("%zu files, %d pixels wide: %.3f %% in the mean; %d above the limit of %g %%\n",
                found.size(), request.width, sum / static_cast<double>(found.size()),
                static_cast<int>(above), request.limit);
    for (std::size_t i = 0; i < found.size() && i < kWorstShown; ++i) {
        std::printf("  %.3f %%  %s, frame %zu\n", found[i].percent, found[i].name.c_str(),
                    found[i].frame);
    }
    return above == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    Request request;
    for (int i = 1; i < argc; ++i) {
        std::string const argument = argv[i];
        bool const hasValue = i + 1 < argc;
        if (argument == "--width" && hasValue) {
            request.width = std::clamp(std::atoi(argv[++i]), 1, 4096);
        } else if (argument == "--limit" && hasValue) {
            request.limit = std::atof(argv[++i]);
        } else if (argument == "--pictures" && hasValue) {
            request.pictures = argv[++i];
        } else {
            request.folder = argument;
        }
    }
    try {
        return Run(request);
    } catch (std::exception const& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
