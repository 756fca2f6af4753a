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
      nextEvent_(window.firstRow), waiting_(numPoints_), active_(numPoints_)
{
    std::size_t first = 0;
    for (std::size_t i = 0; i < numPoints_; ++i) {
        if (polygons.tags[static_cast<unsigned int>(i)] == HvPointTagEnd) {
            AddPolygon(first, i);  // the last point repeats the first
            first = i + 1;
        }
    }
    SortWaiting();
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
    WaitingEdge& waiting = waiting_[numWaiting_++];
    waiting.row = isDown ? fromRow : toRow;
    Edge& edge = waiting.edge;
    edge.slope = (H.x - L.x) / (H.y - L.y);
    edge.x = edge.slope * (static_cast<double>(waiting.row) + 0.5 - L.y) + L.x;
    edge.endRow = isDown ? toRow : fromRow;
    edge.direction = isDown ? 1 : -1;
    edge.rank = static_cast<std::uint32_t>(2 * upper + (isDown ? 1 : 0));
}

/// By row, then by x; equal ones in the order in which their upper ends are met on the way down.
void HvPolygonScanner::SortWaiting()
{
    HvPoint2<double> const* const points = polygons_.points.Data();
    std::sort(waiting_.Data(), waiting_.Data() + numWaiting_,
              [points](WaitingEdge const& a, WaitingEdge const& b) {
                  if (a.row != b.row) {
                      return a.row < b.row;
                  }
                  if (IsBefore(a.edge.x, b.edge.x) || IsBefore(b.edge.x, a.edge.x)) {
                      return IsBefore(a.edge.x, b.edge.x);
                  }
                  double const yOfA = points[a.edge.rank / 2].y;
                  double const yOfB = points[b.edge.rank / 2].y;
                  return yOfA != yOfB ? yOfA < yOfB : a.edge.rank < b.edge.rank;
              });
}

void HvPolygonScanner::ExchangeEdges(std::int64_t row)
{
    RemoveEnded(row);
    if (!isSorted_) {
        SortActive();
    }
    MergeWaiting(row);
    nextEvent_ = nextWaiting_ < numWaiting_ ? waiting_[nextWaiting_].row : window_.endRow;
    areEdgesUpright_ = true;
    for (std::size_t i = 0; i < numActive_; ++i) {
        nextEvent_ = std::min(nextEvent_, active_[i].endRow);
        areEdgesUpright_ = areEdgesUpright_ && active_[i].slope == 0.0;
    }
    // By winding too, the two edges of a convex shape are a pair: the quicker walk serves it.
    areSpansPairs_ =
        isEvenOdd_ || (numActive_ == 2 && active_[0].direction + active_[1].direction == 0);
}

void HvPolygonScanner::RemoveEnded(std::int64_t row)
{
    Edge* const end = std::remove_if(active_.Data(), active_.Data() + numActive_,
                                     [row](Edge const& edge) { return edge.endRow <= row; });
    numActive_ = static_cast<std::size_t>(end - active_.Data());
}

/// The new edges are in order among themselves; they come behind older ones of equal x.
void HvPolygonScanner::MergeWaiting(std::int64_t row)
{
    std::size_t const first = nextWaiting_;
    while (nextWaiting_ < numWaiting_ && waiting_[nextWaiting_].row <= row) {
        ++nextWaiting_;
    }
    std::size_t older = numActive_;
    std::size_t newer = nextWaiting_;
    numActive_ += nextWaiting_ - first;
    for (std::size_t to = numActive_; newer > first; --to) {
        Edge const& edge = waiting_[newer - 1].edge;
        if (older > 0 && active_[older - 1].x > edge.x) {
            active_[to - 1] = active_[older - 1];
            --older;
        } else {
            active_[to - 1] = edge;
            --newer;
        }
    }
}

/// Keeps the order of equal x.
void HvPolygonScanner::SortActive()
{
    isSorted_ = true;
    std::size_t moves = kInsertionMovesPerEdge * numActive_;
    for (std::size_t i = 1; i < numActive_ && moves > 0; ++i) {
        Edge const edge = active_[i];
        std::size_t to = i;
        for (; to > 0 && active_[to - 1].x > edge.x && moves > 0; --to, --moves) {
            active_[to] = active_[to - 1];
        }
        active_[to] = edge;
    }
    if (moves > 0) {
        return;
    }
    for (std::size_t i = 0; i < numActive_; ++i) {
        active_[i].rank = static_cast<std::uint32_t>(i);
    }
    std::sort(active_.Data(), active_.Data() + numActive_, [](Edge const& a, Edge const& b) {
        if (IsBefore(a.x, b.x) || IsBefore(b.x, a.x)) {
            return IsBefore(a.x, b.x);
        }
        return a.rank < b.rank;
    });
}
