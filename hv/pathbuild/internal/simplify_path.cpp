// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// A path with fewer points near a path.

#include <hv/pathbuild/internal/simplify_path.h>

#include <hv/bezier/HvBezierTool.h>
#include <hv/foundation/HvDoubleArray.h>
#include <hv/pathbuild/HvPath2fProp1d.h>
#include <hv/pathbuild/internal/HvSwingFilter.h>
#include <hv/shape/HvGC.h>
#include <hv/shape/HvPath2fIter.h>
#include <hv/shape/HvPath2fSink.h>
#include <hv/shape/HvShapeLock.h>

#include <algorithm>
#include <cmath>

namespace {

/// How the tolerance is shared: the outline is flattened within the one part, and the polyline
/// fitted within the other. Flattening costs less the more it gets, but makes more points to fit.
constexpr double kFlattenShare = 0.25;
constexpr double kFitShare = 1.0 - kFlattenShare;

/// Degree of the segments that a fit draws, and the highest one of a path.
constexpr unsigned int kFittedDegree = 3;
constexpr unsigned int kMaxDegree = 8;

/// Appends a copy of the subpath from `start` to `end`.
void AppendSubpath(HvPath2f const& from, unsigned int start, unsigned int end, HvPath2f& out)
{
    out.Moveto(from.GetPoint(start));
    for (unsigned int i = start; i < end;) {
        // Roles that make up no segment do not lead on.
        unsigned int const last = std::max(from.EndOfSegment(i + 1), i + 1);
        HvPoint2<float> points[kMaxDegree];
        from.GetPoints(i + 1, last, points);
        out.AltCurveto(points, last - i);
        i = last;
    }
    if (from.IsSubpathClosed(start) != 0) {
        out.Closeto();
    }
}

/// Appends a fit of a subpath to `fitted`, if there is one.
void Fit(HvPath2f const& source, unsigned int start, double tolerance, HvGC const& gc,
         HvPath2f& fitted)
{
    HvPoint2fArray line(64);
    source.FlattenSubpath(start, tolerance * kFlattenShare, line);
    HvPath2fSink sink(fitted);
    HvBezierTool tool;
    if (source.IsSubpathClosed(start) != 0) {
        tool.ClosedFit(line, gc.cornerCosSquared, kFittedDegree, tolerance * kFitShare, 0, sink);
    } else {
        tool.OpenFit(line, gc.cornerCosSquared, kFittedDegree, tolerance * kFitShare, 0, sink, 0);
    }
}

bool IsFinite(HvPath2f const& path, unsigned int start, unsigned int end)
{
    for (unsigned int i = start; i <= end; ++i) {
        HvPoint2<float> const p = path.GetPoint(i);
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            return false;
        }
    }
    return true;
}

/// The curve with fewer keys; what it does beyond them, and its clamping values, go along.
HvRawFCurve Simplified(HvRawFCurve const& curve, double tolerance)
{
    HvDoubleArray parameters;
    HvDoubleArray values;
    unsigned int const count = curve.GetAllKeyParameters(parameters);
    if (count < 3) {
        return curve;
    }
    values.Resize(count);
    curve.EvalMany(parameters.Data(), count, values.Data(), 0);
    HvSwingFilter filter(tolerance);
    filter.Start({parameters[0], values[0]});
    HvRawFCurve simple(parameters[0], values[0]);
    HvSwingFilter::Point key;
    for (unsigned int i = 1; i < count; ++i) {
        if (filter.Add({parameters[i], values[i]}, key)) {
            simple.AppendLinearSegment(key);
        }
    }
    if (filter.HasEnd()) {
        simple.AppendLinearSegment(filter.End());
    }
    double lower = 0.0;
    double upper = 0.0;
    curve.GetClampingValues(lower, upper);
    simple.SetClampingValues(lower, upper);
    simple.SetExtrapolationMethod(curve.GetExtrapolationMethod());
    return simple;
}

}  // namespace

void HvPath_Simplify(HvPath2fProp1d const& source, double tolerance, double propertyTolerance,
                     HvPath2fProp1d& out)
{
    HvShapeLock const lock(source);
    HvGC const gc;  // for what counts as a corner
    HvPath2f fitted(0u);
    HvPath2fIter subpaths(source);
    unsigned int start = 0;
    unsigned int end = 0;
    while (subpaths.GetNextSubPathIndices(start, end) != 0) {
        unsigned int const before = out.NumPoints();
        unsigned int const count = end - start + 1;
        fitted = HvPath2f(0u);
        if (tolerance > 0.0 && count > 2 && IsFinite(source, start, end)) {
            Fit(source, start, tolerance, gc, fitted);
        }
        unsigned int const fittedCount = fitted.NumPoints();
        if (fittedCount != 0 && fittedCount < count) {
            AppendSubpath(fitted, 0, fittedCount - 1, out);
        } else {
            AppendSubpath(source, start, end, out);
        }
        if (HvRawFCurve const* const curve = source.GetPropCurve(start)) {
            out.SetPropCurve(before, Simplified(*curve, propertyTolerance));
        }
    }
}
