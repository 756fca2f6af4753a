// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From the vertices of a contour to corners of pixels.

#ifndef HV_VECTORIZE_INTERNAL_OBCONTOUR_DRAW_H
#define HV_VECTORIZE_INTERNAL_OBCONTOUR_DRAW_H

#include <hv/foundation/HvPoint2.h>
#include <hv/vectorize/ObContour.h>

/// One side of a pixel, drawn from one of its corners to another.
struct ObPixelSide {
    HvPoint2<int> from;
    HvPoint2<int> to;
};

/// Whether a vertex stands on the left side of its run.
inline bool ObVertex_IsLeft(ObVertex const& vertex)
{
    // A table as bits, as which side comes next is anyone's guess, also the processor's.
    constexpr unsigned int kLeftKinds = 1u << ObVertexRegionLeft | 1u << ObVertexForkLeft |
                                        1u << ObVertexMeetLeft | 1u << ObVertexJoinLeft |
                                        1u << ObVertexStepLeft;
    return (kLeftKinds >> vertex.kind & 1u) != 0;
}

/// The side of a vertex's pixel that is part of the contour: a left side runs down, a right side
/// up.
///
///     (x, y) +---+        +---+ to
///       from |   |        |   |
///            v   |        |   ^
///         to +---+        +---+ from
inline ObPixelSide ObVertex_Side(ObVertex const& vertex)
{
    int const left = ObVertex_IsLeft(vertex) ? 1 : 0;
    int const x = vertex.x + 1 - left;
    return {HvPoint2<int>(x, vertex.y + 1 - left), HvPoint2<int>(x, vertex.y + left)};
}

/// Draws a closed contour: `pen` gets MoveTo its start, and LineTo each corner until the start
/// again, as HvPoint2<int>.
///
/// Two vertices of one row stand for the same side where a run is the only one of its stretch, as
/// both ends of an arm of one row do; it is drawn once. The side of the last vertex of a hole may
/// be the one that the hole starts with, or end where that begins: then only its beginning is
/// drawn, as otherwise the hole would end on a way to and fro.
template <class Pen>
void ObContour_Draw(ObContour const& contour, Pen& pen)
{
    ObPixelSide const first = ObVertex_Side(*contour.start);
    pen.MoveTo(first.from);
    pen.LineTo(first.to);
    // The last two points that were drawn.
    ObPixelSide drawn = first;
    auto const lineTo = [&](HvPoint2<int> const& p) {
        pen.LineTo(p);
        drawn = {drawn.to, p};
    };
    for (ObVertex const* v = contour.start->next; v != contour.start; v = v->next) {
        ObPixelSide const side = ObVertex_Side(*v);
        bool const isEndOfHole = !contour.isOuter && v->next == contour.start &&
                                 (side.from == first.from || side.to == first.from);
        if (side.from == drawn.from && side.to == drawn.to) {
            continue;
        }
        if (side.from != drawn.to) {
            lineTo(side.from);
        }
        if (!isEndOfHole) {
            lineTo(side.to);
        }
    }
    if (drawn.to != first.from) {
        lineTo(first.from);
    }
}

/// Draws the same contour without the points within straight stretches, but for its start:
/// `corners` gets Begin and End, which are its start, and in between AddTurn for each vertex.
///
/// Along x a contour moves only from the side of one vertex to that of the next, at the height
/// where this one begins. So a corner is where a side has another column than the one before, and
/// nothing else must be asked.
template <class Corners>
void ObContour_DrawCorners(ObContour const& contour, Corners& corners)
{
    HvPoint2<int> const start = ObVertex_Side(*contour.start).from;
    corners.Begin(start);
    int x = start.x;
    for (ObVertex const* v = contour.start->next; v != contour.start; v = v->next) {
        HvPoint2<int> const from = ObVertex_Side(*v).from;
        corners.AddTurn(x, from.x, from.y);
        x = from.x;
    }
    corners.End(x, start);
}

#endif
