// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Stretching a rectangular region of a curve by one of its sides.

#ifndef HV_FCURVE_HVFCURVESTRETCHER_H
#define HV_FCURVE_HVFCURVESTRETCHER_H

#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvMemory.h>
#include <hv/foundation/HvPoint2.h>

class HvFCurveStretcherImpl;

/// Stretches a region of a curve of any kind interactively: made at the press on a side of the
/// region, updated at each step of the drag with the whole way since then, finalized and destroyed
/// at the release.
///
/// The keys in the region scale about the pivot, along the axis of the side: in parameter for the
/// left and the right one, in value for the top and the bottom one. With ripple the keys beyond the
/// dragged side follow it as a whole, and, where the pivot does not lie on the opposite side, those
/// beyond that one follow it too. A key whose left and right values lie on different sides of an
/// edge is in the region with the one value only. A negative scale flips the keys about the pivot;
/// there is none when keys follow.
///
/// What moves and what does not is settled at construction. A key whose parameter is locked, or
/// that nothing concerns, stays where it is, and nothing that moves comes nearer to it than 0.001;
/// the same holds for locked values, and for the sides of the region. Handles scale along: in x
/// with the parameters, in y with the values, always from what they were at construction, so that a
/// drag back to where it began restores the curve. A key with its tangent length or length
/// continuity locked keeps the lengths of its handles, one with its tangent direction locked their
/// directions. Parameters of a rotation stretch for all three components, values for the one
/// dragged; a key that is flipped changes the sign of its bias and has the spins of the segment
/// that was before it.
///
/// The curve must outlive the stretcher and is edited by nobody else in between. Threads: each
/// operation holds the access lock, the curve's critical section and the lock of the rotation that
/// it shows, if it does. A stretcher that is destroyed
/// without Finalize loses the user data of the keys that have moved.
class HV_API HvFCurveStretcher : public HvAllocated {
public:
    /// The sides that a region can be taken by.
    using RegionHandle = HvBaseFCurve::RegionHandle;

    /// Takes hold of one side of a region.
    ///
    /// @param region        the rectangle, of state 0; with a key in its width, whatever its
    /// height.
    /// @param parameters    keys that count as in the region wherever they stand, within 1e-7; they
    ///                      reach one key beyond it on each side. Others are ignored.
    /// @param limits        what no key may be dragged beyond, on the axis of the handle; keys that
    ///                      are beyond already may come back. None unless its state is 0.
    /// @param pivot         what stays; anywhere, but on the dragged side nothing moves.
    /// @param handle        the dragged side, exactly one.
    /// @param ripple        when not 0, keys beyond the region follow.
    /// @param minimalScale  no scale is nearer to 0 than this; at least 0.001 and at most 1.
    ///
    /// When any of this does not hold, the region or the pivot is not finite on the axis of the
    /// handle, or no key concerned can change, the stretcher refuses everything.
    HvFCurveStretcher(HvBaseFCurve& curve, HvExtent2<double>& region,
                      HvDoubleArray const& parameters, HvExtent2<double> const& limits,
                      HvPoint2<double> const& pivot, RegionHandle handle, int ripple,
                      double minimalScale);
    ~HvFCurveStretcher();
    HvFCurveStretcher(HvFCurveStretcher const&) = delete;
    HvFCurveStretcher& operator=(HvFCurveStretcher const&) = delete;

    /// Stretches so that the side stands `translation` from where it was at construction.
    ///
    /// @param translation  in: the whole way of the drag; only the component on the axis of the
    ///                     handle counts. Out: what was used of it, the other component 0.
    /// @param viewLeft     the left edge of what the host shows, which `invalid` reaches when the
    ///                     curve before its keys changes; NaN for none.
    /// @param viewRight    the right edge.
    /// @param before       gets the parameters of all keys concerned before the step, ascending as
    ///                     they were at the start, appended; also of those that have not moved.
    /// @param after        gets their parameters after the step, in the same order, appended.
    /// @param invalid      is augmented by what must be drawn anew.
    /// @param region       becomes the stretched region.
    /// @param limited      becomes 1 when a limit has shortened the drag, otherwise 0. The least
    ///                     scale is no limit.
    /// @return  1 when done; 0, with nothing changed but `limited`, on a read-only curve, for a
    ///          translation that is NaN, and where keys would leave the range of numbers or, at the
    ///          last digits, fall on one another. std::bad_alloc, with the curve as it was, when
    ///          memory runs out.
    /// Cost: one pass over the keys from the first to the last that move.
    int Update(HvPoint2<double>& translation, double viewLeft, double viewRight,
               HvDoubleArray& before, HvDoubleArray& after, HvExtent2<double>& invalid,
               HvExtent2<double>& region, int& limited);
    /// Tells how far Update would go: reduces `translation` as it would and gives the scale.
    /// Returns whether a limit shortens the drag. What Update refuses gives a zero vector, the
    /// scale 1 and false.
    bool ComputeScalingFactorAndTranslationVector(HvPoint2<double>& translation, double& scale);
    /// Ends the drag: gives the keys that have moved their user data back. 1, also when called
    /// again, which does nothing; 0 when the stretcher refuses everything.
    int Finalize();

private:
    bool IsUsable() const;

    HvFCurveStretcherImpl* impl_;  ///< null for a kind of curve that has none
};

#endif
