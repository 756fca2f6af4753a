// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging a tangent handle of a standard curve.

#ifndef HV_FCURVE_HVSTDTGTMOVER_H
#define HV_FCURVE_HVSTDTGTMOVER_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2.h>

class HvStdFCurve;
class HvStdTgtMoverImpl;

/// Moves one tangent handle of one key of a standard curve interactively: made at the press on the
/// handle, updated at each step of the drag with the position wanted, destroyed at the release.
///
/// The key's locks are kept. Both neighbouring segments stay functions of the parameter: the handle
/// of the neighbouring key that faces the dragged one gives way along its own line, and grows back
/// when the drag returns; where it cannot, the dragged handle stops. Locks of the neighbours are
/// not asked. A dragged tangent is a manual one: construction makes the key's evaluated handles its
/// stored ones and clears AutomaticTangents, LinearTangents, FlatAtExtremum and FlatTangents on it
/// for good.
///
/// The curve must outlive the mover. Threads: construction and each update hold the access lock and
/// the curve's critical section. Update takes no memory.
class HV_API HvStdTgtMover : public HvAllocated {
public:
    /// Takes hold of the handle on one side of the key within `tolerance` of x. Without such a key,
    /// or on a curve with fewer than two keys, every update is refused.
    HvStdTgtMover(HvStdFCurve& curve, double x, HvBaseFCurve::KeySide side, double tolerance);
    ~HvStdTgtMover();
    HvStdTgtMover(HvStdTgtMover const&) = delete;
    HvStdTgtMover& operator=(HvStdTgtMover const&) = delete;

    /// Moves the handle towards `handle`, a point of the curve's space; every step starts from the
    /// handles as they were at construction.
    ///
    /// @param keepContinuity  when not 0, the opposite handle turns along: onto the line of the
    ///     dragged one, or, where the two formed an angle, keeping it.
    /// @param keepLengthContinuity  when not 0, the opposite handle takes the dragged one's length.
    /// @param scale    what the view multiplies y by, against x; lengths and angles are kept as
    ///                 they look there. Not finite or not above 0 counts as 1.
    /// @param invalid  is augmented by what must be drawn anew between the keys, in the curve's
    ///                 space.
    /// @return  1 when done; 1 also, with nothing changed, on a read-only curve. 0, with no handle
    ///          changed, when both locks hold the handle, no length of the handles makes the
    ///          segments valid, `handle` is not finite, or the key is no longer where it was.
    int Update(HvPoint2<double> const& handle, int keepContinuity, int keepLengthContinuity,
               double scale, HvExtent2<double>& invalid);

private:
    HvStdTgtMoverImpl* impl_;
};

#endif
