// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The byte codec: exact bytes, bounds, numbers that are not finite.

#include <hv/foundation/byte_codec.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<unsigned char> Written(void (*write)(HvByteWriter&))
{
    std::array<unsigned char, 32> buffer;
    buffer.fill(0xEE);
    HvByteWriter writer(buffer.data());
    write(writer);
    return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(writer.Used())};
}

using Bytes = std::vector<unsigned char>;

}  // namespace

TEST(byte_codec, IntegersAreWrittenLowByteFirst)
{
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteUInt8(0xAB); }), (Bytes{0xAB}));
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteUInt16(0x0102); }), (Bytes{0x02, 0x01}));
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteUInt32(0x01020304); }),
              (Bytes{0x04, 0x03, 0x02, 0x01}));
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteInt32(-2); }), (Bytes{0xFE, 0xFF, 0xFF, 0xFF}));
}

// 1.5 is 0x3FF8000000000000 as a double, 0x3FC00000 as a float.
TEST(byte_codec, NumbersAreWrittenAsBinary64AndBinary32)
{
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteDouble(1.5); }),
              (Bytes{0, 0, 0, 0, 0, 0, 0xF8, 0x3F}));
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteFloat(1.5F); }),
              (Bytes{0, 0, 0xC0, 0x3F}));
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteDouble(-0.0); }),
              (Bytes{0, 0, 0, 0, 0, 0, 0, 0x80}));
}

TEST(byte_codec, NumbersThatAreNotFiniteAreWrittenAsZero)
{
    Bytes const zero64(8, 0);
    Bytes const zero32(4, 0);
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteDouble(kNaN); }), zero64);
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteDouble(kInfinity); }), zero64);
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteDouble(-kInfinity); }), zero64);
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteFloat(static_cast<float>(kNaN)); }),
              zero32);
    EXPECT_EQ(Written([](HvByteWriter& w) { w.WriteFiniteFloat(static_cast<float>(kInfinity)); }),
              zero32);
}

TEST(byte_codec, NumbersThatAreNotFiniteAreReadAsZero)
{
    unsigned char const infinity64[] = {0, 0, 0, 0, 0, 0, 0xF0, 0x7F};
    unsigned char const nan64[] = {1, 0, 0, 0, 0, 0, 0xF0, 0xFF};
    unsigned char const infinity32[] = {0, 0, 0x80, 0xFF};
    EXPECT_EQ(HvByteReader(infinity64, 8).ReadFiniteDouble(), 0.0);
    EXPECT_EQ(HvByteReader(nan64, 8).ReadFiniteDouble(), 0.0);
    EXPECT_EQ(HvByteReader(infinity32, 4).ReadFiniteFloat(), 0.0F);
}

TEST(byte_codec, SkippedBytesKeepWhatTheyHeld)
{
    unsigned char buffer[4] = {1, 2, 3, 4};
    HvByteWriter writer(buffer);
    writer.WriteUInt8(9);
    writer.Skip(2);
    writer.WriteBytes(nullptr, 0);
    writer.WriteUInt8(8);
    EXPECT_EQ(writer.Used(), 4u);
    EXPECT_EQ(Bytes(buffer, buffer + 4), (Bytes{9, 2, 3, 8}));
}

TEST(byte_codec, WhatIsWrittenIsReadBack)
{
    EXPECT_TRUE(rc::check([](std::uint8_t a, std::uint16_t b, std::uint32_t c, std::int32_t d,
                             float e, double f, std::string const& g) {
        std::vector<unsigned char> buffer(1 + 2 + 4 + 4 + 4 + 8 + g.size());
        HvByteWriter writer(buffer.data());
        writer.WriteUInt8(a);
        writer.WriteUInt16(b);
        writer.WriteUInt32(c);
        writer.WriteInt32(d);
        writer.WriteFiniteFloat(e);
        writer.WriteFiniteDouble(f);
        writer.WriteBytes(g.data(), g.size());
        RC_ASSERT(writer.Used() == buffer.size());
        HvByteReader reader(buffer.data(), buffer.size());
        RC_ASSERT(reader.ReadUInt8() == a);
        RC_ASSERT(reader.ReadUInt16() == b);
        RC_ASSERT(reader.ReadUInt32() == c);
        RC_ASSERT(reader.ReadInt32() == d);
        RC_ASSERT(reader.ReadFiniteFloat() == (std::isfinite(e) ? e : 0.0F));
        RC_ASSERT(reader.ReadFiniteDouble() == (std::isfinite(f) ? f : 0.0));
        unsigned char const* const bytes = reader.ReadBytes(g.size());
        RC_ASSERT(bytes != nullptr);
        RC_ASSERT(g.empty() || std::memcmp(bytes, g.data(), g.size()) == 0);
        RC_ASSERT(reader.Left() == 0U);
        RC_ASSERT(!reader.Failed());
    }));
}

// Heap blocks of exactly the size, so that a sanitized run sees a byte read beyond.
TEST(byte_codec, ReaderNeverPassesItsEnd)
{
    for (std::size_t size = 0; size < 8; ++size) {
        std::vector<unsigned char> const bytes(size, 0xFF);
        HvByteReader reader(bytes.data(), size);
        EXPECT_EQ(reader.ReadFiniteDouble(), 0.0);
        EXPECT_TRUE(reader.Failed());
        EXPECT_EQ(reader.Used(), 0u);
        EXPECT_EQ(reader.Left(), 0u);
        EXPECT_EQ(reader.ReadUInt8(), 0u) << "a failed reader reads no more";
        EXPECT_EQ(reader.ReadBytes(0), nullptr);
    }
}

TEST(byte_codec, ReadToTheLastByteDoesNotFail)
{
    unsigned char const bytes[] = {1, 2, 3, 4, 5};
    HvByteReader reader(bytes, sizeof bytes);
    EXPECT_EQ(reader.ReadUInt32(), 0x04030201u);
    EXPECT_EQ(reader.Used(), 4u);
    EXPECT_EQ(reader.Left(), 1u);
    EXPECT_EQ(reader.ReadUInt8(), 5u);
    EXPECT_NE(reader.ReadBytes(0), nullptr);
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.ReadUInt8(), 0u);
    EXPECT_TRUE(reader.Failed());
}

TEST(byte_codec, CountIsHeldAgainstWhatIsLeft)
{
    unsigned char const bytes[24] = {};
    EXPECT_TRUE(HvByteReader(bytes, 24).Holds(3, 8));
    EXPECT_TRUE(HvByteReader(bytes, 24).Holds(0, 8));
    EXPECT_TRUE(HvByteReader(bytes, 24).Holds(1000, 0));
    EXPECT_FALSE(HvByteReader(bytes, 24).Holds(4, 8));
    EXPECT_FALSE(HvByteReader(bytes, 23).Holds(3, 8));
    // A product that wraps must not pass for a small one.
    EXPECT_FALSE(HvByteReader(bytes, 24).Holds(std::numeric_limits<std::uint64_t>::max(), 16));
    HvByteReader reader(bytes, 24);
    reader.Holds(4, 8);
    EXPECT_TRUE(reader.Failed());
    EXPECT_FALSE(reader.Holds(1, 1)) << "a failed reader holds nothing";
}

TEST(byte_codec, PartEndsAtItsOwnSize)
{
    unsigned char const bytes[] = {1, 2, 3, 4, 5};
    HvByteReader reader(bytes, sizeof bytes);
    reader.Skip(1);
    HvByteReader part = reader.ReadPart(2);
    EXPECT_EQ(part.ReadUInt8(), 2u);
    EXPECT_EQ(part.Left(), 1u);
    EXPECT_EQ(part.ReadUInt16(), 0u);
    EXPECT_TRUE(part.Failed());
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.ReadUInt8(), 4u) << "the part was stepped over, whatever was read of it";
    HvByteReader tooLong = reader.ReadPart(2);
    EXPECT_TRUE(tooLong.Failed());
    EXPECT_TRUE(reader.Failed());
}

TEST(byte_codec, UnboundedReaderTrustsItsCaller)
{
    unsigned char const bytes[] = {1, 0, 0, 0, 7, 8};
    HvByteReader reader = HvByteReader::Unbounded(bytes);
    EXPECT_TRUE(reader.Holds(0xFFFFFFFFU, 60));
    EXPECT_EQ(reader.ReadUInt32(), 1u);
    HvByteReader part = reader.ReadPart(2);
    EXPECT_EQ(part.ReadUInt16(), 0x0807u);
    EXPECT_EQ(part.ReadUInt8(), 0u);
    EXPECT_TRUE(part.Failed()) << "a part of an unbounded reader has its own end";
    EXPECT_EQ(reader.Used(), 6u);
    EXPECT_FALSE(reader.Failed());
    reader.Fail("wrong");
    EXPECT_TRUE(reader.Failed());
}

TEST(byte_codec, FirstFaultIsRemembered)
{
    unsigned char const bytes[10] = {};
    HvByteReader reader(bytes, sizeof bytes);
    EXPECT_EQ(reader.Fault(), nullptr);
    reader.ReadUInt32();
    reader.Fail("wrong number", 4);
    EXPECT_STREQ(reader.Fault(), "wrong number");
    EXPECT_EQ(reader.FaultPlace(), 0u);
    reader.ReadUInt8();
    reader.Fail("too late");
    EXPECT_STREQ(reader.Fault(), "wrong number");
    EXPECT_EQ(reader.FaultPlace(), 0u);
}

TEST(byte_codec, FaultOfAPartTellsItsPlaceInTheWhole)
{
    unsigned char const bytes[20] = {};
    HvByteReader whole(bytes, sizeof bytes);
    whole.Skip(3);
    HvByteReader part = whole.ReadPart(8);
    part.Skip(2);
    HvByteReader inner = part.ReadPart(4);
    inner.ReadUInt8();
    inner.ReadUInt32();
    EXPECT_STREQ(inner.Fault(), HvByteReader::kEndsEarly);
    EXPECT_EQ(inner.FaultPlace(), 6u);
    part.FailAs(inner);
    EXPECT_EQ(part.Left(), 0u);
    EXPECT_EQ(part.FaultPlace(), 6u);
    part.FailAs(whole);
    EXPECT_STREQ(part.Fault(), HvByteReader::kEndsEarly) << "the first fault stays";
    EXPECT_FALSE(whole.Failed());
}

TEST(byte_codec, PartThatIsNotThereFailsWhereItWouldStart)
{
    unsigned char const bytes[6] = {};
    HvByteReader whole(bytes, sizeof bytes);
    whole.Skip(4);
    HvByteReader const part = whole.ReadPart(3);
    EXPECT_EQ(part.FaultPlace(), 4u);
    EXPECT_EQ(whole.FaultPlace(), 4u);
    EXPECT_STREQ(part.Fault(), HvByteReader::kEndsEarly);
}
