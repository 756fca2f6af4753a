// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#ifndef HV_TOOLS_PAINT_CANVAS_H
#define HV_TOOLS_PAINT_CANVAS_H

#include <tools/paint/Coverage.h>
#include <tools/paint/PixelBox.h>
#include <tools/paint/paint_pixel.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// What a paint is seen through: a byte for each pixel of the canvas, and for all of them.
struct Veil {
    std::uint8_t const* shares;
    std::uint8_t opacity;
};

/// Pixels of red, green, blue and alpha, premultiplied by alpha, row by row from the top; at first
/// all transparent. Painting is "source over" in the numbers as they stand, without a gamma, as
/// viewers of SVG do it.
class Canvas {
public:
    Canvas(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    /// All of it.
    PixelBox Box() const { return {0, 0, width_, height_}; }
    /// Outside of it all pixels are transparent, as nothing was painted there.
    PixelBox const& TouchedBox() const { return touched_; }
    /// The four bytes of a pixel.
    std::uint8_t const* Pixel(int x, int y) const
    {
        return PaintPixel_Bytes(pixels_[Offset(x, y)]);
    }
    /// Stores the four bytes of a pixel, premultiplied.
    void SetPixel(int x, int y, PaintColour const& premultiplied);

    void Fill(PaintColour const& colour);
    /// Makes every pixel transparent. Cost: the touched box.
    void Clear();
    /// Paints a colour on what is covered, which lies in the canvas.
    void Paint(Coverage const& coverage, PaintColour const& colour);
    /// The same through a veil; just as if it were painted on a canvas of its own, that multiplied
    /// by the shares of the veil, and painted over this one.
    void Paint(Coverage const& coverage, PaintColour const& colour, Veil const& veil);
    /// Paints a colour for each pixel: `colours.Row(x, y, count, pixels)` stores those of `count`
    /// pixels from (x, y) on, premultiplied; `colours.IsOpaque()` tells whether all are.
    template <class Colours>
    void PaintColours(Coverage const& coverage, Colours const& colours);
    /// Paints a canvas of the same size over this one, made fainter by `opacity`, 0 to 255.
    void Paint(Canvas const& layer, std::uint8_t opacity);
    /// Makes every pixel fainter by its share, a byte for each pixel. Only those of the touched box
    /// are looked at.
    void Multiply(std::uint8_t const* shares);

    /// The pixels without the premultiplication, four bytes each, as PNG has them.
    std::vector<std::uint8_t> StraightPixels() const { return StraightPixels(Box()); }
    /// Those of `box`, which lies in the canvas.
    std::vector<std::uint8_t> StraightPixels(PixelBox const& box) const;
    /// The smallest box of all pixels that are not transparent; empty when there is none.
    PixelBox PaintedBox() const;

private:
    std::size_t Offset(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }
    std::uint32_t* PixelsOf(Coverage::Run const& run) { return &pixels_[Offset(run.x, run.y)]; }

    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
    PixelBox touched_;
    std::vector<std::uint32_t> runColours_;  ///< scratch of PaintColours
};

template <class Colours>
void Canvas::PaintColours(Coverage const& coverage, Colours const& colours)
{
    touched_ = touched_.Union(coverage.Box());
    runColours_.resize(static_cast<std::size_t>(width_));
    coverage.ForEachRun([&](Coverage::Run const& run) {
        auto const length = static_cast<std::size_t>(run.length);
        std::uint32_t* const pixels = PixelsOf(run);
        if (run.shares == nullptr && colours.IsOpaque()) {
            colours.Row(run.x, run.y, length, pixels);
            return;
        }
        colours.Row(run.x, run.y, length, runColours_.data());
        for (std::size_t i = 0; i < length; ++i) {
            std::uint32_t const share = run.shares == nullptr ? 255U : run.shares[i];
            pixels[i] = PaintPixel_Over(pixels[i], runColours_[i], share);
        }
    });
}

#endif
