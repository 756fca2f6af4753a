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

// Samples by which a cubic is judged. The error of a fit that is nearly good has a few arcs, and
// between the samples its peaks are found by parabolas.
constexpr int kNumJudged = 16;
// What is left of the tolerance for what a parabola misses of a peak.
constexpr double kSampledPart = 0.98;

// Samples of the least squares, and their rounds: each squares the relative error of the lengths.
constexpr int kNumFitted = 8;
constexpr int kMaxRounds = 3;

// A cubic further off than so many tolerances is not improved but cut: no two lengths save it.
constexpr double kMostToImprove = 2000;

// Parts that a stretch is cut into.
constexpr int kMaxParts = 8;

// The shortest part of a span that is cut again. Where a handle without length makes the curvature
// infinite, the parts shrink towards it by halves and the error with their power of 3/2, which asks
// for some thirty halvings at the most. A span that is known from evaluation alone may have jumps
// inside, around which no cut helps.
constexpr double kSmallestPart = 1e-9;
constexpr double kSmallestSampledPart = 1e-5;

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

bool IsFinite(Point const& P)
{
    return std::isfinite(P.x) && std::isfinite(P.y);
}

bool IsValid(Point const* P)
{
    return std::all_of(P, P + 4, IsFinite) &&
           HvStdFCurve_IsCubicSegmentValid(P[0], P[1], P[2], P[3]);
}

/// The height of the parabola through three values of equal distance, above its middle one where
/// that is the highest.
double PeakOf(double left, double middle, double right)
{
    double const bend = 2 * middle - left - right;
    double const rise = right - left;
    return middle >= left && middle >= right && bend > 0 ? middle + rise * rise / (8 * bend)
                                                         : middle;
}

/// The greatest difference in values; where it is not below `enough`, any number that is not.
double ErrorOf(HvComposedSpan const& span, Point const* P, double enough)
{
    double errors[kNumJudged + 2] = {};  // none at the two ends
    for (int k = 0; k < kNumJudged; ++k) {
        // From the middle on in long steps, so that a bad fit shows soon.
        int const i = (kNumJudged / 2 + 11 * k) % kNumJudged;
        Point const p = PointAt(P, (i + 1.0) / (kNumJudged + 1));
        double const e = p.y - span.Value(p.x);
        if (!(std::fabs(e) < enough)) {
            return std::isnan(e) ? kInfinity : std::fabs(e);
        }
        errors[i + 1] = e;
    }
    double error = 0;
    for (int i = 1; i <= kNumJudged; ++i) {
        double const sign = errors[i] < 0 ? -1 : 1;
        error =
            std::max(error, PeakOf(sign * errors[i - 1], sign * errors[i], sign * errors[i + 1]));
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
    AddFitted(span, P0.x, P3.x);
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

void HvSpanFitter::AddFitted(HvComposedSpan const& span, double from, double to)
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
    double const smallest =
        (span.To() - span.From()) * (span.IsSmooth() ? kSmallestPart : kSmallestSampledPart);
    if (!(step > smallest) || !(from + step > from) || !(to - step < to)) {
        curve_.AddLine(fit.P[0], fit.P[3]);
        return;
    }
    double start = from;
    for (int k = 1; k <= parts; ++k) {
        double const end = k < parts ? from + step * k : to;
        if (end > start) {
            AddFitted(span, start, end);
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
    // A handle without length has no part in it.
    double const determinant = uu == 0 || vv == 0 ? std::max(uu, vv) : uu * vv - uv * uv;
    double const du = uu == 0 ? 0 : vv == 0 ? ue : ue * vv - ve * uv;
    double const dv = vv == 0 ? 0 : uu == 0 ? ve : ve * uu - ue * uv;
    Try(span, {u * (1 - du / determinant), v * (1 - dv / determinant)}, best);
}
