// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuatCurve: evaluation.

#include <hv/rotation/HvQuatCurve.h>
#include <hv/rotation/HvQuatSpline.h>
#include <hv/rotation/internal/quat_degrees.h>

#include <algorithm>

/// The angles at `t` on a spline whose keys begin at `keys`, near the line between the two keys
/// around it.
HvPoint3<double> HvQuatCurve::EvalOnSpline(HvQuatSpline const& spline, HvQuatKey const* keys,
                                           double t) const
{
    int i = 0;
    double u = 0.0;
    HvQuat const q = spline.EvalWithInterval(t, i, u);
    HvPoint3<double> const reference = keys[i + 1].angles * u + keys[i].angles * (1.0 - u);
    HvPoint3<double> angles;
    q.Get(angles, reference, rotOrder_);
    return angles;
}

HvPoint3<double> HvQuatCurve::Eval(double t) const
{
    if (GetNumKeys() < 2) {
        return GetKeyValue(0);
    }
    bool const isStale = !spline_;
    if (isStale) {
        spline_.reset(new HvQuatSpline(static_cast<int>(GetNumKeys()), keys_.data(), rotOrder_,
                                       extrapolationMethod_));
    }
    if (isStale || t != cachedParameter_) {
        cachedValue_ = EvalOnSpline(*spline_, keys_.data(), t);
        cachedParameter_ = t;
    }
    return cachedValue_;
}

double HvQuatCurve::Eval(double t, unsigned int component) const
{
    return HvQuatDegrees_Get(Eval(t), component);
}

/// Eval of a curve that is about to change: without a spline it makes only the segments beside `t`,
/// so that keys set one by one do not each cost a spline over all. A segment depends on the two
/// keys at its ends and one more on either side.
HvPoint3<double> HvQuatCurve::EvalForEdit(double t) const
{
    constexpr unsigned int kWindowKeys = 4;
    unsigned int const n = GetNumKeys();
    bool const repeats = extrapolationMethod_ == HvQuatSpline::CycleExtrapolation ||
                         extrapolationMethod_ == HvQuatSpline::RelativeCycleExtrapolation;
    if (spline_ || !isAscending_ || n <= kWindowKeys ||
        (repeats && !(t >= keys_.front().time && t <= keys_.back().time))) {
        return Eval(t);
    }
    unsigned int const after = std::min(GetNextKey(t, 0.0), n);
    unsigned int const start = std::min(std::max(after, 1u) - 1, n - 2);
    unsigned int const first = std::max(start, 1u) - 1;
    unsigned int const last = std::min(start + 2, n - 1);
    HvQuatSpline const window(static_cast<int>(last - first + 1), keys_.data() + first, rotOrder_,
                              extrapolationMethod_);
    return EvalOnSpline(window, keys_.data() + first, t);
}
