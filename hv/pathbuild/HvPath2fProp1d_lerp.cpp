// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The path between two paths, with the property between theirs.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/polyline_length.h>
#include <hv/foundation/saturate.h>
#include <hv/pathbuild/internal/prop_curves.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvShapeLock.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace {

/// Below this a subpath has no length along which a property could change.
constexpr double kLeastLength = 1e-7;

float LerpFloat(float a, float b, double t)
{
    return static_cast<float>((1.0 - t) * double(a)) + static_cast<float>(t * double(b));
}

double LengthOfSubpath(HvPath2f const& path, unsigned int start, double tolerance)
{
    HvPoint2fArray line(64);
    path.FlattenSubpath(start, tolerance, line);
    return HvPoint2fArraySingleComponent_ComputeLength(line);
}

/// Into how many steps a length is divided, at least one. Throws std::bad_alloc for more places
/// than an array holds.
unsigned int NumSteps(double length, double step)
{
    double const steps = std::ceil(length / step);
    if (!(steps < kHvArrayMaxCapacity)) {
        throw std::bad_alloc();
    }
    return std::max(1u, HvSaturate_To<unsigned int>(steps));
}

/// The values of a curve at `steps` even steps from 0 to its last key.
HvDoubleArray ValuesAlong(HvRawFCurve const& curve, double step, unsigned int steps)
{
    HvDoubleArray values(steps + 1);
    for (unsigned int i = 0; i <= steps; ++i) {
        values.Add(i * step);
    }
    curve.EvalMany(values.Data(), values.Size(), values.Data(), 0);
    return values;
}

/// Points of the curve between two curves, over the parameter of the longer.
HvPoint2dArray LerpCurves(HvRawFCurve const& a, HvRawFCurve const& b, double t, unsigned int steps)
{
    double const stepOfA = HvPropCurve_Reach(a) / steps;
    double const stepOfB = HvPropCurve_Reach(b) / steps;
    double const step = stepOfA < stepOfB ? stepOfB : stepOfA;
    HvDoubleArray const valuesOfA = ValuesAlong(a, stepOfA, steps);
    HvDoubleArray const valuesOfB = ValuesAlong(b, stepOfB, steps);
    HvPoint2dArray between(steps + 1);
    for (unsigned int i = 0; i <= steps; ++i) {
        between.Add(i * step, (1.0 - t) * valuesOfA[i] + t * valuesOfB[i]);
    }
    return between;
}

/// The entry of the subpath at `start` of two siblings between the curves `ofA` and `ofB`, of which
/// one may be null; null when there is no step.
std::unique_ptr<HvPropCurveData> EntryBetween(HvPath2f const& a, HvRawFCurve const* ofA,
                                              HvPath2f const& b, HvRawFCurve const* ofB,
                                              unsigned int start, double t, double step,
                                              double tolerance)
{
    if (ofA == nullptr || ofB == nullptr) {
        return std::make_unique<HvPropCurveData>(start, ofA != nullptr ? *ofA : *ofB);
    }
    if (!(step > 0.0)) {
        return nullptr;
    }
    double const lengthOfA = LengthOfSubpath(a, start, step * 0.5);
    double const lengthOfB = LengthOfSubpath(b, start, step * 0.5);
    // A length that is no number counts as none.
    bool const hasA = lengthOfA >= kLeastLength;
    bool const hasB = lengthOfB >= kLeastLength;
    if (!hasA || !hasB) {
        return std::make_unique<HvPropCurveData>(start, hasB ? *ofB : *ofA);
    }
    unsigned int const steps = NumSteps(std::max(lengthOfA, lengthOfB), step);
    return std::make_unique<HvPropCurveData>(
        start, HvPropCurve_Through(LerpCurves(*ofA, *ofB, t, steps), tolerance));
}

}  // namespace

void HvPath2fProp1d::SetToLerpAB(HvPath2fProp1d const& a, HvPath2fProp1d const& b, double t,
                                 double step, double tolerance)
{
    HvShapeLock const lock(*this);
    HvShapePairLock const sources(a, b);
    if (a.IsSiblingOf(b) == 0) {
        return;
    }
    // Made aside: this path may be one of the two, and is as it was until all is done.
    HvPath2fProp1d between(static_cast<HvPath2f const&>(a));
    for (unsigned int i = 0; i < between.points.Size(); ++i) {
        HvPoint2<float> const& p = a.points[i];
        HvPoint2<float> const& q = b.points[i];
        between.points[i] = {LerpFloat(p.x, q.x, t), LerpFloat(p.y, q.y, t)};
    }

    HvPropCurveWalk curvesOfA(*a.propCurves);
    HvPropCurveWalk curvesOfB(*b.propCurves);
    HvPath2fIter subpaths(a);
    unsigned int start = 0;
    unsigned int end = 0;
    while (subpaths.GetNextSubPathIndices(start, end) != 0) {
        HvRawFCurve const* const ofA = curvesOfA.MoveTo(start);
        HvRawFCurve const* const ofB = curvesOfB.MoveTo(start);
        if (ofA == nullptr && ofB == nullptr) {
            continue;
        }
        auto entry = EntryBetween(a, ofA, b, ofB, start, t, step, tolerance);
        if (entry == nullptr) {
            return;
        }
        HvPropCurves_Append(*between.propCurves, std::move(entry));
    }
    TakeOver(between);
}
