// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which repetitions of a cycling curve a view shows.

#include <hv/fcurve/internal/cycle_range.h>

#include <hv/rotation/HvTransfo4.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>

namespace {

using Extent = HvExtent2<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Of the cycles -1000 to 1000 of the unit square, moved by (1, d) from one to the next.
HvCycleRange Visible(double d, Extent const& clip, unsigned int segments = 1)
{
    return HvCycleRange_Visible({-1000, 1000}, Extent(0, 0, 1, 1), 1, d, HvTransfo4(), clip,
                                segments);
}

void ExpectRange(HvCycleRange const& range, double first, double last)
{
    EXPECT_EQ(range.first, first);
    EXPECT_EQ(range.last, last);
}

bool IsNone(HvCycleRange const& range)
{
    return range.first > range.last;
}

}  // namespace

TEST(cycle_range, IsThatOfTheViewAndOneCycleMoreOnEitherSide)
{
    // [c, c + 1] meets [10.5, 12.5] for c of 9.5 to 12.5.
    ExpectRange(Visible(0, Extent(10.5, 0, 12.5, 1)), 8, 14);
    ExpectRange(Visible(0, Extent(-12.5, 0, -10.5, 1)), -15, -9);
    // A step of 2 upwards: [2 c, 2 c + 1] meets [20.5, 21.5] for c of 9.75 to 10.75.
    ExpectRange(Visible(2, Extent(-kInfinity, 20.5, kInfinity, 21.5)), 8, 12);
}

TEST(cycle_range, IsNoneWhereTheAxesAgreeOnNoCycle)
{
    EXPECT_TRUE(IsNone(Visible(1, Extent(10, 100, 12, 102))));
    EXPECT_TRUE(IsNone(Visible(-1, Extent(10, 100, 12, 102))));
    EXPECT_TRUE(IsNone(Visible(0, Extent(5000, 0, 5001, 1))));
}

TEST(cycle_range, IsNoneOfNoRangeAndInAnEmptyView)
{
    EXPECT_TRUE(IsNone(Visible(0, Extent())));
    EXPECT_TRUE(IsNone(HvCycleRange_Visible({1, 0}, Extent(0, 0, 1, 1), 1, 0, HvTransfo4(),
                                            Extent(0, 0, 1, 1), 1)));
    EXPECT_TRUE(IsNone(HvCycleRange_Visible({kNaN, 0}, Extent(0, 0, 1, 1), 1, 0, HvTransfo4(),
                                            Extent(0, 0, 1, 1), 1)));
}

TEST(cycle_range, IsAllInTheWholePlaneAndWhereNumbersSayNothing)
{
    Extent plane;
    plane.state = Extent::WholePlane;
    ExpectRange(Visible(1, plane), -1000, 1000);
    ExpectRange(Visible(0, Extent(kNaN, kNaN, kNaN, kNaN)), -1000, 1000);
    ExpectRange(HvCycleRange_Visible({-3, 3}, Extent(0, 0, 1, 1), 0, 0, HvTransfo4(),
                                     Extent(9, 9, 10, 10), 1),
                -3, 3);
}

TEST(cycle_range, RefusesMoreThanAnArrayHoldsAndCyclesThatAreOneNumber)
{
    Extent plane;
    plane.state = Extent::WholePlane;
    EXPECT_THROW(Visible(0, plane, 4000000000u), std::bad_alloc);
    // From 2^53 on, the next cycle may be the same number.
    for (double const far : {9007199254740992.0, kInfinity}) {
        EXPECT_THROW(
            HvCycleRange_Visible({far, far}, Extent(0, 0, 1, 1), 1, 0, HvTransfo4(), plane, 1),
            std::bad_alloc);
        EXPECT_THROW(
            HvCycleRange_Visible({-far, -far}, Extent(0, 0, 1, 1), 1, 0, HvTransfo4(), plane, 1),
            std::bad_alloc);
    }
    ExpectRange(HvCycleRange_Visible({9007199254740991.0, 9007199254740991.0}, Extent(0, 0, 1, 1),
                                     1, 0, HvTransfo4(), plane, 1),
                9007199254740991.0, 9007199254740991.0);
}
