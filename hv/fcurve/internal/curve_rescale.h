// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Scaling and moving a stretch of a curve along the parameter axis: what all kinds have in common.

#ifndef HV_FCURVE_INTERNAL_CURVE_RESCALE_H
#define HV_FCURVE_INTERNAL_CURVE_RESCALE_H

#include <hv/fcurve/HvBaseFCurve.h>

class HvDoubleArray;

/// The arguments that tell which keys go where.
struct HvCurveRescale {
    double from;
    double to;
    double pivot;
    double scale;
    double offset;
    int rippleLeft;  ///< keys beside the stretch go along, see ScaleSome and ListKeysToMove
    int rippleRight;
    HvBaseFCurve::RegionHandle handle;  ///< the end that a scale drags, where both move
    int selectedOnly;

    /// Whether the numbers, but for infinite ends of the stretch, are finite and the scale is none
    /// that would put all keys on one place.
    bool IsPossible() const;
    /// Whether the scale is 1 and the offset 0, within 1e-7.
    bool IsIdentity() const;
    /// Carries it out on `curve`, a copy that the caller throws away after a refusal.
    int ApplyTo(HvBaseFCurve& curve) const;

private:
    bool SnapStretch(HvBaseFCurve const& curve, double& first, double& last) const;
    int ScaleAll(HvBaseFCurve& curve) const;
    int ScaleSome(HvBaseFCurve& curve, double& first, double& last) const;
    bool DragsFirst(double first, double last) const;
    int MoveSome(HvBaseFCurve& curve, double first, double last) const;
    void ListKeysToMove(HvBaseFCurve const& curve, double first, double last,
                        HvDoubleArray& list) const;
};

#endif
