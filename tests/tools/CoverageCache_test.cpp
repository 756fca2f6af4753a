// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/play/painting/CoverageCache.h>

#include <gtest/gtest.h>

namespace {

PaintKey KeyOf(double number)
{
    PaintKey key;
    key.Add({number});
    return key;
}

/// Asks a cache in frames, and counts what is made.
class Asker {
public:
    void BeginFrame() { cache_.BeginFrame(); }

    /// Whether the coverage of the key, a row of so many pixels, had to be made.
    bool IsMade(int number)
    {
        bool isMade = false;
        Coverage const& coverage = cache_.Get(KeyOf(number), [&](Coverage& fresh) {
            isMade = true;
            HvUByteRaster raster(64, 1, 255);
            fresh.Take(raster, {0, 0, number, 1});
        });
        EXPECT_EQ(coverage.Box().right, number);
        return isMade;
    }

private:
    CoverageCache cache_;
};

}  // namespace

TEST(CoverageCache, KeepsWhatTwoFramesAskedFor)
{
    Asker asker;
    asker.BeginFrame();
    EXPECT_TRUE(asker.IsMade(3));
    EXPECT_TRUE(asker.IsMade(3)) << "the same frame";
    asker.BeginFrame();
    EXPECT_TRUE(asker.IsMade(3));
    EXPECT_FALSE(asker.IsMade(3));
    for (int frame = 0; frame < 3; ++frame) {
        asker.BeginFrame();
        EXPECT_FALSE(asker.IsMade(3));
        EXPECT_TRUE(asker.IsMade(10 + frame)) << "moves";
    }
}

TEST(CoverageCache, ForgetsWhatAFrameDidNotAskFor)
{
    Asker asker;
    for (int frame = 0; frame < 3; ++frame) {
        asker.BeginFrame();
        asker.IsMade(5);
    }
    asker.BeginFrame();
    asker.BeginFrame();
    EXPECT_TRUE(asker.IsMade(5));
}

TEST(CoverageCache, DoesNotKeepMoreThanItMay)
{
    // A run for every other pixel: 16 bytes and a share each, above the 64 MiB for four million.
    constexpr int kSide = 2900;
    CoverageCache cache;
    int made = 0;
    for (int frame = 0; frame < 3; ++frame) {
        cache.BeginFrame();
        cache.Get(KeyOf(1), [&](Coverage& fresh) {
            ++made;
            HvUByteRaster raster(kSide, kSide, 0);
            for (std::size_t i = 0; i < raster.NumPixels(); i += 2) {
                raster.data[i] = 9;
            }
            fresh.Take(raster, {0, 0, kSide, kSide});
            ASSERT_GT(fresh.NumBytes(), std::size_t(64) << 20);
        });
    }
    EXPECT_EQ(made, 3);
}

TEST(PaintKey, TellsPathsAndNumbersApart)
{
    HvPath2f line(4u);
    line.Moveto({1, 2});
    line.Lineto({3, 4});
    HvPath2f other(line);
    auto const bytesOf = [](double number, HvPath2f const& path) {
        PaintKey key;
        key.Add({number});
        key.Add(path);
        return key.Bytes();
    };
    EXPECT_EQ(bytesOf(1, line), bytesOf(1, other));
    EXPECT_NE(bytesOf(1, line), bytesOf(2, other));
    other.Lineto({3, 4});
    EXPECT_NE(bytesOf(1, line), bytesOf(1, other));
    EXPECT_NE(bytesOf(1, line), bytesOf(1, HvPath2f(0u)));
    PaintKey key = KeyOf(5);
    key.Clear();
    EXPECT_EQ(key.Bytes(), "");
}
