// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The oval: the hard fill.

#include <hv/shape/HvOval2f.h>

#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/scan_convert.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/internal/oval_scan.h>

#include <cstddef>

namespace {

/// Pixels are sampled at their middle.
constexpr double kPixelMiddle = 0.5;
constexpr unsigned char kFilled = 255;

void ScanGeneral(HvParallelogram2f const& oval, HvUByteRaster& raster)
{
    HvFloatRaster unused(1, 1, 0.0F);
    ScanConvert(oval.p0, oval.p1, oval.p2, kPixelMiddle, raster, kFilled, unused, 0, OvalFillPlain);
}

HvPoint2<float> Transposed(HvPoint2<float> const& p)
{
    return HvPoint2<float>(p.y, p.x);
}

/// Scans the columns of the raster as rows of another one.
void ScanTransposed(HvParallelogram2f const& oval, HvUByteRaster& raster)
{
    HvUByteRaster columns(raster.height, raster.width, 0);
    ScanGeneral(HvParallelogram2f(Transposed(oval.p0), Transposed(oval.p1), Transposed(oval.p2)),
                columns);
    for (int y = 0; y < raster.height; ++y) {
        unsigned char* const row = raster.data + static_cast<std::ptrdiff_t>(y) * raster.width;
        for (int x = 0; x < raster.width; ++x) {
            if (columns.data[static_cast<std::ptrdiff_t>(x) * raster.height + y] == kFilled) {
                row[x] = kFilled;
            }
        }
    }
}

}  // namespace

void HvOval2f::Fill(HvGC const& gc, HvUByteRaster& raster, int (*)()) const
{
    HvParallelogram2f oval;
    if (!GetFrameOnRaster(gc, raster, oval)) {
        return;
    }
    oval.Transform(gc.transform);
    switch (HvOvalScan_For(oval)) {
    case HvOvalScan::Isothetic: {
        HvFloatRaster unused(1, 1, 0.0F);
        ScanConvertIsothetic(oval.p0, oval.p1, oval.p2, kPixelMiddle, raster, kFilled, unused, 0,
                             OvalFillPlain);
        break;
    }
    case HvOvalScan::General:
        ScanGeneral(oval, raster);
        break;
    case HvOvalScan::Transposed:
        ScanTransposed(oval, raster);
        break;
    }
}
