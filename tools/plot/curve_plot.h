// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture of a curve.

#ifndef HV_TOOLS_PLOT_CURVE_PLOT_H
#define HV_TOOLS_PLOT_CURVE_PLOT_H

#include <hv/fcurve/HvStdFCurve.h>

#include <string>

/// The words in the picture.
struct CurvePlotLabels {
    std::string title;
    std::string subtitle;
    std::string parameterAxis;
    std::string valueAxis;
};

/// What part of a curve a picture shows.
struct CurvePlotRange {
    double from = 0;
    double to = 0;
    double low = 0;
    double high = 0;
};

/// The range that holds all keys and tangent handles, with a margin around them.
CurvePlotRange CurvePlot_WholeRange(HvStdFCurve const& curve);

/// Draws the curve as an SVG document: the polyline that the library flattens it to, jumps dashed,
/// keys, the tangent handles of cubic segments, axes and a grid with round numbers. What lies
/// outside the keys is shaded. Where keys stand so close that they would hide the curve they are
/// left out.
std::string CurvePlot_Draw(HvStdFCurve const& curve, CurvePlotRange const& range,
                           CurvePlotLabels const& labels);

#endif
