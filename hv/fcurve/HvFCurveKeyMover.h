// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging keys of a curve.

#ifndef HV_FCURVE_HVFCURVEKEYMOVER_H
#define HV_FCURVE_HVFCURVEKEYMOVER_H

#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2.h>

class HvBaseFCurve;
class HvDoubleArray;
class HvFCurveKeyMoverImpl;

/// Moves a set of keys of one curve, of any kind, interactively: made at the press on the keys,
/// updated at each step of the drag with the whole translation since then, finalized and destroyed
/// at the release. The curve is changed at each step.
///
/// **What moves.** A key whose parameter is locked moves in value only, one whose value is locked
/// in parameter only. A key that would land within 1e-6 of a key that does not get out of its way
/// stops in parameter, and so do those of the set behind it; their values go on. Between its steps
/// a drag may carry keys over keys that stay: those stay where they are, the segments behind close
/// again and have their kinds back. Jumps, constraints, selection and user data go along with their
/// keys. Tangents keep their directions; their lengths grow and shrink with the spans beside the
/// key, from what they were at the start, unless their length is locked. A value becomes one that
/// the curve can hold: true from 0.5 on, an integer in its range. A key of a rotation goes for all
/// three components, with everything that it has; its value is the angle of the one dragged.
///
/// **Usable.** When the set is empty, holds a parameter twice or one at which no key stands, when
/// no key of it may move, and on a curve of a kind that the tool does not know, every update and
/// Finalize are refused.
///
/// The curve must outlive the mover, and nobody else edits it between the calls: keys are known by
/// the parameters they were put at. A key that is not found there takes no part in the step.
/// Without Finalize the user data of the keys moved are lost.
///
/// Threads: construction and each call hold the access lock, the curve's critical section and the
/// lock of the rotation that it shows, if it does; one mover is for one thread. Memory:
/// std::bad_alloc leaves curve and mover as they were before the call; a step takes none once there
/// has been one. Cost of a step: O(m log keys) for m keys, and one copy of each key between a place
/// left and the place taken; when all keys move and none is locked, one pass.
class HV_API HvFCurveKeyMover : public HvAllocated {
public:
    /// Takes hold of the keys that stand at exactly `parameters`, in any order.
    ///
    /// @param limits       in state 0, bounds for the keys' parameters and values; a key that
    ///                     starts outside is drawn in by the first step. In other states nothing is
    ///                     bound.
    /// @param movedExtent  in state 0, a rectangle that goes along, see Update.
    HvFCurveKeyMover(HvBaseFCurve& curve, HvDoubleArray const& parameters,
                     HvExtent2<double> const& limits, HvExtent2<double> const& movedExtent);
    ~HvFCurveKeyMover();
    HvFCurveKeyMover(HvFCurveKeyMover const&) = delete;
    HvFCurveKeyMover& operator=(HvFCurveKeyMover const&) = delete;

    /// Moves the keys to where they started plus `translation`; every step starts from there.
    ///
    /// @param translation  comes back limited; on an integer curve its y as the whole number used.
    /// @param parameters   where the keys stand now, appended in the order of the constructor's.
    /// @param invalid      is augmented by what must be drawn anew, in the curve's space, with what
    ///                     is seen of the extrapolation between the edges of the view.
    /// @param moved        becomes the rectangle around the moved keys, when the constructor was
    ///                     given one: that one translated, and grown to hold every key.
    /// @param viewLeft     the edges of the view; NaN for none.
    /// @return  1 when done, also when no key had to move. 0, with the curve as it was, when the
    ///          mover is not usable; and, with `translation` limited all the same, when the curve
    ///          is read-only, or keys would come to places or values that are not finite, or meet.
    int Update(HvPoint2<double>& translation, HvDoubleArray& parameters, HvExtent2<double>& invalid,
               HvExtent2<double>& moved, double viewLeft, double viewRight);
    /// Ends the drag: gives the keys their user data back. 1 also when called again; 0 when the
    /// mover is not usable.
    int Finalize();

private:
    HvFCurveKeyMoverImpl* impl_;
};

#endif
