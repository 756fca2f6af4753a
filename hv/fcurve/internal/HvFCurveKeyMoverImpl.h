// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The work of the key mover.

#ifndef HV_FCURVE_INTERNAL_HVFCURVEKEYMOVERIMPL_H
#define HV_FCURVE_INTERNAL_HVFCURVEKEYMOVERIMPL_H

#include <hv/fcurve/HvFCurveKeyMover.h>
#include <hv/fcurve/internal/CFCKeyLift.h>
#include <hv/fcurve/internal/CFCWantedHandles.h>
#include <hv/fcurve/internal/HvDragUserData.h>
#include <hv/foundation/HvDoubleArray.h>

/// What a key mover does, whatever the kind of its curve.
class HvFCurveKeyMoverImpl : public HvAllocated {
public:
    using Point = HvPoint2<double>;
    using Extent = HvExtent2<double>;

    /// One step of a drag: the arguments of Update.
    struct Step {
        Point& translation;
        HvDoubleArray& parameters;
        Extent& invalid;
        Extent& moved;
        double viewLeft;
        double viewRight;
    };

    /// A mover for a curve of that kind, or null for a kind that is not known.
    static HvFCurveKeyMoverImpl* New(HvBaseFCurve& curve, HvDoubleArray const& parameters,
                                     Extent const& limits, Extent const& movedExtent);
    virtual ~HvFCurveKeyMoverImpl() = default;
    virtual int Update(Step const& step) = 0;
    virtual int Finalize() = 0;
};

/// The key mover of one kind of curve. The keys of the set stand in `dragged_` in rising order of
/// their start parameters, in which every walk over them runs.
template <class Curve>
class CFCKeyMover final : public HvFCurveKeyMoverImpl {
public:
    CFCKeyMover(Curve& curve, HvDoubleArray const& parameters, Extent const& limits,
                Extent const& movedExtent);
    int Update(Step const& step) override;
    int Finalize() override;

private:
    using Traits = HvCurveKindTraits<Curve>;
    using Impl = typename Traits::Impl;

    /// What a key does in a step.
    enum State : unsigned char {
        MovesBoth = 1,
        Stays = 2,
        IsLost = 3,  ///< it was not found
        MovesValue = 4,
        MovesParameter = 5,
        Initial = 6
    };
    static constexpr unsigned int kNone = 0xFFFFFFFF;

    /// Where a key of the set stands now.
    struct Standing {
        double parameter;
        unsigned int key;
    };

    bool TakeHold(HvDoubleArray const& parameters);
    void FindOutermost();
    void SaveUserData();
    bool IsMovedAsAWhole() const;

    void Limit(Point& translation) const;
    int MoveWhole(Step const& step);
    int MoveKeys(Step const& step);
    void DecideStates(double shift);
    State StateOf(unsigned int key, double shift, bool& isBlocked) const;
    bool IsFree(unsigned int key, double target, double shift) const;
    bool IsLeftByAnother(double target) const;
    bool IsStrangerAt(double target) const;
    void SetTargets(Point const& translation);
    bool AreTargetsRising() const;
    bool AreTargetsReached() const;
    void GiveTangentsBack();
    void Report(Step const& step);

    Curve& curve_;
    Impl& impl_;
    CFCDraggedKeys<Curve> dragged_;
    CFCKeyLift<Curve> lift_;
    HvDragUserData userData_;
    typename CFCKeyLift<Curve>::Order order_{1};  ///< all keys of the set, rising
    HvAltDynArray<unsigned int> keyOfGiven_{1};   ///< of each parameter that was given
    HvAltDynArray<Standing> standings_{1};        ///< rising by parameter
    HvAltDynArray<CFCWantedHandles> wanted_{1};
    Extent limits_;
    Extent movedExtent_;  ///< as given; translated along when all keys move as a whole
    Point lastTranslation_;
    unsigned int lowestMovable_ = kNone;
    unsigned int highestMovable_ = kNone;
    unsigned int highestValue_ = kNone;
    unsigned int lowestValue_ = kNone;
    bool movesAllKeys_ = false;
    bool isAnyLocked_ = false;
    bool isUsable_ = false;
};

#endif
