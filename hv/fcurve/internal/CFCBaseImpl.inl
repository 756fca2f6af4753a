// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life, lookup and folding of CFCBaseImpl. Included by the one source file of each kind that
// instantiates it.

#ifndef HV_FCURVE_INTERNAL_CFCBASEIMPL_INL
#define HV_FCURVE_INTERNAL_CFCBASEIMPL_INL

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/cycle_span.h>
#include <hv/platform/thread_local_slots.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

/// Fewer keys are searched by bisection alone: that costs no more than the window's comparisons.
constexpr unsigned int kFewestKeysForWindow = 12;
/// Keys of the window on either side of the hint: enough for steps of up to two keys.
constexpr unsigned int kWindowReach = 2;

// Life.

template <class T, class K, class S>
CFCBaseImpl<T, K, S>::CFCBaseImpl(T whenNoKeys)
    : valueWhenNoKeys(whenNoKeys), hintSlot(XQTlsAlloc())
{
}

template <class T, class K, class S>
CFCBaseImpl<T, K, S>::CFCBaseImpl(CFCBaseImpl const& other)
    : S(other), HvAllocated(), valueWhenNoKeys(other.valueWhenNoKeys), lowerClamp(other.lowerClamp),
      upperClamp(other.upperClamp), hintSlot(XQTlsAlloc()), extrapolation(other.extrapolation),
      defaultBezierTangentConstraint(other.defaultBezierTangentConstraint),
      readOnly(other.readOnly), timeCurve(other.timeCurve), selected(other.selected)
{
}

template <class T, class K, class S>
CFCBaseImpl<T, K, S>& CFCBaseImpl<T, K, S>::operator=(CFCBaseImpl const& other)
{
    if (this != &other) {
        S store(other);
        S::Swap(store);
        valueWhenNoKeys = other.valueWhenNoKeys;
        lowerClamp = other.lowerClamp;
        upperClamp = other.upperClamp;
        extrapolation = other.extrapolation;
        defaultBezierTangentConstraint = other.defaultBezierTangentConstraint;
        readOnly = other.readOnly;
        timeCurve = other.timeCurve;
        selected = other.selected;
    }
    return *this;
}

template <class T, class K, class S>
CFCBaseImpl<T, K, S>::~CFCBaseImpl()
{
    XQTlsFree(hintSlot);
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::Swap(CFCBaseImpl& other) noexcept
{
    S::Swap(other);
    std::swap(valueWhenNoKeys, other.valueWhenNoKeys);
    std::swap(lowerClamp, other.lowerClamp);
    std::swap(upperClamp, other.upperClamp);
    std::swap(extrapolation, other.extrapolation);
    std::swap(defaultBezierTangentConstraint, other.defaultBezierTangentConstraint);
    std::swap(readOnly, other.readOnly);
    std::swap(timeCurve, other.timeCurve);
    std::swap(selected, other.selected);
}

template <class T, class K, class S>
bool CFCBaseImpl<T, K, S>::Cycles() const
{
    return (extrapolation == HvBaseFCurve::CycleExtrapolation ||
            extrapolation == HvBaseFCurve::RelativeCycleExtrapolation) &&
           NumKeys() >= 2;
}

// Finding keys. Comparisons are written so that a NaN ends up before the first key.

template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::LocateParameter(double p, int& exact) const
{
    // The hint is the index of a key; a fresh slot reads null, which is key 0. A stale one costs a
    // bisection and nothing else.
    auto const hint =
        static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(XQTlsGetValue(hintSlot)));
    Location const found = Locate(p, hint);
    if (found.hint != hint) {
        XQTlsSetValue(hintSlot, reinterpret_cast<void*>(static_cast<std::uintptr_t>(found.hint)));
    }
    exact = found.exact ? 1 : 0;
    return found.count;
}

template <class T, class K, class S>
typename CFCBaseImpl<T, K, S>::Location CFCBaseImpl<T, K, S>::Locate(double p,
                                                                     unsigned int hint) const
{
    if (!(Parameter(0) < p)) {
        bool const exact = Parameter(0) == p;
        return {exact ? 1u : 0u, exact, 0};
    }
    unsigned int const last = NumKeys() - 1;
    if (!(p < Parameter(last))) {
        return {last + 1, Parameter(last) == p, last};
    }
    return LocateAroundHint(p, hint);
}

/// `p` lies strictly between the first and the last key.
template <class T, class K, class S>
typename CFCBaseImpl<T, K, S>::Location
CFCBaseImpl<T, K, S>::LocateAroundHint(double p, unsigned int hint) const
{
    auto const at = [this](unsigned int i) { return Parameter(i); };
    unsigned int const last = NumKeys() - 1;
    unsigned int const h = std::min(last, hint);
    unsigned int const down = std::min(h, kWindowReach);
    unsigned int const up = std::min(last - h, kWindowReach);
    unsigned int const lo = h - down;
    unsigned int const hi = h + up;

    if (last + 1 < kFewestKeysForWindow || at(lo) > p || p > at(hi)) {
        return Bisect(p);
    }
    // The window's keys are lo, h-1, h, hi-1, hi, some of them the same near an end.
    if (up != 0) {
        if (at(h) <= p && p < at(h + 1)) {
            return {h + 1, at(h) == p, h};
        }
        if (at(hi - 1) <= p && p < at(hi)) {
            return {hi, at(hi - 1) == p, hi - 1};
        }
    }
    if (down != 0) {
        if (at(lo + 1) > p) {
            return {lo + 1, at(lo) == p, lo};
        }
        if (at(h - 1) <= p && p < at(h)) {
            return {h, at(h - 1) == p, h - 1};
        }
    }
    if (at(hi) == p) {
        return {hi + 1, true, hi};
    }
    return Bisect(p);
}

/// `p` lies strictly between the first and the last key. All keys are bisected, though the hint
/// tells on which side of it to look: so every search begins with the same few keys, which stay in
/// the cache, where halving what lies beside the hint would meet others each time.
template <class T, class K, class S>
typename CFCBaseImpl<T, K, S>::Location CFCBaseImpl<T, K, S>::Bisect(double p) const
{
    unsigned int a = 0;
    unsigned int b = NumKeys() - 1;
    while (b - a >= 2) {
        unsigned int const m = a + (b - a) / 2;
        double const key = Parameter(m);
        if (p > key) {
            a = m;
        } else if (key > p) {
            b = m;
        } else {
            return {m + 1, key == p, m};
        }
    }
    return {a + 1, false, a};
}

/// The number of keys not above `p`, at least `first`; keys before `first` are not. Leaves the hint
/// alone.
template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::CountKeysNotAbove(double p, unsigned int first) const
{
    K const* const above =
        std::upper_bound(this->keys.begin() + first, this->keys.end(), p,
                         [](double value, K const& key) { return value < key.parameter; });
    return static_cast<unsigned int>(above - this->keys.begin());
}

template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::GetNearestKeyIndex(double p) const
{
    int exact;
    unsigned int const r = LocateParameter(p, exact);
    if (exact) {
        return r - 1;
    }
    if (r == 0) {
        return 0;
    }
    if (r == NumKeys()) {
        return r - 1;
    }
    return Parameter(r) - p >= p - Parameter(r - 1) ? r - 1 : r;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::GetKeyIndicesInClosedInterval(double lo, double hi, unsigned int& first,
                                                        unsigned int& last) const
{
    int exact;
    unsigned int const r = LocateParameter(lo, exact);
    unsigned int const begin = exact ? r - 1 : r;
    if (begin == NumKeys()) {
        first = begin;
        return 0;
    }
    // The first test is for NaN alone: otherwise the second one decides.
    if (!(lo <= hi) || !(Parameter(begin) <= hi)) {
        return 0;
    }
    first = begin;
    last = CountKeysNotAbove(hi, begin + 1) - 1;
    return 1;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::GetKeyIndicesInInterval(double lo, double hi, unsigned int& first,
                                                  unsigned int& last, int openAtLo,
                                                  int openAtHi) const
{
    if ((openAtLo && openAtHi && lo == hi) || !(lo <= hi)) {
        return 0;
    }
    int exact;
    unsigned int const r = LocateParameter(lo, exact);
    unsigned int const begin = exact && !openAtLo ? r - 1 : r;
    if (begin == NumKeys()) {
        first = begin;
        return 0;
    }
    if (!(hi > Parameter(begin))) {
        if (hi == Parameter(begin) && !openAtHi) {
            first = begin;
            last = begin;
            return 1;
        }
        return 0;
    }
    first = begin;
    last = CountKeysNotAbove(hi, begin + 1) - 1;
    if (openAtHi && Parameter(last) == hi) {
        --last;
    }
    return 1;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::FindKey(double p, double tolerance, unsigned int& index) const
{
    if (NumKeys() == 0) {
        return 0;
    }
    int exact;
    unsigned int const notAbove = LocateParameter(p, exact);
    return FindKeyBeside(p, tolerance, notAbove, exact != 0, index);
}

/// The nearest key is one of the two beside `p`, so no walk over the interval is needed; what the
/// walk would answer on a tie of rounded distances is kept.
template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::FindKeyBeside(double p, double tolerance, unsigned int notAbove,
                                        bool exact, unsigned int& index) const
{
    double const lo = p - tolerance;
    double const hi = p + tolerance;
    if (!(lo <= hi)) {
        return 0;
    }
    bool const hasLeft = notAbove != 0 && Parameter(notAbove - 1) >= lo;
    bool const hasRight = notAbove != NumKeys() && Parameter(notAbove) <= hi;
    if (!hasLeft && !hasRight) {
        return 0;
    }
    if (hasLeft && (!hasRight || p - Parameter(notAbove - 1) <= Parameter(notAbove) - p)) {
        index = exact ? notAbove - 1 : EarliestAtSameDistance(p, lo, notAbove - 1);
    } else {
        index = notAbove;
    }
    return 1;
}

/// Far from the keys several of them have the same distance after rounding: the first such key of
/// those not before `lo`, from key `index` left of `p` down.
template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::EarliestAtSameDistance(double p, double lo,
                                                          unsigned int index) const
{
    double const distance = p - Parameter(index);
    auto const isNearer = [=](unsigned int i) {
        return Parameter(i) >= lo && p - Parameter(i) <= distance;
    };
    if (index == 0 || !isNearer(index - 1)) {
        return index;
    }
    unsigned int first = 0;
    unsigned int count = index;
    while (count != 0) {
        unsigned int const half = count / 2;
        if (isNearer(first + half)) {
            count = half;
        } else {
            first += half + 1;
            count -= half + 1;
        }
    }
    return first;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::HasConstraintInInterval(unsigned short bits, bool all, double from,
                                                  double to, int openAtFrom, int openAtTo) const
{
    unsigned int first;
    unsigned int last;
    if (NumKeys() == 0 || !GetKeyIndicesInInterval(from, to, first, last, openAtFrom, openAtTo)) {
        return 0;
    }
    for (unsigned int i = first; i <= last; ++i) {
        CFCKeyConstraint const word{this->ConstraintWord(i)};
        if (all ? word.HasAll(bits) : word.HasAny(bits)) {
            return 1;
        }
    }
    return 0;
}

template <class T, class K, class S>
int CFCBaseImpl<T, K, S>::HasAscendingParameters() const
{
    for (unsigned int i = 1; i < NumKeys(); ++i) {
        if (!(Parameter(i - 1) < Parameter(i))) {
            return 0;
        }
    }
    return 1;
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::RepairOrder()
{
    if (HasAscendingParameters()) {
        return;
    }
    unsigned int kept = 0;
    for (unsigned int i = 1; i < NumKeys(); ++i) {
        if (Parameter(i) > Parameter(kept)) {
            ++kept;
            this->keys[kept] = this->keys[i];
            this->SetConstraintWord(kept, this->ConstraintWord(i));
        }
    }
    this->RemoveKeyRange(kept + 1, NumKeys() - 1);
    this->ReleaseSpareKeys();
}

// Folding.

template <class T, class K, class S>
double CFCBaseImpl<T, K, S>::FoldIntoKeyRange(double p) const
{
    return Cycles() ? HvCycle_Fold(p, FirstParameter(), LastParameter()) : p;
}

template <class T, class K, class S>
double CFCBaseImpl<T, K, S>::FoldParameter(double p) const
{
    if (!Cycles()) {
        return p;
    }
    double const q = FoldIntoKeyRange(p);
    unsigned int index;
    return FindKey(q, kKeySnapParameter, index) ? Parameter(index) : q;
}

#endif
