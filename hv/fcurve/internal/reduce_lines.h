// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Runs of keys, and which keys of a run of straight segments add nothing.

#ifndef HV_FCURVE_INTERNAL_REDUCE_LINES_H
#define HV_FCURVE_INTERNAL_REDUCE_LINES_H

#include <hv/fcurve/CFCKeyConstraint.h>
#include <hv/fcurve/HvBaseFCurve.h>
#include <hv/foundation/HvBoolArray.h>

#include <algorithm>
#include <cmath>

/// The locks that keep a key from being dropped.
constexpr unsigned short kHvReduceLocks =
    CFCKeyConstraint::kParameterLocked | CFCKeyConstraint::kValueLocked;

/// The distance between the highest and the lowest value of the curve along the segments from key i
/// to key j, i < j, as their keys show it. A tolerance of reduction is relative to it.
template <class Store>
double HvReduce_ValueRange(Store const& store, unsigned int i, unsigned int j)
{
    auto low = static_cast<double>(store.RightValueOf(i));
    double high = low;
    auto const meet = [&](double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    };
    for (unsigned int k = i + 1; k <= j; ++k) {
        meet(static_cast<double>(store.LeftValueOf(k)));
        if (k != j) {
            meet(static_cast<double>(store.RightValueOf(k)));
        }
    }
    return high - low;
}

/// Calls run(first, last) for each longest stretch of segments of one kind between the keys i and j
/// that has a key inside.
template <class Store, class Run>
void HvReduce_ForEachRun(Store const& store, unsigned int i, unsigned int j, Run run)
{
    for (unsigned int first = i; first < j;) {
        unsigned int last = first + 1;
        while (last < j && store.SegmentKindOf(last) == store.SegmentKindOf(first)) {
            ++last;
        }
        if (last - first > 1) {
            run(first, last);
        }
        first = last;
    }
}

/// Removes the keys marked in `dropped` with their user data; returns how many they are. Nothing of
/// it can fail.
template <class Store>
unsigned int HvReduce_RemoveMarkedKeys(Store& store, HvBoolArray const& dropped,
                                       HvBaseFCurve& curve)
{
    unsigned int const before = store.keys.Count();
    bool const hasUserData = curve.HasUserData() != 0;
    for (unsigned int k = 0; hasUserData && k < before; ++k) {
        if (dropped[k]) {
            curve.RemoveKeyUserData(store.keys[k].parameter);
        }
    }
    store.RemoveMarkedKeys(dropped);
    store.ReleaseSpareKeys();
    return before - store.keys.Count();
}

/// Calls drop(k), k ascending, for the keys between i and j that lie on lines.
///
/// A line starts at a kept key's right value and passes the next key's left value. While the keys
/// that follow keep within `tolerance` of it with both values, those before them go; at the first
/// that does not, the key before it stays and starts the next line. The line is not turned towards
/// the keys it passes, so what is dropped lies within twice the tolerance of what stays. A locked
/// key stays. A jump of a key that goes is lost.
///
/// Cost: one pass.
template <class Store, class Drop>
void HvReduce_DropKeysOnLines(Store const& store, unsigned int i, unsigned int j, double tolerance,
                              Drop drop)
{
    double x0 = 0;
    double y0 = 0;
    double slope = 0;
    auto const startLine = [&](unsigned int k) {
        x0 = store.keys[k].parameter;
        y0 = static_cast<double>(store.RightValueOf(k));
        slope = (static_cast<double>(store.LeftValueOf(k + 1)) - y0) /
                (store.keys[k + 1].parameter - x0);
    };
    auto const isNear = [&](unsigned int k) {
        double const y = y0 + slope * (store.keys[k].parameter - x0);
        return std::fabs(static_cast<double>(store.LeftValueOf(k)) - y) <= tolerance &&
               std::fabs(static_cast<double>(store.RightValueOf(k)) - y) <= tolerance;
    };
    startLine(i);
    for (unsigned int k = i + 2; k <= j; ++k) {
        CFCKeyConstraint const word{store.ConstraintWord(k - 1)};
        if (word.HasAny(kHvReduceLocks) || !isNear(k)) {
            startLine(k - 1);
        } else {
            drop(k - 1);
        }
    }
}

/// The same for keys that hold their value up to the next: a key goes when its value is within
/// `tolerance` of the one held since the last key that stays.
template <class Store, class Drop>
void HvReduce_DropKeysOnSteps(Store const& store, unsigned int i, unsigned int j, double tolerance,
                              Drop drop)
{
    auto held = static_cast<double>(store.RightValueOf(i));
    for (unsigned int k = i + 1; k < j; ++k) {
        auto const value = static_cast<double>(store.RightValueOf(k));
        CFCKeyConstraint const word{store.ConstraintWord(k)};
        if (word.HasAny(kHvReduceLocks) || !(std::fabs(value - held) <= tolerance)) {
            held = value;
        } else {
            drop(k);
        }
    }
}

#endif
