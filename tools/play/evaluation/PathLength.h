// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pieces of a path by their length.

#ifndef HV_TOOLS_PLAY_EVALUATION_PATHLENGTH_H
#define HV_TOOLS_PLAY_EVALUATION_PATHLENGTH_H

#include <hv/foundation/HvPoint2.h>
#include <hv/shape/HvPath2f.h>

#include <array>
#include <vector>

/// The lengths along one subpath of lines and cubics, and pieces of it.
///
/// Lengths of cubics are those of polylines of 32 even steps of their parameter: within a
/// thousandth for curves as people draw them.
class PathLength {
public:
    /// Measures the subpath of `path` that runs from point `first` to `last`.
    PathLength(HvPath2f const& path, unsigned int first, unsigned int last);

    double Length() const { return ends_.empty() ? 0.0 : ends_.back(); }
    bool IsClosed() const { return isClosed_; }

    enum Start {
        WithMoveto,
        AsContinuation
    };

    /// Appends the piece between two lengths, 0 <= from <= to <= Length(); nothing for a piece of
    /// no length.
    void AppendPiece(double from, double to, Start start, HvPath2f& out) const;

private:
    static constexpr int kSteps = 32;

    struct Segment {
        HvPoint2<double> points[4];
        bool isLine;
        std::array<double, kSteps + 1> lengths;  ///< up to each step
    };

    static Segment Measured(HvPoint2<double> const* points, unsigned int degree);
    static double ParameterAt(Segment const& segment, double length);
    static void AppendSegment(Segment const& segment, double from, double to, bool& isStarted,
                              HvPath2f& out);

    std::vector<Segment> segments_;
    std::vector<double> ends_;  ///< the length up to the end of each segment
    bool isClosed_;
};

#endif
