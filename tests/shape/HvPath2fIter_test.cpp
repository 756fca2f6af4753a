// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The subpaths of a path, one after the other.

#include <hv/shape/HvPath2fIter.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

TEST(HvPath2fIter, GivesTheSubpathsInTheirOrder)
{
    OpenPath path = Triangle();
    path.Moveto({1, 1});
    path.Moveto({2, 2});
    path.Lineto({3, 3});
    HvPath2fIter iter(path);
    for (int round = 0; round < 2; ++round) {
        unsigned int first = 9;
        unsigned int last = 9;
        EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 1);
        EXPECT_EQ(first, 0u);
        EXPECT_EQ(last, 3u);
        EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 1);
        EXPECT_EQ(first, 4u);
        EXPECT_EQ(last, 4u);
        EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 1);
        EXPECT_EQ(first, 5u);
        EXPECT_EQ(last, 6u);
        first = last = 9;
        EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 0);
        EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 0);
        EXPECT_EQ(first, 9u) << "untouched";
        EXPECT_EQ(last, 9u);
        iter.Reset();
    }
}

TEST(HvPath2fIter, FindsNothingInAnEmptyPath)
{
    HvPath2f const path(4u);
    HvPath2fIter iter(path);
    unsigned int first = 9;
    unsigned int last = 9;
    EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 0);
}

TEST(HvPath2fIter, LivesWithEditsInBetween)
{
    OpenPath path = Triangle();
    path.Moveto({1, 1});
    path.Lineto({2, 2});
    HvPath2fIter iter(path);
    unsigned int first = 0;
    unsigned int last = 0;
    EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 1);
    path.RemoveSubpath(0);
    EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 0) << "the path has become shorter";
    path.Moveto({1, 1});
    path.Lineto({2, 2});
    path.Lineto({3, 3});
    EXPECT_EQ(iter.GetNextSubPathIndices(first, last), 1);
    EXPECT_EQ(first, 2u) << "the whole of the subpath that has point 4";
    EXPECT_EQ(last, 4u);
}
