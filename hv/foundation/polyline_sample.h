// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points at chosen lengths along a polyline.

#ifndef HV_FOUNDATION_POLYLINE_SAMPLE_H
#define HV_FOUNDATION_POLYLINE_SAMPLE_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/platform/HvExport.h>

/// The points `first` to `last` of a polyline beside their cumulative lengths, walked from front to
/// back. Both arrays are borrowed, and entry i of the lengths belongs to point i; see
/// polyline_length.h.
class HV_API HvPolylineCursor {
public:
    /// Starts on the edge from point `first`; the line goes on to point `last`.
    HvPolylineCursor(HvPoint2fArray const& line, HvDoubleArray const& lengths, unsigned int first,
                     unsigned int last)
        : line_(line), lengths_(lengths), at_(first + 1), last_(last)
    {
    }

    /// Moves on to the first vertex, from the second on, whose length is not below `target`; false
    /// when the vertices run out. Targets come in ascending order: the walk never turns back.
    bool MoveTo(double target);
    /// The point at `target` on the edge that ends in the vertex; its first point where the edge
    /// has no length.
    HvPoint2<float> PointAt(double target) const;

private:
    HvPoint2fArray const& line_;
    HvDoubleArray const& lengths_;
    unsigned int at_;
    unsigned int last_;
};

/// Appends samples at even steps of about `spacing` along the points `first` to `last` of a
/// polyline, first < last, each with its tag: a start, inner ones, an end.
///
/// The length is divided into steps as near to `spacing` as they can be, half rounded down. The
/// samples are the first point and the ends of all steps but the last, which is left to whatever
/// goes on from there. With fewer than two steps they are the first point and the last.
///
/// @param isClosed  the polyline ends where it begins: a last sample that falls on that point is
///                  not repeated, when there are others between.
/// @return          the number of samples with that repeat, so one more than are appended where it
///                  is left out.
///
/// Throws std::bad_alloc before it starts for more steps than an array holds; what has been
/// appended when it comes out stays. Cost: linear, one walk along the polyline.
HV_API unsigned int HvPoint2fArray_AppendEvenSamples(HvPoint2fArray const& line,
                                                     HvDoubleArray const& lengths,
                                                     unsigned int first, unsigned int last,
                                                     double spacing, bool isClosed,
                                                     HvPoint2fArray& pts, HvPointTagArray& tags);

/// The end that all samplings share: `added` samples lie behind the first one. Tags the last sample
/// as the end; without any the point `last` is appended as such. On a closed polyline a last sample
/// equal to point `last` is left out when `added` is above 1. Returns whether one was.
HV_API bool HvPoint2fArray_FinishSamples(HvPoint2fArray const& line, unsigned int last,
                                         unsigned int added, bool isClosed, HvPoint2fArray& pts,
                                         HvPointTagArray& tags);

#endif
