// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Round numbers along an axis.

#include <tools/plot/NiceTicks.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <string>

namespace {

std::string Labels(NiceTicks const& ticks)
{
    std::string labels;
    for (int i = 0; i < ticks.Count(); ++i) {
        labels += (i > 0 ? " " : "") + ticks.Label(i);
    }
    return labels;
}

}  // namespace

TEST(NiceTicks, AreMultiplesOfOneTwoAndFive)
{
    EXPECT_EQ(Labels(NiceTicks(0, 100, 10)), "0 10 20 30 40 50 60 70 80 90 100");
    EXPECT_EQ(Labels(NiceTicks(0, 120, 10)), "0 20 40 60 80 100 120");
    EXPECT_EQ(Labels(NiceTicks(-7.2, 127.2, 11)), "0 20 40 60 80 100 120");
    EXPECT_EQ(Labels(NiceTicks(-30, 370, 8)), "0 50 100 150 200 250 300 350");
}

TEST(NiceTicks, LabelsHaveTheDecimalsOfTheStep)
{
    EXPECT_EQ(Labels(NiceTicks(0, 1, 5)), "0.0 0.2 0.4 0.6 0.8 1.0");
    EXPECT_EQ(Labels(NiceTicks(-0.1, 0.1, 4)), "-0.10 -0.05 0.00 0.05 0.10");
    EXPECT_EQ(Labels(NiceTicks(100.001, 100.004, 3)), "100.001 100.002 100.003 100.004");
}

TEST(NiceTicks, LabelsOfFarNumbersArePowersOfTen)
{
    EXPECT_EQ(Labels(NiceTicks(0, 4e9, 4)), "0 1e+09 2e+09 3e+09 4e+09");
    EXPECT_EQ(Labels(NiceTicks(0, 2e-9, 2)), "0 1e-09 2e-09");
}

RC_GTEST_PROP(NiceTicks, LieInTheRangeAndAreNotTooMany, ())
{
    double const scale = std::pow(10.0, *rc::gen::inRange(-200, 200));
    double const low = *rc::gen::inRange(-100000, 100000) / 7.0 * scale;
    double const width = *rc::gen::inRange(1, 100000) / 3.0 * scale;
    int const most = *rc::gen::inRange(2, 20);
    double high = low + width;
    double from = low;
    NiceTicks_Widen(from, high);
    NiceTicks const ticks(from, high, most);
    RC_ASSERT(ticks.Count() >= most / 3);
    RC_ASSERT(ticks.Count() <= most + 1);
    for (int i = 0; i < ticks.Count(); ++i) {
        RC_ASSERT(ticks.Value(i) >= from - ticks.Step() * 1e-6);
        RC_ASSERT(ticks.Value(i) <= high + ticks.Step() * 1e-6);
        if (i > 0) {
            RC_ASSERT(ticks.Value(i) > ticks.Value(i - 1));
            RC_ASSERT(ticks.Label(i) != ticks.Label(i - 1));
        }
    }
}

TEST(NiceTicks, RangesOfNoWidthAreOpened)
{
    double low = 0;
    double high = 0;
    NiceTicks_Widen(low, high);
    EXPECT_EQ(low, -1);
    EXPECT_EQ(high, 1);
    low = high = 100;
    NiceTicks_Widen(low, high);
    EXPECT_EQ(low, 90);
    EXPECT_EQ(high, 110);
    low = 1e100;
    high = std::nextafter(low, 2e100);
    NiceTicks_Widen(low, high);
    EXPECT_GT(high - low, 1e99);
    low = -5e-324;
    high = 5e-324;
    NiceTicks_Widen(low, high);
    EXPECT_GT(high - low, 1e-12);
    low = 3;
    high = 4;
    NiceTicks_Widen(low, high);
    EXPECT_EQ(low, 3);
    EXPECT_EQ(high, 4);
}
