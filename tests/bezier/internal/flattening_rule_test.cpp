// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How finely a curve is cut.

#include <hv/bezier/internal/flattening_rule.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();

}  // namespace

TEST(flattening_rule, DigitsAreThoseOfTheNumberInItsBase)
{
    EXPECT_EQ(HvFlattening_Digits(0, 3), 0u);
    EXPECT_EQ(HvFlattening_Digits(1, 3), 1u);
    EXPECT_EQ(HvFlattening_Digits(7, 3), 1u);
    EXPECT_EQ(HvFlattening_Digits(8, 3), 2u);
    EXPECT_EQ(HvFlattening_Digits(63, 3), 2u);
    EXPECT_EQ(HvFlattening_Digits(64, 3), 3u);
    EXPECT_EQ(HvFlattening_Digits(0xffffffff, 3), 11u);
    EXPECT_EQ(HvFlattening_Digits(3, 2), 1u);
    EXPECT_EQ(HvFlattening_Digits(4, 2), 2u);
    EXPECT_EQ(HvFlattening_Digits(0xffffffff, 2), 16u);
}

TEST(flattening_rule, LowWordIsThatOfTheIntegerTowardsNone)
{
    EXPECT_EQ(HvFlattening_LowWord(3.9), 3u);
    EXPECT_EQ(HvFlattening_LowWord(-3.9), 0xfffffffdu);
    EXPECT_EQ(HvFlattening_LowWord(4294967295.0), 0xffffffffu);
    EXPECT_EQ(HvFlattening_LowWord(4294967296.0), 0u);
    EXPECT_EQ(HvFlattening_LowWord(4294967301.0), 5u);
    // Doubles are 1024 apart from 2^62 on.
    EXPECT_EQ(HvFlattening_LowWord(0x1p62 + 1024), 1024u);
    EXPECT_EQ(HvFlattening_LowWord(std::nextafter(0x1p63, 0.0)), 0xfffffc00u);
    EXPECT_EQ(HvFlattening_LowWord(-std::nextafter(0x1p63, 0.0)), 0x400u);
    for (double const none : {0x1p63, -0x1p63, kMax, -kMax, kInfinity, -kInfinity, kNaN}) {
        EXPECT_EQ(HvFlattening_LowWord(none), 0u) << none;
    }
}

TEST(flattening_rule, LevelsAreTheOctalDigitsOfTheRoundedRatio)
{
    struct {
        double ratio;
        unsigned int levels;
    } const cases[] = {{0, 0},    {0.49, 0}, {0.5, 1},  {7.49, 1},         {7.5, 2},
                       {63.4, 2}, {63.5, 3}, {511, 3},  {511.5, 4},        {4294967295.0, 11},
                       {kNaN, 0}, {kMax, 0}, {-0.4, 0}, {4294967296.0, 0}, {4294967303.0, 1}};
    for (auto const& c : cases) {
        EXPECT_EQ(HvFlattening_Levels(c.ratio), c.levels) << c.ratio;
    }
}

TEST(flattening_rule, DoublingsAreTheDigitsInBaseFourOfTheRoundedNumber)
{
    struct {
        double v;
        unsigned int doublings;
    } const cases[] = {{0, 0},    {0.49, 0},      {0.5, 1},           {3.49, 1},
                       {3.5, 2},  {15.49, 2},     {15.5, 3},          {1073741823.0, 15},
                       {-1, 0},   {-kMax, 0},     {1073741824.0, 16}, {2147483646.0, 16},
                       {kNaN, 0}, {-kInfinity, 0}};
    for (auto const& c : cases) {
        EXPECT_EQ(HvFlattening_Doublings(c.v), c.doublings) << c.v;
    }
}

TEST(flattening_rule, DoublingsBeyondThirtyOneBitsAreQuarteringsDownToOne)
{
    struct {
        double v;
        unsigned int doublings;
    } const cases[] = {{2147483647.0, 16}, {4294967296.0, 16}, {4294967297.0, 17},
                       {0x1p33, 17},       {0x1p34, 17},       {0x1p35, 18},
                       {0x1p1000, 500},    {kMax, 512},        {kInfinity, 512}};
    for (auto const& c : cases) {
        EXPECT_EQ(HvFlattening_Doublings(c.v), c.doublings) << c.v;
    }
}

TEST(flattening_rule, StepsArePowersOfTwoUpToTheLargest)
{
    EXPECT_EQ(HvFlattening_Steps(0), 1u);
    EXPECT_EQ(HvFlattening_Steps(5), 32u);
    EXPECT_EQ(HvFlattening_Steps(62), std::uint64_t{1} << 62);
    for (unsigned int const doublings : {63u, 64u, 512u}) {
        EXPECT_EQ(HvFlattening_Steps(doublings), std::uint64_t{1} << 63) << doublings;
    }
}
