// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The tests that small contours do not pass.

#include <hv/vectorize/ObContour.h>

#include <hv/vectorize/ObContext.h>

#include <cmath>
#include <cstdint>

bool ObTestContourArea(ObContext& context, ObContour* contour)
{
    if (context.areaThreshold == 0) {
        return true;
    }
    // Exact: a step's share is at most twice the pixels of the raster, whose number fits an int.
    std::int64_t twice = 0;
    std::int64_t vertices = 0;
    ObVertex const* vertex = contour->start;
    do {
        std::int64_t const dx = std::int64_t(vertex->next->x) - vertex->x;
        twice -= dx * (std::int64_t(vertex->next->y) + vertex->y);
        ++vertices;
        vertex = vertex->next;
    } while (vertex != contour->start);
    return vertices >= 3 &&
           static_cast<double>(twice < 0 ? -twice : twice) >= 2 * context.areaThreshold;
}

bool ObTestContourPerimeter(ObContext& context, ObContour* contour)
{
    if (context.perimeterThreshold == 0) {
        return true;
    }
    double perimeter = 0;
    ObVertex const* vertex = contour->start;
    do {
        perimeter +=
            std::hypot(double(vertex->next->x) - vertex->x, double(vertex->next->y) - vertex->y);
        if (perimeter >= context.perimeterThreshold) {
            return true;
        }
        vertex = vertex->next;
    } while (vertex != contour->start);
    return false;
}
