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

void HvCoverageRow::Flush(unsigned char* row)
{
    if (endZone_ == zones_.Data()) {
        return;
    }
    std::size_t const end = (end_ - 1) / kPointsAcross + 1;
    std::size_t next = zones_[0].first / kPointsAcross;
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
}
