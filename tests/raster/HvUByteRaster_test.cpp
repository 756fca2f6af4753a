// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvUByteRaster.h>

#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace {

/// What raster.Print() writes, with the stream's settings as they are at the start of a program.
std::string PrintOf(HvUByteRaster const& raster)
{
    testing::internal::CaptureStdout();
    raster.Print();
    return testing::internal::GetCapturedStdout();
}

TEST(HvUByteRaster, CopyIsDeep)
{
    HvUByteRaster source(2, 1, 4);
    HvUByteRaster copy(source);
    copy.data[0] = 8;
    EXPECT_EQ(source.data[0], 4);
    EXPECT_EQ(copy.data[1], 4);
    EXPECT_EQ(copy.width, 2);
    EXPECT_EQ(copy.height, 1);
}

TEST(HvUByteRaster, AssignmentTakesSizeAndPixels)
{
    HvUByteRaster const source(2, 3, 4);
    HvUByteRaster target(5, 5, 1);
    target = source;
    EXPECT_EQ(target.width, 2);
    EXPECT_EQ(target.height, 3);
    EXPECT_EQ(target.data[5], 4);
    EXPECT_NE(target.data, source.data);
}

TEST(HvUByteRaster, SelfAssignmentChangesNothing)
{
    HvUByteRaster raster(2, 2, 4);
    auto* const pixels = raster.data;
    HvUByteRaster const& same = raster;
    raster = same;
    EXPECT_EQ(raster.data, pixels);
    EXPECT_EQ(raster.data[3], 4);
}

TEST(HvUByteRaster, AnAssignmentWithoutMemoryLeavesTheTarget)
{
    HvUByteRaster const source(3, 3, 7);
    long const allocations = RefuseEachAllocation([] { return HvUByteRaster(2, 2, 1); },
                                                  [&](HvUByteRaster& target) { target = source; },
                                                  [&](HvUByteRaster& target, bool completed) {
                                                      EXPECT_EQ(target.width, completed ? 3 : 2);
                                                      EXPECT_EQ(target.data[3], completed ? 7 : 1);
                                                  });
    EXPECT_EQ(allocations, 1);
}

TEST(HvUByteRaster, AllocatesItsPixelsAlone)
{
    EXPECT_EQ(RefuseEachAllocation([] { HvUByteRaster const raster(4, 4, 0); }), 1);
    HvUByteRaster const source(2, 2, 1);
    EXPECT_EQ(RefuseEachAllocation([&] { HvUByteRaster const copy(source); }), 1);
}

TEST(HvUByteRaster, OwnsWhatItAllocated)
{
    EXPECT_TRUE(HvUByteRaster(1, 1, 0).ownsData);
    EXPECT_TRUE(HvUByteRaster(HvUByteRaster(1, 1, 0)).ownsData);
}

TEST(HvUByteRaster, AWrappedBufferIsOverwrittenAndLeftToItsOwner)
{
    unsigned char pixels[7] = {1, 2, 3, 4, 5, 6, 7};
    {
        HvUByteRaster const raster(pixels, 3, 2, false, 9);
        EXPECT_FALSE(raster.ownsData);
        EXPECT_EQ(raster.data, pixels);
    }
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(pixels[i], 9);
    }
    EXPECT_EQ(pixels[6], 7);
}

TEST(HvUByteRaster, AWrappedBufferIsFreedWhenItIsOwned)
{
    AllocationCounter const counter;
    {
        HvUByteRaster const raster(static_cast<unsigned char*>(HvAllocate(4)), 2, 2, true, 1);
        EXPECT_EQ(counter.Live(), 1);
    }
    EXPECT_EQ(counter.Live(), 0);
}

TEST(HvUByteRaster, AWrapperOfTooManyPixelsIsRefused)
{
    unsigned char pixel = 3;
    EXPECT_THROW(HvUByteRaster(&pixel, 65536, 65536, false, 0), std::bad_alloc);
    HvUByteRaster const empty(nullptr, -1, -1, false, 0);
    EXPECT_EQ(empty.NumPixels(), 0u);
    EXPECT_EQ(pixel, 3);
}

TEST(HvUByteRaster, CopyOfANonOwnerSharesThePixels)
{
    unsigned char pixels[4];
    HvUByteRaster const source(pixels, 2, 2, false, 1);
    HvUByteRaster copy(source);
    EXPECT_FALSE(copy.ownsData);
    copy.data[2] = 8;
    EXPECT_EQ(source.data[2], 8);
}

TEST(HvUByteRaster, AssignmentFromANonOwnerTakesTheFlagWithPixelsOfItsOwn)
{
    unsigned char pixels[4];
    HvUByteRaster const source(pixels, 2, 2, false, 6);
    HvUByteRaster target(1, 1, 0);
    target = source;
    EXPECT_FALSE(target.ownsData);
    EXPECT_NE(target.data, pixels);
    EXPECT_EQ(target.data[3], 6);
    target.ownsData = true;  // who assigns from a wrapper has to say who frees the copy
}

TEST(HvUByteRaster, AssignmentToANonOwnerLeavesTheCallersBuffer)
{
    unsigned char pixels[4];
    HvUByteRaster target(pixels, 2, 2, false, 6);
    target = HvUByteRaster(1, 1, 3);
    EXPECT_TRUE(target.ownsData);
    EXPECT_EQ(target.data[0], 3);
    EXPECT_EQ(pixels[0], 6);
}

TEST(HvUByteRaster, AllPixelValuesAreOnlyWhenNoneDiffers)
{
    HvUByteRaster raster(3, 3, 7);
    EXPECT_EQ(raster.AllPixelValuesAre(7), 1);
    EXPECT_EQ(raster.AllPixelValuesAre(8), 0);
    for (int i = 0; i < 9; ++i) {
        raster.data[i] = 8;
        EXPECT_EQ(raster.AllPixelValuesAre(7), 0);
        raster.data[i] = 7;
    }
    EXPECT_EQ(HvUByteRaster(0, 0, 1).AllPixelValuesAre(2), 1);
    EXPECT_EQ(HvUByteRaster(-2, -2, 1).AllPixelValuesAre(2), 1);
}

TEST(HvUByteRaster, PrintsTheLastRowFirstInFourColumns)
{
    HvUByteRaster raster(2, 2, 7);
    raster.data[0] = 255;
    EXPECT_EQ(PrintOf(raster), "UBYTE raster W x H = 2 x 2\n   7   7\n 255   7\n");
    EXPECT_EQ(PrintOf(HvUByteRaster(3, 0, 1)), "UBYTE raster W x H = 3 x 0\n");
}

}  // namespace
