// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons into coverage: the soft fill, blurred along the rows while it is scanned and along the
// columns thereafter.

#include <hv/raster/polygon_fill.h>

#include <hv/foundation/saturate.h>
#include <hv/raster/internal/HvPolygonScanner.h>
#include <hv/raster/internal/HvScratchArray.h>
#include <hv/raster/internal/fill_window.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

constexpr double kFull = 255.0;

/// Columns that are blurred together, and rows of which they are gathered at a time: whole cache
/// lines are read and written, and a page of the blurred rows serves all columns of a block.
constexpr std::int64_t kBlockColumns = 64;
constexpr std::int64_t kTileRows = 8;

/// Adds a run of full coverage, from `first` to `last`, blurred, to a line of `size` places. Where
/// the kernel lies wholly within the run the place is set: rounding is not to leave full coverage
/// a little short.
void AddBlurredRun(HvBlurKernel const& kernel, std::int64_t first, std::int64_t last, double* line,
                   std::int64_t size)
{
    std::int64_t const reach = kernel.Reach();
    double const* const sums = kernel.Sums();
    auto const clip = [size](std::int64_t at) {
        return std::min(std::max<std::int64_t>(at, 0), size);
    };
    // The run covers the weights from `low` to `high` of the kernel around a place.
    auto const addPart = [&](std::int64_t from, std::int64_t to) {
        for (std::int64_t at = clip(from); at < clip(to); ++at) {
            std::int64_t const low = std::max<std::int64_t>(first - (at - reach), 0);
            std::int64_t const high = std::min(last - (at - reach), 2 * reach);
            line[at] += high == 2 * reach ? sums[low] : sums[low] - sums[high + 1];
        }
    };
    std::int64_t const innerFirst = first + reach;
    std::int64_t const innerEnd = std::max(last - reach + 1, innerFirst);
    addPart(first - reach, innerFirst);
    std::fill(line + clip(innerFirst), line + clip(innerEnd), kFull);
    addPart(innerEnd, last + reach + 1);
}

/// The pixels of the raster that the blurred shape can reach, and the rows of the shape itself,
/// blurred along x.
class BlurredRows {
public:
    BlurredRows(HvScanWindow const& shape, HvBlurKernel const& kernel, HvUByteRaster const& raster)
        : shape_(shape), band_{std::max<std::int64_t>(shape.firstRow - kernel.Reach(), 0),
                               std::min<std::int64_t>(shape.endRow + kernel.Reach(), raster.height),
                               std::max<std::int64_t>(shape.firstColumn - kernel.Reach(), 0),
                               std::min<std::int64_t>(shape.endColumn + kernel.Reach(),
                                                      raster.width)},
          kernel_(kernel), width_(band_.endColumn - band_.firstColumn),
          rows_(static_cast<std::size_t>(width_) *
                static_cast<std::size_t>(shape.endRow - shape.firstRow)),
          row_(nullptr)
    {
    }

    HvScanWindow const& Shape() const { return shape_; }
    HvScanWindow const& Band() const { return band_; }
    /// The values of a row of the shape, from the band's first column on.
    double const* Row(std::int64_t row) const
    {
        return rows_.Data() + (row - shape_.firstRow) * width_;
    }

    void BeginRow(std::int64_t row) { row_ = rows_.Data() + (row - shape_.firstRow) * width_; }
    void AddSpan(std::int64_t first, std::int64_t last)
    {
        AddBlurredRun(kernel_, first - band_.firstColumn, last - band_.firstColumn, row_, width_);
    }

private:
    HvScanWindow const shape_;
    HvScanWindow const band_;
    HvBlurKernel const& kernel_;
    std::int64_t const width_;
    HvScratchArray<double> rows_;
    double* row_;
};

/// Blurs the rows along y, a block of columns at a time, into bytes.
class ColumnBlur {
public:
    ColumnBlur(BlurredRows const& rows, HvBlurKernel const& kernel, double maxCoverage)
        : rows_(rows), kernel_(kernel), maxCoverage_(maxCoverage),
          shapeHeight_(rows.Shape().endRow - rows.Shape().firstRow),
          bandHeight_(rows.Band().endRow - rows.Band().firstRow),
          columns_(static_cast<std::size_t>(kBlockColumns * shapeHeight_)),
          blurred_(static_cast<std::size_t>(bandHeight_)),
          pixels_(static_cast<std::size_t>(kBlockColumns * bandHeight_))
    {
    }

    /// Takes `count` columns of the raster from `x` on, all within the band.
    void Compute(std::int64_t x, std::int64_t count)
    {
        for (std::int64_t y = 0; y < shapeHeight_; y += kTileRows) {
            Gather(x - rows_.Band().firstColumn, count, y, std::min(y + kTileRows, shapeHeight_));
        }
        for (std::int64_t i = 0; i < count; ++i) {
            BlurColumn(columns_.Data() + i * shapeHeight_);
            for (std::int64_t y = 0; y < bandHeight_; ++y) {
                pixels_.Data()[y * kBlockColumns + i] = PixelOf(blurred_.Data()[y]);
            }
        }
    }

    /// The pixels of the block in a row of the band.
    unsigned char const* Pixels(std::int64_t bandRow) const
    {
        return pixels_.Data() + bandRow * kBlockColumns;
    }

private:
    void Gather(std::int64_t firstColumn, std::int64_t count, std::int64_t firstRow,
                std::int64_t endRow)
    {
        double const* rows[kTileRows];
        for (std::int64_t y = firstRow; y < endRow; ++y) {
            rows[y - firstRow] = rows_.Row(rows_.Shape().firstRow + y) + firstColumn;
        }
        for (std::int64_t i = 0; i < count; ++i) {
            for (std::int64_t y = firstRow; y < endRow; ++y) {
                columns_.Data()[i * shapeHeight_ + y] = rows[y - firstRow][i];
            }
        }
    }

    void BlurColumn(double const* column)
    {
        std::int64_t const reach = kernel_.Reach();
        std::int64_t const toBand = rows_.Shape().firstRow - rows_.Band().firstRow;
        std::fill_n(blurred_.Data(), bandHeight_, 0.0);
        for (std::int64_t y = 0; y < shapeHeight_;) {
            double const value = column[y];
            std::int64_t const at = y + toBand;
            if (value >= kFull) {
                while (y < shapeHeight_ && column[y] >= kFull) {
                    ++y;
                }
                AddBlurredRun(kernel_, at, y - 1 + toBand, blurred_.Data(), bandHeight_);
                continue;
            }
            if (!(value <= 0.0)) {
                std::int64_t const from = std::max<std::int64_t>(at - reach, 0);
                std::int64_t const to = std::min(at + reach + 1, bandHeight_);
                for (std::int64_t t = from; t < to; ++t) {
                    blurred_.Data()[t] += value * kernel_.Weights()[t - at + reach];
                }
            }
            ++y;
        }
    }

    unsigned char PixelOf(double blurred) const
    {
        return HvSaturate_To<unsigned char>(maxCoverage_ * blurred + 0.5);
    }

    BlurredRows const& rows_;
    HvBlurKernel const& kernel_;
    double const maxCoverage_;
    std::int64_t const shapeHeight_;
    std::int64_t const bandHeight_;
    HvScratchArray<double> columns_;
    HvScratchArray<double> blurred_;
    HvScratchArray<unsigned char> pixels_;
};

/// Writes `count` columns of the raster from `x` on, whole, `skip` columns into the block; without
/// a block they become 0.
void WriteColumns(HvScanWindow const& band, ColumnBlur const* block, std::int64_t skip,
                  std::int64_t x, std::int64_t count, HvUByteRaster& raster)
{
    for (std::int64_t y = 0; y < raster.height; ++y) {
        unsigned char* const to = raster.data + y * raster.width + x;
        if (block == nullptr || y < band.firstRow || y >= band.endRow) {
            std::memset(to, 0, static_cast<std::size_t>(count));
        } else {
            std::memcpy(to, block->Pixels(y - band.firstRow) + skip,
                        static_cast<std::size_t>(count));
        }
    }
}

}  // namespace

int HvPolygons_SoftFill(HvPolygons const& polygons, HvBlurKernel const& kernel, double maxCoverage,
                        HvUByteRaster& raster, HvInterrupt interrupted)
{
    HvScanWindow const shape = HvFillWindow_Of(polygons.box, raster);
    BlurredRows rows(shape, kernel, raster);
    {
        HvPolygonScanner scanner(polygons, 1.0, shape);
        for (std::int64_t row = shape.firstRow; row < shape.endRow; ++row) {
            if (interrupted != nullptr && interrupted() != 0) {
                return 0;
            }
            rows.BeginRow(row);
            scanner.ScanRow(
                row, [&](std::int64_t first, std::int64_t last) { rows.AddSpan(first, last); });
        }
    }
    HvScanWindow const& band = rows.Band();
    ColumnBlur block(rows, kernel, maxCoverage);
    for (std::int64_t x = 0; x < raster.width;) {
        bool const isInBand = x >= band.firstColumn && x < band.endColumn;
        std::int64_t const end = isInBand ? std::min(x + kBlockColumns, band.endColumn)
                                 : x < band.firstColumn ? band.firstColumn
                                                        : raster.width;
        ColumnBlur const* const source = isInBand ? &block : nullptr;
        if (isInBand) {
            block.Compute(x, end - x);
        }
        if (interrupted == nullptr) {
            WriteColumns(band, source, 0, x, end - x, raster);
        }
        for (std::int64_t i = x; i < end && interrupted != nullptr; ++i) {
            if (interrupted() != 0) {
                return 0;
            }
            WriteColumns(band, source, i - x, i, 1, raster);
        }
        x = end;
    }
    return 1;
}
