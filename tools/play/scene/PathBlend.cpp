// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One outline that becomes another.

#include <tools/play/scene/PathBlend.h>

#include <hv/foundation/HvPoint2.h>

void PathBlend_Set(HvPath2f const& a, HvPath2f const& b, double share, HvPath2f& out)
{
    if (a.IsSiblingOf(b) == 0) {
        // Outlines of different build change at once, half-way.
        out = share < 0.5 ? a : b;
        return;
    }
    out = a;
    for (unsigned int i = 0; i < a.NumPoints(); ++i) {
        HvPoint2<double> const from(a.GetPoint(i));
        HvPoint2<double> const to(b.GetPoint(i));
        out.ReplacePointIgnoringLock(i, HvPoint2<float>(from + (to - from) * share));
    }
}
