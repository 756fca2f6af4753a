// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Resampling and reducing of curves whose keys hold one value. Included by the one source file of
// each kind that instantiates it.

#ifndef HV_FCURVE_INTERNAL_CFCSINGLEVALUEIMPL_RESHAPE_INL
#define HV_FCURVE_INTERNAL_CFCSINGLEVALUEIMPL_RESHAPE_INL

#include <hv/fcurve/internal/CFCSingleValueImpl.h>
#include <hv/fcurve/internal/resample_interval.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>

// Resampling. The new keys are put together in a store of their own, which is exchanged for the
// curve's at the end.

/// The keys of a curve from left to right, old ones and samples.
template <class Impl>
class CFCSingleValueResampling {
public:
    using Key = typename Impl::Key;

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

template <class T, class K, class S>
int CFCSingleValueImpl<T, K, S>::ResampleSequence(double from, double to, double step,
                                                  int keepExisting, HvBaseFCurve& curve)
{
    if (!HvResample_IsInterval(from, to, step)) {
        return 0;
    }
    unsigned int const count = HvResample_CountSteps(from, to, step);
    CFCSingleValueResampling<CFCSingleValueImpl> resampling(*this, keepExisting != 0);
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
    S::Swap(resampling.Result());
    return 1;
}

// Reducing.

template <class T, class K, class S>
unsigned int CFCSingleValueImpl<T, K, S>::ReduceNumKeys(double from, double to, double tolerance,
                                                        HvBaseFCurve& curve)
{
    auto const isFiniteAt = [&](double x) {
        return std::isfinite(static_cast<double>(ValueHeldAt(x)));
    };
    if (this->NumKeys() == 0 || !std::isfinite(to - from) || !(from <= to) || !(tolerance >= 0) ||
        !isFiniteAt(from) || !isFiniteAt(to)) {
        return 0;
    }
    unsigned int const before = this->NumKeys();
    unsigned int i = 0;
    unsigned int j = 0;
    CreateNonModifyingKey(from, i, curve);
    CreateNonModifyingKey(to, j, curve);
    S::ReduceNumKeys(i, j, tolerance, curve);
    return before > this->NumKeys() ? before - this->NumKeys() : 0;
}

#endif
