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
/// A span is two steps: where it begins, the count of points goes up by one for each subcolumn of
/// the pixel from there on, and in the next pixel by what is left of four; behind its end down.
///
///     subcolumns    |..xx|xxxx|xxxx|x...|....|
///     points          2    4    4    1    0
///     within         +2    .    .   -3    .
///     behind         +2    .    .   -1    .
///
/// The n-th steps of the four subrows together are a zone. Zones begin one behind the other, as
/// steps do, and between them the count does not change: a row costs its steps, and its long runs
/// are filled as a whole.
class HvCoverageRow {
public:
    /// @param width     pixels of the row.
    /// @param maxSteps  steps that a subrow can have.
    /// @param alpha     greatest value written.
    HvCoverageRow(std::size_t width, std::size_t maxSteps, unsigned char alpha);

    /// Adds the subcolumns `first` to `last`, last included, to the subrow, behind those that it
    /// has. What it has already is not counted again.
    void AddSpan(std::size_t first, std::size_t last)
    {
        std::size_t const from = std::max(first, subrowEnd_);
        if (from <= last) {
            subrowEnd_ = last + 1;
            AddStep<1>(from);
            AddStep<-1>(subrowEnd_);
        }
    }

    /// Ends the subrow.
    void EndSubrow()
    {
        end_ = std::max(end_, subrowEnd_);
        endZone_ = std::max(endZone_, step_);
        subrowEnd_ = 0;
        step_ = zones_.Data();
    }

    /// Pixels of a row that were written.
    struct Written {
        std::size_t first;
        std::size_t end;
    };

    /// Writes the coverage of the pixels from the leftmost to the rightmost that has a point, into
    /// a row that starts where this one does, and starts the next row of pixels.
    Written Flush(unsigned char* row);

    /// Subcolumns of a subrow; the end is not included.
    struct Span {
        std::size_t first;
        std::size_t end;
    };

    static constexpr std::size_t kSubrows = 4;

    /// Writes a whole row of pixels each of whose subrows has one span, not empty: the quick way
    /// when that is known beforehand. No span may have been added to the row.
    Written WriteSingleSpans(Span const (&spans)[kSubrows], unsigned char* row) const;

private:
    static constexpr std::size_t kPointsAcross = 4;
    static constexpr std::size_t kPoints = kPointsAcross * kSubrows;

    void WriteCounted(Span const (&spans)[kSubrows], std::size_t first, std::size_t end,
                      unsigned char* row) const;

    /// What the steps in a pixel change, `within` in its count and `behind` in that of the next
    /// pixel beyond that: within + 65536 * behind, so that a step is one addition. Neither exceeds
    /// 16 in size, as there are but 16 points.
    using Cell = std::int32_t;

    static constexpr Cell kBehind = 65536;

    static int WithinOf(Cell cell) { return static_cast<std::int16_t>(cell & 0xFFFF); }
    static int BehindOf(Cell cell) { return (cell - WithinOf(cell)) / kBehind; }

    /// The pixels of the subcolumns from `first` to `last`. A zone without a step has a first
    /// behind its last.
    struct Zone {
        std::size_t first;
        std::size_t last;
    };

    static constexpr Zone kNoZone = {SIZE_MAX, 0};

    template <int Direction>
    void AddStep(std::size_t at)
    {
        Cell const behind = static_cast<Cell>(at % kPointsAcross);
        Cell const within = static_cast<Cell>(kPointsAcross) - behind;
        cells_[at / kPointsAcross] += Direction * (within + kBehind * behind);
        step_->first = std::min(step_->first, at);
        step_->last = std::max(step_->last, at);
        ++step_;
    }

    unsigned char coverage_[kPoints + 1];  // of a count of points
    std::size_t subrowEnd_ = 0;            // behind the last subcolumn of the subrow
    std::size_t end_ = 0;                  // behind the last subcolumn of the row
    HvScratchArray<Cell> cells_;
    HvScratchArray<Zone> zones_;
    Zone* step_;     // of the subrow's next step
    Zone* endZone_;  // behind the zones of this row
};

#endif
