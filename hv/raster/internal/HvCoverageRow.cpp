// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One row of pixels sampled at 4 x 4 points each.

#include <hv/raster/internal/HvCoverageRow.h>

#include <hv/raster/internal/bit_scan.h>

#include <array>
#include <cstring>

namespace {

constexpr std::uint32_t kFullMask = 0xFFFF;
constexpr unsigned int kCoverageOfPoint = 16;

/// The coverage of each mask: 16 for each of its points, and 255 for all of them.
constexpr std::array<unsigned char, kFullMask + 1> MakeCoverageTable()
{
    std::array<unsigned char, kFullMask + 1> table{};
    for (std::uint32_t mask = 1; mask < kFullMask; ++mask) {
        table[mask] = static_cast<unsigned char>(table[mask / 2] + (mask % 2) * kCoverageOfPoint);
    }
    table[kFullMask] = 255;
    return table;
}

constexpr std::array<unsigned char, kFullMask + 1> kCoverage = MakeCoverageTable();

}  // namespace

void HvCoverageRow::Flush(unsigned char* row)
{
    if (first_ > last_) {
        return;
    }
    std::uint32_t mask = 0;  // of the pixels that no span touches
    std::size_t next = first_;
    for (std::size_t word = first_ / kWordBits; word <= last_ / kWordBits; ++word) {
        for (std::uint64_t bits = touched_[word]; bits != 0; bits &= bits - 1) {
            std::size_t const pixel = word * kWordBits + HvBits_Lowest(bits);
            if (pixel > next) {
                std::memset(row + next, std::min(kCoverage[mask], alpha_), pixel - next);
            }
            Cell& cell = cells_[pixel];
            mask ^= cell.change;
            row[pixel] = std::min(kCoverage[mask | cell.partial], alpha_);
            cell = Cell();
            next = pixel + 1;
        }
        touched_[word] = 0;
    }
    first_ = SIZE_MAX;
    last_ = 0;
}
