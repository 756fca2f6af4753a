// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The polygon scan converter that all fills run.

#ifndef HV_RASTER_INTERNAL_HVPOLYGONSCANNER_H
#define HV_RASTER_INTERNAL_HVPOLYGONSCANNER_H

#include <hv/raster/internal/HvScratchArray.h>
#include <hv/raster/polygon_fill.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

/// The rows and columns that are scanned; the ends are not included. In 64 bits, as a subdivided
/// raster may exceed an int.
struct HvScanWindow {
    std::int64_t firstRow;
    std::int64_t endRow;
    std::int64_t firstColumn;
    std::int64_t endColumn;
};

/// Columns of a row, the last one included.
struct HvScanSpan {
    std::int64_t first;
    std::int64_t last;
};

/// Goes down the rows of a window and gives the spans of each.
///
/// An edge is active from the row whose middle first lies at or below its upper end up to, and not
/// including, the row of its lower end. Its x is computed once, in its first row, and then advanced
/// by its slope. Active edges stand in the order of their x; equal ones in the order in which they
/// came, which is that of their upper ends.
class HvPolygonScanner {
public:
    /// @param scale  factor of the coordinates of the points.
    HvPolygonScanner(HvPolygons const& polygons, double scale, HvScanWindow const& window);

    HvScanWindow const& Window() const { return window_; }
    /// Edges that come within the window; a row has at most as many active ones.
    std::size_t NumEdges() const { return numEdges_; }

    // Rows come in ascending order from the window's first; none is left out but those that
    // NumRowsAlike allows.

    /// Calls span(first, last), last included, for each span of a row, from left to right.
    template <class Span>
    void ScanRow(std::int64_t row, Span&& span)
    {
        PrepareRow(row);
        Walk(span);
    }

    /// Scans the rows from `row` on, at least one, that need not be looked at one by one, and none
    /// from `end` on. Calls span(row, count, first, last), last included, for each span; it stands
    /// in `count` rows from `row` on.
    ///
    /// @return  the row behind them.
    template <class Span>
    std::int64_t ScanRows(std::int64_t row, std::int64_t end, Span&& span)
    {
        PrepareRow(row);
        end = std::min(end, nextEvent_);
        if (areEdgesUpright_) {
            WalkAt(row, end - row, span);
            return end;
        }
        if (numActive_ == 2 && areSpansPairs_) {
            return WalkSingleSpans(row, end, span);
        }
        WalkAt(row, 1, span);
        return row + 1;
    }

    /// Rows from `row` on, at least 1, that have the very spans of `row`: its edges are upright.
    /// Once `row` is scanned the others may be left out.
    std::int64_t NumRowsAlike(std::int64_t row)
    {
        PrepareRow(row);
        return areEdgesUpright_ ? nextEvent_ - row : 1;
    }

    /// Scans `Count` rows at once when there is one span in each of them between the same two
    /// edges, as in most rows of a plain shape.
    ///
    /// @return  whether it is so; otherwise nothing is scanned.
    template <std::size_t Count>
    bool ScanSingleSpans(std::int64_t row, HvScanSpan (&spans)[Count])
    {
        PrepareRow(row);
        if (numActive_ != 2 || !areSpansPairs_ ||
            nextEvent_ - row < static_cast<std::int64_t>(Count)) {
            return false;
        }
        double left = active_[0].x;
        double right = active_[1].x;
        for (HvScanSpan& span : spans) {
            if (!IsVisible(left, right)) {
                return false;
            }
            span = Cut(left, right);
            left += active_[0].slope;
            right += active_[1].slope;
        }
        active_[0].x = left;
        active_[1].x = right;
        isSorted_ = !(right < left);
        return true;
    }

private:
    /// An edge of a polygon. Edges stand in the order of the polygon's points.
    struct Edge {
        double x;  // at the middle of its first row
        double slope;
        std::int64_t row;  // its first
        std::int64_t endRow;
        std::int32_t direction;  // +1 when the polygon runs towards greater y, otherwise -1
        std::uint32_t upper;     // index of its upper point
        std::uint32_t place;     // among the active edges, while these are sorted
    };
    struct ActiveEdge {
        double x;  // at the middle of the row that is scanned next
        double slope;
        std::int64_t endRow;
        std::int32_t direction;
        std::uint32_t edge;
    };

    void AddPolygon(std::size_t first, std::size_t end);
    void AddEdge(std::size_t from, std::size_t to, std::int64_t fromRow, std::int64_t toRow);
    std::int64_t FirstRowAtOrBelow(double y) const;
    void CollectTops();
    /// Whether an edge begins where its neighbour ends, on the same way.
    bool Continues(Edge const& edge, Edge const& neighbour) const
    {
        return neighbour.direction == edge.direction && neighbour.endRow == edge.row;
    }
    ActiveEdge Active(std::uint32_t index) const
    {
        Edge const& edge = edges_[index];
        return {edge.x, edge.slope, edge.endRow, edge.direction, index};
    }
    /// Makes the active edges those of the row, in their order there.
    void PrepareRow(std::int64_t row)
    {
        if (row >= nextEvent_) {
            ExchangeEdges(row);
        } else if (!isSorted_) {
            SortActive(row);
        }
    }
    void ExchangeEdges(std::int64_t row);
    void ReplaceEnded(std::int64_t row);
    void MergeTops(std::int64_t row);
    void SortActive(std::int64_t row);
    bool IsUpperBefore(Edge const& a, Edge const& b) const;
    bool IsTieBefore(ActiveEdge const& a, ActiveEdge const& b, std::int64_t row) const;
    /// Whether an active edge of the row belongs before another one.
    bool BelongsBefore(ActiveEdge const& a, ActiveEdge const& b, std::int64_t row) const
    {
        return a.x < b.x || (a.x == b.x && IsTieBefore(a, b, row));
    }

    template <class Span>
    void Walk(Span& span)
    {
        if (areSpansPairs_) {
            WalkPairs(span);
        } else {
            WalkWinding(span);
        }
    }

    template <class Span>
    void WalkAt(std::int64_t row, std::int64_t count, Span& span)
    {
        auto const spanAt = [row, count, &span](std::int64_t first, std::int64_t last) {
            span(row, count, first, last);
        };
        Walk(spanAt);
    }

    /// Rows between the same two edges, as long as these do not cross.
    template <class Span>
    std::int64_t WalkSingleSpans(std::int64_t row, std::int64_t end, Span& span)
    {
        double left = active_[0].x;
        double right = active_[1].x;
        double const leftSlope = active_[0].slope;
        double const rightSlope = active_[1].slope;
        do {
            if (IsVisible(left, right)) {
                HvScanSpan const cut = Cut(left, right);
                span(row, 1, cut.first, cut.last);
            }
            left += leftSlope;
            right += rightSlope;
            isSorted_ = !(right < left);
            ++row;
        } while (row < end && isSorted_);
        active_[0].x = left;
        active_[1].x = right;
        return row;
    }

    template <class Span>
    void WalkPairs(Span& span)
    {
        Advancer advancer;
        ActiveEdge* edge = active_.Data();
        ActiveEdge* const end = edge + numActive_;
        for (; end - edge > 1; edge += 2) {
            double const left = advancer.Advance(edge[0]);
            double const right = advancer.Advance(edge[1]);
            Emit(left, right, span);
        }
        if (edge != end) {  // only where a NaN has broken a polygon
            advancer.Advance(*edge);
        }
        isSorted_ = advancer.isSorted;
    }

    template <class Span>
    void WalkWinding(Span& span)
    {
        Advancer advancer;
        double left = 0.0;
        double right = 0.0;
        int winding = 0;
        ActiveEdge* const end = active_.Data() + numActive_;
        for (ActiveEdge* edge = active_.Data(); edge != end; ++edge) {
            right = advancer.Advance(*edge);
            left = winding == 0 ? right : left;
            winding += edge->direction;
            if (winding == 0) {
                Emit(left, right, span);
            }
        }
        if (winding != 0 && right > left) {  // broken likewise: the span runs to the window's end
            Emit(left, std::numeric_limits<double>::infinity(), span);
        }
        isSorted_ = advancer.isSorted;
    }

    /// Moves edges on to the next row, and sees whether they are in order there.
    struct Advancer {
        bool isSorted = true;
        double previous = -std::numeric_limits<double>::infinity();

        /// The x that the edge had.
        double Advance(ActiveEdge& edge)
        {
            double const x = edge.x;
            double const next = x + edge.slope;
            isSorted &= !(next < previous);
            edge.x = previous = next;
            return x;
        }
    };

    /// Whether a span has a width, and columns in the window.
    bool IsVisible(double left, double right) const
    {
        return right > left && left < endColumn_ && right >= firstColumn_;
    }

    /// A visible span, cut to the window. What is converted lies within and is not negative, so
    /// that cutting toward zero is rounding down.
    HvScanSpan Cut(double left, double right) const
    {
        return {static_cast<std::int64_t>(std::max(left, firstColumn_)),
                static_cast<std::int64_t>(std::min(right, lastColumn_))};
    }

    template <class Span>
    void Emit(double left, double right, Span& span) const
    {
        if (IsVisible(left, right)) {
            HvScanSpan const cut = Cut(left, right);
            span(cut.first, cut.last);
        }
    }

    HvPolygons const& polygons_;
    HvScanWindow const window_;
    double const scale_;
    double const firstColumn_;
    double const endColumn_;   // below all numbers when there is no column
    double const lastColumn_;  // its middle
    bool const isEvenOdd_;
    bool areSpansPairs_ = true;    // whether each span lies between two edges, whatever the rule
    bool areEdgesUpright_ = true;  // whether no active edge moves
    bool isSorted_ = true;
    std::size_t numPoints_;
    std::size_t numEdges_ = 0;
    std::size_t numTops_ = 0;
    std::size_t nextTop_ = 0;
    std::size_t numActive_ = 0;
    std::int64_t nextEvent_;  // first row in which an edge comes or goes
    // From 1 on, and one more behind the last: these two have no direction, so that every edge has
    // neighbours. A polygon has fewer edges than points, as its last point repeats the first.
    HvScratchArray<Edge> edges_;
    HvScratchArray<std::uint32_t> tops_;  // edges that continue none, by row and then in order
    HvScratchArray<ActiveEdge> active_;
};

#endif
