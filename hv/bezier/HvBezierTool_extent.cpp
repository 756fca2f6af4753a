// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A bounding box of a cubic, tighter than that of its control points.

#include <hv/bezier/HvBezierTool_extent.h>

#include <hv/bezier/cubic_split.h>

namespace {

template <class T>
void Augment(HvExtent2<T>& extent, HvPoint2<T> const* cubic, int skipFirst)
{
    if (extent.state == HvExtent2<T>::WholePlane) {
        return;
    }
    // The four parts in order along the curve; neighbours share a point: 0-3, 3-6, 6-9, 9-12.
    HvPoint2<T> halves[7];
    HvPoint2<T> quarters[13];
    HvCubic_Halve(cubic, halves);
    HvCubic_Halve(halves, quarters);
    HvCubic_Halve(halves + 3, quarters + 6);
    for (int i = skipFirst != 0 ? 1 : 0; i < 13; ++i) {
        extent.Augment(quarters[i]);
    }
}

}  // namespace

void HvBezierTool_AugmentExtentWithCubic2dTightExtent(HvExtent2<double>& extent,
                                                      HvPoint2<double> const* cubic, int skipFirst)
{
    Augment(extent, cubic, skipFirst);
}

void HvBezierTool_AugmentExtentWithCubic2fTightExtent(HvExtent2<float>& extent,
                                                      HvPoint2<float> const* cubic, int skipFirst)
{
    Augment(extent, cubic, skipFirst);
}
