// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The quaternion curve kind: the parameter axis, and whole stretches resampled and reduced. Each
// works on a copy of the shown curve, so that a refusal or a failed allocation leaves it as it was.

#include <hv/fcurve/HvQuatFCurve.h>
#include <hv/fcurve/internal/HvQuatFCurveImpl.h>
#include <hv/fcurve/internal/HvUserDataMoves.h>
#include <hv/fcurve/internal/curve_rescale.h>
#include <hv/fcurve/internal/resample_interval.h>
#include <hv/foundation/HvAltDynArray.h>
#include <hv/foundation/HvBoolArray.h>

#include <algorithm>
#include <cmath>

namespace {

/// Angles of one rotation on two ways differ by less than this, degrees.
constexpr double kRotationNoiseDegrees = 1e-9;
/// Of a list of keys in the making.
constexpr unsigned int kKeyListCapacity = 16;

using KeyList = HvAltDynArray<HvQuatKey>;

/// Drops the user data of keys that `keys` has no more.
void DropUserData(HvBaseFCurve& curve, HvQuatCurve const& old, HvQuatCurve const& keys)
{
    for (unsigned int i = 0; curve.HasUserData() && i < old.GetNumKeys(); ++i) {
        if (keys.FindKey(old.GetKeyTime(i), 0.0) == HvQuatCurve::kNoKey) {
            curve.RemoveKeyUserData(old.GetKeyTime(i));
        }
    }
}

// Resampling.

/// A key of the rotation that `shape` has at x.
HvQuatKey KeyAt(HvQuatFCurveImpl const& shape, double x)
{
    return HvQuatKey(x, shape.AnglesHeldAt(x), 0.0f, 0.0f, 0.0f, 0);
}

/// The keys of `old` with samples of `shape` at `from`, every `step` and `to`; those between them
/// go unless `keepExisting`. Throws std::bad_alloc before it starts for more samples than an array
/// holds.
KeyList Resampled(HvQuatFCurveImpl const& shape, HvQuatFCurveImpl const& old, double from,
                  double to, double step, bool keepExisting)
{
    unsigned int const count = HvResample_CountSteps(from, to, step);
    KeyList keys(kKeyListCapacity);
    for (unsigned int i = 0; i < old.NumKeys(); ++i) {
        double const p = old.Parameter(i);
        if (keepExisting || p < from || p > to) {
            keys.Add(old.Curve().GetKey(i));
        }
    }
    auto const addExact = [&](double x) {
        unsigned int i;
        keys.Add(old.FindKey(x, 0, i) ? old.Curve().GetKey(i) : KeyAt(shape, x));
    };
    addExact(from);
    double before = from;
    for (unsigned int k = 1; k <= count; ++k) {
        double const x = from + step * k;
        if (x - before >= kHvResampleKeyDistance && to - x >= kHvResampleKeyDistance) {
            unsigned int i;
            bool const isKey = old.FindKey(x, kHvResampleKeyDistance, i) != 0 &&
                               std::fabs(old.Parameter(i) - x) < kHvResampleKeyDistance;
            keys.Add(isKey ? old.Curve().GetKey(i) : KeyAt(shape, x));
            before = x;
        }
    }
    addExact(to);
    // The old keys that serve as samples are there twice when they are kept.
    std::sort(keys.begin(), keys.end());
    auto const end =
        std::unique(keys.begin(), keys.end(),
                    [](HvQuatKey const& a, HvQuatKey const& b) { return a.time == b.time; });
    keys.Chop(static_cast<unsigned int>(end - keys.begin()));
    return keys;
}

// Reducing.

/// The largest range that a component has over the keys `first` to `last`, degrees.
double LargestRange(HvQuatCurve const& curve, unsigned int first, unsigned int last)
{
    double range = 0;
    for (unsigned int c = 0; c < HvQuatFCurveImpl::kNumComponents; ++c) {
        double low = curve.GetKeyValue(first, c);
        double high = low;
        for (unsigned int i = first + 1; i <= last; ++i) {
            low = std::min(low, curve.GetKeyValue(i, c));
            high = std::max(high, curve.GetKeyValue(i, c));
        }
        range = std::max(range, high - low);
    }
    return range;
}

/// How far a component of the two curves lies apart at t, degrees, at most; NaN when one is.
double Distance(HvQuatCurve const& a, HvQuatCurve const& b, double t)
{
    double distance = 0;
    for (unsigned int c = 0; c < HvQuatFCurveImpl::kNumComponents; ++c) {
        double const d = std::fabs(a.Eval(t, c) - b.Eval(t, c));
        distance = d <= distance ? distance : d;
    }
    return distance;
}

bool ShapesThePath(HvQuatKey const& key)
{
    return key.parameterLocked || key.valueLocked || key.tension != 0 || key.continuity != 0 ||
           key.bias != 0 || key.spins != 0;
}

/// Drops keys between `first` and `last`: starts with those that must stay, and takes back the
/// worst of each gap until the curve through the kept ones is everywhere near enough.
///
/// Cost: one pass over the keys for each time that gaps are divided, of which there are as many as
/// a tree over the kept keys is deep, unless every gap has its worst key at an end.
void ReduceBetween(HvQuatCurve& curve, unsigned int first, unsigned int last, double allowed)
{
    unsigned int const n = curve.GetNumKeys();
    HvBoolArray kept(1, n);
    for (unsigned int i = first + 1; i < last; ++i) {
        kept[i] = ShapesThePath(curve.GetKey(i)) ? 1 : 0;
    }
    KeyList keys(n);
    HvQuatCurve trial(curve);
    for (bool isNear = false; !isNear;) {
        keys.Chop(0);
        for (unsigned int i = 0; i < n; ++i) {
            if (kept[i]) {
                keys.Add(curve.GetKey(i));
            }
        }
        trial.SetKeys(keys.Data(), keys.Count());
        isNear = true;
        for (unsigned int i = first; i < last;) {
            unsigned int worst = 0;
            double worstDistance = allowed;
            auto const look = [&](double t, unsigned int key) {
                double const distance = Distance(curve, trial, t);
                if (!(distance <= worstDistance)) {
                    worstDistance = distance;
                    worst = key;
                }
            };
            unsigned int k = i + 1;
            for (; !kept[k]; ++k) {
                look(0.5 * curve.GetKeyTime(k - 1) + 0.5 * curve.GetKeyTime(k), k);
                look(curve.GetKeyTime(k), k);
            }
            if (k != i + 1) {
                look(0.5 * curve.GetKeyTime(k - 1) + 0.5 * curve.GetKeyTime(k), k - 1);
            }
            if (worst != 0) {
                kept[worst] = 1;
                isNear = false;
            }
            i = k;
        }
    }
    curve.SetKeys(keys.Data(), keys.Count());
}

}  // namespace

// The axis.

/// Changes the parameters of all keys by edit(copy), which lets the user data follow when nothing
/// stands in the way.
template <class Edit>
int HvQuatFCurve::MoveParameters(Edit const& edit)
{
    if (impl_->IsReadOnly() ||
        AreAnyParametersLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0)) {
        return 0;
    }
    HvQuatCurve work(impl_->Curve());
    if (!edit(work) || !work.IsValid()) {
        return 0;
    }
    impl_->Curve().Swap(work);
    return 1;
}

int HvQuatFCurve::ShiftParameters(double offset)
{
    Writer const lock(*this);
    return MoveParameters([&](HvQuatCurve& work) {
        return work.Shift(offset) && work.IsValid() && TranslateAllKeyUserData(offset);
    });
}

int HvQuatFCurve::ScaleParameterAxis(double scale)
{
    Writer const lock(*this);
    return MoveParameters([&](HvQuatCurve& work) {
        return work.Scale(scale) && work.IsValid() &&
               (work.GetNumKeys() == 0 || ScaleAllKeyUserData(scale));
    });
}

/// Mirrors the keys `first` to `last` of the copy `work` about the middle of their range, and lets
/// the user data follow.
int HvQuatFCurve::MirrorKeys(HvQuatCurve& work, unsigned int first, unsigned int last)
{
    // The ends change places exactly, whatever the sum rounds to.
    double const a = work.GetKeyTime(first);
    double const b = work.GetKeyTime(last);
    KeyList keys(last - first + 1);
    HvUserDataMoves moves(*this);
    for (unsigned int i = last + 1; i-- != first;) {
        HvQuatKey key = work.GetKey(i);
        double const old = key.time;
        key.time = i == first ? b : i == last ? a : a + b - old;
        key.bias = -key.bias;
        // What a segment turns stays with it; it starts at its other key now.
        key.spins = work.GetKey(i == first ? last : i - 1).spins;
        keys.Add(key);
        moves.Add(old, key.time);
    }
    return work.ReplaceKeys(first, keys.Data(), keys.Count()) && moves.Apply();
}

int HvQuatFCurve::MirrorParameters()
{
    Writer const lock(*this);
    return MoveParameters([&](HvQuatCurve& work) {
        unsigned int const n = work.GetNumKeys();
        return n == 0 ? 1 : MirrorKeys(work, 0, n - 1);
    });
}

/// Turns the stretch from one parameter to another, which get keys, round in its place. The caller
/// has asked for locks.
int HvQuatFCurve::MirrorStretch(double from, double to)
{
    Writer const lock(*this);
    if (!std::isfinite(from) || !std::isfinite(to)) {
        return 0;
    }
    HvQuatCurve work(impl_->Curve());
    for (double const end : {from, to}) {
        if (work.FindKey(end, 0.0) == HvQuatCurve::kNoKey) {
            work.SetKey(KeyAt(*impl_, end), 0.0);
        }
    }
    if (from < to && !MirrorKeys(work, work.FindKey(from, 0.0), work.FindKey(to, 0.0))) {
        return 0;
    }
    impl_->Curve().Swap(work);
    return 1;
}

int HvQuatFCurve::ScaleAndOffsetParameters(double from, double to, double pivot, double scale,
                                           double offset, int rippleLeft, int rippleRight,
                                           RegionHandle handle, int selectedOnly)
{
    Writer const lock(*this);
    HvCurveRescale const rescale{from,       to,          pivot,  scale,       offset,
                                 rippleLeft, rippleRight, handle, selectedOnly};
    if (impl_->IsReadOnly() ||
        AreAnyParametersLockedInInterval(-kHvMaxDouble, kHvMaxDouble, 0, 0) ||
        !rescale.IsPossible()) {
        return 0;
    }
    if (rescale.IsIdentity() || impl_->NumKeys() == 0) {
        return 1;
    }
    HvQuatFCurve work(*this);
    if (!rescale.ApplyTo(work)) {
        return 0;
    }
    Exchange(work);
    return 1;
}

// Whole stretches.

int HvQuatFCurve::ResampleSequence(double from, double to, double step, int keepExisting,
                                   int ignoreExtrapolation)
{
    Writer const lock(*this);
    if (impl_->IsReadOnly()) {
        return 0;
    }
    HvResampleIntervals const intervals = HvResample_Fold(*impl_, from, to, ignoreExtrapolation);
    HvQuatFCurveImpl work(*impl_);
    for (unsigned int i = 0; i < intervals.count; ++i) {
        if (!HvResample_IsInterval(intervals.from[i], intervals.to[i], step)) {
            return 0;
        }
        KeyList const keys =
            Resampled(*impl_, work, intervals.from[i], intervals.to[i], step, keepExisting != 0);
        work.Curve().SetKeys(keys.Data(), keys.Count());
    }
    DropUserData(*this, impl_->Curve(), work.Curve());
    impl_->Curve().Swap(work.Curve());
    return 1;
}

unsigned int HvQuatFCurve::ReduceNumKeys(double from, double to, double tolerance)
{
    Writer const lock(*this);
    unsigned int const before = impl_->NumKeys();
    if (impl_->IsReadOnly() || before == 0 || !std::isfinite(to - from) || !(from <= to) ||
        !(tolerance >= 0)) {
        return 0;
    }
    HvQuatCurve curve(impl_->Curve());
    for (double const end : {from, to}) {
        if (curve.FindKey(end, 0.0) == HvQuatCurve::kNoKey) {
            curve.SetKey(KeyAt(*impl_, end), 0.0);
        }
    }
    unsigned int const first = curve.FindKey(from, 0.0);
    unsigned int const last = curve.FindKey(to, 0.0);
    if (first + 1 < last) {
        double const allowed = tolerance * LargestRange(curve, first, last);
        ReduceBetween(curve, first, last, std::max(allowed, kRotationNoiseDegrees));
    }
    DropUserData(*this, impl_->Curve(), curve);
    impl_->Curve().Swap(curve);
    return before > impl_->NumKeys() ? before - impl_->NumKeys() : 0;
}
