// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle, which may have been turned and sheared.

#ifndef HV_SHAPE_HVRECT2F_H
#define HV_SHAPE_HVRECT2F_H

#include <hv/shape/HvParallelogramShape2f.h>

class HvPath2f;
class HvRect2f;

extern template class HV_API HvParallelogramShape2f<HvRect2f>;

/// A rectangle that rotation, scale and shear keep exact: in general a parallelogram of three
/// points. See HvParallelogramShape2f for what it shares with the oval.
///
/// It hits and fills by its corners, without a path. Fill never asks the interrupt test.
class HV_API HvRect2f : public HvParallelogramShape2f<HvRect2f> {
public:
    static constexpr Kind kKind = Rect;  ///< what QueryShapeKind knows it by

    /// The point about which a dragged handle turns or scales.
    enum CenterStyle : int {
        RectangleCenter = 0,  ///< the centre of the rectangle
        OppositeHandle = 1,   ///< the handle that faces the dragged one; of handle 0, handle 4
        Origin = 2            ///< the point (0, 0), as any other value
    };

    /// The ways to make a parallelogram.
    using HvParallelogramShape2f::HvParallelogramShape2f;

    int IsIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                             int skipExtentTest) const override;
    bool IsInteriorIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                      int skipExtentTest) const override;

    // Dragging a handle, 0 to 8, to the point `to`. A rectangle is degenerate when p1 or p2 lies
    // within 1e-7 of p0 on both axes, when its area is below 1e-7, or when it is not finite.

    /// Moves the whole rectangle along. Returns 1.
    int HandleTranslate(unsigned int handle, HvPoint2<float> const& to);
    /// Turns the rectangle about a centre until the handle points at `to`. Refuses when either is
    /// within 1e-7 of the centre on both axes.
    bool HandleRotate(unsigned int handle, HvPoint2<float> const& to, CenterStyle style);
    /// Moves one side along, the others stay joined to it: the handles 1 and 2 move the end of the
    /// width side, 3 and 4 the end of the height side, 5 and 6 the side of p0 and p2, 7 and 8 the
    /// side of p0 and p1. Handle 0 moves nothing. Returns 1.
    int HandleSkew(unsigned int handle, HvPoint2<float> const& to);
    /// The same; refuses a rectangle that is degenerate or would be after it. The last argument is
    /// not used.
    int HandleSkew(unsigned int handle, HvPoint2<float> const& to, HvPoint2<float> const& unused);
    /// Scales the rectangle about a centre, with the directions of its sides kept. The middle of a
    /// side stretches across that side, which comes to lie on `to`, and may be taken beyond the
    /// centre: the rectangle then turns over. A corner keeps the ratio of the sides: it is taken to
    /// where `to` falls on the line through the centre and itself, on its own side of the centre.
    ///
    /// Refuses handle 0, a centre on the handle or its side, and a rectangle that is degenerate or
    /// would be after it.
    int HandleScale(unsigned int handle, HvPoint2<float> const& to, CenterStyle style);
    /// The same about the point `anchor`, where a corner stretches across both its sides, each by
    /// itself, and comes to lie on `to`; it too may be taken beyond the anchor.
    int HandleScale(unsigned int handle, HvPoint2<float> const& to, HvPoint2<float> const& anchor);

    // Outline and rendering.

    /// Appends the outline to `path`: p0, p1, the fourth corner, p2, p0, closed.
    void SetupPathRep(HvPath2f& path) const;
    /// Sets the pixels whose centre lies inside: of the pixels with their centre on the outline
    /// those at the left and the lower side, in the sense of smaller coordinates.
    void Fill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const override;
    /// Sets the pixels inside to the falloff of `gc` over their distance from the centre, which is
    /// 0 there and 1 at the sides; the others keep their value.
    void RadialFill(HvGC const& gc, HvUByteRaster& raster) const;

private:
    HvPoint2<float> CenterFor(unsigned int handle, CenterStyle style) const;
};

#endif
