// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Paths whose outlines are looked at, and their exact points.

#ifndef TESTS_SHAPE_OUTLINE_PATHS_H
#define TESTS_SHAPE_OUTLINE_PATHS_H

#include <hv/shape/HvPath2f.h>
#include <tests/support/generators.h>

#include <vector>

/// An open or closed polygon. A closed one returns to its first corner.
inline HvPath2f PolygonPath(std::vector<HvPoint2<float>> const& corners, bool isClosed)
{
    HvPath2f path(1u);
    for (HvPoint2<float> const& corner : corners) {
        if (corners.data() == &corner) {
            path.Moveto(corner);
        } else {
            path.Lineto(corner);
        }
    }
    if (isClosed) {
        path.Lineto(corners.front());
        path.Closeto();
    }
    return path;
}

/// Up to three subpaths of segments of all degrees, open and closed, on quarters from -8 to 24.
inline HvPath2f RandomOutline()
{
    auto const point = [] {
        return HvPoint2<float>(static_cast<float>(PickInRange(-32, 97)) / 4,
                               static_cast<float>(PickInRange(-32, 97)) / 4);
    };
    HvPath2f path(1u);
    int const subpaths = PickInRange(1, 4);
    for (int s = 0; s < subpaths; ++s) {
        HvPoint2<float> const start = point();
        path.Moveto(start);
        int const segments = PickInRange(1, 6);
        for (int k = 0; k < segments; ++k) {
            unsigned int const degree = PickInRange(0, 3) == 0 ? PickInRange(1u, 9u) : 3;
            std::vector<HvPoint2<float>> pts;
            for (unsigned int i = 0; i < degree; ++i) {
                pts.push_back(point());
            }
            path.AltCurveto(pts.data(), degree);
        }
        if (PickInRange(0, 2) == 0) {
            path.Lineto(start);
            path.Closeto();
        }
    }
    return path;
}

/// The point of a Bezier curve at t, by de Casteljau in long double.
inline HvPoint2<double> BezierAt(std::vector<HvPoint2<double>> const& controls, double t)
{
    std::vector<HvPoint2<long double>> pts;
    for (HvPoint2<double> const& p : controls) {
        pts.emplace_back(p.x, p.y);
    }
    for (std::size_t n = pts.size() - 1; n > 0; --n) {
        for (std::size_t i = 0; i < n; ++i) {
            long double const share = t;
            pts[i] = HvPoint2<long double>(pts[i].x + (pts[i + 1].x - pts[i].x) * share,
                                           pts[i].y + (pts[i + 1].y - pts[i].y) * share);
        }
    }
    return HvPoint2<double>(static_cast<double>(pts[0].x), static_cast<double>(pts[0].y));
}

/// The control points of the segment that starts at `start`, in double.
inline std::vector<HvPoint2<double>> SegmentOf(HvPath2f const& path, unsigned int start,
                                               unsigned int end)
{
    std::vector<HvPoint2<double>> controls;
    for (unsigned int i = start; i <= end; ++i) {
        controls.emplace_back(path.GetPoint(i));
    }
    return controls;
}

#endif
