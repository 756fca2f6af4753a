// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A panel of a picture that shows pixels and outlines over them.

#ifndef EXAMPLES_SUPPORT_PIXELPANEL_H
#define EXAMPLES_SUPPORT_PIXELPANEL_H

#include "SvgPage.h"

/// Panels stand side by side, each for the pixels of a raster that have the value `ink`.
class PixelPanel {
public:
    PixelPanel(SvgPage& page, int index, HvUByteRaster const& raster, unsigned char ink);

    /// Draws the pixels as squares and the outlines of a path over them, below a title that tells
    /// the path's points. Outer ones are blue, holes red, told by their direction; a dot shows
    /// where one starts, and where the path consists of lines an arrow on each side of some length
    /// which way it goes.
    void Draw(HvPath2f const& path, char const* title);

private:
    static constexpr double kPixel = 10;  // side of a pixel in the picture

    void DrawPixels();
    void DrawSubpath(HvPoint2fArray const& flat, bool hasArrows);
    double PageX(double x) const { return left_ + kPixel * x; }
    double PageY(double y) const { return 40 + kPixel * y; }

    SvgPage& page_;
    HvUByteRaster const& raster_;
    unsigned char const ink_;
    double const left_;
};

#endif
