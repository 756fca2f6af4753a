// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polylines as curves are fitted to them: finite, and without steps that lead nowhere.

#ifndef HV_BEZIER_INTERNAL_DISTINCT_POINTS_H
#define HV_BEZIER_INTERNAL_DISTINCT_POINTS_H

#include <hv/foundation/HvPoint2fArray.h>

#include <algorithm>
#include <cmath>

inline bool HvDistinctPoints_AreFinite(HvPoint2fArray const& points)
{
    return std::all_of(points.begin(), points.end(), [](HvPoint2<float> const& p) {
        return std::isfinite(p.x) && std::isfinite(p.y);
    });
}

/// A copy of at least one point without those that repeat their predecessor; a closed polyline gets
/// its first point at its end.
inline HvPoint2fArray HvDistinctPoints_Of(HvPoint2fArray const& points, bool isClosed)
{
    HvPoint2fArray distinct(points.Size() + 1);
    distinct.Add(points[0]);
    for (HvPoint2<float> const& p : points) {
        if (p != distinct[distinct.Size() - 1]) {
            distinct.Add(p);
        }
    }
    if (isClosed && distinct[distinct.Size() - 1] != distinct[0]) {
        distinct.Add(distinct[0]);
    }
    return distinct;
}

#endif
