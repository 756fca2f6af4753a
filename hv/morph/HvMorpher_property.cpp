// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The property between two outlines.

#include <hv/morph/HvMorpherImpl.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/array_capacity.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/shape/HvGC.h>

namespace {

/// A property read at even steps along its curve.
struct Reading {
    HvDoubleArray at;      ///< parameters of the curve
    HvDoubleArray values;  ///< what it is there; empty without a curve
};

/// `count` places from `start` on, `step` apart, each the sum of the one before and the step.
Reading Read(HvPath2fProp1d const& outline, unsigned int subpath, double start, double step,
             unsigned int count)
{
    Reading reading;
    reading.at.Reserve(count);
    double s = start;
    for (unsigned int i = 0; i < count; ++i) {
        reading.at.Add(s);
        s += step;
    }
    outline.EvalPropCurve(subpath, reading.at, reading.values);
    return reading;
}

/// One more than a number of steps; throws std::bad_alloc when no array holds so many places.
unsigned int PlacesOf(unsigned int steps)
{
    return HvArrayCapacity_GrownSize(steps, 1);
}

}  // namespace

void HvMorpherImpl::SetThePropertyCurve(double t, HvPath2fProp1d& out, unsigned int steps,
                                        unsigned int firstSubpath, unsigned int secondSubpath,
                                        unsigned int outSubpath) const
{
    bool const hasFirst = first->HasPropCurve(firstSubpath) != 0;
    bool const hasSecond = second->HasPropCurve(secondSubpath) != 0;
    if (!hasFirst || !hasSecond) {
        // Of two paths the one without a curve has nothing to copy.
        out.SetPropCurve(outSubpath, *(hasFirst ? first : second),
                         hasFirst ? firstSubpath : secondSubpath);
        return;
    }
    double const firstStep = first->GetLargestArcLength(firstSubpath) / steps;
    double const secondStep = second->GetLargestArcLength(secondSubpath) / steps;
    Reading const a = Read(*first, firstSubpath, 0.0, firstStep, PlacesOf(steps));
    Reading const b = Read(*second, secondSubpath, 0.0, secondStep, PlacesOf(steps));
    HvDoubleArray const& at = firstStep < secondStep ? b.at : a.at;
    HvPoint2dArray points(at.Size());
    for (unsigned int i = 0; i < a.values.Size() && i < b.values.Size(); ++i) {
        points.Add({at[i], a.values[i] * (1 - t) + t * b.values[i]});
    }
    out.SetPropCurve(outSubpath, points, gc->propFlatness);
}

void HvMorpherImpl::SetThePropertyCurve(double t, unsigned int firstSubpath,
                                        unsigned int firstStart, unsigned int firstSteps,
                                        unsigned int secondSubpath, unsigned int secondStart,
                                        unsigned int secondSteps, unsigned int samples,
                                        HvPath2fProp1d& out, unsigned int outSubpath) const
{
    double const firstStep = first->GetLargestArcLength(firstSubpath) / firstSteps;
    double const secondStep = second->GetLargestArcLength(secondSubpath) / secondSteps;
    Reading const a = Read(*first, firstSubpath, firstStep * firstStart, firstStep, samples);
    Reading const b = Read(*second, secondSubpath, secondStep * secondStart, secondStep, samples);
    bool const hasFirst = a.values.Size() != 0;
    bool const hasSecond = b.values.Size() != 0;
    double step = firstStep;
    if (!hasFirst || (hasSecond && firstStep < secondStep)) {
        step = secondStep;
    }
    HvPoint2dArray points;
    double s = 0.0;
    for (unsigned int i = 0; i < samples && (hasFirst || hasSecond); ++i) {
        double value = 0.0;
        if (hasFirst && hasSecond) {
            value = a.values[i] * (1 - t) + t * b.values[i];
        } else {
            value = hasFirst ? a.values[i] : b.values[i];
        }
        points.Add({s, value});
        s += step;
    }
    // Without a point nothing happens.
    out.SetPropCurve(outSubpath, points, gc->propFlatness);
}
