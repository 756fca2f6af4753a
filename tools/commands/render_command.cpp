// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv render: an SVG file as a picture.

#include <tools/ProgressBar.h>
#include <tools/ToolError.h>
#include <tools/commands/render_command.h>
#include <tools/number_text.h>
#include <tools/paint/png_file.h>
#include <tools/svg/svg_painter.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace {

/// The longest side of a picture, in pixels.
constexpr double kMostPixels = 16384.0;
/// The greatest blur, in pixels.
constexpr double kMostRadius = 1000.0;

/// What was asked for.
struct Request {
    std::string file;
    std::string out;
    std::optional<double> size;
    double soft = 0.0;
    std::optional<double> stroke;
};

void RefuseBadNumbers(Request const& request)
{
    double const size = request.size.value_or(1.0);
    if (!(size >= 1.0 && size <= kMostPixels)) {
        throw ToolError("--size must lie between 1 and " + NumberText_Exact(kMostPixels));
    }
    if (!(request.soft >= 0.0 && request.soft <= kMostRadius)) {
        throw ToolError("--soft must lie between 0 and " + NumberText_Exact(kMostRadius));
    }
    if (!(request.stroke.value_or(1.0) > 0.0) || !std::isfinite(request.stroke.value_or(1.0))) {
        throw ToolError("--stroke must be above 0");
    }
}

int PixelsOf(double length)
{
    return static_cast<int>(std::ceil(std::clamp(length, 1.0, kMostPixels) - 1e-6));
}

int Run(Request const& request, ToolStreams const& streams)
{
    RefuseBadNumbers(request);
    SvgDocument const document = SvgDocument_Read(request.file);
    double const longest = std::max(document.width, document.height);
    SvgPaintOptions options;
    options.scale = std::min(request.size.value_or(longest), kMostPixels) / longest;
    options.softRadius = request.soft;
    options.strokeWidth = request.stroke;
    Canvas canvas(PixelsOf(document.width * options.scale),
                  PixelsOf(document.height * options.scale));
    {
        ProgressBar progress(streams.err, streams.showProgress, "painting",
                             SvgPainter_NumShapes(document));
        SvgPainter_Paint(document, options, canvas, [&progress] { progress.Advance(1); });
    }
    PngFile_Write(request.out, canvas);
    streams.out << request.out << ": " << canvas.Width() << " x " << canvas.Height() << " pixels, "
                << NumberText_Counted(SvgPainter_NumShapes(document), "shape") << "\n";
    for (SvgNote const& note : document.notes) {
        streams.out << "left out: " << note.text
                    << (note.count > 1 ? ", " + std::to_string(note.count) + " times" : "") << "\n";
    }
    return ToolExitDone;
}

}  // namespace

void RenderCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command =
        app.add_subcommand("render", "Paint an SVG file through the library's fills and strokes.");
    command->footer("Example: hv render icon.svg --out icon.png --size 512");
    auto const request = std::make_shared<Request>();
    command->add_option("FILE", request->file, "the drawing, in SVG")->required();
    command->add_option("--out", request->out, "the picture, in PNG")->required();
    command->add_option("--size", request->size,
                        "pixels of the longer side; initially a pixel for each unit");
    command->add_option("--soft", request->soft, "blur fills by this radius, in pixels");
    command->add_option("--stroke", request->stroke,
                        "draw every shape as a stroke of this width, in units of the drawing");
    command->callback([request, &streams, &result] { result = Run(*request, streams); });
}
