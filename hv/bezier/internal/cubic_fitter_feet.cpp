// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// How far points are from a fitted cubic: the search of their feet on it.

#include <hv/bezier/internal/cubic_fitter.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

/// Newton steps to the foot of one point; where one is not enough, the curve is about to be refused
/// anyway.
constexpr int kFootSteps = 5;
/// A step that leaves more than this share of the squared distance has come to the foot, to half a
/// percent of the distance.
constexpr double kThereShare = 0.99;
/// How far between two points a curve may leave their step beyond the tolerance, as a share of the
/// step. A half circle over two steps needs 0.21; a loop between two points takes more.
constexpr double kBulgeShare = 0.3;
/// A step of less than the tolerance may bend nowhere, unless the curve spends this much of its
/// parameter on it.
constexpr double kLongPause = 0.1;

using Point = HvPoint2<double>;

double SquaredLength(Point const& v)
{
    return HvPoint2_AdotB(v, v);
}

}  // namespace

/// Moves the places of all samples to their feet and returns the greatest distance; a point that is
/// no number is the farthest of all. Stops at a point that is farther than `hopeless`.
double HvCubicFitter::MoveToFeet(double tolerance, double hopeless, double& sumOfSquares)
{
    StepToFeet();
    double const squaredTolerance = tolerance * tolerance;
    double const squaredHopeless = hopeless * hopeless;
    double greatest = 0.0;
    for (unsigned int i = 0; i < samples_.count; ++i) {
        double const before = samples_.squares[i];
        double squared = std::min(before, samples_.nextSquares[i]);
        bool const isThere = squared > kThereShare * before;
        if (!isThere && !(squared <= squaredTolerance)) {
            double const d =
                MoveToFoot({samples_.x[i], samples_.y[i]}, tolerance, samples_.places[i]);
            squared = d * d;
        }
        sumOfSquares += squared;
        if (!(squared <= greatest)) {
            greatest = squared;
            worst_ = static_cast<unsigned int>(samples_.at[i]);
            if (!(squared <= squaredHopeless)) {
                break;
            }
        }
    }
    return std::sqrt(greatest);
}

/// The first step of MoveToFoot for all samples. In two loops of arithmetic alone, so that the
/// compiler does several samples at once.
void HvCubicFitter::StepToFeet()
{
    Point const start = start_;
    Point const c0 = coefficients_[0];
    Point const c1 = coefficients_[1];
    Point const c2 = coefficients_[2];
    unsigned int const count = samples_.count;
    double const* const x = samples_.x.Data();
    double const* const y = samples_.y.Data();
    double* const places = samples_.places.Data();
    double* const nextPlaces = samples_.nextPlaces.Data();
    double* const squares = samples_.squares.Data();
    double* const nextSquares = samples_.nextSquares.Data();
    for (unsigned int i = 0; i < count; ++i) {
        double const u = places[i];
        double const gapX = start.x + (c0.x + (c1.x + c2.x * u) * u) * u - x[i];
        double const gapY = start.y + (c0.y + (c1.y + c2.y * u) * u) * u - y[i];
        double const firstX = c0.x + (2.0 * c1.x + 3.0 * c2.x * u) * u;
        double const firstY = c0.y + (2.0 * c1.y + 3.0 * c2.y * u) * u;
        double const secondX = 2.0 * c1.x + 6.0 * c2.x * u;
        double const secondY = 2.0 * c1.y + 6.0 * c2.y * u;
        double const bend = gapX * secondX + gapY * secondY;
        double const speed = firstX * firstX + firstY * firstY;
        double const slope = speed + (bend < -0.5 * speed ? 0.0 : bend);
        double const newton = u - (gapX * firstX + gapY * firstY) / slope;
        nextPlaces[i] = std::min(std::max(newton, 0.0), 1.0);
        squares[i] = gapX * gapX + gapY * gapY;
    }
    for (unsigned int i = 0; i < count; ++i) {
        double const u = places[i];
        double const next = nextPlaces[i];
        double const gapX = start.x + (c0.x + (c1.x + c2.x * next) * next) * next - x[i];
        double const gapY = start.y + (c0.y + (c1.y + c2.y * next) * next) * next - y[i];
        double const squared = gapX * gapX + gapY * gapY;
        places[i] = squared < squares[i] ? next : u;
        nextSquares[i] = squared;
    }
}

/// Newton's method for (Q - p) Q' = 0 from `u` on: one step to improve the parameter, more while
/// the point is not within `tolerance`. A step that leads away is not taken.
double HvCubicFitter::MoveToFoot(Point const& p, double tolerance, double& u) const
{
    Point gap = At(u) - p;
    double squared = SquaredLength(gap);
    for (int step = 0; step < kFootSteps; ++step) {
        Point const first =
            coefficients_[0] + (coefficients_[1] * 2.0 + coefficients_[2] * (3.0 * u)) * u;
        Point const second = coefficients_[1] * 2.0 + coefficients_[2] * (6.0 * u);
        double const speed = SquaredLength(first);
        double const bend = HvPoint2_AdotB(gap, second);
        double const slope = speed + (bend < -0.5 * speed ? 0.0 : bend);
        double const next = std::min(std::max(u - HvPoint2_AdotB(gap, first) / slope, 0.0), 1.0);
        Point const nextGap = At(next) - p;
        double const nextSquared = SquaredLength(nextGap);
        if (!(nextSquared < squared)) {
            break;
        }
        bool const isThere = nextSquared > kThereShare * squared;
        u = next;
        gap = nextGap;
        squared = nextSquared;
        if (isThere || squared <= tolerance * tolerance) {
            break;
        }
    }
    return std::sqrt(squared);
}

bool HvCubicFitter::Follows(unsigned int first, unsigned int last, double tolerance)
{
    Stretch stretch = {first, first, 0.0, 0.0};
    for (unsigned int sample = 0; stretch.to < last; ++sample) {
        bool const hasSample = sample < samples_.count;
        stretch.from = stretch.to;
        stretch.fromPlace = stretch.toPlace;
        stretch.to = hasSample ? static_cast<unsigned int>(samples_.at[sample]) : last;
        stretch.toPlace = hasSample ? samples_.places[sample] : 1.0;
        if (!FollowsAtOnce(stretch, tolerance) && !FollowsStepByStep(stretch, tolerance)) {
            return false;
        }
    }
    return true;
}

/// The place of a point between two samples, in proportion to their parameters.
double HvCubicFitter::PlaceRate(Stretch const& stretch) const
{
    double const span = parameters_[stretch.to] - parameters_[stretch.from];
    return span > 0.0 ? (stretch.toPlace - stretch.fromPlace) / span : 0.0;
}

/// Whether the places in proportion show that the curve follows a stretch of short steps. Without
/// branches, so that the compiler does several points at once.
bool HvCubicFitter::FollowsAtOnce(Stretch const& stretch, double tolerance) const
{
    if (!(std::fabs(stretch.toPlace - stretch.fromPlace) < kLongPause)) {
        return false;
    }
    double const rate = PlaceRate(stretch);
    double const squaredTolerance = tolerance * tolerance;
    double const from = parameters_[stretch.from];
    Point const start = start_;
    Point const c0 = coefficients_[0];
    Point const c1 = coefficients_[1];
    Point const c2 = coefficients_[2];
    std::int64_t failures = 0;
    for (unsigned int i = stretch.from + 1; i <= stretch.to; ++i) {
        double const x = static_cast<double>(points_[i].x);
        double const y = static_cast<double>(points_[i].y);
        double const u = stretch.fromPlace + (parameters_[i] - from) * rate;
        double const gapX = start.x + (c0.x + (c1.x + c2.x * u) * u) * u - x;
        double const gapY = start.y + (c0.y + (c1.y + c2.y * u) * u) * u - y;
        double const stepX = x - static_cast<double>(points_[i - 1].x);
        double const stepY = y - static_cast<double>(points_[i - 1].y);
        failures += gapX * gapX + gapY * gapY <= squaredTolerance ? 0 : 1;
        failures += stepX * stepX + stepY * stepY <= squaredTolerance ? 0 : 1;
    }
    return failures == 0;
}

bool HvCubicFitter::FollowsStepByStep(Stretch const& stretch, double tolerance) const
{
    double const rate = PlaceRate(stretch);
    Point before(points_[stretch.from]);
    double placeBefore = stretch.fromPlace;
    for (unsigned int i = stretch.from + 1; i <= stretch.to; ++i) {
        Point const p(points_[i]);
        double const proportional =
            stretch.fromPlace + (parameters_[i] - parameters_[stretch.from]) * rate;
        double u = i == stretch.to ? stretch.toPlace : std::min(std::max(proportional, 0.0), 1.0);
        if (!(SquaredLength(At(u) - p) <= tolerance * tolerance) &&
            !(MoveToFoot(p, tolerance, u) <= tolerance)) {
            return false;
        }
        if (!StaysNear(before, p, placeBefore, u, tolerance)) {
            return false;
        }
        before = p;
        placeBefore = u;
    }
    return true;
}

bool HvCubicFitter::StaysNear(Point const& a, Point const& b, double from, double to,
                              double tolerance) const
{
    Point const step = b - a;
    double const squaredStep = SquaredLength(step);
    if (squaredStep <= tolerance * tolerance && std::fabs(to - from) < kLongPause) {
        return true;
    }
    double const reach = tolerance + kBulgeShare * std::sqrt(squaredStep);
    for (double const share : {0.25, 0.5, 0.75}) {
        Point const q = At(from + (to - from) * share) - a;
        double const along =
            squaredStep > 0.0 ? std::min(std::max(HvPoint2_AdotB(q, step) / squaredStep, 0.0), 1.0)
                              : 0.0;
        if (!(SquaredLength(q - step * along) <= reach * reach)) {
            return false;
        }
    }
    return true;
}
