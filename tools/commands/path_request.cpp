// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What `hv curve` is asked about motion paths.

#include <tools/ToolError.h>
#include <tools/commands/path_request.h>
#include <tools/curve/track_path.h>
#include <tools/files.h>
#include <tools/number_text.h>
#include <tools/plot/path_plot.h>

#include <CLI/CLI.hpp>

#include <cmath>

namespace {

HvMotionPath3d::Projection PlaneOf(std::string const& name)
{
    return name == "xz"   ? HvMotionPath3d::ProjectionXZ
           : name == "yz" ? HvMotionPath3d::ProjectionYZ
                          : HvMotionPath3d::ProjectionXY;
}

}  // namespace

void PathRequest_AddOptions(CLI::App& command, PathRequest& request, CLI::Option* track)
{
    CLI::Option* path = command.add_option("--path", request.number,
                                           "the motion path to draw, by its number in the list");
    path->excludes(track);
    command.add_option("--plane", request.plane, "its axes to draw: xy, xz or yz; initially xy")
        ->check(CLI::IsMember({"xy", "xz", "yz"}))
        ->needs(path);
    command
        .add_option("--ticks", request.ticks,
                    "frames between two ticks on it; initially a round number")
        ->needs(path);
}

LottiePath const& PathRequest_Find(PathRequest const& request, LottieDocument const& document,
                                   std::string const& file)
{
    std::size_t const count = document.paths.size();
    if (count == 0) {
        throw ToolError(file + ": has no motion paths");
    }
    if (*request.number >= count) {
        throw ToolError(file + ": has no path " + std::to_string(*request.number) +
                        "; its paths are 0 to " + std::to_string(count - 1));
    }
    return document.paths[*request.number];
}

void PathRequest_Plot(PathRequest const& request, LottiePath const& path, std::string const& plot)
{
    HvMotionPath3d const motion = TrackPath_Build(path);
    double const step = request.ticks.value_or(PathPlot_TickStep(motion));
    if (!(step > 0.0) || !std::isfinite(step)) {
        throw ToolError("--ticks must be above 0");
    }
    PathPlotLabels labels;
    labels.title = path.name.empty() ? path.path : path.name;
    labels.subtitle = path.path + ", " + NumberText_Counted(path.keys.size(), "key") + ", frames " +
                      NumberText_Rounded(path.keys.front().time, 6) + " to " +
                      NumberText_Rounded(path.keys.back().time, 6);
    labels.timeUnit = "frame";
    File_Write(plot, PathPlot_Draw(motion, PlaneOf(request.plane), step, labels));
}
