// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Which scan converter fills an oval: each rule at both sides of its threshold.

#include <hv/shape/internal/oval_scan.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using Frame = HvParallelogram2f;
using Point = HvPoint2<float>;

/// An oval at the origin with the sides `width` and `height`.
HvOvalScan ScanOf(Point const& width, Point const& height)
{
    return HvOvalScan_For(Frame(Point(0, 0), width, height));
}

constexpr HvOvalScan kIsothetic = HvOvalScan::Isothetic;
constexpr HvOvalScan kGeneral = HvOvalScan::General;
constexpr HvOvalScan kTransposed = HvOvalScan::Transposed;

}  // namespace

TEST(oval_scan, WidthAlongYIsIsotheticAtAnySize)
{
    EXPECT_EQ(ScanOf(Point(0, 15), Point(15, 0)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(0, 100), Point(100, 0)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(0, 0.5F), Point(-0.25F, 0)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(0, 0), Point(0, 0)), kIsothetic);
}

TEST(oval_scan, WidthAlongXIsIsotheticAboveTwenty)
{
    float const above = std::nextafter(20.0F, 21.0F);
    EXPECT_EQ(ScanOf(Point(above, 0), Point(0, above)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(20, 0), Point(0, above)), kGeneral);
    EXPECT_EQ(ScanOf(Point(above, 0), Point(0, 20)), kGeneral);
    EXPECT_EQ(ScanOf(Point(-30, 0), Point(0, -30)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(15, 0), Point(0, 15)), kGeneral);
}

TEST(oval_scan, AxesMayLeanBelowTheirTolerance)
{
    float const below = std::nextafter(0.0001F, 0.0F);
    float const above = std::nextafter(0.0001F, 1.0F);
    EXPECT_EQ(ScanOf(Point(below, 15), Point(15, below)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(above, 15), Point(15, below)), kGeneral);
    EXPECT_EQ(ScanOf(Point(below, 15), Point(15, above)), kGeneral);
    EXPECT_EQ(ScanOf(Point(30, below), Point(below, 30)), kIsothetic);
    EXPECT_EQ(ScanOf(Point(30, above), Point(below, 30)), kGeneral);
    EXPECT_EQ(ScanOf(Point(30, below), Point(above, 30)), kGeneral);
}

TEST(oval_scan, TurnedOvalIsGeneral)
{
    EXPECT_EQ(ScanOf(Point(10, 10), Point(-10, 10)), kGeneral);
    EXPECT_EQ(ScanOf(Point(100, 10), Point(-10, 100)), kGeneral);
}

TEST(oval_scan, ThinOvalThatLiesIsTransposed)
{
    float const above = std::nextafter(1.5F, 2.0F);
    EXPECT_EQ(ScanOf(Point(12, 0), Point(0, 1)), kTransposed);
    EXPECT_EQ(ScanOf(Point(12, 0), Point(0, 1.5F)), kTransposed);
    EXPECT_EQ(ScanOf(Point(12, 0), Point(0, above)), kGeneral);
    EXPECT_EQ(ScanOf(Point(1, 0), Point(0, 12)), kGeneral);
    EXPECT_EQ(ScanOf(Point(1, 0), Point(0, 1)), kGeneral);  // as wide as high
    EXPECT_EQ(ScanOf(Point(9, 3), Point(0.5F, 0.5F)), kTransposed);
    EXPECT_EQ(ScanOf(Point(3, 9), Point(0.5F, 0.5F)), kGeneral);
}

TEST(oval_scan, SizesAreCheapLengths)
{
    // 1.2 + 0.3334 * 0.9 = 1.50006 is above 1.5, 1.2 + 0.3334 * 0.8 = 1.467 is not; by the root
    // both would be at most 1.5.
    EXPECT_EQ(ScanOf(Point(12, 1), Point(0.9F, 1.2F)), kGeneral);
    EXPECT_EQ(ScanOf(Point(12, 1), Point(0.8F, 1.2F)), kTransposed);
}

TEST(oval_scan, SizesAreSidesNotCorners)
{
    Frame const frame(Point(100, 200), Point(112, 200), Point(100, 201));
    EXPECT_EQ(HvOvalScan_For(frame), kTransposed);
}

TEST(oval_scan, NumbersThatAreNotFiniteAreGeneral)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(ScanOf(Point(nan, nan), Point(nan, nan)), kGeneral);
    EXPECT_EQ(ScanOf(Point(nan, 0), Point(0, 30)), kGeneral);
}
