// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which of 64 pixels have a value, as the bits of a word.

#ifndef HV_VECTORIZE_INTERNAL_OBPIXELMASK_H
#define HV_VECTORIZE_INTERNAL_OBPIXELMASK_H

#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Pixels that one mask tells of.
constexpr int kObMaskPixels = 64;

/// Eight pixels, the first in the lowest byte on every machine; written out so that compilers see
/// the one load that it is.
inline std::uint64_t ObPixels_Load(unsigned char const* p)
{
    return std::uint64_t(p[0]) | std::uint64_t(p[1]) << 8 | std::uint64_t(p[2]) << 16 |
           std::uint64_t(p[3]) << 24 | std::uint64_t(p[4]) << 32 | std::uint64_t(p[5]) << 40 |
           std::uint64_t(p[6]) << 48 | std::uint64_t(p[7]) << 56;
}

/// The mask on a machine of which nothing is known: bit i is set where pixel i is `value`.
inline std::uint64_t ObPixelMask_Plain(unsigned char const* pixels, unsigned char value)
{
    constexpr std::uint64_t kOnes = 0x0101010101010101U;
    constexpr std::uint64_t kLowBits = 0x7f7f7f7f7f7f7f7fU;
    // Multiplies bit 8 i to bit 56 + i, and no two bits to one place.
    constexpr std::uint64_t kGather = 0x0102040810204080U;
    std::uint64_t mask = 0;
    for (int i = 0; i < kObMaskPixels; i += 8) {
        std::uint64_t const word = ObPixels_Load(pixels + i) ^ value * kOnes;
        // The highest bit of each byte that is not 0; adding in seven bits keeps a byte's carry
        // from its neighbour. (H. S. Warren, Hacker's Delight, 2012, 6-1.)
        std::uint64_t const differing = ((word & kLowBits) + kLowBits) | word;
        mask |= (((~differing >> 7) & kOnes) * kGather >> 56) << i;
    }
    return mask;
}

/// The same, with the vector instructions that every x86-64 has.
inline std::uint64_t ObPixelMask(unsigned char const* pixels, unsigned char value)
{
#if defined(__SSE2__)
    __m128i const sought = _mm_set1_epi8(static_cast<char>(value));
    std::uint64_t mask = 0;
    for (int i = 0; i < kObMaskPixels; i += 16) {
        __m128i const sixteen = _mm_loadu_si128(reinterpret_cast<__m128i const*>(pixels + i));
        int const equal = _mm_movemask_epi8(_mm_cmpeq_epi8(sixteen, sought));
        mask |= std::uint64_t(static_cast<std::uint32_t>(equal)) << i;
    }
    return mask;
#else
    return ObPixelMask_Plain(pixels, value);
#endif
}

#endif
