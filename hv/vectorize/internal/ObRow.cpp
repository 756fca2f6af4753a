// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading the runs of a row, eight pixels at a time.

#include <hv/vectorize/internal/ObRow.h>

#include <algorithm>
#include <cstdint>

namespace {

constexpr int kPixelsPerWord = 8;
constexpr std::uint64_t kOnes = 0x0101010101010101U;
constexpr std::uint64_t kLowBits = 0x7f7f7f7f7f7f7f7fU;

/// Eight pixels, the first in the lowest byte on every machine; compilers make one load of it where
/// they can.
std::uint64_t Load(unsigned char const* pixels)
{
    std::uint64_t word = 0;
    for (int i = 0; i < kPixelsPerWord; ++i) {
        word |= std::uint64_t(pixels[i]) << (8 * i);
    }
    return word;
}

/// The highest bit of each byte that is 0, and no other. Adding in seven bits keeps a byte's carry
/// from its neighbour. (H. S. Warren, Hacker's Delight, 2012, 6-1.)
std::uint64_t ZeroBytes(std::uint64_t word)
{
    return ~(((word & kLowBits) + kLowBits) | word | kLowBits);
}

/// Writes the runs as their pixels come.
class RunWriter {
public:
    RunWriter(unsigned char value, unsigned short* row) : pattern_(value * kOnes), row_(row) {}

    /// The next eight pixels, from column `x` on.
    void Add(std::uint64_t pixels, int x)
    {
        std::uint64_t const in = ZeroBytes(pixels ^ pattern_);
        // A run begins or ends before each pixel that differs from the one before it in this.
        std::uint64_t const before = in << 8 | (isInRun_ ? 0x80U : 0U);
        for (std::uint64_t turns = in ^ before; turns != 0; turns &= turns - 1) {
            int const column = x + (__builtin_ctzll(turns) >> 3);
            *row_++ = static_cast<unsigned short>(column + kObRowOffset - (isInRun_ ? 1 : 0));
            isInRun_ = !isInRun_;
        }
    }

    void Finish() { ObRow_Clear(row_); }

private:
    std::uint64_t pattern_;
    unsigned short* row_;
    bool isInRun_ = false;
};

}  // namespace

void ObRow_Encode(unsigned char const* pixels, int width, unsigned char value, unsigned short* row)
{
    RunWriter writer(value, row);
    int x = 0;
    for (; x + kPixelsPerWord <= width; x += kPixelsPerWord) {
        writer.Add(Load(pixels + x), x);
    }
    // What is left, with pixels of another value behind it, which end a run at the border.
    unsigned char rest[kPixelsPerWord];
    std::fill_n(rest, kPixelsPerWord, static_cast<unsigned char>(~value));
    std::copy_n(pixels + x, width - x, rest);
    writer.Add(Load(rest), x);
    writer.Finish();
}
