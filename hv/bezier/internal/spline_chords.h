// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The length of a polyline as the parameter of the spline that is fitted to it.

#ifndef HV_BEZIER_INTERNAL_SPLINE_CHORDS_H
#define HV_BEZIER_INTERNAL_SPLINE_CHORDS_H

#include <hv/bezier/internal/spline_value.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>
#include <limits>

/// The samples that a polyline makes: its points without those that repeat their predecessor, over
/// strictly rising lengths. Of the arrays, `parameters` has the length of every point.
template <class Point>
struct HvSplineChords {
    HvDoubleArray parameters;
    HvDoubleArray lengths;
    HvTypedArray<Point> points;

    /// False, with some points taken, at a coordinate or a length that is not finite.
    bool Take(HvTypedArray<Point> const& polyline)
    {
        double length = 0.0;
        for (Point const& p : polyline) {
            unsigned int const count = points.Size();
            if (count == 0 || p != points[count - 1]) {
                length = count == 0 ? 0.0 : LengthAt(p);
                if (!HvSplineValue_IsFinite(p) || !std::isfinite(length)) {
                    return false;
                }
                lengths.Add(length);
                points.Add(p);
            }
            parameters.Add(length);
        }
        return true;
    }

private:
    /// A step that is lost beside the length so far counts as the least that is not.
    double LengthAt(Point const& p) const
    {
        double const before = lengths[lengths.Size() - 1];
        double const step = HvSplineValue_Length(p - points[points.Size() - 1]);
        return std::max(before + step,
                        std::nextafter(before, std::numeric_limits<double>::infinity()));
    }
};

#endif
