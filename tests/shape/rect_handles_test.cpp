// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Dragging the handles of a rectangle: skew and scale.

#include <hv/shape/internal/rect_handles.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Frame = HvParallelogram2f;
using Point = HvPoint2<float>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kMax = std::numeric_limits<float>::max();

/// Corners (0, 0), (8, 0), (0, 4), (8, 4).
Frame const kRect(Point(0, 0), Point(8, 0), Point(0, 4));
/// Corners (10, 20), (18, 22), (11, 26), (19, 28).
Frame const kSkewed(Point(10, 20), Point(18, 22), Point(11, 26));

bool AreEqual(Frame const& a, Frame const& b)
{
    return a.p0 == b.p0 && a.p1 == b.p1 && a.p2 == b.p2;
}

void ExpectFrame(Frame const& frame, Point const& p0, Point const& p1, Point const& p2)
{
    EXPECT_EQ(frame.p0, p0);
    EXPECT_EQ(frame.p1, p1);
    EXPECT_EQ(frame.p2, p2);
}

Frame PickFrame()
{
    auto const coordinate = [] { return static_cast<float>(PickInRange(-64, 65)); };
    Frame frame;
    do {
        frame = Frame(Point(coordinate(), coordinate()), Point(coordinate(), coordinate()),
                      Point(coordinate(), coordinate()));
    } while (frame.IsDegenerate());
    return frame;
}

Point PickPoint()
{
    return Point(static_cast<float>(PickInRange(-64, 65)),
                 static_cast<float>(PickInRange(-64, 65)));
}

/// The distance of p from the line through `on` in the direction a to b, in long double.
long double DistanceFromLine(Point const& p, Point const& on, Point const& a, Point const& b)
{
    using Wide = long double;
    Wide const dx = Wide(b.x) - Wide(a.x);
    Wide const dy = Wide(b.y) - Wide(a.y);
    Wide const area = dx * (Wide(p.y) - Wide(on.y)) - dy * (Wide(p.x) - Wide(on.x));
    return std::fabs(area) / std::hypot(dx, dy);
}

/// The error of a result: its points are rounded to float once, after some ten operations in
/// double.
long double Slack(Frame const& frame)
{
    long double largest = 1.0L;
    for (unsigned int i = 0; i < Frame::kHandles; ++i) {
        Point const handle = frame.Handle(i);
        largest = std::fmax(largest, std::fmax(std::fabs(handle.x), std::fabs(handle.y)));
    }
    return largest * 8.0L * std::numeric_limits<float>::epsilon();
}

/// Whether the directions a to b and c to d are parallel within `slack` at the ends of either.
bool AreParallel(Point const& a, Point const& b, Point const& c, Point const& d, long double slack)
{
    return DistanceFromLine(d, c, a, b) <= slack;
}

}  // namespace

TEST(rect_handles, OppositeHandlesFaceEachOther)
{
    unsigned int const opposite[] = {4, 5, 6, 7, 8, 1, 2, 3, 4};
    for (unsigned int i = 0; i < 9; ++i) {
        EXPECT_EQ(HvRectHandle_Opposite(i), opposite[i]) << i;
    }
}

TEST(rect_handles, SkewMovesTheSideOfItsHandle)
{
    struct {
        unsigned int handle;
        Point p0, p1, p2;
    } const rows[] = {
        {0, Point(0, 0), Point(8, 0), Point(0, 4)}, {1, Point(0, 0), Point(9, 2), Point(0, 4)},
        {2, Point(0, 0), Point(9, 2), Point(0, 4)}, {3, Point(0, 0), Point(8, 0), Point(1, 6)},
        {4, Point(0, 0), Point(8, 0), Point(1, 6)}, {5, Point(1, 2), Point(8, 0), Point(1, 6)},
        {6, Point(1, 2), Point(8, 0), Point(1, 6)}, {7, Point(1, 2), Point(9, 2), Point(0, 4)},
        {8, Point(1, 2), Point(9, 2), Point(0, 4)}, {9, Point(0, 0), Point(8, 0), Point(0, 4)}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.handle);
        Frame frame(kRect);
        HvRectHandle_Skew(frame, row.handle, Point(1, 2));
        ExpectFrame(frame, row.p0, row.p1, row.p2);
    }
}

TEST(rect_handles, SkewKeepsTheOppositeSide)
{
    for (unsigned int handle = 1; handle <= 8; ++handle) {
        // An odd handle's opposite is a midpoint, and both corners beside it stay.
        unsigned int const side = handle % 2 == 1 ? handle : handle - 1;
        unsigned int const opposite = HvRectHandle_Opposite(side);
        unsigned int const before = opposite == 1 ? 8 : opposite - 1;
        Frame frame(kSkewed);
        HvRectHandle_Skew(frame, handle, Point(3, -5));
        EXPECT_EQ(frame.Handle(before), kSkewed.Handle(before)) << handle;
        EXPECT_EQ(frame.Handle(opposite + 1), kSkewed.Handle(opposite + 1)) << handle;
        EXPECT_EQ(frame.Handle(side), kSkewed.Handle(side) + Point(3, -5)) << handle;
    }
}

TEST(rect_handles, StretchTakesEachSideToThePoint)
{
    struct {
        unsigned int handle;
        Point to, anchor, p0, p1, p2;
    } const rows[] = {
        {1, Point(12, 99), Point(0, -7), Point(0, 0), Point(12, 0), Point(0, 4)},
        {1, Point(12, 99), Point(4, 0), Point(-4, 0), Point(12, 0), Point(-4, 4)},
        {5, Point(-8, 1), Point(8, 2), Point(-8, 0), Point(8, 0), Point(-8, 4)},
        {3, Point(5, 6), Point(5, 0), Point(0, 0), Point(8, 0), Point(0, 6)},
        {7, Point(5, -2), Point(1, 2), Point(0, -2), Point(8, -2), Point(0, 6)},
        {2, Point(16, 2), Point(0, 0), Point(0, 0), Point(16, 0), Point(0, 2)},
        {4, Point(-8, 8), Point(8, 0), Point(-8, 0), Point(8, 0), Point(-8, 8)},
        {6, Point(-8, -4), Point(8, 4), Point(-8, -4), Point(8, -4), Point(-8, 4)},
        {8, Point(16, -4), Point(0, 4), Point(0, -4), Point(16, -4), Point(0, 4)},
        // Beyond the anchor the rectangle turns over.
        {1, Point(-8, 0), Point(0, 0), Point(0, 0), Point(-8, 0), Point(0, 4)},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.handle);
        Frame frame(kRect);
        EXPECT_TRUE(HvRectHandle_Stretch(frame, row.handle, row.to, row.anchor));
        ExpectFrame(frame, row.p0, row.p1, row.p2);
    }
}

TEST(rect_handles, StretchKeepsTheDirectionsOfSkewedSides)
{
    // p1 + (4, 1) lies half a width further on; the height of `to` does not matter to a side.
    Frame frame(kSkewed);
    EXPECT_TRUE(HvRectHandle_Stretch(frame, 1, Point(22.5F, 26), kSkewed.Handle(5)));
    ExpectFrame(frame, Point(10, 20), Point(22, 23), Point(11, 26));
}

TEST(rect_handles, RefusedStretchLeavesTheRectangle)
{
    struct {
        Frame frame;
        unsigned int handle;
        Point to, anchor;
    } const rows[] = {
        {kRect, 0, Point(9, 9), Point(0, 0)},
        {kRect, 9, Point(9, 9), Point(0, 0)},
        {kRect, 1, Point(9, 0), Point(8, 2)},  // the anchor on the handle's own line
        {kRect, 2, Point(9, 9), Point(8, 0)},  // on one of its two lines
        {kRect, 2, Point(9, 9), Point(0, 4)},  // on the other
        {kRect, 1, Point(0, 3), Point(0, 0)},  // nothing left
        {kRect, 2, Point(0, 3), Point(0, 0)},  // no width left
        {kRect, 2, Point(3, 0), Point(0, 0)},  // no height left
        {kRect, 1, Point(1e-8F, 3), Point(0, 0)},
        {kRect, 1, Point(kNaN, 3), Point(0, 0)},
        {kRect, 1, Point(9, kInfinity), Point(0, 0)},
        {kRect, 2, Point(9, 9), Point(kInfinity, 0)},
        {kRect, 2, Point(9, 9), Point(0, kNaN)},
        {kRect, 1, Point(kMax, 0), Point(7.5F, 0)},  // beyond float
        {Frame(Point(), Point(), Point(0, 4)), 1, Point(9, 0), Point(0, 0)},
        {Frame(Point(), Point(2, 2), Point(4, 4)), 1, Point(9, 0), Point(0, 0)},
    };
    for (auto const& row : rows) {
        Frame frame(row.frame);
        EXPECT_FALSE(HvRectHandle_Stretch(frame, row.handle, row.to, row.anchor));
        EXPECT_TRUE(AreEqual(frame, row.frame)) << row.handle << ' ' << row.to.x;
    }
}

RC_GTEST_PROP(rect_handles, StretchMovesTheHandlesLinesToThePoint, ())
{
    Frame const before = PickFrame();
    auto const handle = PickInRange(1U, 9U);
    Point const to = PickPoint();
    Point const anchor = PickPoint();
    Frame after(before);
    if (!HvRectHandle_Stretch(after, handle, to, anchor)) {
        RC_ASSERT(AreEqual(after, before));
        return;
    }
    // A result far larger than the rectangle magnifies the rounding of its own side's direction.
    long double const slack = Slack(after);
    RC_PRE(after.Width() < 1e3 * before.Width() && after.Height() < 1e3 * before.Height());
    RC_ASSERT(AreParallel(before.p0, before.p1, after.p0, after.p1, slack));
    RC_ASSERT(AreParallel(before.p0, before.p2, after.p0, after.p2, slack));
    bool const isCorner = handle % 2 == 0;
    if (isCorner) {
        RC_ASSERT(HvPoint2_LengthAB(after.Handle(handle), to) <= static_cast<double>(slack));
    } else if (handle == 1 || handle == 5) {
        RC_ASSERT(DistanceFromLine(to, after.Handle(handle), before.p0, before.p2) <= slack);
        RC_ASSERT(std::fabs(after.Height() - before.Height()) <= static_cast<double>(slack));
    } else {
        RC_ASSERT(DistanceFromLine(to, after.Handle(handle), before.p0, before.p1) <= slack);
        RC_ASSERT(std::fabs(after.Width() - before.Width()) <= static_cast<double>(slack));
    }
}

TEST(rect_handles, ScaleKeepsTheRatioOfTheSides)
{
    struct {
        unsigned int handle;
        Point to, center, p0, p1, p2;
    } const rows[] = {
        {2, Point(16, 8), Point(0, 0), Point(0, 0), Point(16, 0), Point(0, 8)},
        {2, Point(8, 4), Point(4, 2), Point(0, 0), Point(8, 0), Point(0, 4)},
        {2, Point(12, 6), Point(4, 2), Point(-4, -2), Point(12, -2), Point(-4, 6)},
        {4, Point(-8, 8), Point(8, 0), Point(-8, 0), Point(8, 0), Point(-8, 8)},
        {6, Point(2, 1), Point(4, 2), Point(2, 1), Point(6, 1), Point(2, 3)},
        {8, Point(6, 1), Point(0, 4), Point(0, 1), Point(6, 1), Point(0, 4)},
        // (14, 12) falls on the diagonal at (16, 8): (14 * 2 + 12) / 5 = 8 times (2, 1).
        {2, Point(14, 12), Point(0, 0), Point(0, 0), Point(16, 0), Point(0, 8)},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.handle);
        Frame frame(kRect);
        EXPECT_TRUE(HvRectHandle_Scale(frame, row.handle, row.to, row.center));
        ExpectFrame(frame, row.p0, row.p1, row.p2);
    }
}

TEST(rect_handles, RefusedScaleLeavesTheRectangle)
{
    struct {
        Frame frame;
        Point to, center;
    } const rows[] = {
        {kRect, Point(0, 0), Point(0, 0)},      // nothing left
        {kRect, Point(-1, 2), Point(0, 0)},     // across the diagonal
        {kRect, Point(-8, -4), Point(0, 0)},    // turned over
        {kRect, Point(9, 9), Point(8, 4)},      // the centre on the handle
        {kRect, Point(1e-5F, 0), Point(0, 0)},  // sides of 1e-5 and 5e-6
        {kRect, Point(kNaN, 0), Point(0, 0)},
        {kRect, Point(kInfinity, 0), Point(0, 0)},
        {kRect, Point(9, 9), Point(kInfinity, 0)},
        {kRect, Point(kMax, kMax), Point(7.5F, 3.75F)},
        {Frame(Point(), Point(2, 2), Point(4, 4)), Point(9, 9), Point(0, 0)},
    };
    for (auto const& row : rows) {
        Frame frame(row.frame);
        EXPECT_FALSE(HvRectHandle_Scale(frame, 2, row.to, row.center));
        EXPECT_TRUE(AreEqual(frame, row.frame)) << row.to.x << ' ' << row.center.x;
    }
}

RC_GTEST_PROP(rect_handles, ScaleIsASimilarityAboutItsCentre, ())
{
    Frame const before = PickFrame();
    unsigned int const handle = 2 * PickInRange(1U, 5U);
    Point const to = PickPoint();
    Point const center = PickPoint();
    Frame after(before);
    if (!HvRectHandle_Scale(after, handle, to, center)) {
        RC_ASSERT(AreEqual(after, before));
        return;
    }
    long double const slack = Slack(after);
    Point const from = before.Handle(handle);
    // The handle slides along its line to the foot of `to`.
    RC_ASSERT(DistanceFromLine(after.Handle(handle), center, center, from) <= slack);
    double const across = HvPoint2_ABdotCD(after.Handle(handle), to, center, from);
    RC_ASSERT(std::fabs(across) <= static_cast<double>(slack) * HvPoint2_LengthAB(center, from));
    double const ratio =
        HvPoint2_ABdotCD(center, to, center, from) / HvPoint2_SquaredLengthAB(center, from);
    RC_ASSERT(std::fabs(after.Width() - ratio * before.Width()) <= static_cast<double>(slack));
    RC_ASSERT(std::fabs(after.Height() - ratio * before.Height()) <= static_cast<double>(slack));
}
