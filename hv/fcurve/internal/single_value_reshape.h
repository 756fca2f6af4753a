// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Resampling, smoothing and reducing of curves whose keys hold one value: boolean, integer, raw.
// New keys are put together in a store of their own, which is exchanged for the curve's at the end.

#ifndef HV_FCURVE_INTERNAL_SINGLE_VALUE_RESHAPE_H
#define HV_FCURVE_INTERNAL_SINGLE_VALUE_RESHAPE_H

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/reduce_lines.h>
#include <hv/fcurve/internal/resample_interval.h>
#include <hv/fcurve/internal/smooth_values.h>
#include <hv/fcurve/internal/stepped_value.h>
#include <hv/foundation/HvBoolArray.h>

#include <algorithm>
#include <cmath>

/// The value type of an implementation.
template <class Impl>
using CFCValueOf = decltype(Impl::valueWhenNoKeys);

// Resampling.

/// The keys of a curve from left to right, old ones and samples.
template <class Impl>
class CFCSingleValueResampling {
public:
    using Key = CFCSingleValueKey<CFCValueOf<Impl>>;

    CFCSingleValueResampling(Impl const& impl, bool keepExisting)
        : impl_(impl), keepExisting_(keepExisting)
    {
        result_.ApplyLeftValue(impl.NumKeys() == 0 ? impl.valueWhenNoKeys : impl.LeftValueOf(0));
    }

    /// Starts with a key at `from`; the old keys before it stay.
    void Begin(double from)
    {
        while (next_ < impl_.NumKeys() && impl_.Parameter(next_) < from) {
            TakeNext();
        }
        AddOrTake(from);
    }
    /// A key at x, past the last one; an old one nearer than kHvResampleKeyDistance serves, the
    /// left one on a tie.
    void Sample(double x)
    {
        unsigned int const end = NumOldNotAbove(x);
        bool const hasOldLeft = end > next_;
        double const left = x - (hasOldLeft ? impl_.Parameter(end - 1) : LastParameter());
        bool const rightIsNearer = end < impl_.NumKeys() && impl_.Parameter(end) - x < left;
        double const distance = rightIsNearer ? impl_.Parameter(end) - x : std::fabs(left);
        if (distance >= kHvResampleKeyDistance) {
            PassUpTo(end);
            Add(x);
        } else if (rightIsNearer) {
            PassUpTo(end);
            TakeNext();
        } else if (hasOldLeft) {
            PassUpTo(end - 1);
            TakeNext();
        }
    }
    /// Ends with a key at `to`; the old keys behind it stay.
    void End(double to)
    {
        if (to > LastParameter()) {
            unsigned int const end = NumOldNotAbove(to);
            PassUpTo(end > next_ && impl_.Parameter(end - 1) == to ? end - 1 : end);
            AddOrTake(to);
        } else if (to < LastParameter()) {
            // The last sample fell on an old key just behind.
            result_.InsertKey(result_.keys.Count() - 1, NewKey(to), 0);
        }
        while (next_ < impl_.NumKeys()) {
            TakeNext();
        }
    }
    /// Whether no value between two very large ones has overflowed.
    bool HasFiniteValues() const
    {
        return std::all_of(result_.keys.begin(), result_.keys.end(), [](Key const& key) {
            return std::isfinite(static_cast<double>(key.value));
        });
    }
    typename Impl::Store& Result() { return result_; }
    /// The parameters of the old keys that go.
    HvDoubleArray const& Dropped() const { return dropped_; }

private:
    double LastParameter() const { return result_.keys[result_.keys.Count() - 1].parameter; }
    Key NewKey(double x) const { return Key{x, impl_.ValueHeldAt(x), 0}; }
    void Add(double x) { result_.InsertKey(result_.keys.Count(), NewKey(x), 0); }
    void TakeNext()
    {
        result_.InsertKey(result_.keys.Count(), impl_.keys[next_], impl_.ConstraintWord(next_));
        ++next_;
    }
    void AddOrTake(double x)
    {
        if (next_ < impl_.NumKeys() && impl_.Parameter(next_) == x) {
            TakeNext();
        } else {
            Add(x);
        }
    }
    void PassUpTo(unsigned int end)
    {
        while (next_ < end) {
            if (keepExisting_) {
                TakeNext();
            } else {
                dropped_.Add(impl_.Parameter(next_++));
            }
        }
    }
    /// Old keys not above x, those that have been passed included.
    unsigned int NumOldNotAbove(double x) const
    {
        unsigned int end = next_;
        while (end < impl_.NumKeys() && impl_.Parameter(end) <= x) {
            ++end;
        }
        return end;
    }

    Impl const& impl_;
    bool keepExisting_;
    unsigned int next_ = 0;  ///< the first old key that has not been passed
    typename Impl::Store result_;
    HvDoubleArray dropped_;
};

/// Keys at `from`, each `step` on and at `to` with the values that the curve has there; keys
/// between them go unless `keepExisting`. 0 for an interval or a step that gives none. Throws
/// std::bad_alloc before it starts when there are more samples than an array holds. Cost: one pass.
template <class Impl>
int CFCSingleValue_Resample(Impl& impl, double from, double to, double step, int keepExisting,
                            HvBaseFCurve& curve)
{
    if (!HvResample_IsInterval(from, to, step)) {
        return 0;
    }
    unsigned int const count = HvResample_CountSteps(from, to, step);
    CFCSingleValueResampling<Impl> resampling(impl, keepExisting != 0);
    resampling.Begin(from);
    for (unsigned int k = 1; k <= count; ++k) {
        resampling.Sample(from + step * k);
    }
    resampling.End(to);
    if (!resampling.HasFiniteValues()) {
        return 0;
    }
    if (curve.HasUserData()) {
        for (double const parameter : resampling.Dropped()) {
            curve.RemoveKeyUserData(parameter);
        }
    }
    typename Impl::Store& store = impl;
    store.Swap(resampling.Result());
    return 1;
}

// Reducing.

/// Makes keys at both ends and drops those between that add less than `tolerance` times the range
/// of the values: of a polyline those that lie on lines, of a stepped curve those whose step is
/// that small. Returns by how much the number of keys fell. Cost: one pass.
template <class Impl>
unsigned int CFCSingleValue_Reduce(Impl& impl, double from, double to, double tolerance,
                                   HvBaseFCurve& curve)
{
    auto const isFiniteAt = [&](double x) {
        return std::isfinite(static_cast<double>(impl.ValueHeldAt(x)));
    };
    if (impl.NumKeys() == 0 || !std::isfinite(to - from) || !(from <= to) || !(tolerance >= 0) ||
        !isFiniteAt(from) || !isFiniteAt(to)) {
        return 0;
    }
    unsigned int const before = impl.NumKeys();
    unsigned int i = 0;
    unsigned int j = 0;
    impl.CreateNonModifyingKey(from, i, curve);
    impl.CreateNonModifyingKey(to, j, curve);
    if (i + 1 < j) {
        HvBoolArray dropped(0, impl.NumKeys());
        double const allowed = tolerance * HvReduce_ValueRange(impl, i, j);
        auto const drop = [&](unsigned int k) { dropped[k] = 1; };
        if (impl.SegmentKindOf(0) == HvBaseFCurve::LinearSegment) {
            HvReduce_DropKeysOnLines(impl, i, j, allowed, drop);
        } else {
            HvReduce_DropKeysOnSteps(impl, i, j, allowed, drop);
        }

        typename Impl::Store result(impl);
        unsigned int kept = 0;
        for (unsigned int k = 0; k < impl.NumKeys(); ++k) {
            if (!dropped[k]) {
                result.keys[kept] = impl.keys[k];
                result.SetConstraintWord(kept++, impl.ConstraintWord(k));
            }
        }
        if (kept < impl.NumKeys()) {
            result.RemoveKeyRange(kept, impl.NumKeys() - 1);
            result.ReleaseSpareKeys();
            for (unsigned int k = 0; curve.HasUserData() && k < impl.NumKeys(); ++k) {
                if (dropped[k]) {
                    curve.RemoveKeyUserData(impl.Parameter(k));
                }
            }
            typename Impl::Store& store = impl;
            store.Swap(result);
        }
    }
    return before > impl.NumKeys() ? before - impl.NumKeys() : 0;
}

// Smoothing.

/// The value nearest to a number.
inline int CFCSingleValue_Nearest(int, double number)
{
    return CFCSteppedValue_Rounded(number);
}
inline double CFCSingleValue_Nearest(double, double number)
{
    return number;
}

/// Convolves the values of the keys of [from, to] with a kernel. A value that would be no finite
/// number, or is locked, stays.
template <class Impl>
void CFCSingleValue_Smooth(Impl& impl, double from, double to, double const* kernel,
                           unsigned int kernelSize)
{
    unsigned int i;
    unsigned int j;
    if (impl.NumKeys() == 0 || !impl.GetKeyIndicesInClosedInterval(from, to, i, j)) {
        return;
    }
    HvDoubleArray values(j - i + 1);
    for (unsigned int k = i; k <= j; ++k) {
        values.Add(static_cast<double>(impl.keys[k].value));
    }
    values = HvSmooth_Values(values, kernel, kernelSize);
    for (unsigned int k = i; k <= j; ++k) {
        auto const old = impl.keys[k].value;
        auto const value = CFCSingleValue_Nearest(old, values[k - i]);
        // A first key that keeps its value leaves the value before it alone.
        if (std::isfinite(values[k - i]) && value != old) {
            impl.SetValOnExistingKey(k, value);
        }
    }
}

#endif
