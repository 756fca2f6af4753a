// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvUByteRaster.h>
#include <hv/shape/HvGC.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/slow_fill.h>

#include "outline_paths.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <stdexcept>

namespace {

std::vector<int> PixelsOf(HvUByteRaster const& raster)
{
    return std::vector<int>(raster.data, raster.data + raster.NumPixels());
}

HvPath2f Rectangle(float left, float top, float right, float bottom)
{
    return PolygonPath({{left, top}, {right, top}, {right, bottom}, {left, bottom}}, true);
}

int Continue()
{
    return 0;
}

/// The fills of a path by the plain scan converter, over the path's own clipped polygons.
struct SlowPath {
    HvPoint2dArray points;
    HvPointTagArray tags;
    SlowBox box = {};
    bool isVisible = false;

    SlowPath(HvPath2f const& path, HvGC const& gc, HvUByteRaster const& raster)
    {
        HvExtent2<float> extent;
        path.GetExtent(extent);
        gc.transform.MapInPlace(extent);
        auto const limit = [](double value, int low, int high) {
            return static_cast<int>(std::min(double(high), std::max(double(low), value)));
        };
        box.x0 = limit(std::floor(extent.min.x), 0, raster.width);
        box.y0 = limit(std::floor(extent.min.y), 0, raster.height);
        box.x1 = limit(std::ceil(extent.max.x), 0, raster.width);
        box.y1 = limit(std::ceil(extent.max.y), 0, raster.height);
        double const tolerance = std::max(0.25, gc.flatness);
        bool const isClamped = extent.min.x < 0 || extent.min.y < 0 ||
                               std::ceil(double(extent.max.x)) > raster.width ||
                               std::ceil(double(extent.max.y)) > raster.height;
        HvExtent2<double> const clip(box.x0, box.y0, box.x1, box.y1);
        isVisible = (isClamped ? path.TransformFlattenAndClipClosedSubPaths(gc.transform, tolerance,
                                                                            clip, points, tags)
                               : path.TransformAndFlattenClosedSubPaths(gc.transform, tolerance,
                                                                        points, tags)) != 0;
    }
};

}  // namespace

TEST(HvPath2f_fill, RectangleCoversItsPixelsAndThatOfItsRightEnd)
{
    HvUByteRaster raster(6, 5, 7);
    Rectangle(1, 1, 3, 3).Fill(HvGC(), raster, nullptr);
    // Fat on the right, but not beyond the whole pixels of the extent.
    EXPECT_EQ(PixelsOf(raster), (std::vector<int>{7, 7,   7,   7, 7, 7,  //
                                                  7, 255, 255, 7, 7, 7,  //
                                                  7, 255, 255, 7, 7, 7,  //
                                                  7, 7,   7,   7, 7, 7,  //
                                                  7, 7,   7,   7, 7, 7}));
    HvUByteRaster two(6, 1, 0);
    HvPath2f path = Rectangle(0, 0, 2, 1);
    path.Moveto({4, 0});
    path.Lineto({5, 0});
    path.Lineto({5, 1});
    path.Lineto({4, 1});
    path.Lineto({4, 0});
    path.Closeto();
    path.Fill(HvGC(), two, nullptr);
    EXPECT_EQ(PixelsOf(two), (std::vector<int>{255, 255, 255, 0, 255, 0}));
}

TEST(HvPath2f_fill, OutsideAndOpenPathsDrawNothing)
{
    HvUByteRaster raster(4, 4, 9);
    HvGC gc;
    gc.softRadiusA = 2;
    HvPath2f const outside = Rectangle(5, 0, 7, 3);
    HvPath2f const open = PolygonPath({{0, 0}, {3, 0}, {3, 3}, {0, 0}}, false);
    HvPath2f const empty(1u);
    for (HvPath2f const* path : {&outside, &open, &empty}) {
        path->Fill(gc, raster, nullptr);
        path->AAFill(gc, raster, nullptr);
        path->SoftFill(gc, raster, nullptr);
        EXPECT_EQ(raster.AllPixelValuesAre(9), 1);
    }
}

RC_GTEST_PROP(HvPath2f_fill, EveryPixelIsThatOfThePlainScan, ())
{
    HvPath2f const path = RandomOutline();
    HvGC gc;
    gc.flatness = PickInRange(0, 2) == 0 ? 0.0 : 1.5;
    gc.fillRule = PickInRange(0, 2);
    gc.maxCoverage = PickInRange(1, 5) / 4.0;
    gc.softRadiusA = PickInRange(2, 12) / 4.0;
    gc.softClipToShape = PickInRange(0, 2);
    gc.transform.Translate(PickInRange(-20, 20) / 4.0, PickInRange(-20, 20) / 4.0, 0.0);
    HvUByteRaster raster(PickInRange(0, 24), PickInRange(0, 24), 3);
    HvUByteRaster expected(raster);
    SlowPath const slow(path, gc, raster);

    path.Fill(gc, raster, nullptr);
    if (slow.isVisible) {
        SlowFill(slow.points, slow.tags, gc.fillRule, slow.box, expected, {});
    }
    RC_ASSERT(PixelsOf(raster) == PixelsOf(expected));

    path.AAFill(gc, raster, &Continue);
    if (slow.isVisible) {
        SlowAAFill(slow.points, slow.tags, gc.fillRule, slow.box, gc.maxCoverage, expected, {});
    }
    RC_ASSERT(PixelsOf(raster) == PixelsOf(expected));

    path.SoftFill(gc, raster, &Continue);
    double const radius = gc.softRadiusA;
    if (slow.isVisible && radius < 1) {
        SlowAAFill(slow.points, slow.tags, gc.fillRule, slow.box, gc.maxCoverage, expected, {});
    } else if (slow.isVisible) {
        SlowSoftFill(slow.points, slow.tags, gc.fillRule, slow.box, radius,
                     [](double x) { return 1.0 - x; }, gc.maxCoverage, expected, {});
        HvUByteRaster mask(raster.width, raster.height, 0);
        SlowAAFill(slow.points, slow.tags, gc.fillRule, slow.box, 1.0, mask, {});
        for (std::size_t i = 0; gc.softClipToShape == 1 && i < mask.NumPixels(); ++i) {
            unsigned int const share = mask.data[i];
            if (share != 255) {
                expected.data[i] =
                    static_cast<unsigned char>((share * unsigned(expected.data[i])) >> 8);
            }
        }
    }
    // Sums of the blur may be taken in another order: a last bit may tip a rounding.
    std::vector<int> const got = PixelsOf(raster);
    std::vector<int> const want = PixelsOf(expected);
    for (std::size_t i = 0; i < got.size(); ++i) {
        RC_ASSERT(std::abs(got[i] - want[i]) <= 1);
    }
}

TEST(HvPath2f_fill, FlatnessThatIsNoNumberCountsAsTheLeast)
{
    HvPath2f path(1u);
    path.Moveto({0, 0});
    path.Curveto({0, 20}, {20, 20}, {0, 0});
    path.Closeto();
    HvGC gc;
    gc.flatness = 0.25;
    HvUByteRaster expected(20, 20, 0);
    path.AAFill(gc, expected, nullptr);
    for (double const flatness : {0.0, -5.0, std::nan("")}) {
        gc.flatness = flatness;
        HvUByteRaster raster(20, 20, 0);
        path.AAFill(gc, raster, nullptr);
        EXPECT_EQ(PixelsOf(raster), PixelsOf(expected));
    }
}

namespace {

int asked = 0;
int askedUntil = 0;

int StopAfterSome()
{
    return ++asked >= askedUntil ? 1 : 0;
}

int ThrowAfterSome()
{
    if (++asked >= askedUntil) {
        throw std::runtime_error("stopped");
    }
    return 0;
}

}  // namespace

TEST(HvPath2f_fill, CoverageOfTheContextComesBack)
{
    HvPath2f const path = Rectangle(2, 2, 6, 6);
    HvGC gc;
    gc.softRadiusB = 1.5;
    gc.maxCoverage = 0.625;
    // A whole soft fill asks for 4 rows, 8 columns, 16 quarters of rows and once before the clip.
    for (int stop = 1; stop <= 32; ++stop) {
        for (auto* const interrupt : {&StopAfterSome, &ThrowAfterSome}) {
            asked = 0;
            askedUntil = stop;
            HvUByteRaster raster(8, 8, 0);
            try {
                path.SoftFill(gc, raster, interrupt);
            } catch (std::runtime_error const&) {
            }
            EXPECT_EQ(gc.maxCoverage, 0.625);
        }
    }
    EXPECT_EQ(asked, 29);
}

TEST(HvPath2f_fill, ClipUsesFullCoverage)
{
    HvPath2f const path = Rectangle(2, 2, 6, 6);
    HvGC gc;
    gc.softRadiusA = 1;
    gc.maxCoverage = 0.5;
    HvUByteRaster raster(8, 8, 99);
    path.SoftFill(gc, raster, nullptr);
    EXPECT_EQ(raster.data[3 * 8 + 3], 128) << "the middle, not made fainter by the clip";
    EXPECT_EQ(raster.data[3 * 8 + 1], 0) << "outside nothing stays";
    gc.softClipToShape = 0;
    path.SoftFill(gc, raster, nullptr);
    EXPECT_GT(raster.data[3 * 8 + 1], 0);
}

TEST(HvPath2f_fill, WithoutMemoryNothingIsHeld)
{
    struct Work {
        HvPath2f path = Rectangle(-2, 1, 6, 6);
        HvGC gc;
        HvUByteRaster raster = HvUByteRaster(8, 8, 0);
    };
    auto const check = [](Work& work, bool) {
        EXPECT_EQ(work.gc.maxCoverage, 1.0);
        work.path.Fill(work.gc, work.raster, nullptr);
        EXPECT_EQ(work.raster.data[3 * 8 + 3], 255);
    };
    auto const prepare = [] {
        Work work;
        work.gc.softRadiusA = 2;
        return work;
    };
    auto const nobody = [](auto fill) {
        return [fill](Work& work) { (work.path.*fill)(work.gc, work.raster, nullptr); };
    };
    EXPECT_GT(RefuseEachAllocation(prepare, nobody(&HvPath2f::Fill), check), 3);
    EXPECT_GT(RefuseEachAllocation(prepare, nobody(&HvPath2f::AAFill), check), 3);
    EXPECT_GT(RefuseEachAllocation(prepare, nobody(&HvPath2f::SoftFill), check), 6);
}
