// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The oval.

#ifndef HV_SHAPE_HVOVAL2F_H
#define HV_SHAPE_HVOVAL2F_H

#include <hv/shape/HvParallelogramShape2f.h>

class HvOval2f;
class HvPath2f;

extern template class HV_API HvParallelogramShape2f<HvOval2f>;

/// The ellipse that touches the sides of a parallelogram of three points in their middles: its
/// handles 1, 3, 5 and 7 lie on the curve, 2, 4, 6 and 8 are the corners. See
/// HvParallelogramShape2f for what it shares with the rectangle; its extents are those of the
/// parallelogram, tight or not.
///
/// It hits through a path and fills without one. Fill never asks the interrupt test.
class HV_API HvOval2f : public HvParallelogramShape2f<HvOval2f> {
public:
    static constexpr Kind kKind = Oval;  ///< what QueryShapeKind knows it by

    /// The ways to make a parallelogram.
    using HvParallelogramShape2f::HvParallelogramShape2f;

    int IsIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                             int skipExtentTest) const override;
    bool IsInteriorIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                      int skipExtentTest) const override;

    /// Appends the outline to `path`: four cubics from handle 1 through 3, 5 and 7, closed. Their
    /// handles are computed in double.
    void SetupPathRep(HvPath2f& path) const;
    /// Sets the pixels whose centre lies inside. Large ovals with their axes along x and y, and
    /// thin ones, are scanned by ways of their own, so that equal halves come out equal and no
    /// part is lost between two rows.
    void Fill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    /// Writes every pixel of the raster: inside the falloff of `gc` over the distance from the
    /// centre, which reaches the falloff's last key at the curve; outside, 0. Does nothing when the
    /// parallelogram misses the raster.
    void RadialFill(HvGC const& gc, HvUByteRaster& raster) const;
};

#endif
