// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The envelope of a shape's archive.

#include <hv/shape/HvShapeArchive.h>

#include <hv/shape/internal/shape_archive.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

TEST(HvShapeArchive, LengthHasFourBytes)
{
    EXPECT_EQ(HvShape2f_GetBufferBodyLengthSize(), 4U);
}

TEST(HvShapeArchive, KindIsANumberOfTwoBytes)
{
    for (unsigned int kind = 0; kind < 65536; ++kind) {
        unsigned char const body[2] = {static_cast<unsigned char>(kind),
                                       static_cast<unsigned char>(kind >> 8)};
        int const expected = kind >= 1 && kind <= 4 ? static_cast<int>(kind) : 0;
        ASSERT_EQ(HvShape2f_GetKindFromBufferBody(body), expected) << kind;
    }
    EXPECT_EQ(HvShape2f_GetKindFromBufferBody(nullptr), HvShape2f::NoShape);
}

TEST(HvShapeArchive, BeginsWithLengthAndKind)
{
    unsigned char bytes[9];
    std::memset(bytes, 0xEE, sizeof bytes);
    HvByteWriter const writer = HvShapeArchive_Begin(bytes, 0x01020304 + 4, HvShape2f::Oval);
    EXPECT_EQ(writer.Used(), 8U);
    unsigned char const expected[9] = {4, 3, 2, 1, 3, 0, 0, 0, 0xEE};
    EXPECT_EQ(std::memcmp(bytes, expected, sizeof bytes), 0);
}

TEST(HvShapeArchive, OwnKindIsReadWhateverFollowsIt)
{
    unsigned char const body[4] = {2, 0, 9, 9};
    HvByteReader reader(body, sizeof body);
    EXPECT_TRUE(HvShapeArchive_ReadKind(reader, HvShape2f::Rect));
    EXPECT_EQ(reader.Used(), 4U);
    HvByteReader other(body, sizeof body);
    EXPECT_FALSE(HvShapeArchive_ReadKind(other, HvShape2f::Path));
}

TEST(HvShapeArchive, KindThatIsCutOffIsNotRead)
{
    unsigned char const body[4] = {2, 0, 0, 0};
    for (std::size_t size = 0; size < 4; ++size) {
        HvByteReader reader(body, size);
        EXPECT_FALSE(HvShapeArchive_ReadKind(reader, HvShape2f::Rect)) << size;
    }
}

TEST(HvShapeArchive, CoordinatesKeepEveryBit)
{
    float const values[] = {1.5F, -0.0F, std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::denorm_min()};
    for (float const value : values) {
        unsigned char bytes[8];
        HvByteWriter writer(bytes);
        HvShapeArchive_WritePoint(writer, HvPoint2<float>(value, 1.0F));
        HvByteReader reader(bytes, sizeof bytes);
        HvPoint2<float> const read = HvShapeArchive_ReadPoint(reader);
        EXPECT_EQ(std::memcmp(&read.x, &value, sizeof value), 0) << value;
        EXPECT_EQ(read.y, 1.0F);
        unsigned char const one[4] = {0, 0, 0x80, 0x3F};
        EXPECT_EQ(std::memcmp(bytes + 4, one, sizeof one), 0);
    }
}
