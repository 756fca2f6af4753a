// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cutting the runs of a flattened curve at a value.

#ifndef HV_FCURVE_INTERNAL_CLAMP_RUNS_H
#define HV_FCURVE_INTERNAL_CLAMP_RUNS_H

class HvPoint2dArray;
class HvPointTagArray;

/// The side of a limit that is kept.
enum class HvClampSide {
    Above,
    Below
};

/// Keeps of the vertices from `first` on what lies on one side of `limit` in y, the limit included.
/// An edge that crosses is cut there, x interpolated linearly; a vertex on the limit is its own
/// crossing. A run left with a single vertex is dropped. When nothing would be left, everything
/// stays as it was.
void HvClampRuns_Cut(HvPoint2dArray& points, HvPointTagArray& tags, unsigned int first,
                     double limit, HvClampSide side);

#endif
