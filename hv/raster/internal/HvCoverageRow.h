// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One row of pixels sampled at 4 x 4 points each.

#ifndef HV_RASTER_INTERNAL_HVCOVERAGEROW_H
#define HV_RASTER_INTERNAL_HVCOVERAGEROW_H

#include <hv/raster/internal/HvScratchArray.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// Collects the spans of the four subrows of a row of pixels and turns them into coverage.
///
/// A pixel is a mask of 16 bits: a nibble for each subrow, the first lowest, and in it a bit for
/// each subcolumn. Only the two pixels where a span ends are touched:
///
///     subcolumns    |..xx|xxxx|xxxx|x...|
///     partial        1100  .    .   0001    bits that are set in this pixel alone
///     change          .   1111  .   1111    bits that change here and stay so to the right
///
/// Spans of a subrow come in ascending order and meet at most in one subcolumn, so that what one
/// has changed is changed back before the next one changes it. The row is then walked from touched
/// pixel to touched pixel, and what lies between has one value.
class HvCoverageRow {
public:
    /// @param width  pixels of the row.
    /// @param alpha  greatest value written.
    HvCoverageRow(std::size_t width, unsigned char alpha)
        : first_(SIZE_MAX), last_(0), alpha_(alpha), cells_(width), touched_(width / kWordBits + 1)
    {
    }

    /// Adds the subcolumns `first` to `last`, last included, of a subrow of 0 to 3.
    void AddSpan(unsigned int subrow, std::size_t first, std::size_t last)
    {
        std::size_t const firstPixel = first / 4;
        std::size_t const lastPixel = last / 4;
        unsigned int const shift = 4 * subrow;
        std::uint32_t const head = kNibble << (first & 3) & kNibble;
        std::uint32_t const tail = (2u << (last & 3)) - 1;
        first_ = std::min(first_, firstPixel);
        last_ = std::max(last_, lastPixel);
        if (firstPixel == lastPixel) {
            cells_[firstPixel].partial |= (head & tail) << shift;
            Touch(firstPixel);
            return;
        }
        cells_[firstPixel].partial |= head << shift;
        cells_[lastPixel].partial |= tail << shift;
        Touch(firstPixel);
        Touch(lastPixel);
        if (lastPixel - firstPixel > 1) {
            cells_[firstPixel + 1].change ^= kNibble << shift;
            cells_[lastPixel].change ^= kNibble << shift;
            Touch(firstPixel + 1);
        }
    }

    /// Writes the coverage of the pixels from the first to the last that was touched, into a row of
    /// the raster that starts where this one does, and starts anew.
    void Flush(unsigned char* row);

private:
    static constexpr std::uint32_t kNibble = 0xF;
    static constexpr std::size_t kWordBits = 64;

    struct Cell {
        std::uint32_t partial;
        std::uint32_t change;
    };

    void Touch(std::size_t pixel)
    {
        touched_[pixel / kWordBits] |= std::uint64_t(1) << pixel % kWordBits;
    }

    std::size_t first_;  // above last_ when nothing was added
    std::size_t last_;
    unsigned char alpha_;
    HvScratchArray<Cell> cells_;
    HvScratchArray<std::uint64_t> touched_;  // a bit for each pixel
};

#endif
