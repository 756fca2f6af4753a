// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Strokes as fitted cubics.

#ifndef HV_PATHBUILD_HVBEZIERFITPATHBUILDER_H
#define HV_PATHBUILD_HVBEZIERFITPATHBUILDER_H

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/pathbuild/HvBasePathBuilder.h>

/// Fits curves to the stream of points and cuts it at corners and at long steps.
///
/// A point is a corner when the pen turns back there, by more than 90 degrees, between two steps
/// that are both longer than the tolerance on one axis. Between two cuts the points are smoothed;
/// long steps become cubics through their ends, few points one segment of a higher degree, more
/// points a fit by cubics. Curves join in one direction except at corners.
///
/// All that has arrived is committed when samples are asked for: a caller who asks often gets many
/// short curves, one who asks rarely longer fits. Asked after every point, each step is a cubic.
///
/// Where long and short steps meet in a corner, the corner is not smoothed away, but the curves
/// join smoothly there. The seam of a closed stroke is smooth.
class HV_API HvBezierFitPathBuilder : public HvBasePathBuilder {
public:
    /// @param longStep          a step at least this long, by HvPoint2_CheapLengthAB, is not
    ///                          fitted but interpolated.
    /// @param subdivideSpacing  a longer step that is not above `longStep` is subdivided at this
    ///                          spacing when it comes in; 0 or less subdivides nothing.
    /// @param fitTolerance      greatest distance of a fitted point from its curve.
    /// @param minFitPoints      the fewest steps that are fitted, and the most rounds of a fit.
    ///
    /// All lengths are in device units.
    HvBezierFitPathBuilder(HvGC const& gc, HvPath2f* path, double longStep, double subdivideSpacing,
                           double fitTolerance, unsigned int minFitPoints);
    ~HvBezierFitPathBuilder() override;

    /// Drops a point within the gap of the last one; subdivides the step to it otherwise. A last
    /// point of the subdivision within the gap of `p` is replaced by it. A step that would need
    /// more than 65,536 points is not subdivided.
    void AddInputPoint(HvPoint2<float> const& p, int force) override;
    HvPoint2fArray const* GetTrailingSamples() override;
    HvPoint2fArray const* EndSubpath(HvPoint2<float> const& p, int closed) override;
    void Reset() override;

protected:
    /// See the constructor.
    double longStep;
    /// See the constructor.
    double subdivideSpacing;
    /// See the constructor.
    unsigned int minFitPoints;
    /// See the constructor.
    double fitTolerance;
    /// Length of the polyline of `input` up to each point that is committed.
    HvDoubleArray chordLengths;
    /// What fits and flattens.
    HvBezierTool tool;
    /// For each committed input but the last: whether it is a corner.
    HvBoolArray corners;
    /// The outline of the segments that the last call added.
    HvPoint2fArray polyline;

    /// Appends the segments of all input that is not in the path yet; with `closed` back to the
    /// start.
    void AddTrailingInputPoints(int closed);
    /// Makes `samples` those of the path from its point `n` on; with `final` the end is one.
    void ComputeTrailingSamplePoints(unsigned int n, int final);

private:
    HvPoint2fArray const* Commit(int closed, int final);
    bool IsCorner(unsigned int i) const;
    bool MarkCornersAndSmooth();
    unsigned int EndOfRun(unsigned int s, bool isLong, int& lastIsCorner) const;
    void AddRuns(int startIsCorner, int closed);
};

#endif
