// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Two shapes combined as pixels, over every pair of pixel values that a fill could leave.

#include <hv/shape/shape_boolean.h>

#include "probe_shape.h"
#include <tests/support/allocation_failure.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Operator = void (*)(HvGC const&, HvShape2f const*, HvShape2f const*, HvUByteRaster&);

/// Fills with the pixels that it was given, into a raster that must be black and of their number.
class StampShape : public ProbeShape {
public:
    explicit StampShape(std::vector<unsigned char> pixels) : pixels_(std::move(pixels)) {}
    void Fill(HvGC const&, HvUByteRaster& raster, int (*interrupted)()) const override
    {
        EXPECT_EQ(interrupted, nullptr);
        EXPECT_EQ(raster.AllPixelValuesAre(0), 1);
        ASSERT_EQ(raster.NumPixels(), pixels_.size());
        for (std::size_t i = 0; i < pixels_.size(); ++i) {
            raster.data[i] = pixels_[i];
        }
    }

private:
    std::vector<unsigned char> pixels_;
};

StampShape const kA({0, 0, 0, 255, 255, 255, 1, 254});
StampShape const kB({0, 255, 1, 0, 255, 254, 255, 0});

/// The pixels that an operator makes of a raster of sevens.
std::vector<int> Combined(Operator combine)
{
    HvGC const gc;
    HvUByteRaster out(4, 2, 7);
    combine(gc, &kA, &kB, out);
    return std::vector<int>(out.data, out.data + 8);
}

}  // namespace

TEST(shape_boolean, IntersectionIsWhatBothFill)
{
    EXPECT_EQ(Combined(HvShape2f_IntersectionAB), (std::vector<int>{7, 7, 7, 7, 255, 7, 7, 7}));
}

TEST(shape_boolean, DifferenceIsWhatTheFirstFillsAlone)
{
    EXPECT_EQ(Combined(HvShape2f_DifferenceAB), (std::vector<int>{7, 7, 7, 255, 7, 7, 7, 7}));
}

TEST(shape_boolean, UnionIsWhatEitherFills)
{
    EXPECT_EQ(Combined(HvShape2f_UnionAB), (std::vector<int>{7, 255, 7, 255, 255, 255, 255, 7}));
}

TEST(shape_boolean, ShapeCombinesWithItself)
{
    HvGC const gc;
    HvUByteRaster out(4, 2, 0);
    HvShape2f_DifferenceAB(gc, &kA, &kA, out);
    EXPECT_EQ(out.AllPixelValuesAre(0), 1);
    HvShape2f_IntersectionAB(gc, &kA, &kA, out);
    EXPECT_EQ(out.data[3], 255);
}

TEST(shape_boolean, RastersWithoutPixelsStayEmpty)
{
    HvGC const gc;
    StampShape const nothing({});
    for (Operator const combine :
         {HvShape2f_IntersectionAB, HvShape2f_DifferenceAB, HvShape2f_UnionAB}) {
        HvUByteRaster out(0, 3, 0);
        combine(gc, &nothing, &nothing, out);
        EXPECT_EQ(out.NumPixels(), 0U);
    }
}

TEST(shape_boolean, RefusedAllocationLeavesTheRaster)
{
    HvGC const gc;
    RefuseEachAllocation([] { return HvUByteRaster(4, 2, 7); },
                         [&](HvUByteRaster& out) { HvShape2f_UnionAB(gc, &kA, &kB, out); },
                         [](HvUByteRaster const& out, bool completed) {
                             EXPECT_EQ(out.AllPixelValuesAre(7), completed ? 0 : 1);
                         });
}
