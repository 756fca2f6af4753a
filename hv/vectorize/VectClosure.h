// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the callbacks of the tracer to a path.

#ifndef HV_VECTORIZE_VECTCLOSURE_H
#define HV_VECTORIZE_VECTCLOSURE_H

#include <hv/foundation/HvPoint2.h>

class HvPath2f;

/// What callbacks of ObVectorize need to draw contours into a path, corner by corner, as
/// HvVectorizer::Vectorize appends them whole. The last point stays here until the next one tells
/// that it is a corner.
struct VectClosure {
    /// The last point of the outline.
    float x = 0;
    float y = 0;  ///< its row
    /// The point before it; of no meaning while the subpath has only one.
    float beforeX = 0;
    float beforeY = 0;  ///< its row
    /// Where the outlines go; not owned.
    HvPath2f* path = nullptr;
    /// Points of all outlines that are complete.
    unsigned int pointsAdded = 0;
    /// Points of the outline so far.
    unsigned int subpathPoints = 0;
    /// 1 until the region's first contour, which is its outer one, is complete.
    int firstContour = 1;
};

/// Whether a line to `p` would go on in the direction of the last segment of the outline, which
/// runs along x or y: on one line with it and not back. False when that segment has no length, and
/// in a subpath of fewer than two points.
inline bool ShouldExtendLastSegment(VectClosure const& closure, HvPoint2<float> const& p)
{
    if (closure.subpathPoints < 2) {
        return false;
    }
    HvPoint2<float> const a(closure.beforeX, closure.beforeY);
    HvPoint2<float> const b(closure.x, closure.y);
    // What is asked first is what outlines of turns have in common, so that it is foreseen.
    if (p.x != b.x) {
        return p.y == b.y && ((b.x > a.x && p.x > b.x) || (b.x < a.x && p.x < b.x));
    }
    if (b.x > a.x || b.x < a.x) {
        return p.y == b.y;
    }
    return (b.y > a.y && p.y >= b.y) || (b.y < a.y && p.y <= b.y);
}

#endif
