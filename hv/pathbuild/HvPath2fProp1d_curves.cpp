// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The property curves of a path: setting, asking, evaluating.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/pathbuild/internal/prop_curves.h>
#include <hv/shape/HvShapeLock.h>

#include <cmath>

namespace {

/// Below this a length along an outline or a curve counts as none.
constexpr double kLeastLength = 1e-7;

}  // namespace

// The list. The lock is held.

HvRawFCurve* HvPath2fProp1d::GetPropCurveInsideCriticalSection(unsigned int start) const
{
    HvPropCurveData* const entry = HvPropCurves_Find(*propCurves, start);
    return entry == nullptr ? nullptr : &entry->curve;
}

void HvPath2fProp1d::SetPropCurveInsideCriticalSection(unsigned int start, HvRawFCurve const& curve)
{
    if (HvRawFCurve* const present = GetPropCurveInsideCriticalSection(start)) {
        *present = curve;
    } else {
        HvPropCurves_Insert(*propCurves, std::make_unique<HvPropCurveData>(start, curve));
    }
}

void HvPath2fProp1d::RemovePropCurveInsideCriticalSection(unsigned int start)
{
    if (HvPropCurveData* const entry = HvPropCurves_Find(*propCurves, start)) {
        HvPropCurves_Remove(*propCurves, entry);
    }
}

// The curve of the subpath of a point; null also when there is no such point.
HvRawFCurve* HvPath2fProp1d::CurveOf(unsigned int index) const
{
    return index < points.Size() ? GetPropCurveInsideCriticalSection(FirstOfSubpath(index))
                                 : nullptr;
}

// Asking and setting.

int HvPath2fProp1d::HasPropCurve(unsigned int index) const
{
    HvShapeLock const lock(*this);
    return CurveOf(index) != nullptr ? 1 : 0;
}

HvRawFCurve* HvPath2fProp1d::GetPropCurve(unsigned int index) const
{
    HvShapeLock const lock(*this);
    return CurveOf(index);
}

void HvPath2fProp1d::SetPropCurve(unsigned int index, HvRawFCurve const& curve)
{
    HvShapeLock const lock(*this);
    if (index < points.Size()) {
        SetPropCurveInsideCriticalSection(FirstOfSubpath(index), curve);
    }
}

void HvPath2fProp1d::SetPropCurve(unsigned int index, HvPoint2dArray const& curvePoints,
                                  double tolerance)
{
    HvShapeLock const lock(*this);
    if (index < points.Size() && curvePoints.Size() != 0) {
        SetPropCurveInsideCriticalSection(FirstOfSubpath(index),
                                          HvPropCurve_Through(curvePoints, tolerance));
    }
}

void HvPath2fProp1d::SetPropCurve(unsigned int index, unsigned int fromIndex)
{
    SetPropCurve(index, *this, fromIndex);
}

void HvPath2fProp1d::SetPropCurve(unsigned int index, HvPath2fProp1d const& source,
                                  unsigned int sourceIndex)
{
    HvShapePairLock const lock(*this, source);
    HvRawFCurve const* const curve = source.CurveOf(sourceIndex);
    if (index < points.Size() && curve != nullptr) {
        SetPropCurveInsideCriticalSection(FirstOfSubpath(index), *curve);
    }
}

void HvPath2fProp1d::AppendLinearSegment(unsigned int index, double s, double value)
{
    HvShapeLock const lock(*this);
    if (HvRawFCurve* const curve = CurveOf(index)) {
        curve->AppendLinearSegment({s, value});
    }
}

void HvPath2fProp1d::AppendOrExtendLinearSegment(unsigned int index, double s, double value,
                                                 double tolerance)
{
    HvShapeLock const lock(*this);
    if (HvRawFCurve* const curve = CurveOf(index)) {
        curve->AppendOrExtendLinearSegment({s, value}, tolerance);
    }
}

// Evaluating.

double HvPath2fProp1d::EvalPropCurve(unsigned int index, double s) const
{
    HvShapeLock const lock(*this);
    HvRawFCurve const* const curve = CurveOf(index);
    return curve == nullptr ? 0.0 : curve->Eval(s, 0);
}

unsigned int HvPath2fProp1d::EvalPropCurve(unsigned int index, HvDoubleArray const& s,
                                           HvDoubleArray& out) const
{
    HvShapeLock const lock(*this);
    HvRawFCurve const* const curve = CurveOf(index);
    if (curve == nullptr) {
        return 0;
    }
    unsigned int const count = s.Size();
    unsigned int const before = out.Size();
    out.Resize(HvArrayCapacity_GrownSize(before, count));
    curve->EvalMany(s.Data(), count, out.Data() + before, 0);
    return count;
}

double HvPath2fProp1d::GetLargestArcLength(unsigned int index) const
{
    HvShapeLock const lock(*this);
    HvRawFCurve const* const curve = CurveOf(index);
    return curve == nullptr ? 0.0 : HvPropCurve_Reach(*curve);
}

int HvPath2fProp1d::GetPropCurveParameter(unsigned int node, double tolerance, double& s) const
{
    HvShapeLock const lock(*this);
    HvRawFCurve const* const curve = CurveOf(node);
    if (curve == nullptr || (IsStartOfSubpath(node) == 0 && EndOfSegment(node) != node)) {
        return 0;
    }
    double const reach = HvPropCurve_Reach(*curve);
    double const share = GetNodeNormalizedArcLength(node, tolerance);  // 0 to 1
    bool const isAtStart = share < kLeastLength || std::fabs(reach) < kLeastLength;
    s = isAtStart ? 0.0 : share * reach;
    return 1;
}
