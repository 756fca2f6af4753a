// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The sweep over the rows that finds contours.

#ifndef HV_VECTORIZE_INTERNAL_OBTRACER_H
#define HV_VECTORIZE_INTERNAL_OBTRACER_H

#include <hv/vectorize/ObContour.h>
#include <hv/vectorize/internal/ObNodePool.h>
#include <hv/vectorize/internal/ObRow.h>

class HvUByteRaster;
class ObContourSink;
struct ObContext;

/// The end of an open contour at a left or right side that goes on into the next row. The active
/// edges are all of these in one row, from left to right: left and right sides take turns, and each
/// pair encloses what has become of a run of the row above.
struct ObEdge {
    ObEdge* previous;
    ObEdge* next;
    ObContour* contour;
    /// Where the next vertex is linked: after it on a left side, before it on a right side.
    ObVertex* vertex;
    bool isLeft;
    /// Column of the side's pixel in the row above; in its first row, in this one.
    int x;
    /// How far the side stepped from its row to the next.
    int lastStep;
    /// Whether the side has made no step yet.
    bool isFresh;
};

/// Sweeps a raster row by row. For each row it knows the runs of the rows above and below, so that
/// it sees where regions begin and end and where gaps between runs open and close:
///
///     ##..##  two regions begin          ######
///     ######  the gap between closes     ##..##  a gap opens
///                                        ######  it closes: a hole
///
/// Every open contour has two ends, one at a left side and one at a right side, which are active
/// edges. Where two ends come together their contours become one, or, when both are ends of the
/// same contour, that is closed. Only the two far ends have to learn of it, so each row costs what
/// its runs cost.
///
/// The contours of a region form a ring in which the outer one marks the head; a region is nothing
/// but that ring. It is complete when its outer contour closes, and then its nodes are used again.
class ObTracer {
public:
    /// Uses the thresholds and the rows of `context`, and tells `sink` what it finds.
    ObTracer(ObContext& context, ObContourSink& sink);
    ObTracer(ObTracer const&) = delete;
    ObTracer& operator=(ObTracer const&) = delete;

    /// Traces all regions; none in a raster without pixels or wider than kObWidestRaster.
    void Trace(HvUByteRaster const& raster, unsigned char value);

private:
    /// A run of the current row and its neighbours in the rows above and below. There is no run
    /// where `start` is below 0.
    struct Run {
        int start = -1;
        int end = -1;
        ObRunRange above;
        ObRunRange below;
    };

    void TraceRow(int y);
    ObEdge* Finish(ObEdge* e, Run const& run, int y);
    void TellLoneRun(int start, int end, int y);
    bool LoneRunPasses(int start, int end, int y);
    ObEdge* BeginRegion(ObEdge* e, int start, int end, int y);
    ObEdge* Fork(ObEdge* e, int end, int start, int y);
    ObEdge* Meet(ObEdge* left, ObEdge* right, int y);
    ObEdge* Join(ObEdge* left, ObEdge* right, int y);

    template <bool isLeft>
    void Step(ObEdge* e, int x, int y);
    void Connect(ObEdge* left, ObVertexKind leftKind, ObEdge* right, ObVertexKind rightKind, int y);
    void Merge(ObContour* kept, ObContour* dropped);
    void Output(ObContour* outer);
    void Tell(ObContour* outer);
    bool Passes(ObContour* contour);

    ObEdge* InsertAfter(ObEdge* e, ObContour* contour, ObVertex* vertex, bool isLeft);
    ObEdge* RemovePair(ObEdge* left, ObEdge* right);

    ObContext& context_;
    ObContourSink& sink_;
    // Whether there is no threshold, so that every contour passes.
    bool keepsAll_;
    // The rows above, at and below the sweep.
    unsigned short* above_;
    unsigned short* current_;
    unsigned short* below_;
    // The active edges lie between these two.
    ObEdge head_;
    ObEdge tail_;
    // What the tests of a run without neighbours see: the vertices that beginning and meeting would
    // make, linked once.
    ObContour loneContour_;
    ObVertex loneVertices_[4];
    ObNodePool<ObVertex> vertices_;
    ObNodePool<ObEdge> edges_;
    ObNodePool<ObContour> contours_;
};

#endif
