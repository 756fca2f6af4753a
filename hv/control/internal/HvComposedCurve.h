// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvComposedCurve: a standard curve that grows from left to right.

#ifndef HV_CONTROL_INTERNAL_HVCOMPOSEDCURVE_H
#define HV_CONTROL_INTERNAL_HVCOMPOSEDCURVE_H

#include <hv/fcurve/HvStdFCurve.h>

#include <memory>

/// Builds a standard curve segment by segment. Each segment starts where the last one ended; where
/// its first value is another, the curve jumps. Continuity is unlocked at the keys at which the
/// handles of two cubics do not lie on one line.
class HvComposedCurve {
public:
    using Point = HvPoint2<double>;

    /// Starts at `from` with `value`.
    HvComposedCurve(double from, double value);

    /// Holds `value` up to `to`; goes on with the last segment when that holds the same and no
    /// piece has ended since.
    void AddConstant(double to, double value);
    void AddLine(Point const& P0, Point const& P3);
    /// P[0] is the last key, but for the value; x must rise along the cubic.
    void AddCubic(Point const* P);

    /// Ends a piece of the controller, which leaves a key.
    void EndPiece() { FlushConstant(); }
    /// Makes Finish give null.
    void Fail() { hasFailed_ = true; }
    /// Ends with a jump to `value`, if it is another, and gives the curve; null when a number was
    /// not finite.
    std::unique_ptr<HvStdFCurve> Finish(double value);

    bool HasFailed() const { return hasFailed_; }

private:
    void JumpTo(double value);
    void FlushConstant();

    std::unique_ptr<HvStdFCurve> curve_;
    double last_;        // the last key
    double lastValue_;   // its right value
    Point lastHandle_;   // its left handle as a vector; zero where the segment is no cubic
    double constantTo_;  // how far the constant segment reaches that is not added yet
    bool hasConstant_ = false;
    bool hasFailed_ = false;
};

#endif
