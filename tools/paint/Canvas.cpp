// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A picture that is painted through coverage.

#include <tools/paint/Canvas.h>
#include <tools/paint/byte_runs.h>

#include <algorithm>
#include <cstring>

namespace {

/// Paints `source`, premultiplied, over `count` pixels.
void PaintRun(std::uint32_t* pixels, std::size_t count, std::uint32_t source)
{
    if (PaintPixel_Alpha(source) == 255) {
        std::fill(pixels, pixels + count, source);
    } else {
        PaintPixels_Over(pixels, count, source);
    }
}

/// How many of the `count` pixels, one at least, are the first one again.
std::size_t EqualRun(std::uint32_t const* pixels, std::size_t count)
{
    std::uint64_t const pattern = *pixels * 0x0000000100000001U;
    return ByteRun_OfPattern(PaintPixel_Bytes(*pixels), count * sizeof *pixels, pattern) /
           sizeof *pixels;
}

/// Paints `count` pixels, premultiplied and made fainter by `opacity`, over others.
void PaintPixels(std::uint32_t* pixels, std::uint32_t const* sources, std::size_t count,
                 std::uint32_t opacity)
{
    for (std::size_t i = 0; i < count;) {
        std::size_t const run = EqualRun(sources + i, count - i);
        if (run > 1 && sources[i] != 0) {
            PaintRun(pixels + i, run, PaintPixel_Scaled(sources[i], opacity));
        } else if (sources[i] != 0) {
            pixels[i] = PaintPixel_Over(pixels[i], sources[i], opacity);
        }
        i += run;
    }
}

/// Stores the four bytes of a pixel without the premultiplication.
void StorePixelStraight(std::uint32_t pixel, std::uint8_t* straight)
{
    unsigned int const alpha = PaintPixel_Alpha(pixel);
    std::memcpy(straight, &pixel, sizeof pixel);
    for (int part = 0; part < 3 && alpha != 0 && alpha != 255; ++part) {
        straight[part] = static_cast<std::uint8_t>((straight[part] * 255U + alpha / 2) / alpha);
    }
}

}  // namespace

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

void Canvas::Paint(Coverage const& coverage, PaintColour const& colour)
{
    touched_ = touched_.Union(coverage.Box());
    std::uint32_t const source = PaintPixel_Premultiplied(colour);
    coverage.ForEachRun([this, source](Coverage::Run const& run) {
        std::uint32_t* const pixels = PixelsOf(run);
        auto const length = static_cast<std::size_t>(run.length);
        if (run.shares == nullptr) {
            PaintRun(pixels, length, source);
            return;
        }
        for (std::size_t i = 0; i < length; ++i) {
            pixels[i] = PaintPixel_Over(pixels[i], source, run.shares[i]);
        }
    });
}

void Canvas::Paint(Coverage const& coverage, PaintColour const& colour, Veil const& veil)
{
    touched_ = touched_.Union(coverage.Box());
    std::uint32_t const source = PaintPixel_Premultiplied(colour);
    std::uint32_t const unveiled = PaintPixel_Scaled(source, veil.opacity);
    coverage.ForEachRun([&](Coverage::Run const& run) {
        std::uint32_t* const pixels = PixelsOf(run);
        std::uint8_t const* const shares = veil.shares + Offset(run.x, run.y);
        auto const length = static_cast<std::size_t>(run.length);
        for (std::size_t i = 0; i < length;) {
            if (shares[i] == 0) {
                i += ByteRun_Of(shares + i, length - i, 0);
            } else if (run.shares == nullptr && shares[i] == 255) {
                std::size_t const count = ByteRun_Of(shares + i, length - i, 255);
                PaintRun(pixels + i, count, unveiled);
                i += count;
            } else {
                std::uint32_t const share = run.shares == nullptr ? 255U : run.shares[i];
                std::uint32_t const veiled =
                    PaintPixel_Scaled(PaintPixel_Scaled(source, share), shares[i]);
                pixels[i] = PaintPixel_Over(pixels[i], veiled, veil.opacity);
                ++i;
            }
        }
    });
}

void Canvas::Paint(Canvas const& layer, std::uint8_t opacity)
{
    PixelBox const& box = layer.touched_;
    touched_ = touched_.Union(box);
    for (int y = box.top; y < box.bottom; ++y) {
        std::size_t const row = Offset(box.left, y);
        PaintPixels(&pixels_[row], &layer.pixels_[row],
                    static_cast<std::size_t>(box.right - box.left), opacity);
    }
}

void Canvas::Multiply(std::uint8_t const* shares)
{
    for (int y = touched_.top; y < touched_.bottom; ++y) {
        std::size_t const end = Offset(touched_.right, y);
        for (std::size_t i = Offset(touched_.left, y); i < end;) {
            if (shares[i] == 255) {
                i += ByteRun_Of(shares + i, end - i, 255);
            } else if (shares[i] == 0) {
                std::size_t const run = ByteRun_Of(shares + i, end - i, 0);
                std::fill(&pixels_[i], &pixels_[i] + run, 0U);
                i += run;
            } else {
                pixels_[i] = PaintPixel_Scaled(pixels_[i], shares[i]);
                ++i;
            }
        }
    }
}

std::vector<std::uint8_t> Canvas::StraightPixels(PixelBox const& box) const
{
    auto const width = static_cast<std::size_t>(box.right - box.left);
    std::vector<std::uint8_t> straight(width * static_cast<std::size_t>(box.bottom - box.top) * 4);
    std::uint8_t* to = straight.data();
    for (int y = box.top; y < box.bottom; ++y) {
        std::uint32_t const* const row = &pixels_[Offset(box.left, y)];
        for (std::size_t x = 0; x < width; ++x, to += 4) {
            StorePixelStraight(row[x], to);
        }
    }
    return straight;
}

PixelBox Canvas::PaintedBox() const
{
    PixelBox box;
    for (int y = touched_.top; y < touched_.bottom; ++y) {
        std::uint32_t const* const row = &pixels_[Offset(0, y)];
        auto const isPainted = [row](int x) { return PaintPixel_Alpha(row[x]) != 0; };
        int left = touched_.left;
        int right = touched_.right;
        while (left < right && !isPainted(left)) {
            ++left;
        }
        while (left < right && !isPainted(right - 1)) {
            --right;
        }
        box = box.Union({left, y, right, y + 1});
    }
    return box;
}
