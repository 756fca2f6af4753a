// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The section on rasters of docs/conventions.md, line by line.

#include <hv/hv.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace {

/// A raster of 6 x 2 filled with polygons, given by their corners.
std::vector<int> Filled(std::initializer_list<std::vector<HvPoint2<double>>> polygons, int fillRule)
{
    HvPoint2dArray points;
    HvPointTagArray tags;
    for (auto const& corners : polygons) {
        for (auto const& corner : corners) {
            points.Add(corner);
            tags.Add(HvPointTagInner);
        }
        points.Add(corners.front());
        tags.Add(HvPointTagEnd);
    }
    HvUByteRaster raster(6, 2, 0);
    HvPolygons_Fill({points, tags, fillRule, {0, 0, 6, 2, false}}, raster, nullptr);
    return {raster.data, raster.data + raster.NumPixels()};
}

using Row = std::vector<int>;

}  // namespace

TEST(Conventions_rasters, PixelsAreStoredRowByRow)
{
    HvFloatRaster raster(3, 2, 5.0f);
    raster.SetValWhenSmaller(2, 1, 4.0f);
    EXPECT_EQ(raster.data[1 * 3 + 2], 4.0f);
}

TEST(Conventions_rasters, APixelCoversTheSquareFromItsNumbersOn)
{
    EXPECT_EQ(Filled({{{2, 1}, {2.9, 1}, {2.9, 2}, {2, 2}}}, 0),
              (Row{0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0}));
}

TEST(Conventions_rasters, ARowIsSampledAtItsMiddle)
{
    EXPECT_EQ(Filled({{{0, 0.6}, {5.5, 0.6}, {5.5, 1.4}, {0, 1.4}}}, 0), Row(12, 0));
    EXPECT_EQ(Filled({{{0, 0.4}, {5.5, 0.4}, {5.5, 0.6}, {0, 0.6}}}, 0),
              (Row{255, 255, 255, 255, 255, 255, 0, 0, 0, 0, 0, 0}));
}

TEST(Conventions_rasters, ASpanIncludesThePixelOfItsRightEnd)
{
    EXPECT_EQ(Filled({{{1.5, 0}, {3, 0}, {3, 1}, {1.5, 1}}}, 0),
              (Row{0, 255, 255, 255, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Filled({{{1.5, 0}, {1.5, 0.3}, {1.5, 1}}}, 0), Row(12, 0));
}

TEST(Conventions_rasters, FillRuleZeroIsParityAndOthersAreWinding)
{
    // The pixels that hold the right ends of the two spans by parity are 1 and 4.
    std::vector<HvPoint2<double>> const outer = {{0, 0}, {4.5, 0}, {4.5, 1}, {0, 1}};
    std::vector<HvPoint2<double>> const inner = {{1, 0}, {3.2, 0}, {3.2, 1}, {1, 1}};
    EXPECT_EQ(Filled({outer, inner}, 0), (Row{255, 255, 0, 255, 255, 0, 0, 0, 0, 0, 0, 0}));
    for (int const rule : {1, 2, -1}) {
        EXPECT_EQ(Filled({outer, inner}, rule),
                  (Row{255, 255, 255, 255, 255, 0, 0, 0, 0, 0, 0, 0}));
    }
}

TEST(Conventions_rasters, FullCoverageIs255)
{
    HvPoint2dArray points;
    HvPointTagArray tags;
    points.Add(-1, -1);
    points.Add(7, -1);
    points.Add(7, 3);
    points.Add(-1, 3);
    points.Add(-1, -1);
    for (int i = 0; i < 5; ++i) {
        tags.Add(i < 4 ? HvPointTagInner : HvPointTagEnd);
    }
    HvUByteRaster raster(6, 2, 0);
    HvPolygons_AAFill({points, tags, 0, {0, 0, 6, 2, true}}, 1.0, raster, nullptr);
    EXPECT_EQ(raster.AllPixelValuesAre(255), 1);
}

TEST(Conventions_rasters, AMaskHasSeedsInsidesAndOutsides)
{
    HvUByteRaster mask(3, 2, 0);
    mask.data[1] = 1;
    mask.data[2] = 2;
    HvDoubleRaster map(3, 2, 0.0);
    map.SetToSquaredEuclideanDistanceMap(mask);
    EXPECT_EQ(map.data[0], 1.0);
    EXPECT_EQ(map.data[1], 0.0);
    EXPECT_EQ(map.data[2], -1.0);
}
