// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The list of the property curves of a path.

#include <hv/pathbuild/internal/prop_curves.h>

#include <hv/foundation/HvPoint2dArray.h>
#include <tests/support/allocation_failure.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using Starts = std::vector<unsigned int>;

std::unique_ptr<HvPropCurveData> Entry(unsigned int start)
{
    return std::make_unique<HvPropCurveData>(start, HvRawFCurve(0.0, double(start)));
}

HvPropCurvesOwner List(Starts const& starts)
{
    HvPropCurvesOwner curves(new HvPropCurves);
    for (unsigned int const start : starts) {
        HvPropCurves_Append(*curves, Entry(start));
    }
    return curves;
}

Starts StartsOf(HvPropCurves const& curves)
{
    Starts starts;
    HvDLListIter<HvPropCurveData> entries(&curves);
    while (HvPropCurveData const* const entry = entries.Next()) {
        starts.push_back(entry->subpathStart);
    }
    return starts;
}

}  // namespace

TEST(prop_curves, EntriesAreFoundByTheirKey)
{
    HvPropCurvesOwner const curves = List({0, 4, 9});
    for (unsigned int const start : {0u, 4u, 9u}) {
        EXPECT_EQ(HvPropCurves_Find(*curves, start)->curve.Eval(0, 0), double(start));
    }
    for (unsigned int const start : {1u, 3u, 10u}) {
        EXPECT_EQ(HvPropCurves_Find(*curves, start), nullptr);
    }
    EXPECT_EQ(HvPropCurves_Find(*List({}), 0), nullptr);
}

TEST(prop_curves, InsertKeepsTheOrder)
{
    HvPropCurvesOwner const curves = List({});
    for (unsigned int const start : {5u, 2u, 9u, 0u, 3u}) {
        HvPropCurves_Insert(*curves, Entry(start));
    }
    EXPECT_EQ(StartsOf(*curves), (Starts{0, 2, 3, 5, 9}));
}

TEST(prop_curves, ShiftMovesTheKeysAboveAlone)
{
    HvPropCurvesOwner const curves = List({0, 4, 9, 12});
    HvPropCurves_Shift(*curves, 4, 3);
    EXPECT_EQ(StartsOf(*curves), (Starts{0, 4, 12, 15}));
    HvPropCurves_Shift(*curves, 4, 0u - 5);
    EXPECT_EQ(StartsOf(*curves), (Starts{0, 4, 7, 10}));
}

TEST(prop_curves, RemoveDeletesTheEntry)
{
    HvPropCurvesOwner const curves = List({0, 4, 9});
    HvPropCurves_Remove(*curves, HvPropCurves_Find(*curves, 0));
    HvPropCurves_Remove(*curves, HvPropCurves_Find(*curves, 9));
    EXPECT_EQ(StartsOf(*curves), (Starts{4}));
}

TEST(prop_curves, WalkMeetsEachKeyOnce)
{
    HvPropCurvesOwner const curves = List({0, 4, 9});
    HvPropCurveWalk walk(*curves);
    EXPECT_NE(walk.MoveTo(0), nullptr);
    EXPECT_EQ(walk.MoveTo(2), nullptr);
    EXPECT_EQ(walk.MoveTo(4)->Eval(0, 0), 4.0);
    EXPECT_EQ(walk.MoveTo(5), nullptr);
    EXPECT_EQ(walk.MoveTo(9)->Eval(0, 0), 9.0);
    EXPECT_EQ(walk.MoveTo(10), nullptr);
    EXPECT_EQ(HvPropCurveWalk(*List({})).MoveTo(0), nullptr);
}

TEST(prop_curves, NothingLeaksWithoutMemory)
{
    RefuseEachAllocation([] {
        HvPropCurvesOwner const curves = List({0, 4, 9});
        HvPropCurves_Insert(*curves, Entry(2));
        HvPropCurvesOwner const copy = HvPropCurves_Copy(*curves);
        EXPECT_EQ(StartsOf(*copy), (Starts{0, 2, 4, 9}));
    });
}

TEST(prop_curves, ReachIsTheLastKey)
{
    EXPECT_EQ(HvPropCurve_Reach(HvRawFCurve(3.0)), 0.0);
    EXPECT_EQ(HvPropCurve_Reach(HvRawFCurve(1.0, 3.0)), 1.0);
    EXPECT_EQ(HvPropCurve_Reach(HvRawFCurve(1.0, 3.0, 4.0, 5.0)), 4.0);
}
