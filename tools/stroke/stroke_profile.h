// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How wide a stroke is at its points.

#ifndef HV_TOOLS_STROKE_STROKE_PROFILE_H
#define HV_TOOLS_STROKE_STROKE_PROFILE_H

#include <tools/stroke/StrokeDocument.h>

#include <vector>

/// What the width follows.
enum class StrokeWidth {
    Pressure,  ///< the pen's pressure as it was recorded
    Speed      ///< the pen's speed: 1 at rest, a half at its median speed, less when it is faster
};

/// The width at each point. Throws ToolError when the stroke has no column for it.
std::vector<double> StrokeProfile_Widths(StrokeDocument const& stroke, StrokeWidth kind);

#endif
