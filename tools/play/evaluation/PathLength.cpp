// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Pieces of a path by their length.

#include <tools/play/evaluation/PathLength.h>

#include <hv/bezier/cubic_split.h>

#include <algorithm>
#include <cstddef>

namespace {

using Point = HvPoint2<double>;

Point CubicAt(Point const* points, double t)
{
    double const s = 1.0 - t;
    return points[0] * (s * s * s) + points[1] * (3.0 * s * s * t) + points[2] * (3.0 * s * t * t) +
           points[3] * (t * t * t);
}

}  // namespace

PathLength::PathLength(HvPath2f const& path, unsigned int first, unsigned int last)
    : isClosed_(path.IsSubpathClosed(first) != 0)
{
    for (unsigned int start = first; start < last;) {
        unsigned int const end = path.EndOfSegment(start + 1);
        Point points[4];
        unsigned int const degree = end - start == 3 ? 3 : 1;
        for (unsigned int i = 0; i <= degree; ++i) {
            points[i] = Point(path.GetPoint(i == degree ? end : start + i));
        }
        segments_.push_back(Measured(points, degree));
        ends_.push_back(Length() + segments_.back().lengths.back());
        start = end;
    }
}

PathLength::Segment PathLength::Measured(HvPoint2<double> const* points, unsigned int degree)
{
    Segment segment;
    segment.isLine = degree == 1;
    std::copy(points, points + degree + 1, segment.points);
    segment.lengths[0] = 0.0;
    Point at = points[0];
    for (std::size_t i = 1; i <= kSteps; ++i) {
        double const t = static_cast<double>(i) / kSteps;
        Point const next =
            segment.isLine ? points[0] + (points[1] - points[0]) * t : CubicAt(points, t);
        segment.lengths[i] = segment.lengths[i - 1] + HvPoint2_LengthAB(at, next);
        at = next;
    }
    return segment;
}

double PathLength::ParameterAt(Segment const& segment, double length)
{
    auto const& lengths = segment.lengths;
    auto const above = std::lower_bound(lengths.begin() + 1, lengths.end() - 1, length);
    double const low = *(above - 1);
    double const step = *above - low;
    double const share = step > 0.0 ? std::clamp((length - low) / step, 0.0, 1.0) : 0.0;
    return (static_cast<double>(above - lengths.begin() - 1) + share) / kSteps;
}

void PathLength::AppendSegment(Segment const& segment, double from, double to, bool& isStarted,
                               HvPath2f& out)
{
    double const start = ParameterAt(segment, from);
    double const end = ParameterAt(segment, to);
    if (segment.isLine) {
        Point const step = segment.points[1] - segment.points[0];
        if (!isStarted) {
            out.Moveto(HvPoint2<float>(segment.points[0] + step * start));
        }
        out.Lineto(HvPoint2<float>(segment.points[0] + step * end));
    } else {
        Point left[4];
        Point behind[4];
        Point piece[4];
        HvCubic_Split(segment.points, end, left, behind);
        HvCubic_Split(left, end > 0.0 ? start / end : 0.0, behind, piece);
        if (!isStarted) {
            out.Moveto(HvPoint2<float>(piece[0]));
        }
        out.Curveto(HvPoint2<float>(piece[1]), HvPoint2<float>(piece[2]),
                    HvPoint2<float>(piece[3]));
    }
    isStarted = true;
}

void PathLength::AppendPiece(double from, double to, Start start, HvPath2f& out) const
{
    bool isStarted = start == AsContinuation;
    auto const firstEnd = std::upper_bound(ends_.begin(), ends_.end(), from);
    for (auto i = static_cast<std::size_t>(firstEnd - ends_.begin()); i < segments_.size(); ++i) {
        double const begin = i == 0 ? 0.0 : ends_[i - 1];
        if (!(begin < to)) {
            break;
        }
        double const length = ends_[i] - begin;
        double const pieceFrom = std::max(from - begin, 0.0);
        double const pieceTo = std::min(to - begin, length);
        if (pieceTo > pieceFrom) {
            AppendSegment(segments_[i], pieceFrom, pieceTo, isStarted, out);
        }
    }
}
