// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a stroke and its fit.

#ifndef HV_TOOLS_PLOT_STROKE_PLOT_H
#define HV_TOOLS_PLOT_STROKE_PLOT_H

#include <tools/stroke/stroke_fit.h>

#include <string>
#include <vector>

/// The words in the picture.
struct StrokePlotLabels {
    std::string title;
    std::string subtitle;
};

/// Draws a fit as an SVG document: the path with its nodes and handles, and the points of the
/// stroke over it. Both axes have one scale, and the second one points down, as on a screen; the
/// field has the shape of the stroke. Of very many points only some are drawn, evenly chosen.
std::string StrokePlot_Draw(StrokeDocument const& stroke, StrokeFit const& fit,
                            StrokePlotLabels const& labels);

/// The same of a fit with a width for each point: the path is drawn as wide as its property tells,
/// and a field below has the property over the length of the path, with the width of each point.
std::string StrokePlot_Draw(StrokeDocument const& stroke, StrokeFit const& fit,
                            std::vector<double> const& widths, StrokePlotLabels const& labels);

#endif
