// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The geometry section of docs/conventions.md, line by line.

#include <hv/hv.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

// Transforms know the half circle to fifteen digits, which leave out 3.24e-15; the sine and the
// cosine round once more.
constexpr double kHalfTurnError = 3.24e-15 + 0.3e-15;

}  // namespace

TEST(Conventions_geometry, PositiveAnglesTurnFromTheXAxisToTheYAxis)
{
    HvTransfo4 turn;
    turn.Rotate(90, 0, 0, 1);
    HvPoint2<double> const p = turn.Map(HvPoint2<double>(1, 0));
    EXPECT_NEAR(p.x, 0, kHalfTurnError);
    EXPECT_NEAR(p.y, 1, kHalfTurnError);
}

TEST(Conventions_geometry, TransformsTurnByDegrees)
{
    HvTransfo4 half;
    half.RotateXY(180, HvPoint2<double>(1, 0));
    HvPoint2<double> const p = half.Map(HvPoint2<double>(3, 0));
    EXPECT_NEAR(p.x, -1, 2 * kHalfTurnError);
    EXPECT_NEAR(p.y, 0, 2 * kHalfTurnError);
}

TEST(Conventions_geometry, DirectionsAreMeasuredCounterClockwiseFromZero)
{
    EXPECT_EQ(AngleWithFirstAxisDegree(1, 0), 0.0);
    EXPECT_EQ(AngleWithFirstAxisDegree(-1, 0), 180.0);
    // The stored digits of the constants give the other quarters to about 1e-13.
    EXPECT_NEAR(AngleWithFirstAxisDegree(0, 1), 90.0, 1e-12);
    EXPECT_NEAR(AngleWithFirstAxisDegree(0, -1), 270.0, 1e-12);
    EXPECT_LT(AngleWithFirstAxisDegree(1, -1e-9), 360.0);
}

TEST(Conventions_geometry, PointsAreColumnsAndTheTranslationIsTheLastColumn)
{
    double const numbers[16] = {1, 2, 0, 0, 3, 4, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1};
    HvTransfo4 const t(numbers);
    EXPECT_EQ(t.GetMatrixElement(1, 0), 2.0);
    EXPECT_EQ(t.GetMatrixElement(0, 3), 5.0);
    HvPoint3<double> const p = t.Map(HvPoint3<double>(10, 100, 0));
    EXPECT_EQ(p, HvPoint3<double>(10 + 300 + 5, 20 + 400 + 6, 7));
}

TEST(Conventions_geometry, TheLastModifierActsFirstOnPoints)
{
    HvTransfo4 t;
    t.Translate(10, 0, 0).Scale(2);
    EXPECT_EQ(t.Map(HvPoint2<double>(1, 0)), HvPoint2<double>(12, 0));

    HvTransfo4 scale;
    scale.Scale(2);
    HvTransfo4 left;
    left.Translate(10, 0, 0).PreMultiply(scale);
    EXPECT_EQ(left.Map(HvPoint2<double>(1, 0)), HvPoint2<double>(22, 0));
}

TEST(Conventions_geometry, ExtentsHoldTheirBorderAndNoNaN)
{
    HvExtent2<double> const extent(0, 0, 2, 1);
    EXPECT_EQ(extent.Contains(HvPoint2<double>(0, 1)), 1);
    EXPECT_EQ(extent.Contains(HvPoint2<double>(2, 0)), 1);
    EXPECT_EQ(extent.Contains(HvPoint2<double>(2.5, 0)), 0);
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(extent.Contains(HvPoint2<double>(nan, 0.5)), 0);
    EXPECT_EQ(extent.Contains(HvPoint2<double>(1, nan)), 0);
}

TEST(Conventions_geometry, CubicsAreFourPointsFromStartToEnd)
{
    HvPoint2<double> const cubic[4] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
    HvPoint2dArray points;
    HvBezierTool_FlattenCubic2d(cubic, 0.01, &points, 0);
    ASSERT_GE(points.Size(), 2u);
    EXPECT_EQ(points[0], cubic[0]);
    EXPECT_EQ(points[points.Size() - 1], cubic[3]);
}

TEST(Conventions_geometry, PolylineTagsAreZeroOneTwo)
{
    EXPECT_EQ(static_cast<int>(HvPointTagStart), 0);
    EXPECT_EQ(static_cast<int>(HvPointTagInner), 1);
    EXPECT_EQ(static_cast<int>(HvPointTagEnd), 2);

    HvPoint2<double> const cubic[4] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
    HvExtent2<double> everything;
    everything.state = HvExtent2<double>::WholePlane;
    HvPoint2dArray points;
    HvPointTagArray tags;
    HvBoolArray flags;
    HvBezierTool_ClipAndFlattenCubic2d(cubic, 0.01, everything, &points, &tags, &flags);
    ASSERT_GE(tags.Size(), 3u);
    EXPECT_EQ(tags[0], HvPointTagStart);
    EXPECT_EQ(tags[1], HvPointTagInner);
}

TEST(Conventions_geometry, FractionsAreCutTowardZero)
{
    EXPECT_EQ(HvSaturate_To<int>(2.9), 2);
    EXPECT_EQ(HvSaturate_To<int>(-2.9), -2);
    EXPECT_EQ(HvSaturate_To<int>(1e300), std::numeric_limits<int>::max());
    EXPECT_EQ(HvSaturate_To<int>(-1e300), std::numeric_limits<int>::min());
    EXPECT_EQ(HvSaturate_To<int>(std::numeric_limits<double>::quiet_NaN()), 0);
}
