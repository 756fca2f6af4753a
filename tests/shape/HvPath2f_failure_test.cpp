// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A failed allocation at every allocation of every operation: std::bad_alloc comes out, the locks
// are free, nothing leaks and the path is as it was.

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/shape/HvShapeLock.h>

#include "path_test_support.h"
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// A path that fills its storage, so that the next point makes it grow, a source that does so too,
// and a smaller path.
struct Pair {
    OpenPath path = OpenPath(SmoothRun());
    OpenPath source = OpenPath(SmoothRun());
    OpenPath small = OpenPath(Triangle());
};

struct Scenario {
    char const* name;
    int mostAllocations;
    std::function<void(Pair&)> call;
};

bool IsFree(HvPath2f const& path)
{
    HvShapeLock const lock(path);
    return HvShapeLock::Depth(path) == 1;
}

std::vector<Scenario> Scenarios()
{
    using P = Pair;
    static PathPoint const pts[] = {{10, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4},
                                    {5, 5},  {6, 6}, {7, 7}, {20, 0}};
    return {
        {"Moveto", 2,
         [](P& p) {
             p.path.Moveto({1, 1});
         }},
        {"Lineto", 2,
         [](P& p) {
             p.path.Lineto({1, 1});
         }},
        {"Lineto to its own point", 2, [](P& p) { p.path.Lineto(p.path.points[0]); }},
        {"Curveto", 2,
         [](P& p) {
             p.path.Curveto({1, 1}, {2, 2});
         }},
        {"Curveto, cubic", 2,
         [](P& p) {
             p.path.Curveto({1, 1}, {2, 2}, {3, 3});
         }},
        {"AltCurveto", 2, [](P& p) { p.path.AltCurveto(pts, 8); }},
        {"AltAltCurveto", 2, [](P& p) { p.path.AltAltCurveto(p.path.points, 1, 8); }},
        {"Closeto", 0, [](P& p) { p.path.Closeto(); }},
        {"AppendPolylines", 3,
         [](P& p) {
             unsigned int const sizes[] = {4, 5};
             p.path.AppendPolylines(pts, sizes, 2);
         }},
        {"CloseSubpath", 2, [](P& p) { p.path.CloseSubpath(0); }},
        {"ReplacePoint", 0,
         [](P& p) {
             p.path.ReplacePoint(3, {1, 1}, 0);
         }},
        {"LockG1", 0, [](P& p) { p.path.LockG1(6); }},
        {"ReplaceSegment", 2, [](P& p) { p.path.ReplaceSegment(4, pts, 8); }},
        {"ReplaceSegment by a line", 0,
         [](P& p) {
             PathPoint const line[] = {{20, 0}, {30, 0}};
             p.path.ReplaceSegment(7, line, 1);
         }},
        {"ReplaceSubpathSection by a line", 0, [](P& p) { p.path.ReplaceSubpathSection(0, 12); }},
        {"ReplaceSubpathSection by a cubic", 0,
         [](P& p) {
             p.path.ReplaceSubpathSection(0, 12, {1, 1}, {2, 2});
         }},
        {"ReplaceSubpathSection of a line by a cubic", 2,
         [](P& p) {
             p.source.ReplaceSubpathSection(13, 14, {1, 1}, {2, 2});
         }},
        {"ReplaceSubpathSection of a quadratic by a cubic", 2,
         [](P& p) {
             p.source.ReplaceSubpathSection(14, 16, {1, 1}, {2, 2});
         }},
        {"ReplaceSubpathSection by a source", 2,
         [](P& p) { p.path.ReplaceSubpathSection(0, 12, p.source, 0, 12); }},
        {"ReplaceSubpathSection of a line by a source", 2,
         [](P& p) { p.source.ReplaceSubpathSection(13, 14, p.path, 3, 6); }},
        {"ReplaceSubpathSection by itself", 4,
         [](P& p) { p.source.ReplaceSubpathSection(0, 12, p.source, 0, 12); }},
        {"RemoveSubpath", 0, [](P& p) { p.path.RemoveSubpath(0); }},
        {"RemoveSubpathSection", 0, [](P& p) { p.path.RemoveSubpathSection(3, 6); }},
        {"OpenSubpath", 0, [](P& p) { p.path.OpenSubpath(0); }},
        {"operator=", 2, [](P& p) { p.path = p.source; }},
        {"operator= of a smaller one", 0, [](P& p) { p.path = p.small; }},
        {"Translate", 0,
         [](P& p) {
             p.path.Translate({1, 1});
         }},
        {"Rotate", 0,
         [](P& p) {
             p.path.Rotate(30, {1, 1});
         }},
        {"Clone", 3, [](P& p) { std::unique_ptr<HvShape2f>(p.path.Clone()); }},
        {"copy", 2, [](P& p) { HvPath2f const copy(p.path); }},
        {"piece", 4, [](P& p) { HvPath2f const piece(p.path, 3, 9); }},
        {"empty path", 2, [](P&) { HvPath2f const path(100u); }},
        {"sink", 2,
         [](P& p) {
             HvPath2fSink(p.path).Curveto({1, 1}, {2, 2}, {3, 3});
         }},
    };
}

Pair MakePair()
{
    Pair pair;
    pair.path.LockG1(3);
    pair.source.Lineto({10, 0});  // 13
    pair.source.Lineto({20, 0});  // 14
    pair.source.Curveto({70, 70}, {80, 80});
    // Copies hold just what they need.
    return Pair{OpenPath(pair.path), OpenPath(pair.source), OpenPath(pair.small)};
}

}  // namespace

TEST(HvPath2f_failure, LeavesEveryPathAsItWas)
{
    for (Scenario const& scenario : Scenarios()) {
        SCOPED_TRACE(scenario.name);
        PathImage path;
        PathImage source;
        Pair done = MakePair();
        scenario.call(done);
        long const allocations = RefuseEachAllocation(
            [&] {
                Pair pair = MakePair();
                path = ImageOf(pair.path);
                source = ImageOf(pair.source);
                return pair;
            },
            scenario.call,
            [&](Pair& pair, bool completed) {
                EXPECT_TRUE(IsFree(pair.path));
                EXPECT_TRUE(IsFree(pair.source));
                if (completed) {
                    EXPECT_EQ(ImageOf(pair.path), ImageOf(done.path));
                    EXPECT_EQ(ImageOf(pair.source), ImageOf(done.source));
                } else {
                    EXPECT_EQ(ImageOf(pair.path), path);
                    EXPECT_EQ(ImageOf(pair.source), source);
                }
            });
        EXPECT_LE(allocations, scenario.mostAllocations);
    }
}
