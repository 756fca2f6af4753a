// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The direct fills of the rectangle and the oval, each tried as both.

#include <hv/shape/HvParallelogramShape2f.h>

#include "shape_lock_probe.h"

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvOval2f.h>
#include <hv/shape/HvRect2f.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace {

using Point = HvPoint2<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

template <class Shape>
class HvParallelogramShape2f_fill : public testing::Test {
protected:
    using Fill = void (*)(Shape const&, HvGC const&, HvUByteRaster&);

    static void Hard(Shape const& shape, HvGC const& gc, HvUByteRaster& raster)
    {
        shape.Fill(gc, raster, nullptr);
    }
    static void Radial(Shape const& shape, HvGC const& gc, HvUByteRaster& raster)
    {
        shape.RadialFill(gc, raster);
    }
    static constexpr Fill kFills[2] = {&Hard, &Radial};
};

using Shapes = testing::Types<HvRect2f, HvOval2f>;
TYPED_TEST_SUITE(HvParallelogramShape2f_fill, Shapes, );

}  // namespace

TYPED_TEST(HvParallelogramShape2f_fill, MapsToTheDevice)
{
    HvGC gc;
    gc.transform.Translate(4, 6, 0).Scale(2, 2, 1);
    for (auto const fill : this->kFills) {
        HvUByteRaster raster(40, 40, 7);
        fill(TypeParam(Point(0, 0), Point(10, 0), Point(0, 8)), gc, raster);
        HvUByteRaster expected(40, 40, 7);
        fill(TypeParam(Point(4, 6), Point(24, 6), Point(4, 22)), HvGC(), expected);
        EXPECT_TRUE(std::equal(raster.data, raster.data + raster.NumPixels(), expected.data));
        EXPECT_EQ(raster.AllPixelValuesAre(7), 0);
    }
}

TYPED_TEST(HvParallelogramShape2f_fill, OutsideTheRasterLeavesIt)
{
    for (Point const& offset :
         {Point(-30, 0), Point(30, 0), Point(0, -30), Point(0, 30), Point(kNaN, 0)}) {
        TypeParam shape(Point(1, 1), Point(4, 1), Point(1, 3));
        shape.Translate(offset);
        for (auto const fill : this->kFills) {
            HvUByteRaster raster(6, 4, 7);
            fill(shape, HvGC(), raster);
            EXPECT_EQ(raster.AllPixelValuesAre(7), 1) << offset.x << ' ' << offset.y;
        }
    }
}

TYPED_TEST(HvParallelogramShape2f_fill, NeverAsksTheInterruptTest)
{
    HvUByteRaster raster(40, 40, 7);
    TypeParam(Point(3, 5), Point(31, 5), Point(3, 27)).Fill(HvGC(), raster, [] {
        ADD_FAILURE() << "asked";
        return 1;
    });
    EXPECT_EQ(raster.data[16 * 40 + 17], 255);
}

TYPED_TEST(HvParallelogramShape2f_fill, WaitsForTheLock)
{
    TypeParam const shape(Point(1, 1), Point(4, 1), Point(1, 3));
    HvGC const gc;
    HvUByteRaster raster(8, 6, 7);
    for (auto const fill : this->kFills) {
        EXPECT_TRUE(ShapeLockProbe_Waits(shape, true, [&] { fill(shape, gc, raster); }));
    }
    EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
}

TYPED_TEST(HvParallelogramShape2f_fill, RefusedAllocationLeavesTheRaster)
{
    // The oval scans each of them in its own way.
    TypeParam const shapes[] = {TypeParam(Point(1, 1), Point(1, 5), Point(7, 1)),
                                TypeParam(Point(1, 1), Point(7, 1), Point(1, 5)),
                                TypeParam(Point(1, 2.25F), Point(7, 2.25F), Point(1, 3.25F)),
                                TypeParam(Point(2, 2), Point(28, 2), Point(2, 28))};
    HvGC const gc;
    for (TypeParam const& shape : shapes) {
        for (auto const fill : this->kFills) {
            long const made =
                RefuseEachAllocation([] { return HvUByteRaster(30, 30, 7); },
                                     [&](HvUByteRaster& raster) { fill(shape, gc, raster); },
                                     [&](HvUByteRaster const& raster, bool completed) {
                                         EXPECT_EQ(raster.AllPixelValuesAre(7), completed ? 0 : 1);
                                         EXPECT_TRUE(ShapeLockProbe_IsFree(shape));
                                     });
            EXPECT_TRUE(fill != this->kFills[1] || made > 0);
        }
    }
}

TYPED_TEST(HvParallelogramShape2f_fill, TakesAnyNumbersAndRasters)
{
    float const numbers[] = {0.0F, -1.0F, 3e38F, -3e38F, 1e-40F, kInfinity, -kInfinity, kNaN};
    for (float const a : numbers) {
        for (float const b : numbers) {
            TypeParam const shapes[] = {TypeParam(Point(a, 0), Point(b, 2), Point(5, a)),
                                        TypeParam(Point(0, a), Point(0, b), Point(a, a))};
            HvUByteRaster raster(5, 4, 7);
            HvUByteRaster empty(0, 4, 7);
            for (TypeParam const& shape : shapes) {
                for (auto const fill : this->kFills) {
                    fill(shape, HvGC(), raster);
                    fill(shape, HvGC(), empty);
                }
            }
        }
    }
}
