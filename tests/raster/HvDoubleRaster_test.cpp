// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvDoubleRaster.h>

#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace {

/// What raster.Print() writes, with the stream's settings as they are at the start of a program.
std::string PrintOf(HvDoubleRaster const& raster)
{
    testing::internal::CaptureStdout();
    raster.Print();
    return testing::internal::GetCapturedStdout();
}

TEST(HvDoubleRaster, CopyIsDeep)
{
    HvDoubleRaster source(2, 1, 4);
    HvDoubleRaster copy(source);
    copy.data[0] = 8;
    EXPECT_EQ(source.data[0], 4);
    EXPECT_EQ(copy.data[1], 4);
    EXPECT_EQ(copy.width, 2);
    EXPECT_EQ(copy.height, 1);
}

TEST(HvDoubleRaster, AssignmentTakesSizeAndPixels)
{
    HvDoubleRaster const source(2, 3, 4);
    HvDoubleRaster target(5, 5, 1);
    target = source;
    EXPECT_EQ(target.width, 2);
    EXPECT_EQ(target.height, 3);
    EXPECT_EQ(target.data[5], 4);
    EXPECT_NE(target.data, source.data);
}

TEST(HvDoubleRaster, SelfAssignmentChangesNothing)
{
    HvDoubleRaster raster(2, 2, 4);
    auto* const pixels = raster.data;
    HvDoubleRaster const& same = raster;
    raster = same;
    EXPECT_EQ(raster.data, pixels);
    EXPECT_EQ(raster.data[3], 4);
}

TEST(HvDoubleRaster, AnAssignmentWithoutMemoryLeavesTheTarget)
{
    HvDoubleRaster const source(3, 3, 7);
    long const allocations = RefuseEachAllocation([] { return HvDoubleRaster(2, 2, 1); },
                                                  [&](HvDoubleRaster& target) { target = source; },
                                                  [&](HvDoubleRaster& target, bool completed) {
                                                      EXPECT_EQ(target.width, completed ? 3 : 2);
                                                      EXPECT_EQ(target.data[3], completed ? 7 : 1);
                                                  });
    EXPECT_EQ(allocations, 1);
}

TEST(HvDoubleRaster, AllocatesItsPixelsAlone)
{
    EXPECT_EQ(RefuseEachAllocation([] { HvDoubleRaster const raster(4, 4, 0); }), 1);
    HvDoubleRaster const source(2, 2, 1);
    EXPECT_EQ(RefuseEachAllocation([&] { HvDoubleRaster const copy(source); }), 1);
}

TEST(HvDoubleRaster, PrintsTheLastRowFirstWithThreeDigits)
{
    HvDoubleRaster raster(2, 2, -0.25);
    raster.data[0] = 2.0 / 3.0;
    raster.data[3] = 1000.0;
    EXPECT_EQ(PrintOf(raster), "double raster W x H = 2 x 2\n-0.25 1e+03 \n0.667 -0.25 \n");
    EXPECT_EQ(std::cout.precision(), 3);
    std::cout.precision(6);
}

TEST(HvDoubleRaster, PrintsAHeaderWhenThereAreNoRows)
{
    EXPECT_EQ(PrintOf(HvDoubleRaster(0, 0, 0)), "double raster W x H = 0 x 0\n");
    EXPECT_EQ(std::cout.precision(), 6);
}

}  // namespace
