// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/vectorize/HvVectorizer.h>

#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>
#include <tests/support/allocation_failure.h>
#include <tests/vectorize/trace_support.h>

#include <limits>
#include <thread>

namespace {

using Point = HvPoint2<float>;

/// The points of each subpath.
std::vector<TraceContour> SubpathsOf(HvPath2f const& path)
{
    std::vector<TraceContour> subpaths;
    HvPath2fIter iter(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (iter.GetNextSubPathIndices(first, last) != 0) {
        subpaths.emplace_back();
        for (unsigned int i = first; i <= last; ++i) {
            Point const p = path.GetPoint(i);
            subpaths.back().emplace_back(static_cast<int>(p.x), static_cast<int>(p.y));
        }
    }
    return subpaths;
}

/// What a contour must be in a path: without the points within a straight stretch, but for the
/// first one.
TraceContour Merged(TraceContour const& contour)
{
    TraceContour merged;
    for (TracePoint const& p : contour) {
        std::size_t const n = merged.size();
        bool const isStraight =
            n >= 2 &&
            ((merged[n - 2].first == merged[n - 1].first && merged[n - 1].first == p.first) ||
             (merged[n - 2].second == merged[n - 1].second && merged[n - 1].second == p.second));
        if (isStraight) {
            merged.back() = p;
        } else {
            merged.push_back(p);
        }
    }
    return merged;
}

unsigned int Vectorize(HvUByteRaster const& raster, HvPath2f& path)
{
    return HvVectorizer(0, 0).Vectorize(raster, kInk, HvExtent2<float>(), path);
}

/// Draws the contours of the ink, by both rules, and expects the ink. A fill is fat on the right by
/// the pixel that holds the end; in twice the width the odd columns do not see it.
void ExpectRefilled(HvUByteRaster const& raster)
{
    SCOPED_TRACE(TextOf(raster));
    HvPath2f path(0);
    Vectorize(raster, path);
    HvGC gc;
    gc.transform.Scale(2, 1, 1);
    for (int const rule : {0, 1}) {
        gc.fillRule = rule;
        HvUByteRaster filled(2 * raster.width, raster.height, 0);
        path.Fill(gc, filled, nullptr);
        for (std::size_t i = 0; i < raster.NumPixels(); ++i) {
            ASSERT_EQ(filled.data[2 * i + 1] != 0, raster.data[i] == kInk)
                << "rule " << rule << ", pixel " << i;
        }
    }
}

HvUByteRaster Nested(int size)
{
    HvUByteRaster raster(size, size, 0);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            int const ring = std::min(std::min(x, y), std::min(size - 1 - x, size - 1 - y));
            raster.data[y * size + x] = ring % 2 == 0 ? kInk : 0;
        }
    }
    return raster;
}

/// One arm that winds into the middle, with a gap of one pixel between its turns.
HvUByteRaster Spiral(int size)
{
    HvUByteRaster raster(size, size, 0);
    auto const isInk = [&](int x, int y) {
        return x >= 0 && x < size && y >= 0 && y < size && raster.data[y * size + x] == kInk;
    };
    int x = 0;
    int y = 0;
    int dx = 1;
    int dy = 0;
    raster.data[0] = kInk;
    for (int turns = 0; turns < 2;) {
        int const nx = x + dx;
        int const ny = y + dy;
        if (nx < 0 || nx >= size || ny < 0 || ny >= size || isInk(nx, ny) ||
            isInk(nx + dx, ny + dy)) {
            int const turned = dx;
            dx = -dy;
            dy = turned;
            ++turns;
            continue;
        }
        turns = 0;
        x = nx;
        y = ny;
        raster.data[y * size + x] = kInk;
    }
    return raster;
}

}  // namespace

// Worked by hand.

TEST(HvVectorizer, AppendsASinglePixelAsAClosedSquare)
{
    HvUByteRaster raster(5, 4, 0);
    raster.data[2 * 5 + 3] = kInk;
    HvPath2f path(0);
    EXPECT_EQ(Vectorize(raster, path), 5u);
    EXPECT_EQ(SubpathsOf(path),
              (std::vector<TraceContour>{{{3, 2}, {3, 3}, {4, 3}, {4, 2}, {3, 2}}}));
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_EQ(path.LargestDegree(), 1u);
}

TEST(HvVectorizer, AppendsARectangleAsFiveCalls)
{
    HvUByteRaster const raster(7, 3, kInk);
    HvPath2f path(0);
    EXPECT_EQ(Vectorize(raster, path), 5u);
    EXPECT_EQ(SubpathsOf(path),
              (std::vector<TraceContour>{{{0, 0}, {0, 3}, {7, 3}, {7, 0}, {0, 0}}}));
}

TEST(HvVectorizer, StartsATallHoleWithinItsSide)
{
    HvPath2f path(0);
    EXPECT_EQ(Vectorize(RasterOf({"###", "#.#", "#.#", "###"}), path), 5u + 6u);
    std::vector<TraceContour> const subpaths = SubpathsOf(path);
    ASSERT_EQ(subpaths.size(), 2u);
    EXPECT_EQ(subpaths[1], (TraceContour{{1, 2}, {1, 1}, {2, 1}, {2, 3}, {1, 3}, {1, 2}}));
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_EQ(path.IsSubpathClosed(5), 1);
}

TEST(HvVectorizer, ReturnsZeroForARasterWithoutTheValue)
{
    HvPath2f path(0);
    path.Moveto(Point(1, 2));
    EXPECT_EQ(Vectorize(HvUByteRaster(9, 9, 1), path), 0u);
    EXPECT_EQ(Vectorize(HvUByteRaster(0, 9, kInk), path), 0u);
    EXPECT_EQ(Vectorize(HvUByteRaster(65534, 1, kInk), path), 0u);
    HvUByteRaster hollow(2, 2, kInk);
    unsigned char* const data = hollow.data;
    hollow.data = nullptr;
    hollow.width = -5;
    EXPECT_EQ(Vectorize(hollow, path), 0u);
    hollow.width = std::numeric_limits<int>::max();
    EXPECT_EQ(Vectorize(hollow, path), 0u);
    hollow.data = data;
    EXPECT_EQ(path.NumPoints(), 1u);
}

TEST(HvVectorizer, AppendsToAPathAndLeavesWhatItHolds)
{
    HvPath2f path(0);
    path.Moveto(Point(0, 0));
    path.Lineto(Point(0, 1));
    path.Lineto(Point(5, 1));
    HvPath2f pixel(0);
    Vectorize(HvUByteRaster(1, 1, kInk), pixel);
    EXPECT_EQ(Vectorize(HvUByteRaster(1, 1, kInk), path), 5u);
    EXPECT_EQ(path.NumPoints(), 8u);
    EXPECT_EQ(path.IsSubpathClosed(0), 0);
    EXPECT_EQ(SubpathsOf(path)[1], SubpathsOf(pixel)[0]);
}

TEST(HvVectorizer, TakesNoNoticeOfTheExtent)
{
    HvUByteRaster const raster = RasterOf({"##.", ".##"});
    HvPath2f plain(0);
    HvPath2f other(0);
    HvVectorizer const vectorizer(0, 0);
    vectorizer.Vectorize(raster, kInk, HvExtent2<float>(), plain);
    vectorizer.Vectorize(raster, kInk, HvExtent2<float>(5, 6, 7, 8), other);
    EXPECT_EQ(SubpathsOf(plain), SubpathsOf(other));
}

// Thresholds.

TEST(HvVectorizer, TakesAbsoluteValuesInItsSettersOnly)
{
    HvUByteRaster const raster(2, 2, kInk);  // area 1, perimeter 4
    auto const isKept = [&](HvVectorizer const& vectorizer) {
        HvPath2f path(0);
        return vectorizer.Vectorize(raster, kInk, HvExtent2<float>(), path) != 0;
    };
    HvVectorizer vectorizer(-5, -5);
    EXPECT_TRUE(isKept(vectorizer));
    vectorizer.SetPerimeterThreshold(-4);
    EXPECT_TRUE(isKept(vectorizer));
    vectorizer.SetPerimeterThreshold(-4.5);
    EXPECT_FALSE(isKept(vectorizer));
    vectorizer.SetPerimeterThreshold(0);
    vectorizer.SetAreaThreshold(-1);
    EXPECT_TRUE(isKept(vectorizer));
    vectorizer.SetAreaThreshold(-1.5);
    EXPECT_FALSE(isKept(vectorizer));
    vectorizer.SetAreaThreshold(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(isKept(vectorizer));
    EXPECT_FALSE(isKept(HvVectorizer(0, 1.5)));
    EXPECT_FALSE(isKept(HvVectorizer(4.5, 0)));
    EXPECT_TRUE(isKept(HvVectorizer(4, 1)));
}

// Against what the tracer tells, and against the pixels.

TEST(HvVectorizer, MergesStraightStretchesAndClosesEachContour)
{
    std::mt19937 engine(11);
    for (int i = 0; i < 400; ++i) {
        HvUByteRaster const raster = RandomRaster(
            1 + static_cast<int>(engine() % 14), 1 + static_cast<int>(engine() % 14), 0.65, engine);
        SCOPED_TRACE(TextOf(raster));
        std::vector<TraceContour> expected;
        std::size_t points = 0;
        for (TraceRegion const& region : TraceRecorder(raster).regions) {
            for (TraceContour const& contour : region) {
                expected.push_back(Merged(contour));
                points += expected.back().size();
                EXPECT_GE(expected.back().size(), 5u);
            }
        }
        HvPath2f path(0);
        EXPECT_EQ(Vectorize(raster, path), points);
        EXPECT_EQ(path.NumPoints(), points);
        EXPECT_EQ(SubpathsOf(path), expected);
        for (unsigned int p = 0; p < path.NumPoints(); ++p) {
            ASSERT_EQ(path.IsSubpathClosed(p), 1);
        }
    }
}

TEST(HvVectorizer, GivesOutlinesThatFillJustTheirPixels)
{
    std::mt19937 engine(12);
    for (int width = 1; width <= 20; ++width) {
        for (int height = 1; height <= 20; ++height) {
            double const ink = 0.3 + 0.1 * static_cast<double>(engine() % 6);
            ExpectRefilled(RandomRaster(width, height, ink, engine));
            if (HasFailure()) {
                return;
            }
        }
    }
}

TEST(HvVectorizer, GivesOutlinesOfManyRastersThatFillJustTheirPixels)
{
    std::mt19937 engine(13);
    for (int i = 0; i < 1200; ++i) {
        int const width = 1 + static_cast<int>(engine() % 13);
        int const height = 1 + static_cast<int>(engine() % 9);
        ExpectRefilled(RandomRaster(width, height, 0.6, engine));
        if (HasFailure()) {
            return;
        }
    }
}

TEST(HvVectorizer, GivesOutlinesOfNestedShapesThatFillJustTheirPixels)
{
    for (int const size : {1, 2, 3, 4, 5, 8, 17, 32, 33}) {
        ExpectRefilled(Nested(size));
        ExpectRefilled(Spiral(size));
        ExpectRefilled(HvUByteRaster(size, size, kInk));
        ExpectRefilled(HvUByteRaster(size, size, 0));
        HvUByteRaster diagonal(size, size, 0);
        HvUByteRaster checkers(size, size, 0);
        for (int y = 0; y < size; ++y) {
            diagonal.data[y * size + y] = kInk;
            for (int x = 0; x < size; ++x) {
                checkers.data[y * size + x] = (x + y) % 2 == 0 ? kInk : 0;
            }
        }
        ExpectRefilled(diagonal);
        ExpectRefilled(checkers);
    }
}

TEST(HvVectorizer, FollowsASpiralAsOneContour)
{
    HvPath2f path(0);
    Vectorize(Spiral(33), path);
    EXPECT_EQ(path.NumSubpaths(), 1u);
}

TEST(HvVectorizer, AppendsManyAndLongContoursAsTheyAreTold)
{
    // Many more corners than are appended at once, in short contours and in a few long ones.
    std::mt19937 engine(14);
    for (double const ink : {0.1, 0.7, 0.9}) {
        HvUByteRaster const raster = RandomRaster(150, 140, ink, engine);
        std::vector<TraceContour> expected;
        for (TraceRegion const& region : TraceRecorder(raster).regions) {
            for (TraceContour const& contour : region) {
                expected.push_back(Merged(contour));
            }
        }
        HvPath2f path(0);
        unsigned int const points = Vectorize(raster, path);
        EXPECT_GT(points, 5000u);
        EXPECT_EQ(points, path.NumPoints());
        EXPECT_EQ(SubpathsOf(path), expected);
        EXPECT_EQ(path.NumNodesExceptLastNodeOfClosedSubpaths(),
                  points - static_cast<unsigned int>(expected.size()));
    }
}

TEST(HvVectorizer, DrawsWideRastersWithinFloat)
{
    HvUByteRaster raster(65533, 1, 0);
    raster.data[65532] = kInk;
    HvPath2f path(0);
    Vectorize(raster, path);
    EXPECT_EQ(path.GetPoint(2), Point(65533, 1));
}

// Memory and threads.

TEST(HvVectorizer_failure, LeavesAUsablePathWhenThereIsNoMemory)
{
    HvUByteRaster const raster =
        RasterOf({"#######.#", "#.#...#.#", "#.#.#.#..", "#...#.###", "#.#.#.#..", "#######.#"});
    struct Scene {
        HvVectorizer vectorizer{0, 0};
        HvPath2f path{0};
    };
    HvPath2f whole(0);
    Vectorize(raster, whole);
    std::vector<TraceContour> const all = SubpathsOf(whole);
    long const allocations = RefuseEachAllocation(
        [] { return Scene(); },
        [&](Scene& scene) {
            scene.vectorizer.Vectorize(raster, kInk, HvExtent2<float>(), scene.path);
        },
        [&](Scene& scene, bool completed) {
            std::vector<TraceContour> const found = SubpathsOf(scene.path);
            EXPECT_EQ(completed, scene.path.NumPoints() == whole.NumPoints());
            ASSERT_LE(found.size(), all.size());
            for (std::size_t i = 0; i < found.size(); ++i) {
                EXPECT_EQ(found[i], all[i]) << "not whole";
            }
            scene.path.Moveto(Point(1, 1));
            scene.path.Lineto(Point(2, 2));
        });
    EXPECT_GE(allocations, 3 + 3);  // the rows, and the first of each kind of node
}

TEST(HvVectorizer_failure, KeepsTheContoursThatWereAppendedBeforeMemoryRanOut)
{
    // More corners than are appended at once.
    HvUByteRaster raster(200, 60, 0);
    for (int i = 0; i < 200 * 60; ++i) {
        raster.data[i] = (i + i / 200) % 2 == 0 ? kInk : 0;
    }
    struct Scene {
        HvVectorizer vectorizer{0, 0};
        HvPath2f path{0};
    };
    HvPath2f whole(0);
    Vectorize(raster, whole);
    std::vector<TraceContour> const all = SubpathsOf(whole);
    bool areSomeKept = false;
    RefuseEachAllocation([] { return Scene(); },
                         [&](Scene& scene) {
                             scene.vectorizer.Vectorize(raster, kInk, HvExtent2<float>(),
                                                        scene.path);
                         },
                         [&](Scene& scene, bool completed) {
                             std::vector<TraceContour> const found = SubpathsOf(scene.path);
                             areSomeKept = areSomeKept || (!completed && !found.empty());
                             ASSERT_LE(found.size(), all.size());
                             EXPECT_TRUE(std::equal(found.begin(), found.end(), all.begin()));
                             EXPECT_EQ(completed, found.size() == all.size());
                         });
    EXPECT_TRUE(areSomeKept);
}

TEST(HvVectorizer_failure, MakesNothingWhenThereIsNoMemoryForItself)
{
    RefuseEachAllocation([] { HvVectorizer const vectorizer(1, 2); });
}

TEST(HvVectorizer_threads, ServesEightThreadsAtOnce)
{
    std::mt19937 engine(21);
    HvUByteRaster const raster = RandomRaster(60, 60, 0.6, engine);
    HvVectorizer const vectorizer(0, 0);
    HvPath2f alone(0);
    unsigned int const points = vectorizer.Vectorize(raster, kInk, HvExtent2<float>(), alone);
    std::vector<TraceContour> const expected = SubpathsOf(alone);
    std::vector<std::thread> threads;
    std::vector<int> same(8, 0);
    for (std::size_t i = 0; i < same.size(); ++i) {
        threads.emplace_back([&, i] {
            bool isSame = true;
            for (int round = 0; round < 4; ++round) {
                HvPath2f path(0);
                isSame = isSame &&
                         vectorizer.Vectorize(raster, kInk, HvExtent2<float>(), path) == points;
                isSame = isSame && SubpathsOf(path) == expected;
            }
            same[i] = isSame ? 1 : 0;
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(same, std::vector<int>(8, 1));
}
