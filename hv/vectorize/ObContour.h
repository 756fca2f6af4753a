// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Contours as the tracer holds them, and the tests that small ones do not pass.

#ifndef HV_VECTORIZE_OBCONTOUR_H
#define HV_VECTORIZE_OBCONTOUR_H

#include <hv/platform/HvExport.h>

struct ObContext;
struct ObEdge;

/// Why a vertex was made, and on which side of its run of pixels it stands: left sides are drawn
/// down the rows, right sides up.
enum ObVertexKind : int {
    ObVertexRegionLeft = 1,   ///< left end of a run without one above, which starts a region
    ObVertexRegionRight = 2,  ///< right end of that run
    ObVertexForkRight = 3,    ///< right end of the run on the left of a gap that opens
    ObVertexForkLeft = 4,     ///< left end of the run on the right of a gap that opens
    ObVertexMeetLeft = 5,     ///< left end of a run without one below
    ObVertexMeetRight = 6,    ///< right end of that run
    ObVertexJoinRight = 7,    ///< right end of the run on the left of a gap that closes
    ObVertexJoinLeft = 8,     ///< left end of the run on the right of a gap that closes
    ObVertexStepLeft = 9,     ///< left side where it steps sideways, or has just done so
    ObVertexStepRight = 10    ///< right side likewise
};

/// A vertex of a contour: one pixel at the end of a run, whose outer side belongs to the contour.
/// Where a side runs straight down, its rows have no vertices but the first and the last.
struct ObVertex {
    ObVertex* previous;  ///< the vertex before, along the contour
    ObVertex* next;      ///< the vertex behind, along the contour
    /// An ObVertexKind.
    int kind;
    /// Column of the pixel.
    int x;
    /// Row of the pixel.
    int y;
};

/// One contour of a region. The contours of a region form a ring: the outer one and the holes.
struct ObContour {
    ObContour* previous;  ///< the contour before in the ring of the region
    ObContour* next;      ///< the contour behind in the ring of the region
    /// Where it is drawn from: its topmost vertex, the leftmost of several. Its vertices form a
    /// ring from there once the contour is closed.
    ObVertex* start;
    /// While the contour is open: the edge that goes on with its left side, at the vertex without a
    /// next one.
    ObEdge* leftEnd;
    /// While the contour is open: the edge that goes on with its right side, at the vertex without
    /// a previous one.
    ObEdge* rightEnd;
    /// Whether it is the outer contour of its region.
    bool isOuter;
    /// Whether its vertices form a ring.
    bool closed;
};

/// Whether the polygon through the vertices of a closed contour has at least the area
/// `context.areaThreshold`, in pixels; true at a threshold of 0, else false below 3 vertices.
///
/// The vertices are pixels, not their corners: the outer contour of w x h pixels has
/// (w - 1) * (h - 1), a hole of as many (w + 1) * (h - 1), a single row 0.
HV_API bool ObTestContourArea(ObContext& context, ObContour* contour);

/// Whether that polygon has at least the perimeter `context.perimeterThreshold`, in pixels; true at
/// a threshold of 0. A slanted stretch counts as its chord.
HV_API bool ObTestContourPerimeter(ObContext& context, ObContour* contour);

#endif
