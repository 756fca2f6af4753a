// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Trims and dashes.

#include <tools/play/evaluation/PathLength.h>
#include <tools/play/evaluation/path_pieces.h>

#include <hv/shape/HvPath2fIter.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

using Point = HvPoint2<float>;

/// A square of side 10 from the origin, closed: 40 long.
HvPath2f Square()
{
    HvPath2f path(5u);
    path.Moveto(Point(0, 0));
    path.Lineto(Point(10, 0));
    path.Lineto(Point(10, 10));
    path.Lineto(Point(0, 10));
    path.Lineto(Point(0, 0));
    path.Closeto();
    return path;
}

/// A quarter of a circle of radius 100 as a cubic.
HvPath2f Arc()
{
    HvPath2f path(4u);
    path.Moveto(Point(100, 0));
    path.Curveto(Point(100, 55.22847F), Point(55.22847F, 100), Point(0, 100));
    return path;
}

HvPath2f Line(float length)
{
    HvPath2f path(2u);
    path.Moveto(Point(0, 0));
    path.Lineto(Point(length, 0));
    return path;
}

std::vector<double> LengthsOf(HvPath2f const& path)
{
    std::vector<double> lengths;
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        lengths.push_back(PathLength(path, first, last).Length());
    }
    return lengths;
}

double TotalOf(HvPath2f const& path)
{
    double total = 0.0;
    for (double const length : LengthsOf(path)) {
        total += length;
    }
    return total;
}

}  // namespace

TEST(PathLength, OfLinesAndCubics)
{
    EXPECT_DOUBLE_EQ(TotalOf(Square()), 40.0);
    // The cubic is within 0.03 % of the circle, and 32 chords within 0.01 % of the cubic.
    EXPECT_NEAR(TotalOf(Arc()), 100.0 * std::acos(-1.0) / 2, 0.04);
}

TEST(TrimRange, OrderAndFullTurnsDoNotMatter)
{
    for (double const offset : {-2.0, -1.0, 0.0, 1.0, 5.0}) {
        TrimRange const range = TrimRange_Of(0.75, 0.25, offset);
        EXPECT_DOUBLE_EQ(range.start, 0.25) << offset;
        EXPECT_DOUBLE_EQ(range.End(), 0.75) << offset;
    }
    TrimRange const wrapped = TrimRange_Of(0.25, 0.75, 0.5);
    EXPECT_DOUBLE_EQ(wrapped.start, 0.75);
    EXPECT_DOUBLE_EQ(wrapped.End(), 1.25);
    EXPECT_TRUE(TrimRange_Of(0, 1, 0.3).IsWhole());
    EXPECT_TRUE(TrimRange_Of(-1, 2, 0).IsWhole()) << "beyond the ends there is nothing";
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_DOUBLE_EQ(TrimRange_Of(nan, nan, nan).length, 0.0);
}

TEST(PathPieces_Trim, LeavesTheRange)
{
    HvPath2f const piece = PathPieces_Trim(Square(), TrimRange_Of(0.125, 0.5, 0));
    EXPECT_EQ(piece.NumSubpaths(), 1u);
    EXPECT_EQ(piece.GetPoint(0), Point(5, 0));
    EXPECT_EQ(piece.GetCurrentPoint(), Point(10, 10));
    EXPECT_DOUBLE_EQ(TotalOf(piece), 15.0);
    EXPECT_EQ(PathPieces_Trim(Square(), TrimRange_Of(0.5, 0.5, 0)).NumPoints(), 0u);
}

TEST(PathPieces_Trim, TheWholeStaysClosed)
{
    EXPECT_NE(PathPieces_Trim(Square(), TrimRange_Of(0, 1, 0.4)).IsSubpathClosed(0), 0);
}

TEST(PathPieces_Trim, RunsOverTheSeamOfAClosedSubpathInOnePiece)
{
    HvPath2f const closed = PathPieces_Trim(Square(), TrimRange_Of(0.75, 1.0, 0.125));
    EXPECT_EQ(closed.NumSubpaths(), 1u);
    EXPECT_EQ(closed.GetPoint(0), Point(0, 5));
    EXPECT_EQ(closed.GetCurrentPoint(), Point(5, 0));
    HvPath2f const open = PathPieces_Trim(Line(8), TrimRange_Of(0.75, 1.0, 0.125));
    EXPECT_EQ(open.NumSubpaths(), 2u);
    EXPECT_DOUBLE_EQ(TotalOf(open), 2.0);
}

TEST(PathPieces_Trim, KeepsTheShareOfTheLength)
{
    EXPECT_TRUE(rc::check([] {
        double const start = *rc::gen::inRange(0, 1000) / 1000.0;
        double const end = *rc::gen::inRange(0, 1000) / 1000.0;
        double const offset = *rc::gen::inRange(-3000, 3000) / 1000.0;
        HvPath2f const path = *rc::gen::element(Square(), Arc(), Line(7));
        double const left = TotalOf(PathPieces_Trim(path, TrimRange_Of(start, end, offset)));
        // Chords of a piece are finer than those of the whole: up to a thousandth.
        RC_ASSERT(std::fabs(left - std::fabs(end - start) * TotalOf(path)) < 1e-3 * TotalOf(path));
    }));
}

TEST(PathPieces_TrimAsOne, RunsFromPathToPath)
{
    HvPath2f first = Line(10);
    HvPath2f second = Line(30);
    PathPieces_TrimAsOne({&first, &second}, TrimRange_Of(0.125, 0.5, 0));
    EXPECT_DOUBLE_EQ(TotalOf(first), 5.0);
    EXPECT_DOUBLE_EQ(TotalOf(second), 10.0);
    first = Line(10);
    second = Line(30);
    PathPieces_TrimAsOne({&first, &second}, TrimRange_Of(0.875, 1.0, 0.0625));
    EXPECT_DOUBLE_EQ(TotalOf(first), 2.5) << "over the end of the run";
    EXPECT_DOUBLE_EQ(TotalOf(second), 2.5);
}

TEST(PathPieces_Dash, PaintsAndLeavesOutInTurn)
{
    EXPECT_EQ(LengthsOf(PathPieces_Dash(Line(10), {3, 2}, 0)), (std::vector<double>{3, 3}));
    EXPECT_EQ(LengthsOf(PathPieces_Dash(Line(10), {3, 2}, 1)), (std::vector<double>{2, 3, 1}));
    EXPECT_EQ(LengthsOf(PathPieces_Dash(Line(10), {3, 2}, -1)), (std::vector<double>{3, 3}));
    EXPECT_EQ(PathPieces_Dash(Line(10), {3, 2}, -1).GetPoint(0), Point(1, 0));
    EXPECT_EQ(LengthsOf(PathPieces_Dash(Line(12), {3}, 0)), (std::vector<double>{3, 3}))
        << "an odd pattern runs twice";
}

TEST(PathPieces_Dash, PatternsWithoutLengthLeaveThePathWhole)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinity = std::numeric_limits<double>::infinity();
    for (std::vector<double> const& dashes :
         {std::vector<double>{}, {0, 0}, {nan}, {-1, -2}, {1e-9, 1e-9}, {infinity, 1e-12}}) {
        EXPECT_EQ(LengthsOf(PathPieces_Dash(Line(10), dashes, nan)), (std::vector<double>{10}));
    }
    EXPECT_EQ(TotalOf(PathPieces_Dash(Line(10), {4, 1}, 1e300)), 8.0);
}
