// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One row of pixels sampled at 4 x 4 points each.

#include <hv/raster/internal/HvCoverageRow.h>

#include <cstring>

namespace {

/// What each point adds. All sixteen give 255, one less than they would.
constexpr std::size_t kCoverageOfPoint = 16;
constexpr std::size_t kFullCoverage = 255;

}  // namespace

// A span to the row's end steps down in a pixel behind it.
HvCoverageRow::HvCoverageRow(std::size_t width, std::size_t maxSteps, unsigned char alpha)
    : cells_(width + 1), zones_(maxSteps), step_(zones_.Data()), endZone_(zones_.Data())
{
    for (std::size_t count = 0; count <= kPoints; ++count) {
        coverage_[count] = static_cast<unsigned char>(
            std::min({count * kCoverageOfPoint, kFullCoverage, std::size_t(alpha)}));
    }
    std::fill_n(zones_.Data(), maxSteps, kNoZone);
}

HvCoverageRow::Written HvCoverageRow::Flush(unsigned char* row)
{
    if (endZone_ == zones_.Data()) {
        return {0, 0};
    }
    std::size_t const end = (end_ - 1) / kPointsAcross + 1;
    std::size_t const first = zones_[0].first / kPointsAcross;
    std::size_t next = first;
    int count = 0;
    int behind = 0;  // of the cell before
    for (Zone* zone = zones_.Data(); zone != endZone_; ++zone) {
        std::size_t const zoneFirst = zone->first / kPointsAcross;
        std::size_t const zoneEnd = std::min(zone->last / kPointsAcross + 1, end);
        *zone = kNoZone;
        if (zoneFirst > next) {
            count += behind;
            behind = 0;
            std::memset(row + next, coverage_[count], zoneFirst - next);
            next = zoneFirst;
        }
        for (; next < zoneEnd; ++next) {
            Cell const cell = cells_[next];
            cells_[next] = 0;
            count += behind + WithinOf(cell);
            behind = BehindOf(cell);
            row[next] = coverage_[count];
        }
    }
    cells_[end] = 0;
    end_ = 0;
    endZone_ = zones_.Data();
    return {first, end};
}

HvCoverageRow::Written HvCoverageRow::WriteSingleSpans(Span const (&spans)[kSubrows],
                                                       unsigned char* row) const
{
    Span outer = spans[0];
    Span inner = spans[0];
    for (Span const& span : spans) {
        outer = {std::min(outer.first, span.first), std::max(outer.end, span.end)};
        inner = {std::max(inner.first, span.first), std::min(inner.end, span.end)};
    }
    Written const written = {outer.first / kPointsAcross, (outer.end - 1) / kPointsAcross + 1};
    // The pixels that all subrows cover whole.
    Written const full = {(inner.first + kPointsAcross - 1) / kPointsAcross,
                          inner.end / kPointsAcross};
    if (full.first < full.end) {
        WriteCounted(spans, written.first, full.first, row);
        std::memset(row + full.first, coverage_[kPoints], full.end - full.first);
        WriteCounted(spans, full.end, written.end, row);
    } else {
        WriteCounted(spans, written.first, written.end, row);
    }
    return written;
}

/// Counts the points of each pixel from `first` up to `end` as the difference of those left of its
/// two sides.
void HvCoverageRow::WriteCounted(Span const (&spans)[kSubrows], std::size_t first, std::size_t end,
                                 unsigned char* row) const
{
    auto const pointsLeftOf = [&spans](std::size_t pixel) {
        std::size_t sum = 0;
        for (Span const& span : spans) {
            sum += std::min(std::max(pixel * kPointsAcross, span.first), span.end);
        }
        return sum;  // and as many more for every pixel as the spans leave free before them
    };
    std::size_t before = pointsLeftOf(first);
    for (std::size_t pixel = first; pixel < end; ++pixel) {
        std::size_t const now = pointsLeftOf(pixel + 1);
        row[pixel] = coverage_[now - before];
        before = now;
    }
}
