// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a stroke to a path of few curves.

#ifndef HV_TOOLS_STROKE_STROKE_FIT_H
#define HV_TOOLS_STROKE_STROKE_FIT_H

#include <hv/pathbuild/HvPath2fProp1d.h>
#include <tools/stroke/StrokeDocument.h>

#include <cstddef>
#include <functional>
#include <vector>

/// How a stroke is fitted.
struct StrokeFitOptions {
    /// Greatest distance of a point from the path.
    double tolerance = 1.0;
    /// The least turn, in degrees, that stays a corner.
    double cornerDegrees = 25.0;
    /// Whether the stroke is led back to its start.
    bool isClosed = false;
    /// 0: all points are fitted at once. Otherwise the path is built as if it were drawn while the
    /// pen moves, each time that so many points more have arrived.
    unsigned int live = 0;
};

/// A stroke as curves.
struct StrokeFit {
    /// The curves; the widths are their property.
    HvPath2fProp1d path = HvPath2fProp1d(64u);
    unsigned int numCurves = 0;
    /// Length of the path.
    double length = 0.0;
    /// Greatest distance of a point from the path; a live fit smooths its points, so that it may
    /// exceed the tolerance.
    double farthest = 0.0;
    /// For each point how far along the path its foot is, not descending.
    std::vector<double> feet;
};

/// Fits a stroke. `advance` is told of points that are done with; each counts once.
///
/// `widths` has one for each point, or none at all. They become the property of the path, a
/// polyline over its length with few keys, within 2 % of the largest: of a live fit as a builder of
/// property paths follows the pen, otherwise at the feet of the points.
///
/// The distances are measured to a polyline of the path, near the place of the point before and
/// only where nothing is near there everywhere.
StrokeFit StrokeFit_Make(StrokeDocument const& stroke, std::vector<double> const& widths,
                         StrokeFitOptions const& options,
                         std::function<void(std::size_t)> const& advance);

#endif
