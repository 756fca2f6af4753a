// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The contour tracer: from pixels to callbacks.

#include <hv/vectorize/ObVectorize.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/internal/ObTracer.h>

void ObVectorize(ObContext& context, HvUByteRaster const& raster, unsigned char value,
                 HvExtent2<float> const& extent)
{
    context.begin(context.user, raster, value, extent);
    if (raster.data != nullptr && raster.NumPixels() != 0 && raster.width <= kObWidestRaster) {
        ObTracer(context).Trace(raster, value);
    }
    context.end(context.user);
}
