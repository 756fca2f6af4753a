// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Filling a path. The path is held while it is flattened; the scan reads a copy.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/HvPointTagArray.h>
#include <hv/raster/polygon_fill.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvShapeLock.h>
#include <hv/shape/internal/rendering_flatness.h>

namespace {

/// What a fill of a path scans.
class FlattenedPath {
public:
    /// Flattens the closed subpaths, clipped where the path sticks out of the raster.
    FlattenedPath(HvPath2f const& path, HvGC const& gc, HvUByteRaster const& raster)
    {
        HvShapeLock const lock(path);
        HvExtent2<float> extent;
        path.GetExtent(extent);
        if (HvFillBox_FromExtent(gc.transform.Map(extent), raster, box_) == 0) {
            return;
        }
        double const tolerance = HvRenderingFlatness(gc);
        unsigned int const subpaths =
            box_.isClamped
                ? path.TransformFlattenAndClipClosedSubPaths(gc.transform, tolerance, box_.Clip(),
                                                             points_, tags_)
                : path.TransformAndFlattenClosedSubPaths(gc.transform, tolerance, points_, tags_);
        isVisible_ = subpaths != 0;
    }

    /// Whether there is anything to scan.
    bool IsVisible() const { return isVisible_; }
    HvPolygons Polygons(int fillRule) const { return {points_, tags_, fillRule, box_}; }

private:
    HvPoint2dArray points_;
    HvPointTagArray tags_;
    HvFillBox box_ = {};
    bool isVisible_ = false;
};

/// Full coverage in a context to the end of the scope, whatever passes through it. The context is
/// the caller's, which is why no two soft fills may share one at the same time.
class FullCoverage {
public:
    explicit FullCoverage(HvGC const& gc) : gc_(const_cast<HvGC&>(gc)), before_(gc.maxCoverage)
    {
        gc_.maxCoverage = 1.0;
    }
    ~FullCoverage() { gc_.maxCoverage = before_; }
    FullCoverage(FullCoverage const&) = delete;
    FullCoverage& operator=(FullCoverage const&) = delete;

private:
    HvGC& gc_;
    double before_;
};

}  // namespace

void HvPath2f::Fill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const
{
    FlattenedPath const flattened(*this, gc, raster);
    if (flattened.IsVisible()) {
        HvPolygons_Fill(flattened.Polygons(gc.fillRule), raster, interrupted);
    }
}

void HvPath2f::AAFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const
{
    FlattenedPath const flattened(*this, gc, raster);
    if (flattened.IsVisible()) {
        HvPolygons_AAFill(flattened.Polygons(gc.fillRule), gc.maxCoverage, raster, interrupted);
    }
}

void HvPath2f::SoftFill(HvGC const& gc, HvUByteRaster& raster, int (*interrupted)()) const
{
    double const radius = gc.softRadiusA + gc.softRadiusB;
    if (!HvBlurKernel::IsSoft(radius)) {
        AAFill(gc, raster, interrupted);
        return;
    }
    FlattenedPath const flattened(*this, gc, raster);
    if (!flattened.IsVisible()) {
        return;
    }
    HvBlurKernel const kernel(radius, [&gc](double x) { return gc.falloff.Eval(x, 0); });
    bool const isDone = HvPolygons_SoftFill(flattened.Polygons(gc.fillRule), kernel, gc.maxCoverage,
                                            raster, interrupted) != 0;
    if (!isDone || gc.softClipToShape != 1) {
        return;
    }
    HvUByteRaster mask(raster.width, raster.height, 0);
    {
        FullCoverage const full(gc);
        AAFill(gc, mask, interrupted);
    }
    if (interrupted == nullptr || interrupted() == 0) {
        HvUByteRaster_ClipToMask(raster, mask);
    }
}
