// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a motion path.

#ifndef HV_TOOLS_PLOT_PATH_PLOT_H
#define HV_TOOLS_PLOT_PATH_PLOT_H

#include <hv/motionpath/HvMotionPath3d.h>

#include <string>

/// The words in the picture.
struct PathPlotLabels {
    std::string title;
    std::string subtitle;
    std::string timeUnit;  ///< frame
};

/// Time from one tick to the next: a round one, so that there are at most some hundred ticks.
double PathPlot_TickStep(HvMotionPath3d const& path);

/// Draws the projection of a path as an SVG document: the path, what it jumps over while it rests
/// dashed, nodes with their times, handles, and a tick across the path wherever the object is at
/// the multiples of `tickStep`; where it stands still a dot. Both axes have one scale, and the
/// second one points down, as on a screen. Throws ToolError for a step that would give more than
/// ten thousand ticks.
std::string PathPlot_Draw(HvMotionPath3d const& path, HvMotionPath3d::Projection plane,
                          double tickStep, PathPlotLabels const& labels);

#endif
