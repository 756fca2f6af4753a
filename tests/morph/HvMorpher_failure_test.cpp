// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

#include <hv/morph/HvMorpher.h>

#include "../support/allocation_failure.h"
#include "morph_support.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Morph = int (HvMorpher::*)(double, HvPath2fProp1d&) const;
constexpr Morph kMorphs[] = {&HvMorpher::LinearMorph, &HvMorpher::TurtleMorph,
                             &HvMorpher::LinearMotionPathMorph};

/// Two outlines with a property, of as many subpaths or not, and a path with something in it.
struct World {
    explicit World(bool isTour)
    {
        HvPoint2dArray points;
        points.Add({0.0, 1.0});
        points.Add({20.0, 5.0});
        first.SetPropCurve(0, points, 1e-9);
        second.SetPropCurve(0, points, 1e-9);
        out.SetPropCurve(0, points, 1e-9);
        if (isTour) {
            AddPolyline(second, {{30, 30}, {40, 40}});
        }
    }

    HvPath2fProp1d first = Polyline({{0, 0}, {10, 0}, {10, 10}});
    HvPath2fProp1d second = Polyline({{0, 0}, {20, 0}});
    HvPath2fProp1d out = Polyline({{1, 1}, {2, 2}});
};

}  // namespace

TEST(HvMorpher_failure, RefusedAllocationsLeaveTheOutputAsItWas)
{
    HvGC const gc = SpacedContext(1.0);
    HvPath2f const road = Polyline({{0, 20}, {0, 24}, {4, 24}});
    for (bool const isTour : {false, true}) {
        HvPath2fProp1d const before = World(isTour).out;
        for (Morph const morph : kMorphs) {
            long const allocations =
                RefuseEachAllocation([&] { return std::make_unique<World>(isTour); },
                                     [&](std::unique_ptr<World>& world) {
                                         HvMorpher morpher(&world->first, &world->second, gc);
                                         morpher.SetMotionPath(0, 0, &road);
                                         morpher.SetMotionPath(2, 1, nullptr);
                                         (morpher.*morph)(0.5, world->out);
                                     },
                                     [&](std::unique_ptr<World>& world, bool completed) {
                                         EXPECT_EQ(AreSame(world->out, before), !completed);
                                     });
            EXPECT_GT(allocations, 5);
        }
    }
}

TEST(HvMorpher_failure, HostileNumbersNeitherHangNorHarm)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    double const numbers[] = {0.0,  -0.0, 5e-324, -1.0,      1e-300,    0.5,
                              1e30, kNaN, 1e308,  kInfinity, -kInfinity};
    for (bool const isTour : {false, true}) {
        for (double const spacing : numbers) {
            for (double const t : numbers) {
                World world(isTour);
                HvPath2fProp1d const before = world.out;
                HvGC gc = SpacedContext(spacing);
                gc.propFlatness = spacing;
                HvMorpher morpher(&world.first, &world.second, gc);
                morpher.SetMotionPath(0, 0, &world.second);
                morpher.SetMotionPath(2, 1, nullptr);
                for (Morph const morph : kMorphs) {
                    HvPath2fProp1d out = before;
                    try {
                        EXPECT_EQ((morpher.*morph)(t, out), 1);
                    } catch (std::bad_alloc const&) {
                        EXPECT_TRUE(AreSame(out, before)) << spacing << ' ' << t;
                    }
                }
            }
        }
    }
}
