// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/raster/HvDoubleRaster.h>

#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace {

using Metric = std::function<double(double, double)>;

double LInfinity(double dx, double dy)
{
    return std::max(dx, dy);
}

double SquaredEuclidean(double dx, double dy)
{
    return dx * dx + dy * dy;
}

/// The propagation written down plainly, with one function for a candidate.
std::vector<double> Propagated(HvUByteRaster const& mask, int w, int h, Metric const& metric)
{
    std::vector<double> dx(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
    std::vector<double> dy(dx.size());
    auto const at = [&](int x, int y) { return static_cast<std::size_t>(y * w + x); };
    for (std::size_t i = 0; i < dx.size(); ++i) {
        dx[i] = dy[i] = mask.data[i] == 1 ? 0 : std::max(w, h) + 1;
    }
    auto const offer = [&](int x, int y, double candidateX, double candidateY) {
        double& ownX = dx[at(x, y)];
        double& ownY = dy[at(x, y)];
        if (metric(ownX, ownY) > metric(candidateX, candidateY)) {
            ownX = candidateX;
            ownY = candidateY;
        }
    };
    auto const sweep = [&](int y, int neighbour) {
        for (int x = 0; x <= w - 1; ++x) {
            offer(x, y, dx[at(x, neighbour)], dy[at(x, neighbour)] + 1);
        }
        for (int x = 0; x <= w - 2; ++x) {
            offer(x + 1, y, dx[at(x, y)] + 1, dy[at(x, y)]);
        }
        for (int x = w - 2; x >= 0; --x) {
            offer(x, y, dx[at(x + 1, y)] + 1, dy[at(x + 1, y)]);
        }
    };
    for (int y = 1; y <= h - 1; ++y) {
        sweep(y, y - 1);
    }
    for (int y = h - 2; y >= 0; --y) {
        sweep(y, y + 1);
    }
    std::vector<double> result(dx.size());
    for (std::size_t i = 0; i < dx.size(); ++i) {
        result[i] = metric(dx[i], dy[i]);
    }
    return result;
}

/// The true distance of each pixel from the nearest seed.
std::vector<double> BruteForce(HvUByteRaster const& mask, Metric const& metric)
{
    std::vector<double> result;
    for (int y = 0; y < mask.height; ++y) {
        for (int x = 0; x < mask.width; ++x) {
            double least = std::numeric_limits<double>::infinity();
            for (int sy = 0; sy < mask.height; ++sy) {
                for (int sx = 0; sx < mask.width; ++sx) {
                    if (mask.data[sy * mask.width + sx] == 1) {
                        least = std::min(least, metric(std::abs(sx - x), std::abs(sy - y)));
                    }
                }
            }
            result.push_back(least);
        }
    }
    return result;
}

std::vector<double> LInfinityMap(HvUByteRaster const& mask)
{
    HvDoubleRaster map(mask.width, mask.height, -7);
    map.SetToLInfinityDistanceMap(mask);
    return {map.data, map.data + map.NumPixels()};
}

std::vector<double> SquaredMap(HvUByteRaster const& mask)
{
    HvDoubleRaster map(mask.width, mask.height, -7);
    map.SetToSquaredEuclideanDistanceMap(mask);
    return {map.data, map.data + map.NumPixels()};
}

HvUByteRaster RandomMask(int width, int height, int seedsInHundred)
{
    HvUByteRaster mask(width, height, 0);
    for (std::size_t i = 0; i < mask.NumPixels(); ++i) {
        int const pick = PickInRange(0, 100);
        mask.data[i] = static_cast<unsigned char>(pick < seedsInHundred ? 1
                                                  : pick % 4 == 1       ? 3
                                                                        : pick % 4);
    }
    return mask;
}

TEST(HvDoubleRaster_distance, EveryStepIsThatOfThePlainPropagation)
{
    rc::check([] {
        int const seeds = PickInRange(0, 3) == 0 ? 40 : PickInRange(0, 6);
        auto const mask = RandomMask(PickInRange(0, 18), PickInRange(0, 18), seeds);
        RC_ASSERT(LInfinityMap(mask) == Propagated(mask, mask.width, mask.height, LInfinity));
        auto squared = Propagated(mask, mask.width, mask.height, SquaredEuclidean);
        for (std::size_t i = 0; i < squared.size(); ++i) {
            squared[i] = mask.data[i] == 2 ? -squared[i] : squared[i];
        }
        RC_ASSERT(SquaredMap(mask) == squared);
    });
}

TEST(HvDoubleRaster_distance, IsExactForOneSeed)
{
    for (int seed = 0; seed < 6 * 5; ++seed) {
        HvUByteRaster mask(6, 5, 0);
        mask.data[seed] = 1;
        EXPECT_EQ(LInfinityMap(mask), BruteForce(mask, LInfinity)) << seed;
        EXPECT_EQ(SquaredMap(mask), BruteForce(mask, SquaredEuclidean)) << seed;
    }
}

// Every value is the distance of some seed. And each step of the propagation makes a distance
// longer by at most 1, so that none exceeds the number of steps to the nearest seed.
TEST(HvDoubleRaster_distance, LiesBetweenTheTrueDistanceAndTheStepsToASeed)
{
    rc::check([] {
        auto mask = RandomMask(PickInRange(2, 18), PickInRange(2, 18), PickInRange(1, 30));
        std::replace(mask.data, mask.data + mask.NumPixels(), 2, 0);
        mask.data[PickInRange(0, mask.width * mask.height)] = 1;
        auto const squared = SquaredMap(mask);
        auto const greatest = LInfinityMap(mask);
        auto const trueSquared = BruteForce(mask, SquaredEuclidean);
        auto const trueGreatest = BruteForce(mask, LInfinity);
        auto const steps = BruteForce(mask, [](double dx, double dy) { return dx + dy; });
        for (std::size_t i = 0; i < steps.size(); ++i) {
            RC_ASSERT(squared[i] >= trueSquared[i]);
            RC_ASSERT(squared[i] <= steps[i] * steps[i]);
            RC_ASSERT(greatest[i] >= trueGreatest[i]);
            RC_ASSERT(greatest[i] <= steps[i]);
        }
    });
}

TEST(HvDoubleRaster_distance, WithoutASeedEveryPixelKeepsTheFirstOffset)
{
    HvUByteRaster const mask(4, 7, 0);
    EXPECT_EQ(LInfinityMap(mask), std::vector<double>(28, 8.0));
    EXPECT_EQ(SquaredMap(mask), std::vector<double>(28, 128.0));
}

TEST(HvDoubleRaster_distance, TheInsideIsNegativeInTheSquaredMapAlone)
{
    HvUByteRaster mask(2, 2, 2);
    mask.data[0] = 1;
    EXPECT_EQ(SquaredMap(mask), (std::vector<double>{0, -1, -1, -2}));
    EXPECT_EQ(LInfinityMap(mask), (std::vector<double>{0, 1, 1, 1}));
}

TEST(HvDoubleRaster_distance, OneRowIsNotSwept)
{
    HvUByteRaster mask(4, 1, 0);
    mask.data[1] = 1;
    EXPECT_EQ(LInfinityMap(mask), (std::vector<double>{5, 0, 5, 5}));
}

TEST(HvDoubleRaster_distance, OneColumnIsWalkedBothWays)
{
    HvUByteRaster mask(1, 4, 0);
    mask.data[2] = 1;
    EXPECT_EQ(SquaredMap(mask), (std::vector<double>{4, 1, 0, 1}));
}

// Beyond 32765 pixels on a side the offsets no longer fit 16 bits.
TEST(HvDoubleRaster_distance, HoldsForTheLongestRasters)
{
    for (int const length : {32764, 32765, 32766, 40000}) {
        for (bool const isTall : {true, false}) {
            HvUByteRaster mask(isTall ? 2 : length, isTall ? length : 2, 0);
            mask.data[0] = 1;
            auto const map = SquaredMap(mask);
            double const far = length - 1.0;
            EXPECT_EQ(map.back(), far * far + 1) << length;
            mask.data[0] = 0;
            double const first = length + 1.0;
            EXPECT_EQ(SquaredMap(mask), std::vector<double>(mask.NumPixels(), 2 * first * first));
        }
    }
}

TEST(HvDoubleRaster_distance, AMaskOfFewerPixelsIsRefused)
{
    HvDoubleRaster map(3, 3, -7);
    map.SetToLInfinityDistanceMap(HvUByteRaster(2, 4, 1));
    map.SetToSquaredEuclideanDistanceMap(HvUByteRaster(0, 9, 1));
    EXPECT_TRUE(std::all_of(map.data, map.data + 9, [](double v) { return v == -7; }));
    map.SetToLInfinityDistanceMap(HvUByteRaster(1, 9, 1));
    EXPECT_TRUE(std::all_of(map.data, map.data + 9, [](double v) { return v == 0; }));
}

TEST(HvDoubleRaster_distance, WithoutMemoryTheRasterStays)
{
    HvUByteRaster const mask(3, 3, 1);
    auto const check = [](HvDoubleRaster& map, bool completed) {
        EXPECT_EQ(map.data[4], completed ? 0.0 : -7.0);
    };
    auto const prepare = [] { return HvDoubleRaster(3, 3, -7); };
    EXPECT_EQ(
        RefuseEachAllocation(
            prepare, [&](HvDoubleRaster& map) { map.SetToLInfinityDistanceMap(mask); }, check),
        2);
    EXPECT_EQ(RefuseEachAllocation(
                  prepare, [&](HvDoubleRaster& map) { map.SetToSquaredEuclideanDistanceMap(mask); },
                  check),
              2);
}

}  // namespace
