// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How finely fills and strokes flatten.

#ifndef HV_SHAPE_INTERNAL_RENDERING_FLATNESS_H
#define HV_SHAPE_INTERNAL_RENDERING_FLATNESS_H

#include <hv/shape/HvGC.h>

/// The flatness of rendering, in device units: that of the context, at least a quarter; one that is
/// no number counts as the least.
inline double HvRenderingFlatness(HvGC const& gc)
{
    constexpr double kLeast = 0.25;
    return gc.flatness > kLeast ? gc.flatness : kLeast;
}

#endif
