// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#include <tools/paint/Canvas.h>

#include <algorithm>

namespace {

/// How many of the `count` bytes at `bytes` are `value` before another one comes; words of eight
/// equal bytes are passed over at once.
std::size_t RunOf(std::uint8_t const* bytes, std::size_t count, std::uint8_t value)
{
    std::uint64_t const eight = value * 0x0101010101010101U;
    std::size_t run = 0;
    std::uint64_t word = eight;
    while (run + sizeof word <= count) {
        std::memcpy(&word, bytes + run, sizeof word);
        if (word != eight) {
            break;
        }
        run += sizeof word;
    }
    while (run < count && bytes[run] == value) {
        ++run;
    }
    return run;
}

}  // namespace

PixelBox PixelBox::Union(PixelBox const& other) const
{
    if (IsEmpty()) {
        return other;
    }
    if (other.IsEmpty()) {
        return *this;
    }
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
            std::max(bottom, other.bottom)};
}

Canvas::Canvas(int width, int height)
    : width_(width), height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
{
}

void Canvas::SetPixel(int x, int y, PaintColour const& premultiplied)
{
    pixels_[Offset(x, y)] = PaintPixel_Pack(premultiplied.red, premultiplied.green,
                                            premultiplied.blue, premultiplied.alpha);
    touched_ = touched_.Union({x, y, x + 1, y + 1});
}

void Canvas::Fill(PaintColour const& colour)
{
    std::fill(pixels_.begin(), pixels_.end(), PaintPixel_Premultiplied(colour));
    touched_ = Box();
}

void Canvas::Clear()
{
    for (int y = touched_.top; y < touched_.bottom; ++y) {
        std::uint32_t* const row = &pixels_[Offset(touched_.left, y)];
        std::fill(row, row + (touched_.right - touched_.left), 0U);
    }
    touched_ = {};
}

void Canvas::Paint(std::uint8_t const* coverage, PixelBox const& box, PaintColour const& colour)
{
    if (box.IsEmpty()) {
        return;
    }
    touched_ = touched_.Union(box);
    std::uint32_t const source = PaintPixel_Premultiplied(colour);
    auto const width = static_cast<std::size_t>(box.right - box.left);
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint8_t const* const shares = coverage + Offset(box.left, y);
        std::uint32_t* const pixels = &pixels_[Offset(box.left, y)];
        for (std::size_t x = 0; x < width;) {
            std::uint8_t const share = shares[x];
            if (share == 0) {
                x += RunOf(shares + x, width - x, 0);
            } else if (share == 255 && colour.alpha == 255) {
                std::size_t const run = RunOf(shares + x, width - x, 255);
                std::fill(pixels + x, pixels + x + run, source);
                x += run;
            } else {
                pixels[x] = PaintPixel_Over(pixels[x], source, share);
                ++x;
            }
        }
    }
}

void Canvas::PaintRow(std::size_t row, std::uint8_t const* coverage, std::size_t count,
                      std::uint32_t const* colours)
{
    for (std::size_t x = 0; x < count; ++x) {
        std::uint32_t& pixel = pixels_[row + x];
        bool const isReplaced = coverage[x] == 255 && PaintPixel_Alpha(colours[x]) == 255;
        pixel = isReplaced ? colours[x] : PaintPixel_Over(pixel, colours[x], coverage[x]);
    }
}

void Canvas::Paint(Canvas const& layer, std::uint8_t opacity)
{
    PixelBox const& box = layer.touched_;
    touched_ = touched_.Union(box);
    for (int y = box.top; y < box.bottom; ++y) {
        for (std::size_t i = Offset(box.left, y); i < Offset(box.right, y); ++i) {
            std::uint32_t const source = layer.pixels_[i];
            if (opacity == 255 && PaintPixel_Alpha(source) == 255) {
                pixels_[i] = source;
            } else if (PaintPixel_Alpha(source) != 0) {
                pixels_[i] = PaintPixel_Over(pixels_[i], source, opacity);
            }
        }
    }
}

void Canvas::Multiply(std::uint8_t const* coverage)
{
    for (int y = touched_.top; y < touched_.bottom; ++y) {
        std::size_t const end = Offset(touched_.right, y);
        for (std::size_t i = Offset(touched_.left, y); i < end;) {
            if (coverage[i] == 255) {
                i += RunOf(coverage + i, end - i, 255);
            } else if (coverage[i] == 0) {
                std::size_t const run = RunOf(coverage + i, end - i, 0);
                std::fill(&pixels_[i], &pixels_[i] + run, 0U);
                i += run;
            } else {
                pixels_[i] = PaintPixel_Scaled(pixels_[i], coverage[i]);
                ++i;
            }
        }
    }
}

std::vector<std::uint8_t> Canvas::StraightPixels(PixelBox const& box) const
{
    std::vector<std::uint8_t> straight;
    straight.reserve(static_cast<std::size_t>(box.right - box.left) *
                     static_cast<std::size_t>(box.bottom - box.top) * 4);
    for (int y = box.top; y < box.bottom; ++y) {
        for (int x = box.left; x < box.right; ++x) {
            std::uint8_t const* const pixel = Pixel(x, y);
            unsigned int const alpha = pixel[3];
            for (int part = 0; part < 3; ++part) {
                straight.push_back(alpha == 0 ? std::uint8_t(0)
                                              : static_cast<std::uint8_t>(
                                                    (pixel[part] * 255U + alpha / 2) / alpha));
            }
            straight.push_back(pixel[3]);
        }
    }
    return straight;
}

PixelBox Canvas::PaintedBox() const
{
    PixelBox box;
    for (int y = touched_.top; y < touched_.bottom; ++y) {
        for (int x = touched_.left; x < touched_.right; ++x) {
            if (Pixel(x, y)[3] != 0) {
                box = box.Union({x, y, x + 1, y + 1});
            }
        }
    }
    return box;
}
