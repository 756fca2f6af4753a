// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A line of changing width, as polygons.

#ifndef HV_TOOLS_PLOT_STROKE_RIBBON_H
#define HV_TOOLS_PLOT_STROKE_RIBBON_H

#include <hv/foundation/HvPoint2.h>

#include <vector>

/// A place on a line, and how wide the line is there.
struct RibbonPoint {
    HvPoint2<double> place;
    double width;
};

/// A disc that rounds an end or a corner.
struct RibbonDisc {
    HvPoint2<double> centre;
    double radius;
};

/// What a line of changing width covers, when it is filled by winding: one polygon, and discs.
struct Ribbon {
    std::vector<HvPoint2<double>> outline;
    std::vector<RibbonDisc> discs;
};

/// Covers a line. Points where the line goes nowhere count once.
Ribbon Ribbon_Make(std::vector<RibbonPoint> const& line);

#endif
