// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reshaping of runs of keys: dropping those that add nothing, and convolving values.

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/reduce_lines.h>
#include <hv/fcurve/internal/smooth_values.h>
#include <hv/fcurve/internal/stepped_value.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>

#include <cmath>

namespace {

// Dropping keys.

/// Drops keys of the runs between `first` and `last` whose kind is not cubic.
/// findDropped(a, b, allowed, drop) calls drop(k) for those of the run from key a to key b.
template <class Store, class FindDropped>
unsigned int ReduceStraightRuns(Store& store, unsigned int first, unsigned int last,
                                double tolerance, HvBaseFCurve& curve, FindDropped findDropped)
{
    HvBoolArray dropped(0, store.keys.Count());
    HvReduce_ForEachRun(store, first, last, [&](unsigned int a, unsigned int b) {
        if (store.SegmentKindOf(a) != HvBaseFCurve::CubicSegment) {
            double const allowed = tolerance * HvReduce_ValueRange(store, a, b);
            findDropped(a, b, allowed, [&](unsigned int k) { dropped[k] = 1; });
        }
    });
    return HvReduce_RemoveMarkedKeys(store, dropped, curve);
}

template <class Store>
unsigned int ReduceLines(Store& store, unsigned int first, unsigned int last, double tolerance,
                         HvBaseFCurve& curve)
{
    auto const find = [&](unsigned int a, unsigned int b, double allowed, auto drop) {
        HvReduce_DropKeysOnLines(store, a, b, allowed, drop);
    };
    return ReduceStraightRuns(store, first, last, tolerance, curve, find);
}

// Convolving values.

/// The value nearest to a number.
int NearestValue(int, double number)
{
    return CFCSteppedValue_Rounded(number);
}
double NearestValue(double, double number)
{
    return number;
}

template <class Store>
void SmoothSingleValues(Store& store, unsigned int first, unsigned int last, double const* kernel,
                        unsigned int kernelSize)
{
    HvDoubleArray values(last - first + 1);
    for (unsigned int k = first; k <= last; ++k) {
        values.Add(static_cast<double>(store.keys[k].value));
    }
    values = HvSmooth_Values(values, kernel, kernelSize);
    for (unsigned int k = first; k <= last; ++k) {
        auto& value = store.keys[k].value;
        auto const smooth = NearestValue(value, values[k - first]);
        CFCKeyConstraint const word{store.ConstraintWord(k)};
        // A first key that keeps its value leaves the value before it alone.
        if (std::isfinite(values[k - first]) && smooth != value &&
            !word.HasAny(CFCKeyConstraint::kValueLocked)) {
            value = smooth;
            if (k == 0) {
                store.ApplyLeftValue(smooth);
            }
        }
    }
}

/// Sets a value and moves its handle along, unless one of them would be no finite number.
void MoveValueWithHandle(double newValue, double& value, HvPoint2<double>& handle)
{
    double const handleY = handle.y + (newValue - value);
    if (std::isfinite(newValue) && std::isfinite(handleY)) {
        value = newValue;
        handle.y = handleY;
    }
}

}  // namespace

template <class T, class K>
unsigned int CFCKeyStoreA<T, K>::ReduceNumKeys(unsigned int first, unsigned int last,
                                               double tolerance, HvBaseFCurve& curve)
{
    auto const find = [&](unsigned int a, unsigned int b, double allowed, auto drop) {
        HvReduce_DropKeysOnSteps(*this, a, b, allowed, drop);
    };
    return ReduceStraightRuns(*this, first, last, tolerance, curve, find);
}

template <class T, class K>
unsigned int CFCKeyStoreB<T, K>::ReduceNumKeys(unsigned int first, unsigned int last,
                                               double tolerance, HvBaseFCurve& curve)
{
    return ReduceLines(*this, first, last, tolerance, curve);
}

template <class T, class K>
unsigned int CFCKeyStoreC<T, K>::ReduceNumKeys(unsigned int first, unsigned int last,
                                               double tolerance, HvBaseFCurve& curve)
{
    return ReduceLines(*this, first, last, tolerance, curve);
}

template <class T, class K>
void CFCKeyStoreA<T, K>::SmoothSequence(unsigned int first, unsigned int last, double const* kernel,
                                        unsigned int kernelSize, HvBaseFCurve&)
{
    SmoothSingleValues(*this, first, last, kernel, kernelSize);
}

template <class T, class K>
void CFCKeyStoreB<T, K>::SmoothSequence(unsigned int first, unsigned int last, double const* kernel,
                                        unsigned int kernelSize, HvBaseFCurve&)
{
    SmoothSingleValues(*this, first, last, kernel, kernelSize);
}

template <class T, class K>
void CFCKeyStoreC<T, K>::SmoothSequence(unsigned int first, unsigned int last, double const* kernel,
                                        unsigned int kernelSize, HvBaseFCurve&)
{
    HvDoubleArray left(last - first + 1);
    HvDoubleArray right(last - first + 1);
    for (unsigned int k = first; k <= last; ++k) {
        left.Add(keys[k].leftValue);
        right.Add(keys[k].rightValue);
    }
    left = HvSmooth_Values(left, kernel, kernelSize);
    right = HvSmooth_Values(right, kernel, kernelSize);

    for (unsigned int k = first; k <= last; ++k) {
        K& key = keys[k];
        if (!key.constraints.HasAny(CFCKeyConstraint::kValueLocked)) {
            MoveValueWithHandle(left[k - first], key.leftValue, key.leftHandle);
            MoveValueWithHandle(right[k - first], key.rightValue, key.rightHandle);
        }
    }
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::SmoothSequence(double from, double to, double const* kernel,
                                         unsigned int kernelSize, HvBaseFCurve& curve)
{
    unsigned int first;
    unsigned int last;
    if (NumKeys() != 0 && GetKeyIndicesInClosedInterval(from, to, first, last)) {
        S::SmoothSequence(first, last, kernel, kernelSize, curve);
    }
    return 1;
}

template unsigned int CFCKeyStoreA<bool, CFCSingleValueKey<bool>>::ReduceNumKeys(unsigned int,
                                                                                 unsigned int,
                                                                                 double,
                                                                                 HvBaseFCurve&);
template unsigned int CFCKeyStoreA<int, CFCSingleValueKey<int>>::ReduceNumKeys(unsigned int,
                                                                               unsigned int, double,
                                                                               HvBaseFCurve&);
template unsigned int CFCKeyStoreB<double, CFCSingleValueKey<double>>::ReduceNumKeys(unsigned int,
                                                                                     unsigned int,
                                                                                     double,
                                                                                     HvBaseFCurve&);
template unsigned int CFCKeyStoreC<double, CFCStdKey>::ReduceNumKeys(unsigned int, unsigned int,
                                                                     double, HvBaseFCurve&);
template void CFCKeyStoreA<int, CFCSingleValueKey<int>>::SmoothSequence(unsigned int, unsigned int,
                                                                        double const*, unsigned int,
                                                                        HvBaseFCurve&);
template void CFCKeyStoreB<double, CFCSingleValueKey<double>>::SmoothSequence(
    unsigned int, unsigned int, double const*, unsigned int, HvBaseFCurve&);
template void CFCKeyStoreC<double, CFCStdKey>::SmoothSequence(unsigned int, unsigned int,
                                                              double const*, unsigned int,
                                                              HvBaseFCurve&);
template int CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::SmoothSequence(
    double, double, double const*, unsigned int, HvBaseFCurve&);
template int CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::SmoothSequence(
    double, double, double const*, unsigned int, HvBaseFCurve&);
template int CFCBaseImpl<double, CFCStdKey, CFCStdStore>::SmoothSequence(double, double,
                                                                         double const*,
                                                                         unsigned int,
                                                                         HvBaseFCurve&);
