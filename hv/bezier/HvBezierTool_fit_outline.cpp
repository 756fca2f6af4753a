// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Fits of whole polylines by smooth chains of cubics.

#include <hv/bezier/HvBezierTool.h>

#include <hv/bezier/HvBezierSink.h>
#include <hv/bezier/internal/distinct_points.h>
#include <hv/bezier/internal/outline_fitter.h>

namespace {

/// The only degree that a chain has.
constexpr unsigned int kFittedDegree = 3;

bool CanFit(HvPoint2fArray const& points, unsigned int degree, double tolerance)
{
    return points.Size() >= 2 && degree == kFittedDegree && tolerance >= 0.0 &&
           HvDistinctPoints_AreFinite(points);
}

}  // namespace

unsigned int HvBezierTool::OpenFit(HvPoint2fArray const& points, double cornerCosSquared,
                                   unsigned int curveDegree, double within, int, HvBezierSink& sink,
                                   int continuePath)
{
    if (!CanFit(points, curveDegree, within)) {
        return 0;
    }
    HvPoint2<float> const start = points[0];
    HvOutlineFitter fitter(points, false, cornerCosSquared, within);
    fitter.Fit();
    if (continuePath != 0) {
        return fitter.Draw(sink);
    }
    sink.Moveto(start);
    return 1 + fitter.Draw(sink);
}

unsigned int HvBezierTool::ClosedFit(HvPoint2fArray const& points, double cornerCosSquared,
                                     unsigned int curveDegree, double within, int,
                                     HvBezierSink& sink)
{
    if (!CanFit(points, curveDegree, within)) {
        return 0;
    }
    HvPoint2<float> const start = points[0];
    HvOutlineFitter fitter(points, true, cornerCosSquared, within);
    fitter.Fit();
    sink.Moveto(start);
    unsigned int const added = 1 + fitter.Draw(sink);
    sink.Closeto();
    return added;
}
