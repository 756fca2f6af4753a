// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points along the outline of a path, each with the property there.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/fcurve/HvCurveLock.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/polyline_sample.h>
#include <hv/pathbuild/internal/HvAppendedSamples.h>
#include <hv/pathbuild/internal/HvPropOutline.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// Samples are evaluated within the clamping values of their curve.
constexpr int kClamped = 1;

/// The arrays to which samples are appended.
struct Samples {
    HvPoint2fArray& points;
    HvPointTagArray& tags;
    HvDoubleArray& values;

    /// Gives all points from `before` on the same value.
    void FillFrom(unsigned int before, double value)
    {
        for (unsigned int i = before; i < points.Size(); ++i) {
            values.Add(value);
        }
    }
};

/// Appends `kept` values, those of the first of `count` even steps from 0 to the curve's end.
void AppendEvenValues(HvRawFCurve const& curve, unsigned int count, unsigned int kept,
                      HvDoubleArray& values)
{
    double const reach = HvPropCurve_Reach(curve);
    unsigned int const before = values.Size();
    for (unsigned int i = 0; i < kept; ++i) {
        values.Add(reach * (static_cast<double>(i) / (count - 1)));
    }
    curve.EvalMany(values.Data() + before, kept, values.Data() + before, kClamped);
}

/// Appends the even samples of a run.
void AppendEvenRun(HvPropOutline const& outline, HvPropOutline::Run const& run, HvGC const& gc,
                   Samples& samples)
{
    unsigned int const before = samples.points.Size();
    unsigned int const count = HvPoint2fArray_AppendEvenSamples(
        outline.Line(), outline.Lengths(), run.first, run.last, gc.sampleSpacing, run.isClosed,
        samples.points, samples.tags);
    if (run.curve == nullptr) {
        samples.FillFrom(before, gc.defaultProperty);
    } else {
        AppendEvenValues(*run.curve, count, samples.points.Size() - before, samples.values);
    }
}

/// The distance from a sample to the next. The gap wins over the spacing, and over a value that is
/// no number.
double StepFor(HvGC const& gc, double value)
{
    double const step = std::min(gc.sampleSpacing * value, gc.sampleSpacing);
    return step > gc.minPointGap ? step : gc.minPointGap;
}

/// Refuses, before it starts, a walk that takes more steps than an array holds even if all of them
/// are as long as the largest value allows.
void RequireRoom(HvRawFCurve const& curve, HvGC const& gc, double total)
{
    double const longest = StepFor(gc, curve.GetValueUpperBound(kClamped));
    if (longest > 0.0 && total / longest > kHvArrayMaxCapacity) {
        throw std::bad_alloc();
    }
}

/// Appends the samples of a run whose distance follows its curve.
void AppendPropertyRun(HvPropOutline const& outline, HvPropOutline::Run const& run, HvGC const& gc,
                       Samples& samples)
{
    HvRawFCurve const& curve = *run.curve;
    HvCurveLock const held(curve);
    double const total = outline.Lengths()[run.last];
    double const reach = curve.GetNumKeys() == 0 ? total : HvPropCurve_Reach(curve);
    double const scale = reach / total;

    double value = curve.EvalNoLock(0.0, kClamped);
    samples.points.Add(outline.Line()[run.first]);
    samples.tags.Add(HvPointTagStart);
    samples.values.Add(value);

    unsigned int added = 0;
    if (std::isfinite(total)) {
        RequireRoom(curve, gc, total);
        HvPolylineCursor cursor(outline.Line(), outline.Lengths(), run.first, run.last);
        double at = 0.0;
        // The walk ends at the end of the line, or where a step does not lead on.
        for (double next = StepFor(gc, value); next > at && next < total && cursor.MoveTo(next);) {
            at = next;
            value = curve.EvalNoLock(at * scale, kClamped);
            samples.points.Add(cursor.PointAt(at));
            samples.tags.Add(HvPointTagInner);
            samples.values.Add(value);
            ++added;
            next = at + StepFor(gc, value);
        }
    }
    if (HvPoint2fArray_FinishSamples(outline.Line(), run.last, added, run.isClosed, samples.points,
                                     samples.tags)) {
        samples.values.Chop(samples.values.Size() - 1);
    } else if (added == 0) {
        samples.values.Add(curve.EvalNoLock(reach, kClamped));
    }
}

/// Appends those of the samples that `sample(points, tags, values)` gives that lie in an extent,
/// and returns how many.
template <class Sampling>
int AppendInside(HvExtent2<float> const& extent, Sampling sample, HvPoint2fArray& pts,
                 HvPointTagArray& ptTags, HvDoubleArray& values)
{
    HvPoint2fArray all(64);
    HvPointTagArray allTags(64);
    HvDoubleArray allValues(64);
    sample(all, allTags, allValues);
    HvAppendedSamples appended(pts, ptTags, values);
    for (unsigned int i = 0; i < all.Size(); ++i) {
        if (extent.Contains(all[i]) != 0) {
            pts.Add(all[i]);
            ptTags.Add(allTags[i]);
            values.Add(allValues[i]);
        }
    }
    return static_cast<int>(appended.Keep());
}

}  // namespace

unsigned int HvPath2fProp1d::Sample(HvGC const& gc, HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                    HvDoubleArray& values) const
{
    HvShapeLock const lock(*this);
    HvPropOutline const outline(*this, *propCurves, gc);
    HvAppendedSamples appended(pts, ptTags, values);
    Samples samples{pts, ptTags, values};
    outline.VisitRuns(
        [&](HvPropOutline::Run const& run) { AppendEvenRun(outline, run, gc, samples); });
    return appended.Keep();
}

unsigned int HvPath2fProp1d::PropertySample(HvGC const& gc, HvPoint2fArray& pts,
                                            HvPointTagArray& ptTags, HvDoubleArray& values) const
{
    HvShapeLock const lock(*this);
    HvPropOutline const outline(*this, *propCurves, gc);
    HvAppendedSamples appended(pts, ptTags, values);
    Samples samples{pts, ptTags, values};
    outline.VisitRuns([&](HvPropOutline::Run const& run) {
        if (run.curve == nullptr) {
            AppendEvenRun(outline, run, gc, samples);
        } else {
            AppendPropertyRun(outline, run, gc, samples);
        }
    });
    return appended.Keep();
}

int HvPath2fProp1d::IntersectSamplePointsExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                                HvPoint2fArray& pts, HvPointTagArray& ptTags,
                                                HvDoubleArray& values, int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 && !DoesOverlap(gc, extent)) {
        return 0;
    }
    return AppendInside(
        extent, [&](auto&... samples) { Sample(gc, samples...); }, pts, ptTags, values);
}

int HvPath2fProp1d::IntersectPropertySamplePointsExtent(
    HvGC const& gc, HvExtent2<float> const& extent, HvPoint2fArray& pts, HvPointTagArray& ptTags,
    HvDoubleArray& values, int skipExtentTest) const
{
    HvShapeLock const lock(*this);
    if (skipExtentTest == 0 && !DoesOverlap(gc, extent)) {
        return 0;
    }
    return AppendInside(
        extent, [&](auto&... samples) { PropertySample(gc, samples...); }, pts, ptTags, values);
}
