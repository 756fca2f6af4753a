// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Walks a contour side by side, and says where the tracer must stop on the way.

#ifndef TESTS_VECTORIZE_CONTOUR_WALK_H
#define TESTS_VECTORIZE_CONTOUR_WALK_H

#include <tests/vectorize/trace_support.h>

/// How often the walk around a contour goes on in one direction, from each turn to the next.
struct StraightStretch {
    int dx;
    int dy;
    int sides;
};

/// The stretches of the contour that starts at the corner `start`: an outer one goes down from
/// there, a hole up. Where two pixels of a region touch at a corner the walk stays with its own.
inline std::vector<StraightStretch> WalkContour(HvUByteRaster const& raster, TracePoint start,
                                                bool isOuter)
{
    auto const isInk = [&](int x, int y) {
        return x >= 0 && x < raster.width && y >= 0 && y < raster.height &&
               raster.data[y * raster.width + x] == kInk;
    };
    int x = start.first;
    int y = start.second;
    int dx = 0;
    int dy = isOuter ? 1 : -1;
    std::vector<StraightStretch> stretches = {{dx, dy, 0}};
    do {
        x += dx;
        y += dy;
        ++stretches.back().sides;
        // The side of the ink, and the pixels ahead on it and across from it.
        int const nx = dy;
        int const ny = -dx;
        bool const goesOn = isInk(x + (dx + nx - 1) / 2, y + (dy + ny - 1) / 2);
        bool const isBlocked = isInk(x + (dx - nx - 1) / 2, y + (dy - ny - 1) / 2);
        if (!goesOn) {
            dx = nx;
            dy = ny;
        } else if (isBlocked) {
            dx = -nx;
            dy = -ny;
        }
        if (!goesOn || isBlocked) {
            stretches.push_back({dx, dy, 0});
        }
        // A hole may pass its start a second time, where two of its pixels touch.
    } while (TracePoint(x, y) != start || dy != stretches[0].dy);
    if (stretches.back().sides == 0) {
        stretches.pop_back();
    }
    return stretches;
}

/// The points that must be told of a contour: the ends of each stretch, and on a vertical one those
/// of its first and its last side. A hole starts one side below the end of its first stretch, so
/// the last side of its last one is the first of all.
inline TraceContour StopsOf(HvUByteRaster const& raster, TracePoint start, bool isOuter)
{
    std::vector<StraightStretch> const stretches = WalkContour(raster, start, isOuter);
    TraceContour stops = {start};
    for (std::size_t i = 0; i < stretches.size(); ++i) {
        StraightStretch const& stretch = stretches[i];
        bool const isCutByStart = i + 1 == stretches.size() && stretch.dy != 0;
        TracePoint const from = stops.back();
        for (int side = 1; side <= stretch.sides; ++side) {
            bool const isStop =
                side == stretch.sides ||
                (stretch.dy != 0 && (side == 1 || (side + 1 == stretch.sides && !isCutByStart)));
            if (isStop) {
                stops.emplace_back(from.first + side * stretch.dx, from.second + side * stretch.dy);
            }
        }
    }
    return stops;
}

#endif
