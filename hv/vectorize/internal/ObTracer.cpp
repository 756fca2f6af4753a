// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The sweep over the rows that finds contours.

#include <hv/vectorize/internal/ObTracer.h>

#include <hv/raster/HvUByteRaster.h>
#include <hv/vectorize/ObContext.h>
#include <hv/vectorize/internal/ObContourSink.h>
#include <hv/vectorize/internal/ObContour_draw.h>

#include <cassert>
#include <cstddef>
#include <iterator>

namespace {

void Link(ObVertex* previous, ObVertex* next)
{
    previous->next = next;
    next->previous = previous;
}

void Unlink(ObContour* contour)
{
    contour->previous->next = contour->next;
    contour->next->previous = contour->previous;
}

/// Puts the chain of contours from `first` to `last` before `contour` into its ring. Before the
/// outer one that is the end of the ring.
void InsertBefore(ObContour* contour, ObContour* first, ObContour* last)
{
    first->previous = contour->previous;
    contour->previous->next = first;
    last->next = contour;
    contour->previous = last;
}

/// Whether `a` starts in a higher row, or in the same row farther left. No two start at one place.
bool StartsHigher(ObContour const* a, ObContour const* b)
{
    return a->start->y < b->start->y || (a->start->y == b->start->y && a->start->x < b->start->x);
}

}  // namespace

ObTracer::ObTracer(ObContext& context, ObContourSink& sink)
    : context_(context), sink_(sink),
      keepsAll_(context.areaThreshold == 0 && context.perimeterThreshold == 0),
      above_(context.rows[0]), current_(context.rows[1]), below_(context.rows[2]), head_(), tail_(),
      loneContour_(), loneVertices_()
{
    ObVertexKind const kinds[] = {ObVertexRegionLeft, ObVertexMeetLeft, ObVertexMeetRight,
                                  ObVertexRegionRight};
    ObVertex* last = std::end(loneVertices_) - 1;
    for (ObVertex& vertex : loneVertices_) {
        vertex.kind = kinds[&vertex - loneVertices_];
        Link(last, &vertex);
        last = &vertex;
    }
    loneContour_.previous = &loneContour_;
    loneContour_.next = &loneContour_;
    loneContour_.start = loneVertices_;
    loneContour_.isOuter = true;
    loneContour_.closed = true;
    head_.next = &tail_;
    tail_.previous = &head_;
}

void ObTracer::Trace(HvUByteRaster const& raster, unsigned char value)
{
    if (raster.data == nullptr || raster.NumPixels() == 0 || raster.width > kObWidestRaster) {
        return;
    }
    auto const encode = [&](int y, unsigned short* row) {
        std::size_t const first =
            static_cast<std::size_t>(y) * static_cast<std::size_t>(raster.width);
        ObRow_Encode(raster.data + first, raster.width, value, row);
    };
    ObRow_Clear(above_);
    encode(0, current_);
    for (int y = 0; y < raster.height; ++y) {
        if (y + 1 < raster.height) {
            encode(y + 1, below_);
        } else {
            ObRow_Clear(below_);
        }
        TraceRow(y);
        unsigned short* const oldest = above_;
        above_ = current_;
        current_ = below_;
        below_ = oldest;
    }
    assert(head_.next == &tail_);
}

// After each run `e` is an edge of it: where it has a run above, its left edge or, when it has
// joined with runs before it, the left edge of them all, with the right edge next to it still at
// its place of the row above; where it has none above, its right edge. Finish brings `e` to the
// right edge of a run that is done, or to the edge before it when nothing of it goes on.
void ObTracer::TraceRow(int y)
{
    ObRowCursor above(above_);
    ObRowCursor below(below_);
    ObEdge* e = &head_;
    Run before;
    for (unsigned short const* entry = current_; entry[0] != 0; entry += 2) {
        Run run;
        run.start = entry[0] - kObRowOffset;
        run.end = entry[1] - kObRowOffset;
        run.above = above.Overlapping(entry);
        run.below = below.Overlapping(entry);
        if (!run.above.IsEmpty() && run.above.first == before.above.last) {
            ObEdge* const left = Fork(e, before.end, run.start, y);
            if (before.below.IsEmpty()) {
                Meet(e, left->previous, y);
            }
            e = left;
        } else {
            e = Finish(e, before, y);
            if (!run.above.IsEmpty()) {
                e = e->next;
                assert(e->isLeft && e != &tail_);
                Step<true>(e, run.start, y);
            } else if (!run.below.IsEmpty()) {
                e = BeginRegion(e, run.start, run.end, y);
            } else {
                TellLoneRun(run.start, run.end, y);
                before = Run();
                continue;
            }
        }
        if (!run.below.IsEmpty() && run.below.first == before.below.last) {
            if (run.above.IsEmpty()) {
                Join(e->previous->previous, e->previous, y);
            } else {
                e = Join(e->previous, e, y);
            }
        }
        before = run;
    }
    Finish(e, before, y);
}

// Brings the right edge of a run to its end, and ends the stretch when nothing lies below it.
// Returns the last edge to the left of what comes next. Inline, as TraceRow then keeps its runs in
// registers.
inline ObEdge* ObTracer::Finish(ObEdge* e, Run const& run, int y)
{
    if (run.start < 0) {
        return e;
    }
    if (!run.above.IsEmpty()) {
        e = e->next;
        assert(!e->isLeft && e != &tail_);
        Step<false>(e, run.end, y);
    }
    return run.below.IsEmpty() ? Meet(e->previous, e, y) : e;
}

// A run without one above or below is a region by itself, and done.
inline void ObTracer::TellLoneRun(int start, int end, int y)
{
    if (keepsAll_ || LoneRunPasses(start, end, y)) {
        sink_.AddRun(start, end, y);
    }
}

bool ObTracer::LoneRunPasses(int start, int end, int y)
{
    for (ObVertex& vertex : loneVertices_) {
        vertex.x = ObVertex_IsLeft(vertex) ? start : end;
        vertex.y = y;
    }
    return Passes(&loneContour_);
}

// A run without one above: a region begins, of which it is the first row. The new edges come after
// `e`; returns the right one.
ObEdge* ObTracer::BeginRegion(ObEdge* e, int start, int end, int y)
{
    ObVertex* const left = vertices_.Take({nullptr, nullptr, ObVertexRegionLeft, start, y});
    ObVertex* const right = vertices_.Take({nullptr, nullptr, ObVertexRegionRight, end, y});
    Link(right, left);
    ObContour* const outer =
        contours_.Take({nullptr, nullptr, left, nullptr, nullptr, true, false});
    outer->previous = outer;
    outer->next = outer;
    outer->leftEnd = InsertAfter(e, outer, left, true);
    outer->rightEnd = InsertAfter(outer->leftEnd, outer, right, false);
    return outer->rightEnd;
}

// Two runs under the same run: a gap opens between the end of one and the start of the next, and
// may become a hole.
//
//     e ->  ############  <- stays where it was until the last of the runs below is known
//           ####......##
//            end      start
//
// Returns the left edge of the second run; the right edge of the first comes before it.
ObEdge* ObTracer::Fork(ObEdge* e, int end, int start, int y)
{
    assert(e->isLeft);
    ObVertex* const right = vertices_.Take({nullptr, nullptr, ObVertexForkRight, end, y});
    ObVertex* const left = vertices_.Take({nullptr, nullptr, ObVertexForkLeft, start, y});
    Link(right, left);
    ObContour* const hole =
        contours_.Take({nullptr, nullptr, right, nullptr, nullptr, false, false});
    InsertBefore(e->contour, hole, hole);
    hole->rightEnd = InsertAfter(e, hole, right, false);
    hole->leftEnd = InsertAfter(hole->rightEnd, hole, left, true);
    return hole->leftEnd;
}

// The left and the right edge of a stretch that ends in this row come together. Both are of one
// region: when they are of one contour that is its outer one, and the region is complete. Otherwise
// a gap has turned out to be open: it becomes part of the outer contour, or of another gap. Returns
// the edge before the two, which are gone.
ObEdge* ObTracer::Meet(ObEdge* left, ObEdge* right, int y)
{
    Connect(left, ObVertexMeetLeft, right, ObVertexMeetRight, y);
    ObContour* const a = left->contour;
    ObContour* const b = right->contour;
    if (a == b) {
        assert(a->isOuter);
        a->closed = true;
        Output(a);
    } else {
        assert(!a->isOuter || !b->isOuter);
        bool const isAKept = a->isOuter || (!b->isOuter && StartsHigher(a, b));
        ObContour* const kept = isAKept ? a : b;
        ObContour* const dropped = isAKept ? b : a;
        kept->rightEnd = a->rightEnd;
        kept->leftEnd = b->leftEnd;
        Unlink(dropped);
        Merge(kept, dropped);
    }
    return RemovePair(left, right);
}

// The right edge of the run on the left of a gap and the left edge of the run on its right come
// together, as the gap ends in the row below. Of one contour, they close a hole. Otherwise they are
// of two regions, which become one: the outer contour of at least one of them goes on as part of
// the other's contour, and its holes follow. Returns the edge before the two, which are gone.
ObEdge* ObTracer::Join(ObEdge* left, ObEdge* right, int y)
{
    assert(!left->isLeft && right->isLeft);
    Connect(right, ObVertexJoinLeft, left, ObVertexJoinRight, y);
    ObContour* const a = right->contour;
    ObContour* const b = left->contour;
    if (a == b) {
        assert(!a->isOuter);
        a->closed = true;
    } else {
        assert(a->isOuter || b->isOuter);
        bool const isAKept = !a->isOuter || (b->isOuter && StartsHigher(a, b));
        ObContour* const kept = isAKept ? a : b;
        ObContour* const dropped = isAKept ? b : a;
        kept->rightEnd = a->rightEnd;
        kept->leftEnd = b->leftEnd;
        if (dropped->next != dropped) {
            InsertBefore(kept, dropped->next, dropped->previous);
        }
        Merge(kept, dropped);
    }
    return RemovePair(left, right);
}

// Moves an edge from the row above y into this row. Both rows of a sideways step get a vertex, the
// rows of a straight stretch none but its first and last; a fresh edge has one in its row already.
template <bool isLeft>
void ObTracer::Step(ObEdge* e, int x, int y)
{
    int const step = x - e->x;
    if ((step | e->lastStep) != 0 && !e->isFresh) {
        ObVertexKind const kind = isLeft ? ObVertexStepLeft : ObVertexStepRight;
        ObVertex* const vertex = vertices_.Take({nullptr, nullptr, kind, e->x, y - 1});
        if (isLeft) {
            Link(e->vertex, vertex);
        } else {
            Link(vertex, e->vertex);
        }
        e->vertex = vertex;
    }
    e->lastStep = step;
    e->isFresh = false;
    e->x = x;
}

// Leads the outline from the end of a left side over a vertex at each of the two edges into the
// end of a right side.
void ObTracer::Connect(ObEdge* left, ObVertexKind leftKind, ObEdge* right, ObVertexKind rightKind,
                       int y)
{
    ObVertex* const down = vertices_.Take({nullptr, nullptr, leftKind, left->x, y});
    ObVertex* const up = vertices_.Take({nullptr, nullptr, rightKind, right->x, y});
    Link(left->vertex, down);
    Link(down, up);
    Link(up, right->vertex);
}

// Makes the ends that `kept` has now its own; `dropped`, which has left its ring, is used again.
void ObTracer::Merge(ObContour* kept, ObContour* dropped)
{
    kept->leftEnd->contour = kept;
    kept->rightEnd->contour = kept;
    contours_.Give(dropped);
}

// Tells a complete region, or drops it, and uses its nodes again.
void ObTracer::Output(ObContour* outer)
{
    if (Passes(outer)) {
        Tell(outer);
    }
    ObContour* contour = outer;
    do {
        vertices_.GiveRing(contour->start);
        contour = contour->next;
    } while (contour != outer);
    contours_.GiveRing(outer);
}

void ObTracer::Tell(ObContour* outer)
{
    sink_.BeginRegion();
    sink_.Add(*outer);
    for (ObContour* hole = outer->next; hole != outer; hole = hole->next) {
        assert(hole->closed);
        if (Passes(hole)) {
            sink_.Add(*hole);
        }
    }
    sink_.EndRegion();
}

bool ObTracer::Passes(ObContour* contour)
{
    return keepsAll_ ||
           (ObTestContourArea(context_, contour) && ObTestContourPerimeter(context_, contour));
}

// A new edge after `e`, at its vertex.
ObEdge* ObTracer::InsertAfter(ObEdge* e, ObContour* contour, ObVertex* vertex, bool isLeft)
{
    ObEdge* const edge = edges_.Take({e, e->next, contour, vertex, isLeft, vertex->x, 0, true});
    e->next->previous = edge;
    e->next = edge;
    return edge;
}

// Takes two neighbouring edges off the list and returns the one before them.
ObEdge* ObTracer::RemovePair(ObEdge* left, ObEdge* right)
{
    assert(left->next == right);
    ObEdge* const before = left->previous;
    before->next = right->next;
    right->next->previous = before;
    edges_.Give(left);
    edges_.Give(right);
    return before;
}
