// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Lifting and putting down keys: where a step takes place. The work itself is the bench's.

#include <hv/fcurve/internal/CFCKeyLift.h>

#include <hv/foundation/HvExtent2.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

/// Sorts unless the order is right already, which it is in all but odd steps.
template <class Array, class Less>
void Sort(Array& array, Less less)
{
    if (!std::is_sorted(array.begin(), array.end(), less)) {
        std::sort(array.begin(), array.end(), less);
    }
}

}  // namespace

template <class Curve>
CFCKeyLift<Curve>::CFCKeyLift(Curve& curve, CFCDraggedKeys<Curve>& dragged)
    : curve_(curve), impl_(HvCurveToolAccess::ImplOf(curve)), dragged_(dragged),
      bench_(impl_, dragged, lifted_)
{
}

template <class Curve>
void CFCKeyLift<Curve>::Begin(Order const& order)
{
    order_ = order;
    unsigned int const n = impl_.NumKeys();
    hasEnds_ = n != 0;
    if (!hasEnds_) {
        return;
    }
    firstParameter_ = impl_.FirstParameter();
    for (unsigned int const key : order) {
        double const start = dragged_.keys[key].startParameter;
        firstKey_ = start == impl_.FirstParameter() ? key : firstKey_;
        lastKey_ = start == impl_.LastParameter() ? key : lastKey_;
    }
    if constexpr (Traits::kHasTangents) {
        firstAtStart_ = impl_.keys[0];
        lastAtStart_ = impl_.keys[n - 1];
    } else {
        leftValueAtStart_ = static_cast<double>(impl_.LeftValueOf(0));
    }
}

// Planning.

/// The place of a key that stands at index i. Beside the two places lie the keys whose handles and
/// kinds change along; where one of those is lifted too, its own place takes it further.
template <class Curve>
typename CFCKeyLift<Curve>::Place CFCKeyLift<Curve>::PlaceOf(unsigned int key, unsigned int i) const
{
    int exact = 0;
    unsigned int const notAbove = impl_.LocateParameter(dragged_.keys[key].targetParameter, exact);
    unsigned int const below = exact != 0 ? notAbove - 1 : notAbove;
    unsigned int const low = std::min(i, below);
    unsigned int const high = std::max(i, below);
    return {low == 0 ? 0 : low - 1, std::min(high + 1, impl_.NumKeys() - 1), key,
            exact != 0 ? below : kNone};
}

template <class Curve>
bool CFCKeyLift<Curve>::Prepare(Order const& order)
{
    if (!bench_.CanWork()) {
        return false;
    }
    nextOrder_.Reserve(order.Count());
    places_.Reserve(order.Count());
    lifted_.Reserve(order.Count());
    targets_.Reserve(order.Count());
    nextOrder_.Chop(0);
    places_.Chop(0);
    lifted_.Chop(0);
    targets_.Chop(0);
    for (unsigned int const k : order) {
        CFCDraggedKey& key = dragged_.keys[k];
        unsigned int i = 0;
        nextOrder_.Add(k);
        key.isLost = impl_.FindKey(key.parameter, 0, i) == 0;
        if (!key.isLost) {
            if (!std::isfinite(key.targetParameter)) {
                return false;
            }
            places_.Add(PlaceOf(k, i));
            lifted_.Add(i);
            targets_.Add(key.targetParameter);
        }
    }
    if (!AreTargetsFree() || !IsWithinNumbers()) {
        return false;
    }
    Divide();
    return true;
}

/// Whether no target is that of two keys, or of a key that stays. Sorts `lifted_` and `targets_`.
template <class Curve>
bool CFCKeyLift<Curve>::AreTargetsFree()
{
    Sort(targets_, std::less<double>());
    Sort(lifted_, std::less<unsigned int>());
    if (std::adjacent_find(targets_.begin(), targets_.end()) != targets_.end() ||
        std::adjacent_find(lifted_.begin(), lifted_.end()) != lifted_.end()) {
        return false;
    }
    return std::all_of(places_.begin(), places_.end(), [this](Place const& place) {
        return place.taken == kNone ||
               std::binary_search(lifted_.begin(), lifted_.end(), place.taken);
    });
}

/// Whether all values are finite and, on a curve with handles, all distances.
template <class Curve>
bool CFCKeyLift<Curve>::IsWithinNumbers() const
{
    if (targets_.Count() == 0) {
        return true;
    }
    if constexpr (Traits::kHasTangents) {
        double const first = std::min(targets_[0], impl_.FirstParameter());
        double const last = std::max(targets_[targets_.Count() - 1], impl_.LastParameter());
        if (!std::isfinite(last - first)) {
            return false;
        }
    }
    return std::all_of(places_.begin(), places_.end(), [this](Place const& place) {
        CFCDraggedKey const& key = dragged_.keys[place.key];
        return std::isfinite(key.targetLeftValue) && std::isfinite(key.targetRightValue);
    });
}

/// Divides the curve into stretches that have nothing to do with each other.
template <class Curve>
void CFCKeyLift<Curve>::Divide()
{
    Sort(places_, [](Place const& a, Place const& b) { return a.low < b.low; });
    stretches_.Reserve(places_.Count());
    stretches_.Chop(0);
    stretchOfKey_.Resize(dragged_.Count());
    for (Place const& place : places_) {
        unsigned int const count = stretches_.Count();
        if (count == 0 || place.low > stretches_[count - 1].high) {
            stretches_.Add({place.low, place.high});
        } else {
            stretches_[count - 1].high = std::max(stretches_[count - 1].high, place.high);
        }
        stretchOfKey_[place.key] = stretches_.Count() - 1;
    }
    ReserveBench();
    lifts_.Reserve(places_.Count());
    puts_.Reserve(places_.Count());
    FillTurns(order_, lifts_);
    FillTurns(nextOrder_, puts_);
}

/// Makes room for the longest stretch. Where there is too little, as much is made as a step that
/// leads the other way could need, by which stretches may reach further and meet.
template <class Curve>
void CFCKeyLift<Curve>::ReserveBench()
{
    constexpr unsigned int kBeside = 3;  // what Work adds to a stretch
    constexpr unsigned int kTurn = 2;
    unsigned int longest = 0;
    for (Stretch const& stretch : stretches_) {
        longest = std::max(longest, stretch.high - stretch.low + kBeside);
    }
    bool const isRoom = longest <= bench_.Capacity();
    Stretch wide{0, 0};
    for (Place const& place : places_) {
        wide.low = place.low > wide.high ? place.low : wide.low;
        wide.high = std::max(wide.high, place.high + kTurn);
        longest = isRoom ? longest : std::max(longest, wide.high - wide.low + kBeside);
    }
    bench_.Reserve(longest);
}

template <class Curve>
void CFCKeyLift<Curve>::FillTurns(Order const& order, Turns& turns) const
{
    turns.Chop(0);
    for (unsigned int position = 0; position < order.Count(); ++position) {
        unsigned int const key = order[position];
        if (!dragged_.keys[key].isLost) {
            turns.Add({stretchOfKey_[key], position, key});
        }
    }
    Sort(turns, [](CFCKeyTurn const& a, CFCKeyTurn const& b) {
        return a.stretch != b.stretch ? a.stretch < b.stretch : a.position < b.position;
    });
}

// Carrying out.

template <class Curve>
void CFCKeyLift<Curve>::Move()
{
    bench_.Begin();
    unsigned int begin = 0;
    for (unsigned int s = 0; s < stretches_.Count(); ++s) {
        unsigned int end = begin;
        while (end < lifts_.Count() && lifts_[end].stretch == s) {
            ++end;
        }
        Work(stretches_[s], begin, end);
        begin = end;
    }
    bool const hasUserData = curve_.HasUserData() != 0;
    for (CFCKeyTurn const& turn : lifts_) {
        CFCDraggedKey& key = dragged_.keys[turn.key];
        if (hasUserData) {
            curve_.RemoveKeyUserData(key.parameter);
        }
        key.previousParameter = key.parameter;
        key.parameter = key.targetParameter;
        key.leftValue = key.targetLeftValue;
        key.rightValue = key.targetRightValue;
    }
    order_.Swap(nextOrder_);
    bench_.End();
}

/// Takes the turns `begin` to `end` - 1, those of the stretch.
template <class Curve>
void CFCKeyLift<Curve>::Work(Stretch const& stretch, unsigned int begin, unsigned int end)
{
    // One more key on either side, where there is one, so that the keys written are not taken for
    // the ends of the curve.
    unsigned int const first = stretch.low == 0 ? 0 : stretch.low - 1;
    unsigned int const last = std::min(stretch.high + 1, impl_.NumKeys() - 1);
    bench_.Work(first, last, &lifts_[begin], &puts_[begin], end - begin);
}

template <class Curve>
void CFCKeyLift<Curve>::RestoreEnds()
{
    if (!hasEnds_ || impl_.NumKeys() == 0) {
        return;
    }
    unsigned int const last = impl_.NumKeys() - 1;
    bool const firstIsDragged = firstKey_ != kNone;
    double const first = firstIsDragged ? dragged_.keys[firstKey_].parameter : firstParameter_;
    bool const isFirstAgain = impl_.FirstParameter() == first;
    if constexpr (Traits::kHasTangents) {
        CFCStdKey& firstKey = impl_.keys[0];
        if (!firstIsDragged && isFirstAgain) {
            firstKey.leftHandle = firstAtStart_.leftHandle;
            firstKey.leftValue = firstAtStart_.leftValue;
        }
        CFCStdKey& lastKey = impl_.keys[last];
        if (lastKey_ == kNone && lastKey.parameter == lastAtStart_.parameter) {
            lastKey.rightHandle = lastAtStart_.rightHandle;
        }
    } else if constexpr (Traits::kIsStepped) {
        if (!isFirstAgain) {
            return;
        }
        double const value =
            firstIsDragged ? dragged_.keys[firstKey_].leftValue : leftValueAtStart_;
        // Not through the rule of the left value: a lock on the first key is there to keep it.
        impl_.leftValue = static_cast<typename Traits::Value>(value);
    }
}

// Extents.

/// Augments by the keys around a parameter; `done` keys from the first on are known to be in.
template <class Curve>
void CFCKeyLift<Curve>::AugmentAround(double parameter, unsigned int& done,
                                      HvExtent2<double>& extent) const
{
    if (impl_.NumKeys() == 0) {
        return;
    }
    int exact = 0;
    unsigned int const notAbove = impl_.LocateParameter(parameter, exact);
    unsigned int const below = notAbove == 0 ? 0 : notAbove - 1;
    unsigned int low = below - std::min(below, Impl::kExtentReach);
    unsigned int const reach = exact != 0 ? Impl::kExtentReach : Impl::kExtentReach + 1;
    unsigned int const high = std::min(below + reach, impl_.NumKeys() - 1);
    // Runs of keys have their surroundings in common. Where places do not rise, nothing is known.
    if (done > high || done < low) {
        done = low;
    }
    low = done;
    impl_.AugmentByKeys(low, high, extent);
    done = high + 1;
}

template <class Curve>
void CFCKeyLift<Curve>::AugmentBefore(HvExtent2<double>& extent) const
{
    unsigned int atPlaces = 0;
    unsigned int atTargets = 0;
    for (unsigned int const k : nextOrder_) {
        CFCDraggedKey const& key = dragged_.keys[k];
        AugmentAround(key.parameter, atPlaces, extent);
        if (!key.isLost) {
            AugmentAround(key.targetParameter, atTargets, extent);
        }
    }
}

template <class Curve>
void CFCKeyLift<Curve>::AugmentAfter(HvExtent2<double>& extent) const
{
    unsigned int atPlaces = 0;
    unsigned int atPrevious = 0;
    for (unsigned int const k : order_) {
        CFCDraggedKey const& key = dragged_.keys[k];
        AugmentAround(key.parameter, atPlaces, extent);
        if (!key.isLost) {
            AugmentAround(key.previousParameter, atPrevious, extent);
        }
    }
}

template class CFCKeyLift<HvBooleanFCurve>;
template class CFCKeyLift<HvIntegerFCurve>;
template class CFCKeyLift<HvRawFCurve>;
template class CFCKeyLift<HvStdFCurve>;
template class CFCKeyLift<HvQuatFCurve>;
