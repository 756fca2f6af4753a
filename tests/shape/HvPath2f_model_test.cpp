// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Random edits of a path and of a slow model of it: results, points, tags and structure agree.

#include "path_model.h"

#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>

#include <tests/support/generators.h>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <memory>

namespace {

unsigned int PickBelow(unsigned int end)
{
    return PickInRange<unsigned int>(0, end);
}

// A coarse grid, so that ends meet and handles come in line by chance.
PathPoint PickPoint()
{
    return {float(PickInRange(-2, 3)), float(PickInRange(-2, 3))};
}

std::vector<PathPoint> PickPoints(unsigned int count)
{
    std::vector<PathPoint> pts(count);
    std::generate(pts.begin(), pts.end(), PickPoint);
    return pts;
}

/// A path and its model.
struct Twins {
    OpenPath path;
    PathModel model;

    bool AreAlike() const { return ImageOf(path) == model.Image(); }
};

void AppendSegment(Twins& twins, std::vector<PathPoint> const& pts)
{
    twins.model.Curve(pts);
    unsigned int const degree = static_cast<unsigned int>(pts.size());
    if (degree == 1 && PickBelow(2) == 0) {
        twins.path.Lineto(pts[0]);
    } else if (degree == 2 && PickBelow(2) == 0) {
        twins.path.Curveto(pts[0], pts[1]);
    } else if (degree == 3 && PickBelow(2) == 0) {
        twins.path.Curveto(pts[0], pts[1], pts[2]);
    } else {
        twins.path.AltCurveto(pts.data(), degree);
    }
}

// Mostly cubics, in line with the segment before where that leaves a choice, so that many nodes can
// be locked.
void AppendSubpath(Twins& twins)
{
    PathPoint const start = PickPoint();
    twins.path.Moveto(start);
    twins.model.Moveto(start);
    unsigned int const count = PickBelow(6);
    PathPoint before = start;
    for (unsigned int k = 0; k < count; ++k) {
        unsigned int const degree = PickBelow(3) != 0 ? 3 : 1 + PickBelow(8);
        std::vector<PathPoint> pts = PickPoints(degree);
        PathPoint const at = twins.model.subpaths.back().back().p;
        if (PickBelow(4) != 0) {
            pts[0] = at + at - before;
        }
        if (k + 1 == count && PickBelow(3) != 0) {
            pts.back() = start;
            if (PickBelow(2) != 0 && degree > 1) {
                pts[degree - 2] = start + start - twins.path.GetPoint(twins.path.NumPoints() - 1);
            }
        }
        before = degree > 1 ? pts[degree - 2] : at;
        AppendSegment(twins, pts);
    }
    if (PickBelow(3) != 0) {
        RC_ASSERT(twins.path.Closeto() == twins.model.Closeto());
    }
}

Twins PickTwins()
{
    Twins twins;
    unsigned int const count = 1 + PickBelow(3);
    for (unsigned int k = 0; k < count; ++k) {
        AppendSubpath(twins);
    }
    return twins;
}

void LockAll(Twins& twins)
{
    for (unsigned int i = 0; i < twins.model.Count(); ++i) {
        RC_ASSERT(twins.path.LockG1(i) == twins.model.Lock(i));
    }
}

// Ends and degree of a segment of the path, with other controls.
std::vector<PathPoint> PickSegment(HvPath2f const& path, unsigned int i)
{
    std::vector<PathPoint> pts = PickPoints(2 + PickBelow(8));
    if (PickBelow(8) != 0) {
        pts.front() = path.GetPoint(path.StartOfSegment(i));
        pts.back() = path.GetPoint(path.EndOfSegment(i));
    }
    return pts;
}

// A random node of the subpath of `i`, or any point.
unsigned int PickNodeNear(Twins const& twins, unsigned int i)
{
    std::vector<unsigned int> nodes;
    unsigned int first = 0;
    unsigned int last = 0;
    twins.path.GetSubpathIndices(i, first, last);
    for (unsigned int k = first; k <= last; ++k) {
        if (PathModel::IsNode(twins.model.At(k))) {
            nodes.push_back(k);
        }
    }
    return PickBelow(8) != 0 ? nodes[PickBelow(unsigned(nodes.size()))]
                             : PickBelow(twins.model.Count());
}

// Mostly a locked node or a point beside one, where there is any.
unsigned int PickNearLock(Twins const& twins)
{
    unsigned int const count = twins.model.Count();
    std::vector<unsigned int> near;
    for (unsigned int i = 0; i < count; ++i) {
        if (twins.model.At(i).isLocked) {
            near.insert(near.end(), {i > 0 ? i - 1 : 0, i, std::min(i + 1, count - 1)});
        }
    }
    return near.empty() || PickBelow(4) == 0 ? PickBelow(count)
                                             : near[PickBelow(unsigned(near.size()))];
}

void ReplaceBySource(Twins& twins, unsigned int first, unsigned int last)
{
    bool const isOwn = PickBelow(3) == 0;
    Twins other = PickTwins();
    LockAll(other);
    Twins& source = isOwn ? twins : other;
    unsigned int sourceFirst = PickNodeNear(source, PickBelow(source.model.Count()));
    unsigned int sourceLast = PickNodeNear(source, sourceFirst);
    if (sourceFirst > sourceLast && PickBelow(4) != 0) {
        std::swap(sourceFirst, sourceLast);
    }
    // Bring the ends together, as a caller does.
    if (PickBelow(8) != 0 && !isOwn) {
        PathPoint const a = twins.path.GetPoint(first);
        PathPoint const b = twins.path.GetPoint(last);
        source.path.ReplacePointIgnoringLock(sourceFirst, a);
        source.model.ReplaceIgnoringLock(sourceFirst, a);
        source.path.ReplacePointIgnoringLock(sourceLast, b);
        source.model.ReplaceIgnoringLock(sourceLast, b);
    }
    RC_ASSERT(twins.path.ReplaceSubpathSection(first, last, source.path, sourceFirst, sourceLast) ==
              twins.model.ReplaceBySource(first, last, source.model, sourceFirst, sourceLast));
}

void Move(Twins& twins)
{
    unsigned int const i = PickNearLock(twins);
    PathPoint const p = PickPoint();
    int const keepRatio = PickInRange(0, 2);
    twins.path.ReplacePoint(i, p, keepRatio);
    twins.model.Replace(i, p, keepRatio);
}

void MoveIgnoringLock(Twins& twins)
{
    unsigned int const i = PickNearLock(twins);
    PathPoint const p = PickPoint();
    twins.path.ReplacePointIgnoringLock(i, p);
    twins.model.ReplaceIgnoringLock(i, p);
}

// One random edit of both.
void Edit(Twins& twins)
{
    HvPath2f& path = twins.path;
    PathModel& model = twins.model;
    unsigned int const i = PickBelow(model.Count());
    unsigned int first = PickNodeNear(twins, i);
    unsigned int last = PickNodeNear(twins, first);
    if (first > last && PickBelow(4) != 0) {
        std::swap(first, last);
    }
    switch (PickBelow(14)) {
    case 0:
        AppendSubpath(twins);
        break;
    case 1:
        Move(twins);
        break;
    case 2: {
        PathPoint const d = PickPoint();
        RC_ASSERT(path.ReplaceTangentVectorDirections(first, d) == model.ReplaceTangents(first, d));
        break;
    }
    case 3:
        RC_ASSERT(path.LockG1(i) == model.Lock(i));
        break;
    case 4:
        LockAll(twins);
        break;
    case 5:
        RC_ASSERT(path.CloseSubpath(i) == model.Close(i));
        break;
    case 6:
        RC_ASSERT(path.OpenSubpath(i) == model.Open(i));
        break;
    case 7: {
        std::vector<PathPoint> const pts = PickSegment(path, i);
        RC_ASSERT(path.ReplaceSegment(i, pts.data(), unsigned(pts.size()) - 1) ==
                  model.ReplaceSegment(i, pts));
        break;
    }
    case 8:
        RC_ASSERT(path.ReplaceSubpathSection(first, last) == model.ReplaceByLine(first, last));
        break;
    case 9: {
        PathPoint const p = PickPoint();
        PathPoint const q = PickPoint();
        RC_ASSERT(path.ReplaceSubpathSection(first, last, p, q) ==
                  model.ReplaceByCubic(first, last, p, q));
        break;
    }
    case 10:
        ReplaceBySource(twins, first, last);
        break;
    case 11:
        MoveIgnoringLock(twins);
        break;
    case 12:
        RC_ASSERT(path.RemoveSubpath(i) == model.RemoveSubpath(i));
        break;
    default:
        RC_ASSERT(path.RemoveSubpathSection(first, last) == model.RemoveSection(first, last));
        break;
    }
    if (model.Count() == 0) {
        AppendSubpath(twins);
    }
}

// Each answer about the structure, at each point, from the lists of the model.
void CompareStructure(Twins const& twins)
{
    HvPath2f const& path = twins.path;
    unsigned int i = 0;
    unsigned int segments = 0;
    unsigned int nodes = 0;
    unsigned int closed = 0;
    unsigned int largest = 0;
    HvPath2fIter iter(path);
    for (PathModel::Subpath const& s : twins.model.subpaths) {
        unsigned int const first = i;
        unsigned int const last = first + unsigned(s.size()) - 1;
        unsigned int a = 0;
        unsigned int b = 0;
        RC_ASSERT(iter.GetNextSubPathIndices(a, b) == 1);
        RC_ASSERT((a == first && b == last));
        segments += s.size() == 1 ? 1 : 0;
        for (PathModel::Record const& r : s) {
            bool const isStart = i == first;
            PathModel::Record const& of = isStart && s.size() > 1 ? s[1] : r;
            unsigned int const start = i - r.place;
            unsigned int const end =
                isStart && s.size() > 1 ? i + of.degree : i + r.degree - r.place;
            largest = std::max(largest, r.degree);
            nodes += PathModel::IsNode(r) ? 1 : 0;
            closed += r.isClosing ? 1 : 0;
            segments += !isStart && PathModel::IsNode(r) ? 1 : 0;
            RC_ASSERT(path.Degree(i) == of.degree);
            RC_ASSERT(path.GetDegree(i) == of.degree);
            RC_ASSERT(path.StartOfSegment(i) == start);
            RC_ASSERT(path.EndOfSegment(i) == end);
            path.GetSegmentIndices(i, a, b);
            RC_ASSERT((a == start && b == end));
            path.GetSubpathIndices(i, a, b);
            RC_ASSERT((a == first && b == last));
            RC_ASSERT(path.IsStartOfSubpath(i) == (isStart ? 1 : 0));
            int isClosed = 7;
            RC_ASSERT(path.IsEndOfSubpath(i, isClosed) == (i == last ? 1 : 0));
            RC_ASSERT(isClosed == (i == last ? int(s.back().isClosing) : 7));
            RC_ASSERT(path.IsSubpathClosed(i) == int(s.back().isClosing));
            RC_ASSERT(path.IsG1Continuous(i) == twins.model.IsG1(i));
            ++i;
        }
    }
    unsigned int a = 0;
    unsigned int b = 0;
    RC_ASSERT(iter.GetNextSubPathIndices(a, b) == 0);
    RC_ASSERT(path.NumPoints() == i);
    RC_ASSERT(path.NumSubpaths() == twins.model.subpaths.size());
    RC_ASSERT(path.NumSegments() == segments);
    RC_ASSERT(path.NumNodes() == nodes);
    RC_ASSERT(path.NumNodesExceptLastNodeOfClosedSubpaths() == nodes - closed);
    RC_ASSERT(path.LargestDegree() == largest);
    RC_ASSERT(path.IsPolyline() == (i > 0 && largest <= 1 ? 1 : 0));
}

}  // namespace

TEST(HvPath2f_model, RandomEditsAgreeWithTheModel)
{
    EXPECT_TRUE(rc::check([] {
        Twins twins = PickTwins();
        LockAll(twins);
        RC_ASSERT(ImageOf(twins.path) == twins.model.Image());
        for (int step = 0; step < 12; ++step) {
            Edit(twins);
            RC_ASSERT(ImageOf(twins.path) == twins.model.Image());
        }
        CompareStructure(twins);
    }));
}

TEST(HvPath2f_model, RandomMovesOfLockedPathsAgreeWithTheModel)
{
    EXPECT_TRUE(rc::check([] {
        Twins twins = PickTwins();
        LockAll(twins);
        for (int step = 0; step < 30; ++step) {
            PickBelow(4) == 0 ? MoveIgnoringLock(twins) : Move(twins);
            RC_ASSERT(ImageOf(twins.path) == twins.model.Image());
        }
    }));
}

TEST(HvPath2f_model, StructureOfRandomPathsAgreesWithTheModel)
{
    EXPECT_TRUE(rc::check([] { CompareStructure(PickTwins()); }));
}

TEST(HvPath2f_model, PiecesOfRandomPathsAgreeWithTheModel)
{
    EXPECT_TRUE(rc::check([] {
        Twins twins = PickTwins();
        LockAll(twins);
        unsigned int const count = twins.model.Count();
        unsigned int first = PickNodeNear(twins, PickBelow(count));
        unsigned int last = PickNodeNear(twins, PickBelow(count));
        if (first > last) {
            std::swap(first, last);
        }
        // The model's piece: whole subpaths, the first cut at its start, the last at its end.
        PathModel piece;
        auto const [n, a] = twins.model.Find(first);
        auto const [m, b] = twins.model.Find(last);
        for (std::size_t s = n; s <= m; ++s) {
            PathModel::Subpath const& all = twins.model.subpaths[s];
            piece.subpaths.emplace_back(all.begin() + std::ptrdiff_t(s == n ? a : 0),
                                        s == m ? all.begin() + std::ptrdiff_t(b) + 1 : all.end());
        }
        PathModel::Record& front = piece.subpaths.front().front();
        front = PathModel::Record{front.p, 0, 0, false, front.isLocked};
        PathModel::Subpath& end = piece.subpaths.back();
        bool const isClosed = end.back().isClosing && end.back().p == end.front().p;
        if (!isClosed) {
            end.front().isLocked = end.back().isLocked = end.back().isClosing = false;
        }
        piece.lastSubpathOpen = isClosed ? 0 : 1;
        RC_ASSERT(ImageOf(HvPath2f(twins.path, first, last)) == piece.Image());
    }));
}
