// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Data points on their way to becoming keys.

#ifndef HV_FCURVE_INTERNAL_DATA_POINTS_H
#define HV_FCURVE_INTERNAL_DATA_POINTS_H

class HvPoint2dArray;

/// The points that can be keys: both coordinates finite, x past that of the point kept before.
HvPoint2dArray CFCDataPoints_Ascending(HvPoint2dArray const& points);

/// The points of a polyline near all of them, x strictly rising; the first and the last are kept. A
/// line leaves each kept point through its next one; the point before the first that is further
/// than `tolerance` from the line, measured in y, is kept and starts the next line.
HvPoint2dArray CFCDataPoints_LinearFit(HvPoint2dArray const& points, double tolerance);

#endif
