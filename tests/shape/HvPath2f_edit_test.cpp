// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Edits of the structure of paths, by hand. Random edits are in HvPath2f_model_test.cpp.

#include <hv/shape/HvPath2f.h>

#include "path_test_support.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace {

using Tags = std::vector<unsigned int>;

constexpr unsigned int kNowhere = std::numeric_limits<unsigned int>::max();

// Two triangles of lines and an open run: 1 3 3 4 | 1 3 3 4 | 1 8 9 10.
OpenPath ThreeSubpaths()
{
    OpenPath path = Triangle();
    path.Moveto({10, 10});
    path.Lineto({14, 10});
    path.Lineto({10, 13});
    path.Lineto({10, 10});
    path.Closeto();
    path.Moveto({20, 0});
    path.Curveto({21, 1}, {22, 1}, {23, 0});
    return path;
}

}  // namespace

// Closing and opening.

TEST(HvPath2f_edit, ClosesWithALineWhereTheEndsDiffer)
{
    for (unsigned int const i : {8u, 9u, 10u, 11u}) {
        OpenPath path = ThreeSubpaths();
        EXPECT_EQ(path.CloseSubpath(i), 1);
        EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4, 1, 3, 3, 4, 1, 8, 9, 10, 4}));
        EXPECT_EQ(path.GetCurrentPoint(), PathPoint(20, 0));
        EXPECT_EQ(path.lastSubpathOpen, 0);
    }
    // Before other subpaths: the flag is that of the last one.
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({1, 1}, {2, 2});
    path.Moveto({5, 5});
    path.Lineto({6, 6});
    EXPECT_EQ(path.CloseSubpath(1), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 5, 6, 4, 1, 3}));
    EXPECT_EQ(path.points[3], PathPoint(0, 0));
    EXPECT_EQ(path.lastSubpathOpen, 1);
}

TEST(HvPath2f_edit, ClosesByMarkWhereTheEndsAreEqual)
{
    OpenPath path = SmoothLoop();
    path.OpenSubpath(0);
    path.tags[6] |= 64;
    path.Moveto({1, 1});
    path.lastSubpathOpen = 5;
    EXPECT_EQ(path.CloseSubpath(2), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 8, 9, 10, 8, 9, 75, 1}));
    EXPECT_EQ(path.lastSubpathOpen, 5) << "not the last subpath";
    OpenPath last = Triangle();
    last.OpenSubpath(0);
    EXPECT_EQ(last.lastSubpathOpen, 1);
    EXPECT_EQ(last.CloseSubpath(1), 1);
    EXPECT_EQ(ImageOf(last), ImageOf(Triangle()));
}

TEST(HvPath2f_edit, RefusesToCloseWhatIsClosedOrALonePoint)
{
    OpenPath path = Triangle();
    path.lastSubpathOpen = 5;
    PathImage const before = ImageOf(path);
    EXPECT_EQ(path.CloseSubpath(0), 0);
    EXPECT_EQ(path.CloseSubpath(4), 0);
    EXPECT_EQ(path.CloseSubpath(kNowhere), 0);
    EXPECT_EQ(ImageOf(path), before);
    OpenPath lone;
    lone.Moveto({1, 1});
    EXPECT_EQ(lone.CloseSubpath(0), 0);
    EXPECT_EQ(lone.lastSubpathOpen, 1);
    OpenPath empty;
    EXPECT_EQ(empty.CloseSubpath(0), 0);
}

TEST(HvPath2f_edit, ClosesOnceMoreWhereTheEndsWereParted)
{
    OpenPath path = Triangle();
    path.ReplacePointIgnoringLock(3, {1, 1});
    EXPECT_EQ(path.CloseSubpath(0), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4, 4}));
    EXPECT_EQ(path.NumSegments(), 4u);
    EXPECT_EQ(path.NumSubpaths(), 1u);
    EXPECT_EQ(path.IsSubpathClosed(0), 1);
    EXPECT_EQ(path.OpenSubpath(0), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4, 3}));
}

TEST(HvPath2f_edit, OpensWithItsLocksTakenOff)
{
    for (unsigned int const i : {0u, 3u, 5u, 6u}) {
        OpenPath path = SmoothLoop();
        path.tags[0] |= 64;
        path.tags[6] |= 64;
        path.LockG1(0);
        path.LockG1(3);
        EXPECT_EQ(path.OpenSubpath(i), 1);
        EXPECT_EQ(TagsOf(path), (Tags{65, 8, 9, 138, 8, 9, 74}));
        EXPECT_EQ(path.lastSubpathOpen, 1);
        PathImage const before = ImageOf(path);
        EXPECT_EQ(path.OpenSubpath(i), 0);
        EXPECT_EQ(ImageOf(path), before);
    }
    OpenPath path = ThreeSubpaths();
    path.lastSubpathOpen = 5;
    EXPECT_EQ(path.OpenSubpath(4), 1);
    EXPECT_EQ(path.lastSubpathOpen, 5) << "not the last subpath";
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4, 1, 3, 3, 3, 1, 8, 9, 10}));
    EXPECT_EQ(path.OpenSubpath(12), 0);
}

// Replacing segments.

TEST(HvPath2f_edit, ReplacesEachDegreeByEachOther)
{
    for (unsigned int from = 1; from <= 8; ++from) {
        for (unsigned int to = 1; to <= 8; ++to) {
            for (bool const isClosing : {false, true}) {
                OpenPath path;
                path.Moveto({0, 0});
                path.Lineto({1, 5});
                PathPoint const old[8] = {{3, 1}, {3, 2}, {3, 3}, {3, 4}, {3, 5}, {3, 6}, {3, 7}};
                path.AltCurveto(old, from);
                PathPoint const end = isClosing ? PathPoint(0, 0) : PathPoint(9, 9);
                path.ReplacePointIgnoringLock(1 + from, end);
                path.Closeto();
                PathPoint pts[9] = {{1, 5}, {4, 1}, {4, 2}, {4, 3}, {4, 4}, {4, 5}, {4, 6}, {4, 7}};
                pts[to] = end;

                OpenPath expected;
                expected.Moveto({0, 0});
                expected.Lineto({1, 5});
                expected.AltCurveto(pts + 1, to);
                expected.Closeto();
                for (unsigned int i = 2; i < 2 + from; ++i) {
                    OpenPath edited = path;
                    EXPECT_EQ(edited.ReplaceSegment(i, pts, to), 1);
                    EXPECT_EQ(ImageOf(edited), ImageOf(expected));
                }
            }
        }
    }
}

TEST(HvPath2f_edit, ReplacesTheSegmentBehindAStart)
{
    OpenPath path = Triangle();
    PathPoint const pts[] = {{0, 0}, {2, -1}, {4, 0}};
    EXPECT_EQ(path.ReplaceSegment(0, pts, 2), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 5, 6, 3, 4}));
    EXPECT_EQ(path.points[1], PathPoint(2, -1));
}

TEST(HvPath2f_edit, KeepsTheReservedBitsOfAReplacedSegment)
{
    OpenPath path = SmoothRun();
    for (unsigned char& tag : path.tags) {
        tag |= 64;
    }
    PathPoint const pts[] = {{10, 0}, {11, 0}, {14, 1}, {18, 0}, {20, 0}};
    EXPECT_EQ(path.ReplaceSegment(5, pts, 4), 1);
    EXPECT_EQ(TagsOf(path), (Tags{65, 72, 73, 74, 76, 13, 78, 79, 72, 73, 74, 72, 73, 74}));
    PathPoint const cubic[] = {{10, 0}, {11, 0}, {18, 0}, {20, 0}};
    EXPECT_EQ(path.ReplaceSegment(5, cubic, 3), 1);
    EXPECT_EQ(TagsOf(path), (Tags{65, 72, 73, 74, 72, 73, 74, 72, 73, 74, 72, 73, 74}));
}

TEST(HvPath2f_edit, MakesAClosingEndInsideASubpathPlain)
{
    OpenPath path = Triangle();
    path.ReplacePointIgnoringLock(3, {1, 1});
    path.CloseSubpath(0);
    ASSERT_EQ(TagsOf(path), (Tags{1, 3, 3, 4, 4}));
    PathPoint const pts[] = {{0, 3}, {5, 5}, {1, 1}};
    EXPECT_EQ(path.ReplaceSegment(3, pts, 2), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 5, 6, 4}));
}

TEST(HvPath2f_edit, KeepsLockedHandlesInLineWithTheirRatio)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.LockG1(6);
    PathPoint const pts[] = {{10, 0}, {10, 4}, {15, 9}, {20, -1}, {20, 0}};
    EXPECT_EQ(path.ReplaceSegment(4, pts, 4), 1);
    // Handle (12, 0) -> (10, 4): twice as long, so the other goes from 3 to 6. Handle (17, 0) ->
    // (20, -1): a third as long, so the other goes from 2 to 2/3.
    EXPECT_EQ(TagsOf(path), (Tags{1, 8, 9, 138, 12, 13, 14, 143, 8, 9, 10, 8, 9, 10}));
    EXPECT_EQ(path.points[2], PathPoint(10, -6));
    EXPECT_EQ(path.points[4], PathPoint(10, 4));
    EXPECT_EQ(path.points[5], PathPoint(15, 9));
    EXPECT_EQ(path.points[6], PathPoint(20, -1));
    EXPECT_EQ(path.points[8].x, 20);
    EXPECT_FLOAT_EQ(path.points[8].y, 2.0F / 3);
}

TEST(HvPath2f_edit, LetsTheSecondHandleOfALockedLoopTurnTheFirst)
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({2, 0}, {-2, 0}, {0, 0});
    path.Closeto();
    ASSERT_EQ(path.LockG1(0), 1);
    PathPoint const pts[] = {{0, 0}, {0, 3}, {-4, 0}, {0, 0}};
    EXPECT_EQ(path.ReplaceSegment(1, pts, 3), 1);
    EXPECT_EQ(path.points[1], PathPoint(4, 0));
    EXPECT_EQ(path.points[2], PathPoint(-4, 0));
    EXPECT_EQ(TagsOf(path), (Tags{129, 8, 9, 139}));
}

TEST(HvPath2f_edit, PutsHandlesBesideALockedSeamWithoutAskingIt)
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Lineto({1, 0});
    path.Curveto({2, 2}, {-1, 0}, {0, 0});
    path.Closeto();
    ASSERT_EQ(path.LockG1(0), 1);
    PathPoint const pts[] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
    EXPECT_EQ(path.ReplaceSegment(1, pts, 3), 1);
    EXPECT_EQ(TagsOf(path), (Tags{129, 8, 9, 10, 8, 9, 139}));
    EXPECT_EQ(path.points[5], PathPoint(-1, 0));
    EXPECT_EQ(path.IsG1Continuous(0), 0);
}

TEST(HvPath2f_edit, TakesReplacementsFromItsOwnPoints)
{
    OpenPath path = SmoothRun();
    PathImage const before = ImageOf(path);
    EXPECT_EQ(path.ReplaceSegment(4, path.points.Data() + 3, 3), 1);
    EXPECT_EQ(ImageOf(path), before);
    OpenPath line = SmoothRun();
    EXPECT_EQ(line.ReplaceSubpathSection(3, 9, line.points[1], line.points[11]), 1);
    EXPECT_EQ(line.points[4], PathPoint(2, 0));
    EXPECT_EQ(line.points[5], PathPoint(37, 0));
    EXPECT_EQ(TagsOf(line), (Tags{1, 8, 9, 10, 8, 9, 10, 8, 9, 10}));
}

// Sections.

TEST(HvPath2f_edit, CollapsesASectionToALine)
{
    OpenPath path = SmoothRun();
    path.tags[9] |= 64;
    EXPECT_EQ(path.ReplaceSubpathSection(3, 9), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 8, 9, 10, 67, 8, 9, 10}));
    EXPECT_EQ(path.points[4], PathPoint(30, 0));
    PathImage const before = ImageOf(path);
    EXPECT_EQ(path.ReplaceSubpathSection(3, 4), 1) << "a line already";
    EXPECT_EQ(path.ReplaceSubpathSection(4, 3), 1) << "nothing lies between them";
    EXPECT_EQ(ImageOf(path), before);
    OpenPath loop = SmoothLoop();
    EXPECT_EQ(loop.ReplaceSubpathSection(3, 6), 1);
    EXPECT_EQ(TagsOf(loop), (Tags{1, 8, 9, 10, 4}));
    EXPECT_EQ(loop.ReplaceSubpathSection(0, 4), 1);
    EXPECT_EQ(TagsOf(loop), (Tags{1, 4}));
}

TEST(HvPath2f_edit, CollapsesASectionToACubic)
{
    PathPoint const p(1, 8);
    PathPoint const q(2, 9);
    // One point between: a quadratic, and two lines. None: a line.
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({1, 0}, {2, 0});
    path.Lineto({3, 0});
    path.Lineto({4, 0});
    path.Lineto({5, 0});
    OpenPath edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(0, 2, p, q), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 8, 9, 10, 3, 3, 3}));
    EXPECT_EQ(edited.points[1], p);
    EXPECT_EQ(edited.points[2], q);
    edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(3, 5, p, q), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 5, 6, 3, 8, 9, 10}));
    EXPECT_EQ(edited.points[4], p);
    EXPECT_EQ(edited.points[5], q);
    edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(3, 4, p, q), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 5, 6, 3, 8, 9, 10, 3}));
    EXPECT_EQ(edited.points[6], PathPoint(4, 0));
    // Two and more points between.
    edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(0, 3, p, q), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 8, 9, 10, 3, 3}));
    edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(0, 5, p, q), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 8, 9, 10}));
    EXPECT_EQ(edited.points[3], PathPoint(5, 0));
}

TEST(HvPath2f_edit, StoresTheTagsOfTheNewCubicWhole)
{
    for (unsigned int const last : {3u, 9u}) {
        OpenPath path = SmoothRun();
        for (unsigned char& tag : path.tags) {
            tag |= 64;
        }
        EXPECT_EQ(path.ReplaceSubpathSection(0, last, {1, 1}, {2, 2}), 1);
        EXPECT_EQ(path.tags[1], 8);
        EXPECT_EQ(path.tags[2], 9);
        EXPECT_EQ(path.tags[3], 74);
    }
}

TEST(HvPath2f_edit, TurnsTheHandlesBesideANewCubic)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.LockG1(6);
    path.LockG1(9);
    EXPECT_EQ(path.ReplaceSubpathSection(3, 9, {10, 2}, {30, 6}), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 8, 9, 138, 8, 9, 138, 8, 9, 10}));
    EXPECT_EQ(path.points[2], PathPoint(10, -3));
    EXPECT_EQ(path.points[7], PathPoint(30, -4));
}

TEST(HvPath2f_edit, CopiesASectionOfAnotherPathIn)
{
    OpenPath source;
    source.Moveto({9, 9});
    source.Lineto({10, 0});
    source.Curveto({12, 1}, {13, 3}, {15, 4});
    source.Curveto({17, 5}, {18, 6}, {20, 5});
    source.Curveto({22, 4}, {23, 3}, {30, 0});
    source.Lineto({10, 0});
    source.LockG1(4);
    source.tags[7] |= 64;
    ASSERT_EQ(source.tags[4], 138);
    // Two cubics by three, roles, locks and reserved bits with them.
    OpenPath path = SmoothRun();
    EXPECT_EQ(path.ReplaceSubpathSection(3, 9, source, 1, 10), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 8, 9, 10, 8, 9, 138, 8, 9, 74, 8, 9, 10, 8, 9, 10}));
    for (unsigned int k = 1; k <= 10; ++k) {
        EXPECT_EQ(path.points[2 + k], source.points[k]);
    }
    // A line in, and a section in place of a line.
    OpenPath back = SmoothRun();
    back.ReplacePointIgnoringLock(3, {30, 0});
    back.ReplacePointIgnoringLock(9, {10, 0});
    EXPECT_EQ(back.ReplaceSubpathSection(3, 9, source, 10, 11), 1);
    EXPECT_EQ(TagsOf(back), (Tags{1, 8, 9, 10, 3, 8, 9, 10}));
    OpenPath line;
    line.Moveto({10, 0});
    line.Lineto({30, 0});
    EXPECT_EQ(line.ReplaceSubpathSection(0, 1, source, 1, 10), 1);
    EXPECT_EQ(TagsOf(line), (Tags{1, 8, 9, 138, 8, 9, 74, 8, 9, 10}));
}

TEST(HvPath2f_edit, GivesACopiedSectionTheEndOfItsTarget)
{
    // Ends at (0, 0) after a quadratic: closing or plain in the source and in the target.
    for (bool const isSourceClosed : {false, true}) {
        for (bool const isTargetClosed : {false, true}) {
            OpenPath source;
            source.Moveto({0, 0});
            source.Lineto({5, 5});
            source.Curveto({1, 2}, {0, 0});
            if (isSourceClosed) {
                source.Closeto();
            }
            OpenPath target;
            target.Moveto({0, 0});
            target.Lineto({5, 5});
            target.Lineto({0, 0});
            if (isTargetClosed) {
                target.Closeto();
            }
            target.tags[2] |= 64;
            EXPECT_EQ(target.ReplaceSubpathSection(1, 2, source, 1, 3), 1);
            EXPECT_EQ(TagsOf(target), (Tags{1, 3, 5, isTargetClosed ? 71u : 70u}));
        }
    }
}

TEST(HvPath2f_edit, CopiesASectionOfItself)
{
    // The second subpath is the first one, longer and elsewhere on the way.
    OpenPath path;
    path.Moveto({0, 0});
    path.Curveto({1, 1}, {2, 2}, {9, 0});
    path.Moveto({0, 0});
    path.Curveto({3, 3}, {4, 4}, {5, 5});
    path.Curveto({6, 6}, {7, 7}, {9, 0});
    OpenPath const other = path;
    OpenPath expected = path;
    ASSERT_EQ(expected.ReplaceSubpathSection(0, 3, other, 4, 10), 1);
    OpenPath edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(0, 3, edited, 4, 10), 1);
    EXPECT_EQ(ImageOf(edited), ImageOf(expected));
    // The same section onto itself changes nothing.
    edited = path;
    EXPECT_EQ(edited.ReplaceSubpathSection(4, 10, edited, 4, 10), 1);
    EXPECT_EQ(ImageOf(edited), ImageOf(path));
}

// Removing.

TEST(HvPath2f_edit, RemovesASubpathByAnyOfItsPoints)
{
    for (unsigned int i = 4; i < 8; ++i) {
        OpenPath path = ThreeSubpaths();
        EXPECT_EQ(path.RemoveSubpath(i), 1);
        EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4, 1, 8, 9, 10}));
        EXPECT_EQ(path.points[4], PathPoint(20, 0));
        EXPECT_EQ(path.lastSubpathOpen, 1);
    }
}

TEST(HvPath2f_edit, TellsAfterARemovalWhetherTheLastSubpathIsOpen)
{
    OpenPath path = ThreeSubpaths();
    path.OpenSubpath(0);
    EXPECT_EQ(path.RemoveSubpath(8), 1);
    EXPECT_EQ(path.lastSubpathOpen, 0) << "the second is closed";
    EXPECT_EQ(path.RemoveSubpath(4), 1);
    EXPECT_EQ(path.lastSubpathOpen, 1) << "the first is open";
    path.lastSubpathOpen = 5;
    EXPECT_EQ(path.RemoveSubpath(0), 1);
    EXPECT_EQ(path.NumPoints(), 0u);
    EXPECT_EQ(path.lastSubpathOpen, 5) << "an emptied path keeps its flag";
    EXPECT_EQ(path.RemoveSubpath(0), 0);
    // Removing the first leaves the flag alone too.
    OpenPath first = ThreeSubpaths();
    first.lastSubpathOpen = 5;
    first.RemoveSubpath(0);
    EXPECT_EQ(first.lastSubpathOpen, 5);
}

TEST(HvPath2f_edit, CutsASectionOutOfAnOpenSubpath)
{
    struct Case {
        unsigned int first, last;
        Tags tags;
    };
    for (Case const& c :
         std::vector<Case>{{3, 9, {65, 72, 73, 74, 65, 72, 73, 74}},           // in the middle
                           {0, 3, {65, 72, 73, 74, 72, 73, 74, 72, 73, 74}},   // at the head
                           {9, 12, {65, 72, 73, 74, 72, 73, 74, 72, 73, 74}},  // at the end
                           {0, 12, {65}},                                      // all
                           {3, 6, {65, 72, 73, 74, 65, 72, 73, 74, 72, 73, 74}}}) {
        OpenPath path = SmoothRun();
        path.LockG1(3);
        path.LockG1(6);
        path.LockG1(9);
        for (unsigned char& tag : path.tags) {
            tag |= 64;
        }
        EXPECT_EQ(path.RemoveSubpathSection(c.first, c.last), 1);
        for (unsigned char& tag : path.tags) {
            tag &= 127;  // locks of nodes elsewhere stay, see below
        }
        EXPECT_EQ(TagsOf(path), c.tags);
    }
}

TEST(HvPath2f_edit, UnlocksTheNodesOfACutAndNoOthers)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.LockG1(6);
    path.LockG1(9);
    EXPECT_EQ(path.RemoveSubpathSection(3, 6), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 8, 9, 10, 1, 8, 9, 138, 8, 9, 10}));
}

TEST(HvPath2f_edit, CutsAClosedSubpathOpen)
{
    OpenPath path = SmoothLoop();
    path.LockG1(0);
    path.LockG1(3);
    OpenPath edited = path;
    EXPECT_EQ(edited.RemoveSubpathSection(0, 3), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 8, 9, 10}));
    EXPECT_EQ(edited.points[0], PathPoint(10, 0));
    EXPECT_EQ(edited.lastSubpathOpen, 1);
    edited = path;
    EXPECT_EQ(edited.RemoveSubpathSection(3, 6), 1);
    EXPECT_EQ(TagsOf(edited), (Tags{1, 8, 9, 10}));
    EXPECT_EQ(edited.points[3], PathPoint(10, 0));
    // In the middle: two subpaths are left, which are not joined over the seam.
    OpenPath triangle = Triangle();
    EXPECT_EQ(triangle.RemoveSubpathSection(1, 2), 1);
    EXPECT_EQ(TagsOf(triangle), (Tags{1, 3, 1, 3}));
    EXPECT_EQ(triangle.lastSubpathOpen, 1);
    // Not the last subpath: the flag is not touched.
    OpenPath three = ThreeSubpaths();
    three.lastSubpathOpen = 5;
    EXPECT_EQ(three.RemoveSubpathSection(4, 5), 1);
    EXPECT_EQ(TagsOf(three), (Tags{1, 3, 3, 4, 1, 3, 3, 1, 8, 9, 10}));
    EXPECT_EQ(three.lastSubpathOpen, 5);
}

// Refusals.

TEST(HvPath2f_edit, RefusesAndLeavesThePathAsItWas)
{
    // The nodes 0, 3, 6, 9, 12 of the run, of which 3 and 9 are locked; then a triangle 13 to 16.
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.LockG1(9);
    path.Moveto({0, 0});
    path.Lineto({4, 0});
    path.Lineto({0, 3});
    path.Lineto({0, 0});
    path.Closeto();
    OpenPath lone;
    lone.Moveto({10, 0});
    OpenPath const source = SmoothRun();
    PathPoint const p(1, 1);
    PathPoint const run[] = {{10, 0}, {1, 1}, {2, 2}, {20, 0}, {4, 4}, {5, 5},
                             {6, 6},  {7, 7}, {8, 8}, {9, 9},  {20, 0}};
    PathPoint const quadratic[] = {{10, 0}, {1, 1}, {20, 0}};
    PathPoint const line[] = {{10, 0}, {20, 0}};
    PathPoint const after[] = {{20, 0}, {30, 0}};
    PathPoint const wrong[] = {{10, 0}, {1, 1}, {2, 2}, {20, 1}};
    PathPoint const wrongStart[] = {{10, 1}, {1, 1}, {2, 2}, {20, 0}};
    std::function<int(HvPath2f&)> const calls[] = {
        // Segments: degrees, ends, locked ends, no such point.
        [&](HvPath2f& x) { return x.ReplaceSegment(4, run, 0); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, run, 9); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, run, 10); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, run, kNowhere); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, wrong, 3); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, wrongStart, 3); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, line, 1); },
        [&](HvPath2f& x) { return x.ReplaceSegment(4, quadratic, 2); },
        [&](HvPath2f& x) { return x.ReplaceSegment(7, after, 1); },
        [&](HvPath2f& x) { return x.ReplaceSegment(17, run, 3); },
        [&](HvPath2f& x) { return x.ReplaceSegment(kNowhere, run, 3); },
        // Sections by a line: handles, one node, locked nodes, two subpaths, no such point.
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(1, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(0, 5); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 9); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(9, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(12, 13); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 14); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(12, 17); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(kNowhere, 12); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(17, 18); },
        // By a cubic.
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(1, 6, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(0, 5, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 6, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(9, 6, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(12, 13, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 14, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(12, 17, p, p); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(0, kNowhere, p, p); },
        // By a section of a source: the target's nodes, the source's, ends, locks.
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(1, 6, source, 3, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 6, source, 6, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 3, source, 6, 3); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 3, 5); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 6, 3); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 3, 3); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 3, 9); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 0, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 17, source, 3, 6); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 3, kNowhere); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, source, 3, 13); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(6, 14, source, 6, 12); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, HvPath2f(0u), 0, 1); },
        [&](HvPath2f& x) { return x.ReplaceSubpathSection(3, 6, lone, 0, 1); },
        // Removing: as sections.
        [&](HvPath2f& x) { return x.RemoveSubpath(17); },
        [&](HvPath2f& x) { return x.RemoveSubpath(kNowhere); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(6, 3); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(6, 6); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(4, 6); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(3, 7); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(12, 13); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(12, 14); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(12, 17); },
        [&](HvPath2f& x) { return x.RemoveSubpathSection(0, kNowhere); },
    };
    int number = 0;
    for (auto const& call : calls) {
        SCOPED_TRACE(number++);
        OpenPath edited = path;
        EXPECT_EQ(call(edited), 0);
        EXPECT_EQ(ImageOf(edited), ImageOf(path));
    }
}

TEST(HvPath2f_edit, RefusesALineOrAQuadraticBesideALockedEnd)
{
    OpenPath path = SmoothRun();
    path.LockG1(3);
    path.LockG1(6);
    OpenPath const locked = path;
    // Sources from (10, 0) to (20, 0) that begin, and that end, with each degree.
    for (unsigned int const degree : {1u, 2u, 3u}) {
        PathPoint const low[] = {{12, 1}, {13, 2}, {15, 0}};
        OpenPath begins;
        begins.Moveto({10, 0});
        begins.AltCurveto(low, degree);
        begins.Curveto({1, 1}, {2, 2}, {20, 0});
        path = locked;
        EXPECT_EQ(path.ReplaceSubpathSection(3, 6, begins, 0, degree + 3), degree == 3 ? 1 : 0);
    }
    for (unsigned int const degree : {1u, 2u, 3u}) {
        PathPoint pts[] = {{12, 1}, {13, 2}, {15, 0}};
        pts[degree - 1] = {20, 0};
        OpenPath ends;
        ends.Moveto({10, 0});
        ends.Curveto({1, 1}, {2, 2}, {15, 0});
        ends.AltCurveto(pts, degree);
        path = locked;
        EXPECT_EQ(path.ReplaceSubpathSection(3, 6, ends, 0, 3 + degree), degree == 3 ? 1 : 0);
        if (degree != 3) {
            EXPECT_EQ(ImageOf(path), ImageOf(locked));
        }
    }
}
