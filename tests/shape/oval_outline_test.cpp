// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of an oval as four cubics.

#include <hv/shape/internal/oval_outline.h>

#include <hv/shape/HvParallelogram2f.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using Frame = HvParallelogram2f;
using Point = HvPoint2<float>;

template <class T>
void GetOutline(Frame const& frame, HvOvalOutline& outline)
{
    HvOvalHandles handles;
    frame.GetHandles(1, 8, handles);
    HvOvalOutline_Get<T>(handles, outline);
}

}  // namespace

TEST(oval_outline, RunsThroughTheMiddlesOfTheSides)
{
    Frame const frame(Point(10, 20), Point(18, 22), Point(11, 26));
    HvOvalOutline points;
    GetOutline<double>(frame, points);
    EXPECT_EQ(points[0], frame.Handle(1));
    EXPECT_EQ(points[3], frame.Handle(3));
    EXPECT_EQ(points[6], frame.Handle(5));
    EXPECT_EQ(points[9], frame.Handle(7));
    EXPECT_EQ(points[12], frame.Handle(1));
}

TEST(oval_outline, HandlesPointAtTheCorners)
{
    // The square from -1 to 1, counter-clockwise from (1, 0) over the corner (1, 1).
    HvOvalOutline points;
    GetOutline<double>(Frame(Point(-1, -1), Point(1, -1), Point(-1, 1)), points);
    float const kappa = static_cast<float>(0.5522847498307935);
    HvOvalOutline const expected = {
        Point(1, 0),      Point(1, kappa),  Point(kappa, 1),   Point(0, 1),       Point(-kappa, 1),
        Point(-1, kappa), Point(-1, 0),     Point(-1, -kappa), Point(-kappa, -1), Point(0, -1),
        Point(kappa, -1), Point(1, -kappa), Point(1, 0)};
    for (unsigned int i = 0; i < 13; ++i) {
        EXPECT_EQ(points[i], expected[i]) << i;
    }
}

TEST(oval_outline, RoundsByTheTypeOfItsArithmetic)
{
    // The quarter from handle 7 at (3, 0) over (6, 0): in double 3 + 3 kappa is rounded once; in
    // float the product is rounded before the sum, which comes out one step higher.
    Frame const frame(Point(0, 0), Point(6, 0), Point(0, 6));
    HvOvalOutline points;
    GetOutline<double>(frame, points);
    EXPECT_EQ(points[10], Point(static_cast<float>(3.0 + 3.0 * 0.5522847498307935), 0));
    float const once = points[10].x;
    GetOutline<float>(frame, points);
    float const product = 3.0F * static_cast<float>(0.5522847498307935);
    EXPECT_EQ(points[10], Point(3.0F + product, 0));
    EXPECT_EQ(points[10].x, std::nextafter(once, 9.0F));
}

TEST(oval_outline, StaysNearTheEllipse)
{
    // The quarter of a unit circle, tried at 256 parameters: at most 2.73e-4 outside.
    HvOvalOutline points;
    GetOutline<double>(Frame(Point(-1, -1), Point(1, -1), Point(-1, 1)), points);
    for (unsigned int start = 0; start < 12; start += 3) {
        for (int i = 0; i <= 256; ++i) {
            double const t = i / 256.0;
            double const u = 1 - t;
            double const weights[] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
            HvPoint2<double> p;
            for (unsigned int k = 0; k < 4; ++k) {
                p = p + HvPoint2<double>(points[start + k]) * weights[k];
            }
            double const radius = HvPoint2_Length(p);
            EXPECT_GE(radius, 1.0 - 1e-7);  // the handles are rounded to float
            EXPECT_LE(radius, 1.000274);
        }
    }
}
