// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuatCurve: reading, finding and editing keys.

#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatSpline.h>
#include <hv/rotation/internal/quat_degrees.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>

namespace {

/// Degrees above and below each key that an extent holds: between two keys the curve may turn round
/// once beyond their angles.
constexpr double kExtentMarginDegrees = 360.0;
/// Factors below this would throw the keys together.
constexpr double kLeastScale = 1e-12;
/// Most keys of a curve: a spline counts them in an int.
constexpr std::size_t kMostKeys = std::numeric_limits<int>::max();

}  // namespace

int HvQuatCurve::IsValid() const
{
    return isAscending_ ? 1 : 0;
}

HvQuatKey HvQuatCurve::GetKey(unsigned int i) const
{
    return i < GetNumKeys() ? keys_[i] : HvQuatKey();
}

HvPoint3<double> HvQuatCurve::GetKeyValue(unsigned int i) const
{
    return i < GetNumKeys() ? keys_[i].angles : valueWhenNoKeys_;
}

double HvQuatCurve::GetKeyValue(unsigned int i, unsigned int component) const
{
    return HvQuatDegrees_Get(GetKeyValue(i), component);
}

double HvQuatCurve::GetKeyTime(unsigned int i) const
{
    return i < GetNumKeys() ? keys_[i].time : 0.0;
}

HvExtent2<double> HvQuatCurve::GetKeyExtent(unsigned int i, unsigned int component) const
{
    HvExtent2<double> extent;
    if (i >= GetNumKeys()) {
        return extent;
    }
    unsigned int const first = std::max(i, 2u) - 2;
    unsigned int const last = std::min(GetNumKeys() - 1 - i, 2u) + i;
    for (unsigned int k = first; k <= last; ++k) {
        double const degrees = GetKeyValue(k, component);
        extent.Augment(HvPoint2<double>(keys_[k].time, degrees - kExtentMarginDegrees));
        extent.Augment(HvPoint2<double>(keys_[k].time, degrees + kExtentMarginDegrees));
    }
    return extent;
}

/// Index of the first key that is not `before`: by bisection where the times rise, otherwise by
/// walking.
template <class Before>
unsigned int HvQuatCurve::CountWhile(Before before) const
{
    auto const first = isAscending_ ? std::partition_point(keys_.begin(), keys_.end(), before)
                                    : std::find_if_not(keys_.begin(), keys_.end(), before);
    return static_cast<unsigned int>(first - keys_.begin());
}

/// Where FindKey's walk may begin without missing anything: at the key before `t`, since distances
/// fall up to there. Far from `t` they may be rounded to the same, and the earliest is wanted.
unsigned int HvQuatCurve::FirstKeyToWalk(double t, double tolerance) const
{
    if (!isAscending_) {
        return 0;
    }
    double const low = t - tolerance;
    unsigned int const first = CountWhile([low](HvQuatKey const& key) { return key.time < low; });
    unsigned int const after = CountWhile([t](HvQuatKey const& key) { return key.time < t; });
    unsigned int i = std::max(first, std::max(after, 1u) - 1);
    while (i > first && std::fabs(keys_[i - 1].time - t) == std::fabs(keys_[i].time - t)) {
        --i;
    }
    return i;
}

unsigned int HvQuatCurve::FindKey(double t, double tolerance) const
{
    double const low = t - tolerance;
    double const high = t + tolerance;
    double best = std::numeric_limits<double>::infinity();
    unsigned int found = kNoKey;
    for (unsigned int i = FirstKeyToWalk(t, tolerance); i < GetNumKeys(); ++i) {
        double const time = keys_[i].time;
        if (time < low) {
            continue;
        }
        if (time > high) {
            break;
        }
        double const distance = std::fabs(time - t);
        if (distance < best) {
            best = distance;
            found = i;
        } else if (distance > best) {
            break;
        }
    }
    return found;
}

unsigned int HvQuatCurve::GetPrevKey(double t, double tolerance) const
{
    double const bound = t - tolerance;
    auto const isBefore = [bound](HvQuatKey const& key) { return key.time < bound; };
    if (isAscending_) {
        // Of none, 0 - 1 is kNoKey.
        return CountWhile(isBefore) - 1;
    }
    auto const last = std::find_if(keys_.rbegin(), keys_.rend(), isBefore);
    return static_cast<unsigned int>(keys_.rend() - last) - 1;
}

unsigned int HvQuatCurve::GetNextKey(double t, double tolerance) const
{
    double const bound = t + tolerance;
    unsigned int const i =
        CountWhile([bound](HvQuatKey const& key) { return !(key.time > bound); });
    return i < GetNumKeys() ? i : kNoKey;
}

/// Whether a key `i` with the time `t` would be in order.
bool HvQuatCurve::IsBetweenNeighbours(unsigned int i, double t) const
{
    return (i == 0 || keys_[i - 1].time < t) && (i + 1 >= GetNumKeys() || t < keys_[i + 1].time);
}

/// Finds out whether the times rise after key `i` alone has come or changed.
void HvQuatCurve::UpdateOrderAt(unsigned int i)
{
    if (isAscending_) {
        isAscending_ = IsBetweenNeighbours(i, keys_[i].time);
    } else {
        UpdateOrder();
    }
}

void HvQuatCurve::UpdateOrder()
{
    isAscending_ =
        std::adjacent_find(keys_.begin(), keys_.end(), [](HvQuatKey const& a, HvQuatKey const& b) {
            return !(a.time < b.time);
        }) == keys_.end();
}

/// Inserts before the first key that is not earlier.
unsigned int HvQuatCurve::InsertKey(HvQuatKey const& key)
{
    if (!std::isfinite(key.time)) {
        return kNoKey;
    }
    if (keys_.size() >= kMostKeys) {
        throw std::bad_alloc();
    }
    unsigned int const i = CountWhile([&key](HvQuatKey const& other) { return other < key; });
    keys_.insert(keys_.begin() + i, key);
    UpdateOrderAt(i);
    Invalidate();
    return i;
}

unsigned int HvQuatCurve::SetKey(double t, HvPoint3<double> const& angles, double tolerance)
{
    unsigned int const i = FindKey(t, tolerance);
    if (i == kNoKey) {
        return InsertKey(HvQuatKey(t, angles, 0.0f, 0.0f, 0.0f, 0));
    }
    SetKeyValue(i, angles);
    return i;
}

unsigned int HvQuatCurve::SetKey(HvQuatKey const& key, double tolerance)
{
    unsigned int const i = FindKey(key.time, tolerance);
    if (i == kNoKey) {
        return InsertKey(key);
    }
    keys_[i] = key;
    UpdateOrderAt(i);
    Invalidate();
    return i;
}

int HvQuatCurve::SetKey(unsigned int i, HvQuatKey const& key)
{
    if (i >= GetNumKeys() || !std::isfinite(key.time) || !IsBetweenNeighbours(i, key.time)) {
        return 0;
    }
    keys_[i] = key;
    UpdateOrderAt(i);
    Invalidate();
    return 1;
}

int HvQuatCurve::SetKeys(HvQuatKey const* keys, unsigned int n)
{
    if (n > kMostKeys) {
        throw std::bad_alloc();
    }
    if (!std::all_of(keys, keys + n, [](HvQuatKey const& k) { return std::isfinite(k.time); })) {
        return 0;
    }
    Keys replacement(keys, keys + n);
    keys_.swap(replacement);
    UpdateOrder();
    Invalidate();
    return 1;
}

int HvQuatCurve::ReplaceKeys(unsigned int first, HvQuatKey const* keys, unsigned int n)
{
    if (first > GetNumKeys() || n > GetNumKeys() - first) {
        return 0;
    }
    unsigned int const end = first + n;
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    double before = first == 0 ? -kInfinity : keys_[first - 1].time;
    double const after = end == GetNumKeys() ? kInfinity : keys_[end].time;
    for (unsigned int i = 0; i < n; ++i) {
        if (!(before < keys[i].time && keys[i].time < after)) {
            return 0;
        }
        before = keys[i].time;
    }
    std::copy(keys, keys + n, keys_.begin() + first);
    if (!isAscending_) {
        UpdateOrder();
    }
    Invalidate();
    return 1;
}

unsigned int HvQuatCurve::SetKey(double t, unsigned int component, double degrees, double tolerance)
{
    return SetKey(t, HvQuatDegrees_With(EvalForEdit(t), component, degrees), tolerance);
}

int HvQuatCurve::SetParameter(unsigned int i, double t)
{
    if (i >= GetNumKeys() || !std::isfinite(t)) {
        return 0;
    }
    keys_[i].time = t;
    UpdateOrderAt(i);
    Invalidate();
    return 1;
}

int HvQuatCurve::SetKeyValue(unsigned int i, HvPoint3<double> const& angles)
{
    if (i >= GetNumKeys()) {
        return 0;
    }
    if (!keys_[i].valueLocked) {
        keys_[i].angles = angles;
        Invalidate();
    }
    return 1;
}

int HvQuatCurve::SetKeyValue(unsigned int i, unsigned int component, double degrees)
{
    return SetKeyValue(i, HvQuatDegrees_With(GetKeyValue(i), component, degrees));
}

/// Moves the times of all keys that may move, or none when one of them would not be finite.
template <class Move>
int HvQuatCurve::MoveTimes(Move move)
{
    for (HvQuatKey const& key : keys_) {
        if (!key.parameterLocked && !std::isfinite(move(key.time))) {
            return 0;
        }
    }
    for (HvQuatKey& key : keys_) {
        if (!key.parameterLocked) {
            key.time = move(key.time);
        }
    }
    UpdateOrder();
    Invalidate();
    return 1;
}

int HvQuatCurve::Shift(double delta)
{
    return MoveTimes([delta](double t) { return t + delta; });
}

int HvQuatCurve::Scale(double factor)
{
    return factor >= kLeastScale ? MoveTimes([factor](double t) { return t * factor; }) : 0;
}

int HvQuatCurve::RemoveKeyAt(unsigned int i)
{
    return RemoveKeyRange(i, i);
}

int HvQuatCurve::RemoveKey(double t, double tolerance)
{
    return RemoveKeyAt(FindKey(t, tolerance));
}

int HvQuatCurve::RemoveKeyRange(unsigned int first, unsigned int last)
{
    if (first > last || last >= GetNumKeys()) {
        return 0;
    }
    keys_.erase(keys_.begin() + first, keys_.begin() + last + 1);
    if (!isAscending_) {
        UpdateOrder();
    }
    Invalidate();
    return 1;
}

int HvQuatCurve::RemoveAllKeys()
{
    keys_.clear();
    isAscending_ = true;
    Invalidate();
    return 1;
}
