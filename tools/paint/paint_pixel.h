// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pixels of four bytes in one word, and the arithmetic of painting.

#ifndef HV_TOOLS_PAINT_PAINT_PIXEL_H
#define HV_TOOLS_PAINT_PAINT_PIXEL_H

#include <cstddef>
#include <cstdint>
#include <cstring>

/// A colour that is not premultiplied, each part from 0 to 255.
struct PaintColour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;
};

/// a * b / 255 of two bytes, rounded: exact for all of them.
inline std::uint8_t PaintByte_Product(unsigned int a, unsigned int b)
{
    unsigned int const product = a * b + 128;
    return static_cast<std::uint8_t>((product + (product >> 8)) >> 8);
}

// A pixel is a word whose bytes in memory are red, green, blue and alpha, premultiplied.

inline std::uint32_t PaintPixel_Pack(std::uint8_t red, std::uint8_t green, std::uint8_t blue,
                                     std::uint8_t alpha)
{
    std::uint8_t const bytes[4] = {red, green, blue, alpha};
    std::uint32_t pixel;
    std::memcpy(&pixel, bytes, sizeof pixel);
    return pixel;
}

inline std::uint8_t const* PaintPixel_Bytes(std::uint32_t const& pixel)
{
    return reinterpret_cast<std::uint8_t const*>(&pixel);
}

inline std::uint8_t PaintPixel_Alpha(std::uint32_t pixel)
{
    return PaintPixel_Bytes(pixel)[3];
}

inline std::uint32_t PaintPixel_Premultiplied(PaintColour const& colour)
{
    return PaintPixel_Pack(PaintByte_Product(colour.red, colour.alpha),
                           PaintByte_Product(colour.green, colour.alpha),
                           PaintByte_Product(colour.blue, colour.alpha), colour.alpha);
}

/// PaintByte_Product of each byte with `share`: two of them at a time, each in a half of the word.
inline std::uint32_t PaintPixel_Scaled(std::uint32_t pixel, std::uint32_t share)
{
    constexpr std::uint32_t kMask = 0x00FF00FF;
    constexpr std::uint32_t kHalf = 0x00800080;
    std::uint32_t even = (pixel & kMask) * share + kHalf;
    std::uint32_t odd = (pixel >> 8 & kMask) * share + kHalf;
    even = (even + (even >> 8 & kMask)) >> 8 & kMask;
    odd = (odd + (odd >> 8 & kMask)) & ~kMask;
    return even | odd;
}

/// `source`, made fainter by `share`, over `pixel`.
inline std::uint32_t PaintPixel_Over(std::uint32_t pixel, std::uint32_t source, std::uint32_t share)
{
    std::uint32_t const paint = PaintPixel_Scaled(source, share);
    return paint + PaintPixel_Scaled(pixel, 255U - PaintPixel_Alpha(paint));
}

/// `source` over `count` pixels, at its full share.
inline void PaintPixels_Over(std::uint32_t* pixels, std::size_t count, std::uint32_t source)
{
    // Byte by byte, in 16 bits: so the compiler does sixteen at a time.
    constexpr std::size_t kBlock = 4;
    auto const share = static_cast<std::uint16_t>(255 - PaintPixel_Alpha(source));
    std::uint32_t const sources[kBlock] = {source, source, source, source};
    std::uint8_t const* const paint = PaintPixel_Bytes(sources[0]);
    std::size_t const end = count / kBlock * kBlock;
    for (std::size_t i = 0; i < end; i += kBlock) {
        auto* const bytes = reinterpret_cast<std::uint8_t*>(pixels + i);
        for (std::size_t k = 0; k < sizeof sources; ++k) {
            auto const product = static_cast<std::uint16_t>(bytes[k] * share + 128);
            auto const rounded = static_cast<std::uint16_t>(product + (product >> 8));
            bytes[k] = static_cast<std::uint8_t>(paint[k] + (rounded >> 8));
        }
    }
    for (std::size_t i = end; i < count; ++i) {
        pixels[i] = source + PaintPixel_Scaled(pixels[i], share);
    }
}

#endif
