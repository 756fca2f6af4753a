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
#include <limits>
#include <vector>

namespace {

using Points = std::vector<HvPoint2<double>>;
using Bytes = std::vector<int>;

constexpr int kEvenOdd = 0;
constexpr int kWinding = 1;
constexpr unsigned char kBefore = 77;  // what pixels hold that are not written

Bytes Pixels(HvUByteRaster const& raster)
{
    return {raster.data, raster.data + raster.NumPixels()};
}

HvPolygons With(PolygonList const& list, int rule, HvFillBox const& box)
{
    return {list.points, list.tags, rule, box};
}

PolygonList One(Points const& corners)
{
    PolygonList list;
    list.Add(corners);
    return list;
}

/// Fills over the whole raster.
HvUByteRaster Filled(PolygonList const& list, int rule, int width, int height)
{
    HvUByteRaster raster(width, height, kBefore);
    EXPECT_EQ(HvPolygons_Fill(With(list, rule, {0, 0, width, height, false}), raster, nullptr), 1);
    return raster;
}

HvUByteRaster AAFilled(PolygonList const& list, int rule, double maxCoverage, int width, int height)
{
    HvUByteRaster raster(width, height, kBefore);
    EXPECT_EQ(HvPolygons_AAFill(With(list, rule, {0, 0, width, height, false}), maxCoverage, raster,
                                nullptr),
              1);
    return raster;
}

SlowBox Slow(HvFillBox const& box)
{
    return {box.x0, box.y0, box.x1, box.y1};
}

/// An interrupt that counts its calls and can say so, or throw, at one of them.
struct Asked {
    static int calls;
    static int stopAt;
    static bool throws;

    static void Reset(int at, bool throwing)
    {
        calls = 0;
        stopAt = at;
        throws = throwing;
    }
    static int Ask()
    {
        if (++calls != stopAt) {
            return 0;
        }
        if (throws) {
            throw SlowFillAbandoned();
        }
        return 3;
    }
};
int Asked::calls = 0;
int Asked::stopAt = 0;
bool Asked::throws = false;

// --- by hand ------------------------------------------------------------------------------------

TEST(polygon_fill, CoversThePixelOfTheRightEndToo)
{
    // Rows 1 and 2 have their middle within; columns 1 up to the one that holds 3.
    auto const raster = Filled(One({{1, 1}, {3, 1}, {3, 3}, {1, 3}}), kEvenOdd, 5, 4);
    EXPECT_EQ(Pixels(raster), (Bytes{77, 77,  77,  77,  77,  //
                                     77, 255, 255, 255, 77,  //
                                     77, 255, 255, 255, 77,  //
                                     77, 77,  77,  77,  77}));
}

TEST(polygon_fill, IsCutAtTheBoxAndNotFatThere)
{
    auto const square = One({{1, 1}, {3, 1}, {3, 3}, {1, 3}});
    HvUByteRaster raster(5, 4, kBefore);
    HvPolygons_Fill(With(square, kWinding, {1, 1, 3, 3, false}), raster, nullptr);
    EXPECT_EQ(Pixels(raster), (Bytes{77, 77,  77,  77, 77,  //
                                     77, 255, 255, 77, 77,  //
                                     77, 255, 255, 77, 77,  //
                                     77, 77,  77,  77, 77}));
}

TEST(polygon_fill, AVertexOnTheMiddleOfARowIsReachedThere)
{
    // The triangle's upper side lies on the middle of row 0 and its lowest corner on that of row 2:
    // the row of the upper side is covered, that of the lowest corner is not.
    auto const raster = Filled(One({{0, 0.5}, {2.5, 0.5}, {0, 2.5}}), kEvenOdd, 3, 3);
    EXPECT_EQ(Pixels(raster), (Bytes{255, 255, 255,  //
                                     255, 255, 77,   //
                                     77, 77, 77}));
}

TEST(polygon_fill, WhatHasNoWidthCoversNothing)
{
    PolygonList list;
    list.Add({{1, 0}, {1, 4}});                          // two corners
    list.Add({{2, 0}, {2, 4}, {2, 2}});                  // a spike
    list.Add({{3, 1}});                                  // one corner
    list.Add({{0, 1.5}, {3, 1.5}, {2, 1.5}, {1, 1.5}});  // level
    for (int const rule : {kEvenOdd, kWinding}) {
        EXPECT_EQ(Pixels(Filled(list, rule, 4, 4)), Bytes(16, 77));
        EXPECT_EQ(Pixels(AAFilled(list, rule, 1.0, 4, 4)), Bytes(16, 77));
    }
}

TEST(polygon_fill, TheRuleSaysWhatIsInsideWhereAPolygonOverlapsItself)
{
    PolygonList list;
    list.Add({{0, 0}, {4.5, 0}, {4.5, 1}, {0, 1}});
    list.Add({{1, 0}, {3.5, 0}, {3.5, 1}, {1, 1}});
    EXPECT_EQ(Pixels(Filled(list, kEvenOdd, 5, 1)), (Bytes{255, 255, 77, 255, 255}));
    EXPECT_EQ(Pixels(Filled(list, kWinding, 5, 1)), Bytes(5, 255));
    EXPECT_EQ(Pixels(Filled(list, -7, 5, 1)), Bytes(5, 255));
}

TEST(polygon_fill, PointsWithoutAnEndAreNoPolygon)
{
    auto list = One({{0, 0}, {1.5, 0}, {1.5, 2}, {0, 2}});
    list.points.Add(3.0, 0.0);
    list.points.Add(5.0, 0.0);
    list.points.Add(5.0, 2.0);
    for (int i = 0; i < 3; ++i) {
        list.tags.Add(HvPointTagInner);
    }
    EXPECT_EQ(Pixels(Filled(list, kWinding, 6, 1)), (Bytes{255, 255, 77, 77, 77, 77}));
    list.tags.Add(HvPointTagEnd);  // more tags than points
    EXPECT_EQ(Pixels(Filled(list, kWinding, 6, 1)), (Bytes{255, 255, 77, 77, 77, 77}));
}

TEST(polygon_fill, ALonePointIsNoPartOfThePolygonBehindIt)
{
    PolygonList list;
    list.points.Add(5.0, 0.0);
    list.tags.Add(HvPointTagEnd);
    list.Add({{0, 0}, {1.5, 0}, {1.5, 2}, {0, 2}});
    EXPECT_EQ(Pixels(Filled(list, kWinding, 6, 1)), (Bytes{255, 255, 77, 77, 77, 77}));
}

TEST(polygon_fill, EdgesWithoutAnAbscissaComeBehindAllOthers)
{
    // Of all edges that begin in row 0 they are the first and the last to be met on the way down.
    double const nan = std::numeric_limits<double>::quiet_NaN();
    PolygonList list;
    list.Add({{nan, 0}, {nan, 0.25}, {nan, 2}});
    list.Add({{1, 0.125}, {2.5, 0.125}, {2.5, 2}, {1, 2}});
    for (int const rule : {kEvenOdd, kWinding}) {
        EXPECT_EQ(Pixels(Filled(list, rule, 4, 1)), (Bytes{77, 255, 255, 77}));
    }
}

TEST(polygon_fill, AFullPixelIs255AndFifteenPointsAre240)
{
    // Subcolumns 0 to 7 of all subrows; in the second pixel the last subrow ends one earlier.
    PolygonList list;
    list.Add({{0, 0}, {1.9, 0}, {1.9, 0.75}, {0, 0.75}});
    list.Add({{0, 0.75}, {1.7, 0.75}, {1.7, 1}, {0, 1}});
    EXPECT_EQ(Pixels(AAFilled(list, kWinding, 1.0, 3, 1)), (Bytes{255, 240, 77}));
}

TEST(polygon_fill, WhatLiesBetweenTheSpansOfARowIsWrittenToo)
{
    PolygonList list;
    list.Add({{1, 0}, {1.9, 0}, {1.9, 1}, {1, 1}});
    list.Add({{4, 0}, {4.9, 0}, {4.9, 1}, {4, 1}});
    EXPECT_EQ(Pixels(AAFilled(list, kEvenOdd, 1.0, 7, 2)), (Bytes{77, 255, 0, 0, 255, 77, 77,  //
                                                                  77, 77, 77, 77, 77, 77, 77}));
}

TEST(polygon_fill, MaxCoverageIsACeiling)
{
    PolygonList list;
    list.Add({{0, 0}, {0.9, 0}, {0.9, 1}, {0, 1}});
    list.Add({{2, 0}, {2.9, 0}, {2.9, 0.25}, {2, 0.25}});
    EXPECT_EQ(Pixels(AAFilled(list, kEvenOdd, 0.5, 4, 1)), (Bytes{128, 0, 64, 77}));
}

TEST(polygon_fill, MaxCoverageOutsideTakesTheLowByte)
{
    auto const square = One({{0, 0}, {0.9, 0}, {0.9, 1}, {0, 1}});
    double const infinity = std::numeric_limits<double>::infinity();
    struct {
        double maxCoverage;
        int pixel;
    } const cases[] = {{0.0, 0},       {1.0, 255},        {2.0, 254},       {1.5, 127},
                       {-0.25, 192},   {1e300, 0},        {-1e300, 0},      {infinity, 0},
                       {-infinity, 0}, {std::nan(""), 0}, {8421504.0, 128}, {8421504.5, 0},
                       {1e-320, 0}};
    for (auto const& expected : cases) {
        EXPECT_EQ(Pixels(AAFilled(square, kWinding, expected.maxCoverage, 1, 1)),
                  Bytes{expected.pixel})
            << expected.maxCoverage;
    }
}

TEST(polygon_fill, ClipToMaskKeepsWhatIsFullAndScalesTheRest)
{
    HvUByteRaster raster(4, 1, 200);
    HvUByteRaster mask(4, 1, 0);
    mask.data[1] = 254;
    mask.data[2] = 255;
    mask.data[3] = 128;
    HvUByteRaster_ClipToMask(raster, mask);
    EXPECT_EQ(Pixels(raster), (Bytes{0, 198, 200, 100}));
    HvUByteRaster empty(0, 0, 0);
    HvUByteRaster_ClipToMask(empty, mask);
    HvUByteRaster_ClipToMask(raster, empty);
    EXPECT_EQ(Pixels(raster), (Bytes{0, 198, 200, 100}));
}

// --- against the slow converter -----------------------------------------------------------------

/// Calls check(list, rule, box, raster) with random polygons over rasters of all small sizes, the
/// raster placed anywhere over them.
template <class Check>
void ForManyPolygons(unsigned int seed, int count, Check const& check)
{
    RandomPolygons random(seed);
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE(testing::Message() << "polygons " << i << " of seed " << seed);
        HvUByteRaster raster(random.Pick(0, 24), random.Pick(0, 24), kBefore);
        auto list = random.Next(std::max(raster.width, raster.height) + 1.0);
        if (random.Pick(0, 1) == 0) {
            HvPoint2<double> const shift(random.Pick(-20, 20), random.Pick(-20, 20));
            for (auto& point : list.points) {
                point = point + shift;
            }
        }
        HvFillBox box;
        if (HvFillBox_FromExtent(list.Extent(), raster, box) == 0) {
            continue;
        }
        for (int const rule : {kEvenOdd, kWinding}) {
            check(list, rule, box, raster);
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

TEST(polygon_fill, HardFillIsThatOfTheSlowConverter)
{
    ForManyPolygons(
        1, 6000,
        [](PolygonList const& list, int rule, HvFillBox const& box, HvUByteRaster const& raster) {
            HvUByteRaster filled(raster);
            HvUByteRaster expected(raster);
            HvPolygons_Fill(With(list, rule, box), filled, nullptr);
            SlowFill(list.points, list.tags, rule, Slow(box), expected, {});
            ASSERT_EQ(Pixels(filled), Pixels(expected));
        });
}

TEST(polygon_fill, AntiAliasedFillIsThatOfTheSlowConverter)
{
    ForManyPolygons(
        2, 4000,
        [](PolygonList const& list, int rule, HvFillBox const& box, HvUByteRaster const& raster) {
            HvUByteRaster filled(raster);
            HvUByteRaster expected(raster);
            HvPolygons_AAFill(With(list, rule, box), 1.0, filled, nullptr);
            SlowAAFill(list.points, list.tags, rule, Slow(box), 1.0, expected, {});
            ASSERT_EQ(Pixels(filled), Pixels(expected));
        });
}

TEST(polygon_fill, ManyEdgesAreThoseOfTheSlowConverter)
{
    RandomPolygons random(3);
    for (int const corners : {100, 700}) {
        Points points;
        for (int i = 0; i < corners; ++i) {
            points.emplace_back(random.PickReal(-20, 220), random.Pick(-10, 40) / 2.0);
        }
        auto const list = One(points);
        for (int const rule : {kEvenOdd, kWinding}) {
            HvUByteRaster filled(200, 16, kBefore);
            HvUByteRaster expected(200, 16, kBefore);
            HvFillBox const box = {0, 0, 200, 16, true};
            HvPolygons_AAFill(With(list, rule, box), 0.75, filled, nullptr);
            SlowAAFill(list.points, list.tags, rule, Slow(box), 0.75, expected, {});
            EXPECT_EQ(Pixels(filled), Pixels(expected)) << corners;
        }
    }
}

/// A convex polygon: points of a circle in their order, squeezed and moved.
Points Convex(RandomPolygons& random, double size)
{
    std::vector<double> angles(static_cast<std::size_t>(random.Pick(3, 20)));
    for (double& angle : angles) {
        angle = random.PickReal(0.0, 6.283185307179586);
    }
    std::sort(angles.begin(), angles.end());
    double const rx = random.PickReal(0.1, 0.5) * size;
    double const ry = random.PickReal(0.1, 0.5) * size;
    Points corners;
    for (double const angle : angles) {
        corners.emplace_back(0.5 * size + rx * std::cos(angle), 0.5 * size + ry * std::sin(angle));
    }
    return corners;
}

/// Fills hard and anti-aliased by both rules, and slowly.
void ExpectAsTheSlowConverter(PolygonList const& list, HvUByteRaster const& before)
{
    HvFillBox box;
    if (HvFillBox_FromExtent(list.Extent(), before, box) == 0) {
        return;
    }
    for (int const rule : {kEvenOdd, kWinding}) {
        HvUByteRaster filled(before);
        HvUByteRaster expected(before);
        HvPolygons_Fill(With(list, rule, box), filled, nullptr);
        SlowFill(list.points, list.tags, rule, Slow(box), expected, {});
        ASSERT_EQ(Pixels(filled), Pixels(expected));
        filled = before;
        expected = before;
        HvPolygons_AAFill(With(list, rule, box), 1.0, filled, nullptr);
        SlowAAFill(list.points, list.tags, rule, Slow(box), 1.0, expected, {});
        ASSERT_EQ(Pixels(filled), Pixels(expected));
    }
}

// Rows between upright edges are alike; they begin and end on quarters of rows, at the sides of the
// raster and beyond.
TEST(polygon_fill, UprightEdgesAreThoseOfTheSlowConverter)
{
    RandomPolygons random(5);
    for (int i = 0; i < 1500; ++i) {
        SCOPED_TRACE(testing::Message() << "rectangles " << i);
        PolygonList list;
        for (int k = random.Pick(1, 4); k > 0; --k) {
            auto const coordinate = [&] { return random.Pick(-16, 160) / 8.0; };
            HvPoint2<double> const a(coordinate(), coordinate());
            HvPoint2<double> const b(coordinate(), coordinate());
            list.Add({a, {b.x, a.y}, b, {a.x, b.y}});
        }
        HvUByteRaster const raster(random.Pick(0, 18), random.Pick(0, 18), kBefore);
        ExpectAsTheSlowConverter(list, raster);
        if (HasFailure()) {
            return;
        }
    }
}

// The sides move by a whole pixel in a row.
TEST(polygon_fill, ALeaningParallelogramIsThatOfTheSlowConverter)
{
    ExpectAsTheSlowConverter(One({{1, 0}, {5, 0}, {9, 4}, {5, 4}}), HvUByteRaster(12, 6, kBefore));
}

// Most rows of a plain shape lie between two edges, of any slope, and may be cut at the raster.
TEST(polygon_fill, PlainShapesAreThoseOfTheSlowConverter)
{
    RandomPolygons random(6);
    for (int i = 0; i < 1500; ++i) {
        SCOPED_TRACE(testing::Message() << "shape " << i);
        Points corners;
        HvPoint2<double> const shift(random.PickReal(-20, 20), random.PickReal(-20, 20));
        double const lean = random.PickReal(-4, 4);
        for (HvPoint2<double> const& corner : Convex(random, random.PickReal(1, 60))) {
            corners.push_back(HvPoint2<double>(corner.x + lean * corner.y, corner.y) + shift);
        }
        ExpectAsTheSlowConverter(One(corners),
                                 HvUByteRaster(random.Pick(1, 40), random.Pick(1, 40), kBefore));
        if (HasFailure()) {
            return;
        }
    }
}

// Sides of many corners take over from one another in the scan, cross one another, and are cut
// above and below.
TEST(polygon_fill, BentSidesAreThoseOfTheSlowConverter)
{
    RandomPolygons random(9);
    for (int i = 0; i < 1000; ++i) {
        SCOPED_TRACE(testing::Message() << "polygons " << i);
        PolygonList list;
        for (int k = random.Pick(1, 3); k > 0; --k) {
            Points corners;
            double y = random.PickReal(-10.0, 10.0);
            for (int const way : {1, -1}) {
                for (int bends = random.Pick(2, 12); bends > 0; --bends) {
                    y += way * random.PickReal(0.0, 4.0);
                    corners.emplace_back(random.PickReal(0.0, 30.0), y);
                }
            }
            list.Add(corners);
        }
        ExpectAsTheSlowConverter(list, HvUByteRaster(30, random.Pick(1, 24), kBefore));
        if (HasFailure()) {
            return;
        }
    }
}

// Edges that all cross between two rows would take a move for each pair.
TEST(polygon_fill, ASheafOfCrossingEdgesIsThatOfTheSlowConverter)
{
    Points points;
    for (int i = 0; i < 600; ++i) {
        double const x = i * 0.3;
        points.emplace_back(i % 2 == 0 ? x : 180.0 - x, i % 2 == 0 ? -0.25 : 8.25);
    }
    auto const list = One(points);
    for (int const rule : {kEvenOdd, kWinding}) {
        HvUByteRaster filled(180, 8, kBefore);
        HvUByteRaster expected(180, 8, kBefore);
        HvFillBox const box = {0, 0, 180, 8, true};
        HvPolygons_Fill(With(list, rule, box), filled, nullptr);
        SlowFill(list.points, list.tags, rule, Slow(box), expected, {});
        EXPECT_EQ(Pixels(filled), Pixels(expected));
    }
}

TEST(polygon_fill, ACombOfManyTeethIsQuick)
{
    constexpr int kTeeth = 100000;
    Points points = {{0, 0}};
    for (int i = 0; i < kTeeth; ++i) {
        points.emplace_back(i * 0.01 + 0.002, 60.0 + i % 7);
        points.emplace_back(i * 0.01 + 0.007, 0.0);
    }
    points.emplace_back(kTeeth * 0.01, 0.0);
    auto const list = One(points);
    auto const raster = Filled(list, kEvenOdd, 1000, 4);
    EXPECT_EQ(raster.AllPixelValuesAre(255), 1);
}

// --- area ---------------------------------------------------------------------------------------

double AreaOf(Points const& corners)
{
    double twice = 0.0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        twice += HvPoint2_AdetB(corners[i], corners[(i + 1) % corners.size()]);
    }
    return std::fabs(twice) / 2.0;
}

// In units of sample points, 16 to a pixel. In a subrow the span from l to r covers
// floor(r) - floor(l) + 1 subcolumns, which exceeds r - l by more than 0 and less than 2. The width
// at the middle of a subrow differs from its mean over the subrow by no more than it varies there,
// and the width of a convex polygon varies by twice its greatest, in all. On average the first
// excess is 1: the samples stand for a polygon that is wider by one subcolumn.
TEST(polygon_fill, CoverageIsTheAreaWithinTheBoundOfItsSampling)
{
    constexpr int kSize = 24;
    RandomPolygons random(4);
    double excess = 0.0;
    double rows = 0.0;
    for (int i = 0; i < 1500; ++i) {
        auto const corners = Convex(random, kSize);
        auto const raster = AAFilled(One(corners), kWinding, 1.0, kSize, kSize);
        double samples = 0.0;
        for (int const pixel : Pixels(raster)) {
            samples += pixel == 255 ? 16 : pixel == kBefore ? 0 : pixel / 16;
        }
        auto const x = std::minmax_element(
            corners.begin(), corners.end(),
            [](HvPoint2<double> const& a, HvPoint2<double> const& b) { return a.x < b.x; });
        auto const y = std::minmax_element(
            corners.begin(), corners.end(),
            [](HvPoint2<double> const& a, HvPoint2<double> const& b) { return a.y < b.y; });
        double const variation = 2.0 * 4.0 * (x.second->x - x.first->x);
        double const subrows = 4.0 * (y.second->y - y.first->y) + 1.0;
        double const more = samples - 16.0 * AreaOf(corners);
        ASSERT_GE(more, -variation) << i;
        ASSERT_LE(more, variation + 2.0 * subrows) << i;
        excess += more;
        rows += subrows - 1.0;
    }
    EXPECT_NEAR(excess / rows, 1.0, 0.02);
}

// --- interrupts, exceptions, memory -------------------------------------------------------------

template <class Fill, class SlowFillOf>
void ExpectInterruptsAsTheSlowConverter(Fill const& fill, SlowFillOf const& slowFill, int calls)
{
    for (bool const throws : {false, true}) {
        for (int at = 1; at <= calls + 1; ++at) {
            SCOPED_TRACE(testing::Message() << "at call " << at << (throws ? ", thrown" : ""));
            HvUByteRaster raster(9, 7, kBefore);
            HvUByteRaster expected(9, 7, kBefore);
            Asked::Reset(at, false);
            try {
                slowFill(expected, SlowInterrupt(&Asked::Ask));
            } catch (SlowFillAbandoned const&) {
            }
            int const slowCalls = Asked::calls;
            Asked::Reset(at, throws);
            AllocationCounter const counter;
            int result = 0;
            try {
                result = fill(raster, &Asked::Ask);
            } catch (SlowFillAbandoned const&) {
            }
            EXPECT_EQ(counter.Live(), 0);
            EXPECT_EQ(Asked::calls, slowCalls);
            EXPECT_EQ(Asked::calls, std::min(at, calls));
            EXPECT_EQ(result, at > calls ? 1 : 0);
            EXPECT_EQ(Pixels(raster), Pixels(expected));
        }
    }
}

PolygonList const& Star()
{
    static PolygonList const star =
        One({{4.5, 0.2}, {6.9, 6.4}, {0.4, 2.1}, {8.4, 2.3}, {1.9, 6.6}});
    return star;
}

TEST(polygon_fill, HardFillAsksBeforeEachRow)
{
    for (int const rule : {kEvenOdd, kWinding}) {
        HvFillBox const box = {0, 1, 9, 6, false};
        ExpectInterruptsAsTheSlowConverter(
            [&](HvUByteRaster& raster, HvInterrupt interrupted) {
                return HvPolygons_Fill(With(Star(), rule, box), raster, interrupted);
            },
            [&](HvUByteRaster& raster, SlowInterrupt const& interrupted) {
                SlowFill(Star().points, Star().tags, rule, Slow(box), raster, interrupted);
            },
            5);
    }
}

TEST(polygon_fill, AntiAliasedFillAsksBeforeEachRowOrByWindingEachSubrow)
{
    for (int const rule : {kEvenOdd, kWinding}) {
        HvFillBox const box = {0, 1, 9, 6, false};
        ExpectInterruptsAsTheSlowConverter(
            [&](HvUByteRaster& raster, HvInterrupt interrupted) {
                return HvPolygons_AAFill(With(Star(), rule, box), 1.0, raster, interrupted);
            },
            [&](HvUByteRaster& raster, SlowInterrupt const& interrupted) {
                SlowAAFill(Star().points, Star().tags, rule, Slow(box), 1.0, raster, interrupted);
            },
            rule == kEvenOdd ? 5 : 20);
    }
}

TEST(polygon_fill, AllocationsThatFailLeaveTheRasterAndNothingBehind)
{
    Star();  // made once and kept: its own memory is not what is counted
    HvFillBox const box = {0, 0, 9, 7, false};
    auto const prepare = [] { return HvUByteRaster(9, 7, kBefore); };
    auto const check = [](HvUByteRaster& raster, bool completed) {
        EXPECT_EQ(raster.AllPixelValuesAre(kBefore), completed ? 0 : 1);
    };
    EXPECT_GT(RefuseEachAllocation(
                  prepare,
                  [&](HvUByteRaster& raster) {
                      HvPolygons_Fill(With(Star(), kWinding, box), raster, nullptr);
                  },
                  check),
              0);
    EXPECT_GT(RefuseEachAllocation(
                  prepare,
                  [&](HvUByteRaster& raster) {
                      HvPolygons_AAFill(With(Star(), kWinding, box), 1.0, raster, nullptr);
                  },
                  check),
              0);
}

// A raster of 64 megabytes of which the shape takes a corner: what is allocated depends on the box.
TEST(polygon_fill, MemoryIsThatOfThePointsAndTheBox)
{
    std::vector<unsigned char> pixels(std::size_t(8192) * 12);
    auto const bytesOf = [&pixels](int side) {
        unsigned char pixel = 0;
        HvUByteRaster raster(&pixel, 1, 1, false, 0);
        raster.width = side;
        raster.height = side;
        raster.data = pixels.data();
        AllocationCounter const counter;
        HvPolygons_AAFill(With(Star(), kWinding, {0, 0, 9, 7, false}), 1.0, raster, nullptr);
        return counter.Bytes();
    };
    EXPECT_LT(bytesOf(12), 1024u);
    EXPECT_EQ(bytesOf(8192), bytesOf(12));
}

// --- hostile ------------------------------------------------------------------------------------

TEST(polygon_fill, ABoxOfAnotherRasterDoesNotLeadOutside)
{
    HvFillBox const boxes[] = {{-5, -5, 50, 50, false},
                               {3, 3, 1, 1, false},
                               {20, 20, 30, 30, false},
                               {std::numeric_limits<int>::min(), std::numeric_limits<int>::min(),
                                std::numeric_limits<int>::max(), std::numeric_limits<int>::max(),
                                true}};
    for (HvFillBox const& box : boxes) {
        for (int const size : {0, 9}) {
            HvUByteRaster raster(size, size, kBefore);
            EXPECT_EQ(HvPolygons_Fill(With(Star(), kWinding, box), raster, nullptr), 1);
            EXPECT_EQ(HvPolygons_AAFill(With(Star(), kWinding, box), 1.0, raster, nullptr), 1);
        }
    }
}

TEST(polygon_fill, NumbersOfAnyKindStayWithinTheBox)
{
    for (int i = 0; i < 3000; ++i) {
        auto const list = HostilePolygons(static_cast<unsigned int>(i));
        for (int const rule : {kEvenOdd, kWinding}) {
            HvUByteRaster raster(9, 7, kBefore);
            HvFillBox const box = {2, 1, 7, 6, true};
            EXPECT_EQ(HvPolygons_Fill(With(list, rule, box), raster, nullptr), 1);
            EXPECT_EQ(HvPolygons_AAFill(With(list, rule, box), 1.0, raster, nullptr), 1);
            for (int y = 0; y < 7; ++y) {
                for (int x = 0; x < 9; ++x) {
                    if (x < 2 || x >= 7 || y < 1 || y >= 6) {
                        ASSERT_EQ(raster.data[y * 9 + x], kBefore) << i;
                    }
                }
            }
        }
    }
}

TEST(polygon_fill, EdgesToANaNOrdinateAreNone)
{
    double const nan = std::nan("");
    // The square's left side remains, and by winding runs to the end of the box only where it has a
    // partner: alone it has no width.
    auto const list = One({{1, 3}, {1, 0}, {3, nan}});
    for (int const rule : {kEvenOdd, kWinding}) {
        EXPECT_EQ(Pixels(Filled(list, rule, 4, 3)), Bytes(12, 77));
    }
}

}  // namespace
