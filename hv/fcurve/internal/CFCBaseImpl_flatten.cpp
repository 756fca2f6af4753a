// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A curve over a parameter interval as a clipped polyline, extrapolation and cycles included.

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/CFCFlattenOutput.h>
#include <hv/fcurve/internal/cycle_range.h>

#include <hv/bezier/HvFlattenedRuns.h>
#include <hv/bezier/line_clip.h>

#include <cmath>
#include <type_traits>

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::FlattenFromTo(HvExtent2<double> const& extent, HvTransfo4 const& transfo,
                                         double tolerance, HvPoint2dArray& points,
                                         HvPointTagArray& tags, HvBoolArray& flags) const
{
    double const a = extent.min.x;
    double const b = extent.max.x;
    if (!(a <= b)) {
        return;
    }
    if (NumKeys() == 0) {
        double const value = static_cast<double>(valueWhenNoKeys);
        HvPoint2<double> from(a, value);
        HvPoint2<double> to(b, value);
        if (HvLineClip_Clip(from, to, extent) != 0) {
            CFCFlatten_AddPair(transfo.Map(from), transfo.Map(to), 1, points, tags, flags);
        }
        return;
    }
    if (a == b) {
        FlattenAt(a, extent, transfo, points, tags, flags);
        return;
    }
    CFCFlattenOutput out(transfo, tolerance, transfo.Map(extent), points, tags, flags);
    if (!Cycles()) {
        FlattenUncycled(a, b, out);
    } else if (!FlattenCycled(a, b, transfo, out)) {
        FlattenAt(a, extent, transfo, points, tags, flags);
        return;
    }
    HvFlattenedRuns(points, tags, flags).EndRun();
}

/// The interval of one parameter: the point twice, or the jump there. Clipped in curve space.
template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::FlattenAt(double x, HvExtent2<double> const& extent,
                                     HvTransfo4 const& transfo, HvPoint2dArray& points,
                                     HvPointTagArray& tags, HvBoolArray& flags) const
{
    HvPoint2<double> left(x, EvalLeftUsingExtrapolationMethod(x));
    HvPoint2<double> right(x, static_cast<double>(EvalRightUsingExtrapolationMethod(x)));
    if (left.y == right.y && extent.Contains(left) != 0) {
        CFCFlatten_AddPair(transfo.Map(left), transfo.Map(left), 1, points, tags, flags);
    } else if (HvLineClip_Clip(left, right, extent) != 0) {
        CFCFlatten_AddPair(transfo.Map(left), transfo.Map(right), 0, points, tags, flags);
    }
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::FlattenUncycled(double a, double b, CFCFlattenOutput& out) const
{
    int exact = 0;
    unsigned int const n = NumKeys();
    unsigned int const keysToA = LocateParameter(a, exact);
    unsigned int const keysToB = LocateParameter(b, exact);
    if (keysToA == 0 && !(b > FirstParameter())) {
        AddFromParameterToParameterBeforeFirstKey(a, b, out);
    } else if (keysToA == n) {
        AddFromParameterToParameterAfterLastKey(a, b, out);
    } else {
        unsigned int first = 0;
        if (keysToA == 0) {
            AddFromParameterToFirstKey(a, out);
        } else if (keysToA == keysToB) {
            S::AddFlattenedPartialSegment(keysToA - 1, a, b, out);
            return;
        } else {
            S::AddFlattenedRightPiece(keysToA - 1, a, out);
            first = keysToA;
        }
        S::AddFlattenedSegments(first, keysToB - 1, out);
        if (keysToB == n) {
            AddFromLastKeyToParameter(b, out);
        } else {
            S::AddFlattenedLeftPiece(keysToB - 1, b, out);
        }
    }
}

/// What a curve draws from a to b inside its key range, both on keys or between; b may be the last
/// key.
template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::FlattenBody(double a, double b, CFCFlattenOutput& out) const
{
    unsigned int const i = SegmentOf(a);
    unsigned int const j = SegmentOf(b);
    if (i == j) {
        S::AddFlattenedPartialSegment(i, a, b, out);
    } else {
        S::AddFlattenedRightPiece(i, a, out);
        S::AddFlattenedSegments(i + 1, j, out);
        S::AddFlattenedLeftPiece(j, b, out);
    }
}

/// The segment that holds x of the key range; at the last key the last one.
template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::SegmentOf(double x) const
{
    int exact = 0;
    unsigned int const located = LocateParameter(x, exact);
    unsigned int const last = NumKeys() - 2;
    return located == 0 ? 0 : located - 1 < last ? located - 1 : last;
}

/// Draws the cycles that [a, b] meets; false, with nothing drawn, when rounding leaves none.
template <class T, class K, class S>
bool CFCBaseImpl<T, K, S>::FlattenCycled(double a, double b, HvTransfo4 const& transfo,
                                         CFCFlattenOutput& out) const
{
    bool const relative = extrapolation == HvBaseFCurve::RelativeCycleExtrapolation;
    double const f = FirstParameter();
    double const l = LastParameter();
    double const w = l - f;
    double const d = relative ? this->CycleOffset() : 0;
    double const ra = (a - f) / w;
    double const rb = (b - f) / w;
    if (!std::isfinite(ra) || !std::isfinite(rb)) {
        return false;
    }
    // a on a boundary starts the cycle after it, b on one ends the cycle before it. Cycle numbers
    // stay double: they may lie far beyond an int.
    double const first = std::floor(ra);
    double const last = std::ceil(rb) - 1;
    double const inFirst = FoldIntoCycle(a, f);
    double const inLast = FoldIntoCycle(b, l);
    unsigned int const lastKey = NumKeys() - 1;
    // Where the cycle ends the curve goes on from the first key, offset or not.
    HvPoint2<double> const endLeft(l, static_cast<double>(S::LeftValueOf(lastKey)));
    HvPoint2<double> const endRight(
        l, static_cast<double>(relative ? S::RightValueOf(lastKey) : S::RightValueOf(0)));
    auto const cycle = [&](double c) {
        HvTransfo4 moved(transfo);
        moved.Translate(c * w, c * d, 0);
        return out.WithTransfo(moved);
    };

    if (first == last && inFirst < inLast) {
        CFCFlattenOutput view = cycle(first);
        FlattenBody(inFirst, inLast, view);
        return true;
    }
    if (!(first < last)) {
        return false;
    }
    if (inFirst < l) {
        CFCFlattenOutput view = cycle(first);
        unsigned int const i = SegmentOf(inFirst);
        S::AddFlattenedRightPiece(i, inFirst, view);
        S::AddFlattenedSegments(i + 1, lastKey, view);
        view.AddJump(endLeft, endRight);
    }
    HvCycleRange const whole =
        HvCycleRange_Visible({first + 1, last - 1}, Hull(), w, d, transfo, out.Clip(), lastKey);
    for (double c = whole.first; c <= whole.last; ++c) {
        CFCFlattenOutput view = cycle(c);
        S::AddFlattenedSegments(0, lastKey, view);
        view.AddJump(endLeft, endRight);
    }
    if (inLast > f) {
        CFCFlattenOutput view = cycle(last);
        unsigned int const j = SegmentOf(inLast);
        S::AddFlattenedSegments(0, j, view);
        S::AddFlattenedLeftPiece(j, inLast, view);
    }
    return true;
}

/// What holds every point of the curve between its first and last key: values and control points.
template <class T, class K, class S>
HvExtent2<double> CFCBaseImpl<T, K, S>::Hull() const
{
    HvExtent2<double> hull;
    for (unsigned int i = 0; i < NumKeys(); ++i) {
        hull.Augment({Parameter(i), static_cast<double>(S::LeftValueOf(i))});
        hull.Augment({Parameter(i), static_cast<double>(S::RightValueOf(i))});
        if constexpr (std::is_same<K, CFCStdKey>::value) {
            if (i + 1 < NumKeys() && S::SegmentKindOf(i) == HvBaseFCurve::CubicSegment) {
                HvPoint2<double> P[4];
                S::BezierCubicSetupUsingEvaluatedTangents(i, i + 1, P);
                hull.Augment(P[1]);
                hull.Augment(P[2]);
            }
        }
    }
    return hull;
}

/// x folded into the key range of a cycling curve; a cycle's boundary becomes `boundary`, the first
/// or the last parameter. The result is not snapped to a key.
template <class T, class K, class S>
double CFCBaseImpl<T, K, S>::FoldIntoCycle(double x, double boundary) const
{
    double const f = FirstParameter();
    double const l = LastParameter();
    double const w = l - f;
    double const r = (x - f) / w;
    bool const below = boundary == f ? x < f : !(x > f);
    double const m = below ? (std::ceil(r) - r) * w : (r - std::floor(r)) * w;
    if (m == 0) {
        return boundary;
    }
    double const folded = below ? l - m : f + m;
    return folded > l ? l : folded < f ? f : folded;
}

// The lines outside the keys. Under linear extrapolation they run through the values outside;
// otherwise they are level with the key beside them.

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::AddFromParameterToFirstKey(double from, CFCFlattenOutput& out) const
{
    double const value = static_cast<double>(S::LeftValueOf(0));
    bool const linear = extrapolation == HvBaseFCurve::LinearExtrapolation;
    double const start =
        linear ? static_cast<double>(EvalRightUsingExtrapolationMethod(from)) : value;
    out.AddLine({from, start}, {FirstParameter(), value});
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::AddFromLastKeyToParameter(double to, CFCFlattenOutput& out) const
{
    unsigned int const last = NumKeys() - 1;
    double const p = LastParameter();
    double const left = static_cast<double>(S::LeftValueOf(last));
    double const right = static_cast<double>(S::RightValueOf(last));
    bool const linear = extrapolation == HvBaseFCurve::LinearExtrapolation;
    double const end = linear ? static_cast<double>(EvalRightUsingExtrapolationMethod(to)) : right;
    if (left != right) {
        out.AddJump({p, left}, {p, right});
    }
    out.AddLine({p, right}, {to, end});
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::AddFromParameterToParameterBeforeFirstKey(double from, double to,
                                                                     CFCFlattenOutput& out) const
{
    out.AddLine({from, OutsideValue(from, HvBaseFCurve::Left)},
                {to, OutsideValue(to, HvBaseFCurve::Left)});
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::AddFromParameterToParameterAfterLastKey(double from, double to,
                                                                   CFCFlattenOutput& out) const
{
    out.AddLine({from, OutsideValue(from, HvBaseFCurve::Right)},
                {to, OutsideValue(to, HvBaseFCurve::Right)});
}

/// The value before the first key (side Left) or after the last (side Right), ends included.
template <class T, class K, class S>
double CFCBaseImpl<T, K, S>::OutsideValue(double x, HvBaseFCurve::KeySide side) const
{
    bool const left = side == HvBaseFCurve::Left;
    if (extrapolation == HvBaseFCurve::LinearExtrapolation) {
        return left ? EvalLeftUsingExtrapolationMethod(x)
                    : static_cast<double>(EvalRightUsingExtrapolationMethod(x));
    }
    return left ? static_cast<double>(S::LeftValueOf(0))
                : static_cast<double>(S::RightValueOf(NumKeys() - 1));
}

template void CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::FlattenFromTo(
    HvExtent2<double> const&, HvTransfo4 const&, double, HvPoint2dArray&, HvPointTagArray&,
    HvBoolArray&) const;
template void CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::FlattenFromTo(
    HvExtent2<double> const&, HvTransfo4 const&, double, HvPoint2dArray&, HvPointTagArray&,
    HvBoolArray&) const;
template void CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::FlattenFromTo(
    HvExtent2<double> const&, HvTransfo4 const&, double, HvPoint2dArray&, HvPointTagArray&,
    HvBoolArray&) const;
template void CFCBaseImpl<double, CFCStdKey, CFCStdStore>::FlattenFromTo(HvExtent2<double> const&,
                                                                         HvTransfo4 const&, double,
                                                                         HvPoint2dArray&,
                                                                         HvPointTagArray&,
                                                                         HvBoolArray&) const;
