// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evenly spaced keys in the standard curve.
//
// Each sample is a key that keeps the shape, made between its two neighbours, whose handles are
// frozen; making it reads one key further on either side. So the work is done in a window of a few
// keys that slides along the curve, and the cost of a sample does not grow with the number of keys:
//
//     done keys -> | previous, last sample, old keys up to two beyond the next sample | <- old keys

#include <hv/fcurve/HvStdFCurve.h>

#include <hv/fcurve/internal/HvCurveGuards.h>
#include <hv/fcurve/internal/HvStdFCurveImpl.h>
#include <hv/fcurve/internal/HvStdFCurveRollback.h>
#include <hv/fcurve/internal/resample_interval.h>
#include <hv/fcurve/internal/std_edit_checks.h>

#include <algorithm>
#include <cmath>

namespace {

/// Keys beyond a place that making a key there may read: its neighbour, and that one's neighbour.
constexpr unsigned int kKeysBeyond = 2;

void AppendKeys(HvAltDynArray<CFCStdKey>& keys, CFCStdKey const* added, unsigned int count)
{
    keys.Reserve(HvArrayCapacity_GrownSize(keys.Count(), count));
    for (unsigned int i = 0; i < count; ++i) {
        keys.Add(added[i]);
    }
}

/// The curve under work, seen through a window. It changes nothing of the source but, through the
/// owner, the user data of the keys that go.
class ResampleWindow {
public:
    ResampleWindow(HvStdFCurveImpl const& source, double from, HvBaseFCurve& owner)
        : source_(source), owner_(owner), window_(source.valueWhenNoKeys, source.FirstSegmentKind())
    {
        window_.defaultBezierTangentConstraint = source.defaultBezierTangentConstraint;
        unsigned int const below = source.NumKeysBelow(from);
        next_ = below > kKeysBeyond ? below - kKeysBeyond : 0;
        AppendKeys(done_, source.keys.Data(), next_);
    }

    /// Makes a key at x that keeps the shape and tells its index in the window.
    unsigned int MakeKey(double x)
    {
        ReachBeyond(x);
        isFinite_ = isFinite_ && HvStdEdit_AreFinite(window_.EvalInsideKeys(x));
        unsigned int index = 0;
        window_.CreateNonModifyingKey(x, index, owner_);
        return index;
    }
    /// Whether no value between two very large ones has overflowed.
    bool IsFinite() const { return isFinite_; }
    /// The same, but a key nearer than `tolerance` serves.
    unsigned int MakeKeyUnlessNear(double x, double tolerance)
    {
        ReachBeyond(x);
        unsigned int const nearest = window_.GetNearestKeyIndex(x);
        return std::fabs(window_.Parameter(nearest) - x) >= tolerance ? MakeKey(x) : nearest;
    }
    void RemoveBetween(unsigned int i, unsigned int j)
    {
        if (i <= j) {
            window_.RemoveBodyBetweenExistingKeys(window_.SegmentKind(i), i, j, owner_);
        }
    }
    /// The key nearest to x; keys before its predecessor leave the window.
    unsigned int MoveTo(double x)
    {
        unsigned int const i = window_.GetNearestKeyIndex(x);
        if (i < 2) {
            return i;
        }
        AppendKeys(done_, window_.keys.Data(), i - 1);
        window_.RemoveKeyRange(0, i - 2);
        return 1;
    }
    /// Puts all keys together, in place of those of `target`, which is the source.
    void Deliver(HvStdFCurveImpl& target)
    {
        AppendKeys(done_, window_.keys.Data(), window_.NumKeys());
        AppendKeys(done_, source_.keys.Data() + next_, source_.NumKeys() - next_);
        target.keys.Swap(done_);
        target.valueWhenNoKeys = window_.valueWhenNoKeys;
        target.defaultSegmentKind = window_.defaultSegmentKind;
    }

private:
    void ReachBeyond(double x)
    {
        unsigned int beyond = 0;
        unsigned int const numKeys = window_.NumKeys();
        while (beyond < kKeysBeyond && beyond < numKeys &&
               window_.Parameter(numKeys - 1 - beyond) > x) {
            ++beyond;
        }
        while (beyond < kKeysBeyond && next_ < source_.NumKeys()) {
            window_.keys.Add(source_.keys[next_]);
            beyond += source_.Parameter(next_) > x ? 1 : 0;
            ++next_;
        }
    }

    HvStdFCurveImpl const& source_;
    HvBaseFCurve& owner_;
    HvStdFCurveImpl window_;
    HvAltDynArray<CFCStdKey> done_{kKeyStoreCapacity};
    bool isFinite_ = true;
    unsigned int next_;  ///< the first old key that has not come into the window
};

}  // namespace

int HvStdFCurveImpl::ResampleSequence(double from, double to, double step, int keepExisting,
                                      int /*ignoreExtrapolation*/, HvBaseFCurve& curve)
{
    if (!CanHoldParameter(from) || !CanHoldParameter(to) ||
        !HvResample_IsInterval(from, to, step)) {
        return 0;
    }
    unsigned int const count = HvResample_CountSteps(from, to, step);

    ResampleWindow window(*this, from, curve);
    unsigned int i = window.MakeKey(from);
    for (unsigned int k = 1; k <= count; ++k) {
        double const x = from + step * k;
        unsigned int const j = window.MakeKeyUnlessNear(x, kHvResampleKeyDistance);
        if (!keepExisting) {
            window.RemoveBetween(i, j);
        }
        i = window.MoveTo(x);
    }
    if (from < to) {
        unsigned int const j = window.MakeKey(to);
        if (!keepExisting) {
            window.RemoveBetween(i, j);
        }
    }
    if (!window.IsFinite()) {
        return 0;
    }
    window.Deliver(*this);
    return 1;
}

int HvStdFCurve::ResampleSequence(double from, double to, double step, int keepExisting,
                                  int ignoreExtrapolation)
{
    HvCurveWriter const guard(*this);
    if (impl_->readOnly) {
        return 0;
    }
    HvResampleIntervals const intervals = HvResample_Fold(*impl_, from, to, ignoreExtrapolation);
    Rollback rollback(*this);
    for (unsigned int i = 0; i < intervals.count; ++i) {
        if (!impl_->ResampleSequence(intervals.from[i], intervals.to[i], step, keepExisting,
                                     ignoreExtrapolation, *this)) {
            return 0;
        }
    }
    return rollback.Commit();
}
