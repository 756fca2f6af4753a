// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The parallelogram under rectangles and ovals: handles, extents, sides.

#include <hv/shape/HvParallelogram2f.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <hv/foundation/HvULongArray.h>
#include <hv/rotation/HvTransfo4.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Extent = HvExtent2<float>;
using Point = HvPoint2<float>;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kMax = std::numeric_limits<float>::max();

/// Corners (10, 20), (18, 22), (11, 26), (19, 28).
HvParallelogram2f const kFrame(Point(10, 20), Point(18, 22), Point(11, 26));

void ExpectPoints(HvParallelogram2f const& frame, Point const& p0, Point const& p1, Point const& p2)
{
    EXPECT_EQ(frame.p0, p0);
    EXPECT_EQ(frame.p1, p1);
    EXPECT_EQ(frame.p2, p2);
}

}  // namespace

TEST(HvParallelogram2f, StartsAtTheOrigin)
{
    ExpectPoints(HvParallelogram2f(), Point(0, 0), Point(0, 0), Point(0, 0));
}

TEST(HvParallelogram2f, LiesAboutItsCentre)
{
    HvParallelogram2f const frame(Point(5, 7), 4, 6);
    ExpectPoints(frame, Point(3, 4), Point(7, 4), Point(3, 10));
    EXPECT_EQ(frame.Handle(0), Point(5, 7));
}

TEST(HvParallelogram2f, RoundsEachCoordinateAboutItsCentreByItself)
{
    // 2^24 + 1 has no float: both sides of the centre round to even by themselves, where a width
    // added to the rounded left side would round twice.
    float const big = 16777216.0F;
    HvParallelogram2f const frame(Point(big, 0), 3, 2);
    EXPECT_EQ(frame.p0.x, -0.5F * 3.0F + big);
    EXPECT_EQ(frame.p1.x, 0.5F * 3.0F + big);
    EXPECT_EQ(frame.p2.x, frame.p0.x);
    EXPECT_NE(frame.p1.x, frame.p0.x + 3.0F);
}

TEST(HvParallelogram2f, LiesBetweenOppositeCorners)
{
    HvParallelogram2f const frame(Point(5, 7), Point(1, 9));
    ExpectPoints(frame, Point(5, 7), Point(1, 7), Point(5, 9));
    EXPECT_EQ(frame.FourthCorner(), Point(1, 9));
}

TEST(HvParallelogram2f, HandlesRunAroundTheOutline)
{
    Point const handles[] = {Point(14.5F, 24), Point(18.5F, 25), Point(19, 28),
                             Point(15, 27),    Point(11, 26),    Point(10.5F, 23),
                             Point(10, 20),    Point(14, 21),    Point(18, 22)};
    for (unsigned int i = 0; i < 9; ++i) {
        EXPECT_EQ(kFrame.Handle(i), handles[i]) << i;
    }
    EXPECT_EQ(kFrame.Handle(9), handles[0]);
    EXPECT_EQ(kFrame.Handle(0xFFFFFFFFU), handles[0]);
}

TEST(HvParallelogram2f, FourthCornerIsRoundedFromLeftToRight)
{
    // 1 + 2^24 is 2^24 in float, so the 1 is lost before 2^24 is taken away.
    HvParallelogram2f const frame(Point(16777216, 0), Point(1, 0), Point(16777216, 1));
    EXPECT_EQ(frame.FourthCorner(), Point(0, 1));
}

TEST(HvParallelogram2f, HandlesOfHugeFramesStayFinite)
{
    HvParallelogram2f const frame(Point(-kMax, 0), Point(kMax, 0), Point(-kMax, 8));
    EXPECT_EQ(frame.Handle(7), Point(0, 0));
    EXPECT_EQ(frame.Handle(0), Point(0, 4));
    HvParallelogram2f const right(Point(kMax, 0), Point(kMax, 8), Point(kMax, 16));
    EXPECT_EQ(right.Handle(0), Point(kMax, 12));
}

TEST(HvParallelogram2f, StoresARangeOfHandles)
{
    Point floats[4] = {Point(-1, -1), Point(-1, -1), Point(-1, -1), Point(-1, -1)};
    kFrame.GetHandles(6, 8, floats);
    EXPECT_EQ(floats[0], Point(10, 20));
    EXPECT_EQ(floats[1], Point(14, 21));
    EXPECT_EQ(floats[2], Point(18, 22));
    EXPECT_EQ(floats[3], Point(-1, -1));
    HvPoint2<double> doubles[2];
    kFrame.GetHandles(1, 1, doubles);
    EXPECT_EQ(doubles[0], HvPoint2<double>(18.5, 25));
    EXPECT_EQ(doubles[1], HvPoint2<double>(0, 0));
    kFrame.GetHandles(3, 2, doubles);
    EXPECT_EQ(doubles[0], HvPoint2<double>(18.5, 25));
}

TEST(HvParallelogram2f, ExtentHoldsAllFourCorners)
{
    Extent const extent = kFrame.Extent();
    EXPECT_EQ(extent.state, Extent::Ordinary);
    EXPECT_EQ(extent.min, Point(10, 20));
    EXPECT_EQ(extent.max, Point(19, 28));
    Extent const point = HvParallelogram2f(Point(3, 4), Point(3, 4), Point(3, 4)).Extent();
    EXPECT_EQ(point.min, Point(3, 4));
    EXPECT_EQ(point.max, Point(3, 4));
}

TEST(HvParallelogram2f, FirstHandleInTheClosedSquareIsFound)
{
    unsigned int index = 77;
    EXPECT_EQ(kFrame.FindCloseHandle(Point(18, 23), 2.0, index), 1);
    EXPECT_EQ(index, 8U);
    EXPECT_EQ(kFrame.FindCloseHandle(Point(18, 23), 1.999, index), 0);
    EXPECT_EQ(index, 8U);
    EXPECT_EQ(kFrame.FindCloseHandle(Point(18, 23), 100.0, index), 1);
    EXPECT_EQ(index, 0U);
    EXPECT_EQ(kFrame.FindCloseHandle(Point(kNaN, 23), 100.0, index), 0);
}

TEST(HvParallelogram2f, HandlesInTheExtentAreAppended)
{
    HvULongArray indices;
    indices.Add(55);
    EXPECT_EQ(kFrame.AddHandlesInExtent(Extent(18, 22, 19, 28), indices), 3U);
    ASSERT_EQ(indices.Size(), 4U);
    EXPECT_EQ(indices[0], 55U);
    EXPECT_EQ(indices[1], 1U);
    EXPECT_EQ(indices[2], 2U);
    EXPECT_EQ(indices[3], 8U);

    Extent plane;
    EXPECT_EQ(kFrame.AddHandlesInExtent(plane, indices), 0U);
    plane.state = Extent::WholePlane;
    EXPECT_EQ(kFrame.AddHandlesInExtent(plane, indices), 9U);
    EXPECT_EQ(indices.Size(), 13U);
}

TEST(HvParallelogram2f, RefusedAllocationAppendsNoHandle)
{
    Extent plane;
    plane.state = Extent::WholePlane;
    RefuseEachAllocation([] { return HvULongArray(); },
                         [&](HvULongArray& indices) { kFrame.AddHandlesInExtent(plane, indices); },
                         [](HvULongArray const& indices, bool completed) {
                             EXPECT_EQ(indices.Size(), completed ? 9U : 0U);
                         });
}

TEST(HvParallelogram2f, SidesHaveTheirLengths)
{
    HvParallelogram2f const frame(Point(1, 1), Point(4, 5), Point(1, 3));
    EXPECT_EQ(frame.Width(), 5.0);
    EXPECT_EQ(frame.Height(), 2.0);
    EXPECT_EQ(HvParallelogram2f(Point(-kMax, 0), Point(kMax, 0), Point()).Width(),
              2.0 * double(kMax));
}

TEST(HvParallelogram2f, SidesChangeTheirLengthsAlone)
{
    HvParallelogram2f frame(Point(1, 1), Point(4, 5), Point(1, 3));
    frame.SetWidth(10);
    ExpectPoints(frame, Point(1, 1), Point(7, 9), Point(1, 3));
    frame.SetHeight(-5);
    ExpectPoints(frame, Point(1, 1), Point(7, 9), Point(1, -4));
    frame.SetWidth(0);
    ExpectPoints(frame, Point(1, 1), Point(1, 1), Point(1, -4));
}

TEST(HvParallelogram2f, VanishedSidesComeBackAlongTheirAxes)
{
    HvParallelogram2f frame(Point(1, 2), Point(1, 2), Point(1, 2));
    frame.SetWidth(3);
    frame.SetHeight(4);
    ExpectPoints(frame, Point(1, 2), Point(4, 2), Point(1, 6));
    // Equal means exactly equal: the smallest side still has a direction.
    float const least = std::numeric_limits<float>::denorm_min();
    HvParallelogram2f tiny(Point(0, 0), Point(0, least), Point(-least, 0));
    tiny.SetWidth(3);
    tiny.SetHeight(4);
    ExpectPoints(tiny, Point(0, 0), Point(0, 3), Point(-4, 0));
}

TEST(HvParallelogram2f, AffineEditsChangeAllThreePoints)
{
    HvParallelogram2f frame(kFrame);
    frame.Translate(Point(1, -2));
    ExpectPoints(frame, Point(11, 18), Point(19, 20), Point(12, 24));
    frame.Transform(HvTransfo4().Scale(2, 3, 1));
    ExpectPoints(frame, Point(22, 54), Point(38, 60), Point(24, 72));
}

TEST(HvParallelogram2f, IsDegenerateWithoutASide)
{
    EXPECT_FALSE(kFrame.IsDegenerate());
    EXPECT_TRUE(HvParallelogram2f().IsDegenerate());
    EXPECT_TRUE(HvParallelogram2f(Point(1, 2), Point(1, 2), Point(3, 9)).IsDegenerate());
    EXPECT_TRUE(HvParallelogram2f(Point(1, 2), Point(3, 9), Point(1, 2)).IsDegenerate());
}

TEST(HvParallelogram2f, IsDegenerateWithParallelSides)
{
    EXPECT_TRUE(HvParallelogram2f(Point(1, 1), Point(3, 3), Point(5, 5)).IsDegenerate());
    EXPECT_TRUE(HvParallelogram2f(Point(1, 1), Point(3, 3), Point(-5, -5)).IsDegenerate());
}

TEST(HvParallelogram2f, IsDegenerateStrictlyBelowItsTolerance)
{
    // Sides of 1e7 and w have the area 1e7 w; w is below 1e-7 on both axes when it counts as none.
    float const below = std::nextafter(1e-7F, 0.0F);
    float const above = std::nextafter(1e-7F, 1.0F);
    EXPECT_TRUE(HvParallelogram2f(Point(), Point(below, 0), Point(0, 1e9F)).IsDegenerate());
    EXPECT_FALSE(HvParallelogram2f(Point(), Point(above, 0), Point(0, 1e9F)).IsDegenerate());
    EXPECT_TRUE(HvParallelogram2f(Point(), Point(0, 1e9F), Point(below, 0)).IsDegenerate());
    EXPECT_FALSE(HvParallelogram2f(Point(), Point(0, 1e9F), Point(above, 0)).IsDegenerate());
    // The area alone: 2^-12 times 2^-12 is 6e-8, times 2^-11 it is 1.2e-7.
    EXPECT_TRUE(HvParallelogram2f(Point(), Point(0x1p-12F, 0), Point(0, 0x1p-12F)).IsDegenerate());
    EXPECT_FALSE(HvParallelogram2f(Point(), Point(0x1p-12F, 0), Point(0, 0x1p-11F)).IsDegenerate());
    EXPECT_FALSE(HvParallelogram2f(Point(), Point(0, 0x1p-11F), Point(0x1p-12F, 0)).IsDegenerate());
}

TEST(HvParallelogram2f, IsDegenerateWithACoordinateThatIsNotFinite)
{
    for (float const bad : {kNaN, kInfinity, -kInfinity}) {
        for (int coordinate = 0; coordinate < 6; ++coordinate) {
            HvParallelogram2f frame(kFrame);
            Point* const points[] = {&frame.p0, &frame.p1, &frame.p2};
            (coordinate % 2 == 0 ? points[coordinate / 2]->x : points[coordinate / 2]->y) = bad;
            EXPECT_TRUE(frame.IsDegenerate()) << bad << ' ' << coordinate;
        }
    }
    EXPECT_FALSE(HvParallelogram2f(Point(-kMax, -kMax), Point(kMax, -kMax), Point(-kMax, kMax))
                     .IsDegenerate());
}

RC_GTEST_PROP(HvParallelogram2f, HandlesLieInTheExtent, ())
{
    auto const coordinate = [] { return static_cast<float>(PickInRange(-1000, 1001)); };
    HvParallelogram2f const frame(Point(coordinate(), coordinate()),
                                  Point(coordinate(), coordinate()),
                                  Point(coordinate(), coordinate()));
    Extent const extent = frame.Extent();
    for (unsigned int i = 0; i < HvParallelogram2f::kHandles; ++i) {
        RC_ASSERT(extent.Contains(frame.Handle(i)) == 1);
    }
    // Opposite handles have the centre in their middle, exactly on this grid.
    for (unsigned int i = 1; i <= 4; ++i) {
        RC_ASSERT(frame.Handle(i) + frame.Handle(i + 4) == frame.Handle(0) * 2.0F);
    }
}
