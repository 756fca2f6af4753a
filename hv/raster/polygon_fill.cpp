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

/// Spans of whole pixels, written at once.
class HardSpans {
public:
    explicit HardSpans(HvUByteRaster& raster) : raster_(raster), row_(nullptr) {}

    bool TestsInterrupt(std::int64_t) const { return true; }
    void BeginRow(std::int64_t row) { row_ = raster_.data + row * raster_.width; }
    void Span(std::int64_t first, std::int64_t last)
    {
        std::memset(row_ + first, 255, static_cast<std::size_t>(last - first + 1));
    }
    void EndRow(std::int64_t) {}

private:
    HvUByteRaster& raster_;
    unsigned char* row_;
};

/// Spans of subcolumns, written when the fourth subrow of a row is complete.
class CoverageSpans {
public:
    CoverageSpans(HvScanWindow const& pixels, std::size_t maxSteps, unsigned char alpha,
                  bool testsEachSubrow, HvUByteRaster& raster)
        : firstColumn_(pixels.firstColumn), testsEachSubrow_(testsEachSubrow), raster_(raster),
          coverage_(static_cast<std::size_t>(pixels.endColumn - pixels.firstColumn), maxSteps,
                    alpha)
    {
    }

    bool TestsInterrupt(std::int64_t row) const
    {
        return testsEachSubrow_ || row % kSubdivision == 0;
    }
    void BeginRow(std::int64_t) {}
    void Span(std::int64_t first, std::int64_t last)
    {
        std::int64_t const origin = kSubdivision * firstColumn_;
        coverage_.AddSpan(static_cast<std::size_t>(first - origin),
                          static_cast<std::size_t>(last - origin));
    }
    void EndRow(std::int64_t row)
    {
        coverage_.EndSubrow();
        if (row % kSubdivision == kSubdivision - 1) {
            coverage_.Flush(raster_.data + row / kSubdivision * raster_.width + firstColumn_);
        }
    }

private:
    std::int64_t const firstColumn_;
    bool const testsEachSubrow_;
    HvUByteRaster& raster_;
    HvCoverageRow coverage_;
};

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
    HvPolygonScanner scanner(polygons, 1.0, HvFillWindow_Of(polygons.box, raster));
    HardSpans spans(raster);
    return HvPolygonScanner_Run(scanner, interrupted, spans);
}

int HvPolygons_AAFill(HvPolygons const& polygons, double maxCoverage, HvUByteRaster& raster,
                      HvInterrupt interrupted)
{
    HvScanWindow const pixels = HvFillWindow_Of(polygons.box, raster);
    HvScanWindow const points = {kSubdivision * pixels.firstRow, kSubdivision * pixels.endRow,
                                 kSubdivision * pixels.firstColumn,
                                 kSubdivision * pixels.endColumn};
    HvPolygonScanner scanner(polygons, static_cast<double>(kSubdivision), points);
    // A span has two ends, and an edge for each of them but the last.
    CoverageSpans spans(pixels, scanner.NumEdges() + 1, AlphaOf(maxCoverage),
                        polygons.fillRule != 0, raster);
    return HvPolygonScanner_Run(scanner, interrupted, spans);
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
