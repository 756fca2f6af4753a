// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/shape/internal/polygon_clip.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

using Points = std::vector<HvPoint2<double>>;

Points Clipped(Points const& ring, HvExtent2<double> const& clip)
{
    HvPoint2dArray polygon;
    for (HvPoint2<double> const& p : ring) {
        polygon.Add(p);
    }
    HvPoint2dArray spare;
    HvPolygon_Clip(polygon, clip, spare);
    return Points(polygon.begin(), polygon.end());
}

/// How often a ring winds around a point, by the angles between its corners.
double Turns(Points const& ring, HvPoint2<double> const& p)
{
    double turn = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        HvPoint2<double> const a = ring[i] - p;
        HvPoint2<double> const b = ring[(i + 1) % ring.size()] - p;
        turn += std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
    }
    return turn / (2 * 3.14159265358979323846);
}

HvExtent2<double> const kUnit(0, 0, 1, 1);

}  // namespace

TEST(polygon_clip, InsideStaysAsItIs)
{
    Points const triangle = {{0.25, 0.25}, {0.75, 0.25}, {0.5, 1}};
    EXPECT_EQ(Clipped(triangle, kUnit), triangle);
    EXPECT_EQ(Clipped({}, kUnit), Points());
}

TEST(polygon_clip, OutsideLeavesNothing)
{
    EXPECT_EQ(Clipped({{2, 2}, {3, 2}, {3, 3}}, kUnit), Points());
    EXPECT_EQ(Clipped({{-5, 0.5}, {-4, 0.5}, {-4, 0.6}}, kUnit), Points());
}

TEST(polygon_clip, SidesCountAsInside)
{
    Points const square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    EXPECT_EQ(Clipped(square, kUnit), square);
    EXPECT_EQ(Clipped({{1, 0}, {3, 0}, {3, 1}, {1, 1}}, kUnit),
              (Points{{1, 0}, {1, 0}, {1, 1}, {1, 1}}))
        << "the edge that lies on the side stays, met from both ends";
}

TEST(polygon_clip, EntryCanComeFirst)
{
    // The last corner is outside and the first inside: the crossing between them leads.
    EXPECT_EQ(Clipped({{0.5, 0.5}, {0.5, 0.75}, {-0.5, 0.5}}, kUnit),
              (Points{{0, 0.5}, {0.5, 0.5}, {0.5, 0.75}, {0, 0.625}}));
}

TEST(polygon_clip, SidesAreTakenInTheirOrder)
{
    // Around the whole square: the last side, the greatest y, turns its entry to the front.
    EXPECT_EQ(Clipped({{-1, -1}, {3, -1}, {3, 3}, {-1, 3}}, kUnit),
              (Points{{0, 1}, {0, 0}, {1, 0}, {1, 1}}));
}

TEST(polygon_clip, WindingInsideStays)
{
    std::mt19937 random(20261120);
    std::uniform_real_distribution<double> coordinate(-1.5, 2.5);
    std::uniform_real_distribution<double> inside(0.01, 0.99);
    for (int run = 0; run < 500; ++run) {
        Points ring;
        for (int i = 0; i < 3 + run % 8; ++i) {
            ring.emplace_back(coordinate(random), coordinate(random));
        }
        Points const clipped = Clipped(ring, kUnit);
        for (HvPoint2<double> const& p : clipped) {
            EXPECT_TRUE(kUnit.Contains(p)) << p.x << " " << p.y;
        }
        for (int k = 0; k < 20; ++k) {
            HvPoint2<double> const p(inside(random), inside(random));
            EXPECT_NEAR(Turns(clipped, p), Turns(ring, p), 1e-6);
        }
    }
}
