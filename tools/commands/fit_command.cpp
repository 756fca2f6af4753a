// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// hv fit: a stroke of a pen as a path of few curves.

#include <tools/ProgressBar.h>
#include <tools/ToolError.h>
#include <tools/commands/fit_command.h>
#include <tools/files.h>
#include <tools/number_text.h>
#include <tools/plot/stroke_plot.h>
#include <tools/stroke/StrokeDocument.h>
#include <tools/stroke/stroke_fit.h>
#include <tools/stroke/stroke_profile.h>

#include <CLI/CLI.hpp>

#include <cmath>
#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace {

/// The most digits of a measured number.
constexpr int kDigits = 4;

/// What was asked for.
struct Request {
    std::string file;
    std::string out;
    StrokeFitOptions fit;
    std::string width;
};

StrokeDocument ReadStroke(std::string const& file)
{
    std::string const text = File_Read(file);
    try {
        return StrokeDocument_Parse(text);
    } catch (ToolError const& error) {
        throw ToolError(file + ": " + error.what());
    }
}

void RefuseBadNumbers(StrokeFitOptions const& options)
{
    if (!(options.tolerance > 0.0) || !std::isfinite(options.tolerance)) {
        throw ToolError("--tolerance must be above 0");
    }
    if (!(options.cornerDegrees >= 0.0 && options.cornerDegrees <= 90.0)) {
        throw ToolError("--corner must lie between 0 and 90");
    }
}

/// A width for each point, or none at all.
std::vector<double> WidthsOf(StrokeDocument const& stroke, Request const& request)
{
    bool const isUnsaid = request.width.empty();
    if (request.width == "none" || (isUnsaid && !stroke.hasPressure)) {
        return {};
    }
    try {
        return StrokeProfile_Widths(stroke, request.width == "speed" ? StrokeWidth::Speed
                                                                     : StrokeWidth::Pressure);
    } catch (ToolError const& error) {
        throw ToolError(request.file + ": --width " + request.width + ": " + error.what());
    }
}

std::string Drawn(StrokeDocument const& stroke, StrokeFit const& fit,
                  std::vector<double> const& widths, StrokePlotLabels const& labels)
{
    return widths.empty() ? StrokePlot_Draw(stroke, fit, labels)
                          : StrokePlot_Draw(stroke, fit, widths, labels);
}

std::string Described(StrokeDocument const& stroke, StrokeFit const& fit, double tolerance)
{
    return NumberText_Counted(stroke.points.size(), "point") + " as " +
           NumberText_Counted(fit.numCurves, "curve") + " within " +
           NumberText_Rounded(tolerance, kDigits) + ", the farthest point " +
           NumberText_Rounded(fit.farthest, kDigits) + " away, " +
           NumberText_Rounded(fit.length, kDigits) + " long";
}

int Run(Request const& request, ToolStreams const& streams)
{
    RefuseBadNumbers(request.fit);
    StrokeDocument const stroke = ReadStroke(request.file);
    std::vector<double> const widths = WidthsOf(stroke, request);
    StrokeFit fit;
    {
        ProgressBar progress(streams.err, streams.showProgress, "measuring", stroke.points.size());
        fit = StrokeFit_Make(stroke, widths, request.fit,
                             [&progress](std::size_t points) { progress.Advance(points); });
    }
    std::string const words = Described(stroke, fit, request.fit.tolerance);
    std::string const name = std::filesystem::path(request.file).filename().string();
    File_Write(request.out, Drawn(stroke, fit, widths, {name, words}));
    streams.out << request.out << ": " << words << "\n";
    return ToolExitDone;
}

}  // namespace

void FitCommand_Add(CLI::App& app, ToolStreams const& streams, int& result)
{
    CLI::App* command = app.add_subcommand(
        "fit", "Fit curves to a stroke of a pen, and draw them with the points over them.");
    command->footer("Example: hv fit stroke.csv --tolerance 0.5 --out stroke.svg");
    auto const request = std::make_shared<Request>();
    command
        ->add_option("FILE", request->file,
                     "the points: comma-separated x, y, and perhaps pressure and time")
        ->required();
    command->add_option("--out", request->out, "the picture, in SVG")->required();
    command->add_option("--tolerance", request->fit.tolerance,
                        "greatest distance of a point from the path; initially 1");
    command->add_option("--corner", request->fit.cornerDegrees,
                        "turns of this many degrees stay corners, up to 90; initially 25");
    command->add_flag("--closed", request->fit.isClosed, "lead the stroke back to its start");
    command
        ->add_option("--width", request->width,
                     "what the width follows; initially the pressure where there is one")
        ->check(CLI::IsMember({"pressure", "speed", "none"}));
    command->add_option("--live", request->fit.live,
                        "build the path while the points arrive, so many at a time");
    command->callback([request, &streams, &result] { result = Run(*request, streams); });
}
