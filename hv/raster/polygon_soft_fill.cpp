// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons into coverage: the soft fill, blurred along the rows while it is scanned and along the
// columns thereafter.

#include <hv/raster/polygon_fill.h>

#include <hv/foundation/saturate.h>
#include <hv/raster/internal/HvBlurredRows.h>
#include <hv/raster/internal/HvScratchArray.h>
#include <hv/raster/internal/fill_window.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

/// Columns that are blurred together, and rows of which they are gathered at a time: whole cache
/// lines are read and written, and a page of the blurred rows serves all columns of a block.
constexpr std::int64_t kBlockColumns = 64;
constexpr std::int64_t kTileRows = 8;

/// Blurs the rows along y, a block of columns at a time, into bytes.
///
/// Tiles of the block, a few rows high, that are solid are not looked into: along y they are parts
/// of a run in each column, and the pixels that only solid tiles reach are of one value.
class ColumnBlur {
public:
    ColumnBlur(HvBlurredRows const& rows, HvBlurKernel const& kernel, double maxCoverage)
        : rows_(rows), kernel_(kernel), maxCoverage_(maxCoverage),
          shapeHeight_(rows.Shape().endRow - rows.Shape().firstRow),
          bandHeight_(rows.Band().endRow - rows.Band().firstRow),
          toBand_(rows.Shape().firstRow - rows.Band().firstRow),
          columns_(static_cast<std::size_t>(kBlockColumns * shapeHeight_)),
          tiles_(static_cast<std::size_t>(shapeHeight_ / kTileRows + 1)),
          uneven_(static_cast<std::size_t>(shapeHeight_ / kTileRows + 2)),
          blurred_(static_cast<std::size_t>(bandHeight_)),
          pixels_(static_cast<std::size_t>(kBlockColumns * bandHeight_))
    {
        for (std::int64_t y = 0; y < shapeHeight_; ++y) {
            HvPlaces const& solid = rows.Solid(y);
            HvPlaces& common = tiles_.Data()[y / kTileRows].solid;
            common = y % kTileRows == 0 ? solid : common.Cut(solid.first, solid.end);
        }
    }

    /// Takes `count` columns of the raster from `x` on, all within the band.
    void Compute(std::int64_t x, std::int64_t count)
    {
        for (std::int64_t y = 0; y < shapeHeight_; y += kTileRows) {
            Gather(x - rows_.Band().firstColumn, count, y, std::min(y + kTileRows, shapeHeight_));
        }
        FindSolidTiles();
        ListUnevenRows();
        for (std::int64_t i = 0; i < count; ++i) {
            BlurColumn(columns_.Data() + i * shapeHeight_);
            for (std::size_t k = 0; k < numUneven_; ++k) {
                for (std::int64_t y = uneven_[k].first; y < uneven_[k].end; ++y) {
                    pixels_.Data()[y * kBlockColumns + i] = PixelOf(blurred_.Data()[y]);
                }
            }
        }
    }

    /// Columns of the band that are known to be full in one of its rows: the kernel lies within
    /// solid tiles.
    HvPlaces FullColumns(std::int64_t bandRow) const
    {
        std::int64_t const first = bandRow - toBand_ - kernel_.Reach();
        std::int64_t const last = bandRow - toBand_ + kernel_.Reach();
        if (first < 0 || last >= shapeHeight_) {
            return {0, 0};
        }
        HvPlaces full = tiles_.Data()[first / kTileRows].solid;
        for (std::int64_t tile = first / kTileRows + 1; tile <= last / kTileRows; ++tile) {
            HvPlaces const& solid = tiles_.Data()[tile].solid;
            full = full.Cut(solid.first, solid.end);
        }
        return full;
    }
    /// What those columns become.
    unsigned char FullPixel() const { return PixelOf(kHvFullCoverage); }

    /// The pixels of the block, from column `skip` on, into `count` columns of the raster from `x`
    /// on. Rows that are full in the whole block are left out when they are `filled` already.
    void Write(HvUByteRaster& raster, std::int64_t x, std::int64_t skip, std::int64_t count,
               bool filled) const
    {
        std::int64_t const width = raster.width;
        unsigned char* const to = raster.data + rows_.Band().firstRow * width + x;
        std::size_t const length = static_cast<std::size_t>(count);
        std::int64_t row = 0;
        for (std::size_t k = 0; k < numUneven_; ++k) {
            for (; row < uneven_[k].first && !filled; ++row) {
                std::memset(to + row * width, FullPixel(), length);
            }
            for (row = uneven_[k].first; row < uneven_[k].end; ++row) {
                std::memcpy(to + row * width, pixels_.Data() + row * kBlockColumns + skip, length);
            }
        }
    }

private:
    /// Rows of the shape that are gathered together.
    struct Tile {
        HvPlaces solid;  // columns of the band in which all its rows are solid
        // In the columns of the block:
        bool isSolid;
        std::int64_t nextSolid;   // first row from the tile's on that lies in a solid tile
        std::int64_t endOfSolid;  // first row from the tile's on that lies in no solid tile
    };

    void Gather(std::int64_t firstColumn, std::int64_t count, std::int64_t firstRow,
                std::int64_t endRow)
    {
        Tile& of = tiles_.Data()[firstRow / kTileRows];
        of.isSolid = of.solid.Hold(firstColumn, firstColumn + count);
        if (of.isSolid) {
            return;
        }
        double tile[kTileRows][kBlockColumns];
        for (std::int64_t y = firstRow; y < endRow; ++y) {
            rows_.CopyRow(y, firstColumn, count, tile[y - firstRow]);
        }
        for (std::int64_t i = 0; i < count; ++i) {
            for (std::int64_t y = firstRow; y < endRow; ++y) {
                columns_.Data()[i * shapeHeight_ + y] = tile[y - firstRow][i];
            }
        }
    }

    /// Finds for each tile where the next solid ones begin and end.
    void FindSolidTiles()
    {
        std::int64_t next = shapeHeight_;
        std::int64_t end = shapeHeight_;
        for (std::int64_t tile = (shapeHeight_ - 1) / kTileRows; tile >= 0; --tile) {
            Tile& of = tiles_.Data()[tile];
            if (of.isSolid) {
                next = tile * kTileRows;
            } else {
                end = tile * kTileRows;
            }
            of.nextSolid = next;
            of.endOfSolid = end;
        }
    }

    /// The first row from `y` on that lies in a solid tile; the shape's end when there is none.
    std::int64_t NextSolid(std::int64_t y) const
    {
        return std::max(tiles_.Data()[y / kTileRows].nextSolid, y);
    }

    /// The row behind the solid tiles of which `y` is a row; `y` itself when its tile is not solid.
    std::int64_t EndOfSolidTiles(std::int64_t y) const
    {
        return std::max(tiles_.Data()[y / kTileRows].endOfSolid, y);
    }

    /// Lists the rows of the band that are not full in the whole block. The last of them may be no
    /// row, at the band's end.
    void ListUnevenRows()
    {
        numUneven_ = 0;
        std::int64_t row = 0;
        for (std::int64_t y = 0; y < shapeHeight_;) {
            std::int64_t const first = NextSolid(y);
            if (first == shapeHeight_) {
                break;
            }
            y = EndOfSolidTiles(first);
            HvPlaces const even =
                HvBlurredRun(kernel_, first + toBand_, y - 1 + toBand_, bandHeight_).Solid();
            if (even.first < even.end) {
                uneven_[numUneven_++] = {row, even.first};
                row = even.end;
            }
        }
        uneven_[numUneven_++] = {row, bandHeight_};
    }

    /// Sets those of the places in a column that are read later: rows of one value are not.
    void SetUneven(HvPlaces places, double value)
    {
        for (std::size_t k = 0; k < numUneven_; ++k) {
            std::int64_t const from = std::max(places.first, uneven_[k].first);
            std::int64_t const to = std::min(places.end, uneven_[k].end);
            if (from < to) {
                std::fill(blurred_.Data() + from, blurred_.Data() + to, value);
            }
        }
    }

    void BlurColumn(double const* column)
    {
        SetUneven({0, bandHeight_}, 0.0);
        for (std::int64_t y = 0; y < shapeHeight_;) {
            std::int64_t const first = y;
            y = EndOfRun(column, first);
            if (y > first) {
                HvBlurredRun const run(kernel_, first + toBand_, y - 1 + toBand_, bandHeight_);
                run.AddRims(blurred_.Data());
                SetUneven(run.Solid(), kHvFullCoverage);
                continue;
            }
            y = EndOfValues(column, first);
            if (y > first) {
                AddValues(column, first, y);
            } else {
                ++y;
            }
        }
    }

    /// Adds the values of a column in the rows from `first` up to `end`, each spread by the
    /// weights. Four rows are taken at a time, so that most places are read and written once for
    /// the four; in each place values are added in the order of their rows.
    void AddValues(double const* column, std::int64_t first, std::int64_t end)
    {
        std::int64_t const reach = kernel_.Reach();
        std::int64_t y = first;
        for (; y + 4 <= end; y += 4) {
            // HvPlaces that all four reach.
            std::int64_t const from = y + 3 - reach;
            std::int64_t const to = std::max(y + reach + 1, from);
            for (std::int64_t k = y; k < y + 4; ++k) {
                AddValue(column, k, k - reach, std::min(from, k + reach + 1));
            }
            AddFourValues(column + y, y, from, to);
            for (std::int64_t k = y; k < y + 4; ++k) {
                AddValue(column, k, std::max(to, k - reach), k + reach + 1);
            }
        }
        for (; y < end; ++y) {
            AddValue(column, y, y - reach, y + reach + 1);
        }
    }

    /// Adds the value of row `y` to the places from row `from` up to `to`, which it reaches.
    void AddValue(double const* column, std::int64_t y, std::int64_t from, std::int64_t to)
    {
        double const* const weights = kernel_.Weights();
        double* const line = blurred_.Data() + toBand_;
        std::int64_t const toWeight = kernel_.Reach() - y;
        for (std::int64_t at = ClipRow(from); at < ClipRow(to); ++at) {
            line[at] += column[y] * weights[at + toWeight];
        }
    }

    /// The same for `values` of the rows from `y` on.
    void AddFourValues(double const* values, std::int64_t y, std::int64_t from, std::int64_t to)
    {
        double const value0 = values[0];
        double const value1 = values[1];
        double const value2 = values[2];
        double const value3 = values[3];
        double const* const weights = kernel_.Weights();
        double* const line = blurred_.Data() + toBand_;
        std::int64_t const toWeight = kernel_.Reach() - y;
        std::int64_t const end = ClipRow(to);
        for (std::int64_t at = ClipRow(from); at < end; ++at) {
            double sum = line[at] + value0 * weights[at + toWeight];
            sum += value1 * weights[at + toWeight - 1];
            sum += value2 * weights[at + toWeight - 2];
            line[at] = sum + value3 * weights[at + toWeight - 3];
        }
    }

    /// A row of the shape, cut to the band.
    std::int64_t ClipRow(std::int64_t y) const
    {
        return std::min(std::max(y, -toBand_), bandHeight_ - toBand_);
    }

    /// The row behind the values from row `y` on that are neither full nor to be left out, as those
    /// are that are not above 0; `y` itself when it has none.
    std::int64_t EndOfValues(double const* column, std::int64_t y) const
    {
        std::int64_t const solid = NextSolid(y);
        while (y < solid && !(column[y] >= kHvFullCoverage || column[y] <= 0.0)) {
            ++y;
        }
        return y;
    }

    /// The row behind the full values from row `y` on; `y` itself when it has none.
    std::int64_t EndOfRun(double const* column, std::int64_t y) const
    {
        while (y < shapeHeight_) {
            std::int64_t const solid = NextSolid(y);
            while (y < solid && column[y] >= kHvFullCoverage) {
                ++y;
            }
            if (y < solid) {
                break;
            }
            y = EndOfSolidTiles(y);
        }
        return y;
    }

    unsigned char PixelOf(double blurred) const
    {
        return HvSaturate_To<unsigned char>(maxCoverage_ * blurred + 0.5);
    }

    HvBlurredRows const& rows_;
    HvBlurKernel const& kernel_;
    double const maxCoverage_;
    std::int64_t const shapeHeight_;
    std::int64_t const bandHeight_;
    std::int64_t const toBand_;  // from a row of the shape to one of the band
    HvScratchArray<double> columns_;
    HvScratchArray<Tile> tiles_;
    HvScratchArray<HvPlaces> uneven_;  // rows of the band that are not of one value in the block
    std::size_t numUneven_ = 0;
    HvScratchArray<double> blurred_;
    HvScratchArray<unsigned char> pixels_;
};

/// Sets `count` columns of the raster from `x` on to 0 in the rows from `firstRow` up to `endRow`.
void Clear(HvUByteRaster& raster, std::int64_t x, std::int64_t count, std::int64_t firstRow,
           std::int64_t endRow)
{
    for (std::int64_t y = firstRow; y < endRow; ++y) {
        std::memset(raster.data + y * raster.width + x, 0, static_cast<std::size_t>(count));
    }
}

/// Writes `count` columns of the raster from `x` on, whole, `skip` columns into the block; without
/// a block they become 0.
void WriteColumns(HvScanWindow const& band, ColumnBlur const* block, std::int64_t skip,
                  std::int64_t x, std::int64_t count, bool filled, HvUByteRaster& raster)
{
    if (block == nullptr) {
        Clear(raster, x, count, 0, raster.height);
        return;
    }
    Clear(raster, x, count, 0, band.firstRow);
    block->Write(raster, x, skip, count, filled);
    Clear(raster, x, count, band.endRow, raster.height);
}

/// Fills what is full, row by row: quicker than block by block.
void FillFull(HvScanWindow const& band, ColumnBlur const& block, HvUByteRaster& raster)
{
    for (std::int64_t y = band.firstRow; y < band.endRow; ++y) {
        HvPlaces const full = block.FullColumns(y - band.firstRow);
        if (full.first < full.end) {
            std::memset(raster.data + y * raster.width + band.firstColumn + full.first,
                        block.FullPixel(), static_cast<std::size_t>(full.end - full.first));
        }
    }
}

}  // namespace

int HvPolygons_SoftFill(HvPolygons const& polygons, HvBlurKernel const& kernel, double maxCoverage,
                        HvUByteRaster& raster, HvInterrupt interrupted)
{
    HvScanWindow const shape = HvFillWindow_Of(polygons.box, raster);
    HvBlurredRows rows(shape, kernel, raster);
    {
        HvPolygonScanner scanner(polygons, 1.0, shape);
        for (std::int64_t row = shape.firstRow; row < shape.endRow; ++row) {
            if (interrupted != nullptr && interrupted() != 0) {
                return 0;
            }
            rows.Scan(scanner, row);
        }
    }
    HvScanWindow const& band = rows.Band();
    ColumnBlur block(rows, kernel, maxCoverage);
    if (interrupted == nullptr) {
        FillFull(band, block, raster);
    }
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
            WriteColumns(band, source, 0, x, end - x, true, raster);
        }
        for (std::int64_t i = x; i < end && interrupted != nullptr; ++i) {
            if (interrupted() != 0) {
                return 0;
            }
            WriteColumns(band, source, i - x, i, 1, false, raster);
        }
        x = end;
    }
    return 1;
}
