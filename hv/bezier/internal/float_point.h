// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Points of double for a sink, which takes float.

#ifndef HV_BEZIER_INTERNAL_FLOAT_POINT_H
#define HV_BEZIER_INTERNAL_FLOAT_POINT_H

#include <hv/foundation/HvPoint2.h>

#include <algorithm>
#include <limits>

/// The nearest finite number of float; NaN gives the least one.
inline float HvFloat_Nearest(double value)
{
    constexpr double kGreatest = std::numeric_limits<float>::max();
    return static_cast<float>(std::min(std::max(-kGreatest, value), kGreatest));
}

inline HvPoint2<float> HvFloatPoint_Nearest(HvPoint2<double> const& p)
{
    return {HvFloat_Nearest(p.x), HvFloat_Nearest(p.y)};
}

#endif
