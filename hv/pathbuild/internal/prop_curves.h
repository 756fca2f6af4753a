// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The list of the property curves of a path: in ascending order of their subpaths, entries owned.

#ifndef HV_PATHBUILD_INTERNAL_PROP_CURVES_H
#define HV_PATHBUILD_INTERNAL_PROP_CURVES_H

#include <hv/foundation/HvDLList.h>
#include <hv/pathbuild/HvPropCurveData.h>

#include <memory>

using HvPropCurves = HvDLList<HvPropCurveData>;

/// Deletes a list with its entries.
struct HvPropCurvesDelete {
    void operator()(HvPropCurves* curves) const;
};
using HvPropCurvesOwner = std::unique_ptr<HvPropCurves, HvPropCurvesDelete>;

HvPropCurvesOwner HvPropCurves_Copy(HvPropCurves const& curves);

/// The entry of a subpath, null when it has none. The walk stops at the first key above `start`.
HvPropCurveData* HvPropCurves_Find(HvPropCurves const& curves, unsigned int start);

/// Appends an entry, whose key is above all others.
void HvPropCurves_Append(HvPropCurves& curves, std::unique_ptr<HvPropCurveData> entry);

/// Puts an entry in its place, where none with its key is.
void HvPropCurves_Insert(HvPropCurves& curves, std::unique_ptr<HvPropCurveData> entry);

/// Removes an entry of the list and deletes it.
void HvPropCurves_Remove(HvPropCurves& curves, HvPropCurveData* entry);

/// Adds `distance` to all keys above `start`. A distance below 0 comes as its 32-bit complement.
void HvPropCurves_Shift(HvPropCurves& curves, unsigned int start, unsigned int distance);

/// The curves of subpaths that come in ascending order: one walk over the list for all of them.
class HvPropCurveWalk {
public:
    explicit HvPropCurveWalk(HvPropCurves const& curves) : entries_(&curves), next_(entries_.Next())
    {
    }

    /// The curve of a subpath, null when it has none.
    HvRawFCurve const* MoveTo(unsigned int start)
    {
        while (next_ != nullptr && next_->subpathStart < start) {
            next_ = entries_.Next();
        }
        return next_ != nullptr && next_->subpathStart == start ? &next_->curve : nullptr;
    }

private:
    HvDLListIter<HvPropCurveData> entries_;
    HvPropCurveData* next_;
};

/// The curve through points of arc length and value, of which there is at least one: see
/// HvPath2fProp1d::SetPropCurve.
HvRawFCurve HvPropCurve_Through(HvPoint2dArray const& points, double tolerance);

/// The parameter of the last key of a curve; 0 without keys.
double HvPropCurve_Reach(HvRawFCurve const& curve);

#endif
