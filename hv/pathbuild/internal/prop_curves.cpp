// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The list of the property curves of a path.

#include <hv/pathbuild/internal/prop_curves.h>

#include <hv/foundation/HvPoint2dArray.h>

void HvPropCurvesDelete::operator()(HvPropCurves* curves) const
{
    HvDLListIter<HvPropCurveData> entries(curves);
    while (HvPropCurveData* const entry = entries.Next()) {
        delete entry;
    }
    delete curves;
}

HvPropCurvesOwner HvPropCurves_Copy(HvPropCurves const& curves)
{
    HvPropCurvesOwner copy(new HvPropCurves);
    HvDLListIter<HvPropCurveData> entries(&curves);
    while (HvPropCurveData const* const entry = entries.Next()) {
        HvPropCurves_Append(*copy, std::make_unique<HvPropCurveData>(*entry));
    }
    return copy;
}

HvPropCurveData* HvPropCurves_Find(HvPropCurves const& curves, unsigned int start)
{
    HvDLListIter<HvPropCurveData> entries(&curves);
    HvPropCurveData* entry = entries.Next();
    while (entry != nullptr && entry->subpathStart < start) {
        entry = entries.Next();
    }
    return entry != nullptr && entry->subpathStart == start ? entry : nullptr;
}

void HvPropCurves_Append(HvPropCurves& curves, std::unique_ptr<HvPropCurveData> entry)
{
    curves.Append(entry.get());
    static_cast<void>(entry.release());
}

void HvPropCurves_Insert(HvPropCurves& curves, std::unique_ptr<HvPropCurveData> entry)
{
    unsigned int const start = entry->subpathStart;
    HvPropCurves::Node const* const head = curves.Head();
    if (head == nullptr || head->previous->item->subpathStart < start) {
        HvPropCurves_Append(curves, std::move(entry));
        return;
    }
    HvDLListIter<HvPropCurveData> entries(&curves);
    HvPropCurveData* next = entries.Next();
    while (next != nullptr && next->subpathStart < start) {
        next = entries.Next();
    }
    curves.Insert(entry.get(), next, HvPropCurves::Before);
    static_cast<void>(entry.release());
}

void HvPropCurves_Remove(HvPropCurves& curves, HvPropCurveData* entry)
{
    curves.Remove(entry);
    delete entry;
}

void HvPropCurves_Shift(HvPropCurves& curves, unsigned int start, unsigned int distance)
{
    HvDLListIter<HvPropCurveData> entries(&curves);
    while (HvPropCurveData* const entry = entries.Next()) {
        if (entry->subpathStart > start) {
            entry->subpathStart += distance;
        }
    }
}

HvRawFCurve HvPropCurve_Through(HvPoint2dArray const& points, double tolerance)
{
    if (points.Size() == 1) {
        return HvRawFCurve(0.0, points[0].y);
    }
    if (points.Size() == 2) {
        HvPoint2<double> const& a = points[0];
        HvPoint2<double> const& b = points[1];
        return a.x == b.x ? HvRawFCurve(b.x, b.y) : HvRawFCurve(a.x, a.y, b.x, b.y);
    }
    return HvRawFCurve(points, tolerance);
}

double HvPropCurve_Reach(HvRawFCurve const& curve)
{
    double reach = 0.0;
    curve.GetLargestKeyParameter(reach);
    return reach;
}
