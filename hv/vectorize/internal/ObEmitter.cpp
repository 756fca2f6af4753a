// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the vertices of a contour to callbacks.

#include <hv/vectorize/internal/ObEmitter.h>

#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/ObContour.h>

namespace {

using Corner = HvPoint2<int>;

/// One side of a pixel, drawn from one of its corners to another.
struct Side {
    Corner from;
    Corner to;
};

/// The side of a vertex's pixel that is part of the contour: a left side runs down, a right side
/// up.
///
///     (x, y) +---+        +---+ to
///       from |   |        |   |
///            v   |        |   ^
///         to +---+        +---+ from
Side SideOf(ObVertex const& vertex)
{
    int const x = vertex.x;
    int const y = vertex.y;
    switch (vertex.kind) {
    case ObVertexRegionLeft:
    case ObVertexForkLeft:
    case ObVertexMeetLeft:
    case ObVertexJoinLeft:
    case ObVertexStepLeft:
        return {Corner(x, y), Corner(x, y + 1)};
    default:
        return {Corner(x + 1, y + 1), Corner(x + 1, y)};
    }
}

}  // namespace

// Two vertices of one row stand for the same side where a run is the only one of its stretch, as
// both ends of an arm of one row do; it is drawn once. The side of the last vertex of a hole may be
// the one that the hole starts with, or end where that begins: then only its beginning is drawn, as
// otherwise the hole would end on a way to and fro.
void ObEmitter::Emit(ObContour const& contour)
{
    Side const first = SideOf(*contour.start);
    MoveTo(first.from);
    LineTo(first.to);
    for (ObVertex const* v = contour.start->next; v != contour.start; v = v->next) {
        Side const side = SideOf(*v);
        bool const isEndOfHole = !contour.isOuter && v->next == contour.start &&
                                 (side.from == first.from || side.to == first.from);
        if (side.from == beforeLast_ && side.to == last_) {
            continue;
        }
        if (side.from != last_) {
            LineTo(side.from);
        }
        if (!isEndOfHole) {
            LineTo(side.to);
        }
    }
    if (last_ != first.from) {
        LineTo(first.from);
    }
}

void ObEmitter::MoveTo(Corner const& p)
{
    context_.moveto(p.x, p.y, context_.user);
    last_ = p;
    // No side leads from a point to itself, so nothing repeats what came before the contour.
    beforeLast_ = p;
}

void ObEmitter::LineTo(Corner const& p)
{
    context_.lineto(p.x, p.y, context_.user);
    beforeLast_ = last_;
    last_ = p;
}
