// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws a heart four ways into small rasters and prints their pixels: filled with hard edges, with
// smooth ones, softly, and as a stroke.

#include <hv/hv.h>

#include <cstdio>

namespace {

constexpr int kWidth = 30;
constexpr int kHeight = 14;

/// A heart around (0, 12), its tip at (0, 24).
HvPath2f Heart()
{
    HvPath2f path(13);
    path.Moveto({0, 24});
    path.Curveto({-4, 18}, {-12, 14}, {-12, 7});
    path.Curveto({-12, -2}, {-2, -2}, {0, 5});
    path.Curveto({2, -2}, {12, -2}, {12, 7});
    path.Curveto({12, 14}, {4, 18}, {0, 24});
    path.Closeto();
    return path;
}

void Print(char const* what, HvUByteRaster const& raster)
{
    static constexpr char kShades[] = " .:-=+*#%@";
    std::printf("%s\n", what);
    for (int y = 0; y < raster.height; ++y) {
        for (int x = 0; x < raster.width; ++x) {
            std::putchar(kShades[raster.data[y * raster.width + x] * 9 / 255]);
        }
        std::putchar('\n');
    }
}

}  // namespace

int main()
{
    HvPath2f const heart = Heart();

    // The context says how: where the shape's (0, 0) comes to lie, and its scale. A character is
    // twice as high as it is wide.
    HvGC gc;
    gc.transform.Translate(15, 0.5, 0).Scale(1.1, 0.52, 1);
    gc.flatness = 0.25;

    HvUByteRaster hard(kWidth, kHeight, 0);
    heart.Fill(gc, hard, nullptr);
    Print("Fill:", hard);

    // The last argument may be a function that is asked now and then whether to stop.
    HvUByteRaster smooth(kWidth, kHeight, 0);
    heart.AAFill(gc, smooth, nullptr);
    Print("AAFill:", smooth);

    // Blurred over six pixels; the profile of the blur is the curve gc.falloff.
    gc.softRadiusA = 6;
    HvUByteRaster soft(kWidth, kHeight, 0);
    heart.SoftFill(gc, soft, nullptr);
    Print("SoftFill:", soft);

    gc.strokeWidth = 2;
    gc.joinStyle = 2;
    HvUByteRaster line(kWidth, kHeight, 0);
    heart.Stroke(gc, line);
    Print("Stroke:", line);
}
