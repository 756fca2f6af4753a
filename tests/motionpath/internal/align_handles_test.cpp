// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// When the handles of a node have a direction.

#include <hv/motionpath/internal/align_handles.h>

#include <tests/motionpath/motion_path_support.h>

namespace {

TEST(align_handles, UnitVectorNeedsALength)
{
    Point v(0, 3, 4);
    EXPECT_TRUE(HvHandle_Normalize(v));
    EXPECT_EQ(v, Point(0, 0.6, 0.8));
    for (Point const& none :
         {Point(), Point(9.9e-8, 0, 0), Point(kInfinity, 0, 0), Point(1e200, 1e200, 1e200)}) {
        Point w = none;
        EXPECT_FALSE(HvHandle_Normalize(w));
        EXPECT_EQ(w, none);
    }
    Point nan(kNaN, 0, 0);
    EXPECT_FALSE(HvHandle_Normalize(nan));
    Point least(1.1e-7, 0, 0);
    EXPECT_TRUE(HvHandle_Normalize(least));
    EXPECT_EQ(least, Point(1, 0, 0));
}

TEST(align_handles, LengthsStayAndTheDirectionIsTheMean)
{
    PathSource source(1);
    for (int i = 0; i < 50; ++i) {
        Point before = source.Place();
        Point const node = source.Place();
        Point after = source.Place();
        double const la = Distance(before, node);
        double const lb = Distance(node, after);
        Point const mean = (before - after) * 0.5;
        ASSERT_EQ(HvHandle_Align(before, node, after), 1);
        EXPECT_NEAR(Distance(before, node), la, 1e-14 * 20);
        EXPECT_NEAR(Distance(node, after), lb, 1e-14 * 20);
        Point const unit = mean * (1 / Distance(mean, {}));
        ExpectNear(before, node + unit * la, 1e-13);
        ExpectNear(after, node - unit * lb, 1e-13);
    }
}

TEST(align_handles, SecondAlignmentChangesNothingMuch)
{
    Point before(1, 0, 0);
    Point const node(3, 0, 0);
    Point after(3, 4, 0);
    ASSERT_EQ(HvHandle_Align(before, node, after), 1);
    Point const b = before;
    Point const a = after;
    ASSERT_EQ(HvHandle_Align(before, node, after), 1);
    ExpectNear(before, b, 1e-14);
    ExpectNear(after, a, 1e-14);
}

}  // namespace
