// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Fitting cubics to a composed span.

#include <hv/control/internal/HvSpanFitter.h>

#include <hv/foundation/saturate.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Point = HvPoint2<double>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Samples by which a cubic is judged. A fit that is nearly good misses by two or three arcs; of an
// arc that is a third of the stretch sixteen samples see all but two parts in a hundred.
constexpr int kNumJudged = 16;
// What is left of the tolerance for those two parts.
constexpr double kSampledPart = 0.97;

// Samples of the least squares, and their rounds: each squares the relative error of the lengths.
constexpr int kNumFitted = 8;
constexpr int kMaxRounds = 3;

// A cubic further off than so many tolerances is not improved but cut: no two lengths save it.
constexpr double kMostToImprove = 200;

// Parts that a stretch is cut into, and how often. Only a span that is not smooth, as a curve that
// is known from samples may be, comes to the last; 8^6 keys are the most for one span.
constexpr int kMaxParts = 8;
constexpr int kMaxDepth = 6;

// Values come out of two inverted cubics; below this part of them a difference is rounding.
constexpr double kValueNoise = 1e-13;

Point PointAt(Point const* P, double s)
{
    double const r = 1 - s;
    double const b0 = r * r * r;
    double const b1 = 3 * r * r * s;
    double const b2 = 3 * r * s * s;
    double const b3 = s * s * s;
    return Point(b0 * P[0].x + b1 * P[1].x + b2 * P[2].x + b3 * P[3].x,
                 b0 * P[0].y + b1 * P[1].y + b2 * P[2].y + b3 * P[3].y);
}

bool IsValid(Point const* P)
{
    bool const isFinite = std::isfinite(P[1].y) && std::isfinite(P[2].y) && std::isfinite(P[0].y) &&
                          std::isfinite(P[3].y);
    return isFinite && HvStdFCurve_IsCubicSegmentValid(P[0], P[1], P[2], P[3]);
}

// The greatest difference in values at the judging samples; the middle first, and no further than
// `enough`.
double ErrorOf(HvComposedSpan const& span, Point const* P, double enough)
{
    double error = 0;
    for (int k = 0; k < kNumJudged; ++k) {
        // 8, 3, 14, 9, 4, ...: one after the other from distant places.
        int const i = (8 + 11 * k) % kNumJudged;
        Point const p = PointAt(P, (i + 0.5) / kNumJudged);
        double const e = std::fabs(p.y - span.Value(p.x));
        if (!(e <= error)) {
            error = e;
        }
        if (!(error < enough)) {
            break;
        }
    }
    return error;
}

}  // namespace

void HvSpanFitter::Add(HvComposedSpan const& span)
{
    Point const P0(span.From(), span.Value(span.From()));
    Point const P3(span.To(), span.Value(span.To()));
    if (span.GetShape() == HvCurvePiece::Constant) {
        curve_.AddConstant(P3.x, P0.y);
        return;
    }
    if (span.GetShape() == HvCurvePiece::Line) {
        curve_.AddLine(P0, P3);
        return;
    }
    if (span.GetShape() == HvCurvePiece::Cubic) {
        Point P[4];
        span.CubicBetween(P0.x, P3.x, P);
        if (IsValid(P)) {
            curve_.AddCubic(P);
            return;
        }
    }
    AddFitted(span, P0.x, P3.x, 0);
}

// What a fit may be off: the tolerance, or what rounding leaves of values and of a parameter.
double HvSpanFitter::Allowed(double from, double to, double fromValue, double toValue) const
{
    constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
    double const values = kValueNoise * (std::fabs(fromValue) + std::fabs(toValue));
    double const steepness = std::fabs(toValue - fromValue) / (to - from);
    double const parameters = 4 * kEpsilon * steepness * (std::fabs(from) + std::fabs(to));
    return std::max({tolerance_ * kSampledPart, values, parameters});
}

void HvSpanFitter::AddFitted(HvComposedSpan const& span, double from, double to, int depth)
{
    Fit const fit = BestFit(span, from, to);
    double const allowed = Allowed(from, to, fit.P[0].y, fit.P[3].y);
    if (curve_.HasFailed()) {
        return;
    }
    if (fit.error <= allowed) {
        curve_.AddCubic(fit.P);
        return;
    }
    int const parts = std::min(
        std::max(HvSaturate_To<int>(std::ceil(std::pow(fit.error / allowed, 0.2))), 2), kMaxParts);
    double const step = (to - from) / parts;
    if (depth == kMaxDepth || !(from + step > from) || !(to - step < to)) {
        curve_.AddLine(fit.P[0], fit.P[3]);
        return;
    }
    double start = from;
    for (int k = 1; k <= parts; ++k) {
        double const end = k < parts ? from + step * k : to;
        if (end > start) {
            AddFitted(span, start, end, depth + 1);
            start = end;
        }
    }
}

HvSpanFitter::Fit HvSpanFitter::BestFit(HvComposedSpan const& span, double from, double to) const
{
    Fit best{{Point(from, span.Value(from)), Point(), Point(), Point(to, span.Value(to))},
             kInfinity};
    double const allowed = Allowed(from, to, best.P[0].y, best.P[3].y);
    Try(span, span.EvenHandles(from, to), best);
    if (best.error <= allowed) {
        return best;
    }
    Try(span, span.ControllerHandles(from, to), best);
    if (best.error <= allowed) {
        return best;
    }
    Try(span, span.DrivenHandles(from, to), best);
    for (int k = 0; k < kMaxRounds && best.error > allowed; ++k) {
        double const before = best.error;
        if (before > kMostToImprove * allowed) {
            break;
        }
        Improve(span, best);
        if (!(best.error < before)) {
            break;
        }
    }
    return best;
}

void HvSpanFitter::Try(HvComposedSpan const& span, HvComposedSpan::Handles const& handles,
                       Fit& best) const
{
    Fit fit = best;
    fit.P[1] = fit.P[0] + handles.first;
    fit.P[2] = fit.P[3] + handles.last;
    if (!IsValid(fit.P)) {
        return;
    }
    fit.error = ErrorOf(span, fit.P, best.error);
    if (fit.error < best.error) {
        best = fit;
    }
}

// One step of Gauss and Newton on the lengths of the handles, u P[1] - P[0] and v P[2] - P[3]. With
// the Bernstein polynomials B the cubic differs from the span r by
//
//     e(s) = y(s) - r(x(s)),   de/du = B1(s) (u.y - r'(x) u.x),   de/dv = B2(s) (v.y - r'(x) v.x),
//
// and the two scales are those that make the sum of squares least.
void HvSpanFitter::Improve(HvComposedSpan const& span, Fit& best) const
{
    Point const u = best.P[1] - best.P[0];
    Point const v = best.P[2] - best.P[3];
    double uu = 0;
    double uv = 0;
    double vv = 0;
    double ue = 0;
    double ve = 0;
    for (int k = 0; k < kNumFitted; ++k) {
        double const s = (k + 0.5) / kNumFitted;
        Point const p = PointAt(best.P, s);
        double const slope = span.Slope(p.x);
        double const e = p.y - span.Value(p.x);
        double const du = 3 * (1 - s) * (1 - s) * s * (u.y - slope * u.x);
        double const dv = 3 * (1 - s) * s * s * (v.y - slope * v.x);
        uu += du * du;
        uv += du * dv;
        vv += dv * dv;
        ue += du * e;
        ve += dv * e;
    }
    double const determinant = uu * vv - uv * uv;
    Try(span,
        {u * (1 - (ue * vv - ve * uv) / determinant), v * (1 - (ve * uu - ue * uv) / determinant)},
        best);
}
