// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the callbacks of the contour tracer to a path.

#include <hv/vectorize/VectClosure.h>

#include <hv/shape/HvPath2f.h>

bool ShouldExtendLastSegment(VectClosure const& closure, HvPoint2<float> const& p)
{
    unsigned int const count = closure.path->NumPoints();
    if (count < 2) {
        return false;
    }
    HvPoint2<float> segment[2];
    closure.path->GetPoints(count - 2, count - 1, segment);
    HvPoint2<float> const a = segment[0];
    HvPoint2<float> const b = segment[1];
    if (b.x > a.x) {
        return p.y == b.y && p.x >= b.x;
    }
    if (b.x < a.x) {
        return p.y == b.y && b.x >= p.x;
    }
    if (b.y > a.y) {
        return p.x == b.x && p.y >= b.y;
    }
    return b.y < a.y && p.x == b.x && b.y >= p.y;
}
