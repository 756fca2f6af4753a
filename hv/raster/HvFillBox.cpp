// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The part of a raster that a shape can reach.

#include <hv/raster/HvFillBox.h>

#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>

HvExtent2<double> HvFillBox::Clip() const
{
    return HvExtent2<double>(std::min(x0, x1), std::min(y0, y1), std::max(x0, x1),
                             std::max(y0, y1));
}

int HvFillBox_FromExtent(HvExtent2<float> const& extent, HvUByteRaster const& raster,
                         HvFillBox& box)
{
    if (extent.state == HvExtent2<float>::Empty) {
        return 0;
    }
    if (extent.state == HvExtent2<float>::WholePlane) {
        box = {0, 0, raster.width, raster.height, true};
        return 1;
    }
    double const width = raster.width;
    double const height = raster.height;
    // Said so that a NaN does not touch.
    if (!(extent.min.x <= width && extent.max.x >= 0.0 && extent.min.y <= height &&
          extent.max.y >= 0.0)) {
        return 0;
    }
    double const left = std::floor(double(extent.min.x));
    double const top = std::floor(double(extent.min.y));
    double const right = std::ceil(double(extent.max.x));
    double const bottom = std::ceil(double(extent.max.y));
    box.isClamped = left < 0.0 || top < 0.0 || right > width || bottom > height;
    box.x0 = HvSaturate_To<int>(std::max(left, 0.0));
    box.y0 = HvSaturate_To<int>(std::max(top, 0.0));
    box.x1 = HvSaturate_To<int>(std::min(right, width));
    box.y1 = HvSaturate_To<int>(std::min(bottom, height));
    return 1;
}
