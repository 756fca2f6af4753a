// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Rasters: fills, soft fills, strokes, direct scans, distance maps.

#include "families.h"
#include "sample_paths.h"

#include <hv/raster/HvDoubleRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>

namespace {

constexpr int kSize = 200;
constexpr unsigned int kRasters = 24;

void AddPixels(HvUByteRaster const& raster, Digest& digest)
{
    digest.AddBytes(raster.data, static_cast<std::size_t>(raster.width * raster.height));
}

/// What `draw(gc, raster)` leaves on an empty raster.
template <class Draw>
void AddDrawn(unsigned int item, Draw draw, Digest& digest)
{
    HvGC gc;
    gc.fillRule = static_cast<int>(item % 2);
    gc.strokeWidth = 1 + 0.3 * item;
    gc.softRadiusA = 0.5 * item;
    gc.softRadiusB = 2 + 0.25 * item;
    gc.transform.RotateXY(3.0 * item, {100, 100});
    HvUByteRaster raster(kSize, kSize, 0);
    draw(gc, raster);
    AddPixels(raster, digest);
}

void AddFills(unsigned int item, Digest& digest)
{
    HvPath2f const path = SamplePath(item);
    auto const fill = [&](HvGC const& gc, HvUByteRaster& raster) {
        path.Fill(gc, raster, nullptr);
    };
    auto const smooth = [&](HvGC const& gc, HvUByteRaster& raster) {
        path.AAFill(gc, raster, nullptr);
    };
    AddDrawn(item, fill, digest);
    AddDrawn(item, smooth, digest);
}

void AddSoftFills(unsigned int item, Digest& digest)
{
    HvPath2f const path = SamplePath(item);
    AddDrawn(
        item, [&](HvGC const& gc, HvUByteRaster& raster) { path.SoftFill(gc, raster, nullptr); },
        digest);
}

void AddStrokes(unsigned int item, Digest& digest)
{
    HvPath2f const path = SamplePath(item);
    AddDrawn(
        item, [&](HvGC const& gc, HvUByteRaster& raster) { path.Stroke(gc, raster); }, digest);
}

void AddDirectScans(unsigned int item, Digest& digest)
{
    SampleNumbers numbers(item);
    HvPoint2<float> const a = numbers.PointIn(0, 200);
    HvPoint2<float> const b = numbers.PointIn(0, 200);
    HvPoint2<float> const c = numbers.PointIn(0, 200);
    HvRect2f const rect(a, b, c);
    HvOval2f const oval(a, b, c);
    for (HvShape2f const* shape :
         {static_cast<HvShape2f const*>(&rect), static_cast<HvShape2f const*>(&oval)}) {
        AddDrawn(
            item, [&](HvGC const& gc, HvUByteRaster& raster) { shape->Fill(gc, raster, nullptr); },
            digest);
    }
    AddDrawn(
        item, [&](HvGC const& gc, HvUByteRaster& raster) { oval.RadialFill(gc, raster); }, digest);
}

void AddDistances(unsigned int item, Digest& digest)
{
    HvUByteRaster mask(kSize, kSize, 0);
    SampleNumbers numbers(item);
    for (int i = 0; i < 50; ++i) {
        std::size_t const place = numbers.Below(kSize * kSize);
        mask.data[place] = 1;
    }
    HvDoubleRaster distances(kSize, kSize, 0.0);
    distances.SetToSquaredEuclideanDistanceMap(mask);
    for (int i = 0; i < kSize * kSize; ++i) {
        digest.Add(distances.data[i]);
    }
}

}  // namespace

void AddRasterFamilies(Families& families)
{
    families.push_back({"raster_fills", kRasters, AddFills});
    families.push_back({"raster_soft_fills", kRasters, AddSoftFills});
    families.push_back({"raster_strokes", kRasters, AddStrokes});
    families.push_back({"raster_direct_scans", kRasters, AddDirectScans});
    families.push_back({"raster_distances", 4, AddDistances});
}
