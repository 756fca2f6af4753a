// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the callbacks of the contour tracer to a path.

#ifndef HV_VECTORIZE_VECTCLOSURE_H
#define HV_VECTORIZE_VECTCLOSURE_H

#include <hv/foundation/HvPoint2.h>
#include <hv/platform/HvExport.h>

class HvPath2f;

/// What the callbacks that draw contours into a path are given as their user. The last point stays
/// here until the next one tells that it is a corner, so each corner is one edit of the path.
struct VectClosure {
    /// The last point of the outline, which is not in the path yet, unless it starts a subpath.
    float x = 0;
    float y = 0;  ///< its row
    /// The point before it; of no meaning while the subpath has only one.
    float beforeX = 0;
    float beforeY = 0;         ///< its row
    HvPath2f* path = nullptr;  ///< where the outlines go; not owned
    /// Points of the outlines so far.
    unsigned int pointsAdded = 0;
    /// Those of the current subpath.
    unsigned int subpathPoints = 0;
    /// 1 until the region's first contour has started.
    int firstContour = 1;
};

/// Whether a line to `p` would go on in the direction of the last segment of the outline, which
/// runs along x or y: on one line with it and not back. False when that segment has no length, and
/// in a subpath of fewer than two points.
HV_API bool ShouldExtendLastSegment(VectClosure const& closure, HvPoint2<float> const& p);

#endif
