// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Vectors made to length 1.

#ifndef HV_PATHBUILD_INTERNAL_UNIT_DIRECTION_H
#define HV_PATHBUILD_INTERNAL_UNIT_DIRECTION_H

#include <hv/foundation/HvPoint2.h>

#include <cmath>

/// The direction from `a` to `b`, of length 1; zero when they are equal or no finite distance
/// apart. The difference is taken in double, where floats neither overflow nor vanish.
inline HvPoint2<double> HvDirection_FromTo(HvPoint2<float> const& a, HvPoint2<float> const& b)
{
    HvPoint2<double> const d = HvPoint2<double>(b) - HvPoint2<double>(a);
    double const length = HvPoint2_Length(d);
    return length > 0.0 && std::isfinite(length) ? HvPoint2<double>(d.x / length, d.y / length)
                                                 : HvPoint2<double>();
}

#endif
