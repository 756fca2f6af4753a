// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A whole curve as a polyline, and samples of it.

#include <hv/fcurve/internal/CFCBaseImpl.h>
#include <hv/fcurve/internal/clamp_runs.h>

#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/foundation/HvBoolArray.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/foundation/saturate.h>
#include <hv/rotation/HvTransfo4.h>

#include <algorithm>
#include <type_traits>

namespace {

/// Room for the vertices of a sampled curve at first; more are common only on long or curved ones.
constexpr unsigned int kSequenceCapacity = 128;

}  // namespace

template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::Flatten(HvTransfo4 const& transfo, double tolerance,
                                           HvPoint2dArray& points, HvPointTagArray& tags,
                                           int clamp) const
{
    if (NumKeys() == 0) {
        return 0;
    }
    unsigned int const pointsBefore = points.Size();
    unsigned int const tagsBefore = tags.Size();
    try {
        FlattenKeys(transfo, tolerance, points, tags);
        if (clamp != 0) {
            ClampFlattened(transfo, points, tags, pointsBefore);
        }
    } catch (...) {
        points.Chop(pointsBefore);
        tags.Chop(tagsBefore);
        throw;
    }
    return points.Size();
}

template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::FlattenKeys(HvTransfo4 const& transfo, double tolerance,
                                       HvPoint2dArray& points, HvPointTagArray& tags) const
{
    unsigned int const n = NumKeys();
    points.Reserve(HvArrayCapacity_GrownSize(points.Size(), n));
    tags.Reserve(HvArrayCapacity_GrownSize(tags.Size(), n));
    auto const left = [&](unsigned int i) {
        return HvPoint2<double>(Parameter(i), static_cast<double>(S::LeftValueOf(i)));
    };
    auto const right = [&](unsigned int i) {
        return HvPoint2<double>(Parameter(i), static_cast<double>(S::RightValueOf(i)));
    };
    auto const add = [&](HvPoint2<double> const& p, HvPointTag tag) {
        points.Add(transfo.Map(p));
        tags.Add(tag);
    };

    // A jump ends the run on the left value and starts the next on the right one. Points with a NaN
    // differ, too.
    add(left(0), HvPointTagStart);
    if (left(0) != right(0)) {
        add(left(0), HvPointTagEnd);
        add(right(0), HvPointTagStart);
    }
    if (n == 1) {
        add(right(0), HvPointTagEnd);
        return;
    }
    for (unsigned int i = 0; i + 1 < n; ++i) {
        if (i != 0 && left(i) != right(i)) {
            tags[tags.Size() - 1] = HvPointTagEnd;
            add(right(i), HvPointTagStart);
        }
        auto const kind = S::SegmentKindOf(i);
        if (kind == HvBaseFCurve::ConstantSegment || kind == HvBaseFCurve::LinearSegment) {
            add(left(i + 1), HvPointTagInner);
        } else if constexpr (std::is_same<K, CFCStdKey>::value) {
            if (kind == HvBaseFCurve::CubicSegment) {
                HvPoint2<double> P[4];
                S::BezierCubicSetupUsingEvaluatedTangents(i, i + 1, P);
                transfo.MapInPlace(P, 4);
                HvBezierTool_FlattenCubic2d(P, tolerance, &points, 1);
                while (tags.Size() < points.Size()) {
                    tags.Add(HvPointTagInner);
                }
            }
        }
    }
    tags[tags.Size() - 1] = HvPointTagEnd;
    if (left(n - 1) != right(n - 1)) {
        add(left(n - 1), HvPointTagStart);
        add(right(n - 1), HvPointTagEnd);
    }
}

/// Cuts the vertices from `first` on at the clamping values, where those are set.
template <class T, class K, class S>
void CFCBaseImpl<T, K, S>::ClampFlattened(HvTransfo4 const& transfo, HvPoint2dArray& points,
                                          HvPointTagArray& tags, unsigned int first) const
{
    HvPoint2<double> lower(0, static_cast<double>(lowerClamp));
    HvPoint2<double> upper(0, static_cast<double>(upperClamp));
    bool const hasLower = lower.y != -kHvMaxDouble;
    bool const hasUpper = upper.y != kHvMaxDouble;
    transfo.MapInPlace(lower);
    transfo.MapInPlace(upper);
    // A transform that turns the value axis over turns the sides over as well.
    bool const inverted = upper.y < lower.y;
    if (hasLower) {
        HvClampRuns_Cut(points, tags, first, lower.y,
                        inverted ? HvClampSide::Below : HvClampSide::Above);
    }
    if (hasUpper) {
        HvClampRuns_Cut(points, tags, first, upper.y,
                        inverted ? HvClampSide::Above : HvClampSide::Below);
    }
}

template <class T, class K, class S>
unsigned int CFCBaseImpl<T, K, S>::EvalSequence(double from, double to, double step,
                                                double tolerance, HvDoubleArray& parameters,
                                                HvDoubleArray& values, int clamp) const
{
    if (!(from <= to || from > to)) {
        return 0;  // an end is not a number
    }
    HvPoint2dArray points(kSequenceCapacity);
    HvPointTagArray tags(kSequenceCapacity);
    HvBoolArray flags(kSequenceCapacity);
    HvExtent2<double> const extent(std::min(from, to), -kHvMaxDouble, std::max(from, to),
                                   kHvMaxDouble);
    FlattenFromTo(extent, HvTransfo4(), tolerance, points, tags, flags);
    if (points.Size() == 0) {
        return 0;
    }
    unsigned int const before = values.Size();
    // More samples than the arrays can hold are refused before the first.
    double const samples = from < to && from + step > from ? (to - from) / step : 0;
    unsigned int const room = HvArrayCapacity_GrownSize(HvSaturate_To<unsigned int>(samples), 2);
    parameters.Reserve(HvArrayCapacity_GrownSize(parameters.Size(), room));
    values.Reserve(HvArrayCapacity_GrownSize(values.Size(), room));
    auto const add = [&](double parameter, double value) {
        parameters.Add(parameter);
        values.Add(clamp == 0 ? value : ClampValue(value));
    };

    unsigned int const lastPoint = points.Size() - 1;
    if (from == to) {
        add(from, points[0].y);
    }
    unsigned int v = 0;
    for (double u = from; u < to;) {
        // Passing every vertex at u takes the far side of a jump.
        while (v < lastPoint && points[v + 1].x <= u) {
            ++v;
        }
        HvPoint2<double> const a = points[v];
        HvPoint2<double> const b = points[v < lastPoint ? v + 1 : v];
        bool const between = u > a.x && b.x > a.x;
        add(u, between ? a.y + (b.y - a.y) * ((u - a.x) / (b.x - a.x)) : a.y);
        double const next = u + step;
        if (!(next > u)) {
            break;
        }
        u = next;
    }
    add(to, points[lastPoint].y);
    return values.Size() - before;
}

template unsigned int CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::Flatten(
    HvTransfo4 const&, double, HvPoint2dArray&, HvPointTagArray&, int) const;
template unsigned int CFCBaseImpl<bool, CFCSingleValueKey<bool>, CFCBooleanStore>::EvalSequence(
    double, double, double, double, HvDoubleArray&, HvDoubleArray&, int) const;
template unsigned int CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::Flatten(
    HvTransfo4 const&, double, HvPoint2dArray&, HvPointTagArray&, int) const;
template unsigned int CFCBaseImpl<int, CFCSingleValueKey<int>, CFCIntegerStore>::EvalSequence(
    double, double, double, double, HvDoubleArray&, HvDoubleArray&, int) const;
template unsigned int CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::Flatten(
    HvTransfo4 const&, double, HvPoint2dArray&, HvPointTagArray&, int) const;
template unsigned int CFCBaseImpl<double, CFCSingleValueKey<double>, CFCRawStore>::EvalSequence(
    double, double, double, double, HvDoubleArray&, HvDoubleArray&, int) const;
template unsigned int CFCBaseImpl<double, CFCStdKey, CFCStdStore>::Flatten(HvTransfo4 const&,
                                                                           double, HvPoint2dArray&,
                                                                           HvPointTagArray&,
                                                                           int) const;
template unsigned int CFCBaseImpl<double, CFCStdKey, CFCStdStore>::EvalSequence(
    double, double, double, double, HvDoubleArray&, HvDoubleArray&, int) const;
