// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The bench of a key lift on a rotation: moving whole keys.

#include <hv/fcurve/internal/CFCKeyBench.h>

#include <algorithm>

unsigned int CFCKeyBench<HvQuatFCurve>::Capacity() const
{
    return std::min(moved_.Capacity(), keys_.Capacity());
}

void CFCKeyBench<HvQuatFCurve>::Reserve(unsigned int numKeys)
{
    moved_.Reserve(numKeys);
    keys_.Reserve(numKeys);
}

void CFCKeyBench<HvQuatFCurve>::Work(unsigned int first, unsigned int last, CFCKeyTurn const* lifts,
                                     CFCKeyTurn const* puts, unsigned int count)
{
    HvQuatCurve& curve = impl_.Curve();
    moved_.Chop(0);
    for (unsigned int j = 0; j < count; ++j) {
        unsigned int const k = puts[j].key;
        unsigned int i = 0;
        impl_.FindKey(dragged_.keys[k].parameter, 0, i);
        moved_.Add(Moved(curve.GetKey(i), k));
    }
    if (!std::is_sorted(moved_.begin(), moved_.end())) {
        std::sort(moved_.begin(), moved_.end());
    }
    keys_.Chop(0);
    unsigned int const* gone = std::lower_bound(lifted_.begin(), lifted_.end(), first);
    HvQuatKey const* next = moved_.begin();
    for (unsigned int i = first; i <= last; ++i) {
        if (gone != lifted_.end() && *gone == i) {
            ++gone;
            continue;
        }
        for (; next != moved_.end() && next->time < curve.GetKeyTime(i); ++next) {
            keys_.Add(*next);
        }
        keys_.Add(curve.GetKey(i));
    }
    for (; next != moved_.end(); ++next) {
        keys_.Add(*next);
    }
    curve.ReplaceKeys(first, keys_.Data(), keys_.Count());
    for (unsigned int j = 0; j < count; ++j) {
        CFCDraggedKey const& key = dragged_.keys[lifts[j].key];
        unsigned int i = 0;
        impl_.FindKey(key.targetParameter, 0, i);
        CFCDraggedKey_SetAngle(impl_, i, key, dragged_.rotations[lifts[j].key]);
    }
}

/// A key as the step leaves it, but for its value.
HvQuatKey CFCKeyBench<HvQuatFCurve>::Moved(HvQuatKey key, unsigned int k)
{
    key.time = dragged_.keys[k].targetParameter;
    CFCDraggedRotation& rotation = dragged_.rotations[k];
    if (rotation.isTurned != rotation.targetIsTurned) {
        rotation.isTurned = rotation.targetIsTurned;
        key.bias = -key.bias;
        HvQuatKey const other = key;
        key.spins = rotation.otherSpins;
        rotation.otherSpins = other.spins;
    }
    return key;
}
