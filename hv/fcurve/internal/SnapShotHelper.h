// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Snapshots of curves whose keys hold one value: boolean, integer, raw.
//
// What the curve shows of itself beyond its keys, cycles included, becomes keys. Where a polyline
// jumps from one cycle to the next, which one key cannot hold, a key stands as close before the
// border as numbers allow.

#ifndef HV_FCURVE_INTERNAL_SNAPSHOTHELPER_H
#define HV_FCURVE_INTERNAL_SNAPSHOTHELPER_H

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/cycle_span.h>
#include <hv/fcurve/internal/stepped_value.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <limits>

/// Whether a snapshot from one to the other can be made.
inline bool HvSnapShot_IsInterval(double from, double to)
{
    return std::isfinite(to - from);
}

/// A key's value in cycle c of the relative cycle.
template <class T>
T CFCSnapShot_InCycle(T value, T first, T last, double c)
{
    return CFCSteppedValue_Narrow<T>(value +
                                     HvSaturate_To<int>(c) * CFCSteppedValue_Offset(first, last));
}
inline double CFCSnapShot_InCycle(double value, double first, double last, double c)
{
    return value + HvSaturate_To<int>(c) * (last - first);
}

/// Collects the keys of a snapshot and where their user data come from.
template <class Impl>
class CFCSnapShotKeys {
public:
    using Value = decltype(Impl::valueWhenNoKeys);

    CFCSnapShotKeys(Impl const& source, double from, double to)
        : source_(source), from_(from), to_(to)
    {
    }

    /// False when the value at an end is not finite.
    bool Collect()
    {
        Value const first = source_.EvalRightUsingExtrapolationMethod(from_);
        Value const last = source_.EvalRightUsingExtrapolationMethod(to_);
        if (!std::isfinite(static_cast<double>(first)) ||
            !std::isfinite(static_cast<double>(last))) {
            return false;
        }
        unsigned int const n = source_.NumKeys();
        result_.ApplyLeftValue(static_cast<Value>(source_.EvalLeftUsingExtrapolationMethod(from_)));
        if (n == 0) {
            Add(from_, source_.valueWhenNoKeys, 0);
        } else if (source_.Cycles()) {
            HvCycleSpan const span =
                HvCycleSpan_Of(from_, to_, source_.FirstParameter(), source_.LastParameter(), n);
            for (double c = span.first; c <= span.last; ++c) {
                AddCycle(c, span);
            }
        } else {
            for (unsigned int k = 0; k < n; ++k) {
                AddOldKey(k, source_.Parameter(k), source_.keys[k].value,
                          source_.ConstraintWord(k));
            }
            AddStepBeyondKeys();
        }
        AddEnds(first, last);
        return true;
    }

    typename Impl::Store& Result() { return result_; }
    /// For the key at dataTo[i] stand the user data of the source's key at dataFrom[i].
    HvDoubleArray const& DataFrom() const { return dataFrom_; }
    HvDoubleArray const& DataTo() const { return dataTo_; }

private:
    static constexpr bool kIsPolyline =
        Impl::Store::SegmentKindOf(0) == HvBaseFCurve::LinearSegment;

    /// Cycle number c. The key where two cycles meet is the last one of the earlier cycle with the
    /// value and the user data of the first one of the later.
    void AddCycle(double c, HvCycleSpan const& span)
    {
        unsigned int const last = source_.NumKeys() - 1;
        double const shift = c * (source_.LastParameter() - source_.FirstParameter());
        if (c != span.first) {
            AddBeforeBorder(source_.FirstParameter() + shift, c);
        }
        for (unsigned int k = 0; k <= last; ++k) {
            if (k == last && c < span.last) {
                return;
            }
            unsigned int const wordOf = k == 0 && c != span.first ? last : k;
            AddOldKey(k, source_.Parameter(k) + shift, InCycle(source_.keys[k].value, c),
                      source_.ConstraintWord(wordOf));
        }
    }
    Value InCycle(Value value, double c) const
    {
        bool const rises = source_.extrapolation == HvBaseFCurve::RelativeCycleExtrapolation;
        unsigned int const last = source_.NumKeys() - 1;
        return rises
                   ? CFCSnapShot_InCycle(value, source_.keys[0].value, source_.keys[last].value, c)
                   : value;
    }
    /// Lets a polyline reach the end value of the cycle before number c, when it jumps there.
    void AddBeforeBorder(double border, double c)
    {
        Value const end = InCycle(source_.keys[source_.NumKeys() - 1].value, c - 1);
        if (kIsPolyline && end != InCycle(source_.keys[0].value, c)) {
            double const p = std::nextafter(border, -std::numeric_limits<double>::infinity());
            if (from_ < p && p < to_) {
                Add(p, end, 0);
            }
        }
    }
    /// Linear extrapolation, which an archive may give a stepped curve, steps just behind the last
    /// key.
    void AddStepBeyondKeys()
    {
        double const p = std::nextafter(std::max(from_, source_.LastParameter()),
                                        std::numeric_limits<double>::infinity());
        if (!kIsPolyline && p < to_) {
            Value const value = source_.EvalRightUsingExtrapolationMethod(p);
            if (result_.keys.Count() != 0 && result_.RightValueOf(LastIndex()) != value) {
                Add(p, value, 0);
            }
        }
    }
    /// Keys at both ends with the values there.
    void AddEnds(Value first, Value last)
    {
        if (result_.keys.Count() == 0 || result_.keys[0].parameter != from_) {
            result_.InsertKey(0, Key{from_, isHolding_ ? held_ : first, 0}, 0);
        }
        bool const hasLast = result_.keys[LastIndex()].parameter == to_;
        if (hasLast && kIsPolyline && result_.keys[LastIndex()].value != last) {
            double const p = std::nextafter(to_, -std::numeric_limits<double>::infinity());
            if (LastIndex() != 0 && result_.keys[LastIndex() - 1].parameter < p) {
                result_.InsertKey(LastIndex(), Key{p, result_.keys[LastIndex()].value, 0}, 0);
            }
        }
        if (!hasLast) {
            Add(to_, last, 0);
        }
        result_.keys[LastIndex()].value = last;
    }
    /// A key that the source has, moved to p; what lies outside is left out.
    void AddOldKey(unsigned int k, double p, Value value, unsigned short word)
    {
        if (p < from_ && !kIsPolyline && source_.Cycles()) {
            isHolding_ = true;
            held_ = value;
        }
        bool const follows = result_.keys.Count() == 0 || p > result_.keys[LastIndex()].parameter;
        if (from_ <= p && p <= to_ && follows) {
            Add(p, value, word);
            result_.keys[LastIndex()].flag = source_.keys[k].flag;
            dataFrom_.Add(source_.Parameter(k));
            dataTo_.Add(p);
        }
    }
    void Add(double p, Value value, unsigned short word)
    {
        result_.InsertKey(result_.keys.Count(), Key{p, value, 0}, word);
    }
    unsigned int LastIndex() const { return result_.keys.Count() - 1; }

    using Key = CFCSingleValueKey<Value>;

    Impl const& source_;
    double from_;
    double to_;
    typename Impl::Store result_;
    // The value of the key before `from_` in a cycle. Folding may take a parameter for one just
    // before a key, which costs an evaluation one point, but would cost the snapshot a whole step.
    bool isHolding_ = false;
    Value held_{};
    HvDoubleArray dataFrom_;
    HvDoubleArray dataTo_;
};

/// Gives the keys of `copy` the user data that CFCSnapShotKeys has found for them. `copy` holds
/// those of all old keys, at their old places from `first` to `last`.
template <class Impl>
void CFCSnapShot_PlaceUserData(HvBaseFCurve& copy, CFCSnapShotKeys<Impl> const& keys,
                               HvDoubleArray const& oldParameters)
{
    HvDoubleArray const& from = keys.DataFrom();
    HvDoubleArray const& to = keys.DataTo();
    double const first = oldParameters[0];
    double const last = oldParameters[oldParameters.Size() - 1];
    // Other cycles lie outside of the old keys; only on the border an old place gets new data, and
    // that when it has been read.
    for (int const onBorder : {0, 1}) {
        for (unsigned int i = 0; i < from.Size(); ++i) {
            bool const isOldPlace = first <= to[i] && to[i] <= last;
            if (from[i] != to[i] && isOldPlace == (onBorder != 0) && copy.HasUserData(from[i])) {
                copy.CopyKeyUserData(copy, from[i], to[i]);
            }
        }
    }
    for (double const p : oldParameters) {
        if (!copy.IsKeyParameter(p, 0)) {
            copy.RemoveKeyUserData(p);
        }
    }
}

/// Makes `copy`, a copy of a curve that nobody else knows, the snapshot of [from, to], ends in any
/// order: on this interval it evaluates as the curve does. `impl` is the copy's implementation.
/// `method` becomes its extrapolation when it is one. False, with the copy as it was, when the
/// value at an end is not finite.
///
/// Throws std::bad_alloc when the cycles have more keys than an array can hold. Cost: keys of the
/// snapshot.
template <class Curve, class Impl>
bool SnapShotHelper(Curve& copy, Impl& impl, double from, double to,
                    HvBaseFCurve::ExtrapolationMethod method)
{
    CFCSnapShotKeys<Impl> keys(impl, std::min(from, to), std::max(from, to));
    if (!keys.Collect()) {
        return false;
    }
    HvDoubleArray oldParameters;
    copy.GetAllKeyParameters(oldParameters);
    typename Impl::Store& store = impl;
    store.Swap(keys.Result());
    if (method >= HvBaseFCurve::ConstantExtrapolation &&
        method <= HvBaseFCurve::RelativeCycleExtrapolation) {
        impl.extrapolation = static_cast<unsigned char>(method);
    }
    if (oldParameters.Size() != 0 && copy.HasUserData()) {
        CFCSnapShot_PlaceUserData(copy, keys, oldParameters);
    }
    return true;
}

#endif
