// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <tools/paint/Coverage.h>
#include <tools/play/painting/FrameCache.h>

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
    FrameCache<Coverage> cache_;
};

}  // namespace

TEST(FrameCache, KeepsWhatTwoFramesAskedFor)
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

TEST(FrameCache, ForgetsWhatAFrameDidNotAskFor)
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

TEST(FrameCache, DoesNotKeepMoreThanItMay)
{
    // One run and its key are 24 bytes: one of these may be kept, two may not.
    FrameCache<Coverage> cache(40);
    int made = 0;
    for (int frame = 0; frame < 4; ++frame) {
        cache.BeginFrame();
        for (int const number : {1, 2}) {
            cache.Get(KeyOf(number), [&made](Coverage& fresh) {
                ++made;
                HvUByteRaster raster(16, 1, 255);
                fresh.Take(raster, {0, 0, 16, 1});
                ASSERT_EQ(fresh.NumBytes(), 16u);
            });
        }
    }
    EXPECT_EQ(made, 2 + 2 + 1 + 1) << "the first is kept from the second frame on";
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
