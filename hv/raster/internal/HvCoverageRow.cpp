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

// A step behind the last pixel touches two more.
HvCoverageRow::HvCoverageRow(std::size_t width, std::size_t maxSteps, unsigned char alpha)
    : differences_(width + 2), zones_(maxSteps), step_(zones_.Data()), endZone_(zones_.Data())
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
    std::int16_t* const differences = differences_.Data();
    std::size_t const end = (end_ - 1) / kPointsAcross + 1;
    std::size_t next = zones_[0].first / kPointsAcross;
    int count = 0;
    for (Zone* zone = zones_.Data(); zone != endZone_; ++zone) {
        std::size_t const zoneFirst = zone->first / kPointsAcross;
        std::size_t const zoneEnd = std::min(zone->last / kPointsAcross + 2, end);
        *zone = kNoZone;
        if (zoneFirst > next) {
            std::memset(row + next, coverage_[count], zoneFirst - next);
            next = zoneFirst;
        }
        for (; next < zoneEnd; ++next) {
            count += differences[next];
            row[next] = coverage_[count];
            differences[next] = 0;
        }
    }
    differences[end] = differences[end + 1] = 0;
    end_ = 0;
    endZone_ = zones_.Data();
}
