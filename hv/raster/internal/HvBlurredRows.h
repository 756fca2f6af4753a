// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The rows of a shape, blurred along x.

#ifndef HV_RASTER_INTERNAL_HVBLURREDROWS_H
#define HV_RASTER_INTERNAL_HVBLURREDROWS_H

#include <hv/raster/HvBlurKernel.h>
#include <hv/raster/HvUByteRaster.h>
#include <hv/raster/internal/HvPolygonScanner.h>
#include <hv/raster/internal/HvScratchArray.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// A pixel that the kernel finds covered all around.
constexpr double kHvFullCoverage = 255.0;

/// HvPlaces of a line, the end not included.
struct HvPlaces {
    std::int64_t first;
    std::int64_t end;

    bool Hold(std::int64_t from, std::int64_t to) const { return first <= from && to <= end; }
};

/// A run of full coverage, from `first` to `last`, blurred, on a line of `size` places.
class HvBlurredRun {
public:
    HvBlurredRun(HvBlurKernel const& kernel, std::int64_t first, std::int64_t last,
                 std::int64_t size)
        : kernel_(kernel), first_(first), last_(last), size_(size),
          innerFirst_(first + kernel.Reach()),
          innerEnd_(std::max(last - kernel.Reach() + 1, innerFirst_))
    {
    }

    /// Where the kernel lies wholly within the run, so that coverage is full.
    HvPlaces Solid() const { return {Clip(innerFirst_), Clip(innerEnd_)}; }
    /// Adds the run to what the line holds beside the solid places.
    void AddRims(double* line) const
    {
        AddRim(first_ - kernel_.Reach(), innerFirst_, line);
        AddRim(innerEnd_, last_ + kernel_.Reach() + 1, line);
    }
    /// Adds the whole run. The solid places are set: rounding is not to leave full coverage a
    /// little short.
    void Add(double* line) const
    {
        AddRims(line);
        std::fill(line + Solid().first, line + Solid().end, kHvFullCoverage);
    }

private:
    std::int64_t Clip(std::int64_t at) const
    {
        return std::min(std::max<std::int64_t>(at, 0), size_);
    }
    void AddRim(std::int64_t from, std::int64_t to, double* line) const
    {
        std::int64_t const reach = kernel_.Reach();
        double const* const sums = kernel_.Sums();
        for (std::int64_t at = Clip(from); at < Clip(to); ++at) {
            // The run covers the weights from `low` to `high` of the kernel around the place.
            std::int64_t const low = std::max<std::int64_t>(first_ - (at - reach), 0);
            std::int64_t const high = std::min(last_ - (at - reach), 2 * reach);
            line[at] += high == 2 * reach ? sums[low] : sums[low] - sums[high + 1];
        }
    }

    HvBlurKernel const& kernel_;
    std::int64_t const first_;
    std::int64_t const last_;
    std::int64_t const size_;
    std::int64_t const innerFirst_;
    std::int64_t const innerEnd_;
};

/// The pixels of the raster that the blurred shape can reach, and the rows of the shape itself,
/// blurred along x. Of a row with one span the solid places are remembered and not written: they
/// are most of a large shape, and memory that nobody touches costs nothing.
class HvBlurredRows {
public:
    HvBlurredRows(HvScanWindow const& shape, HvBlurKernel const& kernel,
                  HvUByteRaster const& raster)
        : shape_(shape), band_{std::max<std::int64_t>(shape.firstRow - kernel.Reach(), 0),
                               std::min<std::int64_t>(shape.endRow + kernel.Reach(), raster.height),
                               std::max<std::int64_t>(shape.firstColumn - kernel.Reach(), 0),
                               std::min<std::int64_t>(shape.endColumn + kernel.Reach(),
                                                      raster.width)},
          kernel_(kernel), width_(band_.endColumn - band_.firstColumn),
          rows_(static_cast<std::size_t>(width_) *
                static_cast<std::size_t>(shape.endRow - shape.firstRow)),
          solid_(static_cast<std::size_t>(shape.endRow - shape.firstRow))
    {
    }

    HvScanWindow const& Shape() const { return shape_; }
    HvScanWindow const& Band() const { return band_; }

    /// Scans a row of the shape.
    void Scan(HvPolygonScanner& scanner, std::int64_t row)
    {
        double* const line = rows_.Data() + (row - shape_.firstRow) * width_;
        HvPlaces& solid = solid_.Data()[row - shape_.firstRow];
        std::size_t spans = 0;
        scanner.ScanRow(row, [&](std::int64_t first, std::int64_t last) {
            HvBlurredRun const run(kernel_, first - band_.firstColumn, last - band_.firstColumn,
                                   width_);
            if (++spans == 1) {
                run.AddRims(line);
                solid = run.Solid();
                return;
            }
            std::fill(line + solid.first, line + solid.end, kHvFullCoverage);
            solid = {0, 0};
            run.Add(line);
        });
    }

    /// Whether row `y` of the shape is solid in the columns of the band from `first` up to `end`.
    bool IsSolid(std::int64_t y, std::int64_t first, std::int64_t end) const
    {
        return solid_.Data()[y].Hold(first, end);
    }
    /// Copies `count` values of row `y` of the shape, from a column of the band on.
    void CopyRow(std::int64_t y, std::int64_t first, std::int64_t count, double* values) const
    {
        std::copy_n(rows_.Data() + y * width_ + first, count, values);
        HvPlaces const& solid = solid_.Data()[y];
        std::int64_t const from = std::max(solid.first - first, std::int64_t{0});
        std::int64_t const to = std::min(solid.end - first, count);
        if (from < to) {
            std::fill(values + from, values + to, kHvFullCoverage);
        }
    }

private:
    HvScanWindow const shape_;
    HvScanWindow const band_;
    HvBlurKernel const& kernel_;
    std::int64_t const width_;
    HvScratchArray<double> rows_;
    HvScratchArray<HvPlaces> solid_;  // of each row; empty where all is written
};

#endif
