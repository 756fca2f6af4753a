// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging keys: taking hold of them, limits, the whole curve at once, the end of the drag. Steps
// that move some of the keys are in CFCKeyMover_step.inl.

#include <hv/fcurve/HvFCurveKeyMover.h>

#include <hv/fcurve/internal/CFCKeyMover_step.inl>
#include <hv/fcurve/internal/HvFCurveKeyMoverImpl.h>
#include <hv/fcurve/internal/drag_edges.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;

constexpr double kLowestInteger = std::numeric_limits<int>::min();
constexpr double kHighestInteger = std::numeric_limits<int>::max();

double Limited(double value, double low, double high)
{
    return value < low ? low : value > high ? high : value;
}

HvExtent2<double> Translated(HvExtent2<double> extent, Point const& by)
{
    if (extent.state == HvExtent2<double>::Ordinary) {
        extent.min = extent.min + by;
        extent.max = extent.max + by;
    }
    return extent;
}

void AugmentBy(HvExtent2<double> const& other, HvExtent2<double>& extent)
{
    extent.Augment(other.min);
    extent.Augment(other.max);
}

}  // namespace

// Taking hold.

template <class Curve>
CFCKeyMover<Curve>::CFCKeyMover(Curve& curve, HvDoubleArray const& parameters, Extent const& limits,
                                Extent const& movedExtent)
    : curve_(curve), impl_(HvCurveToolAccess::ImplOf(curve)), lift_(curve, dragged_),
      limits_(limits), movedExtent_(movedExtent)
{
    if (limits.state != Extent::Ordinary) {
        limits_ = Extent(-kHvMaxDouble, -kHvMaxDouble, kHvMaxDouble, kHvMaxDouble);
    }
    if (!TakeHold(parameters)) {
        return;
    }
    bool isAnyFree = false;
    for (CFCDraggedKey const& key : dragged_.keys) {
        bool const isParameterFree = CFCDraggedKey_IsParameterFree(key.word);
        bool const isValueFree = CFCDraggedKey_IsValueFree(key.word);
        isAnyFree = isAnyFree || isParameterFree || isValueFree;
        isAnyLocked_ = isAnyLocked_ || !isParameterFree || !isValueFree;
    }
    movesAllKeys_ = dragged_.Count() == impl_.NumKeys();
    FindOutermost();
    lift_.Begin(order_);
    SaveUserData();
    isUsable_ = isAnyFree;
}

/// Adds the keys of the set; false when one is none, is named twice, or there is none at all.
template <class Curve>
bool CFCKeyMover<Curve>::TakeHold(HvDoubleArray const& parameters)
{
    unsigned int const count = parameters.Size();
    if (count == 0 || impl_.NumKeys() == 0) {
        return false;
    }
    // Which of the parameters given is the first in order, which the second, ...
    HvAltDynArray<unsigned int> given(count);
    for (unsigned int j = 0; j < count; ++j) {
        if (std::isnan(parameters[j])) {
            return false;
        }
        given.Add(j);
    }
    auto const isBefore = [&](unsigned int a, unsigned int b) {
        return parameters[a] < parameters[b];
    };
    if (!std::is_sorted(given.begin(), given.end(), isBefore)) {
        std::sort(given.begin(), given.end(), isBefore);
    }

    dragged_.BeginWith(impl_);
    dragged_.Reserve(count);
    keyOfGiven_.Resize(count);
    order_.Reserve(count);
    standings_.Reserve(count);
    for (unsigned int key = 0; key < count; ++key) {
        double const x = parameters[given[key]];
        unsigned int i = 0;
        bool const isRepeated = key != 0 && x == parameters[given[key - 1]];
        if (isRepeated || impl_.FindKey(x, 0, i) == 0) {
            return false;
        }
        dragged_.Add(impl_, i);
        dragged_.keys[key].state = Initial;
        keyOfGiven_[given[key]] = key;
        order_.Add(key);
    }
    return true;
}

/// The keys that reach the limits first, of those that move on the axis.
template <class Curve>
void CFCKeyMover<Curve>::FindOutermost()
{
    auto const highest = [](CFCDraggedKey const& key) {
        return Traits::kHasTangents ? std::max(key.startLeftValue, key.startRightValue)
                                    : key.startRightValue;
    };
    auto const lowest = [](CFCDraggedKey const& key) {
        return Traits::kHasTangents ? std::min(key.startLeftValue, key.startRightValue)
                                    : key.startRightValue;
    };
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        CFCDraggedKey const& key = dragged_.keys[k];
        if (CFCDraggedKey_IsParameterFree(key.word)) {
            lowestMovable_ = lowestMovable_ == kNone ? k : lowestMovable_;
            highestMovable_ = k;
        }
        if (CFCDraggedKey_IsValueFree(key.word)) {
            if (highestValue_ == kNone || highest(key) > highest(dragged_.keys[highestValue_])) {
                highestValue_ = k;
            }
            if (lowestValue_ == kNone || lowest(key) < lowest(dragged_.keys[lowestValue_])) {
                lowestValue_ = k;
            }
        }
    }
}

/// Whether a step shifts the curve instead of moving keys.
template <class Curve>
bool CFCKeyMover<Curve>::IsMovedAsAWhole() const
{
    return Traits::kShiftsAsAWhole && movesAllKeys_ && !isAnyLocked_;
}

template <class Curve>
void CFCKeyMover<Curve>::SaveUserData()
{
    if (IsMovedAsAWhole() || !curve_.HasUserData()) {
        return;  // a shift takes them along
    }
    for (unsigned int k = 0; k < dragged_.Count(); ++k) {
        userData_.Save(curve_, dragged_.keys[k].startParameter, k);
    }
}

// A step.

template <class Curve>
int CFCKeyMover<Curve>::Update(Step const& step)
{
    if (!isUsable_) {
        return 0;
    }
    HvCurveToolLock const lock(curve_);
    Limit(step.translation);
    bool const isFinite = std::isfinite(step.translation.x) && std::isfinite(step.translation.y);
    if (impl_.IsReadOnly() || !isFinite) {
        return 0;
    }
    return IsMovedAsAWhole() ? MoveWhole(step) : MoveKeys(step);
}

/// Draws the translation back to where the outermost keys reach the limits. Where the lower limit
/// does not bind the upper one may, so limits that cross cannot make it swing.
template <class Curve>
void CFCKeyMover<Curve>::Limit(Point& translation) const
{
    double const wanted = translation.y;
    if (lowestMovable_ != kNone) {
        double const low = dragged_.keys[lowestMovable_].startParameter;
        double const high = dragged_.keys[highestMovable_].startParameter;
        if (low + translation.x < limits_.min.x) {
            translation.x = limits_.min.x - low;
        } else if (high + translation.x > limits_.max.x) {
            translation.x = limits_.max.x - high;
        }
    }
    if (lowestValue_ != kNone) {
        CFCDraggedKey const& low = dragged_.keys[lowestValue_];
        CFCDraggedKey const& high = dragged_.keys[highestValue_];
        if (low.startRightValue + wanted < limits_.min.y) {
            translation.y = limits_.min.y - low.startRightValue;
        } else if (high.startRightValue + wanted > limits_.max.y) {
            translation.y = limits_.max.y - high.startRightValue;
        }
        // Left values are held against what was wanted, not against what the right ones have left
        // of it, and have the last word.
        if (Traits::kHasTangents && low.startLeftValue + wanted < limits_.min.y) {
            translation.y = limits_.min.y - low.startLeftValue;
        } else if (Traits::kHasTangents && high.startLeftValue + wanted > limits_.max.y) {
            translation.y = limits_.max.y - high.startLeftValue;
        }
        if (std::is_same<Curve, HvIntegerFCurve>::value && IsMovedAsAWhole()) {
            // Shifted together, the values must all stay what they are to each other.
            translation.y = Limited(translation.y, kLowestInteger - low.startRightValue,
                                    kHighestInteger - high.startRightValue);
        }
    }
    if (std::is_same<Curve, HvIntegerFCurve>::value) {
        translation.y = std::floor(Limited(translation.y, kLowestInteger, kHighestInteger));
    }
    if (!HvCurveTool_HasValues(impl_)) {
        translation.y = 0;
    }
}

/// Shifts the whole curve by what the translation has grown since the last step. Parameters are
/// added to here as they are in the curve, so that both stay the same to the bit.
template <class Curve>
int CFCKeyMover<Curve>::MoveWhole(Step const& step)
{
    step.parameters.Reserve(HvArrayCapacity_GrownSize(step.parameters.Size(), dragged_.Count()));
    Point const by = step.translation - lastTranslation_;
    Extent keys;
    if (impl_.NumKeys() != 0) {
        impl_.AugmentByKeys(0, impl_.NumKeys() - 1, keys);
    }
    Extent invalid = step.invalid;
    AugmentBy(keys, invalid);
    HvDragEdges_Augment(impl_, step.viewLeft, step.viewRight, true, true, invalid);

    HvBaseFCurve& curve = curve_;
    if (!curve.ShiftParameters(by.x)) {
        return 0;
    }
    int const done = curve.ShiftValues(by.y);
    lastTranslation_.x = step.translation.x;
    lastTranslation_.y = done ? step.translation.y : lastTranslation_.y;
    for (CFCDraggedKey& key : dragged_.keys) {
        key.parameter += by.x;
    }
    for (unsigned int const key : keyOfGiven_) {
        step.parameters.Add(dragged_.keys[key].parameter);
    }
    Point const shifted(by.x, done ? by.y : 0);
    AugmentBy(Translated(keys, shifted), invalid);
    HvDragEdges_Augment(impl_, step.viewLeft, step.viewRight, true, true, invalid);
    step.invalid = invalid;
    if (movedExtent_.state == Extent::Ordinary) {
        movedExtent_ = Translated(movedExtent_, shifted);
        step.moved = movedExtent_;
    }
    return done;
}

template <class Curve>
int CFCKeyMover<Curve>::Finalize()
{
    if (!isUsable_) {
        return 0;
    }
    HvCurveToolLock const lock(curve_);
    userData_.Restore(curve_, [this](unsigned int k) {
        CFCDraggedKey const& key = dragged_.keys[k];
        return key.isLost ? std::numeric_limits<double>::quiet_NaN() : key.parameter;
    });
    return 1;
}

template class CFCKeyMover<HvBooleanFCurve>;
template class CFCKeyMover<HvIntegerFCurve>;
template class CFCKeyMover<HvRawFCurve>;
template class CFCKeyMover<HvStdFCurve>;
template class CFCKeyMover<HvQuatFCurve>;

// The shell.

HvFCurveKeyMoverImpl* HvFCurveKeyMoverImpl::New(HvBaseFCurve& curve,
                                                HvDoubleArray const& parameters,
                                                Extent const& limits, Extent const& movedExtent)
{
    HvFCurveKeyMoverImpl* const unknown = nullptr;
    return HvCurveKind_Visit(curve, unknown, [&](auto& known) -> HvFCurveKeyMoverImpl* {
        using Curve = std::decay_t<decltype(known)>;
        return new CFCKeyMover<Curve>(known, parameters, limits, movedExtent);
    });
}

HvFCurveKeyMover::HvFCurveKeyMover(HvBaseFCurve& curve, HvDoubleArray const& parameters,
                                   HvExtent2<double> const& limits,
                                   HvExtent2<double> const& movedExtent)
    : impl_(nullptr)
{
    HvCurveToolLock const lock(curve);
    impl_ = HvFCurveKeyMoverImpl::New(curve, parameters, limits, movedExtent);
}

HvFCurveKeyMover::~HvFCurveKeyMover()
{
    delete impl_;
}

int HvFCurveKeyMover::Update(HvPoint2<double>& translation, HvDoubleArray& parameters,
                             HvExtent2<double>& invalid, HvExtent2<double>& moved, double viewLeft,
                             double viewRight)
{
    return impl_ == nullptr
               ? 0
               : impl_->Update({translation, parameters, invalid, moved, viewLeft, viewRight});
}

int HvFCurveKeyMover::Finalize()
{
    return impl_ == nullptr ? 0 : impl_->Finalize();
}
