// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Splitting a cubic of space.

#include <hv/bezier/HvBezierTool_split.h>

#include <hv/bezier/cubic_split.h>

void HvBezierTool_SplitCubic3d(HvPoint3<double> const* cubic, HvPoint3<double>* out, double t)
{
    HvCubic_SplitInner(cubic, out, t);
}
