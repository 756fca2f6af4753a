// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Polygons into coverage: the hard and the anti-aliased fill.

#include <hv/raster/polygon_fill.h>

#include <hv/foundation/saturate.h>
#include <hv/raster/internal/HvCoverageRow.h>
#include <hv/raster/internal/HvPolygonScanner.h>
#include <hv/raster/internal/fill_window.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

constexpr std::int64_t kSubdivision = 4;

/// Rows of samples, written as coverage when the fourth subrow of a row is complete.
class CoverageRows {
public:
    CoverageRows(HvPolygons const& polygons, HvScanWindow const& pixels, unsigned char alpha)
        : origin_(kSubdivision * pixels.firstColumn),
          scanner_(polygons, static_cast<double>(kSubdivision),
                   {kSubdivision * pixels.firstRow, kSubdivision * pixels.endRow, origin_,
                    kSubdivision * pixels.endColumn}),
          // A span has two ends, and an edge for each of them but the last.
          coverage_(static_cast<std::size_t>(pixels.endColumn - pixels.firstColumn),
                    scanner_.NumEdges() + 1, alpha)
    {
    }

    /// Rows of pixels from `row` on, at least 1, that receive what `row` does.
    std::int64_t NumRowsAlike(std::int64_t row)
    {
        return std::max<std::int64_t>(scanner_.NumRowsAlike(kSubdivision * row) / kSubdivision, 1);
    }

    /// Writes a row of pixels, which is given from the window's first column on.
    HvCoverageRow::Written Write(std::int64_t row, unsigned char* pixels)
    {
        std::int64_t const firstSubrow = kSubdivision * row;
        HvScanSpan scanned[kSubdivision];
        if (scanner_.ScanSingleSpans(firstSubrow, scanned)) {
            HvCoverageRow::Span spans[kSubdivision];
            for (std::int64_t i = 0; i < kSubdivision; ++i) {
                spans[i] = {Subcolumn(scanned[i].first), Subcolumn(scanned[i].last) + 1};
            }
            return coverage_.WriteSingleSpans(spans, pixels);
        }
        for (std::int64_t i = 0; i < kSubdivision; ++i) {
            scanner_.ScanRow(firstSubrow + i, [this](std::int64_t first, std::int64_t last) {
                coverage_.AddSpan(Subcolumn(first), Subcolumn(last));
            });
            coverage_.EndSubrow();
        }
        return coverage_.Flush(pixels);
    }

private:
    std::size_t Subcolumn(std::int64_t column) const
    {
        return static_cast<std::size_t>(column - origin_);
    }

    std::int64_t const origin_;
    HvPolygonScanner scanner_;
    HvCoverageRow coverage_;
};

/// Sets `length` pixels in each of `count` rows, which lie `width` apart.
void SetBlock(unsigned char* pixels, std::size_t width, std::size_t length, std::size_t count)
{
    if (length == width) {
        std::memset(pixels, 255, length * count);
        return;
    }
    for (; count > 0; --count, pixels += width) {
        std::memset(pixels, 255, length);
    }
}

/// Copies `length` pixels of the first of `count` rows, which lie `width` apart, to the others.
void RepeatRow(unsigned char* pixels, std::size_t width, std::size_t length, std::size_t count)
{
    for (std::size_t i = 1; i < count && length > 0; ++i) {
        std::memcpy(pixels + i * width, pixels, length);
    }
}

/// The low byte of 255 times the coverage, rounded; 0 where that is no int.
unsigned char AlphaOf(double maxCoverage)
{
    double const alpha = std::floor(255.0 * maxCoverage + 0.5);
    if (!(std::fabs(alpha) <= std::numeric_limits<int>::max())) {
        return 0;
    }
    return static_cast<unsigned char>(HvSaturate_To<int>(alpha) & 0xFF);
}

}  // namespace

int HvPolygons_Fill(HvPolygons const& polygons, HvUByteRaster& raster, HvInterrupt interrupted)
{
    HvScanWindow const window = HvFillWindow_Of(polygons.box, raster);
    HvPolygonScanner scanner(polygons, 1.0, window);
    std::size_t const width = static_cast<std::size_t>(raster.width);
    for (std::int64_t row = window.firstRow; row < window.endRow;) {
        if (interrupted != nullptr && interrupted() != 0) {
            return 0;
        }
        std::int64_t const end = interrupted == nullptr ? window.endRow : row + 1;
        row = scanner.ScanRows(row, end,
                               [&raster, width](std::int64_t at, std::int64_t count,
                                                std::int64_t first, std::int64_t last) {
                                   SetBlock(raster.data + at * raster.width + first, width,
                                            static_cast<std::size_t>(last - first + 1),
                                            static_cast<std::size_t>(count));
                               });
    }
    return 1;
}

int HvPolygons_AAFill(HvPolygons const& polygons, double maxCoverage, HvUByteRaster& raster,
                      HvInterrupt interrupted)
{
    HvScanWindow const pixels = HvFillWindow_Of(polygons.box, raster);
    CoverageRows rows(polygons, pixels, AlphaOf(maxCoverage));
    // Before each subrow by winding; a row is not written before its last one in any case.
    int const questions = polygons.fillRule != 0 ? static_cast<int>(kSubdivision) : 1;
    std::size_t const width = static_cast<std::size_t>(raster.width);
    for (std::int64_t row = pixels.firstRow; row < pixels.endRow;) {
        for (int i = 0; i < questions && interrupted != nullptr; ++i) {
            if (interrupted() != 0) {
                return 0;
            }
        }
        std::int64_t const count = interrupted == nullptr ? rows.NumRowsAlike(row) : 1;
        unsigned char* const first = raster.data + row * raster.width + pixels.firstColumn;
        HvCoverageRow::Written const written = rows.Write(row, first);
        RepeatRow(first + written.first, width, written.end - written.first,
                  static_cast<std::size_t>(count));
        row += count;
    }
    return 1;
}

void HvUByteRaster_ClipToMask(HvUByteRaster& raster, HvUByteRaster const& mask)
{
    std::size_t const count = std::min(raster.NumPixels(), mask.NumPixels());
    for (std::size_t i = 0; i < count; ++i) {
        if (mask.data[i] != 255) {
            raster.data[i] = static_cast<unsigned char>(mask.data[i] * raster.data[i] >> 8);
        }
    }
}
