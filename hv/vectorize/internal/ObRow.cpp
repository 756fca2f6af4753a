// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading the runs of a row, eight pixels at a time.

#include <hv/vectorize/internal/ObRow.h>

#include <algorithm>
#include <cstdint>

namespace {

constexpr int kPixelsPerWord = 8;
/// Pixels that are skipped at once within a run or a gap: compilers make a few vector instructions
/// of a loop over them. Fewer would bring less, more would be skipped less often.
constexpr int kPixelsPerBlock = 32;
constexpr std::uint64_t kOnes = 0x0101010101010101U;
constexpr std::uint64_t kLowBits = 0x7f7f7f7f7f7f7f7fU;

/// Eight pixels, the first in the lowest byte on every machine; written out so that compilers see
/// the one load that it is.
std::uint64_t Load(unsigned char const* p)
{
    return std::uint64_t(p[0]) | std::uint64_t(p[1]) << 8 | std::uint64_t(p[2]) << 16 |
           std::uint64_t(p[3]) << 24 | std::uint64_t(p[4]) << 32 | std::uint64_t(p[5]) << 40 |
           std::uint64_t(p[6]) << 48 | std::uint64_t(p[7]) << 56;
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

    /// Whether the next `kPixelsPerBlock` pixels go on as the last one was, so that they need not
    /// be added: all of the value in a run, none outside.
    bool GoesOnThrough(unsigned char const* pixels) const
    {
        unsigned char const value = static_cast<unsigned char>(pattern_);
        unsigned char turns = 0;
        for (int i = 0; i < kPixelsPerBlock; ++i) {
            turns |= static_cast<unsigned char>((pixels[i] == value) != isInRun_);
        }
        return turns == 0;
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
    for (; x + kPixelsPerBlock <= width; x += kPixelsPerBlock) {
        if (!writer.GoesOnThrough(pixels + x)) {
            for (int word = x; word < x + kPixelsPerBlock; word += kPixelsPerWord) {
                writer.Add(Load(pixels + word), word);
            }
        }
    }
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
