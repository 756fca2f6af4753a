// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a stretch of a curve's region does to which keys, settled when the drag begins.
//
//        fixed   |  near                       far  |   fixed
//     ----*--o-o-+--*------*--------^--------*------+-o---*----      * scales about the pivot ^
//          <- ripple        <- scale                  ripple ->      o follows its edge as a whole
//
// Keys beyond the far edge follow it only where it moves: where the pivot does not lie on it.

#include <hv/fcurve/internal/stretch_plan.h>

#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// What moves keeps this distance from what does not, so that no key lands on another.
constexpr double kLeastGap = 0.001;

double ParameterAt(HvBaseFCurve const& curve, unsigned int index)
{
    double parameter = 0;
    curve.GetKeyParameter(index, parameter);
    return parameter;
}

/// The number of keys below x, or not above it.
unsigned int NumKeysUpTo(HvBaseFCurve const& curve, double x, bool inclusive)
{
    unsigned int low = 0;
    unsigned int high = curve.GetNumKeys();
    while (low < high) {
        unsigned int const middle = low + (high - low) / 2;
        double const parameter = ParameterAt(curve, middle);
        if (inclusive ? parameter <= x : parameter < x) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

HvStretchLock LockOf(HvBaseFCurve const& curve, unsigned int index)
{
    int parameterLocked = 0;
    int valueLocked = 0;
    curve.GetConstraintByIndex(index, HvBaseFCurve::ParameterLocked, parameterLocked);
    curve.GetConstraintByIndex(index, HvBaseFCurve::ValueLocked, valueLocked);
    if (parameterLocked) {
        return valueLocked ? HvStretchBothLocked : HvStretchParameterLocked;
    }
    return valueLocked ? HvStretchValueLocked : HvStretchFree;
}

/// The parameters of the host's list that are numbers, in ascending order.
HvDoubleArray Sorted(HvDoubleArray const& listed)
{
    HvDoubleArray sorted(std::max(listed.Size(), 1u));
    for (double const x : listed) {
        if (!std::isnan(x)) {
            sorted.Add(x);
        }
    }
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

bool IsListed(double parameter, HvDoubleArray const& sorted)
{
    double const* const next = std::lower_bound(sorted.begin(), sorted.end(), parameter);
    auto const isSame = [parameter](double x) {
        return HvStretchPlan::kSameTolerance > std::fabs(x - parameter);
    };
    return (next != sorted.end() && isSame(*next)) || (next != sorted.begin() && isSame(next[-1]));
}

/// The stretch of one axis from `low` to `high`.
struct Span {
    double low = kInfinity;
    double high = -kInfinity;

    void Include(double v)
    {
        low = std::min(low, v);
        high = std::max(high, v);
    }
};

}  // namespace

HvStretchPlan::HvStretchPlan(HvBaseFCurve const& curve, HvStretchRequest const& request,
                             HvDoubleArray const& listed)
    : request_(request), hasTwoValues_(curve.GetKind() == HvBaseFCurve::Standard),
      nearIsLow_(request.handle == HvBaseFCurve::LeftHandle ||
                 request.handle == HvBaseFCurve::BottomHandle),
      pivot_(request.IsHorizontal() ? request.pivot.x : request.pivot.y),
      low_{request.IsHorizontal() ? request.region.min.x : request.region.min.y, 0},
      high_{request.IsHorizontal() ? request.region.max.x : request.region.max.y, 0},
      limiter_(pivot_, Near().position, request.minimalScale)
{
    bool const isOneHandle = request.IsHorizontal() ||
                             request.handle == HvBaseFCurve::BottomHandle ||
                             request.handle == HvBaseFCurve::TopHandle;
    if (!isOneHandle || request.region.state != HvExtent2<double>::Ordinary ||
        !std::isfinite(low_.position - pivot_) || !std::isfinite(high_.position - pivot_)) {
        return;
    }
    Edge& near = nearIsLow_ ? low_ : high_;
    Edge& far = nearIsLow_ ? high_ : low_;
    near.weight = pivot_ - near.position;
    if (std::fabs(pivot_ - far.position) >= kSameTolerance) {
        far.weight = pivot_ - far.position;
    }

    HvDoubleArray const sorted = Sorted(listed);
    unsigned int count = 0;
    if (!FindRun(curve, sorted, count)) {
        return;
    }
    ReadKeys(curve, sorted, count);
    usable_ = std::any_of(keys_.begin(), keys_.end(),
                          [](HvStretchKey const& key) { return key.lock != HvStretchBothLocked; });
    // No key outside the run moves.
    unsigned int const end = first_ + count;
    double const before = first_ == 0 ? -kInfinity : ParameterAt(curve, first_ - 1);
    double const after = end == curve.GetNumKeys() ? kInfinity : ParameterAt(curve, end);
    LimitKeys();
    if (IsHorizontal()) {
        LimitBetweenFixedKeys(before, after);
    }
    LimitEdges(before, after);
    if (ripples_) {
        // Turned round, the region would run through the keys that follow.
        limiter_.ForbidFlip();
    }
}

/// The keys from the first to the last of the region, one more on each side where the host's list
/// begins or ends outside them; with ripple as far as keys may follow. False without a key in the
/// region's width.
bool HvStretchPlan::FindRun(HvBaseFCurve const& curve, HvDoubleArray const& listed,
                            unsigned int& count)
{
    unsigned int const numKeys = curve.GetNumKeys();
    unsigned int end = NumKeysUpTo(curve, request_.region.max.x, true);
    first_ = NumKeysUpTo(curve, request_.region.min.x, false);
    if (first_ >= end) {
        return false;
    }
    if (listed.Size() != 0) {
        first_ -= first_ != 0 && listed[0] < ParameterAt(curve, first_) ? 1 : 0;
        end += end != numKeys && listed[listed.Size() - 1] > ParameterAt(curve, end - 1) ? 1 : 0;
    }
    if (request_.ripple) {
        bool const lowFollows = !IsHorizontal() || low_.weight != 0 || nearIsLow_;
        bool const highFollows = !IsHorizontal() || high_.weight != 0 || !nearIsLow_;
        first_ = lowFollows ? 0 : first_;
        end = highFollows ? numKeys : end;
    }
    count = end - first_;
    return true;
}

void HvStretchPlan::ReadKeys(HvBaseFCurve const& curve, HvDoubleArray const& listed,
                             unsigned int count)
{
    keys_.Resize(count);
    for (unsigned int i = 0; i < count; ++i) {
        HvStretchKey& key = keys_[i];
        key.parameter = ParameterAt(curve, first_ + i);
        curve.GetKeyValuesByIndex(first_ + i, key.leftValue, key.rightValue);
        if (!hasTwoValues_) {
            key.leftValue = key.rightValue;
        }
        key.lock = LockOf(curve, first_ + i);
        key.part = IsListed(key.parameter, listed) ? HvStretchInside : PartInRegion(key);
        SetWeights(key);
    }
}

HvStretchPart HvStretchPlan::PartInRegion(HvStretchKey const& key) const
{
    bool const left = request_.region.Contains({key.parameter, key.leftValue}) != 0;
    bool const right = request_.region.Contains({key.parameter, key.rightValue}) != 0;
    if (left) {
        return right ? HvStretchInside : HvStretchLeftInside;
    }
    return right ? HvStretchRightInside : HvStretchOutside;
}

void HvStretchPlan::SetWeights(HvStretchKey& key)
{
    if (!key.IsFree(IsHorizontal())) {
        return;
    }
    if (IsHorizontal()) {
        key.weight =
            key.part == HvStretchOutside ? TakeRippleWeight(key.parameter) : pivot_ - key.parameter;
    } else {
        key.weight =
            key.IsRightInside() ? pivot_ - key.rightValue : TakeRippleWeight(key.rightValue);
        key.leftWeight =
            key.IsLeftInside() ? pivot_ - key.leftValue : TakeRippleWeight(key.leftValue);
    }
}

/// The weight of what is not in the region: that of the edge beyond which it lies.
double HvStretchPlan::TakeRippleWeight(double v)
{
    if (!request_.ripple) {
        return 0;
    }
    double const weight = v < low_.position ? low_.weight : (v > high_.position ? high_.weight : 0);
    ripples_ = ripples_ || weight != 0;
    return weight;
}

/// Whether the key keeps its place on the axis of the handle.
bool HvStretchPlan::IsFixed(HvStretchKey const& key) const
{
    return IsHorizontal() ? key.weight == 0 : !key.IsFree(false);
}

/// What moves stays within the host's limits.
void HvStretchPlan::LimitKeys()
{
    if (request_.limits.state != HvExtent2<double>::Ordinary) {
        return;
    }
    double const min = IsHorizontal() ? request_.limits.min.x : request_.limits.min.y;
    double const max = IsHorizontal() ? request_.limits.max.x : request_.limits.max.y;
    for (HvStretchKey const& key : keys_) {
        limiter_.Keep(IsHorizontal() ? key.parameter : key.rightValue, key.weight, min, max);
        limiter_.Keep(key.leftValue, key.leftWeight, min, max);
    }
}

/// Each key that moves stays between the nearest ones that do not; `before` and `after` are those
/// beside the run.
void HvStretchPlan::LimitBetweenFixedKeys(double before, double after)
{
    double below = before;
    for (HvStretchKey const& key : keys_) {
        limiter_.Keep(key.parameter, key.weight, below + kLeastGap, kInfinity);
        below = IsFixed(key) ? key.parameter : below;
    }
    double above = after;
    for (unsigned int i = keys_.Count(); i-- != 0;) {
        HvStretchKey const& key = keys_[i];
        limiter_.Keep(key.parameter, key.weight, -kInfinity, above - kLeastGap);
        above = IsFixed(key) ? key.parameter : above;
    }
}

/// Each edge stays short of what is fixed in the region and beyond it.
void HvStretchPlan::LimitEdges(double before, double after)
{
    Span inner;
    double below = IsHorizontal() ? before : -kInfinity;
    double above = IsHorizontal() ? after : kInfinity;
    auto const heed = [&](double v, bool inside) {
        if (inside) {
            inner.Include(v);
        }
        if (v < low_.position) {
            below = std::max(below, v);
        } else if (v > high_.position) {
            above = std::min(above, v);
        }
    };
    for (HvStretchKey const& key : keys_) {
        if (!IsFixed(key)) {
            continue;
        }
        if (IsHorizontal()) {
            heed(key.parameter, key.part == HvStretchInside && !key.IsFree(true));
        } else {
            heed(key.leftValue, key.part == HvStretchInside);
            heed(key.rightValue, key.part == HvStretchInside);
        }
    }
    limiter_.Keep(low_.position, low_.weight, below + kLeastGap, inner.low - kLeastGap);
    limiter_.Keep(high_.position, high_.weight, inner.high + kLeastGap, above - kLeastGap);
}

HvExtent2<double> HvStretchPlan::Stretched(double share) const
{
    double const a = Target(low_.position, low_.weight, share);
    double const b = Target(high_.position, high_.weight, share);
    HvExtent2<double> region = request_.region;
    (IsHorizontal() ? region.min.x : region.min.y) = std::min(a, b);
    (IsHorizontal() ? region.max.x : region.max.y) = std::max(a, b);
    region.state = HvExtent2<double>::Ordinary;
    return region;
}
