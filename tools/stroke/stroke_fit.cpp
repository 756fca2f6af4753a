// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// From a stroke to a path of few curves.

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvExtent2.h>
#include <hv/foundation/HvPoint2dArray.h>
#include <hv/foundation/polyline_length.h>
#include <hv/pathbuild/HvBezierFitPathPropBuilder.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fSink.h>
#include <tools/stroke/stroke_fit.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// The polyline on which distances are measured stays this near to the path, in tolerances, or, in
/// sizes of the stroke, as near as its floats can tell.
constexpr double kMeasuredShare = 1e-4;
constexpr double kMeasuredSizeShare = 1e-7;
/// The foot of a point is sought so many tolerances, and so many steps of the stroke, around that
/// of the point before.
constexpr double kReachTolerances = 4.0;
constexpr double kReachSteps = 2.0;

// A live fit, in tolerances: what is near enough to be one point, from which length on a step is
// subdivided, and from which on it is so long that nothing is known of what lies between.
constexpr double kLiveGap = 0.25;
constexpr double kLiveSubdivided = 20.0;
constexpr double kLiveLong = 60.0;
/// The fewest steps of a live fit.
constexpr unsigned int kLiveFewest = 4;
/// How near the lengths of a live fit are measured, in tolerances.
constexpr double kLiveFlatness = 0.01;

/// How near the property stays to the widths, as a share of the largest.
constexpr double kWidthTolerance = 0.02;

double Radians(double degrees)
{
    return degrees * std::acos(-1.0) / 180.0;
}

HvPoint2fArray PlacesOf(StrokeDocument const& stroke)
{
    HvPoint2fArray places(static_cast<unsigned int>(stroke.points.size()));
    for (StrokePoint const& point : stroke.points) {
        places.Add(point.place);
    }
    return places;
}

void FitAtOnce(HvPoint2fArray const& places, StrokeFitOptions const& options, HvPath2f& path)
{
    double const cosine = std::cos(Radians(options.cornerDegrees));
    // A turn of more than 90 degrees is always a corner.
    double const squared = cosine > 0.0 ? cosine * cosine : 0.0;
    HvPath2fSink sink(path);
    HvBezierTool tool;
    if (options.isClosed) {
        tool.ClosedFit(places, squared, 3, options.tolerance, 0, sink);
    } else {
        tool.OpenFit(places, squared, 3, options.tolerance, 0, sink, 0);
    }
}

double WidthTolerance(std::vector<double> const& widths)
{
    return widths.empty() ? 0.0 : kWidthTolerance * *std::max_element(widths.begin(), widths.end());
}

/// How near something of that extent is measured: as `wanted`, but no nearer than can be told.
double MeasuredWithin(HvExtent2<double> const& extent, double wanted)
{
    double const size = std::max(extent.max.x - extent.min.x, extent.max.y - extent.min.y);
    return std::max(wanted, size * kMeasuredSizeShare);
}

HvExtent2<double> ExtentOf(HvPoint2fArray const& places)
{
    HvExtent2<double> extent;
    for (HvPoint2<float> const& place : places) {
        extent.Augment(HvPoint2<double>(place));
    }
    return extent;
}

/// Outline and property grow together. A stroke without widths has one everywhere.
void FitLive(HvPoint2fArray const& places, std::vector<double> const& widths,
             StrokeFitOptions const& options, HvPath2fProp1d& path)
{
    auto const widthAt = [&widths](unsigned int i) { return widths.empty() ? 1.0 : widths[i]; };
    double const within = options.tolerance;
    HvGC gc;
    gc.minPointGap = within * kLiveGap;
    gc.flatness = MeasuredWithin(ExtentOf(places), within * kLiveFlatness);
    // Nobody looks at the samples, so there need be none.
    gc.sampleSpacing = std::numeric_limits<double>::infinity();
    HvBezierFitPathPropBuilder builder(gc, &path, within * kLiveLong, within * kLiveSubdivided,
                                       within, kLiveFewest, WidthTolerance(widths));
    builder.StartSubpath(places[0], widthAt(0));
    unsigned int const last = places.Size() - 1;
    for (unsigned int i = 1; i < last; ++i) {
        builder.AddInputPoint(places[i], widthAt(i), 0);
        if (i % options.live == 0) {
            builder.GetTrailingSamples();
        }
    }
    builder.EndSubpath(places[last], widthAt(last), options.isClosed ? 1 : 0);
}

/// Gives the path its widths, each at the foot of its point. Of points at one place the first
/// counts. The path's ends have keys.
void SetWidths(std::vector<double> const& widths, StrokeFit& fit)
{
    HvPoint2dArray points(static_cast<unsigned int>(widths.size()) + 2);
    points.Add(HvPoint2<double>(0.0, widths.front()));
    for (std::size_t i = 0; i < widths.size(); ++i) {
        points.Add(HvPoint2<double>(fit.feet[i], widths[i]));
    }
    points.Add(HvPoint2<double>(fit.length, widths.back()));
    fit.path.SetPropCurve(0, points, WidthTolerance(widths));
}

unsigned int NumCurves(HvPath2f const& path)
{
    unsigned int count = 0;
    for (unsigned int i = 1; i < path.NumPoints(); i = path.EndOfSegment(i) + 1) {
        ++count;
    }
    return count;
}

/// A polyline in which the points of a stroke, in their order, find what lies next to them.
class NearestOnPath {
public:
    NearestOnPath(HvPath2f const& path, double tolerance) : tolerance_(tolerance)
    {
        HvExtent2<double> extent;
        double const within = MeasuredWithin(path.GetExtent(extent), tolerance * kMeasuredShare);
        path.FlattenSubpath(0, within, line_);
        if (line_.Size() == 0) {
            // A pen that stood still: a lone start has no outline.
            line_ = HvPoint2fArray(path.GetPoint(0), 2);
        }
        HvPoint2fArraySingleComponent_ComputeChordLength(line_, lengths_);
    }

    /// How far along the polyline the foot of the last point is.
    double Foot() const { return at_; }
    double Length() const { return lengths_[lengths_.Size() - 1]; }

    /// The distance of the next point, which lies `step` behind the one before; sought near the
    /// foot of that one, and only where nothing is near there on the whole path.
    double Distance(HvPoint2<float> const& p, double step)
    {
        double const reach = kReachSteps * step + kReachTolerances * tolerance_;
        while (first_ > 0 && lengths_[first_] > at_ - reach) {
            --first_;
        }
        while (first_ + 2 < line_.Size() && lengths_[first_ + 1] < at_ - reach) {
            ++first_;
        }
        double squared = Nearest(p, first_, at_ + step + reach);
        if (squared > reach * reach) {
            squared = Nearest(p, 0, Length());
        }
        return std::sqrt(squared);
    }

private:
    /// The least squared distance of the pieces from vertex `first` on up to the length `end`,
    /// whose place becomes the last foot.
    double Nearest(HvPoint2<float> const& p, unsigned int first, double end)
    {
        double least = std::numeric_limits<double>::infinity();
        for (unsigned int i = first; i + 1 < line_.Size() && lengths_[i] <= end; ++i) {
            double squared = 0.0;
            double parameter = 0.0;
            HvPoint2_FindClosestPointOnLineSegment(
                HvPoint2<double>(p), HvPoint2<double>(line_[i]), HvPoint2<double>(line_[i + 1]),
                std::numeric_limits<double>::max(), squared, parameter);
            if (squared < least) {
                least = squared;
                at_ = lengths_[i] + parameter * (lengths_[i + 1] - lengths_[i]);
            }
        }
        return least;
    }

    double tolerance_;
    HvPoint2fArray line_ = HvPoint2fArray(256);
    HvDoubleArray lengths_ = HvDoubleArray(256);
    /// Where the last foot lies, as a length, and the vertex where its neighbourhood begins.
    double at_ = 0.0;
    unsigned int first_ = 0;
};

}  // namespace

StrokeFit StrokeFit_Make(StrokeDocument const& stroke, std::vector<double> const& widths,
                         StrokeFitOptions const& options,
                         std::function<void(std::size_t)> const& advance)
{
    HvPoint2fArray const places = PlacesOf(stroke);
    StrokeFit fit;
    if (options.live != 0) {
        FitLive(places, widths, options, fit.path);
    } else {
        FitAtOnce(places, options, fit.path);
    }
    fit.numCurves = NumCurves(fit.path);

    NearestOnPath nearest(fit.path, options.tolerance);
    fit.length = nearest.Length();
    for (unsigned int i = 0; i < places.Size(); ++i) {
        double const step = i == 0 ? 0.0 : HvPoint2_LengthAB(places[i - 1], places[i]);
        fit.farthest = std::max(fit.farthest, nearest.Distance(places[i], step));
        fit.feet.push_back(i == 0 ? 0.0 : std::max(fit.feet.back(), nearest.Foot()));
        advance(1);
    }
    if (!widths.empty() && options.live == 0) {
        SetWidths(widths, fit);
    }
    return fit;
}
