// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: making, merging and removing keys, and their values.

#include <hv/fcurve/CFCUserDataSet.h>
#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/fcurve/internal/smooth_values.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>
#include <memory>

int HvQuatFCurve::AreAnyLocked(double from, double to, int openAtFrom, int openAtTo) const
{
    constexpr bool kAnyBit = false;
    return impl_->HasConstraintInInterval(HvQuatFCurveImpl::kEveryLock, kAnyBit, from, to,
                                          openAtFrom, openAtTo);
}

// Making keys.

/// Sets this component of the key at exactly `parameter`, or makes a key there.
int HvQuatFCurve::SetOrCreateKey(double parameter, double value)
{
    HvQuatCurve& curve = impl_->Curve();
    unsigned int i;
    if (impl_->FindKey(parameter, 0, i)) {
        return curve.IsValueLocked(i) ? 0 : curve.SetKeyValue(i, impl_->component, value);
    }
    bool const isFirst = impl_->NumKeys() == 0;
    curve.SetKey(parameter, impl_->component, value, 0.0);
    if (isFirst) {
        curve.SetValueWhenNoKeys(impl_->component, value);
    }
    return 1;
}

int HvQuatFCurve::CreateKey(double parameter, double value)
{
    if (!std::isfinite(value) || !std::isfinite(parameter)) {
        return 0;
    }
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !impl_->HasComponent()) {
        return 0;
    }
    return SetOrCreateKey(parameter, value);
}

int HvQuatFCurve::CreateNonModifyingKey(double parameter, int ignoreExtrapolation)
{
    Writer const lock(*this);
    double const p = ignoreExtrapolation ? parameter : impl_->FoldParameter(parameter);
    if (impl_->IsReadOnly() || !std::isfinite(p)) {
        return 0;
    }
    unsigned int i;
    if (!impl_->FindKey(p, 0, i)) {
        impl_->Curve().SetKey(p, impl_->AnglesHeldAt(p), 0.0);
    }
    return 1;
}

/// Replaces the keys of the interval by one at `parameter`, whose angles are those held there, this
/// component `*value` when there is one.
int HvQuatFCurve::MergeAt(double from, double to, double parameter, double const* value,
                          int openAtFrom, int openAtTo, int keepKeyData)
{
    if (from > to) {
        return 1;  // an interval that is turned round is empty
    }
    unsigned int const n = impl_->NumKeys();
    unsigned int first = 0;
    unsigned int last = 0;
    unsigned int gone = 0;  // keys `first` to `first` + `gone` - 1 go
    if (impl_->GetKeyIndicesInInterval(from, to, first, last, openAtFrom, openAtTo)) {
        gone = last - first + 1;
    } else if (n != 0) {
        int exact;
        first = impl_->LocateParameter(from, exact);
    }
    if (gone == 1 && impl_->Parameter(first) == parameter) {
        return value != nullptr ? SetOrCreateKey(parameter, *value) : 1;
    }
    bool const isBetween = (first == 0 || impl_->Parameter(first - 1) < parameter) &&
                           (first + gone == n || parameter < impl_->Parameter(first + gone));
    if (!isBetween) {
        return 0;
    }
    HvQuatCurve work(impl_->Curve());
    HvQuatKey key(parameter, impl_->AnglesHeldAt(parameter), 0.0f, 0.0f, 0.0f, 0);
    CFCUserDataSet kept;
    if (keepKeyData && gone != 0) {
        HvPoint3<double> const angles = key.angles;
        key = work.GetKey(impl_->GetNearestKeyIndex(parameter));
        if (CFCUserDataSet const* const set = GetUserDataSet(key.time)) {
            kept = *set;
        }
        key.time = parameter;
        key.angles = angles;
    }
    if (gone != 0) {
        work.RemoveKeyRange(first, first + gone - 1);
    }
    // A lock that the key takes over does not keep its own value out.
    unsigned short const word = work.GetConstraintData(work.SetKey(key, 0.0));
    work.SetConstraintData(first, 0);
    if (value != nullptr) {
        work.SetKeyValue(first, impl_->component, *value);
    }
    work.SetConstraintData(first, word);
    if (work.GetNumKeys() == 1) {
        work.SetValueWhenNoKeys(work.GetKeyValue(0));
    }
    for (unsigned int k = 0; HasUserData() && k < gone; ++k) {
        RemoveKeyUserData(impl_->Parameter(first + k));
    }
    if (!kept.IsEmpty()) {
        SetUserDataSet(kept, parameter);
    }
    impl_->Curve().Swap(work);
    return 1;
}

int HvQuatFCurve::MergeAndCreateKey(double from, double to, double parameter, double value,
                                    int openAtFrom, int openAtTo, int keepKeyData)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !impl_->HasComponent() || !std::isfinite(parameter) ||
        !std::isfinite(value) || std::isnan(from) || std::isnan(to) ||
        AreAnyLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    return MergeAt(from, to, parameter, &value, openAtFrom, openAtTo, keepKeyData);
}

int HvQuatFCurve::MergeAndCreateNonModifyingKey(double from, double to, double parameter,
                                                int openAtFrom, int openAtTo, int keepKeyData,
                                                int ignoreExtrapolation)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || AreAnyLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    double p = parameter;
    if (!ignoreExtrapolation && impl_->Cycles()) {
        // The interval moves along into the key range.
        p = impl_->FoldParameter(parameter);
        double const d = p - parameter;
        from = std::min(to + d, from + d);
        to = to + d;
        p = p < from ? from : p > to ? to : p;
    }
    if (!std::isfinite(p) || std::isnan(from) || std::isnan(to) ||
        AreAnyLocked(from, to, openAtFrom, openAtTo)) {
        return 0;
    }
    return MergeAt(from, to, p, nullptr, openAtFrom, openAtTo, keepKeyData);
}

// Removing keys.

int HvQuatFCurve::RemoveKey(double parameter, double tolerance)
{
    Writer const lock(*this);
    // Locks are asked for at the parameter itself: a locked key near it can be removed.
    if (impl_->IsReadOnly() || AreAnyLocked(parameter, parameter, 0, 0)) {
        return 0;
    }
    if (impl_->NumKeys() == 0) {
        return 1;
    }
    unsigned int i;
    if (!impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    RemoveKeyUserData(impl_->Parameter(i));
    return impl_->Curve().RemoveKeyAt(i);
}

int HvQuatFCurve::RemoveKeys(double from, double to, int openAtFrom, int openAtTo)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly()) {
        return 0;
    }
    bool const closed = from == to && (openAtFrom != 0) != (openAtTo != 0);
    int const openFrom = closed ? 0 : openAtFrom;
    int const openTo = closed ? 0 : openAtTo;
    if (AreAnyLocked(from, to, openFrom, openTo)) {
        return 0;
    }
    unsigned int first;
    unsigned int last;
    if (impl_->GetKeyIndicesInInterval(from, to, first, last, openFrom, openTo)) {
        for (unsigned int i = first; HasUserData() && i <= last; ++i) {
            RemoveKeyUserData(impl_->Parameter(i));
        }
        impl_->Curve().RemoveKeyRange(first, last);
    }
    return 1;
}

// Values.

int HvQuatFCurve::SetValueWhenNoKeys(double value)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !impl_->HasComponent() || !std::isfinite(value)) {
        return 0;
    }
    impl_->Curve().SetValueWhenNoKeys(impl_->component, value);
    return 1;
}

int HvQuatFCurve::GetKeyValue(double parameter, KeySide side, double& value, double tolerance) const
{
    Reader const lock(*this);
    unsigned int i;
    if ((side != Left && side != Right) || !impl_->FindKey(parameter, tolerance, i)) {
        return 0;
    }
    value = impl_->RightValueOf(i);
    return 1;
}

int HvQuatFCurve::SetKeyValue(double parameter, KeySide side, double value, double tolerance)
{
    Writer const lock(*this);
    unsigned int i;
    if (impl_->IsReadOnly() || !impl_->HasComponent() || (side != Left && side != Right) ||
        !std::isfinite(value) || AreAnyValuesLockedInInterval(parameter, parameter, 0, 0) ||
        !impl_->FindKey(parameter, tolerance, i) || impl_->Curve().IsValueLocked(i)) {
        return 0;
    }
    return impl_->Curve().SetKeyValue(i, impl_->component, value);
}

unsigned int HvQuatFCurve::GetKeys(HvDoubleArray& parameters, HvDoubleArray& leftValues,
                                   HvDoubleArray& rightValues, int selectedOnly) const
{
    return CollectKeys(parameters, leftValues, rightValues, selectedOnly);
}

/// Gives this component of all keys and of the value when no keys the value map(degrees).
template <class Map>
int HvQuatFCurve::MapValues(Map const& map)
{
    HvQuatCurve& curve = impl_->Curve();
    unsigned int const n = impl_->NumKeys();
    bool isFinite = std::isfinite(map(impl_->ValueWhenNoKeys()));
    for (unsigned int i = 0; isFinite && i < n; ++i) {
        isFinite = std::isfinite(map(impl_->RightValueOf(i)));
    }
    if (!isFinite || impl_->IsReadOnly() || !impl_->HasComponent() ||
        AreAnyValuesLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    curve.SetValueWhenNoKeys(impl_->component, map(impl_->ValueWhenNoKeys()));
    for (unsigned int i = 0; i < n; ++i) {
        curve.SetKeyValue(i, impl_->component, map(impl_->RightValueOf(i)));
    }
    return 1;
}

int HvQuatFCurve::ShiftValues(double offset)
{
    Writer const lock(*this);
    return MapValues([offset](double degrees) { return degrees + offset; });
}

int HvQuatFCurve::ScaleAndShiftValues(double scale, double offset)
{
    if (!(std::fabs(scale) >= kSmallestValueScale)) {
        return 0;
    }
    Writer const lock(*this);
    return MapValues([scale, offset](double degrees) { return degrees * scale + offset; });
}

int HvQuatFCurve::MirrorValues()
{
    Writer const lock(*this);
    unsigned int const n = impl_->NumKeys();
    if (n == 0) {
        return impl_->IsReadOnly() ? 0 : 1;
    }
    double low = impl_->RightValueOf(0);
    double high = low;
    for (unsigned int i = 1; i < n; ++i) {
        low = std::min(low, impl_->RightValueOf(i));
        high = std::max(high, impl_->RightValueOf(i));
    }
    return MapValues([low, high](double degrees) { return low + high - degrees; });
}

int HvQuatFCurve::SmoothSequence(double from, double to, double const* kernel,
                                 unsigned int kernelSize)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly() || !impl_->HasComponent() ||
        AreAnyValuesLockedInInterval(from, to, 0, 0)) {
        return 0;
    }
    unsigned int first;
    unsigned int last;
    if (!impl_->GetKeyIndicesInClosedInterval(from, to, first, last)) {
        return 1;
    }
    HvDoubleArray values(last - first + 1);
    for (unsigned int i = first; i <= last; ++i) {
        values.Add(impl_->RightValueOf(i));
    }
    HvDoubleArray const smooth = HvSmooth_Values(values, kernel, kernelSize);
    for (unsigned int i = first; i <= last; ++i) {
        // A value that stays keeps its bits, and one that would be no number stays.
        double const degrees = smooth[i - first];
        if (std::isfinite(degrees) && degrees != values[i - first]) {
            impl_->Curve().SetKeyValue(i, impl_->component, degrees);
        }
    }
    return 1;
}
