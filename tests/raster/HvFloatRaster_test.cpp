// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvFloatRaster.h>

#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace {

/// What raster.Print() writes, with the stream's settings as they are at the start of a program.
std::string PrintOf(HvFloatRaster const& raster)
{
    testing::internal::CaptureStdout();
    raster.Print();
    return testing::internal::GetCapturedStdout();
}

TEST(HvFloatRaster, CopyIsDeep)
{
    HvFloatRaster source(2, 1, 4);
    HvFloatRaster copy(source);
    copy.data[0] = 8;
    EXPECT_EQ(source.data[0], 4);
    EXPECT_EQ(copy.data[1], 4);
    EXPECT_EQ(copy.width, 2);
    EXPECT_EQ(copy.height, 1);
}

TEST(HvFloatRaster, AssignmentTakesSizeAndPixels)
{
    HvFloatRaster const source(2, 3, 4);
    HvFloatRaster target(5, 5, 1);
    target = source;
    EXPECT_EQ(target.width, 2);
    EXPECT_EQ(target.height, 3);
    EXPECT_EQ(target.data[5], 4);
    EXPECT_NE(target.data, source.data);
}

TEST(HvFloatRaster, SelfAssignmentChangesNothing)
{
    HvFloatRaster raster(2, 2, 4);
    auto* const pixels = raster.data;
    HvFloatRaster const& same = raster;
    raster = same;
    EXPECT_EQ(raster.data, pixels);
    EXPECT_EQ(raster.data[3], 4);
}

TEST(HvFloatRaster, AnAssignmentWithoutMemoryLeavesTheTarget)
{
    HvFloatRaster const source(3, 3, 7);
    long const allocations = RefuseEachAllocation([] { return HvFloatRaster(2, 2, 1); },
                                                  [&](HvFloatRaster& target) { target = source; },
                                                  [&](HvFloatRaster& target, bool completed) {
                                                      EXPECT_EQ(target.width, completed ? 3 : 2);
                                                      EXPECT_EQ(target.data[3], completed ? 7 : 1);
                                                  });
    EXPECT_EQ(allocations, 1);
}

TEST(HvFloatRaster, AllocatesItsPixelsAlone)
{
    EXPECT_EQ(RefuseEachAllocation([] { HvFloatRaster const raster(4, 4, 0); }), 1);
    HvFloatRaster const source(2, 2, 1);
    EXPECT_EQ(RefuseEachAllocation([&] { HvFloatRaster const copy(source); }), 1);
}

TEST(HvFloatRaster, OnePixelTakesASmallerValue)
{
    HvFloatRaster raster(2, 2, 5);
    raster.SetValWhenSmaller(1, 0, 4.5f);
    raster.SetValWhenSmaller(0, 1, 5.0f);
    raster.SetValWhenSmaller(1, 1, 6.0f);
    EXPECT_EQ(raster.data[0], 5.0f);
    EXPECT_EQ(raster.data[1], 4.5f);
    EXPECT_EQ(raster.data[2], 5.0f);
    EXPECT_EQ(raster.data[3], 5.0f);
}

TEST(HvFloatRaster, PrintsTheLastRowFirstWithThreeDigits)
{
    HvFloatRaster raster(2, 2, 0.5f);
    raster.data[0] = 1.23456f;
    raster.data[3] = 123456.0f;
    EXPECT_EQ(PrintOf(raster), "Float raster W x H = 2 x 2\n0.5 1.23e+05 \n1.23 0.5 \n");
    EXPECT_EQ(std::cout.precision(), 3);
    std::cout.precision(6);
}

TEST(HvFloatRaster, PrintsAHeaderWhenThereAreNoRows)
{
    EXPECT_EQ(PrintOf(HvFloatRaster(2, 0, 0)), "Float raster W x H = 2 x 0\n");
    EXPECT_EQ(PrintOf(HvFloatRaster(0, 2, 0)), "Float raster W x H = 0 x 2\n\n\n");
    EXPECT_EQ(std::cout.precision(), 6);
}

}  // namespace
