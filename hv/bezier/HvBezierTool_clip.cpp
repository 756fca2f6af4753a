// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Cubic Bezier curves of the plane to polylines, clipped to a rectangle.

#include <hv/bezier/HvBezierTool_clip.h>

#include <hv/bezier/HvBezierTool_flatten.h>
#include <hv/bezier/HvFlattenedRuns.h>
#include <hv/bezier/internal/cubic_flattener.h>
#include <hv/bezier/line_clip.h>

#include <algorithm>
#include <cmath>

namespace {

/// How far, as a part of the greatest coordinate, a part of a curve must miss the rectangle to be
/// left out unseen. At most 1024 forward differences drift by some 1e-12 of the coordinates, so a
/// polyline never strays that far out of its control points' box.
constexpr double kDriftMargin = 1e-9;

bool AllInside(HvPoint2<double> const* cubic, HvExtent2<double> const& clip)
{
    return std::all_of(cubic, cubic + 4,
                       [&clip](HvPoint2<double> const& p) { return clip.Contains(p) != 0; });
}

/// True when all four numbers, and whatever lies near between them, are outside low to high.
bool MissesRange(double a, double b, double c, double d, double low, double high)
{
    double const least = std::min({a, b, c, d});
    double const greatest = std::max({a, b, c, d});
    double const margin = kDriftMargin * std::max(std::fabs(least), std::fabs(greatest));
    return greatest < low - margin || least > high + margin;
}

/// Clips each edge of a polyline and writes what is left.
class ClippingSink {
public:
    static constexpr unsigned int kMaxDoublings = kHvPlaneMaxDoublings;

    ClippingSink(HvPoint2<double> const& start, HvExtent2<double> const& clip,
                 HvFlattenedRuns& runs)
        : last_(start), clip_(clip), runs_(runs)
    {
    }

    bool Misses(HvPoint2<double> const* p) const
    {
        return MissesRange(p[0].x, p[1].x, p[2].x, p[3].x, clip_.min.x, clip_.max.x) ||
               MissesRange(p[0].y, p[1].y, p[2].y, p[3].y, clip_.min.y, clip_.max.y);
    }
    void Expect(std::uint64_t) {}
    void Add(HvPoint2<double> const& point)
    {
        HvPoint2<double> a = last_;
        HvPoint2<double> b = point;
        last_ = point;
        if (HvLineClip_Clip(a, b, clip_) != 0) {
            runs_.BeginEdge(a, 1);
            runs_.EndEdge(b);
        }
    }

private:
    HvPoint2<double> last_;
    HvExtent2<double> clip_;
    HvFlattenedRuns& runs_;
};

}  // namespace

void HvBezierTool_ClipAndFlattenCubic2d(HvPoint2<double> const* cubic, double tolerance,
                                        HvExtent2<double> const& clip, HvPoint2dArray* points,
                                        HvPointTagArray* tags, HvBoolArray* flags)
{
    if (clip.state == HvExtent2<double>::Empty) {
        return;
    }
    HvPoint2<double> const local[4] = {cubic[0], cubic[1], cubic[2], cubic[3]};
    HvFlattenedRuns runs(*points, *tags, *flags);
    HvFlattenedRuns::Mark const mark = runs.GetMark();
    try {
        if (AllInside(local, clip)) {
            // The break's flag is 0 here and 1 on the clipped path: which of the two is taken can
            // be seen in the flags alone, and hosts rely on it.
            runs.BeginEdge(local[0], 0);
            runs.AdoptPoints(HvBezierTool_FlattenCubic2d(local, tolerance, points, 1));
        } else {
            ClippingSink sink(local[0], clip, runs);
            HvCubicFlattener<HvPlaneMetric, ClippingSink>(sink).Walk(local, tolerance);
            sink.Add(local[3]);
        }
    } catch (...) {
        runs.CutBack(mark);
        throw;
    }
}
