// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#include <tools/paint/Canvas.h>

#include <algorithm>

namespace {

struct Premultiplied {
    std::uint8_t parts[4];

    explicit Premultiplied(PaintColour const& colour)
        : parts{PaintByte_Product(colour.red, colour.alpha),
                PaintByte_Product(colour.green, colour.alpha),
                PaintByte_Product(colour.blue, colour.alpha), colour.alpha}
    {
    }
};

/// Puts `parts`, premultiplied and then made fainter by `share`, over a pixel.
void PutOver(std::uint8_t* pixel, std::uint8_t const* parts, unsigned int share)
{
    unsigned int const rest = 255U - PaintByte_Product(parts[3], share);
    for (int i = 0; i < 4; ++i) {
        pixel[i] = static_cast<std::uint8_t>(PaintByte_Product(parts[i], share) +
                                             PaintByte_Product(pixel[i], rest));
    }
}

}  // namespace

Canvas::Canvas(int width, int height)
    : width_(width), height_(height),
      bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)
{
}

void Canvas::SetPixel(int x, int y, PaintColour const& premultiplied)
{
    std::uint8_t* const pixel = &bytes_[Offset(x, y)];
    pixel[0] = premultiplied.red;
    pixel[1] = premultiplied.green;
    pixel[2] = premultiplied.blue;
    pixel[3] = premultiplied.alpha;
}

void Canvas::Fill(PaintColour const& colour)
{
    Premultiplied const source(colour);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        bytes_[i] = source.parts[i % 4];
    }
}

void Canvas::Paint(std::uint8_t const* coverage, PixelBox const& box, PaintColour const& colour)
{
    Premultiplied const source(colour);
    for (int y = box.top; y < box.bottom; ++y) {
        std::size_t const row = Offset(0, y);
        std::uint8_t const* const share = coverage + row / 4;
        for (int x = box.left; x < box.right; ++x) {
            if (share[x] != 0) {
                PutOver(&bytes_[row + static_cast<std::size_t>(x) * 4], source.parts, share[x]);
            }
        }
    }
}

void Canvas::PaintPixel(std::size_t offset, std::uint8_t share, PaintColour const& colour)
{
    PutOver(&bytes_[offset], Premultiplied(colour).parts, share);
}

void Canvas::Multiply(std::uint8_t const* coverage)
{
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        bytes_[i] = PaintByte_Product(bytes_[i], coverage[i / 4]);
    }
}

void Canvas::Clear()
{
    std::fill(bytes_.begin(), bytes_.end(), std::uint8_t(0));
}

void Canvas::Paint(Canvas const& layer, std::uint8_t opacity)
{
    for (std::size_t i = 0; i < bytes_.size(); i += 4) {
        if (layer.bytes_[i + 3] != 0) {
            PutOver(&bytes_[i], &layer.bytes_[i], opacity);
        }
    }
}

std::vector<std::uint8_t> Canvas::StraightPixels(PixelBox const& box) const
{
    std::vector<std::uint8_t> straight;
    auto const rowBytes = static_cast<std::size_t>(box.right - box.left) * 4;
    straight.reserve(rowBytes * static_cast<std::size_t>(box.bottom - box.top));
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint8_t const* pixel = &bytes_[Offset(box.left, y)];
        for (std::uint8_t const* const end = pixel + rowBytes; pixel != end; pixel += 4) {
            unsigned int const alpha = pixel[3];
            for (std::size_t part = 0; part < 3; ++part) {
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
    PixelBox box = {width_, height_, 0, 0};
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            if (Pixel(x, y)[3] != 0) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       y + 1};
            }
        }
    }
    return box;
}
