// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Least-squares fits of one cubic to a stretch of points.

#include <hv/bezier/HvBezierTool.h>

#include <hv/bezier/internal/cubic_fitter.h>
#include <hv/foundation/HvDoubleArray.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Rounds beyond this gain nothing that a caller would see.
constexpr unsigned int kMostRounds = 32;
/// A round must leave less than this share of the squared distances for another one to follow.
constexpr double kWorthwhileShare = 0.98;

int FitOne(HvPoint2fArray const& points, HvDoubleArray const& parameters, unsigned int first,
           unsigned int last, HvFitTangents const& tangents, double tolerance,
           unsigned int maxIterations, HvPoint2<float>* cubic, unsigned int& split)
{
    if (first >= last || last >= points.Size() || last >= parameters.Size()) {
        return 0;
    }
    HvFitEffort const effort = {std::min(maxIterations, kMostRounds),
                                std::numeric_limits<unsigned int>::max(),
                                std::numeric_limits<double>::infinity(), kWorthwhileShare};
    HvCubicFitter fitter(points.Data(), parameters.Data());
    if (fitter.Fit(first, last, tangents, tolerance, effort)) {
        std::copy_n(fitter.Cubic(), 4, cubic);
        return 1;
    }
    if (last - first > 1) {
        split = fitter.Worst();
    }
    return 0;
}

}  // namespace

int HvBezierTool::SingleCurveFitG1G1(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                                     unsigned int first, unsigned int last,
                                     HvPoint2<double> const& startTangent,
                                     HvPoint2<double> const& endTangent, double within,
                                     unsigned int maxIterations, HvPoint2<float>* cubic,
                                     unsigned int& split)
{
    return FitOne(points, parameters, first, last, {true, true, startTangent, endTangent}, within,
                  maxIterations, cubic, split);
}

int HvBezierTool::SingleCurveFitG1C0(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                                     unsigned int first, unsigned int last,
                                     HvPoint2<double> const& startTangent, double within,
                                     unsigned int maxIterations, HvPoint2<float>* cubic,
                                     unsigned int& split)
{
    return FitOne(points, parameters, first, last, {true, false, startTangent, {}}, within,
                  maxIterations, cubic, split);
}

int HvBezierTool::SingleCurveFitC0G1(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                                     unsigned int first, unsigned int last,
                                     HvPoint2<double> const& endTangent, double within,
                                     unsigned int maxIterations, HvPoint2<float>* cubic,
                                     unsigned int& split)
{
    return FitOne(points, parameters, first, last, {false, true, {}, endTangent}, within,
                  maxIterations, cubic, split);
}

int HvBezierTool::SingleCurveFitC0C0(HvPoint2fArray const& points, HvDoubleArray const& parameters,
                                     unsigned int first, unsigned int last, double within,
                                     unsigned int maxIterations, HvPoint2<float>* cubic,
                                     unsigned int& split)
{
    return FitOne(points, parameters, first, last, {}, within, maxIterations, cubic, split);
}
