// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvRasterGrid.h>

#include <hv/raster/HvDoubleRaster.h>
#include <hv/raster/HvFloatRaster.h>
#include <hv/raster/HvUByteRaster.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <climits>
#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

namespace {

template <class Raster>
using PixelOf = std::remove_pointer_t<decltype(Raster::data)>;

template <class Raster>
std::vector<PixelOf<Raster>> Pixels(Raster const& raster)
{
    return {raster.data, raster.data + raster.NumPixels()};
}

template <class Raster>
Raster Numbered(int width, int height, int first)
{
    Raster raster(width, height, 0);
    for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
        raster.data[i] = static_cast<PixelOf<Raster>>((first + 7 * static_cast<int>(i)) % 251);
    }
    return raster;
}

/// Placement pixel by pixel, with every pixel asked whether it lies in both rasters.
template <class Raster, class Combine>
std::vector<PixelOf<Raster>> Placed(Raster const& target, int x, int y, Raster const& source,
                                    Combine combine)
{
    auto pixels = Pixels(target);
    for (int j = 0; j < target.height; ++j) {
        for (int i = 0; i < target.width; ++i) {
            int const sx = i - x;
            int const sy = j - y;
            if (sx >= 0 && sx < source.width && sy >= 0 && sy < source.height) {
                auto& pixel = pixels[static_cast<std::size_t>(j * target.width + i)];
                pixel = combine(pixel, source.data[sy * source.width + sx]);
            }
        }
    }
    return pixels;
}

template <class Raster>
class HvRasterGrid_all : public testing::Test {
};

using Rasters = testing::Types<HvUByteRaster, HvFloatRaster, HvDoubleRaster>;
TYPED_TEST_SUITE(HvRasterGrid_all, Rasters, );

TYPED_TEST(HvRasterGrid_all, StartsWithTheValueEverywhere)
{
    TypeParam const raster(3, 2, 9);
    EXPECT_EQ(raster.width, 3);
    EXPECT_EQ(raster.height, 2);
    EXPECT_EQ(Pixels(raster), std::vector<PixelOf<TypeParam>>(6, 9));
}

TYPED_TEST(HvRasterGrid_all, FieldsStandInTheirOrderFromTheStart)
{
    TypeParam raster(1, 1, 0);
    char const* const start = reinterpret_cast<char const*>(&raster);
    EXPECT_EQ(reinterpret_cast<char const*>(&raster.width) - start, 0);
    EXPECT_EQ(reinterpret_cast<char const*>(&raster.height) - start, 4);
    EXPECT_EQ(reinterpret_cast<char const*>(&raster.data) - start, 8);
    EXPECT_FALSE(std::is_polymorphic<TypeParam>::value);
}

TYPED_TEST(HvRasterGrid_all, NegativeSizesCountAsNone)
{
    for (int const width : {0, -1, INT_MIN}) {
        for (int const height : {5, 0, -3, INT_MIN}) {
            TypeParam const raster(width, height, 1);
            EXPECT_EQ(raster.width, 0);
            EXPECT_EQ(raster.height, height < 0 ? 0 : height);
            EXPECT_EQ(raster.NumPixels(), 0u);
        }
    }
}

TYPED_TEST(HvRasterGrid_all, RefusesMorePixelsThanAnIntCounts)
{
    EXPECT_THROW(TypeParam(65536, 65536, 0), std::bad_alloc);
    EXPECT_THROW(TypeParam(65536, 32768, 0), std::bad_alloc);
    EXPECT_THROW(TypeParam(INT_MAX, 2, 0), std::bad_alloc);
    EXPECT_THROW(TypeParam(INT_MAX, INT_MAX, 0), std::bad_alloc);
}

TYPED_TEST(HvRasterGrid_all, PlacementIsThatOfEveryPixelAlone)
{
    using T = PixelOf<TypeParam>;
    rc::check([] {
        auto const target = Numbered<TypeParam>(PickInRange(0, 7), PickInRange(0, 7), 3);
        auto const source =
            Numbered<TypeParam>(PickInRange(0, 7), PickInRange(0, 7), PickInRange(0, 200));
        int const x = PickInRange(-9, 10);
        int const y = PickInRange(-9, 10);
        TypeParam copied(target);
        copied.CopyRaster(x, y, source);
        RC_ASSERT(Pixels(copied) == Placed(target, x, y, source, [](T, T s) { return s; }));
        TypeParam least(target);
        least.SetValWhenSmaller(x, y, source);
        RC_ASSERT(Pixels(least) ==
                  Placed(target, x, y, source, [](T t, T s) { return s < t ? s : t; }));
    });
}

TYPED_TEST(HvRasterGrid_all, PlacementBeyondTheRightAndLowerSideWritesNothing)
{
    TypeParam const source(2, 2, 7);
    for (int const at : {4, 5, INT_MAX, -2, -3, INT_MIN}) {
        TypeParam target(4, 4, 9);
        target.CopyRaster(at, 0, source);
        target.CopyRaster(0, at, source);
        target.SetValWhenSmaller(at, at, source);
        EXPECT_EQ(Pixels(target), Pixels(TypeParam(4, 4, 9))) << at;
    }
}

TYPED_TEST(HvRasterGrid_all, APlacedEqualValueIsNotSmaller)
{
    TypeParam target(1, 1, 5);
    target.SetValWhenSmaller(0, 0, TypeParam(1, 1, 5));
    EXPECT_EQ(target.data[0], 5);
    target.SetValWhenSmaller(0, 0, TypeParam(1, 1, 4));
    EXPECT_EQ(target.data[0], 4);
}

TYPED_TEST(HvRasterGrid_all, CopyOfARasterIntoItselfShiftsEachRow)
{
    auto raster = Numbered<TypeParam>(5, 1, 1);
    auto const before = Pixels(raster);
    raster.CopyRaster(2, 0, raster);
    EXPECT_EQ(Pixels(raster), (std::vector<PixelOf<TypeParam>>{before[0], before[1], before[0],
                                                               before[1], before[2]}));
}

TYPED_TEST(HvRasterGrid_all, EmptyRastersAreNoObstacle)
{
    for (int const width : {0, 3}) {
        TypeParam empty(width, 3 - width, 1);
        TypeParam full(3, 3, 5);
        empty.CopyRaster(0, 0, full);
        empty.SetValWhenSmaller(-1, 0, full);
        full.CopyRaster(0, 0, empty);
        full.SetValWhenSmaller(1, 1, empty);
        EXPECT_EQ(Pixels(full), Pixels(TypeParam(3, 3, 5)));
        TypeParam assigned(2, 2, 1);
        assigned = empty;
        EXPECT_EQ(assigned.width, width);
        EXPECT_EQ(assigned.height, 3 - width);
        EXPECT_EQ(TypeParam(empty).NumPixels(), 0u);
    }
}

TEST(HvRasterGrid, NaNIsNeverSmaller)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    HvDoubleRaster target(1, 1, 5);
    target.SetValWhenSmaller(0, 0, HvDoubleRaster(1, 1, nan));
    EXPECT_EQ(target.data[0], 5);
    HvDoubleRaster nanTarget(1, 1, nan);
    nanTarget.SetValWhenSmaller(0, 0, target);
    EXPECT_TRUE(std::isnan(nanTarget.data[0]));
}

}  // namespace
