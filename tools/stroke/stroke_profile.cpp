// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How wide a stroke is at its points.

#include <tools/ToolError.h>
#include <tools/stroke/stroke_profile.h>

#include <algorithm>

namespace {

/// A speed is measured over so many points to both sides: single steps of a pen jump between whole
/// pixels and whole milliseconds.
constexpr std::size_t kSpeedReach = 3;

std::vector<double> Speeds(StrokeDocument const& stroke)
{
    std::vector<StrokePoint> const& points = stroke.points;
    std::vector<double> speeds(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        std::size_t const first = i - std::min(i, kSpeedReach);
        std::size_t const last = std::min(i + kSpeedReach, points.size() - 1);
        double way = 0.0;
        for (std::size_t k = first; k < last; ++k) {
            way += HvPoint2_LengthAB(points[k].place, points[k + 1].place);
        }
        double const time = points[last].time - points[first].time;
        // Points of one time tell no speed: that of the point before goes on.
        speeds[i] = time > 0.0 ? way / time : i == 0 ? 0.0 : speeds[i - 1];
    }
    return speeds;
}

double Median(std::vector<double> values)
{
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

std::vector<double> StrokeProfile_Widths(StrokeDocument const& stroke, StrokeWidth kind)
{
    if (kind == StrokeWidth::Pressure) {
        if (!stroke.hasPressure) {
            throw ToolError("there is no column of pressures");
        }
        std::vector<double> pressures(stroke.points.size());
        std::transform(stroke.points.begin(), stroke.points.end(), pressures.begin(),
                       [](StrokePoint const& point) { return point.pressure; });
        return pressures;
    }
    if (!stroke.hasTime) {
        throw ToolError("there is no column of times");
    }
    std::vector<double> widths = Speeds(stroke);
    double const median = Median(widths);
    std::transform(widths.begin(), widths.end(), widths.begin(), [median](double speed) {
        return median > 0.0 ? median / (median + speed) : 1.0;
    });
    return widths;
}
