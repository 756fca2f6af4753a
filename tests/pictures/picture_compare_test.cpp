// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include "picture_compare.h"
#include "picture_png.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using Colours = std::vector<unsigned char>;

std::string TemporaryFile(char const* name)
{
    return (std::filesystem::path(testing::TempDir()) / name).string();
}

}  // namespace

TEST(picture_compare, EqualPicturesDoNotDiffer)
{
    HvUByteRaster const picture(3, 2, 100);
    PictureDifference const difference = Picture_Compare(picture, picture);
    EXPECT_TRUE(difference.pixels.empty());
    EXPECT_EQ(difference.worst, 0);
    EXPECT_EQ(Picture_DifferenceColours(picture, picture), Colours(18, 25));
}

TEST(picture_compare, EveryPixelThatDiffersIsNamed)
{
    HvUByteRaster const kept(5, 4, 10);
    HvUByteRaster drawn(5, 4, 10);
    drawn.data[1 * 5 + 3] = 11;
    drawn.data[2 * 5 + 1] = 0;
    drawn.data[2 * 5 + 2] = 255;
    PictureDifference const difference = Picture_Compare(kept, drawn);
    ASSERT_EQ(difference.pixels.size(), 3u);
    DifferentPixel const first = difference.pixels[0];
    EXPECT_EQ(first.x, 3);
    EXPECT_EQ(first.y, 1);
    EXPECT_EQ(first.before, 10);
    EXPECT_EQ(first.now, 11);
    EXPECT_EQ(difference.pixels[2].x, 2);
    EXPECT_EQ(difference.pixels[2].now, 255);
    EXPECT_EQ(difference.left, 1);
    EXPECT_EQ(difference.right, 3);
    EXPECT_EQ(difference.top, 1);
    EXPECT_EQ(difference.bottom, 2);
    EXPECT_EQ(difference.worst, 245);
}

TEST(picture_compare, GainsAreGreenAndLossesRed)
{
    HvUByteRaster kept(3, 1, 0);
    HvUByteRaster drawn(3, 1, 0);
    kept.data[0] = 255;
    kept.data[1] = 254;
    drawn.data[1] = 255;
    drawn.data[2] = 255;
    EXPECT_EQ(Picture_DifferenceColours(kept, drawn), (Colours{255, 0, 0, 0, 128, 0, 0, 255, 0}));
}

TEST(picture_compare, OnlyPicturesOfOneSizeCompare)
{
    HvUByteRaster const picture(3, 2, 0);
    EXPECT_TRUE(Picture_IsSameSize(picture, HvUByteRaster(3, 2, 1)));
    EXPECT_FALSE(Picture_IsSameSize(picture, HvUByteRaster(2, 3, 0)));
    EXPECT_FALSE(Picture_IsSameSize(picture, HvUByteRaster(3, 3, 0)));
}

TEST(picture_png, ReadsTheBytesThatWereWritten)
{
    HvUByteRaster picture(16, 16, 0);
    for (int i = 0; i < 256; ++i) {
        picture.data[i] = static_cast<unsigned char>(i);
    }
    std::string const file = TemporaryFile("hv_picture_bytes.png");
    PicturePng_Write(file, picture);
    HvUByteRaster const read = PicturePng_Read(file);
    std::filesystem::remove(file);
    ASSERT_TRUE(Picture_IsSameSize(picture, read));
    EXPECT_TRUE(Picture_Compare(picture, read).pixels.empty());
}

TEST(picture_png, FileThatIsNotThereIsNamed)
{
    std::string const file = TemporaryFile("hv_picture_that_is_not_there.png");
    try {
        PicturePng_Read(file);
        FAIL();
    } catch (std::runtime_error const& error) {
        EXPECT_NE(std::string(error.what()).find(file), std::string::npos);
    }
}
