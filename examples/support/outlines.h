// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines that are given by a formula.

#ifndef EXAMPLES_SUPPORT_OUTLINES_H
#define EXAMPLES_SUPPORT_OUTLINES_H

#include <hv/hv.h>

#include <cmath>

/// A polyline around (0, 0) through the places `at(u)`, for u from 0 to 1.
template <class At>
HvPath2fProp1d Drawn(int nodes, At at)
{
    HvPath2fProp1d path(0u);
    for (int i = 0; i <= nodes; ++i) {
        HvPoint2<float> const point(at(static_cast<double>(i) / nodes));
        i == 0 ? path.Moveto(point) : path.Lineto(point);
    }
    return path;
}

/// The place at a distance from (0, 0), so many turns from the x axis on.
inline HvPoint2<double> Polar(double distance, double turns)
{
    double const angle = 6.283185307179586 * turns;
    return {distance * std::cos(angle), distance * std::sin(angle)};
}

#endif
