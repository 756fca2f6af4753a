// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One cubic through the ends of a stretch of points, near all of them.
//
// With P0 and P3 the ends of the stretch, v the first handle as seen from P0 and w the second one
// as seen from P3, the curve is
//
//     Q(u) = (B0 + B1) P0 + (B2 + B3) P3 + B1 v + B2 w,     B the Bernstein polynomials at u.
//
// The sum of the squared differences to the points is quadratic in v and w. It depends on the
// points only through three numbers and two vectors,
//
//     a = sum B1^2,  b = sum B1 B2,  c = sum B2^2,   r = sum B1 d,  s = sum B2 d,
//
// d being a point less the part of Q without handles. The four forms differ in what v and w may be:
//
//     both free            a v + b w = r,  b v + c w = s
//     v = x T, w = -y U    a x - b (T U) y = T r,  -b (T U) x + c y = -U s
//     v = x T, w free      (a - b^2 / c) x = T r - b/c (T s),  w = (s - b v) / c
//     v free, w = -y U     the same from the other end

#include <hv/bezier/internal/cubic_fitter.h>

#include <hv/bezier/internal/float_point.h>
#include <hv/bezier/internal/symmetric_system.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// A handle shorter than this share of the chord counts as negative: its direction would be lost
/// in rounding to float.
constexpr double kLeastHandleShare = 1e-5;
/// The weight of a squared difference along the curve beside one across it: enough to keep the
/// system regular on straight stretches.
constexpr double kAlongWeight = 0.01;

using Point = HvPoint2<double>;

bool IsFinite(Point const& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y);
}

double SquaredLength(Point const& v)
{
    return HvPoint2_AdotB(v, v);
}

Point Usable(Point const& tangent)
{
    return IsFinite(tangent) ? tangent : Point();
}

}  // namespace

bool HvCubicFitter::Fit(unsigned int first, unsigned int last, HvFitTangents const& given,
                        double tolerance, HvFitEffort const& effort)
{
    HvFitTangents tangents = given;
    tangents.start = Usable(given.start);
    tangents.end = Usable(given.end);
    ChooseSamples(first, last, effort.mostSamples);
    cubic_[0] = points_[first];
    cubic_[3] = points_[last];
    if (!IsFinite(Point(cubic_[0])) || !IsFinite(Point(cubic_[3]))) {
        return false;
    }
    double before = std::numeric_limits<double>::infinity();
    bool isAcross = true;
    // Without a limit there is none within a tolerance of 0 either.
    double const hopeless = std::isfinite(effort.hopelessErrors) ? tolerance * effort.hopelessErrors
                                                                 : effort.hopelessErrors;
    for (unsigned int round = 0;; ++round) {
        Handles handles;
        bool const isSolved =
            (round > 0 && isAcross && SolveAcross(tangents, handles)) || Solve(tangents, handles);
        SetHandles(isSolved ? handles : ThirdsOfChord(tangents));
        double sumOfSquares = 0.0;
        double const error = MoveToFeet(tolerance, hopeless, sumOfSquares);
        if (error <= tolerance) {
            return true;
        }
        // Rounds across the curve may also lead astray; then the others go on.
        bool const isHopeless = !(error <= hopeless);
        bool const improves = sumOfSquares < before * effort.worthwhileShare;
        bool const isAstray = isAcross && !(sumOfSquares <= before);
        if (isHopeless || !(improves || isAstray) || round == effort.rounds) {
            return false;
        }
        isAcross = isAcross && improves;
        before = sumOfSquares;
    }
}

/// The parameters are brought to 0 to 1; where they say nothing, the number of the point does.
void HvCubicFitter::ChooseSamples(unsigned int first, unsigned int last, unsigned int most)
{
    first_ = first;
    last_ = last;
    worst_ = first + (last - first) / 2;
    unsigned int const inner = last - first - 1;
    unsigned int const count = std::min(inner, most);
    samples_.count = count;
    if (samples_.at.Size() < count) {
        samples_.at.Resize(count);
        for (HvDoubleArray* const array :
             {&samples_.x, &samples_.y, &samples_.places, &samples_.squares, &samples_.nextPlaces,
              &samples_.nextSquares}) {
            array->Resize(count);
        }
    }
    double const from = parameters_[first];
    double const span = parameters_[last] - from;
    double const part = double(inner) / double(count);
    for (unsigned int i = 0; i < count; ++i) {
        // The middles of `count` equal parts.
        unsigned int const at = first + 1 + static_cast<unsigned int>((i + 0.5) * part);
        double u = (parameters_[at] - from) / span;
        if (!(u >= 0.0 && u <= 1.0)) {
            u = double(at - first) / double(last - first);
        }
        samples_.at[i] = at;
        samples_.x[i] = double(points_[at].x);
        samples_.y[i] = double(points_[at].y);
        samples_.places[i] = u;
    }
}

bool HvCubicFitter::Solve(HvFitTangents const& tangents, Handles& handles) const
{
    Point const p0(cubic_[0]);
    Point const chord = Point(cubic_[3]) - p0;
    double a = 0.0;
    double b = 0.0;
    double c = 0.0;
    Point r;
    Point s;
    for (unsigned int i = 0; i < samples_.count; ++i) {
        double const u = samples_.places[i];
        double const v = 1.0 - u;
        double const b1 = 3.0 * u * v * v;
        double const b2 = 3.0 * u * u * v;
        Point const d = Point(samples_.x[i], samples_.y[i]) - p0 - chord * (b2 + u * u * u);
        a += b1 * b1;
        b += b1 * b2;
        c += b2 * b2;
        r = r + d * b1;
        s = s + d * b2;
    }
    Point const& t = tangents.start;
    Point const& e = tangents.end;
    double const least = kLeastHandleShare * HvPoint2_Length(chord);
    double const determinant = a * c - b * b;
    bool const isDegenerate = !(determinant > kDegenerateShare * a * c);
    if (tangents.hasStart && tangents.hasEnd) {
        double const te = HvPoint2_AdotB(t, e);
        double const tt = SquaredLength(t);
        double const ee = SquaredLength(e);
        double const det = a * c * tt * ee - b * b * te * te;
        if (!(det > kDegenerateShare * a * c)) {
            return false;
        }
        double const tr = HvPoint2_AdotB(t, r);
        double const es = -HvPoint2_AdotB(e, s);
        double const x = (tr * c * ee + b * te * es) / det;
        double const y = (a * tt * es + b * te * tr) / det;
        handles = {t * x, e * -y};
        return x > least && y > least;
    }
    if (isDegenerate) {
        return false;
    }
    if (tangents.hasStart) {
        double const x = (c * HvPoint2_AdotB(t, r) - b * HvPoint2_AdotB(t, s)) / determinant;
        handles.start = t * x;
        handles.end = (s - handles.start * b) * (1.0 / c);
        return x > least;
    }
    if (tangents.hasEnd) {
        double const y = (b * HvPoint2_AdotB(e, r) - a * HvPoint2_AdotB(e, s)) / determinant;
        handles.end = e * -y;
        handles.start = (r - handles.end * b) * (1.0 / a);
        return y > least;
    }
    handles.start = (r * c - s * b) * (1.0 / determinant);
    handles.end = (s * a - r * b) * (1.0 / determinant);
    return true;
}

/// The same sum with the differences along the curve counting little, for places that are feet: a
/// curve that slides along itself to a better one is not held back by them, and a few rounds do
/// what would take dozens. Source: W. Wang, H. Pottmann, Y. Liu, "Fitting B-spline curves to point
/// clouds by curvature-based squared distance minimization", 2006, tangent distance.
bool HvCubicFitter::SolveAcross(HvFitTangents const& tangents, Handles& handles) const
{
    // Of the system for both handles, whose blocks are sums over symmetric matrices: across a
    // direction t of the curve a product a b counts as a b - share (a t) (b t).
    HvSymmetric2 startStart;
    HvSymmetric2 startEnd;
    HvSymmetric2 endEnd;
    Point startRight;
    Point endRight;
    Point const p0(cubic_[0]);
    Point const chord = Point(cubic_[3]) - p0;
    for (unsigned int i = 0; i < samples_.count; ++i) {
        double const u = samples_.places[i];
        double const v = 1.0 - u;
        double const b1 = 3.0 * u * v * v;
        double const b2 = 3.0 * u * u * v;
        Point const d = Point(samples_.x[i], samples_.y[i]) - p0 - chord * (b2 + u * u * u);
        Point const t =
            coefficients_[0] + (coefficients_[1] * 2.0 + coefficients_[2] * (3.0 * u)) * u;
        double const speed = SquaredLength(t);
        double const share = speed > 0.0 ? (1.0 - kAlongWeight) / speed : 0.0;
        HvSymmetric2 const across = HvSymmetric2::Across(t, share);
        startStart.Add(across, b1 * b1);
        startEnd.Add(across, b1 * b2);
        endEnd.Add(across, b2 * b2);
        Point const right = across.Times(d);
        startRight = startRight + right * b1;
        endRight = endRight + right * b2;
    }
    // The unknowns: a factor of each given direction, or both coordinates of a free handle.
    struct Unknown {
        bool isStart;
        Point direction;
    };
    Unknown unknowns[4];
    int count = 0;
    auto const add = [&](bool isStart, bool isGiven, Point const& direction) {
        if (isGiven) {
            unknowns[count++] = {isStart, direction};
        } else {
            unknowns[count++] = {isStart, {1.0, 0.0}};
            unknowns[count++] = {isStart, {0.0, 1.0}};
        }
    };
    add(true, tangents.hasStart, tangents.start);
    add(false, tangents.hasEnd, -tangents.end);
    double matrix[4][4] = {};
    double right[4] = {};
    for (int j = 0; j < count; ++j) {
        Unknown const& a = unknowns[j];
        right[j] = HvPoint2_AdotB(a.direction, a.isStart ? startRight : endRight);
        for (int k = 0; k <= j; ++k) {
            Unknown const& b = unknowns[k];
            HvSymmetric2 const& block = a.isStart != b.isStart ? startEnd
                                        : a.isStart            ? startStart
                                                               : endEnd;
            matrix[j][k] = HvPoint2_AdotB(a.direction, block.Times(b.direction));
        }
    }
    if (!HvSymmetricSystem_Solve(matrix, right, count)) {
        return false;
    }
    handles = Handles();
    for (int j = 0; j < count; ++j) {
        Point& handle = unknowns[j].isStart ? handles.start : handles.end;
        handle = handle + unknowns[j].direction * right[j];
    }
    double const least = kLeastHandleShare * HvPoint2_Length(chord);
    return (!tangents.hasStart || right[0] > least) &&
           (!tangents.hasEnd || right[count - 1] > least);
}

HvCubicFitter::Handles HvCubicFitter::ThirdsOfChord(HvFitTangents const& tangents) const
{
    Point const third = (Point(cubic_[3]) - Point(cubic_[0])) * (1.0 / 3.0);
    double const length = HvPoint2_Length(third);
    return {tangents.hasStart ? tangents.start * length : third,
            tangents.hasEnd ? tangents.end * -length : -third};
}

void HvCubicFitter::SetHandles(Handles const& handles)
{
    cubic_[1] = HvFloatPoint_Nearest(Point(cubic_[0]) + handles.start);
    cubic_[2] = HvFloatPoint_Nearest(Point(cubic_[3]) + handles.end);
    start_ = Point(cubic_[0]);
    Point const d0 = Point(cubic_[1]) - start_;
    Point const d1 = Point(cubic_[2]) - Point(cubic_[1]);
    Point const d2 = Point(cubic_[3]) - Point(cubic_[2]);
    coefficients_[0] = d0 * 3.0;
    coefficients_[1] = (d1 - d0) * 3.0;
    coefficients_[2] = d2 - d1 * 2.0 + d0;
}
