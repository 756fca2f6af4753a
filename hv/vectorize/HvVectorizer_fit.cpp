// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Contours as curves.

#include <hv/vectorize/HvVectorizer.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/foundation/HvDynArray.h>
#include <hv/foundation/HvPoint2fArray.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2f.h>
#include <hv/shape/HvPath2fIter.h>

#include <cmath>
#include <utility>

namespace {

using Point = HvPoint2<float>;
using Vector = HvPoint2<double>;

/// Rounds in which a fit may move its parameters: more gain little on points that lie a pixel
/// apart.
constexpr unsigned int kFitRounds = 3;

/// Farthest neighbours whose chord tells the direction at a point. Nearer ones see the stairs of
/// the pixels, farther ones cut the corners of what was drawn.
constexpr unsigned int kFarthestNeighbour = 4;

Vector Normalised(Vector const& v)
{
    double const length = std::hypot(v.x, v.y);
    return length > 0 ? Vector(v.x / length, v.y / length) : v;
}

/// Fits the contours one after the other into a path; the storage serves all of them.
class ContourFitter {
public:
    ContourFitter(double tolerance, HvPath2f& path) : tolerance_(tolerance), path_(path), runs_(1)
    {
    }

    /// Appends a fit of the closed polygon from point `first` to point `last` of `polygons`.
    void Fit(HvPath2f const& polygons, unsigned int first, unsigned int last);

private:
    /// A stretch of the walk that is to become curves, and its directions at both ends.
    struct Run {
        unsigned int first;
        unsigned int last;
        Vector startTangent;
        Vector endTangent;
    };

    void WalkPixels(HvPath2f const& polygons, unsigned int first, unsigned int last);
    void FitRun(Run const& run);
    Vector TangentAtSplit(unsigned int split) const;
    Vector Chord(unsigned int from, unsigned int to) const;

    double tolerance_;
    HvPath2f& path_;
    HvBezierTool tool_;
    // The corners of the polygon.
    HvPoint2fArray corners_;
    // The corners of pixels along the contour, its start repeated at the end, and their distances
    // along it.
    HvPoint2fArray points_;
    HvDoubleArray parameters_;
    // What is still to be fitted, the next on top. A contour may be split as often as it is long,
    // so a recursion would not do.
    HvDynArray<Run> runs_;
};

void ContourFitter::Fit(HvPath2f const& polygons, unsigned int first, unsigned int last)
{
    WalkPixels(polygons, first, last);
    unsigned int const end = points_.Size() - 1;
    path_.Moveto(points_[0]);
    // One direction at both ends, from the corner before the start to the one after it, so that the
    // contour closes smoothly.
    Vector const tangent = Normalised(Chord(end - 1, 1));
    runs_.Add({0, end, tangent, tangent});
    while (runs_.Count() != 0) {
        Run const run = runs_[runs_.Count() - 1];
        runs_.Chop(runs_.Count() - 1);
        FitRun(run);
    }
    path_.Closeto();
}

// Every corner of a pixel along the sides of the polygon. They are counted, not stepped to: a float
// beyond 2^24 plus 1 may be itself.
void ContourFitter::WalkPixels(HvPath2f const& polygons, unsigned int first, unsigned int last)
{
    corners_.Resize(last - first + 1);
    polygons.GetPoints(first, last, corners_.Data());
    points_.Chop(0);
    parameters_.Chop(0);
    Point from = corners_[0];
    points_.Add(from);
    parameters_.Add(0.0);
    for (unsigned int i = 1; i < corners_.Size(); ++i) {
        Point const to = corners_[i];
        Vector const side = Vector(to) - Vector(from);
        Vector const direction = Normalised(side);
        double const length = std::fabs(side.x) + std::fabs(side.y);  // one of the two is 0
        for (double step = 1; step <= length; step += 1) {
            points_.Add(Point(Vector(from) + direction * step));
            parameters_.Add(static_cast<double>(parameters_.Size()));
        }
        from = to;
    }
}

// Draws a run, or splits it and puts its two halves on top.
void ContourFitter::FitRun(Run const& run)
{
    if (run.last == run.first + 1) {
        path_.Lineto(points_[run.last]);
        return;
    }
    if (run.last == run.first + 2) {
        path_.Curveto(points_[run.first + 1], points_[run.first + 1], points_[run.last]);
        return;
    }
    Point cubic[4];
    unsigned int split = run.first;
    if (tool_.SingleCurveFitG1G1(points_, parameters_, run.first, run.last, run.startTangent,
                                 run.endTangent, tolerance_, kFitRounds, cubic, split) != 0) {
        path_.AltCurveto(cubic + 1, 3);
        return;
    }
    if (split <= run.first || split >= run.last) {
        // The fitter promises a point between the ends; with another one this would go on for ever.
        split = run.first + (run.last - run.first) / 2;
    }
    Vector const tangent = TangentAtSplit(split);
    runs_.Add({split, run.last, tangent, run.endTangent});
    runs_.Add({run.first, split, run.startTangent, tangent});
}

// The direction at a point strictly between the ends. Near the ends the second index counts back
// from the far end: required so, though the direction is then that of no chord through the point.
HvPoint2<double> ContourFitter::TangentAtSplit(unsigned int split) const
{
    unsigned int const end = points_.Size() - 1;
    bool const isInside = split >= kFarthestNeighbour && split + kFarthestNeighbour <= end;
    Vector sum;
    for (unsigned int k = 2; k <= kFarthestNeighbour; ++k) {
        sum = sum + (isInside ? Chord(split - k, split + k)
                              : Chord((end - split + k) % end, (split + k) % end));
    }
    if (kHvGeometryTolerance > std::fabs(sum.x) && kHvGeometryTolerance > std::fabs(sum.y)) {
        sum = Chord(split - 1, split + 1);
    }
    return Normalised(sum);
}

HvPoint2<double> ContourFitter::Chord(unsigned int from, unsigned int to) const
{
    return Vector(points_[to]) - Vector(points_[from]);
}

}  // namespace

unsigned int HvVectorizer::VectorizeAndFit(HvUByteRaster const& raster, unsigned char value,
                                           HvExtent2<float> const& extent, HvGC const& gc,
                                           HvPath2f& path) const
{
    HvPath2f polygons(0);
    if (Vectorize(raster, value, extent, polygons) == 0) {
        return 0;
    }
    unsigned int const before = path.NumPoints();
    ContourFitter fitter(gc.flatness, path);
    HvPath2fIter subpaths(polygons);
    unsigned int first = 0;
    unsigned int last = 0;
    while (subpaths.GetNextSubPathIndices(first, last) != 0) {
        fitter.Fit(polygons, first, last);
    }
    return path.NumPoints() - before;
}
