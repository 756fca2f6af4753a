// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Giving keys that a tool has put down their tangents again.

#ifndef HV_FCURVE_INTERNAL_CFCWANTEDHANDLES_H
#define HV_FCURVE_INTERNAL_CFCWANTEDHANDLES_H

#include <hv/fcurve/internal/HvStdFCurveImpl.h>

/// The handles that a key of a standard curve shall have, as vectors from the key.
struct CFCWantedHandles {
    unsigned int index;  ///< of the key in the curve
    HvPoint2<double> left;
    HvPoint2<double> right;
};

/// Stores the handles of all keys of the list, which it sorts by index. Two handles that face each
/// other across a segment are stored together when they make a valid segment; one by one, each
/// shortened as far as its segment needs, they would be cut by what stands there in between. A
/// handle for which no length serves stays as it is.
void CFCWantedHandles_Store(HvStdFCurveImpl& impl, HvAltDynArray<CFCWantedHandles>& wanted);

#endif
