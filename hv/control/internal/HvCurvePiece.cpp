// Copyright (c) 2026 the Hv authors
// SPDX-License-Identifier: MIT

// Evaluation and inversion of one piece of a curve.

#include <hv/control/internal/HvCurvePiece.h>

#include <hv/bezier/cubic_split.h>
#include <hv/bezier/quadratic.h>
#include <hv/fcurve/HvBaseFCurve.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

using Point = HvPoint2<double>;

// Curves take a parameter this close to a key for the key itself, which may lie on the other side
// of a jump: inside a piece they are not asked there.
constexpr double kKeySnap = 1e-12;

// Handles at the thirds of their span make x(s) a line, but for a few roundings of the coordinates.
constexpr double kEvenNoise = 1e-15;

// The step of a difference quotient, as a part of the piece: the cube root of the precision of a
// value, at which truncation and rounding are about equal.
constexpr double kDifferenceStep = 1e-5;

// Steps of a bisection to the last bit.
constexpr int kMaxHalvings = 64;

// Steps of the golden section, after which the bracket is 1e-9 of what it was: a turn is not known
// better from values.
constexpr int kGoldenSteps = 43;
constexpr double kGoldenRatio = 0.6180339887498949;

}  // namespace

HvCurvePiece HvCurvePiece::OfConstant(double first, double last, double value)
{
    HvCurvePiece piece;
    piece.P_[0] = Point(first, value);
    piece.P_[3] = Point(last, value);
    return piece;
}

HvCurvePiece HvCurvePiece::OfLine(Point const& P0, Point const& P3)
{
    HvCurvePiece piece;
    piece.shape_ = P0.y == P3.y ? Constant : Line;
    piece.P_[0] = P0;
    piece.P_[3] = P3;
    return piece;
}

HvCurvePiece HvCurvePiece::OfCubic(Point const* P)
{
    HvCurvePiece piece;
    bool const isFlat = P[1].y == P[0].y && P[2].y == P[0].y && P[3].y == P[0].y;
    piece.shape_ = isFlat ? Constant : Cubic;
    std::copy(P, P + 4, piece.P_);
    piece.x_ = HvCubicTerms::Of(P[0].x, P[1].x, P[2].x, P[3].x);
    piece.y_ = HvCubicTerms::Of(P[0].y, P[1].y, P[2].y, P[3].y);
    piece.isEven_ = std::fabs(piece.x_.a2) + std::fabs(piece.x_.a3) <=
                    kEvenNoise * (std::fabs(P[0].x) + std::fabs(P[3].x));
    return piece;
}

HvCurvePiece HvCurvePiece::OfCurve(HvBaseFCurve const& curve, Point const& P0, Point const& P3)
{
    HvCurvePiece piece;
    piece.shape_ = Sampled;
    piece.P_[0] = P0;
    piece.P_[3] = P3;
    piece.curve_ = &curve;
    return piece;
}

double HvCurvePiece::FindParameter(double x) const
{
    double const part = (x - P_[0].x) / (P_[3].x - P_[0].x);
    if (isEven_) {
        return std::min(std::max(part, 0.0), 1.0);
    }
    return HvMonotoneCubic_Solve(x_, x - P_[0].x, 0, 1, part);
}

double HvCurvePiece::Value(double x) const
{
    if (!(x > P_[0].x)) {
        return P_[0].y;
    }
    if (!(x < P_[3].x)) {
        return P_[3].y;
    }
    switch (shape_) {
    case Constant:
        return P_[0].y;
    case Line:
        return P_[0].y + (P_[3].y - P_[0].y) * ((x - P_[0].x) / (P_[3].x - P_[0].x));
    case Cubic:
        return P_[0].y + y_.At(FindParameter(x));
    case Sampled:
        break;
    }
    return x - P_[0].x <= kKeySnap   ? P_[0].y
           : P_[3].x - x <= kKeySnap ? P_[3].y
                                     : curve_->EvalNoLock(x, 0);
}

double HvCurvePiece::Slope(double x) const
{
    switch (shape_) {
    case Constant:
        return 0;
    case Line:
        return (P_[3].y - P_[0].y) / (P_[3].x - P_[0].x);
    case Cubic:
        return CubicSlope(FindParameter(x));
    case Sampled:
        break;
    }
    return SampledSlope(x);
}

// At an end whose handle has no length the curve leaves toward the next control point that is not
// the end itself.
double HvCurvePiece::CubicSlope(double s) const
{
    Point direction(x_.SlopeAt(s), y_.SlopeAt(s));
    if (s == 0) {
        direction = P_[1] != P_[0] ? P_[1] - P_[0] : P_[2] != P_[0] ? P_[2] - P_[0] : P_[3] - P_[0];
    } else if (s == 1) {
        direction = P_[2] != P_[3] ? P_[3] - P_[2] : P_[1] != P_[3] ? P_[3] - P_[1] : P_[3] - P_[0];
    }
    return direction.y / direction.x;
}

// Differences of the second order, to one side at the ends.
double HvCurvePiece::SampledSlope(double x) const
{
    double const h = (P_[3].x - P_[0].x) * kDifferenceStep;
    if (x - P_[0].x < h) {
        return (4 * Value(P_[0].x + h) - 3 * P_[0].y - Value(P_[0].x + 2 * h)) / (2 * h);
    }
    if (P_[3].x - x < h) {
        return (3 * P_[3].y - 4 * Value(P_[3].x - h) + Value(P_[3].x - 2 * h)) / (2 * h);
    }
    return (Value(x + h) - Value(x - h)) / (2 * h);
}

int HvCurvePiece::Turns(double from, double to, double* turns) const
{
    if (shape_ == Sampled) {
        return SampledTurns(from, to, turns);
    }
    double first = 0;
    double second = 0;
    if (shape_ != Cubic) {
        return 0;
    }
    if (y_.a3 == 0) {
        first = second = -y_.a1 / (2 * y_.a2);
    } else if (!SolveQuadraticEquation(first, second, 3 * y_.a3, 2 * y_.a2, y_.a1)) {
        return 0;
    }
    // A double root is a level point, not a turn; so is one where the other is not a number.
    int count = 0;
    for (double const s : {first, second}) {
        double const x = P_[0].x + x_.At(s);
        double const last = count == 0 ? from : turns[count - 1];
        bool const isDouble = y_.a3 != 0 && first == second;
        if (s > 0 && s < 1 && !isDouble && x > last && x < to) {
            turns[count++] = x;
        }
    }
    return count;
}

// Looks for a sample beyond both its neighbours and closes in on the turn between them.
int HvCurvePiece::SampledTurns(double from, double to, double* turns) const
{
    double const step = (to - from) / kMaxTurns;
    int count = 0;
    double left = Value(from);
    double middle = Value(from + step);
    for (int k = 1; k < kMaxTurns; ++k) {
        double const right = Value(k + 1 < kMaxTurns ? from + step * (k + 1) : to);
        if ((middle > left && middle >= right) || (middle < left && middle <= right)) {
            double const sign = middle > left ? 1.0 : -1.0;
            double low = from + step * (k - 1);
            double high = from + step * (k + 1);
            for (int n = 0; n < kGoldenSteps; ++n) {
                double const a = high - (high - low) * kGoldenRatio;
                double const b = low + (high - low) * kGoldenRatio;
                (sign * Value(a) < sign * Value(b) ? low : high) =
                    sign * Value(a) < sign * Value(b) ? a : b;
            }
            double const turn = low + (high - low) * 0.5;
            if (turn > (count == 0 ? from : turns[count - 1]) && turn < to) {
                turns[count++] = turn;
            }
        }
        left = middle;
        middle = right;
    }
    return count;
}

double HvCurvePiece::FindValue(double value, double from, double to) const
{
    switch (shape_) {
    case Line: {
        double const part = (value - P_[0].y) / (P_[3].y - P_[0].y);
        return std::min(std::max(P_[0].x + (P_[3].x - P_[0].x) * part, from), to);
    }
    case Cubic: {
        double const low = FindParameter(from);
        double const high = FindParameter(to);
        double const s =
            HvMonotoneCubic_Solve(y_, value - P_[0].y, low, high, low + (high - low) * 0.5);
        return std::min(std::max(P_[0].x + x_.At(s), from), to);
    }
    case Sampled:
    case Constant:  // asked for no value, since it neither rises nor falls
        break;
    }
    double const sign = Value(to) < Value(from) ? -1.0 : 1.0;
    for (int k = 0; k < kMaxHalvings; ++k) {
        double const middle = from + (to - from) * 0.5;
        (sign * (Value(middle) - value) < 0 ? from : to) = middle;
    }
    return from + (to - from) * 0.5;
}

void HvCurvePiece::CubicBetween(double from, double to, Point* P) const
{
    double const low = from > P_[0].x ? FindParameter(from) : 0;
    double const high = to < P_[3].x ? FindParameter(to) : 1;
    Point left[4];
    Point rest[4];
    HvCubic_Split(P_, high, left, rest);
    HvCubic_Split(left, high > 0 ? low / high : 0, rest, P);
}
