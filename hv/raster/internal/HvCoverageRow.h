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
/// What is kept is by how many points the count of each pixel differs from that of the pixel before
/// it, so that a span is two steps, up where it begins and down behind its end:
///
///     subcolumns    |..xx|xxxx|xxxx|x...|....|
///     points          2    4    4    1    0
///     differences    +2   +2    0   -3   -1
///
/// Each step touches two pixels. The n-th steps of the four subrows together are a zone: the hull
/// of the pixels that they touch. Zones begin one behind the other, as steps do, and between them
/// the count does not change: a row costs its steps, and its long runs are filled as a whole.
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

    /// Writes the coverage of the pixels from the leftmost to the rightmost that has a point, into
    /// a row that starts where this one does, and starts the next row of pixels.
    void Flush(unsigned char* row);

private:
    static constexpr std::size_t kPointsAcross = 4;
    static constexpr std::size_t kPoints = 16;

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
        std::size_t const pixel = at / kPointsAcross;
        int const behind = static_cast<int>(at % kPointsAcross);
        int const within = static_cast<int>(kPointsAcross) - behind;
        std::int16_t* const difference = differences_.Data() + pixel;
        difference[0] = static_cast<std::int16_t>(difference[0] + Direction * within);
        difference[1] = static_cast<std::int16_t>(difference[1] + Direction * behind);
        step_->first = std::min(step_->first, at);
        step_->last = std::max(step_->last, at);
        ++step_;
    }

    unsigned char coverage_[kPoints + 1];  // of a count of points
    std::size_t subrowEnd_ = 0;            // behind the last subcolumn of the subrow
    std::size_t end_ = 0;                  // behind the last subcolumn of the row
    HvScratchArray<std::int16_t> differences_;
    HvScratchArray<Zone> zones_;
    Zone* step_;     // of the subrow's next step
    Zone* endZone_;  // behind the zones of this row
};

#endif
