// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Outlines of strokes with all the round parts that drawings have.

#include <tools/paint/stroke_outline.h>

#include <hv/shape/HvPath2fIter.h>

namespace {

using Point = HvPoint2<float>;
using Vector = HvPoint2<double>;

/// The styles of HvGC for round corners and ends.
constexpr int kRoundJoin = 2;
constexpr int kRoundCap = 0;
/// How far the handles of a quarter of a circle reach, as a share of its radius.
constexpr float kQuarterCircle = 0.55228475F;
/// The cosine of a turn that is safely below 120 degrees.
constexpr double kSharpTurn = -0.4;

/// Appends a disc of the stroke's width around a point of the path. Discs run as the rings of a
/// stroke do, so that by winding they add to it.
void AppendDisc(Point const& point, HvGC const& gc, HvPath2f& outline)
{
    auto const radius = static_cast<float>(gc.strokeWidth / 2.0);
    Point const c = gc.transform.Map(point);
    Point direction(radius, 0.0F);
    outline.Moveto(c + direction);
    for (int quarter = 0; quarter < 4; ++quarter) {
        Point const next(direction.y, -direction.x);
        outline.Curveto(c + direction + next * kQuarterCircle,
                        c + next + direction * kQuarterCircle, c + next);
        direction = next;
    }
    outline.Closeto();
}

/// The direction in which the outline leaves point `from` towards point `to`, of the points between
/// that which differs first; zero when none does.
Vector DirectionFrom(HvPath2f const& path, unsigned int from, unsigned int to)
{
    Point const start = path.GetPoint(from);
    int const step = from < to ? 1 : -1;
    for (unsigned int i = from; i != to;) {
        i = static_cast<unsigned int>(static_cast<int>(i) + step);
        if (path.GetPoint(i) != start) {
            return Vector(path.GetPoint(i)) - Vector(start);
        }
    }
    return {};
}

/// Whether the outline turns sharply between the segment that ends at `end` and the one that starts
/// at `start`, a point of the same place.
bool TurnsSharply(HvPath2f const& path, unsigned int end, unsigned int start)
{
    Vector const back = DirectionFrom(path, end, path.StartOfSegment(end));
    Vector const forth = DirectionFrom(path, start, path.EndOfSegment(start + 1));
    double const lengths = HvPoint2_Length(back) * HvPoint2_Length(forth);
    return !(-HvPoint2_AdotB(back, forth) > kSharpTurn * lengths);
}

bool IsPoint(HvPath2f const& path, unsigned int first, unsigned int last)
{
    return last > first && DirectionFrom(path, first, last) == Vector();
}

void AppendRoundJoins(HvPath2f const& path, unsigned int first, unsigned int last, HvGC const& gc,
                      HvPath2f& outline)
{
    for (unsigned int node = path.EndOfSegment(first); node < last;
         node = path.EndOfSegment(node + 1)) {
        if (TurnsSharply(path, node, node)) {
            AppendDisc(path.GetPoint(node), gc, outline);
        }
    }
    if (path.IsSubpathClosed(first) != 0 && TurnsSharply(path, last, first)) {
        AppendDisc(path.GetPoint(first), gc, outline);
    }
}

}  // namespace

HvPath2f StrokeOutline_Of(HvPath2f const& path, HvGC const& gc)
{
    HvPath2f outline(1u);
    path.GetStrokeOutline(gc, outline);
    HvPath2fIter subpaths(path);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        if (last == first) {
            continue;
        }
        bool const isOpen = path.IsSubpathClosed(first) == 0;
        bool const isMeeting = isOpen && path.GetPoint(first) == path.GetPoint(last);
        if (gc.capStyle == kRoundCap && (isMeeting || IsPoint(path, first, last))) {
            AppendDisc(path.GetPoint(first), gc, outline);
        }
        if (gc.joinStyle == kRoundJoin) {
            AppendRoundJoins(path, first, last, gc, outline);
        }
    }
    return outline;
}
