// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Life and building of paths.

#include <hv/shape/HvPath2f.h>

#include "path_test_support.h"
#include "slot_of.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <new>
#include <vector>

namespace {

using Tags = std::vector<unsigned int>;

// A point for each number, none of them alike.
PathPoint Numbered(unsigned int i)
{
    return {static_cast<float>(i), static_cast<float>(i * i)};
}

std::vector<PathPoint> NumberedPoints(unsigned int first, unsigned int count)
{
    std::vector<PathPoint> pts;
    for (unsigned int i = 0; i < count; ++i) {
        pts.push_back(Numbered(first + i));
    }
    return pts;
}

// A subpath of one segment of `degree` that ends where it starts.
OpenPath Loop(unsigned int degree)
{
    OpenPath path;
    path.Moveto({0, 0});
    std::vector<PathPoint> pts = NumberedPoints(1, degree);
    pts.back() = {0, 0};
    path.AltCurveto(pts.data(), degree);
    return path;
}

}  // namespace

// Building.

TEST(HvPath2f, StartsEmpty)
{
    HvPath2f const path(0u);
    EXPECT_EQ(ImageOf(path), PathImage());
    EXPECT_EQ(path.NumPoints(), 0u);
    EXPECT_EQ(path.MaxDegreeForThisImplementation(), 8u);
}

TEST(HvPath2f, ReservesTheCapacityAskedFor)
{
    struct Capacities : HvPath2f {
        explicit Capacities(unsigned int n) : HvPath2f(n) {}
        unsigned int OfPoints() const { return points.Capacity(); }
        unsigned int OfTags() const { return tags.Capacity(); }
    };
    EXPECT_EQ(Capacities(100).OfPoints(), 100u);
    EXPECT_EQ(Capacities(100).OfTags(), 100u);
    EXPECT_EQ(Capacities(0).OfPoints(), 1u);
    // Room that is there stays while it fills.
    Capacities path(100);
    path.Moveto({0, 0});
    path.Lineto({1, 1});
    EXPECT_EQ(path.OfPoints(), 100u);
}

TEST(HvPath2f, GivesTheRolesOfEachDegree)
{
    Tags const roles[] = {{3},
                          {5, 6},
                          {8, 9, 10},
                          {12, 13, 14, 15},
                          {17, 18, 19, 20, 21},
                          {23, 24, 25, 26, 27, 28},
                          {30, 31, 32, 33, 34, 35, 36},
                          {38, 39, 40, 41, 42, 43, 44, 45}};
    for (unsigned int degree = 1; degree <= 8; ++degree) {
        OpenPath path;
        path.Moveto(Numbered(0));
        std::vector<PathPoint> const pts = NumberedPoints(1, degree);
        path.AltCurveto(pts.data(), degree);
        Tags expected = roles[degree - 1];
        expected.insert(expected.begin(), 1);
        EXPECT_EQ(TagsOf(path), expected);
        EXPECT_EQ(ImageOf(path).points, NumberedPoints(0, degree + 1));

        OpenPath other;
        other.Moveto(Numbered(0));
        std::vector<PathPoint> const all = NumberedPoints(0, degree + 1);
        other.AltAltCurveto(HvPoint2fArray(all.data(), degree + 1), 1, degree);
        EXPECT_EQ(ImageOf(other), ImageOf(path));
    }
}

TEST(HvPath2f, DrawsLinesQuadraticsAndCubicsByName)
{
    OpenPath path;
    path.Moveto(Numbered(0));
    path.Lineto(Numbered(1));
    path.Curveto(Numbered(2), Numbered(3));
    path.Curveto(Numbered(4), Numbered(5), Numbered(6));
    path.Moveto(Numbered(7));
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 5, 6, 8, 9, 10, 1}));
    EXPECT_EQ(ImageOf(path).points, NumberedPoints(0, 8));
    EXPECT_EQ(path.GetCurrentPoint(), Numbered(7));
}

TEST(HvPath2f, AppendsNothingOfADegreeThatItDoesNotHave)
{
    OpenPath path = Triangle();
    PathImage const before = ImageOf(path);
    std::vector<PathPoint> const pts = NumberedPoints(0, 9);
    path.AltCurveto(pts.data(), 0);
    path.AltCurveto(pts.data(), 9);
    path.AltCurveto(pts.data(), std::numeric_limits<unsigned int>::max());
    HvPoint2fArray const array(pts.data(), 9);
    path.AltAltCurveto(array, 0, 0);
    path.AltAltCurveto(array, 0, 9);
    path.AltAltCurveto(array, 7, 3);
    path.AltAltCurveto(array, 10, 1);
    path.AltAltCurveto(array, std::numeric_limits<unsigned int>::max(), 3);
    EXPECT_EQ(ImageOf(path), before);
}

TEST(HvPath2f, TakesItsOwnPointsWhileItGrows)
{
    OpenPath path;
    path.Moveto({7, 8});
    for (int k = 0; k < 20; ++k) {
        path.Lineto(path.points[0]);
        path.Moveto(path.points[0]);
        path.Curveto(path.points[0], path.points[1], path.points[0]);
        path.AltCurveto(path.points.Data(), 2);
        path.AltAltCurveto(path.points, 0, 3);
    }
    for (PathPoint const& p : path.points) {
        EXPECT_EQ(p, PathPoint(7, 8));
    }
    EXPECT_EQ(path.NumPoints(), 1u + 20 * 10);
}

// Closeto.

TEST(HvPath2f, ClosesEachDegreeWithItsClosingEnd)
{
    unsigned int const closing[] = {4, 7, 11, 16, 22, 29, 37, 46};
    for (unsigned int degree = 1; degree <= 8; ++degree) {
        OpenPath path = Loop(degree);
        EXPECT_EQ(path.lastSubpathOpen, 1);
        path.tags[degree] |= 64 + 128;
        EXPECT_EQ(path.Closeto(), 1);
        EXPECT_EQ(path.tags[degree], closing[degree - 1] + 64 + 128);
        EXPECT_EQ(path.lastSubpathOpen, 0);
        // Once more: the role is no plain end any more, and stays.
        path.lastSubpathOpen = 1;
        EXPECT_EQ(path.Closeto(), 1);
        EXPECT_EQ(path.tags[degree], closing[degree - 1] + 64 + 128);
        EXPECT_EQ(path.lastSubpathOpen, 0);
    }
}

TEST(HvPath2f, ClosesATriangleInFourPoints)
{
    OpenPath const path = Triangle();
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 4}));
    EXPECT_EQ(path.NumNodes(), 4u);
    EXPECT_EQ(path.NumNodesExceptLastNodeOfClosedSubpaths(), 3u);
}

TEST(HvPath2f, DoesNotCloseOverARoundingDifference)
{
    OpenPath path;
    path.Moveto({1, 1});
    path.Lineto({2, 2});
    path.Lineto({std::nextafterf(1, 2), 1});
    PathImage const before = ImageOf(path);
    EXPECT_EQ(path.Closeto(), 0);
    EXPECT_EQ(ImageOf(path), before);
    // NaN differs from itself.
    float const nan = std::numeric_limits<float>::quiet_NaN();
    OpenPath strange;
    strange.Moveto({nan, 0});
    strange.Lineto({nan, 0});
    EXPECT_EQ(strange.Closeto(), 0);
    EXPECT_EQ(TagsOf(strange), (Tags{1, 3}));
    // Zeros of either sign are equal.
    OpenPath zeros;
    zeros.Moveto({0, 0});
    zeros.Lineto({-0.0F, 0});
    EXPECT_EQ(zeros.Closeto(), 1);
}

TEST(HvPath2f, ClosesTheLastSubpathAlone)
{
    OpenPath path;
    path.Moveto({0, 0});
    path.Lineto({1, 0});
    path.Lineto({0, 0});
    path.Moveto({5, 5});
    path.Lineto({6, 5});
    path.Lineto({5, 5});
    EXPECT_EQ(path.Closeto(), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1, 3, 3, 1, 3, 4}));
}

TEST(HvPath2f, LetsALonePointCountAsClosedWithoutARole)
{
    OpenPath path;
    path.Moveto({1, 2});
    EXPECT_EQ(path.Closeto(), 1);
    EXPECT_EQ(TagsOf(path), (Tags{1}));
    EXPECT_EQ(path.lastSubpathOpen, 0);
    OpenPath empty;
    EXPECT_EQ(empty.Closeto(), 0);
}

// Polylines at once.

TEST(HvPath2f, AppendsPolylinesAsTheirPointsOneByOneDo)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    // A closed triangle, a lone point, a line, a loop of no length, one that is no number, two
    // points alike in the middle, and one whose zeros have two signs.
    std::vector<std::vector<PathPoint>> const polylines = {
        {{0, 0}, {4, 0}, {0, 3}, {0, 0}},
        {{7, 7}},
        {{1, 2}, {3, 4}},
        {{5, 5}, {5, 5}},
        {{nan, 0}, {1, 1}, {nan, 0}},
        {{1, 1}, {2, 2}, {2, 2}, {3, 3}},
        {{0, 0}, {1, 0}, {-0.0F, 0}},
    };
    for (std::size_t first = 0; first < polylines.size(); ++first) {
        for (std::size_t end = first; end <= polylines.size(); ++end) {
            OpenPath expected = SmoothRun();
            OpenPath path = SmoothRun();
            std::vector<PathPoint> pts;
            std::vector<unsigned int> sizes;
            for (std::size_t i = first; i < end; ++i) {
                expected.Moveto(polylines[i][0]);
                for (std::size_t k = 1; k < polylines[i].size(); ++k) {
                    expected.Lineto(polylines[i][k]);
                }
                if (polylines[i].size() > 1) {
                    expected.Closeto();
                }
                pts.insert(pts.end(), polylines[i].begin(), polylines[i].end());
                sizes.push_back(static_cast<unsigned int>(polylines[i].size()));
            }
            path.AppendPolylines(pts.data(), sizes.data(), static_cast<unsigned int>(sizes.size()));
            EXPECT_EQ(ImageOf(path), ImageOf(expected)) << first << " to " << end;
        }
    }
}

TEST(HvPath2f, AppendsNothingForPolylinesWithoutPoints)
{
    OpenPath path = SmoothRun();
    path.AppendPolylines(nullptr, nullptr, 0);
    unsigned int const none[] = {0, 0};
    path.AppendPolylines(nullptr, none, 2);
    EXPECT_EQ(ImageOf(path), ImageOf(SmoothRun()));
    PathPoint const pts[] = {{1, 1}, {2, 2}, {1, 1}, {7, 7}};
    unsigned int const some[] = {0, 3, 0, 1, 0};
    path.AppendPolylines(pts, some, 5);
    std::vector<unsigned int> expected = TagsOf(SmoothRun());
    expected.insert(expected.end(), {1, 3, 4, 1});
    EXPECT_EQ(TagsOf(path), expected);
}

TEST(HvPath2f, GrowsOnceForPolylines)
{
    OpenPath path;
    std::vector<PathPoint> const pts = NumberedPoints(0, 300);
    unsigned int const sizes[] = {100, 200};
    path.AppendPolylines(pts.data(), sizes, 2);
    EXPECT_EQ(path.points.Capacity(), 512u);
    EXPECT_EQ(path.tags.Capacity(), 512u);
    EXPECT_EQ(path.NumSubpaths(), 2u);
    EXPECT_EQ(path.points[299], Numbered(299));
}

TEST(HvPath2f, RefusesMorePolylinesThanAPathHolds)
{
    OpenPath path = Triangle();
    PathPoint const p;
    unsigned int const sizes[] = {2000000000u, 2000000000u, 400000000u};
    EXPECT_THROW(path.AppendPolylines(&p, sizes, 3), std::bad_alloc);
    EXPECT_EQ(ImageOf(path), ImageOf(Triangle()));
}

// Copies.

TEST(HvPath2f, CopiesPointsTagsAndLocks)
{
    OpenPath path = SmoothLoop();
    ASSERT_EQ(path.LockG1(0), 1);
    path.tags[1] |= 64;
    path.Moveto({3, 3});
    PathImage const image = ImageOf(path);
    EXPECT_EQ(image.tags, (Tags{129, 72, 9, 10, 8, 9, 139, 1}));

    HvPath2f const copy(path);
    EXPECT_EQ(ImageOf(copy), image);
    std::unique_ptr<HvShape2f> const clone(path.Clone());
    ASSERT_NE(clone->QueryShapeKind(HvShape2f::Path), nullptr);
    EXPECT_EQ(ImageOf(static_cast<HvPath2f const&>(*clone)), image);

    OpenPath target = Triangle();
    target = path;
    EXPECT_EQ(ImageOf(target), image);
    target = *&target;
    EXPECT_EQ(ImageOf(target), image);
    // A shorter one, and an empty one.
    target = Triangle();
    EXPECT_EQ(ImageOf(target), ImageOf(Triangle()));
    target = HvPath2f(0u);
    EXPECT_EQ(ImageOf(target), PathImage());
}

TEST(HvPath2f, CopiesNothingThroughTheBase)
{
    OpenPath path = Triangle();
    OpenPath const other = SmoothLoop();
    HvShape2f& base = path;
    base = other;
    EXPECT_EQ(ImageOf(path), ImageOf(Triangle()));
}

TEST(HvPath2f, CopiesTakeAsMuchRoomAsTheyNeed)
{
    OpenPath path;
    path.Moveto({0, 0});
    for (int k = 0; k < 32; ++k) {
        path.Lineto({1, 1});
    }
    EXPECT_EQ(path.points.Capacity(), 64u);
    OpenPath const copy(path);
    EXPECT_EQ(copy.points.Capacity(), 33u);
    EXPECT_EQ(copy.tags.Capacity(), 33u);
}

TEST(HvPath2f, AnswersToItsOwnKind)
{
    HvPath2f const path(0u);
    EXPECT_EQ(path.QueryShapeKind(HvShape2f::Path), &path);
    EXPECT_EQ(path.QueryShapeKind(HvShape2f::NoShape), nullptr);
    EXPECT_EQ(path.QueryShapeKind(HvShape2f::Rect), nullptr);
    EXPECT_EQ(path.QueryShapeKind(HvShape2f::Oval), nullptr);
    EXPECT_EQ(path.QueryShapeKind(HvShape2f::PathProp1d), nullptr);
}

// Pieces.

TEST(HvPath2f, TakesAnOpenPieceOfAClosedSubpath)
{
    OpenPath path = SmoothLoop();
    path.LockG1(0);
    path.LockG1(3);
    // From the start to the inner node: its lock and that of the seam are gone.
    PathImage const head = ImageOf(HvPath2f(path, 0, 3));
    EXPECT_EQ(head.tags, (Tags{1, 8, 9, 10}));
    EXPECT_EQ(head.lastSubpathOpen, 1);
    // From the inner node to the end: opened too.
    PathImage const tail = ImageOf(HvPath2f(path, 3, 6));
    EXPECT_EQ(tail.tags, (Tags{1, 8, 9, 10}));
    EXPECT_EQ(tail.lastSubpathOpen, 1);
    EXPECT_EQ(tail.points.front(), PathPoint(10, 0));
}

TEST(HvPath2f, KeepsAWholeClosedPieceClosed)
{
    OpenPath path = Triangle();
    OpenPath const loop = SmoothLoop();
    path.Moveto({0, 0});
    path.Curveto({0, 5}, {10, 4}, {10, 0});
    path.Curveto({10, -2}, {0, -3}, {0, 0});
    path.Closeto();
    path.LockG1(4);
    path.Moveto({1, 1});
    PathImage const second = ImageOf(HvPath2f(path, 4, 10));
    EXPECT_EQ(second.tags, (Tags{129, 8, 9, 10, 8, 9, 139}));
    EXPECT_EQ(second.lastSubpathOpen, 0);
    // Several subpaths: the first stays closed, the last is opened.
    PathImage const both = ImageOf(HvPath2f(path, 0, 7));
    EXPECT_EQ(both.tags, (Tags{1, 3, 3, 4, 1, 8, 9, 10}));
    EXPECT_EQ(both.lastSubpathOpen, 1);
    // A first one that is cut keeps its closing end.
    EXPECT_EQ(TagsOf(HvPath2f(path, 1, 10)), (Tags{1, 3, 4, 129, 8, 9, 10, 8, 9, 139}));
}

TEST(HvPath2f, KeepsTheFlagsOfThePieceStartInSeveralSubpaths)
{
    OpenPath path = SmoothRun();
    path.tags[3] |= 64;
    path.LockG1(3);
    path.Moveto({1, 1});
    path.Lineto({2, 2});
    EXPECT_EQ(TagsOf(HvPath2f(path, 3, 14)), (Tags{193, 8, 9, 10, 8, 9, 10, 8, 9, 10, 1, 3}));
    // In one subpath the start is an end of the last subpath: unlocked, the reserved bit kept.
    EXPECT_EQ(TagsOf(HvPath2f(path, 3, 6)), (Tags{65, 8, 9, 10}));
}

TEST(HvPath2f, TakesPiecesOfOnePoint)
{
    OpenPath path = SmoothLoop();
    path.LockG1(0);
    for (unsigned int const i : {0u, 3u, 6u}) {
        PathImage const piece = ImageOf(HvPath2f(path, i, i));
        EXPECT_EQ(piece.tags, (Tags{1}));
        EXPECT_EQ(piece.lastSubpathOpen, 1);
    }
}

TEST(HvPath2f, GivesAnEmptyPieceWhereThereIsNone)
{
    OpenPath const path = Triangle();
    unsigned int const most = std::numeric_limits<unsigned int>::max();
    EXPECT_EQ(ImageOf(HvPath2f(path, 2, 1)), PathImage());
    EXPECT_EQ(ImageOf(HvPath2f(path, 0, 4)), PathImage());
    EXPECT_EQ(ImageOf(HvPath2f(path, 4, 4)), PathImage());
    EXPECT_EQ(ImageOf(HvPath2f(path, 0, most)), PathImage());
    EXPECT_EQ(ImageOf(HvPath2f(path, most, most)), PathImage());
    EXPECT_EQ(ImageOf(HvPath2f(HvPath2f(0u), 0, 0)), PathImage());
}

// Slots.

#if defined(__x86_64__) && defined(__GNUC__)
TEST(HvPath2f, SlotsStandBehindThoseOfAllShapes)
{
    using P = HvPath2f;
    using U = unsigned int;
    using Point = PathPoint;
    EXPECT_EQ(SlotOf(&P::ReplaceSegment), 34u);
    EXPECT_EQ(SlotOf(static_cast<int (P::*)(U, U)>(&P::ReplaceSubpathSection)), 35u);
    EXPECT_EQ(SlotOf(static_cast<int (P::*)(U, U, Point const&, Point const&)>(
                  &P::ReplaceSubpathSection)),
              36u);
    EXPECT_EQ(SlotOf(static_cast<int (P::*)(U, U, P const&, U, U)>(&P::ReplaceSubpathSection)),
              37u);
    EXPECT_EQ(SlotOf(&P::RemoveSubpath), 38u);
    EXPECT_EQ(SlotOf(&P::RemoveSubpathSection), 39u);
    // The covariant results take no slots of their own.
    EXPECT_EQ(SlotOf(&P::Clone), 4u);
    EXPECT_EQ(SlotOf(&P::Transform), 24u);
}
#endif
