// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Smooth chains of cubics along a polyline.

#ifndef HV_BEZIER_INTERNAL_OUTLINE_FITTER_H
#define HV_BEZIER_INTERNAL_OUTLINE_FITTER_H

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/internal/cubic_fitter.h>
#include <hv/bezier/internal/fit_directions.h>
#include <hv/foundation/HvPoint2fArray.h>

/// Cubics one after the other: two handles and the end of each.
using HvFittedCubics = HvPoint2fArray;

/// Fits a polyline of at least two points by cubics, with as few as its tolerance allows.
///
/// The polyline is cut at its corners. From the start of each run the longest stretch is sought
/// that one cubic follows, by doubling and halving, then the next one, which starts in the
/// direction in which the one before ends. A run of a few cubics is then fitted again with smaller
/// tolerances as long as that takes no more of them, which evens out the errors.
class HvOutlineFitter {
public:
    /// The points are copied without those that repeat their predecessor; a closed polyline gets
    /// its first point at its end. They must be finite, and `tolerance` 0 or more.
    HvOutlineFitter(HvPoint2fArray const& points, bool isClosed, double cornerCosSquared,
                    double tolerance);

    void Fit();
    /// Draws the cubics without a Moveto; returns the points added.
    unsigned int Draw(HvBezierSink& sink) const;

private:
    /// A stretch from corner to corner, or between the ends.
    struct Run {
        unsigned int first;
        unsigned int last;
        HvFitTangents ends;
    };
    /// A cubic that was accepted, with the direction and the point at its end.
    struct Piece {
        HvPoint2<float> cubic[4];
        HvPoint2<double> endTangent;
        unsigned int last;
    };

    static HvDoubleArray LengthsOf(HvPoint2fArray const& points);
    void FitRun(Run const& run);
    bool FitRun(Run const& run, double tolerance, unsigned int most, HvFittedCubics& cubics);
    unsigned int FindLongest(Run const& run, unsigned int at, HvFitTangents const& start,
                             double tolerance, unsigned int guess, Piece& piece);
    unsigned int JointOf(Run const& run, unsigned int at, unsigned int length) const;
    bool Try(Run const& run, unsigned int first, unsigned int last, HvFitTangents const& start,
             double tolerance, Piece& piece);
    bool Accept(unsigned int first, unsigned int last, HvPoint2<double> const& endTangent,
                double tolerance, Piece& piece);

    HvPoint2fArray points_;
    HvDoubleArray lengths_;
    bool isClosed_;
    double tolerance_;
    HvFitDirections directions_;
    HvCubicFitter fitter_;
    HvFittedCubics cubics_;
    HvFittedCubics trial_;
};

#endif
