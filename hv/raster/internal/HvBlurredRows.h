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
    /// Those of them from `from` up to `to`; maybe none.
    HvPlaces Cut(std::int64_t from, std::int64_t to) const
    {
        std::int64_t const low = std::min(std::max(first, from), end);
        return {low, std::max(std::min(end, to), low)};
    }
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

    /// Where the kernel meets the run.
    HvPlaces Reached() const
    {
        return {Clip(first_ - kernel_.Reach()), Clip(last_ + kernel_.Reach() + 1)};
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
/// blurred along x. What is kept of a row is what its spans reach, and of a row with one span not
/// its solid places, which are most of a large shape. Rows are packed behind one another: memory
/// that nobody touches costs nothing.
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
          line_(static_cast<std::size_t>(width_)),
          values_(static_cast<std::size_t>(width_) *
                  static_cast<std::size_t>(shape.endRow - shape.firstRow)),
          nextValue_(values_.Data()), rows_(static_cast<std::size_t>(shape.endRow - shape.firstRow))
    {
    }

    HvScanWindow const& Shape() const { return shape_; }
    HvScanWindow const& Band() const { return band_; }

    /// Scans a row of the shape. Rows come in ascending order.
    void Scan(HvPolygonScanner& scanner, std::int64_t row)
    {
        double* const line = line_.Data();
        HvPlaces reached = {0, 0};
        HvPlaces solid = {0, 0};
        std::size_t spans = 0;
        scanner.ScanRow(row, [&](std::int64_t first, std::int64_t last) {
            HvBlurredRun const run(kernel_, first - band_.firstColumn, last - band_.firstColumn,
                                   width_);
            if (++spans == 1) {
                run.AddRims(line);
                reached = run.Reached();
                solid = run.Solid();
                return;
            }
            std::fill(line + solid.first, line + solid.end, kHvFullCoverage);
            run.Add(line);
            // A span may end where the one before it does, and reach no further.
            reached.end = std::max(reached.end, run.Reached().end);
            solid = {reached.end, reached.end};
        });
        rows_[static_cast<std::size_t>(row - shape_.firstRow)] = {nextValue_, reached, solid};
        Pack(reached.first, solid.first);
        Pack(solid.end, reached.end);
    }

    /// The columns of the band in which row `y` of the shape is known to be solid.
    HvPlaces const& Solid(std::int64_t y) const { return rows_.Data()[y].solid; }
    /// Copies `count` values of row `y` of the shape, from a column of the band on.
    void CopyRow(std::int64_t y, std::int64_t first, std::int64_t count, double* values) const
    {
        Row const& row = rows_.Data()[y];
        HvPlaces const wanted = {first, first + count};
        HvPlaces const before = wanted.Cut(row.reached.first, row.solid.first);
        HvPlaces const solid = wanted.Cut(row.solid.first, row.solid.end);
        HvPlaces const behind = wanted.Cut(row.solid.end, row.reached.end);
        double const* const rest = row.values + (row.solid.first - row.reached.first);
        values = std::fill_n(values, before.first - first, 0.0);
        values = std::copy(row.values + (before.first - row.reached.first),
                           row.values + (before.end - row.reached.first), values);
        values = std::fill_n(values, solid.end - solid.first, kHvFullCoverage);
        values = std::copy(rest + (behind.first - row.solid.end),
                           rest + (behind.end - row.solid.end), values);
        std::fill_n(values, wanted.end - behind.end, 0.0);
    }

private:
    /// The values of a row lie where it reaches, without its solid places.
    struct Row {
        double const* values;
        HvPlaces reached;
        HvPlaces solid;
    };

    /// Takes places out of the line, which is zero there afterwards.
    void Pack(std::int64_t first, std::int64_t end)
    {
        nextValue_ = std::copy(line_.Data() + first, line_.Data() + end, nextValue_);
        std::fill(line_.Data() + first, line_.Data() + end, 0.0);
    }

    HvScanWindow const shape_;
    HvScanWindow const band_;
    HvBlurKernel const& kernel_;
    std::int64_t const width_;
    HvScratchArray<double> line_;  // zero but while a row is scanned
    HvScratchArray<double> values_;
    double* nextValue_;
    HvScratchArray<Row> rows_;
};

#endif
