// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Reading the runs of a row, 64 pixels at a time.

#include <hv/vectorize/internal/ObRow.h>

#include <hv/vectorize/internal/ObPixelMask.h>

#include <algorithm>
#include <cstdint>

namespace {

/// Writes the runs as their pixels come.
class RunWriter {
public:
    explicit RunWriter(unsigned short* row) : row_(row) {}

    /// The next 64 pixels, from column `x` on; bit i of `mask` tells whether pixel i is in a run.
    void Add(std::uint64_t mask, int x)
    {
        // A run begins or ends before each pixel that differs from the one before it in this.
        std::uint64_t turns = mask ^ (mask << 1 | isInRun_);
        std::uint64_t isInRun = isInRun_;
        for (; turns != 0; turns &= turns - 1) {
            // Its end is the pixel before.
            int const column = x + __builtin_ctzll(turns) - static_cast<int>(isInRun);
            *row_++ = static_cast<unsigned short>(column + kObRowOffset);
            isInRun ^= 1;
        }
        isInRun_ = mask >> (kObMaskPixels - 1);
    }

    void Finish() { ObRow_Clear(row_); }

private:
    unsigned short* row_;
    std::uint64_t isInRun_ = 0;  // 1 or 0, for the last pixel that came
};

/// The mask of the last pixels of a row, fewer than 64, or none; the bits behind them are 0, which
/// ends a run at the border.
std::uint64_t MaskOfRest(unsigned char const* pixels, int count, unsigned char value)
{
    unsigned char rest[kObMaskPixels];
    std::fill_n(std::copy_n(pixels, count, rest), kObMaskPixels - count,
                static_cast<unsigned char>(~value));
    return ObPixelMask(rest, value);
}

}  // namespace

void ObRow_Encode(unsigned char const* pixels, int width, unsigned char value, unsigned short* row)
{
    RunWriter writer(row);
    int x = 0;
    for (; x + kObMaskPixels <= width; x += kObMaskPixels) {
        writer.Add(ObPixelMask(pixels + x, value), x);
    }
    writer.Add(MaskOfRest(pixels + x, width - x, value), x);
    writer.Finish();
}
