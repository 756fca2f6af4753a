// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tests/vectorize/contour_walk.h>

namespace {

/// Expects every contour to be told stop by stop as a walk along its sides has it.
void ExpectStops(HvUByteRaster const& raster)
{
    for (TraceRegion const& region : TraceRecorder(raster).regions) {
        for (std::size_t i = 0; i < region.size(); ++i) {
            ASSERT_EQ(region[i], StopsOf(raster, region[i][0], i == 0)) << TextOf(raster);
        }
    }
}

}  // namespace

TEST(ObTracer, StopsWhereAWalkAlongTheSidesStops)
{
    std::mt19937 engine(91);
    for (int i = 0; i < 1500 && !testing::Test::HasFailure(); ++i) {
        int const width = 1 + static_cast<int>(engine() % 14);
        int const height = 1 + static_cast<int>(engine() % 14);
        double const ink = 0.1 + 0.1 * static_cast<double>(engine() % 9);
        ExpectStops(RandomRaster(width, height, ink, engine));
    }
}

TEST(ObTracer, StopsWhereAWalkAlongTheSidesOfLargeRastersStops)
{
    std::mt19937 engine(92);
    for (double const ink : {0.01, 0.3, 0.6, 0.7, 0.97}) {
        ExpectStops(RandomRaster(230, 130, ink, engine));
        // Stretches of several pixels.
        HvUByteRaster const coarse = RandomRaster(75, 45, ink, engine);
        HvUByteRaster raster(225, 135, 0);
        for (int y = 0; y < raster.height; ++y) {
            for (int x = 0; x < raster.width; ++x) {
                raster.data[y * raster.width + x] = coarse.data[y / 3 * coarse.width + x / 3];
            }
        }
        ExpectStops(raster);
    }
}
