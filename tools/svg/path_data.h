// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path data of SVG: the text of a "d" attribute, and arcs.

#ifndef HV_TOOLS_SVG_PATH_DATA_H
#define HV_TOOLS_SVG_PATH_DATA_H

#include <hv/bezier/HvBezierSink.h>

#include <string>

/// Draws path data: all commands of SVG 1.1, relative ones, quadratics and arcs too, as lines and
/// cubics. A closed subpath gets a line back to its start where it is not there yet.
///
/// Returns "" or, where the text is not path data, what is wrong and at which character; what
/// stands before it has been drawn, as SVG asks.
std::string PathData_Draw(std::string const& text, HvBezierSink& sink);

/// An ellipse of `radii` whose x axis is turned by `degrees`, in device of SVG: y down, so that
/// angles run clockwise to the eye.
struct SvgEllipse {
    HvPoint2<double> radii;
    double degrees;
};

/// Draws an arc of the ellipse from `from`, where the sink stands, to `to`: of the four that there
/// may be the long one if `isLong`, the one of rising angles if `isRising`. Radii that are too
/// small grow until they reach; one of 0 gives a line. At most 90 degrees to a cubic.
void PathData_DrawArc(HvPoint2<double> const& from, HvPoint2<double> const& to,
                      SvgEllipse const& ellipse, bool isLong, bool isRising, HvBezierSink& sink);

#endif
