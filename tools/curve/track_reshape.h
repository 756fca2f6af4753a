// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Whole curves resampled, smoothed and reduced.

#ifndef HV_TOOLS_CURVE_TRACK_RESHAPE_H
#define HV_TOOLS_CURVE_TRACK_RESHAPE_H

#include <hv/fcurve/HvStdFCurve.h>

#include <cstddef>
#include <optional>

/// What to do to a curve, in this order.
struct TrackReshape {
    std::optional<double> resampleStep;      ///< frames from key to key
    std::optional<unsigned int> smoothTaps;  ///< keys that each value is smoothed over; odd
    std::optional<double> reduceTolerance;   ///< share of the value range that may be lost

    bool IsAsked() const { return resampleStep || smoothTaps || reduceTolerance; }
};

/// What reducing did to a curve.
struct TrackReduction {
    std::size_t keysBefore = 0;
    std::size_t keysAfter = 0;
    /// The greatest difference from the curve before, looked at between its keys too.
    double largestError = 0.0;
    /// The tolerance times the range of the values that the curve takes.
    double allowed = 0.0;
};

/// Reshapes the curve from its first to its last key. Smoothing uses the binomial coefficients as
/// weights. The result tells of the reducing; without it the keys stay as many. Throws ToolError
/// when a step would make more keys than anybody means.
TrackReduction TrackReshape_Apply(TrackReshape const& reshape, HvStdFCurve& curve);

#endif
