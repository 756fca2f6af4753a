// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Where a morph puts what it makes.

#ifndef HV_MORPH_INTERNAL_HVMORPHOUTPUT_H
#define HV_MORPH_INTERNAL_HVMORPHOUTPUT_H

#include <hv/bezier/HvBezierTool.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvPath2fSink.h>

struct HvMorpherImpl;

/// Collects the result beside the path that it is for, so that this changes in one piece, when the
/// outlines, one of which it may be, have been read.
class HvMorphOutput {
public:
    HvMorphOutput(HvPath2fProp1d& out, HvGC const& gc) : out_(out), gc_(gc), path(out), sink_(path)
    {
    }
    HvMorphOutput(HvMorphOutput const&) = delete;
    HvMorphOutput& operator=(HvMorphOutput const&) = delete;

    /// Appends a fit of a polyline as a subpath. Returns the index of its first point, or that of
    /// the end of the path when there is nothing to fit.
    unsigned int AppendFit(HvPoint2fArray const& line, bool isClosed);
    /// Whether there is a point `i`.
    bool Has(unsigned int i) const { return i < path.NumPoints(); }
    /// Hands the result over.
    void Finish() { out_ = path; }

private:
    HvPath2fProp1d& out_;
    HvGC const& gc_;

public:
    HvPath2fProp1d path;  ///< what was in the output, and the result so far

private:
    HvPath2fSink sink_;
    HvBezierTool tool_;
};

/// Appends a polyline of `steps` steps as one open subpath, with the property between the outlines'
/// first subpaths.
void HvMorphOutput_AppendOpen(HvMorpherImpl const& morph, double t, HvPoint2fArray const& line,
                              unsigned int steps, HvPath2fProp1d& out);

#endif
