// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How wide a stroke is along its path.

#ifndef HV_TOOLS_STROKE_STROKE_PROFILE_H
#define HV_TOOLS_STROKE_STROKE_PROFILE_H

#include <hv/fcurve/HvRawFCurve.h>
#include <tools/stroke/stroke_fit.h>

#include <vector>

/// What the width follows.
enum class StrokeWidth {
    Pressure,  ///< the pen's pressure as it was recorded
    Speed      ///< the pen's speed: 1 at rest, a half at its median speed, less when it is faster
};

/// The width at each point. Throws ToolError when the stroke has no column for it.
std::vector<double> StrokeProfile_Widths(StrokeDocument const& stroke, StrokeWidth kind);

/// The widths over the length of the path, as a polyline of few keys within 2 % of the largest. Of
/// points at one place of the path the first counts. The path's ends have keys.
HvRawFCurve StrokeProfile_Make(StrokeFit const& fit, std::vector<double> const& widths);

#endif
