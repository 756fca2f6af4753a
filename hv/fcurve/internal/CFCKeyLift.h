// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Lifting keys out of a curve and putting them down elsewhere: the step that the key mover and the
// curve stretcher share.

#ifndef HV_FCURVE_INTERNAL_CFCKEYLIFT_H
#define HV_FCURVE_INTERNAL_CFCKEYLIFT_H

#include <hv/fcurve/internal/CFCKeyBench.h>

template <class T>
struct HvExtent2;

/// Moves keys of a curve as if each were removed and then created at its target, one after the
/// other. The keys that stay see the same: segments close over a key that goes and split under one
/// that comes, handles beside them grow and shrink along, and the kind of a segment that a key
/// divides comes back when it is lifted again.
///
/// Handles beside a key are scaled when it goes and again when it comes; so that neither rounding
/// nor a handle that is too short or too long to be scaled leaves a trace, the segment that a key
/// has divided gets back the very handles it had, and a key that comes back to where the drag
/// began, between the same neighbours, finds those it left there.
///
/// Two things are kept from being lost with a key at the end of the curve. The key behind it, which
/// becomes the end for a while, is the *guard*: its outer handle, and its jump, are put back when
/// the end key returns in front of it. The *ends* are the outermost keys at the start of the drag:
/// whatever stood before them in between, when they are outermost again, they have their outer
/// handle and left value again; a stepped curve its left value.
///
/// Work is done on a copy of the keys around the places concerned, the *bench*, and copied back
/// when all is done: memory that runs out leaves the curve as it was. Places far apart have a bench
/// of their own each, so the keys between are not touched. Cost of a step: O(m log n) searches, and
/// each key between a place lifted from and its target copied once; no allocation once a step has
/// had as many keys.
///
/// Takes no locks: the tool holds both. One step:
///
///     for each key of `order`: set targetParameter, targetLeftValue, targetRightValue (targetKind)
///     if (!lift.Prepare(order)) refuse;     // nothing has changed
///     lift.AugmentBefore(invalid);
///     lift.Move();                          // cannot fail; keys have their new places
///     standard curves: CFCWantedHandles_Store
///     lift.RestoreEnds();
///     lift.AugmentAfter(invalid);
template <class Curve>
class CFCKeyLift {
public:
    using Traits = HvCurveKindTraits<Curve>;
    using Impl = typename Traits::Impl;
    using Order = HvAltDynArray<unsigned int>;

    /// `dragged` is the owner's; it may be filled after this.
    CFCKeyLift(Curve& curve, CFCDraggedKeys<Curve>& dragged);
    /// Tells which keys every step lifts, as indices into the dragged keys, in rising order of
    /// their start parameters, and remembers the ends. To be called once.
    void Begin(Order const& order);

    /// Looks for the places of a step. `order`, the keys told to Begin in any order, is the one in
    /// which they are put down; they are lifted in the reverse of the last such order. A key that
    /// does not stand where it was left `isLost` and takes no part. False when a target is not
    /// finite, lies too far from the other keys for numbers, or is taken by a key that stays or by
    /// another target.
    bool Prepare(Order const& order);
    /// Carries out what Prepare has planned; user data of the keys lifted go.
    void Move();
    /// Gives the ends of the curve back what they had, where they are the ends again. After the
    /// tangents, which may shorten a handle.
    void RestoreEnds();

    /// Augments by the surroundings of the places that keys leave and of those they come to: in the
    /// curve before, and after.
    void AugmentBefore(HvExtent2<double>& extent) const;
    void AugmentAfter(HvExtent2<double>& extent) const;
    /// Whether the step planned or done last writes one of the two outermost keys of a side: then
    /// what the curve shows beyond its keys may change.
    bool ReachesFirst() const { return stretches_.Count() != 0 && stretches_[0].low <= 1; }
    bool ReachesLast() const
    {
        unsigned int const count = stretches_.Count();
        return count != 0 && stretches_[count - 1].high + 2 >= impl_.NumKeys();
    }

private:
    static constexpr unsigned int kNone = 0xFFFFFFFF;

    /// Where a key of the drag is and comes to, as indices of the curve before the step.
    struct Place {
        unsigned int low;    ///< first key that the move writes, one before both places
        unsigned int high;   ///< last key that it writes
        unsigned int key;    ///< index into the dragged keys
        unsigned int taken;  ///< the key that stands at the target, kNone for none
    };
    /// A stretch of the curve that is worked on by itself.
    struct Stretch {
        unsigned int low;
        unsigned int high;
    };
    using Turns = HvAltDynArray<CFCKeyTurn>;

    Place PlaceOf(unsigned int key, unsigned int i) const;
    bool AreTargetsFree();
    bool IsWithinNumbers() const;
    void Divide();
    void ReserveBench();
    void FillTurns(Order const& order, Turns& turns) const;
    void Work(Stretch const& stretch, unsigned int begin, unsigned int end);
    void AugmentAround(double parameter, unsigned int& done, HvExtent2<double>& extent) const;

    Curve& curve_;
    Impl& impl_;
    CFCDraggedKeys<Curve>& dragged_;

    Order order_{1};  ///< in which the keys were put down last
    Order nextOrder_{1};
    HvAltDynArray<Place> places_{1};
    HvAltDynArray<Stretch> stretches_{1};
    HvAltDynArray<unsigned int> stretchOfKey_{1};
    HvAltDynArray<unsigned int> lifted_{1};  ///< indices of the curve, rising
    CFCKeyBench<Curve> bench_;
    HvAltDynArray<double> targets_{1};  ///< rising
    Turns lifts_{1};
    Turns puts_{1};

    CFCStdKey firstAtStart_;  ///< the ends, of a standard curve
    CFCStdKey lastAtStart_;
    double firstParameter_ = 0;
    double leftValueAtStart_ = 0;    ///< of a stepped curve
    unsigned int firstKey_ = kNone;  ///< the dragged key that was the first at the start
    unsigned int lastKey_ = kNone;
    bool hasEnds_ = false;
};

extern template class CFCKeyLift<HvBooleanFCurve>;
extern template class CFCKeyLift<HvIntegerFCurve>;
extern template class CFCKeyLift<HvRawFCurve>;
extern template class CFCKeyLift<HvStdFCurve>;
extern template class CFCKeyLift<HvQuatFCurve>;

#endif
