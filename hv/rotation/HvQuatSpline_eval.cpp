// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// HvQuatSpline: finding the segment, and what lies outside of them.

#include <hv/foundation/saturate.h>
#include <hv/rotation/HvQuatSpline.h>
#include <hv/rotation/internal/quat_exp.h>

#include <algorithm>
#include <cmath>

namespace {

/// Local length of the stretch at either end whose two quaternions give the velocity with which the
/// path turns on linearly.
constexpr double kEndStretch = 0.0001;
/// Local parameter where the stretch at the last end begins.
constexpr double kEndStretchStart = 0.9999;

/// The point at `s` of the great circle that leads from `a` at 0 to `b` at 1 the short way, also
/// outside 0 .. 1. Of two that are almost the same it is the straight line through them, whose
/// points are not of unit length.
/// Source: K. Shoemake, "Animating rotation with quaternion curves", 1985.
HvQuat Slerp(HvQuat const& a, HvQuat const& b, double s)
{
    double const dot = HvQuat_Dot(a, b);
    double const c = std::fabs(dot);
    double f = 1.0 - s;
    double g = s;
    if (!(1.0 - c < kQuatParallel)) {
        double const angle = std::acos(c);
        double const sine = std::sin(angle);
        f = std::sin(angle - angle * s) / sine;
        g = std::sin(angle * s) / sine;
    }
    return HvQuat_Combine(f, a, dot < 0.0 ? -g : g, b);
}

/// `t` cut to low .. high; NaN stays.
double ClampTo(double t, double low, double high)
{
    return t > high ? high : (t < low ? low : t);
}

}  // namespace

// The first segment that ends after t, the last one when none does. Keys of an animation are mostly
// spaced evenly, so the segment where t would lie then is tried first.
int HvQuatSpline::FindSegment(double t) const
{
    auto const endsUpTo = [t](Segment const& segment) { return !(segment.endTime > t); };
    Segment const* const first = segments_;
    Segment const* const last = first + numSegments_ - 1;
    if (!isAscending_) {
        return static_cast<int>(std::find_if_not(first, last, endsUpTo) - first);
    }
    double const start = first->startTime;
    double const part = (t - start) / (last->endTime - start);
    int const guess = std::min(HvSaturate_To<int>(part * numSegments_), numSegments_ - 1);
    if (first[guess].startTime <= t && t < first[guess].endTime) {
        return guess;
    }
    return static_cast<int>(std::partition_point(first, last, endsUpTo) - first);
}

int HvQuatSpline::GetEvalInterval(double t, double& u) const
{
    if (numSegments_ == 0 || t <= segments_[0].startTime) {
        return 0;
    }
    int const last = numSegments_ - 1;
    if (t >= segments_[last].endTime) {
        u = 1.0;
        return last;
    }
    int const i = FindSegment(t);
    u = (t - segments_[i].startTime) * segments_[i].inverseLength;
    return i;
}

HvQuat HvQuatSpline::EvalWithInterval(double t, int& segment, double& u) const
{
    u = 0.0;
    segment = GetEvalInterval(t, u);
    bool const isInside = u > 0.0 && u < 1.0;
    return isInside ? segments_[segment].Eval(u) : Eval(t);
}

HvQuat HvQuatSpline::Eval(double t) const
{
    if (numSegments_ == 0) {
        return HvQuat();
    }
    if (t < segments_[0].startTime) {
        return EvalBefore(t);
    }
    if (t > segments_[numSegments_ - 1].endTime) {
        return EvalAfter(t);
    }
    return EvalOnPath(t);
}

// Not outside of the path; or NaN, which the last segment gives back.
HvQuat HvQuatSpline::EvalOnPath(double t) const
{
    Segment const& last = segments_[numSegments_ - 1];
    if (t == segments_[0].startTime) {
        return segments_[0].Eval(0.0);
    }
    if (t == last.endTime) {
        return last.Eval(1.0);
    }
    Segment const& segment = segments_[FindSegment(t)];
    return segment.Eval((t - segment.startTime) * segment.inverseLength);
}

HvQuat HvQuatSpline::EvalBefore(double t) const
{
    Segment const& segment = segments_[0];
    HvQuat const& first = segment.q0;
    HvQuat const& last = segments_[numSegments_ - 1].q1;
    double const start = segment.startTime;
    double const end = segments_[numSegments_ - 1].endTime;
    double const span = end - start;
    switch (extrapolationMethod_) {
    case CycleExtrapolation:
        return EvalOnPath(ClampTo(end - std::fmod(start - t, span), start, end));
    case RelativeCycleExtrapolation: {
        double const cycles = (t - start) / span;
        double const back = (std::ceil(cycles) - cycles) * span;
        HvQuat const inside = EvalOnPath(back == 0.0 ? start : ClampTo(end - back, start, end));
        HvQuat const backwards = (first.Conjugate() * last).Conjugate();
        return first * HvQuat_Power(backwards, std::max(-std::floor(cycles), 0.0)) *
               (first.Conjugate() * inside);
    }
    case LinearExtrapolation: {
        double const stretch = ((segment.endTime - start) * kEndStretch + start) - start;
        return Slerp(first, segment.Eval(kEndStretch), (t - start) / stretch);
    }
    default:
        return segment.Eval(0.0);
    }
}

HvQuat HvQuatSpline::EvalAfter(double t) const
{
    Segment const& segment = segments_[numSegments_ - 1];
    HvQuat const& first = segments_[0].q0;
    HvQuat const& last = segment.q1;
    double const start = segments_[0].startTime;
    double const end = segment.endTime;
    double const span = end - start;
    switch (extrapolationMethod_) {
    case CycleExtrapolation:
        return EvalOnPath(ClampTo(std::fmod(t - start, span) + start, start, end));
    case RelativeCycleExtrapolation: {
        double const cycles = (t - start) / span;
        double const forth = (cycles - std::floor(cycles)) * span;
        HvQuat const inside = EvalOnPath(forth == 0.0 ? end : ClampTo(forth + start, start, end));
        HvQuat const forwards = first.Conjugate() * last;
        return first * HvQuat_Power(forwards, std::max(std::ceil(cycles) - 1.0, 0.0)) *
               (first.Conjugate() * inside);
    }
    case LinearExtrapolation: {
        double const stretchStart =
            (end - segment.startTime) * kEndStretchStart + segment.startTime;
        return Slerp(segment.Eval(kEndStretchStart), last,
                     (t - stretchStart) / (end - stretchStart));
    }
    default:
        return segment.Eval(1.0);
    }
}
