// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv morph: from one drawing's outline to another's.

#include <tools/ProgressBar.h>
#include <tools/ToolError.h>
#include <tools/commands/morph_command.h>
#include <tools/number_text.h>
#include <tools/paint/Canvas.h>
#include <tools/play/output/PngFolder.h>
#include <tools/svg/svg_outlines.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/morph/HvMorpher.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <ostream>
#include <string>

namespace {

constexpr unsigned int kMostSteps = 10000;
constexpr double kMostPixels = 4096.0;
/// Around both outlines, as a share of the picture.
constexpr double kMargin = 0.05;

/// What was asked for.
struct Request {
    std::string files[2];
    std::string names[2];
    std::string folder;
    std::string by = "place";
    unsigned int steps = 25;
    double size = 256.0;
    double spacing = 1.0;
    bool isForced = false;
};

void RefuseBadNumbers(Request const& request)
{
    if (request.steps < 2 || request.steps > kMostSteps) {
        throw ToolError("--steps must lie between 2 and " + std::to_string(kMostSteps));
    }
    if (!(request.size >= 1.0 && request.size <= kMostPixels)) {
        throw ToolError("--size must lie between 1 and " + NumberText_Exact(kMostPixels));
    }
    if (!(request.spacing >= 0.01 && request.spacing <= kMostPixels)) {
        throw ToolError("--spacing must lie between 0.01 and " + NumberText_Exact(kMostPixels));
    }
    if (request.by != "place" && request.by != "turtle") {
        throw ToolError("--by must be place or turtle");
    }
}

SvgOutline ReadOutline(std::string const& file, std::string const& name)
{
    SvgDocument const document = SvgDocument_Read(file);
    try {
        SvgOutline outline = SvgOutline_Find(document, name);
        outline.path.Transform(document.transform);
        return outline;
    } catch (ToolError const& error) {
        throw ToolError(file + ": " + error.what());
    }
}

/// Moves an outline into the middle of a picture of `size` pixels, as large as it can be.
void FitInto(HvPath2f& path, double size)
{
    HvExtent2<double> box;
    path.GetTightExtent(box);
    double const longest = std::max(box.max.x - box.min.x, box.max.y - box.min.y);
    double const scale = longest > 0.0 ? (1.0 - 2.0 * kMargin) * size / longest : 1.0;
    HvTransfo4 toPicture;
    toPicture.Translate(size / 2.0, size / 2.0, 0.0);
    toPicture.Scale(scale, scale, 1.0);
    toPicture.Translate(-(box.min.x + box.max.x) / 2.0, -(box.min.y + box.max.y) / 2.0, 0.0);
    path.Transform(toPicture);
}

std::uint8_t Between(int a, int b, double t)
{
    return static_cast<std::uint8_t>(std::lround(a + t * (b - a)));
}

/// What is not painted in its file is drawn black here.
PaintColour ColourBetween(SvgPaint const& a, SvgPaint const& b, double t)
{
    SvgColour const first = a.isPainted ? a.colour : SvgColour();
    SvgColour const second = b.isPainted ? b.colour : SvgColour();
    return {Between(first.red, second.red, t), Between(first.green, second.green, t),
            Between(first.blue, second.blue, t), 255};
}

int Run(Request const& request, ToolStreams const& streams)
{
    RefuseBadNumbers(request);
    SvgOutline const outlines[2] = {ReadOutline(request.files[0], request.names[0]),
                                    ReadOutline(request.files[1], request.names[1])};
    HvPath2fProp1d first(SvgOutline_Closed(outlines[0].path));
    HvPath2fProp1d second(SvgOutline_Closed(outlines[1].path));
    FitInto(first, request.size);
    FitInto(second, request.size);

    HvGC gc;
    gc.minPointGap = request.spacing;
    gc.flatness = 0.1;
    gc.fillRule = outlines[0].style.fillRule;
    HvMorpher const morpher(&first, &second, gc);
    auto const side = static_cast<int>(std::ceil(request.size));
    PngFolder output(request.folder, request.steps, request.isForced);
    ProgressBar progress(streams.err, streams.showProgress, "morphing", request.steps);
    progress.ShowRate("frames/s");
    for (unsigned int i = 0; i < request.steps; ++i) {
        double const t = static_cast<double>(i) / (request.steps - 1);
        HvPath2fProp1d between(0u);
        if (request.by == "place") {
            morpher.LinearMorph(t, between);
        } else {
            morpher.TurtleMorph(t, between);
        }
        HvUByteRaster raster(side, side, 0);
        SvgOutline_Closed(between).AAFill(gc, raster, nullptr);
        Canvas canvas(side, side);
        canvas.Fill({255, 255, 255, 255});
        Coverage coverage;
        coverage.Take(raster, canvas.Box());
        canvas.Paint(coverage, ColourBetween(outlines[0].style.fill, outlines[1].style.fill, t));
        output.Take(output.Encode(canvas, i), i);
        progress.Advance(1);
    }
    streams.out << request.folder << ": " << NumberText_Counted(request.steps, "frame") << " of "
                << side << " x " << side << " pixels\n";
    return ToolExitDone;
}

}  // namespace

void MorphCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command =
        app.add_subcommand("morph", "Turn the outline of a drawing into that of another.");
    command->footer("Example: hv morph leaf.svg star.svg --steps 25 --out frames");
    auto const request = std::make_shared<Request>();
    command->add_option("FIRST", request->files[0], "the first drawing, in SVG")->required();
    command->add_option("SECOND", request->files[1], "the second drawing, in SVG")->required();
    command->add_option("--out", request->folder, "a folder for the frames, in PNG")->required();
    command->add_option("--steps", request->steps, "how many frames, with both ends; initially 25");
    command->add_option("--first", request->names[0],
                        "the id of a shape of the first drawing; initially the largest");
    command->add_option("--second", request->names[1],
                        "the id of a shape of the second drawing; initially the largest");
    command->add_option("--by", request->by,
                        "what is blended: place, or turtle for direction and step");
    command->add_option("--size", request->size, "pixels of the pictures' sides; initially 256");
    command->add_option("--spacing", request->spacing,
                        "pixels between the samples of the outlines; initially 1");
    command->add_flag("--force", request->isForced, "write over files that exist");
    command->callback([request, &streams, &result] { result = Run(*request, streams); });
}
