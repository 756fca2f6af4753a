// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Levels of a property path.

#include <hv/pathbuild/HvMipPath2fProp1d.h>

#include <tests/platform/run_threads.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "prop_path_support.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A wavy line of many points with a wavy property, a closed ring and a lone point.
OpenProp Wave()
{
    OpenProp path;
    path.Moveto({0, 0});
    HvRawFCurve curve(0.0, 5.0);
    for (int i = 1; i <= 200; ++i) {
        float const x = static_cast<float>(i);
        path.Lineto({x, 10 * std::sin(x * 0.1F) + 0.2F * std::sin(x * 2)});
        curve.AppendLinearSegment({1.2 * i, 5 + std::sin(i * 0.05) + 0.02 * std::sin(3.0 * i)});
    }
    path.SetPropCurve(0, curve);
    path.Moveto({5, 5});
    path.SetPropCurve(201, Constant(3));
    path.Moveto({100, 50});
    for (int i = 1; i <= 100; ++i) {
        float const angle = 0.0628318531F * static_cast<float>(i);
        path.Lineto({80 + 20 * std::cos(angle), 50 + 20 * std::sin(angle)});
    }
    path.Lineto({100, 50});
    path.Closeto();
    return path;
}

double DistanceToSegment(PropPoint const& p, PropPoint const& a, PropPoint const& b)
{
    double const dx = double(b.x) - a.x, dy = double(b.y) - a.y;
    double const px = double(p.x) - a.x, py = double(p.y) - a.y;
    double const square = dx * dx + dy * dy;
    double const t = square > 0 ? std::min(1.0, std::max(0.0, (px * dx + py * dy) / square)) : 0.0;
    return std::hypot(px - t * dx, py - t * dy);
}

/// The greatest distance of a point of the one line from the other line.
double Distance(HvPoint2fArray const& from, HvPoint2fArray const& to)
{
    double greatest = 0;
    for (PropPoint const& p : from) {
        double least = std::numeric_limits<double>::infinity();
        for (unsigned int i = 1; i < to.Size(); ++i) {
            least = std::min(least, DistanceToSegment(p, to[i - 1], to[i]));
        }
        greatest = std::max(greatest, least);
    }
    return greatest;
}

HvPoint2fArray FlattenedAt(HvPath2f const& path, unsigned int i)
{
    HvPoint2fArray line;
    path.FlattenSubpath(i, 0.01, line);
    return line;
}

}  // namespace

TEST(HvMipPath2fProp1d, EveryLevelIsWithinItsTolerance)
{
    OpenProp const source = Wave();
    HvMipPath2fProp1d const mip(source, 0.125, 0.01);
    ASSERT_EQ(mip.NumLevels(), 12u);  // 0.125 * 2^11 is 256, the first not below the 200 of x
    unsigned int pointsBefore = source.NumPoints();
    unsigned int keysBefore = source.GetPropCurve(0)->GetNumKeys();
    for (unsigned int k = 0; k < mip.NumLevels(); ++k) {
        SCOPED_TRACE(k);
        double const tolerance = 0.125 * double(1u << k);
        EXPECT_EQ(mip.LevelTolerance(k), tolerance);
        HvMipPath2fProp1d::LevelPath const level = mip.Level(k);
        ASSERT_EQ(level->NumSubpaths(), 3u);
        unsigned int start = 0;
        unsigned int end = 0;
        level->GetSubpathIndices(0, start, end);
        // The polylines by which it is measured are off by another hundredth.
        EXPECT_LE(Distance(FlattenedAt(source, 0), FlattenedAt(*level, 0)), tolerance + 0.03);
        EXPECT_LE(Distance(FlattenedAt(source, 202), FlattenedAt(*level, end + 2)),
                  tolerance + 0.03);
        EXPECT_EQ(level->IsSubpathClosed(end + 2), 1);
        EXPECT_EQ(level->GetPoint(end + 1), PropPoint(5, 5));
        for (int i = 0; i <= 200; ++i) {
            double const s = 1.2 * i;
            EXPECT_LE(std::fabs(level->EvalPropCurve(0, s) - source.EvalPropCurve(0, s)),
                      0.01 * double(1u << k) + 1e-12);
        }
        EXPECT_EQ(level->EvalPropCurve(end + 1, 0), 3.0);
        EXPECT_EQ(level->HasPropCurve(end + 2), 0);
        EXPECT_EQ(level->GetLargestArcLength(0), source.GetLargestArcLength(0));
        EXPECT_LE(level->NumPoints(), pointsBefore);
        EXPECT_LE(level->GetPropCurve(0)->GetNumKeys(), keysBefore);
        pointsBefore = level->NumPoints();
        keysBefore = level->GetPropCurve(0)->GetNumKeys();
    }
    EXPECT_LT(pointsBefore, 20u);
    EXPECT_EQ(keysBefore, 2u);
}

TEST(HvMipPath2fProp1d, LevelsAreBuiltOnce)
{
    HvMipPath2fProp1d const mip(Wave(), 0.5, 0.1);
    HvMipPath2fProp1d::LevelPath const level = mip.Level(1);
    AllocationCounter const counter;
    EXPECT_EQ(mip.Level(1), level);
    EXPECT_EQ(mip.Level(1), level);
    EXPECT_EQ(counter.Allocations(), 0);
    EXPECT_NE(mip.Level(2), level);
    EXPECT_EQ(mip.Level(99), mip.Level(mip.NumLevels() - 1));
    EXPECT_EQ(mip.LevelTolerance(99), mip.LevelTolerance(mip.NumLevels() - 1));
}

TEST(HvMipPath2fProp1d, EditsDropTheLevels)
{
    HvMipPath2fProp1d mip(Wave(), 0.5, 0.1);
    HvMipPath2fProp1d::LevelPath const level = mip.Level(1);
    unsigned int const points = level->NumPoints();
    {
        HvMipPath2fProp1d::Edit const source(mip);
        EXPECT_EQ(source->NumSubpaths(), 3u);
        (*source).RemoveSubpath(0);
    }
    EXPECT_EQ(level->NumPoints(), points);  // ours stays
    EXPECT_EQ(mip.Level(1)->NumSubpaths(), 2u);
    mip.SetSource(ThreeLines());
    EXPECT_EQ(mip.Level(1)->NumSubpaths(), 3u);
    EXPECT_EQ(KeysOf(*mip.Level(0)).size(), 3u);
}

TEST(HvMipPath2fProp1d, WithoutAToleranceTheOneLevelIsACopy)
{
    OpenProp const source = Wave();
    for (double const tolerance : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        HvMipPath2fProp1d const mip(source, tolerance, 0.0);
        EXPECT_EQ(mip.NumLevels(), 1u);
        EXPECT_EQ(mip.LevelForScale(1e9), 0u);
        EXPECT_EQ(mip.Level(0)->IsSiblingOf(source), 1);
    }
}

TEST(HvMipPath2fProp1d, LevelsEndWhereTheToleranceIsThePath)
{
    OpenProp path;
    EXPECT_EQ(HvMipPath2fProp1d(path, 1, 1).NumLevels(), 1u);
    EXPECT_EQ(HvMipPath2fProp1d(path, 1, 1).Level(0)->NumPoints(), 0u);
    path.AddLines({{0, 0}, {1, 0}});
    EXPECT_EQ(HvMipPath2fProp1d(path, 1, 1).NumLevels(), 1u);
    path.Lineto({1.01F, 0});
    EXPECT_EQ(HvMipPath2fProp1d(path, 1, 1).NumLevels(), 2u);
    path.Lineto({-64, 0});
    EXPECT_EQ(HvMipPath2fProp1d(path, 1, 1).NumLevels(), 8u);
    EXPECT_EQ(HvMipPath2fProp1d(path, 1e-300, 1).NumLevels(), 32u);
    EXPECT_EQ(HvMipPath2fProp1d(path, std::numeric_limits<double>::infinity(), 1).NumLevels(), 1u);
}

TEST(HvMipPath2fProp1d, LevelOfAScaleIsOffByHalfAPixelAtMost)
{
    HvMipPath2fProp1d const mip(Wave(), 0.5, 0.1);  // 0.5, 1, 2, 4, ... 256
    struct Case {
        double unitsPerPixel;
        unsigned int level;
    };
    double const inf = std::numeric_limits<double>::infinity();
    for (Case const& c :
         {Case{0, 0}, Case{0.1, 0}, Case{1, 0}, Case{1.99, 0}, Case{2, 1}, Case{3.9, 1}, Case{4, 2},
          Case{64, 6}, Case{1e300, mip.NumLevels() - 1}, Case{inf, mip.NumLevels() - 1},
          Case{-1, 0}, Case{std::numeric_limits<double>::quiet_NaN(), 0}}) {
        EXPECT_EQ(mip.LevelForScale(c.unitsPerPixel), c.level) << c.unitsPerPixel;
    }
}

TEST(HvMipPath2fProp1d, NumbersThatAreNotFiniteAreCopied)
{
    OpenProp path;
    path.AddLines({{0, 0}, {std::numeric_limits<float>::quiet_NaN(), 1}, {2, 2}, {3, 3}});
    path.AddLines({{0, 0}, {std::numeric_limits<float>::infinity(), 1}, {2, 2}, {3, 3}});
    path.SetPropCurve(4, Constant(4));
    HvMipPath2fProp1d const mip(path, 1, 1);
    for (unsigned int k = 0; k < mip.NumLevels(); ++k) {
        EXPECT_EQ(mip.Level(k)->IsSiblingOf(path), 1);
        EXPECT_EQ(KeysOf(*mip.Level(k)), path.Keys());
    }
}

TEST(HvMipPath2fProp1d, CurvesKeepWhatTheyDoBeyondTheirKeys)
{
    OpenProp path = ThreeLines();
    HvRawFCurve curve = Through({{0, 0}, {1, 1}, {2, 2}, {3, 3}});
    curve.SetExtrapolationMethod(HvBaseFCurve::LinearExtrapolation);
    curve.SetClampingValues(-5, 7);
    path.SetPropCurve(0, curve);
    HvMipPath2fProp1d const mip(path, 1, 0.01);
    HvRawFCurve const& simple = *mip.Level(0)->GetPropCurve(0);
    EXPECT_EQ(simple.GetNumKeys(), 2u);
    EXPECT_EQ(simple.Eval(6, 0), 6.0);
    EXPECT_EQ(simple.Eval(9, 1), 7.0);
}

TEST(HvMipPath2fProp1d, WithoutMemoryNothingHasChanged)
{
    OpenProp path = ThreeLines();
    path.Curveto({9, 9}, {3, 5}, {9, 3});
    path.SetPropCurve(8, Through({{0, 0}, {1, 5}, {2, 0}, {3, 3}}));
    bool isBuilt = false;
    RefuseEachAllocation([&] { return std::make_unique<HvMipPath2fProp1d>(path, 0.5, 0.1); },
                         [&](std::unique_ptr<HvMipPath2fProp1d>& mip) {
                             mip->Level(1);
                             mip->SetSource(path);
                             mip->Level(0);
                         },
                         [&](std::unique_ptr<HvMipPath2fProp1d>& mip, bool completed) {
                             isBuilt = completed;
                             EXPECT_EQ(mip->Level(0)->NumSubpaths(), 3u);
                         });
    EXPECT_TRUE(isBuilt);
}

TEST(HvMipPath2fProp1d_threads, ReadersSeeWholeLevels)
{
    OpenProp const wave = Wave();
    OpenProp const lines = ThreeLines();
    HvMipPath2fProp1d mip(wave, 0.5, 0.1);
    RunThreads(4, [&](int k) {
        for (int step = 0; step < 12; ++step) {
            if (k == 0) {
                mip.SetSource(step % 2 == 0 ? lines : wave);
            } else {
                HvMipPath2fProp1d::LevelPath const level =
                    mip.Level(static_cast<unsigned int>(step + k) % 4);
                ASSERT_EQ(level->NumSubpaths(), 3u);
                HvPoint2fArray points;
                HvPointTagArray tags;
                HvDoubleArray values;
                level->Flatten(HvGC(), points, tags, values);
                ASSERT_EQ(points.Size(), values.Size());
                mip.LevelForScale(step);
            }
        }
    });
}
