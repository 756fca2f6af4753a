// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Curves through and near a run of points, appended to a path.

#include <hv/pathbuild/stroke_fitting.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/pathbuild/internal/builder_limits.h>
#include <hv/pathbuild/stroke_tangents.h>
#include <hv/shape/HvPath2f.h>

#include <algorithm>
#include <cmath>

namespace {

using Point = HvPoint2<float>;
using Direction = HvPoint2<double>;

/// The handle of a step without a turn, over the step: then the cubic is walked evenly.
constexpr double kHandleShare = 0.3333333333333333;
/// The side-step of a handle, in tolerances, beyond which it is shortened, and to which.
constexpr double kMostSideStep = 8.0;
constexpr double kKeptSideStep = 2.6666666666666665;

/// A run, as the functions of the header take it.
struct Run {
    HvPoint2fArray const& points;
    unsigned int first;
    bool firstIsCorner;
    unsigned int last;
    bool lastIsCorner;
    bool close;
    HvPath2f& path;

    unsigned int Steps() const { return last - first; }
    bool IsEmpty() const { return first >= last || last >= points.Size(); }

    Run FirstHalf() const
    {
        return {points, first, firstIsCorner, first + Steps() / 2, false, false, path};
    }
    Run SecondHalf() const
    {
        return {points, first + Steps() / 2, false, last, lastIsCorner, close, path};
    }

    /// Whether the run does not go on from a curve, but starts anew.
    bool StartsAnew() const { return firstIsCorner || first == 0; }
    Direction PathEnd() const { return GetTangentDirectionOnPath(points, &path, 1); }
    Direction PathStart() const { return GetTangentDirectionOnPath(points, &path, 0); }
    Direction StartTangent() const
    {
        return StartsAnew() ? Direction(EstimateTangentDirection(points, first, 1, 0, 0))
                            : PathEnd();
    }
    /// At the end of an open run: the step before where the run or all points end, otherwise the
    /// direction across the point.
    Direction OpenEndTangent() const
    {
        int const backward = lastIsCorner || last + 1 == points.Size() ? 1 : 0;
        return Direction(EstimateTangentDirection(points, last, 0, backward, 0));
    }
};

/// Handles over the length of a step: a third, or what keeps the longer side-step small.
double HandleShare(Point const& step, Point const& startTangent, Point const& endTangent,
                   double tolerance)
{
    auto const sideStep = [&step](Point const& tangent) {
        return double(std::fabs(tangent.x * step.y - tangent.y * step.x));
    };
    double const within = std::max(tolerance, 0.0);
    double const most = std::fmax(sideStep(startTangent), sideStep(endTangent));
    return most > within * kMostSideStep ? within * kKeptSideStep / most : kHandleShare;
}

void Interpolate(Run const& run, HvDoubleArray const& chord, double tolerance)
{
    HvPoint2fArray const& points = run.points;
    Point tangent(run.StartTangent());
    for (unsigned int i = run.first + 1; i <= run.last; ++i) {
        Point next;
        if (i < run.last) {
            next = EstimateTangentDirection(points, i, 0, 0, 0);
        } else if (run.close && !run.lastIsCorner) {
            next = Point(run.PathStart());
        } else {
            next = Point(run.OpenEndTangent());
        }
        double const share = HandleShare(points[i] - points[i - 1], tangent, next, tolerance);
        float const h = static_cast<float>(share * (chord[i] - chord[i - 1]));
        run.path.Curveto(points[i - 1] + tangent * h, points[i] - next * h, points[i]);
        tangent = next;
    }
    if (run.close) {
        run.path.Closeto();
    }
}

void Find(Run const& run, unsigned int maxDegree)
{
    HvPoint2fArray const& points = run.points;
    unsigned int const n = run.Steps() + 1;
    if (n > kHvBuilderMaxDegree) {
        Find(run.FirstHalf(), maxDegree);
        Find(run.SecondHalf(), maxDegree);
        return;
    }
    float const h = static_cast<float>(HvPoint2_LengthAB(points[run.first], points[run.last]) / n);
    Point controls[kHvBuilderMaxDegree + 1];
    controls[0] = points[run.first];
    controls[1] = points[run.first] + Point(run.StartTangent()) * h;
    std::copy(points.Data() + run.first + 1, points.Data() + run.last, controls + 2);
    unsigned int degree = n;
    if (run.close) {
        unsigned int const from = run.first == 0 ? run.last : run.first;
        Point const tangent(run.lastIsCorner
                                ? Direction(EstimateTangentDirection(points, from, 0, 1, 0))
                                : run.PathStart());
        degree = std::min(maxDegree, kHvBuilderMaxDegree) < n + 1 ? n : n + 1;
        controls[degree - 1] = points[run.last] - tangent * h;
    }
    controls[degree] = points[run.last];
    run.path.AltCurveto(controls + 1, degree);
    if (run.close) {
        run.path.Closeto();
    }
}

/// The fit of a run by one cubic, with the numbers that all runs share.
class RunFit {
public:
    RunFit(HvDoubleArray const& chord, double tolerance, unsigned int maxPoints, HvBezierTool& tool)
        : chord_(chord), tolerance_(tolerance), maxPoints_(maxPoints), tool_(tool)
    {
    }

    void Add(Run const& run)
    {
        Point cubic[4];
        if (run.close ? FitClosing(run, cubic) : FitOpen(run, cubic)) {
            run.path.AltCurveto(cubic + 1, 3);
            if (run.close) {
                run.path.Closeto();
            }
        } else if (run.Steps() < 2) {
            Interpolate(run, chord_, tolerance_);
        } else {
            AddHalf(run.FirstHalf());
            AddHalf(run.SecondHalf());
        }
    }

private:
    void AddHalf(Run const& half)
    {
        if (half.Steps() >= maxPoints_) {
            Add(half);
        } else if (half.Steps() < 2) {
            Interpolate(half, chord_, tolerance_);
        } else {
            Find(half, maxPoints_);
        }
    }

    bool FitOpen(Run const& run, Point* cubic)
    {
        Direction const start = run.StartTangent();
        return EndsInShortSteps(run) ? G1C0(run, start, cubic)
                                     : G1G1(run, start, run.OpenEndTangent(), cubic);
    }

    bool FitClosing(Run const& run, Point* cubic)
    {
        if (run.first == 0) {
            return run.firstIsCorner || run.lastIsCorner
                       ? C0C0(run, cubic)
                       : G1G1(run, run.PathEnd(), run.PathEnd(), cubic);
        }
        if (run.firstIsCorner) {
            return run.lastIsCorner ? C0C0(run, cubic) : C0G1(run, run.PathStart(), cubic);
        }
        return run.lastIsCorner ? G1C0(run, run.PathEnd(), cubic)
                                : G1G1(run, run.PathEnd(), run.PathStart(), cubic);
    }

    // Steps this short are the pen coming to rest: their direction says nothing.
    bool EndsInShortSteps(Run const& run) const
    {
        return IsShort(run, run.last) && (run.Steps() < 2 || IsShort(run, run.last - 1));
    }
    bool IsShort(Run const& run, unsigned int i) const
    {
        Point const step = run.points[i] - run.points[i - 1];
        return double(std::fabs(step.x)) < tolerance_ && double(std::fabs(step.y)) < tolerance_;
    }

    bool G1G1(Run const& run, Direction const& start, Direction const& end, Point* cubic)
    {
        return tool_.SingleCurveFitG1G1(run.points, chord_, run.first, run.last, start, end,
                                        tolerance_, maxPoints_, cubic, split_) != 0;
    }
    bool G1C0(Run const& run, Direction const& start, Point* cubic)
    {
        return tool_.SingleCurveFitG1C0(run.points, chord_, run.first, run.last, start, tolerance_,
                                        maxPoints_, cubic, split_) != 0;
    }
    bool C0G1(Run const& run, Direction const& end, Point* cubic)
    {
        return tool_.SingleCurveFitC0G1(run.points, chord_, run.first, run.last, end, tolerance_,
                                        maxPoints_, cubic, split_) != 0;
    }
    bool C0C0(Run const& run, Point* cubic)
    {
        return tool_.SingleCurveFitC0C0(run.points, chord_, run.first, run.last, tolerance_,
                                        maxPoints_, cubic, split_) != 0;
    }

    HvDoubleArray const& chord_;
    double tolerance_;
    unsigned int maxPoints_;
    HvBezierTool& tool_;
    // Where a fit fails the run is halved, which bounds the depth, so the worst point is not asked.
    unsigned int split_ = 0;
};

}  // namespace

void CubicInterpolation(HvPoint2fArray const& points, HvDoubleArray const& chord, double tolerance,
                        unsigned int first, int firstIsCorner, unsigned int last, int lastIsCorner,
                        int close, HvPath2f* path)
{
    Run const run = {points, first, firstIsCorner != 0, last, lastIsCorner != 0, close != 0, *path};
    if (!run.IsEmpty() && last < chord.Size()) {
        Interpolate(run, chord, tolerance);
    }
}

void FindBezierCurve(HvPoint2fArray const& points, unsigned int maxDegree, unsigned int first,
                     int firstIsCorner, unsigned int last, int lastIsCorner, int close,
                     HvPath2f* path)
{
    Run const run = {points, first, firstIsCorner != 0, last, lastIsCorner != 0, close != 0, *path};
    if (!run.IsEmpty()) {
        Find(run, maxDegree);
    }
}

void FitBezierCurve(HvPoint2fArray const& points, HvDoubleArray const& chord, double tolerance,
                    unsigned int maxDegree, unsigned int first, int firstIsCorner,
                    unsigned int last, int lastIsCorner, int close, HvBezierTool& tool,
                    HvPath2f* path)
{
    Run const run = {points, first, firstIsCorner != 0, last, lastIsCorner != 0, close != 0, *path};
    if (!run.IsEmpty() && last < chord.Size()) {
        RunFit(chord, tolerance, maxDegree, tool).Add(run);
    }
}
