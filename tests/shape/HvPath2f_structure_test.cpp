// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// What paths tell of their structure. Random paths are in HvPath2f_model_test.cpp.

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr unsigned int kNowhere = std::numeric_limits<unsigned int>::max();

// A path of any tags, however mad, with as many points.
OpenPath OfTags(std::vector<unsigned int> const& tags)
{
    OpenPath path;
    for (unsigned int const tag : tags) {
        path.tags.Add(static_cast<unsigned char>(tag));
        path.points.Add({float(path.points.Size()), 1});
    }
    return path;
}

}  // namespace

TEST(HvPath2f_structure, CountsNothingInAnEmptyPath)
{
    HvPath2f const path(0u);
    EXPECT_EQ(path.NumSubpaths(), 0u);
    EXPECT_EQ(path.NumSegments(), 0u);
    EXPECT_EQ(path.NumNodes(), 0u);
    EXPECT_EQ(path.NumNodesExceptLastNodeOfClosedSubpaths(), 0u);
    EXPECT_EQ(path.LargestDegree(), 0u);
    EXPECT_EQ(path.IsPolyline(), 0);
}

TEST(HvPath2f_structure, CountsALonePointAsASegment)
{
    OpenPath path;
    path.Moveto({1, 1});
    EXPECT_EQ(path.NumSegments(), 1u);
    EXPECT_EQ(path.NumSubpaths(), 1u);
    EXPECT_EQ(path.NumNodes(), 1u);
    EXPECT_EQ(path.Degree(0), 0u);
    EXPECT_EQ(path.StartOfSegment(0), 0u);
    EXPECT_EQ(path.EndOfSegment(0), 0u);
    EXPECT_EQ(path.LargestDegree(), 0u);
    EXPECT_EQ(path.IsPolyline(), 1);
    int closed = 7;
    EXPECT_EQ(path.IsEndOfSubpath(0, closed), 1);
    EXPECT_EQ(closed, 0);
    // Also between others.
    path.Moveto({2, 2});
    path.Lineto({3, 3});
    path.Moveto({4, 4});
    EXPECT_EQ(path.NumSegments(), 3u);
    EXPECT_EQ(path.NumSubpaths(), 3u);
    EXPECT_EQ(path.Degree(0), 0u);
    EXPECT_EQ(path.Degree(1), 1u);
    EXPECT_EQ(path.Degree(3), 0u);
}

TEST(HvPath2f_structure, GivesAStartTheDegreeOfWhatFollows)
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({1, 0}, {2, 0}, {3, 0});
    path.Lineto({4, 0});
    EXPECT_EQ(path.Degree(0), 3u);
    EXPECT_EQ(path.Degree(3), 3u);
    EXPECT_EQ(path.Degree(4), 1u);
    EXPECT_EQ(path.GetDegree(0), 3u);
    EXPECT_EQ(path.LargestDegree(), 3u);
    EXPECT_EQ(path.IsPolyline(), 0);
    EXPECT_EQ(path.NumSegments(), 2u);
}

TEST(HvPath2f_structure, FindsTheEndsOfSegments)
{
    OpenPath const path = SmoothLoop();
    unsigned int const starts[] = {0, 0, 0, 0, 3, 3, 3};
    unsigned int const ends[] = {3, 3, 3, 3, 6, 6, 6};
    for (unsigned int i = 0; i < 7; ++i) {
        EXPECT_EQ(path.StartOfSegment(i), starts[i]);
        EXPECT_EQ(path.EndOfSegment(i), ends[i]);
    }
}

TEST(HvPath2f_structure, ComparesRolesOfSiblingsAlone)
{
    OpenPath const a = SmoothLoop();
    OpenPath b = SmoothLoop();
    b.LockG1(0);
    b.tags[2] |= 64;
    b.Translate({5, 5});
    EXPECT_EQ(a.IsSiblingOf(b), 1);
    EXPECT_EQ(b.IsSiblingOf(a), 1);
    EXPECT_EQ(a.IsSiblingOf(a), 1);
    b.OpenSubpath(0);
    EXPECT_EQ(a.IsSiblingOf(b), 0);
    EXPECT_EQ(a.IsSiblingOf(Triangle()), 0);
    EXPECT_EQ(a.IsSiblingOf(HvPath2f(0u)), 0);
    EXPECT_EQ(HvPath2f(0u).IsSiblingOf(HvPath2f(3u)), 1);
    OpenPath prefix = Triangle();
    prefix.Moveto({1, 1});
    EXPECT_EQ(Triangle().IsSiblingOf(prefix), 0);
}

TEST(HvPath2f_structure, GivesPointsByIndex)
{
    OpenPath const path = Triangle();
    PathPoint p(9, 9);
    EXPECT_EQ(path.GetPoint(2, p), 1);
    EXPECT_EQ(p, PathPoint(0, 3));
    EXPECT_EQ(path.GetPoint(4, p), 0);
    EXPECT_EQ(path.GetPoint(kNowhere, p), 0);
    EXPECT_EQ(p, PathPoint(0, 3));
    EXPECT_EQ(path.GetPoint(1), PathPoint(4, 0));
    EXPECT_EQ(path.GetCurrentPoint(), PathPoint(0, 0));

    PathPoint some[3] = {{7, 7}, {7, 7}, {7, 7}};
    EXPECT_EQ(path.GetPoints(1, 2, some), some);
    EXPECT_EQ(some[0], PathPoint(4, 0));
    EXPECT_EQ(some[1], PathPoint(0, 3));
    EXPECT_EQ(some[2], PathPoint(7, 7));
    EXPECT_EQ(path.GetPoints(2, 1, some), some);
    EXPECT_EQ(some[0], PathPoint(4, 0));

    HvPoint2<double> wide[2] = {{7, 7}, {7, 7}};
    EXPECT_EQ(path.GetPoints(2, 2, wide), wide);
    EXPECT_EQ(wide[0], HvPoint2<double>(0, 3));
    EXPECT_EQ(path.GetPoints(2, 1, wide), wide);
    EXPECT_EQ(wide[1], HvPoint2<double>(7, 7));
}

TEST(HvPath2f_structure, AnswersZeroOutsideThePath)
{
    for (OpenPath const& path : {Triangle(), OpenPath()}) {
        for (unsigned int const i : {path.NumPoints(), kNowhere}) {
            EXPECT_EQ(path.Degree(i), 0u);
            EXPECT_EQ(path.GetDegree(i), 0u);
            EXPECT_EQ(path.StartOfSegment(i), 0u);
            EXPECT_EQ(path.EndOfSegment(i), 0u);
            EXPECT_EQ(path.IsStartOfSubpath(i), 0);
            EXPECT_EQ(path.IsSubpathClosed(i), 0);
            EXPECT_EQ(path.IsG1Continuous(i), 0);
            int closed = 7;
            EXPECT_EQ(path.IsEndOfSubpath(i, closed), 0);
            EXPECT_EQ(closed, 7);
            unsigned int first = 7;
            unsigned int last = 7;
            path.GetSubpathIndices(i, first, last);
            EXPECT_EQ(first, 0u);
            EXPECT_EQ(last, 0u);
        }
    }
}

TEST(HvPath2f_structure, IgnoresTheFlagsOfTags)
{
    OpenPath const path = OfTags({193, 200, 201, 203});
    EXPECT_EQ(path.NumSegments(), 1u);
    EXPECT_EQ(path.NumNodes(), 2u);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_EQ(path.EndOfSegment(0), 3u);
}

// Tags that no building operation makes: everything stays within the arrays and ends.

TEST(HvPath2f_structure, StaysWithinPathsOfMadTags)
{
    for (unsigned int a = 0; a < 64; ++a) {
        for (unsigned int const b : {0u, 1u, 2u, 3u, 4u, 5u, 8u, 10u, 38u, 44u, 46u, 47u, 63u}) {
            OpenPath path = OfTags({a, b, a, 3, b});
            EXPECT_LE(path.NumSegments(), 5u);
            EXPECT_GE(path.NumSegments(), 1u);
            EXPECT_LE(path.NumSubpaths(), 5u);
            HvPath2fIter iter(path);
            unsigned int first = 0;
            unsigned int last = 0;
            unsigned int next = 0;
            while (iter.GetNextSubPathIndices(first, last) != 0) {
                EXPECT_EQ(first, next);
                EXPECT_LT(last, 5u);
                next = last + 1;
            }
            EXPECT_EQ(next, 5u);
            PathPoint const pts[] = {path.points[0], {1, 2}, {3, 4}, path.points[4]};
            for (unsigned int i = 0; i < 5; ++i) {
                EXPECT_LE(path.StartOfSegment(i), i);
                EXPECT_LT(path.EndOfSegment(i), 5u);
                path.IsG1Continuous(i);
                OpenPath edited(path);
                edited.tags[i] |= 128;
                edited.ReplacePoint(i, {5, 5}, 0);
                edited.ReplacePoint(i > 0 ? i - 1 : 0, {6, 6}, 1);
                edited.LockG1(i);
                edited.ReplaceTangentVectorDirections(i, {1, 1});
                edited.ReplaceSegment(i, pts, 3);
                edited.ReplaceSubpathSection(i, 4, {1, 1}, {2, 2});
                edited.ReplaceSubpathSection(i, 4);
                edited.CloseSubpath(i);
                edited.OpenSubpath(i);
                edited.RemoveSubpathSection(0, i);
                edited.RemoveSubpath(0);
                EXPECT_EQ(edited.points.Size(), edited.tags.Size());
            }
        }
    }
}

TEST(HvPath2f_structure, GivesZeroForWhatIsNoRole)
{
    OpenPath const path = OfTags({1, 47, 2, 0, 63});
    for (unsigned int i = 1; i < 5; ++i) {
        EXPECT_EQ(path.Degree(i), 0u);
        EXPECT_EQ(path.StartOfSegment(i), 0u);
        EXPECT_EQ(path.EndOfSegment(i), 0u);
    }
    EXPECT_EQ(path.EndOfSegment(0), 0u);
    // Every step moves forward, one point at least.
    EXPECT_EQ(path.NumSegments(), 5u);
    EXPECT_EQ(path.NumNodes(), 1u);
}

TEST(HvPath2f_structure, CutsSegmentsAtTheEndsOfThePath)
{
    // A cubic that lacks its end, and one that lacks its start.
    OpenPath const short_ = OfTags({1, 8, 9});
    EXPECT_EQ(short_.EndOfSegment(1), 2u);
    EXPECT_EQ(short_.NumSegments(), 1u);
    OpenPath const headless = OfTags({9, 10, 3});
    EXPECT_EQ(headless.StartOfSegment(0), 0u);
    EXPECT_EQ(headless.StartOfSegment(1), 0u);
    EXPECT_EQ(headless.EndOfSegment(0), 1u);
}

TEST(HvPath2f_structure, AnswersForSegmentsWithoutAStart)
{
    OpenPath path;
    path.Lineto({1, 1});
    path.Curveto({2, 2}, {3, 3}, {1, 1});
    unsigned int first = 7;
    unsigned int last = 7;
    path.GetSubpathIndices(2, first, last);
    EXPECT_EQ(first, 0u);
    EXPECT_EQ(last, 3u);
    EXPECT_EQ(path.NumSegments(), 2u);
    EXPECT_EQ(path.Closeto(), 1);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    path.ReplacePoint(0, {4, 4}, 0);
    EXPECT_EQ(path.points[3], PathPoint(4, 4));
    OpenPath lone;
    lone.Lineto({1, 1});
    EXPECT_EQ(lone.Closeto(), 1);
    EXPECT_EQ(lone.ReplaceTangentVectorDirections(0, {1, 1}), 0);
    EXPECT_EQ(lone.IsG1Continuous(0), 0);
}
