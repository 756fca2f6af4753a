// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/internal/ObPixelMask.h>

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

/// The same, pixel by pixel.
std::uint64_t SlowMask(unsigned char const* pixels, unsigned char value)
{
    std::uint64_t mask = 0;
    for (int i = 0; i < kObMaskPixels; ++i) {
        mask |= std::uint64_t(pixels[i] == value) << i;
    }
    return mask;
}

void ExpectMasks(std::vector<unsigned char> const& pixels, unsigned char value)
{
    ASSERT_EQ(ObPixelMask(pixels.data(), value), SlowMask(pixels.data(), value)) << int(value);
    ASSERT_EQ(ObPixelMask_Plain(pixels.data(), value), SlowMask(pixels.data(), value))
        << int(value);
}

}  // namespace

TEST(ObPixelMask, TellsEachPixelByItsBit)
{
    for (std::size_t i = 0; i < kObMaskPixels; ++i) {
        std::vector<unsigned char> pixels(kObMaskPixels, 9);
        pixels[i] = 200;
        EXPECT_EQ(ObPixelMask(pixels.data(), 200), std::uint64_t(1) << i);
        EXPECT_EQ(ObPixelMask_Plain(pixels.data(), 200), std::uint64_t(1) << i);
        ExpectMasks(pixels, 9);
        ExpectMasks(pixels, 8);
    }
}

TEST(ObPixelMask, TellsEveryValueFromEveryOther)
{
    for (int value = 0; value < 256; ++value) {
        for (int other = 0; other < 256; ++other) {
            std::vector<unsigned char> pixels(kObMaskPixels, static_cast<unsigned char>(other));
            pixels[17] = static_cast<unsigned char>(value);
            ExpectMasks(pixels, static_cast<unsigned char>(value));
        }
    }
}

TEST(ObPixelMask, TellsRandomPixels)
{
    std::mt19937 engine(64);
    for (int round = 0; round < 2000; ++round) {
        std::vector<unsigned char> pixels(kObMaskPixels);
        for (unsigned char& pixel : pixels) {
            pixel = static_cast<unsigned char>(engine() % (1u << (1 + round % 8)));
        }
        ExpectMasks(pixels, static_cast<unsigned char>(engine() % 4));
    }
}
