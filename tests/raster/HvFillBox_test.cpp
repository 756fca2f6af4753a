// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvFillBox.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct Case {
    char const* name;
    HvExtent2<float> extent;
    int x0, y0, x1, y1;
    bool isClamped;
};

// Of a raster of 10 x 20.
Case const kTouching[] = {
    {"inside", {1.5f, 2.5f, 3.5f, 4.0f}, 1, 2, 4, 4, false},
    {"whole", {0, 0, 10, 20}, 0, 0, 10, 20, false},
    {"within the last pixel", {9.5f, 19.5f, 10, 20}, 9, 19, 10, 20, false},
    {"a point", {3, 4, 3, 4}, 3, 4, 3, 4, false},
    {"left", {-0.5f, 2, 3, 4}, 0, 2, 3, 4, true},
    {"upper", {1, -7, 3, 4}, 1, 0, 3, 4, true},
    {"right", {1, 2, 10.5f, 4}, 1, 2, 10, 4, true},
    {"lower", {1, 2, 3, 20.25f}, 1, 2, 3, 20, true},
    {"all around", {-1, -1, 11, 21}, 0, 0, 10, 20, true},
    {"touches on the left", {-5, 2, 0, 4}, 0, 2, 0, 4, true},
    {"touches on the right", {10, 2, 15, 4}, 10, 2, 10, 4, true},
    {"touches in the corner", {10, 20, 10, 20}, 10, 20, 10, 20, false},
    {"infinite", {-kInfinity, -kInfinity, kInfinity, kInfinity}, 0, 0, 10, 20, true},
    {"huge", {-3e38f, 2, 3e38f, 4}, 0, 2, 10, 4, true},
    {"negative zero", {-0.0f, -0.0f, 1, 1}, 0, 0, 1, 1, false},
};

TEST(HvFillBox, HoldsTheWholePixelsOfAnExtentCutToTheRaster)
{
    HvUByteRaster const raster(10, 20, 0);
    for (Case const& expected : kTouching) {
        HvFillBox box = {-1, -1, -1, -1, false};
        EXPECT_EQ(HvFillBox_FromExtent(expected.extent, raster, box), 1) << expected.name;
        EXPECT_EQ(box.x0, expected.x0) << expected.name;
        EXPECT_EQ(box.y0, expected.y0) << expected.name;
        EXPECT_EQ(box.x1, expected.x1) << expected.name;
        EXPECT_EQ(box.y1, expected.y1) << expected.name;
        EXPECT_EQ(box.isClamped, expected.isClamped) << expected.name;
    }
}

TEST(HvFillBox, IsRefusedForWhatLiesOutside)
{
    HvUByteRaster const raster(10, 20, 0);
    HvExtent2<float> const outside[] = {
        {},
        {-5, 2, -0.001f, 4},
        {10.001f, 2, 12, 4},
        {1, -5, 3, -0.001f},
        {1, 20.001f, 3, 25},
        {kInfinity, 2, kInfinity, 4},
        {kNaN, 2, 3, 4},
        {1, kNaN, 3, 4},
        {1, 2, kNaN, 4},
        {1, 2, 3, kNaN},
    };
    for (HvExtent2<float> const& extent : outside) {
        HvFillBox box = {-1, -2, -3, -4, true};
        EXPECT_EQ(HvFillBox_FromExtent(extent, raster, box), 0);
        EXPECT_EQ(box.x0, -1);
        EXPECT_EQ(box.y0, -2);
        EXPECT_EQ(box.x1, -3);
        EXPECT_EQ(box.y1, -4);
        EXPECT_TRUE(box.isClamped);
    }
}

TEST(HvFillBox, OfTheWholePlaneIsTheRaster)
{
    HvUByteRaster const raster(10, 20, 0);
    HvExtent2<float> plane;
    plane.state = HvExtent2<float>::WholePlane;
    HvFillBox box = {-1, -1, -1, -1, false};
    EXPECT_EQ(HvFillBox_FromExtent(plane, raster, box), 1);
    EXPECT_EQ(box.x0, 0);
    EXPECT_EQ(box.y0, 0);
    EXPECT_EQ(box.x1, 10);
    EXPECT_EQ(box.y1, 20);
    EXPECT_TRUE(box.isClamped);
}

TEST(HvFillBox, OfAnEmptyRasterIsEmpty)
{
    HvFillBox box = {-1, -1, -1, -1, false};
    EXPECT_EQ(HvFillBox_FromExtent({-1, -1, 1, 1}, HvUByteRaster(0, 0, 0), box), 1);
    EXPECT_EQ(box.x0, 0);
    EXPECT_EQ(box.x1, 0);
    EXPECT_EQ(box.y0, 0);
    EXPECT_EQ(box.y1, 0);
    EXPECT_EQ(HvFillBox_FromExtent({1, 1, 2, 2}, HvUByteRaster(0, 0, 0), box), 0);
}

TEST(HvFillBox, ClipsToItsSortedSides)
{
    HvExtent2<double> const clip = HvFillBox{1, 2, 10, 20, true}.Clip();
    EXPECT_EQ(clip.state, HvExtent2<double>::Ordinary);
    EXPECT_EQ(clip.min, HvPoint2<double>(1, 2));
    EXPECT_EQ(clip.max, HvPoint2<double>(10, 20));
    HvExtent2<double> const turned = HvFillBox{10, 20, 1, 2, true}.Clip();
    EXPECT_EQ(turned.min, HvPoint2<double>(1, 2));
    EXPECT_EQ(turned.max, HvPoint2<double>(10, 20));
}

}  // namespace
