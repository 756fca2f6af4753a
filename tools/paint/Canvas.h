// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#ifndef HV_TOOLS_PAINT_CANVAS_H
#define HV_TOOLS_PAINT_CANVAS_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// a * b / 255 of two bytes, rounded: exact for all of them.
inline std::uint8_t PaintByte_Product(unsigned int a, unsigned int b)
{
    unsigned int const product = a * b + 128;
    return static_cast<std::uint8_t>((product + (product >> 8)) >> 8);
}

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
    /// All of it.
    PixelBox Box() const { return {0, 0, width_, height_}; }
    /// The four bytes of a pixel.
    std::uint8_t const* Pixel(int x, int y) const { return &bytes_[Offset(x, y)]; }

    /// Stores the four bytes of a pixel, premultiplied.
    void SetPixel(int x, int y, PaintColour const& premultiplied);
    void Fill(PaintColour const& colour);
    /// Paints a colour where `coverage`, a byte for each pixel of the canvas, lets it through. Only
    /// the pixels of `box`, which lies in the canvas, are looked at.
    void Paint(std::uint8_t const* coverage, PixelBox const& box, PaintColour const& colour);
    /// The same with a colour of its own for each pixel: `colourAt(x, y)` gives a PaintColour.
    template <class ColourAt>
    void PaintEach(std::uint8_t const* coverage, PixelBox const& box, ColourAt const& colourAt)
    {
        for (int y = box.top; y < box.bottom; ++y) {
            std::size_t const row = Offset(0, y);
            for (int x = box.left; x < box.right; ++x) {
                std::uint8_t const share = coverage[row / 4 + static_cast<std::size_t>(x)];
                if (share != 0) {
                    PaintPixel(row + static_cast<std::size_t>(x) * 4, share, colourAt(x, y));
                }
            }
        }
    }
    /// Makes every pixel fainter by `coverage`, a byte for each.
    void Multiply(std::uint8_t const* coverage);
    /// Makes every pixel transparent.
    void Clear();
    /// Paints a canvas of the same size over this one, made fainter by `opacity`, 0 to 255.
    void Paint(Canvas const& layer, std::uint8_t opacity);

    /// The pixels without the premultiplication, four bytes each, as PNG has them.
    std::vector<std::uint8_t> StraightPixels() const { return StraightPixels(Box()); }
    /// Those of `box`, which lies in the canvas.
    std::vector<std::uint8_t> StraightPixels(PixelBox const& box) const;
    /// The smallest box of all pixels that are not transparent; empty when there is none.
    PixelBox PaintedBox() const;

private:
    std::size_t Offset(int x, int y) const
    {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                static_cast<std::size_t>(x)) *
               4;
    }

    void PaintPixel(std::size_t offset, std::uint8_t share, PaintColour const& colour);

    int width_;
    int height_;
    std::vector<std::uint8_t> bytes_;
};

#endif
