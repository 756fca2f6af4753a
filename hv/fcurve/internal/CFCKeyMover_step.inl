// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The key mover: a step that moves some of the keys. Included by HvFCurveKeyMover.cpp.

#ifndef HV_FCURVE_INTERNAL_CFCKEYMOVER_STEP_INL
#define HV_FCURVE_INTERNAL_CFCKEYMOVER_STEP_INL

#include <hv/fcurve/internal/HvFCurveKeyMoverImpl.h>
#include <hv/fcurve/internal/drag_edges.h>

#include <algorithm>
#include <cmath>

/// A key does not come nearer than this to one that stays: it would hide it, and parameters are
/// frames or seconds, where less is no distance.
constexpr double kKeyCollisionParameter = 1e-6;

template <class Curve>
int CFCKeyMover<Curve>::MoveKeys(Step const& step)
{
    step.parameters.Reserve(HvArrayCapacity_GrownSize(step.parameters.Size(), dragged_.Count()));
    DecideStates(step.translation.x);
    SetTargets(step.translation);
    if (!AreTargetsRising() || !lift_.Prepare(order_)) {
        return 0;
    }
    if constexpr (Traits::kHasTangents) {
        wanted_.Reserve(dragged_.Count());
    }
    auto const augmentByEdges = [&] {
        HvDragEdges_Augment(impl_, step.viewLeft, step.viewRight, lift_.ReachesFirst(),
                            lift_.ReachesLast(), step.invalid);
    };
    augmentByEdges();
    lift_.AugmentBefore(step.invalid);
    // A key lifted and put back at once would not leave its neighbours as they were, so a step that
    // leads nowhere, such as one to where the last one led, lifts none.
    if (!AreTargetsReached()) {
        lift_.Move();
        GiveTangentsBack();
        lift_.RestoreEnds();
        lift_.AugmentAfter(step.invalid);
        augmentByEdges();
    }
    Report(step);
    return 1;
}

// States.

template <class Curve>
void CFCKeyMover<Curve>::DecideStates(double shift)
{
    standings_.Chop(0);
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        dragged_.keys[k].state = Initial;
        standings_.Add({dragged_.keys[k].parameter, k});
    }
    auto const isBefore = [](Standing const& a, Standing const& b) {
        return a.parameter < b.parameter;
    };
    if (!std::is_sorted(standings_.begin(), standings_.end(), isBefore)) {
        std::sort(standings_.begin(), standings_.end(), isBefore);
    }

    // Those in front are asked first, so that those behind find the place free.
    bool movesRight = false;
    if (lowestMovable_ != kNone) {
        CFCDraggedKey const& lowest = dragged_.keys[lowestMovable_];
        movesRight = lowest.parameter < lowest.startParameter + shift;
    }
    unsigned int const count = dragged_.Count();
    bool isBlocked = false;
    for (unsigned int j = 0; j < count; ++j) {
        unsigned int const k = movesRight ? count - 1 - j : j;
        dragged_.keys[k].state = StateOf(k, shift, isBlocked);
    }
}

template <class Curve>
typename CFCKeyMover<Curve>::State CFCKeyMover<Curve>::StateOf(unsigned int k, double shift,
                                                               bool& isBlocked) const
{
    CFCDraggedKey const& key = dragged_.keys[k];
    // Locks may be set in mid-drag, so the key itself is asked; one that is not found is lost
    // anyway.
    unsigned int i = 0;
    unsigned short const word =
        impl_.FindKey(key.parameter, 0, i) ? impl_.ConstraintWord(i) : key.word;
    bool const isValueFree = CFCDraggedKey_IsValueFree(word);
    if (lowestMovable_ == kNone || !CFCDraggedKey_IsParameterFree(word)) {
        return isValueFree ? MovesValue : Stays;
    }
    isBlocked = isBlocked || !IsFree(k, key.startParameter + shift, shift);
    if (isBlocked) {
        return isValueFree ? MovesValue : Stays;
    }
    return isValueFree ? MovesBoth : MovesParameter;
}

/// Whether a key may come to `target`: another key of the set leaves the place, or none stands
/// there but itself.
template <class Curve>
bool CFCKeyMover<Curve>::IsFree(unsigned int k, double target, double shift) const
{
    if (IsStrangerAt(target)) {
        return false;
    }
    if (IsLeftByAnother(target)) {
        return true;
    }
    unsigned int first = 0;
    unsigned int last = 0;
    bool const isTaken = impl_.NumKeys() != 0 && impl_.GetKeyIndicesInClosedInterval(
                                                     target - kKeyCollisionParameter,
                                                     target + kKeyCollisionParameter, first, last);
    return !isTaken || shift == 0 ||
           (first == last && impl_.Parameter(first) == dragged_.keys[k].parameter);
}

/// Whether a key of the set that has been asked before stands at `target` and leaves it.
template <class Curve>
bool CFCKeyMover<Curve>::IsLeftByAnother(double target) const
{
    Standing const* standing = std::lower_bound(
        standings_.begin(), standings_.end(), target - kKeyCollisionParameter,
        [](Standing const& a, double parameter) { return a.parameter < parameter; });
    for (; standing != standings_.end() && standing->parameter <= target + kKeyCollisionParameter;
         ++standing) {
        unsigned char const state = dragged_.keys[standing->key].state;
        if (state == MovesBoth || state == MovesParameter) {
            return true;
        }
    }
    return false;
}

/// Whether a key that is not of the set stands at exactly `target`, where none can be put.
template <class Curve>
bool CFCKeyMover<Curve>::IsStrangerAt(double target) const
{
    unsigned int i = 0;
    if (impl_.FindKey(target, 0, i) == 0) {
        return false;
    }
    Standing const* const standing = std::lower_bound(
        standings_.begin(), standings_.end(), target,
        [](Standing const& a, double parameter) { return a.parameter < parameter; });
    return standing == standings_.end() || standing->parameter != target;
}

// Targets.

template <class Curve>
void CFCKeyMover<Curve>::SetTargets(Point const& translation)
{
    for (CFCDraggedKey& key : dragged_.keys) {
        bool const moves = key.state == MovesBoth || key.state == MovesParameter;
        key.targetParameter = moves ? key.startParameter + translation.x : key.parameter;
        bool const rises = key.state == MovesBoth || key.state == MovesValue;
        key.targetLeftValue =
            rises ? Traits::Fitting(key.startLeftValue + translation.y) : key.leftValue;
        key.targetRightValue =
            rises ? Traits::Fitting(key.startRightValue + translation.y) : key.rightValue;
    }
}

/// Far out, or over long ways, different parameters come to the same one.
template <class Curve>
bool CFCKeyMover<Curve>::AreTargetsRising() const
{
    CFCDraggedKey const* last = nullptr;
    for (CFCDraggedKey const& key : dragged_.keys) {
        if (key.state == MovesBoth || key.state == MovesParameter) {
            if (last != nullptr && !(last->targetParameter < key.targetParameter)) {
                return false;
            }
            last = &key;
        }
    }
    return true;
}

template <class Curve>
bool CFCKeyMover<Curve>::AreTargetsReached() const
{
    return std::all_of(dragged_.keys.begin(), dragged_.keys.end(), [](CFCDraggedKey const& key) {
        return key.isLost ||
               (key.targetParameter == key.parameter && key.targetLeftValue == key.leftValue &&
                key.targetRightValue == key.rightValue);
    });
}

// After the move.

/// Gives each key the tangents it started with, their lengths scaled with the spans beside it as
/// they are now.
template <class Curve>
void CFCKeyMover<Curve>::GiveTangentsBack()
{
    if constexpr (Traits::kHasTangents) {
        constexpr unsigned short kKeepsLength = CFCKeyConstraint::kTangentLengthLocked |
                                                CFCKeyConstraint::kTangentLengthContinuityLocked;
        wanted_.Chop(0);
        for (unsigned int k = 0; k < dragged_.Count(); ++k) {
            CFCDraggedKey const& key = dragged_.keys[k];
            unsigned int i = 0;
            if (key.isLost || impl_.FindKey(key.parameter, 0, i) == 0) {
                continue;
            }
            CFCDraggedTangents const& tangents = dragged_.tangents[k];
            bool const scales = (key.word & kKeepsLength) == 0;
            double left = tangents.leftLength;
            double right = tangents.rightLength;
            if (scales && i != 0 && tangents.leftGap > 0) {
                left *= (key.parameter - impl_.Parameter(i - 1)) / tangents.leftGap;
            }
            if (scales && i + 1 < impl_.NumKeys() && tangents.rightGap > 0) {
                right *= (impl_.Parameter(i + 1) - key.parameter) / tangents.rightGap;
            }
            wanted_.Add({i, tangents.leftUnit * left, tangents.rightUnit * right});
        }
        CFCWantedHandles_Store(impl_, wanted_);
    }
}

template <class Curve>
void CFCKeyMover<Curve>::Report(Step const& step)
{
    for (unsigned int const k : keyOfGiven_) {
        step.parameters.Add(dragged_.keys[k].parameter);
    }
    for (CFCDraggedKey& key : dragged_.keys) {
        if (key.isLost) {
            key.state = IsLost;
        }
    }
    if (movedExtent_.state != Extent::Ordinary) {
        return;
    }
    Extent moved;
    moved.Augment(movedExtent_.min + step.translation);
    moved.Augment(movedExtent_.max + step.translation);
    for (CFCDraggedKey const& key : dragged_.keys) {
        moved.Augment({key.parameter, key.leftValue});
        moved.Augment({key.parameter, key.rightValue});
    }
    step.moved = moved;
}

#endif
