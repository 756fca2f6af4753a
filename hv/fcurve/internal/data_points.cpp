// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Data points on their way to becoming keys.

#include <hv/fcurve/internal/data_points.h>

#include <hv/foundation/HvPoint2dArray.h>

#include <cmath>

HvPoint2dArray CFCDataPoints_Ascending(HvPoint2dArray const& points)
{
    HvPoint2dArray kept(points.Size());
    for (HvPoint2<double> const& point : points) {
        bool const isFinite = std::isfinite(point.x) && std::isfinite(point.y);
        if (isFinite && (kept.Size() == 0 || point.x > kept[kept.Size() - 1].x)) {
            kept.Add(point);
        }
    }
    return kept;
}

HvPoint2dArray CFCDataPoints_LinearFit(HvPoint2dArray const& points, double tolerance)
{
    unsigned int const n = points.Size();
    HvPoint2dArray kept;
    if (n == 0) {
        return kept;
    }
    kept.Add(points[0]);
    unsigned int start = 0;    // where the line starts
    unsigned int through = 1;  // the point that it was laid through
    for (unsigned int i = 2; i < n; ++i) {
        HvPoint2<double> const& a = points[start];
        HvPoint2<double> const& b = points[through];
        double const line = a.y + (b.y - a.y) * ((points[i].x - a.x) / (b.x - a.x));
        if (std::fabs(line - points[i].y) > tolerance) {
            kept.Add(points[i - 1]);
            start = i - 1;
            through = i;
        }
    }
    if (n > 1) {
        kept.Add(points[n - 1]);
    }
    return kept;
}
