// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How much of each pixel is let through by masks and mattes.

#include <tools/play/painting/shares.h>

#include <algorithm>
#include <cstddef>

namespace {

std::uint8_t Inverse(std::uint8_t share)
{
    return static_cast<std::uint8_t>(255 - share);
}

std::uint8_t Combined(MaskMode mode, std::uint8_t before, std::uint8_t mask)
{
    switch (mode) {
    case MaskMode::Subtract:
        return PaintByte_Product(before, Inverse(mask));
    case MaskMode::Intersect:
        return PaintByte_Product(before, mask);
    case MaskMode::Lighten:
        return std::max(before, mask);
    case MaskMode::Darken:
        return std::min(before, mask);
    case MaskMode::Difference:
        return static_cast<std::uint8_t>(std::max(before, mask) - std::min(before, mask));
    case MaskMode::Add:
        break;
    }
    return Inverse(PaintByte_Product(Inverse(before), Inverse(mask)));
}

/// The brightness of a premultiplied pixel, by the weights of television: those of Rec. ITU-R
/// BT.601 in 256ths.
std::uint8_t Luma(std::uint8_t const* pixel)
{
    return static_cast<std::uint8_t>((77U * pixel[0] + 150U * pixel[1] + 29U * pixel[2]) >> 8);
}

/// Calls `visit` with the offset of each pixel of the box.
template <class Visit>
void ForEach(int width, PixelBox const& box, Visit const& visit)
{
    for (int y = box.top; y < box.bottom; ++y) {
        std::size_t const row = static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
        for (int x = box.left; x < box.right; ++x) {
            visit(row + static_cast<std::size_t>(x));
        }
    }
}

}  // namespace

void Shares_Begin(MaskMode first, int width, PixelBox const& box, std::vector<std::uint8_t>& all)
{
    bool const isWhole =
        first == MaskMode::Subtract || first == MaskMode::Intersect || first == MaskMode::Darken;
    std::uint8_t const share = isWhole ? 255 : 0;
    ForEach(width, box, [&all, share](std::size_t i) { all[i] = share; });
}

bool Shares_AreCoverage(SceneMask const& mask, std::uint8_t opacity)
{
    return (mask.mode == MaskMode::Add || mask.mode == MaskMode::Intersect) && !mask.isInverted &&
           opacity == 255;
}

void Shares_Combine(SceneMask const& mask, std::uint8_t opacity, int width, PixelBox const& box,
                    std::vector<std::uint8_t> const& coverage, std::vector<std::uint8_t>& all)
{
    ForEach(width, box, [&](std::size_t i) {
        std::uint8_t const inside = mask.isInverted ? Inverse(coverage[i]) : coverage[i];
        all[i] = Combined(mask.mode, all[i], PaintByte_Product(inside, opacity));
    });
}

void Shares_OfMatte(Canvas const& matte, MatteMode mode, PixelBox const& box,
                    std::vector<std::uint8_t>& shares)
{
    bool const isLuma = mode == MatteMode::Luma || mode == MatteMode::InvertedLuma;
    bool const isInverted = mode == MatteMode::InvertedAlpha || mode == MatteMode::InvertedLuma;
    std::uint8_t const* const pixels = matte.Pixel(0, 0);
    ForEach(matte.Width(), box, [&](std::size_t i) {
        std::uint8_t const* const pixel = pixels + 4 * i;
        std::uint8_t const share = isLuma ? Luma(pixel) : pixel[3];
        shares[i] = isInverted ? Inverse(share) : share;
    });
}
