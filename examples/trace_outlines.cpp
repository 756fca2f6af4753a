// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Draws the outlines of pixels: along their sides, and fitted by curves.
//
//     hv_example_trace_outlines [FILE]     writes the picture, trace_outlines.svg by default
//
// On the left the polygons with their directions, a dot where each starts; outer contours are blue,
// holes red. Then the curves within half a pixel and within one.

#include "support/PixelPanel.h"

namespace {

constexpr int kSize = 30;
constexpr unsigned char kInk = 1;

using Point = HvPoint2<float>;

/// Gives `value` to the pixels of an oval.
void PaintOval(HvUByteRaster& raster, Point const& min, Point const& max, unsigned char value)
{
    HvOval2f const oval(min, Point(max.x, min.y), Point(min.x, max.y));
    HvUByteRaster mask(raster.width, raster.height, 0);
    oval.Fill(HvGC(), mask, nullptr);
    for (unsigned int i = 0; i < mask.NumPixels(); ++i) {
        raster.data[i] = mask.data[i] != 0 ? value : raster.data[i];
    }
}

/// A letter with a counter and a stem, and a dot in the counter.
HvUByteRaster Picture()
{
    HvUByteRaster raster(kSize, kSize, 0);
    PaintOval(raster, Point(2, 6), Point(24, 28), kInk);
    PaintOval(raster, Point(6, 10), Point(20, 24), 0);
    for (int y = 2; y < 28; ++y) {
        for (int x = 21; x < 26; ++x) {
            raster.data[y * kSize + x] = kInk;
        }
    }
    PaintOval(raster, Point(10, 14), Point(15, 19), kInk);
    return raster;
}

}  // namespace

int main(int argc, char** argv)
{
    SvgPage page(argc > 1 ? argv[1] : "trace_outlines.svg", 950, 350,
                 "font-family='sans-serif' font-size='15' fill='none'");
    HvUByteRaster const raster = Picture();
    HvVectorizer const vectorizer(0, 0);
    HvExtent2<float> const everywhere;

    HvPath2f polygons(0);
    vectorizer.Vectorize(raster, kInk, everywhere, polygons);
    PixelPanel(page, 0, raster, kInk).Draw(polygons, "along the pixels");

    HvGC gc;
    gc.flatness = 0.5;
    HvPath2f near(0);
    vectorizer.VectorizeAndFit(raster, kInk, everywhere, gc, near);
    PixelPanel(page, 1, raster, kInk).Draw(near, "within half a pixel");

    gc.flatness = 1.0;
    HvPath2f smooth(0);
    vectorizer.VectorizeAndFit(raster, kInk, everywhere, gc, smooth);
    PixelPanel(page, 2, raster, kInk).Draw(smooth, "within a pixel");
    return page.Close("trace_outlines") ? 0 : 1;
}
