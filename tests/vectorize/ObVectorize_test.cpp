// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/ObVectorize.h>

#include <tests/support/allocation_failure.h>
#include <tests/vectorize/trace_support.h>

#include <numeric>
#include <stdexcept>

namespace {

using Rows = std::vector<std::string>;

std::vector<TraceRegion> Trace(Rows const& rows)
{
    return TraceRecorder(RasterOf(rows)).regions;
}

// A single contour of a single region.
std::vector<TraceRegion> One(TraceContour const& contour)
{
    return {{contour}};
}

}  // namespace

// Worked by hand.

TEST(ObVectorize, DrawsASinglePixelAsASquareAtItsPlace)
{
    EXPECT_EQ(Trace({"#"}), One({{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}));
    EXPECT_EQ(Trace({"....", "....", "...#"}), One({{3, 2}, {3, 3}, {4, 3}, {4, 2}, {3, 2}}));
}

TEST(ObVectorize, DrawsARowOverItsLength)
{
    EXPECT_EQ(Trace({".###."}), One({{1, 0}, {1, 1}, {4, 1}, {4, 0}, {1, 0}}));
}

TEST(ObVectorize, DrawsAColumnInThreeStepsOnEachSide)
{
    // The rows between the first and the last have no vertices.
    EXPECT_EQ(Trace({"#", "#", "#", "#"}),
              One({{0, 0}, {0, 1}, {0, 3}, {0, 4}, {1, 4}, {1, 3}, {1, 1}, {1, 0}, {0, 0}}));
}

TEST(ObVectorize, StartsAnUprightUAtItsLeftArm)
{
    EXPECT_EQ(Trace({"#.#", "#.#", "###"}), One({{0, 0},
                                                 {0, 1},
                                                 {0, 2},
                                                 {0, 3},
                                                 {3, 3},
                                                 {3, 2},
                                                 {3, 1},
                                                 {3, 0},
                                                 {2, 0},
                                                 {2, 1},
                                                 {2, 2},
                                                 {1, 2},
                                                 {1, 1},
                                                 {1, 0},
                                                 {0, 0}}));
}

TEST(ObVectorize, MakesAGapThatStaysOpenPartOfTheOuterContour)
{
    EXPECT_EQ(Trace({"###", "#.#", "#.#"}), One({{0, 0},
                                                 {0, 1},
                                                 {0, 2},
                                                 {0, 3},
                                                 {1, 3},
                                                 {1, 2},
                                                 {1, 1},
                                                 {2, 1},
                                                 {2, 2},
                                                 {2, 3},
                                                 {3, 3},
                                                 {3, 2},
                                                 {3, 1},
                                                 {3, 0},
                                                 {0, 0}}));
}

TEST(ObVectorize, TellsAHoleAfterTheOuterContourTheOtherWayRound)
{
    std::vector<TraceRegion> const regions = Trace({"###", "#.#", "###"});
    ASSERT_EQ(regions.size(), 1u);
    ASSERT_EQ(regions[0].size(), 2u);
    EXPECT_EQ(regions[0][0][0], TracePoint(0, 0));
    EXPECT_EQ(regions[0][1], (TraceContour{{1, 2}, {1, 1}, {2, 1}, {2, 2}, {1, 2}}));
}

TEST(ObVectorize, StartsATallHoleWithinItsSide)
{
    std::vector<TraceRegion> const regions = Trace({"###", "#.#", "#.#", "###"});
    ASSERT_EQ(regions.size(), 1u);
    ASSERT_EQ(regions[0].size(), 2u);
    EXPECT_EQ(regions[0][1],
              (TraceContour{{1, 2}, {1, 1}, {2, 1}, {2, 2}, {2, 3}, {1, 3}, {1, 2}}));
}

TEST(ObVectorize, EndsAHoleWithoutASpikeWhereItsLastSideIsItsFirst)
{
    std::vector<TraceRegion> const regions = Trace({"#####", "###.#", ".####"});
    ASSERT_EQ(regions.size(), 1u);
    ASSERT_EQ(regions[0].size(), 2u);
    EXPECT_EQ(regions[0][1], (TraceContour{{3, 2}, {3, 1}, {4, 1}, {4, 2}, {3, 2}}));
}

TEST(ObVectorize, KeepsPixelsApartThatTouchAtACorner)
{
    EXPECT_EQ(Trace({"#.", ".#"}),
              (std::vector<TraceRegion>{{{{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}},
                                        {{{1, 1}, {1, 2}, {2, 2}, {2, 1}, {1, 1}}}}));
}

TEST(ObVectorize, TellsAnEnclosedRegionFirst)
{
    Rows const rows = {"#####", "#...#", "#.#.#", "#...#", "#####"};
    std::vector<TraceRegion> const regions = Trace(rows);
    ASSERT_EQ(regions.size(), 2u);
    EXPECT_EQ(regions[0][0][0], TracePoint(2, 2));
    EXPECT_EQ(regions[1][0][0], TracePoint(0, 0));
    EXPECT_EQ(regions[1].size(), 2u);
}

TEST(ObVectorize, StartsAtTheHighestOfArmsThatJoinBelow)
{
    std::vector<TraceRegion> const regions = Trace({"....#", "..#.#", "#.#.#", "#####"});
    ASSERT_EQ(regions.size(), 1u);
    ASSERT_EQ(regions[0].size(), 1u);
    EXPECT_EQ(regions[0][0][0], TracePoint(4, 0));
}

TEST(ObVectorize, StartsAHoleAtTheHighestOfGapsThatMeetBelow)
{
    std::vector<TraceRegion> const left = Trace({"######", "#.####", "#.##.#", "#....#", "######"});
    ASSERT_EQ(left[0].size(), 2u);
    EXPECT_EQ(left[0][1][0], TracePoint(1, 2));
    std::vector<TraceRegion> const right =
        Trace({"######", "####.#", "#.##.#", "#....#", "######"});
    ASSERT_EQ(right[0].size(), 2u);
    EXPECT_EQ(right[0][1][0], TracePoint(4, 2));
}

TEST(ObVectorize, KeepsTheHolesOfARegionThatAnotherOneAbsorbs)
{
    // The ring on the left begins later than the arm on the right, which absorbs it below.
    std::vector<TraceRegion> const regions = Trace({"....#", "###.#", "#.#.#", "#####"});
    ASSERT_EQ(regions.size(), 1u);
    EXPECT_EQ(regions[0].size(), 2u);
}

// Shapes that single out one branch of the sweep; the model judges them.

TEST(ObVectorize, FollowsEachBranchOfTheSweep)
{
    std::vector<Rows> const shapes = {
        {".#.##.#.", ".####.##"},           // a run without one above joins the one before it
        {"###.", "#.##"},                   // a fork whose first run ends at once
        {"#######", "#.#.#.#"},             // three forks, all ending
        {"#######", "#.#.#.#", "#######"},  // three holes
        {"#.#.#.#", "#######", "#.#.#.#"},
        {"#####", "###.#", ".####"},
        {"..#..", ".###.", "#####", ".###.", "..#.."},
        {"#####", "#...#", "#.#.#", "#...#", "#####"},
        {"#####", "#...#", "#.###", "#...#", "#####"},  // an island that joins its ring
        {"#####", "#...#", "###.#", "#...#", "#####"},
        {"#####", "#.#.#", "#...#", "#####"},
        {"#####", "#.#.#", "#...#", "#.#.#", "#####"},
        {"#.###", "#.#.#", "#.#.#", "###.#", "....#"},  // a spiral
        {"######", "#....#", "#.##.#", "#..#.#", "####.#", ".....#"},
        {"#..", ".#.", "..#"},
        {"##.##", "#####", "##.##"},
        {"##.##.##", ".######.", "##.##.##"},
        {"#.#", ".#.", "#.#"},
        {"#......#", "##....##", ".##..##.", "..####.."},
    };
    for (Rows const& rows : shapes) {
        ExpectTraced(RasterOf(rows));
        Rows upsideDown(rows.rbegin(), rows.rend());
        ExpectTraced(RasterOf(upsideDown));
        Rows mirrored = rows;
        for (std::string& row : mirrored) {
            std::reverse(row.begin(), row.end());
        }
        ExpectTraced(RasterOf(mirrored));
    }
}

TEST(ObVectorize, AgreesWithFloodFillOnAllSmallRasters)
{
    for (auto const& size : {TracePoint(4, 3), TracePoint(3, 4), TracePoint(1, 5), TracePoint(5, 1),
                             TracePoint(2, 2)}) {
        HvUByteRaster raster(size.first, size.second, 0);
        unsigned int const pixels = static_cast<unsigned int>(size.first * size.second);
        for (unsigned int bits = 0; bits < 1u << pixels; ++bits) {
            for (unsigned int i = 0; i < pixels; ++i) {
                raster.data[i] = (bits >> i & 1) != 0 ? kInk : 0;
            }
            ExpectTraced(raster);
            if (HasFailure()) {
                return;
            }
        }
    }
}

TEST(ObVectorize, AgreesWithFloodFillOnRandomRasters)
{
    std::mt19937 engine(20261121);
    for (int i = 0; i < 1500; ++i) {
        int const width = 1 + static_cast<int>(engine() % 18);
        int const height = 1 + static_cast<int>(engine() % 12);
        double const ink = 0.2 + 0.1 * static_cast<double>(engine() % 7);
        ExpectTraced(RandomRaster(width, height, ink, engine));
        if (HasFailure()) {
            return;
        }
    }
}

TEST(ObVectorize, AgreesWithFloodFillOnLargerRandomRasters)
{
    std::mt19937 engine(40);
    for (double const ink : {0.5, 0.6, 0.65, 0.75, 0.9}) {
        ExpectTraced(RandomRaster(40, 40, ink, engine));
        ExpectTraced(RandomRaster(33, 47, ink, engine));
    }
}

TEST(ObVectorize, TurnsWithARasterThatIsTurned)
{
    // What is told of a raster and of its transpose covers the same sides, regions and holes.
    std::mt19937 engine(3);
    for (int i = 0; i < 40; ++i) {
        HvUByteRaster const raster = RandomRaster(13, 9, 0.6, engine);
        HvUByteRaster turned(9, 13, 0);
        for (int y = 0; y < 9; ++y) {
            for (int x = 0; x < 13; ++x) {
                turned.data[x * 9 + y] = raster.data[y * 13 + x];
            }
        }
        auto const contours = [](HvUByteRaster const& r) {
            std::vector<long> areas;
            for (TraceRegion const& region : TraceRecorder(r).regions) {
                for (TraceContour const& contour : region) {
                    areas.push_back(TwiceArea(contour));
                }
            }
            std::sort(areas.begin(), areas.end());
            return areas;
        };
        EXPECT_EQ(contours(raster), contours(turned)) << TextOf(raster);
    }
}

// Edges of what may be given.

TEST(ObVectorize, LooksForOneValueOnly)
{
    HvUByteRaster raster(3, 1, 255);
    raster.data[1] = 0;
    EXPECT_EQ(TraceRecorder(raster, 0, 0, 255).regions.size(), 2u);
    EXPECT_EQ(TraceRecorder(raster, 0, 0, 0).regions.size(), 1u);
    EXPECT_EQ(TraceRecorder(raster, 0, 0, 1).regions.size(), 0u);
}

TEST(ObVectorize, TellsNothingOfRastersWithoutPixels)
{
    EXPECT_TRUE(TraceRecorder(HvUByteRaster(0, 5, kInk)).regions.empty());
    EXPECT_TRUE(TraceRecorder(HvUByteRaster(5, 0, kInk)).regions.empty());
    HvUByteRaster raster(2, 2, kInk);
    unsigned char* const data = raster.data;
    raster.data = nullptr;
    EXPECT_TRUE(TraceRecorder(raster).regions.empty());
    raster.data = data;
    raster.width = -2;
    EXPECT_TRUE(TraceRecorder(raster).regions.empty());
}

TEST(ObVectorize, TracesTheWidestRowsAndRefusesWiderOnes)
{
    for (int const width : {65532, 65533}) {
        HvUByteRaster raster(width, 2, kInk);
        TraceRecorder const whole(raster);
        ASSERT_EQ(whole.regions.size(), 1u);
        EXPECT_EQ(TwiceArea(whole.regions[0][0]), 4L * width);
        // As many runs as there can be: the row buffers are full to the last entry.
        for (int x = 1; x < width; x += 2) {
            raster.data[x] = 0;
        }
        TraceRecorder const comb(raster);
        ASSERT_EQ(comb.regions.size(), 1u);
        EXPECT_EQ(comb.regions[0].size(), 1u);
        // Each gap has two sides more than the border that it opens, but one at the end has none.
        int const gaps = (width - 1) / 2;
        EXPECT_EQ(SidesOf(comb.regions[0][0]).size(),
                  static_cast<std::size_t>(2 * width + 4 + 2 * gaps));
    }
    EXPECT_TRUE(TraceRecorder(HvUByteRaster(65534, 2, kInk)).regions.empty());
}

TEST(ObVectorize, TracesMoreRowsThanSixteenBitsCount)
{
    HvUByteRaster const raster(1, 70000, kInk);
    TraceRecorder const traced(raster);
    ASSERT_EQ(traced.regions.size(), 1u);
    EXPECT_EQ(TwiceArea(traced.regions[0][0]), 140000);
}

TEST(ObVectorize, HandsItsArgumentsToBegin)
{
    struct Seen {
        HvUByteRaster const* raster = nullptr;
        unsigned char value = 0;
        HvExtent2<float> extent;
        int ends = 0;
    };
    Seen seen;
    ObContext context = {};
    context.begin = [](void* user, HvUByteRaster const& raster, unsigned char value,
                       HvExtent2<float> const& extent) {
        *static_cast<Seen*>(user) = {&raster, value, extent, 0};
    };
    context.end = [](void* user) { ++static_cast<Seen*>(user)->ends; };
    context.user = &seen;
    HvUByteRaster const raster(0, 0, 0);
    ObVectorize(context, raster, 9, HvExtent2<float>(1, 2, 3, 4));
    EXPECT_EQ(seen.raster, &raster);
    EXPECT_EQ(seen.value, 9);
    EXPECT_EQ(seen.extent.max.y, 4.0f);
    EXPECT_EQ(seen.ends, 1);
}

// Long combs: the costs of joins and forks add up to no more than their number. Teeth that rise and
// fall make the smaller side the first or the last of each join.

TEST(ObVectorize, JoinsTheTeethOfCombs)
{
    constexpr int kTeeth = 600;
    for (int const direction : {-1, 0, 1}) {
        HvUByteRaster raster(2 * kTeeth - 1, kTeeth + 1, 0);
        for (int tooth = 0; tooth < kTeeth; ++tooth) {
            int const top = direction < 0 ? kTeeth - 1 - tooth : direction > 0 ? tooth : 0;
            for (int y = top; y < kTeeth; ++y) {
                raster.data[y * raster.width + 2 * tooth] = kInk;
                // A staircase of joints, one row below the beginning of the later tooth.
                if (tooth > 0 && y == std::max(top, direction < 0 ? top + 1 : top)) {
                    raster.data[y * raster.width + 2 * tooth - 1] = kInk;
                }
            }
        }
        TraceRecorder const traced(raster);
        ASSERT_EQ(traced.regions.size(), 1u);
        EXPECT_EQ(traced.regions[0].size(), 1u);
        std::size_t const last = static_cast<std::size_t>(direction < 0 ? 2 * kTeeth - 2 : 0);
        EXPECT_EQ(traced.regions[0][0][0], TracePoint(static_cast<int>(last), 0));
    }
}

// Memory and exceptions.

TEST(ObVectorize, NeedsNoMoreMemoryForManySmallRegionsThanForOneRowOfThem)
{
    auto const bytes = [](int height) {
        HvUByteRaster raster(64, height, 0);
        for (int i = 0; i < 64 * height; ++i) {
            raster.data[i] = (i + i / 64) % 2 == 0 ? kInk : 0;
        }
        AllocationCounter const counter;
        TraceRecorder const traced(raster);
        EXPECT_EQ(traced.regions.size(), static_cast<std::size_t>(32 * height));
        EXPECT_EQ(counter.Live(), 0);
        return counter.Bytes();
    };
    EXPECT_EQ(bytes(4), bytes(200));
}

TEST(ObVectorize, GivesBackAllMemoryWhenACallbackThrows)
{
    HvUByteRaster const raster =
        RasterOf({"#######", "#.#...#", "#.#.#.#", "#...#.#", "#.#.#.#", "#######", "#.....#"});
    for (int calls = 0; calls < 60; ++calls) {
        AllocationCounter const counter;
        std::vector<unsigned short> rows[3];
        for (auto& row : rows) {
            row.resize(10);
        }
        int left = calls;
        ObContext context = {};
        context.begin = [](void*, HvUByteRaster const&, unsigned char, HvExtent2<float> const&) {};
        context.beginRegion = [](void*) {};
        context.moveto = context.lineto = [](int, int, void* user) {
            if ((*static_cast<int*>(user))-- == 0) {
                throw std::runtime_error("enough");
            }
        };
        context.endRegion = context.end = [](void*) {};
        context.user = &left;
        for (int i = 0; i < 3; ++i) {
            context.rows[i] = rows[i].data();
        }
        bool completed = true;
        try {
            ObVectorize(context, raster, kInk, HvExtent2<float>());
        } catch (std::runtime_error const&) {
            completed = false;
        }
        EXPECT_EQ(completed, left >= 0);
        EXPECT_EQ(counter.Live(), 0);
        // The context serves again.
        left = 1000;
        ObVectorize(context, raster, kInk, HvExtent2<float>());
        EXPECT_LT(left, 1000);
    }
}
