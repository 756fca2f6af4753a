// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// The outline of a stroke: joins, caps, and the walk along both sides of a polyline.
//
// At every point of the polyline stand the offsets of its edges, normals as long as half the width
// there. The left side is walked forward on P + offset, the right side back on P - offset:
//
//      P0+a ------------> V+b  V+a ------------> Pn+b
//       |                   \  /                   |
//      P0 -----------------> V -----------------> Pn      cap
//       |                   /  \                   |
//      P0-a <------------ V-b  V-a <------------ Pn-b

#include <hv/shape/internal/stroke_outline.h>

#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/polyline_length.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

using Point = HvPoint2<double>;

/// How far towards the corner the handles of a cubic that is a quarter of a circle reach.
constexpr double kQuarterCircle = 0.5522847498307935;
/// The most that a round join turns, as the cosine of the angle between its offsets.
constexpr double kLeastRoundCosine = -0.5;

enum Join : int {
    JoinBevel = 0,
    JoinMiter = 1,
    JoinRound = 2
};
enum Cap : int {
    CapRound = 0,
    CapSquare = 1,
    CapButt = 2
};

/// A style of the context; one that there is not counts as the last one that there was, in whatever
/// stroke that was.
int KnownStyle(int style, std::atomic<int>& last)
{
    if (style >= 0 && style <= 2) {
        last.store(style, std::memory_order_relaxed);
    }
    return last.load(std::memory_order_relaxed);
}

Join KnownJoin(int style)
{
    static std::atomic<int> last{JoinMiter};
    return static_cast<Join>(KnownStyle(style, last));
}

Cap KnownCap(int style)
{
    static std::atomic<int> last{CapButt};
    return static_cast<Cap>(KnownStyle(style, last));
}

/// Where the line through `p` along `d` meets the line through `q` along `e`; not finite for
/// parallels.
Point LineIntersection(Point const& p, Point const& d, Point const& q, Point const& e)
{
    double const t = HvPoint2_AdetB(q - p, e) / HvPoint2_AdetB(d, e);
    return p + d * t;
}

/// Draws into a path in double.
class Pen {
public:
    explicit Pen(HvPath2f& path) : path_(path) {}

    void MoveTo(Point const& p) { path_.Moveto(Narrow(p)); }
    void LineTo(Point const& p) { path_.Lineto(Narrow(p)); }
    void CurveTo(Point const& c, Point const& p) { path_.Curveto(Narrow(c), Narrow(p)); }
    void CurveTo(Point const& c1, Point const& c2, Point const& p)
    {
        path_.Curveto(Narrow(c1), Narrow(c2), Narrow(p));
    }
    void Close() { path_.Closeto(); }

private:
    static HvPoint2<float> Narrow(Point const& p) { return HvPoint2<float>(p); }

    HvPath2f& path_;
};

/// One polyline of a stroke and how it is drawn.
class Stroker {
public:
    Stroker(HvGC const& gc, HvPath2f& outline)
        : pen_(outline), join_(KnownJoin(gc.joinStyle)), cap_(KnownCap(gc.capStyle)),
          half_(gc.strokeWidth * 0.5), gapSquared_(gc.flatness * gc.flatness),
          // A limit that is no number counts as 1.
          miterLimit_(gc.miterLimit > 1.0 ? gc.miterLimit : 1.0), isTapered_(gc.taperStroke != 0)
    {
    }

    /// Strokes points[first] to points[last], first < last.
    void Append(HvPoint2dArray const& points, unsigned int first, unsigned int last)
    {
        points_ = points.Data() + first;
        end_ = last - first;
        if (end_ == 1 && points_[0] == points_[1]) {
            pen_.MoveTo(points_[0]);
            return;
        }
        SetWidths(points, first, last);
        SetOffsets();
        pen_.MoveTo(Left(0));
        for (unsigned int k = 1; k < end_; ++k) {
            TurnLeft(k - 1, k, k + 1);
        }
        if (points_[0] == points_[end_]) {
            AppendRest();
        } else {
            AppendCapsAndRest();
        }
    }

private:
    // Where the outline passes the start and the end of edge k.
    Point StartOffset(unsigned int k) const { return normals_[k] * widths_[k]; }
    Point EndOffset(unsigned int k) const { return normals_[k] * widths_[k + 1]; }
    Point Left(unsigned int edge) const { return points_[edge] + StartOffset(edge); }
    Point Right(unsigned int edge) const { return points_[edge] - StartOffset(edge); }

    /// The share of the width at each point.
    void SetWidths(HvPoint2dArray const& points, unsigned int first, unsigned int last)
    {
        widths_.Chop(0);
        if (!isTapered_) {
            for (unsigned int k = 0; k <= end_; ++k) {
                widths_.Add(1.0);
            }
            return;
        }
        HvPoint2dArray_ComputeChordLength(points, first, last, widths_);
        double const total = widths_[end_];
        for (double& width : widths_) {
            double const u = total == 0.0 ? 0.0 : width / total;
            width = 4.0 * u * (1.0 - u);
        }
    }

    void SetOffsets()
    {
        normals_.Chop(0);
        for (unsigned int k = 0; k < end_; ++k) {
            Point const normal(points_[k].y - points_[k + 1].y, points_[k + 1].x - points_[k].x);
            normals_.Add(normal * (half_ / HvPoint2_Length(normal)));
        }
    }

    /// Draws around point `v` from the offset `a` of the edge that came from `before` to the offset
    /// `b` of the one that goes to `after`.
    void Turn(Point const& before, Point const& v, Point const& after, double radius,
              Point const& a, Point const& b)
    {
        if (HvPoint2_SquaredLengthAB(a, b) <= gapSquared_) {
            pen_.LineTo(v + b);
        } else if (HvPoint2_ABdetCD(before, v, before, after) >= 0.0) {
            // This side is the inner one of the turn.
            pen_.LineTo(v + a);
            pen_.LineTo(v);
            pen_.LineTo(v + b);
        } else {
            AppendJoin(radius, a, b, v);
        }
    }

    // At the point where edge `in` ends and edge `out` starts; `in` and `out` are neighbours, or
    // the last and the first edge.
    void TurnLeft(unsigned int in, unsigned int out, unsigned int after)
    {
        Turn(points_[in], points_[out], points_[after], half_ * widths_[out], EndOffset(in),
             StartOffset(out));
    }
    void TurnRight(unsigned int in, unsigned int out, unsigned int after)
    {
        Turn(points_[after], points_[out], points_[in], half_ * widths_[out], -StartOffset(out),
             -EndOffset(in));
    }

    /// The seam of the left ring, and the right ring.
    void AppendRest()
    {
        unsigned int const lastEdge = end_ - 1;
        Point const rightStart = points_[end_] - EndOffset(lastEdge);
        TurnLeft(lastEdge, 0, 1);
        if (join_ == JoinMiter) {
            pen_.LineTo(Left(0));
        }
        pen_.Close();
        pen_.MoveTo(rightStart);
        for (unsigned int k = lastEdge; k > 0; --k) {
            TurnRight(k - 1, k, k + 1);
        }
        TurnRight(lastEdge, 0, 1);
        if (join_ == JoinMiter) {
            // As on the left: a miter ends at its tip, and the ring closes only at its start.
            pen_.LineTo(rightStart);
        }
        pen_.Close();
    }

    /// The far cap, the right side and the near cap.
    void AppendCapsAndRest()
    {
        unsigned int const lastEdge = end_ - 1;
        Point const offset = EndOffset(lastEdge);
        pen_.LineTo(points_[end_] + offset);
        AppendCap(points_[end_] + offset, points_[end_] - offset);
        for (unsigned int k = lastEdge; k > 0; --k) {
            TurnRight(k - 1, k, k + 1);
        }
        pen_.LineTo(Right(0));
        AppendCap(Right(0), Left(0));
        pen_.Close();
    }

    void AppendJoin(double radius, Point const& a, Point const& b, Point const& c)
    {
        switch (join_) {
        case JoinBevel:
            AppendBevel(a, b, c);
            break;
        case JoinMiter:
            AppendMiter(radius, a, b, c);
            break;
        case JoinRound:
            if (HvPoint2_AdotB(a, b) >= kLeastRoundCosine * radius * radius) {
                pen_.LineTo(c + a);
                pen_.CurveTo(MiterTip(radius, a, b, c), c + b);
            } else {
                AppendBevel(a, b, c);
            }
            break;
        }
    }

    void AppendBevel(Point const& a, Point const& b, Point const& c)
    {
        pen_.LineTo(c + a);
        pen_.LineTo(c + b);
    }

    /// Where the outer sides of two edges meet.
    static Point MiterTip(double radius, Point const& a, Point const& b, Point const& c)
    {
        return c + Point(b.y - a.y, a.x - b.x) * (radius * radius / HvPoint2_AdetB(a, b));
    }

    /// The tip, or where it is too far away a cut across it. The cut is measured from the tip, so a
    /// sharp turn may be cut behind its own point.
    void AppendMiter(double radius, Point const& a, Point const& b, Point const& c)
    {
        Point const tip = MiterTip(radius, a, b, c);
        double const limit = miterLimit_ * radius;
        Point const toTip = tip - c;
        if (limit * limit > HvPoint2_SquaredLengthAB(c, tip)) {
            pen_.LineTo(tip);
            return;
        }
        double const share = 2.0 * limit / HvPoint2_Length(toTip) - 1.0;
        Point const cut = c + toTip * share;
        Point const along = b - a;
        pen_.LineTo(LineIntersection(c + a, Point(a.y, -a.x), cut, along));
        pen_.LineTo(LineIntersection(c + b, Point(-b.y, b.x), cut, along));
    }

    /// From `f` around the end of the stroke to `t`.
    void AppendCap(Point const& f, Point const& t)
    {
        Point const e((f.y - t.y) * 0.5, (t.x - f.x) * 0.5);
        if (cap_ == CapRound) {
            Point const apex = (f + t) * 0.5 + e;
            Point const fCorner = f + e;
            Point const tCorner = t + e;
            auto const towards = [](Point const& from, Point const& corner) {
                return from + (corner - from) * kQuarterCircle;
            };
            pen_.CurveTo(towards(f, fCorner), towards(apex, fCorner), apex);
            pen_.CurveTo(towards(apex, tCorner), towards(t, tCorner), t);
            return;
        }
        if (cap_ == CapSquare) {
            pen_.LineTo(f + e);
            pen_.LineTo(t + e);
        }
        pen_.LineTo(t);
    }

    Pen pen_;
    Join join_;
    Cap cap_;
    double half_;
    double gapSquared_;
    double miterLimit_;
    bool isTapered_;

    Point const* points_ = nullptr;  ///< of the polyline at hand
    unsigned int end_ = 0;           ///< its last point; also the number of its edges
    HvDoubleArray widths_;           ///< for each point
    HvPoint2dArray normals_;         ///< for each edge, as long as half the full width
};

}  // namespace

void HvStroke_AppendOutlines(HvPoint2dArray const& points, HvPointTagArray const& tags,
                             HvGC const& gc, HvPath2f& outline)
{
    Stroker stroker(gc, outline);
    unsigned int first = 0;
    for (unsigned int i = 0; i < points.Size(); ++i) {
        if (tags[i] == HvPointTagEnd) {
            stroker.Append(points, first, i);
            first = i + 1;
        }
    }
}
