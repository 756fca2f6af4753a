// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What a fill covers, as runs of pixels.

#ifndef HV_TOOLS_PAINT_COVERAGE_H
#define HV_TOOLS_PAINT_COVERAGE_H

#include <hv/raster/HvUByteRaster.h>
#include <tools/paint/PixelBox.h>

#include <cstddef>
#include <cstdint>
#include <vector>

/// The covered pixels of a picture, row by row from the top, each row from the left. A large plain
/// shape takes little room, and whoever paints it passes over what is not covered.
class Coverage {
public:
    /// Pixels side by side: all covered whole, or each by a share of its own.
    struct Run {
        int x;
        int y;
        int length;
        std::uint8_t const* shares;  ///< null where all are covered whole
    };

    /// Becomes what `raster`, whose first pixel is (left, top) of the picture, holds in `box`, a
    /// part of the picture; there the raster is then 0.
    void Take(HvUByteRaster& raster, PixelBox const& box, int left = 0, int top = 0);

    /// All covered pixels lie in it.
    PixelBox const& Box() const { return box_; }
    /// The memory that the runs take.
    std::size_t NumBytes() const;

    /// Calls visit(run) for each run, in their order.
    template <class Visit>
    void ForEachRun(Visit const& visit) const
    {
        for (Stored const& run : runs_) {
            visit(Run{run.x, run.y, run.length,
                      run.firstShare == kWhole ? nullptr : shares_.data() + run.firstShare});
        }
    }

    /// Stores a byte for each pixel of `box`, a part of a picture of this width.
    void Spread(int width, PixelBox const& box, std::uint8_t* shares) const;

private:
    struct Stored {
        int x;
        int y;
        int length;
        std::uint32_t firstShare;
    };

    static constexpr std::uint32_t kWhole = UINT32_MAX;

    void TakeRow(std::uint8_t const* row, int x, int y, std::size_t count);
    void Append(int x, int y, std::size_t length, std::size_t firstShare);

    PixelBox box_;
    std::vector<Stored> runs_;
    std::vector<std::uint8_t> shares_;
};

#endif
