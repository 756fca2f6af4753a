// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The oval: its outline and hits, and the members that it shares with the rectangle.

#include <hv/shape/HvOval2f.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/internal/HvParallelogramShape2f.inl>
#include <hv/shape/internal/HvRadialProfile.h>
#include <hv/shape/internal/oval_outline.h>

#include <cmath>

template class HvParallelogramShape2f<HvOval2f>;

namespace {

/// The transform that takes the oval to the circle of `radius` about the origin; 0 when the oval
/// has no area.
int MakeCircleTransform(HvParallelogram2f const& frame, HvTransfo4 const& toDevice, double radius,
                        HvTransfo4& toCircle)
{
    using Point = HvPoint2<double>;
    Point const from[3] = {toDevice.Map(Point(frame.p0)), toDevice.Map(Point(frame.p1)),
                           toDevice.Map(Point(frame.p2))};
    Point const to[3] = {Point(-radius, -radius), Point(radius, -radius), Point(-radius, radius)};
    return toCircle.SetTo3PointTransformXY(from, to);
}

}  // namespace

void HvOval2f::SetupPathRep(HvPath2f& path) const
{
    HvShapeLock const lock(*this);
    HvOvalHandles handles;
    frame_.GetHandles(1, 8, handles);
    HvOvalOutline outline;
    HvOvalOutline_Get<double>(handles, outline);
    HvOvalOutline_AppendTo(path, outline);
}

int HvOval2f::IsIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                   int skipExtentTest) const
{
    return HvShapeOutline<HvOval2f>(*this)->IsIntersectingExtent(gc, extent, skipExtentTest);
}

bool HvOval2f::IsInteriorIntersectingExtent(HvGC const& gc, HvExtent2<float> const& extent,
                                            int skipExtentTest) const
{
    return HvShapeOutline<HvOval2f>(*this)->IsInteriorIntersectingExtent(gc, extent,
                                                                         skipExtentTest);
}

void HvOval2f::RadialFill(HvGC const& gc, HvUByteRaster& raster) const
{
    HvParallelogram2f frame;
    if (!GetFrameOnRaster(gc, raster, frame)) {
        return;
    }
    HvRadialProfile const profile(gc.falloff);
    double const radius = profile.Length();
    HvTransfo4 toCircle;
    // A falloff that ends at its centre leaves nothing to draw, like an oval without area.
    bool const isDrawn =
        radius > 0.0 && MakeCircleTransform(frame, gc.transform, radius, toCircle) != 0;
    unsigned char* pixel = raster.data;
    for (int y = 0; y < raster.height; ++y) {
        for (int x = 0; x < raster.width; ++x) {
            HvPoint2<double> const p = toCircle.Map(HvPoint2<double>(x + 0.5, y + 0.5));
            double const squared = p.x * p.x + p.y * p.y;
            bool const isInside = isDrawn && !(squared > radius * radius);
            *pixel++ = isInside ? profile.CoverageAt(std::sqrt(squared)) : 0;
        }
    }
}
