// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#ifndef HV_TOOLS_PAINT_CANVAS_H
#define HV_TOOLS_PAINT_CANVAS_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// A colour that is not premultiplied, each part from 0 to 255.
struct PaintColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
};

/// A rectangle of pixels: columns from `left` up to but not including `right`, rows likewise.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool IsEmpty() const { return left >= right || top >= bottom; }
};

/// Pixels of red, green, blue and alpha, premultiplied by alpha, row by row from the top; at first
/// all transparent. Painting is "source over" in the numbers as they stand, without a gamma, as
/// viewers of SVG do it.
class Canvas {
public:
    Canvas(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    /// The four bytes of a pixel.
    std::uint8_t const* Pixel(int x, int y) const { return &bytes_[Offset(x, y)]; }

    void Fill(PaintColour const& colour);
    /// Paints a colour where `coverage`, a byte for each pixel of the canvas, lets it through. Only
    /// the pixels of `box`, which lies in the canvas, are looked at.
    void Paint(std::uint8_t const* coverage, PixelBox const& box, PaintColour const& colour);
    /// Paints a canvas of the same size over this one, made fainter by `opacity`, 0 to 255.
    void Paint(Canvas const& layer, std::uint8_t opacity);

    /// The pixels without the premultiplication, four bytes each, as PNG has them.
    std::vector<std::uint8_t> StraightPixels() const;

private:
    std::size_t Offset(int x, int y) const
    {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                static_cast<std::size_t>(x)) *
               4;
    }

    int width_;
    int height_;
    std::vector<std::uint8_t> bytes_;
};

#endif
