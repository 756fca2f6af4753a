// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A failed allocation at every allocation of every operation: std::bad_alloc comes out, the locks
// are free, nothing leaks, and points and curves are as they were.

#include <hv/pathbuild/HvPath2fProp1d.h>

#include <hv/foundation/HvPoint2dArray.h>
#include <tests/shape/path_test_support.h>
#include <tests/shape/shape_lock_probe.h>
#include <tests/support/allocation_failure.h>
#include <tests/support/lock_probe.h>

#include <gtest/gtest.h>

#include "prop_path_support.h"

#include <functional>
#include <memory>

namespace {

struct Pair {
    OpenProp path = ThreeLines();
    OpenProp source = ThreeLines();
    HvPoint2fArray points{PropPoint(1, 1), 3};
    HvPointTagArray tags{HvPointTagEnd, 3};
    HvDoubleArray values{1.0, 3};
};

Pair MakePair()
{
    Pair pair;
    pair.source.SetPropCurve(4, Through({{0, 1}, {2, 5}, {3, 2}}));
    pair.source.Curveto({9, 9}, {12, 4}, {30, 30});
    pair.path.Curveto({9, 9}, {12, 4}, {40, 40});
    pair.path.SetPropCurve(8, Through({{0, 1}, {20, 5}, {40, 2}}));
    return pair;
}

struct Scenario {
    char const* name;
    std::function<void(Pair&)> call;
};

std::vector<Scenario> Scenarios()
{
    using P = Pair;
    return {
        {"copy", [](P& p) { HvPath2fProp1d const copy(p.path); }},
        {"of a path",
         [](P& p) { HvPath2fProp1d const copy(static_cast<HvPath2f const&>(p.path)); }},
        {"empty", [](P&) { HvPath2fProp1d const path(100u); }},
        {"Clone", [](P& p) { std::unique_ptr<HvShape2f>(p.path.Clone()); }},
        {"operator=", [](P& p) { p.path = p.source; }},
        {"SetPropCurve", [](P& p) { p.path.SetPropCurve(4, Constant(7)); }},
        {"SetPropCurve, new",
         [](P& p) {
             p.path.Moveto({0, 0});
             p.path.SetPropCurve(p.path.NumPoints() - 1, Constant(7));
         }},
        {"SetPropCurve by points",
         [](P& p) {
             HvPoint2dArray points(4);
             points.Add(0, 1);
             points.Add(1, 5);
             points.Add(2, 0);
             p.path.SetPropCurve(4, points, 0.1);
         }},
        {"SetPropCurve from here", [](P& p) { p.path.SetPropCurve(0, 4u); }},
        {"SetPropCurve from there", [](P& p) { p.path.SetPropCurve(0, p.source, 5); }},
        {"AppendLinearSegment", [](P& p) { p.path.AppendLinearSegment(0, 5, 5); }},
        {"EvalPropCurve", [](P& p) { p.path.EvalPropCurve(0, HvDoubleArray(1.0, 50), p.values); }},
        {"RemoveSubpath", [](P& p) { p.path.RemoveSubpath(0); }},
        {"RemoveSubpathSection", [](P& p) { p.path.RemoveSubpathSection(1, 2); }},
        {"ReplaceSubpathSection", [](P& p) { p.path.ReplaceSubpathSection(0, 3, p.source, 0, 3); }},
        {"Flatten", [](P& p) { p.path.Flatten(HvGC(), p.points, p.tags, p.values); }},
        {"Sample", [](P& p) { p.path.Sample(HvGC(), p.points, p.tags, p.values); }},
        {"PropertySample", [](P& p) { p.path.PropertySample(HvGC(), p.points, p.tags, p.values); }},
        {"IntersectSamplePointsExtent",
         [](P& p) {
             p.path.IntersectSamplePointsExtent(HvGC(), HvExtent2<float>(0, 0, 50, 50), p.points,
                                                p.tags, p.values, 0);
         }},
        {"AddFittedSamplesFromPath",
         [](P& p) { p.path.AddFittedSamplesFromPath(HvGC(), p.source); }},
        {"AddFittedSamplesFromPath, its own",
         [](P& p) { p.path.AddFittedSamplesFromPath(HvGC(), p.path); }},
        {"SetToLerpAB", [](P& p) { p.path.SetToLerpAB(p.source, p.path, 0.5, 0.5, 0.1); }},
    };
}

struct Image {
    PathImage path;
    PropKeys keys;
    std::vector<unsigned int> counts;

    friend bool operator==(Image const& a, Image const& b)
    {
        return a.path == b.path && a.keys == b.keys && a.counts == b.counts;
    }
};

Image ImageOfProp(OpenProp const& path)
{
    Image image{ImageOf(path), path.Keys(), {}};
    HvDLListIter<HvPropCurveData> entries(path.propCurves);
    while (HvPropCurveData const* const entry = entries.Next()) {
        image.counts.push_back(entry->curve.GetNumKeys());
    }
    return image;
}

}  // namespace

TEST(HvPath2fProp1d_failure, LeavesEveryPathAsItWas)
{
    Image const before = ImageOfProp(MakePair().path);
    Image const sourceBefore = ImageOfProp(MakePair().source);
    for (Scenario const& scenario : Scenarios()) {
        SCOPED_TRACE(scenario.name);
        Pair done = MakePair();
        scenario.call(done);
        bool const isOneEdit = std::string(scenario.name) != "SetPropCurve, new";
        RefuseEachAllocation(MakePair, scenario.call, [&](Pair& pair, bool completed) {
            EXPECT_TRUE(ShapeLockProbe_IsFree(pair.path));
            EXPECT_TRUE(ShapeLockProbe_IsFree(pair.source));
            for (unsigned int i = 0; i < pair.path.NumPoints(); ++i) {
                if (HvRawFCurve const* const curve = pair.path.GetPropCurve(i)) {
                    EXPECT_TRUE(LockProbe_AreBothFree(*curve));
                    break;
                }
            }
            EXPECT_EQ(ImageOfProp(pair.source), sourceBefore);
            if (completed) {
                EXPECT_EQ(ImageOfProp(pair.path), ImageOfProp(done.path));
                EXPECT_EQ(pair.values.Size(), done.values.Size());
            } else {
                if (isOneEdit) {
                    EXPECT_EQ(ImageOfProp(pair.path), before);
                }
                EXPECT_EQ(pair.points.Size(), 3u);
                EXPECT_EQ(pair.tags.Size(), 3u);
                EXPECT_EQ(pair.values.Size(), 3u);
            }
        });
    }
}
