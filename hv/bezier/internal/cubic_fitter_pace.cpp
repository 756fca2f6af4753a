// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// One cubic through the ends of a stretch of points whose places on it are far from even.
//
// Least squares over the handles and the places at once. With Q the curve at the places u and d the
// points less Q, the Gauss-Newton step asks for handles and places that make
//
//     sum |d - B1 dv - B2 dw - Q' du|^2 + damping sum |Q'|^2 du^2
//
// least. Each du occurs in one term only and is eliminated: what is left is the system of the
// handles alone, with differences along the curve counting little. So a step costs what one over
// the handles costs, and near the solution the error of each is the square of that before. Source:
// S. Sullivan, L. Sandford, J. Ponce, "Using geometric distance fits for 3-D object modeling and
// recognition", 1994, with the damping of D. Marquardt, "An algorithm for least-squares estimation
// of nonlinear parameters", 1963.
//
// It needs a start that tells where the curve is slow. The product of the bend and the cubed speed
// of a cubic is a polynomial of degree 2 of its parameter and mostly varies little, other than bend
// and speed themselves: with it constant, the parameter runs with the cubic root of the bend.

#include <hv/bezier/internal/cubic_fitter.h>

#include <hv/bezier/internal/symmetric_system.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr unsigned int kMostSamples = 128;
/// With fewer points between the ends even a cubic of a pace of its own choice says nothing.
constexpr unsigned int kLeastSamples = 4;
/// The direction of a cubic turns by less than 360 degrees, back and forth or on, since its
/// derivative runs along a parabola, and changes the sense in which it turns twice at most; and a
/// polyline in a few long steps turns less than the curve it lies on. Noise may add a little.
constexpr double kMostTurn = 2.25 * 3.141592653589793;
constexpr int kMostInflections = 2;
constexpr unsigned int kTurnSteps = 16;
/// A turn by points that are off by a tolerance each, in tolerances over the length of a step, may
/// be nothing but that.
constexpr double kNoTurnTolerances = 4.0;
/// The bend of a straight place, as a turn over the whole length: a little keeps the pace finite.
constexpr double kStraightTurn = 0.1;
/// Steps from one start; more than half of all searches take less than five.
constexpr int kMostSteps = 24;
/// The damping at first, and by how much it falls after a step that led down and grows otherwise.
constexpr double kFirstDamping = 0.1;
constexpr double kLeastDamping = 1e-7;
constexpr double kMostDamping = 1e4;
constexpr double kDampingFall = 0.2;
constexpr double kDampingRise = 5.0;
/// A step almost without damping that leaves more than this share of the squared distances has
/// come to where the search will end: noise, or a shape that is no cubic.
constexpr double kFreeDamping = 0.01;
constexpr double kEndShare = 0.98;
/// The search ends this much inside the tolerance, so that rounding the controls does no harm.
constexpr double kInside = 0.9;

using Point = HvPoint2<double>;

double SquaredLength(Point const& v)
{
    return HvPoint2_AdotB(v, v);
}

/// Of differences of floats, whose squares neither overflow nor vanish.
double LengthOf(Point const& v)
{
    return std::sqrt(SquaredLength(v));
}

/// The angle from one direction to another, above 0 to the left.
double TurnOf(Point const& a, Point const& b)
{
    return std::atan2(HvPoint2_AdetB(a, b), HvPoint2_AdotB(a, b));
}

double Clamped(double value, double low, double high)
{
    return std::min(std::max(value, low), high);
}

}  // namespace

bool HvCubicFitter::FitAtAnyPace(unsigned int first, unsigned int last, double tolerance)
{
    ChooseSamples(first, last, kMostSamples);
    if (samples_.count < kLeastSamples || !TurnsLikeACubic(tolerance)) {
        return false;
    }
    cubic_[0] = points_[first];
    cubic_[3] = points_[last];
    start_ = Point(cubic_[0]);
    for (auto const start : {&HvCubicFitter::StartByBend, &HvCubicFitter::StartEvenly}) {
        (this->*start)();
        Handles handles;
        if (Solve({}, handles) && Improve(tolerance, handles)) {
            SetHandles(handles);
            double sumOfSquares = 0.0;
            if (MoveToFeet(tolerance, std::numeric_limits<double>::infinity(), sumOfSquares) <=
                tolerance) {
                return true;
            }
        }
    }
    return false;
}

/// The ends with the samples between them.
HvPoint2<double> HvCubicFitter::SampleOrEnd(unsigned int k) const
{
    return k == 0               ? Point(points_[first_])
           : k > samples_.count ? Point(points_[last_])
                                : Point(samples_.x[k - 1], samples_.y[k - 1]);
}

bool HvCubicFitter::TurnsLikeACubic(double tolerance) const
{
    unsigned int const steps = std::min(kTurnSteps, samples_.count + 1);
    double whole = 0.0;
    int inflections = 0;
    bool wasLeft = false;
    bool hasTurned = false;
    Point before;
    for (unsigned int k = 0; k < steps; ++k) {
        Point const step = SampleOrEnd((k + 1) * (samples_.count + 1) / steps) -
                           SampleOrEnd(k * (samples_.count + 1) / steps);
        double const turn = k > 0 ? TurnOf(before, step) : 0.0;
        whole += std::fabs(turn);
        if (std::fabs(turn) * LengthOf(step) > kNoTurnTolerances * tolerance) {
            bool const isLeft = turn > 0.0;
            inflections += hasTurned && isLeft != wasLeft ? 1 : 0;
            wasLeft = isLeft;
            hasTurned = true;
        }
        before = step;
    }
    return whole <= kMostTurn && inflections <= kMostInflections;
}

/// Places along the cubic root of the bend.
void HvCubicFitter::StartByBend()
{
    unsigned int const count = samples_.count;
    double whole = 0.0;
    for (unsigned int k = 0; k <= count; ++k) {
        whole += LengthOf(SampleOrEnd(k + 1) - SampleOrEnd(k));
    }
    // The bend at a sample is the turn over half the steps around; an end has that of its
    // neighbour.
    auto const bendAt = [&](unsigned int k) {
        k = std::min(std::max(k, 1u), count);
        Point const in = SampleOrEnd(k) - SampleOrEnd(k - 1);
        Point const out = SampleOrEnd(k + 1) - SampleOrEnd(k);
        double const length = 0.5 * (LengthOf(in) + LengthOf(out));
        return length > 0.0 ? std::fabs(TurnOf(in, out)) / length : 0.0;
    };
    double place = 0.0;
    double bend = bendAt(0);
    for (unsigned int k = 0; k <= count; ++k) {
        double const nextBend = bendAt(k + 1);
        place += std::cbrt(0.5 * (bend + nextBend) + kStraightTurn / whole) *
                 LengthOf(SampleOrEnd(k + 1) - SampleOrEnd(k));
        if (k < count) {
            samples_.places[k] = place;
        }
        bend = nextBend;
    }
    ScalePlaces(place);
}

/// Places at one pace, as of a pen whose points come at equal times.
void HvCubicFitter::StartEvenly()
{
    for (unsigned int k = 0; k < samples_.count; ++k) {
        samples_.places[k] = k + 1.0;
    }
    ScalePlaces(samples_.count + 1.0);
}

void HvCubicFitter::ScalePlaces(double whole)
{
    for (unsigned int k = 0; k < samples_.count; ++k) {
        samples_.places[k] /= whole;
    }
}

/// Improves handles and places until all samples are within the tolerance; false when they do not
/// get there.
bool HvCubicFitter::Improve(double tolerance, Handles& handles)
{
    double const within = kInside * kInside * tolerance * tolerance;
    double greatest = 0.0;
    SetCurve(handles);
    double sum = SquaresAt(samples_.places, greatest);
    double damping = kFirstDamping;
    for (int step = 0; step < kMostSteps && greatest > within; ++step) {
        Handles next;
        double nextSum = sum;
        double nextGreatest = 0.0;
        if (Step(handles, damping, next)) {
            SetCurve(next);
            nextSum = SquaresAt(samples_.nextPlaces, nextGreatest);
        }
        if (!(nextSum < sum)) {
            SetCurve(handles);
            damping *= kDampingRise;
            if (damping > kMostDamping) {
                break;
            }
            continue;
        }
        bool const isAtEnd = damping < kFreeDamping && nextSum > kEndShare * sum;
        handles = next;
        std::copy_n(samples_.nextPlaces.Data(), samples_.count, samples_.places.Data());
        sum = nextSum;
        greatest = nextGreatest;
        damping = std::max(damping * kDampingFall, kLeastDamping);
        if (isAtEnd) {
            break;
        }
    }
    return greatest <= within;
}

/// One damped Gauss-Newton step from the curve; the places that it leads to are the next ones.
/// Points keep their order along the curve.
bool HvCubicFitter::Step(Handles const& handles, double damping, Handles& next)
{
    auto const velocityAt = [this](double u) {
        return coefficients_[0] + (coefficients_[1] * 2.0 + coefficients_[2] * (3.0 * u)) * u;
    };
    auto const gapOf = [this](unsigned int i) {
        return Point(samples_.x[i], samples_.y[i]) - At(samples_.places[i]);
    };
    double meanSpeed = 0.0;
    for (unsigned int i = 0; i < samples_.count; ++i) {
        meanSpeed += SquaredLength(velocityAt(samples_.places[i])) / samples_.count;
    }
    double const brake = damping * meanSpeed;
    HvSymmetric2 blocks[3];
    Point rights[2];
    for (unsigned int i = 0; i < samples_.count; ++i) {
        double const u = samples_.places[i];
        double const b1 = 3.0 * u * (1.0 - u) * (1.0 - u);
        double const b2 = 3.0 * u * u * (1.0 - u);
        Point const velocity = velocityAt(u);
        HvSymmetric2 const across =
            HvSymmetric2::Across(velocity, 1.0 / (SquaredLength(velocity) + brake));
        blocks[0].Add(across, b1 * b1);
        blocks[1].Add(across, b1 * b2);
        blocks[2].Add(across, b2 * b2);
        Point const right = across.Times(gapOf(i));
        rights[0] = rights[0] + right * b1;
        rights[1] = rights[1] + right * b2;
    }
    double matrix[4][4] = {{blocks[0].xx, 0.0, 0.0, 0.0},
                           {blocks[0].xy, blocks[0].yy, 0.0, 0.0},
                           {blocks[1].xx, blocks[1].xy, blocks[2].xx, 0.0},
                           {blocks[1].xy, blocks[1].yy, blocks[2].xy, blocks[2].yy}};
    double right[4] = {rights[0].x, rights[0].y, rights[1].x, rights[1].y};
    if (!HvSymmetricSystem_Solve(matrix, right, 4)) {
        return false;
    }
    Point const startStep(right[0], right[1]);
    Point const endStep(right[2], right[3]);
    next = {handles.start + startStep, handles.end + endStep};
    double least = 0.0;
    for (unsigned int i = 0; i < samples_.count; ++i) {
        double const u = samples_.places[i];
        Point const velocity = velocityAt(u);
        Point const left = gapOf(i) - startStep * (3.0 * u * (1.0 - u) * (1.0 - u)) -
                           endStep * (3.0 * u * u * (1.0 - u));
        double const step = HvPoint2_AdotB(velocity, left) / (SquaredLength(velocity) + brake);
        least = Clamped(u + step, least, 1.0);
        samples_.nextPlaces[i] = least;
    }
    return true;
}

/// The sum and the greatest of the squared distances of the samples from some places.
double HvCubicFitter::SquaresAt(HvDoubleArray const& places, double& greatest) const
{
    double sum = 0.0;
    for (unsigned int i = 0; i < samples_.count; ++i) {
        double const squared = SquaredLength(At(places[i]) - Point(samples_.x[i], samples_.y[i]));
        sum += squared;
        greatest = std::max(greatest, squared);
    }
    return sum;
}

/// The polynomial of a curve whose handles are not rounded yet.
void HvCubicFitter::SetCurve(Handles const& handles)
{
    Point const chord = Point(cubic_[3]) - start_;
    coefficients_[0] = handles.start * 3.0;
    coefficients_[1] = (chord + handles.end - handles.start * 2.0) * 3.0;
    coefficients_[2] = (handles.start - handles.end) * 3.0 - chord * 2.0;
}
