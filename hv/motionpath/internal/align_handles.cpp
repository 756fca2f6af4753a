// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The directions of the handles of a node.

#include <hv/motionpath/internal/align_handles.h>

#include <limits>

bool HvHandle_Normalize(HvPoint3<double>& v)
{
    double const length = HvPoint3_Length(v);
    // Written so that NaN is no length either.
    if (!(length >= kLeastHandle && length <= std::numeric_limits<double>::max())) {
        return false;
    }
    v = HvPoint3<double>(v.x / length, v.y / length, v.z / length);
    return true;
}

int HvHandle_Align(HvPoint3<double>& before, HvPoint3<double> const& node, HvPoint3<double>& after)
{
    HvPoint3<double> const a = before - node;
    HvPoint3<double> const b = node - after;
    double const la = HvPoint3_Length(a);
    double const lb = HvPoint3_Length(b);
    HvPoint3<double> d = (a + b) * 0.5;
    if (!(la >= kLeastHandle) || !(lb >= kLeastHandle) || !HvHandle_Normalize(d)) {
        return 0;
    }
    before = node + d * la;
    after = node - d * lb;
    return 1;
}
