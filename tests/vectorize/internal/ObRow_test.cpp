// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/internal/ObRow.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <utility>
#include <vector>

namespace {

using Entries = std::vector<unsigned short>;

constexpr unsigned short kUntouched = 54321;

/// Encodes a row of exactly its bytes; the buffer has exactly its entries.
Entries Encode(std::vector<unsigned char> const& pixels, unsigned char value)
{
    int const width = static_cast<int>(pixels.size());
    Entries row(static_cast<std::size_t>(ObRow_MostEntries(width)), kUntouched);
    ObRow_Encode(pixels.data(), width, value, row.data());
    while (row.back() == kUntouched) {
        row.pop_back();
    }
    return row;
}

/// The same, pixel by pixel.
Entries SlowlyEncode(std::vector<unsigned char> const& pixels, unsigned char value)
{
    Entries row;
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        if (pixels[x] == value && (x == 0 || pixels[x - 1] != value)) {
            row.push_back(static_cast<unsigned short>(x + 2));
        }
        if (pixels[x] == value && (x + 1 == pixels.size() || pixels[x + 1] != value)) {
            row.push_back(static_cast<unsigned short>(x + 2));
        }
    }
    row.insert(row.end(), {0, 0});
    return row;
}

}  // namespace

TEST(ObRow, HoldsTheColumnsOfRunsTwoHigher)
{
    EXPECT_EQ(Encode({1, 1, 0, 1}, 1), (Entries{2, 3, 5, 5, 0, 0}));
    EXPECT_EQ(Encode({0, 0}, 1), (Entries{0, 0}));
    EXPECT_EQ(Encode({1}, 1), (Entries{2, 2, 0, 0}));
}

TEST(ObRow, HoldsAllRowsOfUpToTenPixels)
{
    for (unsigned int width = 1; width <= 10; ++width) {
        for (unsigned int bits = 0; bits < 1u << width; ++bits) {
            std::vector<unsigned char> pixels(width);
            for (unsigned int x = 0; x < width; ++x) {
                pixels[x] = (bits >> x & 1) != 0 ? 200 : 0;
            }
            ASSERT_EQ(Encode(pixels, 200), SlowlyEncode(pixels, 200)) << width << " " << bits;
        }
    }
}

TEST(ObRow, TellsEveryValueFromEveryOther)
{
    std::vector<unsigned char> pixels(1024);
    for (std::size_t x = 0; x < pixels.size(); ++x) {
        pixels[x] = static_cast<unsigned char>(x < 256 ? x : x < 512 ? 511 - x : x * 37);
    }
    for (unsigned int value = 0; value < 256; ++value) {
        auto const sought = static_cast<unsigned char>(value);
        ASSERT_EQ(Encode(pixels, sought), SlowlyEncode(pixels, sought)) << value;
    }
}

TEST(ObRow, HoldsRandomRowsOfAllLengths)
{
    std::mt19937 engine(8);
    for (std::size_t width = 1; width < 200; ++width) {
        std::vector<unsigned char> pixels(width);
        auto const rarity = 1 + engine() % 9;
        for (unsigned char& pixel : pixels) {
            pixel = static_cast<unsigned char>(engine() % rarity == 0);
        }
        ASSERT_EQ(Encode(pixels, 1), SlowlyEncode(pixels, 1)) << width;
    }
}

TEST(ObRow, HoldsTheWidestRow)
{
    std::vector<unsigned char> pixels(kObWidestRaster, 3);
    EXPECT_EQ(Encode(pixels, 3), (Entries{2, 65534, 0, 0}));
}

namespace {

/// Which runs of a row share a column with one from `start` to `end`, as numbers from 0 on; -1, -1
/// for none.
using Range = std::pair<long, long>;
Range Overlapping(ObRowCursor& cursor, Entries const& row, int start, int end)
{
    unsigned short const run[] = {static_cast<unsigned short>(start + kObRowOffset),
                                  static_cast<unsigned short>(end + kObRowOffset)};
    ObRunRange const range = cursor.Overlapping(run);
    EXPECT_EQ(range.first == nullptr, range.last == nullptr);
    return range.IsEmpty() ? Range(-1, -1)
                           : Range((range.first - row.data()) / 2, (range.last - row.data()) / 2);
}

}  // namespace

TEST(ObRowCursor, FindsTheRunsThatShareAColumn)
{
    // Columns 0-1, 3, 5-9.
    Entries const row = {2, 3, 5, 5, 7, 11, 0, 0};
    auto const overlapping = [&](int start, int end) {
        ObRowCursor cursor(row.data());
        return Overlapping(cursor, row, start, end);
    };
    EXPECT_EQ(overlapping(0, 0), Range(0, 0));
    EXPECT_EQ(overlapping(2, 2), Range(-1, -1)) << "corners do not count";
    EXPECT_EQ(overlapping(1, 3), Range(0, 1));
    EXPECT_EQ(overlapping(2, 4), Range(1, 1));
    EXPECT_EQ(overlapping(0, 20), Range(0, 2));
    EXPECT_EQ(overlapping(9, 9), Range(2, 2));
    EXPECT_EQ(overlapping(10, 12), Range(-1, -1));
}

TEST(ObRowCursor, FindsARunAgainForTheNextStretch)
{
    Entries const row = {2, 11, 13, 13, 0, 0};
    ObRowCursor cursor(row.data());
    EXPECT_EQ(Overlapping(cursor, row, 0, 1), Range(0, 0));
    EXPECT_EQ(Overlapping(cursor, row, 3, 3), Range(0, 0));
    EXPECT_EQ(Overlapping(cursor, row, 9, 11), Range(0, 1));
    EXPECT_EQ(Overlapping(cursor, row, 13, 14), Range(-1, -1));
}

TEST(ObRowCursor, FindsNothingInAnEmptyRow)
{
    Entries const row = {0, 0};
    ObRowCursor cursor(row.data());
    EXPECT_EQ(Overlapping(cursor, row, 0, 100), Range(-1, -1));
    EXPECT_EQ(Overlapping(cursor, row, 101, kObWidestRaster - 1), Range(-1, -1));
}

TEST(ObRowCursor, FindsTheLastRunOfTheWidestRow)
{
    Entries const row = {2, 2, 65534, 65534, 0, 0};
    ObRowCursor cursor(row.data());
    EXPECT_EQ(Overlapping(cursor, row, 1, 65531), Range(-1, -1));
    EXPECT_EQ(Overlapping(cursor, row, 65532, 65532), Range(1, 1));
}
