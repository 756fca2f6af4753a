// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The edges of a flattened curve: clipped to a view and appended to three parallel arrays.

#include <hv/fcurve/flatten_edges.h>

#include <hv/bezier/HvFlattenedRuns.h>
#include <hv/bezier/line_clip.h>

namespace {

enum class EdgeKind {
    Line,
    Jump
};

void ClipAndAdd(EdgeKind kind, HvPoint2<double>& a, HvPoint2<double>& b,
                HvExtent2<double> const& clip, HvFlattenedRuns runs)
{
    if (HvLineClip_Clip(a, b, clip) == 0) {
        return;
    }
    // The ends may stand in the array that grows now.
    HvPoint2<double> const start = a;
    HvPoint2<double> const end = b;
    if (kind == EdgeKind::Line) {
        runs.BeginEdge(start, 1);
    } else {
        runs.BeginJump(start);
    }
    runs.EndEdge(end);
}

}  // namespace

void ClipAndAddLineSegment(HvPoint2<double>& a, HvPoint2<double>& b, HvExtent2<double> const& clip,
                           HvPoint2dArray& points, HvPointTagArray& tags, HvBoolArray& flags)
{
    ClipAndAdd(EdgeKind::Line, a, b, clip, HvFlattenedRuns(points, tags, flags));
}

void ClipAndAddDiscontinuity(HvPoint2<double>& a, HvPoint2<double>& b,
                             HvExtent2<double> const& clip, HvPoint2dArray& points,
                             HvPointTagArray& tags, HvBoolArray& flags)
{
    ClipAndAdd(EdgeKind::Jump, a, b, clip, HvFlattenedRuns(points, tags, flags));
}
