// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rectangle: the fills that need no path.

#include <hv/shape/HvRect2f.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/scan_convert.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/internal/HvRadialProfile.h>

#include <cstddef>
#include <limits>

namespace {

/// Pixels are sampled at their middle.
constexpr double kPixelMiddle = 0.5;
/// What is farther away than any pixel inside.
constexpr float kNowhere = std::numeric_limits<float>::max();

}  // namespace

void HvRect2f::Fill(HvGC const& gc, HvUByteRaster& raster, int (*)()) const
{
    HvParallelogram2f rect;
    if (!GetFrameOnRaster(gc, raster, rect)) {
        return;
    }
    rect.Transform(gc.transform);
    HvFloatRaster unused(1, 1, kNowhere);
    ScanConvert(rect.p0, rect.p1, rect.p2, kPixelMiddle, raster, 255, unused, RectFillPlain);
}

void HvRect2f::RadialFill(HvGC const& gc, HvUByteRaster& raster) const
{
    HvParallelogram2f rect;
    if (!GetFrameOnRaster(gc, raster, rect)) {
        return;
    }
    rect.Transform(gc.transform);
    HvRadialProfile const profile(gc.falloff);
    HvFloatRaster distance(raster.width, raster.height, kNowhere);
    ScanConvert(rect.p0, rect.p1, rect.p2, kPixelMiddle, raster, 255, distance, RectFillRadial);
    std::size_t const count = raster.NumPixels();
    for (std::size_t i = 0; i < count; ++i) {
        if (kNowhere > distance.data[i]) {
            raster.data[i] = profile.CoverageAt(distance.data[i]);
        }
    }
}
