// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The polygon scan converter that all fills run.

#include <hv/raster/internal/HvPolygonScanner.h>

#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Moves that sorting by insertion may make for each edge before another way is taken. Edges change
/// places rarely from one row to the next; only many that cross at once come near this.
constexpr std::size_t kInsertionMovesPerEdge = 16;

/// An order of all numbers, NaN last.
bool IsBefore(double a, double b)
{
    return a < b || (b != b && a == a);
}

}  // namespace

HvPolygonScanner::HvPolygonScanner(HvPolygons const& polygons, double scale,
                                   HvScanWindow const& window)
    : polygons_(polygons), window_(window), scale_(scale),
      firstColumn_(static_cast<double>(window.firstColumn)),
      endColumn_(window.firstColumn < window.endColumn ? static_cast<double>(window.endColumn)
                                                       : -std::numeric_limits<double>::infinity()),
      lastColumn_(static_cast<double>(window.endColumn) - 0.5), isEvenOdd_(polygons.fillRule == 0),
      numPoints_(std::min(polygons.points.Size(), polygons.tags.Size())),
      nextEvent_(window.firstRow), edges_(numPoints_ + 1), tops_(numPoints_), active_(numPoints_)
{
    std::size_t first = 0;
    for (std::size_t i = 0; i < numPoints_; ++i) {
        if (polygons.tags[static_cast<unsigned int>(i)] == HvPointTagEnd) {
            AddPolygon(first, i);  // the last point repeats the first
            first = i + 1;
        }
    }
    CollectTops();
}

void HvPolygonScanner::AddPolygon(std::size_t first, std::size_t end)
{
    if (first == end) {
        return;
    }
    HvPoint2<double> const* const points = polygons_.points.Data();
    std::int64_t const firstRow = FirstRowAtOrBelow(points[first].y);
    std::int64_t row = firstRow;
    for (std::size_t i = first; i + 1 < end; ++i) {
        std::int64_t const nextRow = FirstRowAtOrBelow(points[i + 1].y);
        AddEdge(i, i + 1, row, nextRow);
        row = nextRow;
    }
    AddEdge(end - 1, first, row, firstRow);
}

/// The first row of the window whose middle is at or below y; the window's end when there is none.
/// For y of at least 0.25 the difference is exact below 2^52, and for less the row is 0 however it
/// is rounded.
std::int64_t HvPolygonScanner::FirstRowAtOrBelow(double y) const
{
    double const row = std::ceil(y * scale_ - 0.5);
    if (!(row < static_cast<double>(window_.endRow))) {
        return window_.endRow;
    }
    return std::max(HvSaturate_To<std::int64_t>(row), window_.firstRow);
}

void HvPolygonScanner::AddEdge(std::size_t from, std::size_t to, std::int64_t fromRow,
                               std::int64_t toRow)
{
    if (fromRow == toRow) {
        return;  // no middle of a row lies between its ends
    }
    bool const isDown = fromRow < toRow;
    std::size_t const upper = isDown ? from : to;
    HvPoint2<double> const L = polygons_.points.Data()[upper] * scale_;
    HvPoint2<double> const H = polygons_.points.Data()[isDown ? to : from] * scale_;
    if (!(H.y > L.y)) {
        return;  // an ordinate is NaN
    }
    Edge& edge = edges_[++numEdges_];
    edge.row = isDown ? fromRow : toRow;
    edge.endRow = isDown ? toRow : fromRow;
    edge.slope = (H.x - L.x) / (H.y - L.y);
    edge.x = edge.slope * (static_cast<double>(edge.row) + 0.5 - L.y) + L.x;
    edge.direction = isDown ? 1 : -1;
    edge.upper = static_cast<std::uint32_t>(upper);
}

/// Lists the edges that take nobody's place, by row and then in their order there. The others come
/// when the edge that they continue ends: most, in a smooth outline, and they need not be sorted.
void HvPolygonScanner::CollectTops()
{
    for (std::size_t i = 1; i <= numEdges_; ++i) {
        Edge const& edge = edges_[i];
        if (!Continues(edge, edges_[edge.direction > 0 ? i - 1 : i + 1])) {
            tops_[numTops_++] = static_cast<std::uint32_t>(i);
        }
    }
    std::sort(tops_.Data(), tops_.Data() + numTops_, [this](std::uint32_t i, std::uint32_t k) {
        Edge const& a = edges_[i];
        Edge const& b = edges_[k];
        if (a.row != b.row) {
            return a.row < b.row;
        }
        if (IsBefore(a.x, b.x) || IsBefore(b.x, a.x)) {
            return IsBefore(a.x, b.x);
        }
        return IsUpperBefore(a, b);
    });
}

/// The order in which the upper ends of edges are met on the way down.
bool HvPolygonScanner::IsUpperBefore(Edge const& a, Edge const& b) const
{
    HvPoint2<double> const* const points = polygons_.points.Data();
    double const yOfA = points[a.upper].y;
    double const yOfB = points[b.upper].y;
    if (yOfA != yOfB) {
        return yOfA < yOfB;
    }
    return a.upper != b.upper ? a.upper < b.upper : a.direction < b.direction;
}

void HvPolygonScanner::ExchangeEdges(std::int64_t row)
{
    ReplaceEnded(row);
    if (!isSorted_) {
        SortActive(row);
    }
    MergeTops(row);
    nextEvent_ = nextTop_ < numTops_ ? edges_[tops_[nextTop_]].row : window_.endRow;
    areEdgesUpright_ = true;
    for (std::size_t i = 0; i < numActive_; ++i) {
        nextEvent_ = std::min(nextEvent_, active_[i].endRow);
        areEdgesUpright_ = areEdgesUpright_ && active_[i].slope == 0.0;
    }
    // By winding too, the two edges of a convex shape are a pair: the quicker walk serves it.
    areSpansPairs_ =
        isEvenOdd_ || (numActive_ == 2 && active_[0].direction + active_[1].direction == 0);
}

/// Removes the edges that end above the row. One that continues such an edge takes its place, which
/// is nearly always its own.
void HvPolygonScanner::ReplaceEnded(std::int64_t row)
{
    auto const hasEnded = [row](ActiveEdge const& edge) { return edge.endRow <= row; };
    ActiveEdge* const end = active_.Data() + numActive_;
    ActiveEdge* to = std::find_if(active_.Data(), end, hasEnded);
    for (ActiveEdge* from = to; from != end; ++from) {
        if (!hasEnded(*from)) {
            *to++ = *from;
            continue;
        }
        std::uint32_t const next = from->edge + static_cast<std::uint32_t>(from->direction);
        if (Continues(edges_[next], edges_[from->edge])) {
            *to++ = Active(next);
            isSorted_ = false;
        }
    }
    numActive_ = static_cast<std::size_t>(to - active_.Data());
}

void HvPolygonScanner::MergeTops(std::int64_t row)
{
    std::size_t const first = nextTop_;
    while (nextTop_ < numTops_ && edges_[tops_[nextTop_]].row <= row) {
        ++nextTop_;
    }
    ActiveEdge* const active = active_.Data();
    ActiveEdge* older = active + numActive_;
    numActive_ += nextTop_ - first;
    for (std::size_t top = nextTop_; top > first; --top) {
        ActiveEdge const edge = Active(tops_[top - 1]);
        ActiveEdge* const place = std::upper_bound(
            active, older, edge, [this, row](ActiveEdge const& a, ActiveEdge const& b) {
                return BelongsBefore(a, b, row);
            });
        std::move_backward(place, older, older + (top - first));
        older = place;
        place[top - first - 1] = edge;
    }
}

/// Of two edges with the same x in the row: one that begins there comes behind those whose upper
/// end is met before its own, as that of every older edge is. Older ones keep their order.
bool HvPolygonScanner::IsTieBefore(ActiveEdge const& a, ActiveEdge const& b, std::int64_t row) const
{
    Edge const& edgeOfB = edges_[b.edge];
    return edgeOfB.row == row && IsUpperBefore(edges_[a.edge], edgeOfB);
}

void HvPolygonScanner::SortActive(std::int64_t row)
{
    isSorted_ = true;
    std::size_t moves = kInsertionMovesPerEdge * numActive_;
    ActiveEdge* const active = active_.Data();
    for (std::size_t i = 1; i < numActive_ && moves > 0; ++i) {
        double const x = active[i].x;
        if (active[i - 1].x < x) {
            continue;
        }
        ActiveEdge const edge = active[i];
        std::size_t const limit = i > moves ? i - moves : 0;
        std::size_t to = i;
        for (; to > limit && active[to - 1].x > x; --to) {
            active[to] = active[to - 1];
        }
        for (; to > limit && active[to - 1].x == x && IsTieBefore(edge, active[to - 1], row);
             --to) {
            active[to] = active[to - 1];
        }
        active[to] = edge;
        moves -= i - to;
    }
    if (moves > 0) {
        return;
    }
    for (std::size_t i = 0; i < numActive_; ++i) {
        edges_[active_[i].edge].place = static_cast<std::uint32_t>(i);
    }
    std::sort(active_.Data(), active_.Data() + numActive_,
              [this, row](ActiveEdge const& a, ActiveEdge const& b) {
                  if (IsBefore(a.x, b.x) || IsBefore(b.x, a.x)) {
                      return IsBefore(a.x, b.x);
                  }
                  if (IsTieBefore(a, b, row) || IsTieBefore(b, a, row)) {
                      return IsTieBefore(a, b, row);
                  }
                  return edges_[a.edge].place < edges_[b.edge].place;
              });
}
