// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A stroke of a pen, read from a table of numbers.

#ifndef HV_TOOLS_STROKE_STROKEDOCUMENT_H
#define HV_TOOLS_STROKE_STROKEDOCUMENT_H

#include <hv/foundation/HvPoint2.h>

#include <string>
#include <vector>

/// One point that a pen has reported.
struct StrokePoint {
    HvPoint2<float> place;
    double pressure = 1.0;
    double time = 0.0;
};

/// A stroke.
struct StrokeDocument {
    std::vector<StrokePoint> points;
    bool hasPressure = false;
    bool hasTime = false;
};

/// Reads comma-separated values: a line for each point, with x, y, and perhaps pressure and time.
///
/// The first line may name the columns, in any order: x, y, pressure, and milliseconds, seconds or
/// time; columns of other names are passed over. Without names there are two to four columns, in
/// the order above. Semicolons and tabs part columns too; empty lines, and lines that start with
/// "#", count for nothing.
///
/// Throws ToolError, naming the line: for a line with more or fewer columns than the first, text
/// that is no number, a coordinate or pressure beyond 1e18, a pressure below 0, a time before
/// that of the point before; and for a document of fewer than two points.
StrokeDocument StrokeDocument_Parse(std::string const& text);

#endif
