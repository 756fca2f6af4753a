// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#ifndef HV_TOOLS_PAINT_CANVAS_H
#define HV_TOOLS_PAINT_CANVAS_H

#include <tools/paint/paint_pixel.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// A rectangle of pixels: columns from `left` up to but not including `right`, rows likewise.
struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool IsEmpty() const { return left >= right || top >= bottom; }
    /// The smallest box around both; an empty one adds nothing.
    PixelBox Union(PixelBox const& other) const;
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
    /// Paints a colour where `coverage`, a byte for each pixel of the canvas, lets it through. Only
    /// the pixels of `box`, which lies in the canvas, are looked at.
    void Paint(std::uint8_t const* coverage, PixelBox const& box, PaintColour const& colour);
    /// The same with a colour for each pixel: `colourRow(x, y, count, pixels)` stores those of
    /// `count` pixels from (x, y) on, premultiplied.
    template <class ColourRow>
    void PaintRows(std::uint8_t const* coverage, PixelBox const& box, ColourRow const& colourRow);
    /// Paints a canvas of the same size over this one, made fainter by `opacity`, 0 to 255.
    void Paint(Canvas const& layer, std::uint8_t opacity);
    /// Makes every pixel fainter by `coverage`, a byte for each. Only those of the touched box are
    /// looked at.
    void Multiply(std::uint8_t const* coverage);

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
    void PaintRow(std::size_t row, std::uint8_t const* coverage, std::size_t count,
                  std::uint32_t const* colours);

    int width_;
    int height_;
    std::vector<std::uint32_t> pixels_;
    PixelBox touched_;
    std::vector<std::uint32_t> rowColours_;  ///< scratch of PaintRows
};

template <class ColourRow>
void Canvas::PaintRows(std::uint8_t const* coverage, PixelBox const& box,
                       ColourRow const& colourRow)
{
    if (box.IsEmpty()) {
        return;
    }
    touched_ = touched_.Union(box);
    auto const width = static_cast<std::size_t>(box.right - box.left);
    rowColours_.resize(width);
    for (int y = box.top; y < box.bottom; ++y) {
        std::size_t const row = Offset(box.left, y);
        std::uint8_t const* const shares = coverage + row;
        std::size_t first = 0;
        std::size_t end = width;
        while (first < end && shares[first] == 0) {
            ++first;
        }
        while (end > first && shares[end - 1] == 0) {
            --end;
        }
        if (first < end) {
            colourRow(box.left + static_cast<int>(first), y, end - first, rowColours_.data());
            PaintRow(row + first, shares + first, end - first, rowColours_.data());
        }
    }
}

#endif
