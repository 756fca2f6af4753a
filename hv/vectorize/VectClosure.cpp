// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the callbacks of the contour tracer to a path.

#include <hv/vectorize/VectClosure.h>

bool ShouldExtendLastSegment(VectClosure const& closure, HvPoint2<float> const& p)
{
    if (closure.subpathPoints < 2) {
        return false;
    }
    HvPoint2<float> const a(closure.beforeX, closure.beforeY);
    HvPoint2<float> const b(closure.x, closure.y);
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
