// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/paint/Coverage.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

HvUByteRaster RasterOf(Bytes const& bytes, int width)
{
    HvUByteRaster raster(width, static_cast<int>(bytes.size()) / width, 0);
    std::memcpy(raster.data, bytes.data(), bytes.size());
    return raster;
}

Bytes BytesOf(HvUByteRaster const& raster)
{
    return Bytes(raster.data, raster.data + raster.NumPixels());
}

Bytes Spread(Coverage const& coverage, int width, int height)
{
    Bytes bytes(static_cast<std::size_t>(width * height), 77);
    coverage.Spread(width, {0, 0, width, height}, bytes.data());
    return bytes;
}

/// Bytes as fills leave them: runs of one value.
rc::Gen<Bytes> GenRuns(std::size_t count)
{
    auto const value = rc::gen::element<std::uint8_t>(0, 255, 0, 255, 1, 128, 254);
    auto const run =
        rc::gen::apply([](std::uint8_t byte, std::size_t length) { return Bytes(length, byte); },
                       value, rc::gen::inRange<std::size_t>(1, 30));
    return rc::gen::map(rc::gen::container<std::vector<Bytes>>(count, run),
                        [count](std::vector<Bytes> const& runs) {
                            Bytes all;
                            for (Bytes const& one : runs) {
                                all.insert(all.end(), one.begin(), one.end());
                            }
                            all.resize(count);
                            return all;
                        });
}

}  // namespace

RC_GTEST_PROP(Coverage, GivesBackWhatItTookAndLeavesNothing, ())
{
    constexpr int kWidth = 67;
    constexpr int kHeight = 5;
    Bytes const bytes = *GenRuns(kWidth * kHeight);
    HvUByteRaster raster = RasterOf(bytes, kWidth);
    Coverage coverage;
    coverage.Take(raster, {0, 0, kWidth, kHeight});
    RC_ASSERT(Spread(coverage, kWidth, kHeight) == bytes);
    RC_ASSERT(raster.AllPixelValuesAre(0) != 0);
    coverage.ForEachRun([&](Coverage::Run const& run) {
        RC_ASSERT(run.length > 0);
        RC_ASSERT(run.x >= coverage.Box().left);
        RC_ASSERT(run.x + run.length <= coverage.Box().right);
        RC_ASSERT(run.y >= coverage.Box().top);
        RC_ASSERT(run.y < coverage.Box().bottom);
    });
}

TEST(Coverage, TakesTheBoxAlone)
{
    HvUByteRaster raster = RasterOf(Bytes(16, 9), 4);
    Coverage coverage;
    coverage.Take(raster, {1, 1, 3, 2});
    EXPECT_EQ(Spread(coverage, 4, 4), (Bytes{0, 0, 0, 0, 0, 9, 9, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(BytesOf(raster), (Bytes{9, 9, 9, 9, 9, 0, 0, 9, 9, 9, 9, 9, 9, 9, 9, 9}));
}

TEST(Coverage, TheRasterMayBeginElsewhereThanThePicture)
{
    HvUByteRaster raster = RasterOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 4);
    Coverage coverage;
    coverage.Take(raster, {0, 0, 2, 2}, -1, -2);
    EXPECT_EQ(Spread(coverage, 2, 2), (Bytes{10, 11, 14, 15}));
    coverage.Take(raster, {2, 1, 4, 2}, 2, 1);
    EXPECT_EQ(Spread(coverage, 4, 2), (Bytes{0, 0, 0, 0, 0, 0, 1, 2}));
}

TEST(Coverage, ItsBoxIsThatOfWhatIsCovered)
{
    Bytes bytes(60, 0);
    bytes[10 + 3] = 5;
    bytes[30 + 7] = 255;
    HvUByteRaster raster = RasterOf(bytes, 10);
    Coverage coverage;
    coverage.Take(raster, {0, 0, 10, 6});
    EXPECT_EQ(coverage.Box().left, 3);
    EXPECT_EQ(coverage.Box().top, 1);
    EXPECT_EQ(coverage.Box().right, 8);
    EXPECT_EQ(coverage.Box().bottom, 4);
    coverage.Take(raster, {0, 0, 10, 6});
    EXPECT_TRUE(coverage.Box().IsEmpty()) << "nothing was left";
}

TEST(Coverage, ALongRunIsWholeAndTakesNoShares)
{
    HvUByteRaster raster = RasterOf(Bytes(1000, 255), 1000);
    Coverage coverage;
    coverage.Take(raster, {0, 0, 1000, 1});
    EXPECT_LE(coverage.NumBytes(), 100u);
    int numRuns = 0;
    coverage.ForEachRun([&numRuns](Coverage::Run const& run) {
        ++numRuns;
        EXPECT_EQ(run.shares, nullptr);
        EXPECT_EQ(run.length, 1000);
    });
    EXPECT_EQ(numRuns, 1);
}

TEST(Coverage, SpreadsIntoABoxAndLeavesTheRest)
{
    HvUByteRaster raster = RasterOf(Bytes(9, 3), 3);
    Coverage coverage;
    coverage.Take(raster, {0, 0, 2, 2});
    Bytes bytes(9, 77);
    coverage.Spread(3, {1, 1, 3, 3}, bytes.data());
    EXPECT_EQ(bytes, (Bytes{77, 77, 77, 77, 3, 0, 77, 0, 0}));
}
