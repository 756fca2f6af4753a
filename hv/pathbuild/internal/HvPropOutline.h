// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The flattened outline of a path, subpath by subpath, each beside its property curve.

#ifndef HV_PATHBUILD_INTERNAL_HVPROPOUTLINE_H
#define HV_PATHBUILD_INTERNAL_HVPROPOUTLINE_H

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/polyline_length.h>
#include <hv/pathbuild/internal/prop_curves.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>

/// The outline in device coordinates with the lengths along it. Path and curves are borrowed: an
/// outline lives within one operation that holds the path.
class HvPropOutline {
public:
    /// The polyline of one subpath, two points or more of the outline.
    struct Run {
        unsigned int first;
        unsigned int last;
        bool isClosed;
        HvRawFCurve const* curve;  ///< null when the subpath has none
    };

    HvPropOutline(HvPath2f const& path, HvPropCurves const& curves, HvGC const& gc)
        : path_(path), curves_(curves), line_(64), tags_(64), lengths_(64)
    {
        path_.HvPath2f::Flatten(gc, line_, tags_);
        HvPoint2fArray_ComputeChordLength(line_, tags_, lengths_);
    }

    HvPoint2fArray const& Line() const { return line_; }
    /// The length of each point of the line from the start of its subpath.
    HvDoubleArray const& Lengths() const { return lengths_; }

    /// Calls `visit(run)` for each subpath that has a segment; the others have no outline.
    template <class Visit>
    void VisitRuns(Visit visit) const
    {
        HvPropCurveWalk curves(curves_);
        HvPath2fIter subpaths(path_);
        unsigned int start = 0;
        unsigned int end = 0;
        Run run{};
        while (subpaths.GetNextSubPathIndices(start, end) != 0) {
            if (start == end) {
                continue;
            }
            run.last = run.first;
            while (run.last + 1 < tags_.Size() && tags_[run.last + 1] != HvPointTagStart) {
                ++run.last;
            }
            run.isClosed = path_.IsSubpathClosed(end) != 0;
            run.curve = curves.MoveTo(start);
            visit(run);
            run.first = run.last + 1;
        }
    }

private:
    HvPath2f const& path_;
    HvPropCurves const& curves_;
    HvPoint2fArray line_;
    HvPointTagArray tags_;
    HvDoubleArray lengths_;
};

#endif
