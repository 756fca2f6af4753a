// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#include <tools/paint/Canvas.h>

namespace {

/// a * b / 255, rounded: exact for all bytes.
std::uint8_t Product(unsigned int a, unsigned int b)
{
    unsigned int const product = a * b + 128;
    return static_cast<std::uint8_t>((product + (product >> 8)) >> 8);
}

struct Premultiplied {
    std::uint8_t parts[4];

    explicit Premultiplied(PaintColour const& colour)
        : parts{Product(colour.red, colour.alpha), Product(colour.green, colour.alpha),
                Product(colour.blue, colour.alpha), colour.alpha}
    {
    }
};

/// Puts `parts`, premultiplied and then made fainter by `share`, over a pixel.
void PutOver(std::uint8_t* pixel, std::uint8_t const* parts, unsigned int share)
{
    unsigned int const rest = 255U - Product(parts[3], share);
    for (int i = 0; i < 4; ++i) {
        pixel[i] = static_cast<std::uint8_t>(Product(parts[i], share) + Product(pixel[i], rest));
    }
}

}  // namespace

Canvas::Canvas(int width, int height)
    : width_(width), height_(height),
      bytes_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)
{
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

void Canvas::Paint(Canvas const& layer, std::uint8_t opacity)
{
    for (std::size_t i = 0; i < bytes_.size(); i += 4) {
        if (layer.bytes_[i + 3] != 0) {
            PutOver(&bytes_[i], &layer.bytes_[i], opacity);
        }
    }
}

std::vector<std::uint8_t> Canvas::StraightPixels() const
{
    std::vector<std::uint8_t> straight(bytes_);
    for (std::size_t i = 0; i < straight.size(); i += 4) {
        unsigned int const alpha = bytes_[i + 3];
        for (std::size_t part = 0; alpha != 0 && part < 3; ++part) {
            straight[i + part] =
                static_cast<std::uint8_t>((bytes_[i + part] * 255U + alpha / 2) / alpha);
        }
    }
    return straight;
}
