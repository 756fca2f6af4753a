// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How much of each pixel is let through by masks and mattes.

#include <tools/play/painting/shares.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

std::uint8_t Inverse(std::uint8_t share)
{
    return static_cast<std::uint8_t>(255 - share);
}

/// The brightness of a premultiplied pixel, by the weights of television: those of Rec. ITU-R
/// BT.601 in 256ths.
std::uint8_t Luma(std::uint8_t const* pixel)
{
    return static_cast<std::uint8_t>((77U * pixel[0] + 150U * pixel[1] + 29U * pixel[2]) >> 8);
}

/// Calls visit(first, count) with the first pixel of each row of the box, and how many it has.
template <class Visit>
void ForEachRow(int width, PixelBox const& box, Visit const& visit)
{
    for (int y = box.top; y < box.bottom && box.left < box.right; ++y) {
        visit(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(box.left),
              static_cast<std::size_t>(box.right - box.left));
    }
}

}  // namespace

void Shares_Begin(MaskMode first, int width, PixelBox const& box, std::vector<std::uint8_t>& all)
{
    bool const isWhole =
        first == MaskMode::Subtract || first == MaskMode::Intersect || first == MaskMode::Darken;
    ForEachRow(width, box, [&all, isWhole](std::size_t at, std::size_t count) {
        std::memset(all.data() + at, isWhole ? 255 : 0, count);
    });
}

bool Shares_AreCoverage(SceneMask const& mask, std::uint8_t opacity)
{
    return (mask.mode == MaskMode::Add || mask.mode == MaskMode::Intersect) && !mask.isInverted &&
           opacity == 255;
}

void Shares_Combine(SceneMask const& mask, std::uint8_t opacity, int width, PixelBox const& box,
                    std::vector<std::uint8_t> const& coverage, std::vector<std::uint8_t>& all)
{
    // Each mode has a loop of its own, which the compiler does many pixels at a time.
    auto const combine = [&](auto const& combined) {
        ForEachRow(width, box, [&](std::size_t at, std::size_t count) {
            std::uint8_t const* const covered = coverage.data() + at;
            std::uint8_t* const shares = all.data() + at;
            std::uint8_t const flip = mask.isInverted ? 255 : 0;
            for (std::size_t i = 0; i < count; ++i) {
                auto const inside = static_cast<std::uint8_t>(covered[i] ^ flip);
                shares[i] = combined(shares[i], PaintByte_Product(inside, opacity));
            }
        });
    };
    switch (mask.mode) {
    case MaskMode::Add:
        return combine([](std::uint8_t before, std::uint8_t in) {
            return Inverse(PaintByte_Product(Inverse(before), Inverse(in)));
        });
    case MaskMode::Subtract:
        return combine([](std::uint8_t before, std::uint8_t in) {
            return PaintByte_Product(before, Inverse(in));
        });
    case MaskMode::Intersect:
        return combine(
            [](std::uint8_t before, std::uint8_t in) { return PaintByte_Product(before, in); });
    case MaskMode::Lighten:
        return combine([](std::uint8_t before, std::uint8_t in) { return std::max(before, in); });
    case MaskMode::Darken:
        return combine([](std::uint8_t before, std::uint8_t in) { return std::min(before, in); });
    case MaskMode::Difference:
        return combine([](std::uint8_t before, std::uint8_t in) {
            return static_cast<std::uint8_t>(std::max(before, in) - std::min(before, in));
        });
    }
}

void Shares_OfMatte(Canvas const& matte, MatteMode mode, PixelBox const& box,
                    std::vector<std::uint8_t>& shares)
{
    bool const isLuma = mode == MatteMode::Luma || mode == MatteMode::InvertedLuma;
    bool const isInverted = mode == MatteMode::InvertedAlpha || mode == MatteMode::InvertedLuma;
    std::uint8_t const flip = isInverted ? 255 : 0;
    std::uint8_t const* const pixels = matte.Pixel(0, 0);
    ForEachRow(matte.Width(), box, [&](std::size_t at, std::size_t count) {
        for (std::size_t i = at; i < at + count; ++i) {
            std::uint8_t const* const pixel = pixels + 4 * i;
            std::uint8_t const share = isLuma ? Luma(pixel) : pixel[3];
            shares[i] = static_cast<std::uint8_t>(share ^ flip);
        }
    });
}
