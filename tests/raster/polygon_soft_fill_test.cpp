// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/polygon_fill.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/hostile_polygons.h>
#include <tests/support/random_polygons.h>
#include <tests/support/slow_fill.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

namespace {

using Bytes = std::vector<int>;
using Falloff = std::function<double(double)>;

constexpr unsigned char kBefore = 77;  // what pixels hold that are not written

double Line(double x)
{
    return 1.0 - x;
}

Bytes Pixels(HvUByteRaster const& raster)
{
    return {raster.data, raster.data + raster.NumPixels()};
}

SlowBox Slow(HvFillBox const& box)
{
    return {box.x0, box.y0, box.x1, box.y1};
}

int SoftFill(PolygonList const& list, int rule, HvFillBox const& box, double radius,
             Falloff const& falloff, double maxCoverage, HvUByteRaster& raster,
             HvInterrupt interrupted = nullptr)
{
    HvBlurKernel const kernel(radius, falloff);
    return HvPolygons_SoftFill({list.points, list.tags, rule, box}, kernel, maxCoverage, raster,
                               interrupted);
}

PolygonList One(std::vector<HvPoint2<double>> const& corners)
{
    PolygonList list;
    list.Add(corners);
    return list;
}

// One full pixel with the weights 0.2, 0.6, 0.2 both ways: 255 * 0.36, 0.12 and 0.04, rounded half
// up.
TEST(polygon_soft_fill, BlursOnePixelByTheProductOfTheWeights)
{
    HvUByteRaster raster(5, 4, kBefore);
    auto const pixel = One({{2.1, 1}, {2.9, 1}, {2.9, 2}, {2.1, 2}});
    EXPECT_EQ(SoftFill(pixel, 0, {2, 1, 3, 2, false}, 1.0, Line, 1.0, raster), 1);
    EXPECT_EQ(Pixels(raster), (Bytes{0, 10, 31, 10, 0,  //
                                     0, 31, 92, 31, 0,  //
                                     0, 10, 31, 10, 0,  //
                                     0, 0,  0,  0,  0}));
}

TEST(polygon_soft_fill, OverwritesTheWholeRasterAlsoWhenNothingIsInside)
{
    HvUByteRaster raster(5, 4, kBefore);
    EXPECT_EQ(SoftFill(PolygonList(), 0, {2, 1, 2, 1, false}, 3.0, Line, 1.0, raster), 1);
    EXPECT_EQ(raster.AllPixelValuesAre(0), 1);
}

TEST(polygon_soft_fill, SolidAreasStayFull)
{
    HvUByteRaster raster(40, 40, kBefore);
    auto const square = One({{0, 0}, {39.5, 0}, {39.5, 40}, {0, 40}});
    SoftFill(square, 1, {0, 0, 40, 40, false}, 4.0, Line, 1.0, raster);
    for (int y = 4; y < 36; ++y) {
        for (int x = 4; x < 36; ++x) {
            ASSERT_EQ(raster.data[40 * y + x], 255);
        }
    }
    EXPECT_LT(raster.data[0], 255);  // nothing is covered beyond the raster
}

/// Calls check(list, rule, box, raster, radius, falloff, maxCoverage) with random fills.
template <class Check>
void ForManyFills(unsigned int seed, int count, Check const& check)
{
    Falloff const falloffs[] = {
        Line, [](double) { return 1.0; }, [](double x) { return std::exp(-4.0 * x * x); },
        [](double x) { return std::cos(6.0 * x); },  // negative lobes: sums beyond 255
        [](double x) { return x < 0.5 ? 1.0 : -0.45; }};
    RandomPolygons random(seed);
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(testing::Message() << "fill " << i << " of seed " << seed);
        HvUByteRaster raster(random.Pick(0, 24), random.Pick(0, 24), kBefore);
        auto list = random.Next(std::max(raster.width, raster.height) + 1.0);
        HvPoint2<double> const shift(random.Pick(-12, 12), random.Pick(-12, 12));
        for (auto& point : list.points) {
            point = point + shift;
        }
        HvFillBox box;
        if (HvFillBox_FromExtent(list.Extent(), raster, box) == 0) {
            continue;
        }
        double const radius = random.Pick(0, 3) == 0 ? 1.0 : random.PickReal(1.0, 9.0);
        double const coverages[] = {1.0, 0.5, 0.0, -1.0, 1.7, 300.0};
        check(list, random.Pick(0, 1), box, raster, radius, falloffs[random.Pick(0, 4)],
              coverages[random.Pick(0, 5)]);
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

TEST(polygon_soft_fill, IsThatOfTheSlowConverter)
{
    ForManyFills(1, 3000,
                 [](PolygonList const& list, int rule, HvFillBox const& box,
                    HvUByteRaster const& raster, double radius, Falloff const& falloff,
                    double maxCoverage) {
                     HvUByteRaster filled(raster);
                     HvUByteRaster expected(raster);
                     SoftFill(list, rule, box, radius, falloff, maxCoverage, filled);
                     SlowSoftFill(list.points, list.tags, rule, Slow(box), radius, falloff,
                                  maxCoverage, expected, {});
                     ASSERT_EQ(Pixels(filled), Pixels(expected));
                 });
}

// Large shapes are solid in most of their rows and columns, which are not computed one by one;
// other shapes come between.
TEST(polygon_soft_fill, LargeShapesAreThoseOfTheSlowConverter)
{
    RandomPolygons random(7);
    for (int i = 0; i < 40; ++i) {
        SCOPED_TRACE(testing::Message() << "shape " << i);
        HvUByteRaster raster(random.Pick(60, 210), random.Pick(30, 90), kBefore);
        double const width = raster.width;
        double const height = raster.height;
        PolygonList list;
        auto const corner = [&](double x, double y) {
            return HvPoint2<double>((x + random.PickReal(-0.1, 0.1)) * width,
                                    (y + random.PickReal(-0.1, 0.1)) * height);
        };
        list.Add({corner(0.05, 0.05), corner(0.95, 0.05), corner(0.95, 0.95), corner(0.05, 0.95)});
        if (random.Pick(0, 1) == 0) {
            double const y = random.PickReal(0.2, 0.8);
            list.Add({corner(0.4, y), corner(0.5, y + 0.2), corner(0.6, y)});
        }
        HvFillBox box;
        ASSERT_EQ(HvFillBox_FromExtent(list.Extent(), raster, box), 1);
        double const radius = random.PickReal(1.0, 12.0);
        int const rule = random.Pick(0, 1);
        auto const falloff = [](double x) { return x < 0.6 ? 1.0 : -0.2; };
        double const maxCoverage = random.Pick(0, 1) == 0 ? 1.0 : 0.6;
        HvUByteRaster filled(raster);
        HvUByteRaster expected(raster);
        SoftFill(list, rule, box, radius, falloff, maxCoverage, filled);
        SlowSoftFill(list.points, list.tags, rule, Slow(box), radius, falloff, maxCoverage,
                     expected, {});
        ASSERT_EQ(Pixels(filled), Pixels(expected));
        HvUByteRaster asked(raster);  // column by column
        SoftFill(list, rule, box, radius, falloff, maxCoverage, asked, [] { return 0; });
        ASSERT_EQ(Pixels(asked), Pixels(expected));
    }
}

// Spans that touch in a pixel count there twice. So by winding the order of edges of equal x shows,
// under a kernel with negative weights, which do not drown in full coverage.
double NegativeRim(double x)
{
    return x < 0.5 ? 1.0 : -0.45;
}

void ExpectSoftFillOfTheSlowConverter(PolygonList const& list, int width, int height)
{
    HvUByteRaster filled(width, height, kBefore);
    HvUByteRaster expected(width, height, kBefore);
    HvFillBox const box = {0, 0, width, height, false};
    SoftFill(list, 1, box, 2.0, NegativeRim, 0.25, filled);
    SlowSoftFill(list.points, list.tags, 1, Slow(box), 2.0, NegativeRim, 0.25, expected, {});
    EXPECT_EQ(Pixels(filled), Pixels(expected));
}

// Pairs of opposite edges lie on one another in a shape that winds around them, and all cross in
// the middle of a row: their order is turned between two rows, that of a pair stays.
TEST(polygon_soft_fill, PairsKeepTheirOrderWhereAllEdgesCross)
{
    PolygonList list;
    list.Add({{1, 0}, {659, 0}, {659, 10}, {1, 10}});
    for (int k = 0; k < 80; ++k) {
        double const spread = (k - 40) * 8.0;
        list.Add({{330.0 - spread, 0.5}, {330.0 + spread, 8.5}});
    }
    ExpectSoftFillOfTheSlowConverter(list, 660, 10);
}

TEST(polygon_soft_fill, EdgesThatComeInOneRowStandInTheOrderOfTheirUpperEnds)
{
    for (double const second : {1.2, 1.3, 1.45}) {
        PolygonList list;
        list.Add({{1, 0}, {79, 0}, {79, 10}, {1, 10}});
        list.Add({{30, 1.3}, {50, 1.3}, {50, 9}, {30, 9}});
        list.Add({{30, second}, {30, 9}, {50, 9}, {50, second}});
        ExpectSoftFillOfTheSlowConverter(list, 80, 10);
    }
}

// Sides that are bent take over from one another in the scan. Here they bend all at once, in pairs
// of opposite edges on one another, and in the other order.
TEST(polygon_soft_fill, BentPairsKeepTheirOrderWhereAllEdgesCross)
{
    for (double const bend : {3.6, 4.0, 4.3}) {
        PolygonList list;
        list.Add({{1, 0}, {659, 0}, {659, 10}, {1, 10}});
        for (int k = 0; k < 80; ++k) {
            double const spread = (k - 40) * 8.0;
            HvPoint2<double> const middle(330.0 - 0.01 * spread, bend);
            list.Add({{330.0 - spread, 0.5}, middle, {330.0 + spread, 8.5}, middle});
        }
        ExpectSoftFillOfTheSlowConverter(list, 660, 10);
    }
}

// Sides that go down and up over a few columns and bend on quarters of rows: edges that take over,
// edges that begin and older ones meet in one place, in every order.
TEST(polygon_soft_fill, BentEdgesStandBehindOlderOnesInTheOrderOfTheirUpperEnds)
{
    RandomPolygons random(8);
    for (int i = 0; i < 600; ++i) {
        SCOPED_TRACE(testing::Message() << "polygons " << i);
        PolygonList list;
        list.Add({{1, 0}, {39, 0}, {39, 10}, {1, 10}});
        for (int k = 0; k < 4; ++k) {
            std::vector<HvPoint2<double>> corners;
            double y = 0.0;
            for (int const way : {1, -1}) {
                for (int bends = 5; bends > 0; --bends) {
                    y += way * random.Pick(1, 8) / 4.0;
                    corners.emplace_back(random.Pick(1, 7) * 5.0, y);
                }
            }
            list.Add(corners);
        }
        ExpectSoftFillOfTheSlowConverter(list, 40, 10);
        if (HasFailure()) {
            return;
        }
    }
}

// Kernel sums that are 0 or no number leave no meaning, only bytes; the line of x = 1 sums to 0.
TEST(polygon_soft_fill, WeightsWithoutASumGiveNoCoverageWhereTheyReach)
{
    Falloff const none[] = {[](double) { return 0.0; },
                            [](double) { return std::numeric_limits<double>::quiet_NaN(); }};
    for (Falloff const& falloff : none) {
        HvUByteRaster raster(7, 7, kBefore);
        SoftFill(One({{3, 3}, {3.5, 3}, {3.5, 4}, {3, 4}}), 1, {0, 0, 7, 7, false}, 2.0, falloff,
                 1.0, raster);
        EXPECT_EQ(raster.AllPixelValuesAre(0), 1);
    }
}

// A convex shape has one span in a row, so that its blur is the convolution of its hard fill with
// the product kernel. What the fill sums in another order differs by some 1e-13, so that a pixel
// lies within half a step of the exact value.
TEST(polygon_soft_fill, IsTheConvolutionOfTheHardFill)
{
    constexpr int kSize = 30;
    RandomPolygons random(9);
    for (int i = 0; i < 60; ++i) {
        double const a = random.PickReal(2.0, 14.0);
        double const b = random.PickReal(2.0, 14.0);
        double const t = random.PickReal(0.0, 3.0);
        std::vector<HvPoint2<double>> corners;
        for (int k = 0; k < 12; ++k) {
            double const angle = k * 0.5235987755982988;
            double const x = a * std::cos(angle);
            double const y = b * std::sin(angle);
            corners.emplace_back(15 + x * std::cos(t) - y * std::sin(t),
                                 15 + x * std::sin(t) + y * std::cos(t));
        }
        auto const list = One(corners);
        HvFillBox box;
        HvUByteRaster hard(kSize, kSize, 0);
        ASSERT_EQ(HvFillBox_FromExtent(list.Extent(), hard, box), 1);
        HvPolygons_Fill({list.points, list.tags, 1, box}, hard, nullptr);

        double const radius = random.PickReal(1.0, 6.0);
        HvBlurKernel const kernel(radius, Line);
        int const reach = kernel.Reach();
        HvUByteRaster soft(kSize, kSize, kBefore);
        HvPolygons_SoftFill({list.points, list.tags, 1, box}, kernel, 1.0, soft, nullptr);
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                long double sum = 0.0L;
                for (int v = -reach; v <= reach; ++v) {
                    for (int u = -reach; u <= reach; ++u) {
                        bool const isIn =
                            x + u >= 0 && x + u < kSize && y + v >= 0 && y + v < kSize;
                        sum += isIn ? static_cast<long double>(kernel.Weights()[u + reach]) *
                                          kernel.Weights()[v + reach] *
                                          hard.data[(y + v) * kSize + x + u]
                                    : 0.0L;
                    }
                }
                ASSERT_NEAR(soft.data[y * kSize + x], static_cast<double>(sum), 0.5 + 1e-9)
                    << x << ", " << y << " of " << i;
            }
        }
    }
}

// --- interrupts, exceptions, memory -------------------------------------------------------------

int calls = 0;
int stopAt = 0;
bool throwing = false;

int Ask()
{
    if (++calls != stopAt) {
        return 0;
    }
    if (throwing) {
        throw SlowFillAbandoned();
    }
    return -1;
}

PolygonList const& Star()
{
    static PolygonList const star =
        One({{14.5, 2.2}, {16.9, 8.4}, {10.4, 4.1}, {18.4, 4.3}, {11.9, 8.6}});
    return star;
}

TEST(polygon_soft_fill, AsksBeforeEachRowOfTheBoxAndEachColumnOfTheRaster)
{
    constexpr int kWidth = 40;
    constexpr int kHeight = 12;
    HvFillBox const box = {10, 2, 19, 9, false};
    constexpr int kCalls = 7 + kWidth;
    for (throwing = false;; throwing = true) {
        for (int at = 1; at <= kCalls + 1; ++at) {
            SCOPED_TRACE(testing::Message() << "at call " << at << (throwing ? ", thrown" : ""));
            HvUByteRaster raster(kWidth, kHeight, kBefore);
            HvUByteRaster expected(kWidth, kHeight, kBefore);
            stopAt = at;
            calls = 0;
            try {
                SlowSoftFill(Star().points, Star().tags, 1, Slow(box), 3.0, Line, 1.0, expected,
                             &Ask);
            } catch (SlowFillAbandoned const&) {
            }
            EXPECT_EQ(calls, std::min(at, kCalls));
            calls = 0;
            AllocationCounter const counter;
            int result = 0;
            try {
                result = SoftFill(Star(), 1, box, 3.0, Line, 1.0, raster, &Ask);
            } catch (SlowFillAbandoned const&) {
            }
            EXPECT_EQ(counter.Live(), 0);
            EXPECT_EQ(calls, std::min(at, kCalls));
            EXPECT_EQ(result, at > kCalls ? 1 : 0);
            EXPECT_EQ(Pixels(raster), Pixels(expected));
        }
        if (throwing) {
            break;
        }
    }
}

TEST(polygon_soft_fill, AllocationsThatFailLeaveTheRasterAndNothingBehind)
{
    Star();  // made once and kept: its own memory is not what is counted
    HvFillBox const box = {10, 2, 19, 9, false};
    EXPECT_GT(RefuseEachAllocation(
                  [] { return HvUByteRaster(20, 10, kBefore); },
                  [&](HvUByteRaster& raster) { SoftFill(Star(), 0, box, 3.0, Line, 1.0, raster); },
                  [](HvUByteRaster& raster, bool completed) {
                      EXPECT_EQ(raster.AllPixelValuesAre(kBefore), completed ? 0 : 1);
                  }),
              4);
}

// The blurred box of a small shape, not the raster, decides what is allocated.
TEST(polygon_soft_fill, MemoryIsThatOfTheBlurredBox)
{
    HvUByteRaster raster(1000, 1000, kBefore);
    AllocationCounter const counter;
    SoftFill(Star(), 1, {10, 2, 19, 9, false}, 3.0, Line, 1.0, raster);
    EXPECT_LT(counter.Bytes(), 8192u);
}

// --- hostile ------------------------------------------------------------------------------------

TEST(polygon_soft_fill, NumbersOfAnyKindPass)
{
    double const coverages[] = {1.0, std::nan(""), std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::max()};
    Falloff const falloffs[] = {Line, [](double x) { return x < 0.5 ? 1e308 : -1e308; },
                                [](double) { return std::numeric_limits<double>::infinity(); }};
    for (int i = 0; i < 600; ++i) {
        auto const list = HostilePolygons(static_cast<unsigned int>(i));
        HvUByteRaster raster(9, 7, kBefore);
        EXPECT_EQ(SoftFill(list, i % 2, {0, 0, 9, 7, true}, 1.0 + i % 5, falloffs[i % 3],
                           coverages[i % 4], raster),
                  1);
    }
}

TEST(polygon_soft_fill, AKernelFarWiderThanTheRasterPasses)
{
    HvUByteRaster raster(20, 10, kBefore);
    EXPECT_EQ(
        SoftFill(Star(), 1, {10, 2, 19, 9, false}, HvBlurKernel::kMaxReach, Line, 1.0, raster), 1);
    EXPECT_EQ(raster.AllPixelValuesAre(0), 1);  // thinned out to nothing
}

TEST(polygon_soft_fill, EmptyRastersPass)
{
    for (int const width : {0, 3}) {
        HvUByteRaster raster(width, 3 - width, kBefore);
        HvFillBox box;
        EXPECT_EQ(HvFillBox_FromExtent({-1, -1, 5, 5}, raster, box), 1);
        EXPECT_EQ(SoftFill(Star(), 1, box, 2.0, Line, 1.0, raster), 1);
    }
}

}  // namespace
