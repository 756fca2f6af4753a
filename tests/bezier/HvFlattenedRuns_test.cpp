// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Runs of visible edges in three parallel arrays.

#include <hv/bezier/HvFlattenedRuns.h>

#include "../support/allocation_failure.h"
#include "flattened_runs_test_support.h"

#include <gtest/gtest.h>

#include <memory>

TEST(HvFlattenedRuns, JoinsEdgesThatMeet)
{
    RunArrays a;
    a.runs.BeginEdge({0, 0}, 1);
    a.runs.EndEdge({1, 1});
    a.runs.BeginEdge({1, 1}, 1);
    a.runs.EndEdge({2, 0});
    EXPECT_EQ(a.Points(), "(0,0)(1,1)(2,0)");
    EXPECT_EQ(a.Tags(), "0 1 1");
    EXPECT_EQ(a.Flags(), "1 1 1");
    a.runs.EndRun();
    EXPECT_EQ(a.Tags(), "0 1 2");
}

TEST(HvFlattenedRuns, BreaksAtAGapWithTheGivenFlag)
{
    for (int const flag : {0, 1}) {
        RunArrays a;
        a.runs.BeginEdge({0, 0}, flag);
        a.runs.EndEdge({1, 1});
        a.runs.BeginEdge({1, 2}, flag);
        a.runs.EndEdge({2, 0});
        EXPECT_EQ(a.Points(), "(0,0)(1,1)(1,2)(2,0)");
        EXPECT_EQ(a.Tags(), "0 2 0 1");
        EXPECT_EQ(a.Flags(), flag == 0 ? "1 0 1 1" : "1 1 1 1");
    }
}

TEST(HvFlattenedRuns, MarksTheStartOfAJump)
{
    RunArrays joined;
    joined.runs.BeginEdge({0, 0}, 1);
    joined.runs.EndEdge({1, 1});
    joined.runs.BeginJump({1, 1});
    joined.runs.EndEdge({1, 3});
    EXPECT_EQ(joined.Points(), "(0,0)(1,1)(1,3)");
    EXPECT_EQ(joined.Tags(), "0 1 1");
    EXPECT_EQ(joined.Flags(), "1 0 1");

    RunArrays apart;
    apart.runs.BeginJump({1, 1});
    apart.runs.EndEdge({1, 3});
    apart.runs.BeginJump({2, 2});
    apart.runs.EndEdge({2, 4});
    EXPECT_EQ(apart.Points(), "(1,1)(1,3)(2,2)(2,4)");
    EXPECT_EQ(apart.Tags(), "0 2 0 1");
    EXPECT_EQ(apart.Flags(), "0 0 0 1");
}

TEST(HvFlattenedRuns, GoesOnFromWhatTheArraysHold)
{
    RunArrays a;
    a.points.Add(Point2(5, 5));
    a.tags.Add(HvPointTagStart);
    a.flags.Add(0);
    a.runs.BeginEdge({5, 5}, 1);
    a.runs.EndEdge({6, 6});
    EXPECT_EQ(a.Tags(), "0 1");
    EXPECT_EQ(a.Flags(), "0 1");
}

TEST(HvFlattenedRuns, TagsOnlyWhatExists)
{
    RunArrays a;
    a.points.Add(Point2(5, 5));
    a.runs.EndRun();
    a.runs.BeginJump({5, 5});
    a.runs.BeginEdge({7, 7}, 0);
    EXPECT_EQ(a.Points(), "(5,5)(7,7)");
    EXPECT_EQ(a.Tags(), "0");
    EXPECT_EQ(a.Flags(), "1");
}

TEST(HvFlattenedRuns, TakesAPointFromTheArrayItself)
{
    RunArrays a;
    a.runs.BeginEdge({5, 5}, 1);
    ASSERT_EQ(a.points.Size(), a.points.Capacity());
    a.runs.EndEdge(a.points[0]);
    EXPECT_EQ(a.Points(), "(5,5)(5,5)");
}

TEST(HvFlattenedRuns, CutsBackToAMark)
{
    RunArrays a;
    a.runs.BeginEdge({0, 0}, 1);
    a.runs.EndEdge({1, 1});
    HvFlattenedRuns::Mark const mark = a.runs.GetMark();
    a.runs.BeginEdge({2, 2}, 0);
    a.runs.EndEdge({3, 3});
    a.runs.CutBack(mark);
    EXPECT_EQ(a.Points(), "(0,0)(1,1)");
    EXPECT_EQ(a.Tags(), "0 1");
    EXPECT_EQ(a.Flags(), "1 1");
    RunArrays empty;
    HvFlattenedRuns::Mark const nothing = empty.runs.GetMark();
    empty.runs.BeginEdge({2, 2}, 0);
    empty.runs.CutBack(nothing);
    EXPECT_EQ(empty.Points(), "");
}

TEST(HvFlattenedRuns, StaysParallelWhenMemoryFails)
{
    long const allocations = RefuseEachAllocation([] { return std::make_unique<RunArrays>(); },
                                                  [](std::unique_ptr<RunArrays>& a) {
                                                      a->runs.BeginEdge({0, 0}, 1);
                                                      for (int i = 1; i < 9; ++i) {
                                                          a->runs.EndEdge(Point2(i, i));
                                                      }
                                                  },
                                                  [](std::unique_ptr<RunArrays>& a, bool) {
                                                      EXPECT_EQ(a->points.Size(), a->tags.Size());
                                                      EXPECT_EQ(a->points.Size(), a->flags.Size());
                                                  });
    EXPECT_GE(allocations, 9);
}
