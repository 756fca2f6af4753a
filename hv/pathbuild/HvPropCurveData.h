// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The property curve of one subpath.

#ifndef HV_PATHBUILD_HVPROPCURVEDATA_H
#define HV_PATHBUILD_HVPROPCURVEDATA_H

#include <hv/fcurve/HvRawFCurve.h>
#include <hv/foundation/HvMemory.h>

/// A subpath of an HvPath2fProp1d and the property along it.
struct HV_API HvPropCurveData : public HvAllocated {
    /// Copies `property`.
    HvPropCurveData(unsigned int start, HvRawFCurve const& property)
        : subpathStart(start), curve(property)
    {
    }

    unsigned int subpathStart;  ///< index of the first point of the subpath
    HvRawFCurve curve;          ///< the property over arc length
};

#endif
