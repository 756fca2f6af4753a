// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Rasters: three fills, two rules, and a distance map.

#include "Picture.h"

#include <cmath>

namespace {

constexpr int kSize = 26;     // pixels of a raster, each way
constexpr double kPixel = 7;  // the side of one in the picture
constexpr double kTurn = 6.283185307179586;

/// A star of one line that crosses itself, so that it winds twice around its middle.
HvPath2f Star()
{
    HvPath2f star(6);
    for (int i = 0; i < 5; ++i) {
        double const angle = kTurn * (0.75 + 0.4 * i);
        HvPoint2<float> const corner(
            HvPoint2<double>(13 + 11.5 * std::cos(angle), 13.7 + 11.5 * std::sin(angle)));
        i == 0 ? star.Moveto(corner) : star.Lineto(corner);
    }
    star.Lineto(star.GetPoint(0));
    star.Closeto();
    return star;
}

/// Bands of equal distance from the star's outer corners.
HvUByteRaster Bands(HvPath2f const& star)
{
    HvUByteRaster seeds(kSize, kSize, 0);
    for (unsigned int i = 0; i + 1 < star.NumPoints(); ++i) {
        HvPoint2<float> const p = star.GetPoint(i);
        seeds.data[static_cast<int>(p.y) * kSize + static_cast<int>(p.x)] = 1;
    }
    HvDoubleRaster distances(kSize, kSize, 0);
    distances.SetToSquaredEuclideanDistanceMap(seeds);
    HvUByteRaster bands(kSize, kSize, 0);
    for (int i = 0; i < kSize * kSize; ++i) {
        double const distance = std::sqrt(distances.data[i]);
        bands.data[i] = static_cast<unsigned char>(distance < 8 ? 255 - 30 * distance : 15);
    }
    return bands;
}

}  // namespace

void DrawFills(std::FILE* file)
{
    Picture picture(file, 600, 440);
    HvPath2f const star = Star();
    HvGC gc;
    double const step = kSize * kPixel + 14;
    auto const show = [&](int column, int row, char const* title, HvUByteRaster const& raster) {
        double const x = 8 + column * step;
        double const y = 24 + row * (step + 20);
        picture.Text(x, y - 8, title);
        picture.Pixels(raster, x, y, kPixel);
    };

    HvUByteRaster hard(kSize, kSize, 0);
    star.Fill(gc, hard, nullptr);
    show(0, 0, "Fill, winding", hard);

    HvUByteRaster smooth(kSize, kSize, 0);
    star.AAFill(gc, smooth, nullptr);
    show(1, 0, "AAFill, winding", smooth);

    gc.fillRule = 0;
    HvUByteRaster parity(kSize, kSize, 0);
    star.AAFill(gc, parity, nullptr);
    show(2, 0, "AAFill, parity", parity);

    gc.fillRule = 1;
    gc.softRadiusA = 4;
    HvUByteRaster soft(kSize, kSize, 0);
    star.SoftFill(gc, soft, nullptr);
    show(0, 1, "SoftFill, radius 4", soft);

    gc.softClipToShape = 0;
    HvUByteRaster glow(kSize, kSize, 0);
    star.SoftFill(gc, glow, nullptr);
    show(1, 1, "not cut by the shape", glow);

    show(2, 1, "distances from five pixels", Bands(star));
}
