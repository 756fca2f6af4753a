// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/fcurve/internal/stretch_limiter.h>

#include "../../support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The left side of a region from 10 to 20, about its right side.
HvStretchLimiter LeftSide(double minimalScale = 0)
{
    return HvStretchLimiter(20, 10, minimalScale);
}

}  // namespace

TEST(stretch_limiter, SideMovesByTheAmountAndThePivotStays)
{
    HvStretchLimiter::Step const left = LeftSide().Limit(5);
    EXPECT_EQ(left.scale, 0.5);
    EXPECT_EQ(left.share, 0.5);
    EXPECT_EQ(left.amount, 5);
    EXPECT_FALSE(left.limited);

    HvStretchLimiter::Step const right = HvStretchLimiter(10, 20, 0).Limit(5);
    EXPECT_EQ(right.scale, 1.5);
    EXPECT_EQ(right.share, -0.5);
}

TEST(stretch_limiter, AmountWithinTheLimitsIsReturnedAsGiven)
{
    HvStretchLimiter limiter(0.7, 0.1, 0);
    limiter.Keep(0.1, 0.6, -1, 0.5);
    EXPECT_EQ(limiter.Limit(0.3).amount, 0.3);
    EXPECT_EQ(limiter.Limit(-1.0 / 3).amount, -1.0 / 3);
}

TEST(stretch_limiter, AmountOfZeroIsExactlyTheStart)
{
    HvStretchLimiter::Step const step = HvStretchLimiter(0.7, 0.1, 0).Limit(0);
    EXPECT_EQ(step.scale, 1);
    EXPECT_EQ(step.share, 0);
    EXPECT_FALSE(step.limited);
}

TEST(stretch_limiter, SideOnThePivotGivesNoScale)
{
    for (double const side : {20.0, 20 + 0.9e-7, 20 - 0.9e-7}) {
        HvStretchLimiter::Step const step = HvStretchLimiter(20, side, 0).Limit(3);
        EXPECT_EQ(step.scale, 1);
        EXPECT_EQ(step.share, 0);
        EXPECT_EQ(step.amount, 0);
        EXPECT_TRUE(step.limited);
    }
    EXPECT_FALSE(HvStretchLimiter(20, 20 - 1.1e-7, 0).Limit(1e-9).limited);
}

TEST(stretch_limiter, CoordinateStopsAtItsLimit)
{
    // From 12, with weight 8: at a share of 0.25 it reaches 14, at -0.25 it reaches 10.
    HvStretchLimiter limiter = LeftSide();
    limiter.Keep(12, 8, 10, 14);
    EXPECT_FALSE(limiter.Limit(2.5).limited);
    EXPECT_FALSE(limiter.Limit(-2.5).limited);
    HvStretchLimiter::Step const up = limiter.Limit(2.6);
    EXPECT_TRUE(up.limited);
    EXPECT_EQ(up.amount, 2.5);
    EXPECT_EQ(up.scale, 0.75);
    HvStretchLimiter::Step const down = limiter.Limit(-9);
    EXPECT_TRUE(down.limited);
    EXPECT_EQ(down.amount, -2.5);
    EXPECT_EQ(down.scale, 1.25);
}

TEST(stretch_limiter, CoordinateBeyondThePivotMovesTheOtherWay)
{
    // From 24, with weight -4: at a share of 0.5 it reaches 22.
    HvStretchLimiter limiter = LeftSide();
    limiter.Keep(24, -4, 22, kInfinity);
    EXPECT_EQ(limiter.Limit(9).share, 0.5);
    EXPECT_EQ(limiter.Limit(-9).amount, -9);
}

TEST(stretch_limiter, StartBeyondALimitGoesNoFurtherButMayComeBack)
{
    HvStretchLimiter limiter = LeftSide();
    limiter.Keep(12, 8, 13, 100);
    EXPECT_EQ(limiter.Limit(-1).share, 0);
    EXPECT_TRUE(limiter.Limit(-1).limited);
    EXPECT_EQ(limiter.Limit(4).amount, 4);
    EXPECT_FALSE(limiter.Limit(0).limited);
}

TEST(stretch_limiter, LimitsTheWrongWayRoundHoldWhatIsBetween)
{
    HvStretchLimiter limiter = LeftSide();
    limiter.Keep(12, 8, 13, 11);
    EXPECT_EQ(limiter.Limit(1).share, 0);
    EXPECT_EQ(limiter.Limit(-1).share, 0);
}

TEST(stretch_limiter, WhatStaysAndWhatIsNoNumberLimitsNothing)
{
    HvStretchLimiter limiter = LeftSide();
    limiter.Keep(12, 0, 12, 12);
    limiter.Keep(12, 8, kNaN, kNaN);
    limiter.Keep(12, -8, kNaN, kNaN);
    limiter.Keep(12, 8, -kInfinity, kInfinity);
    EXPECT_FALSE(limiter.Limit(9.9).limited);
    EXPECT_FALSE(limiter.Limit(-1e300).limited);
}

// The least scale.

TEST(stretch_limiter, ScaleIsHeldAtTheLeastOneOnItsSideOfZero)
{
    HvStretchLimiter const limiter = LeftSide(0.25);
    HvStretchLimiter::Step const before = limiter.Limit(8);
    EXPECT_EQ(before.scale, 0.25);
    EXPECT_EQ(before.share, 0.75);
    EXPECT_EQ(before.amount, 7.5);
    EXPECT_FALSE(before.limited) << "the least scale is no limit";
    EXPECT_EQ(limiter.Limit(12).scale, -0.25);
    EXPECT_EQ(limiter.Limit(12).amount, 12.5);
    EXPECT_EQ(limiter.Limit(10).scale, 0.25) << "0 counts as positive";
    EXPECT_EQ(limiter.Limit(7.5).scale, 0.25);
    EXPECT_EQ(limiter.Limit(15).scale, -0.5);
}

TEST(stretch_limiter, LeastScaleIsBetweenAThousandthAndOne)
{
    for (double const tooSmall : {0.0, -3.0, 1e-9, kNaN, -kInfinity}) {
        EXPECT_EQ(LeftSide(tooSmall).Limit(10).scale, 0.001);
    }
    for (double const tooLarge : {1.0, 2.0, kInfinity}) {
        EXPECT_EQ(LeftSide(tooLarge).Limit(3).scale, 1);
        EXPECT_EQ(LeftSide(tooLarge).Limit(-5).scale, 1.5);
    }
}

TEST(stretch_limiter, FlipThatALimitForbidsStopsBeforeThePivot)
{
    HvStretchLimiter limiter = LeftSide(0.25);
    limiter.Keep(10, 10, -kInfinity, 22);  // a share of 1.2
    EXPECT_EQ(limiter.Limit(11).scale, 0.25);
    EXPECT_FALSE(limiter.Limit(11).limited);
    EXPECT_EQ(limiter.Limit(40).scale, 0.25);
    EXPECT_TRUE(limiter.Limit(40).limited);
}

TEST(stretch_limiter, NoFlipWhereNoneIsAllowed)
{
    HvStretchLimiter limiter = LeftSide(0.25);
    limiter.ForbidFlip();
    EXPECT_EQ(limiter.Limit(15).scale, 0.25);
    EXPECT_TRUE(limiter.Limit(15).limited);
    EXPECT_EQ(limiter.Limit(15).amount, 7.5);
}

// Any limits.

TEST(stretch_limiter, DragGoesAsFarAsEveryLimitLets)
{
    struct Coordinate {
        double start, weight, low, high;
        /// Rounding of a share is a few units in the last place of numbers up to 40.
        bool Holds(double share) const
        {
            double const at = start + share * weight;
            return at >= std::min(low, start) - 1e-12 && at <= std::max(high, start) + 1e-12;
        }
    };
    EXPECT_TRUE(rc::check("a drag goes as far as every limit lets", [] {
        std::vector<Coordinate> coordinates;
        HvStretchLimiter limiter = LeftSide();
        for (int i = 0; i < 4; ++i) {
            double const start = PickInRange(0, 40);
            Coordinate const c{start, 20 - start, start + PickInRange(-20, 3),
                               start + PickInRange(-3, 20)};
            coordinates.push_back(c);
            limiter.Keep(c.start, c.weight, c.low, c.high);
        }
        double const amount = PickInRange(-300, 301) / 10.0;
        auto const hold = [&](double share) {
            for (Coordinate const& c : coordinates) {
                if (!c.Holds(share)) {
                    return false;
                }
            }
            return true;
        };
        HvStretchLimiter::Step const step = limiter.Limit(amount);
        RC_ASSERT(hold(step.share));
        RC_ASSERT(std::fabs(step.amount - 10 * step.share) < 1e-12);
        RC_ASSERT(std::fabs(step.scale + step.share - 1) < 1e-12);
        bool const held = std::fabs(step.scale) == 0.001;
        double const wanted = amount / 10;
        if (!held && !step.limited) {
            RC_ASSERT(step.amount == amount);
        }
        if (!held && step.limited) {
            double const further = step.share + (wanted > step.share ? 1e-9 : -1e-9);
            RC_ASSERT(!hold(further));
        }
    }));
}
