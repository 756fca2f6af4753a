// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The control points of paths as a whole.

#include <hv/shape/HvPath2f.h>

#include <hv/foundation/HvExtent2.h>
#include <hv/rotation/HvTransfo4.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

TEST(HvPath2f_affine, HasTheExtentOfItsControlPoints)
{
    OpenPath const path = SmoothLoop();
    HvExtent2<float> extent;
    EXPECT_EQ(&path.GetExtent(extent), &extent);
    EXPECT_EQ(extent.state, HvExtent2<float>::Ordinary);
    EXPECT_EQ(extent.min, PathPoint(0, -3));
    EXPECT_EQ(extent.max, PathPoint(10, 5));
    HvExtent2<double> wide(-100, -100, 100, 100);  // what was there does not count
    EXPECT_EQ(&path.GetExtent(wide), &wide);
    EXPECT_EQ(wide.min, HvPoint2<double>(0, -3));
    EXPECT_EQ(wide.max, HvPoint2<double>(10, 5));
    extent.state = HvExtent2<float>::WholePlane;
    EXPECT_EQ(path.GetExtent(extent).state, HvExtent2<float>::Ordinary);
    EXPECT_EQ(HvPath2f(0u).GetExtent(extent).state, HvExtent2<float>::Empty);
    EXPECT_EQ(HvPath2f(0u).GetExtent(wide).state, HvExtent2<double>::Empty);
}

TEST(HvPath2f_affine, WidensItsExtentExactly)
{
    OpenPath path;
    path.Moveto({0.1F, -0.1F});
    HvExtent2<double> extent;
    path.GetExtent(extent);
    EXPECT_EQ(extent.min.x, double(0.1F));
    EXPECT_EQ(extent.max.y, double(-0.1F));
}

TEST(HvPath2f_affine, MovesEveryPointInFloat)
{
    OpenPath path = SmoothLoop();
    HvPath2f& result = path.Translate({0.1F, 1e8F});
    EXPECT_EQ(&result, &path);
    PathImage const before = ImageOf(SmoothLoop());
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(path.points[i].x, before.points[i].x + 0.1F);
        EXPECT_EQ(path.points[i].y, before.points[i].y + 1e8F);
    }
    // The offset may be one of the points.
    OpenPath own = Triangle();
    own.Translate(own.points[1]);
    EXPECT_EQ(own.points[0], PathPoint(4, 0));
    EXPECT_EQ(own.points[1], PathPoint(8, 0));
    EXPECT_EQ(own.points[2], PathPoint(4, 3));
}

TEST(HvPath2f_affine, RotatesCounterClockwiseAboutItsCenter)
{
    OpenPath path = Triangle();
    EXPECT_EQ(&path.Rotate(90, {1, 1}), &path);
    EXPECT_NEAR(path.points[1].x, 2, 1e-6);  // (4, 0) - (1, 1) = (3, -1), turned (1, 3)
    EXPECT_NEAR(path.points[1].y, 4, 1e-6);
    EXPECT_EQ(path.points[0], path.points[3]) << "a closed path stays closed";
}

TEST(HvPath2f_affine, ScalesAboutItsCenter)
{
    OpenPath path = Triangle();
    path.Scale(2, -1, {1, 1});
    EXPECT_EQ(path.points[0], PathPoint(-1, 2));
    EXPECT_EQ(path.points[1], PathPoint(7, 2));
    EXPECT_EQ(path.points[2], PathPoint(-1, -1));
}

TEST(HvPath2f_affine, Shears)
{
    for (double const y0 : {0.0, 7.0}) {
        OpenPath path = Triangle();
        path.ShearX(2, y0);
        EXPECT_EQ(path.points[1], PathPoint(4, 0));
        EXPECT_EQ(path.points[2], PathPoint(6, 3)) << "whatever y0 is";
    }
    OpenPath path = Triangle();
    path.ShearY(2, 1);
    EXPECT_EQ(path.points[0], PathPoint(0, -2));
    EXPECT_EQ(path.points[1], PathPoint(4, 6));
    EXPECT_EQ(path.points[2], PathPoint(0, 1));
}

TEST(HvPath2f_affine, MapsEveryPoint)
{
    HvTransfo4 t;
    t.Translate(5.0, 6.0, 0.0);
    t.Rotate(30, 0, 0, 1);
    OpenPath path = SmoothLoop();
    path.LockG1(0);
    path.Transform(t);
    PathImage const before = ImageOf(SmoothLoop());
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(path.points[i], t.Map(before.points[i]));
    }
    EXPECT_EQ(path.tags[0], 129) << "tags stay";
    EXPECT_EQ(path.lastSubpathOpen, 0);
}

TEST(HvPath2f_affine, TakesAnyNumberAndAnEmptyPath)
{
    double const inf = std::numeric_limits<double>::infinity();
    for (double const x : {0.0, -0.0, 1e-310, 1e300, inf, -inf, double(NAN)}) {
        float const f = static_cast<float>(x);
        for (OpenPath path : {Triangle(), OpenPath()}) {
            PathImage const before = ImageOf(path);
            path.Translate({f, f}).Rotate(x, {f, 1}).Scale(x, 1, {1, f});
            path.ShearX(x, x);
            path.ShearY(x, x);
            EXPECT_EQ(ImageOf(path).tags, before.tags);
        }
    }
}
